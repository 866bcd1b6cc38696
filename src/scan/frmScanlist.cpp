#include "frmScanlist.h"
#include "core/frmWelcome.h"
#include "core/numtext.h"
#include "core/shared_state.h"
#include "core/textfile.h"
#include "data/file_store.h"
#include "data/frmLoadfile.h"
#include "data/frmSavefile.h"
#include "ui/facades.h"
#include "ui/widgets/chart_canvas.h"
#include "ui/widgets/form_position.h"
#include "ui/widgets/list_frame.h"
#include "ui/widgets/raise_or_load.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QScopeGuard>
#include <QVBoxLayout>

using namespace scanlist;

namespace {
QPointer<frmScanlist> theScanlist;
const QString kTitle = QStringLiteral("Scan Frequencies from list");
const QColor kChartBack(255, 255, 192);
constexpr int kBarBase = 270, kBarTopmost = 70;
constexpr int kMarked = 11, kWhite = 15;
} // namespace

frmScanlist::frmScanlist(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("frmScanlist"));
    setWindowTitle(kTitle);
    setAttribute(Qt::WA_DeleteOnClose);
    tmrScanlist.setObjectName(QStringLiteral("tmrScanlist"));
    tmrScanlist.setInterval(3000);

    auto label = [this](const char *name, const QString &caption) {
        auto *l = new QLabel(caption, this);
        l->setObjectName(QLatin1String(name));
        return l;
    };
    auto box = [this](const QString &name, const QString &text, int width) {
        auto *t = new QLineEdit(text, this);
        t->setObjectName(name);
        t->setFixedWidth(width);
        return t;
    };
    auto button = [this](const char *name, const QString &caption, const QString &tip) {
        auto *b = new QPushButton(caption, this);
        b->setObjectName(QLatin1String(name));
        b->setAutoDefault(false);
        b->setToolTip(tip);
        return b;
    };

    auto *placesGrid = new QGridLayout;
    placesGrid->setHorizontalSpacing(4);
    placesGrid->setVerticalSpacing(2);
    for (int i = 0; i < kPlaces; ++i) {
        QLineEdit *t = box(QStringLiteral("txtFreqlist_%1").arg(i), QStringLiteral("-"), 64);
        t->setToolTip(tr("Frequency %1 in kHz, or \"-\"; a click tunes to it while the scan is off").arg(i + 1));
        t->installEventFilter(this);
        txtFreqlist[size_t(i)] = t;
        auto *n = new QLabel(QString::number(i + 1), this);
        n->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        placesGrid->addWidget(n, i / 10, 2 * (i % 10));
        placesGrid->addWidget(t, i / 10, 2 * (i % 10) + 1);
    }

    picture = new ChartCanvas(600, 320, this);

    lblUpdate = label("lblUpdate", QStringLiteral("Runs/update"));
    txtUpdate = box(QStringLiteral("txtUpdate"), QStringLiteral("5"), 40);
    txtUpdate->setToolTip(tr("Passes between trend updates, 3 to 10"));
    lblDelay = label("lblDelay", QStringLiteral("Delay/freq"));
    txtDelay = box(QStringLiteral("txtDelay"), QStringLiteral("3"), 40);
    txtDelay->setToolTip(tr("Seconds on each frequency, 1 to 10"));
    lblRun = label("lblRun", QStringLiteral(" Run : "));
    lblRuns = label("lblRuns", QStringLiteral("0000"));
    lblStart = label("lblStart", QStringLiteral("Start time"));
    lblStartUTC = label("lblStartUTC", QString());
    lblEnd = label("lblEnd", QStringLiteral("End time"));
    lblEndUTC = label("lblEndUTC", QString());
    for (QLabel *l : {lblStartUTC, lblEndUTC})
        l->setMinimumWidth(70);

    cmdStart = button("cmdStart", QStringLiteral("Start"), tr("Clear the chart and scan the list from the first place"));
    cmdStop = button("cmdStop", QStringLiteral("Stop"), tr("Stop the scan"));
    cmdContinue = button("cmdContinue", QStringLiteral("Continue"), tr("Go on with the stopped scan"));
    cmdCls = button("cmdCls", QStringLiteral("Cls"), tr("Clear the chart"));
    cmdLoad = button("cmdLoad", QStringLiteral("Load List"), tr("Load a list of frequencies"));
    cmdsaveas = button("cmdsaveas", QStringLiteral("Save List"), tr("Save the list of frequencies"));
    cmdPanel = button("cmdPanel", QStringLiteral("Panel"), tr("Show the receiver's panel"));
    cmdExit = button("cmdExit", QStringLiteral("Exit"), tr("Stop the scan and close the window"));

    // The settings, the pass count and the times stand in the free strip above the bars.
    auto *strip = new QWidget(picture);
    auto *settings = new QHBoxLayout;
    for (QWidget *w : std::initializer_list<QWidget *>{lblUpdate, txtUpdate, lblDelay, txtDelay, lblRun, lblRuns})
        settings->addWidget(w);
    settings->addStretch();
    auto *times = new QHBoxLayout;
    for (QWidget *w : std::initializer_list<QWidget *>{lblStart, lblStartUTC, lblEnd, lblEndUTC})
        times->addWidget(w);
    times->addStretch();
    auto *stripRows = new QVBoxLayout(strip);
    stripRows->setContentsMargins(0, 0, 0, 0);
    stripRows->setSpacing(2);
    settings->setSpacing(8);
    times->setSpacing(8);
    stripRows->addLayout(settings);
    stripRows->addLayout(times);
    strip->setGeometry(64, 2, 512, 64);
    auto *buttons = new QHBoxLayout;
    for (QPushButton *b : {cmdStart, cmdStop, cmdContinue, cmdCls, cmdLoad, cmdsaveas, cmdPanel, cmdExit})
        buttons->addWidget(b);
    auto *col = new QVBoxLayout(this);
    col->addLayout(placesGrid);
    col->addWidget(picture, 0, Qt::AlignHCenter);
    col->addLayout(buttons);
    col->setSizeConstraint(QLayout::SetFixedSize);

    const std::pair<QPushButton *, void (frmScanlist::*)()> handlers[] = {
        {cmdStart, &frmScanlist::cmdStart_Click}, {cmdStop, &frmScanlist::cmdStop_Click},
        {cmdContinue, &frmScanlist::cmdContinue_Click}, {cmdCls, &frmScanlist::cmdCls_Click},
        {cmdLoad, &frmScanlist::cmdLoad_Click}, {cmdsaveas, &frmScanlist::cmdsaveas_Click},
        {cmdExit, &frmScanlist::cmdExit_Click}};
    for (const auto &[b, h] : handlers)
        connect(b, &QPushButton::clicked, this, guarded(guard_, [this, h = h] { (this->*h)(); }));
    connect(cmdPanel, &QPushButton::clicked, this, [] { ListFrame::showPanel(); });
    connect(&tmrScanlist, &QTimer::timeout, this, guarded(guard_, [this] { tmrScanlist_Timer(); }));
    nameForAccessibility(this);
}

