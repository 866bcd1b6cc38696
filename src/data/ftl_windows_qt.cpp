#include "ftl_windows_qt.h"
#include "core/frmWelcome.h"
#include "core/numtext.h"
#include "core/textfile.h"
#include "data/file_store.h"
#include "data/frmLoadfile.h"
#include "ui/facades.h"
#include "ui/widgets/form_position.h"
#include "ui/widgets/images.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QFontDatabase>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>

namespace {
// The list's heights, short and tall; the window grows by as much as the list.
constexpr int kShortListTwips = 3600;
constexpr int kTallListTwips = 7200;
constexpr int kListFontPixels = 11;

QPushButton *button(QWidget *parent, const char *name, const QString &caption, const QString &tip = {})
{
    auto *b = new QPushButton(caption, parent);
    b->setObjectName(QLatin1String(name));
    b->setAutoDefault(false);
    if (!tip.isEmpty())
        b->setToolTip(tip);
    return b;
}

QString indexed(const char *name, int i) { return QLatin1String(name) + u'_' + QString::number(i); }

// "hhmm" of the present UTC text ("d mmm yyyy  hh:mm").
QString presentUtc() { return utcText.right(5).remove(u':'); }
} // namespace

// ---------------------------------------------------------------- query windows

FtlQueryWindow::FtlQueryWindow(FtlListWindow *list, Win win, const char *name, const QString &title, bool aero,
                               const std::vector<Frame> &frames, const QString &searchCaption)
    : QWidget(list, Qt::Window), list_(list), win_(win), aero_(aero)
{
    setObjectName(QLatin1String(name));
    setWindowTitle(title);
    auto *grid = new QGridLayout;
    int box = 0;
    for (size_t f = 0; f < frames.size(); ++f) {
        auto *fra = new QGroupBox(QLatin1String(frames[f].caption), this);
        fra->setObjectName(indexed("fraQuery", int(f)));
        auto *row = new QHBoxLayout(fra);
        auto *chk = new QCheckBox(tr("Select"), fra);
        chk->setObjectName(indexed("chkQuery", int(f)));
        chkQuery.push_back(chk);
        row->addWidget(chk);
        if (frames[f].hasBox) {
            auto *cmb = new QComboBox(fra);
            cmb->setObjectName(indexed("cmbQuery", box));
            cmb->setEditable(true);
            cmb->setInsertPolicy(QComboBox::NoInsert);
            cmb->setMinimumWidth(180);
            cmbQuery.push_back(cmb);
            row->addWidget(cmb, 1);
            boxOfCheck_.push_back(box++);
        } else {
            boxOfCheck_.push_back(-1);
            row->addStretch(1);
        }
        grid->addWidget(fra, int(f) / 2, int(f) % 2);
    }
    auto *fra = new QGroupBox(QStringLiteral("Frequency (MHz)"), this);
    fra->setObjectName(indexed("fraQuery", int(frames.size())));
    auto *row = new QHBoxLayout(fra);
    for (int b = 0; b < 2; ++b) {
        auto *cmb = new QComboBox(fra);
        cmb->setObjectName(indexed("cmbQuery", box++));
        cmb->setEditable(true);
        cmb->setInsertPolicy(QComboBox::NoInsert);
        cmb->setToolTip(b == 0 ? tr("Lower frequency in MHz (not included)") : tr("Upper frequency in MHz"));
        cmbQuery.push_back(cmb);
        row->addWidget(new QLabel(b == 0 ? tr("above") : tr("up to"), fra));
        row->addWidget(cmb, 1);
    }
    grid->addWidget(fra, int(frames.size()) / 2, int(frames.size()) % 2);

    cmdSearchilg = button(this, "cmdSearchilg", searchCaption);
    cmdClear = button(this, "cmdClear", QStringLiteral("Clear"), tr("Empty the boxes and clear the check boxes"));
    cmdCancel = button(this, "cmdCancel", QStringLiteral("Cancel"));
    lblProgress = new QLabel(this);
    lblProgress->setObjectName(QStringLiteral("lblProgress"));
    lblProgress->setMinimumWidth(QFontMetrics(font()).horizontalAdvance(QStringLiteral("100 %")) + 8);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(cmdSearchilg);
    buttons->addWidget(lblProgress);
    buttons->addStretch(1);
    buttons->addWidget(cmdClear);
    buttons->addWidget(cmdCancel);
    auto *col = new QVBoxLayout(this);
    col->addLayout(grid);
    col->addLayout(buttons);
    col->setSizeConstraint(QLayout::SetFixedSize);

    connect(cmdSearchilg, &QPushButton::clicked, this, guarded(guard_, [this] { cmdSearchilg_Click(); }));
    connect(cmdClear, &QPushButton::clicked, this, guarded(guard_, [this] { cmdClear_Click(); }));
    connect(cmdCancel, &QPushButton::clicked, this, guarded(guard_, [this] { cmdCancel_Click(); }));
    nameForAccessibility(this);
}

