#include "settings_files.h"
#include "numtext.h"
#include "paths.h"
#include "runtime_error.h"
#include "shared_state.h"
#include "textfile.h"

#include <QFile>
#include <cmath>
#include <cstdlib>

namespace settings {

void readSettings(const QStringList &lines)
{
    if (lines.size() < 4)
        throw RuntimeError::inputPastEnd();
    dirPath = lines[0];
    rxLatitude = lines[1];
    rxLongitude = lines[2];
    rxType = numtext::cint(numtext::Val(lines[3]));
    for (int i = 4; i < lines.size(); ++i) {
        const int slot = i - 3;
        if (slot >= int(iniSlot.size()))
            throw RuntimeError::subscriptOutOfRange();
        iniSlot[slot] = float(numtext::Val(lines[i]));
    }
}

QByteArray settingsText()
{
    QStringList lines{dirPath, rxLatitude, rxLongitude, QString::number(rxType)};
    for (int i = 1; i <= 31; ++i)
        lines << numtext::str(iniSlot[i]);
    return textfile::joinLines(lines);
}

void readPositions(const QStringList &lines)
{
    for (int k = 0; k < lines.size(); ++k) {
        const int n = k + 1;
        if (n >= kPositionCapacity)
            throw RuntimeError::subscriptOutOfRange();
        const QString &line = lines[k];
        formLeft[n] = numtext::clng(numtext::Val(line));
        for (int c = 0; c < line.size(); ++c)
            if (line[c] == u',')
                formTop[n] = numtext::clng(numtext::Val(line.mid(c + 1)));
    }
}

QByteArray positionsText()
{
    QStringList lines;
    for (int n = 1; n <= kWindowCount; ++n) {
        int32_t l = formLeft[n], t = formTop[n];
        if (std::abs(l) > 40000)
            l = 0;
        if (std::abs(t) > 40000)
            t = 0;
        lines << QStringLiteral("%1,%2").arg(l).arg(t);
    }
    return textfile::joinLines(lines);
}

static QStringList readBareName(const char *name)
{
    QFile f(QString::fromLatin1(name));
    if (!f.open(QIODevice::ReadOnly))
        throw RuntimeError::fileNotFound();
    return textfile::readLines(f);
}

void loadPositionsFromCurrentDirectory() { readPositions(readBareName("formpositions.ini")); }

void loadSettingsFromCurrentDirectory()
{
    readSettings(readBareName("brelvox2.ini"));
    computeFullDirTable();
}

void saveSettings() { textfile::writeAtomically(dirPath + "brelvox2.ini", settingsText()); }

void savePositions() { textfile::writeAtomically(dirPath + "formpositions.ini", positionsText()); }

Position positionToStore(double left, double top, double width)
{
    int l = numtext::clng(left);
    if (1500 - width > l)
        l = numtext::clng(1500 - width);
    int t = numtext::clng(top);
    if (t < 0)
        t = 0;
    return {l, t};
}

} // namespace settings
