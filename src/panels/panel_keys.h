#pragma once
// The panels' keyboard: which key with which modifier does what, as tables the panels look up.
// The window sees every key before its controls do.
#include <Qt>
#include <vector>

namespace panel {

enum class KeyMods { None, Shift, Ctrl, Alt };

enum class KeyAction {
    None,
    StepUp,
    StepDown,
    Bandwidth,  // arg: the filter button
    Mode,       // arg: the mode button
    ShiftUp,    // pass band shift one notch up
    ShiftDown,
    ShiftZero,
    Digit,      // arg: 0..9, to the digit buffer
    Dot,
    Backspace,
    EnterFreq,
    EnterMem,
    EnterStep,
    MoveFreq,
    VolumeUp,
    VolumeDown,
    VolumeZero,
    BwRange,    // arg: the filter group button
    BwGroup,    // arg: the button within the group
};

struct KeyRow {
    int key = 0;
    KeyMods mods = KeyMods::None;
    KeyAction action = KeyAction::None;
    int arg = 0;
};

// The modifier group of a key press: exactly one of Shift, Ctrl, Alt, or none. The keypad flag
// is no modifier of ours. Combinations belong to no group.
inline bool keyModsOf(Qt::KeyboardModifiers m, KeyMods &out)
{
    m &= ~Qt::KeypadModifier;
    if (m == Qt::NoModifier)
        out = KeyMods::None;
    else if (m == Qt::ShiftModifier)
        out = KeyMods::Shift;
    else if (m == Qt::ControlModifier)
        out = KeyMods::Ctrl;
    else if (m == Qt::AltModifier)
        out = KeyMods::Alt;
    else
        return false;
    return true;
}

namespace keyrows {
// Rows every panel with a receiver shares: the arrows, with or without Ctrl, and the Ctrl keypad.
inline void addCommon(std::vector<KeyRow> &t)
{
    for (KeyMods m : {KeyMods::None, KeyMods::Ctrl}) {
        t.push_back({Qt::Key_Up, m, KeyAction::StepUp, 0});
        t.push_back({Qt::Key_Right, m, KeyAction::StepUp, 0});
        t.push_back({Qt::Key_Down, m, KeyAction::StepDown, 0});
        t.push_back({Qt::Key_Left, m, KeyAction::StepDown, 0});
    }
    for (int d = 0; d <= 9; ++d)
        t.push_back({Qt::Key_0 + d, KeyMods::Ctrl, KeyAction::Digit, d});
    t.push_back({Qt::Key_Period, KeyMods::Ctrl, KeyAction::Dot, 0});
    t.push_back({Qt::Key_Backspace, KeyMods::Ctrl, KeyAction::Backspace, 0});
    t.push_back({Qt::Key_F, KeyMods::Ctrl, KeyAction::EnterFreq, 0});
    t.push_back({Qt::Key_M, KeyMods::Ctrl, KeyAction::EnterMem, 0});
    t.push_back({Qt::Key_S, KeyMods::Ctrl, KeyAction::EnterStep, 0});
    t.push_back({Qt::Key_G, KeyMods::Ctrl, KeyAction::MoveFreq, 0});
}

// "=", "-" and "0" with a modifier. With Shift held a keyboard reports the shifted symbol
// ("+", "_", ")" on most layouts), so both count.
inline void addSymbols(std::vector<KeyRow> &t, KeyMods m, KeyAction up, KeyAction down, KeyAction zero)
{
    t.push_back({Qt::Key_Equal, m, up, 0});
    t.push_back({Qt::Key_Minus, m, down, 0});
    t.push_back({Qt::Key_0, m, zero, 0});
    if (m == KeyMods::Shift) {
        t.push_back({Qt::Key_Plus, m, up, 0});
        t.push_back({Qt::Key_Underscore, m, down, 0});
        t.push_back({Qt::Key_ParenRight, m, zero, 0});
    }
}
} // namespace keyrows

// The AR7030 panel.
inline const std::vector<KeyRow> &ar7030Keys()
{
    static const std::vector<KeyRow> t = [] {
        std::vector<KeyRow> r;
        keyrows::addCommon(r);
        for (int i = 0; i < 6; ++i)
            r.push_back({Qt::Key_F1 + i, KeyMods::Shift, KeyAction::Bandwidth, i});
        const int modeKeys[] = {Qt::Key_A, Qt::Key_S, Qt::Key_F, Qt::Key_D, Qt::Key_C, Qt::Key_L, Qt::Key_U};
        for (int i = 0; i < 7; ++i)
            r.push_back({modeKeys[i], KeyMods::Shift, KeyAction::Mode, i});
        keyrows::addSymbols(r, KeyMods::Shift, KeyAction::ShiftUp, KeyAction::ShiftDown, KeyAction::ShiftZero);
        keyrows::addSymbols(r, KeyMods::Alt, KeyAction::VolumeUp, KeyAction::VolumeDown, KeyAction::VolumeZero);
        return r;
    }();
    return t;
}

// The RX-320 panel: filter groups on F1..F4 (widest group last), four buttons of the group on
// F5..F8, and four modes.
inline const std::vector<KeyRow> &rx320Keys()
{
    static const std::vector<KeyRow> t = [] {
        std::vector<KeyRow> r;
        keyrows::addCommon(r);
        const int ranges[] = {3, 2, 1, 0};
        for (int i = 0; i < 4; ++i)
            r.push_back({Qt::Key_F1 + i, KeyMods::Shift, KeyAction::BwRange, ranges[i]});
        const int buttons[] = {6, 4, 2, 0};
        for (int i = 0; i < 4; ++i)
            r.push_back({Qt::Key_F5 + i, KeyMods::Shift, KeyAction::BwGroup, buttons[i]});
        r.push_back({Qt::Key_A, KeyMods::Shift, KeyAction::Mode, 0});
        r.push_back({Qt::Key_C, KeyMods::Shift, KeyAction::Mode, 3});
        r.push_back({Qt::Key_L, KeyMods::Shift, KeyAction::Mode, 2});
        r.push_back({Qt::Key_U, KeyMods::Shift, KeyAction::Mode, 1});
        keyrows::addSymbols(r, KeyMods::Shift, KeyAction::ShiftUp, KeyAction::ShiftDown, KeyAction::ShiftZero);
        keyrows::addSymbols(r, KeyMods::Alt, KeyAction::VolumeUp, KeyAction::VolumeDown, KeyAction::VolumeZero);
        return r;
    }();
    return t;
}

// The row for a key press, or a row with action None.
inline KeyRow lookupKey(const std::vector<KeyRow> &table, int key, Qt::KeyboardModifiers mods)
{
    KeyMods m;
    if (!keyModsOf(mods, m))
        return {};
    for (const KeyRow &r : table)
        if (r.key == key && r.mods == m)
            return r;
    return {};
}

} // namespace panel
