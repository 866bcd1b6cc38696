// The ILG and Aero databases' logic: reading with capacity, the query files, the search with its
// bounds and criteria, the sort of the list indices, the scan's next row.
#include "testmain.h"
#include "testutil.h"
#include "core/runtime_error.h"
#include "core/shared_state.h"
#include "data/ftl_query.h"

#include <QTest>

using namespace ftlquery;

namespace {
// An ILG record of 125 columns: target "EU", power, position and location fixed.
QString ilg(const QString &freq, const QString &utc, const QString &station, const QString &language,
            const QString &flags, const QString &country)
{
    return freq.leftJustified(8) + ' ' + utc.leftJustified(9) + ' ' + station.leftJustified(22) + ' ' +
           QString("EU").leftJustified(8) + ' ' + language.leftJustified(17) + ' ' + QString("250").leftJustified(7) +
           ' ' + "5130N" + ' ' + "00012E" + ' ' + flags + ' ' + country.leftJustified(12) + ' ' +
           QString("Lorvik").leftJustified(12);
}

QByteArray file(const QStringList &lines) { return (lines.join("\r\n") + "\r\n").toLatin1(); }

QString shown()
{
    QStringList out;
    for (int32_t k = 0; k < ilgShown; ++k)
        out << QString::number(ilgListIndex[size_t(k)]);
    return out.join(',');
}

// "7255*3,5975" is three rows of 7255 then one of 5975.
std::vector<double> rowsOf(const QString &pattern)
{
    std::vector<double> out;
    for (const QString &piece : pattern.split(',')) {
        const QStringList p = piece.split('*');
        for (int i = 0; i < (p.size() > 1 ? p[1].toInt() : 1); ++i)
            out.push_back(p[0].toDouble());
    }
    return out;
}
struct ScanCase { QString rows; int position; double last; int row, next; };
} // namespace
Q_DECLARE_METATYPE(ScanCase)

class TestFtlQuery : public QObject {
    Q_OBJECT
private slots:
    void init()
    {
        resetSharedState();
        slotDimIlg() = 1;
    }

    // Which records a search lists; checks are the letters of the boxes ticked (Language,
    // Station, Country, on Air, Target), boxes the six texts by "|".
    void search_data()
    {
        QTest::addColumn<QString>("checks");
        QTest::addColumn<QString>("boxes");
        QTest::addColumn<QString>("listed");
        QTest::newRow("all off, bounds empty: 0 to 32 MHz") << "" << "|||||" << "1,2,3,4,5,6";
        QTest::newRow("zero bounds as empty") << "" << "||||0|0,0" << "1,2,3,4,5,6";
        QTest::newRow("lower bound strict") << "" << "||||3.99|" << "2,3,4,5,6";
        QTest::newRow("lower just below") << "" << "||||3,989|" << "1,2,3,4,5,6";
        QTest::newRow("bounds read columns 1-5") << "" << "||||9.4103|" << "5,6";
        QTest::newRow("upper bound included") << "" << "|||||9.41" << "1,2,3,4";
        QTest::newRow("lower above all") << "" << "||||40|" << "";
        QTest::newRow("language, case-blind prefix") << "L" << "eng|||||" << "1,2,6";
        QTest::newRow("station prefix, not inside") << "S" << "|velmar||||" << "4";
        QTest::newRow("country from column 101") << "C" << "||VELM|||" << "1,4";
        QTest::newRow("a text off has no effect") << "" << "xx|xx|xx|xx||" << "1,2,3,4,5,6";
        QTest::newRow("on the air at 0030, over midnight") << "A" << "|||||" << "1,5";
        QTest::newRow("target flag") << "T" << "|||eu||" << "1,3";
        QTest::newRow("target of another column") << "T" << "|||NA||" << "2";
        QTest::newRow("target not a code") << "T" << "|||XX||" << "";
        QTest::newRow("two criteria") << "LA" << "english|||||" << "1";
    }
    void search()
    {
        QFETCH(QString, checks);
        QFETCH(QString, boxes);
        QFETCH(QString, listed);
        readFtl(file({ilg("03990.00", "2300-0100", "Radio Velmar", "English", "000100000", "Velmaria"),
                      ilg("05975.00", "0100-2300", "Tarnholm Intl", "english", "100000000", "Tarnholm"),
                      ilg("05975.00", "0600-0600", "Orlina Voice", "French", "000110000", "Orlina"),
                      ilg("09410.50", "1800-2200", "Velmar Overseas", "Spanish", "001000000", "Velmaria"),
                      ilg("15400.00", "0000-2400", "Brelland Radio", "Arabic", "000001000", "Brelland"),
                      ilg("32000.00", "0000-0000", "Edge Station", "English", "000000000", "Edge"),
                      ilg("33000.00", "0000-2400", "Past Edge", "English", "000100000", "Edge")}));
        Criteria c;
        c.utc = "0030";
        const QString letters = "LSCAT";
        for (int i = 0; i < kIlgChecks; ++i)
            c.checked[i] = checks.contains(letters[i]);
        const QStringList t = boxes.split('|');
        for (int b = 0; b < kIlgBoxes; ++b)
            c.text[b] = t[b];
        std::vector<int> seen;
        ftlquery::search(c, [&](int p) { seen.push_back(p); });
        QCOMPARE(shown(), listed);
        QCOMPARE(seen.front(), 10);
        QCOMPARE(seen.back(), 20);
        if (c.text[LowerBox].isEmpty() || c.text[LowerBox] == "0")
            QCOMPARE(c.text[LowerBox], QString("0"));
        QCOMPARE(c.text[UpperBox], t[UpperBox].isEmpty() || t[UpperBox] == "0,0" ? QString("32") : t[UpperBox]);
    }

