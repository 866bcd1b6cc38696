#include "core/runtime_error.h"
#include "core/shared_state.h"
#include "drivers/clsRX320.h"
#include "drivers/model_tables.h"
#include "serial/comm_line.h"
#include "serial/sim_backend.h"
#include "sim/rx320_sim.h"
#include "testmain.h"
#include "testutil.h"

#include <QSignalSpy>
#include <QTest>
#include <cmath>

namespace {
// A receiver that answers every "X" with fixed bytes (for replies the real set never gives).
class FixedReplyDevice : public SimDevice {
public:
    explicit FixedReplyDevice(QByteArray reply) : reply_(std::move(reply)) {}
    void receive(const QByteArray &b) override
    {
        if (b.startsWith('X'))
            send(reply_);
    }
    int baudRate() const override { return 1200; }
    QString model() const override { return "fixed"; }

private:
    QByteArray reply_;
};

struct Bench {
    CommLine comm;
    Rx320Sim *sim = nullptr;
    SimBackend *line = nullptr;
    clsRX320 rx{comm};
    Bench()
    {
        labelRoutineRX320();
        auto s = std::make_unique<Rx320Sim>();
        sim = s.get();
        auto b = std::make_unique<SimBackend>(std::move(s));
        line = b.get();
        b->open(parseSettings("1200,N,8,1"), nullptr);
        comm.openWith(std::move(b));
    }
    QByteArray takeWritten()
    {
        QByteArray w = line->written;
        line->written.clear();
        return w;
    }
};

QByteArray bytes(std::initializer_list<int> v)
{
    QByteArray b;
    for (int x : v)
        b += char(uint8_t(x));
    return b;
}

} // namespace

class TestRx320Driver : public QObject {
    Q_OBJECT
private slots:
    void tuneBytesAt10MHz()
    {
        TestEnv env;
        Bench b;
        rx320Mode = 0;
        b.rx.setFrequencyA(10000);
        QCOMPARE(b.takeWritten(), QByteArray("N") + bytes({85, 239, 26, 169, 85, 80}) + "\r");
        QCOMPARE(b.sim->tunedHz(), 10000000.0);
        QCOMPARE(rx320Freq, 10000.0);
    }

    // Every mode, filter and correction lands the receiver where the listener asked.
    void tunedWhereAsked_data()
    {
        QTest::addColumn<double>("khz");
        QTest::addColumn<int>("mode");
        QTest::addColumn<int>("filter");
        QTest::addColumn<int>("corr5");
        QTest::addColumn<int>("corr15");
        QTest::addColumn<double>("expectHz");
        QTest::newRow("AM lower limit") << 100.0 << 0 << 33 << 0 << 0 << 100000.0;
        QTest::newRow("AM upper limit") << 30000.0 << 0 << 33 << 0 << 0 << 30000000.0;
        QTest::newRow("AM odd Hz") << 9410.123 << 0 << 2 << 0 << 0 << 9410123.0;
        QTest::newRow("USB wide") << 14230.0 << 1 << 0 << 0 << 0 << 14230000.0;
        QTest::newRow("USB narrow") << 14230.0 << 1 << 32 << 0 << 0 << 14230000.0;
        QTest::newRow("LSB 2.7k") << 3790.0 << 2 << 12 << 0 << 0 << 3790000.0;
        QTest::newRow("CW") << 7020.5 << 3 << 23 << 0 << 0 << 7020500.0;
        QTest::newRow("correction 50 at 10 MHz") << 10000.0 << 0 << 33 << 0 << 100 << 10000050.0;
        QTest::newRow("correction 150 at 20 MHz") << 20000.0 << 0 << 33 << 0 << 100 << 20000150.0;
        QTest::newRow("negative correction") << 5000.0 << 0 << 33 << -200 << 0 << 4999800.0;
        QTest::newRow("correction floors") << 7500.0 << 0 << 33 << 0 << 3 << 7500000.0;
    }
    void tunedWhereAsked()
    {
        QFETCH(double, khz);
        QFETCH(int, mode);
        QFETCH(int, filter);
        QFETCH(int, corr5);
        QFETCH(int, corr15);
        QFETCH(double, expectHz);
        TestEnv env;
        Bench b;
        slotFreqcorr(0) = float(corr5);
        slotFreqcorr(1) = float(corr15);
        rx320Freq = khz;
        b.rx.setMode(int16_t(mode));
        int16_t bw = int16_t(filter);
        b.rx.setBandwidth(bw);
        b.rx.setFrequencyA(khz);
        QVERIFY2(std::fabs(b.sim->tunedHz() - expectHz) < 1.0,
                 qPrintable(QString("tuned %1 Hz, wanted %2").arg(b.sim->tunedHz(), 0, 'f', 2).arg(expectHz)));
    }

