// The schedule lists' logic: reading with marks and capacity, the selection box, the rows, the
// ".320" fields and the click rules.
#include "testmain.h"
#include "testutil.h"
#include "core/shared_state.h"
#include "core/numtext.h"
#include "data/schedule_lists.h"

#include <QTest>

namespace {
// A club list line: columns 1-16, 18-34, 36-39, 41-44, frequencies from 49.
QString bdx(const QString &c1, const QString &c18, const QString &start, const QString &end, const QString &freqs)
{
    return c1.leftJustified(17) + c18.leftJustified(18) + start.leftJustified(5) + end.leftJustified(8) + freqs;
}

QByteArray file(const QStringList &lines) { return (lines.join("\r\n") + "\r\n").toLatin1(); }

QString steps(const lists::TuneSteps &s)
{
    QStringList out;
    for (const auto &t : s)
        out << (t.kind == lists::TuneStep::Frequency ? "F" + QString::number(t.khz) : "M" + t.mode);
    return out.join(' ');
}
struct TuneCase { QString grid; int row, col; QString text, tuned; };
} // namespace
Q_DECLARE_METATYPE(TuneCase)

class TestLists : public QObject {
    Q_OBJECT
private slots:
    void init()
    {
        resetSharedState();
        slotDimBdxc() = 10;
        slotDimOwn() = 10;
    }

    // Which records a selection answer shows, by their first column; "keep" leaves the grid.
    void selection_data()
    {
        QTest::addColumn<QString>("answer");
        QTest::addColumn<QString>("shown");
        QTest::newRow("2400 is a time") << "2400" << "night,day";
        QTest::newRow("over midnight") << "0100" << "night,day";
        QTest::newRow("start bound") << "0600" << "morning,day";
        QTest::newRow("end bound") << "0800" << "morning,day";
        QTest::newRow("just past the end") << "0801" << "day";
        QTest::newRow("equal times never by time") << "1200" << "day";
        QTest::newRow("0000 keeps") << "0000" << "keep";
        QTest::newRow("2401 keeps") << "2401" << "keep";
        QTest::newRow("ALL") << "ALL" << "night,morning,noon,day";
        QTest::newRow("All") << "All" << "night,morning,noon,day";
        QTest::newRow("abc keeps") << "abc" << "keep";
        QTest::newRow("five digits keep") << "01000" << "keep";
        QTest::newRow("Cancel keeps") << "" << "keep";
    }
    void selection()
    {
        QFETCH(QString, answer);
        QFETCH(QString, shown);
        const int32_t n = lists::readBdxc(file({bdx("night", "A", "2200", "0200", "6070"),
                                                bdx("morning", "B", "0600", "0800", "7255"),
                                                bdx("noon", "C", "1200", "1200", "9410"),
                                                bdx("day", "D", "0000", "2400", "9420")}));
        QCOMPARE(n, 4);
        const auto rows = lists::bdxcRows(answer, n);
        QStringList got;
        if (!rows)
            got << "keep";
        else
            for (const QStringList &r : *rows)
                got << r[0].trimmed();
        QCOMPARE(got.join(','), shown);
    }

    // Columns 1-17 and 18-35 of the last record after the marks, the record before resolved.
    void marks_data()
    {
        QTest::addColumn<QStringList>("lines");
        QTest::addColumn<QString>("first");
        QTest::addColumn<QString>("second");
        QTest::newRow("first line column 1") << QStringList{bdx(".", "Org", "0000", "0100", "")} << "" << "Org";
        QTest::newRow("first line column 18") << QStringList{bdx("Land", ".", "0000", "0100", "")} << "Land" << "";
        QTest::newRow("run carries the first")
            << QStringList{bdx("Land", "Org", "", "", ""), bdx(".", "Two", "", "", ""), bdx(".", "Three", "", "", "")}
            << "Land" << "Three";
        QTest::newRow("both marks in a run")
            << QStringList{bdx("Land", "Org", "", "", ""), bdx(".", ".", "", "", ""), bdx(".", ".", "", "", "")}
            << "Land" << "Org";
        QTest::newRow("a dot elsewhere is text")
            << QStringList{bdx("Land", "Org", "", "", ""), bdx(" .", "x.", "", "", "")} << "." << "x.";
    }
    void marks()
    {
        QFETCH(QStringList, lines);
        QFETCH(QString, first);
        QFETCH(QString, second);
        const int32_t n = lists::readBdxc(file(lines));
        QCOMPARE(bdxcRecords[size_t(n)].left(17).trimmed(), first);
        QCOMPARE(bdxcRecords[size_t(n)].mid(17, 18).trimmed(), second);
        QCOMPARE(bdxcRecords[size_t(n)].size(), 100);
    }

