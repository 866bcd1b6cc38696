#include "core/shared_state.h"
#include "log/log_book.h"
#include "testmain.h"
#include "testutil.h"

#include <QTemporaryDir>
#include <QTest>
#include <random>

using namespace logbook;

namespace {
// A record from "|"-separated fields; missing ones are empty.
Record rec(const QString &fields)
{
    Record r;
    const QStringList parts = fields.split(u'|');
    for (int n = 0; n < kFields && n < parts.size(); ++n)
        r[size_t(n)] = parts[n];
    return r;
}
} // namespace

class TestLogBook : public QObject {
    Q_OBJECT
private slots:
    // A line as the program writes it reads back to the same bytes; gaps in the numbers close.
    void fileRoundTrip()
    {
        const QByteArray line0 = "000 20261123 0830 0900 05970     45444 Eng Radio Demo Intl      Demoville           "
                                 " 06000 09500 -     -     Fine signal, QSL sent                    AR1  x    ";
        QCOMPARE(line0.size(), kLineLength);
        QByteArray line1 = line0;
        line1.replace(0, 3, "007");
        const std::vector<Record> rows = readLog(line0 + "\r\n" + line1 + "\r\n", 10);
        QCOMPARE(rows.size(), size_t(2));
        QCOMPARE(rows[0][3], QStringLiteral("05970    "));   // padding kept
        QCOMPARE(rows[0][12], QStringLiteral("Fine signal, QSL sent                   "));
        QByteArray renumbered = line1;
        renumbered.replace(0, 3, "001");
        QCOMPARE(logBytes(rows, 2), line0 + "\r\n" + renumbered + "\r\n");

        // Typed fields have no padding; a short line reads as empty fields.
        const std::vector<Record> typed{rec("20261123|830||7490")};
        QCOMPARE(logBytes(typed, 1).size(), kLineLength + 2);
        const std::vector<Record> shortLine = readLog("001 2026", 10);
        QCOMPARE(shortLine[0][0], QStringLiteral("2026"));
        QCOMPARE(shortLine[0][1], QString());
    }

    void capacityAndNumbers()
    {
        QCOMPARE(errorOf([] { readLog("a\r\nb\r\nc\r\n", 1); }), 9);
        QCOMPARE(errorOf([] { readLog("a\r\nb\r\n", 1); }), 0);
        QCOMPARE(recordNumber(0), QStringLiteral("000"));
        QCOMPARE(recordNumber(999), QStringLiteral("999"));
        QCOMPARE(recordNumber(1000), QStringLiteral("000"));
        QCOMPARE(recordNumber(41234), QStringLiteral("234"));
    }

    void storedFields_data()
    {
        QTest::addColumn<int>("field");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("stored"); // "!" refused
        QTest::newRow("time 830") << 1 << "830" << "0830";
        QTest::newRow("empty end time") << 2 << "" << "";
        QTest::newRow("time of five digits") << 1 << "12345" << "!";
        QTest::newRow("whole frequency") << 3 << "5970" << "05970";
        QTest::newRow("decimal comma") << 3 << "5970,5" << "05970.500";
        QTest::newRow("empty frequency") << 3 << "" << "00000";
        QTest::newRow("six digits and decimals") << 3 << "123456.5" << "!";
        QTest::newRow("remarks at width") << 12 << QString(40, u'r') << QString(40, u'r');
        QTest::newRow("remarks past width") << 12 << QString(41, u'r') << "!";
    }
    void storedFields()
    {
        QFETCH(int, field);
        QFETCH(QString, typed);
        QFETCH(QString, stored);
        QCOMPARE(storedField(field, typed).value_or(QStringLiteral("!")), stored);
    }

    void typing()
    {
        QVERIFY(acceptableTyping(1, "0830"));
        QVERIFY(!acceptableTyping(2, "08:30"));
        QVERIFY(acceptableTyping(3, "5970,5"));
        QVERIFY(!acceptableTyping(3, "5970.5.1"));
        QVERIFY(!acceptableTyping(3, "59k"));
        QVERIFY(acceptableTyping(6, "Radio, \"Demo\""));
    }

