// brelvox-ilgtables <dir> [count]
// Writes invented ILG tables with shapelib: "ilgsdata.dbf" and "ilgadata.dbf" of the demo, and
// "aerolist.txt"; with a count, "ilgsdata.dbf" holds that many invented stations instead.
#include "core/textfile.h"
#include "data/ilg_tables.h"

#include <QCoreApplication>
#include <QDir>
#include <cstdio>

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() < 2) {
        std::fprintf(stderr, "usage: brelvox-ilgtables DIR [COUNT]\n");
        return 2;
    }
    const QDir dir(args[1]);
    if (!dir.exists() && !QDir().mkpath(args[1])) {
        std::fprintf(stderr, "cannot make %s\n", qPrintable(args[1]));
        return 1;
    }
    const bool many = args.size() > 2;
    const bool ok = ilgtables::write(dir.filePath("ilgsdata.dbf"),
                                     many ? ilgtables::many(args[2].toInt()) : ilgtables::shortWave())
                    && ilgtables::write(dir.filePath("ilgadata.dbf"), ilgtables::longMediumWave());
    if (!ok) {
        std::fprintf(stderr, "cannot write the tables in %s\n", qPrintable(args[1]));
        return 1;
    }
    textfile::writeAtomically(dir.filePath("aerolist.txt"), textfile::joinLines(ilgtables::aeroList()));
    return 0;
}
