#include "frmPanelBase.h"
#include "core/frmWelcome.h"
#include "core/runtime_error.h"
#include "core/session_clock.h"
#include "panels/menu_holds_qt.h"
#include "panels/menu_windows_qt.h"
#include "ui/facades.h"
#include "ui/widgets/form_position.h"
#include "ui/widgets/spin_button.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QSlider>
#include <QStyle>
#include <QWheelEvent>

// --- construction ---

frmPanelBase::frmPanelBase(Win win, int type, bool actsOnReceiver, QWidget *parent)
    : QMainWindow(parent), win_(win), type_(type), acts_(actsOnReceiver)
{
    setObjectName(panel::windowName(win));
    setAttribute(Qt::WA_DeleteOnClose);
    static const char *const models[] = {"No RX", "AR7030", "NRD535", "RX320", "NRD545"};
    // The session clock writes the full title at its next tick.
    setWindowTitle(ltText.isEmpty() && type >= 0 && type <= 4 ? QLatin1String(models[type])
                                                             : panelTitle(type, ltText, utcText));
    setMouseTracking(true);
    // A close held back ends the reads under way at once: every wait on the line returns.
    guard_.setOnHold([] {
        if (frmWelcome *w = frmWelcome::instance())
            w->Comm1.cutWaits();
    });
}

frmPanelBase::~frmPanelBase()
{
    running_ = false;
    // A panel destroyed without its unload still leaves nothing pointing at it.
    if (frmWelcome *w = frmWelcome::instance())
        if (w->hub.panel() == static_cast<RxPanel *>(this))
            w->hub.setPanel(nullptr);
    if (frmWelcome::openWindow(win_) == this)
        frmWelcome::setOpenWindow(win_, nullptr);
}

CommLine &frmPanelBase::comm() const { return frmWelcome::instance()->Comm1; }

QLabel *frmPanelBase::addStatus(const char *name, const QString &caption)
{
    return panelface::addStatus(displayStatus, name, caption);
}

QWidget *frmPanelBase::buildDisplay()
{
    const panelface::Display d = panelface::buildDisplay();
    txtFrequencyA = d.frequency;
    displayStatus = d.status;
    lblMode = d.mode;
    lblBandwidth = d.bandwidth;
    lblAgcspeed = d.agcSpeed;
    return d.frame;
}

QWidget *frmPanelBase::buildKeypad()
{
    const panelface::Keypad k = panelface::buildKeypad();
    lblMfreq = k.number;
    cmd0to9 = k.digits;
    cmdDot = k.dot;
    cmdBack = k.back;
    cmdEnterfreq = k.enterFreq;
    cmdEnterMem = k.enterMem;
    cmdEnterS = k.enterStep;
    return k.box;
}

QWidget *frmPanelBase::buildTuning()
{
    const panelface::Tuning t = panelface::buildTuning();
    cmdfreqstep = t.step;
    spnFreqstep = t.spin;
    cmbFreqstep = t.stepSize;
    cmdMovefreq = t.move;
    lblInt5 = t.round5;
    lbnInt1 = t.round1;
    return t.box;
}

void frmPanelBase::arrangeFace(QWidget *face, QVBoxLayout *left, QWidget *keypad, const QList<QWidget *> &rightExtras)
{
    panelface::arrangeFace(face, left, keypad, rightExtras, cmdClose);
}

void frmPanelBase::applyLook()
{
    panelface::applyLook(this, lblMute);
    if (txtFrequencyA)
        txtFrequencyA->setFocus();
    // Controls that show text are heard by their text; each named one carries its name.
    nameForAccessibility(this);
}

// --- the menu ---

void frmPanelBase::buildMenu(const QStringList &omit, const std::map<QString, MenuRename> &renames,
                             const QList<MenuExtra> &extras)
{
    entries_ = panelmenu::build(this, omit, renames, extras);
}

QAction *frmPanelBase::menuEntry(const QString &name) const
{
    auto it = entries_.find(name);
    return it == entries_.end() ? nullptr : it->second;
}

