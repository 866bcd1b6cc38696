#include "core/shared_state.h"
#include "serial/comm_line.h"
#include "serial/port_map.h"
#include "serial/sim_backend.h"
#include "sim/sim_device.h"
#include "testmain.h"
#include "testutil.h"

#include <QSignalSpy>
#include <QTest>

namespace {
// Answers every byte string it gets with "<" + bytes + ">".
class EchoDevice : public SimDevice {
public:
    void receive(const QByteArray &b) override { send("<" + b + ">"); }
    int baudRate() const override { return 4800; }
    QString model() const override { return "echo"; }
};

struct EchoLine {
    CommLine comm;
    SimBackend *line = nullptr;
    explicit EchoLine(bool paced = false)
    {
        auto b = std::make_unique<SimBackend>(std::make_unique<EchoDevice>());
        b->setPaced(paced);
        line = b.get();
        b->open(parseSettings("4800,N,8,1"), nullptr);
        comm.openWith(std::move(b));
    }
};
} // namespace

class TestCommLine : public QObject {
    Q_OBJECT
private slots:
    void portMap_data()
    {
        QTest::addColumn<QByteArray>("comports"); // empty: no file
        QTest::addColumn<int>("port");
        QTest::addColumn<bool>("sim");
        QTest::addColumn<QString>("device");
        QTest::newRow("no file") << QByteArray() << 1 << false << "/dev/ttyS0";
        QTest::newRow("no file COM3") << QByteArray() << 3 << false << "/dev/ttyS2";
        QTest::newRow("line names device") << QByteArray("/dev/ttyUSB0\r\nsim\r\n") << 1 << false << "/dev/ttyUSB0";
        QTest::newRow("sim in any case") << QByteArray("/dev/ttyUSB0\r\nSim\r\n") << 2 << true << "sim";
        QTest::newRow("beyond the file") << QByteArray("sim\r\n") << 4 << false << "/dev/ttyS3";
        QTest::newRow("blank line") << QByteArray("\r\n\r\n") << 2 << false << "/dev/ttyS1";
    }
    void portMap()
    {
        QFETCH(QByteArray, comports);
        QFETCH(int, port);
        QFETCH(bool, sim);
        QFETCH(QString, device);
        QTemporaryDir dir;
        if (!comports.isEmpty())
            writeFile(dir.filePath("comports.ini"), comports);
        const PortTarget t = resolvePort(port, dir.path() + "/");
        QCOMPARE(t.simulator, sim);
        QCOMPARE(t.device, device);
    }

    void portThatCannotOpenIsTold()
    {
        TestEnv env;
        QTemporaryDir dir;
        writeFile(dir.filePath("comports.ini"), "/dev/brelvox-no-such-port\r\n");
        dirPath = dir.path() + "/";
        CommLine comm;
        comm.setCommPort(1);
        comm.setSettings("1200,N,8,1");
        env.dialogs->expectMsgBox("/dev/brelvox-no-such-port");
        comm.setPortOpen(true);
        QVERIFY(!comm.PortOpen());
        comm.Output("X\r"); // goes nowhere, breaks nothing
        QCOMPARE(comm.InBufferCount(), 0);
        QVERIFY(!comm.waitForBytes(10));
        QCOMPARE(env.dialogs->shown.value(0).style, 48);
    }

    void simSelectedByThePortMap()
    {
        TestEnv env;
        QTemporaryDir dir;
        writeFile(dir.filePath("comports.ini"), "sim\r\n");
        dirPath = dir.path() + "/";
        CommLine::setSimulatorFactory([] { return std::make_unique<EchoDevice>(); });
        CommLine comm;
        comm.setCommPort(1);
        comm.setSettings("4800,N,8,1");
        comm.setPortOpen(true);
        CommLine::setSimulatorFactory({});
        QVERIFY(comm.PortOpen());
        QCOMPARE(comm.deviceName(), QString("sim"));
        comm.Output("H1\r");
        QVERIFY(comm.waitForBytes(1000));
        QCOMPARE(comm.Input(), QByteArray("<H1\r>"));
    }

    void replyComesOnlyAfterAWait()
    {
        EchoLine l;
        l.comm.Output("ab");
        QCOMPARE(l.line->written, QByteArray("ab"));
        QVERIFY(l.comm.waitForBytes(1000));
        QCOMPARE(l.comm.InBufferCount(), 4);
        l.comm.setInputLen(1);
        QCOMPARE(l.comm.Input(), QByteArray("<"));
        l.comm.setInputLen(0);
        QCOMPARE(l.comm.Input(), QByteArray("ab>"));
        l.comm.Output("cd");
        QVERIFY(l.comm.waitForBytes(1000));
        l.comm.setInBufferCount(0);
        QCOMPARE(l.comm.InBufferCount(), 0);
    }

    void bytesAreBytes()
    {
        EchoLine l;
        QByteArray all;
        for (int i = 0; i < 256; ++i)
            all += char(i);
        l.comm.Output(all);
        QVERIFY(l.comm.waitForBytes(1000));
        QCOMPARE(l.comm.Input(), "<" + all + ">");
    }

    void receiveEventCarriesCommEvent2()
    {
        EchoLine l;
        int during = -1;
        connect(&l.comm, &CommLine::OnComm, this, [&] { during = l.comm.CommEvent(); });
        l.comm.Output("I1");
        QTRY_COMPARE_WITH_TIMEOUT(during, 2, 2000);
        QCOMPARE(l.comm.CommEvent(), 0);
    }

    void pacedRepliesTakeLineTime()
    {
        EchoLine l(true);
        l.comm.Output(QByteArray(46, 'x')); // 48 bytes back at 4800 baud: 100 ms on the wire
        QVERIFY(!l.comm.waitForBytes(20));
        QVERIFY(l.comm.waitForBytes(2000));
        QCOMPARE(l.comm.InBufferCount(), 48);
    }

    void settings_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("valid");
        QTest::addColumn<int>("baud");
        QTest::newRow("rx320") << "1200,N,8,1" << true << 1200;
        QTest::newRow("jrc") << "4800,n,8,1" << true << 4800;
        QTest::newRow("garbage") << "fast" << false << 1200;
    }
    void settings()
    {
        QFETCH(QString, text);
        QFETCH(bool, valid);
        QFETCH(int, baud);
        const LineSettings s = parseSettings(text);
        QCOMPARE(s.valid, valid);
        QCOMPARE(s.baud, baud);
    }
};

BRELVOX_TEST(TestCommLine)
#include "tst_commline.moc"
