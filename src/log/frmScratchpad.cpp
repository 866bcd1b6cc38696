#include "frmScratchpad.h"
#include "ui/widgets/raise_or_load.h"
#include "core/frmWelcome.h"
#include "core/numtext.h"
#include "core/textfile.h"
#include "data/file_store.h"
#include "data/frmLoadfile.h"
#include "data/frmSavefile.h"
#include "log/small_lists_qt.h"
#include "ui/facades.h"
#include "ui/widgets/form_position.h"
#include "ui/widgets/list_frame.h"
#include "ui/widgets/text_grid.h"

#include <QCloseEvent>
#include <QFontDatabase>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
QPointer<frmScratchpad> thePad;
constexpr int kFspKind = 9;
constexpr int kCellTwips = 885;
const QString kNotEnough = QStringLiteral("Not enough valid    \nfrequencies filled  \nin for scanning     ");
} // namespace

frmScratchpad::frmScratchpad(QWidget *parent) : QWidget(parent)
{
    using smalllists::kPadColumns;
    using smalllists::kPadRows;
    setObjectName(QStringLiteral("frmScratchpad"));
    setWindowTitle(QStringLiteral("Frequency Scratchpad"));
    setAttribute(Qt::WA_DeleteOnClose);
    tmrScan.setObjectName(QStringLiteral("tmrScan"));
    frame_ = new ListFrame(this, Win::frmScratchpad);
    // Ten rows that always fit: there is nothing to make taller.
    frame_->cmdHeigh->hide();

    const QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    // The longest frequency text of a panel.
    const QFont cellFont = smallwin::fittedFont(QStringLiteral("00000.000"), kCellTwips);
    // A row as high as a note box, so that each note stands beside its row.
    QLineEdit probe;
    probe.setFont(cellFont);
    const int rowHeight = probe.sizeHint().height();
    QStringList numbers;
    for (int c = 1; c <= kPadColumns; ++c)
        numbers << QStringLiteral("   %1").arg(c);
    const auto cells = {kCellTwips, kCellTwips, kCellTwips, kCellTwips, kCellTwips, kCellTwips, kCellTwips, kCellTwips};
    lblTitles = new TextGrid(TextGrid::Titles, cells, fixed, QFontMetrics(fixed).height() + 4, this, numbers);
    lblTitles->setObjectName(QStringLiteral("lblTitles"));
    grdScratchpad = new TextGrid(TextGrid::List, cells, cellFont, rowHeight, this);
    grdScratchpad->setObjectName(QStringLiteral("grdScratchpad"));
    grdScratchpad->setSelectionBehavior(QAbstractItemView::SelectItems);
    grdScratchpad->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    grdScratchpad->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    for (int r = 1; r < kPadRows; ++r)
        grdScratchpad->rows()->append({});
    const int frame = grdScratchpad->frameWidth();
    const int width = lblTitles->columnsWidth() + 2 * frame;
    lblTitles->setFixedWidth(width);
    grdScratchpad->setFixedSize(width, kPadRows * rowHeight + 2 * frame);

    auto *notesTitle = new QLabel(tr("Notes"), this);
    auto *notes = new QVBoxLayout;
    notes->setSpacing(0);
    notes->setContentsMargins(0, frame, 0, frame);
    for (int r = 0; r < kPadRows; ++r) {
        auto *t = new QLineEdit(this);
        t->setObjectName(QStringLiteral("txtNotes_%1").arg(r));
        t->setFixedHeight(rowHeight);
        t->setMinimumWidth(QFontMetrics(font()).horizontalAdvance(QLatin1Char('x')) * 28);
        txtNotes[size_t(r)] = t;
        notes->addWidget(t);
    }

    auto button = [this](const char *name, const QString &caption, const QString &tip) {
        auto *b = new QPushButton(caption, this);
        b->setObjectName(QLatin1String(name));
        b->setAutoDefault(false);
        if (!tip.isEmpty())
            b->setToolTip(tip);
        return b;
    };
    cmdRx2sp = button("cmdRx2sp", QStringLiteral("To Scratchpad "), tr("The panel's frequency into the selected cell"));
    cmdSp2rx = button("cmdSp2rx", QStringLiteral("To Receiver"), tr("Tune to the selected cell"));
    cmdClrcell = button("cmdClrcell", QStringLiteral("Clear Cell"), tr("Empty the selected cell"));
    cmdClrgrid = button("cmdClrgrid", QStringLiteral("Clear Grid"), tr("Empty every cell"));
    cmdClrnotes = button("cmdClrnotes", QStringLiteral("Clear Notes"), tr("Empty the ten notes"));
    cmdLoad = button("cmdLoad", QStringLiteral("Load"), {});
    cmdSave = button("cmdSave", QStringLiteral("Save As"), {});
    cmdScan = button("cmdScan", QStringLiteral("Scan"), tr("Tune to each frequency of the selected row in turn"));
    cmdStop = button("cmdStop", QStringLiteral("Stop"), tr("End the scan"));
    cmdExit = button("cmdExit", QStringLiteral("Exit"), {});
    txtScandelay = new QLineEdit(QStringLiteral("5"), this);
    txtScandelay->setObjectName(QStringLiteral("txtScandelay"));
    txtScandelay->setFixedWidth(QFontMetrics(font()).horizontalAdvance(QStringLiteral("0000")) + 12);
    txtScandelay->setToolTip(tr("Seconds on each frequency, 1 to 60"));
    frame_->txtFrequencyA->setFont(fixed);
    frame_->txtFrequencyA->setFixedWidth(QFontMetrics(fixed).horizontalAdvance(QStringLiteral("00000.000")) + 14);
    frame_->txtFrequencyA->setToolTip(tr("The tuned frequency; type one and press Enter to tune"));

    auto *grid = new QGridLayout;
    grid->setHorizontalSpacing(8);
    grid->setVerticalSpacing(0);
    grid->addWidget(lblTitles, 0, 0);
    grid->addWidget(notesTitle, 0, 1, Qt::AlignBottom);
    grid->addWidget(grdScratchpad, 1, 0, Qt::AlignTop);
    grid->addLayout(notes, 1, 1, Qt::AlignTop);

    auto *tuning = new QHBoxLayout;
    tuning->addWidget(new QLabel(tr("Frequency"), this));
    tuning->addWidget(frame_->txtFrequencyA);
    tuning->addWidget(cmdRx2sp);
    tuning->addWidget(cmdSp2rx);
    tuning->addStretch(1);
    tuning->addWidget(new QLabel(tr("Scan delay (s)"), this));
    tuning->addWidget(txtScandelay);
    tuning->addWidget(cmdScan);
    tuning->addWidget(cmdStop);
    auto *files = new QHBoxLayout;
    files->addWidget(cmdClrcell);
    files->addWidget(cmdClrgrid);
    files->addWidget(cmdClrnotes);
    files->addStretch(1);
    files->addWidget(cmdLoad);
    files->addWidget(cmdSave);
    files->addWidget(frame_->cmdPanel);
    files->addWidget(cmdExit);

    auto *col = new QVBoxLayout(this);
    col->addLayout(grid);
    col->addSpacing(6);
    col->addLayout(tuning);
    col->addLayout(files);
    col->setSizeConstraint(QLayout::SetFixedSize);

    connect(grdScratchpad, &TextGrid::cellClicked, this,
            guarded<int, int, const QString &>(guard_, [this](int row, int col, const QString &) {
                grdScratchpad_Click(row, col);
            }));
    const std::pair<QPushButton *, void (frmScratchpad::*)()> handlers[] = {
        {cmdRx2sp, &frmScratchpad::cmdRx2sp_Click},       {cmdSp2rx, &frmScratchpad::cmdSp2rx_Click},
        {cmdClrcell, &frmScratchpad::cmdClrcell_Click},   {cmdClrgrid, &frmScratchpad::cmdClrgrid_Click},
        {cmdClrnotes, &frmScratchpad::cmdClrnotes_Click}, {cmdLoad, &frmScratchpad::cmdLoad_Click},
        {cmdSave, &frmScratchpad::cmdSave_Click},         {cmdScan, &frmScratchpad::cmdScan_Click},
        {cmdStop, &frmScratchpad::cmdStop_Click},         {cmdExit, &frmScratchpad::cmdExit_Click}};
    for (const auto &[b, h] : handlers)
        connect(b, &QPushButton::clicked, this, guarded(guard_, [this, h = h] { (this->*h)(); }));
    connect(&tmrScan, &QTimer::timeout, this, guarded(guard_, [this] { tmrScan_Timer(); }));
    nameForAccessibility(this);
}

