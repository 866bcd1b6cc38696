// brelvox-sim serving the NRD-535 and NRD-545 on a pseudo-terminal, driven by Debian's rigctl.
#include "simtool.h"
#include "testmain.h"

#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTest>

namespace {
struct RigctlRun {
    int exitCode = -1;
    QStringList out;
    QString err;
};

RigctlRun rigctl(const QString &rigModel, const QString &device, const QStringList &commands)
{
    const QString program = QStandardPaths::findExecutable(QStringLiteral("rigctl"));
    QProcess p;
    p.start(program, QStringList{"-m", rigModel, "-r", device, "-s", "4800"} + commands);
    RigctlRun r;
    if (!p.waitForFinished(30000)) {
        p.kill();
        p.waitForFinished(2000);
        r.err = QStringLiteral("rigctl did not finish");
        return r;
    }
    r.exitCode = p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1;
    r.out = QString::fromLocal8Bit(p.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts);
    r.err = QString::fromLocal8Bit(p.readAllStandardError());
    return r;
}
} // namespace

class TestSimToolNrd : public QObject {
    Q_OBJECT
private slots:
    void setThenRead_data();
    void setThenRead();
};

void TestSimToolNrd::setThenRead_data()
{
    QTest::addColumn<QString>("model");
    QTest::addColumn<QString>("rigModel");
    QTest::addColumn<QStringList>("toolArgs");
    QTest::addColumn<QString>("mode");

    QTest::newRow("nrd535") << "nrd535" << "6006" << QStringList{} << "USB";
    QTest::newRow("nrd535 paced") << "nrd535" << "6006" << QStringList{"--paced"} << "CW";
    QTest::newRow("nrd545") << "nrd545" << "6007" << QStringList{} << "LSB";
    QTest::newRow("nrd545 paced") << "nrd545" << "6007" << QStringList{"--paced"} << "AM";
}

void TestSimToolNrd::setThenRead()
{
    QFETCH(QString, model);
    QFETCH(QString, rigModel);
    QFETCH(QStringList, toolArgs);
    QFETCH(QString, mode);
    if (QStandardPaths::findExecutable(QStringLiteral("rigctl")).isEmpty())
        QFAIL("rigctl is not installed: it comes with Debian's libhamlib-utils, which the setup script installs");

    SimTool tool;
    QString why;
    QVERIFY2(tool.start(model, &why, toolArgs), qPrintable(why));

    const RigctlRun set = rigctl(rigModel, tool.device(), {"F", "7255125", "M", mode, "0"});
    QVERIFY2(set.exitCode == 0, qPrintable(set.err.right(2000)));
    QVERIFY2(tool.waitForLog("tune 7255.125 kHz") && tool.waitForLog("mode " + mode), qPrintable(tool.log()));
    QVERIFY2(tool.waitForLog("remote off"), qPrintable(tool.log()));

    // A second run, so that nothing comes from rigctl's cache.
    const RigctlRun read = rigctl(rigModel, tool.device(), {"f", "m", "l", "RAWSTR"});
    QVERIFY2(read.exitCode == 0, qPrintable(read.err.right(2000)));
    QVERIFY2(read.out.size() == 4, qPrintable(read.out.join('|')));
    QCOMPARE(read.out[0], "7255125");
    QCOMPARE(read.out[1], mode);
    QVERIFY2(tool.waitForLog("S-meter "), qPrintable(tool.log()));
    const auto meter = QRegularExpression("S-meter (\\d+)").match(tool.log());
    QCOMPARE(read.out[3], meter.captured(1));
    QVERIFY(!tool.log().contains("not understood"));
}

BRELVOX_TEST(TestSimToolNrd)
#include "tst_simtool_nrd.moc"
