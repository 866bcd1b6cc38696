// The AR7030 driver: the bytes it puts on the line, what it makes of the bytes that come
// back, and the effect of both on a simulated receiver.
#include "drivers/ar7030_tables.h"
#include "drivers/clsAR7030.h"
#include "core/shared_state.h"
#include "serial/comm_line.h"
#include "serial/sim_backend.h"
#include "sim/ar7030_sim.h"
#include "testmain.h"
#include "testutil.h"

#include <QSignalSpy>
#include <QTimer>
#include <QtTest>
#include <functional>
#include <map>

namespace {

// Answers each read command with the next byte of its script, then falls silent.
class ScriptedAr7030 : public SimDevice {
public:
    QList<int> answers;
    void receive(const QByteArray &bytes) override
    {
        for (char c : bytes)
            if (uint8_t(c) == 0x71 && !answers.isEmpty())
                send(QByteArray(1, char(answers.takeFirst())));
    }
    int baudRate() const override { return 1200; }
    QString model() const override { return QStringLiteral("scripted"); }
};

// A driver on a line to an in-process device: the scripted one, or the simulator.
struct Rig {
    CommLine comm;
    SimBackend *line = nullptr;
    clsAR7030 drv{comm};
    Ar7030Sim *sim = nullptr;
    explicit Rig(QList<int> answers) : Rig(std::make_unique<ScriptedAr7030>())
    {
        static_cast<ScriptedAr7030 *>(line->device())->answers = std::move(answers);
    }
    Rig() : Rig(std::make_unique<Ar7030Sim>()) { sim = static_cast<Ar7030Sim *>(line->device()); }
    QByteArray wire() const { return line->written; }

private:
    explicit Rig(std::unique_ptr<SimDevice> device)
    {
        line = openOnSim(comm, std::move(device), QStringLiteral("1200,N,8,1"));
    }
};

QByteArray hex(const char *s) { return QByteArray::fromHex(s); }
// Half a step of the frequency word: a word off by one step reads back further away than this.
constexpr double kHalfStepKhz = 0.5 / 376.635;
#define COMPARE_WIRE(actual, expected) QCOMPARE((actual).toHex(' ').toUpper(), (expected).toHex(' ').toUpper())

// Every property by name, so that one table covers them all.
struct Property {
    std::function<void(clsAR7030 &, double)> write;
    std::function<double(clsAR7030 &)> read;
    const char *changed;
};
#define PROP(Name, Sig)                                                                        \
    {#Name, {[](clsAR7030 &d, double v) { int16_t x = int16_t(v); d.set##Name(x); },           \
             [](clsAR7030 &d) { return double(d.Name()); }, SIGNAL(Sig##Changed(int))}}
std::map<QString, Property> makeProps()
{
    std::map<QString, Property> m = {
        PROP(Attenuator, Attenuator), PROP(Agcspeed, Agcspeed), PROP(Bandwidth, Bandwidth), PROP(Mode, Mode),
        PROP(PassBandShift, Passbandshift), PROP(Beatfreqosc, Beatfreqosc), PROP(Squelch, Squelch),
        PROP(Ifgain, Ifgain), PROP(Volume, Volume), PROP(Leftauxlevel, Leftauxlevel),
        PROP(Rightauxlevel, Rightauxlevel), PROP(Bass, Bass), PROP(Treble, Treble), PROP(PowerOnOff, Poweronoff),
        {"FrequencyA", {[](clsAR7030 &d, double v) { d.setFrequencyA(v); }, [](clsAR7030 &d) { return d.FrequencyA(); },
                        SIGNAL(FrequencyAChanged(double))}},
        {"Smeter", {{}, [](clsAR7030 &d) { return double(d.Smeter()); }, nullptr}}};
    // The width text as a number; n comes back as the byte read, 0 for an erased 255.
    for (int16_t n = 1; n <= 6; ++n)
        m["Filter " + QString::number(n)].read = [n](clsAR7030 &d) {
            int16_t arg = n;
            QString text;
            d.Installedfilter(arg, text);
            return text.toDouble() + (arg == 255 ? 1000 : 0);
        };
    return m;
}
const std::map<QString, Property> props = makeProps();
} // namespace

class TestAr7030Driver : public QObject {
    Q_OBJECT
private slots:
    void init()
    {
        env = std::make_unique<TestEnv>();
        labelRoutineAR7030();
        rxFirmware = 14;
    }
    void cleanup() { env.reset(); }

    void shiftTable()
    {
        QCOMPARE(ar7030ShiftTable.size(), 86);
        QCOMPARE(ar7030ShiftTable.mid(41, 3), QStringList({"-0.1k", " 0.0k", "+0.1k"}));
        QCOMPARE(ar7030ShiftTable.first() + ar7030ShiftTable.at(84), QStringLiteral("-4.2k+4.2k"));
    }

    // present: the byte a level write reads before it merges, -1 when it reads none.
    void writes_data()
    {
        QTest::addColumn<QString>("property");
        QTest::addColumn<double>("value");
        QTest::addColumn<int>("firmware");
        QTest::addColumn<int>("present");
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("Attenuator fw 13") << "Attenuator" << 2.0 << 13 << -1 << hex("50 33 40 62 24");
        QTest::newRow("Attenuator fw 14") << "Attenuator" << 2.0 << 14 << -1 << hex("50 33 40 62 26");
        QTest::newRow("Agcspeed") << "Agcspeed" << 3.0 << 14 << -1 << hex("50 33 42 63 26");
        QTest::newRow("Bandwidth") << "Bandwidth" << 4.0 << 13 << -1 << hex("50 33 44 64 23 2B");
        QTest::newRow("Mode USB") << "Mode" << 7.0 << 14 << -1 << hex("50 31 4D 67 22 2B");
        QTest::newRow("PassBandShift") << "PassBandShift" << 253.0 << 14 << -1 << hex("50 33 45 3F 6D 23 2B");
        QTest::newRow("Beatfreqosc") << "Beatfreqosc" << 30.0 << 14 << -1 << hex("50 33 46 31 6E 23 2B");
        QTest::newRow("Squelch twice") << "Squelch" << 150.0 << 14 << -1 << hex("50 33 43 39 66 31 47 39 66 24");
        QTest::newRow("Ifgain 99") << "Ifgain" << 99.0 << 14 << -1 << hex("50 31 48 30 60 26");
        QTest::newRow("Ifgain 60 rounds up") << "Ifgain" << 60.0 << 14 << -1 << hex("50 31 48 33 65 26");
        QTest::newRow("Ifgain 0 clamped") << "Ifgain" << 0.0 << 14 << -1 << hex("50 31 48 38 62 26");
        QTest::newRow("power on") << "PowerOnOff" << 1.0 << 14 << -1 << hex("51 31 46 61 20");
        QTest::newRow("power off") << "PowerOnOff" << 0.0 << 14 << -1
                                   << hex("83 50 32 48 60 60 60 29 50 32 4E 60 51 31 46 60 20");
        QTest::newRow("power 2 sends nothing") << "PowerOnOff" << 2.0 << 14 << -1 << QByteArray();
        QTest::newRow("10000 kHz") << "FrequencyA" << 10000.0 << 14 << -1 << hex("50 31 4A 33 69 37 68 35 60 21 2C");
        QTest::newRow("6035 kHz rounds up") << "FrequencyA" << 6035.0 << 14 << -1 << hex("50 31 4A 32 62 3A 6E 3E 62 21 2C");
        QTest::newRow("10 kHz") << "FrequencyA" << 10.0 << 14 << -1 << hex("50 31 4A 30 60 30 6E 3B 66 21 2C");
        // Levels and tone keep the receiver's upper bits, no more and no fewer: read, merge, write back.
        QTest::newRow("Bass -8, all bits set") << "Bass" << -8.0 << 14 << 0xFF << hex("50 32 41 71 50 32 41 3E 67 25");
        QTest::newRow("Volume 20, all bits set") << "Volume" << 20.0 << 14 << 0xFF << hex("50 31 4E 71 50 31 4E 3D 69 25");
        QTest::newRow("Bass +12 clamped") << "Bass" << 12.0 << 14 << 0xEF << hex("50 32 41 71 50 32 41 3F 67 25");
        QTest::newRow("Bass -20 clamped, fw 13") << "Bass" << -20.0 << 13 << 0x00 << hex("50 32 41 71 50 32 41 30 67 24");
        QTest::newRow("Treble -8") << "Treble" << -8.0 << 14 << 0xF9 << hex("50 32 42 71 50 32 42 3F 62 25");
        QTest::newRow("Volume 99") << "Volume" << 99.0 << 14 << 0xC5 << hex("50 31 4E 71 50 31 4E 3F 6F 25");
        QTest::newRow("Left 10, all bits set") << "Leftauxlevel" << 10.0 << 14 << 0xFF << hex("50 32 43 71 50 32 43 3D 6F 25");
        QTest::newRow("Right 0, all bits set") << "Rightauxlevel" << 0.0 << 14 << 0xFF << hex("50 32 44 71 50 32 44 3D 6B 25");
    }
    void writes()
    {
        QFETCH(QString, property);
        QFETCH(double, value);
        QFETCH(int, firmware);
        QFETCH(int, present);
        QFETCH(QByteArray, bytes);
        Rig rig(present < 0 ? QList<int>{} : QList<int>{present});
        rxFirmware = int16_t(firmware);
        QSignalSpy changed(&rig.drv, props.at(property).changed);
        props.at(property).write(rig.drv, value);
        COMPARE_WIRE(rig.wire(), bytes);
        QCOMPARE(changed.size(), 1);
        QCOMPARE(changed.at(0).at(0).toDouble(), value);
    }

    // The address, the read commands, and what the answers turn into.
    void reads_data()
    {
        QTest::addColumn<QString>("property");
        QTest::addColumn<QList<int>>("answers");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<double>("value");
        QTest::newRow("Attenuator") << "Attenuator" << QList<int>{3} << hex("50 33 40 71") << 3.0;
        QTest::newRow("Agcspeed") << "Agcspeed" << QList<int>{2} << hex("50 33 42 71") << 2.0;
        QTest::newRow("Bandwidth") << "Bandwidth" << QList<int>{6} << hex("50 33 44 71") << 6.0;
        QTest::newRow("Mode") << "Mode" << QList<int>{5} << hex("50 31 4D 71") << 5.0;
        QTest::newRow("PassBandShift") << "PassBandShift" << QList<int>{200} << hex("50 33 45 71") << 200.0;
        QTest::newRow("Beatfreqosc") << "Beatfreqosc" << QList<int>{17} << hex("50 33 46 71") << 17.0;
        QTest::newRow("Squelch") << "Squelch" << QList<int>{99} << hex("50 33 43 71") << 99.0;
        QTest::newRow("Ifgain full") << "Ifgain" << QList<int>{0} << hex("50 31 48 71") << 99.0;
        QTest::newRow("Ifgain 134") << "Ifgain" << QList<int>{134} << hex("50 31 48 71") << 0.0;
        QTest::newRow("Volume top, upper bits") << "Volume" << QList<int>{0xFF} << hex("50 31 4E 71") << 99.0;
        QTest::newRow("Left top") << "Leftauxlevel" << QList<int>{0x7F} << hex("50 32 43 71") << 99.0;
        QTest::newRow("Right bottom") << "Rightauxlevel" << QList<int>{27} << hex("50 32 44 71") << 0.0;
        QTest::newRow("Bass +8") << "Bass" << QList<int>{0xF7} << hex("50 32 41 71") << 8.0;
        QTest::newRow("Treble -8") << "Treble" << QList<int>{0xF2} << hex("50 32 42 71") << -8.0;
        QTest::newRow("power on") << "PowerOnOff" << QList<int>{0x81} << hex("51 31 46 71") << 1.0;
        QTest::newRow("power off") << "PowerOnOff" << QList<int>{0xFE} << hex("51 31 46 71") << 0.0;
        QTest::newRow("10000 kHz") << "FrequencyA" << QList<int>{0x39, 0x78, 0x50} << hex("50 31 4A 71 71 71") << 9999.99939;
        // Only the first byte of the word comes: the word is that byte.
        QTest::newRow("word cut short") << "FrequencyA" << QList<int>{0x39} << hex("50 31 4A 71 71") << 0x39 / 376.635223;
        const QByteArray meter = hex("50 33 4F 71 50 34 40 71");
        QTest::newRow("S 0") << "Smeter" << QList<int>{0, 0} << meter << 0.0;
        QTest::newRow("S 11.4 below the knee") << "Smeter" << QList<int>{11, 2} << meter << 11.4;
        QTest::newRow("S 11.6 above the knee") << "Smeter" << QList<int>{11, 3} << meter << 11.666;
        QTest::newRow("S 15") << "Smeter" << QList<int>{15, 0} << meter << 17.31;
        QTest::newRow("S 16 clamped") << "Smeter" << QList<int>{16, 0} << meter << 18.0;
        QTest::newRow("filter 1: 2.5") << "Filter 1" << QList<int>{0x25} << hex("51 38 45 71") << 2.5;
        QTest::newRow("filter 4: 0.9") << "Filter 4" << QList<int>{0x09} << hex("51 39 41 71") << 0.9;
        QTest::newRow("filter 5: none") << "Filter 5" << QList<int>{0x00} << hex("51 39 45 71") << 0.0;
        QTest::newRow("filter 6: erased, 255") << "Filter 6" << QList<int>{0xFF} << hex("51 39 49 71") << 0.0;
    }
    void reads()
    {
        QFETCH(QString, property);
        QFETCH(QList<int>, answers);
        QFETCH(QByteArray, bytes);
        QFETCH(double, value);
        Rig rig(answers);
        const double got = props.at(property).read(rig.drv);
        QVERIFY2(qAbs(got - value) < 1e-4, qPrintable(QString::number(got, 'f', 6)));
        COMPARE_WIRE(rig.wire(), bytes);
    }

    void firmwareClockReset()
    {
        for (const QByteArray text : {"7030_13B", "7030_14A"}) {
            Rig rig(QList<int>(text.begin(), text.end()));
            const QString fw = rig.drv.Firmware();
            COMPARE_WIRE(rig.wire(), hex("5F 40 71 71 71 71 71 71 71 71"));
            QCOMPARE(fw, QString::fromLatin1(text));
            QCOMPARE(int(ar7030FirmwareNumber(fw)), text.mid(5, 2).toInt());
        }
        Rig rig({0x07, 0x59, 0x23});
        QCOMPARE(rig.drv.RxClock(), QStringLiteral("23:59:07"));
        rig.drv.setRxClock(QStringLiteral("08:30:45"));
        rig.drv.Reset();
        COMPARE_WIRE(rig.wire(), hex("51 30 42 71 71 71  51 30 42 34 65 33 60 30 68 24  20"));
    }

    // A record written (no answers) or read. Page 2 addresses above 255 carry bits 8..11 in a
    // 0x1n byte; page 1 never needs one.
    void memory_data()
    {
        QTest::addColumn<int>("cell");
        QTest::addColumn<QString>("record");
        QTest::addColumn<QList<int>>("answers");
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("write vacant cell 5 as XXX")
            << 5 << "XXX005 No data  @ @@ @ @ @@@ @@@ @ " << QList<int>{}
            << hex("52 31 44 3B 67 3F 6F 3E 6C 38 60  52 39 45 11 30 60  51 3A 41 30 60");
        QTest::newRow("write cell 0") << 0 << "MEM000 06000000 1 03 @ @ 000 010 0 " << QList<int>{}
                                      << hex("52 30 40 32 62 37 6B 36 63 33 61  52 39 40 11 30 60  51 39 4C 30 6A");
        QTest::newRow("write cell 63, last below 256")
            << 63 << "MEM063 15070000 5 02 @ @ 253 045 1 " << QList<int>{}
            << hex("52 3F 4C 35 66 39 6B 37 65 3A 65  52 3C 4F 11 3F 6D  51 3D 4B 32 6D");
        QTest::newRow("write cell 99") << 99 << "MEM099 29999990 7 06 @ @ 128 150 0 " << QList<int>{}
                                       << hex("52 38 4C 11 3A 6C 36 68 3E 6D 36 67  52 3F 43 11 38 60  51 3F 4F 39 66");
        QTest::newRow("read filled cell 12")
            << 12 << "MEM012 09410000 4 01 @ @ 253 045 1 " << QList<int>{0x36, 0x14, 0x49, 0x94, 0xFD, 0x2D}
            << hex("52 33 40 71 71 71 71 52 39 4C 11 71 51 3A 48 71");
        QTest::newRow("read vacant cell 99") << 99 << "XXX099 No data  @ @@ @ @ @@@ @@@ @ "
                                             << QList<int>{0xB7, 0xFF, 0xEC} << hex("52 38 4C 11 71 71 71");
        // 10 kHz stored reads back a hair below the lower limit.
        QTest::newRow("read 10 kHz as vacant") << 7 << "XXX007 No data  @ @@ @ @ @@@ @@@ @ "
                                               << QList<int>{0x00, 0x0E, 0xB6} << hex("52 31 4C 71 71 71");
    }
    void memory()
    {
        QFETCH(int, cell);
        QFETCH(QString, record);
        QFETCH(QList<int>, answers);
        QFETCH(QByteArray, bytes);
        Rig rig(answers);
        if (answers.isEmpty())
            rig.drv.setMemory(int16_t(cell), record);
        else
            QCOMPARE(rig.drv.Memory(int16_t(cell)), record);
        COMPARE_WIRE(rig.wire(), bytes);
    }

    // --- against the simulated receiver ---

    // What the receiver does after the driver's writes: firmware 13 has no routines 5 and 6.
    void simEffect()
    {
        for (int firmware : {13, 14}) {
            Rig rig;
            rig.sim->setFirmware(QStringLiteral("7030_%1A").arg(firmware));
            rxFirmware = ar7030FirmwareNumber(rig.drv.Firmware());
            QCOMPARE(int(rxFirmware), firmware);
            const std::pair<const char *, double> writes[] = {
                {"FrequencyA", 6035.0}, {"Mode", 6}, {"Bandwidth", 2}, {"PassBandShift", 250}, {"Attenuator", 3},
                {"Agcspeed", 2}, {"Ifgain", 0}, {"Volume", 99}, {"Bass", -8}, {"Treble", 8},
                {"Leftauxlevel", 0}, {"Rightauxlevel", 99}, {"Squelch", 40}};
            for (const auto &[p, v] : writes)
                props.at(p).write(rig.drv, v);
            const Ar7030Sim::State &s = rig.sim->state();
            QVERIFY2(qAbs(s.khz - 6035.0) < kHalfStepKhz, qPrintable(QString::number(s.khz, 'f', 4)));
            const QList<int> got{s.mode, s.filter, s.pbs, s.rfGain, s.agc, s.ifGain, s.volume,
                                 s.bass, s.treble, s.auxLeft, s.auxRight, s.squelch, rig.sim->peek(0, 0x17)};
            QCOMPARE(got, (QList<int>{6, 2, -6, 3, 2, 130, 63, 7, 10, 27, 63, 40, 40}));
        }
    }

    // A receiver that does not answer reads 0; a level write goes on with 0 and still writes.
    void silentReceiver()
    {
        Rig rig;
        rig.sim->setSilent(true);
        int16_t b = 77;
        QVERIFY(!rig.drv.readbyte(b));
        QCOMPARE(int(b), 0);
        QCOMPARE(rig.drv.FrequencyA(), 0.0);
        rig.drv.setBass(0);
        COMPARE_WIRE(rig.wire(), hex("71 50 31 4A 71 50 32 41 71 50 32 41 30 6F 25"));
        QCOMPARE(rig.sim->state().bass, 15);
        // A line that never opened: the read ends all the same.
        CommLine closed;
        clsAR7030 unplugged(closed);
        QCOMPARE(int(unplugged.Mode()), 0);
    }

    // A read started from a handler while another read waits takes the line: the outer read
    // then finds nothing and times out.
    void nestedRead()
    {
        Rig rig({3, 5});
        int inner = -1;
        QTimer::singleShot(0, [&] { inner = rig.drv.Attenuator(); });
        const int outer = rig.drv.Mode();
        QCOMPARE(inner, 5);
        QCOMPARE(outer, 0);
    }

private:
    std::unique_ptr<TestEnv> env;
};

BRELVOX_TEST(TestAr7030Driver)
#include "tst_ar7030.moc"
