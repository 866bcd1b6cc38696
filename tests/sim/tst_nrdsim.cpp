// The NRD-535 and NRD-545 simulators: remote gating, commands and the state they leave, query
// and memory replies with their lengths, channel operation, the clock, reports and the S-meter.
#include "sim/nrd_sim.h"
#include "sim/simulators.h"
#include "testmain.h"
#include "testutil.h"

#include <QTest>
#include <cmath>

namespace {
// A simulator by its tool name, with its line and log captured.
struct Rig {
    explicit Rig(const QString &model, bool remote = true) : dev(makeSimulatorByName(model))
    {
        sim = dynamic_cast<NrdSim *>(dev.get());
        sim->transmit = [this](const QByteArray &b) { out += b; };
        sim->log = [this](const QString &s) { log << s; };
        if (remote)
            sim->receive("H1\r");
    }
    // Sends commands (CR-ended) and returns what the set answered to them.
    QByteArray send(const QByteArray &commands)
    {
        out.clear();
        sim->receive(commands);
        return out;
    }
    std::unique_ptr<SimDevice> dev;
    NrdSim *sim = nullptr;
    QByteArray out;
    QStringList log;
};

// The set's state as "key=value" words, so that table rows can say what they expect.
QStringList state(const NrdSim &s)
{
    auto n = [](qint64 v) { return QString::number(v); };
    QStringList l{"hz=" + n(s.frequencyHz()), "mode=" + s.modeName(s.mode()), "bw=" + n(s.bandwidth()),
                  "att=" + n(s.attenuator()), "agc=" + n(s.agc()), "pbs=" + n(s.passBandShiftHz()),
                  "bwc=" + n(s.bandwidthControlHz()), "pitch=" + n(s.cwPitchHz()), "rtty=" + n(s.rttyOn()),
                  "rttyParams=" + QString::fromLatin1(s.rttyParameters()), "chanOp=" + n(s.channelOperation()),
                  "chan=" + n(s.channel())};
    for (int i = 0; i < 40; ++i)
        if (!s.userSetting(i).isEmpty())
            l << QStringLiteral("user%1=%2").arg(i).arg(QString::fromLatin1(s.userSetting(i)));
    if (const auto *d = dynamic_cast<const Nrd545Sim *>(&s))
        l << "ifGain=" + n(d->ifGain()) << "squelch=" + n(d->squelch()) << "tone=" + n(d->tone())
          << "volume=" + n(d->volume()) << "nbLevel=" + n(d->nbLevel()) << "notch=" + n(d->notch())
          << "notchHz=" + n(d->notchHz());
    return l;
}

// A band of one steady station at a frequency where its slow fading stands at zero.
constexpr double kQuietKhz = 3000 * M_PI;
SimBand steadyStation(double peakS) { return SimBand({{kQuietKhz, 3, peakS, 0, 0, 1e12, "Steady"}}); }
} // namespace

class TestNrdSim : public QObject {
    Q_OBJECT
private slots:
    void remoteGating_data()
    {
        QTest::addColumn<QString>("model");
        QTest::addColumn<QByteArray>("tune");
        QTest::newRow("nrd535") << "nrd535" << QByteArray("F09410000");
        QTest::newRow("nrd545") << "nrd545" << QByteArray("F0009410000");
    }
    void remoteGating()
    {
        QFETCH(QString, model);
        QFETCH(QByteArray, tune);
        Rig rig(model, false);
        // Local: no command is obeyed and no query answered.
        QCOMPARE(rig.send(tune + "\rM\rR0\rL000000\rI1\r"), QByteArray());
        QCOMPARE(rig.sim->frequencyHz(), 10000000);
        QVERIFY(!rig.sim->reporting());
        QCOMPARE(rig.log.first(), "ignored (local): " + tune);
        QCOMPARE(rig.log.size(), 5);
        // The doubled H1 of a remote frame, the command, the doubled H0.
        rig.send("H1\rH1\r" + tune + "\rH0\rH0\r");
        QCOMPARE(rig.sim->frequencyHz(), 9410000);
        QVERIFY(!rig.sim->remote());
        QCOMPARE(rig.log.mid(5), QStringList({"remote on", "remote on", "tune 9410.000 kHz", "remote off", "remote off"}));
        QCOMPARE(rig.send("D2\r"), QByteArray());
        QCOMPARE(rig.sim->modeName(rig.sim->mode()), "AM");
    }

