#pragma once
// The RX-320 panel's own logic: its 34 filters in four groups of buttons, its settings file
// (the receiver cannot tell its settings, so the panel keeps them between sessions), and the
// keyboard's arithmetic on its scroll bars.
#include "core/numtext.h"
#include "core/runtime_error.h"
#include "core/shared_state.h"
#include "core/textfile.h"

#include <QByteArray>
#include <QStringList>
#include <array>

namespace rx320panel {

constexpr int kGroups = 4;
constexpr int kGroupButtons = 10;
constexpr int kFilters = 34;

// The filters of each group in button order, as indices into the filter table (widths in Hz:
// index 33 is 8000, then 6000 down to 300); -1 marks a button the group does not use.
struct FilterGroups {
    std::array<std::array<int16_t, kGroupButtons>, kGroups> filter{};
    std::array<int, kGroups> used{};
};

inline FilterGroups makeFilterGroups()
{
    FilterGroups g;
    for (auto &row : g.filter)
        row.fill(-1);
    auto put = [&](int group, std::initializer_list<int> indices) {
        int b = 0;
        for (int i : indices)
            g.filter[size_t(group)][size_t(b++)] = int16_t(i);
        g.used[size_t(group)] = b;
    };
    put(0, {33, 0, 1, 2, 3, 4, 5, 6});
    put(1, {7, 8, 9, 10, 11, 12, 13, 14, 15, 16});
    put(2, {17, 18, 19, 20, 21, 22, 23});
    put(3, {24, 25, 26, 27, 28, 29, 30, 31, 32});
    return g;
}

// The group that holds a filter index, 0 when none does.
inline int groupOf(const FilterGroups &g, int filterIndex)
{
    for (int group = 0; group < kGroups; ++group)
        for (int b = 0; b < g.used[size_t(group)]; ++b)
            if (g.filter[size_t(group)][size_t(b)] == filterIndex)
                return group;
    return 0;
}

// --- "rx320settings.ini" ---

constexpr const char *kSettingsFile = "rx320settings.ini";

struct Settings {
    double freq = 0;     // kHz
    int16_t bandwidth = 0;
    int16_t pbs = 0;     // Hz
    int16_t agc = 0;     // 1 slow .. 3 fast
    int16_t bfo = 0;     // Hz
    int16_t mode = 0;    // 0 AM, 1 USB, 2 LSB, 3 CW
    int16_t volume = 0;  // 0..99
    int16_t line = 0;    // 0..99
    bool operator==(const Settings &) const = default;
};

// Eight lines, one value each; a short file is "Input past end of file".
inline Settings readSettings(const QByteArray &bytes)
{
    const QStringList lines = textfile::splitLines(bytes);
    if (lines.size() < 8)
        throw RuntimeError::inputPastEnd();
    auto whole = [&](int i) { return numtext::cint(numtext::Val(lines[i])); };
    Settings s;
    s.freq = numtext::Val(lines[0]);
    s.bandwidth = whole(1);
    s.pbs = whole(2);
    s.agc = whole(3);
    s.bfo = whole(4);
    s.mode = whole(5);
    s.volume = whole(6);
    s.line = whole(7);
    return s;
}

inline QByteArray settingsText(const Settings &s)
{
    return textfile::joinLines({numtext::str(s.freq), QString::number(s.bandwidth), QString::number(s.pbs),
                                QString::number(s.agc), QString::number(s.bfo), QString::number(s.mode),
                                QString::number(s.volume), QString::number(s.line)});
}

// The settings as the driver remembers them, and back.
inline Settings sharedSettings()
{
    return {rx320Freq, rx320Bandwidth, rx320Pbs, rx320Agc, rx320Bfo, rx320Mode, rx320Volume, rx320Line};
}

inline void setSharedSettings(const Settings &s)
{
    rx320Freq = s.freq;
    rx320Bandwidth = s.bandwidth;
    rx320Pbs = s.pbs;
    rx320Agc = s.agc;
    rx320Bfo = s.bfo;
    rx320Mode = s.mode;
    rx320Volume = s.volume;
    rx320Line = s.line;
}

// --- the keyboard's arithmetic ---

// Pass band shift: 50 Hz a key, within -2000..2000.
inline int shiftUp(int v) { return v < 1951 ? v + 50 : 2000; }
inline int shiftDown(int v) { return v < -1950 ? -2000 : v - 50; }
// Loudspeaker: 5 a key, within 0..99.
inline int volumeUp(int v) { return v < 95 ? v + 5 : 99; }
inline int volumeDown(int v) { return v >= 5 ? v - 5 : 0; }

// The AGC label's index for a wire value (1 slow .. 3 fast).
inline int agcIndexOfWire(int wire) { return wire - 1; }

} // namespace rx320panel