frmScratchpad::~frmScratchpad()
{
    tmrScan.stop();
    frmWelcome::forgetOpenWindow(Win::frmScratchpad, this);
}

frmScratchpad *frmScratchpad::open()
{
    return raiseOrLoad(thePad, [](const frmScratchpad &) { return isOpen(Win::frmScratchpad); });
}

void frmScratchpad::Form_Load()
{
    QPointer<frmScratchpad> self(this);
    registerReader(kFspKind, [self] {
        if (self)
            self->LoadFspFile();
    });
    registerWriter(kFspKind, [self] {
        if (self)
            self->SaveFspFile();
    });
    grdScratchpad->setCurrentIndex(grdScratchpad->model()->index(0, 0));
    frame_->load();
    show();
}

// --- contents and the file ---

smalllists::Scratchpad frmScratchpad::contents() const
{
    smalllists::Scratchpad pad;
    for (int r = 0; r < smalllists::kPadRows; ++r) {
        pad.notes[size_t(r)] = txtNotes[size_t(r)]->text();
        for (int c = 0; c < smalllists::kPadColumns; ++c)
            pad.cells[size_t(r)][size_t(c)] = grdScratchpad->text(r, c);
    }
    return pad;
}

void frmScratchpad::showContents(const smalllists::Scratchpad &pad)
{
    for (int r = 0; r < smalllists::kPadRows; ++r) {
        txtNotes[size_t(r)]->setText(pad.notes[size_t(r)]);
        const auto &row = pad.cells[size_t(r)];
        grdScratchpad->rows()->replace(r, QStringList(row.begin(), row.end()));
    }
}

