#include "frmLog.h"
#include "ui/widgets/raise_or_load.h"
#include "core/frmWelcome.h"
#include "core/numtext.h"
#include "core/runtime_error.h"
#include "core/shared_state.h"
#include "core/textfile.h"
#include "data/file_store.h"
#include "data/frmLoadfile.h"
#include "data/frmSavefile.h"
#include "log/frmLogFormat.h"
#include "log/frmLoginput.h"
#include "log/frmLogsort.h"
#include "ui/facades.h"
#include "ui/widgets/form_position.h"
#include "ui/widgets/list_frame.h"

#include <QCloseEvent>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>

using namespace logbook;

namespace {
QPointer<frmLog> theLog;

constexpr int kLogKind = 4;
constexpr int kColumns = kFields + 1;
constexpr int kShortGridTwips = 2895, kTallGridTwips = 5790;
constexpr int kNarrowGridTwips = 9015, kWideGridTwips = 13710;
// Pixels of a cell's width that its text cannot use.
constexpr int kCellMargins = 4;

const QString kTitle = QStringLiteral("Logging");

// Records 0..logCount exist as rows of logRecords, whatever the last load left.
void ensureRows()
{
    if (logCount >= 0 && logRecords.size() <= size_t(logCount))
        logRecords.resize(size_t(logCount) + 1);
}
} // namespace

frmLog::frmLog(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("frmLog"));
    setWindowTitle(kTitle);
    setAttribute(Qt::WA_DeleteOnClose);
    build();
}

frmLog::~frmLog()
{
    // Gone without its unload (the program ending): nothing may point at it.
    if (registered_) {
        registerReader(kLogKind, {});
        registerWriter(kLogKind, {});
    }
    frmWelcome::forgetOpenWindow(Win::frmLog, this);
}

frmLog *frmLog::open()
{
    return raiseOrLoad(theLog, [](const frmLog &) { return isOpen(Win::frmLog); });
}

frmLog *frmLog::current() { return theLog; }

