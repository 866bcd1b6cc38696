#pragma once
// A measuring window keeps some entries of the panels' menus disabled while it is open. Holds are
// counted per entry, so one window's going does not give back an entry another still holds; an
// entry is enabled again with its last hold, and only if a window serves it.
#include <QStringList>

class MenuHold {
public:
    MenuHold() = default;
    explicit MenuHold(const QStringList &entries) { take(entries); }
    ~MenuHold() { release(); }
    MenuHold(const MenuHold &) = delete;
    MenuHold &operator=(const MenuHold &) = delete;

    // Holds the entries ("mnuSmeter", "mnuScan"); what this hold had before is given back first.
    void take(const QStringList &entries);
    void release();
    bool holding() const { return !entries_.isEmpty(); }

private:
    QStringList entries_;
};

// The number of holds on an entry now.
int menuHoldCount(const QString &entry);
