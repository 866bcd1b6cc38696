// The scratchpad's FSP file with its odd lines, and the two lists' shift and scan rules.
#include "testmain.h"
#include "log/small_lists.h"
#include "sim/sim_band.h"
#include "testutil.h"

#include <QTest>

using namespace smalllists;

namespace {
// A row as "note|cell|cell...", empty cells at the end left off.
QString rowText(const Scratchpad &pad, int r)
{
    QString s = pad.notes[size_t(r)];
    for (const QString &c : pad.cells[size_t(r)])
        s += u'|' + c;
    while (s.endsWith(u'|'))
        s.chop(1);
    return s;
}

// Notes "old0".."old9", every cell "x": what a load must replace or keep.
Scratchpad usedPad()
{
    Scratchpad pad;
    for (int r = 0; r < kPadRows; ++r) {
        pad.notes[size_t(r)] = QStringLiteral("old%1").arg(r);
        pad.cells[size_t(r)].fill(QStringLiteral("x"));
    }
    return pad;
}

FrequencyList listOf(const QStringList &entries)
{
    FrequencyList l;
    for (int i = 0; i < entries.size(); ++i)
        l[size_t(i)] = entries[i];
    return l;
}
} // namespace

class TestSmallLists : public QObject {
    Q_OBJECT
private slots:
    // rows: the pad's rows from the top after the load; the rows below them read "oldN".
    void readFsp_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QStringList>("rows");
        QTest::newRow("as written") << QByteArray("Evening,5975.00,,6070,,,,,,\r\n,9410,\r\n") << QStringList{"Evening|5975.00||6070", "|9410", "old2"};
        QTest::newRow("comma in the note shifts") << QByteArray("Tarn, Holm,5975,6070,\r\n") << QStringList{"Tarn| Holm|5975|6070", "old1"};
        QTest::newRow("no comma keeps the note") << QByteArray("no commas here\r\nB,7255,\r\n") << QStringList{"old0", "B|7255"};
        QTest::newRow("after the last comma dropped") << QByteArray("n,9410,9420") << QStringList{"n|9410", "old1"};
        QTest::newRow("ninth piece dropped") << QByteArray("n,1,2,3,4,5,6,7,8,9,\r\n") << QStringList{"n|1|2|3|4|5|6|7|8"};
        QTest::newRow("blanks kept") << QByteArray(" a , 5975 ,\r\n") << QStringList{" a | 5975 "};
        QTest::newRow("LF and CR endings, Latin-1") << QByteArray("R\xe9gion,999,\n7490,\r") << QStringList{"R\u00e9gion|999", "7490", "old2"};
        QTest::newRow("empty file") << QByteArray() << QStringList{"old0"};
        QByteArray eleven;
        for (int i = 0; i < 11; ++i)
            eleven += QByteArray::number(i) + ",f" + QByteArray::number(i) + ",\r\n";
        QStringList ten;
        for (int i = 0; i < 10; ++i)
            ten << QStringLiteral("%1|f%1").arg(i);
        QTest::newRow("eleventh line ignored") << eleven << ten;
    }
    void readFsp()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QStringList, rows);
        Scratchpad pad = usedPad();
        smalllists::readFsp(bytes, pad);
        for (int r = 0; r < kPadRows; ++r)
            QCOMPARE(rowText(pad, r), r < rows.size() ? rows[r] : QStringLiteral("old%1").arg(r));
    }

    // The demo's file is what the program writes, on frequencies where the simulated band has a station.
    void demoFile()
    {
        const QByteArray bytes = readFile(QFINDTESTDATA("../../demo/FSP/FSP_demo.TXT"));
        Scratchpad pad;
        smalllists::readFsp(bytes, pad);
        QCOMPARE(fspBytes(pad), bytes);
        const SimBand band;
        int cells = 0;
        for (const auto &row : pad.cells)
            for (const QString &c : row)
                if (!c.isEmpty() && ++cells)
                    QVERIFY2(std::any_of(band.stations().begin(), band.stations().end(),
                                         [&](const SimStation &s) { return s.khz == c.toDouble(); }),
                             qPrintable(c));
        QVERIFY(cells >= 10);
    }

    // Limits 10..30000, both ends in; an empty or odd entry reads as 0.
    void scan_data()
    {
        QTest::addColumn<QStringList>("entries");
        QTest::addColumn<int>("current");
        QTest::addColumn<int>("next");
        QTest::addColumn<QList<double>>("table");
        const QStringList twice{"", "abc", "9410", "9410"};
        QTest::newRow("from the start") << twice << -1 << 2 << QList<double>{9410, 9410};
        QTest::newRow("equal ones both") << twice << 2 << 3 << QList<double>{9410, 9410};
        QTest::newRow("past the last to the first") << twice << 3 << 2 << QList<double>{9410, 9410};
        QTest::newRow("ends in, beyond out") << QStringList{"10", "9.999", "30000.001", "30000"} << 0 << 3 << QList<double>{10, 30000};
        QTest::newRow("leading number") << QStringList{"", "7255 kHz", "5975.5x"} << 2 << 1 << QList<double>{7255, 5975.5};
        QTest::newRow("only one, itself again") << QStringList{"", "7255"} << 1 << 1 << QList<double>{7255};
        QTest::newRow("none left") << QStringList{"", "5", "30001"} << 1 << -1 << QList<double>{};
    }
    void scan()
    {
        QFETCH(QStringList, entries);
        QFETCH(int, current);
        QFETCH(int, next);
        QFETCH(QList<double>, table);
        const FrequencyList l = listOf(entries);
        QCOMPARE(nextScanEntry(l, current, 10, 30000), next);
        QCOMPARE(scannableCount(l, 10, 30000), int(table.size()));
        const std::vector<double> got = scanTable(entries, 10, 30000);
        QCOMPARE(QList<double>(got.begin(), got.end()), table);
    }
};
BRELVOX_TEST(TestSmallLists)
#include "tst_small_lists.moc"
