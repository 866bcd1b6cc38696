// The JRC drivers: the bytes they put on the line, the remote frame and its pauses, what they
// make of the replies, and how they wait for a receiver that is slow or silent.
#include "drivers/clsNRD535.h"
#include "drivers/clsNRD545.h"
#include "drivers/jrc_common.h"
#include "drivers/nrd_tables.h"
#include "core/shared_state.h"
#include "serial/comm_line.h"
#include "serial/sim_backend.h"
#include "sim/nrd_sim.h"
#include "sim/sim_device.h"
#include "testmain.h"
#include "testutil.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTimer>
#include <QtTest>
#include <functional>
#include <sys/resource.h>

namespace {

// A JRC set that understands nothing: it notes each CR-ended command with the time it came
// and answers those named in its table.
class ScriptedJrc : public SimDevice {
public:
    struct Arrival { QByteArray command; qint64 ms; };
    QHash<QByteArray, QByteArray> answers;
    QList<Arrival> arrivals;

    ScriptedJrc() { clock_.start(); }
    void receive(const QByteArray &bytes) override
    {
        partial_ += bytes;
        for (qsizetype cr; (cr = partial_.indexOf('\r')) >= 0;) {
            const QByteArray c = partial_.left(cr);
            partial_.remove(0, cr + 1);
            arrivals.append({c, clock_.elapsed()});
            if (answers.contains(c))
                send(answers.value(c));
        }
    }
    void reply(const QByteArray &b) { send(b); } // unasked, now
    QStringList commands() const
    {
        QStringList l;
        for (const Arrival &a : arrivals)
            l << QString::fromLatin1(a.command);
        return l;
    }
    int baudRate() const override { return 4800; }
    QString model() const override { return QStringLiteral("scripted-jrc"); }

private:
    QElapsedTimer clock_;
    QByteArray partial_;
};

// A driver of either model on a line to a scripted or a simulated set.
struct Rig {
    CommLine comm;
    SimBackend *line = nullptr;
    ScriptedJrc *dev = nullptr;
    std::unique_ptr<JrcDriver> drv;
    explicit Rig(int model, std::unique_ptr<SimDevice> device = std::make_unique<ScriptedJrc>())
    {
        auto b = std::make_unique<SimBackend>(std::move(device));
        b->open(parseSettings(QStringLiteral("4800,N,8,1")), nullptr);
        line = b.get();
        dev = dynamic_cast<ScriptedJrc *>(b->device());
        comm.openWith(std::move(b));
        if (model == 535)
            drv = std::make_unique<clsNRD535>(comm);
        else
            drv = std::make_unique<clsNRD545>(comm);
    }
    clsNRD535 &d535() { return static_cast<clsNRD535 &>(*drv); }
    clsNRD545 &d545() { return static_cast<clsNRD545 &>(*drv); }
    void lockOn()
    {
        drv->Lockonoff(1);
        line->written.clear();
        dev->arrivals.clear();
    }
};

using Op = std::function<QVariant(Rig &)>;

// Notes how much had gone out on the line when a signal came.
class EmitProbe : public QObject {
    Q_OBJECT
public:
    explicit EmitProbe(SimBackend *line) : line_(line) {}
    qsizetype wireAtEmit = -1;
public slots:
    void hit() { wireAtEmit = line_->written.size(); }

private:
    SimBackend *line_;
};

const QByteArray kOn = "H1\rH1\r";
const QByteArray kOff = "H0\rH0\r";
const QString kFilled = QStringLiteral("MEM007 09600000 4 01 0 1 @@@ @@@ @ ");
const QString kVacant17 = QStringLiteral("XXX017 No data  @ @@ @ @ @@@ @@@ @ ");
const QByteArray k535Status = "L199014096000001\r";
const QByteArray k545Status = "L999014" "0009600000" "050\r";
const QStringList kFramed535Status{"H1", "H1", "J1199", "L199199", "H0", "H0"};
const QStringList kFramed545Status{"H1", "H1", "MM21", "J1999", "MM21", "L999999", "H0", "H0"};

QString record(const char *hz) { return QString(kFilled).replace(7, 8, QLatin1String(hz)); }
QStringList framedCmd(const char *c) { return {"H1", "H1", c, "H0", "H0"}; }

qint64 cpuMs()
{
    rusage u{};
    getrusage(RUSAGE_SELF, &u);
    return (qint64(u.ru_utime.tv_sec) + u.ru_stime.tv_sec) * 1000 + (u.ru_utime.tv_usec + u.ru_stime.tv_usec) / 1000;
}

void compareResult(const QVariant &got, const QVariant &expected)
{
    if (expected.typeId() == QMetaType::Double)
        QVERIFY2(qAbs(got.toDouble() - expected.toDouble()) < 1e-4,
                 qPrintable(QStringLiteral("got %1, expected %2").arg(got.toDouble()).arg(expected.toDouble())));
    else
        QCOMPARE(got.toString(), expected.toString());
}

} // namespace

