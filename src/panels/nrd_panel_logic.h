#pragma once
// The JRC panels' own logic, apart from their widgets: the status text, the label forms of
// their bars, the keyboard's arithmetic on the bars, the keyboard tables, the limits of the user
// settings' spin buttons and the rows that "Reset to Defaults" sends.
#include "core/numtext.h"
#include "panels/panel_keys.h"
#include "panels/panel_logic.h"

#include <QColor>
#include <QString>
#include <QStringList>
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <vector>

namespace nrdpanel {

// Colours as the receivers' windows have always stored them: 0xBBGGRR.
inline QColor bgr(unsigned v) { return QColor(int(v & 0xFF), int((v >> 8) & 0xFF), int((v >> 16) & 0xFF)); }
constexpr unsigned kLockOn = 0x0080FF;    // orange: lock held, or VBT bypassed
constexpr unsigned kLockOff = 0xC0FFFF;   // pale yellow: released, or not bypassed
constexpr unsigned kPowerOn = 0x00FF00;
constexpr unsigned kPowerOff = 0x888888;

// --- the status text: "X", attenuator, bandwidth, mode, eight digits of Hz, AGC ---

struct Status {
    int attenuator = 0;
    int bandwidth = 0;
    int mode = 0;
    double khz = 0;
    int agc = 0;
};

inline QString statusField(const QString &s, int pos, int len)
{
    return pos >= 1 && pos <= s.size() ? s.mid(pos - 1, len) : QString();
}

inline Status parseStatus(const QString &s)
{
    auto digit = [&](int pos) { return numtext::toInt(numtext::Val(statusField(s, pos, 1))); };
    Status st;
    st.attenuator = digit(2);
    st.bandwidth = digit(3);
    st.mode = digit(4);
    st.khz = numtext::Val(statusField(s, 5, 8)) / 1000.0;
    st.agc = digit(13);
    return st;
}

// --- label forms ---

// Both sets: 0 and -20 dB.
inline QString attenuatorText(int v) { return v >= 0 && v <= 1 ? QString::number(v * -20) : QStringLiteral("?"); }

// A sign ("+" also for 0) and n digits of the absolute value.
inline QString signedText(int v, int n)
{
    return (v < 0 ? QStringLiteral("-") : QStringLiteral("+")) + numtext::format(std::abs(v), QString(n, u'0'));
}

// NRD-535: bandwidth control and pass band shift in Hz.
constexpr int kBwc535Min = 500, kBwc535Max = 5500;
constexpr int kPbs535Limit = 2000;
inline QString bwc535Text(int v)
{
    return v >= kBwc535Min && v <= kBwc535Max ? QString::number(v) : QStringLiteral("?");
}
inline QString pbs535Text(int v)
{
    if (v < -kPbs535Limit || v > kPbs535Limit)
        return QStringLiteral("?");
    return v == 0 ? QStringLiteral("0") : signedText(v, 1);
}

// NRD-545: bandwidth control and pass band shift in tens of Hz, shown in kHz.
constexpr int kBwc545Min = 1, kBwc545Max = 999;
constexpr int kPbs545Limit = 230;
inline QString tensOfHzText(int v) { return numtext::commaToPoint(numtext::format(v * 0.01, QStringLiteral("0.00"))); }
inline QString bwc545Text(int v) { return v >= kBwc545Min && v <= kBwc545Max ? tensOfHzText(v) : QStringLiteral("?"); }
inline QString pbs545Text(int v)
{
    return v >= -kPbs545Limit && v <= kPbs545Limit ? tensOfHzText(v) : QStringLiteral("?");
}

// The NRD-545's byte levels (IF gain, squelch, tone, volume) run 0..255.
inline bool byteLevel(int v) { return v >= 0 && v <= 255; }
// IF gain and squelch: the byte as a percentage-like 00..99.
inline QString gainText(int v)
{
    return byteLevel(v) ? numtext::format(std::floor(v * 0.39), QStringLiteral("00")) : QStringLiteral("?");
}
// Tone: 127 is flat; about -9..+9 either way, signed, a blank for flat.
constexpr int kToneFlat = 127;
inline QString toneText(int v)
{
    if (!byteLevel(v))
        return QStringLiteral("?");
    const int t = int(numtext::roundHalfEven((v - kToneFlat) * 0.074));
    return (t > 0 ? QStringLiteral("+") : t < 0 ? QStringLiteral("-") : QStringLiteral(" ")) + QString::number(std::abs(t));
}
inline QString volumeText(int v) { return byteLevel(v) ? QString::number(v) : QStringLiteral("?"); }

// NRD-545 AGC: 0 off, codes 1..9 in steps of 200 ms.
inline QString agc545Text(int v)
{
    if (v >= 1 && v <= 9)
        return numtext::format(v * 200, QStringLiteral("0000"));
    return v == 0 ? QStringLiteral("Off") : QStringLiteral("?");
}

// --- the keyboard's arithmetic on the bars ---

// NRD-535 pass band shift: 50 Hz a key, held within 2000 either way.
inline int pbs535Up(int v) { return v < 1951 ? v + 50 : 2000; }
inline int pbs535Down(int v) { return v < -1950 ? -2000 : v - 50; }

// NRD-535 bandwidth control, by the filter in use: the wide one 2000..5500 in 200s, the
// intermediate one 500..2200 in 100s. Other filters have no control: -1.
enum class Bwc535Key { Lowest, Down, Up, Highest };
inline int bwc535Key(const QString &filter, int v, Bwc535Key k)
{
    const bool wide = filter == QLatin1String("Wid");
    if (!wide && filter != QLatin1String("Int"))
        return -1;
    switch (k) {
    case Bwc535Key::Lowest: return wide ? 2000 : 500;
    case Bwc535Key::Highest: return wide ? 5500 : 2200;
    case Bwc535Key::Up:
        return wide ? (v < 5301 ? v + 200 : 5500) : (v < 2101 ? v + 100 : 2200);
    case Bwc535Key::Down:
        return wide ? (v >= 2200 ? v - 200 : 2000) : (v >= 600 ? v - 100 : 500);
    }
    return -1;
}

// NRD-545: pass band shift in 10s within 230, bandwidth control 10..990, volume in 15s.
inline int pbs545Up(int v) { return v < 221 ? v + 10 : 230; }
inline int pbs545Down(int v) { return v < -220 ? -230 : v - 10; }
inline int bwc545Up(int v) { return v < 981 ? v + 10 : 990; }
inline int bwc545Down(int v) { return v >= 20 ? v - 10 : 10; }
constexpr int kBwc545KeyLowest = 10, kBwc545KeyHighest = 990;
inline int volume545Up(int v) { return v < 241 ? v + 15 : 255; }
inline int volume545Down(int v) { return v >= 15 ? v - 15 : 0; }

// --- the keyboard tables ---

// Actions of the JRC panels beyond the shared ones; they reach the panel's own key handler.
enum class NrdKey : int {
    EnterMem = 100, // the NRD-535's own memory recall
    BwcLowest,
    BwcDown,
    BwcUp,
    BwcHighest,
    Ecss,           // arg: the ECSS button
};
constexpr panel::KeyAction keyAction(NrdKey k) { return panel::KeyAction(int(k)); }
inline bool isNrdKey(panel::KeyAction a, NrdKey k) { return int(a) == int(k); }

namespace detail {
inline void addModes(std::vector<panel::KeyRow> &t, const std::vector<std::pair<int, int>> &keysToButtons)
{
    for (const auto &[key, button] : keysToButtons)
        t.push_back({key, panel::KeyMods::Shift, panel::KeyAction::Mode, button});
}
inline void addBwcKeys(std::vector<panel::KeyRow> &t)
{
    t.push_back({Qt::Key_F1, panel::KeyMods::Ctrl, keyAction(NrdKey::BwcLowest), 0});
    t.push_back({Qt::Key_F2, panel::KeyMods::Ctrl, keyAction(NrdKey::BwcDown), 0});
    t.push_back({Qt::Key_F3, panel::KeyMods::Ctrl, keyAction(NrdKey::BwcUp), 0});
    t.push_back({Qt::Key_F4, panel::KeyMods::Ctrl, keyAction(NrdKey::BwcHighest), 0});
}
} // namespace detail

// NRD-535: filters on Shift+F1..F4 in the order Nar, Int, Wid, Aux; nine modes; the shift and
// the bandwidth control (with the lock only); Ctrl+M recalls a cell the receiver's way.
inline const std::vector<panel::KeyRow> &nrd535Keys()
{
    static const std::vector<panel::KeyRow> t = [] {
        std::vector<panel::KeyRow> r;
        panel::keyrows::addCommon(r);
        for (panel::KeyRow &row : r)
            if (row.action == panel::KeyAction::EnterMem)
                row.action = keyAction(NrdKey::EnterMem);
        const int filters[] = {2, 1, 0, 3};
        for (int i = 0; i < 4; ++i)
            r.push_back({Qt::Key_F1 + i, panel::KeyMods::Shift, panel::KeyAction::Bandwidth, filters[i]});
        detail::addModes(r, {{Qt::Key_A, 4}, {Qt::Key_C, 1}, {Qt::Key_F, 5}, {Qt::Key_L, 3}, {Qt::Key_U, 2},
                             {Qt::Key_R, 0}, {Qt::Key_X, 6}, {Qt::Key_P, 7}, {Qt::Key_M, 8}});
        panel::keyrows::addSymbols(r, panel::KeyMods::Shift, panel::KeyAction::ShiftUp, panel::KeyAction::ShiftDown,
                                   panel::KeyAction::ShiftZero);
        detail::addBwcKeys(r);
        return r;
    }();
    return t;
}

// NRD-545: three filters, seven modes, ECSS on Shift+P and Shift+M, the bars with the lock,
// and the volume on Alt.
inline const std::vector<panel::KeyRow> &nrd545Keys()
{
    static const std::vector<panel::KeyRow> t = [] {
        std::vector<panel::KeyRow> r;
        panel::keyrows::addCommon(r);
        const int filters[] = {2, 1, 0};
        for (int i = 0; i < 3; ++i)
            r.push_back({Qt::Key_F1 + i, panel::KeyMods::Shift, panel::KeyAction::Bandwidth, filters[i]});
        detail::addModes(r, {{Qt::Key_A, 4}, {Qt::Key_C, 1}, {Qt::Key_F, 5}, {Qt::Key_L, 3}, {Qt::Key_U, 2},
                             {Qt::Key_R, 0}, {Qt::Key_X, 6}});
        r.push_back({Qt::Key_P, panel::KeyMods::Shift, keyAction(NrdKey::Ecss), 0});
        r.push_back({Qt::Key_M, panel::KeyMods::Shift, keyAction(NrdKey::Ecss), 1});
        panel::keyrows::addSymbols(r, panel::KeyMods::Shift, panel::KeyAction::ShiftUp, panel::KeyAction::ShiftDown,
                                   panel::KeyAction::ShiftZero);
        detail::addBwcKeys(r);
        panel::keyrows::addSymbols(r, panel::KeyMods::Alt, panel::KeyAction::VolumeUp, panel::KeyAction::VolumeDown,
                                   panel::KeyAction::VolumeZero);
        return r;
    }();
    return t;
}

// Shift and Ctrl together with "=" takes the lock (1), with "-" releases it (0); -1 for any
// other key. The shifted symbols count too, as keyboards report them.
inline int lockKey(int key, Qt::KeyboardModifiers mods)
{
    mods &= ~Qt::KeypadModifier;
    if (mods != (Qt::ShiftModifier | Qt::ControlModifier))
        return -1;
    if (key == Qt::Key_Equal || key == Qt::Key_Plus)
        return 1;
    if (key == Qt::Key_Minus || key == Qt::Key_Underscore)
        return 0;
    return -1;
}

// --- the user settings windows ---

// A value set with a spin button and sent with its "Set" button.
struct SpinSetting {
    int start;
    int lowest;
    int highest;
    int step;
    double scale;    // the value shown is value * scale
    const char *pattern;
    bool signedForm; // sign and the pattern's digits
};
// Moves v one step, held within the setting's limits.
inline int spun(const SpinSetting &s, int v, bool up)
{
    return std::clamp(up ? v + s.step : v - s.step, s.lowest, s.highest);
}
inline QString spinText(const SpinSetting &s, int v)
{
    if (s.signedForm)
        return signedText(v, int(qstrlen(s.pattern)));
    return numtext::commaToPoint(numtext::format(v * s.scale, QLatin1String(s.pattern)));
}

constexpr SpinSetting kCwPitch535{800, -5000, 5000, 25, 1, "0000", true};
// The NRD-545's pitch goes lower up than down: -2550 .. 5000.
constexpr SpinSetting kCwPitch545{800, -2550, 5000, 25, 1, "0000", true};
constexpr SpinSetting kScanTime545{5, 3, 50, 1, 0.1, "0.0", false};       // tenths of a second
constexpr SpinSetting kSweepTime545{5, 5, 50, 1, 0.01, "0.00", false};    // hundredths
constexpr SpinSetting kAutostopTime545{30, 0, 100, 1, 0.1, "00.0", false}; // tenths

// One row of a "Reset to Defaults" run: the value sent for the receiver's item, then the
// control set, whose own action sends again. option -1: a value label, set to label.
struct DefaultRow {
    int index;
    int value;
    int option;
    const char *label;
};

// NRD-535. Item 8 sends 1 and then sets option 0, which sends 0: so it has always been.
inline const std::vector<DefaultRow> &nrd535Defaults()
{
    static const std::vector<DefaultRow> rows = {
        {0, 0, 0, nullptr}, {1, 0, 0, nullptr}, {2, 800, -1, "+0800"}, {4, 1, 1, nullptr},
        {6, 1, 1, nullptr}, {7, 1, 1, nullptr}, {8, 1, 0, nullptr},    {9, 1, 1, nullptr},
    };
    return rows;
}

// NRD-545. Item 1 sends 0 and then sets option 1, which sends 1: kept as it always was.
inline const std::vector<DefaultRow> &nrd545Defaults()
{
    static const std::vector<DefaultRow> rows = {
        {1, 0, 1, nullptr},   {2, 0, 0, nullptr},    {3, 0, 0, nullptr},     {4, 0, 0, nullptr},
        {8, 0, 0, nullptr},   {9, 1, 1, nullptr},    {10, 1, 1, nullptr},    {11, 1, 1, nullptr},
        {12, 1, 1, nullptr},  {13, 0, 0, nullptr},   {14, 800, -1, "+0800"}, {18, 1, 1, nullptr},
        {19, 1, 1, nullptr},  {20, 5, -1, "0.5"},    {21, 5, -1, "0.05"},    {22, 30, -1, "3.0"},
        {24, 1, 1, nullptr},  {28, 1, 1, nullptr},   {31, 0, 0, nullptr},
    };
    return rows;
}

// The DSP window's question on leaving when the levels are not the defaults.
inline QString dspDefaultsQuestion()
{
    return QStringLiteral("    Do you want to bring the \nNoise reduction and Beat canceler\n   level back to its defaults");
}

} // namespace nrdpanel
