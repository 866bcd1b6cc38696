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

// One setting of the set as text, by name, so that table rows can say what they expect.
QString value(const NrdSim &s, const QString &key)
{
    const auto *n5 = dynamic_cast<const Nrd545Sim *>(&s);
    const QMap<QString, std::function<QString()>> keys{
        {"hz", [&] { return QString::number(s.frequencyHz()); }},
        {"mode", [&] { return s.modeName(s.mode()); }},
        {"bw", [&] { return QString::number(s.bandwidth()); }},
        {"att", [&] { return QString::number(s.attenuator()); }},
        {"agc", [&] { return QString::number(s.agc()); }},
        {"nb", [&] { return QString::number(s.noiseBlanker()); }},
        {"pbs", [&] { return QString::number(s.passBandShiftHz()); }},
        {"bwc", [&] { return QString::number(s.bandwidthControlHz()); }},
        {"power", [&] { return QString::number(s.powerOn()); }},
        {"relay", [&] { return QString::number(s.timerRelay()); }},
        {"pitch", [&] { return QString::number(s.cwPitchHz()); }},
        {"rtty", [&] { return QString::number(s.rttyOn()); }},
        {"rttyParams", [&] { return QString::fromLatin1(s.rttyParameters()); }},
        {"chanOp", [&] { return QString::number(s.channelOperation()); }},
        {"ifGain", [&] { return QString::number(n5->ifGain()); }},
        {"squelch", [&] { return QString::number(n5->squelch()); }},
        {"tone", [&] { return QString::number(n5->tone()); }},
        {"volume", [&] { return QString::number(n5->volume()); }},
        {"nrbc", [&] { return QString::number(n5->nrBc()); }},
        {"nbLevel", [&] { return QString::number(n5->nbLevel()); }},
        {"notch", [&] { return QString::number(n5->notch()); }},
        {"notchHz", [&] { return QString::number(n5->notchHz()); }},
        {"dialLock", [&] { return QString::number(n5->dialLock()); }},
    };
    if (key.startsWith("user"))
        return QString::fromLatin1(s.userSetting(key.mid(4).toInt()));
    return keys.contains(key) ? keys[key]() : QStringLiteral("no such key ") + key;
}

// A band of one steady station at a frequency where its slow fading stands at zero.
constexpr double kQuietKhz = 3000 * M_PI;
SimBand steadyStation(double peakS) { return SimBand({{kQuietKhz, 3, peakS, 0, 0, 1e12, "Steady"}}); }
const QByteArray kTuneQuiet535 = "F09424778\r";
const QByteArray kTuneQuiet545 = "F0009424778\r";
} // namespace

class TestNrdSim : public QObject {
    Q_OBJECT
private slots:
    void remoteGating_data();
    void remoteGating();
    void commands_data();
    void commands();
    void queries_data();
    void queries();
    void memories_data();
    void memories();
    void channelOperation();
    void clock_data();
    void clock();
    void reports_data();
    void reports();
    void smeter_data();
    void smeter();
    void framing();
    void factory();
};

void TestNrdSim::remoteGating_data()
{
    QTest::addColumn<QString>("model");
    QTest::addColumn<QByteArray>("tune");
    QTest::newRow("nrd535") << "nrd535" << QByteArray("F09410000");
    QTest::newRow("nrd545") << "nrd545" << QByteArray("F0009410000");
}

void TestNrdSim::remoteGating()
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

