// brelvox-ilgtables DIR [COUNT]
//   writes invented sources into DIR: "ilgsdata.dbf" and "ilgadata.dbf" (ILG tables, with
//   shapelib) and "aerolist.txt"; with COUNT, "ilgsdata.dbf" holds that many invented stations.
// brelvox-ilgtables --ftl DIR OUTDIR
//   converts the sources of DIR into OUTDIR as the converters do, every status included:
//   "ILGSDATA.FTL", "ILGADATA.FTL", "aero.ftl", "aero2.ftl".
#include "core/textfile.h"
#include "data/aero_convert.h"
#include "data/ilg_tables.h"

#include <QCoreApplication>
#include <QDir>
#include <cstdio>

namespace {
int fail(const QString &what)
{
    std::fprintf(stderr, "%s\n", qPrintable(what));
    return 1;
}

int convertSources(const QDir &src, const QDir &out)
{
    for (const auto &[table, ftl] : {std::pair{"ilgsdata.dbf", "ILGSDATA.FTL"}, std::pair{"ilgadata.dbf", "ILGADATA.FTL"}}) {
        ilg::Table t;
        if (!t.open(src.filePath(QLatin1String(table))))
            return fail(QStringLiteral("cannot read ") + src.filePath(QLatin1String(table)));
        textfile::writeAtomically(out.filePath(QLatin1String(ftl)), textfile::joinLines(ilg::convert(t, {true, true, true, true})));
    }
    const QStringList aero = textfile::splitLines(textfile::readAll(src.filePath(QStringLiteral("aerolist.txt"))));
    textfile::writeAtomically(out.filePath(QStringLiteral("aero.ftl")), textfile::joinLines(aero::fullDetails(aero)));
    textfile::writeAtomically(out.filePath(QStringLiteral("aero2.ftl")), textfile::joinLines(aero::networkOnly(aero)));
    return 0;
}
} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() == 4 && args[1] == QLatin1String("--ftl"))
        return convertSources(QDir(args[2]), QDir(args[3]));
    if (args.size() < 2 || args.size() > 3)
        return fail(QStringLiteral("usage: brelvox-ilgtables DIR [COUNT] | --ftl DIR OUTDIR"));
    const QDir dir(args[1]);
    if (!dir.exists() && !QDir().mkpath(args[1]))
        return fail(QStringLiteral("cannot make ") + args[1]);
    const bool ok = ilgtables::write(dir.filePath("ilgsdata.dbf"),
                                     args.size() == 3 ? ilgtables::many(args[2].toInt()) : ilgtables::shortWave())
                    && ilgtables::write(dir.filePath("ilgadata.dbf"), ilgtables::longMediumWave());
    if (!ok)
        return fail(QStringLiteral("cannot write the tables in ") + args[1]);
    textfile::writeAtomically(dir.filePath("aerolist.txt"), textfile::joinLines(ilgtables::aeroList()));
    return 0;
}
