#include "core/shared_state.h"
#include "drivers/clsRX320.h"
#include "drivers/model_tables.h"
#include "serial/comm_line.h"
#include "serial/serialport_backend.h"
#include "testmain.h"
#include "testutil.h"

#include <QProcess>
#include <QTest>

// The driver through a real pseudo-terminal and QSerialPort, against brelvox-sim.
class TestRx320OverPty : public QObject {
    Q_OBJECT
private slots:
    void firmwareSmeterAndTuneThroughTheTool()
    {
        TestEnv env;
        env.installSystemClock();
        labelRoutineRX320();
        const QString tool = qEnvironmentVariable("BRELVOX_SIM_TOOL");
        QVERIFY2(!tool.isEmpty(), "BRELVOX_SIM_TOOL is not set");
        QProcess sim;
        sim.start(tool, {"rx320"});
        QVERIFY2(sim.waitForStarted(5000), qPrintable(sim.errorString()));
        QTRY_VERIFY_WITH_TIMEOUT(sim.canReadLine(), 5000);
        const QString device = QString::fromLocal8Bit(sim.readLine()).trimmed();
        QVERIFY2(device.startsWith("/dev/"), qPrintable(device));

        CommLine comm;
        auto port = std::make_unique<SerialPortBackend>(device);
        QString reason;
        QVERIFY2(port->open(parseSettings("1200,N,8,1"), &reason), qPrintable(reason));
        comm.openWith(std::move(port));
        clsRX320 rx(comm);

        QCOMPARE(rx.Firmware(), QString("VER 1.03\r"));
        rx320Freq = 9410;
        rx320Bandwidth = 12;
        rx.setMode(1);
        const float s = rx.Smeter();
        QVERIFY(s >= 0 && s <= 22);

        // the simulator tells what it understood: the tune reached it as 9410 kHz USB
        QString log;
        QTRY_VERIFY_WITH_TIMEOUT((log += QString::fromLocal8Bit(sim.readAllStandardOutput()),
                                  log.contains("9410.000")),
                                 5000);
        QVERIFY2(log.contains("USB"), qPrintable(log));
        comm.setPortOpen(false);
        sim.terminate();
        sim.waitForFinished(3000);
    }
};

BRELVOX_TEST(TestRx320OverPty)
#include "tst_rx320_pty.moc"
