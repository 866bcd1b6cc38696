#include "clsAR7030.h"
#include "core/numtext.h"
#include "core/session_clock.h"
#include "core/shared_state.h"
#include "memory/mem_record.h"
#include "serial/comm_line.h"

#include <QCoreApplication>
#include <algorithm>
#include <cmath>

int16_t rxFirmware = 0;

namespace {
constexpr int kLoopguardMs = 300;
// How long one wait on the line lasts inside the guarded read before events run again.
constexpr int kPollMs = 5;

// One-byte commands: the reset routine, and a read that steps the address by one.
constexpr char kReset = 0x20;
constexpr char kReadByte = 0x71;

// Registers on page 0.
constexpr int kSquelchCopy = 0x17;
constexpr int kIfgain = 0x18;
constexpr int kFrequency = 0x1A;
constexpr int kMode = 0x1D;
constexpr int kVolume = 0x1E;
constexpr int kBass = 0x21;
constexpr int kTreble = 0x22;
constexpr int kAuxLeft = 0x23;
constexpr int kAuxRight = 0x24;
constexpr int kAttenuator = 0x30;
constexpr int kAgc = 0x32;
constexpr int kSquelch = 0x33;
constexpr int kFilter = 0x34;
constexpr int kPbs = 0x35;
constexpr int kBfo = 0x36;
constexpr int kSmeterWhole = 0x3F;
constexpr int kSmeterFifths = 0x40;
// Page 1.
constexpr int kClock = 0x02;
constexpr int kPower = 0x16;
constexpr int kFilterWidth1 = 0x85; // filter n at 0x85 + 4 * (n - 1)
constexpr int kMemSqlBfo = 156;     // cell n at 156 + n
// Page 2: cell n's frequency word and flags at 4 * n, its pass band shift at 400 + n.
constexpr int kMemPbs = 400;

QByteArray bytes(std::initializer_list<int> v)
{
    QByteArray b;
    for (int x : v)
        b += char(uint8_t(x));
    return b;
}

double floorDiv(double a, double b) { return std::floor(a / b); }

// The memory record, taken apart by position as everywhere else in the program. Only the
// record's layout is used here: the memory library sits above the drivers.
double fieldVal(const QString &rec, memfield::Field f) { return numtext::Val(rec.mid(f.pos - 1, f.len)); }

QString vacantRecord(int n)
{
    return QStringLiteral("XXX") + numtext::format(n, QStringLiteral("000"))
        + QStringLiteral(" No data  @ @@ @ @ @@@ @@@ @ ");
}

int bcdValue(int b) { return (b >> 4) * 10 + (b & 0x0F); }
} // namespace

int16_t ar7030FirmwareNumber(const QString &firmware)
{
    return numtext::toInt16(numtext::Val(firmware.mid(5, 2)));
}

float ar7030SmeterCalibration(float s)
{
    double r = s;
    // The meter is compressed above S 11.5; this undoes it.
    if (s > 11.5f)
        r = s + (s - 11.5) * 0.66;
    return float(std::clamp(r, 0.0, 18.0));
}

namespace ar7030 {
QByteArray page(int n) { return bytes({0x50 | (n & 0x0F)}); }

QByteArray address(int addr)
{
    QByteArray b = bytes({0x30 | ((addr >> 4) & 0x0F), 0x40 | (addr & 0x0F)});
    if (addr > 0xFF)
        b += char(0x10 | ((addr >> 8) & 0x0F));
    return b;
}

QByteArray data(int v) { return bytes({0x30 | ((v >> 4) & 0x0F), 0x60 | (v & 0x0F)}); }

QByteArray word(int64_t w)
{
    QByteArray b;
    for (int shift = 20; shift >= 0; shift -= 4) {
        const int nib = int((w >> shift) & 0x0F);
        b += char((shift / 4) % 2 == 1 ? 0x30 | nib : 0x60 | nib);
    }
    return b;
}
} // namespace ar7030

void clsAR7030::send(const QByteArray &b) { comm().Output(b); }

