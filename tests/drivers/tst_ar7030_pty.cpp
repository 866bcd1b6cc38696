#include "core/shared_state.h"
#include "drivers/ar7030_tables.h"
#include "drivers/clsAR7030.h"
#include "serial/comm_line.h"
#include "serial/serialport_backend.h"
#include "testmain.h"
#include "testutil.h"

#include "simtool.h"
#include <QTest>
#include <cmath>

// The AR7030 driver through a real pseudo-terminal and QSerialPort, against brelvox-sim.
class TestAr7030OverPty : public QObject {
    Q_OBJECT
private slots:
    void firmwareAndFrequencyThroughTheTool()
    {
        TestEnv env;
        env.installSystemClock();
        labelRoutineAR7030();
        SimTool sim;
        QString why;
        QVERIFY2(sim.start("ar7030", &why), qPrintable(why));
        const QString device = sim.device();

        CommLine comm;
        auto port = std::make_unique<SerialPortBackend>(device);
        QString reason;
        QVERIFY2(port->open(parseSettings("1200,N,8,1"), &reason), qPrintable(reason));
        comm.openWith(std::move(port));
        clsAR7030 rx(comm);

        const QString fw = rx.Firmware();
        QVERIFY2(fw.startsWith("7030_"), qPrintable(fw));
        QVERIFY(ar7030FirmwareNumber(fw) >= 13);

        rx.setFrequencyA(6070);
        const double back = rx.FrequencyA();
        QVERIFY2(std::fabs(back - 6070) < 0.003, qPrintable(QString::number(back, 'f', 4)));

        QVERIFY2(sim.waitForLog("tune 6070.000"), qPrintable(sim.log()));
        comm.setPortOpen(false);
    }
};

BRELVOX_TEST(TestAr7030OverPty)
#include "tst_ar7030_pty.moc"