    // What a set answers to commands, the state they leave ("key=value") and its last log line.
    // Memory reads ("L") have the set's exact length: 17 or 21 bytes filled, 6 vacant.
    // Tuning, shift and memory writes as our driver sends them run in tst_nrd throughSimulator.
    void commands_data()
    {
        QTest::addColumn<QString>("model");
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<QByteArray>("reply");
        QTest::addColumn<QStringList>("expect");
        QTest::addColumn<QString>("logLine"); // empty: not checked
        auto set = [](const char *name, const char *input, const QStringList &expect, const char *logLine) {
            QTest::newRow(name) << (name[1] == '3' ? "nrd535" : "nrd545") << QByteArray(input) + '\r' << QByteArray()
                                << expect << logLine;
        };
        auto ask = [](const char *name, const QByteArray &input, const QByteArray &reply) {
            QTest::newRow(name) << (name[1] == '3' ? "nrd535" : "nrd545") << input << reply << QStringList() << "";
        };
        set("535 ten digits refused", "F0009410000", {"hz=10000000"}, "not understood: F0009410000");
        set("535 below range", "F00009999", {"hz=10000000"}, "not understood: F00009999");
        set("535 ECSS mode", "D8", {"mode=AM-L"}, "mode AM-L");
        set("535 no mode 9", "D9", {"mode=AM"}, "not understood: D9");
        set("535 aux filter", "B3", {"bw=3"}, "bandwidth Aux");
        set("535 short shift refused", "P-100", {"pbs=0"}, "not understood: P-100");
        set("535 bandwidth control", "W2400", {"bwc=2400"}, "bandwidth control 2400 Hz");
        set("535 RTTY", "X1\rU3ABC12", {"rtty=1", "rttyParams=ABC12"}, "RTTY parameters ABC12");
        set("535 CW pitch", "U2-0050", {"pitch=-50", "user2=-0050"}, "CW pitch -50 Hz");
        set("535 whole setting", "S199112072550001", {"hz=7255000", "mode=USB", "bw=1", "att=1", "agc=1"},
            "set 7255.000 kHz USB, bandwidth Inter, AGC fast, attenuator -20 dB");
        set("535 no DSP commands", "HH100", {}, "not understood: HH100");
        set("535 no channel switch", "MM21", {}, "not understood: MM21");
        set("545 eight digits refused", "F09600000", {"hz=10000000"}, "not understood: F09600000");
        set("545 WFM", "D9", {"mode=WFM"}, "mode WFM");
        set("545 no aux filter", "B3", {"bw=0"}, "not understood: B3");
        set("545 AGC keys", "G1", {"agc=10"}, "AGC 200 ms");
        set("545 AGC time", "NN050", {"agc=50"}, "AGC 1000 ms");
        set("545 bandwidth per key", "B2\rW050\rB0", {"bwc=6000"}, "bandwidth Wide");
        set("545 levels", "HH100\rLL050\rKK127\rJJ200\rFF090",
            {"ifGain=100", "squelch=50", "tone=127", "volume=200", "nbLevel=90"}, "noise blanker level 90");
        set("545 level over 255", "JJ256", {"volume=100"}, "not understood: JJ256");
        set("545 notch", "EE1\rGG-0050", {"notch=1", "notchHz=-50"}, "notch frequency -50 Hz");
        set("545 ECSS", "CC2", {"mode=AM-L"}, "ECSS AM-L");
        set("545 RTTY, items", "U231\rU15XY\rU130\rU2005\rU21050",
            {"rtty=1", "rttyParams=XY", "user13=0", "user20=05", "user21=050"}, "user setting 21: 050");
        set("545 CW pitch, both forms", "U14+0600\rU2-0050", {"pitch=-50"}, "CW pitch -50 Hz");
        set("545 item of wrong width", "U2105", {}, "not understood: U2105");
        set("545 whole setting", "S9990230007255000030", {"hz=7255000", "mode=LSB", "bw=2", "att=0", "agc=30"},
            "set 7255.000 kHz LSB, bandwidth Narrow, AGC 600 ms, attenuator off");
        set("545 no 535 RTTY key", "X1", {"rtty=0"}, "not understood: X1");
        // Channel operation takes the present setting along, and frequency operation comes back
        // as it was left.
        set("545 channel operation", "F0009410000\rK0050140006000000080\rMM21", {"hz=9410000", "chanOp=1"},
            "channel operation");
        set("545 channel recall", "K0050140006000000080\rMM21\rC005", {"hz=6000000", "chan=5"}, "");
        set("545 frequency operation", "F0009410000\rMM21\rK0050140006000000080\rC005\rMM21", {"hz=9410000", "chanOp=0"},
            "frequency operation");

        const QByteArray to535 = "A1\rB1\rD2\rF09410000\rG1\r", to545 = "A1\rB1\rD2\rF0009410000\rNN050\r";
        ask("535 shift", "P-0100\rP\r", "P-0100\r");
        ask("535 blanker, power, control", "N1\rN\rT\rW\r", "N1\rT1\rW3000\r");
        ask("535 status on I1", "A1\rB2\rD3\rF07255000\rG1\rI1\rI0\r", "I123072550001\r");
        ask("535 bare I and F answer nothing", "I\rF\r", "");
        ask("545 status on I", "A1\rB2\rD3\rF0007255000\rNN030\rI\r", "I1230007255000030\r");
        ask("545 no status on I1", "I1\r", "");
        ask("545 frequency", "F0009600000\rF\r", "F0009600000\r");
        ask("545 shift, control, AGC", "P+000\rP\rB1\rW\rNN\r", "P+000\rW240\rNN080\r");
        ask("545 levels", "HH\rLL\rKK\rJJ\rFF\r", "HH255\rLL000\rKK127\rJJ100\rFF128\r");
        ask("545 switches", "N2\rN\rBB1\rBB\rEE\rDD\r", "N2\rBB1\rEE0\rDD0\r");
        ask("545 notch, pitch", "GG-50\rGG\rU14\r", "GG-0050\rU14+0800\r");
        ask("535 vacant", "L017017\r", "L017V\r");
        ask("535 status by memory 199", to535 + "J1199\rL199199\r", "L199112094100001\r");
        ask("535 a run of cells", to535 + "J1011\rL010012\r", "L010V\rL011112094100001\rL012V\r");
        ask("535 has no cell 200", "J1200\rL200200\r", "");
        ask("535 bad record refused", "K005094060000000\rL005005\r", "L005V\r");
        ask("535 recall", "K021003072550002\rC021\rI1\r", "I003072550002\r");
        ask("535 memory-write key", to535 + "C030\rE1\rL030\r", "L030112094100001\r");
        ask("545 vacant", "L999999\r", "L999V\r");
        ask("545 status by memory 999", to545 + "MM21\rJ1999\rMM21\rL999999\r", "L9991120009410000050\r");
        // The clock runs on UTC (21:30 here) until set, with or without seconds.
        ask("535 clock on UTC", "R0\r", "R213000\r");
        ask("535 clock set with seconds", "R1070509\rR0\r", "R070509\r");
        ask("545 clock set without seconds", "R10705\rR0\r", "R070500\r");
        ask("545 bad time refused", "R12460\rR0\r", "R213000\r");
    }
    void commands()
    {
        QFETCH(QString, model);
        QFETCH(QByteArray, input);
        QFETCH(QByteArray, reply);
        QFETCH(QStringList, expect);
        QFETCH(QString, logLine);
        TestEnv env;
        env.clock->set(QDateTime(QDate(2026, 3, 14), QTime(21, 30), Qt::UTC).toLocalTime());
        Rig rig(model);
        const QByteArray got = rig.send(input);
        QCOMPARE(got, reply);
        const QStringList now = state(*rig.sim);
        for (const QString &e : expect)
            QVERIFY2(now.contains(e), qPrintable(e + " not in " + now.join(' ')));
        if (!logLine.isEmpty())
            QCOMPARE(rig.log.last(), logLine);
        const int filled = model == "nrd535" ? 17 : 21;
        for (const QByteArray &r : got.split('\r'))
            if (r.startsWith('L') && !r.startsWith("LL")) // "LL" is the squelch
                QCOMPARE(r.size() + 1, r.endsWith('V') ? 6 : filled);
    }

