#pragma once
// One rule for every window whose handlers can wait in a nested loop (a timed wait, a read that
// lets events run, a loop that pumps events): a close asked for while one of its handlers is on
// the stack is held back and carried out when the last of them has returned. Meanwhile the
// window's jobs see stopRequested() and end at their next step. A window whose close unloads the
// others (a panel, the start window) waits for the handlers of every guarded window.
//
//   WindowGuard guard_{this};                  // a member of the window
//   const HandlerScope scope(guard_);          // first line of a handler, or around a connection
//   if (guard_.holdClose(e)) return;           // first line of closeEvent
#include <QPointer>
#include <QWidget>
#include <functional>
#include <memory>

class QCloseEvent;

class WindowGuard {
public:
    enum class Reach { Own, All };
    explicit WindowGuard(QWidget *window, Reach reach = Reach::Own);
    ~WindowGuard();
    WindowGuard(const WindowGuard &) = delete;
    WindowGuard &operator=(const WindowGuard &) = delete;

    // For the window's closeEvent: true when the close must wait (the event is then ignored, the
    // jobs are told to stop, and the close comes again once the handlers have returned).
    bool holdClose(QCloseEvent *e);
    // For a window whose close box asks as its Exit button does: true when the close was held, or
    // was turned into that question (ask runs from the event loop, under the guard, also when the
    // close box came while a handler waited). leaving: the window is being unloaded by its Exit or
    // with the panel, and closes without asking.
    bool holdCloseOrAsk(QCloseEvent *e, bool leaving, std::function<void()> ask);
    // A close is held back: a job ends at its next step.
    bool stopRequested() const;
    // Runs once each time a close is held back (the panel cuts the line's waits there).
    void setOnHold(std::function<void()> f);

    struct State;

private:
    friend class HandlerScope;
    std::shared_ptr<State> state_;
};

// Marks a handler of the window as running for as long as it lives.
class HandlerScope {
public:
    explicit HandlerScope(WindowGuard &guard);
    // Carries out the closes held for it; the unload may raise a fatal run-time error.
    ~HandlerScope() noexcept(false);
    HandlerScope(const HandlerScope &) = delete;
    HandlerScope &operator=(const HandlerScope &) = delete;

private:
    // Shared, so that a window destroyed by other means leaves the scope nothing dangling.
    std::shared_ptr<WindowGuard::State> state_;
};

// A handler wrapped so that it runs under the window's guard, for connections; A are the
// arguments it takes from the signal:
//   connect(b, &QPushButton::clicked, this, guarded(guard_, [this] { cmdX_Click(); }));
//   connect(bar, &QSlider::valueChanged, this, guarded<int>(guard_, [this](int v) { vsbX_Change(v); }));
template <class... A, class F>
auto guarded(WindowGuard &guard, F f)
{
    return [&guard, f = std::move(f)](A... args) {
        const HandlerScope scope(guard);
        f(args...);
    };
}
