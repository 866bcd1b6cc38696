#include "nrd_sim.h"

#include "ui/facades.h"

#include <QStringList>
#include <algorithm>
#include <cmath>

namespace {
constexpr char kCR = '\r';
// A line this long without a CR is noise on the line, not a command.
constexpr int kMaxLine = 256;
constexpr int kDaySecs = 86400;

const char *const kBandwidthNames[] = {"Wide", "Inter", "Narrow", "Aux"};
const char *const kBlankerNames[] = {"off", "NB1", "NB2"};

// A meter curve: the number the set shows at each S value, straight between the points.
struct MeterPoint {
    double s;
    double reading;
};

// Falls as the signal rises, about 100 at S9.
constexpr MeterPoint kMeter535[] = {{0, 158}, {3, 133}, {6, 112}, {9, 100},
                                    {12, 88}, {15, 77}, {18, 64}, {21, 50}};
// Rises with the signal, about 87 at S9.
constexpr MeterPoint kMeter545[] = {{0, 22},   {3, 47},   {6, 65},   {9, 87},
                                    {12, 121}, {15, 157}, {18, 195}, {21, 232}};

template <size_t N>
int meterCurve(const MeterPoint (&curve)[N], double s)
{
    s = std::clamp(s, curve[0].s, curve[N - 1].s);
    size_t i = 1;
    while (i < N - 1 && s > curve[i].s)
        ++i;
    const MeterPoint &a = curve[i - 1];
    const MeterPoint &b = curve[i];
    const double r = a.reading + (b.reading - a.reading) * (s - a.s) / (b.s - a.s);
    return int(std::clamp(std::lround(r), 0L, 255L));
}

QString latin(const QByteArray &b) { return QString::fromLatin1(b); }

int digitOf(const QByteArray &arg)
{
    return arg.size() == 1 && arg.at(0) >= '0' && arg.at(0) <= '9' ? arg.at(0) - '0' : -1;
}
} // namespace

// ---------------------------------------------------------------------------------------------
// The shared core

NrdSim::NrdSim(const Traits &traits, SimBand band)
    : traits_(traits), band_(std::move(band)), cells_(traits.memories)
{
}

qint64 NrdSim::digits(const QByteArray &text)
{
    if (text.isEmpty() || text.size() > 12)
        return -1;
    qint64 v = 0;
    for (char c : text) {
        if (c < '0' || c > '9')
            return -1;
        v = v * 10 + (c - '0');
    }
    return v;
}

std::optional<int> NrdSim::signedDigits(const QByteArray &text, int n)
{
    if (text.size() != n + 1 || (text.at(0) != '+' && text.at(0) != '-'))
        return std::nullopt;
    const qint64 v = digits(text.mid(1));
    if (v < 0)
        return std::nullopt;
    return int(text.at(0) == '-' ? -v : v);
}

QByteArray NrdSim::pad(qint64 v, int width) { return QByteArray::number(v).rightJustified(width, '0'); }

QByteArray NrdSim::signedPad(int v, int width)
{
    return (v < 0 ? QByteArray("-") : QByteArray("+")) + pad(std::abs(v), width);
}

QString NrdSim::khzText(qint64 hz) { return QStringLiteral("%1 kHz").arg(hz / 1000.0, 0, 'f', 3); }

void NrdSim::reply(const QByteArray &text) { send(text + kCR); }

void NrdSim::receive(const QByteArray &bytes)
{
    pending_ += bytes;
    qsizetype cr;
    while ((cr = pending_.indexOf(kCR)) >= 0) {
        const QByteArray line = pending_.left(cr);
        pending_.remove(0, cr + 1);
        execute(line);
    }
    if (pending_.size() > kMaxLine)
        pending_.clear();
}

