#pragma once
// Text files as our users' files are: one byte one character (Latin-1), lines ended by CR LF.
#include "runtime_error.h"

#include <QByteArray>
#include <QIODevice>
#include <QString>
#include <QStringList>

namespace textfile {

// Lines of a byte stream. CR LF, a lone CR and a lone LF all end a line; a last line
// without an ending is a line; nothing after the last ending is not.
QStringList readLines(QIODevice &in);
QStringList splitLines(const QByteArray &bytes);
// The same lines as splitLines, each handed to f as its bytes (data, size) without a copy.
template <class F>
void forEachLine(const QByteArray &bytes, F &&f)
{
    const char *d = bytes.constData();
    const qsizetype n = bytes.size();
    qsizetype start = 0;
    for (qsizetype i = 0; i < n; ++i) {
        const char c = d[i];
        if (c == '\r' || c == '\n') {
            f(d + start, i - start);
            if (c == '\r' && i + 1 < n && d[i + 1] == '\n')
                ++i;
            start = i + 1;
        }
    }
    if (start < n)
        f(d + start, n - start);
}

// Lines joined, each ended by CR LF, as Latin-1 bytes.
QByteArray joinLines(const QStringList &lines);

// Replace the file at path by bytes, atomically: on any failure the old file stands, and the
// failure is raised, never passed over. A missing directory is run-time error 76; an existing
// file the user may not write, or one that cannot be made, 75; the rest by writeFailure.
// In a folder the user may not write, a writable file is written in place, as the original
// did; a failure there is raised all the same, though the old content may then be gone.
// After a save, what an interrupted save of the same file left behind is removed.
void writeAtomically(const QString &path, const QByteArray &bytes);

// The run-time error of a failed write by the system's error number: a full disk is 61
// "Disk full", a refused access 75 "Path/File access error", anything else 57 "Device I/O
// error" (75 where the file could not even be opened).
RuntimeError writeFailure(int systemError, bool opening);
// The run-time errors a save can end in besides a missing directory: 57, 61 and 75.
bool isWriteFailure(const RuntimeError &e);

// True for "<fileName>.~save-XXXXXX": the name under which a save of fileName writes before it
// renames, which a save killed at the wrong moment leaves behind. With an empty fileName, any
// name of that form.
bool isSaveLeftover(const QString &name, const QString &fileName = {});

// Open an existing file for reading; missing is run-time error 53, a missing directory 76.
QByteArray readAll(const QString &path);

} // namespace textfile
