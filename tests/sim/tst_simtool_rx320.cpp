// brelvox-sim serving the RX-320 on a pseudo-terminal, driven by Debian's rigctl as a real client.
#include "simtool.h"
#include "testmain.h"

#include <QRegularExpression>
#include <QStandardPaths>
#include <QTest>

namespace {
QString rigctl(const QString &device, const QStringList &commands, bool *ok)
{
    QProcess p;
    p.start("rigctl", QStringList{"-m", "16003", "-r", device, "-s", "1200"} + commands);
    *ok = p.waitForFinished(30000) && p.exitStatus() == QProcess::NormalExit && p.exitCode() == 0;
    return QString::fromLocal8Bit(*ok ? p.readAllStandardOutput() : p.readAllStandardError());
}
} // namespace

class TestSimToolRx320 : public QObject {
    Q_OBJECT
private slots:
    // Set in one run, read in a second: rigctl cannot answer a read from a cache it built in an
    // earlier process.
    void setThenReadLevel_data()
    {
        QTest::addColumn<QStringList>("toolArgs");
        QTest::addColumn<QStringList>("set");
        QTest::addColumn<QString>("tuned"); // in the tool's log
        QTest::addColumn<QString>("level");
        // rigctl re-tunes before it sends the mode, so the mode line tells where the carrier ended.
        QTest::newRow("frequency, then mode") << QStringList{} << QStringList{"F", "9410000", "M", "USB", "0"}
                                              << "mode USB at 9410.000 kHz" << "RAWSTR";
        QTest::newRow("mode, then frequency, paced") << QStringList{"--paced"} << QStringList{"M", "USB", "0", "F", "9410000"}
                                                     << "tune 9410.000 kHz USB" << "STRENGTH";
    }
    void setThenReadLevel()
    {
        QFETCH(QStringList, toolArgs);
        QFETCH(QStringList, set);
        QFETCH(QString, tuned);
        QFETCH(QString, level);
        QVERIFY2(!QStandardPaths::findExecutable("rigctl").isEmpty(), "rigctl is not installed: it comes with libhamlib-utils");
        SimTool sim;
        QString why;
        QVERIFY2(sim.start("rx320", &why, toolArgs), qPrintable(why));
        bool ok = false;
        const QString err = rigctl(sim.device(), set, &ok);
        QVERIFY2(ok, qPrintable(err));
        QVERIFY2(sim.waitForLog(tuned) && sim.waitForLog("mode USB"), qPrintable(sim.log()));
        const QString out = rigctl(sim.device(), {"l", level}, &ok);
        QVERIFY2(ok && sim.waitForLog("smeter "), qPrintable(out + sim.log()));
        const int reading = out.trimmed().toInt(&ok);
        QVERIFY2(ok, qPrintable("not a number: " + out));
        if (level == QLatin1String("RAWSTR"))
            QCOMPARE(reading, QRegularExpression("smeter (\\d+)").match(sim.log().mid(sim.log().indexOf(tuned))).captured(1).toInt());
    }

    void unknownModel()
    {
        QProcess p;
        p.start(qEnvironmentVariable("BRELVOX_SIM_TOOL"), {"rx999"});
        QVERIFY(p.waitForFinished(10000));
        QCOMPARE(p.exitCode(), 2);
        QVERIFY(p.readAllStandardOutput().isEmpty() && p.readAllStandardError().contains("rx999"));
    }
};

BRELVOX_TEST(TestSimToolRx320)
#include "tst_simtool_rx320.moc"