    // The set's clock keeps running from what was set, across midnight.
    void clockRuns()
    {
        TestEnv env;
        env.clock->set(QDateTime(QDate(2026, 3, 14), QTime(21, 30), Qt::UTC).toLocalTime());
        Rig rig("nrd545");
        rig.send("R1235950\r");
        env.clock->advanceSecs(20);
        QCOMPARE(rig.send("R0\r"), QByteArray("R000010\r"));
    }

    // With "I1" the set sends its status frame whenever the frequency changes, by command,
    // memory recall or the knob; the hub finds the eight digits fieldFromRight from the end.
    void reports_data()
    {
        QTest::addColumn<QString>("model");
        QTest::addColumn<QByteArray>("tuneA");
        QTest::addColumn<QByteArray>("tuneB");
        QTest::addColumn<int>("fieldFromRight");
        QTest::addColumn<int>("frameLength");
        QTest::newRow("nrd535") << "nrd535" << QByteArray("F09410000\r") << QByteArray("F07255000\r") << 10 << 14;
        QTest::newRow("nrd545") << "nrd545" << QByteArray("F0009410000\r") << QByteArray("F0007255000\r") << 12 << 18;
    }
    void reports()
    {
        QFETCH(QString, model);
        QFETCH(QByteArray, tuneA);
        QFETCH(QByteArray, tuneB);
        QFETCH(int, fieldFromRight);
        QFETCH(int, frameLength);
        auto hubKhz = [&](const QByteArray &frame) { return frame.right(fieldFromRight).left(8).toDouble() / 1000; };
        Rig rig(model);
        QCOMPARE(rig.send(tuneA), QByteArray()); // reports are off
        rig.send("I1\r");
        QCOMPARE(rig.send(tuneB).size(), frameLength);
        QVERIFY(rig.out.startsWith('I') && rig.out.endsWith('\r'));
        QCOMPARE(hubKhz(rig.out), 7255.0);
        QCOMPARE(rig.log.last(), "report 7255.000 kHz");
        QCOMPARE(rig.send(tuneB), QByteArray()); // the same frequency again
        QCOMPARE(rig.send("D2\r"), QByteArray()); // not a frequency change
        rig.send("J1000\r" + tuneA);
        QCOMPARE(hubKhz(rig.send("C000\r")), 7255.0); // a recalled memory moves the frequency too
        // The knob reports in local mode as well: that is how the set follows the listener's dial.
        rig.send("H0\r");
        rig.sim->turnDial(6070.0);
        QCOMPARE(rig.out.size(), frameLength);
        QCOMPARE(hubKhz(rig.out), 6070.0);
        rig.send("H1\rI0\r");
        rig.sim->turnDial(5975.0);
        QCOMPARE(rig.out, QByteArray());
        QCOMPARE(rig.sim->frequencyKhz(), 5975.0);
    }

