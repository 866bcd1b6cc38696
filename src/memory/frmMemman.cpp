#include "frmMemman.h"
#include "core/frmWelcome.h"
#include "core/numtext.h"
#include "ui/widgets/list_frame.h"
#include "core/session_clock.h"
#include "data/file_store.h"
#include "data/frmLoadfile.h"
#include "data/frmSavefile.h"
#include "drivers/clsAR7030.h"
#include "drivers/clsNRD535.h"
#include "drivers/clsNRD545.h"
#include "drivers/clsRX320.h"
#include "drivers/jrc_common.h"
#include "memory/frmMemcell.h"
#include "memory/mem_record.h"
#include "memory/memman_logic.h"
#include "panels/frmAR7030.h"
#include "panels/frmNRD535.h"
#include "panels/frmNRD545.h"
#include "panels/frmRX320.h"
#include "ui/facades.h"
#include "ui/printing.h"
#include "ui/widgets/form_position.h"
#include "ui/widgets/images.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QFontDatabase>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPointer>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>
#include <optional>

namespace {
QPointer<frmMemman> theMemman;

constexpr int kShortTwips = 3375;
constexpr int kTallTwips = 6750;
constexpr int kFileNameColumn = 5;

// Cell i's grid row as it reads now; the grid keeps these texts until the row is added or shown
// again, whatever happens to the image meanwhile.
QStringList cells(int i)
{
    const memman::GridRow r = memman::gridRow(memRecord[i], memTag[i]);
    return {r.number, r.frequency, r.mode, r.bandwidth, r.tag};
}
QString threeDigits(int n) { return numtext::format(n, QStringLiteral("000")); }
// Plain number-to-text: a blank in place of the plus sign.
int16_t fieldInt(const QString &rec, memfield::Field f) { return numtext::cint(numtext::Val(memField(rec, f))); }

const QString kNoData = QStringLiteral("No data loaded in the\nMemMan Window");

QWidget *panelWindow() { return ListFrame::panelWindow(); }
template <class P>
P *panelAs()
{
    return qobject_cast<P *>(panelWindow());
}
} // namespace

frmMemman::frmMemman(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("frmMemman"));
    setWindowTitle(QStringLiteral("Memory Management"));
    setAttribute(Qt::WA_DeleteOnClose);
    tmrScan.setObjectName(QStringLiteral("tmrScan"));
    tmrScan.setInterval(100);
    build();
}

frmMemman::~frmMemman()
{
    tmrScan.stop();
    if (memFileView() == this)
        setMemFileView(previousView_);
    // Gone without its close (the program ending): nothing may point at it.
    frmWelcome::forgetOpenWindow(Win::frmMemman, this);
}

frmMemman *frmMemman::open()
{
    if (theMemman) {
        theMemman->showNormal();
        theMemman->raise();
        theMemman->activateWindow();
        return theMemman;
    }
    auto *w = new frmMemman;
    theMemman = w;
    w->Form_Load();
    return w;
}