FtlQueryWindow::~FtlQueryWindow()
{
    if (isOpen(win_))
        isOpen(win_) = false;
}

void FtlQueryWindow::Form_Load(const std::vector<QStringList> &choices)
{
    placeAtLoad(this, win_);
    for (size_t b = 0; b < cmbQuery.size() && b < choices.size(); ++b) {
        cmbQuery[b]->clear();
        cmbQuery[b]->addItems(choices[b]);
        cmbQuery[b]->setCurrentIndex(-1);
        cmbQuery[b]->clearEditText();
    }
    isOpen(win_) = true;
}

void FtlQueryWindow::Form_Unload()
{
    if (!isOpen(win_))
        return;
    storeAtUnload(this, win_);
    isOpen(win_) = false;
}

ftlquery::Criteria FtlQueryWindow::criteria() const
{
    ftlquery::Criteria c;
    c.aero = aero_;
    for (size_t i = 0; i < chkQuery.size(); ++i)
        c.checked[i] = chkQuery[i]->isChecked();
    for (size_t b = 0; b < cmbQuery.size(); ++b)
        c.text[b] = cmbQuery[b]->currentText();
    c.utc = presentUtc();
    return c;
}

void FtlQueryWindow::cmdSearchilg_Click()
{
    ftlquery::Criteria c = criteria();
    setCursor(Qt::WaitCursor);
    ftlquery::search(c, [this](int percent) {
        lblProgress->setText(QString::number(percent) + QStringLiteral(" %"));
        lblProgress->repaint();
    });
    const size_t lower = cmbQuery.size() - 2;
    cmbQuery[lower]->setEditText(c.text[lower]);
    cmbQuery[lower + 1]->setEditText(c.text[lower + 1]);
    list_->showList(aero_);
    unsetCursor();
    hide();
}

void FtlQueryWindow::cmdClear_Click()
{
    for (QComboBox *b : cmbQuery) {
        b->setCurrentIndex(-1);
        b->clearEditText();
    }
    for (QCheckBox *c : chkQuery)
        c->setChecked(false);
}

void FtlQueryWindow::cmdCancel_Click() { hide(); }

void FtlQueryWindow::closeEvent(QCloseEvent *e)
{
    // The close box hides it: the window stays loaded with its choices while the list is open.
    e->ignore();
    hide();
}

frmIlgquery::frmIlgquery(FtlListWindow *list)
    : FtlQueryWindow(list, Win::frmIlgquery, "frmIlgquery", QStringLiteral("Query ILG db"), false,
                     {{"Language", true},
                      {"Station", true},
                      {"Tx Country", true},
                      {"Station currently on the air", false},
                      {"Target Area", true}},
                     QStringLiteral("Search ILG db"))
{
}

frmAeroquery::frmAeroquery(FtlListWindow *list)
    : FtlQueryWindow(list, Win::frmAeroquery, "frmAeroquery", QStringLiteral("Query Aero db"), true,
                     {{"Network", true}}, QStringLiteral("Search Aero db"))
{
}

// ---------------------------------------------------------------- list windows