frmScanlist::~frmScanlist()
{
    tmrScanlist.stop();
    frmWelcome::forgetOpenWindow(Win::frmScanlist, this);
}

frmScanlist *frmScanlist::open()
{
    return raiseOrLoad(theScanlist, [](const frmScanlist &) { return isOpen(Win::frmScanlist); });
}

void frmScanlist::Form_Load()
{
    placeAtLoad(this, Win::frmScanlist);
    tmrScanlist.stop();
    scan_.NewRun = scan_.NewTrend = false;
    drawStatic();
    for (QPushButton *b : {cmdStart, cmdPanel, cmdExit, cmdLoad, cmdsaveas})
        b->setEnabled(true);
    for (QPushButton *b : {cmdStop, cmdCls, cmdContinue})
        b->setEnabled(false);
    rx_ = std::make_unique<ScanReceiver>();
    holds_.take({QStringLiteral("mnuSmeter"), QStringLiteral("mnuScanBand"), QStringLiteral("mnuScanfreqpairs"),
                 QStringLiteral("mnuPropagation")});
    QPointer<frmScanlist> self(this);
    registerReader(kSflKind, [self] {
        if (self)
            self->LoadSflFile();
    });
    registerWriter(kSflKind, [self] {
        if (self)
            self->SaveSflFile();
    });
    show();
    isOpen(Win::frmScanlist) = true;
    frmWelcome::setOpenWindow(Win::frmScanlist, this);
}

Places frmScanlist::places() const
{
    Places p;
    for (int i = 0; i < kPlaces; ++i)
        p[size_t(i)] = txtFreqlist[size_t(i)]->text();
    return p;
}

// --- drawing ---