void frmMemman::build()
{
    QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    const QFontMetrics fm(fixed);
    const int rowHeight = fm.height() + 2;

    grdTitles = new TextGrid(TextGrid::Titles, {600, 1200, 600, 600, 2200, 3400}, fixed, rowHeight + 2, this,
                             {" NR", " FREQUENCY", "MD", " BW", " ADDITIONAL INFO", ""});
    grdTitles->setObjectName(QStringLiteral("grdTitles"));
    grdMemman = new TextGrid(TextGrid::List, {600, 1200, 600, 600, 5600}, fixed, rowHeight, this);
    grdMemman->setObjectName(QStringLiteral("grdMemman"));
    grdMemman->setFixedHeight(twipsToPixels(kShortTwips));
    const int gridWidth = grdTitles->columnsWidth() + grdMemman->verticalScrollBar()->sizeHint().width()
                          + 2 * grdMemman->frameWidth();
    grdMemman->setFixedWidth(gridWidth);
    grdTitles->setFixedWidth(gridWidth);

    // Detail labels under their captions.
    auto *fraDetails = new QGroupBox(this);
    fraDetails->setObjectName(QStringLiteral("fraDetails"));
    auto *details = new QGridLayout(fraDetails);
    QFont valueFont = fixed;
    valueFont.setBold(true);
    auto detail = [&](const char *name, const char *caption, int column, const QString &tip = QString()) {
        auto *cap = new QLabel(QLatin1String(caption), fraDetails);
        auto *l = new QLabel(fraDetails);
        l->setObjectName(QLatin1String(name));
        l->setFont(valueFont);
        l->setFrameShape(QFrame::StyledPanel);
        l->setFrameShadow(QFrame::Sunken);
        l->setAlignment(Qt::AlignCenter);
        l->setMinimumWidth(fm.horizontalAdvance(QStringLiteral("=========")) + 8);
        if (!tip.isEmpty())
            l->setToolTip(tip);
        details->addWidget(cap, 0, column, Qt::AlignHCenter);
        details->addWidget(l, 1, column);
        return l;
    };
    lblCellnr = detail("lblCellnr", "Cell nr", 0);
    lblAtt = detail("lblAtt", "Attenuator", 1);
    lblAgc = detail("lblAgc", "Agcspeed", 2);
    lblPbs = detail("lblPbs", "PBS", 3);
    lblBfo = detail("lblBfo", "BFO", 4);
    lblSql = detail("lblSql", "Squelch", 5);
    lblScan = detail("lblScan", "", 6, tr("Scanned by the receiver"));

    // Range and delay.
    auto *fraRange = new QGroupBox(this);
    fraRange->setObjectName(QStringLiteral("fraRange"));
    auto *range = new QGridLayout(fraRange);
    auto box = [&](const char *name, const QString &text) {
        auto *t = new QLineEdit(text, fraRange);
        t->setObjectName(QLatin1String(name));
        t->setFont(fixed);
        t->setMaxLength(12);
        t->setFixedWidth(fm.horizontalAdvance(QStringLiteral("0000000")) + 12);
        return t;
    };
    lblFrom = new QLabel(tr("From"), fraRange);
    lblFrom->setObjectName(QStringLiteral("lblFrom"));
    lblFrom->setToolTip(tr("Click: the selected cell becomes the first of the range"));
    lblFrom->setCursor(Qt::PointingHandCursor);
    lblTo = new QLabel(tr("To"), fraRange);
    lblTo->setObjectName(QStringLiteral("lblTo"));
    lblTo->setToolTip(tr("Click: the selected cell becomes the last of the range"));
    lblTo->setCursor(Qt::PointingHandCursor);
    lblFrom->installEventFilter(this);
    lblTo->installEventFilter(this);
    txtFrom = box("txtFrom", QStringLiteral("0"));
    txtTo = box("txtTo", QStringLiteral("0"));
    txtDelay = box("txtDelay", QStringLiteral("1"));
    auto *lblDelay = new QLabel(tr("Delay (s)"), fraRange);
    range->addWidget(lblFrom, 0, 0);
    range->addWidget(txtFrom, 0, 1);
    range->addWidget(lblTo, 1, 0);
    range->addWidget(txtTo, 1, 1);
    range->addWidget(lblDelay, 2, 0);
    range->addWidget(txtDelay, 2, 1);

    auto button = [this](const char *name, const QString &caption) {
        auto *b = new QPushButton(caption, this);
        b->setObjectName(QLatin1String(name));
        b->setAutoDefault(false);
        return b;
    };
    cmdFetch = button("cmdFetch", QStringLiteral("Fetch RM"));
    cmdFill = button("cmdFill", QStringLiteral("Fill RM"));
    cmdSort = button("cmdSort", QStringLiteral("Sort Freq"));
    cmdSetrx2mem = button("cmdSetrx2mem", QStringLiteral("Set R2M"));
    cmdChange = button("cmdChange", QStringLiteral("Change"));
    cmdCopy = button("cmdCopy", QStringLiteral("Copy"));
    cmdDelete = button("cmdDelete", QStringLiteral("Delete"));
    cmdDump = button("cmdDump", QStringLiteral("Store R2M"));
    cmdLoad = button("cmdLoad", QStringLiteral("Load"));
    cmdSaveas = button("cmdSaveas", QStringLiteral("Save"));
    cmdPrint = button("cmdPrint", QStringLiteral("Print"));
    cmdCls = button("cmdCls", QStringLiteral("Cls"));
    cmdExit = button("cmdExit", QStringLiteral("Exit"));
    cmdScanrun = button("cmdScanrun", QStringLiteral("Scan"));
    cmdScanstop = button("cmdScanstop", QStringLiteral("NO Scan"));
    cmdScanstop->hide();
    cmdHeigh = button("cmdHeigh", QStringLiteral("L"));
    cmdHeigh->setToolTip(tr("A taller or shorter grid"));
    cmdPanel = button("cmdPanel", QString());
    cmdPanel->setIcon(QIcon(images::receiver()));
    cmdPanel->setIconSize(QSize(32, 24));
    cmdPanel->setToolTip(tr("Receiver panel"));
    cmdPanel->setAccessibleName(tr("Receiver panel"));

    auto *buttons = new QGridLayout;
    const QList<QPushButton *> order = {cmdFetch, cmdFill, cmdSort, cmdSetrx2mem, cmdChange, cmdCopy, cmdDelete,
                                        cmdDump, cmdLoad, cmdSaveas, cmdPrint, cmdCls};
    for (int i = 0; i < order.size(); ++i)
        buttons->addWidget(order[i], i / 4, i % 4);
    auto *scanRow = new QHBoxLayout;
    scanRow->addWidget(cmdScanrun);
    scanRow->addWidget(cmdScanstop);
    scanRow->addStretch(1);
    scanRow->addWidget(cmdHeigh);
    scanRow->addWidget(cmdPanel);
    scanRow->addWidget(cmdExit);

    auto *lower = new QHBoxLayout;
    auto *right = new QVBoxLayout;
    right->addLayout(buttons);
    right->addLayout(scanRow);
    lower->addWidget(fraRange);
    lower->addLayout(right, 1);

    auto *col = new QVBoxLayout(this);
    col->setSpacing(0);
    col->addWidget(grdTitles);
    col->addWidget(grdMemman);
    col->addSpacing(6);
    col->addWidget(fraDetails);
    col->addLayout(lower);
    col->setSizeConstraint(QLayout::SetFixedSize);

    connect(grdMemman, &TextGrid::cellClicked, this,
            guarded<int, int, const QString &>(guard_, [this](int row, int, const QString &) { grdMemman_Click(row); }));
    connect(grdMemman, &TextGrid::cellDoubleClicked, this,
            guarded<int, int, const QString &>(guard_, [this](int row, int, const QString &) { grdMemman_DblClick(row); }));
    const std::pair<QPushButton *, void (frmMemman::*)()> handlers[] = {
        {cmdFetch, &frmMemman::cmdFetch_Click},     {cmdFill, &frmMemman::cmdFill_Click},
        {cmdSort, &frmMemman::cmdSort_Click},       {cmdSetrx2mem, &frmMemman::cmdSetrx2mem_Click},
        {cmdChange, &frmMemman::cmdChange_Click},   {cmdCopy, &frmMemman::cmdCopy_Click},
        {cmdDelete, &frmMemman::cmdDelete_Click},   {cmdDump, &frmMemman::cmdDump_Click},
        {cmdLoad, &frmMemman::cmdLoad_Click},       {cmdSaveas, &frmMemman::cmdSaveas_Click},
        {cmdPrint, &frmMemman::cmdPrint_Click},     {cmdCls, &frmMemman::cmdCls_Click},
        {cmdExit, &frmMemman::cmdExit_Click},       {cmdScanrun, &frmMemman::cmdScanrun_Click},
        {cmdScanstop, &frmMemman::cmdScanstop_Click}, {cmdHeigh, &frmMemman::cmdHeigh_Click},
        {cmdPanel, &frmMemman::cmdPanel_Click}};
    for (const auto &[b, h] : handlers)
        connect(b, &QPushButton::clicked, this, guarded(guard_, [this, h = h] { (this->*h)(); }));
    connect(&tmrScan, &QTimer::timeout, this, guarded(guard_, [this] { tmrScan_Timer(); }));
    nameForAccessibility(this);
}