FtlListWindow::FtlListWindow(const Look &look) : look_(look)
{
    setObjectName(QLatin1String(look.name));
    setWindowTitle(look.title);
    setAttribute(Qt::WA_DeleteOnClose);
    tmrScan.setObjectName(QStringLiteral("tmrScan"));

    QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    fixed.setPixelSize(kListFontPixels);
    const QFontMetrics fm(fixed);
    // Wide enough for a whole record and a little air.
    const int columnTwips = (fm.horizontalAdvance(QString(ftlquery::kRecordWidth, u'0')) + 8) * kTwipsPerPixel;
    list = new TextGrid(TextGrid::List, {columnTwips}, fixed, fm.height() + 2, this);
    list->setObjectName(QLatin1String(look.listName));
    list->setFixedHeight(twipsToPixels(kShortListTwips));
    list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list->setTextElideMode(Qt::ElideNone);
    list->setFixedWidth(list->columnsWidth() + list->verticalScrollBar()->sizeHint().width() + 2 * list->frameWidth());

    frame_ = new ListFrame(this, look.win, QString());
    txtFrequencyA = frame_->txtFrequencyA;
    cmdHeigh = frame_->cmdHeigh;
    cmdPanel = frame_->cmdPanel;
    txtFrequencyA->setFixedWidth(QFontMetrics(font()).horizontalAdvance(QStringLiteral("00000.000")) + 16);
    txtFrequencyA->setToolTip(tr("Frequency in kHz: Enter tunes, a double click empties"));
    cmdHeigh->setToolTip(tr("A taller or shorter list"));
    cmdHeigh->setAutoDefault(false);
    cmdHeigh->setFixedWidth(QFontMetrics(font()).horizontalAdvance(QStringLiteral("S")) + 24);
    cmdPanel->setIcon(QIcon(images::receiver()));
    cmdPanel->setIconSize(QSize(32, 24));
    cmdPanel->setToolTip(tr("Receiver panel"));
    cmdPanel->setAccessibleName(tr("Receiver panel"));
    cmdPanel->setAutoDefault(false);

    lblDbtype = new QLabel(this);
    lblDbtype->setObjectName(QStringLiteral("lblDbtype"));
    lblDbname = new QLabel(this);
    lblDbname->setObjectName(QStringLiteral("lblDbname"));
    lblDbname->setFrameShape(QFrame::StyledPanel);
    lblDbname->setFrameShadow(QFrame::Sunken);
    lblDbname->setMinimumWidth(QFontMetrics(font()).horizontalAdvance(QStringLiteral("ILGSDATA.FTL")) + 24);

    cmdLoad = button(this, "cmdLoad", look.loadCaption);
    cmdQuery = button(this, "cmdQuery", look.queryCaption, tr("Narrow the list by the query's criteria"));
    if (look.sorts)
        cmdSort = button(this, "cmdSort", QStringLiteral("Sort"), tr("Order the list"));
    cmdScan = button(this, "cmdScan", QStringLiteral("Start Scan"), tr("Tune to each row in turn"));
    txtScandelay = new QLineEdit(QStringLiteral("2"), this);
    txtScandelay->setObjectName(QStringLiteral("txtScandelay"));
    txtScandelay->setToolTip(tr("Seconds on each frequency, 1 to %1").arg(look.maxDelay));
    txtScandelay->setFixedWidth(QFontMetrics(font()).horizontalAdvance(QStringLiteral("000")) + 16);
    cmdExit = button(this, "cmdExit", QStringLiteral("Exit"));
    for (QWidget *w : {static_cast<QWidget *>(cmdQuery), static_cast<QWidget *>(cmdSort),
                       static_cast<QWidget *>(cmdScan), static_cast<QWidget *>(txtScandelay)})
        if (w)
            w->setEnabled(false);

    auto *top = new QHBoxLayout;
    top->addWidget(lblDbtype);
    top->addWidget(lblDbname);
    top->addStretch(1);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(cmdLoad);
    buttons->addWidget(cmdQuery);
    if (cmdSort)
        buttons->addWidget(cmdSort);
    buttons->addWidget(cmdScan);
    auto *delayLabel = new QLabel(tr("Delay (s)"), this);
    delayLabel->setBuddy(txtScandelay);
    buttons->addWidget(delayLabel);
    buttons->addWidget(txtScandelay);
    buttons->addStretch(1);
    buttons->addWidget(txtFrequencyA);
    buttons->addWidget(cmdPanel);
    buttons->addWidget(cmdHeigh);
    buttons->addWidget(cmdExit);
    auto *col = new QVBoxLayout(this);
    col->setSpacing(4);
    col->addLayout(top);
    col->addWidget(list);
    col->addLayout(buttons);
    col->setSizeConstraint(QLayout::SetFixedSize);

    connect(list, &TextGrid::cellClicked, this,
            guarded<int, int, const QString &>(guard_, [this](int r, int, const QString &) { list_Click(r); }));
    connect(cmdLoad, &QPushButton::clicked, this, guarded(guard_, [this] { cmdLoad_Click(); }));
    connect(cmdQuery, &QPushButton::clicked, this, guarded(guard_, [this] { cmdQuery_Click(); }));
    connect(cmdScan, &QPushButton::clicked, this, guarded(guard_, [this] { cmdScan_Click(); }));
    connect(cmdHeigh, &QPushButton::clicked, this, guarded(guard_, [this] { cmdHeigh_Click(); }));
    connect(cmdExit, &QPushButton::clicked, this, guarded(guard_, [this] { cmdExit_Click(); }));
    connect(&tmrScan, &QTimer::timeout, this, guarded(guard_, [this] { tmrScan_Timer(); }));
    nameForAccessibility(this);
}