void frmScanlist::drawStatic()
{
    ChartCanvas &c = *picture;
    const QColor black = Qt::black;
    c.cls();
    c.line(64, 271, 576, 271, black);
    c.line(64, 271, 64, 75, black);
    c.line(576, 271, 576, 75, black);
    // A tick at each labelled level, the label centred on it.
    const std::pair<int, const char *> levels[] = {{255, "  S1"}, {219, "  S5"}, {183, "  S9"},
                                                   {147, "+24"},  {111, "+48"},  {75, "+72"}};
    for (const auto &[y, text] : levels) {
        c.line(55, y + 6, 64, y + 6, black);
        c.line(576, y + 6, 585, y + 6, black);
        c.text(30, y, QLatin1String(text), black);
    }
    for (int i = 0; i < kPlaces; ++i) {
        c.line(75 + 25 * i, 273, 94 + 25 * i, 273, black);
        c.text(77 + 25 * i, 275, QString::number(i + 1), black);
        c.box(75 + 25 * i, kCellTop, 94 + 25 * i, kCellBottom, ChartCanvas::standardColor(kWhite));
        c.line(75 + 25 * i, kCellTop - 1, 94 + 25 * i, kCellTop - 1, black);
        c.line(75 + 25 * i, kCellBottom + 1, 94 + 25 * i, kCellBottom + 1, black);
    }
}

void frmScanlist::drawColumn(int place, int k, float v)
{
    const int x = columnX(place, k);
    picture->line(x, kBarBase, x, kBarTopmost, kChartBack);
    picture->line(x, kBarBase, x, barTop(v), Qt::black);
}

void frmScanlist::drawTrendCells()
{
    for (int i = 0; i < kPlaces; ++i)
        for (int k = 1; k <= kTrendAges; ++k) {
            const int16_t colour = scan_.ListTrend[i][k];
            const int x = cellLeft(i, k);
            picture->box(x, kCellTop, x + 1, kCellBottom, ChartCanvas::standardColor(colour == 0 ? kWhite : colour));
        }
}

void frmScanlist::setPlaceColor(int place, int standardColor)
{
    QLineEdit *t = txtFreqlist[size_t(place)];
    QPalette pal = t->palette();
    pal.setColor(QPalette::Base, ChartCanvas::standardColor(standardColor));
    t->setPalette(pal);
}

// --- the scan ---

void frmScanlist::cmdStart_Click()
{
    cmdCls_Click();
    int valid = 0;
    for (int i = 0; i < kPlaces; ++i) {
        setPlaceColor(i, kWhite);
        if (validPlace(txtFreqlist[size_t(i)]->text(), freqLowerLimit, freqUpperLimit))
            ++valid;
    }
    if (valid == 0) {
        ui::MsgBox(QStringLiteral("No valid\nFrequencies\nfilled in"), ui::vbExclamation, QStringLiteral("Error"));
        return;
    }
    QPointer<frmScanlist> self(this);
    if (validPlace(txtFreqlist[0]->text(), freqLowerLimit, freqUpperLimit)) {
        setPlaceColor(0, kMarked);
        double f = placeValue(txtFreqlist[0]->text());
        if (frmWelcome *w = frmWelcome::instance())
            w->Change2FreqA(f);
        if (!self || guard_.stopRequested())
            return;
    }
    rx_->lockPanel(1);
    rx_->readAttenuation();
    if (!self || guard_.stopRequested())
        return;
    cmdStop->setEnabled(true);
    for (QPushButton *b : {cmdStart, cmdCls, cmdContinue, cmdLoad, cmdsaveas})
        b->setEnabled(false);
    scan_.NewRun = scan_.NewTrend = true;
    bool fellBack = false;
    scan_.RunsPerUpdate = runsPerUpdateOf(txtUpdate->text(), &fellBack);
    if (fellBack)
        txtUpdate->setText(QStringLiteral("5"));
    const double delay = readDelay();
    lblStartUTC->setText(utcText);
    tmrScanlist.setInterval(intervalMs(delay));
    tmrScanlist.start();
}

double frmScanlist::readDelay()
{
    bool fellBack = false;
    const double delay = delayOf(txtDelay->text(), &fellBack);
    if (fellBack)
        txtDelay->setText(QStringLiteral("2"));
    return delay;
}

void frmScanlist::tmrScanlist_Timer()
{
    // A tick that comes while the last one waits on the receiver is not taken.
    if (!scanning() || ticking_ || guard_.stopRequested())
        return;
    ticking_ = true;
    const auto done = qScopeGuard([self = QPointer<frmScanlist>(this)] {
        if (self)
            self->ticking_ = false;
    });
    scan_.beginTick();
    const float v = rx_->level();
    if (guard_.stopRequested() || !scanning())
        return;
    const int pos = scan_.ListPos;
    scan_.record(v);
    for (int k = 1; k <= kAges; ++k)
        drawColumn(pos, k, scan_.ListLevels[pos][k]);

    const Places list = places();
    const ListScan::Move m = scan_.moveOn(list, freqLowerLimit, freqUpperLimit);
    if (m.place < 0) {
        stopForEmptyList();
        return;
    }
    setPlaceColor(pos, kWhite);
    if (m.trended)
        drawTrendCells();
    if (m.passEnded)
        lblRuns->setText(numtext::format(scan_.RunCount, QStringLiteral("0000")));
    setPlaceColor(m.place, kMarked);
    double f = placeValue(list[size_t(m.place)]);
    if (frmWelcome *w = frmWelcome::instance())
        w->Change2FreqA(f);
}