void frmMemman::Form_Load()
{
    placeAtLoad(this, Win::frmMemman);
    driver_ = makeDriver(rxType, frmWelcome::instance()->Comm1);
    allocateMemImage();
    cleargrdmemman();
    idleCommands();
    txtTo->setText(QString::number(lastMemoryIndex));
    previousView_ = setMemFileView(this);
    show();
    isOpen(Win::frmMemman) = true;
    frmWelcome::setOpenWindow(Win::frmMemman, this);
}

void frmMemman::idleCommands()
{
    memcmdenabler(false);
    cmdFetch->setEnabled(true);
    cmdLoad->setEnabled(true);
    cmdExit->setEnabled(true);
    cmdPanel->setEnabled(true);
    // The RX-320 has no memory of its own, and without a receiver there is none to fetch.
    if (rxType == rxRX320 || rxType == rxNone) {
        cmdFetch->setEnabled(false);
        cmdFill->setEnabled(false);
    }
}

bool frmMemman::memarrayloaded() const
{
    for (int i = 0; i < memRecord.size(); ++i)
        if (!memRecord[i].isEmpty())
            return true;
    return false;
}

void frmMemman::memcmdenabler(bool v)
{
    for (QPushButton *b : {cmdChange, cmdDump, cmdCopy, cmdDelete, cmdLoad, cmdSaveas, cmdPrint, cmdCls, cmdExit,
                           cmdSort, cmdPanel, cmdScanrun, cmdSetrx2mem})
        b->setEnabled(v);
    if (rxType != rxRX320 && rxType != rxNone) {
        cmdFetch->setEnabled(v);
        cmdFill->setEnabled(v);
    }
}

