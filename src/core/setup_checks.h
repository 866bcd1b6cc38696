#pragma once
// The rules of the set-up window's text boxes, without widgets: what leaving a box stores
// in the shared block, whether the text passes, and what the user is told when it does not.
#include <QString>

namespace setup {

// How the data directory is spelled: "C:\Dorvane\" or an absolute "/" path.
enum class PathStyle { Backslash, Slash };
// The style of this system (paths::usesSlash()).
PathStyle hostPathStyle();

// The boxes. Those that come in arrays take an index (txtARoptions 0..3, txtAgctc 0..2,
// txtNrbc 0..1, txtFreqcorr 0..1); the others ignore it.
enum class Box {
    Dirpath, Rxlatitude, Rxlongitude, Lt2utc,
    Dimbdxc, Dimown, Dimlog, Dimilg,
    ARoptions, LevelL, LevelR,
    Agctc, Nrbc,
    Freqcorr, Level
};

// What leaving a box ends in.
struct Verdict {
    bool passed = true;
    QString boxText;   // what the box shows afterwards
    QString message;   // lines joined by "\n"; empty when passed
    QString title;
    bool focusBack = false; // after a failure: focus returns to the box
};

// The data directory a failed path check puts in the box. On "/" systems it is home + "/brelvox/".
QString defaultDirPath(PathStyle style, const QString &home);

// Leaving a box: stores the text's value in its place of the shared block (dirPath, rxLatitude,
// rxLongitude or the slot), then checks it. A failure does not store the default: that happens
// when the box, now showing the default, is left again.
Verdict leaveBox(Box box, int index, const QString &text, PathStyle style, const QString &home);
// The same with this system's path style and the user's home.
Verdict leaveBox(Box box, int index, const QString &text);

// The text a box shows for the value now in memory.
QString boxText(Box box, int index);

} // namespace setup
