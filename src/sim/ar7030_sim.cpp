#include "ar7030_sim.h"
#include "ui/facades.h"

#include <QDateTime>
#include <algorithm>
#include <cmath>

namespace {
constexpr int kPage0Size = 256;
constexpr int kPage1Size = 256;
constexpr int kPage2Size = 512;
constexpr int kBigPageSize = 4096;
constexpr int kFirmwareSize = 8;
constexpr double kTopKhz = 32000.0;

int bcd(int v) { return ((v / 10) % 10) * 16 + v % 10; }
int fromBcd(quint8 b) { return (b >> 4) * 10 + (b & 0x0F); }
int signedByte(quint8 b) { return b < 128 ? b : b - 256; }
QString hex2(int v) { return QStringLiteral("0x") + QStringLiteral("%1").arg(v, 2, 16, QLatin1Char('0')).toUpper(); }

// The frequency as a listener would have dialled it: the roundest value (whole kHz, then
// 100, 10, 1 Hz) whose nearest synthesiser word is this one.
QString dialled(quint32 w)
{
    const double khz = w / Ar7030Sim::kStepsPerKhz;
    for (double unit : {1.0, 0.1, 0.01, 0.001}) {
        const double v = std::round(khz / unit) * unit;
        if (quint32(std::lround(v * Ar7030Sim::kStepsPerKhz)) == w)
            return QString::number(v, 'f', 3);
    }
    return QString::number(khz, 'f', 3);
}

QString attenuatorText(int v)
{
    static const char *const db[] = {"+10 dB", "0 dB", "-10 dB", "-20 dB", "-30 dB", "-40 dB"};
    return v >= 0 && v <= 5 ? QString::fromLatin1(db[v]) : QStringLiteral("setting %1").arg(v);
}

QString agcText(int v)
{
    static const char *const s[] = {"fast", "medium", "slow", "off"};
    return v >= 0 && v <= 3 ? QString::fromLatin1(s[v]) : QStringLiteral("setting %1").arg(v);
}
} // namespace

Ar7030Sim::Ar7030Sim()
    : page0_(kPage0Size, '\0'), page1_(kPage1Size, '\0'), page2_(kPage2Size, char(0xFF)),
      page3_(kBigPageSize, char(0xFF)), page4_(kBigPageSize, char(0xFF)), page15_(kFirmwareSize, ' ')
{
    setFirmware(QStringLiteral("7030_14A"));

    const quint32 w = quint32(std::lround(9410.0 * kStepsPerKhz));
    poke(0, RegFrequency, quint8(w >> 16));
    poke(0, RegFrequency + 1, quint8(w >> 8));
    poke(0, RegFrequency + 2, quint8(w));
    poke(0, RegMode, 1);
    poke(0, RegVolume, 40);
    poke(0, RegBass, 15);  // flat
    poke(0, RegTreble, 6); // flat
    poke(0, RegAuxLeft, 45);
    poke(0, RegAuxRight, 45);
    poke(0, RegRfGain, 1);
    poke(0, RegAgc, 1);
    poke(0, RegFilter, 3);

    poke(1, Reg1Power, 1);
    // Four filters fitted, two slots empty.
    const quint8 widths[6] = {0x22, 0x30, 0x55, 0x70, 0x00, 0x00};
    for (int n = 1; n <= 6; ++n)
        setFilterWidth(n, widths[n - 1]);

    // A few stations of the band stored in the first memories; the rest stay erased.
    const auto &st = band_.stations();
    for (int n = 0; n < std::min<int>(10, st.size()); ++n) {
        const quint32 mw = quint32(std::lround(st[n].khz * kStepsPerKhz));
        poke(2, 4 * n, quint8(mw >> 16));
        poke(2, 4 * n + 1, quint8(mw >> 8));
        poke(2, 4 * n + 2, quint8(mw));
        poke(2, 4 * n + 3, 0x31); // filter 3, AM, scanned
        poke(2, kMemoryPbs + n, 0);
        poke(1, Reg1MemorySqlBfo + n, 0);
    }

    static const int dbm[8] = {-113, -103, -93, -83, -73, -63, -43, -23};
    for (int i = 0; i < 8; ++i)
        poke(2, kSignalCalibration + i, quint8(2 * (dbm[i] - (i ? dbm[i - 1] : -127))));

    state_.powerOn = true;
    poke(0, RegPowerFlags, 1);
    applyAll();
}