void frmMemman::formatmemx2list(int i) { grdMemman->rows()->insert(i, cells(i)); }

void frmMemman::cleargrdmemman() { grdMemman->rows()->clear(); }

void frmMemman::clearadditionalinfo()
{
    for (QLabel *l : {lblCellnr, lblAtt, lblAgc, lblPbs, lblBfo, lblSql, lblScan})
        l->clear();
}

void frmMemman::showRow(int r)
{
    if (r < 0 || r >= memRecord.size())
        return;
    TextGridModel *rows = grdMemman->rows();
    while (rows->rowCount() <= r)
        rows->append(cells(rows->rowCount()));
    rows->replace(r, cells(r));
}

void frmMemman::setFileName(const QString &name) { grdTitles->rows()->setText(0, kFileNameColumn, name); }

QString frmMemman::fileName() const { return grdTitles->text(0, kFileNameColumn); }

void frmMemman::progressLabels(const QString &what)
{
    lblCellnr->clear();
    lblScan->clear();
    lblAtt->setText(QStringLiteral("========"));
    lblAgc->setText(what);
    lblPbs->setText(QStringLiteral("Receiver"));
    lblBfo->setText(QStringLiteral(" Memory "));
    lblSql->setText(QStringLiteral("========"));
}

// --- rows and range labels ---

void frmMemman::grdMemman_Click(int row)
{
    if (row < 0)
        return;
    memRow = int16_t(row);
    lblCellnr->setText(threeDigits(row));
    if (row >= memRecord.size())
        return;
    const memman::Details d = memman::details(memRecord[row]);
    lblAtt->setText(d.att);
    lblAgc->setText(d.agc);
    lblPbs->setText(d.pbs);
    lblBfo->setText(d.bfo);
    lblSql->setText(d.sql);
    lblScan->setText(d.scan);
}

void frmMemman::grdMemman_DblClick(int row)
{
    grdMemman_Click(row);
    cmdSetrx2mem_Click();
}

void frmMemman::lblFrom_Click() { txtFrom->setText(threeDigits(memRow)); }

void frmMemman::lblTo_Click() { txtTo->setText(threeDigits(memRow)); }

bool frmMemman::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseButtonRelease && static_cast<QMouseEvent *>(event)->button() == Qt::LeftButton) {
        const HandlerScope scope(guard_);
        if (watched == lblFrom)
            lblFrom_Click();
        else if (watched == lblTo)
            lblTo_Click();
    }
    return QWidget::eventFilter(watched, event);
}

// --- the receiver ---

bool frmMemman::takeLock()
{
    if (lockState != 0)
        return false;
    if (auto *p = panelAs<frmNRD535>())
        p->lockoffon(1);
    else if (auto *p = panelAs<frmNRD545>())
        p->lockoffon(1);
    else if (auto *d = dynamic_cast<JrcDriver *>(driver_.get()))
        d->Lockonoff(1);
    return true;
}

void frmMemman::giveLock(bool took)
{
    if (!took)
        return;
    if (auto *p = panelAs<frmNRD535>())
        p->lockoffon(0);
    else if (auto *p = panelAs<frmNRD545>())
        p->lockoffon(0);
    else if (auto *d = dynamic_cast<JrcDriver *>(driver_.get()))
        d->Lockonoff(0);
}

bool frmMemman::lineGone() const
{
    // Without a receiver there is no line to lose.
    if (!driver_)
        return false;
    const CommLine &line = driver_->comm();
    return !line.PortOpen() || line.waitsCut();
}

void frmMemman::lineGoneMessage(const QString &job, int cell, const QString &title)
{
    QString text = QStringLiteral("The line to the receiver has gone:\n") + job;
    if (cell >= 0)
        text += QStringLiteral(" stopped before cell ") + threeDigits(cell) + QStringLiteral(".\nThe cells before it are done.");
    else
        text += QStringLiteral(" stopped.");
    ui::MsgBox(text, ui::vbExclamation, title);
}

