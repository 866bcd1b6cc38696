#include "textfile.h"
#include "paths.h"
#include "runtime_error.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace textfile {

QStringList splitLines(const QByteArray &bytes)
{
    QStringList lines;
    qsizetype start = 0;
    const qsizetype n = bytes.size();
    for (qsizetype i = 0; i < n; ++i) {
        const char c = bytes[i];
        if (c == '\r' || c == '\n') {
            lines << QString::fromLatin1(bytes.constData() + start, i - start);
            if (c == '\r' && i + 1 < n && bytes[i + 1] == '\n')
                ++i;
            start = i + 1;
        }
    }
    if (start < n)
        lines << QString::fromLatin1(bytes.constData() + start, n - start);
    return lines;
}

QStringList readLines(QIODevice &in) { return splitLines(in.readAll()); }

QByteArray joinLines(const QStringList &lines)
{
    QByteArray out;
    for (const QString &l : lines) {
        out += l.toLatin1();
        out += "\r\n";
    }
    return out;
}

void writeAtomically(const QString &path, const QByteArray &bytes)
{
    const QString p = paths::native(path);
    const QFileInfo fi(p);
    if (!fi.absoluteDir().exists())
        throw RuntimeError::pathNotFound();
    QSaveFile f(p);
    if (!f.open(QIODevice::WriteOnly))
        throw RuntimeError(75, QStringLiteral("Path/File access error"));
    if (f.write(bytes) != bytes.size()) {
        f.cancelWriting();
        throw RuntimeError(57, QStringLiteral("Device I/O error"));
    }
    if (!f.commit())
        throw RuntimeError(57, QStringLiteral("Device I/O error"));
}

QByteArray readAll(const QString &path)
{
    const QString p = paths::native(path);
    QFile f(p);
    if (!f.open(QIODevice::ReadOnly)) {
        if (!QFileInfo(p).absoluteDir().exists())
            throw RuntimeError::pathNotFound();
        throw RuntimeError::fileNotFound();
    }
    return f.readAll();
}

} // namespace textfile