Q_DECLARE_METATYPE(Op)

#define OP(body) Op([](Rig & r) -> QVariant { body; return {}; })
#define READ(expr) Op([](Rig & r) -> QVariant { return QVariant(expr); })

namespace {
void addWrite(const char *name, int model, Op op, const QByteArray &command, bool framed, const char *signal = "",
           int value = 0)
{
    QTest::newRow(name) << model << QVariant::fromValue(op) << command << framed << QByteArray(signal) << value;
}
void addRead(const char *name, int model, bool lock, const char *query, const QByteArray &reply, Op op,
          const QVariant &expected, const QStringList &commands)
{
    QTest::newRow(name) << model << lock << QByteArray(query) << reply << QVariant::fromValue(op) << expected
                        << commands;
}
} // namespace

class TestNrdDrivers : public QObject {
    Q_OBJECT
private slots:
    void init()
    {
        env = std::make_unique<TestEnv>();
        remoteLock = remoteCommand = lockState = 0;
    }
    void cleanup()
    {
        remoteLock = remoteCommand = lockState = 0;
        env.reset();
    }

    void writes_data()
    {
        QTest::addColumn<int>("model");
        QTest::addColumn<QVariant>("op");
        QTest::addColumn<QByteArray>("command"); // between the frame's H1s and H0s
        QTest::addColumn<bool>("framed");
        QTest::addColumn<QByteArray>("signal");
        QTest::addColumn<int>("value");
        addWrite("535 attenuator", 535, OP(r.d535().setAttenuator(1)), "A1\r", true, "AttenuatorChanged(int)", 1);
        addWrite("535 code cut to last digit", 535, OP(r.d535().setAttenuator(12)), "A2\r", true,
                 "AttenuatorChanged(int)", 12);
        addWrite("535 mode", 535, OP(r.d535().setMode(4)), "D4\r", true, "ModeChanged(int)", 4);
        addWrite("535 bandwidth", 535, OP(int16_t b = 3; r.d535().setBandwidth(b)), "B3\r", true,
                 "BandwidthChanged(int)", 3);
        addWrite("535 agc", 535, OP(r.d535().setAgcspeed(2)), "G2\r", true, "AgcspeedChanged(int)", 2);
        addWrite("535 noise blanker", 535, OP(r.d535().setNoiseblanker(2)), "N2\r", true,
                 "NoiseblankerChanged(int)", 2);
        addWrite("535 power", 535, OP(r.d535().setPowerOnOff(1)), "T1\r", true, "PoweronoffChanged(int)", 1);
        addWrite("535 rtty", 535, OP(r.d535().setRttyOnOff(0)), "X0\r", true, "RttyonoffChanged(int)", 0);
        addWrite("535 frequency", 535, OP(r.d535().setFrequencyA(9600)), "F09600000\r", true,
                 "FrequencyAChanged(double)", 9600);
        addWrite("535 frequency to whole Hz", 535, OP(r.d535().setFrequencyA(15.0006)), "F00015001\r", true);
        addWrite("535 pbs -100", 535, OP(r.d535().setPassBandShift(-100)), "P-0100\r", false,
                 "PassbandshiftChanged(int)", -100);
        addWrite("535 pbs 0", 535, OP(r.d535().setPassBandShift(0)), "P+0000\r", false, "PassbandshiftChanged(int)", 0);
        addWrite("535 bwc", 535, OP(r.d535().setBandwidthcontrol(500)), "W0500\r", false,
                 "BandwidthcontrolChanged(int)", 500);
        addWrite("535 status let", 535, OP(r.d535().setRxStatus("X014096000001")), "S199014096000001\r", true);
        addWrite("535 rx2mem", 535, OP(r.d535().Rx2Mem(5)), "C005\r", true);
        addWrite("535 clock", 535, OP(r.d535().setRxClock("07:05:09")), "R1070509\r", true);
        addWrite("535 vbt bypass off", 535, OP(r.d535().setUserdefs(1, 0)), "U11\r", true);
        addWrite("535 vbt bypass on", 535, OP(r.d535().setUserdefs(1, 1)), "U10\r", true);
        addWrite("535 cw pitch -50", 535, OP(r.d535().setUserdefs(2, -50)), "U2-0050\r", true);
        addWrite("535 cw pitch 0", 535, OP(r.d535().setUserdefs(2, 0)), "U2+0000\r", true);
        addWrite("535 relay squelch", 535, OP(r.d535().setUserdefs(0, 2)), "U02\r", true);
        addWrite("535 userdef 3: frame only", 535, OP(r.d535().setUserdefs(3, 0)), "", true);
        addWrite("535 memory no data", 535, OP(r.d535().setMemory(17, kVacant17)), "U5017\r", true);
        addWrite("535 memory filled", 535, OP(r.d535().setMemory(7, kFilled)), "K007014096000001\r", true);
        addWrite("535 memory 9999 Hz", 535, OP(r.d535().setMemory(7, record("00009999"))), "U5007\r", true);
        addWrite("535 memory 10000 Hz", 535, OP(r.d535().setMemory(7, record("00010000"))), "K007014000100001\r", true);
        addWrite("535 memory 29999999 Hz", 535, OP(r.d535().setMemory(7, record("29999999"))), "U5007\r", true);

        addWrite("545 pbs -100", 545, OP(r.d545().setPassBandShift(-100)), "P-100\r", false,
                 "PassbandshiftChanged(int)", -100);
        addWrite("545 pbs 0", 545, OP(r.d545().setPassBandShift(0)), "P+000\r", false, "PassbandshiftChanged(int)", 0);
        addWrite("545 bwc", 545, OP(r.d545().setBandwidthcontrol(50)), "W050\r", false,
                 "BandwidthcontrolChanged(int)", 50);
        addWrite("545 frequency", 545, OP(r.d545().setFrequencyA(9600)), "F0009600000\r", true,
                 "FrequencyAChanged(double)", 9600);
        addWrite("545 agc 5", 545, OP(r.d545().setAgcspeed(5)), "NN050\r", true, "AgcspeedChanged(int)", 5);
        addWrite("545 agc 0", 545, OP(r.d545().setAgcspeed(0)), "G2\r", true, "AgcspeedChanged(int)", 0);
        addWrite("545 agc 1: bare CR", 545, OP(r.d545().setAgcspeed(1)), "\r", true, "AgcspeedChanged(int)", 1);
        addWrite("545 rtty", 545, OP(r.d545().setRttyOnOff(1)), "U231\r", true, "RttyonoffChanged(int)", 1);
        addWrite("545 ecss", 545, OP(r.d545().Ecss(2)), "CC2\r", true, "EcssChanged(int)", 2);
        addWrite("545 if gain", 545, OP(r.d545().setIfgain(7)), "HH007\r", true, "IfgainChanged(int)", 7);
        addWrite("545 volume", 545, OP(r.d545().setVolume(40)), "JJ040\r", true, "VolumeChanged(int)", 40);
        addWrite("545 freq or chan", 545, OP(r.d545().FreqOrChan()), "MM21\r", true);
        addWrite("545 clock drops seconds", 545, OP(r.d545().setRxClock("07:05:09")), "R10705\r", true);
        addWrite("545 rtty parameters", 545, OP(r.d545().RttyParameters("07")), "U1507\r", true);
        addWrite("545 status let", 545, OP(r.d545().setRxStatus("X014096000005")), "S999014" "00" "09600000" "050\r",
                 true);
        addWrite("545 memory no data: bare CR", 545, OP(r.d545().setMemory(17, kVacant17)), "\r", true);
        addWrite("545 memory filled", 545, OP(r.d545().setMemory(7, kFilled)), "K007014" "00" "09600000" "010\r", true);
        addWrite("545 cw pitch -50", 545, OP(r.d545().setUserdefs(14, -50)), "U2-0050\r", true);
        addWrite("545 tuning steps 3", 545, OP(r.d545().setUserdefs(3, 3)), "U033\r", true);
        addWrite("545 tuning steps 4: frame only", 545, OP(r.d545().setUserdefs(3, 4)), "", true);
        addWrite("545 sweep time", 545, OP(r.d545().setUserdefs(21, 5)), "U21005\r", true);
        addWrite("545 userdef 5: frame only", 545, OP(r.d545().setUserdefs(5, 0)), "", true);
        addWrite("545 nrbc select", 545, OP(r.d545().nrbc(0, 12)), "BB2\r", true);
        addWrite("545 nrbc NR from a setting", 545, OP(r.d545().nrbc(1, QVariant(50.0f))), "U29050\r", true);
        addWrite("545 nrbc BC from text", 545, OP(r.d545().nrbc(2, QStringLiteral("20"))), "U30020\r", true);
        addWrite("545 nrbc 3: frame only", 545, OP(r.d545().nrbc(3, 1)), "", true);
        addWrite("545 nb level", 545, OP(r.d545().setNb(1, 128)), "FF128\r", true);
        addWrite("545 notch frequency", 545, OP(r.d545().setNt(1, -16)), "GG-0016\r", true);
    }