void frmMemman::cmdFetch_Click()
{
    if (!driver_ || rxType == rxRX320)
        return;
    if (ui::MsgBox(QStringLiteral("Do you want to capture the receiver\nmemory and replace possible data in\nthe MemMan Window"),
                   ui::vbYesNoCancel + ui::vbQuestion, QStringLiteral("Fetch RX memory"))
        != ui::vbYes)
        return;
    QPointer<frmMemman> self(this);
    allocateMemImage();
    memcmdenabler(false);
    cleargrdmemman();
    setFileName(QString());
    setCursor(Qt::WaitCursor);
    progressLabels(QStringLiteral("Fetching"));
    double top = numtext::Val(txtTo->text());
    top = std::clamp(top, -1.0, double(lastMemoryIndex));
    const int last = numtext::cint(top);

    auto *ar = dynamic_cast<clsAR7030 *>(driver_.get());
    auto *n535 = dynamic_cast<clsNRD535 *>(driver_.get());
    auto *n545 = dynamic_cast<clsNRD545 *>(driver_.get());
    bool took = false;
    if (!ar) {
        if (n535)
            n535->setRttyOnOff(0);
        else if (n545)
            n545->setRttyOnOff(0);
        if (!self)
            return;
        took = takeLock();
        if (!self)
            return;
        delayMs(100);
    }
    int stoppedAt = -1;
    for (int i = 0; i <= last; ++i) {
        if (!self)
            return;
        if (guard_.stopRequested() || lineGone()) {
            stoppedAt = i;
            break;
        }
        lblCellnr->setText(threeDigits(i));
        QCoreApplication::processEvents();
        if (!self)
            return;
        if (!ar)
            delayMs(15);
        if (!self)
            return;
        if (guard_.stopRequested() || lineGone()) {
            stoppedAt = i;
            break;
        }
        const QString rec = ar ? ar->Memory(int16_t(i)) : n535 ? n535->Memory(int16_t(i)) : n545->Memory(int16_t(i));
        if (!self)
            return;
        // A read cut short by the line going is no cell.
        if (lineGone()) {
            stoppedAt = i;
            break;
        }
        memRecord[i] = rec;
        formatmemx2list(i);
    }
    giveLock(took);
    if (!self)
        return;
    endJob(stoppedAt, QStringLiteral("the fetch"), QStringLiteral("Fetch RX memory"),
           QStringLiteral("Rx memory is now loaded\nin the MemMan Window"), ui::vbInformation,
           QStringLiteral("Fetch Rx ready"));
}

void frmMemman::endJob(int stoppedAt, const QString &job, const QString &title, const QString &ready, int style,
                       const QString &readyTitle)
{
    const QPointer<frmMemman> self(this);
    memcmdenabler(true);
    unsetCursor();
    if (guard_.stopRequested())
        return;
    if (stoppedAt >= 0) {
        lineGoneMessage(job, stoppedAt, title);
        return;
    }
    ui::MsgBox(ready, style, readyTitle);
    if (self)
        clearadditionalinfo();
}

std::optional<memman::Range> frmMemman::typedRange(const QString &errorTitle, bool resetDelay)
{
    const memman::Range r = memman::checkRange(txtFrom->text(), txtTo->text(), lastMemoryIndex);
    if (r.ok)
        return r;
    ui::MsgBox(QStringLiteral("Input Error"), ui::vbExclamation, errorTitle);
    txtFrom->setText(QStringLiteral("0"));
    txtTo->setText(QString::number(lastMemoryIndex));
    if (resetDelay)
        txtDelay->setText(QStringLiteral("2"));
    txtFrom->setFocus();
    return std::nullopt;
}

