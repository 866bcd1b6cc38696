// The AR7030 simulator, driven byte by byte as a program on the serial line would drive it.
#include "sim/ar7030_sim.h"
#include "testmain.h"
#include "testutil.h"

#include <QtTest>
#include <cmath>
#include <map>

namespace {
QByteArray hex(const char *s) { return QByteArray::fromHex(s); }

// A simulator with its line and log captured.
struct Line {
    Ar7030Sim sim;
    QByteArray out;
    QStringList log;
    Line()
    {
        sim.transmit = [this](const QByteArray &b) { out += b; };
        sim.log = [this](const QString &s) { log << s; };
    }
    QByteArray ask(const QByteArray &bytes)
    {
        out.clear();
        sim.receive(bytes);
        return out;
    }
};

// Page and address as a program selects them, with the 0x1n byte for addresses above 255.
QByteArray bytesOf(std::initializer_list<int> v)
{
    QByteArray b;
    for (int x : v)
        b += char(x);
    return b;
}
QByteArray at(int page, int addr)
{
    const QByteArray b = bytesOf({0x50 | page, 0x30 | ((addr >> 4) & 0x0F), 0x40 | (addr & 0x0F)});
    return addr > 0xFF ? b + char(0x10 | ((addr >> 8) & 0x0F)) : b;
}
QByteArray data(int v) { return bytesOf({0x30 | ((v >> 4) & 0x0F), 0x60 | (v & 0x0F)}); }
QByteArray raw(quint32 w) { return bytesOf({int(w >> 16) & 0xFF, int(w >> 8) & 0xFF, int(w) & 0xFF}); }
QByteArray word(quint32 w) { return data(int(w >> 16) & 0xFF) + data(int(w >> 8) & 0xFF) + data(int(w) & 0xFF); }
quint32 wordFor(double khz) { return quint32(std::lround(khz * Ar7030Sim::kStepsPerKhz)); }
QByteArray tuneTo(double khz) { return at(0, 0x1A) + word(wordFor(khz)) + hex("21"); }

int field(const Ar7030Sim::State &s, const QString &name)
{
    using S = Ar7030Sim::State;
    static const std::map<QString, int S::*> m = {
        {"mode", &S::mode}, {"filter", &S::filter}, {"pbs", &S::pbs}, {"bfo", &S::bfo}, {"volume", &S::volume},
        {"bass", &S::bass}, {"treble", &S::treble}, {"auxRight", &S::auxRight}, {"rfGain", &S::rfGain},
        {"agc", &S::agc}, {"ifGain", &S::ifGain}, {"squelch", &S::squelch}};
    return name == "word" ? int(s.word) : name == "power" ? int(s.powerOn) : s.*m.at(name);
}
} // namespace