void NrdSim::execute(QByteArray c)
{
    c.replace('\n', QByteArray()); // a terminal's LF after the CR is no part of a command
    if (c.isEmpty())
        return;
    if (c == "H1" || c == "H0") {
        remote_ = c == "H1";
        note(remote_ ? QStringLiteral("remote on") : QStringLiteral("remote off"));
        return;
    }
    if (!remote_) {
        note(QStringLiteral("ignored (local): ") + latin(c));
        return;
    }
    const qint64 before = now_.hz;
    if (!executeOwn(c) && !executeShared(c))
        note(QStringLiteral("not understood: ") + latin(c));
    if (reporting_ && now_.hz != before) {
        send(statusFrame());
        note(QStringLiteral("report ") + khzText(now_.hz));
    }
}

void NrdSim::turnDial(double khz)
{
    const qint64 hz = std::clamp<qint64>(std::llround(khz * 1000.0), kMinHz, kMaxHz);
    const qint64 before = now_.hz;
    now_.hz = hz;
    note(QStringLiteral("dial ") + khzText(hz));
    if (reporting_ && hz != before) {
        send(statusFrame());
        note(QStringLiteral("report ") + khzText(hz));
    }
}

QByteArray NrdSim::fields(const Setting &s) const
{
    return pad(s.attenuator, 1) + pad(s.bandwidth, 1) + pad(s.mode, 1) + pad(s.hz, traits_.freqDigits) +
           pad(s.agc, traits_.agcDigits);
}

QByteArray NrdSim::statusFrame() const { return 'I' + fields(now_) + kCR; }

bool NrdSim::validSetting(const Setting &s) const
{
    return s.attenuator >= 0 && s.attenuator <= 1 && s.bandwidth >= 0 && s.bandwidth < traits_.bandwidths &&
           s.mode >= 0 && s.mode < traits_.modes && s.hz >= kMinHz && s.hz <= kMaxHz && s.agc >= 0 &&
           s.agc <= traits_.maxAgc;
}

bool NrdSim::parseSetting(const QByteArray &text, Setting *out) const
{
    const int f = traits_.freqDigits;
    if (text.size() != 3 + f + traits_.agcDigits)
        return false;
    for (char ch : text)
        if (ch < '0' || ch > '9')
            return false;
    Setting s;
    s.attenuator = text.at(0) - '0';
    s.bandwidth = text.at(1) - '0';
    s.mode = text.at(2) - '0';
    s.hz = digits(text.mid(3, f));
    s.agc = int(digits(text.mid(3 + f)));
    if (!validSetting(s))
        return false;
    *out = s;
    return true;
}

QString NrdSim::settingText(const Setting &s) const
{
    return QStringLiteral("%1 %2, bandwidth %3, AGC %4, attenuator %5")
        .arg(khzText(s.hz), modeName(s.mode), QLatin1String(kBandwidthNames[s.bandwidth]), agcName(s.agc),
             s.attenuator ? QStringLiteral("-20 dB") : QStringLiteral("off"));
}

std::optional<NrdSim::Setting> NrdSim::memory(int n) const
{
    return n >= 0 && n < cells_.size() ? cells_[n] : std::nullopt;
}

void NrdSim::setMemory(int n, const std::optional<Setting> &cell)
{
    if (n >= 0 && n < cells_.size())
        cells_[n] = cell;
}

void NrdSim::storeCell(int n, const Setting &s) { setMemory(n, s); }
void NrdSim::eraseCell(int n) { setMemory(n, std::nullopt); }

void NrdSim::enterChannelOperation()
{
    // The set carries its present setting into channel operation and keeps the free tuning aside.
    if (!channelOp_)
        vfoSaved_ = now_;
    channelOp_ = true;
}

void NrdSim::leaveChannelOperation()
{
    if (channelOp_)
        now_ = vfoSaved_;
    channelOp_ = false;
}

QTime NrdSim::clock() const
{
    const QDateTime utc = ui::now().toUTC();
    const qint64 secs = (utc.time().msecsSinceStartOfDay() / 1000 + clockOffsetSecs_) % kDaySecs;
    return QTime(0, 0).addSecs(int((secs + kDaySecs) % kDaySecs));
}