void frmMemman::cmdFill_Click()
{
    if (!driver_ || rxType == rxRX320)
        return;
    const auto typed = typedRange(QStringLiteral(" Ërror"), true);
    if (!typed)
        return;
    const memman::Range r = *typed;
    if (ui::MsgBox(QStringLiteral("Are sure you want to overwrite the Receiver\nmemorycells  ") + numtext::strBlank(r.from)
                       + QStringLiteral("  to  ") + numtext::strBlank(r.to)
                       + QStringLiteral("\nwith the data from the MemMan Window"),
                   ui::vbYesNoCancel + ui::vbQuestion, QStringLiteral("Fill Receiver Memory"))
        != ui::vbYes)
        return;
    QPointer<frmMemman> self(this);
    progressLabels(QStringLiteral("Filling"));
    memcmdenabler(false);
    setCursor(Qt::WaitCursor);
    auto *ar = dynamic_cast<clsAR7030 *>(driver_.get());
    auto *n535 = dynamic_cast<clsNRD535 *>(driver_.get());
    auto *n545 = dynamic_cast<clsNRD545 *>(driver_.get());
    const bool took = ar ? false : takeLock();
    if (!self)
        return;
    int stoppedAt = -1;
    for (int i = r.from; i <= r.to; ++i) {
        if (guard_.stopRequested() || lineGone()) {
            stoppedAt = i;
            break;
        }
        lblCellnr->setText(threeDigits(i));
        QCoreApplication::processEvents();
        if (!self)
            return;
        if (guard_.stopRequested() || lineGone()) {
            stoppedAt = i;
            break;
        }
        if (ar)
            ar->setMemory(int16_t(i), memRecord[i].str());
        else if (n535)
            n535->setMemory(int16_t(i), memRecord[i].str());
        else if (n545)
            n545->setMemory(int16_t(i), memRecord[i].str());
        if (!self)
            return;
        if (!ar)
            delayMs(10);
        if (!self)
            return;
    }
    giveLock(took);
    if (!self)
        return;
    // The line may still hold the fill's bytes: "ready" waits until the receiver has them all.
    while (stoppedAt < 0 && driver_->comm().OutBufferCount() > 0 && !guard_.stopRequested() && !lineGone()) {
        delayMs(10);
        if (!self)
            return;
    }
    endJob(stoppedAt, QStringLiteral("the fill"), QStringLiteral("Fill Receiver Memory"),
           QStringLiteral("MemMan data is now \nloaded in the Rx memory"), ui::vbOKOnly, QStringLiteral("Fill Rx ready"));
}

void frmMemman::cmdSetrx2mem_Click()
{
    if (memRow < 0 || memRow >= memRecord.size() || !driver_)
        return;
    const QString rec = memRecord[memRow].str();
    if (rec.isEmpty())
        return;
    const double f = numtext::Val(memField(rec, memfield::frequency)) / 1000;
    if (f < freqLowerLimit || f >= freqUpperLimit)
        return;
    QPointer<frmMemman> self(this);
    const int16_t mode = fieldInt(rec, memfield::mode);
    int16_t bandwidth = fieldInt(rec, memfield::bandwidth);
    // The JRC status text takes the bandwidth's second digit only.
    const QString status = u'X' + memField(rec, memfield::attenuator) + memField(rec, {20, 1}) + memField(rec, memfield::mode)
                           + memField(rec, memfield::frequency) + memField(rec, memfield::agc);
    if (auto *ar = dynamic_cast<clsAR7030 *>(driver_.get())) {
        const int16_t pbs = fieldInt(rec, memfield::pbs);
        const int16_t sqlBfo = fieldInt(rec, memfield::sqlBfo);
        ar->setFrequencyA(f);
        ar->setMode(mode);
        ar->setBandwidth(bandwidth);
        ar->setPassBandShift(pbs);
        if (mode == 4 || mode == 5)
            ar->setBeatfreqosc(sqlBfo);
        else
            ar->setSquelch(sqlBfo);
        if (!self)
            return;
        if (auto *p = panelAs<frmAR7030>())
            p->RxUpdatefull();
    } else if (auto *n = dynamic_cast<clsNRD535 *>(driver_.get())) {
        n->setRxStatus(status);
        if (!self)
            return;
        if (auto *p = panelAs<frmNRD535>())
            p->RxUpdatebasics();
    } else if (auto *n = dynamic_cast<clsNRD545 *>(driver_.get())) {
        n->setRxStatus(status);
        if (!self)
            return;
        if (auto *p = panelAs<frmNRD545>())
            p->NRD545A_RxStatusChanged(status);
    } else if (auto *rx = dynamic_cast<clsRX320 *>(driver_.get())) {
        const int16_t agc = fieldInt(rec, memfield::agc);
        rx->setFrequencyA(f);
        rx->setMode(mode);
        rx->setBandwidth(bandwidth);
        rx->setAgcspeed(agc);
        if (auto *p = panelAs<frmRX320>()) {
            p->RX320A_FrequencyAChanged(f);
            p->RX320A_ModeChanged(mode);
            p->RX320A_BandwidthChanged(bandwidth);
            p->RX320A_AgcspeedChanged(agc);
        }
    }
}