    void filterChangeInUsbMovesCarrierByHalfTheDifference()
    {
        TestEnv env;
        Bench b;
        int16_t wide = 0, narrow = 20; // 6000 Hz and 1500 Hz
        b.rx.setMode(1);
        b.rx.setBandwidth(wide);
        b.rx.setFrequencyA(14230);
        const double before = (b.sim->coarse() - 18000) * 2500.0 + b.sim->fine() / 5.46;
        b.rx.setBandwidth(narrow);
        const double after = (b.sim->coarse() - 18000) * 2500.0 + b.sim->fine() / 5.46;
        QVERIFY(std::fabs((before - after) - 2250.0) < 1.0);
        QCOMPARE(b.sim->filterIndex(), 20);
        QVERIFY(std::fabs(b.sim->tunedHz() - 14230000.0) < 1.0);
    }

    void commands_data()
    {
        QTest::addColumn<QString>("what");
        QTest::addColumn<int>("value");
        QTest::addColumn<QByteArray>("wire");
        QTest::newRow("volume 99 loudest") << "volume" << 99 << QByteArray("V\x7f") + bytes({0}) + "\r";
        QTest::newRow("volume 0 softest") << "volume" << 0 << QByteArray("V\x7f") + bytes({63}) + "\r";
        QTest::newRow("volume 50") << "volume" << 50 << QByteArray("V\x7f") + bytes({18}) + "\r";
        QTest::newRow("line 99") << "line" << 99 << QByteArray("A\x7f") + bytes({0}) + "\r";
        QTest::newRow("line 1") << "line" << 1 << QByteArray("A\x7f") + bytes({57}) + "\r";
        QTest::newRow("agc fast") << "agc" << 3 << QByteArray("G3\r");
        QTest::newRow("agc slow") << "agc" << 1 << QByteArray("G1\r");
    }
    void commands()
    {
        QFETCH(QString, what);
        QFETCH(int, value);
        QFETCH(QByteArray, wire);
        TestEnv env;
        Bench b;
        if (what == "volume")
            b.rx.setVolume(int16_t(value));
        else if (what == "line")
            b.rx.setLinelevel(int16_t(value));
        else
            b.rx.setAgcspeed(int16_t(value));
        QCOMPARE(b.takeWritten(), wire);
        if (what == "volume")
            QCOMPARE(b.sim->speakerByte(), int(uint8_t(wire[2])));
        if (what == "agc")
            QCOMPARE(b.sim->agc(), value);
    }

    void levelOutsideRangeOverflows() { QCOMPARE(errorOf([] { rx320LevelByte(331); }), 6); }

    void modeSendsDigitThenRetunes()
    {
        TestEnv env;
        Bench b;
        rx320Freq = 9410;
        QSignalSpy freq(&b.rx, &RxDriver::FrequencyAChanged), mode(&b.rx, &RxDriver::ModeChanged);
        b.rx.setMode(2);
        const QByteArray w = b.takeWritten();
        QVERIFY(w.startsWith("M2\rN"));
        QCOMPARE(w.size(), 3 + 8);
        QCOMPARE(b.sim->mode(), 2);
        QCOMPARE(freq.size(), 1);
        QCOMPARE(mode.size(), 1);
        QCOMPARE(mode.first().first().toInt(), 2);
    }

    void modeOutsideTableSendsZeros()
    {
        TestEnv env;
        Bench b;
        rx320Mode = 7;
        b.rx.setFrequencyA(9410);
        QCOMPARE(b.takeWritten(), QByteArray("N") + QByteArray(6, '\0') + "\r");
    }