    // The frequency cells of a club row (blank kept) and an own row (blank cut); "error" for 9.
    void pieces_data()
    {
        QTest::addColumn<QString>("freqs");
        QTest::addColumn<QString>("club");
        QTest::addColumn<QString>("own");
        QTest::newRow("9.99 goes, 10 stays") << "9.99,10,9410.5" << "| 10| 9410.5||||" << "|10|9410.5|||||";
        QTest::newRow("blanks and text") << " , abc ,  5975  ,x1" << "|| 5975||||" << "||5975|||||";
        QTest::newRow("eighth shown by own only") << "11,12,13,14,15,16,17,18,19,20"
                                                   << " 11| 12| 13| 14| 15| 16| 17" << "11|12|13|14|15|16|17|18";
        QTest::newRow("eleventh piece") << "1,2,3,4,5,6,7,8,9,10,11" << "error" << "error";
    }
    void pieces()
    {
        QFETCH(QString, freqs);
        QFETCH(QString, club);
        QFETCH(QString, own);
        const QString clubRec = lists::fixedRecord(bdx("C", "O", "0000", "2400", freqs));
        const QString ownRec = lists::fixedRecord(QString("Org").leftJustified(50) + freqs);
        QString gotClub = "error", gotOwn = "error";
        const int e1 = errorOf([&] { gotClub = lists::bdxcRow(clubRec).mid(3).join('|'); });
        const int e2 = errorOf([&] { gotOwn = lists::ownRow(ownRec).mid(4, 8).join('|'); });
        QCOMPARE(e1, gotClub == "error" ? 9 : 0);
        QCOMPARE(e2, gotOwn == "error" ? 9 : 0);
        QCOMPARE(gotClub, club);
        QCOMPARE(gotOwn, own);
    }

    void ownRecord()
    {
        QString line = "Radio Tarnholm Intl TRH ENG 1800-2300      s      5975,7490,,";
        QCOMPARE(lists::readOwn(file({line})), 1);
        QCOMPARE(lists::ownRow(ownRecords[1]).join('|'),
                 "Radio Tarnholm Intl|TRH|ENG|1800-2300|5975|7490||||||||S");
        // Empty files: one blank line for the fixed lists, none for ".320".
        QCOMPARE(lists::readBdxc({}), 1);
        QCOMPARE(lists::readOwn({}), 1);
        QCOMPARE(bdxcRecords[1], QString(100, ' '));
        QCOMPARE(lists::read320({}), 0);
    }