void frmPanelBase::wireMenu(const QString &name, std::function<void()> handler)
{
    QAction *a = menuEntry(name);
    if (!a)
        return;
    connect(a, &QAction::triggered, this, guarded(guard_, [h = std::move(handler)] { h(); }));
    wired_[name] = true;
}

void frmPanelBase::finishMenu()
{
    wireMenu(QStringLiteral("mnuClose"), [this] { mnuClose_Click(); });
    wireMenu(QStringLiteral("mnuExit"), [this] { mnuExit_Click(); });
    for (const MenuWindow &row : menuWindows())
        if (row.serves(type_) && (!row.offered || row.offered()))
            wireMenu(QLatin1String(row.entry), [this, open = row.open] { open(*this); });
    for (auto &[name, a] : entries_) {
        if (wired_.count(name) || a->menu())
            continue;
        a->setEnabled(false);
        a->setToolTip(tr("Not available in this version"));
    }
    for (QMenu *m : menuBar()->findChildren<QMenu *>())
        m->setToolTipsVisible(true);
    refreshMenuHolds();
}

void frmPanelBase::refreshMenuHolds()
{
    for (auto &[name, a] : entries_)
        a->setEnabled((wired_.count(name) || a->menu()) && menuHoldCount(name) == 0);
}

void frmPanelBase::applyMenuHolds()
{
    for (int type = rxNone; type <= rxNRD545; ++type)
        if (auto *p = qobject_cast<frmPanelBase *>(frmWelcome::openWindow(panelWin(type))))
            p->refreshMenuHolds();
}

// --- connections ---

void frmPanelBase::connectCommon()
{
    connect(txtFrequencyA, &QLineEdit::returnPressed, this, guarded(guard_, [this] { txtFrequencyA_KeyPress(13); }));
    txtFrequencyA->installEventFilter(this);
    for (int i = 0; i < 10; ++i)
        connect(cmd0to9[size_t(i)], &QPushButton::clicked, this, guarded(guard_, [this, i] { cmd0to9_Click(i); }));
    connect(cmdDot, &QPushButton::clicked, this, guarded(guard_, [this] { cmdDot_Click(); }));
    connect(cmdBack, &QPushButton::clicked, this, guarded(guard_, [this] { cmdBack_Click(); }));
    connect(cmdEnterfreq, &QPushButton::clicked, this, guarded(guard_, [this] { cmdEnterfreq_Click(); }));
    connect(cmdEnterMem, &QPushButton::clicked, this, guarded(guard_, [this] { cmdEnterMem_Click(); }));
    connect(cmdEnterS, &QPushButton::clicked, this, guarded(guard_, [this] { cmdEnterS_Click(); }));
    connect(cmdMovefreq, &QPushButton::clicked, this, guarded(guard_, [this] { cmdMovefreq_Click(); }));
    connect(spnFreqstep, &SpinButton::SpinDown, this, guarded(guard_, [this] { spnFreqstep_SpinDown(); }));
    connect(spnFreqstep, &SpinButton::SpinUp, this, guarded(guard_, [this] { spnFreqstep_SpinUp(); }));
    for (int i = 0; i < 2; ++i)
        connect(cmdfreqstep[size_t(i)], &QPushButton::clicked, this, guarded(guard_, [this, i] { cmdfreqstep_Click(i); }));
    connect(lblInt5, &ClickLabel::clicked, this, guarded(guard_, [this] { lblInt5_Click(); }));
    connect(lbnInt1, &ClickLabel::clicked, this, guarded(guard_, [this] { lbnInt1_Click(); }));
    connect(lblMute, &ClickLabel::clicked, this, guarded(guard_, [this] { lblMute_Click(); }));
    connect(cmdClose, &QPushButton::clicked, this, guarded(guard_, [this] { cmdClose_Click(); }));
}

// --- load and unload framing ---

void frmPanelBase::fillStepCombo()
{
    cmbFreqstep->clear();
    for (const QString &s : stepTable)
        cmbFreqstep->addItem(s);
}

