#include "list_window_qt.h"
#include "core/frmWelcome.h"
#include "data/file_store.h"
#include "data/frmLoadfile.h"
#include "ui/widgets/form_position.h"
#include "ui/widgets/images.h"

#include <QCloseEvent>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>

namespace {
// The grid's heights, short and tall; the window grows by as much as the grid.
constexpr int kShortGridTwips = 3135;
constexpr int kTallGridTwips = 6270;
constexpr int kGridFontPixels = 10;
} // namespace

ScheduleListWindow::ScheduleListWindow(const Look &look, std::initializer_list<int> titleWidths,
                                       const QStringList &titles, std::initializer_list<int> gridWidths)
    : look_(look), widths_(gridWidths)
{
    setObjectName(QLatin1String(look.name));
    setWindowTitle(look.title);
    setAttribute(Qt::WA_DeleteOnClose);

    // Small enough that a frequency fits its narrow column, as the lists were laid out for.
    QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    fixed.setPixelSize(kGridFontPixels);
    const int rowHeight = QFontMetrics(fixed).height() + 2;
    grdTitles = new TextGrid(TextGrid::Titles, titleWidths, fixed, rowHeight + 2, this, titles);
    grdTitles->setObjectName(QStringLiteral("grdTitles"));
    grid_ = new TextGrid(TextGrid::List, gridWidths, fixed, rowHeight, this);
    grid_->setObjectName(QLatin1String(look.gridName));
    grid_->setFixedHeight(twipsToPixels(kShortGridTwips));
    grid_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    // A cell too narrow shows what fits rather than dots in place of digits.
    grid_->setTextElideMode(Qt::ElideNone);
    grdTitles->setTextElideMode(Qt::ElideNone);
    const int width = grid_->columnsWidth() + grid_->verticalScrollBar()->sizeHint().width() + 2 * grid_->frameWidth();
    grid_->setFixedWidth(width);
    grdTitles->setFixedWidth(width);

    frame_ = new ListFrame(this, look.win, QString());
    txtFrequencyA = frame_->txtFrequencyA;
    cmdHeigh = frame_->cmdHeigh;
    cmdPanel = frame_->cmdPanel;
    txtFrequencyA->setFont(fixed);
    txtFrequencyA->setFixedWidth(QFontMetrics(fixed).horizontalAdvance(QStringLiteral("00000.000")) + 12);
    txtFrequencyA->setToolTip(tr("Frequency in kHz: Enter tunes, a double click empties"));
    cmdHeigh->setToolTip(tr("A taller or shorter grid"));
    cmdHeigh->setAutoDefault(false);
    cmdPanel->setIcon(QIcon(images::receiver()));
    cmdPanel->setIconSize(QSize(32, 24));
    cmdPanel->setToolTip(tr("Receiver panel"));
    cmdPanel->setAccessibleName(tr("Receiver panel"));
    cmdPanel->setAutoDefault(false);

    fileLabel = new QLabel(this);
    fileLabel->setObjectName(QLatin1String(look.labelName));
    fileLabel->setFrameShape(QFrame::StyledPanel);
    fileLabel->setFrameShadow(QFrame::Sunken);
    fileLabel->setMinimumWidth(QFontMetrics(font()).horizontalAdvance(QStringLiteral("BDX_A26ENGTOE.TXT")) + 12);
    cmdLoad = new QPushButton(look.loadCaption, this);
    cmdLoad->setObjectName(QStringLiteral("cmdLoad"));
    cmdLoad->setAutoDefault(false);
    cmdExit = new QPushButton(QStringLiteral("Exit"), this);
    cmdExit->setObjectName(QStringLiteral("cmdExit"));
    cmdExit->setAutoDefault(false);

    auto *buttons = new QHBoxLayout;
    buttons->addWidget(fileLabel, 1);
    buttons->addWidget(txtFrequencyA);
    buttons->addWidget(cmdLoad);
    buttons->addWidget(cmdPanel);
    buttons->addWidget(cmdHeigh);
    buttons->addWidget(cmdExit);
    auto *col = new QVBoxLayout(this);
    col->setSpacing(0);
    col->addWidget(grdTitles);
    col->addWidget(grid_);
    col->addSpacing(6);
    col->addLayout(buttons);
    col->setSizeConstraint(QLayout::SetFixedSize);

    connect(grid_, &TextGrid::cellClicked, this,
            guarded<int, int, const QString &>(guard_, [this](int r, int c, const QString &t) { gridClicked(r, c, t); }));
    connect(cmdLoad, &QPushButton::clicked, this, guarded(guard_, [this] { cmdLoad_Click(); }));
    connect(cmdExit, &QPushButton::clicked, this, guarded(guard_, [this] { cmdExit_Click(); }));
    connect(cmdHeigh, &QPushButton::clicked, this, guarded(guard_, [this] { cmdHeigh_Click(); }));
    nameForAccessibility(this);
}

ScheduleListWindow::~ScheduleListWindow()
{
    // Gone without its close (the program ending): the load window must not call into it.
    if (isOpen(look_.win) && frmWelcome::openWindow(look_.win) == this) {
        registerReader(look_.fileKind, {});
        frmWelcome::forgetOpenWindow(look_.win, this);
    }
}

void ScheduleListWindow::Form_Load()
{
    grid_->rows()->clear();
    registerReader(look_.fileKind, [this] { readChosenFile(); });
    frame_->load();
    show();
}

void ScheduleListWindow::cmdLoad_Click()
{
    QPointer<ScheduleListWindow> self(this);
    fileType = int16_t(look_.fileKind);
    frmLoadfile::showModal(this);
    // A load that ended early (Cancel in the selection box) still gives the pointer back.
    if (self)
        unsetCursor();
}

void ScheduleListWindow::cmdExit_Click() { close(); }

void ScheduleListWindow::cmdHeigh_Click()
{
    grid_->setFixedHeight(twipsToPixels(frame_->toggleHeight() ? kTallGridTwips : kShortGridTwips));
    grid_->viewport()->update();
    layout()->activate();
}

void ScheduleListWindow::tune(const lists::TuneSteps &steps)
{
    frmWelcome *w = frmWelcome::instance();
    if (!w)
        return;
    for (const lists::TuneStep &s : steps) {
        if (s.kind == lists::TuneStep::Frequency) {
            double f = s.khz;
            w->Change2FreqA(f);
        } else {
            QString m = s.mode;
            w->SetRx2mfa(m);
        }
    }
}

void ScheduleListWindow::showRows(std::vector<QStringList> rows)
{
    rows.insert(rows.begin(), QStringList());
    grid_->rows()->assign(std::move(rows));
}

void ScheduleListWindow::closeEvent(QCloseEvent *e)
{
    if (guard_.holdClose(e))
        return;
    registerReader(look_.fileKind, {});
    frame_->unload();
    e->accept();
}
