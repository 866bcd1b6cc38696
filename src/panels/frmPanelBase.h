#pragma once
// What the receiver panels share: the frequency display and its box, the keypad, the step
// controls and "GO", the rounding buttons, mute, the keyboard and the wheel, the menu of the
// whole program, and the load and unload framing. Each model's panel adds its receiver's
// buttons, bars and handlers.
#include "core/hub.h"
#include "core/shared_state.h"
#include "panels/panel_face_qt.h"
#include "panels/panel_keys.h"
#include "panels/panel_logic.h"
#include "panels/panel_menu_qt.h"
#include "ui/widgets/window_guard.h"

#include <QLabel>
#include <QMainWindow>
#include <QPointer>
#include <array>
#include <functional>
#include <map>
#include <vector>

class QAbstractSlider;
class QAction;
class QComboBox;
class QGroupBox;
class QHBoxLayout;
class QLineEdit;
class QVBoxLayout;
class QPushButton;
class QSlider;
class CommLine;
class SpinButton;

class frmPanelBase : public QMainWindow, public RxPanel {
    Q_OBJECT
public:
    ~frmPanelBase() override;

    Win windowNumber() const { return win_; }

    // --- controls every panel has ---
    QLineEdit *txtFrequencyA = nullptr;
    std::array<QPushButton *, 10> cmd0to9{};
    QPushButton *cmdDot = nullptr;
    QPushButton *cmdBack = nullptr;
    QLabel *lblMfreq = nullptr;
    QPushButton *cmdEnterfreq = nullptr;
    QPushButton *cmdEnterMem = nullptr;
    QPushButton *cmdEnterS = nullptr;
    QPushButton *cmdMovefreq = nullptr;
    QComboBox *cmbFreqstep = nullptr;
    SpinButton *spnFreqstep = nullptr;
    std::array<QPushButton *, 2> cmdfreqstep{}; // 0 down, 1 up
    ClickLabel *lblInt5 = nullptr;
    ClickLabel *lbnInt1 = nullptr;
    ClickLabel *lblMute = nullptr;
    QPushButton *cmdClose = nullptr;
    QLabel *lblMode = nullptr;
    QLabel *lblBandwidth = nullptr;
    QLabel *lblAgcspeed = nullptr;

    // A menu entry by its name ("mnuUpdate"), nullptr where this panel has none.
    QAction *menuEntry(const QString &name) const;

    // --- handlers every receiver panel shares ---
    void txtFrequencyA_KeyPress(int keyAscii);
    void txtFrequencyA_DblClick();
    void cmd0to9_Click(int index);
    void cmdDot_Click();
    void cmdBack_Click();
    void cmdEnterfreq_Click();
    void cmdEnterMem_Click();
    void cmdEnterS_Click();
    void cmdMovefreq_Click();
    void spnFreqstep_SpinDown();
    void spnFreqstep_SpinUp();
    void cmdfreqstep_Click(int index);
    void lblInt5_Click();
    void lbnInt1_Click();
    void lblMute_Click();
    void cmdClose_Click();
    void mnuClose_Click();
    void mnuExit_Click();

    // The window's key handler: true when the key was the panel's.
    bool Form_KeyDown(int key, Qt::KeyboardModifiers mods);
    bool wheelArmed() const { return wheelArmed_; }
    bool muted() const { return muted_; }
    bool running() const { return running_; }

    // Every open panel's entries as the menu holds now say (menu_holds_qt.h).
    static void applyMenuHolds();

    // Unloads every open window of the program but the start window and except.
    static void closeAllWindows(QWidget *except);

    // The hub's view of the panel.
    QString frequencyText() const override;

    // Loads the panel (position, receiver, settings) and shows it.
    virtual void Form_Load() = 0;

protected:
    frmPanelBase(Win win, int type, bool actsOnReceiver, QWidget *parent);

    // --- what each model supplies ---
    // Writes FrequencyA through the panel's own driver.
    virtual void writeFrequency(double khz) = 0;
    virtual QString frequencyPattern() const { return QStringLiteral("####0.00"); }
    // Cell n (within 0..lastMemoryIndex) to the receiver.
    virtual void enterMemory(int n) = 0;
    virtual const std::vector<panel::KeyRow> &keyTable() const = 0;
    // Keys whose action is the model's own (its buttons and bars).
    virtual void keyAction(const panel::KeyRow &row) = 0;
    // The bars that mute silences, with the labels that tell their levels.
    struct MuteBar { QAbstractSlider *bar; QLabel *label; };
    virtual std::vector<MuteBar> muteBars() const = 0;
    virtual QString firmwareText() { return {}; }
    virtual void Form_Unload() = 0;

