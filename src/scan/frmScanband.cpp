#include "frmScanband.h"
#include "core/frmWelcome.h"
#include "core/numtext.h"
#include "core/textfile.h"
#include "data/file_store.h"
#include "data/frmLoadfile.h"
#include "data/frmSavefile.h"
#include "ui/facades.h"
#include "ui/widgets/chart_canvas.h"
#include "ui/widgets/form_position.h"
#include "ui/widgets/list_frame.h"
#include "ui/widgets/raise_or_load.h"
#include "ui/widgets/spin_button.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QScopeGuard>
#include <QRadioButton>
#include <QVBoxLayout>

using namespace scanband;

namespace {
QPointer<frmScanband> theScanband;
const QColor kBack(255, 255, 192);
const QColor kMarker(0, 255, 0);
const QColor kTuneBack(255, 255, 128);
const QColor kTuneOn(0, 255, 255);
const QString kInputError = QStringLiteral("Input ERROR");

void setButtonColor(QPushButton *b, const QColor &c)
{
    QPalette p = b->palette();
    p.setColor(QPalette::Button, c);
    b->setPalette(p);
    b->setAutoFillBackground(true);
}
} // namespace

frmScanband::frmScanband(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("frmScanband"));
    setWindowTitle(QStringLiteral("Scan band"));
    setAttribute(Qt::WA_DeleteOnClose);
    tmrScanband.setObjectName(QStringLiteral("tmrScanband"));
    tmrSqlon.setObjectName(QStringLiteral("tmrSqlon"));
    tmrSqlon.setInterval(1000);

    picScanband = new ChartCanvas(640, 400, this);
    picScanband->setBackColor(kBack);
    picScanband->cls();
    auto label = [](const char *name, const QString &text, QWidget *parent) {
        auto *l = new QLabel(text, parent);
        l->setObjectName(QLatin1String(name));
        return l;
    };
    lblSsqlon = label("lblSsqlon", QStringLiteral("<=  On"), picScanband);
    lblFreqlow = label("lblFreqlow", {}, picScanband);
    lblFreqhigh = label("lblFreqhigh", {}, picScanband);
    lblSsqlon->move(582, 184);
    lblFreqlow->setGeometry(40, 382, 80, 16);
    lblFreqhigh->setGeometry(540, 382, 60, 16);

    fraSetup = new QGroupBox(this);
    fraSetup->setObjectName(QStringLiteral("fraSetup"));
    auto *setup = new QGridLayout(fraSetup);
    const char *captions[] = {"Start (kHz)", "End (kHz)", "Step (kHz)", "Delay (sec)"};
    for (int i = 0; i < 4; ++i) {
        auto *t = new QLineEdit(fraSetup);
        t->setObjectName(QStringLiteral("txtInput_%1").arg(i));
        t->setFixedWidth(QFontMetrics(t->font()).horizontalAdvance(QStringLiteral("00000.000")) + 14);
        txtInput[size_t(i)] = t;
        setup->addWidget(new QLabel(QLatin1String(captions[i]), fraSetup), i, 0);
        setup->addWidget(t, i, 1, 1, 2);
    }
    txtInput[3]->setToolTip(tr("Seconds on each step"));
    chkLoop = new QCheckBox(QStringLiteral(" Continuous Loop"), fraSetup);
    chkLoop->setObjectName(QStringLiteral("chkLoop"));
    chkSqlonoff = new QCheckBox(QStringLiteral("Squelch Hold"), fraSetup);
    chkSqlonoff->setObjectName(QStringLiteral("chkSqlonoff"));
    setup->addWidget(chkLoop, 4, 0, 1, 3);
    const char *shows[] = {"Latest value", "Highest value", "Averaging last 3"};
    for (int i = 0; i < 3; ++i) {
        auto *o = new QRadioButton(QLatin1String(shows[i]), fraSetup);
        o->setObjectName(QStringLiteral("optShow_%1").arg(i));
        optShow[size_t(i)] = o;
        setup->addWidget(o, 5 + i, 0, 1, 3);
    }
    setup->addWidget(chkSqlonoff, 8, 0, 1, 3);
    lblSqlonat = label("lblSqlonat", QStringLiteral("Squelch On at"), fraSetup);
    lblSqloffat = label("lblSqloffat", QStringLiteral("Sqeulch Off at"), fraSetup);
    lblSqlon = label("lblSqlon", {}, fraSetup);
    lblSqloff = label("lblSqloff", {}, fraSetup);
    spnSqlon = new SpinButton(Qt::Vertical, fraSetup);
    spnSqlon->setObjectName(QStringLiteral("spnSqlon"));
    spnSqloff = new SpinButton(Qt::Vertical, fraSetup);
    spnSqloff->setObjectName(QStringLiteral("spnSqloff"));
    const QString widest = SLevelNames[21] + QStringLiteral("  ");
    lblSqlon->setMinimumWidth(QFontMetrics(lblSqlon->font()).horizontalAdvance(widest));
    lblSqloff->setMinimumWidth(QFontMetrics(lblSqloff->font()).horizontalAdvance(widest));
    setup->addWidget(lblSqlonat, 9, 0);
    setup->addWidget(lblSqlon, 9, 1);
    setup->addWidget(spnSqlon, 9, 2);
    setup->addWidget(lblSqloffat, 10, 0);
    setup->addWidget(lblSqloff, 10, 1);
    setup->addWidget(spnSqloff, 10, 2);

    auto button = [this](const char *name, const QString &caption) {
        auto *b = new QPushButton(caption, this);
        b->setObjectName(QLatin1String(name));
        b->setAutoDefault(false);
        return b;
    };
    cmdStart = button("cmdStart", QStringLiteral("Start"));
    cmdStop = button("cmdStop", QStringLiteral("Stop"));
    cmdContinue = button("cmdContinue", QStringLiteral("Continue"));
    cmdCls = button("cmdCls", QStringLiteral("Cls"));
    cmdTunerx = button("cmdTunerx", QStringLiteral("Tune RX"));
    cmdSave = button("cmdSave", QStringLiteral("Save As"));
    cmdLoad = button("cmdLoad", QStringLiteral("Load"));
    cmdPanel = button("cmdPanel", QStringLiteral("Panel"));
    cmdExit = button("cmdExit", QStringLiteral("Exit"));
    cmdContinue->setToolTip(tr("Go on with the next step"));
    cmdTunerx->setToolTip(tr("Click in the chart to tune the receiver to that step"));
    cmdCls->setToolTip(tr("Clear the chart"));
    setButtonColor(cmdTunerx, kTuneBack);

    // The state and the loaded sweeps' names stand above the chart, in the canvas's free top.
    lblTimedate = label("lblTimedate", {}, picScanband);
    lblFreq = label("lblFreq", {}, picScanband);
    lblFreq1 = label("lblFreq1", {}, picScanband);
    lblTimedate->setGeometry(70, 10, 220, 18);
    lblFreq->setGeometry(300, 10, 110, 18);
    lblFreq1->setGeometry(420, 10, 150, 18);
    for (int i = 0; i < 4; ++i) {
        lblDbname[size_t(i)] = label(qPrintable(QStringLiteral("lblDbname_%1").arg(i)), {}, picScanband);
        lblDbname[size_t(i)]->setGeometry(70, 50 + 20 * i, 500, 18);
    }

    auto *left = new QVBoxLayout;
    left->addWidget(picScanband);
    left->addStretch(1);
    auto *buttons = new QGridLayout;
    QPushButton *const order[] = {cmdStart, cmdStop, cmdContinue, cmdCls, cmdTunerx, cmdSave, cmdLoad, cmdPanel, cmdExit};
    for (int i = 0; i < 9; ++i)
        buttons->addWidget(order[i], i / 2, i % 2);
    auto *right = new QVBoxLayout;
    right->addWidget(fraSetup);
    right->addStretch(1);
    right->addLayout(buttons);
    auto *row = new QHBoxLayout(this);
    row->addLayout(left);
    row->addLayout(right);
    row->setSizeConstraint(QLayout::SetFixedSize);

    const std::pair<QPushButton *, void (frmScanband::*)()> handlers[] = {
        {cmdStart, &frmScanband::cmdStart_Click}, {cmdStop, &frmScanband::cmdStop_Click},
        {cmdContinue, &frmScanband::cmdContinue_Click}, {cmdCls, &frmScanband::cmdCls_Click},
        {cmdTunerx, &frmScanband::cmdTunerx_Click}, {cmdSave, &frmScanband::cmdSave_Click},
        {cmdLoad, &frmScanband::cmdLoad_Click}, {cmdExit, &frmScanband::cmdExit_Click}};
    for (const auto &[b, h] : handlers)
        connect(b, &QPushButton::clicked, this, guarded(guard_, [this, h = h] { (this->*h)(); }));
    connect(cmdPanel, &QPushButton::clicked, this, guarded(guard_, [] { ListFrame::showPanel(); }));
    connect(chkLoop, &QCheckBox::clicked, this, guarded(guard_, [this] { chkLoop_Click(); }));
    connect(chkSqlonoff, &QCheckBox::clicked, this, guarded(guard_, [this] { chkSqlonoff_Click(); }));
    for (int i = 0; i < 3; ++i)
        connect(optShow[size_t(i)], &QRadioButton::clicked, this, guarded(guard_, [this, i] { optShow_Click(i); }));
    connect(spnSqlon, &SpinButton::SpinUp, this, guarded(guard_, [this] { spnSqlon_SpinUp(); }));
    connect(spnSqlon, &SpinButton::SpinDown, this, guarded(guard_, [this] { spnSqlon_SpinDown(); }));
    connect(spnSqloff, &SpinButton::SpinUp, this, guarded(guard_, [this] { spnSqloff_SpinUp(); }));
    connect(spnSqloff, &SpinButton::SpinDown, this, guarded(guard_, [this] { spnSqloff_SpinDown(); }));
    connect(picScanband, &ChartCanvas::mouseMoved, this,
            guarded<int, int>(guard_, [this](int x, int y) { picScanband_MouseMove(x, y); }));
    connect(picScanband, &ChartCanvas::mousePressed, this,
            guarded<int, int, Qt::MouseButton>(guard_, [this](int x, int y, Qt::MouseButton) { picScanband_MouseDown(x, y); }));
    connect(&tmrScanband, &QTimer::timeout, this, guarded(guard_, [this] { tmrScanband_Timer(); }));
    connect(&tmrSqlon, &QTimer::timeout, this, guarded(guard_, [this] { tmrSqlon_Timer(); }));
    nameForAccessibility(this);
}

