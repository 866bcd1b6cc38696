#include "fuzz_support.h"
#include "core/shared_state.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <memory>

namespace fuzz {

void begin()
{
    static int argc = 1;
    static char name[] = "brelvox-fuzz";
    static char *argv[] = {name, nullptr};
    static QCoreApplication *app = QCoreApplication::instance() ? nullptr : new QCoreApplication(argc, argv);
    (void)app;
    resetSharedState();
}

int run(const std::function<void()> &work)
{
    try {
        work();
    } catch (const RuntimeError &) {
    }
    return 0;
}

QByteArray Input::piece(int max)
{
    const int want = byte() % (max + 1);
    const int n = std::min<int>(want, int(size_ - pos_));
    QByteArray b(reinterpret_cast<const char *>(data_ + pos_), n);
    pos_ += size_t(n);
    return b;
}

QByteArray Input::rest()
{
    QByteArray b(reinterpret_cast<const char *>(data_ + pos_), qsizetype(size_ - pos_));
    pos_ = size_;
    return b;
}

QStringList Input::restAsTexts()
{
    QStringList out;
    for (const QByteArray &t : rest().split('\0'))
        out << QString::fromLatin1(t);
    return out;
}

void ReplyBackend::write(const QByteArray &bytes)
{
    written += bytes;
    pending_ += in_.piece();
}

void ReplyBackend::collect(QByteArray &into)
{
    into += pending_;
    pending_.clear();
}

bool ReplyBackend::waitForBytes(int)
{
    if (pending_.isEmpty())
        pending_ = in_.atEnd() ? QByteArray(32, '\r') : in_.piece();
    return !pending_.isEmpty();
}

void runReads(Input &in, const std::vector<std::function<void()>> &reads)
{
    for (int i = 0; i < 12 && !in.atEnd(); ++i)
        reads[in.byte() % reads.size()]();
}

QString scratchDir()
{
    static std::unique_ptr<QTemporaryDir> dir;
    if (!dir) {
        dir = std::make_unique<QTemporaryDir>();
        if (!dir->isValid())
            qFatal("no scratch directory");
    }
    QDir d(dir->path());
    for (const QString &f : d.entryList(QDir::Files | QDir::Hidden))
        d.remove(f);
    return dir->path() + u'/';
}

QString writeScratch(const QString &name, const QByteArray &bytes)
{
    const QString dir = scratchDir();
    QFile f(dir + name);
    if (!f.open(QIODevice::WriteOnly) || f.write(bytes) != bytes.size())
        qFatal("cannot write the scratch file");
    return dir;
}

} // namespace fuzz