void TestNrdSim::commands_data()
{
    QTest::addColumn<QString>("model");
    QTest::addColumn<QByteArray>("input");
    QTest::addColumn<QStringList>("expect"); // key=value of the state afterwards
    QTest::addColumn<QString>("logLine");    // the last log line

    const QString n5 = "nrd535", n45 = "nrd545";
    QTest::newRow("535 tune") << n5 << QByteArray("F09410000") << QStringList{"hz=9410000"} << "tune 9410.000 kHz";
    QTest::newRow("535 ten digits refused") << n5 << QByteArray("F0009410000") << QStringList{"hz=10000000"} << "not understood: F0009410000";
    QTest::newRow("535 below range") << n5 << QByteArray("F00009999") << QStringList{"hz=10000000"} << "not understood: F00009999";
    QTest::newRow("535 mode") << n5 << QByteArray("D2") << QStringList{"mode=USB"} << "mode USB";
    QTest::newRow("535 ECSS mode") << n5 << QByteArray("D8") << QStringList{"mode=AM-L"} << "mode AM-L";
    QTest::newRow("535 no mode 9") << n5 << QByteArray("D9") << QStringList{"mode=AM"} << "not understood: D9";
    QTest::newRow("535 aux filter") << n5 << QByteArray("B3") << QStringList{"bw=3"} << "bandwidth Aux";
    QTest::newRow("535 attenuator") << n5 << QByteArray("A1") << QStringList{"att=1"} << "attenuator -20 dB";
    QTest::newRow("535 AGC") << n5 << QByteArray("G1\rG2") << QStringList{"agc=2"} << "AGC off";
    QTest::newRow("535 noise blanker") << n5 << QByteArray("N2") << QStringList{"nb=2"} << "noise blanker NB2";
    QTest::newRow("535 pass band shift") << n5 << QByteArray("P-0100") << QStringList{"pbs=-100"} << "pass band shift -100 Hz";
    QTest::newRow("535 short shift refused") << n5 << QByteArray("P-100") << QStringList{"pbs=0"} << "not understood: P-100";
    QTest::newRow("535 bandwidth control") << n5 << QByteArray("W2400") << QStringList{"bwc=2400"} << "bandwidth control 2400 Hz";
    QTest::newRow("535 power, relay") << n5 << QByteArray("T0\rO1") << QStringList{"power=0", "relay=1"} << "timer relay 1";
    QTest::newRow("535 RTTY") << n5 << QByteArray("X1\rU3ABC12") << QStringList{"rtty=1", "rttyParams=ABC12"} << "RTTY parameters ABC12";
    QTest::newRow("535 CW pitch") << n5 << QByteArray("U2-0050") << QStringList{"pitch=-50", "user2=-0050"} << "CW pitch -50 Hz";
    QTest::newRow("535 user setting") << n5 << QByteArray("U11") << QStringList{"user1=1"} << "user setting 1: 1";
    QTest::newRow("535 whole setting") << n5 << QByteArray("S199112072550001")
                                       << QStringList{"hz=7255000", "mode=USB", "bw=1", "att=1", "agc=1"}
                                       << "set 7255.000 kHz USB, bandwidth Inter, AGC fast, attenuator -20 dB";
    QTest::newRow("535 no DSP commands") << n5 << QByteArray("HH100") << QStringList{} << "not understood: HH100";

    QTest::newRow("545 tune") << n45 << QByteArray("F0009600000") << QStringList{"hz=9600000"} << "tune 9600.000 kHz";
    QTest::newRow("545 eight digits refused") << n45 << QByteArray("F09600000") << QStringList{"hz=10000000"} << "not understood: F09600000";
    QTest::newRow("545 WFM") << n45 << QByteArray("D9") << QStringList{"mode=WFM"} << "mode WFM";
    QTest::newRow("545 no aux filter") << n45 << QByteArray("B3") << QStringList{"bw=0"} << "not understood: B3";
    QTest::newRow("545 AGC keys") << n45 << QByteArray("G1") << QStringList{"agc=10"} << "AGC 200 ms";
    QTest::newRow("545 AGC off") << n45 << QByteArray("G2") << QStringList{"agc=0"} << "AGC off";
    QTest::newRow("545 AGC time") << n45 << QByteArray("NN050") << QStringList{"agc=50"} << "AGC 1000 ms";
    QTest::newRow("545 shift in tens") << n45 << QByteArray("P-100") << QStringList{"pbs=-1000"} << "pass band shift -1000 Hz";
    QTest::newRow("545 bandwidth per key") << n45 << QByteArray("B2\rW050\rB0") << QStringList{"bwc=6000"} << "bandwidth Wide";
    QTest::newRow("545 levels") << n45 << QByteArray("HH100\rLL050\rKK127\rJJ200\rFF090")
                                << QStringList{"ifGain=100", "squelch=50", "tone=127", "volume=200", "nbLevel=90"} << "noise blanker level 90";
    QTest::newRow("545 level over 255") << n45 << QByteArray("JJ256") << QStringList{"volume=100"} << "not understood: JJ256";
    QTest::newRow("545 NR/BC") << n45 << QByteArray("BB2") << QStringList{"nrbc=2"} << "beat cancel";
    QTest::newRow("545 notch") << n45 << QByteArray("EE1\rGG-0050") << QStringList{"notch=1", "notchHz=-50"} << "notch frequency -50 Hz";
    QTest::newRow("545 notch, short form") << n45 << QByteArray("GG+300") << QStringList{"notchHz=300"} << "notch frequency 300 Hz";
    QTest::newRow("545 dial lock") << n45 << QByteArray("DD1\rDD0") << QStringList{"dialLock=0"} << "dial lock off";
    QTest::newRow("545 ECSS") << n45 << QByteArray("CC2") << QStringList{"mode=AM-L"} << "ECSS AM-L";
    QTest::newRow("545 RTTY, items") << n45 << QByteArray("U231\rU15XY\rU130\rU2005\rU21050")
                                     << QStringList{"rtty=1", "rttyParams=XY", "user13=0", "user20=05", "user21=050"} << "user setting 21: 050";
    QTest::newRow("545 CW pitch, both forms") << n45 << QByteArray("U14+0600\rU2-0050") << QStringList{"pitch=-50"} << "CW pitch -50 Hz";
    QTest::newRow("545 item of wrong width") << n45 << QByteArray("U2105") << QStringList{} << "not understood: U2105";
    QTest::newRow("545 whole setting") << n45 << QByteArray("S9990230007255000030")
                                       << QStringList{"hz=7255000", "mode=LSB", "bw=2", "att=0", "agc=30"}
                                       << "set 7255.000 kHz LSB, bandwidth Narrow, AGC 600 ms, attenuator off";
    QTest::newRow("545 no 535 RTTY key") << n45 << QByteArray("X1") << QStringList{"rtty=0"} << "not understood: X1";
}