void frmScratchpad::cleargridscratchpad()
{
    for (int r = 0; r < smalllists::kPadRows; ++r)
        grdScratchpad->rows()->replace(r, {});
}

void frmScratchpad::LoadFspFile()
{
    setCursor(Qt::WaitCursor);
    const QByteArray bytes = textfile::readAll(chosenFilePath());
    smalllists::Scratchpad pad = contents();
    smalllists::readFsp(bytes, pad);
    showContents(pad);
    unsetCursor();
}

void frmScratchpad::SaveFspFile()
{
    setCursor(Qt::WaitCursor);
    textfile::writeAtomically(chosenFilePath(), smalllists::fspBytes(contents()));
    unsetCursor();
}

// --- cells and the receiver ---

int frmScratchpad::activeRow() const { return std::max(0, grdScratchpad->currentIndex().row()); }
int frmScratchpad::activeColumn() const { return std::max(0, grdScratchpad->currentIndex().column()); }

void frmScratchpad::cmdRx2sp_Click()
{
    if (rxType < rxAR7030 || rxType > rxNRD545)
        return;
    grdScratchpad->rows()->setText(activeRow(), activeColumn(), smallwin::panelFrequencyText());
}

void frmScratchpad::cmdSp2rx_Click()
{
    // An empty cell would tune to 0 and only bring the range message.
    const QString text = grdScratchpad->text(activeRow(), activeColumn());
    if (text.isEmpty())
        return;
    double f = numtext::Val(text);
    if (frmWelcome *w = frmWelcome::instance())
        w->Change2FreqA(f);
}

void frmScratchpad::grdScratchpad_Click(int row, int col)
{
    grdScratchpad->setCurrentIndex(grdScratchpad->model()->index(row, col));
    cmdSp2rx_Click();
}

