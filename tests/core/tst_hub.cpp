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

class Follower : public FrequencyFollower {
public:
    explicit Follower(QString name, QStringList *log) : name_(std::move(name)), log_(log) {}
    void setFrequencyText(const QString &t) override { *log_ << name_ + "=" + t; }

private:
    QString name_;
    QStringList *log_;
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
        QTest::newRow("AR7030 lower") << 1 << 10.0 << true;
        QTest::newRow("AR7030 below") << 1 << 9.999 << false;
        QTest::newRow("AR7030 upper") << 1 << 32016.0 << true;
        QTest::newRow("AR7030 above") << 1 << 32016.001 << false;
        QTest::newRow("NRD535 upper") << 2 << 29999.999 << true;
        QTest::newRow("NRD535 above") << 2 << 30000.0 << false;
        QTest::newRow("RX320 lower") << 3 << 100.0 << true;
        QTest::newRow("RX320 below") << 3 << 99.999 << false;
        QTest::newRow("RX320 upper") << 3 << 30000.0 << true;
        QTest::newRow("RX320 above") << 3 << 30000.001 << false;
        QTest::newRow("NRD545 lower") << 4 << 10.0 << true;
        QTest::newRow("NRD545 above") << 4 << 30000.0 << false;
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
        if (tunes) {
            QCOMPARE(rig.driver->calls, QStringList{QString("F%1").arg(freq, 0, 'f', 3)});
            QCOMPARE(rig.panel.calls, QStringList{QString("f%1").arg(freq, 0, 'f', 3)});
        } else {
            QVERIFY(rig.driver->calls.isEmpty());
            QVERIFY(rig.panel.calls.isEmpty());
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
        // AR7030: filters from the settings (14..17 hold 1, 2, 3, 4 below)
        QTest::newRow("AR A") << 1 << "A" << "M1 B1 G0" << "m1 b1 g0";
        QTest::newRow("AR u lower case") << 1 << "u" << "M7 B2 G2" << "m7 b2 g2";
        QTest::newRow("AR L") << 1 << "L" << "M6 B2 G2" << "m6 b2 g2";
        QTest::newRow("AR C") << 1 << "C" << "M5 B3 G0" << "m5 b3 g0";
        QTest::newRow("AR F leaves AGC") << 1 << "f" << "M3 B4" << "m3 b4";
        QTest::newRow("AR D") << 1 << "D" << "M4 B2 G0" << "m4 b2 g0";
        QTest::newRow("AR unknown") << 1 << "x" << "" << "";
        QTest::newRow("NRD535 A") << 2 << "A" << "M4 B0 G1" << "m4 b0 g1";
        QTest::newRow("NRD535 U") << 2 << "U" << "M2 B1 G0" << "m2 b1 g0";
        QTest::newRow("NRD535 L") << 2 << "L" << "M3 B1 G0" << "m3 b1 g0";
        QTest::newRow("NRD535 C with 1 kHz option") << 2 << "C" << "M1 B2 G1" << "m1 b2 g1";
        QTest::newRow("NRD535 F") << 2 << "F" << "M5 B3" << "m5 b3";
        QTest::newRow("NRD535 D") << 2 << "d" << "M6 B1 G1" << "m6 b1 g1";
        QTest::newRow("RX320 A") << 3 << "A" << "M0 B2 G3" << "m0 b2 g2";
        QTest::newRow("RX320 U shows medium") << 3 << "U" << "M1 B10 G1" << "m1 b10 g1";
        QTest::newRow("RX320 L shows medium") << 3 << "l" << "M2 B10 G1" << "m2 b10 g1";
        QTest::newRow("RX320 C") << 3 << "C" << "M3 B23 G3" << "m3 b23 g2";
        QTest::newRow("RX320 F does nothing") << 3 << "f" << "" << "";
        QTest::newRow("RX320 D does nothing") << 3 << "D" << "" << "";
        QTest::newRow("NRD545 A mode only") << 4 << "a" << "M4" << "m4";
        QTest::newRow("NRD545 D") << 4 << "D" << "M0" << "m0";
        QTest::newRow("NRD545 F") << 4 << "F" << "M5" << "m5";
    }
    void setRx2mfa()
    {
        QFETCH(int, type);
        QFETCH(QString, letter);
        QFETCH(QString, driver);
        QFETCH(QString, panel);
        TestEnv env;
        Rig rig(type);
        slotArOption(0) = 1;
        slotArOption(1) = 2;
        slotArOption(2) = 3;
        slotArOption(3) = 4;
        slotNrdOption(0) = 1;
        QString arg = letter;
        rig.hub.SetRx2mfa(arg);
        QCOMPARE(arg, letter.toUpper());
        QCOMPARE(rig.driver->calls.join(' '), driver);
        QCOMPARE(rig.panel.calls.join(' '), panel);
    }

    void nrd535CwWithoutNarrowOption()
    {
        TestEnv env;
        Rig rig(2);
        slotNrdOption(0) = 0;
        QString l = "C";
        rig.hub.SetRx2mfa(l);
        QCOMPARE(rig.driver->calls.join(' '), QString("M1 B1 G1"));
    }

    void convertRx2mfa_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<int>("mode");
        QTest::addColumn<QString>("letter");
        QTest::newRow("AR 0") << 1 << 0 << "";
        QTest::newRow("AR Sync") << 1 << 2 << "a";
        QTest::newRow("AR NFM") << 1 << 3 << "f";
        QTest::newRow("AR Data") << 1 << 4 << "d";
        QTest::newRow("AR USB") << 1 << 7 << "u";
        QTest::newRow("AR 8") << 1 << 8 << "";
        QTest::newRow("NRD535 RY") << 2 << 0 << "d";
        QTest::newRow("NRD535 Fax") << 2 << 6 << "d";
        QTest::newRow("NRD535 AM-L") << 2 << 8 << "a";
        QTest::newRow("NRD535 9") << 2 << 9 << "";
        QTest::newRow("RX320 CW") << 3 << 3 << "c";
        QTest::newRow("RX320 4") << 3 << 4 << "";
        QTest::newRow("NRD545 AMS") << 4 << 6 << "a";
        QTest::newRow("NRD545 WFM") << 4 << 9 << "";
        QTest::newRow("NRD545 LSB") << 4 << 3 << "l";
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
        bool ignore = true;
        rig.hub.last20IgnoresSteps = [&] { return ignore; };
        last20Enabled = true;
        QString box;
        rig.hub.getfreq(box, first);
        QCOMPARE(box, first);
        QVERIFY(rig.panel.calls.isEmpty());
        QCOMPARE(searches, 0);
        rig.hub.getfreq(box, second);
        QVERIFY(box.isEmpty());
        QCOMPARE(trackFreq, khz);
        QCOMPARE(rig.panel.calls, QStringList{QString("f%1").arg(khz, 0, 'f', 3)});
        QCOMPARE(searches, 1);
        QVERIFY(!last20Enabled); // "Ignore Freq steps" ticked
    }

    void getfreqOtherModelsOnlyClear()
    {
        TestEnv env;
        Rig rig(1);
        trackFreq = 77;
        QString box = "xx";
        rig.hub.getfreq(box, "1234\r");
        QVERIFY(box.isEmpty());
        QCOMPARE(trackFreq, 77.0);
        QVERIFY(rig.panel.calls.isEmpty());
    }
};

BRELVOX_TEST(TestHub)
#include "tst_hub.moc"