frmScanband::~frmScanband()
{
    stopTimers();
    frmWelcome::forgetOpenWindow(Win::frmScanband, this);
}

frmScanband *frmScanband::open()
{
    return raiseOrLoad(theScanband, [](const frmScanband &) { return isOpen(Win::frmScanband); });
}

void frmScanband::Form_Load()
{
    SqlOnIndex = 21;
    SqlOffIndex = 19;
    showSqlon();
    showSqloff();
    ScanBandTuneMode = false;
    chkLoop->setChecked(false);
    chkSqlonoff->setChecked(false);
    for (QWidget *w : std::initializer_list<QWidget *>{optShow[0], optShow[1], optShow[2], lblSqlonat, lblSqloffat,
                                                       spnSqlon, spnSqloff, lblSqlon, lblSqloff})
        w->hide();
    drawStatic();
    for (QWidget *w : std::initializer_list<QWidget *>{cmdCls, cmdStop, cmdContinue, cmdTunerx})
        w->setEnabled(false);
    for (QWidget *w : std::initializer_list<QWidget *>{cmdStart, cmdPanel, cmdExit})
        w->setEnabled(true);
    receiver_ = std::make_unique<ScanReceiver>();
    holds_.take({QStringLiteral("mnuSmeter"), QStringLiteral("mnuScanFreqlist"), QStringLiteral("mnuScanfreqpairs"),
                 QStringLiteral("mnuPropagation")});
    QPointer<frmScanband> self(this);
    registerReader(kSanKind, [self] {
        if (self)
            self->LoadSanFile();
    });
    registerWriter(kSanKind, [self] {
        if (self)
            self->SaveSanFile();
    });
    placeAtLoad(this, Win::frmScanband);
    show();
    isOpen(Win::frmScanband) = true;
    frmWelcome::setOpenWindow(Win::frmScanband, this);
}