bool NrdSim::setClock(const QByteArray &hhmmss)
{
    // Seconds are optional: without them the set starts the minute at 0.
    if ((hhmmss.size() != 4 && hhmmss.size() != 6) || digits(hhmmss) < 0)
        return false;
    const int h = int(digits(hhmmss.left(2)));
    const int m = int(digits(hhmmss.mid(2, 2)));
    const int s = hhmmss.size() == 6 ? int(digits(hhmmss.mid(4, 2))) : 0;
    if (h > 23 || m > 59 || s > 59)
        return false;
    const qint64 wanted = h * 3600 + m * 60 + s;
    const qint64 nowSecs = ui::now().toUTC().time().msecsSinceStartOfDay() / 1000;
    clockOffsetSecs_ = ((wanted - nowSecs) % kDaySecs + kDaySecs) % kDaySecs;
    note(QStringLiteral("set clock %1").arg(clock().toString(QStringLiteral("HH:mm:ss"))));
    return true;
}

double NrdSim::signalS() const
{
    if (!power_)
        return 0;
    double s = band_.sUnits(frequencyKhz(), ui::now().toUTC(), bandwidthKhz());
    if (now_.attenuator)
        s -= 20.0 / 6.0;
    return std::max(0.0, s);
}

void NrdSim::tune(qint64 hz, const QString &how)
{
    now_.hz = hz;
    note(how + QLatin1Char(' ') + khzText(hz));
}

bool NrdSim::readMemories(const QByteArray &args)
{
    // "L" and one cell number, or the first and last of a run of cells.
    if ((args.size() != 3 && args.size() != 6) || digits(args) < 0)
        return false;
    const int first = int(digits(args.left(3)));
    const int last = args.size() == 6 ? int(digits(args.mid(3))) : first;
    if (first >= traits_.memories || last >= traits_.memories || last < first)
        return false;
    for (int n = first; n <= last; ++n) {
        const auto &cell = cells_[n];
        reply('L' + pad(n, 3) + (cell ? fields(*cell) : QByteArray("V")));
    }
    note(first == last ? QStringLiteral("read memory %1").arg(first)
                       : QStringLiteral("read memories %1 to %2").arg(first).arg(last));
    return true;
}