    // A ".320" line as its grid row, "|" between the cells; "error" for 9.
    void row320_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("row");
        QTest::newRow("no comma") << "Radio X 9.41 AM" << "|00000.000||||||";
        QTest::newRow("last field needs its comma")
            << "Brel,9.41,AM,a,b,c,d,Orlina,English,0500,2300,notes here" << "Brel|09410.000|AM|Orlina|English|0500|2300|";
        QTest::newRow("quotes off, one pair")
            << "\"Brel\",\"\"9.42\"\",USB,,,,,Loc,,,,\"\"\"," << "Brel|00000.000|USB|Loc||||\"";
        QTest::newRow("quoted comma splits") << "\"Voice, of Orlina\",7.255,AM," << "Voice|00000.000|7.255|||||";
        QTest::newRow("notes cut at 20")
            << "N,13.57,AM,,,,,,,,,A note longer than twenty,"
            << "N|13570.000|AM|||||A note longer than t";
        QTest::newRow("decimal comma cuts") << "N,\"9,41\",AM," << "N|09000.000|41|||||";
        QTest::newRow("fifteen fields") << QString("a,").repeated(15) << "a|00000.000|a|a|a|a|a|a";
        QTest::newRow("sixteen fields") << QString("a,").repeated(16) << "error";
    }
    void row320()
    {
        QFETCH(QString, line);
        QFETCH(QString, row);
        QString got = "error";
        const int e = errorOf([&] { got = lists::row320(lists::split320(line)).join('|'); });
        QCOMPARE(e, row == "error" ? 9 : 0);
        QCOMPARE(got, row);
    }

    // The kHz column of a ".320" row reads as the pattern shows the MHz value times 1000.
    void frequency320_data()
    {
        QTest::addColumn<QString>("mhz");
        for (const char *t : {"9.41", "5.975", " 13.57 ", ".5", "12345.6", "123456789.123", "0012.3456", "7.2555", "9,41",
                              "-5.1", "1e3", ".", "", "abc", "000000000.001", "15.0005"})
            QTest::newRow(t) << QString(t);
    }
    void frequency320()
    {
        QFETCH(QString, mhz);
        QCOMPARE(lists::frequency320(mhz), numtext::format(numtext::Val(mhz) * 1000, "00000.000"));
    }

    // Capacity is the setting x 1000 records; one line more is run-time error 9, counts past 32,767.
    void capacity_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<int>("lines");
        QTest::addColumn<int>("error");
        for (int kind : {1, 2, 10}) {
            const char *k = kind == 1 ? "club" : kind == 2 ? "own" : ".320";
            QTest::addRow("%s full", k) << kind << 50000 << 0;
            QTest::addRow("%s one more", k) << kind << 50001 << 9;
        }
    }
    void capacity()
    {
        QFETCH(int, kind);
        QFETCH(int, lines);
        QFETCH(int, error);
        slotDimBdxc() = slotDimOwn() = 50;
        const QByteArray bytes = QByteArray("Line,9.41,AM,\r\n").repeated(lines);
        int32_t n = 0;
        const int e = errorOf([&] { n = kind == 1 ? lists::readBdxc(bytes) : kind == 2 ? lists::readOwn(bytes) : lists::read320(bytes); });
        QCOMPARE(e, error);
        if (!error)
            QCOMPARE(n, lines);
    }

    void selectionDefault()
    {
        QCOMPARE(lists::selectionDefault("7 Mar 2026  21:05"), QString("2105"));
        QCOMPARE(lists::selectionDefault(""), QString(""));
    }

    // What a click tunes, in order: F frequency, M mode.
    void clicks_data()
    {
        QTest::addColumn<TuneCase>("c");
        QTest::newRow("club frequency") << TuneCase{"club", 3, 3, " 9410", "F9410"};
        QTest::newRow("club last shown row") << TuneCase{"club", 5, 9, " 6070", "F6070"};
        QTest::newRow("club beyond the rows") << TuneCase{"club", 6, 3, " 9410", ""};
        QTest::newRow("club column 10") << TuneCase{"club", 1, 10, " 9410", ""};
        QTest::newRow("club time column") << TuneCase{"club", 1, 2, "0500 2300", ""};
        QTest::newRow("club empty cell") << TuneCase{"club", 1, 4, "", "F0"};
        QTest::newRow("own frequency then mode") << TuneCase{"own", 1, 4, "5975", "F5975 MS"};
        QTest::newRow("own seventh") << TuneCase{"own", 1, 10, "7490", "F7490 MS"};
        QTest::newRow("own eighth does not tune") << TuneCase{"own", 1, 11, "9410", ""};
        QTest::newRow("own organisation") << TuneCase{"own", 1, 3, "1800-2300", ""};
        QTest::newRow(".320 mode then frequency") << TuneCase{".320", 1, 5, "", "Mu F9410"};
    }
    void clicks()
    {
        QFETCH(TuneCase, c);
        const lists::TuneSteps s = c.grid == "club" ? lists::bdxcClick(c.row, c.col, c.text, 5)
                                   : c.grid == "own" ? lists::ownClick(c.col, c.text, "S")
                                                     : lists::click320("09410.000", "USB");
        QCOMPARE(steps(s), c.tuned);
    }
};

BRELVOX_TEST(TestLists)
#include "tst_lists.moc"