void frmLog::build()
{
    QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    const QFontMetrics fm(fixed);
    // The columns' widths allow 120 twips (8 pixels) a character, margins included: the grids'
    // font is made small enough for a field to fit its column.
    QFont cells = fixed;
    for (int px = 12; px > 8; --px) {
        cells.setPixelSize(px);
        if (QFontMetrics(cells).horizontalAdvance(QStringLiteral("00000000")) <= 8 * 8 - kCellMargins)
            break;
    }
    const int rowHeight = QFontMetrics(cells).height() + 2;

    // Every field's column exists; BuildLogColumns shows those of the mask.
    grdTitles = new TextGrid(TextGrid::Titles, {360, 960, 480, 480, 1080, 600, 360, 2400, 2400, 600, 600, 600, 600, 4800,
                                                480, 480},
                             cells, rowHeight + 2, this);
    grdTitles->setObjectName(QStringLiteral("grdTitles"));
    grdLog = new TextGrid(TextGrid::List, {360, 960, 480, 480, 1080, 600, 360, 2400, 2400, 600, 600, 600, 600, 4800,
                                           480, 480},
                          cells, rowHeight, this);
    grdLog->setObjectName(QStringLiteral("grdLog"));
    grdLog->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    for (TextGrid *g : {grdTitles, grdLog}) {
        g->setFixedWidth(twipsToPixels(kNarrowGridTwips));
        // The narrowest columns (360 twips) are narrower than the style's least section.
        g->horizontalHeader()->setMinimumSectionSize(1);
        g->setTextElideMode(Qt::ElideNone);
        g->setStyleSheet(QStringLiteral("QTableView::item { padding: 0px 1px; }"));
    }
    grdLog->setFixedHeight(twipsToPixels(kShortGridTwips));
    // The titles follow the log's columns sideways.
    connect(grdLog->horizontalScrollBar(), &QScrollBar::valueChanged, grdTitles->horizontalScrollBar(),
            &QScrollBar::setValue);

    frame_ = new ListFrame(this, Win::frmLog);
    txtFrequencyA = frame_->txtFrequencyA;
    txtFrequencyA->setFont(fixed);
    txtFrequencyA->setFixedWidth(fm.horizontalAdvance(QStringLiteral("000000.000")) + 12);
    txtFrequencyA->setToolTip(tr("Enter tunes the receiver; a double click empties the box"));
    cmdHeigh = frame_->cmdHeigh;
    cmdHeigh->setToolTip(tr("A taller or shorter grid"));
    cmdPanel = frame_->cmdPanel;
    cmdPanel->setToolTip(tr("Receiver panel"));

    lblDbname = new QLabel(this);
    lblDbname->setObjectName(QStringLiteral("lblDbname"));
    lblDbname->setFrameShape(QFrame::StyledPanel);
    lblDbname->setFrameShadow(QFrame::Sunken);
    lblDbname->setMinimumWidth(fm.horizontalAdvance(QStringLiteral("LOG_xxxxxxxxxxxxxxxxxxxx.TXT")));

    auto button = [this](const char *name, const QString &caption) {
        auto *b = new QPushButton(caption, this);
        b->setObjectName(QLatin1String(name));
        b->setAutoDefault(false);
        return b;
    };
    cmdLoad = button("cmdLoad", QStringLiteral("Load Log File"));
    cmdAddrecord = button("cmdAddrecord", QStringLiteral("Add Record"));
    cmdChangerecord = button("cmdChangerecord", QStringLiteral("Change Record"));
    cmdDeleterecord = button("cmdDeleterecord", QStringLiteral("Delete Record"));
    cmdFormat = button("cmdFormat", QStringLiteral("Format"));
    cmdSort = button("cmdSort", QStringLiteral("Sort"));
    cmdSave = button("cmdSave", QStringLiteral("Save"));
    cmdsaveas = button("cmdsaveas", QStringLiteral("Save As"));
    cmdClose = button("cmdClose", QStringLiteral("Close"));
    cmdWidth = button("cmdWidth", QStringLiteral("W"));
    cmdWidth->setToolTip(tr("A wider or narrower grid"));
    cmdExit = button("cmdExit", QStringLiteral("Exit"));
    cmdHeigh->setAutoDefault(false);
    cmdPanel->setAutoDefault(false);
    for (QPushButton *b : {cmdHeigh, cmdWidth})
        b->setFixedWidth(fm.horizontalAdvance(QStringLiteral("WW")) + 16);

    auto *top = new QHBoxLayout;
    auto *lblFile = new QLabel(tr("Log file:"), this);
    top->addWidget(lblFile);
    top->addWidget(lblDbname, 1);
    top->addSpacing(12);
    top->addWidget(new QLabel(tr("kHz"), this));
    top->addWidget(txtFrequencyA);

    auto *records = new QHBoxLayout;
    for (QPushButton *b : {cmdAddrecord, cmdChangerecord, cmdDeleterecord, cmdFormat, cmdSort})
        records->addWidget(b);
    records->addStretch(1);
    auto *files = new QHBoxLayout;
    for (QPushButton *b : {cmdLoad, cmdSave, cmdsaveas, cmdClose})
        files->addWidget(b);
    files->addStretch(1);
    for (QPushButton *b : {cmdHeigh, cmdWidth, cmdPanel, cmdExit})
        files->addWidget(b);

    auto *col = new QVBoxLayout(this);
    col->addLayout(top);
    col->addSpacing(4);
    auto *grids = new QVBoxLayout;
    grids->setSpacing(0);
    grids->addWidget(grdTitles);
    grids->addWidget(grdLog);
    col->addLayout(grids);
    col->addLayout(records);
    col->addLayout(files);
    col->setSizeConstraint(QLayout::SetFixedSize);

    connect(grdLog, &TextGrid::cellClicked, this,
            guarded<int, int, const QString &>(guard_, [this](int row, int col, const QString &text) {
                grdLog_Click(row, col, text);
            }));
    const std::pair<QPushButton *, void (frmLog::*)()> handlers[] = {
        {cmdLoad, &frmLog::cmdLoad_Click},
        {cmdAddrecord, &frmLog::cmdAddrecord_Click},
        {cmdChangerecord, &frmLog::cmdChangerecord_Click},
        {cmdDeleterecord, &frmLog::cmdDeleterecord_Click},
        {cmdFormat, &frmLog::cmdFormat_Click},
        {cmdSort, &frmLog::cmdSort_Click},
        {cmdSave, &frmLog::cmdSave_Click},
        {cmdsaveas, &frmLog::cmdsaveas_Click},
        {cmdClose, &frmLog::cmdClose_Click},
        {cmdExit, &frmLog::cmdExit_Click},
        {cmdHeigh, &frmLog::cmdHeigh_Click},
        {cmdWidth, &frmLog::cmdWidth_Click}};
    for (const auto &[b, h] : handlers)
        connect(b, &QPushButton::clicked, this, guarded(guard_, [this, h = h] { (this->*h)(); }));
    nameForAccessibility(this);
}

void frmLog::Form_Load()
{
    loadMask(dirPath);
    frame_->load();
    BuildLogColumns();
    grdLog->rows()->clear();
    hideFixedRow();
    SetLogButtons(false);
    // The log's files are this window's while it is open.
    registerReader(kLogKind, [this] { logReader(); });
    registerWriter(kLogKind, [this] { logWriter(); });
    registered_ = true;
    show();
}

