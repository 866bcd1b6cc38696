// The RX-320 simulator, fed whole commands and one byte at a time.
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

// A simulator with its line and log captured.
struct Rig {
    explicit Rig(SimBand band = SimBand()) : sim(std::move(band))
    {
        sim.transmit = [this](const QByteArray &b) { out += b; };
        sim.log = [this](const QString &s) { log << s; };
    }
    void feed(const QByteArray &b, bool byteByByte)
    {
        for (qsizetype i = 0; i < b.size(); i += byteByByte ? 1 : b.size())
            sim.receive(b.mid(i, byteByByte ? 1 : b.size()));
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
    // The command's log, the settings (mode, filter, AGC, speaker, line) and the carrier in Hz,
    // for the operand bytes and framing faults the driver never sends. Power-up: 10000 kHz AM,
    // filter 33, AGC medium, audio muted.
    void commands_data()
    {
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<QStringList>("log");
        QTest::addColumn<QString>("state");
        QTest::addColumn<double>("hz");
        const QStringList am10000{"tune 10000.000 kHz AM filter 8000 Hz"};
        QTest::newRow("AM ignores a BFO holding a side-band offset")
            << tuneCmd(0x55, 0xef, 0x1a, 0xa9, 0x64, 0x3e) << am10000 << "M0 W33 G2 V63 A63" << 1e7;
        QTest::newRow("CW, BFO is the pitch") << QByteArray("M3\r") + tuneCmd(85, 239, 26, 169, 93, 216)
                                              << QStringList{"mode CW at 10000.000 kHz", "tune 10000.000 kHz CW filter 8000 Hz"}
                                              << "M3 W33 G2 V63 A63" << 1e7;
        QTest::newRow("operands hold CR and NUL") << tuneCmd(85, 13, 0, 13, 85, 80)
                                                  << QStringList{"tune 9433.752 kHz AM filter 8000 Hz"} << "M0 W33 G2 V63 A63" << 9433752.38;
        QTest::newRow("CR as the last operand") << tuneCmd(85, 239, 26, 169, 85, 13) << am10000 << "M0 W33 G2 V63 A63" << 1e7;
        QTest::newRow("filter operand CR") << bytes({'W', 13, '\r'}) << QStringList{"filter 13 (2550 Hz)"} << "M0 W13 G2 V63 A63" << 1e7;
        QTest::newRow("filter operand NUL, then widest") << bytes({'W', 0, '\r', 'W', 33, '\r'})
                                                         << QStringList{"filter 0 (6000 Hz)", "filter 33 (8000 Hz)"} << "M0 W33 G2 V63 A63" << 1e7;
        QTest::newRow("agc slow, fast") << QByteArray("G1\rG3\r") << QStringList{"agc slow", "agc fast"} << "M0 W33 G3 V63 A63" << 1e7;
        QTest::newRow("speaker, any first byte, level CR")
            << bytes({'V', 0, 13, '\r'}) << QStringList{"speaker 13"} << "M0 W33 G2 V13 A63" << 1e7;
        QTest::newRow("line loudest") << bytes({'A', 127, 0, '\r'}) << QStringList{"line 0"} << "M0 W33 G2 V63 A0" << 1e7;
        QTest::newRow("out of range ignored") << QByteArray("M4\r") + bytes({'W', 34, '\r'}) + "G0\r" + bytes({'V', 127, 64, '\r'})
                                              << QStringList{} << "M0 W33 G2 V63 A63" << 1e7;
        QTest::newRow("wrong terminator dropped through CR")
            << QByteArray("M1x\rG3\r") << QStringList{"agc fast"} << "M0 W33 G3 V63 A63" << 1e7;
        QTest::newRow("short tune does not swallow what follows") << bytes({'N', 1, 2, '\r'}) + "M1\rG3\r"
                                                                  << QStringList{"mode USB at 10000.000 kHz", "agc fast"} << "M1 W33 G3 V63 A63" << 1e7;
        QTest::newRow("garbage and stray CRs") << bytes({0, 0xff, '\r', '\r'}) + "Q12\rM2\r"
                                               << QStringList{"mode LSB at 10000.000 kHz"} << "M2 W33 G2 V63 A63" << 1e7;
    }
    void commands()
    {
        QFETCH(QByteArray, input);
        QFETCH(QStringList, log);
        QFETCH(QString, state);
        QFETCH(double, hz);
        for (bool byteByByte : {false, true}) {
            Rig rig;
            rig.feed(input, byteByByte);
            QCOMPARE(rig.log, log);
            const Rx320Sim &s = rig.sim;
            QCOMPARE(QStringLiteral("M%1 W%2 G%3 V%4 A%5").arg(s.mode()).arg(s.filterIndex()).arg(s.agc()).arg(s.speakerByte()).arg(s.lineByte()), state);
            QVERIFY2(std::fabs(s.tunedHz() - hz) < 1.0, qPrintable(QString::number(s.tunedHz(), 'f', 2)));
            QVERIFY(rig.out.isEmpty());
        }
    }

    void smeter_data()
    {
        QTest::addColumn<SimBand>("band");
        QTest::addColumn<QDateTime>("time");
        QTest::addColumn<QByteArray>("tune");
        QTest::addColumn<QByteArray>("reply"); // empty: any reply whose reading matches the band
        const QByteArray at10000 = tuneCmd(85, 239, 26, 169, 85, 80), nothing = bytes({'X', 0, 1, '\r'});
        QTest::newRow("strongest stays below 128") << oneStation(10000, 21) << utc(12, 0) << at10000 << bytes({'X', 0x7f, 0xff, '\r'});
        QTest::newRow("empty band reads 1") << SimBand(QVector<SimStation>{}) << utc(12, 0) << at10000 << nothing;
        QTest::newRow("station off the air") << oneStation(10000, 12, 600, 660) << utc(12, 0) << at10000 << nothing;
        QTest::newRow("tuned away from the station") << oneStation(10000, 12) << utc(12, 0) << tuneCmd(85, 13, 0, 13, 85, 80) << nothing;
        QTest::newRow("station on the air") << oneStation(10000, 12, 600, 660) << utc(10, 30) << at10000 << QByteArray();
        QTest::newRow("weak station") << oneStation(10000, 4) << utc(3, 17) << at10000 << QByteArray();
    }
    void smeter()
    {
        QFETCH(SimBand, band);
        QFETCH(QDateTime, time);
        QFETCH(QByteArray, tune);
        QFETCH(QByteArray, reply);
        TestEnv env;
        env.clock->set(time);
        Rig rig(band);
        rig.feed(tune + "X", false);
        QVERIFY2(rig.out.isEmpty(), "answered before the CR");
        rig.feed("\r", false);
        QVERIFY(rig.out.size() == 4 && rig.out.startsWith('X') && rig.out.endsWith('\r') && quint8(rig.out[1]) < 128);
        const int v = quint8(rig.out.at(1)) * 256 + quint8(rig.out.at(2));
        QCOMPARE(rig.log.last(), QStringLiteral("smeter %1").arg(v));
        if (!reply.isEmpty()) {
            QCOMPARE(rig.out, reply);
            return;
        }
        // What our program reads from the reply gives the band's level back, as closely as a
        // whole number allows.
        const double s = band.sUnits(10000, time, 8.0);
        QVERIFY2(s > 2 && std::fabs(1.4 * std::log(v) - s) < std::max(0.02, 0.75 / v), qPrintable(QString("%1 for S %2").arg(v).arg(s)));
    }
};

BRELVOX_TEST(TestRx320Sim)
#include "tst_rx320sim.moc"