class TestAr7030Sim : public QObject {
    Q_OBJECT
private slots:
    // What the byte machine answers, which cells it writes and where its address ends.
    void byteMachine_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QByteArray>("reply");
        QTest::addColumn<QStringList>("cells"); // "page:addr=value", hex
        QTest::addColumn<int>("addressAfter");
        const QStringList none;
        QTest::newRow("address from two nibbles, write steps")
            << hex("50 31 4A 32 65") << QByteArray() << QStringList{"0:1A=25", "0:19=00"} << 0x1B;
        QTest::newRow("high nibble cleared after a write")
            << hex("50 32 48 3A 65 67") << QByteArray() << QStringList{"0:28=A5", "0:29=07"} << 0x2A;
        QTest::newRow("address byte clears the high nibble") << hex("50 33 4E 63") << QByteArray() << QStringList{"0:3E=03"} << 0x3F;
        QTest::newRow("page 2 above 255 needs the 0x1n byte")
            << hex("52 38 4C 11 3A 65") << QByteArray() << QStringList{"2:18C=A5", "2:8C=FF"} << 0x18D;
        QTest::newRow("0x1n sets bits 8..11 only")
            << hex("52 3F 4F 11 6A") << QByteArray() << QStringList{"2:1FF=0A", "2:FF=FF"} << 0x200;
        QTest::newRow("0x4n clears bits 8..11")
            << hex("52 30 48 11 30 48 37 67") << QByteArray() << QStringList{"2:08=77", "2:108=FF"} << 0x09;
        QTest::newRow("page 1 below 256 without 0x1n")
            << hex("51 3F 4F 34 62") << QByteArray() << QStringList{"1:FF=42", "2:FF=FF"} << 0x100;
        QTest::newRow("page 3 high address")
            << hex("53 3A 4B 1C 31 62 33 64") << QByteArray() << QStringList{"3:CAB=12", "3:CAC=34"} << 0xCAD;
        QTest::newRow("firmware page cannot be written") << hex("5F 40 30 60") << QByteArray() << QStringList{"F:0=37"} << 0x01;
        QTest::newRow("firmware text") << hex("5F 40 71 71 71 71 71 71 71 71") << QByteArray("7030_14A") << none << 8;
        QTest::newRow("reads step the address")
            << hex("50 31 4A 33 69 37 68 35 60 31 4A 71 71 71") << hex("39 78 50") << none << 0x1D;
        QTest::newRow("read after a write reads the next cell") << hex("50 33 40 34 62 71") << hex("00") << none << 0x32;
        QTest::newRow("read of page 2 above 255") << hex("52 39 4F 11 32 6B 39 4F 11 71 71") << hex("2B FF") << none << 0x1A1;
        QTest::newRow("filter widths as fitted") << hex("51 38 45 71 38 49 71 38 4D 71 39 41 71 39 45 71 39 49 71")
                                                 << hex("22 30 55 70 00 00") << none << 0x9A;
        QTest::newRow("routines, locks, fillers, unknown routines answer nothing")
            << hex("50 31 4A 21 22 23 2B 2C 81 83 80 90 A5 00 0F 2F 27 2A 2D") << QByteArray() << none << 0x1A;
    }
    void byteMachine()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QByteArray, reply);
        QFETCH(QStringList, cells);
        QFETCH(int, addressAfter);
        Line l;
        QCOMPARE(l.ask(bytes).toHex(' '), reply.toHex(' '));
        for (const QString &c : cells) {
            const int page = c.section(':', 0, 0).toInt(nullptr, 16);
            const int addr = c.section(':', 1).section('=', 0, 0).toInt(nullptr, 16);
            QVERIFY2(l.sim.peek(page, addr) == c.section('=', 1).toInt(nullptr, 16), qPrintable(c));
        }
        QCOMPARE(l.sim.address(), addressAfter);
        QCOMPARE(l.sim.nibble(), 0);
    }

    // A register written changes nothing until the routine that reads it runs.
    void routines_data()
    {
        QTest::addColumn<QString>("firmware");
        QTest::addColumn<QByteArray>("write");
        QTest::addColumn<QByteArray>("routine");
        QTest::addColumn<QString>("field");
        QTest::addColumn<int>("after"); // -1: the routine leaves it as it was
        const QString f14 = "7030_14A", f13 = "7030_13A";
        const QByteArray freq = at(0, 0x1A) + word(0x397850);
        QTest::newRow("frequency by 0x21") << f14 << freq << hex("21") << "word" << 0x397850;
        QTest::newRow("frequency by 0x2C") << f14 << freq << hex("2C") << "word" << 0x397850;
        QTest::newRow("frequency not by 0x22") << f14 << freq << hex("22 2B") << "word" << -1;
        QTest::newRow("vacant memory's word out of range")
            << f14 << at(0, 0x1A) + word(wordFor(32016.666)) << hex("21") << "word" << -1;
        QTest::newRow("mode by 0x22") << f14 << at(0, 0x1D) + hex("67") << hex("22 2B") << "mode" << 7;
        QTest::newRow("mode not by 0x21") << f14 << at(0, 0x1D) + hex("67") << hex("21 2B") << "mode" << -1;
        QTest::newRow("mode 0 refused") << f14 << at(0, 0x1D) + hex("60") << hex("22") << "mode" << -1;
        QTest::newRow("mode 8 refused") << f14 << at(0, 0x1D) + hex("68") << hex("22") << "mode" << -1;
        QTest::newRow("filter by 0x23") << f14 << at(0, 0x34) + hex("62") << hex("23 2B") << "filter" << 2;
        QTest::newRow("unfitted filter 5 refused") << f14 << at(0, 0x34) + hex("65") << hex("23") << "filter" << -1;
        QTest::newRow("pass band shift by 0x23") << f14 << at(0, 0x35) + data(0xF0) << hex("23 2B") << "pbs" << -16;
        QTest::newRow("BFO by 0x23") << f14 << at(0, 0x36) + data(0x2D) << hex("23 2B") << "bfo" << 45;
        QTest::newRow("volume by 0x25") << f14 << at(0, 0x1E) + data(0xF0) << hex("25") << "volume" << 0x30;
        QTest::newRow("volume not by 0x26") << f14 << at(0, 0x1E) + data(0x30) << hex("26") << "volume" << -1;
        QTest::newRow("bass by 0x25") << f14 << at(0, 0x21) + data(0xE7) << hex("25") << "bass" << 7;
        QTest::newRow("attenuator by 0x26") << f14 << at(0, 0x30) + hex("64") << hex("26") << "rfGain" << 4;
        QTest::newRow("squelch by 0x24") << f14 << at(0, 0x33) + data(0x50) << hex("24") << "squelch" << 0x50;
        // the power byte on page 1 takes effect at the reset routine
        QTest::newRow("off, as our program switches it off")
            << f14 << hex("83 50 32 48 60 60 60 29 50 32 4E 60 51 31 46 60") << hex("20") << "power" << 0;
        QTest::newRow("power byte without reset") << f14 << at(1, 0x16) + hex("60") << hex("22") << "power" << -1;
        QTest::newRow("firmware 13 sets all by 0x24") << f13 << at(0, 0x30) + hex("64") << hex("24") << "rfGain" << 4;
        QTest::newRow("firmware 13 has no routine 5") << f13 << at(0, 0x1E) + data(0x30) << hex("25") << "volume" << -1;
        QTest::newRow("firmware 13 has no routine 6") << f13 << at(0, 0x30) + hex("64") << hex("26") << "rfGain" << -1;
    }
    void routines()
    {
        QFETCH(QString, firmware);
        QFETCH(QByteArray, write);
        QFETCH(QByteArray, routine);
        QFETCH(QString, field);
        QFETCH(int, after);
        Line l;
        l.sim.setFirmware(firmware);
        const int before = ::field(l.sim.state(), field);
        QVERIFY(before != after);
        l.sim.receive(write);
        QCOMPARE(::field(l.sim.state(), field), before);
        l.sim.receive(routine);
        QCOMPARE(::field(l.sim.state(), field), after == -1 ? before : after);
        QCOMPARE(l.out, QByteArray());
    }

    // A memory cell lives in three places: word and flags, pass band shift, squelch or BFO.
    void memories_data()
    {
        QTest::addColumn<int>("n");
        QTest::addColumn<double>("khz");
        QTest::addColumn<QByteArray>("bytes"); // flags, pass band shift, squelch
        QTest::newRow("0") << 0 << 153.0 << hex("12 05 10");
        QTest::newRow("63") << 63 << 15400.0 << hex("A7 FB 80");
        QTest::newRow("99") << 99 << 29999.0 << hex("26 7F FF");
    }
    void memories()
    {
        QFETCH(int, n);
        QFETCH(double, khz);
        QFETCH(QByteArray, bytes);
        Line l;
        auto cell = [&](int m) { const auto c = l.sim.memoryCell(m); return QList<int>{int(c.word), c.pbs, c.squelchBfo}; };
        const QList<int> prev = cell(n - 1), next = cell(n + 1);
        const int flags = quint8(bytes[0]), pbs = quint8(bytes[1]), sql = quint8(bytes[2]);
        const quint32 w = wordFor(khz);
        l.sim.receive(at(2, n * 4) + word(w) + data(flags) + at(2, n + 400) + data(pbs) + at(1, n + 156) + data(sql));
        const auto c = l.sim.memoryCell(n);
        QCOMPARE(cell(n), (QList<int>{int(w), pbs > 127 ? pbs - 256 : pbs, sql}));
        QCOMPARE(QList<int>({c.mode, c.filter, int(c.scanSkip)}), QList<int>({flags & 0x0F, (flags >> 4) & 7, flags >> 7}));
        QCOMPARE(cell(n - 1), prev); // the neighbours keep what they had
        QCOMPARE(cell(n + 1), next);
        // a program reads the cell back from the same places; storing it does not retune
        const QByteArray back = l.ask(at(2, n * 4) + hex("71 71 71 71") + at(2, n + 400) + hex("71") + at(1, n + 156) + hex("71"));
        QCOMPARE(back.toHex(' '), (raw(w) + bytes).toHex(' '));
        QVERIFY(std::fabs(l.sim.frequencyKhz() - khz) > 1);
    }

    // The meter bytes and the signal routine follow the band at the frequency and the clock.
    void signal_data()
    {
        QTest::addColumn<double>("khz");
        QTest::addColumn<QTime>("utc");
        QTest::addColumn<double>("low");
        QTest::addColumn<double>("high");
        QTest::newRow("strong station on air") << 9410.0 << QTime(12, 0) << 15.4 << 18.0;
        QTest::newRow("same frequency off air") << 9410.0 << QTime(3, 0) << 0.0 << 1.0;
        QTest::newRow("weak station") << 3330.0 << QTime(12, 0) << 5.4 << 8.6;
        QTest::newRow("station of the evening, in the evening") << 5975.0 << QTime(20, 0) << 11.4 << 14.6;
        QTest::newRow("empty channel") << 8123.0 << QTime(12, 0) << 0.0 << 1.0;
    }
    void signal()
    {
        QFETCH(double, khz);
        QFETCH(QTime, utc);
        QFETCH(double, low);
        QFETCH(double, high);
        TestEnv env;
        const QDateTime t(QDate(2026, 3, 14), utc, Qt::UTC);
        env.clock->set(t);
        Line l;
        l.sim.receive(tuneTo(khz));
        const double band = l.sim.band().sUnits(l.sim.frequencyKhz(), t, l.sim.filterKhz(l.sim.filter()));
        // the meter as our program reads it: compressed above S 11.5
        const QByteArray b = l.ask(hex("50 33 4F 71 50 34 40 71"));
        QVERIFY(b.size() == 2 && quint8(b[1]) < 5);
        const double s = quint8(b[0]) + quint8(b[1]) / 5.0, r = std::min(18.0, s > 11.5 ? s + (s - 11.5) * 0.66 : s);
        QVERIFY2(r >= low && r <= high && std::fabs(r - std::min(18.0, band)) < 0.2, qPrintable(QString("reads %1, band %2").arg(r).arg(band)));
        // routine 14 answers the raw reading; the calibration table on page 2 (the reading at -113 dBm,
        // then its rise to -103, -93, -83, -73, -63, -43, -23) turns it into dBm
        const QByteArray raw = l.ask(hex("2E")), table = l.ask(at(2, 500) + hex("71 71 71 71 71 71 71 71"));
        QVERIFY(raw.size() == 1 && table.size() == 8);
        const int dbmAt[8] = {-113, -103, -93, -83, -73, -63, -43, -23};
        for (int i = 0, point = 0; i < 8; ++i) {
            point += quint8(table[i]);
            QCOMPARE(point, 2 * (dbmAt[i] + 127));
        }
        const double dbm = std::clamp(quint8(raw[0]) / 2.0 - 127, -113.0, -23.0);
        QVERIFY2(std::fabs(dbm - std::clamp(-127 + 6 * band, -113.0, -23.0)) <= 1, qPrintable(QString::number(dbm)));
    }

    // In standby the meter and the power flag on page 0 read nothing; silent, it obeys but never answers.
    void standbyAndSilence()
    {
        TestEnv env;
        env.clock->set(QDateTime(QDate(2026, 3, 14), QTime(12, 0), Qt::UTC)); // 9410 kHz on the air
        Line l;
        l.sim.receive(hex("51 31 46 60 20"));
        QCOMPARE(l.ask(hex("50 33 4F 71 71 50 32 4E 71")), hex("00 00 00"));
        l.sim.receive(hex("51 31 46 61 20"));
        QCOMPARE(l.ask(hex("50 32 4E 71")), hex("01"));
        QVERIFY(l.ask(hex("50 33 4F 71 71")) != hex("00 00"));
        l.sim.setSilent(true);
        QCOMPARE(l.ask(hex("5F 40 71 71 50 33 4F 71 2E") + at(0, 0x1D) + hex("66 22")), QByteArray());
        l.sim.setSilent(false);
        QCOMPARE(l.ask(hex("50 31 4D 71")), hex("06"));
    }

    // The receiver's clock runs with the wall clock from wherever it was set.
    void clock_data()
    {
        QTest::addColumn<QByteArray>("set"); // bytes after the address, or empty
        QTest::addColumn<int>("laterSecs");
        QTest::addColumn<QByteArray>("reads"); // seconds, minutes, hours
        QTest::newRow("as the wall clock, running") << QByteArray() << 65 << hex("05 01 12");
        QTest::newRow("set, over midnight") << hex("35 69 33 60 32 63 24") << 31 << hex("30 31 23");
        QTest::newRow("set, past midnight") << hex("35 69 35 69 32 63") << 1 << hex("00 00 00");
    }
    void clock()
    {
        QFETCH(QByteArray, set);
        QFETCH(int, laterSecs);
        QFETCH(QByteArray, reads);
        TestEnv env;
        env.clock->set(QDateTime(QDate(2026, 3, 14), QTime(12, 0)));
        Line l;
        if (!set.isEmpty())
            l.sim.receive(hex("51 30 42") + set);
        env.clock->advanceSecs(laterSecs);
        QCOMPARE(l.ask(hex("51 30 42 71 71 71")).toHex(' '), reads.toHex(' '));
    }

    // What the log tells a listener.
    void log_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QStringList>("lines");
        QTest::newRow("routine 5 on firmware 13") << hex("25") << QStringList{"unknown routine 5 ignored"};
        // the frequency as dialled: the roundest value whose word this is
        const QStringList writes{"write page 0 addr 0x1A = 0x", "write page 0 addr 0x1B = 0x", "write page 0 addr 0x1C = 0x"};
        QTest::newRow("tune 10 MHz") << tuneTo(10000) << writes + QStringList{"tune 10000.000 kHz"};
        QTest::newRow("tune odd Hz") << tuneTo(6070.123) << writes + QStringList{"tune 6070.123 kHz"};
        QTest::newRow("mode") << hex("50 31 4D 67 22 2B") << QStringList{"write page 0 addr 0x1D = 0x07", "mode USB", "display updated"};
        QTest::newRow("filter") << hex("50 33 44 62 23")
                                << QStringList{"write page 0 addr 0x34 = 0x02", "filter 2 (3.0 kHz), pass band shift 0, BFO 0"};
        QTest::newRow("read") << hex("50 31 4D 71") << QStringList{"read page 0 addr 0x1D = 0x01"};
        QTest::newRow("lock") << hex("83 80") << QStringList{"lock level 3", "lock level 0"};
        QTest::newRow("set all") << hex("50 33 40 63 24")
                                 << QStringList{"write page 0 addr 0x30 = 0x03",
                                                "set all: tune 9410.000 kHz; mode AM; filter 3 (5.5 kHz)"
                                                ", pass band shift 0, BFO 0; audio: volume 40/63, bass 15, treble 6, line out 45/45"
                                                "; RF gain -20 dB, AGC medium, IF gain down 0 steps; squelch 0"};
    }
    void log()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QStringList, lines);
        Line l;
        l.sim.setFirmware("7030_13A"); // the log reads the same on 14, less routines 5 and 6
        l.sim.receive(bytes);
        QCOMPARE(l.log.size(), lines.size());
        for (int i = 0; i < lines.size(); ++i)
            QVERIFY2(l.log[i].startsWith(lines[i]), qPrintable(l.log[i]));
    }
};

BRELVOX_TEST(TestAr7030Sim)
#include "tst_ar7030sim.moc"