void frmScratchpad::cmdClrcell_Click()
{
    if (ui::MsgBox(QStringLiteral("You are sure you want to clear\nthe active scratchpad gridcell"),
                   ui::vbYesNo + ui::vbQuestion, QStringLiteral("Clear grid cell check"))
        == ui::vbYes)
        grdScratchpad->rows()->setText(activeRow(), activeColumn(), QString());
}

void frmScratchpad::cmdClrgrid_Click()
{
    if (ui::MsgBox(QStringLiteral("You are sure you want to clear\nthe whole scratchpad grid"),
                   ui::vbYesNo + ui::vbQuestion, QStringLiteral("Clear grid check"))
        == ui::vbYes)
        cleargridscratchpad();
}

void frmScratchpad::cmdClrnotes_Click()
{
    if (ui::MsgBox(QStringLiteral("You are sure you want\nto clear the Notes textboxes"), ui::vbYesNo + ui::vbQuestion,
                   QStringLiteral("Clear Notes check"))
        == ui::vbYes)
        for (QLineEdit *t : txtNotes)
            t->clear();
}

void frmScratchpad::cmdLoad_Click()
{
    QPointer<frmScratchpad> self(this);
    fileType = kFspKind;
    frmLoadfile::showModal(this);
    if (self)
        unsetCursor();
}

void frmScratchpad::cmdSave_Click()
{
    QPointer<frmScratchpad> self(this);
    fileType = kFspKind;
    frmSavefile::showModal(this);
    // A save that failed never reached its end: the pointer comes back all the same.
    if (self)
        unsetCursor();
}

// --- the row scan ---

void frmScratchpad::setButtons(bool enabled)
{
    for (QPushButton *b : {cmdRx2sp, cmdSp2rx, cmdClrcell, cmdClrgrid, cmdClrnotes, cmdLoad, cmdSave, cmdScan, cmdExit,
                           frame_->cmdPanel})
        b->setEnabled(enabled);
}

void frmScratchpad::cmdScan_Click()
{
    QStringList texts;
    const int row = activeRow();
    for (int c = 0; c < smalllists::kPadColumns; ++c)
        texts << grdScratchpad->text(row, c);
    std::vector<double> table = smalllists::scanTable(texts, freqLowerLimit, freqUpperLimit);
    if (table.size() < 2) {
        ui::MsgBox(kNotEnough, ui::vbExclamation, QStringLiteral("Error"));
        return;
    }
    const double delay = numtext::Val(txtScandelay->text());
    if (delay < 1 || delay > 60) {
        ui::MsgBox(QStringLiteral("Scan delay outside range.\nSelect value between 1 and 60 sec."), ui::vbCritical,
                   QStringLiteral("Error"));
        return;
    }
    scanTable_ = std::move(table);
    scanIndex_ = -1;
    tmrScan.setInterval(numtext::clng(delay * 1000));
    setButtons(false);
    tmrScan.start();
}

void frmScratchpad::tmrScan_Timer()
{
    if (!scanning() || scanTable_.empty() || guard_.stopRequested())
        return;
    scanIndex_ = (scanIndex_ + 1) % int(scanTable_.size());
    double f = scanTable_[size_t(scanIndex_)];
    if (frmWelcome *w = frmWelcome::instance())
        w->Change2FreqA(f);
}

void frmScratchpad::cmdStop_Click()
{
    tmrScan.stop();
    setButtons(true);
}

// --- leaving ---

void frmScratchpad::cmdExit_Click()
{
    const int answer = ui::MsgBox(QStringLiteral("Do you want to save data\nfrom the Frequency Scratchpad"),
                                  ui::vbYesNoCancel + ui::vbQuestion, QStringLiteral("Exit"));
    if (answer == ui::vbYes) {
        cmdSave_Click();
    } else if (answer == ui::vbNo) {
        leaving_ = true;
        close();
    }
}

void frmScratchpad::closeEvent(QCloseEvent *e)
{
    // The close box asks as "Exit" does, also when it had to wait for a job.
    if (guard_.holdCloseOrAsk(e, leaving_, [this] { cmdExit_Click(); }))
        return;
    tmrScan.stop();
    registerReader(kFspKind, {});
    registerWriter(kFspKind, {});
    frame_->unload();
    e->accept();
}
