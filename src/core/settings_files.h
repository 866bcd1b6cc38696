#pragma once
// "brelvox2.ini" (settings) and "formpositions.ini" (window positions).
#include <QByteArray>
#include <QString>
#include <QStringList>

namespace settings {

// Fill dirPath, rxLatitude, rxLongitude, rxType and iniSlot from the settings lines.
// Fewer than four lines is run-time error 62; a 33rd numeric line is run-time error 9.
void readSettings(const QStringList &lines);
// The 35 lines the set-up window's Save writes.
QByteArray settingsText();

// Fill formLeft/formTop from the positions lines; a 47th line is run-time error 9.
void readPositions(const QStringList &lines);
// Always 45 lines "left,top"; a value beyond 40000 either way is written as 0.
QByteArray positionsText();

// The start: both files by their bare names in the current directory (53 when missing).
void loadPositionsFromCurrentDirectory();
void loadSettingsFromCurrentDirectory();
// Both are written into the data directory.
void saveSettings();
void savePositions();

// The rule every window follows at unload: at least 1500 twips stay on screen at the left,
// and the top is never negative.
struct Position { int left; int top; };
Position positionToStore(double left, double top, double width);

} // namespace settings
