#include "frmPanelBase.h"
#include "core/frmAbout.h"
#include "core/frmSetUp.h"
#include "core/frmWelcome.h"
#include "core/paths.h"
#include "core/runtime_error.h"
#include "core/session_clock.h"
#include "ui/facades.h"
#include "ui/widgets/form_position.h"
#include "ui/widgets/spin_button.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QFontDatabase>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSlider>
#include <QStandardPaths>
#include <QStyle>
#include <QTimer>
#include <QVBoxLayout>
#include <QWheelEvent>

namespace {

// The receiver's face: dark metal, light lettering, an amber mark on the setting in force,
// and a display of green light behind dark glass.
const char *const kPanelStyle = R"(
QMainWindow, QWidget#panelFace { background: #2a2f38; }
QWidget { color: #e3e6eb; }
QMenuBar { background: #20242b; color: #e3e6eb; }
QMenuBar::item:selected { background: #3d4552; }
QMenu { background: #2a2f38; color: #e3e6eb; border: 1px solid #4a5260; }
QMenu::item:selected { background: #3d4552; }
QMenu::item:disabled { color: #6e7582; }
QGroupBox { border: 1px solid #4a5260; border-radius: 5px; margin-top: 9px; padding: 4px 4px 3px 4px; }
QGroupBox::title { subcontrol-origin: margin; left: 8px; padding: 0 3px; color: #aab3c0; }
QPushButton { background: #3a414d; border: 1px solid #566070; border-radius: 4px; padding: 3px 6px;
              min-height: 20px; color: #eef0f3; }
QPushButton:hover { background: #454d5b; }
QPushButton:pressed { background: #566070; }
QPushButton:focus { border: 1px solid #9fb4d0; }
QPushButton:disabled { background: #30353e; color: #5f6672; border-color: #3c424c; }
QPushButton[active="true"] { background: #e0a93e; color: #17130a; border-color: #f3c66b; font-weight: bold; }
QPushButton#cmdMovefreq { background: #2f5a3a; border-color: #4f8a5d; font-weight: bold; min-width: 44px; }
QPushButton#cmdMovefreq[running="true"] { background: #8a2f2f; border-color: #c05050; }
QPushButton#cmdMovefreq:disabled { background: #30353e; color: #5f6672; border-color: #3c424c; }
QPushButton#cmdPowerOnOff[active="true"] { background: #3f8f4f; color: #ffffff; border-color: #6fd07f; }
QComboBox { background: #1d2127; border: 1px solid #566070; border-radius: 3px; padding: 1px 4px; color: #eef0f3; }
QComboBox:disabled { color: #5f6672; background: #24282e; border-color: #3c424c; }
QComboBox QAbstractItemView { background: #1d2127; color: #eef0f3; selection-background-color: #3d4552; }
QToolButton { background: #3a414d; border: 1px solid #566070; border-radius: 3px; }
QToolButton:pressed { background: #566070; }
QSlider::groove:vertical { background: #15181d; width: 6px; border-radius: 3px; }
QSlider::handle:vertical { background: #d5dae2; border: 1px solid #8a93a1; height: 12px; margin: 0 -7px; border-radius: 3px; }
QSlider::sub-page:vertical { background: #15181d; border-radius: 3px; }
QSlider::add-page:vertical { background: #5d8f73; border-radius: 3px; }
QSlider::add-page:vertical:disabled { background: #3a414d; }
QSlider::handle:vertical:disabled { background: #5f6672; border-color: #4a5260; }
QLabel[role="caption"] { color: #aab3c0; }
QLabel[role="key"] { background: #3a414d; border: 1px solid #566070; border-radius: 4px; padding: 4px 8px; font-weight: bold; }
QLabel[role="key"]:disabled, QLabel[role="caption"]:disabled { color: #5f6672; background: transparent; }
QToolButton:disabled { background: #30353e; border-color: #3c424c; }
QLabel[role="value"] { color: #7df9c6; background: #0c1712; border: 1px solid #28372f; border-radius: 3px; padding: 1px 2px; }
QLabel[role="value"]:disabled { color: #4e5a54; border-color: #2a302d; }
QFrame#fraDisplay { background: #07120d; border: 2px solid #1e3a2c; border-radius: 8px; }
QFrame#fraDisplay QLabel { color: #7df9c6; background: transparent; }
QFrame#fraDisplay QLabel[role="dim"] { color: #3f8f70; }
QLineEdit#txtFrequencyA { background: transparent; border: none; color: #8dffd2; selection-background-color: #2d6b52; }
QLabel#lblMfreq { color: #ffd27a; background: #15120a; border: 1px solid #4a3f22; border-radius: 3px; padding: 2px 4px; }
)";

constexpr QRgb kMuteOn = 0xFF0000;  // red while muted
constexpr QRgb kMuteOff = 0x00FF00; // green

QFont fixedFont(int pixelSize, bool bold)
{
    QFont f(QStringLiteral("DejaVu Sans Mono"));
    f.setStyleHint(QFont::Monospace);
    f.setFixedPitch(true);
    if (!QFontInfo(f).fixedPitch())
        f = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    f.setPixelSize(pixelSize);
    f.setBold(bold);
    return f;
}

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

bool isWindowsHost()
{
#ifdef Q_OS_WIN
    return true;
#else
    return false;
#endif
}

} // namespace

// --- ClickLabel ---

ClickLabel::ClickLabel(const QString &text, QWidget *parent) : QLabel(text, parent) {}

void ClickLabel::setBackColor(const QColor &c)
{
    back_ = c;
    setStyleSheet(QStringLiteral("QLabel { background: %1; color: #101010; border-radius: 3px; font-weight: bold; }")
                      .arg(c.name()));
}

void ClickLabel::mouseReleaseEvent(QMouseEvent *e)
{
    QLabel::mouseReleaseEvent(e);
    if (e->button() == Qt::LeftButton && rect().contains(e->position().toPoint()))
        emit clicked();
}

void setBarQuietly(QAbstractSlider *bar, int value)
{
    const QSignalBlocker quiet(bar);
    bar->setValue(value);
}

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

QPushButton *frmPanelBase::makeButton(const QString &name, const QString &caption, QWidget *parent)
{
    auto *b = new QPushButton(caption, parent);
    b->setObjectName(name);
    b->setAutoDefault(false);
    // The window's keys work wherever the focus is; a click need not take it from the box.
    b->setFocusPolicy(Qt::TabFocus);
    return b;
}

QGroupBox *frmPanelBase::buttonGroup(const QString &title, const QList<QPushButton *> &buttons, int columns)
{
    auto *g = new QGroupBox(title);
    auto *grid = new QGridLayout(g);
    grid->setContentsMargins(6, 8, 6, 6);
    grid->setSpacing(4);
    const int cols = columns > 0 ? columns : int(buttons.size());
    for (int i = 0; i < buttons.size(); ++i) {
        buttons[i]->setParent(g);
        buttons[i]->setMinimumWidth(46);
        grid->addWidget(buttons[i], i / cols, i % cols);
    }
    return g;
}

frmPanelBase::Fader frmPanelBase::makeFader(const char *barName, const char *labelName, const QString &caption,
                                            int min, int max, int small, int large, bool clickZero)
{
    auto *box = new QWidget;
    auto *col = new QVBoxLayout(box);
    col->setContentsMargins(2, 0, 2, 0);
    col->setSpacing(3);
    auto *cap = new QLabel(caption, box);
    cap->setProperty("role", "caption");
    cap->setAlignment(Qt::AlignHCenter);
    auto *bar = new QSlider(Qt::Vertical, box);
    bar->setObjectName(QLatin1String(barName));
    bar->setRange(min, max);
    bar->setSingleStep(small);
    bar->setPageStep(large);
    // A value is sent when the bar is let go, not at every pixel of a drag.
    bar->setTracking(false);
    bar->setMinimumHeight(110);
    bar->setFocusPolicy(Qt::TabFocus);
    bar->setAccessibleName(caption);
    auto *label = new ClickLabel(QString(), box);
    label->setObjectName(QLatin1String(labelName));
    label->setProperty("role", "value");
    label->setAlignment(Qt::AlignCenter);
    label->setFont(fixedFont(13, true));
    label->setMinimumWidth(50);
    label->setMaximumWidth(76);
    if (clickZero) {
        label->setToolTip(tr("Click to set %1 to 0").arg(caption));
        label->setCursor(Qt::PointingHandCursor);
        connect(label, &ClickLabel::clicked, bar, [bar] { bar->setValue(0); });
    }
    col->addWidget(cap);
    col->addWidget(bar, 1, Qt::AlignHCenter);
    col->addWidget(label, 0, Qt::AlignHCenter);
    return {bar, label, box};
}

QLabel *frmPanelBase::addStatus(const char *name, const QString &caption)
{
    auto *cap = new QLabel(caption);
    cap->setProperty("role", "dim");
    cap->setFont(fixedFont(13, false));
    auto *value = new QLabel;
    value->setObjectName(QLatin1String(name));
    value->setFont(fixedFont(20, true));
    value->setMinimumWidth(70);
    displayStatus->addWidget(cap);
    displayStatus->addWidget(value);
    displayStatus->addSpacing(14);
    return value;
}

QWidget *frmPanelBase::buildDisplay()
{
    auto *frame = new QFrame;
    frame->setObjectName(QStringLiteral("fraDisplay"));
    auto *col = new QVBoxLayout(frame);
    col->setContentsMargins(16, 8, 16, 10);
    col->setSpacing(2);

    auto *row = new QHBoxLayout;
    txtFrequencyA = new QLineEdit(frame);
    txtFrequencyA->setObjectName(QStringLiteral("txtFrequencyA"));
    txtFrequencyA->setFont(fixedFont(54, true));
    txtFrequencyA->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    txtFrequencyA->setMouseTracking(true);
    txtFrequencyA->setToolTip(tr("Type a frequency in kHz and press Enter; double click to clear.\n"
                                 "The mouse wheel tunes while the pointer is here."));
    // Room for "30000.000" however wide the font draws.
    txtFrequencyA->setMinimumWidth(QFontMetrics(txtFrequencyA->font()).horizontalAdvance(QStringLiteral("30000.0000")));
    auto *unit = new QLabel(QStringLiteral("kHz"), frame);
    unit->setProperty("role", "dim");
    unit->setFont(fixedFont(20, true));
    row->addWidget(txtFrequencyA, 1);
    row->addWidget(unit, 0, Qt::AlignBottom);
    col->addLayout(row);

    displayStatus = new QHBoxLayout;
    displayStatus->setSpacing(6);
    lblMode = addStatus("lblMode", tr("MODE"));
    lblBandwidth = addStatus("lblBandwidth", tr("FIL"));
    lblAgcspeed = addStatus("lblAgcspeed", tr("AGC"));
    col->addLayout(displayStatus);
    return frame;
}

QWidget *frmPanelBase::buildKeypad()
{
    auto *g = new QGroupBox(tr("Keypad"));
    auto *grid = new QGridLayout(g);
    grid->setContentsMargins(6, 8, 6, 6);
    grid->setSpacing(4);
    lblMfreq = new QLabel(g);
    lblMfreq->setObjectName(QStringLiteral("lblMfreq"));
    lblMfreq->setFont(fixedFont(18, true));
    lblMfreq->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    lblMfreq->setMinimumHeight(28);
    lblMfreq->setToolTip(tr("The number typed on the keypad (or with Ctrl and the digits)"));
    grid->addWidget(lblMfreq, 0, 0, 1, 4);
    for (int i = 0; i < 10; ++i) {
        cmd0to9[size_t(i)] = makeButton(QStringLiteral("cmd0to9_%1").arg(i), QString::number(i), g);
        cmd0to9[size_t(i)]->setFont(fixedFont(15, true));
    }
    cmdDot = makeButton(QStringLiteral("cmdDot"), QStringLiteral("."), g);
    cmdDot->setToolTip(tr("Decimal point"));
    cmdDot->setAccessibleName(tr("Decimal point"));
    cmdBack = makeButton(QStringLiteral("cmdBack"), QStringLiteral("\u2190"), g);
    cmdBack->setToolTip(tr("Drop the last character"));
    cmdBack->setAccessibleName(tr("Back"));
    cmdEnterfreq = makeButton(QStringLiteral("cmdEnterfreq"), QStringLiteral("F"), g);
    cmdEnterfreq->setToolTip(tr("Tune to the number as a frequency in kHz (Ctrl+F)"));
    cmdEnterMem = makeButton(QStringLiteral("cmdEnterMem"), QStringLiteral("M"), g);
    cmdEnterMem->setToolTip(tr("Recall the number as a memory cell (Ctrl+M)"));
    cmdEnterS = makeButton(QStringLiteral("cmdEnterS"), QStringLiteral("S"), g);
    cmdEnterS->setToolTip(tr("Take the number as the step in kHz (Ctrl+S)"));
    for (QPushButton *b : {cmdDot, cmdBack, cmdEnterfreq, cmdEnterMem, cmdEnterS})
        b->setFont(fixedFont(15, true));
    const int order[3][3] = {{7, 8, 9}, {4, 5, 6}, {1, 2, 3}};
    for (int r = 0; r < 3; ++r)
        for (int c = 0; c < 3; ++c)
            grid->addWidget(cmd0to9[size_t(order[r][c])], r + 1, c);
    grid->addWidget(cmd0to9[0], 4, 0);
    grid->addWidget(cmdDot, 4, 1);
    grid->addWidget(cmdBack, 4, 2);
    grid->addWidget(cmdEnterfreq, 1, 3);
    grid->addWidget(cmdEnterMem, 2, 3);
    grid->addWidget(cmdEnterS, 3, 3);
    for (int c = 0; c < 4; ++c)
        grid->setColumnMinimumWidth(c, 38);
    return g;
}

QWidget *frmPanelBase::buildTuning()
{
    auto *g = new QGroupBox(tr("Tuning"));
    auto *row = new QHBoxLayout(g);
    row->setContentsMargins(6, 8, 6, 6);
    row->setSpacing(6);
    cmdfreqstep[0] = makeButton(QStringLiteral("cmdfreqstep_0"), QStringLiteral("\u25C0"), g);
    cmdfreqstep[0]->setToolTip(tr("One step down"));
    cmdfreqstep[0]->setAccessibleName(tr("Step down"));
    cmdfreqstep[1] = makeButton(QStringLiteral("cmdfreqstep_1"), QStringLiteral("\u25B6"), g);
    cmdfreqstep[1]->setToolTip(tr("One step up"));
    cmdfreqstep[1]->setAccessibleName(tr("Step up"));
    spnFreqstep = new SpinButton(Qt::Vertical, g);
    spnFreqstep->setObjectName(QStringLiteral("spnFreqstep"));
    spnFreqstep->setFixedSize(24, 34);
    spnFreqstep->setToolTip(tr("Step up or down"));
    auto *stepCap = new QLabel(tr("Step"), g);
    stepCap->setProperty("role", "caption");
    cmbFreqstep = new QComboBox(g);
    cmbFreqstep->setObjectName(QStringLiteral("cmbFreqstep"));
    cmbFreqstep->setEditable(true);
    cmbFreqstep->setInsertPolicy(QComboBox::NoInsert);
    cmbFreqstep->setMaxVisibleItems(19);
    cmbFreqstep->setMinimumWidth(80);
    cmbFreqstep->setFocusPolicy(Qt::ClickFocus);
    auto *unit = new QLabel(QStringLiteral("kHz"), g);
    unit->setProperty("role", "caption");
    cmdMovefreq = makeButton(QStringLiteral("cmdMovefreq"), QStringLiteral("GO"), g);
    cmdMovefreq->setToolTip(tr("Run the dial in the direction of the last step; click again to stop (Ctrl+G)"));
    lblInt5 = new ClickLabel(QStringLiteral("i 5"), g);
    lblInt5->setObjectName(QStringLiteral("lblInt5"));
    lblInt5->setToolTip(tr("Round the frequency to the nearest 5 kHz"));
    lbnInt1 = new ClickLabel(QStringLiteral("i 1"), g);
    lbnInt1->setObjectName(QStringLiteral("lbnInt1"));
    lbnInt1->setToolTip(tr("Round the frequency to the nearest kHz"));
    for (ClickLabel *l : {lblInt5, lbnInt1}) {
        l->setProperty("role", "key");
        l->setAlignment(Qt::AlignCenter);
        l->setMinimumWidth(40);
        l->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
        l->setCursor(Qt::PointingHandCursor);
    }
    row->addWidget(cmdfreqstep[0]);
    row->addWidget(spnFreqstep);
    row->addWidget(cmdfreqstep[1]);
    row->addSpacing(10);
    row->addWidget(stepCap);
    row->addWidget(cmbFreqstep);
    row->addWidget(unit);
    row->addSpacing(10);
    row->addWidget(cmdMovefreq);
    row->addStretch(1);
    row->addWidget(lblInt5);
    row->addWidget(lbnInt1);
    return g;
}

QWidget *frmPanelBase::keyHints(const QList<std::pair<QString, QString>> &rows)
{
    auto *g = new QGroupBox(tr("Keys"));
    g->setObjectName(QStringLiteral("fraKeys"));
    auto *grid = new QGridLayout(g);
    grid->setContentsMargins(8, 8, 8, 6);
    grid->setHorizontalSpacing(10);
    grid->setVerticalSpacing(2);
    int r = 0;
    for (const auto &[keys, what] : rows) {
        auto *k = new QLabel(keys, g);
        k->setFont(fixedFont(11, true));
        auto *w = new QLabel(what, g);
        w->setProperty("role", "caption");
        grid->addWidget(k, r, 0);
        grid->addWidget(w, r, 1);
        ++r;
    }
    return g;
}

void frmPanelBase::arrangeFace(QWidget *face, QVBoxLayout *left, QWidget *keypad, const QList<QWidget *> &rightExtras)
{
    auto *right = new QVBoxLayout;
    right->addWidget(keypad);
    for (QWidget *w : rightExtras)
        right->addWidget(w);
    right->addStretch(1);
    right->addWidget(cmdClose, 0, Qt::AlignRight);
    auto *row = new QHBoxLayout(face);
    row->setContentsMargins(10, 8, 10, 10);
    row->setSpacing(10);
    row->addLayout(left, 1);
    row->addLayout(right);
}

void frmPanelBase::applyLook()
{
    setStyleSheet(QString::fromLatin1(kPanelStyle));
    if (lblMute) {
        lblMute->setAlignment(Qt::AlignCenter);
        lblMute->setMinimumSize(60, 26);
        lblMute->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
        lblMute->setCursor(Qt::PointingHandCursor);
        lblMute->setToolTip(tr("Mute; click again to bring the levels back"));
        lblMute->setBackColor(QColor::fromRgb(kMuteOff));
    }
    if (txtFrequencyA)
        txtFrequencyA->setFocus();
    // Controls that show text are heard by their text; each named one carries its name.
    nameForAccessibility(this);
}

void frmPanelBase::markActive(const QList<QPushButton *> &buttons, int index)
{
    for (int i = 0; i < buttons.size(); ++i) {
        QPushButton *b = buttons[i];
        const bool on = i == index;
        if (b->property("active").toBool() == on)
            continue;
        b->setProperty("active", on);
        b->style()->unpolish(b);
        b->style()->polish(b);
    }
}

// --- the menu ---

void frmPanelBase::buildMenu(const QStringList &omit, const std::map<QString, MenuRename> &renames,
                             const QList<MenuExtra> &extras)
{
    std::map<QString, QMenu *> menus;
    auto menuFor = [&](const QString &title, const QString &sub) {
        const QString key = title + u'/' + sub;
        auto it = menus.find(key);
        if (it != menus.end())
            return it->second;
        QMenu *top = menus[title + u'/'];
        if (!top) {
            top = menuBar()->addMenu(title);
            top->setObjectName(QStringLiteral("menu") + QString(title).remove(u' '));
            menus[title + u'/'] = top;
        }
        if (sub.isEmpty())
            return top;
        QMenu *m = top->addMenu(sub);
        m->setObjectName(QStringLiteral("menu") + sub);
        menus[key] = m;
        return m;
    };
    auto add = [&](QMenu *m, const QString &name, const QString &caption) {
        auto *a = new QAction(caption, this);
        a->setObjectName(name);
        m->addAction(a);
        entries_[name] = a;
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
        for (const MenuExtra &x : extras)
            if (x.after == added)
                add(m, x.name, x.caption);
    }
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
    wireMenu(QStringLiteral("mnuSetup"), [this] { mnuSetup_Click(); });
    wireMenu(QStringLiteral("mnuAbout"), [this] { mnuAbout_Click(); });
    wireMenu(QStringLiteral("mnuHtmlhelp"), [this] { mnuHtmlhelp_Click(); });
    const panel::ExternalCommand clock = panel::clockSettingsCommand(
        isWindowsHost(), [](const QString &p) { return !QStandardPaths::findExecutable(p).isEmpty(); });
    if (!clock.program.isEmpty())
        wireMenu(QStringLiteral("mnuPCclock"), [this] { mnuPCclock_Click(); });
    for (auto &[name, a] : entries_) {
        if (wired_.count(name))
            continue;
        a->setEnabled(false);
        a->setToolTip(tr("Not available in this version"));
    }
    for (QMenu *m : menuBar()->findChildren<QMenu *>())
        m->setToolTipsVisible(true);
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
    last20Enabled = true;
    FrequencyHub &hub = frmWelcome::instance()->hub;
    if (isOpen(Win::frmLast20) && hub.last20IgnoresSteps && hub.last20IgnoresSteps())
        last20Enabled = false;
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
        lblMute->setBackColor(QColor::fromRgb(kMuteOn));
        savedLevels_.clear();
        for (const MuteBar &m : muteBars()) {
            savedLevels_.push_back({m.bar, numtext::toInt(numtext::Val(m.label->text()))});
            m.bar->setValue(0);
        }
    } else {
        lblMute->setBackColor(QColor::fromRgb(kMuteOff));
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

void frmPanelBase::mnuSetup_Click() { frmSetUp::open(); }

void frmPanelBase::mnuAbout_Click()
{
    auto *about = new frmAbout;
    about->Form_Load();
}

void frmPanelBase::mnuHtmlhelp_Click()
{
    const QString file = isWindowsHost() ? dirPath + QStringLiteral("brelvox2.chm")
                                         : paths::native(dirPath + QStringLiteral("brelvox2.chm"));
    const panel::ExternalCommand c = panel::helpCommand(file, isWindowsHost());
    ui::startProgram(c.program, c.args);
}

void frmPanelBase::mnuPCclock_Click()
{
    const panel::ExternalCommand c = panel::clockSettingsCommand(
        isWindowsHost(), [](const QString &p) { return !QStandardPaths::findExecutable(p).isEmpty(); });
    if (!c.program.isEmpty())
        ui::startProgram(c.program, c.args);
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
