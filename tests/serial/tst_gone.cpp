// A receiver's device that goes away under an open line: a pseudo-terminal whose master the
// test closes, while the line is idle and while each kind of read waits on it.
#include "panel_rig.h"
#include "core/shared_state.h"
#include "core/textfile.h"
#include "drivers/clsAR7030.h"
#include "drivers/clsNRD535.h"
#include "drivers/clsNRD545.h"
#include "drivers/clsRX320.h"
#include "panels/frmRX320.h"
#include "serial/comm_line.h"
#include "testmain.h"
#include "testutil.h"

#include <QAbstractEventDispatcher>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTest>
#include <QTimer>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <mutex>
#include <poll.h>
#include <thread>
#include <utility>
#include <unistd.h>

namespace {

struct Pty {
    int master = -1;
    QString slave;
    Pty()
    {
        master = posix_openpt(O_RDWR | O_NOCTTY);
        if (master >= 0 && grantpt(master) == 0 && unlockpt(master) == 0)
            slave = QString::fromLocal8Bit(ptsname(master));
    }
    ~Pty()
    {
        if (master >= 0)
            ::close(master);
    }
};

// Closes a pty's master (fd, if any) after a while from another thread, so that it goes while
// the main thread waits on the line. A read that has not come back 5 s later never will: that
// ends the run with a message rather than hanging it.
class Unplug {
public:
    Unplug(int fd, int afterMs, const char *what) : fd_(fd)
    {
        thread_ = std::thread([this, afterMs, what] {
            std::this_thread::sleep_for(std::chrono::milliseconds(afterMs));
            if (fd_ >= 0)
                ::close(fd_);
            std::unique_lock<std::mutex> l(m_);
            if (!cv_.wait_for(l, std::chrono::seconds(5), [this] { return done_; })) {
                std::fprintf(stderr, "FAIL: %s did not come back after its device went away\n", what);
                std::abort();
            }
        });
    }
    ~Unplug()
    {
        {
            std::lock_guard<std::mutex> l(m_);
            done_ = true;
        }
        cv_.notify_all();
        thread_.join();
    }

private:
    int fd_;
    std::mutex m_;
    std::condition_variable cv_;
    bool done_ = false;
    std::thread thread_;
};

// How often the event loop wakes in ms of idling: a line that keeps signalling wakes it
// thousands of times, a quiet one a few.
int wakeupsOver(int ms)
{
    int n = 0;
    QAbstractEventDispatcher *d = QAbstractEventDispatcher::instance();
    const auto c = QObject::connect(d, &QAbstractEventDispatcher::awake, [&n] { ++n; });
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
    QObject::disconnect(c);
    return n;
}

enum Read { Idle, Ar7030Byte, Rx320Smeter, Nrd535Smeter, Nrd545Status, Nrd535Memory };

// Runs one read on the line and tells what it gave, where that is fixed.
QString runRead(int kind, CommLine &comm)
{
    switch (kind) {
    case Ar7030Byte: {
        clsAR7030 rx(comm);
        int16_t v = 7;
        const bool got = rx.readbyte(v);
        return QStringLiteral("%1 %2").arg(int(got)).arg(v);
    }
    case Rx320Smeter: return QString::number(clsRX320(comm).Smeter());
    case Nrd535Smeter: return QString::number(clsNRD535(comm).Smeter());
    case Nrd545Status: clsNRD545(comm).RxStatus(); break;
    case Nrd535Memory: clsNRD535(comm).Memory(12); break;
    }
    return QString();
}

} // namespace