    // The Aero query: the network from column 19, the bounds on columns 1-8, whole records.
    void aeroSearch_data()
    {
        QTest::addColumn<QString>("boxes");
        QTest::addColumn<QString>("listed");
        QTest::newRow("network prefix, case-blind") << "shan||" << "1,3";
        QTest::newRow("bounds read columns 1-8") << "|5.6802|" << "2,3";
        QTest::newRow("no network: all") << "||" << "1,2,3";
    }
    void aeroSearch()
    {
        QFETCH(QString, boxes);
        QFETCH(QString, listed);
        readFtl(file({"    5598          SHANWICK     Ballyvel", "  5680.5          NAT-A        Orlina",
                      "    8891          Shanwick     Lorvik"}));
        Criteria c;
        c.aero = true;
        const QStringList t = boxes.split('|');
        c.checked[0] = !t[0].isEmpty();
        for (int b = 0; b < kAeroBoxes; ++b)
            c.text[b] = t[b];
        ftlquery::search(c);
        QCOMPARE(shown(), listed);
    }

    // The sort over the present list entries, by the keys placed in the option's columns. The
    // shell sort is not stable: equal keys end where its passes leave them.
    void sort_data()
    {
        QTest::addColumn<int>("option");
        QTest::addColumn<QString>("keys");
        QTest::addColumn<QString>("order");
        QTest::newRow("frequency") << 0 << "09410.00,05975.00,15400.00" << "2,1,3";
        QTest::newRow("start time") << 1 << "1800-2200,0100-2300,0100-0200" << "3,2,1";
        QTest::newRow("organisation, equal keys") << 2 << "C,A,B,A,A" << "5,2,4,3,1";
        QTest::newRow("language by character code") << 3 << "english,English,Arabic" << "3,2,1";
        QTest::newRow("two equal") << 2 << "B,B" << "1,2";
    }
    void sort()
    {
        QFETCH(int, option);
        QFETCH(QString, keys);
        QFETCH(QString, order);
        static constexpr int from[] = {1, 10, 20, 52}, width[] = {8, 9, 22, 17};
        QStringList lines;
        for (const QString &k : keys.split(','))
            lines << ilg("07255.00", "0000-0100", "Same", "Same", "000000000", "Same")
                         .replace(from[option] - 1, width[option], k.leftJustified(width[option]));
        // Records in reverse on the list: the sort moves list entries, not records.
        lines.prepend(ilg("00100.00", "", "", "", "000000000", ""));
        readFtl(file(lines));
        ilgListIndex.erase(ilgListIndex.begin());
        ilgShown = int32_t(ilgListIndex.size());
        const std::vector<QString> before = ilgRecords;
        SortIlgList(option);
        QStringList got;
        for (int32_t k = 0; k < ilgShown; ++k)
            got << QString::number(ilgListIndex[size_t(k)] - 1);
        QCOMPARE(got.join(','), order);
        QVERIFY(ilgRecords == before);
    }

