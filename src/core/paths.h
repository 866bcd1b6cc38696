#pragma once
#include <QString>

namespace paths {

// The path as this system spells it: on systems whose separator is "/", a "\" is read as "/",
// and each existing component is matched without regard to case, so folders and files made
// on Windows work unchanged. Components that do not exist are kept as written.
QString native(const QString &path);

// True where the data directory is an absolute path ending in the separator.
bool usesSlash();

} // namespace paths