// --- the cell editor ---

void frmMemman::openEditor(int action, const QString &caption, bool needsData)
{
    if (needsData && !memarrayloaded()) {
        ui::MsgBox(kNoData, ui::vbExclamation, QStringLiteral("Change Mem error"));
        return;
    }
    QPointer<frmMemman> self(this);
    frmMemcell editor(action, caption, driver_.get(), [self](int r) { if (self) self->showRow(r); }, this);
    editor.exec();
}

void frmMemman::cmdChange_Click() { openEditor(1, QStringLiteral("Change selected Mem Cell"), true); }
void frmMemman::cmdDump_Click() { openEditor(2, QStringLiteral(" Store Rx setting in Mem Cell"), false); }
void frmMemman::cmdCopy_Click() { openEditor(3, QStringLiteral("Copy to other Mem Cell"), true); }
void frmMemman::cmdDelete_Click() { openEditor(4, QStringLiteral("Delete selected Mem Cell"), true); }

// --- sort and print ---

void frmMemman::cmdSort_Click()
{
    if (!memarrayloaded()) {
        ui::MsgBox(QStringLiteral("No data loaded in the\nMemory Management Window"), ui::vbOKOnly,
                   QStringLiteral("No memory data to sort"));
        return;
    }
    if (ui::MsgBox(QStringLiteral("You want to sort the contents\nof the Memory Management\nwindow on frequency ?"),
                   ui::vbYesNoCancel + ui::vbQuestion, QStringLiteral("Sort Memory data "))
        != ui::vbYes)
        return;
    setCursor(Qt::WaitCursor);
    cleargrdmemman();
    memman::sortImage(memRecord, memTag, lastMemoryIndex);
    for (int i = 0; i <= lastMemoryIndex; ++i)
        formatmemx2list(i);
    unsetCursor();
    ui::MsgBox(QStringLiteral("Memory data is now sorted"), ui::vbExclamation, QStringLiteral("Memory data"));
}

void frmMemman::cmdPrint_Click()
{
    if (!memarrayloaded()) {
        ui::MsgBox(kNoData, ui::vbOKOnly, QStringLiteral("Nothing to Print"));
        return;
    }
    const auto typed = typedRange(QStringLiteral("Ërror"), false);
    if (!typed)
        return;
    const memman::Range r = *typed;
    if (ui::MsgBox(QStringLiteral("You want to print the contents\nof memorycells  ") + numtext::strBlank(r.from)
                       + QStringLiteral("  to  ") + numtext::strBlank(r.to)
                       + QStringLiteral("\nincluding the filled-in alpha tags"),
                   ui::vbYesNoCancel + ui::vbQuestion, QStringLiteral("Memories to Printer"))
        != ui::vbYes)
        return;
    ui::PrintJob job;
    job.title = fileName().isEmpty() ? windowTitle() : fileName();
    job.fontFamily = QStringLiteral("Courier New");
    job.pointSize = 10;
    job.lines = memman::printLines(memRecord, memTag, fileName(), r.from, r.to, rxType);
    ui::print(job);
}

// --- scan ---

void frmMemman::scrollTop(int row)
{
    // Never so far down that the grid's last page is not full.
    const int inView = std::max(1, grdMemman->viewport()->height() / grdMemman->rowHeight(0));
    const int top = std::max(0, std::min(row, grdMemman->rows()->rowCount() - inView));
    grdMemman->verticalScrollBar()->setValue(top);
}

void frmMemman::cmdScanrun_Click()
{
    const memman::Delay d = memman::clampDelay(txtDelay->text());
    if (!d.text.isEmpty())
        txtDelay->setText(d.text);
    const auto typed = typedRange(QStringLiteral(" Ërror"), true);
    if (!typed)
        return;
    const memman::Range r = *typed;
    scanFrom_ = r.from;
    scanTo_ = r.to;
    scanDelay_ = d.seconds;
    scanOffset_ = 0;
    cmdScanrun->hide();
    cmdScanstop->show();
    tmrScan.setInterval(100);
    memcmdenabler(false);
    scanning_ = true;
    scrollTop(scanFrom_);
    tmrScan.start();
}