    // One tick of the scan over rows of these frequencies from position after last.
    void scan_data()
    {
        QTest::addColumn<ScanCase>("c");
        QTest::newRow("first tick") << ScanCase{"9410,9410,5975", 0, 0, 0, 1};
        QTest::newRow("adjacent equal passed over") << ScanCase{"9410,9410,5975", 1, 9410, 2, 0};
        QTest::newRow("next after the last is row 0") << ScanCase{"9410,5975", 1, 9410, 1, 0};
        QTest::newRow("search wraps") << ScanCase{"5975,9410,9410", 2, 9410, 0, 1};
        QTest::newRow("one frequency: row 0") << ScanCase{"7255*3", 1, 7255, 0, 1};
        QTest::newRow("one row") << ScanCase{"7255", 0, 7255, 0, 0};
        QTest::newRow("found at the 200th try") << ScanCase{"7255*200,5975", 0, 7255, 200, 0};
        QTest::newRow("not within 200 tries: row 0") << ScanCase{"7255*201,5975", 0, 7255, 0, 1};
    }
    void scan()
    {
        QFETCH(ScanCase, c);
        const std::vector<double> f = rowsOf(c.rows);
        const ScanStep s = scanStep([&](int32_t r) { return f.at(size_t(r)); }, int32_t(f.size()), c.position, c.last);
        QCOMPARE(QList<double>({double(s.row), s.khz, double(s.next)}), QList<double>({double(c.row), f[size_t(c.row)], double(c.next)}));
    }

    // Choices of three boxes, "/" between boxes, "|" between choices.
    void queryFile_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("boxes");
        QTest::newRow("boxes and comments") << QByteArray("***\r\nArabic\r\nEnglish\r\n***\r\n=== x\r\nBrel\r\n")
                                            << "Arabic|English/Brel/";
        QTest::newRow("before the first box") << QByteArray("Stray\r\n*** Language\r\nFrench\r\n") << "French//";
        QTest::newRow("a blank line is a choice") << QByteArray("***\r\n\r\n5.9\r\n***\r\n***\r\n12 ") << "|5.9//12 ";
        QTest::newRow("boxes past the last") << QByteArray("***\r\n***\r\n***\r\n***\r\nZ\r\n") << "//";
    }
    void queryFile()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, boxes);
        QStringList got;
        for (const QStringList &b : readQueryFile(bytes, 3))
            got << b.join('|');
        QCOMPARE(got.join('/'), boxes);
    }

    // A line past slotDimIlg x 1000 is run-time error 9; counts past 16 bits search as well.
    void capacity_data()
    {
        QTest::addColumn<int>("lines");
        QTest::addColumn<int>("error");
        QTest::newRow("full") << 50000 << 0;
        QTest::newRow("one more") << 50001 << 9;
    }
    void capacity()
    {
        QFETCH(int, lines);
        QFETCH(int, error);
        slotDimIlg() = 50;
        QByteArray bytes;
        for (int i = 1; i <= lines; ++i)
            bytes += QByteArray::number(i).rightJustified(5, '0') + ".00\r\n";
        QCOMPARE(errorOf([&] { readFtl(bytes); }), error);
        if (error)
            return;
        QCOMPARE(ilgCount, lines);
        Criteria c;
        c.text[LowerBox] = QString::number((lines - 2) / 1000.0);
        c.text[UpperBox] = "99";
        ftlquery::search(c);
        QCOMPARE(shown(), QString("%1,%2").arg(lines - 1).arg(lines));
    }

    // A record is cut or padded to 126; a query's row drops columns 78-100.
    void rows()
    {
        const QString full = ilg("09410.00", "1800-2200", "Velmar Overseas", "Spanish", "001000000", "Velmaria");
        readFtl(file({full + "XYZ", "short"}));
        QCOMPARE(ilgRecords[1], full + "X");
        QCOMPARE(ilgRecords[2], QString("short").leftJustified(126));
        QCOMPARE(queriedRow(1), full.left(77) + "Velmaria     Lorvik      X");
        QCOMPARE(loadedRow(2), ilgRecords[2]);
        QCOMPARE(rowFrequency(queriedRow(1)), 9410.0);
    }
};

BRELVOX_TEST(TestFtlQuery)
#include "tst_ftl_query.moc"
