#pragma once
// Text files as our users' files are: one byte one character (Latin-1), lines ended by CR LF.
#include <QByteArray>
#include <QIODevice>
#include <QString>
#include <QStringList>

namespace textfile {

// Lines of a byte stream. CR LF, a lone CR and a lone LF all end a line; a last line
// without an ending is a line; nothing after the last ending is not.
QStringList readLines(QIODevice &in);
QStringList splitLines(const QByteArray &bytes);

// Lines joined, each ended by CR LF, as Latin-1 bytes.
QByteArray joinLines(const QStringList &lines);

// Replace the file at path by bytes, atomically: on any failure the old file stands.
// A missing directory is run-time error 76; a file that cannot be written, 75.
void writeAtomically(const QString &path, const QByteArray &bytes);

// Open an existing file for reading; missing is run-time error 53, a missing directory 76.
QByteArray readAll(const QString &path);

} // namespace textfile