void frmMemman::tmrScan_Timer()
{
    // The receiver's tuning lets events run: a tick that comes meanwhile is dropped.
    if (ticking_ || !scanning_)
        return;
    if (guard_.stopRequested())
        return;
    if (lineGone()) {
        cmdScanstop_Click();
        lineGoneMessage(QStringLiteral("the scan"), -1, QStringLiteral("Scan"));
        return;
    }
    ticking_ = true;
    QPointer<frmMemman> self(this);
    tmrScan.setInterval(memman::scanIntervalMs(scanDelay_, rxType));
    const int row = scanFrom_ + scanOffset_;
    memRow = int16_t(row);
    const int top = grdMemman->rowAt(0);
    const int bottom = grdMemman->rowAt(grdMemman->viewport()->height() - 1);
    if (top < 0 || row < top || (bottom >= 0 && row > bottom))
        scrollTop(row);
    grdMemman->selectRow(row);
    lblCellnr->setText(threeDigits(row));
    cmdSetrx2mem_Click();
    if (!self)
        return;
    ticking_ = false;
    ++scanOffset_;
    if (row >= scanTo_)
        scanOffset_ = 0;
}

void frmMemman::cmdScanstop_Click()
{
    tmrScan.stop();
    scanning_ = false;
    cmdScanstop->hide();
    cmdScanrun->show();
    memcmdenabler(true);
}

// --- files, clearing, leaving ---

void frmMemman::cmdCls_Click()
{
    const int answer = ui::MsgBox(QStringLiteral("Do you want to save the \ndata in the MemMan Window\nbefore clearing the Window"),
                                  ui::vbYesNoCancel + ui::vbQuestion, QStringLiteral("Clearing MemMan Window"));
    if (answer == ui::vbYes) {
        cmdSaveas_Click();
    } else if (answer == ui::vbNo) {
        cleargrdmemman();
        clearadditionalinfo();
        allocateMemImage();
        setFileName(QString());
        idleCommands();
    }
}

void frmMemman::cmdExit_Click()
{
    const int answer = ui::MsgBox(QStringLiteral("Do you want to save the contents\nof the Memory Management window"),
                                  ui::vbYesNoCancel + ui::vbQuestion, QStringLiteral("Exit"));
    if (answer == ui::vbYes) {
        cmdSaveas_Click();
    } else if (answer == ui::vbNo) {
        leaving_ = true;
        close();
    }
}

void frmMemman::cmdSaveas_Click()
{
    if (!memarrayloaded()) {
        ui::MsgBox(kNoData, ui::vbOKOnly, QStringLiteral("Save file error"));
        return;
    }
    QPointer<frmMemman> self(this);
    fileType = kMemFileKind;
    frmSavefile::showModal(this);
    // A save that failed never reported its end: the pointer comes back all the same.
    if (self)
        unsetCursor();
}

void frmMemman::cmdLoad_Click()
{
    QPointer<frmMemman> self(this);
    fileType = kMemFileKind;
    frmLoadfile::showModal(this);
    if (self)
        unsetCursor();
}

void frmMemman::cmdPanel_Click() { ListFrame::showPanel(); }

void frmMemman::cmdHeigh_Click()
{
    tall_ = !tall_;
    cmdHeigh->setText(tall_ ? QStringLiteral("S") : QStringLiteral("L"));
    grdMemman->setFixedHeight(twipsToPixels(tall_ ? kTallTwips : kShortTwips));
    grdMemman->viewport()->update();
}

// --- what the memory files report ---

void frmMemman::memLoadBegins()
{
    setCursor(Qt::WaitCursor);
    memcmdenabler(false);
    cleargrdmemman();
}

void frmMemman::memRowLoaded(int i) { formatmemx2list(i); }

void frmMemman::memLoadEnds(const QString &name)
{
    memcmdenabler(true);
    setFileName(name);
    unsetCursor();
}

void frmMemman::memSaveBegins() { setCursor(Qt::WaitCursor); }

void frmMemman::memSaveEnds(const QString &name)
{
    setFileName(name);
    unsetCursor();
}

void frmMemman::closeEvent(QCloseEvent *e)
{
    // The close box asks as "Exit" does, also when it had to wait for a job.
    if (guard_.holdCloseOrAsk(e, leaving_, [this] { cmdExit_Click(); }))
        return;
    tmrScan.stop();
    scanning_ = false;
    storeAtUnload(this, Win::frmMemman);
    isOpen(Win::frmMemman) = false;
    frmWelcome::forgetOpenWindow(Win::frmMemman, this);
    if (memFileView() == this)
        setMemFileView(previousView_);
    driver_.reset();
    e->accept();
}