void frmPanelBase::setStartStep()
{
    const int i = numtext::cint(slotStartstep());
    if (i < 0 || i >= int(startStepTable.size()))
        throw RuntimeError::subscriptOutOfRange();
    cmbFreqstep->setEditText(QString::number(startStepTable[size_t(i)]));
}

void frmPanelBase::beginLoad()
{
    loading_ = true;
    placeAtLoad(this, win_);
    setEnabled(false);
    show();
}

void frmPanelBase::endLoad()
{
    isOpen(win_) = true;
    loading_ = false;
    setEnabled(true);
    activateWindow();
    if (txtFrequencyA)
        txtFrequencyA->setFocus();
}

void frmPanelBase::abandonLoad()
{
    loading_ = false;
    unloaded_ = true;
    running_ = false;
    qApp->removeEventFilter(this);
    if (frmWelcome *w = frmWelcome::instance())
        if (w->hub.panel() == static_cast<RxPanel *>(this))
            w->hub.setPanel(nullptr);
    frmWelcome::setOpenWindow(win_, nullptr);
    isOpen(win_) = false;
    hide();
    deleteLater();
}

void frmPanelBase::registerOpen()
{
    frmWelcome::instance()->hub.setPanel(this);
    frmWelcome::setOpenWindow(win_, this);
    if (acts_)
        qApp->installEventFilter(this);
}

void frmPanelBase::unloadCommon(bool closePort, const std::function<void()> &releaseDriver)
{
    unloaded_ = true;
    running_ = false;
    storeAtUnload(this, win_);
    isOpen(win_) = false;
    if (releaseDriver)
        releaseDriver();
    qApp->removeEventFilter(this);
    frmWelcome *welcome = frmWelcome::instance();
    if (welcome && welcome->hub.panel() == static_cast<RxPanel *>(this))
        welcome->hub.setPanel(nullptr);
    frmWelcome::setOpenWindow(win_, nullptr);
    closeAllWindows(this);
    if (closePort && welcome)
        welcome->Comm1.setPortOpen(false);
    // Not while the program itself is ending.
    if (welcome && isOpen(Win::frmWelcome))
        welcome->show();
}

void frmPanelBase::closeAllWindows(QWidget *except)
{
    for (int i = 1; i <= kWindowCount; ++i) {
        const Win w = Win(i);
        if (w == Win::frmWelcome || !isOpen(w))
            continue;
        QWidget *widget = frmWelcome::openWindow(w);
        if (!widget) {
            const QString name = panel::windowName(w);
            for (QWidget *t : QApplication::topLevelWidgets())
                if (!name.isEmpty() && t->objectName() == name) {
                    widget = t;
                    break;
                }
        }
        if (widget && widget != except)
            widget->close();
    }
}

void frmPanelBase::closeEvent(QCloseEvent *e)
{
    // Not while a handler of this or another window runs: it may be reading the receiver. The
    // close comes again when the last has returned.
    if (guard_.holdClose(e))
        return;
    if (!unloaded_) {
        // The unload talks to the receiver too: a close asked for meanwhile waits for it.
        const HandlerScope scope(guard_);
        Form_Unload();
    }
    e->accept();
}

// --- the frequency ---

QString frmPanelBase::frequencyText() const { return txtFrequencyA ? txtFrequencyA->text() : QString(); }

void frmPanelBase::showFrequency(double khz)
{
    const QString text = panel::frequencyText(khz, freqLowerLimit, freqUpperLimit, frequencyPattern());
    txtFrequencyA->setText(text);
    if (frmWelcome *w = frmWelcome::instance())
        w->distributefreqa(text, khz);
}

void frmPanelBase::txtFrequencyA_KeyPress(int keyAscii)
{
    if (keyAscii != 13)
        return;
    const double f = numtext::Val(txtFrequencyA->text());
    if (panel::withinLimits(f, freqLowerLimit, freqUpperLimit))
        writeFrequency(f);
    else
        ui::MsgBox(QStringLiteral("Frequency outside range"), ui::vbExclamation, QStringLiteral("Input Error"));
}