FtlListWindow::~FtlListWindow()
{
    tmrScan.stop();
    // Gone without its close (the program ending): the load window must not call into it.
    if (isOpen(look_.win) && frmWelcome::openWindow(look_.win) == this) {
        registerReader(kFtlFileKind, {}, look_.subtype);
        frmWelcome::forgetOpenWindow(look_.win, this);
    }
}

void FtlListWindow::Form_Load()
{
    const auto choices = ftlquery::loadQueryFile(QLatin1String(look_.queryFile), int(ftlquery::kIlgBoxes));
    query_ = makeQueryWindow();
    query_->Form_Load(choices);
    list->rows()->clear();
    registerReader(kFtlFileKind, [this] { LoadFtl(); }, look_.subtype);
    frame_->load();
    show();
}

void FtlListWindow::LoadFtl()
{
    setCursor(Qt::WaitCursor);
    ftlquery::readFtl(textfile::readAll(chosenFilePath()));
    lblDbtype->setText(look_.typeCaption);
    showList(true);
    lblDbname->setText(chosenFileTable[kFtlFileKind]);
    for (QWidget *w : {static_cast<QWidget *>(cmdQuery), static_cast<QWidget *>(cmdSort),
                       static_cast<QWidget *>(cmdScan), static_cast<QWidget *>(txtScandelay)})
        if (w)
            w->setEnabled(true);
    unsetCursor();
}

void FtlListWindow::showList(bool asLoaded)
{
    list->rows()->assign(ftlquery::listRows(asLoaded ? ftlquery::loadedRow : ftlquery::queriedRow));
    shown_ = ftlquery::ilgShown;
    scanPos_ = 0;
    list->scrollToTop();
}

void FtlListWindow::cmdLoad_Click()
{
    QPointer<FtlListWindow> self(this);
    fileType = int16_t(kFtlFileKind);
    fileSubtype = int16_t(look_.subtype);
    frmLoadfile::showModal(this);
    if (self)
        unsetCursor();
}

void FtlListWindow::cmdQuery_Click()
{
    query_->lblProgress->clear();
    query_->show();
    query_->raise();
    query_->activateWindow();
}

void FtlListWindow::cmdScan_Click()
{
    if (scanning()) {
        tmrScan.stop();
        setScanControls(true);
        cmdScan->setText(QStringLiteral("Start Scan"));
        return;
    }
    const double seconds = numtext::valc(txtScandelay->text());
    if (!ftlquery::scanDelayValid(seconds, look_.maxDelay)) {
        ui::MsgBox(QStringLiteral("Scan delay outside range.\nSelect value between 1 and %1 sec.").arg(look_.maxDelay),
                   ui::vbCritical, QStringLiteral("Error"));
        return;
    }
    tmrScan.setInterval(numtext::clng(seconds * 1000));
    tmrScan.start();
    setScanControls(false);
    cmdScan->setText(QStringLiteral("Stop Scan"));
}

void FtlListWindow::setScanControls(bool enabled)
{
    for (QWidget *w : {static_cast<QWidget *>(cmdQuery), static_cast<QWidget *>(cmdSort),
                       static_cast<QWidget *>(cmdLoad), static_cast<QWidget *>(cmdExit),
                       static_cast<QWidget *>(txtScandelay)})
        if (w)
            w->setEnabled(enabled);
}

void FtlListWindow::tmrScan_Timer()
{
    if (!scanning() || guard_.stopRequested() || shown_ <= 0)
        return;
    const ftlquery::ScanStep s = ftlquery::scanStep(
        [this](int32_t r) { return ftlquery::rowFrequency(list->text(r, 0)); }, shown_, scanPos_, lastTuned_);
    double f = s.khz;
    if (frmWelcome *w = frmWelcome::instance())
        w->Change2FreqA(f);
    list->selectRow(s.row);
    scanPos_ = s.next;
    lastTuned_ = s.khz;
}

void FtlListWindow::list_Click(int row)
{
    if (row < 0 || row >= shown_)
        return;
    double f = ftlquery::rowFrequency(list->text(row, 0));
    if (frmWelcome *w = frmWelcome::instance())
        w->Change2FreqA(f);
    scanPos_ = row;
}

void FtlListWindow::cmdHeigh_Click()
{
    list->setFixedHeight(twipsToPixels(frame_->toggleHeight() ? kTallListTwips : kShortListTwips));
    list->viewport()->update();
    layout()->activate();
}

void FtlListWindow::cmdExit_Click() { close(); }

void FtlListWindow::closeEvent(QCloseEvent *e)
{
    if (guard_.holdClose(e))
        return;
    tmrScan.stop();
    registerReader(kFtlFileKind, {}, look_.subtype);
    if (query_)
        query_->Form_Unload();
    frame_->unload();
    e->accept();
}
