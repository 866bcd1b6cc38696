#include "sim/rx320_sim.h"
#include "sim/simulators.h"
#include "testmain.h"
#include "testutil.h"

#include <QTest>
#include <cmath>

Q_DECLARE_METATYPE(SimBand)

namespace {
QByteArray bytes(std::initializer_list<int> values)
{
    QByteArray b;
    for (int v : values)
        b.append(char(v));
    return b;
}

QByteArray tuneCmd(int c1, int c2, int f1, int f2, int b1, int b2) { return bytes({'N', c1, c2, f1, f2, b1, b2, '\r'}); }

// A simulator with its line and log captured, fed whole or one byte at a time.
struct Rig {
    explicit Rig(SimBand band = SimBand()) : sim(std::move(band))
    {
        sim.transmit = [this](const QByteArray &b) { out += b; };
        sim.log = [this](const QString &s) { log << s; };
    }
    void feed(const QByteArray &b, bool byteByByte)
    {
        if (!byteByByte) {
            sim.receive(b);
            return;
        }
        for (char c : b)
            sim.receive(QByteArray(1, c));
    }
    QString state() const
    {
        return QStringLiteral("M%1 W%2 G%3 V%4 A%5")
            .arg(sim.mode()).arg(sim.filterIndex()).arg(sim.agc()).arg(sim.speakerByte()).arg(sim.lineByte());
    }
    Rx320Sim sim;
    QByteArray out;
    QStringList log;
};

SimBand oneStation(double khz, double peakS, int onMinute = 0, int offMinute = 0)
{
    return SimBand({{khz, 3, peakS, onMinute, offMinute, 100, QStringLiteral("Test")}});
}

QDateTime utc(int h, int m) { return QDateTime(QDate(2026, 3, 14), QTime(h, m), Qt::UTC); }
} // namespace

class TestRx320Sim : public QObject {
    Q_OBJECT
private slots:
    void tune_data();
    void tune();
    void commands_data();
    void commands();
    void smeter_data();
    void smeter();
    void version();
    void factory();
};

void TestRx320Sim::tune_data()
{
    QTest::addColumn<QByteArray>("setup");
    QTest::addColumn<QByteArray>("tune");
    QTest::addColumn<double>("hz");
    QTest::addColumn<QString>("logLine");

    const QByteArray wide = bytes({'W', 0, '\r'});
    QTest::newRow("AM 10000 kHz") << QByteArray("M0\r") << tuneCmd(85, 239, 26, 169, 85, 80) << 10000000.0
                                  << "tune 10000.000 kHz AM filter 8000 Hz";
    QTest::newRow("AM ignores a BFO holding a side-band offset")
        << QByteArray("M0\r") << tuneCmd(0x55, 0xef, 0x1a, 0xa9, 0x64, 0x3e) << 10000000.0
        << "tune 10000.000 kHz AM filter 8000 Hz";
    QTest::newRow("USB, 6000 Hz filter") << wide + "M1\r" << tuneCmd(85, 4, 41, 151, 119, 112) << 9410000.0
                                         << "tune 9410.000 kHz USB filter 6000 Hz";
    QTest::newRow("USB, 300 Hz filter") << bytes({'W', 32, '\r'}) + "M1\r" << tuneCmd(85, 3, 34, 32, 89, 11)
                                        << 9410000.18 << "tune 9410.000 kHz USB filter 300 Hz";
    QTest::newRow("USB, pass band shift +300 Hz") << wide + "M1\r" << tuneCmd(85, 4, 47, 253, 122, 163)
                                                  << 9410000.0 << "tune 9410.000 kHz USB filter 6000 Hz";
    QTest::newRow("LSB, 6000 Hz filter") << wide + "M2\r" << tuneCmd(79, 202, 11, 187, 119, 112) << 6070000.0
                                         << "tune 6070.000 kHz LSB filter 6000 Hz";
    QTest::newRow("LSB, 750 Hz filter") << bytes({'W', 25, '\r'}) + "M2\r" << tuneCmd(79, 203, 14, 102, 91, 113)
                                        << 6069999.82 << "tune 6070.000 kHz LSB filter 750 Hz";
    QTest::newRow("CW, BFO is the pitch") << QByteArray("M3\r") << tuneCmd(85, 239, 26, 169, 93, 216) << 10000000.0
                                          << "tune 10000.000 kHz CW filter 8000 Hz";
    QTest::newRow("operands hold CR and NUL") << QByteArray("M0\r") << tuneCmd(85, 13, 0, 13, 85, 80) << 9433752.38
                                              << "tune 9433.752 kHz AM filter 8000 Hz";
    QTest::newRow("CR as the last operand") << QByteArray("M0\r") << tuneCmd(85, 239, 26, 169, 85, 13)
                                            << 10000000.0 << "tune 10000.000 kHz AM filter 8000 Hz";
}