void frmPanelBase::txtFrequencyA_DblClick()
{
    txtFrequencyA->clear();
    txtFrequencyA->setFocus();
}

void frmPanelBase::step(panel::StepDir dir)
{
    direction_ = dir;
    last20Enabled = !(isOpen(Win::frmLast20) && frmWelcome::instance()->hub.stepsIgnored());
    spnFreqstep->setEnabled(false);
    const double khz = panel::steppedFrequency(txtFrequencyA->text(), cmbFreqstep->currentText(), dir,
                                               freqLowerLimit, freqUpperLimit);
    writeFrequency(khz);
    txtFrequencyA->repaint();
    spnFreqstep->setEnabled(true);
}

void frmPanelBase::spnFreqstep_SpinDown() { step(panel::StepDir::Down); }
void frmPanelBase::spnFreqstep_SpinUp() { step(panel::StepDir::Up); }

void frmPanelBase::cmdfreqstep_Click(int index)
{
    step(index == 0 ? panel::StepDir::Down : panel::StepDir::Up);
}

void frmPanelBase::cmdMovefreq_Click()
{
    running_ = !running_;
    cmdMovefreq->setText(running_ ? QStringLiteral("Stop") : QStringLiteral("GO"));
    cmdMovefreq->setProperty("running", running_);
    cmdMovefreq->style()->unpolish(cmdMovefreq);
    cmdMovefreq->style()->polish(cmdMovefreq);
    if (!running_)
        return; // the loop of the first click sees it and ends
    QPointer<frmPanelBase> self(this);
    while (self && running_ && !unloaded_ && !stopping()) {
        step(direction_);
        QCoreApplication::processEvents();
    }
}

void frmPanelBase::lblInt5_Click()
{
    double f = panel::roundToFiveKhz(numtext::Val(txtFrequencyA->text()));
    frmWelcome::instance()->Change2FreqA(f);
}

void frmPanelBase::lbnInt1_Click()
{
    double f = panel::roundToKhz(numtext::Val(txtFrequencyA->text()));
    frmWelcome::instance()->Change2FreqA(f);
}

// --- the keypad ---

void frmPanelBase::cmd0to9_Click(int index) { lblMfreq->setText(lblMfreq->text() + QString::number(index)); }
void frmPanelBase::cmdDot_Click() { lblMfreq->setText(lblMfreq->text() + u'.'); }
void frmPanelBase::cmdBack_Click() { lblMfreq->setText(lblMfreq->text().chopped(lblMfreq->text().isEmpty() ? 0 : 1)); }

void frmPanelBase::cmdEnterfreq_Click()
{
    cmdEnterfreq->setEnabled(false);
    const panel::KeypadResult r = panel::keypadFrequency(lblMfreq->text(), freqLowerLimit, freqUpperLimit);
    if (r.ok)
        writeFrequency(r.value);
    else
        ui::MsgBox(r.error, ui::vbOKOnly, QStringLiteral("Error"));
    lblMfreq->clear();
    cmdEnterfreq->setEnabled(true);
}

void frmPanelBase::cmdEnterMem_Click()
{
    const panel::KeypadResult r = panel::keypadMemoryCell(lblMfreq->text(), lastMemoryIndex);
    lblMfreq->clear();
    if (r.ok)
        enterMemory(int(r.value));
    else
        ui::MsgBox(r.error, ui::vbOKOnly, QStringLiteral("Error"));
}

void frmPanelBase::cmdEnterS_Click()
{
    const QString typed = lblMfreq->text();
    const panel::KeypadResult r = panel::keypadStep(typed);
    lblMfreq->clear();
    if (r.ok) {
        cmbFreqstep->setEditText(typed);
    } else {
        ui::MsgBox(r.error, ui::vbOKOnly, QStringLiteral("Error"));
        cmbFreqstep->setEditText(QLatin1String(panel::kFallbackStep));
    }
}

// --- mute ---