void frmScanband::drawStatic()
{
    ChartCanvas *c = picScanband;
    const QColor black = ChartCanvas::standardColor(0);
    c->line(69, 361, 571, 361, black);
    c->line(69, 361, 69, 184, black);
    c->line(571, 361, 571, 184, black);
    for (int i = 0; i <= 10; ++i) {
        c->line(69, 352 - 16 * i, 60, 352 - 16 * i, black);
        c->line(571, 352 - 16 * i, 580, 352 - 16 * i, black);
        c->line(70 + 50 * i, 361, 70 + 50 * i, 370, black);
    }
    const std::pair<int, const char *> scale[] = {{346, "  S1"}, {314, "  S5"}, {282, "  S9"},
                                                  {250, "+24"},  {218, "+48"},  {186, "+72"}};
    for (const auto &[y, s] : scale)
        c->text(35, y, QLatin1String(s), black);
}

double frmScanband::lastStep() const { return scanband::lastStep(ScanBandStart, ScanBandEnd, ScanBandStep); }

void frmScanband::setRunning(bool running)
{
    for (QWidget *w : std::initializer_list<QWidget *>{fraSetup, cmdStart, cmdContinue, cmdCls, cmdTunerx, cmdPanel,
                                                       cmdExit})
        w->setEnabled(!running);
    cmdStop->setEnabled(true);
}

