// brelvox-sim serving the RX-320 on a pseudo-terminal, driven by Debian's rigctl as a real client.
#include "testmain.h"

#include <QDeadlineTimer>
#include <QProcess>
#include <QStandardPaths>
#include <QTest>

namespace {
// The tool's stdout, line by line, as it comes.
struct Tool {
    QProcess proc;
    QStringList lines;
    QByteArray partial;

    void pump(int ms)
    {
        proc.waitForReadyRead(ms);
        partial += proc.readAllStandardOutput();
        qsizetype nl;
        while ((nl = partial.indexOf('\n')) >= 0) {
            lines << QString::fromLocal8Bit(partial.left(nl));
            partial.remove(0, nl + 1);
        }
    }
    // Waits until a line satisfies pred; returns its index or -1.
    template <class Pred>
    qsizetype waitForLine(Pred pred, int ms, qsizetype from = 0)
    {
        QDeadlineTimer deadline(ms);
        for (;;) {
            for (qsizetype i = from; i < lines.size(); ++i)
                if (pred(lines[i]))
                    return i;
            if (deadline.hasExpired() || proc.state() != QProcess::Running)
                return -1;
            pump(100);
        }
    }
};

struct RigctlResult {
    int exitCode = -1;
    QString out;
    QString err;
};

RigctlResult rigctl(const QString &program, const QString &device, const QStringList &commands)
{
    QProcess p;
    p.start(program, QStringList{"-m", "16003", "-r", device, "-s", "1200"} + commands);
    RigctlResult r;
    if (!p.waitForFinished(30000)) {
        p.kill();
        p.waitForFinished(2000);
        r.err = QStringLiteral("rigctl did not finish");
        return r;
    }
    r.exitCode = p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1;
    r.out = QString::fromLocal8Bit(p.readAllStandardOutput());
    r.err = QString::fromLocal8Bit(p.readAllStandardError());
    return r;
}

QString toolPath()
{
    return QString::fromLocal8Bit(qgetenv("BRELVOX_SIM_TOOL"));
}
} // namespace

class TestSimToolRx320 : public QObject {
    Q_OBJECT
private slots:
    void rigctlSetsAndReads_data();
    void rigctlSetsAndReads();
    void unknownModel();
};

void TestSimToolRx320::rigctlSetsAndReads_data()
{
    QTest::addColumn<QStringList>("toolArgs");
    QTest::addColumn<QStringList>("set");
    QTest::addColumn<QString>("expectLine"); // a line of the tool's log starting with this
    QTest::addColumn<QString>("level");

    // rigctl re-tunes before it sends the mode, so the mode line tells where the carrier ended.
    QTest::newRow("frequency, then mode") << QStringList{} << QStringList{"F", "9410000", "M", "USB", "0"}
                                          << "mode USB at 9410.000 kHz" << "RAWSTR";
    QTest::newRow("mode, then frequency, paced") << QStringList{"--paced"} << QStringList{"M", "USB", "0", "F", "9410000"}
                                                 << "tune 9410.000 kHz USB" << "STRENGTH";
}

void TestSimToolRx320::rigctlSetsAndReads()
{
    QFETCH(QStringList, toolArgs);
    QFETCH(QStringList, set);
    QFETCH(QString, expectLine);
    QFETCH(QString, level);

    const QString rig = QStandardPaths::findExecutable(QStringLiteral("rigctl"));
    if (rig.isEmpty())
        QFAIL("rigctl is not installed: it comes with Debian's libhamlib-utils, which the setup script installs");
    QVERIFY2(!toolPath().isEmpty(), "BRELVOX_SIM_TOOL is not set (CTest sets it to the brelvox-sim binary)");

    Tool tool;
    tool.proc.start(toolPath(), QStringList{"rx320"} + toolArgs);
    QVERIFY2(tool.proc.waitForStarted(10000), qPrintable(tool.proc.errorString()));
    QVERIFY2(tool.waitForLine([](const QString &) { return true; }, 10000) == 0, "the tool printed no device");
    const QString device = tool.lines.first();
    QVERIFY2(device.startsWith("/dev/"), qPrintable(device));

    const RigctlResult setRun = rigctl(rig, device, set);
    QVERIFY2(setRun.exitCode == 0, qPrintable(setRun.err));
    const qsizetype tuned = tool.waitForLine([&](const QString &l) { return l.startsWith(expectLine); }, 10000);
    QVERIFY2(tuned > 0, qPrintable("no \"" + expectLine + "\" in:\n" + tool.lines.join('\n')));
    QVERIFY(tool.waitForLine([](const QString &l) { return l.startsWith("mode USB"); }, 1000) > 0);

    // A second run: rigctl cannot answer a read from a cache it built in an earlier process.
    const RigctlResult readRun = rigctl(rig, device, {"l", level});
    QVERIFY2(readRun.exitCode == 0, qPrintable(readRun.err));
    bool ok = false;
    const int reading = readRun.out.trimmed().toInt(&ok);
    QVERIFY2(ok, qPrintable("not a number: " + readRun.out));
    const qsizetype meter = tool.waitForLine([](const QString &l) { return l.startsWith("smeter "); }, 10000, tuned);
    QVERIFY2(meter > 0, qPrintable(tool.lines.join('\n')));
    if (level == QLatin1String("RAWSTR"))
        QCOMPARE(reading, tool.lines[meter].mid(7).toInt());

    tool.proc.terminate();
    QVERIFY(tool.proc.waitForFinished(10000));
    QCOMPARE(tool.proc.exitStatus(), QProcess::NormalExit);
    QCOMPARE(tool.proc.exitCode(), 0);
}

void TestSimToolRx320::unknownModel()
{
    QVERIFY2(!toolPath().isEmpty(), "BRELVOX_SIM_TOOL is not set (CTest sets it to the brelvox-sim binary)");
    QProcess p;
    p.start(toolPath(), {"rx999"});
    QVERIFY(p.waitForFinished(10000));
    QCOMPARE(p.exitCode(), 2);
    QVERIFY(p.readAllStandardOutput().isEmpty());
    QVERIFY(p.readAllStandardError().contains("rx999"));
}

BRELVOX_TEST(TestSimToolRx320)
#include "tst_simtool_rx320.moc"