void Ar7030Sim::setFirmware(const QString &text)
{
    const QByteArray t = text.toLatin1().leftJustified(kFirmwareSize, ' ', true);
    page15_ = t;
}

QString Ar7030Sim::firmware() const { return QString::fromLatin1(page15_); }

int Ar7030Sim::firmwareNumber() const { return page15_.mid(5, 2).toInt(); }

QByteArray &Ar7030Sim::pageBytes(int page)
{
    switch (page) {
    case 0: return page0_;
    case 1: return page1_;
    case 2: return page2_;
    case 3: return page3_;
    case 4: return page4_;
    default: return page15_;
    }
}

const QByteArray *Ar7030Sim::pageBytesOrNull(int page) const
{
    switch (page) {
    case 0: return &page0_;
    case 1: return &page1_;
    case 2: return &page2_;
    case 3: return &page3_;
    case 4: return &page4_;
    case 15: return &page15_;
    default: return nullptr;
    }
}

quint8 Ar7030Sim::peek(int page, int addr) const
{
    const QByteArray *p = pageBytesOrNull(page);
    if (!p)
        return 0xFF; // no memory there: the bus floats high
    return quint8(p->at(addr % p->size()));
}

void Ar7030Sim::poke(int page, int addr, quint8 value)
{
    if (!pageBytesOrNull(page))
        return;
    QByteArray &p = pageBytes(page);
    p[addr % p.size()] = char(value);
}

void Ar7030Sim::setFilterWidth(int n, quint8 bcdWidth)
{
    if (n >= 1 && n <= 6)
        poke(1, Reg1FilterWidth + 4 * (n - 1), bcdWidth);
}

double Ar7030Sim::filterKhz(int n) const
{
    if (n < 1 || n > 6)
        return 0;
    const quint8 b = peek(1, Reg1FilterWidth + 4 * (n - 1));
    if (b == 0xFF)
        return 0;
    return (b >> 4) + (b & 0x0F) / 10.0;
}

Ar7030Sim::MemoryCell Ar7030Sim::memoryCell(int n) const
{
    MemoryCell m;
    if (n < 0 || n >= kMemories)
        return m;
    m.word = (quint32(peek(2, 4 * n)) << 16) | (quint32(peek(2, 4 * n + 1)) << 8) | peek(2, 4 * n + 2);
    m.khz = m.word / kStepsPerKhz;
    const quint8 flags = peek(2, 4 * n + 3);
    m.mode = flags & 0x0F;
    m.filter = (flags >> 4) & 0x07;
    m.scanSkip = flags & 0x80;
    m.pbs = signedByte(peek(2, kMemoryPbs + n));
    m.squelchBfo = peek(1, Reg1MemorySqlBfo + n);
    return m;
}

QString Ar7030Sim::modeName(int mode)
{
    static const char *const names[] = {"AM", "Sync", "NFM", "Data", "CW", "LSB", "USB"};
    return mode >= 1 && mode <= 7 ? QString::fromLatin1(names[mode - 1]) : QStringLiteral("?");
}

void Ar7030Sim::receive(const QByteArray &bytes)
{
    for (char c : bytes)
        command(quint8(c));
}

QString Ar7030Sim::where() const
{
    return QStringLiteral("page %1 addr %2").arg(page_).arg(hex2(addr_));
}

void Ar7030Sim::command(quint8 b)
{
    const int op = b >> 4;
    const int n = b & 0x0F;
    switch (op) {
    case 0x0:
    case 0x9:
    case 0xA:
        break; // accepted, nothing to do
    case 0x1:
        addr_ = (addr_ & 0xFF) | (n << 8);
        break;
    case 0x2:
        runRoutine(n);
        break;
    case 0x3:
        high_ = n;
        break;
    case 0x4:
        addr_ = (high_ << 4) | n;
        high_ = 0;
        break;
    case 0x5:
        page_ = n;
        break;
    case 0x6:
        writeByte(quint8((high_ << 4) | n));
        high_ = 0;
        break;
    case 0x7:
        readByte(quint8(n)); // 0x71, the usual read, steps by one
        break;
    case 0x8:
        note(QStringLiteral("lock level %1").arg(n));
        break;
    default:
        note(QStringLiteral("unknown command byte %1 ignored").arg(hex2(b)));
        break;
    }
}