void TestNrdSim::commands()
{
    QFETCH(QString, model);
    QFETCH(QByteArray, input);
    QFETCH(QStringList, expect);
    QFETCH(QString, logLine);
    Rig rig(model);
    QCOMPARE(rig.send(input + '\r'), QByteArray());
    for (const QString &e : expect)
        QCOMPARE(e.section('=', 0, 0) + '=' + value(*rig.sim, e.section('=', 0, 0)), e);
    QCOMPARE(rig.log.last(), logLine);
}

void TestNrdSim::queries_data()
{
    QTest::addColumn<QString>("model");
    QTest::addColumn<QByteArray>("input");
    QTest::addColumn<QByteArray>("reply");

    QTest::newRow("535 shift") << "nrd535" << QByteArray("P-0100\rP\r") << QByteArray("P-0100\r");
    QTest::newRow("535 blanker, power, control") << "nrd535" << QByteArray("N1\rN\rT\rW\r") << QByteArray("N1\rT1\rW3000\r");
    QTest::newRow("535 status on I1") << "nrd535" << QByteArray("A1\rB2\rD3\rF07255000\rG1\rI1\rI0\r") << QByteArray("I123072550001\r");
    QTest::newRow("535 bare I and F answer nothing") << "nrd535" << QByteArray("I\rF\r") << QByteArray();
    QTest::newRow("545 status on I") << "nrd545" << QByteArray("A1\rB2\rD3\rF0007255000\rNN030\rI\r") << QByteArray("I1230007255000030\r");
    QTest::newRow("545 no status on I1") << "nrd545" << QByteArray("I1\r") << QByteArray();
    QTest::newRow("545 frequency") << "nrd545" << QByteArray("F0009600000\rF\r") << QByteArray("F0009600000\r");
    QTest::newRow("545 shift, control, AGC") << "nrd545" << QByteArray("P+000\rP\rB1\rW\rNN\r") << QByteArray("P+000\rW240\rNN080\r");
    QTest::newRow("545 levels") << "nrd545" << QByteArray("HH\rLL\rKK\rJJ\rFF\r") << QByteArray("HH255\rLL000\rKK127\rJJ100\rFF128\r");
    QTest::newRow("545 switches") << "nrd545" << QByteArray("N2\rN\rBB1\rBB\rEE\rDD\r") << QByteArray("N2\rBB1\rEE0\rDD0\r");
    QTest::newRow("545 notch, pitch") << "nrd545" << QByteArray("GG-50\rGG\rU14\r") << QByteArray("GG-0050\rU14+0800\r");
}

void TestNrdSim::queries()
{
    QFETCH(QString, model);
    QFETCH(QByteArray, input);
    QFETCH(QByteArray, reply);
    Rig rig(model);
    QCOMPARE(rig.send(input), reply);
}

