#include "core/runtime_error.h"
#include "core/settings_files.h"
#include "core/shared_state.h"
#include "core/textfile.h"
#include "testmain.h"
#include "testutil.h"

#include <QDir>
#include <QTest>

namespace {
QStringList settingsLines(int count)
{
    QStringList l{"D:\\data\\", "5205N", "0445E", "3"};
    for (int i = 1; i <= count; ++i)
        l << QString::number(i * 1.5);
    return l;
}
} // namespace

class TestSettings : public QObject {
    Q_OBJECT
private slots:
    // Slot 32 is read but never written.
    void roundTripOf35Lines()
    {
        TestEnv env;
        settings::readSettings(settingsLines(32));
        QCOMPARE(iniSlot[32], 48.0f);
        const QByteArray written = settings::settingsText();
        QCOMPARE(written.count("\r\n"), 35);
        QVERIFY(written.startsWith("D:\\data\\\r\n5205N\r\n0445E\r\n3\r\n1.5\r\n3\r\n4.5\r\n"));
        QVERIFY(!written.contains("48"));
        resetSharedState();
        settings::readSettings(textfile::splitLines(written));
        QCOMPARE(dirPath, QString("D:\\data\\"));
        QCOMPARE(rxType, int16_t(3));
        QCOMPARE(iniSlot[31], 46.5f);
        QCOMPARE(settings::settingsText(), written);
    }

    void badFiles_data()
    {
        QTest::addColumn<QStringList>("lines");
        QTest::addColumn<int>("error");
        QTest::newRow("33rd numeric line") << settingsLines(33) << 9;
        QTest::newRow("no rxType line") << QStringList{"C:\\x\\", "5205N", "0445E"} << 62;
        QTest::newRow("empty file") << QStringList{} << 62;
        QTest::newRow("short file is fine") << settingsLines(5) << 0;
    }
    void badFiles()
    {
        TestEnv env;
        QFETCH(QStringList, lines);
        QFETCH(int, error);
        QCOMPARE(errorOf([&] { settings::readSettings(lines); }), error);
    }

    void lenientNumbers()
    {
        TestEnv env;
        settings::readSettings({"C:\\x\\", "5205N", "0445E", "2.6 NRD", "abc", "-5.5", "", "12,5"});
        QCOMPARE(rxType, int16_t(3)); // rounded to nearest
        QCOMPARE(iniSlot[1], 0.0f);
        QCOMPARE(iniSlot[2], -5.5f);
        QCOMPARE(iniSlot[3], 0.0f);
        QCOMPARE(iniSlot[4], 12.0f);
        QCOMPARE(iniSlot[5], 0.0f); // short file: later slots stay 0
    }

    void positions()
    {
        TestEnv env;
        QStringList lines;
        for (int n = 1; n <= 45; ++n)
            lines << QString("%1,%2").arg(n * 100).arg(n * 10);
        settings::readPositions(lines);
        QCOMPARE(formLeft[1], 100);
        QCOMPARE(formTop[45], 450);
        QCOMPARE(formLeft[0], 0); // entry 0 is never read
        formLeft[3] = 40001;
        formTop[4] = -40001;
        formLeft[5] = -40000;
        const QStringList out = textfile::splitLines(settings::positionsText());
        QCOMPARE(out.size(), 45);
        QCOMPARE(out[2], QString("0,30"));
        QCOMPARE(out[3], QString("400,0"));
        QCOMPARE(out[4], QString("-40000,50"));
    }

    void positionLines_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<int>("left");
        QTest::addColumn<int>("top");
        QTest::newRow("proper") << "1500,3000" << 1500 << 3000;
        QTest::newRow("rounded") << "1500.5,2999.5" << 1500 << 3000;
        QTest::newRow("last comma wins") << "1,2,3" << 1 << 3;
        QTest::newRow("no comma keeps top") << "700" << 700 << 0;
        QTest::newRow("garbage") << "x,y" << 0 << 0;
    }
    void positionLines()
    {
        TestEnv env;
        QFETCH(QString, line);
        QFETCH(int, left);
        QFETCH(int, top);
        settings::readPositions({line});
        QCOMPARE(formLeft[1], left);
        QCOMPARE(formTop[1], top);
    }

    void positionCapacity()
    {
        TestEnv env;
        QStringList lines(46, "1,1");
        QCOMPARE(errorOf([&] { settings::readPositions(lines); }), 0);
        lines << "1,1";
        QCOMPARE(errorOf([&] { settings::readPositions(lines); }), 9);
    }

    void storeRule_data()
    {
        QTest::addColumn<double>("left");
        QTest::addColumn<double>("top");
        QTest::addColumn<double>("width");
        QTest::addColumn<int>("storedLeft");
        QTest::addColumn<int>("storedTop");
        QTest::newRow("flung left") << -2000.0 << 100.0 << 3000.0 << -1500 << 100;
        QTest::newRow("on screen") << 600.0 << 900.0 << 3000.0 << 600 << 900;
        QTest::newRow("exactly at the edge") << -1500.0 << 0.0 << 3000.0 << -1500 << 0;
        QTest::newRow("above the top") << 0.0 << -300.0 << 3000.0 << 0 << 0;
        QTest::newRow("narrow window") << -10.0 << 5.0 << 1000.0 << 500 << 5;
    }
    void storeRule()
    {
        QFETCH(double, left);
        QFETCH(double, top);
        QFETCH(double, width);
        QFETCH(int, storedLeft);
        QFETCH(int, storedTop);
        const auto p = settings::positionToStore(left, top, width);
        QCOMPARE(p.left, storedLeft);
        QCOMPARE(p.top, storedTop);
    }

    void filesAtStartAndSave()
    {
        TestEnv env;
        QTemporaryDir cwd, data;
        const QString old = QDir::currentPath();
        QDir::setCurrent(cwd.path());
        // missing files: run-time error 53
        QCOMPARE(errorOf([] { settings::loadPositionsFromCurrentDirectory(); }), 53);
        QCOMPARE(errorOf([] { settings::loadSettingsFromCurrentDirectory(); }), 53);
        QStringList l = settingsLines(31);
        l[0] = data.path() + "/";
        writeFile(cwd.filePath("brelvox2.ini"), textfile::joinLines(l));
        QCOMPARE(errorOf([] { settings::loadSettingsFromCurrentDirectory(); }), 0);
        QCOMPARE(fullDirTable[8], data.path() + "/MEM\\");
        slotLt2Utc() = -5.5f;
        settings::saveSettings();
        // written to the data directory; the file in the current directory stays as it was
        QVERIFY(readFile(data.filePath("brelvox2.ini")).contains("\r\n-5.5\r\n"));
        QCOMPARE(readFile(cwd.filePath("brelvox2.ini")), textfile::joinLines(l));
        dirPath = data.path() + "/nosuchdir/";
        QCOMPARE(errorOf([] { settings::savePositions(); }), 76);
        QDir::setCurrent(old);
    }
};

BRELVOX_TEST(TestSettings)
#include "tst_settings.moc"