bool NrdSim::executeShared(const QByteArray &c)
{
    const QByteArray arg = c.mid(1);
    const int d = digitOf(arg);
    switch (c.at(0)) {
    case 'T':
        if (arg.isEmpty()) {
            reply('T' + pad(power_, 1));
            note(QStringLiteral("read power"));
            return true;
        }
        if (d != 0 && d != 1)
            return false;
        power_ = d == 1;
        note(power_ ? QStringLiteral("power on") : QStringLiteral("power off"));
        return true;
    case 'A':
        if (d != 0 && d != 1)
            return false;
        now_.attenuator = d;
        note(d ? QStringLiteral("attenuator -20 dB") : QStringLiteral("attenuator off"));
        return true;
    case 'B':
        if (d < 0 || d >= traits_.bandwidths)
            return false;
        now_.bandwidth = d;
        note(QStringLiteral("bandwidth ") + QLatin1String(kBandwidthNames[d]));
        return true;
    case 'D':
        if (d < 0 || d >= traits_.modes)
            return false;
        now_.mode = d;
        note(QStringLiteral("mode ") + modeName(d));
        return true;
    case 'F': {
        if (arg.isEmpty())
            return bareF();
        const qint64 hz = arg.size() == traits_.freqDigits ? digits(arg) : -1;
        if (hz < kMinHz || hz > kMaxHz)
            return false;
        tune(hz, QStringLiteral("tune"));
        return true;
    }
    case 'G':
        if (d < 0 || d > 2)
            return false;
        now_.agc = agcForKey(d);
        note(QStringLiteral("AGC ") + agcName(now_.agc));
        return true;
    case 'N':
        if (arg.isEmpty()) {
            reply('N' + pad(noiseBlanker_, 1));
            note(QStringLiteral("read noise blanker"));
            return true;
        }
        if (d < 0 || d > 2)
            return false;
        noiseBlanker_ = d;
        note(QStringLiteral("noise blanker ") + QLatin1String(kBlankerNames[d]));
        return true;
    case 'P': {
        if (arg.isEmpty()) {
            reply('P' + signedPad(pbs_, traits_.pbsDigits));
            note(QStringLiteral("read pass band shift"));
            return true;
        }
        const auto v = signedDigits(arg, traits_.pbsDigits);
        if (!v)
            return false;
        pbs_ = *v;
        note(QStringLiteral("pass band shift %1%2 Hz")
                 .arg(pbs_ < 0 ? QLatin1Char('-') : QLatin1Char('+'))
                 .arg(std::abs(passBandShiftHz())));
        return true;
    }
    case 'O':
        if (d < 0)
            return false;
        timerRelay_ = d;
        note(QStringLiteral("timer relay %1").arg(d));
        return true;
    case 'R':
        if (arg == "0") {
            const QTime t = clock();
            reply('R' + t.toString(QStringLiteral("HHmmss")).toLatin1());
            note(QStringLiteral("read clock ") + t.toString(QStringLiteral("HH:mm:ss")));
            return true;
        }
        return arg.startsWith('1') && setClock(arg.mid(1));
    case 'M':
        if (!arg.isEmpty())
            return false;
        {
            const int r = smeterValue();
            reply('M' + pad(r, 3));
            note(QStringLiteral("S-meter %1").arg(r));
        }
        return true;
    case 'I':
        if (arg.isEmpty())
            return bareI();
        if (d != 0 && d != 1)
            return false;
        reporting_ = d == 1;
        if (reporting_ && traits_.frameOnReportsOn)
            send(statusFrame());
        note(reporting_ ? QStringLiteral("reports on") : QStringLiteral("reports off"));
        return true;
    case 'J': {
        const qint64 n = arg.size() == 4 && arg.at(0) == '1' ? digits(arg.mid(1)) : -1;
        if (n < 0 || n >= traits_.memories)
            return false;
        storeCell(int(n), now_);
        note(QStringLiteral("store memory %1").arg(n));
        return true;
    }
    case 'E':
        // The memory-write key: the present setting into the selected channel.
        if (arg != "1")
            return false;
        storeCell(channel_, now_);
        note(QStringLiteral("store memory %1").arg(channel_));
        return true;
    case 'L':
        return readMemories(arg);
    case 'K': {
        const qint64 n = digits(arg.left(3));
        Setting s;
        if (arg.size() < 3 || n < 0 || n >= traits_.memories || !parseSetting(arg.mid(3), &s))
            return false;
        storeCell(int(n), s);
        note(QStringLiteral("write memory %1: %2").arg(n).arg(settingText(s)));
        return true;
    }
    case 'C': {
        if (arg.isEmpty()) {
            enterChannelOperation();
            note(QStringLiteral("channel operation"));
            return true;
        }
        const qint64 n = arg.size() == 3 ? digits(arg) : -1;
        if (n < 0 || n >= traits_.memories)
            return false;
        enterChannelOperation();
        channel_ = int(n);
        if (const auto &cell = cells_[n]) {
            now_ = *cell;
            note(QStringLiteral("recall memory %1: %2").arg(n).arg(settingText(now_)));
        } else {
            note(QStringLiteral("recall memory %1 (vacant)").arg(n));
        }
        return true;
    }
    case 'S': {
        // A whole setting at once; the cell number is part of the command but the cell keeps its content.
        Setting s;
        if (arg.size() < 3 || digits(arg.left(3)) < 0 || digits(arg.left(3)) >= traits_.memories ||
            !parseSetting(arg.mid(3), &s))
            return false;
        now_ = s;
        note(QStringLiteral("set ") + settingText(s));
        return true;
    }
    default:
        return false;
    }
}

