#include "window_guard.h"

#include <QCloseEvent>
#include <QMetaObject>
#include <QTimer>
#include <algorithm>
#include <exception>
#include <vector>

struct WindowGuard::State {
    QPointer<QWidget> window;
    Reach reach = Reach::Own;
    int depth = 0;
    bool held = false;
    bool exitAsked = false; // the close box was used while a handler ran
    std::function<void()> onHold;
};

namespace {

std::vector<std::weak_ptr<WindowGuard::State>> &registry()
{
    static std::vector<std::weak_ptr<WindowGuard::State>> r;
    return r;
}

template <class F>
void forEachState(F f)
{
    auto &r = registry();
    r.erase(std::remove_if(r.begin(), r.end(), [](const auto &w) { return w.expired(); }), r.end());
    // A copy: f may make or end guards.
    const auto all = r;
    for (const auto &w : all)
        if (auto s = w.lock())
            f(*s);
}

bool anyDepth()
{
    bool any = false;
    forEachState([&](WindowGuard::State &s) { any = any || s.depth > 0; });
    return any;
}

bool waits(const WindowGuard::State &s) { return s.reach == WindowGuard::Reach::All ? anyDepth() : s.depth > 0; }

// Held closes whose handlers have all returned are carried out now, as the handler's own close
// would have been; the window is deleted later, so the callers still on the stack are safe. While
// an error leaves the handler, they come again from the event loop instead.
void settle()
{
    const bool unwinding = std::uncaught_exceptions() > 0;
    forEachState([&](WindowGuard::State &s) {
        if (!s.held || waits(s))
            return;
        s.held = false;
        if (QWidget *w = s.window) {
            if (unwinding)
                QMetaObject::invokeMethod(w, [w] { w->close(); }, Qt::QueuedConnection);
            else
                w->close();
        }
    });
}

} // namespace

WindowGuard::WindowGuard(QWidget *window, Reach reach) : state_(std::make_shared<State>())
{
    state_->window = window;
    state_->reach = reach;
    registry().push_back(state_);
}

WindowGuard::~WindowGuard()
{
    // Scopes still open keep the state; the window is gone, so nothing is replayed.
    state_->window = nullptr;
    state_->held = false;
}

bool WindowGuard::holdClose(QCloseEvent *e)
{
    if (!waits(*state_))
        return false;
    e->ignore();
    if (!state_->held) {
        state_->held = true;
        if (state_->onHold)
            state_->onHold();
    }
    return true;
}

bool WindowGuard::holdCloseOrAsk(QCloseEvent *e, bool leaving, std::function<void()> ask)
{
    const bool asExit = !leaving && (e->spontaneous() || state_->exitAsked);
    if (holdClose(e)) {
        state_->exitAsked = asExit;
        return true;
    }
    state_->exitAsked = false;
    if (!asExit)
        return false;
    e->ignore();
    QTimer::singleShot(0, state_->window, guarded(*this, std::move(ask)));
    return true;
}

bool WindowGuard::stopRequested() const
{
    // A held close of a window that unloads the others stops their jobs too.
    bool stop = state_->held;
    forEachState([&](State &s) { stop = stop || (s.held && s.reach == Reach::All); });
    return stop;
}
void WindowGuard::setOnHold(std::function<void()> f) { state_->onHold = std::move(f); }

HandlerScope::HandlerScope(WindowGuard &guard) : state_(guard.state_) { ++state_->depth; }

HandlerScope::~HandlerScope() noexcept(false)
{
    if (--state_->depth == 0)
        settle();
}