class TestGoneDevice : public QObject {
    Q_OBJECT
private slots:
    void deviceGoes_data()
    {
        QTest::addColumn<int>("read");
        QTest::addColumn<QString>("settings");
        QTest::addColumn<QString>("gives"); // empty: whatever arrived, unchecked
        QTest::addColumn<int>("pauseMs");   // the read's own timed waits, line or no line
        QTest::newRow("idle line") << int(Idle) << "1200,N,8,1" << "" << 0;
        QTest::newRow("AR7030 byte read") << int(Ar7030Byte) << "1200,N,8,1" << "0 0" << 0;
        QTest::newRow("RX-320 S-meter") << int(Rx320Smeter) << "1200,N,8,1" << "0" << 0;
        QTest::newRow("NRD-535 S-meter, blocking") << int(Nrd535Smeter) << "4800,N,8,1" << "0" << 0;
        QTest::newRow("NRD-545 status, events run") << int(Nrd545Status) << "4800,N,8,1" << "" << 300;
        QTest::newRow("NRD-535 memory cell") << int(Nrd535Memory) << "4800,N,8,1" << "" << 0;
    }
    // The line closes and cuts its waits, the read ends with what it has, the listener is told
    // once, nothing spins afterwards, further reads end at once, and opening again starts afresh.
    void deviceGoes()
    {
        QFETCH(int, read);
        QFETCH(QString, settings);
        QFETCH(QString, gives);
        QFETCH(int, pauseMs);
        TestEnv env;
        QTemporaryDir dir;
        Pty pty;
        QVERIFY(!pty.slave.isEmpty());
        writeFile(dir.filePath("comports.ini"), pty.slave.toLocal8Bit() + "\r\n");
        dirPath = dir.path() + "/";
        CommLine comm;
        comm.setCommPort(1);
        comm.setSettings(settings);
        comm.setPortOpen(true);
        QVERIFY(comm.PortOpen());
        const QString told = QStringLiteral("The serial port COM1 (%1) has gone:\nthe receiver's device was removed "
                                            "or closed.").arg(pty.slave);
        env.dialogs->expectMsgBox(told);

        {
            Unplug unplug(std::exchange(pty.master, -1), read == Idle ? 0 : 50, QTest::currentDataTag());
            if (read == Idle)
                QTRY_VERIFY_WITH_TIMEOUT(!comm.PortOpen(), 1000);
            else if (gives.isEmpty())
                runRead(read, comm);
            else
                QCOMPARE(runRead(read, comm), gives);
        }
        QVERIFY(!comm.PortOpen());
        QVERIFY(comm.waitsCut());

        const int wakeups = wakeupsOver(300);
        QVERIFY2(wakeups < 50, qPrintable(QString::number(wakeups)));
        QCOMPARE(env.dialogs->shown.size(), 1);
        QCOMPARE(env.dialogs->shown[0].prompt, told);
        QCOMPARE(env.dialogs->shown[0].style, 48);
        QCOMPARE(env.dialogs->shown[0].title, QString("Serial port"));

        // Again on the dead line: over at once, and told no more.
        {
            Unplug watch(-1, 0, "a read after the loss");
            QElapsedTimer t;
            t.start();
            const QString again = runRead(read, comm);
            QVERIFY2(t.elapsed() < pauseMs + 200, qPrintable(QString::number(t.elapsed())));
            if (!gives.isEmpty())
                QCOMPARE(again, gives);
        }
        QCoreApplication::processEvents();
        QCOMPARE(env.dialogs->shown.size(), 1);

        // Closed and opened again on a device that is there.
        Pty again;
        writeFile(dir.filePath("comports.ini"), again.slave.toLocal8Bit() + "\r\n");
        comm.setPortOpen(false);
        comm.setPortOpen(true);
        QVERIFY(comm.PortOpen());
        QVERIFY(!comm.waitsCut());
        QCOMPARE(::write(again.master, "\x55", 1), ssize_t(1));
        QVERIFY(comm.waitForBytes(2000));
        QCOMPARE(comm.Input(), QByteArray("\x55"));
        VERIFY_DIALOGS_CLEAN(env);
    }

    // An open panel whose device goes: told once, idle without spinning, still usable; closed
    // and opened again, it sends its settings on the new line.
    void panelOutlivesItsDevice()
    {
        PanelRig rig(rxRX320);
        writeFile(rig.dir.filePath("rx320settings.ini"),
                  textfile::joinLines({"7100.5", "10", "-150", "1", "400", "1", "40", "20"}));
        Pty first;
        writeFile(rig.dir.filePath("comports.ini"), first.slave.toLocal8Bit() + "\r\n");
        QVERIFY(rig.open<frmRX320>());
        CommLine &comm = rig.welcome->Comm1;
        QVERIFY(comm.PortOpen());
        rig.env.dialogs->expectMsgBox("has gone");
        {
            Unplug unplug(std::exchange(first.master, -1), 0, "the panel's line");
            QTRY_VERIFY_WITH_TIMEOUT(!comm.PortOpen(), 1000);
        }
        const int wakeups = wakeupsOver(300);
        QVERIFY2(wakeups < 50, qPrintable(QString::number(wakeups)));
        rig.typeFrequency("9410");
        QCOMPARE(rig.panel->txtFrequencyA->text(), QString("9410.000"));
        QCOMPARE(rig.env.dialogs->shown.size(), 1);
        rig.click("cmdClose");
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

        Pty second;
        writeFile(rig.dir.filePath("comports.ini"), second.slave.toLocal8Bit() + "\r\n");
        QVERIFY(rig.open<frmRX320>());
        QVERIFY(comm.PortOpen());
        QVERIFY(!comm.waitsCut());
        pollfd pf{second.master, POLLIN, 0};
        char buf[64];
        const ssize_t n = ::poll(&pf, 1, 2000) == 1 ? ::read(second.master, buf, sizeof buf) : 0;
        QVERIFY2(n > 0, "the panel's load sent nothing on the new line");
        VERIFY_DIALOGS_CLEAN(rig.env);
    }
};

BRELVOX_TEST(TestGoneDevice)
#include "tst_gone.moc"