    void writes()
    {
        QFETCH(int, model);
        QFETCH(QVariant, op);
        QFETCH(QByteArray, command);
        QFETCH(bool, framed);
        QFETCH(QByteArray, signal);
        QFETCH(int, value);
        Rig r(model);
        EmitProbe probe(r.line);
        std::unique_ptr<QSignalSpy> spy;
        if (!signal.isEmpty()) {
            spy = std::make_unique<QSignalSpy>(r.drv.get(), ("2" + signal).constData());
            QVERIFY(QObject::connect(r.drv.get(), ("2" + signal).constData(), &probe, SLOT(hit())));
        }
        op.value<Op>()(r);
        const QByteArray expected = framed ? kOn + command + kOff : command;
        QCOMPARE(r.line->written, expected);
        QCOMPARE(remoteCommand, int16_t(0));
        if (spy) {
            QCOMPARE(spy->count(), 1);
            QCOMPARE(spy->at(0).at(0).toDouble(), double(value));
            QCOMPARE(probe.wireAtEmit, expected.size()); // the event comes after the frame has closed
        }
    }

    void frameTiming_data()
    {
        QTest::addColumn<int>("model");
        QTest::addColumn<QVariant>("op");
        QTest::addColumn<QStringList>("sequence");
        QTest::newRow("535 attenuator") << 535 << QVariant::fromValue(OP(r.d535().setAttenuator(1))) << framedCmd("A1");
        QTest::newRow("535 empty userdef") << 535 << QVariant::fromValue(OP(r.d535().setUserdefs(5, 1)))
                                           << QStringList{"H1", "H1", "H0", "H0"};
        QTest::newRow("545 volume") << 545 << QVariant::fromValue(OP(r.d545().setVolume(100))) << framedCmd("JJ100");
        QTest::newRow("545 clock read") << 545 << QVariant::fromValue(READ(r.drv->RxClock())) << framedCmd("R0");
    }