void frmScanband::stopTimers()
{
    tmrScanband.stop();
    tmrSqlon.stop();
}

void frmScanband::tuneTo(double khz)
{
    if (frmWelcome *w = frmWelcome::instance())
        w->Change2FreqA(khz);
}

// --- the sweep ---

void frmScanband::cmdStart_Click()
{
    if (SqlOffIndex > SqlOnIndex) {
        SqlOffIndex = SqlOnIndex;
        showSqloff();
    }
    const BandInput in = readInput(txtInput[0]->text(), txtInput[1]->text(), txtInput[2]->text(),
                                   txtInput[3]->text(), freqLowerLimit, freqUpperLimit);
    ScanBandStart = in.start;
    ScanBandEnd = in.end;
    ScanBandStep = in.step;
    ScanBandIndex = 0;
    if (!in.valid) {
        ui::MsgBox(kInputError, ui::vbExclamation, QStringLiteral("Error"));
        for (int i = 0; i < 3; ++i)
            txtInput[size_t(i)]->clear();
        txtInput[0]->setFocus();
        return;
    }
    ScanBandLatest.fill(0);
    ScanBandPrev1.fill(0);
    ScanBandPrev2.fill(0);
    setRunning(true);
    tmrScanband.setInterval(in.intervalMs);
    picScanband->box(70, 184, 570, 360, kBack);
    lblFreqlow->setText(in.startText);
    lblFreqhigh->setText(in.endText);
    QPointer<frmScanband> self(this);
    if (receiver_)
        receiver_->lockPanel(1);
    if (!self || guard_.stopRequested())
        return;
    if (receiver_)
        receiver_->readAttenuation();
    if (!self || guard_.stopRequested())
        return;
    lblTimedate->setText(utcText + QStringLiteral(" Z"));
    lblFreq1->setText(QStringLiteral("Scanning"));
    // Start does not tune: the first tick measures where the receiver stands, and the band's own
    // steps begin with the tuning at its end.
    ScanBandFreq = ScanBandStart;
    tmrScanband.start();
}

