#pragma once
#include <QString>

namespace paths {

// The path as this system spells it: a name from settings text is turned into the name the
// file system knows (fromSettingsText); on systems whose separator is "/", a "\" is read as
// "/", and each existing component is matched without regard to case, so folders and files
// made on Windows work unchanged. Components that do not exist are kept as written.
QString native(const QString &path);

// Settings text holds a name as its bytes, one Latin-1 character per byte. The name those
// bytes stand for: each component decoded from the local 8-bit encoding where its bytes are
// valid there; a component that is not (typed in a Latin-1 editor) keeps its characters as
// they stand, which names the same letters in the local encoding.
QString fromSettingsText(const QString &text);
// The settings text of a name: its bytes in the local 8-bit encoding, one character each.
QString toSettingsText(const QString &name);

// True where the data directory is an absolute path ending in the separator.
bool usesSlash();

} // namespace paths
