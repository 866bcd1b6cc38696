#include "textfile.h"
#include "paths.h"
#include "runtime_error.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <cerrno>

namespace textfile {

namespace {
RuntimeError accessError() { return {75, QStringLiteral("Path/File access error")}; }
} // namespace

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

RuntimeError writeFailure(int systemError, bool opening)
{
    switch (systemError) {
    case ENOSPC:
#ifdef EDQUOT
    case EDQUOT:
#endif
        return {61, QStringLiteral("Disk full")};
    case EACCES:
    case EPERM:
    case EROFS:
        return accessError();
    default:
        return opening ? accessError() : RuntimeError(57, QStringLiteral("Device I/O error"));
    }
}

bool isWriteFailure(const RuntimeError &e) { return e.number() == 57 || e.number() == 61 || e.number() == 75; }

bool isSaveLeftover(const QString &name, const QString &fileName)
{
    const qsizetype baseSize = name.size() - 7;
    if (baseSize < 1 || name[baseSize] != u'.')
        return false;
    for (qsizetype i = baseSize + 1; i < name.size(); ++i) {
        const char16_t c = name[i].unicode();
        if (!((c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z')))
            return false;
    }
    const QStringView base = QStringView(name).left(baseSize);
    return fileName.isEmpty() ? base.lastIndexOf(u'.') > 0 : base == fileName;
}

namespace {
[[noreturn]] void fail(QSaveFile &f, int systemError, bool opening = false)
{
    if (f.isOpen())
        f.cancelWriting();
    throw writeFailure(systemError, opening);
}

void removeLeftovers(const QDir &dir, const QString &fileName)
{
    const QStringList names = dir.entryList(QDir::Files | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    for (const QString &n : names)
        if (isSaveLeftover(n, fileName))
            QFile::remove(dir.filePath(n));
}
} // namespace

void writeAtomically(const QString &path, const QByteArray &bytes)
{
    const QString p = paths::native(path);
    const QFileInfo fi(p);
    const QFileInfo dirInfo(fi.absolutePath());
    if (!dirInfo.isDir())
        throw RuntimeError::pathNotFound();
    const bool exists = fi.exists();
    if (exists && (!fi.isFile() || !fi.isWritable()))
        throw accessError(); // a file the listener made read-only stays as it is
    // Only where the folder takes no new file may the file be written in place; the old
    // content is then not kept, which is why it is never the way where there is a choice.
    const bool inPlace = exists && !dirInfo.isWritable();
    QSaveFile f(p);
    f.setDirectWriteFallback(inPlace);
    errno = 0;
    if (!f.open(QIODevice::WriteOnly))
        fail(f, errno, true);
    // Each step is checked on its own: commit() does not always report a flush of buffered
    // data that failed, and would then put a cut file in place of the old one.
    errno = 0;
    if (f.write(bytes) != bytes.size())
        fail(f, errno);
    errno = 0;
    if (!f.flush() || f.error() != QFileDevice::NoError)
        fail(f, errno);
    errno = 0;
    if (!f.commit())
        fail(f, errno);
    if (!inPlace)
        removeLeftovers(dirInfo.absoluteFilePath(), fi.fileName());
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