void frmScanband::tmrScanband_Timer()
{
    // A tick run by a direct call (the picture program, a test) while the timer's own lets events
    // run is passed over: it would measure the same step again and move the sweep on twice. The
    // timer's ticks are kept apart by the window's handler guard already.
    if (!tmrScanband.isActive() || guard_.stopRequested() || ticking_)
        return;
    ticking_ = true;
    const auto done = qScopeGuard([self = QPointer<frmScanband>(this)] {
        if (self)
            self->ticking_ = false;
    });
    frmWelcome *w = frmWelcome::instance();
    last20Enabled = !(isOpen(Win::frmLast20) && w && w->hub.stepsIgnored());
    const double n = lastStep();
    if (ScanBandIndex > n)
        return;
    QPointer<frmScanband> self(this);
    const float v = receiver_ ? receiver_->level() : 0.0f;
    if (!self || guard_.stopRequested() || !tmrScanband.isActive())
        return;
    ShowValue = storeLevel(ShowMode, ScanBandIndex, v, ScanBandLatest, ScanBandPrev1, ScanBandPrev2);
    const int x = columnX(ScanBandFreq, ScanBandStart, ScanBandEnd);
    const int y = levelY(ShowValue);
    picScanband->box(69, 175, 571, 183, kBack);
    picScanband->box(x - 1, 175, x + 1, 183, kMarker);
    picScanband->line(x, 360, x, 184, kBack);
    picScanband->line(x, 360, x, y, ChartCanvas::standardColor(0));
    QCoreApplication::processEvents();
    // A stop or a close while events ran ends the step here.
    if (!self || guard_.stopRequested() || !tmrScanband.isActive())
        return;
    if (chkSqlonoff->isChecked() && v >= SqlOnIndex) {
        tmrScanband.stop();
        tmrSqlon.start();
        lblFreq1->setText(QStringLiteral("On Hold"));
        cmdContinue->setEnabled(true);
        return;
    }
    // Without the loop the last step tunes one step beyond the end, and the timer idles on.
    ScanBandIndex = nextIndex(ScanBandIndex, n, ScanBandLoop);
    ScanBandFreq = ScanBandIndex * ScanBandStep + ScanBandStart;
    lblFreq->setText(numtext::str(ScanBandFreq));
    tuneTo(ScanBandFreq);
}

void frmScanband::tmrSqlon_Timer()
{
    if (!tmrSqlon.isActive() || guard_.stopRequested() || ticking_)
        return;
    ticking_ = true;
    const auto done = qScopeGuard([self = QPointer<frmScanband>(this)] {
        if (self)
            self->ticking_ = false;
    });
    QPointer<frmScanband> self(this);
    const float v = receiver_ ? receiver_->level() : 0.0f;
    QCoreApplication::processEvents();
    if (!self || guard_.stopRequested() || !tmrSqlon.isActive())
        return;
    if (v < SqlOffIndex) {
        tmrSqlon.stop();
        tmrScanband.start();
        lblFreq1->setText(QStringLiteral("Scanning"));
        cmdContinue->setEnabled(false);
    }
}

void frmScanband::cmdContinue_Click()
{
    setRunning(true);
    QPointer<frmScanband> self(this);
    if (receiver_)
        receiver_->lockPanel(1);
    if (!self || guard_.stopRequested())
        return;
    ScanBandIndex = nextIndex(ScanBandIndex, lastStep(), ScanBandLoop);
    ScanBandFreq = ScanBandIndex * ScanBandStep + ScanBandStart;
    lblFreq->setText(numtext::str(ScanBandFreq));
    tuneTo(ScanBandFreq);
    if (!self || guard_.stopRequested())
        return;
    tmrSqlon.stop();
    tmrScanband.start();
    lblFreq1->setText(QStringLiteral("Scanning"));
}

void frmScanband::cmdStop_Click()
{
    stopTimers();
    QPointer<frmScanband> self(this);
    if (receiver_)
        receiver_->lockPanel(0);
    if (!self)
        return;
    ScanBandTuneMode = false;
    lblFreq1->clear();
    cmdStart->setEnabled(true);
    cmdContinue->setEnabled(mayContinue(ScanBandStart, ScanBandEnd, ScanBandStep, ScanBandIndex));
    for (QWidget *w : std::initializer_list<QWidget *>{cmdCls, cmdTunerx, cmdPanel, cmdExit, fraSetup})
        w->setEnabled(true);
    setButtonColor(cmdTunerx, kTuneBack);
    picScanband->box(70, 372, 570, 380, kBack);
    picScanband->box(69, 175, 5711, 183, kBack);
}