// ---------------------------------------------------------------------------------------------
// NRD-535

Nrd535Sim::Nrd535Sim(SimBand band)
    : NrdSim({"nrd535", 8, 1, 200, 4, 9, 4, 1, 2, true}, std::move(band))
{
    setUser(2, "+0800");
}

double Nrd535Sim::bandwidthKhz() const
{
    static const double widths[] = {6.0, 2.4, 1.0, 12.0};
    return widths[bandwidth()];
}

QString Nrd535Sim::modeName(int mode) const
{
    static const char *const names[] = {"RTTY", "CW", "USB", "LSB", "AM", "FM", "FAX", "AM-U", "AM-L"};
    return mode >= 0 && mode < 9 ? QLatin1String(names[mode]) : QStringLiteral("?");
}

QString Nrd535Sim::agcName(int agc) const
{
    static const char *const names[] = {"slow", "fast", "off"};
    return agc >= 0 && agc < 3 ? QLatin1String(names[agc]) : QStringLiteral("?");
}

int Nrd535Sim::meterReading(double s) const { return meterCurve(kMeter535, s); }

bool Nrd535Sim::bareF()
{
    leaveChannelOperation();
    note(QStringLiteral("frequency operation"));
    return true;
}

bool Nrd535Sim::executeOwn(const QByteArray &c)
{
    const QByteArray arg = c.mid(1);
    switch (c.at(0)) {
    case 'W': {
        if (arg.isEmpty()) {
            reply('W' + pad(bwcHz_, 4));
            note(QStringLiteral("read bandwidth control"));
            return true;
        }
        const qint64 v = arg.size() == 4 ? digits(arg) : -1;
        if (v < 0)
            return false;
        bwcHz_ = int(v);
        note(QStringLiteral("bandwidth control %1 Hz").arg(v));
        return true;
    }
    case 'X': {
        const int d = digitOf(arg);
        if (d != 0 && d != 1)
            return false;
        setRtty(d == 1);
        note(d ? QStringLiteral("RTTY demodulator on") : QStringLiteral("RTTY demodulator off"));
        return true;
    }
    case 'U':
        return userCommand(c);
    default:
        return false;
    }
}

bool Nrd535Sim::userCommand(const QByteArray &c)
{
    // "U", the item's digit, its value.
    if (c.size() < 2 || c.at(1) < '0' || c.at(1) > '9')
        return false;
    const int item = c.at(1) - '0';
    const QByteArray value = c.mid(2);
    switch (item) {
    case 2: {
        const auto hz = signedDigits(value, 4);
        if (!hz)
            return false;
        setUser(2, value);
        setCwPitch(*hz);
        note(QStringLiteral("CW pitch %1 Hz").arg(value.toInt()));
        return true;
    }
    case 3:
        setRttyParameters(value);
        note(QStringLiteral("RTTY parameters ") + latin(value));
        return true;
    case 5: {
        const qint64 n = value.size() == 3 ? digits(value) : -1;
        if (n < 0 || n >= memoryCount())
            return false;
        eraseCell(int(n));
        note(QStringLiteral("erase memory %1").arg(n));
        return true;
    }
    default:
        if (digitOf(value) < 0)
            return false;
        setUser(item, value);
        note(QStringLiteral("user setting %1: %2").arg(item).arg(latin(value)));
        return true;
    }
}

// ---------------------------------------------------------------------------------------------
// NRD-545

Nrd545Sim::Nrd545Sim(SimBand band)
    : NrdSim({"nrd545", 10, 3, 1000, 3, 10, 3, 10, 255, false}, std::move(band))
{
    current().agc = kAgcSlow;
    setUser(14, "+0800");
}

