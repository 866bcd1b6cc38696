// The frequency hub: limits and their message, mode letters to and from each model, the
// distribution of a new frequency, and the NRD reports' frames.
#include "core/hub.h"
#include "core/shared_state.h"
#include "drivers/rx_driver.h"
#include "serial/comm_line.h"
#include "testmain.h"
#include "testutil.h"

#include <QTest>

namespace {
// Records what the hub asks of a driver.
class RecordingDriver : public RxDriver {
public:
    using RxDriver::RxDriver;
    QStringList calls;
    double freqToReport = 0;
    int16_t modeToReport = 0;
    void setFrequencyA(double khz) override { calls << QString("F%1").arg(khz, 0, 'f', 3); }
    double FrequencyA() override { calls << "F?"; return freqToReport; }
    void setMode(int16_t v) override { calls << QString("M%1").arg(v); }
    int16_t Mode() override { calls << "M?"; return modeToReport; }
    void setBandwidth(int16_t &v) override { calls << QString("B%1").arg(v); }
    void setAgcspeed(int16_t v) override { calls << QString("G%1").arg(v); }
    float Smeter() override { return 0; }
    QString Firmware() override { return {}; }
};

class RecordingPanel : public RxPanel {
public:
    QStringList calls;
    void hubFrequencyAChanged(double khz) override { calls << QString("f%1").arg(khz, 0, 'f', 3); }
    void hubModeChanged(int16_t v) override { calls << QString("m%1").arg(v); }
    void hubBandwidthChanged(int16_t v) override { calls << QString("b%1").arg(v); }
    void hubAgcspeedChanged(int16_t v) override { calls << QString("g%1").arg(v); }
    QString frequencyText() const override { return {}; }
};

struct Follower : FrequencyFollower {
    Follower(QString n, QStringList *l) : name(std::move(n)), log(l) {}
    QString name;
    QStringList *log;
    void setFrequencyText(const QString &t) override { *log << name + "=" + t; }
};

struct Rig {
    CommLine comm;
    FrequencyHub hub;
    RecordingDriver *driver = nullptr;
    RecordingPanel panel;
    explicit Rig(int type)
    {
        rxType = int16_t(type);
        applyLimits(type);
        if (type >= 1) {
            auto d = std::make_unique<RecordingDriver>(comm);
            driver = d.get();
            hub.setDriver(type, std::move(d));
        }
        hub.setPanel(&panel);
    }
};
} // namespace