void Ar7030Sim::writeByte(quint8 v)
{
    const QByteArray *p = pageBytesOrNull(page_);
    if (!p) {
        note(QStringLiteral("write %1 = %2: no memory there").arg(where(), hex2(v)));
    } else if (page_ == 15) {
        note(QStringLiteral("write %1 = %2: firmware text cannot be written").arg(where(), hex2(v)));
    } else {
        const bool clock = page_ == 1 && (addr_ % kPage1Size) >= Reg1Clock && (addr_ % kPage1Size) < Reg1Clock + 3;
        if (clock)
            refreshClock();
        poke(page_, addr_, v);
        if (clock)
            clockWritten();
        note(QStringLiteral("write %1 = %2").arg(where(), hex2(v)));
    }
    addr_ = (addr_ + 1) & 0xFFF;
}

void Ar7030Sim::readByte(quint8 step)
{
    const int a = page_ == 0 ? addr_ % kPage0Size : page_ == 1 ? addr_ % kPage1Size : -1;
    if (page_ == 0 && (a == RegSmeterBars || a == RegSmeterFifths))
        refreshSmeter();
    if (page_ == 1 && a >= Reg1Clock && a < Reg1Clock + 3)
        refreshClock();
    const quint8 v = peek(page_, addr_);
    if (silent_) {
        note(QStringLiteral("read %1 not answered (silent)").arg(where()));
    } else {
        note(QStringLiteral("read %1 = %2").arg(where(), hex2(v)));
        send(QByteArray(1, char(v)));
    }
    addr_ = (addr_ + step) & 0xFFF;
}

void Ar7030Sim::runRoutine(int n)
{
    switch (n) {
    case 0x0: {
        const bool on = peek(1, Reg1Power) & 1;
        state_.powerOn = on;
        poke(0, RegPowerFlags, quint8((peek(0, RegPowerFlags) & ~1) | (on ? 1 : 0)));
        if (!on) {
            note(QStringLiteral("reset: receiver goes to standby"));
            return;
        }
        note(QStringLiteral("reset: receiver on, ") + applyAll());
        return;
    }
    case 0x1:
        note(applyFrequency());
        return;
    case 0x2:
        note(applyMode());
        return;
    case 0x3:
        note(applyFilter());
        return;
    case 0x4:
        note(QStringLiteral("set all: ") + applyAll());
        return;
    case 0x5:
    case 0x6:
        if (firmwareNumber() < 14)
            break;
        note(n == 5 ? applyAudio() : applyGains());
        return;
    case 0x9:
        note(QStringLiteral("routine 9 run"));
        return;
    case 0xB:
        note(QStringLiteral("display updated"));
        return;
    case 0xC:
        note(QStringLiteral("retune: ") + applyFrequency());
        return;
    case 0xE: {
        // The one routine that answers: the signal strength as the raw byte the meter is made from.
        const quint8 raw = rawSignal();
        if (silent_) {
            note(QStringLiteral("signal strength %1 not answered (silent)").arg(raw));
            return;
        }
        note(QStringLiteral("signal strength %1 (%2 dBm)").arg(raw).arg(raw / 2 - 127));
        send(QByteArray(1, char(raw)));
        return;
    }
    default:
        break;
    }
    note(QStringLiteral("unknown routine %1 ignored").arg(n));
}

QString Ar7030Sim::applyFrequency()
{
    const quint32 w = (quint32(peek(0, RegFrequency)) << 16) | (quint32(peek(0, RegFrequency + 1)) << 8)
        | peek(0, RegFrequency + 2);
    const double khz = w / kStepsPerKhz;
    if (khz > kTopKhz)
        return QStringLiteral("frequency word %1 (%2 kHz) out of range: stays at %3 kHz")
            .arg(w).arg(dialled(w), dialled(state_.word));
    state_.word = w;
    state_.khz = khz;
    return QStringLiteral("tune %1 kHz").arg(dialled(w));
}

QString Ar7030Sim::applyMode()
{
    const int m = peek(0, RegMode);
    if (m < 1 || m > 7)
        return QStringLiteral("mode byte %1 not valid: mode stays %2").arg(hex2(m), modeName(state_.mode));
    state_.mode = m;
    return QStringLiteral("mode ") + modeName(m);
}

