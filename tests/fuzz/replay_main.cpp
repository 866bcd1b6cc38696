// Replays fuzz inputs without libFuzzer: every file named on the command line, and every file in
// every directory named there, goes once through LLVMFuzzerTestOneInput. A finding aborts.
#include "fuzz_support.h"

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <cstdio>

int main(int argc, char **argv)
{
    int count = 0;
    for (int i = 1; i < argc; ++i) {
        const QString arg = QString::fromLocal8Bit(argv[i]);
        QStringList files;
        if (QFileInfo(arg).isDir()) {
            QDirIterator it(arg, QDir::Files, QDirIterator::Subdirectories);
            while (it.hasNext())
                files << it.next();
            files.sort();
        } else {
            files << arg;
        }
        for (const QString &path : files) {
            QFile f(path);
            if (!f.open(QIODevice::ReadOnly)) {
                std::fprintf(stderr, "cannot read %s\n", qPrintable(path));
                return 2;
            }
            const QByteArray b = f.readAll();
            std::fprintf(stderr, "replay %s\n", qPrintable(path));
            LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t *>(b.constData()), size_t(b.size()));
            ++count;
        }
    }
    std::fprintf(stderr, "%d inputs replayed\n", count);
    return count > 0 ? 0 : 2;
}
