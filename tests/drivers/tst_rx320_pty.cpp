#include "core/shared_state.h"
#include "drivers/clsRX320.h"
#include "drivers/model_tables.h"
#include "serial/comm_line.h"
#include "serial/serialport_backend.h"
#include "testmain.h"
#include "testutil.h"

#include "simtool.h"
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
        SimTool sim;
        QString why;
        QVERIFY2(sim.start("rx320", &why), qPrintable(why));
        const QString device = sim.device();

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
        QVERIFY2(sim.waitForLog("9410.000"), qPrintable(sim.log()));
        QVERIFY2(sim.log().contains("USB"), qPrintable(sim.log()));
        comm.setPortOpen(false);
    }
};

BRELVOX_TEST(TestRx320OverPty)
#include "tst_rx320_pty.moc"