QString Nrd545Sim::modeName(int mode) const
{
    static const char *const names[] = {"RTTY", "CW", "USB", "LSB", "AM", "FM", "AMS", "AM-U", "AM-L", "WFM"};
    return mode >= 0 && mode < 10 ? QLatin1String(names[mode]) : QStringLiteral("?");
}

int Nrd545Sim::agcForKey(int key) const
{
    switch (key) {
    case 0: return kAgcSlow;
    case 1: return kAgcFast;
    default: return 0;
    }
}

QString Nrd545Sim::agcName(int agc) const
{
    // The field is ten times the time-constant code; each code step is 200 ms.
    return agc == 0 ? QStringLiteral("off") : QStringLiteral("%1 ms").arg(agc * 20);
}

int Nrd545Sim::meterReading(double s) const { return meterCurve(kMeter545, s); }

bool Nrd545Sim::bareF()
{
    reply('F' + pad(frequencyHz(), 10));
    note(QStringLiteral("read frequency"));
    return true;
}

bool Nrd545Sim::bareI()
{
    send(statusFrame());
    note(QStringLiteral("read status"));
    return true;
}

bool Nrd545Sim::level(const QByteArray &c, const char *name, int *value, const QString &what)
{
    const QByteArray arg = c.mid(2);
    if (arg.isEmpty()) {
        reply(name + pad(*value, 3));
        note(QStringLiteral("read ") + what);
        return true;
    }
    const qint64 v = arg.size() == 3 ? digits(arg) : -1;
    if (v < 0 || v > 255)
        return false;
    *value = int(v);
    note(QStringLiteral("%1 %2").arg(what).arg(v));
    return true;
}

bool Nrd545Sim::executeOwn(const QByteArray &c)
{
    if (c.at(0) == 'W') {
        const QByteArray arg = c.mid(1);
        if (arg.isEmpty()) {
            reply('W' + pad(bwc_[bandwidth()], 3));
            note(QStringLiteral("read bandwidth control"));
            return true;
        }
        const qint64 v = arg.size() == 3 ? digits(arg) : -1;
        if (v < 1)
            return false;
        bwc_[bandwidth()] = int(v);
        note(QStringLiteral("bandwidth control %1 Hz").arg(v * 10));
        return true;
    }
    if (c.at(0) == 'U')
        return userCommand(c);
    // The rest of this set's own commands are doubled letters.
    if (c.size() < 2 || c.at(0) != c.at(1))
        return false;
    const QByteArray arg = c.mid(2);
    const int d = digitOf(arg);
    switch (c.at(0)) {
    case 'H': return level(c, "HH", &ifGain_, QStringLiteral("IF gain"));
    case 'L': return level(c, "LL", &squelch_, QStringLiteral("squelch"));
    case 'K': return level(c, "KK", &tone_, QStringLiteral("tone"));
    case 'J': return level(c, "JJ", &volume_, QStringLiteral("volume"));
    case 'F': return level(c, "FF", &nbLevel_, QStringLiteral("noise blanker level"));
    case 'N': {
        if (arg.isEmpty()) {
            reply("NN" + pad(agc(), 3));
            note(QStringLiteral("read AGC"));
            return true;
        }
        const qint64 v = arg.size() == 3 ? digits(arg) : -1;
        if (v < 0 || v > traits().maxAgc)
            return false;
        current().agc = int(v);
        note(QStringLiteral("AGC ") + agcName(agc()));
        return true;
    }
    case 'A':
        if (d < 0)
            return false;
        dimmer_ = d;
        note(QStringLiteral("dimmer %1").arg(d));
        return true;
    case 'B': {
        static const char *const names[] = {"NR/BC off", "noise reduction", "beat cancel"};
        if (arg.isEmpty()) {
            reply("BB" + pad(nrBc_, 1));
            note(QStringLiteral("read NR/BC"));
            return true;
        }
        if (d < 0 || d > 2)
            return false;
        nrBc_ = d;
        note(QLatin1String(names[d]));
        return true;
    }
    case 'C': {
        // ECSS turns the AM carrier into a side band's reference: 1 upper, 2 lower, 0 back to AM.
        static const int modes[] = {4, 7, 8};
        if (d < 0 || d > 2)
            return false;
        current().mode = modes[d];
        note(QStringLiteral("ECSS ") + (d == 0 ? QStringLiteral("off") : modeName(modes[d])));
        return true;
    }
    case 'D':
        if (arg.isEmpty()) {
            reply("DD" + pad(dialLock_, 1));
            note(QStringLiteral("read dial lock"));
            return true;
        }
        if (d != 0 && d != 1)
            return false;
        dialLock_ = d == 1;
        note(dialLock_ ? QStringLiteral("dial lock on") : QStringLiteral("dial lock off"));
        return true;
    case 'E':
        if (arg.isEmpty()) {
            reply("EE" + pad(notch_, 1));
            note(QStringLiteral("read notch"));
            return true;
        }
        if (d != 0 && d != 1)
            return false;
        notch_ = d == 1;
        note(notch_ ? QStringLiteral("notch on") : QStringLiteral("notch off"));
        return true;
    case 'G': {
        if (arg.isEmpty()) {
            reply("GG" + signedPad(notchHz_, 4));
            note(QStringLiteral("read notch frequency"));
            return true;
        }
        // The set reads as many digits as come, up to four.
        std::optional<int> hz;
        for (int n = 1; n <= 4 && !hz; ++n)
            hz = signedDigits(arg, n);
        if (!hz)
            return false;
        notchHz_ = *hz;
        note(QStringLiteral("notch frequency %1 Hz").arg(notchHz_));
        return true;
    }
    case 'M':
        if (arg != "21")
            return false;
        if (channelOperation()) {
            leaveChannelOperation();
            note(QStringLiteral("frequency operation"));
        } else {
            enterChannelOperation();
            note(QStringLiteral("channel operation"));
        }
        return true;
    default:
        return false;
    }
}