// --- Tune RX ---

void frmScanband::cmdTunerx_Click()
{
    ScanBandTuneMode = true;
    setButtonColor(cmdTunerx, kTuneOn);
    for (QWidget *w : std::initializer_list<QWidget *>{cmdTunerx, cmdStart, cmdCls, cmdContinue, cmdPanel, cmdExit})
        w->setEnabled(false);
    cmdStop->setEnabled(true);
}

void frmScanband::picScanband_MouseMove(double x, double y)
{
    if (!ScanBandTuneMode)
        return;
    if (!inChart(x, y)) {
        lblFreq1->clear();
        return;
    }
    ScanBandHoverFreq = frequencyAt(x, ScanBandStart, ScanBandEnd, ScanBandStep);
    lblFreq1->setText(numtext::str(ScanBandHoverFreq));
}

void frmScanband::picScanband_MouseDown(double x, double y)
{
    if (!ScanBandTuneMode || !inChart(x, y))
        return;
    const int px = numtext::clng(x);
    ScanBandPickFreq = frequencyAt(px, ScanBandStart, ScanBandEnd, ScanBandStep);
    lblFreq->setText(numtext::str(ScanBandPickFreq));
    picScanband->box(70, 372, 570, 380, kBack);
    picScanband->box(px - 1, 372, px + 1, 380, kMarker);
    QPointer<frmScanband> self(this);
    tuneTo(ScanBandPickFreq);
    if (!self || guard_.stopRequested())
        return;
    QCoreApplication::processEvents();
    delayMs(100);
}

void frmScanband::cmdCls_Click()
{
    picScanband->box(70, 184, 570, 360, kBack);
    for (QLabel *l : {lblTimedate, lblFreqlow, lblFreqhigh, lblFreq, lblFreq1, lblDbname[0], lblDbname[1],
                      lblDbname[2], lblDbname[3]})
        l->clear();
    cmdContinue->setEnabled(false);
    cmdTunerx->setEnabled(false);
}

// --- thresholds and options ---

void frmScanband::showSqlon()
{
    lblSqlon->setText(SLevelNames[size_t(SqlOnIndex)]);
    lblSsqlon->move(lblSsqlon->x(), (21 - SqlOnIndex) * 8 + 184);
}

void frmScanband::showSqloff() { lblSqloff->setText(SLevelNames[size_t(SqlOffIndex)]); }

void frmScanband::spnSqlon_SpinUp()
{
    SqlOnIndex = std::min(SqlOnIndex + 1, 21);
    showSqlon();
}

void frmScanband::spnSqlon_SpinDown()
{
    SqlOnIndex = std::max(SqlOnIndex - 1, 1);
    showSqlon();
}

void frmScanband::spnSqloff_SpinUp()
{
    SqlOffIndex = std::min(SqlOffIndex + 1, 21);
    showSqloff();
}

void frmScanband::spnSqloff_SpinDown()
{
    SqlOffIndex = std::max(SqlOffIndex - 1, 1);
    showSqloff();
}

void frmScanband::optShow_Click(int index) { ShowMode = index; }

void frmScanband::showFileControls()
{
    cmdSave->setEnabled(true);
    cmdLoad->setEnabled(true);
    for (QLabel *l : lblDbname)
        l->show();
}

void frmScanband::chkLoop_Click()
{
    const bool on = chkLoop->isChecked();
    ScanBandLoop = on ? 1 : 0;
    for (QRadioButton *o : optShow)
        o->setVisible(on);
    if (on) {
        optShow[0]->setChecked(true);
        ShowMode = 0;
        cmdSave->setEnabled(false);
        cmdLoad->setEnabled(false);
        for (QLabel *l : lblDbname)
            l->hide();
    } else if (!chkSqlonoff->isChecked()) {
        showFileControls();
    }
}