void frmLog::Form_Unload()
{
    if (input_)
        input_->close();
    for (Win w : {Win::frmLogFormat, Win::frmLogsort})
        if (QWidget *child = frmWelcome::openWindow(w); child && isAncestorOf(child))
            child->close();
    registerReader(kLogKind, {});
    registerWriter(kLogKind, {});
    registered_ = false;
    frame_->unload();
    if (theLog == this)
        theLog = nullptr;
}

void frmLog::closeEvent(QCloseEvent *e)
{
    // The close box asks as "Exit" does.
    if (guard_.holdCloseOrAsk(e, leaving_, [this] { cmdExit_Click(); }))
        return;
    Form_Unload();
    e->accept();
}

// --- the grid ---

void frmLog::hideFixedRow()
{
    // Row 0 stands for the grid's fixed row: records are rows 1 and on.
    grdLog->setRowHidden(0, true);
}

int frmLog::selectedRow() const
{
    const QModelIndex i = grdLog->currentIndex();
    return i.isValid() ? i.row() - 1 : -1;
}

int frmLog::columnTwips(int col) const
{
    return col >= 0 && size_t(col) < columns_.twips.size() ? columns_.twips[size_t(col)] : 0;
}

void frmLog::FillLogGrid()
{
    setCursor(Qt::WaitCursor);
    // The old rows go first: the new ones then take the memory they leave.
    grdLog->rows()->clear();
    ensureRows();
    // Row 0 is the fixed row; the records follow it, each made when it comes into view.
    grdLog->rows()->assignSource(int(logCount) + 2, [](int r) {
        return r == 0 || size_t(r - 1) >= logRecords.size() ? QStringList() : gridRow(logRecords[size_t(r - 1)], r - 1, logMask);
    });
    hideFixedRow();
    unsetCursor();
}

void frmLog::BuildLogColumns()
{
    columns_ = buildColumns(logMask);
    const int shown = int(columns_.twips.size());
    for (TextGrid *g : {grdTitles, grdLog})
        for (int c = 0; c < kColumns; ++c) {
            g->setColumnHidden(c, c >= shown);
            if (c < shown)
                g->setColumnWidth(c, twipsToPixels(columns_.twips[size_t(c)]));
        }
    grdTitles->rows()->replace(0, columns_.titles);
}

void frmLog::SetLogButtons(bool enabled)
{
    for (QPushButton *b : {cmdChangerecord, cmdDeleterecord, cmdSort, cmdSave, cmdClose})
        b->setEnabled(enabled);
}

void frmLog::grdLog_Click(int row, int col, const QString &text)
{
    // The column's width tells what it holds, as the columns table gives it.
    if (!tunesByWidth(columnTwips(col)))
        return;
    double f = numtext::Val(text);
    if (frmWelcome *w = frmWelcome::instance()) {
        w->Change2FreqA(f);
        if (row >= 1 && row - 1 <= logCount && size_t(row - 1) < logRecords.size()) {
            QString letter = logRecords[size_t(row - 1)][kRxSettingField].left(1);
            w->SetRx2mfa(letter);
        }
    }
}

// --- records ---

void frmLog::openInput(bool add, int row)
{
    addFlag_ = add;
    input_ = new frmLoginput(this, add, row);
    input_->Form_Load();
}

void frmLog::cmdAddrecord_Click()
{
    if (isOpen(Win::frmLoginput))
        return;
    if (logCount >= lastRowAllowed()) {
        ui::MsgBox(QStringLiteral("The log is full: it holds %1 records.\nA larger \"Dim LOG\" in the set-up makes room "
                                  "for more.")
                       .arg(qint64(lastRowAllowed()) + 1),
                   ui::vbExclamation, kTitle);
        return;
    }
    ++logCount;
    ensureRows();
    openInput(true, logCount);
}

void frmLog::cmdChangerecord_Click()
{
    if (isOpen(Win::frmLoginput))
        return;
    addFlag_ = false;
    const int row = selectedRow();
    if (row < 0 || row > logCount) {
        ui::MsgBox(QStringLiteral("No record selected"), ui::vbExclamation, kTitle);
        return;
    }
    openInput(false, row);
}

