#include "frmMarkfreqs.h"
#include "ui/widgets/raise_or_load.h"
#include "core/frmWelcome.h"
#include "core/numtext.h"
#include "log/small_lists.h"
#include "log/small_lists_qt.h"
#include "ui/facades.h"
#include "ui/widgets/form_position.h"
#include "ui/widgets/text_grid.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
QPointer<frmMarkfreqs> theMarkfreqs;
constexpr int kScanMs = 2000;
const QString kNotEnough = QStringLiteral("Not enough valid    \nfrequencies filled  \nin for scanning     ");
} // namespace

frmMarkfreqs::frmMarkfreqs(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("frmMarkfreqs"));
    setWindowTitle(QStringLiteral("Marked Freqs"));
    setAttribute(Qt::WA_DeleteOnClose);
    tmrScan.setObjectName(QStringLiteral("tmrScan"));
    tmrScan.setInterval(kScanMs);
    const smallwin::ListGrids g = smallwin::makeListGrids(this, "grdMarkfreqs");
    grdTitles = g.titles;
    grdMarkfreqs = g.list;
    auto button = [this](const char *name, const QString &caption, const QString &tip) {
        auto *b = new QPushButton(caption, this);
        b->setObjectName(QLatin1String(name));
        b->setAutoDefault(false);
        b->setToolTip(tip);
        return b;
    };
    cmdMark = button("cmdMark", QStringLiteral("Mark"), tr("Add the panel's frequency at the head of the list"));
    cmdCls = button("cmdCls", QStringLiteral("Cls"), tr("Empty the list"));
    cmdScan = button("cmdScan", QStringLiteral("Scan"), tr("Tune to each frequency of the list in turn, every 2 seconds"));

    auto *buttons = new QHBoxLayout;
    buttons->addWidget(cmdMark);
    buttons->addWidget(cmdCls);
    buttons->addWidget(cmdScan);
    auto *col = new QVBoxLayout(this);
    col->setSpacing(0);
    col->addWidget(grdTitles);
    col->addWidget(grdMarkfreqs);
    col->addSpacing(6);
    col->addLayout(buttons);
    col->setSizeConstraint(QLayout::SetFixedSize);

    connect(grdMarkfreqs, &TextGrid::cellClicked, this,
            guarded<int, int, const QString &>(guard_, [this](int row, int, const QString &) { grdMarkfreqs_Click(row); }));
    connect(cmdMark, &QPushButton::clicked, this, guarded(guard_, [this] { cmdMark_Click(); }));
    connect(cmdCls, &QPushButton::clicked, this, guarded(guard_, [this] { cmdCls_Click(); }));
    connect(cmdScan, &QPushButton::clicked, this, guarded(guard_, [this] { cmdScan_Click(); }));
    connect(&tmrScan, &QTimer::timeout, this, guarded(guard_, [this] { tmrScan_Timer(); }));
    nameForAccessibility(this);
}

frmMarkfreqs::~frmMarkfreqs()
{
    tmrScan.stop();
    frmWelcome::forgetOpenWindow(Win::frmMarkfreqs, this);
}

frmMarkfreqs *frmMarkfreqs::open()
{
    return raiseOrLoad(theMarkfreqs, [](const frmMarkfreqs &) { return isOpen(Win::frmMarkfreqs); });
}

void frmMarkfreqs::Form_Load()
{
    placeAtLoad(this, Win::frmMarkfreqs);
    smallwin::fillListGrid(grdMarkfreqs, smalllists::markedFreqs);
    show();
    isOpen(Win::frmMarkfreqs) = true;
    frmWelcome::setOpenWindow(Win::frmMarkfreqs, this);
}

void frmMarkfreqs::cmdMark_Click()
{
    if (rxType < rxAR7030 || rxType > rxNRD545)
        return;
    smalllists::shiftIn(smalllists::markedFreqs, smallwin::panelFrequencyText());
    smallwin::fillListGrid(grdMarkfreqs, smalllists::markedFreqs);
}

void frmMarkfreqs::cmdCls_Click()
{
    smalllists::markedFreqs.fill(QString());
    grdMarkfreqs->rows()->clear();
    if (scanning())
        stopForLackOfEntries();
}

void frmMarkfreqs::grdMarkfreqs_Click(int row)
{
    if (row < 0)
        return;
    double f = numtext::Val(grdMarkfreqs->text(row, 1));
    if (frmWelcome *w = frmWelcome::instance())
        w->Change2FreqA(f);
}

void frmMarkfreqs::cmdScan_Click()
{
    if (scanning()) {
        stopScan();
        return;
    }
    if (smalllists::scannableCount(smalllists::markedFreqs, freqLowerLimit, freqUpperLimit) < 2) {
        ui::MsgBox(kNotEnough, ui::vbExclamation, QStringLiteral("Error"));
        return;
    }
    scanEntry_ = -1;
    tmrScan.start(kScanMs);
    cmdScan->setText(QStringLiteral("Stop"));
}

void frmMarkfreqs::tmrScan_Timer()
{
    if (!scanning() || guard_.stopRequested())
        return;
    const int next = smalllists::nextScanEntry(smalllists::markedFreqs, scanEntry_, freqLowerLimit, freqUpperLimit);
    if (next < 0) {
        stopForLackOfEntries();
        return;
    }
    scanEntry_ = next;
    grdMarkfreqs->selectRow(next);
    double f = smalllists::frequencyValue(smalllists::markedFreqs[size_t(next)]);
    if (frmWelcome *w = frmWelcome::instance())
        w->Change2FreqA(f);
}

void frmMarkfreqs::stopScan()
{
    tmrScan.stop();
    cmdScan->setText(QStringLiteral("Scan"));
}

void frmMarkfreqs::stopForLackOfEntries()
{
    stopScan();
    ui::MsgBox(QStringLiteral("The scan has stopped:\n") + kNotEnough, ui::vbExclamation, QStringLiteral("Error"));
}

void frmMarkfreqs::closeEvent(QCloseEvent *e)
{
    if (guard_.holdClose(e))
        return;
    tmrScan.stop();
    storeAtUnload(this, Win::frmMarkfreqs);
    isOpen(Win::frmMarkfreqs) = false;
    frmWelcome::forgetOpenWindow(Win::frmMarkfreqs, this);
    e->accept();
}