void frmScanband::chkSqlonoff_Click()
{
    const bool on = chkSqlonoff->isChecked();
    for (QWidget *w : std::initializer_list<QWidget *>{lblSqlonat, lblSqloffat, spnSqlon, spnSqloff, lblSqlon,
                                                       lblSqloff, lblSsqlon})
        w->setVisible(on);
    if (on) {
        cmdSave->setEnabled(false);
        cmdLoad->setEnabled(false);
        for (QLabel *l : lblDbname)
            l->hide();
    } else if (!chkLoop->isChecked()) {
        showFileControls();
    }
}

// --- SAN files ---

void frmScanband::cmdSave_Click()
{
    QPointer<frmScanband> self(this);
    fileType = kSanKind;
    frmSavefile::showModal(this);
    if (self)
        unsetCursor();
}

void frmScanband::cmdLoad_Click()
{
    QPointer<frmScanband> self(this);
    fileType = kSanKind;
    frmLoadfile::showModal(this);
    if (self)
        unsetCursor();
}

void frmScanband::SaveSanFile()
{
    setCursor(Qt::WaitCursor);
    const QByteArray bytes = sanBytes(lblTimedate->text());
    textfile::writeAtomically(chosenFilePath(), bytes);
    unsetCursor();
}

void frmScanband::LoadSanFile()
{
    if (++overlayCounter_ > 4)
        overlayCounter_ = 1;
    const QColor color = ChartCanvas::standardColor(overlayColor(overlayCounter_));
    QLabel *name = lblDbname[size_t(overlayCounter_ - 1)];
    QPalette pal = name->palette();
    pal.setColor(QPalette::WindowText, color);
    name->setPalette(pal);
    ScanBandLatest.fill(0);
    const SanFile f = readSan(textfile::readAll(chosenFilePath()));
    ScanBandLastCount = f.lastCount;
    std::copy(f.values.begin(), f.values.end(), ScanBandLatest.begin());
    name->setText(f.date + QStringLiteral("   ") + shownName(chosenFileTable[kSanKind]));
    if (bandFits(f.start, f.end, f.step, freqLowerLimit, freqUpperLimit)) {
        lblFreqlow->setText(numtext::str(f.start));
        txtInput[0]->setText(numtext::str(f.start));
        lblFreqhigh->setText(numtext::str(f.end));
        txtInput[1]->setText(numtext::str(f.end));
        txtInput[2]->setText(numtext::str(f.step));
    } else {
        QPointer<frmScanband> self(this);
        ui::MsgBox(kInputError, ui::vbExclamation, QStringLiteral("Error"));
        if (!self)
            return;
    }
    for (const Segment &s : overlaySegments(f))
        picScanband->line(s.x1, s.y1, s.x2, s.y2, color);
    if (ScanBandLastCount >= 0)
        ScanBandFreq = ScanBandLastCount * f.step + f.start;
    for (QWidget *w : std::initializer_list<QWidget *>{cmdStart, cmdCls, cmdStop, cmdTunerx, cmdPanel, cmdSave, cmdLoad})
        w->setEnabled(true);
    cmdContinue->setEnabled(false);
}

// --- leaving ---

void frmScanband::cmdExit_Click() { close(); }

void frmScanband::closeEvent(QCloseEvent *e)
{
    // The timers first: none may fire once the close is decided, held or not.
    closedMidSweep_ = closedMidSweep_ || tmrScanband.isActive() || tmrSqlon.isActive();
    stopTimers();
    if (guard_.holdClose(e))
        return;
    // Closed mid-sweep (the close box): the NRD panel gets back the lock the sweep took.
    if (closedMidSweep_ && receiver_) {
        QPointer<frmScanband> self(this);
        receiver_->lockPanel(0);
        if (!self)
            return;
    }
    receiver_.reset();
    holds_.release();
    registerReader(kSanKind, {});
    registerWriter(kSanKind, {});
    storeAtUnload(this, Win::frmScanband);
    isOpen(Win::frmScanband) = false;
    frmWelcome::forgetOpenWindow(Win::frmScanband, this);
    e->accept();
}