void frmLog::cmdDeleterecord_Click()
{
    const int row = selectedRow();
    if (row < 0 || row > logCount) {
        ui::MsgBox(QStringLiteral("No record selected"), ui::vbExclamation, kTitle);
        return;
    }
    ensureRows();
    const QString question = QStringLiteral("You are sure you want to delete\nrecord ") + recordNumber(row)
                             + QStringLiteral(" about frequency ") + logRecords[size_t(row)][kFrequencyField]
                             + QStringLiteral("?");
    if (ui::MsgBox(question, ui::vbOKCancel + ui::vbQuestion, QStringLiteral("Check on Delete")) != ui::vbOK)
        return;
    setCursor(Qt::WaitCursor);
    std::move(logRecords.begin() + row + 1, logRecords.begin() + logCount + 1, logRecords.begin() + row);
    logRecords[size_t(logCount)] = Record{};
    --logCount;
    FillLogGrid();
    unsetCursor();
}

void frmLog::cmdFormat_Click()
{
    auto *f = new frmLogFormat(this);
    f->Form_Load();
}

void frmLog::cmdSort_Click()
{
    auto *f = new frmLogsort(this);
    f->Form_Load();
}

// --- files ---

void frmLog::logReader()
{
    setCursor(Qt::WaitCursor);
    // The shown rows hold the old log's texts: they go before the new log is read.
    grdLog->rows()->clear();
    hideFixedRow();
    loadLogFile(chosenFilePath());
    lblDbname->setText(chosenFileTable[kLogKind]);
    FillLogGrid();
    SetLogButtons(true);
    unsetCursor();
}

void frmLog::logWriter()
{
    setCursor(Qt::WaitCursor);
    saveLogFile(chosenFilePath());
    unsetCursor();
}

void frmLog::cmdLoad_Click()
{
    QPointer<frmLog> self(this);
    fileType = kLogKind;
    frmLoadfile::showModal(this);
    if (self)
        unsetCursor();
}

void frmLog::cmdsaveas_Click()
{
    QPointer<frmLog> self(this);
    fileType = kLogKind;
    frmSavefile::showModal(this);
    // A save that failed never reached its end: the pointer comes back all the same.
    if (self)
        unsetCursor();
}

void frmLog::cmdSave_Click()
{
    fileType = kLogKind;
    const QString name = chosenFileTable[kLogKind];
    // Asked whether or not the file is there.
    const int answer = ui::MsgBox(QStringLiteral("File ") + name + QStringLiteral(" already exist.\nDo you want to replace it ?"),
                                  ui::vbYesNoCancel + ui::vbQuestion, QStringLiteral("Save file"));
    if (answer != ui::vbYes)
        return;
    // Without a name the save would go to the directory itself: nothing is written.
    if (name.isEmpty()) {
        ui::MsgBox(QStringLiteral("This log has no file name yet.\nUse \"Save As\" to give it one."), ui::vbExclamation,
                   QStringLiteral("Save File"));
        return;
    }
    bool mayWrite = false;
    CheckExistingFile(mayWrite, false);
    try {
        runWriter();
    } catch (const RuntimeError &e) {
        // The old file stands as it was; the log is still here to be saved again.
        unsetCursor();
        if (!textfile::isWriteFailure(e))
            throw;
        ui::MsgBox(QStringLiteral("Something went wrong while\nsaving your data to a file ! ! !\nPLEASE TRY AGAIN\n\n%1 "
                                  "(run-time error %2)")
                       .arg(e.text())
                       .arg(e.number()),
                   ui::vbExclamation, QStringLiteral("Save File"));
        return;
    }
    ui::MsgBox(QStringLiteral("The data is now saved\nto the file ") + name, ui::vbExclamation, QStringLiteral("Save File"));
}

void frmLog::cmdClose_Click()
{
    cmdSave_Click();
    // The grid empties; the log stays for this run.
    grdLog->rows()->clear();
    hideFixedRow();
    SetLogButtons(false);
}

void frmLog::cmdExit_Click()
{
    const int answer = ui::MsgBox(QStringLiteral("Do you want to save data\nfrom the Logging window"),
                                  ui::vbYesNoCancel + ui::vbQuestion, QStringLiteral("Exit"));
    if (answer == ui::vbYes) {
        cmdsaveas_Click();
    } else if (answer == ui::vbNo) {
        leaving_ = true;
        close();
    }
}

// --- sizes ---

void frmLog::cmdHeigh_Click()
{
    const bool tall = frame_->toggleHeight();
    grdLog->setFixedHeight(twipsToPixels(tall ? kTallGridTwips : kShortGridTwips));
}

void frmLog::cmdWidth_Click()
{
    wide_ = !wide_;
    cmdWidth->setText(wide_ ? QStringLiteral("N") : QStringLiteral("W"));
    for (TextGrid *g : {grdTitles, grdLog})
        g->setFixedWidth(twipsToPixels(wide_ ? kWideGridTwips : kNarrowGridTwips));
}