bool clsAR7030::readbyte(int16_t &value)
{
    QTimer &guard = SessionTimers::instance().tmrLoopguard;
    guard.setInterval(kLoopguardMs);
    guard.start();
    comm().setInBufferCount(0);
    send(bytes({kReadByte}));
    bool got = false;
    value = 0;
    for (;;) {
        // The guard's tick switches it off: that is the time-out. A read started by a handler
        // during the pumping below restarts the one guard and stops it when done: this read
        // then times out.
        if (!guard.isActive())
            break;
        QCoreApplication::processEvents();
        if (comm().InBufferCount() != 0) {
            const QByteArray in = comm().Input();
            value = int16_t(uint8_t(in.at(0)));
            got = true;
            break;
        }
        if (comm().waitsCut())
            break; // the device is gone or the window is closing: a time-out, now
        // Sleep on the line rather than spin; a closed line cannot wake us, the guard can.
        if (comm().PortOpen())
            comm().waitForBytes(kPollMs);
        else
            QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
    guard.stop();
    return got;
}

void clsAR7030::Reset() { send(bytes({kReset})); }

QString clsAR7030::Firmware()
{
    // Page 15, address 0: with no 0x3n before it, 0x40 alone selects address 0.
    send(ar7030::page(15) + bytes({0x40}));
    QString text;
    for (int i = 0; i < 8; ++i) {
        int16_t b = 0;
        readbyte(b);
        text += QChar(char16_t(b));
    }
    return text;
}

int16_t clsAR7030::readRegister(int addr)
{
    send(ar7030::page(0) + ar7030::address(addr));
    int16_t b = 0;
    readbyte(b);
    return b;
}

void clsAR7030::writeRegister(int addr, const QByteArray &dataBytes, const QByteArray &routine)
{
    send(ar7030::page(0) + ar7030::address(addr) + dataBytes + routine);
}

QByteArray clsAR7030::gainRoutine() const { return bytes({rxFirmware < 14 ? 0x24 : 0x26}); }
QByteArray clsAR7030::audioRoutine() const { return bytes({rxFirmware < 14 ? 0x24 : 0x25}); }

// --- power ---

int16_t clsAR7030::PowerOnOff()
{
    send(ar7030::page(1) + ar7030::address(kPower));
    int16_t b = 0;
    readbyte(b);
    return int16_t(b & 1);
}

void clsAR7030::setPowerOnOff(int16_t v)
{
    if (v == 1) {
        send(ar7030::page(1) + ar7030::address(kPower) + bytes({0x61}));
        send(bytes({kReset}));
    } else if (v == 0) {
        // The receiver's own switch-off sequence; the last bytes clear the power bit and reset.
        send(bytes({0x83}));
        send(ar7030::page(0));
        send(bytes({0x32, 0x48}));
        send(bytes({0x60, 0x60, 0x60}));
        send(bytes({0x29}));
        send(ar7030::page(0));
        send(bytes({0x32, 0x4E}));
        send(bytes({0x60}));
        send(ar7030::page(1));
        send(ar7030::address(kPower));
        send(bytes({0x60}));
        send(bytes({kReset}));
    }
    emit PoweronoffChanged(v);
}

// --- single-nibble registers ---

int16_t clsAR7030::Attenuator() { return readRegister(kAttenuator); }

void clsAR7030::setAttenuator(int16_t v)
{
    writeRegister(kAttenuator, bytes({0x60 | (v & 0x0F)}), gainRoutine());
    emit AttenuatorChanged(v);
}

int16_t clsAR7030::Agcspeed() { return readRegister(kAgc); }

void clsAR7030::setAgcspeed(int16_t v)
{
    writeRegister(kAgc, bytes({0x60 | (v & 0x0F)}), gainRoutine());
    emit AgcspeedChanged(v);
}

int16_t clsAR7030::Bandwidth() { return readRegister(kFilter); }

void clsAR7030::setBandwidth(int16_t &v)
{
    writeRegister(kFilter, bytes({0x60 | (v & 0x0F)}), bytes({0x23, 0x2B}));
    emit BandwidthChanged(v);
}

int16_t clsAR7030::Mode() { return readRegister(kMode); }

void clsAR7030::setMode(int16_t v)
{
    writeRegister(kMode, bytes({0x60 | (v & 0x0F)}), bytes({0x22, 0x2B}));
    emit ModeChanged(v);
}

// --- byte registers ---

int16_t clsAR7030::PassBandShift() { return readRegister(kPbs); }

void clsAR7030::setPassBandShift(int16_t v)
{
    writeRegister(kPbs, ar7030::data(v), bytes({0x23, 0x2B}));
    emit PassbandshiftChanged(v);
}

int16_t clsAR7030::Beatfreqosc() { return readRegister(kBfo); }

void clsAR7030::setBeatfreqosc(int16_t v)
{
    writeRegister(kBfo, ar7030::data(v), bytes({0x23, 0x2B}));
    emit BeatfreqoscChanged(v);
}

int16_t clsAR7030::Squelch() { return readRegister(kSquelch); }

void clsAR7030::setSquelch(int16_t v)
{
    // The receiver keeps a second copy of the squelch level at 0x17.
    send(ar7030::page(0) + ar7030::address(kSquelch) + ar7030::data(v) + ar7030::address(kSquelchCopy)
         + ar7030::data(v) + bytes({0x24}));
    emit SquelchChanged(v);
}

int16_t clsAR7030::Ifgain()
{
    const int16_t b = readRegister(kIfgain);
    return numtext::cint(99 - b * 0.74);
}

void clsAR7030::setIfgain(int16_t v)
{
    const double x = std::clamp(numtext::roundHalfEven((99 - v) / 0.74), 0.0, 130.0);
    writeRegister(kIfgain, ar7030::data(numtext::toInt(x)), gainRoutine());
    emit IfgainChanged(v);
}

// --- levels and tone: the upper bits of their bytes belong to the receiver ---

void clsAR7030::writeLevel(int addr, int x, int keep)
{
    send(ar7030::page(0) + ar7030::address(addr));
    int16_t b = 0;
    readbyte(b);
    send(ar7030::page(0) + ar7030::address(addr) + ar7030::data((b & keep) | x) + audioRoutine());
}

int16_t clsAR7030::Volume()
{
    const int16_t b = readRegister(kVolume);
    return numtext::toInt16(std::floor(((b & 0x3F) - 15) / 0.481));
}

void clsAR7030::setVolume(int16_t v)
{
    const int x = std::clamp(numtext::toInt(std::floor(v * 0.485 + 15.5)), 15, 63);
    writeLevel(kVolume, x, 0xC0);
    emit VolumeChanged(v);
}

int16_t clsAR7030::Leftauxlevel()
{
    const int16_t b = readRegister(kAuxLeft);
    return numtext::toInt16(std::floor(((b & 0x3F) - 27) / 0.361));
}

void clsAR7030::setLeftauxlevel(int16_t v)
{
    const int x = std::clamp(numtext::toInt(std::floor(v * 0.364 + 27.5)), 27, 63);
    writeLevel(kAuxLeft, x, 0xC0);
    emit LeftauxlevelChanged(v);
}

int16_t clsAR7030::Rightauxlevel()
{
    const int16_t b = readRegister(kAuxRight);
    return numtext::toInt16(std::floor(((b & 0x3F) - 27) / 0.361));
}

void clsAR7030::setRightauxlevel(int16_t v)
{
    const int x = std::clamp(numtext::toInt(std::floor(v * 0.364 + 27.5)), 27, 63);
    writeLevel(kAuxRight, x, 0xC0);
    emit RightauxlevelChanged(v);
}

int16_t clsAR7030::Bass()
{
    const int16_t b = readRegister(kBass);
    return int16_t((b & 0x1F) - 15);
}

void clsAR7030::setBass(int16_t v)
{
    const int x = std::clamp(v + 15, 7, 23);
    writeLevel(kBass, x, 0xE0);
    emit BassChanged(v);
}

int16_t clsAR7030::Treble()
{
    const int16_t b = readRegister(kTreble);
    return int16_t(((b & 0x0F) - 6) * 2);
}

void clsAR7030::setTreble(int16_t v)
{
    const int x = std::clamp(numtext::toInt(std::floor(v * 0.5 + 6)), 2, 10);
    writeLevel(kTreble, x, 0xF0);
    emit TrebleChanged(v);
}

// --- frequency ---

double clsAR7030::FrequencyA()
{
    send(ar7030::page(0) + ar7030::address(kFrequency));
    double w = 0;
    for (int i = 0; i < 3; ++i) {
        int16_t b = 0;
        // A byte that does not come ends the word: the result is what has come so far.
        if (!readbyte(b))
            break;
        w = w * 256 + b;
    }
    return w / kAr7030WordPerKhzRead;
}

void clsAR7030::setFrequencyA(double khz)
{
    const auto w = numtext::toInt(std::floor(khz * kAr7030WordPerKhzWrite + 0.5));
    send(ar7030::page(0) + ar7030::address(kFrequency) + ar7030::word(w) + bytes({0x21, 0x2C}));
    emit FrequencyAChanged(khz);
}

void clsAR7030::Installedfilter(int16_t &n, QString &text)
{
    send(ar7030::page(1));
    if (n >= 1 && n <= 6)
        send(ar7030::address(kFilterWidth1 + 4 * (n - 1)));
    int16_t b = 0;
    readbyte(b);
    if (b == 255) // an empty slot may read as erased memory
        b = 0;
    text = QString::number(b / 16) + u'.' + QString::number(b & 0x0F);
    n = b;
}

float clsAR7030::Smeter()
{
    const int16_t a = readRegister(kSmeterWhole);
    const int16_t b = readRegister(kSmeterFifths);
    const float s = float(a + b / 5.0);
    return ar7030SmeterCalibration(s);
}

// --- memories ---

QString clsAR7030::Memory(int16_t n)
{
    send(ar7030::page(2) + ar7030::address(n * 4));
    double w = 0;
    for (int i = 0; i < 3; ++i) {
        int16_t b = 0;
        readbyte(b);
        w = w * 256 + b;
    }
    const double f = w / kAr7030WordPerKhzRead;
    // A cell tuned outside the receiver's range is how the receiver marks it empty.
    if (f < freqLowerLimit || f >= freqUpperLimit)
        return vacantRecord(n);

    int16_t flags = 0, pbs = 0, sqlBfo = 0;
    readbyte(flags);
    send(ar7030::page(2) + ar7030::address(n + kMemPbs));
    readbyte(pbs);
    send(ar7030::page(1) + ar7030::address(n + kMemSqlBfo));
    readbyte(sqlBfo);

    const QString khzText = numtext::commaToPoint(numtext::format(f, QStringLiteral("#####.00")));
    const QString hz = numtext::format(numtext::Val(khzText) * 1000, QStringLiteral("00000000"));
    const int mode = flags & 0x0F;
    const int filter = (flags >> 4) & 0x07;
    const int scanSkip = (flags >> 7) & 1;
    return QStringLiteral("MEM") + numtext::format(n, QStringLiteral("000")) + u' ' + hz + u' '
        + numtext::format(mode, QStringLiteral("#")) + u' ' + numtext::format(filter, QStringLiteral("00"))
        + QStringLiteral(" @ @ ") + numtext::format(pbs, QStringLiteral("000")) + u' '
        + numtext::format(sqlBfo, QStringLiteral("000")) + u' ' + numtext::format(scanSkip, QStringLiteral("0"))
        + u' ';
}

void clsAR7030::setMemory(int16_t n, const QString &record)
{
    QString rec = record;
    // An empty cell is stored as one tuned above every limit, with the scan flag set.
    if (rec.left(3) == QLatin1String("XXX"))
        rec = rec.left(7) + QStringLiteral("32016666 0 00 @ @ 000 000 1");

    const double khz = fieldVal(rec, memfield::frequency) / 1000;
    const auto w = numtext::toInt(std::floor(khz * kAr7030WordPerKhzWrite + 0.5));
    const int mode = numtext::toInt(fieldVal(rec, memfield::mode));
    const int filter = numtext::toInt(fieldVal(rec, memfield::bandwidth));
    const int high = filter + (fieldVal(rec, memfield::scan) == 1 ? 8 : 0);
    send(ar7030::page(2) + ar7030::address(n * 4) + ar7030::word(w)
         + bytes({0x30 | (high & 0x0F), 0x60 | (mode & 0x0F)}));
    send(ar7030::page(2) + ar7030::address(n + kMemPbs) + ar7030::data(numtext::toInt(fieldVal(rec, memfield::pbs))));
    send(ar7030::page(1) + ar7030::address(n + kMemSqlBfo) + ar7030::data(numtext::toInt(fieldVal(rec, memfield::sqlBfo))));
}

// --- clock ---

QString clsAR7030::RxClock()
{
    send(ar7030::page(1) + ar7030::address(kClock));
    QString part[3]; // seconds, minutes, hours
    for (QString &p : part) {
        int16_t b = 0;
        readbyte(b);
        p = numtext::format(bcdValue(b), QStringLiteral("00"));
    }
    return part[2] + u':' + part[1] + u':' + part[0];
}

void clsAR7030::setRxClock(const QString &hhmmss)
{
    auto bcdBytes = [](double v) {
        const int tens = numtext::toInt(floorDiv(v, 10));
        const int units = numtext::toInt(v - tens * 10);
        return bytes({0x30 | (tens & 0x0F), 0x60 | (units & 0x0F)});
    };
    const double seconds = numtext::Val(hhmmss.right(2));
    const double minutes = numtext::Val(hhmmss.mid(3, 2));
    const double hours = numtext::Val(hhmmss.left(2));
    send(ar7030::page(1) + ar7030::address(kClock) + bcdBytes(seconds) + bcdBytes(minutes) + bcdBytes(hours)
         + bytes({0x24}));
}