    void maskAndColumns()
    {
        QCOMPARE(readMask("100100000000001\r\n000000000000000\r\n"), QStringLiteral("100100000000001"));
        const QString mask = readMask("1001"); // a short line hides what it lacks
        const Columns c = buildColumns(mask);
        QCOMPARE(c.titles, QStringList({"Nr", "Date", "Frequency"}));
        QCOMPARE(c.twips, std::vector<int>({360, 960, 1080}));
        QCOMPARE(gridRow(rec("20261123|||05970    |44444"), 1000, mask),
                 QStringList({"000", "20261123", "05970    "}));
        QCOMPARE(formatLength(mask), 9 + 10);
        QVERIFY(tunesByWidth(1080) && tunesByWidth(600) && !tunesByWidth(480) && !tunesByWidth(960));
    }

    // Each key on the same rows; the Nr of a record is where it started. Ties keep the order the
    // passes leave (here: the start order, since equal keys are never exchanged across a gap).
    void sortKeys_data()
    {
        QTest::addColumn<int>("option");
        QTest::addColumn<QStringList>("rows");
        QTest::addColumn<QString>("order");
        const QStringList rows = {"20261124|0100||07490|||Bravo",    "20261123|2300||05970|||alpha",
                                  "20261123|0100||09500|||Charlie",  "20261123|0100||09500|||charlie"};
        QTest::newRow("date") << 0 << rows << "2310";
        QTest::newRow("time") << 1 << rows << "2301";
        QTest::newRow("frequency") << 2 << rows << "1023";
        QTest::newRow("organisation, case blind, tie") << 3 << rows << "1023";
        QTest::newRow("two records") << 2 << QStringList{"|||09500", "|||05970"} << "10";
        QTest::newRow("language") << 4 << QStringList{"|||||Eng|b", "|||||Eng|a", "|||||Ara|c"} << "210";
    }
    void sortKeys()
    {
        QFETCH(int, option);
        QFETCH(QStringList, rows);
        std::vector<Record> records;
        for (int i = 0; i < rows.size(); ++i) {
            records.push_back(rec(rows[i]));
            records.back()[14] = QString::number(i);
        }
        sortLog(records, int32_t(records.size()) - 1, option);
        QString order;
        for (const Record &r : records)
            order += r[14];
        QTEST(order, "order");
    }

    // The demo's log is what the program itself writes; its mask has all fifteen places.
    void demoFiles()
    {
        const QByteArray bytes = readFile(QFINDTESTDATA("../../demo/LOG/LOG_demo2026.TXT"));
        const std::vector<Record> rows = readLog(bytes, 1000);
        QCOMPARE(logBytes(rows, int32_t(rows.size())), bytes);
        QCOMPARE(readMask(readFile(QFINDTESTDATA("../../demo/loggridformat.ini"))).size(), kFields);
    }

    // Counts past 16 bits: a 40,000-record log loads, sorts and saves whole.
    void largeLog()
    {
        TestEnv env;
        QTemporaryDir dir;
        slotDimLog() = 40;
        std::vector<Record> rows(40000);
        std::mt19937 rng(7);
        for (Record &r : rows)
            r = rec(QStringLiteral("2026%1|0000||%2").arg(rng() % 10000, 4, 10, QChar(u'0')).arg(rng() % 30000));
        const QString path = dir.path() + "/LOG_big.TXT";
        writeFile(path, logBytes(rows, 40000));
        loadLogFile(path);
        QCOMPARE(logCount, 39999);
        sortLog(logRecords, logCount, 0);
        for (int32_t i = 1; i <= logCount; ++i)
            QVERIFY(sortKey(logRecords[size_t(i - 1)], 0) <= sortKey(logRecords[size_t(i)], 0));
        saveLogFile(path);
        QCOMPARE(readFile(path).size(), 40000 * (kLineLength + 2));
        QCOMPARE(readFile(path).mid(39999 * (kLineLength + 2), 3), QByteArray("999"));
    }
};

BRELVOX_TEST(TestLogBook)
#include "tst_log_book.moc"