void frmScanlist::stopForEmptyList()
{
    cmdStop_Click();
    ui::MsgBox(QStringLiteral("No frequency of the list lies within the receiver's range any more.\n"
                              "The scan has stopped."),
               ui::vbExclamation, kTitle);
}

void frmScanlist::cmdStop_Click()
{
    tmrScanlist.stop();
    lblEndUTC->setText(utcText);
    for (QPushButton *b : {cmdCls, cmdContinue, cmdLoad, cmdsaveas})
        b->setEnabled(true);
    rx_->lockPanel(0);
}

void frmScanlist::cmdContinue_Click()
{
    for (QPushButton *b : {cmdCls, cmdContinue, cmdLoad, cmdsaveas})
        b->setEnabled(false);
    tmrScanlist.setInterval(intervalMs(readDelay()));
    tmrScanlist.start();
    lblEndUTC->clear();
    rx_->lockPanel(1);
}

void frmScanlist::cmdCls_Click()
{
    picture->box(65, kBarTopmost, 575, kBarBase, picture->backColor());
    for (int i = 0; i < kPlaces; ++i)
        picture->box(75 + 25 * i, kCellTop, 94 + 25 * i, kCellBottom, ChartCanvas::standardColor(kWhite));
    cmdContinue->setEnabled(false);
    cmdStart->setEnabled(true);
    lblRuns->setText(QStringLiteral("0000"));
}

void frmScanlist::txtFreqlist_Click(int index)
{
    if (scanning())
        return;
    const QString text = txtFreqlist[size_t(index)]->text();
    if (!validPlace(text, freqLowerLimit, freqUpperLimit))
        return;
    double f = placeValue(text);
    if (frmWelcome *w = frmWelcome::instance())
        w->Change2FreqA(f);
}

bool frmScanlist::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseButtonPress)
        for (int i = 0; i < kPlaces; ++i)
            if (watched == txtFreqlist[size_t(i)]) {
                const HandlerScope scope(guard_);
                txtFreqlist_Click(i);
                break;
            }
    return QWidget::eventFilter(watched, event);
}

// --- the file ---

void frmScanlist::cmdLoad_Click()
{
    QPointer<frmScanlist> self(this);
    fileType = kSflKind;
    frmLoadfile::showModal(this);
    if (self)
        unsetCursor();
}

void frmScanlist::cmdsaveas_Click()
{
    QPointer<frmScanlist> self(this);
    fileType = kSflKind;
    frmSavefile::showModal(this);
    if (self)
        unsetCursor();
}

void frmScanlist::LoadSflFile()
{
    setCursor(Qt::WaitCursor);
    const Places p = readSfl(textfile::readAll(chosenFilePath()), freqLowerLimit, freqUpperLimit);
    for (int i = 0; i < kPlaces; ++i)
        txtFreqlist[size_t(i)]->setText(p[size_t(i)]);
    cmdStart->setEnabled(true);
    cmdContinue->setEnabled(false);
    unsetCursor();
}

void frmScanlist::SaveSflFile()
{
    setCursor(Qt::WaitCursor);
    textfile::writeAtomically(chosenFilePath(), sflBytes(places(), freqLowerLimit, freqUpperLimit));
    unsetCursor();
}

// --- leaving ---

void frmScanlist::cmdExit_Click()
{
    cmdStop_Click();
    close();
}

void frmScanlist::closeEvent(QCloseEvent *e)
{
    if (guard_.holdClose(e))
        return;
    // No tick may come after this, whatever closes the window (its box, Exit, the panel).
    const bool wasScanning = scanning();
    tmrScanlist.stop();
    if (wasScanning && rx_)
        rx_->lockPanel(0);
    registerReader(kSflKind, {});
    registerWriter(kSflKind, {});
    holds_.release();
    rx_.reset();
    storeAtUnload(this, Win::frmScanlist);
    isOpen(Win::frmScanlist) = false;
    frmWelcome::forgetOpenWindow(Win::frmScanlist, this);
    e->accept();
}