    void bandwidthOutsideIsWidest()
    {
        TestEnv env;
        Bench b;
        rx320Freq = 6070;
        QList<QString> order;
        connect(&b.rx, &RxDriver::FrequencyAChanged, this, [&] { order << "freq"; });
        connect(&b.rx, &RxDriver::BandwidthChanged, this, [&](int v) { order << QString("bw%1").arg(v); });
        int16_t v = 40;
        b.rx.setBandwidth(v);
        QCOMPARE(v, int16_t(33));          // corrected for the caller
        QCOMPARE(rx320Bandwidth, int16_t(40)); // the stored copy keeps what was passed
        QVERIFY(b.takeWritten().startsWith(QByteArray("W") + bytes({33}) + "\rN"));
        QCOMPARE(order, (QList<QString>{"freq", "bw33"}));
        QCOMPARE(b.sim->filterIndex(), 33);
    }

    void pbsAndBfoOnlyRetune()
    {
        TestEnv env;
        Bench b;
        rx320Freq = 7020;
        b.rx.setMode(3);
        b.takeWritten();
        b.rx.setBeatfreqosc(1000);
        QByteArray w = b.takeWritten();
        QCOMPARE(w.size(), 8);
        QVERIFY(w.startsWith('N'));
        // CW: BFO word = (bfo + pbs + 8000) * 2.73
        QCOMPARE(b.sim->bfo(), int(std::floor(9000 * 2.73)));
        b.rx.setPassBandShift(-200);
        w = b.takeWritten();
        QCOMPARE(w.size(), 8);
        QCOMPARE(b.sim->bfo(), int(std::floor((1000 - 200 + 8000) * 2.73)));
    }

    void smeterAndFirmwareFromTheReceiver()
    {
        TestEnv env;
        env.clock->set(QDateTime(QDate(2026, 11, 22), QTime(20, 0)));
        Bench b;
        b.rx.setFrequencyA(9410);
        const float s = b.rx.Smeter();
        QVERIFY(b.takeWritten().endsWith("X\r"));
        const int v = b.sim->smeterValue();
        QCOMPARE(s, float(1.4 * std::log(double(v))));
        QVERIFY(s > 0);
        QCOMPARE(b.rx.Firmware(), QString("VER 1.03\r"));
    }

    void smeterFaults_data()
    {
        QTest::addColumn<QByteArray>("reply");
        QTest::addColumn<int>("error");
        QTest::addColumn<float>("value");
        QTest::newRow("value 1 is S0") << QByteArray("X") + bytes({0, 1}) + "\r" << 0 << 0.0f;
        QTest::newRow("high byte 128 overflows") << QByteArray("X") + bytes({128, 0}) + "\r" << 6 << 0.0f;
        QTest::newRow("zero has no logarithm") << QByteArray("X") + bytes({0, 0}) + "\r" << 5 << 0.0f;
    }
    void smeterFaults()
    {
        QFETCH(QByteArray, reply);
        QFETCH(int, error);
        QFETCH(float, value);
        TestEnv env;
        CommLine comm;
        auto line = std::make_unique<SimBackend>(std::make_unique<FixedReplyDevice>(reply));
        line->open(parseSettings("1200,N,8,1"), nullptr);
        comm.openWith(std::move(line));
        clsRX320 rx(comm);
        float got = -1;
        QCOMPARE(errorOf([&] { got = rx.Smeter(); }), error);
        if (!error)
            QCOMPARE(got, value);
    }

    void firmwareOfASilentReceiverIsEmpty()
    {
        TestEnv env;
        CommLine comm;
        auto line = std::make_unique<SimBackend>(std::make_unique<FixedReplyDevice>(QByteArray()));
        line->open(parseSettings("1200,N,8,1"), nullptr);
        comm.openWith(std::move(line));
        clsRX320 rx(comm);
        QCOMPARE(rx.Firmware(), QString());
    }
};

BRELVOX_TEST(TestRx320Driver)
#include "tst_rx320.moc"
