// The RX-320 driver: its bytes on the line, where the tuning lands the receiver, and what it
// makes of the receiver's few replies, faulty ones included.
#include "core/shared_state.h"
#include "drivers/clsRX320.h"
#include "drivers/model_tables.h"
#include "serial/comm_line.h"
#include "serial/sim_backend.h"
#include "sim/rx320_sim.h"
#include "testmain.h"
#include "testutil.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>
#include <cmath>
#include <functional>

namespace {
// Notes when each piece of the computer's bytes reaches the receiver, and passes it on.
class ArrivalClock : public SimDevice {
public:
    explicit ArrivalClock(std::unique_ptr<SimDevice> inner) : inner_(std::move(inner))
    {
        inner_->transmit = [this](const QByteArray &b) { send(b); };
        inner_->log = [this](const QString &l) { note(l); };
        clock_.start();
    }
    QList<std::pair<qint64, QByteArray>> arrivals; // ns since the line came up, bytes
    void receive(const QByteArray &b) override
    {
        arrivals.append({clock_.nsecsElapsed(), b});
        inner_->receive(b);
    }
    int baudRate() const override { return inner_->baudRate(); }
    QString model() const override { return inner_->model(); }

private:
    std::unique_ptr<SimDevice> inner_;
    QElapsedTimer clock_;
};

// The driver on a line to the simulated receiver, or to a device that answers "X" with fixed bytes.
struct Bench {
    CommLine comm;
    Rx320Sim *sim = nullptr;
    SimBackend *line = nullptr;
    ArrivalClock *arrivals = nullptr;
    clsRX320 rx{comm};
    explicit Bench(std::unique_ptr<SimDevice> device = std::make_unique<Rx320Sim>())
    {
        labelRoutineRX320();
        sim = dynamic_cast<Rx320Sim *>(device.get());
        auto timed = std::make_unique<ArrivalClock>(std::move(device));
        arrivals = timed.get();
        line = openOnSim(comm, std::move(timed), "1200,N,8,1");
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

using RxOp = std::function<void(clsRX320 &)>;
} // namespace

Q_DECLARE_METATYPE(RxOp)

class TestRx320Driver : public QObject {
    Q_OBJECT
private slots:
    // Every mode, filter and correction lands the receiver where the listener asked, and a
    // change of filter afterwards (in USB it moves the carrier) keeps it there.
    void tunedWhereAsked_data()
    {
        QTest::addColumn<double>("khz");
        QTest::addColumn<int>("mode");
        QTest::addColumn<int>("filter");
        QTest::addColumn<int>("corr5");
        QTest::addColumn<int>("corr15");
        QTest::addColumn<double>("expectHz");
        QTest::newRow("AM lower limit") << 100.0 << 0 << 33 << 0 << 0 << 100000.0;
        QTest::newRow("AM odd Hz") << 9410.123 << 0 << 2 << 0 << 0 << 9410123.0;
        QTest::newRow("USB narrow") << 14230.0 << 1 << 32 << 0 << 0 << 14230000.0;
        QTest::newRow("LSB 2.7k") << 3790.0 << 2 << 12 << 0 << 0 << 3790000.0;
        QTest::newRow("CW") << 7020.5 << 3 << 23 << 0 << 0 << 7020500.0;
        QTest::newRow("correction 50 at 10 MHz") << 10000.0 << 0 << 33 << 0 << 100 << 10000050.0;
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
        int16_t other = 20; // 1500 Hz
        b.rx.setBandwidth(other);
        QCOMPARE(b.sim->filterIndex(), 20);
        QVERIFY2(std::fabs(b.sim->tunedHz() - expectHz) < 1.0, qPrintable(QString::number(b.sim->tunedHz(), 'f', 2)));
    }