QString Ar7030Sim::applyFilter()
{
    QString s;
    const int f = peek(0, RegFilter);
    if (f < 1 || f > 6)
        s = QStringLiteral("filter byte %1 not valid: filter stays %2").arg(hex2(f)).arg(state_.filter);
    else if (filterKhz(f) <= 0)
        s = QStringLiteral("filter %1 not fitted: filter stays %2").arg(f).arg(state_.filter);
    else {
        state_.filter = f;
        s = QStringLiteral("filter %1 (%2 kHz)").arg(f).arg(filterKhz(f), 0, 'f', 1);
    }
    state_.pbs = signedByte(peek(0, RegPbs));
    state_.bfo = signedByte(peek(0, RegBfo));
    return s + QStringLiteral(", pass band shift %1, BFO %2").arg(state_.pbs).arg(state_.bfo);
}

QString Ar7030Sim::applyAudio()
{
    state_.volume = peek(0, RegVolume) & 0x3F;
    state_.bass = peek(0, RegBass) & 0x1F;
    state_.treble = peek(0, RegTreble) & 0x0F;
    state_.auxLeft = peek(0, RegAuxLeft) & 0x3F;
    state_.auxRight = peek(0, RegAuxRight) & 0x3F;
    return QStringLiteral("audio: volume %1/63, bass %2, treble %3, line out %4/%5")
        .arg(state_.volume).arg(state_.bass).arg(state_.treble).arg(state_.auxLeft).arg(state_.auxRight);
}

QString Ar7030Sim::applyGains()
{
    state_.rfGain = peek(0, RegRfGain);
    state_.agc = peek(0, RegAgc);
    state_.ifGain = peek(0, RegIfGain);
    return QStringLiteral("RF gain %1, AGC %2, IF gain down %3 steps")
        .arg(attenuatorText(state_.rfGain), agcText(state_.agc)).arg(state_.ifGain);
}

QString Ar7030Sim::applySquelch()
{
    state_.squelch = peek(0, RegSquelch);
    return QStringLiteral("squelch %1").arg(state_.squelch);
}

QString Ar7030Sim::applyAll()
{
    return QStringList{applyFrequency(), applyMode(), applyFilter(), applyAudio(), applyGains(), applySquelch()}
        .join(QStringLiteral("; "));
}

double Ar7030Sim::bandLevel() const
{
    if (!state_.powerOn)
        return 0;
    const double bw = filterKhz(state_.filter);
    // The RF stage: setting 0 is the +10 dB preamplifier, 1 flat, each further one 10 dB down.
    const double s = band_.sUnits(state_.khz, ui::now().toUTC(), bw > 0 ? bw : 6.0) -
                     10.0 / 6.0 * (state_.rfGain - 1);
    return std::max(0.0, s);
}

// Half-dB steps from -127 dBm (S0): S units of 6 dB are 12 steps each.
quint8 Ar7030Sim::rawSignal() const
{
    return quint8(std::clamp<long>(std::lround(bandLevel() * 12), 0, 255));
}

void Ar7030Sim::refreshSmeter()
{
    const double level = bandLevel();
    // The meter's scale is compressed above S 11.5: 1.66 S units of signal per unit shown.
    const double shown = level > 11.5 ? 11.5 + (level - 11.5) / 1.66 : level;
    int bars = int(std::floor(shown));
    int fifths = int(std::lround((shown - bars) * 5));
    if (fifths == 5) {
        ++bars;
        fifths = 0;
    }
    poke(0, RegSmeterBars, quint8(std::clamp(bars, 0, 255)));
    poke(0, RegSmeterFifths, quint8(fifths));
}

void Ar7030Sim::refreshClock()
{
    const QTime t = ui::now().time();
    qint64 secs = (t.msecsSinceStartOfDay() / 1000 + clockOffsetSecs_) % 86400;
    if (secs < 0)
        secs += 86400;
    poke(1, Reg1Clock, quint8(bcd(int(secs % 60))));
    poke(1, Reg1Clock + 1, quint8(bcd(int(secs / 60 % 60))));
    poke(1, Reg1Clock + 2, quint8(bcd(int(secs / 3600))));
}

void Ar7030Sim::clockWritten()
{
    const qint64 set = fromBcd(peek(1, Reg1Clock)) + 60 * fromBcd(peek(1, Reg1Clock + 1))
        + 3600 * fromBcd(peek(1, Reg1Clock + 2));
    clockOffsetSecs_ = set - ui::now().time().msecsSinceStartOfDay() / 1000;
}
