// ILG tables written with shapelib and read back into FTL lines, which records a conversion
// takes, the Aero list's two loops, and the demo's FTL files against what the converters make.
#include "testmain.h"
#include "core/textfile.h"
#include "data/aero_convert.h"
#include "data/ilg_convert.h"
#include "data/ilg_tables.h"
#include "testutil.h"

#include <QTemporaryDir>
#include <QTest>

namespace {
// Twenty fields in table order: FREQ UTC STATION TARGET LANGUAGE POWER LATI LONGI, the nine area
// columns NA..PA, COUNTRY LOCATION STATUS; "~" is a Null.
QStringList fields(const QString &bar)
{
    QStringList f = bar.split(u'|');
    for (QString &s : f)
        if (s == QLatin1String("~"))
            s.clear();
    return f;
}
const QString kAreasAll = QStringLiteral("NA|CA|SA|EU|AF|ME|AS|AU|PA");
} // namespace

class TestConvert : public QObject {
    Q_OBJECT
private slots:
    // One record written with shapelib, read through the table, its line (empty: skipped with
    // every include box set).
    void ilgLine_data()
    {
        QTest::addColumn<QString>("record");
        QTest::addColumn<QString>("line");
        const QString tail = QStringLiteral("|Brelland|Woofferton|C");
        QTest::newRow("all fields") << "9410|0500-2300|World Service Brel|EUAS|English|300|5138N|00123W|" + kAreasAll + tail
            << "09410.00 0500-2300 World Service Brel     EUAS     English           300     5138N 00123W 111111111 Brelland     Woofferton  ";
        QTest::newRow("Nulls are two blanks, a Null area is 0")
            << "5975.5|1800-2300|~|~|~|~|~|~|~|~|~|EU|~|~|~|~|~|~|~|~"
            << "05975.50 1800-2300" + QString(72, u' ') + "000100000" + QString(26, u' ');
        QTest::newRow("23-character station loses its last")
            << "7255|0400-2200|Voice of the Orlina Coas|AF|Hausa|100|0929N|00724E|~|~|~|~|AF|~|~|~|~|Orlina|Abujel|C"
            << "07255.00 0400-2200 Voice of the Orlina Co AF       Hausa             100     0929N 00724E 000010000 Orlina       Abujel      ";
        QTest::newRow("long fields cut to their columns")
            << "13570|1400-0200x|Pan Am|SACANAEUAF|Spanish and Portuguese|1000 kW|2332S|04637W|~|~|SA|~|~|~|~|~|~|Republica Paulista|Cachoeira Paulista|C"
            << "13570.00 1400-0200 Pan Am                 SACANAEU Spanish and Portu 1000 kW 2332S 04637W 001000000 Republica Pa Cachoeira Pa";
        QTest::newRow("six digits shift the record")
            << "100000|0000-2400|Wide|NA|English|1|5000N|00500E|NA|~|~|~|~|~|~|~|~|Kelvard|Otterby|~"
            << "100000.00 0000-2400 Wide                   NA       English           1       5000N 00500E 100000000 Kelvard      Otterby     ";
        QTest::newRow("an area flag needs its own code exactly")
            << "603|1700-0600|Nord|EU|French|300|5030N|00306E|CA|NA|sa|EU|EU|~|~|~|PA|Nordmark|Lille|c"
            << "00603.00 1700-0600 Nord                   EU       French            300     5030N 00306E 000100001 Nordmark     Lille       ";
        QTest::newRow("Null UTC skipped") << "999|~|Night Voice|EU|~|~|~|~|~|~|~|~|~|~|~|~|~|~|~|C" << "";
        QTest::newRow("UTC with a letter skipped") << "999|irreg.|Night Voice|EU|~|~|~|~|~|~|~|~|~|~|~|~|~|~|~|C" << "";
    }
    void ilgLine()
    {
        QFETCH(QString, record);
        QFETCH(QString, line);
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("ilgsdata.dbf"));
        QVERIFY(ilgtables::write(path, {ilgtables::record(fields(record))}));
        ilg::Table table;
        QVERIFY(table.open(path));
        const QStringList lines = ilg::convert(table, {true, true, true, true});
        QCOMPARE(lines, line.isEmpty() ? QStringList() : QStringList{line});
    }

    // include: the boxes E I N P that are set.
    void statusRule_data()
    {
        QTest::addColumn<QString>("status");
        QTest::addColumn<QString>("include");
        QTest::addColumn<bool>("passes");
        const char *codes[] = {"E", "I", "N", "P"};
        for (const char *c : codes) {
            const QString own = QLatin1String(c);
            QString others = QStringLiteral("EINP");
            others.remove(own);
            QTest::addRow("%s without its box", c) << own << others << false;
            QTest::addRow("%s with its box", c) << own << own << true;
            QTest::addRow("%s in lower case", c) << own.toLower() << others << false;
        }
        QTest::newRow("C always") << "C" << "" << true;
        QTest::newRow("Null counts as C") << "~" << "" << true;
        QTest::newRow("any other always") << "X" << "" << true;
        QTest::newRow("two letters are another") << "EI" << "" << true;
    }
    void statusRule()
    {
        QFETCH(QString, status);
        QFETCH(QString, include);
        QFETCH(bool, passes);
        const ilg::Include boxes = {include.contains(u'E'), include.contains(u'I'), include.contains(u'N'), include.contains(u'P')};
        const ilg::Field f = status == QLatin1String("~") ? ilg::Field() : ilg::Field(status);
        QCOMPARE(ilg::statusPasses(f, boxes), passes);
    }

    // Lines joined by "|"; "_" stands for 39 blanks, so that a continuation starts at column 40.
    void aero_data()
    {
        QTest::addColumn<bool>("network");
        QTest::addColumn<QString>("list");
        QTest::addColumn<QString>("out");
        const QString net = QStringLiteral("2850    H24     CAR-A Brelland         ");
        QTest::newRow("1000 before and in the list")
            << false << "head|999 x|1000    a|2850 first|1000    b|3016 next|1000.5 c" << "2850 first|3016 next|1000.5 c";
        QTest::newRow("a run of continuations carries the first line's columns")
            << false << net + "Brelland Radio|_Orlina Radio|_Castlehill|3016 x"
            << net + "Brelland Radio|" + net + "Orlina Radio|" + net + "Castlehill|3016 x";
        QTest::newRow("a short line breaks the chain")
            << false << net + "Brelland|short|_lost|3016" << net + "Brelland|3016";
        QTest::newRow("a continuation of a 1000 line is dropped")
            << false << "2850 a|1000" + QString(35, u' ') + "b|_c" << "2850 a";
        QTest::newRow("blank and short lines") << false << "||2850||x|" << "2850";
        QTest::newRow("adjacent equal keys collapse, others stay")
            << true << "5598    H24     NAT-A North Atlantic   Gander|5598    H24     NAT-A North Atlantic   Santa Maria|"
                       "5598    H24     NAT-B                  x|5598    xx      NAT-A North Atlantic   y"
            << "5598            NAT-A North Atlantic  |5598            NAT-B                 |5598            NAT-A North Atlantic  ";
        QTest::newRow("2000 and below are left out")
            << true << "2000    H24     NET-A|1999.9  H24     NET-B|2000.1  H24     NET-C"
            << "2000.1          NET-C";
        QTest::newRow("the whole line's number: hours after a blank count in")
            << true << "1500    0600    NET-D|1500    H24     NET-E" << "1500            NET-D";
        QTest::newRow("continuations and short lines") << true << "_x|3|" << "";
    }
    void aero()
    {
        QFETCH(bool, network);
        QFETCH(QString, list);
        QFETCH(QString, out);
        QStringList in = list.split(u'|');
        for (QString &l : in)
            l.replace(u'_', QString(39, u' '));
        const QStringList got = network ? aero::networkOnly(in) : aero::fullDetails(in);
        QCOMPARE(got, out.isEmpty() ? QStringList() : out.split(u'|'));
    }

    void aeroLongLines()
    {
        const QString huge = QStringLiteral("2850    H24     ") + QString(100000, u'x');
        QCOMPARE(aero::fullDetails({QString(70000, u' '), huge, QString(70000, u' ')}), (QStringList{huge, huge.left(39) + QString(70000 - 39, u' ')}));
        QCOMPARE(aero::networkOnly({huge, huge}).size(), 1);
    }

    // The demo's FTL files are what the converters make of the demo's sources now (every
    // status included).
    void demoFiles_data()
    {
        QTest::addColumn<QString>("ftl");
        QTest::newRow("SW") << "ILGSDATA.FTL";
        QTest::newRow("LW/MW") << "ILGADATA.FTL";
        QTest::newRow("full details") << "aero.ftl";
        QTest::newRow("networks") << "aero2.ftl";
    }
    void demoFiles()
    {
        QFETCH(QString, ftl);
        const QString src = QFINDTESTDATA("../../demo/ILGDB/aerolist.txt").section(u'/', 0, -2) + u'/';
        QStringList lines;
        if (ftl.startsWith(QLatin1String("ILG"))) {
            ilg::Table t;
            QVERIFY(t.open(src + ftl.left(8).toLower() + QStringLiteral(".dbf")));
            lines = ilg::convert(t, {true, true, true, true});
        } else {
            const QStringList aeroList = textfile::splitLines(readFile(src + QStringLiteral("aerolist.txt")));
            QCOMPARE(aeroList, ilgtables::aeroList());
            lines = ftl == QLatin1String("aero.ftl") ? aero::fullDetails(aeroList) : aero::networkOnly(aeroList);
        }
        QVERIFY(lines.size() > 2);
        QCOMPARE(readFile(QFINDTESTDATA("../../demo/RX2DB/" + ftl)), textfile::joinLines(lines));
    }

    // The demo's tables are the generator's: stations in frequency order, on the demo receiver's
    // band and away from the demo listener's longitude.
    void demoTables()
    {
        const QString src = QFINDTESTDATA("../../demo/ILGDB/ilgsdata.dbf");
        ilg::Table sw;
        QVERIFY(sw.open(src));
        QCOMPARE(sw.recordCount(), int(ilgtables::shortWave().size()));
        double before = 0;
        for (int i = 0; i < sw.recordCount(); ++i) {
            const ilg::Record r = sw.record(i);
            const double f = r[ilg::Freq]->toDouble();
            QVERIFY2(f >= before, qPrintable(*r[ilg::Freq]));
            before = f;
            QVERIFY(r[ilg::Longi].value_or(QString()) != QLatin1String("00445E"));
        }
    }
};

BRELVOX_TEST(TestConvert)
#include "tst_convert.moc"
