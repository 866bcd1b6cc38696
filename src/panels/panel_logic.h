#pragma once
// What every receiver panel computes, apart from its widgets: the byte <-> display conversions
// of the AR7030's registers, the step arithmetic, the keypad's checks, the rounding buttons,
// and the texts the panels show.
#include "core/numtext.h"
#include "core/shared_state.h"

#include <QString>
#include <QStringList>
#include <algorithm>
#include <cmath>
#include <functional>

namespace panel {

// One step of the pass band shift and BFO registers, in kHz.
constexpr double kShiftKhzPerStep = 0.033189;
// The scroll bars of the shift and the BFO reach 42 steps either way (about 4.2 kHz); the byte
// is a signed value in two's complement.
constexpr int kShiftBarLimit = 42;
// The squelch label shows byte * 0.66; the byte goes up to 150.
constexpr double kSquelchPerByte = 0.66;
constexpr int kSquelchByteMax = 150;

// Shift or BFO byte as shown: " 0.0k", "+4.2k", "-4.2k"; empty outside 0..255.
inline QString b2fs(int byte)
{
    if (byte == 0)
        return QStringLiteral(" 0.0k");
    if (byte >= 1 && byte <= 127)
        return u'+' + numtext::commaToPoint(numtext::format(byte * kShiftKhzPerStep, QStringLiteral("0.0k")));
    if (byte >= 128 && byte <= 255)
        return u'-' + numtext::commaToPoint(numtext::format((256 - byte) * kShiftKhzPerStep, QStringLiteral("0.0k")));
    return {};
}

// A shown shift back to its byte. Texts without a sign (" 0.0k") give 0.
inline int fs2b(const QString &text)
{
    if (text.startsWith(u'+'))
        return numtext::toInt(std::floor(numtext::Val(text) / kShiftKhzPerStep + 0.5));
    if (text.startsWith(u'-')) {
        const int b = numtext::toInt(256 - std::floor(std::fabs(numtext::Val(text)) / kShiftKhzPerStep + 0.5));
        return b == 256 ? 255 : b;
    }
    return 0;
}

// Shift or BFO byte to its scroll bar position, -42..42.
inline int b2vsb(int byte)
{
    if (byte >= 0 && byte <= 127)
        return int(std::floor(byte / 3.0));
    if (byte >= 128 && byte <= 255)
        return int(std::floor((byte - 256) / 3.0));
    return 0;
}

// Scroll bar position back to the byte.
inline int vsb2b(int value)
{
    if (value >= 0 && value <= kShiftBarLimit)
        return value * 3;
    if (value >= -kShiftBarLimit && value <= -1)
        return value * 3 + 256;
    return 0;
}

inline QString b2sql(int byte) { return numtext::str(byte * kSquelchPerByte); }
// The squelch bar's position for a byte (the label keeps the decimals, the bar cannot).
inline int b2sqlBar(int byte) { return int(numtext::roundHalfEven(byte * kSquelchPerByte)); }

inline int sql2b(double value)
{
    return std::min(kSquelchByteMax, numtext::toInt(std::floor(value / kSquelchPerByte + 0.5)));
}

// --- the frequency ---

enum class StepDir { Down, Up };

// The frequency one step from the text shown in the frequency box, in kHz. The text, not the
// receiver, is the start: the display holds what the user sees. The text is taken to whole Hz
// with +0.49, so a half Hz rounds down; the step is whole Hz. The result stays within limits.
inline double steppedFrequency(const QString &shown, const QString &stepText, StepDir dir, double lower,
                               double upper)
{
    const double stepHz = numtext::roundHalfEven(numtext::Val(stepText) * 1000);
    const double hz = std::floor(numtext::Val(shown) * 1000 + 0.49);
    double khz = (dir == StepDir::Up ? hz + stepHz : hz - stepHz) / 1000;
    if (dir == StepDir::Down && khz < lower)
        khz = lower;
    if (dir == StepDir::Up && khz > upper)
        khz = upper;
    return khz;
}

inline bool withinLimits(double khz, double lower, double upper) { return lower <= khz && khz <= upper; }

// The frequency box's text: the pattern ("####0.00") inside the limits, "?" outside.
inline QString frequencyText(double khz, double lower, double upper, const QString &pattern)
{
    if (!withinLimits(khz, lower, upper))
        return QStringLiteral("?");
    return numtext::commaToPoint(numtext::format(khz, pattern));
}

// The "i 5" and "i 1" buttons: to the nearest 5 kHz and the nearest kHz, halves up.
inline double roundToFiveKhz(double khz) { return std::floor((khz + 2.5) / 5) * 5; }
inline double roundToKhz(double khz) { return std::floor(khz + 0.5); }

// --- the keypad ---

// What the keypad's three entry buttons make of the number typed.
struct KeypadResult {
    bool ok = false;
    double value = 0;
    QString error; // message text when not ok
};

inline KeypadResult keypadFrequency(const QString &typed, double lower, double upper)
{
    const double f = numtext::Val(typed);
    if (withinLimits(f, lower, upper))
        return {true, f, {}};
    return {false, f, QStringLiteral("\nFrequency\noutside range")};
}

inline KeypadResult keypadMemoryCell(const QString &typed, int lastMemory)
{
    const double v = numtext::Val(typed);
    // Compared before rounding, so that a long number cannot overflow the cell number.
    if (v >= -0.5 && v <= lastMemory + 0.5) {
        const double n = numtext::roundHalfEven(v);
        if (n >= 0 && n <= lastMemory)
            return {true, n, {}};
    }
    return {false, v, QStringLiteral("\nMemory cell\noutside range")};
}

// A step outside 0.01..100 kHz is refused and the step goes back to this.
inline constexpr char kFallbackStep[] = "5";

inline KeypadResult keypadStep(const QString &typed)
{
    const double s = numtext::Val(typed);
    if (s >= 0.01 && s <= 100)
        return {true, s, {}};
    return {false, s, QStringLiteral("\nFrequency Stepsize\noutside range")};
}

// --- labels ---

// Levels 0..99 as two digits; anything else the receiver says is "?".
inline QString levelText(int v)
{
    return v >= 0 && v <= 99 ? numtext::format(v, QStringLiteral("00")) : QStringLiteral("?");
}

// Entry i of a label table where it exists, otherwise "?".
inline QString tableText(const QStringList &table, int i, int first, int last)
{
    if (i < first || i > last || i < 0 || i >= table.size())
        return QStringLiteral("?");
    return table[i];
}

// The attenuator's label: +10 dB for setting 0, down in steps of 10.
inline QString attenuatorText(int v)
{
    return v >= 0 && v <= 5 ? QString::number(10 - 10 * v) : QStringLiteral("?");
}

// Keeps v + delta within lo..hi.
inline int nudged(int v, int delta, int lo, int hi) { return std::clamp(v + delta, lo, hi); }

// --- windows ---

// Every window's name by its number (the objectName each window carries), for unloading all.
inline QString windowName(Win w)
{
    static const char *const names[] = {
        "",              "frm320Files",   "frmAbout",     "frmAR7030",    "frmBdxc",       "frmConvertILG",
        "frmIlg2rx",     "frmILGfinddbf", "frmIlgqsort",  "frmIlgquery",  "frmLast20",     "frmLoadfile",
        "frmLog",        "frmLogFormat",  "frmLoginput",  "frmLogsort",   "frmMemcell",    "frmMemman",
        "frmNoRx",       "frmNRD535",     "frmOwn",       "frmPropagation", "frmRtty",     "frmRX320",
        "frmRxClock",    "frmRxTimer",    "frmSavefile",  "frmScratchpad", "frmSetUp",     "frmSmeter",
        "",              "",              "frmTracking",  "frmUserdefs",  "frmWelcome",    "frmAdvancedDSP",
        "frmAero2rx",    "frmAeroquery",  "frmNRD545",    "frmScanlist",  "frmScanpairs",  "frmUserdefs545",
        "frmProp2prt2",  "frmScanband",   "frmMarkfreqs", "frmProphisto"};
    const int i = int(w);
    return i >= 1 && i <= kWindowCount ? QString::fromLatin1(names[i]) : QString();
}

// --- programs the menu starts ---

struct ExternalCommand {
    QString program;   // empty: nothing suitable on this system
    QStringList args;
};

// The help file: the Windows help viewer there, the desktop's opener elsewhere.
inline ExternalCommand helpCommand(const QString &helpFile, bool windows)
{
    if (windows)
        return {QStringLiteral("hh.exe"), {helpFile}};
    return {QStringLiteral("xdg-open"), {helpFile}};
}

// The desktop's date and time settings. exists(program) tells whether a program is installed.
inline ExternalCommand clockSettingsCommand(bool windows, const std::function<bool(const QString &)> &exists)
{
    if (windows)
        return {QStringLiteral("control.exe"), {QStringLiteral("timedate.cpl")}};
    struct Candidate { const char *program; const char *arg; };
    static const Candidate candidates[] = {
        {"gnome-control-center", "datetime"}, // GNOME, and Cinnamon/Budgie through it
        {"kcmshell6", "kcm_clock"},           // KDE Plasma 6
        {"kcmshell5", "clock"},               // KDE Plasma 5
        {"cinnamon-settings", "calendar"},
        {"mate-time-admin", nullptr},
        {"time-admin", nullptr},              // the old GNOME system tools (Xfce, LXDE)
    };
    for (const Candidate &c : candidates)
        if (exists(QString::fromLatin1(c.program)))
            return {QString::fromLatin1(c.program), c.arg ? QStringList{QString::fromLatin1(c.arg)} : QStringList{}};
    return {};
}

} // namespace panel