void frmPanelBase::lblMute_Click()
{
    muted_ = !muted_;
    if (muted_) {
        lblMute->setBackColor(QColor::fromRgb(panelface::kMuteOn));
        savedLevels_.clear();
        for (const MuteBar &m : muteBars()) {
            savedLevels_.push_back({m.bar, numtext::toInt(numtext::Val(m.label->text()))});
            m.bar->setValue(0);
        }
    } else {
        lblMute->setBackColor(QColor::fromRgb(panelface::kMuteOff));
        const auto saved = std::move(savedLevels_);
        savedLevels_.clear();
        for (const auto &[bar, level] : saved)
            bar->setValue(level);
    }
}

// --- close and the menu's common entries ---

void frmPanelBase::cmdClose_Click() { close(); }
void frmPanelBase::mnuClose_Click() { close(); }

void frmPanelBase::mnuExit_Click()
{
    if (frmWelcome *w = frmWelcome::instance())
        w->imgExit_Click();
}

// --- keyboard and wheel ---

bool frmPanelBase::Form_KeyDown(int key, Qt::KeyboardModifiers mods)
{
    const panel::KeyRow row = panel::lookupKey(keyTable(), key, mods);
    using panel::KeyAction;
    switch (row.action) {
    case KeyAction::None:
        return false;
    case KeyAction::StepUp:
        step(panel::StepDir::Up);
        break;
    case KeyAction::StepDown:
        step(panel::StepDir::Down);
        break;
    case KeyAction::Digit:
        digitBuffer_ += QString::number(row.arg);
        lblMfreq->setText(digitBuffer_);
        break;
    case KeyAction::Dot:
        digitBuffer_ += u'.';
        lblMfreq->setText(digitBuffer_);
        break;
    case KeyAction::Backspace:
        digitBuffer_.chop(digitBuffer_.isEmpty() ? 0 : 1);
        lblMfreq->setText(digitBuffer_);
        break;
    case KeyAction::EnterFreq:
        cmdEnterfreq_Click();
        digitBuffer_.clear();
        break;
    case KeyAction::EnterMem:
        cmdEnterMem_Click();
        digitBuffer_.clear();
        break;
    case KeyAction::EnterStep:
        cmdEnterS_Click();
        digitBuffer_.clear();
        break;
    case KeyAction::MoveFreq:
        cmdMovefreq_Click();
        break;
    default:
        keyAction(row);
        break;
    }
    return true;
}

bool frmPanelBase::eventFilter(QObject *watched, QEvent *event)
{
    // Installed on the whole application (for a panel with a receiver) so that the window sees
    // its keys before its controls, and on the frequency box.
    auto *w = qobject_cast<QWidget *>(watched);
    if (!w || !(w == this || isAncestorOf(w)))
        return false;
    switch (event->type()) {
    case QEvent::KeyPress:
        if (acts_ && isEnabled() && !unloaded_) {
            const HandlerScope scope(guard_);
            auto *k = static_cast<QKeyEvent *>(event);
            return Form_KeyDown(k->key(), k->modifiers());
        }
        return false;
    case QEvent::MouseButtonDblClick:
        if (w == txtFrequencyA) {
            txtFrequencyA_DblClick();
            return true;
        }
        break;
    case QEvent::MouseMove:
        // The wheel tunes while the pointer lies over the frequency box, and not elsewhere.
        wheelArmed_ = w == txtFrequencyA
            && txtFrequencyA->rect().contains(static_cast<QMouseEvent *>(event)->position().toPoint());
        break;
    case QEvent::Leave:
        if (w == txtFrequencyA)
            wheelArmed_ = false;
        break;
    case QEvent::Wheel:
        if (acts_ && wheelArmed_) {
            const HandlerScope scope(guard_);
            wheelStep(static_cast<QWheelEvent *>(event)->angleDelta().y());
            return true;
        }
        break;
    default:
        break;
    }
    return false;
}

void frmPanelBase::wheelStep(int delta)
{
    if (delta > 0)
        step(panel::StepDir::Up);
    else if (delta < 0)
        step(panel::StepDir::Down);
}