bool Nrd545Sim::userCommand(const QByteArray &c)
{
    const QByteArray arg = c.mid(1);
    // A CW pitch written with the one-digit item of the older sets is taken as item 14.
    if (arg.size() == 6 && arg.at(0) == '2' && (arg.at(1) == '+' || arg.at(1) == '-'))
        return userCommand("U14" + arg.mid(1));
    const qint64 item = digits(arg.left(2));
    if (arg.size() < 2 || item < 1 || item > 32)
        return false;
    const QByteArray value = arg.mid(2);
    if (value.isEmpty()) {
        if (userSetting(int(item)).isEmpty())
            return false;
        reply('U' + pad(item, 2) + userSetting(int(item)));
        note(QStringLiteral("read user setting %1").arg(item));
        return true;
    }
    switch (item) {
    case 14: {
        const auto hz = signedDigits(value, 4);
        if (!hz)
            return false;
        setUser(14, value);
        setCwPitch(*hz);
        note(QStringLiteral("CW pitch %1 Hz").arg(*hz));
        return true;
    }
    case 15:
        setRttyParameters(value);
        note(QStringLiteral("RTTY parameters ") + latin(value));
        return true;
    case 23: {
        const int d = digitOf(value);
        if (d != 0 && d != 1)
            return false;
        setUser(23, value);
        setRtty(d == 1);
        note(d ? QStringLiteral("RTTY demodulator on") : QStringLiteral("RTTY demodulator off"));
        return true;
    }
    default: {
        // Numeric items take two or three digits; every other item is one digit.
        const int width = item == 20 ? 2 : (item == 21 || item == 22 || item == 29 || item == 30) ? 3 : 1;
        if (value.size() != width || digits(value) < 0)
            return false;
        setUser(int(item), value);
        note(QStringLiteral("user setting %1: %2").arg(item).arg(latin(value)));
        return true;
    }
    }
}