void TestRx320Sim::tune()
{
    QFETCH(QByteArray, setup);
    QFETCH(QByteArray, tune);
    QFETCH(double, hz);
    QFETCH(QString, logLine);
    for (bool byteByByte : {false, true}) {
        Rig rig;
        rig.feed(setup + tune, byteByByte);
        QVERIFY2(std::fabs(rig.sim.tunedHz() - hz) < 1.0,
                 qPrintable(QStringLiteral("tuned %1 Hz, byte by byte %2").arg(rig.sim.tunedHz(), 0, 'f', 2).arg(byteByByte)));
        QVERIFY(!rig.log.isEmpty());
        QCOMPARE(rig.log.last(), logLine);
        QVERIFY(rig.out.isEmpty());
    }
}

void TestRx320Sim::commands_data()
{
    QTest::addColumn<QByteArray>("input");
    QTest::addColumn<QStringList>("log");
    QTest::addColumn<QString>("state");

    // Power-up: AM, filter 33, AGC medium, audio muted.
    QTest::newRow("mode USB") << QByteArray("M1\r") << QStringList{"mode USB at 10000.000 kHz"} << "M1 W33 G2 V63 A63";
    QTest::newRow("mode CW") << QByteArray("M3\r") << QStringList{"mode CW at 10000.000 kHz"} << "M3 W33 G2 V63 A63";
    QTest::newRow("filter 23") << bytes({'W', 23, '\r'}) << QStringList{"filter 23 (1050 Hz)"} << "M0 W23 G2 V63 A63";
    QTest::newRow("filter operand CR") << bytes({'W', 13, '\r'}) << QStringList{"filter 13 (2550 Hz)"} << "M0 W13 G2 V63 A63";
    QTest::newRow("filter operand NUL, then widest")
        << bytes({'W', 0, '\r', 'W', 33, '\r'}) << QStringList{"filter 0 (6000 Hz)", "filter 33 (8000 Hz)"}
        << "M0 W33 G2 V63 A63";
    QTest::newRow("agc slow, fast") << QByteArray("G1\rG3\r") << QStringList{"agc slow", "agc fast"} << "M0 W33 G3 V63 A63";
    QTest::newRow("speaker") << bytes({'V', 127, 12, '\r'}) << QStringList{"speaker 12"} << "M0 W33 G2 V12 A63";
    QTest::newRow("speaker, any first byte, level CR")
        << bytes({'V', 0, 13, '\r'}) << QStringList{"speaker 13"} << "M0 W33 G2 V13 A63";
    QTest::newRow("line loudest") << bytes({'A', 127, 0, '\r'}) << QStringList{"line 0"} << "M0 W33 G2 V63 A0";
    QTest::newRow("out of range ignored") << QByteArray("M4\r") + bytes({'W', 34, '\r'}) + "G0\r" + bytes({'V', 127, 64, '\r'})
                                          << QStringList{} << "M0 W33 G2 V63 A63";
    QTest::newRow("wrong terminator dropped through CR")
        << QByteArray("M1x\rG3\r") << QStringList{"agc fast"} << "M0 W33 G3 V63 A63";
    QTest::newRow("short tune does not swallow what follows")
        << bytes({'N', 1, 2, '\r'}) + "M1\rG3\r" << QStringList{"mode USB at 10000.000 kHz", "agc fast"}
        << "M1 W33 G3 V63 A63";
    QTest::newRow("garbage and stray CRs") << bytes({0, 0xff, '\r', '\r'}) + "Q12\rM2\r"
                                           << QStringList{"mode LSB at 10000.000 kHz"} << "M2 W33 G2 V63 A63";
}

