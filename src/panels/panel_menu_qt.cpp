#include "panel_menu_qt.h"

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

namespace {

struct StdEntry {
    const char *menu;
    const char *sub; // a submenu of the menu, or nullptr
    const char *caption;
    const char *name; // "-": a separator
};

// The program's menu, as every panel has it before its own differences.
const StdEntry kStandardMenu[] = {
    {"Direct", nullptr, "Update", "mnuUpdate"},
    {"Direct", nullptr, "Reset RX", "mnuResetRX"},
    {"Direct", nullptr, "Set-up . . .", "mnuSetup"},
    {"Direct", nullptr, "Firmware version", "mnuFirmware"},
    {"Direct", nullptr, "", "-"},
    {"Direct", nullptr, "Last 20 Freqs . . .", "mnuLast20"},
    {"Direct", nullptr, "Mark Freqs . . .", "mnuMaqrkfreqs"},
    {"Direct", nullptr, "Freq Scratchpad . . .", "mnuScratchpad"},
    {"Direct", nullptr, "", "-"},
    {"Direct", nullptr, "Enable LL+LR", "mnuEnableLLLR"},
    {"Direct", nullptr, "Disable LL+LR", "mnuDisableLLLR"},
    {"Direct", nullptr, "Power On", "mnuPowerOn"},
    {"Direct", nullptr, "Power Off", "mnuPowerOff"},
    {"Direct", nullptr, "", "-"},
    {"Direct", nullptr, "Close", "mnuClose"},
    {"Direct", nullptr, "Exit", "mnuExit"},
    {"Db2Rx", nullptr, "BDXC . . .", "mnuBdxc"},
    {"Db2Rx", nullptr, "Own . . .", "mnuOwn"},
    {"Db2Rx", nullptr, ".320 . . .", "mnu320Files"},
    {"Db2Rx", nullptr, "ILG . . .", "mnuIlg2Rx"},
    {"Db2Rx", nullptr, "Aero . . .", "mnuAero2rx"},
    {"Db2Rx", nullptr, "", "-"},
    {"Db2Rx", nullptr, "Convert ILG . . .", "mnuConvertILG1"},
    {"Db2Rx", nullptr, "Convert Aero . . .", "mnuConvertaero2"},
    {"Rx2Db", nullptr, "Logging . . .", "mnuLog"},
    {"Rx2Db", nullptr, "Tracking . . .", "mnuTracking"},
    {"Rx2Db", nullptr, "", "-"},
    {"Rx2Db", nullptr, "Convert ILG . . .", "mnuConvertILG2"},
    {"Rx2Db", nullptr, "Convert Aero . . .", "mnuConvertaero"},
    {"Signal An", nullptr, "S-meter . . .", "mnuSmeter"},
    {"Signal An", "Scan", "Freq Band . . .", "mnuScanBand"},
    {"Signal An", "Scan", "Freq List . . .", "mnuScanFreqlist"},
    {"Signal An", "Scan", "Freq Pairs . . .", "mnuScanfreqpairs"},
    {"Signal An", "Propagation", "Time Analysis", "mnuTimean"},
    {"Signal An", "Propagation", "Time Analysis to Print", "mnuTimean2prt"},
    {"Signal An", "Propagation", "Time + Histogram", "mnuProphisto"},
    {"MemMan", nullptr, "Memory Management . . .", "mnuMemman"},
    {"Timers", nullptr, "Set PC Clock . . .", "mnuPCclock"},
    {"Timers", nullptr, "Set RX Clock . . .", "mnuRXclock"},
    {"Timers", nullptr, "Programming . . .", "mnuRxTimer"},
    {"Help", nullptr, "HTML Help", "mnuHtmlhelp"},
    {"Help", nullptr, "About . . .", "mnuAbout"},
};

} // namespace

namespace panelmenu {

std::map<QString, QAction *> build(QMainWindow *window, const QStringList &omit,
                                   const std::map<QString, Rename> &renames, const QList<Extra> &extras)
{
    std::map<QString, QAction *> entries;
    std::map<QString, QMenu *> menus;
    auto menuFor = [&](const QString &title, const QString &sub) {
        const QString key = title + u'/' + sub;
        auto it = menus.find(key);
        if (it != menus.end())
            return it->second;
        QMenu *top = menus[title + u'/'];
        if (!top) {
            top = window->menuBar()->addMenu(title);
            top->setObjectName(QStringLiteral("menu") + QString(title).remove(u' '));
            menus[title + u'/'] = top;
        }
        if (sub.isEmpty())
            return top;
        QMenu *m = top->addMenu(sub);
        m->setObjectName(QStringLiteral("menu") + sub);
        // A submenu is an entry too, "mnuScan", which a window may hold disabled as a whole.
        m->menuAction()->setObjectName(QStringLiteral("mnu") + sub);
        entries[QStringLiteral("mnu") + sub] = m->menuAction();
        menus[key] = m;
        return m;
    };
    auto add = [&](QMenu *m, const QString &name, const QString &caption) {
        auto *a = new QAction(caption, window);
        a->setObjectName(name);
        m->addAction(a);
        entries[name] = a;
    };
    bool pendingSeparator = false;
    QMenu *last = nullptr;
    for (const StdEntry &e : kStandardMenu) {
        QMenu *m = menuFor(QLatin1String(e.menu), e.sub ? QLatin1String(e.sub) : QString());
        if (m != last)
            pendingSeparator = false;
        last = m;
        const QString name = QLatin1String(e.name);
        if (name == QLatin1String("-")) {
            pendingSeparator = !m->isEmpty();
            continue;
        }
        if (omit.contains(name))
            continue;
        if (pendingSeparator) {
            m->addSeparator();
            pendingSeparator = false;
        }
        auto r = renames.find(name);
        if (r != renames.end())
            add(m, r->second.name, r->second.caption);
        else
            add(m, name, QLatin1String(e.caption));
        const QString added = r != renames.end() ? r->second.name : name;
        for (const Extra &x : extras)
            if (x.after == added)
                add(m, x.name, x.caption);
    }
    return entries;
}

} // namespace panelmenu