class TestHub : public QObject {
    Q_OBJECT
private slots:
    void limits_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<double>("freq");
        QTest::addColumn<bool>("tunes");
        for (auto [type, lower, upper] : {std::tuple{1, 10.0, 32016.0}, {2, 10.0, 29999.999}, {3, 100.0, 30000.0},
                                          {4, 10.0, 29999.999}}) {
            QTest::addRow("%d at %g", type, lower) << type << lower << true;
            QTest::addRow("%d below %g", type, lower) << type << lower - 0.001 << false;
            QTest::addRow("%d at %g", type, upper) << type << upper << true;
            QTest::addRow("%d above %g", type, upper) << type << upper + 0.001 << false;
        }
    }
    void limits()
    {
        QFETCH(int, type);
        QFETCH(double, freq);
        QFETCH(bool, tunes);
        TestEnv env;
        Rig rig(type);
        if (!tunes)
            env.dialogs->expectMsgBox("Frequency outside range");
        rig.hub.Change2FreqA(freq);
        VERIFY_DIALOGS_CLEAN(env);
        const QString khz = QString::number(freq, 'f', 3);
        QCOMPARE(rig.driver->calls, tunes ? QStringList{"F" + khz} : QStringList());
        QCOMPARE(rig.panel.calls, tunes ? QStringList{"f" + khz} : QStringList());
        if (!tunes) {
            QCOMPARE(env.dialogs->shown.first().title, QString("Input Error"));
            QCOMPARE(env.dialogs->shown.first().style, 48);
        }
    }

    void noReceiverIsSilent()
    {
        TestEnv env;
        Rig rig(0);
        double f = 5.0; // outside the limits too: still no message
        rig.hub.Change2FreqA(f);
        QString letter = "a";
        rig.hub.SetRx2mfa(letter);
        QCOMPARE(letter, QString("A"));
        rig.hub.Update4RxFreq();
        QVERIFY(rig.panel.calls.isEmpty());
        QCOMPARE(rig.hub.ConvertRx2mfa(), QString());
        VERIFY_DIALOGS_CLEAN(env);
    }

    void setRx2mfa_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QString>("letter");
        QTest::addColumn<QString>("driver");
        QTest::addColumn<QString>("panel");
        QTest::addColumn<int>("nrdOption"); // the NRD-535's 1 kHz filter
        // AR7030: filters from the settings (14..17 hold 1, 2, 3, 4 below)
        QTest::newRow("AR A") << 1 << "A" << "M1 B1 G0" << "m1 b1 g0" << 1;
        QTest::newRow("AR u lower case") << 1 << "u" << "M7 B2 G2" << "m7 b2 g2" << 1;
        QTest::newRow("AR L") << 1 << "L" << "M6 B2 G2" << "m6 b2 g2" << 1;
        QTest::newRow("AR C") << 1 << "C" << "M5 B3 G0" << "m5 b3 g0" << 1;
        QTest::newRow("AR F leaves AGC") << 1 << "f" << "M3 B4" << "m3 b4" << 1;
        QTest::newRow("AR D") << 1 << "D" << "M4 B2 G0" << "m4 b2 g0" << 1;
        QTest::newRow("AR unknown") << 1 << "x" << "" << "" << 1;
        QTest::newRow("NRD535 A") << 2 << "A" << "M4 B0 G1" << "m4 b0 g1" << 1;
        QTest::newRow("NRD535 U") << 2 << "U" << "M2 B1 G0" << "m2 b1 g0" << 1;
        QTest::newRow("NRD535 L") << 2 << "L" << "M3 B1 G0" << "m3 b1 g0" << 1;
        QTest::newRow("NRD535 C with 1 kHz option") << 2 << "C" << "M1 B2 G1" << "m1 b2 g1" << 1;
        QTest::newRow("NRD535 C without it") << 2 << "C" << "M1 B1 G1" << "m1 b1 g1" << 0;
        QTest::newRow("NRD535 F") << 2 << "F" << "M5 B3" << "m5 b3" << 1;
        QTest::newRow("NRD535 D") << 2 << "d" << "M6 B1 G1" << "m6 b1 g1" << 1;
        QTest::newRow("RX320 A") << 3 << "A" << "M0 B2 G3" << "m0 b2 g2" << 1;
        QTest::newRow("RX320 U shows medium") << 3 << "U" << "M1 B10 G1" << "m1 b10 g1" << 1;
        QTest::newRow("RX320 L shows medium") << 3 << "l" << "M2 B10 G1" << "m2 b10 g1" << 1;
        QTest::newRow("RX320 C") << 3 << "C" << "M3 B23 G3" << "m3 b23 g2" << 1;
        QTest::newRow("RX320 F does nothing") << 3 << "f" << "" << "" << 1;
        QTest::newRow("RX320 D does nothing") << 3 << "D" << "" << "" << 1;
        QTest::newRow("NRD545 A mode only") << 4 << "a" << "M4" << "m4" << 1;
        QTest::newRow("NRD545 D") << 4 << "D" << "M0" << "m0" << 1;
        QTest::newRow("NRD545 F") << 4 << "F" << "M5" << "m5" << 1;
    }
    void setRx2mfa()
    {
        QFETCH(int, type);
        QFETCH(QString, letter);
        QFETCH(QString, driver);
        QFETCH(QString, panel);
        QFETCH(int, nrdOption);
        TestEnv env;
        Rig rig(type);
        for (int i = 0; i < 4; ++i)
            slotArOption(i) = float(i + 1);
        slotNrdOption(0) = float(nrdOption);
        QString arg = letter;
        rig.hub.SetRx2mfa(arg);
        QCOMPARE(arg, letter.toUpper());
        QCOMPARE(rig.driver->calls.join(' '), driver);
        QCOMPARE(rig.panel.calls.join(' '), panel);
    }

    void convertRx2mfa_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<int>("mode");
        QTest::addColumn<QString>("letter");
        // "type:mode=letter": AR7030 0, Sync, NFM, Data, USB, 8; NRD-535 RY, Fax, AM-L, 9; RX-320
        // CW, 4; NRD-545 AMS, WFM, LSB
        for (const char *r : {"1:0=", "1:2=a", "1:3=f", "1:4=d", "1:7=u", "1:8=", "2:0=d", "2:6=d", "2:8=a", "2:9=",
                              "3:3=c", "3:4=", "4:6=a", "4:9=", "4:3=l"})
            QTest::newRow(r) << r[0] - '0' << QByteArray(r).mid(2).split('=')[0].toInt() << QString(r).section(u'=', 1);
    }
    void convertRx2mfa()
    {
        QFETCH(int, type);
        QFETCH(int, mode);
        QFETCH(QString, letter);
        TestEnv env;
        Rig rig(type);
        rig.driver->modeToReport = int16_t(mode);
        rx320Mode = int16_t(mode);
        QCOMPARE(rig.hub.ConvertRx2mfa(), letter);
        // the RX-320 cannot be read: its mode comes from memory, without a wire transaction
        QCOMPARE(rig.driver->calls.isEmpty(), type == 3);
    }

    void updateRxFreq()
    {
        TestEnv env;
        Rig ar(1);
        ar.driver->freqToReport = 9410.5;
        QCOMPARE(ar.hub.Update2RxFreq().toDouble(), 9410.5);
        QCOMPARE(ar.driver->calls, QStringList{"F?"});
        QCOMPARE(ar.panel.calls, QStringList{"f9410.500"});
        Rig rx(3);
        rx320Freq = 6070;
        rx.hub.Update4RxFreq();
        QVERIFY(rx.driver->calls.isEmpty());
        QCOMPARE(rx.panel.calls, QStringList{"f6070.000"});
    }

    void distribution()
    {
        TestEnv env;
        Rig rig(1);
        QStringList log;
        Follower bdxc("bdxc", &log), log1("log", &log), track("tracking", &log), closed("own", &log);
        rig.hub.setFollower(Win::frmLog, &log1);
        rig.hub.setFollower(Win::frmBdxc, &bdxc);
        rig.hub.setFollower(Win::frmTracking, &track);
        rig.hub.setFollower(Win::frmOwn, &closed);
        isOpen(Win::frmBdxc) = isOpen(Win::frmLog) = isOpen(Win::frmTracking) = true;
        QStringList last20;
        int searches = 0;
        rig.hub.last20Add = [&](const QString &t) { last20 << t; };
        rig.hub.searchTracking = [&] { ++searches; };
        trackFreq = 1234;

        // Tracking open but no data: trackFreq stays; Last 20 closed: nothing added
        last20Enabled = false;
        rig.hub.distributefreqa("9410.00", 9410);
        QCOMPARE(log, (QStringList{"bdxc=9410.00", "log=9410.00", "tracking=9410.00"}));
        QCOMPARE(trackFreq, 1234.0);
        QCOMPARE(searches, 0);
        QVERIFY(last20Enabled);

        isOpen(Win::frmLast20) = true;
        trackDataLoaded = true;
        last20Enabled = false; // a step that wants to be kept out of the list
        rig.hub.distributefreqa("9420.00", 9420);
        QVERIFY(last20.isEmpty());
        rig.hub.distributefreqa("9430.00", 9430);
        QCOMPARE(last20, QStringList{"9430.00"});
        QCOMPARE(trackFreq, 9430.0);
        QCOMPARE(searches, 2);
    }

    void getfreqFrameInTwoPieces_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QString>("first");
        QTest::addColumn<QString>("second");
        QTest::addColumn<double>("khz");
        QTest::newRow("NRD535") << 2 << "I1F0094" << "10000A\r" << 9410.0;
        QTest::newRow("NRD545") << 4 << "F0000" << "6070000AAA\r" << 6070.0;
        QTest::newRow("AR7030 only clears") << 1 << "12" << "34\r" << 77.0;
    }
    void getfreqFrameInTwoPieces()
    {
        QFETCH(int, type);
        QFETCH(QString, first);
        QFETCH(QString, second);
        QFETCH(double, khz);
        TestEnv env;
        Rig rig(type);
        int searches = 0;
        rig.hub.searchTracking = [&] { ++searches; };
        rig.hub.last20IgnoresSteps = [] { return true; };
        last20Enabled = true;
        trackFreq = 77;
        QString box;
        rig.hub.getfreq(box, first);
        QCOMPARE(box, first);
        QVERIFY(rig.panel.calls.isEmpty());
        QCOMPARE(searches, 0);
        rig.hub.getfreq(box, second);
        QVERIFY(box.isEmpty());
        QCOMPARE(trackFreq, khz);
        QCOMPARE(rig.panel.calls, type == 1 ? QStringList() : QStringList{QString("f%1").arg(khz, 0, 'f', 3)});
        QCOMPARE(searches, 1);
        QCOMPARE(last20Enabled, type == 1); // an NRD report with "Ignore Freq steps" ticked keeps it out
    }
};

BRELVOX_TEST(TestHub)
#include "tst_hub.moc"