    // "M", three digits, CR: near the set's S9 number, moving one way as the signal rises.
    void smeter_data()
    {
        QTest::addColumn<QString>("model");
        QTest::addColumn<QByteArray>("tune");
        QTest::addColumn<int>("atS9");
        QTest::addColumn<int>("direction"); // -1: the number falls as the signal rises
        QTest::newRow("nrd535") << "nrd535" << QByteArray("F09424778\r") << 100 << -1;
        QTest::newRow("nrd545") << "nrd545" << QByteArray("F0009424778\r") << 87 << 1;
    }
    void smeter()
    {
        QFETCH(QString, model);
        QFETCH(QByteArray, tune);
        QFETCH(int, atS9);
        QFETCH(int, direction);
        TestEnv env;
        auto reading = [&](double s, const QByteArray &setup = {}) {
            Rig rig(model);
            rig.sim->setBand(steadyStation(s));
            const QByteArray r = rig.send(tune + setup + "M\r");
            return r.size() == 5 && r.startsWith('M') && r.endsWith('\r') ? r.mid(1, 3).toInt() : -1000;
        };
        QVERIFY2(std::abs(reading(9) - atS9) <= 1, qPrintable(QString::number(reading(9))));
        int last = reading(0.5);
        for (double s : {3.0, 6.0, 9.0, 12.0, 15.0, 20.0}) {
            const int r = reading(s);
            QVERIFY2((r - last) * direction > 0, qPrintable(QStringLiteral("S%1 reads %2 after %3").arg(s).arg(r).arg(last)));
            last = r;
        }
        // 20 dB of attenuation reads as a signal 20 dB weaker; a set switched off hears nothing.
        QVERIFY(std::abs(reading(15, "A1\r") - reading(15 - 20 / 6.0)) <= 1);
        QVERIFY((reading(15, "T0\r") - reading(0)) * direction < 0);
    }

    // Bytes one at a time, stray CR and LF, an unknown command in between.
    void framing()
    {
        Rig rig("nrd545");
        for (char c : QByteArray("\rB1\r\nD3\rF0009410000\rZZ9\rJ1005\rL005\r"))
            rig.sim->receive(QByteArray(1, c));
        QCOMPARE(rig.out, QByteArray("L0050130009410000080\r"));
        QCOMPARE(rig.log.mid(1), QStringList({"bandwidth Inter", "mode LSB", "tune 9410.000 kHz", "not understood: ZZ9",
                                              "store memory 5", "read memory 5"}));
    }

    // Every simulator by the receiver type and by its tool name, at the set's own speed.
    void factory_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("baud");
        QTest::newRow("AR7030") << 1 << "ar7030" << 1200;
        QTest::newRow("NRD-535") << 2 << "nrd535" << 4800;
        QTest::newRow("RX-320") << 3 << "rx320" << 1200;
        QTest::newRow("NRD-545") << 4 << "nrd545" << 4800;
    }
    void factory()
    {
        QFETCH(int, type);
        QFETCH(QString, name);
        QFETCH(int, baud);
        const auto byType = makeSimulator(type), byName = makeSimulatorByName(name);
        QVERIFY(byType && byName && simulatorNames().contains(name));
        QCOMPARE(byType->model() + byName->model(), name + name);
        QCOMPARE(byName->baudRate(), baud);
        QVERIFY(!makeSimulatorByName(name + "9"));
    }
};

BRELVOX_TEST(TestNrdSim)
#include "tst_nrdsim.moc"
