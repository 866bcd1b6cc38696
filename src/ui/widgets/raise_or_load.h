#pragma once
// One rule for opening a window that exists at most once: the one in slot is raised while it is
// still there for the listener (live), else a new one is loaded into slot. A window closed but
// not yet deleted is gone already; a load that fails (a fatal run-time error) leaves no window
// behind.
#include <QPointer>

template <class W, class Live>
W *raiseOrLoad(QPointer<W> &slot, Live live)
{
    if (slot && live(*slot)) {
        slot->showNormal();
        slot->raise();
        slot->activateWindow();
        return slot;
    }
    slot = new W;
    try {
        slot->Form_Load();
    } catch (...) {
        delete slot.data();
        throw;
    }
    return slot;
}

// Live while shown.
template <class W>
W *raiseOrLoad(QPointer<W> &slot)
{
    return raiseOrLoad(slot, [](const W &w) { return w.isVisible(); });
}