    void frameTiming()
    {
        QFETCH(int, model);
        QFETCH(QVariant, op);
        QFETCH(QStringList, sequence);
        Rig r(model);
        r.dev->answers["R0"] = "R123456\r";
        op.value<Op>()(r);
        QCOMPARE(r.dev->commands(), sequence);
        for (int i = 1; i < r.dev->arrivals.size(); ++i) {
            const qint64 gap = r.dev->arrivals[i].ms - r.dev->arrivals[i - 1].ms;
            QVERIFY2(gap >= 45, qPrintable(QStringLiteral("%1 ms before piece %2").arg(gap).arg(i + 1)));
        }
    }

    // The NRD-535's bandwidth control and pass band shift pause after their command.
    void pauseAfterControl()
    {
        Rig r(535);
        for (const Op &op : {OP(r.d535().setPassBandShift(25)), OP(r.d535().setBandwidthcontrol(2200))}) {
            QElapsedTimer t;
            t.start();
            op(r);
            QVERIFY(t.elapsed() >= 45);
        }
        QCOMPARE(r.dev->commands(), (QStringList{"P+0025", "W2200"}));
    }

    void lockHoldsRemoteMode_data()
    {
        QTest::addColumn<int>("model");
        QTest::addColumn<QVariant>("op");
        QTest::addColumn<QByteArray>("command");
        QTest::newRow("535 attenuator") << 535 << QVariant::fromValue(OP(r.d535().setAttenuator(1)))
                                        << QByteArray("A1\r");
        QTest::newRow("535 memory let") << 535 << QVariant::fromValue(OP(r.d535().setMemory(17, kVacant17)))
                                        << QByteArray("U5017\r");
        QTest::newRow("545 mode") << 545 << QVariant::fromValue(OP(r.d545().setMode(9))) << QByteArray("D9\r");
        QTest::newRow("545 agc 1") << 545 << QVariant::fromValue(OP(r.d545().setAgcspeed(1))) << QByteArray("\r");
        QTest::newRow("545 empty nt") << 545 << QVariant::fromValue(OP(r.d545().setNt(2, 0))) << QByteArray();
    }

