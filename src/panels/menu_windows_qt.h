#pragma once
// Which window each entry of a panel's menu opens, one row an entry (and model). A panel wires
// the rows that serve it when it finishes its menu; an entry that no row and no handler of the
// panel's own takes stays disabled. A new window is one row in menu_windows_qt.cpp:
//     {"mnuLog", [](frmPanelBase &) { frmLog::open(); }},
#include <functional>
#include <vector>

class frmPanelBase;

struct MenuWindow {
    const char *entry;                        // the entry's name, "mnuSetup"
    std::function<void(frmPanelBase &)> open; // runs under the panel's handler guard
    std::vector<int> models = {};             // the rxType of the panels it serves; empty: every panel
    // Asked as the menu is made; false leaves the entry disabled. Empty: always offered.
    std::function<bool()> offered = {};

    bool serves(int type) const;
};

const std::vector<MenuWindow> &menuWindows();