void TestNrdSim::memories_data()
{
    QTest::addColumn<QString>("model");
    QTest::addColumn<QByteArray>("input");
    QTest::addColumn<QByteArray>("reply");

    const QByteArray to535 = "A1\rB1\rD2\rF09410000\rG1\r", to545 = "A1\rB1\rD2\rF0009410000\rNN050\r";
    QTest::newRow("535 vacant") << "nrd535" << QByteArray("L017017\r") << QByteArray("L017V\r");
    QTest::newRow("535 status by memory 199") << "nrd535" << to535 + "J1199\rL199199\r" << QByteArray("L199112094100001\r");
    QTest::newRow("535 a run of cells") << "nrd535" << to535 + "J1011\rL010012\r" << QByteArray("L010V\rL011112094100001\rL012V\r");
    QTest::newRow("535 write, erase") << "nrd535" << QByteArray("K005014060000000\rL005\rU5005\rL005\r")
                                      << QByteArray("L005014060000000\rL005V\r");
    QTest::newRow("535 has no cell 200") << "nrd535" << QByteArray("J1200\rL200200\r") << QByteArray();
    QTest::newRow("535 bad record refused") << "nrd535" << QByteArray("K005094060000000\rL005005\r") << QByteArray("L005V\r");
    QTest::newRow("535 recall") << "nrd535" << QByteArray("K021003072550002\rC021\rI1\r") << QByteArray("I003072550002\r");
    QTest::newRow("535 memory-write key") << "nrd535" << to535 + "C030\rE1\rL030\r" << QByteArray("L030112094100001\r");
    QTest::newRow("545 vacant") << "nrd545" << QByteArray("L999999\r") << QByteArray("L999V\r");
    QTest::newRow("545 status by memory 999") << "nrd545" << to545 + "MM21\rJ1999\rMM21\rL999999\r"
                                              << QByteArray("L9991120009410000050\r");
    QTest::newRow("545 write, read") << "nrd545" << QByteArray("K1230140006000000080\rL123123\r") << QByteArray("L1230140006000000080\r");
    QTest::newRow("545 no erase command") << "nrd545" << QByteArray("K1230140006000000080\rU5123\rL123\r")
                                          << QByteArray("L1230140006000000080\r");
}

void TestNrdSim::memories()
{
    QFETCH(QString, model);
    QFETCH(QByteArray, input);
    QFETCH(QByteArray, reply);
    Rig rig(model);
    const QByteArray got = rig.send(input);
    QCOMPARE(got, reply);
    // Every answer to "L" has the set's exact length: 17 or 21 bytes filled, 6 vacant.
    const int filled = model == "nrd535" ? 17 : 21;
    for (const QByteArray &r : got.split('\r'))
        if (r.startsWith('L'))
            QCOMPARE(r.size() + 1, r.endsWith('V') ? 6 : filled);
}

void TestNrdSim::channelOperation()
{
    Rig rig("nrd545");
    rig.send("F0009410000\rK0050140006000000080\rMM21\r");
    QVERIFY(rig.sim->channelOperation());
    QCOMPARE(rig.sim->frequencyHz(), 9410000); // the present setting is carried over
    rig.send("C005\r");
    QCOMPARE(rig.sim->frequencyHz(), 6000000);
    QCOMPARE(rig.sim->channel(), 5);
    rig.send("MM21\r");
    QVERIFY(!rig.sim->channelOperation());
    QCOMPARE(rig.sim->frequencyHz(), 9410000); // frequency operation comes back as it was left
    QCOMPARE(rig.log.last(), "frequency operation");

    Rig old("nrd535");
    old.send("MM21\r");
    QCOMPARE(old.log.last(), "not understood: MM21");
}

void TestNrdSim::clock_data()
{
    QTest::addColumn<QString>("model");
    QTest::addColumn<QByteArray>("set");
    QTest::addColumn<int>("laterSecs");
    QTest::addColumn<QByteArray>("reply");

    for (const QString m : {"nrd535", "nrd545"}) {
        QTest::addRow("%s runs on UTC", qPrintable(m)) << m << QByteArray() << 0 << QByteArray("R213000\r");
        QTest::addRow("%s with seconds", qPrintable(m)) << m << QByteArray("R1070509\r") << 65 << QByteArray("R070614\r");
        QTest::addRow("%s without seconds", qPrintable(m)) << m << QByteArray("R10705\r") << 0 << QByteArray("R070500\r");
        QTest::addRow("%s past midnight", qPrintable(m)) << m << QByteArray("R1235950\r") << 20 << QByteArray("R000010\r");
        QTest::addRow("%s bad time refused", qPrintable(m)) << m << QByteArray("R12460\r") << 0 << QByteArray("R213000\r");
    }
}