    void lockHoldsRemoteMode()
    {
        QFETCH(int, model);
        QFETCH(QVariant, op);
        QFETCH(QByteArray, command);
        Rig r(model);
        QSignalSpy lock(r.drv.get(), &JrcDriver::LockChanged);
        r.drv->Lockonoff(1);
        QCOMPARE(r.line->written, kOn);
        QCOMPARE(remoteLock, int16_t(1));
        r.line->written.clear();
        op.value<Op>()(r);
        QCOMPARE(r.line->written, command); // exactly the one command
        r.line->written.clear();
        r.drv->Lockonoff(7); // not a lock value: nothing changes, the event still comes
        QCOMPARE(r.line->written, QByteArray());
        QCOMPARE(remoteLock, int16_t(1));
        r.drv->Lockonoff(0);
        QCOMPARE(r.line->written, kOff);
        QCOMPARE(remoteLock, int16_t(0));
        QCOMPARE(remoteCommand, int16_t(0));
        QCOMPARE(lock.count(), 3);
        QCOMPARE(lock.at(1).at(0).toInt(), 7);
    }

    void reads_data()
    {
        QTest::addColumn<int>("model");
        QTest::addColumn<bool>("lock");
        QTest::addColumn<QByteArray>("query");
        QTest::addColumn<QByteArray>("reply");
        QTest::addColumn<QVariant>("op");
        QTest::addColumn<QVariant>("expected");
        QTest::addColumn<QStringList>("commands");
        addRead("535 status", 535, false, "L199199", k535Status, READ(r.drv->RxStatus()), "X014096000001",
                kFramed535Status);
        addRead("535 frequency", 535, false, "L199199", k535Status, READ(r.d535().FrequencyA()), 9600.0,
                kFramed535Status);
        addRead("535 mode", 535, false, "L199199", k535Status, READ(r.drv->Mode()), 4, kFramed535Status);
        addRead("535 status under lock", 535, true, "L199199", k535Status, READ(r.drv->RxStatus()), "X014096000001",
                {"J1199", "L199199"});
        addRead("545 status", 545, false, "L999999", k545Status, READ(r.drv->RxStatus()), "X014096000005",
                kFramed545Status);
        addRead("545 status agc 095", 545, false, "L999999", "L999123" "0001234567" "095\r", READ(r.drv->RxStatus()),
                "X123012345679", kFramed545Status);
        addRead("545 attenuator", 545, false, "L999999", "L999124" "0009600000" "050\r", READ(r.drv->Attenuator()), 1,
                kFramed545Status);
        addRead("535 memory vacant", 535, false, "L017017", "L017V\r", READ(r.d535().Memory(17)), kVacant17,
                {"L017017"});
        addRead("535 memory filled", 535, false, "L007007", "L007014096000001\r", READ(r.d535().Memory(7)), kFilled,
                {"L007007"});
        addRead("545 memory agc 5.5 to 6", 545, false, "L007007", "L007014" "0009600000" "055\r",
                READ(r.d545().Memory(7)), "MEM007 09600000 4 01 0 6 @@@ @@@ @ ", {"L007007"});
        addRead("545 memory agc 4.5 to 4", 545, false, "L007007", "L007014" "0009600000" "045\r",
                READ(r.d545().Memory(7)), "MEM007 09600000 4 01 0 4 @@@ @@@ @ ", {"L007007"});
        addRead("545 memory agc 0 to 1", 545, false, "L999999", "L999202" "0009600000" "000\r",
                READ(r.d545().Memory(999)), "MEM999 09600000 2 00 2 1 @@@ @@@ @ ", {"L999999"});
        addRead("545 memory 1000 is 000", 545, false, "L000000", "L000V\r", READ(r.d545().Memory(1000)),
                "XXX000 No data  @ @@ @ @ @@@ @@@ @ ", {"L000000"});
        addRead("535 clock", 535, false, "R0", "R070509\r", READ(r.drv->RxClock()), "07:05:09", framedCmd("R0"));
        // The S-meter curves at their points: the NRD-535's number falls as the signal rises.
        const struct { int model; const char *reply; double s; } meters[] = {
            {535, "M137\r", 2.64}, {535, "M255\r", 0},         {535, "M100\r", 9.25},    {535, "M075\r", 16.35},
            {535, "M060\r", 18},   {535, "M150\r", 0.82},      {545, "M087\r", 9.53125}, {545, "M083\r", 55.0 / 6},
            {545, "M084\r", 9.296875}, {545, "M028\r", 0},     {545, "M010\r", 0},       {545, "M255\r", 19}};
        for (const auto &m : meters)
            QTest::addRow("%d meter %.4s", m.model, m.reply)
                << m.model << false << QByteArray("M") << QByteArray(m.reply)
                << QVariant::fromValue(READ(r.drv->Smeter())) << QVariant(m.s) << QStringList{"M"};
        // Single values of the NRD-545: the plain reads leave the frame to the lock.
        addRead("545 bwc", 545, true, "W", "W050\r", READ(r.d545().Bandwidthcontrol()), 50, {"W"});
        addRead("545 bwc framed", 545, false, "W", "W050\r", READ(r.d545().Bandwidthcontrolxxx()), 50, framedCmd("W"));
        addRead("545 pbs", 545, true, "P", "P-120\r", READ(r.d545().PassBandShift()), -120, {"P"});
        addRead("545 pbs framed", 545, false, "P", "P+030\r", READ(r.d545().PassBandShiftxxx()), 30, framedCmd("P"));
        addRead("545 agc rounds", 545, true, "NN", "N0055\r", READ(r.d545().Agcspeed()), 6, {"NN"});
        addRead("545 agc clamped", 545, true, "NN", "N0000\r", READ(r.d545().Agcspeed()), 1, {"NN"});
        addRead("545 if gain", 545, true, "HH", "HH128\r", READ(r.d545().Ifgain()), 128, {"HH"});
        addRead("545 volume", 545, true, "JJ", "JJ255\r", READ(r.d545().Volume()), 255, {"JJ"});
        addRead("545 frequency", 545, false, "F", "F0009600000\r", READ(r.d545().FrequencyA()), 9600.0, framedCmd("F"));
        addRead("545 nb select", 545, false, "N", "N2\r", READ(r.d545().nb(0)), 2, framedCmd("N"));
        addRead("545 nb level", 545, false, "FF", "FF128\r", READ(r.d545().nb(1)), 128, framedCmd("FF"));
        addRead("545 notch", 545, false, "GG", "GG-0016\r", READ(r.d545().nt(1)), -16, framedCmd("GG"));
    }

