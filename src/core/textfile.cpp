#include "textfile.h"
#include "paths.h"
#include "runtime_error.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryFile>
#include <cerrno>
#include <filesystem>
#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

namespace textfile {

QStringList splitLines(const QByteArray &bytes)
{
    QStringList lines;
    forEachLine(bytes, [&](const char *d, qsizetype n) { lines << QString::fromLatin1(d, n); });
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
        return RuntimeError::diskFull();
    case EACCES:
    case EPERM:
    case EROFS:
        return RuntimeError::pathFileAccess();
    default:
        return opening ? RuntimeError::pathFileAccess() : RuntimeError::deviceIO();
    }
}

bool isWriteFailure(const RuntimeError &e) { return e.number() == 57 || e.number() == 61 || e.number() == 75; }

namespace {
// A save writes under "<name>.~save-XXXXXX" first: a mark no file of the listener's carries, so
// what a killed save leaves can be told from his own "<name>.backup" and removed safely.
const QString kLeftoverMark = QStringLiteral(".~save-");
constexpr qsizetype kLeftoverRandom = 6;
} // namespace

bool isSaveLeftover(const QString &name, const QString &fileName)
{
    const qsizetype baseSize = name.size() - kLeftoverMark.size() - kLeftoverRandom;
    if (baseSize < 1 || QStringView(name).mid(baseSize, kLeftoverMark.size()) != kLeftoverMark)
        return false;
    for (qsizetype i = name.size() - kLeftoverRandom; i < name.size(); ++i)
        if (!name[i].isLetterOrNumber() || name[i].unicode() > 0x7F)
            return false;
    return fileName.isEmpty() || QStringView(name).left(baseSize) == fileName;
}

namespace {
[[noreturn]] void fail(QFileDevice &f, int systemError, bool opening = false)
{
    if (f.isOpen())
        f.close();
    throw writeFailure(systemError, opening);
}

// Every step is checked on its own: a buffered write that failed shows only at the flush.
void writeChecked(QFileDevice &f, const QByteArray &bytes)
{
    errno = 0;
    if (f.write(bytes) != bytes.size())
        fail(f, errno);
    errno = 0;
    if (!f.flush() || f.error() != QFileDevice::NoError)
        fail(f, errno);
#ifdef Q_OS_UNIX
    if (::fsync(f.handle()) != 0)
        fail(f, errno);
#endif
}

void removeLeftovers(const QDir &dir, const QString &fileName)
{
    const QStringList names = dir.entryList(QDir::Files | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    for (const QString &n : names)
        if (isSaveLeftover(n, fileName))
            QFile::remove(dir.filePath(n));
}

std::filesystem::path fsPath(const QString &p)
{
#ifdef Q_OS_WIN
    return std::filesystem::path(p.toStdWString());
#else
    return std::filesystem::path(QFile::encodeName(p).toStdString());
#endif
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
        throw RuntimeError::pathFileAccess(); // a file the listener made read-only stays as it is
    if (exists && !dirInfo.isWritable()) {
        // A folder that takes no new file: the file is written in place, as it always was there.
        // The old content is then not kept, which is why it is never the way where there is a choice.
        QFile f(p);
        errno = 0;
        if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate))
            fail(f, errno, true);
        writeChecked(f, bytes);
        f.close();
        return;
    }
    QTemporaryFile tmp(dirInfo.absoluteFilePath() + u'/' + fi.fileName() + kLeftoverMark + QString(kLeftoverRandom, u'X'));
    errno = 0;
    if (!tmp.open())
        fail(tmp, errno, true);
    // The new file keeps the old one's permissions; a new one gets the usual ones, not the
    // owner-only ones of a temporary file.
    tmp.setPermissions(exists ? fi.permissions()
                              : QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ReadUser
                                    | QFileDevice::WriteUser | QFileDevice::ReadGroup | QFileDevice::ReadOther);
    writeChecked(tmp, bytes);
    tmp.close();
    std::error_code ec;
    std::filesystem::rename(fsPath(tmp.fileName()), fsPath(p), ec);
    if (ec)
        throw writeFailure(ec.value(), false); // the temporary file goes with tmp
    tmp.setAutoRemove(false);
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