void TestNrdSim::clock()
{
    QFETCH(QString, model);
    QFETCH(QByteArray, set);
    QFETCH(int, laterSecs);
    QFETCH(QByteArray, reply);
    TestEnv env;
    env.clock->set(QDateTime(QDate(2026, 3, 14), QTime(21, 30), Qt::UTC).toLocalTime());
    Rig rig(model);
    rig.send(set);
    env.clock->advanceSecs(laterSecs);
    QCOMPARE(rig.send("R0\r"), reply);
}

void TestNrdSim::reports_data()
{
    QTest::addColumn<QString>("model");
    QTest::addColumn<QByteArray>("tuneA");
    QTest::addColumn<QByteArray>("tuneB");
    QTest::addColumn<int>("fieldFromRight"); // where the hub finds the eight digits
    QTest::addColumn<int>("frameLength");
    QTest::newRow("nrd535") << "nrd535" << QByteArray("F09410000\r") << QByteArray("F07255000\r") << 10 << 14;
    QTest::newRow("nrd545") << "nrd545" << QByteArray("F0009410000\r") << QByteArray("F0007255000\r") << 12 << 18;
}

void TestNrdSim::reports()
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
    QCOMPARE(rig.sim->frequencyHz(), 6070000);
    rig.send("H1\rI0\r");
    rig.sim->turnDial(5975.0);
    QCOMPARE(rig.out, QByteArray());
    QCOMPARE(rig.sim->frequencyKhz(), 5975.0);
}

void TestNrdSim::smeter_data()
{
    QTest::addColumn<QString>("model");
    QTest::addColumn<QByteArray>("tune");
    QTest::addColumn<int>("atS9");
    QTest::addColumn<int>("direction"); // -1: the number falls as the signal rises
    QTest::newRow("nrd535") << "nrd535" << kTuneQuiet535 << 100 << -1;
    QTest::newRow("nrd545") << "nrd545" << kTuneQuiet545 << 87 << 1;
}

void TestNrdSim::smeter()
{
    QFETCH(QString, model);
    QFETCH(QByteArray, tune);
    QFETCH(int, atS9);
    QFETCH(int, direction);
    TestEnv env;
    auto reading = [&](double s, const QByteArray &setup) {
        Rig rig(model);
        rig.sim->setBand(steadyStation(s));
        const QByteArray r = rig.send(tune + setup + "M\r");
        // "M", three digits, CR.
        if (r.size() != 5 || r.at(0) != 'M' || !r.endsWith('\r'))
            return QStringLiteral("bad reply ") + QString::fromLatin1(r.toHex(' '));
        return QString::fromLatin1(r.mid(1, 3));
    };
    QVERIFY2(std::abs(reading(9, {}).toInt() - atS9) <= 1, qPrintable(reading(9, {})));
    int last = reading(0.5, {}).toInt();
    for (double s : {3.0, 6.0, 9.0, 12.0, 15.0, 20.0}) {
        const int r = reading(s, {}).toInt();
        QVERIFY2((r - last) * direction > 0, qPrintable(QStringLiteral("S%1 reads %2 after %3").arg(s).arg(r).arg(last)));
        last = r;
    }
    // 20 dB of attenuation reads as a signal 20 dB weaker; a set switched off hears nothing.
    QVERIFY(std::abs(reading(15, "A1\r").toInt() - reading(15 - 20 / 6.0, {}).toInt()) <= 1);
    QVERIFY((reading(15, "T0\r").toInt() - reading(0, {}).toInt()) * direction < 0);
}

void TestNrdSim::framing()
{
    Rig rig("nrd545");
    const QByteArray input = "\rB1\r\nD3\rF0009410000\rZZ9\rJ1005\rL005\r";
    for (char c : input)
        rig.sim->receive(QByteArray(1, c));
    QCOMPARE(rig.out, QByteArray("L0050130009410000080\r"));
    QCOMPARE(rig.log.mid(1), QStringList({"bandwidth Inter", "mode LSB", "tune 9410.000 kHz", "not understood: ZZ9",
                                          "store memory 5", "read memory 5"}));
}

void TestNrdSim::factory()
{
    for (auto [type, name] : {std::pair{2, "nrd535"}, std::pair{4, "nrd545"}}) {
        const auto byType = makeSimulator(type);
        QVERIFY(byType && byType->model() == name);
        QCOMPARE(byType->baudRate(), 4800);
        QVERIFY(makeSimulatorByName(name) != nullptr);
        QVERIFY(simulatorNames().contains(name));
    }
    QCOMPARE(Nrd535Sim().memoryCount(), 200);
    QCOMPARE(Nrd545Sim().memoryCount(), 1000);
}

BRELVOX_TEST(TestNrdSim)
#include "tst_nrdsim.moc"
