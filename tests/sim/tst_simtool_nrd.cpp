// brelvox-sim serving the NRD-535 and NRD-545 on a pseudo-terminal, driven by Debian's rigctl:
// what one run sets, a later run reads back.
#include "simtool.h"
#include "testmain.h"

#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTest>

namespace {
// rigctl against the tool; its output lines, or empty with the reason in err.
QStringList rigctl(const QString &rigModel, const QString &device, const QStringList &commands, QString *err)
{
    QProcess p;
    p.start("rigctl", QStringList{"-m", rigModel, "-r", device, "-s", "4800"} + commands);
    const bool ok = p.waitForFinished(30000) && p.exitStatus() == QProcess::NormalExit && p.exitCode() == 0;
    *err = QString::fromLocal8Bit(p.readAllStandardError()).right(2000);
    return ok ? QString::fromLocal8Bit(p.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts) : QStringList();
}
} // namespace

class TestSimToolNrd : public QObject {
    Q_OBJECT
private slots:
    void setThenRead_data()
    {
        QTest::addColumn<QString>("model");
        QTest::addColumn<QString>("rigModel");
        QTest::addColumn<QStringList>("toolArgs");
        QTest::addColumn<QString>("mode");
        QTest::newRow("nrd535 paced") << "nrd535" << "6006" << QStringList{"--paced"} << "USB";
        QTest::newRow("nrd545") << "nrd545" << "6007" << QStringList{} << "LSB";
    }
    void setThenRead()
    {
        QFETCH(QString, model);
        QFETCH(QString, rigModel);
        QFETCH(QStringList, toolArgs);
        QFETCH(QString, mode);
        if (QStandardPaths::findExecutable("rigctl").isEmpty())
            QFAIL("rigctl is not installed: it comes with Debian's libhamlib-utils, which the setup script installs");
        SimTool tool;
        QString why;
        QVERIFY2(tool.start(model, &why, toolArgs), qPrintable(why));
        rigctl(rigModel, tool.device(), {"F", "7255125", "M", mode, "0"}, &why);
        QVERIFY2(tool.waitForLog("tune 7255.125 kHz") && tool.waitForLog("mode " + mode)
                     && tool.waitForLog("remote off"),
                 qPrintable(why + tool.log()));
        // A second run, so that nothing comes from rigctl's cache.
        const QStringList read = rigctl(rigModel, tool.device(), {"f", "m", "l", "RAWSTR"}, &why);
        QVERIFY2(read.size() == 4, qPrintable(read.join('|') + why));
        QCOMPARE(read[0], "7255125");
        QCOMPARE(read[1], mode);
        QVERIFY2(tool.waitForLog("S-meter "), qPrintable(tool.log()));
        QCOMPARE(read[3], QRegularExpression("S-meter (\\d+)").match(tool.log()).captured(1));
        QVERIFY(!tool.log().contains("not understood"));
    }
};

BRELVOX_TEST(TestSimToolNrd)
#include "tst_simtool_nrd.moc"