    void reads()
    {
        QFETCH(int, model);
        QFETCH(bool, lock);
        QFETCH(QByteArray, query);
        QFETCH(QByteArray, reply);
        QFETCH(QVariant, op);
        QFETCH(QVariant, expected);
        QFETCH(QStringList, commands);
        Rig r(model);
        if (lock)
            r.lockOn();
        r.dev->answers[query] = reply;
        compareResult(op.value<Op>()(r), expected);
        QCOMPARE(r.dev->commands(), commands);
    }

    // A status read throws away what came before its query.
    void statusReadDiscardsEarlierBytes()
    {
        Rig r(535);
        r.dev->answers["J1199"] = "garbage\r";
        r.dev->answers["L199199"] = "L199102012345672\r";
        QCOMPARE(r.drv->RxStatus(), QStringLiteral("X102012345672"));
    }

    // A read without a time-out waits for a slow or silent receiver without using the CPU.
    // Where the read lets events run, the reply comes from a timer; where it does not, the line
    // is so slow that the reply arrives late by itself.
    void silentReceiverSleeps_data()
    {
        QTest::addColumn<int>("model");
        QTest::addColumn<bool>("eventsRun");
        QTest::addColumn<QByteArray>("query");
        QTest::addColumn<QByteArray>("reply");
        QTest::addColumn<QVariant>("op");
        QTest::addColumn<QVariant>("expected");
        auto row = [](const char *name, int model, bool events, const char *q, const QByteArray &reply, Op op,
                      const QVariant &expected) {
            QTest::newRow(name) << model << events << QByteArray(q) << reply << QVariant::fromValue(op) << expected;
        };
        row("535 status", 535, true, "L199199", k535Status, READ(r.drv->RxStatus()), "X014096000001");
        row("545 status", 545, true, "L999999", k545Status, READ(r.drv->RxStatus()), "X014096000005");
        row("535 clock", 535, true, "R0", "R235959\r", READ(r.drv->RxClock()), "23:59:59");
        row("545 notch", 545, true, "GG", "GG+0100\r", READ(r.d545().nt(1)), 100);
        row("535 meter", 535, false, "M", "M137\r", READ(r.drv->Smeter()), 2.64);
        row("545 meter", 545, false, "M", "M087\r", READ(r.drv->Smeter()), 9.53125);
        row("535 memory", 535, false, "L007007", "L007014096000001\r", READ(r.d535().Memory(7)), kFilled);
        row("545 memory", 545, false, "L017017", "L017V\r", READ(r.d545().Memory(17)), kVacant17);
        row("545 frequency", 545, false, "F", "F0012345678\r", READ(r.d545().FrequencyA()), 12345.678);
    }