    void writes_data()
    {
        QTest::addColumn<RxOp>("op");
        QTest::addColumn<QByteArray>("wire");
        auto row = [](const char *name, RxOp op, const QByteArray &wire) { QTest::newRow(name) << op << wire; };
        row("tune 10000 kHz", [](clsRX320 &rx) { rx320Mode = 0; rx.setFrequencyA(10000); },
            QByteArray("N") + bytes({85, 239, 26, 169, 85, 80}) + "\r");
        // Every mode with a pass band shift; fine bytes that round down and up; half Hz to even.
        auto tune = [](int16_t mode, int16_t filter, int16_t pbs, int16_t bfo, double khz) {
            return [=](clsRX320 &rx) {
                rx320Mode = mode;
                rx320Bandwidth = filter;
                rx320Pbs = pbs;
                rx320Bfo = bfo;
                rx.setFrequencyA(khz);
            };
        };
        row("tune AM +300", tune(0, 2, 300, 0, 9410.123), QByteArray("N") + bytes({85, 3, 22, 227, 88, 131}) + "\r");
        row("tune AM -450", tune(0, 33, -450, 0, 6070.047), QByteArray("N") + bytes({79, 203, 37, 67, 80, 131}) + "\r");
        row("tune USB -200", tune(1, 12, -200, 0, 14230), QByteArray("N") + bytes({92, 140, 2, 34, 99, 181}) + "\r");
        row("tune USB +35 675 Hz", tune(1, 26, 35, 0, 11735.003), QByteArray("N") + bytes({88, 165, 38, 242, 91, 106}) + "\r");
        row("tune LSB +150 675 Hz", tune(2, 26, 150, 0, 3790), QByteArray("N") + bytes({76, 59, 11, 253, 92, 164}) + "\r");
        row("tune LSB 6000 Hz", tune(2, 0, 0, 0, 5000.001), QByteArray("N") + bytes({78, 30, 11, 192, 119, 112}) + "\r");
        row("tune CW -100 bfo 700", tune(3, 23, -100, 700, 7020.5), QByteArray("N") + bytes({81, 71, 39, 117, 91, 182}) + "\r");
        // BFO and pass band shift are only a retune: in CW the BFO word is (bfo + pbs + 8000) * 2.73
        row("bfo 1000 in CW", [](clsRX320 &rx) { rx320Mode = 3; rx320Freq = 7020; rx.setBeatfreqosc(1000); },
            QByteArray("N") + bytes({81, 71, 26, 169, 95, 250}) + "\r");
        row("pbs -200 in CW", [](clsRX320 &rx) { rx320Mode = 3; rx320Freq = 7020; rx320Bfo = 1000; rx.setPassBandShift(-200); },
            QByteArray("N") + bytes({81, 71, 30, 237, 93, 216}) + "\r");
        row("mode outside table", [](clsRX320 &rx) { rx320Mode = 7; rx.setFrequencyA(9410); },
            QByteArray("N") + QByteArray(6, '\0') + "\r");
        row("volume 99 loudest", [](clsRX320 &rx) { rx.setVolume(99); }, QByteArray("V\x7f") + bytes({0}) + "\r");
        row("volume 0 softest", [](clsRX320 &rx) { rx.setVolume(0); }, QByteArray("V\x7f") + bytes({63}) + "\r");
        row("volume 50", [](clsRX320 &rx) { rx.setVolume(50); }, QByteArray("V\x7f") + bytes({18}) + "\r");
        row("line 1", [](clsRX320 &rx) { rx.setLinelevel(1); }, QByteArray("A\x7f") + bytes({57}) + "\r");
        row("agc fast", [](clsRX320 &rx) { rx.setAgcspeed(3); }, "G3\r");
    }
    void writes()
    {
        QFETCH(RxOp, op);
        QFETCH(QByteArray, wire);
        TestEnv env;
        Bench b;
        op(b.rx);
        QCOMPARE(b.takeWritten(), wire);
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
        // The firmware wait is whole: 100 ms from the question to the next command.
        b.rx.setAgcspeed(1);
        const auto &a = b.arrivals->arrivals;
        QCOMPARE(a.at(a.size() - 2).second, QByteArray("?\r"));
        const qint64 gap = a.last().first - a.at(a.size() - 2).first;
        QVERIFY2(gap >= 100000000, qPrintable(QString::number(gap / 1e6)));
    }

    // Replies the real set never gives: the meter's faults, and a receiver that stays silent.
    void oddReplies_data()
    {
        QTest::addColumn<QByteArray>("reply");
        QTest::addColumn<bool>("firmware"); // else the S-meter
        QTest::addColumn<int>("error");
        QTest::newRow("meter high byte 128 overflows") << QByteArray("X") + bytes({128, 0}) + "\r" << false << 6;
        QTest::newRow("meter zero has no logarithm") << QByteArray("X") + bytes({0, 0}) + "\r" << false << 5;
        QTest::newRow("firmware of a silent receiver is empty") << QByteArray() << true << 0;
    }
    void oddReplies()
    {
        QFETCH(QByteArray, reply);
        QFETCH(bool, firmware);
        QFETCH(int, error);
        TestEnv env;
        Bench b(std::make_unique<FixedReplyDevice>("X", reply, 1200));
        QString text = "-";
        QCOMPARE(errorOf([&] { text = firmware ? b.rx.Firmware() : QString::number(b.rx.Smeter()); }), error);
        QCOMPARE(text, error ? QString("-") : QString());
    }
};

BRELVOX_TEST(TestRx320Driver)
#include "tst_rx320.moc"