void TestRx320Sim::commands()
{
    QFETCH(QByteArray, input);
    QFETCH(QStringList, log);
    QFETCH(QString, state);
    for (bool byteByByte : {false, true}) {
        Rig rig;
        rig.feed(input, byteByByte);
        QCOMPARE(rig.log, log);
        QCOMPARE(rig.state(), state);
        QVERIFY(rig.out.isEmpty());
    }
}

void TestRx320Sim::smeter_data()
{
    QTest::addColumn<SimBand>("band");
    QTest::addColumn<QDateTime>("time");
    QTest::addColumn<QByteArray>("tune");
    QTest::addColumn<QByteArray>("reply"); // empty: any reply in range whose reading matches the band

    const QByteArray at10000 = tuneCmd(85, 239, 26, 169, 85, 80);
    const QByteArray at9433 = tuneCmd(85, 13, 0, 13, 85, 80);
    QTest::newRow("strongest stays below 128") << oneStation(10000, 21) << utc(12, 0) << at10000
                                               << bytes({'X', 0x7f, 0xff, '\r'});
    QTest::newRow("empty band reads 1") << SimBand(QVector<SimStation>{}) << utc(12, 0) << at10000
                                        << bytes({'X', 0, 1, '\r'});
    QTest::newRow("station off the air") << oneStation(10000, 12, 600, 660) << utc(12, 0) << at10000
                                         << bytes({'X', 0, 1, '\r'});
    QTest::newRow("tuned away from the station") << oneStation(10000, 12) << utc(12, 0) << at9433
                                                 << bytes({'X', 0, 1, '\r'});
    QTest::newRow("station on the air") << oneStation(10000, 12, 600, 660) << utc(10, 30) << at10000 << QByteArray();
    QTest::newRow("weak station") << oneStation(10000, 4) << utc(3, 17) << at10000 << QByteArray();
}

void TestRx320Sim::smeter()
{
    QFETCH(SimBand, band);
    QFETCH(QDateTime, time);
    QFETCH(QByteArray, tune);
    QFETCH(QByteArray, reply);
    TestEnv env;
    env.clock->set(time);
    Rig rig(band);
    rig.feed(tune, false);
    rig.feed("X", false);
    QVERIFY2(rig.out.isEmpty(), "answered before the CR");
    rig.feed("\r", false);

    const QByteArray &out = rig.out;
    QCOMPARE(out.size(), 4);
    QCOMPARE(out.at(0), 'X');
    QCOMPARE(out.at(3), '\r');
    const int v = quint8(out.at(1)) * 256 + quint8(out.at(2));
    QVERIFY(quint8(out.at(1)) < 128);
    QVERIFY(v >= 1);
    QCOMPARE(rig.log.last(), QStringLiteral("smeter %1").arg(v));
    if (!reply.isEmpty()) {
        QCOMPARE(out, reply);
    } else {
        // What our program reads from the reply gives the band's level back.
        const double s = band.sUnits(10000, time, 8.0);
        QVERIFY(s > 2);
        // The whole-number value limits how closely a weak level can come back.
        const double tolerance = std::max(0.02, 0.75 / v);
        QVERIFY2(std::fabs(1.4 * std::log(v) - s) < tolerance, qPrintable(QStringLiteral("value %1 for S %2").arg(v).arg(s)));
    }
}

void TestRx320Sim::version()
{
    Rig rig;
    rig.feed("?\r", true);
    QCOMPARE(rig.out, QByteArray(Rx320Sim::kVersionText) + '\r');
    QVERIFY(rig.out.startsWith("VER "));
    QCOMPARE(rig.out.count('\r'), 1);
    QCOMPARE(rig.log, QStringList{"version"});
}

void TestRx320Sim::factory()
{
    auto byType = makeSimulator(3);
    QVERIFY(byType);
    QCOMPARE(byType->model(), QStringLiteral("rx320"));
    QCOMPARE(byType->baudRate(), 1200);
    auto byName = makeSimulatorByName(QStringLiteral("rx320"));
    QVERIFY(byName);
    QCOMPARE(byName->model(), QStringLiteral("rx320"));
    QVERIFY(!makeSimulatorByName(QStringLiteral("rx999")));
}

BRELVOX_TEST(TestRx320Sim)
#include "tst_rx320sim.moc"