    void silentReceiverSleeps()
    {
        QFETCH(int, model);
        QFETCH(bool, eventsRun);
        QFETCH(QByteArray, query);
        QFETCH(QByteArray, reply);
        QFETCH(QVariant, op);
        QFETCH(QVariant, expected);
        constexpr int kLateMs = 400;
        Rig r(model);
        if (eventsRun) {
            QTimer::singleShot(kLateMs, r.line, [&r, reply] { r.dev->reply(reply); });
        } else {
            // Under the lock there is no frame, whose pauses would let events run.
            r.lockOn();
            LineSettings slow;
            slow.baud = int(query.size() + 1 + reply.size()) * 10 * 1000 / kLateMs;
            r.line->open(slow, nullptr);
            r.line->setPaced(true);
            r.dev->answers[query] = reply;
        }
        bool done = false, probeDuringRead = false;
        QTimer::singleShot(60, r.line, [&] { probeDuringRead = !done; });

        const qint64 cpu0 = cpuMs();
        QElapsedTimer wall;
        wall.start();
        const QVariant got = op.value<Op>()(r);
        const qint64 wallMs = wall.elapsed(), cpu = cpuMs() - cpu0;
        done = true;
        compareResult(got, expected);
        QVERIFY2(wallMs >= kLateMs - 100, qPrintable(QStringLiteral("returned after %1 ms").arg(wallMs)));
        QVERIFY2(cpu * 2 < wallMs, qPrintable(QStringLiteral("%1 ms CPU in %2 ms").arg(cpu).arg(wallMs)));
        QTest::qWait(100); // a probe held back by a blocking read fires now
        QCOMPARE(probeDuringRead, eventsRun);
    }

    // Against the simulated sets: what was set comes back in the status, the status read leaves
    // the set as it was, and a pass band shift reaches the set only under the lock.
    void throughSimulator_data()
    {
        QTest::addColumn<int>("model");
        QTest::addColumn<int>("agc");
        QTest::addColumn<QString>("status");
        QTest::newRow("535") << 535 << 1 << "X113096000001";
        QTest::newRow("545") << 545 << 5 << "X113096000005";
    }

