#pragma once
// The start window: it lives for the whole run and owns the serial line, the receive buffer,
// the three shared timers, the start window's driver instances and the frequency hub.
#include "core/hub.h"
#include "core/session_clock.h"
#include "serial/comm_line.h"
#include "ui/widgets/window_guard.h"

#include <QLabel>
#include <QToolButton>
#include <QWidget>
#include <functional>
#include <map>

class frmWelcome : public QWidget {
    Q_OBJECT
public:
    explicit frmWelcome(QWidget *parent = nullptr);
    ~frmWelcome() override;

    // The one start window of the process.
    static frmWelcome *instance();

    // Start: positions, settings, lblGo, show. Fatal run-time errors leave it.
    void Form_Load();
    void Form_Unload();

    void imgGo_Click();
    void imgSetup_Click();
    void imgAbout_Click();
    void imgExit_Click();

    // lblGo by receiver type (also used by the set-up window).
    void showRxType(int type);

    // The hub's operations, for every window.
    void Change2FreqA(double &freq) { hub.Change2FreqA(freq); }
    void distributefreqa(const QString &text, double freq) { hub.distributefreqa(text, freq); }
    QString ConvertRx2mfa() { return hub.ConvertRx2mfa(); }
    void SetRx2mfa(QString &letter) { hub.SetRx2mfa(letter); }
    void Update4RxFreq() { hub.Update4RxFreq(); }
    QVariant Update2RxFreq() { return hub.Update2RxFreq(); }

    using PanelOpener = std::function<QWidget *()>;
    // Windows register themselves while open, so that titles can be written.
    static void setOpenWindow(Win w, QWidget *widget);
    static QWidget *openWindow(Win w);
    // A window that goes: registered as w, it is registered no more and no longer open.
    static void forgetOpenWindow(Win w, const QWidget *widget);

    CommLine Comm1;
    SessionTimers timers;
    FrequencyHub hub;

    QToolButton *imgGo = nullptr;
    QToolButton *imgSetup = nullptr;
    QToolButton *imgAbout = nullptr;
    QToolButton *imgExit = nullptr;
    QLabel *lblGo = nullptr;

protected:
    void closeEvent(QCloseEvent *e) override;

private:
    void writeTitles();
    bool unloaded_ = false;
    // Ending the program waits for every guarded window's handler that is on the stack.
    WindowGuard guard_{this, WindowGuard::Reach::All};
};

// Opens a driver instance of the model on the line (rxType 1..4); nullptr for models without one yet.
std::unique_ptr<RxDriver> makeDriver(int type, CommLine &comm);
