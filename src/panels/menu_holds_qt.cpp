#include "menu_holds_qt.h"
#include "panels/frmPanelBase.h"

#include <map>
#include <utility>

namespace {
std::map<QString, int> &counts()
{
    static std::map<QString, int> c;
    return c;
}
} // namespace

int menuHoldCount(const QString &entry)
{
    auto it = counts().find(entry);
    return it == counts().end() ? 0 : it->second;
}

void MenuHold::take(const QStringList &entries)
{
    release();
    entries_ = entries;
    for (const QString &e : entries_)
        ++counts()[e];
    frmPanelBase::applyMenuHolds();
}

void MenuHold::release()
{
    if (entries_.isEmpty())
        return;
    for (const QString &e : std::exchange(entries_, {}))
        if (--counts()[e] <= 0)
            counts().erase(e);
    frmPanelBase::applyMenuHolds();
}