    void throughSimulator()
    {
        QFETCH(int, model);
        QFETCH(int, agc);
        QFETCH(QString, status);
        std::unique_ptr<NrdSim> made;
        if (model == 535)
            made = std::make_unique<Nrd535Sim>();
        else
            made = std::make_unique<Nrd545Sim>();
        NrdSim *sim = made.get();
        Rig r(model, std::move(made));
        auto pbs = [&] { model == 535 ? r.d535().setPassBandShift(-100) : r.d545().setPassBandShift(-100); };

        r.drv->setFrequencyA(9600.0);
        r.drv->setMode(3);
        r.drv->setAttenuator(1);
        int16_t b = 1;
        r.drv->setBandwidth(b);
        r.drv->setAgcspeed(int16_t(agc));
        QCOMPARE(r.drv->RxStatus(), status);
        QCOMPARE(r.drv->Mode(), int16_t(3));
        QCOMPARE(sim->frequencyHz(), qint64(9600000));
        QVERIFY(!sim->channelOperation());
        QVERIFY(!sim->remote());
        pbs();
        QCOMPARE(sim->passBandShiftHz(), 0); // local mode: ignored

        // Memory reads are not framed: the set answers them in remote mode only.
        r.drv->Lockonoff(1);
        pbs();
        QVERIFY(sim->passBandShiftHz() < 0);
        if (model == 535) {
            r.d535().setMemory(7, kFilled);
            QCOMPARE(r.d535().Memory(7), kFilled);
            r.d535().setMemory(7, kVacant17);
            QCOMPARE(r.d535().Memory(7), QStringLiteral("XXX007 No data  @ @@ @ @ @@@ @@@ @ "));
        } else {
            QCOMPARE(r.d545().PassBandShift(), int16_t(-100));
            r.d545().setMemory(7, kFilled);
            QCOMPARE(r.d545().Memory(7), kFilled);
        }
        r.drv->Lockonoff(0);
        QVERIFY(!sim->remote());
    }

    void labelTables_data()
    {
        QTest::addColumn<int>("model");
        QTest::addColumn<int>("ecss");
        QTest::addColumn<QString>("filters");
        QTest::addColumn<QString>("modes");
        QTest::addColumn<QString>("agc");
        QTest::addColumn<int>("lastMemory");
        QTest::newRow("535") << 535 << 0 << "Wid,Int,Nar,Aux" << "RY,CW,USB,LSB,AM,NFM,Fax,," << "Slw,Fst,Off" << 199;
        QTest::newRow("535 ecss") << 535 << 1 << "Wid,Int,Nar,Aux" << "RY,CW,USB,LSB,AM,NFM,Fax,AM-U,AM-L"
                                  << "Slw,Fst,Off" << 199;
        QTest::newRow("545") << 545 << 0 << "Wid,Int,Nar" << "RY,CW,USB,LSB,AM,NFM,AMS,AM-U,AM-L,WFM"
                             << "Off,0200,0400,0600,0800,1000,1200,1400,1600,1800" << 999;
    }

    void labelTables()
    {
        QFETCH(int, model);
        QFETCH(int, ecss);
        QFETCH(QString, filters);
        QFETCH(QString, modes);
        QFETCH(QString, agc);
        QFETCH(int, lastMemory);
        yesNoTable = QStringList{"Y", "N"}; // left over from another model
        slotNrdOption(2) = float(ecss);
        model == 535 ? labelRoutineNRD535() : labelRoutineNRD545();
        QCOMPARE(attTable.join(u','), QStringLiteral("0 dB,-20 dB"));
        QCOMPARE(filterTable.join(u','), filters);
        QCOMPARE(modeTable.join(u','), modes);
        QCOMPARE(agcTable.join(u','), agc);
        QCOMPARE(nbTable.join(u','), QStringLiteral("Off,NB1,NB2"));
        QVERIFY(yesNoTable.isEmpty());
        QCOMPARE(freqLowerLimit, 10.0);
        QCOMPARE(freqUpperLimit, 29999.999);
        QCOMPARE(lastMemoryIndex, lastMemory);
    }

private:
    std::unique_ptr<TestEnv> env;
};

BRELVOX_TEST(TestNrdDrivers)
#include "tst_nrd.moc"