    // --- building blocks: the face's parts (panel_face_qt.h) ---
    using Fader = panelface::Fader;
    static Fader makeFader(const char *barName, const char *labelName, const QString &caption, int min, int max,
                           int small, int large, bool clickZero)
    {
        return panelface::makeFader(barName, labelName, caption, min, max, small, large, clickZero);
    }
    static QPushButton *makeButton(const QString &name, const QString &caption, QWidget *parent)
    {
        return panelface::makeButton(name, caption, parent);
    }
    static QGroupBox *buttonGroup(const QString &title, const QList<QPushButton *> &buttons, int columns = 0)
    {
        return panelface::buttonGroup(title, buttons, columns);
    }
    static QWidget *keyHints(const QList<std::pair<QString, QString>> &rows) { return panelface::keyHints(rows); }
    static void markActive(const QList<QPushButton *> &buttons, int index) { panelface::markActive(buttons, index); }
    // The shared parts, kept in the panel's members.
    QWidget *buildDisplay();
    QWidget *buildKeypad();
    QWidget *buildTuning();
    // The face: the panel's own column on the left, the keypad (and extras) on the right with
    // Close at the foot.
    void arrangeFace(QWidget *face, QVBoxLayout *left, QWidget *keypad, const QList<QWidget *> &rightExtras = {});
    // The status line of the display (mode, filter, AGC ...): panels add their own labels.
    QHBoxLayout *displayStatus = nullptr;
    QLabel *addStatus(const char *name, const QString &caption);

    // The menu of the panel (panel_menu_qt.h); which window an entry opens is menu_windows_qt.h's.
    using MenuRename = panelmenu::Rename;
    using MenuExtra = panelmenu::Extra;
    void buildMenu(const QStringList &omit, const std::map<QString, MenuRename> &renames = {},
                   const QList<MenuExtra> &extras = {});
    // Connects a menu entry; entries never wired are shown disabled.
    void wireMenu(const QString &name, std::function<void()> handler);
    // Wires Close, Exit and the windows of the menu's table, and disables what is left.
    void finishMenu();

    // Connects the shared controls to their handlers (panels with a receiver).
    void connectCommon();
    void applyLook();

    // The frequency display and the hub's followers.
    void showFrequency(double khz);
    void step(panel::StepDir dir);
    void fillStepCombo();
    void setStartStep();

    // The load's framing. The panel shows at once, inert until the receiver has been read.
    void beginLoad();
    void endLoad();
    // A load that ended in a fatal error: the half-made panel goes.
    void abandonLoad();
    // Runs the load of a panel just made; when it fails, the panel's driver and the panel go
    // and the error goes on to the application.
    template <class P>
    static P *loadOrAbandon(P *p, std::function<void()> releaseDriver = {})
    {
        // The load reads the receiver and lets events run: a close that comes meanwhile waits.
        const HandlerScope scope(static_cast<frmPanelBase *>(p)->guard_);
        try {
            p->Form_Load();
        } catch (...) {
            if (releaseDriver)
                releaseDriver();
            p->abandonLoad();
            throw;
        }
        return p;
    }
    // The hub and the start window know the panel from here on.
    void registerOpen();
    // A close is held back or under way: a job of the panel ends at its next step.
    bool stopping() const { return guard_.stopRequested(); }
    // The unload's framing after the model's own part: position, flags, other windows, port,
    // start window.
    void unloadCommon(bool closePort, const std::function<void()> &releaseDriver);
    CommLine &comm() const;

    void closeEvent(QCloseEvent *e) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

    void wheelStep(int delta);

    // Handlers run under it; the panel's close waits for every guarded window's handlers, since
    // it unloads them all.
    WindowGuard guard_{this, WindowGuard::Reach::All};
    Win win_;
    int type_;
    bool acts_;
    bool loading_ = false;
    bool unloaded_ = false;
    bool running_ = false;
    panel::StepDir direction_ = panel::StepDir::Up;
    bool muted_ = false;
    std::vector<std::pair<QAbstractSlider *, int>> savedLevels_;
    bool wheelArmed_ = false;
    QString digitBuffer_;

private:
    std::map<QString, QAction *> entries_;
    std::map<QString, bool> wired_;
    void refreshMenuHolds();
};
