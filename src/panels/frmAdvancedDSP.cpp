#include "frmAdvancedDSP.h"
#include "core/frmWelcome.h"
#include "core/numtext.h"
#include "drivers/clsNRD545.h"
#include "drivers/jrc_common.h"
#include "drivers/nrd_tables.h"
#include "panels/frmNRD545.h"
#include "panels/nrd_panel_logic.h"
#include "ui/facades.h"
#include "ui/widgets/form_position.h"

#include <QCloseEvent>
#include <algorithm>
#include <QFontDatabase>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QSlider>
#include <QStyle>
#include <QTimer>
#include <QVBoxLayout>

namespace {
QPointer<frmAdvancedDSP> theDsp;

constexpr int kLevelTop = 255;
constexpr int kNotchLimit = 1023;

void setQuietly(QSlider *bar, int v)
{
    const QSignalBlocker quiet(bar);
    bar->setValue(v);
}

QString threeDigits(int v) { return numtext::format(v, QStringLiteral("000")); }

frmNRD545 *thePanel() { return qobject_cast<frmNRD545 *>(frmWelcome::openWindow(Win::frmNRD545)); }

// Marks the button of the choice in force.
void mark(const std::array<QPushButton *, 3> &buttons, int index)
{
    for (int i = 0; i < 3; ++i) {
        QPushButton *b = buttons[size_t(i)];
        QFont f = b->font();
        f.setBold(i == index);
        b->setFont(f);
        b->setChecked(i == index);
    }
}
} // namespace

frmAdvancedDSP::frmAdvancedDSP(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("frmAdvancedDSP"));
    setWindowTitle(QStringLiteral("Advanced DSP"));
    setAttribute(Qt::WA_DeleteOnClose);
    // The choice in force stands out as on the panel: amber.
    setStyleSheet(QStringLiteral("QPushButton:checked { background: #e0a93e; color: #17130a; font-weight: bold;"
                                 " border: 1px solid #b07d1e; border-radius: 3px; padding: 4px; }"));
    build();
}

frmAdvancedDSP::~frmAdvancedDSP()
{
    // Gone without its close (the program ending): nothing may point at it.
    frmWelcome::forgetOpenWindow(Win::frmAdvancedDSP, this);
}

frmAdvancedDSP *frmAdvancedDSP::open()
{
    if (theDsp) {
        theDsp->showNormal();
        theDsp->raise();
        theDsp->activateWindow();
        return theDsp;
    }
    auto *w = new frmAdvancedDSP;
    theDsp = w;
    {
        // The load reads the set: a close that comes meanwhile waits for it.
        const HandlerScope scope(w->guard_);
        w->Form_Load();
    }
    return w;
}

void frmAdvancedDSP::build()
{
    QFont valueFont = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    valueFont.setPointSizeF(valueFont.pointSizeF() * 1.25);
    valueFont.setBold(true);
    auto valueLabel = [&](const char *name, const QString &tip, QWidget *parent) {
        auto *l = new QLabel(parent);
        l->setObjectName(QLatin1String(name));
        l->setFont(valueFont);
        l->setFrameShape(QFrame::StyledPanel);
        l->setFrameShadow(QFrame::Sunken);
        l->setAlignment(Qt::AlignCenter);
        l->setMinimumWidth(QFontMetrics(valueFont).horizontalAdvance(QStringLiteral("+00000")));
        l->setToolTip(tip);
        return l;
    };
    auto bar = [&](const char *name, int lo, int hi, int large, const QString &tip, QWidget *parent) {
        auto *s = new QSlider(Qt::Vertical, parent);
        s->setObjectName(QLatin1String(name));
        s->setRange(lo, hi);
        s->setPageStep(large);
        s->setTracking(false); // sent when let go
        s->setMinimumHeight(120);
        s->setToolTip(tip);
        s->setAccessibleName(tip);
        return s;
    };
    auto buttons = [&](std::array<QPushButton *, 3> &arr, const char *name, const QStringList &captions,
                       QWidget *parent, QHBoxLayout *row) {
        for (int i = 0; i < 3; ++i) {
            auto *b = new QPushButton(captions[i], parent);
            b->setObjectName(QStringLiteral("%1_%2").arg(QLatin1String(name)).arg(i));
            b->setAutoDefault(false);
            b->setMinimumWidth(48);
            b->setCheckable(true); // the choice in force stays pressed
            arr[size_t(i)] = b;
            row->addWidget(b);
        }
    };
    // A bar over its value, captioned.
    auto barColumn = [&](const QString &caption, QSlider *s, QLabel *l) {
        auto *col = new QVBoxLayout;
        auto *cap = new QLabel(caption);
        cap->setAlignment(Qt::AlignHCenter);
        col->addWidget(cap);
        col->addWidget(s, 1, Qt::AlignHCenter);
        col->addWidget(l);
        return col;
    };

    // Noise reduction / beat canceller.
    auto *fraNrbc = new QGroupBox(tr("Noise reduction / Beat canceler"), this);
    fraNrbc->setObjectName(QStringLiteral("fraNrbc"));
    auto *nrbcCol = new QVBoxLayout(fraNrbc);
    auto *nrbcRow = new QHBoxLayout;
    buttons(cmdNrbc, "cmdNrbc", kNrd545NrbcLabels, fraNrbc, nrbcRow);
    lblNrbc = valueLabel("lblNrbc", tr("Noise reduction or beat canceler in use"), fraNrbc);
    nrbcCol->addLayout(nrbcRow);
    nrbcCol->addWidget(lblNrbc);
    vsbNR = bar("vsbNR", 0, kLevelTop, 10, tr("Noise reduction level"), fraNrbc);
    vsbBC = bar("vsbBC", 0, kLevelTop, 10, tr("Beat canceler level"), fraNrbc);
    lblNR = valueLabel("lblNR", tr("Noise reduction level"), fraNrbc);
    lblBC = valueLabel("lblBC", tr("Beat canceler level"), fraNrbc);
    auto *nrbcBars = new QHBoxLayout;
    nrbcBars->addLayout(barColumn(tr("NR"), vsbNR, lblNR));
    nrbcBars->addLayout(barColumn(tr("BC"), vsbBC, lblBC));
    nrbcCol->addLayout(nrbcBars, 1);
    cmdDefaultNRBC = new QPushButton(QStringLiteral("Def"), fraNrbc);
    cmdDefaultNRBC->setObjectName(QStringLiteral("cmdDefaultNRBC"));
    cmdDefaultNRBC->setAutoDefault(false);
    cmdDefaultNRBC->setToolTip(tr("Both levels to the defaults of the set-up"));
    nrbcCol->addWidget(cmdDefaultNRBC);

    // Noise blanker.
    auto *fraNB = new QGroupBox(tr("Noise blanker"), this);
    fraNB->setObjectName(QStringLiteral("fraNB"));
    auto *nbCol = new QVBoxLayout(fraNB);
    auto *nbRow = new QHBoxLayout;
    buttons(cmdNB, "cmdNB", kNrd545NbLabels, fraNB, nbRow);
    lblNB = valueLabel("lblNB", tr("Noise blanker in use"), fraNB);
    vsbNB = bar("vsbNB", 0, kLevelTop, 5, tr("Noise blanker level"), fraNB);
    lblNB2 = valueLabel("lblNB2", tr("Noise blanker level"), fraNB);
    nbCol->addLayout(nbRow);
    nbCol->addWidget(lblNB);
    nbCol->addLayout(barColumn(tr("Level"), vsbNB, lblNB2), 1);

    // Notch.
    auto *fraNT = new QGroupBox(tr("Notch"), this);
    fraNT->setObjectName(QStringLiteral("fraNT"));
    auto *ntCol = new QVBoxLayout(fraNT);
    auto *ntRow = new QHBoxLayout;
    buttons(cmdNT, "cmdNT", kNrd545NotchLabels, fraNT, ntRow);
    cmdNT[1]->setToolTip(tr("Manual notch: the bar sets its frequency"));
    cmdNT[2]->setToolTip(tr("Automatic notch tracking"));
    lblNT = valueLabel("lblNT", tr("Notch in use"), fraNT);
    vsbNT = bar("vsbNT", -kNotchLimit, kNotchLimit, 16, tr("Notch frequency"), fraNT);
    lblNT2 = valueLabel("lblNT2", tr("Notch frequency"), fraNT);
    ntCol->addLayout(ntRow);
    ntCol->addWidget(lblNT);
    ntCol->addLayout(barColumn(tr("Frequency"), vsbNT, lblNT2), 1);

    // IF filter slope and the hold of the noise reduction.
    auto *fraFilterslope = new QGroupBox(tr("IF filter slope"), this);
    fraFilterslope->setObjectName(QStringLiteral("fraFilterslope"));
    auto *slopeRow = new QHBoxLayout(fraFilterslope);
    auto *fraHoldofnr = new QGroupBox(tr("Hold of NR"), this);
    fraHoldofnr->setObjectName(QStringLiteral("fraHoldofnr"));
    auto *holdRow = new QHBoxLayout(fraHoldofnr);
    const char *const slopes[] = {"Sharp", "Loose"};
    const char *const holds[] = {"Off", "On"};
    for (int i = 0; i < 2; ++i) {
        optFilterslope[size_t(i)] = new QRadioButton(QLatin1String(slopes[i]), fraFilterslope);
        optFilterslope[size_t(i)]->setObjectName(QStringLiteral("optFilterslope_%1").arg(i));
        slopeRow->addWidget(optFilterslope[size_t(i)]);
        optHoldofnr[size_t(i)] = new QRadioButton(QLatin1String(holds[i]), fraHoldofnr);
        optHoldofnr[size_t(i)]->setObjectName(QStringLiteral("optHoldofnr_%1").arg(i));
        holdRow->addWidget(optHoldofnr[size_t(i)]);
    }

    cmdExit = new QPushButton(QStringLiteral("Exit"), this);
    cmdExit->setObjectName(QStringLiteral("cmdExit"));
    cmdExit->setAutoDefault(false);
    cmdExit->setMinimumWidth(90);

    auto *grid = new QGridLayout(this);
    grid->addWidget(fraNrbc, 0, 0);
    grid->addWidget(fraNB, 0, 1);
    grid->addWidget(fraNT, 0, 2);
    grid->addWidget(fraFilterslope, 1, 0);
    grid->addWidget(fraHoldofnr, 1, 1);
    grid->addWidget(cmdExit, 1, 2, Qt::AlignRight | Qt::AlignBottom);

    for (int i = 0; i < 3; ++i) {
        connect(cmdNrbc[size_t(i)], &QPushButton::clicked, this, guarded(guard_, [this, i] { cmdNrbc_Click(i); }));
        connect(cmdNB[size_t(i)], &QPushButton::clicked, this, guarded(guard_, [this, i] { cmdNB_Click(i); }));
        connect(cmdNT[size_t(i)], &QPushButton::clicked, this, guarded(guard_, [this, i] { cmdNT_Click(i); }));
    }
    for (int i = 0; i < 2; ++i) {
        connect(optFilterslope[size_t(i)], &QRadioButton::clicked, this, guarded(guard_, [this, i] { optFilterslope_Click(i); }));
        connect(optHoldofnr[size_t(i)], &QRadioButton::clicked, this, guarded(guard_, [this, i] { optHoldofnr_Click(i); }));
    }
    connect(vsbNR, &QSlider::valueChanged, this, guarded(guard_, [this] { vsbNR_Change(); }));
    connect(vsbBC, &QSlider::valueChanged, this, guarded(guard_, [this] { vsbBC_Change(); }));
    connect(vsbNB, &QSlider::valueChanged, this, guarded(guard_, [this] { vsbNB_Change(); }));
    connect(vsbNT, &QSlider::valueChanged, this, guarded(guard_, [this] { vsbNT_Change(); }));
    connect(cmdDefaultNRBC, &QPushButton::clicked, this, guarded(guard_, [this] { cmdDefaultNRBC_Click(); }));
    connect(cmdExit, &QPushButton::clicked, this, guarded(guard_, [this] { cmdExit_Click(); }));
    nameForAccessibility(this);
}

void frmAdvancedDSP::Form_Load()
{
    loading_ = true;
    placeAtLoad(this, Win::frmAdvancedDSP);
    show();
    isOpen(Win::frmAdvancedDSP) = true;
    frmWelcome::setOpenWindow(Win::frmAdvancedDSP, this);
    NRD545A = std::make_unique<clsNRD545>(frmWelcome::instance()->Comm1);
    QPointer<frmAdvancedDSP> self(this);
    auto alive = [&] { return self && NRD545A; };
    // The many settings go out quicker inside one remote hold.
    if (lockState == 0) {
        tookLock_ = true;
        if (frmNRD545 *p = thePanel())
            p->lockoffon(1);
        else
            NRD545A->Lockonoff(1);
    }
    nrbcList_ = kNrd545NrbcLabels;
    nbList_ = kNrd545NbLabels;
    ntList_ = kNrd545NotchLabels;
    if (alive())
        cmdNrbc_Click(0);
    if (alive())
        cmdDefaultNRBC_Click();
    if (alive()) {
        const int which = NRD545A->nb(0);
        const int level = alive() ? NRD545A->nb(1) : 0;
        if (alive()) {
            lblNB->setText(panel::tableText(nbList_, which, 0, 2));
            setQuietly(vsbNB, level);
            lblNB2->setText(threeDigits(vsbNB->value()));
            cmdNB_Click(std::clamp(which, 0, 2));
        }
    }
    if (alive()) {
        const int notch = NRD545A->nt(1);
        if (alive()) {
            setQuietly(vsbNT, notch);
            lblNT2->setText(nrdpanel::signedText(vsbNT->value(), 4));
            cmdNT_Click(0);
        }
    }
    if (self)
        loading_ = false;
}

void frmAdvancedDSP::cmdNrbc_Click(int index)
{
    if (!NRD545A)
        return;
    NRD545A->nrbc(0, index);
    lblNrbc->setText(panel::tableText(nrbcList_, index, 0, 2));
    mark(cmdNrbc, index);
    vsbNR->setEnabled(index == 1);
    lblNR->setEnabled(index == 1);
    vsbBC->setEnabled(index == 2);
    lblBC->setEnabled(index == 2);
}

void frmAdvancedDSP::vsbNR_Change()
{
    if (NRD545A)
        NRD545A->nrbc(1, vsbNR->value());
    lblNR->setText(threeDigits(vsbNR->value()));
}

void frmAdvancedDSP::vsbBC_Change()
{
    if (NRD545A)
        NRD545A->nrbc(2, vsbBC->value());
    lblBC->setText(threeDigits(vsbBC->value()));
}

void frmAdvancedDSP::cmdDefaultNRBC_Click()
{
    if (!NRD545A)
        return;
    const int nr = numtext::cint(slotNrbc(0));
    const int bc = numtext::cint(slotNrbc(1));
    NRD545A->nrbc(1, nr);
    if (NRD545A)
        NRD545A->nrbc(2, bc);
    setQuietly(vsbNR, nr);
    setQuietly(vsbBC, bc);
    lblNR->setText(threeDigits(vsbNR->value()));
    lblBC->setText(threeDigits(vsbBC->value()));
}

void frmAdvancedDSP::cmdNB_Click(int index)
{
    if (!NRD545A)
        return;
    NRD545A->setNb(0, int16_t(index));
    lblNB->setText(panel::tableText(nbList_, index, 0, 2));
    mark(cmdNB, index);
    vsbNB->setEnabled(index != 0);
    lblNB2->setEnabled(index != 0);
}

void frmAdvancedDSP::vsbNB_Change()
{
    if (NRD545A)
        NRD545A->setNb(1, int16_t(vsbNB->value()));
    lblNB2->setText(threeDigits(vsbNB->value()));
}

void frmAdvancedDSP::cmdNT_Click(int index)
{
    if (!NRD545A)
        return;
    NRD545A->setNt(0, int16_t(index));
    lblNT->setText(panel::tableText(ntList_, index, 0, 2));
    mark(cmdNT, index);
    // Only the manual notch has a frequency to set.
    vsbNT->setEnabled(index == 1);
    lblNT2->setEnabled(index == 1);
}

void frmAdvancedDSP::vsbNT_Change()
{
    if (NRD545A)
        NRD545A->setNt(1, int16_t(vsbNT->value()));
    lblNT2->setText(nrdpanel::signedText(vsbNT->value(), 4));
}

void frmAdvancedDSP::optFilterslope_Click(int index)
{
    if (NRD545A)
        NRD545A->setUserdefs(32, int16_t(index));
}

void frmAdvancedDSP::optHoldofnr_Click(int index)
{
    if (NRD545A)
        NRD545A->setUserdefs(27, int16_t(index));
}

void frmAdvancedDSP::cmdExit_Click()
{
    if (loading_ || leaving_)
        return;
    const int nr = numtext::cint(slotNrbc(0));
    const int bc = numtext::cint(slotNrbc(1));
    if (vsbNR->value() != nr || vsbBC->value() != bc) {
        const int answer = ui::MsgBox(nrdpanel::dspDefaultsQuestion(), ui::vbYesNoCancel | ui::vbQuestion,
                                      QStringLiteral("Defaults"));
        if (answer == ui::vbCancel)
            return;
        if (answer == ui::vbYes && NRD545A) {
            QPointer<frmAdvancedDSP> self(this);
            NRD545A->nrbc(1, nr);
            if (self && NRD545A)
                NRD545A->nrbc(2, bc);
            if (!self)
                return;
        }
    }
    leave();
}

void frmAdvancedDSP::leave()
{
    leaving_ = true;
    QPointer<frmAdvancedDSP> self(this);
    if (tookLock_ && remoteLock == 1) {
        tookLock_ = false;
        if (frmNRD545 *p = thePanel())
            p->lockoffon(0);
        else if (NRD545A)
            NRD545A->Lockonoff(0);
    }
    if (self)
        close();
}

void frmAdvancedDSP::closeEvent(QCloseEvent *e)
{
    // The window's own close box asks as "Exit" does, also when it had to wait.
    if (guard_.holdCloseOrAsk(e, leaving_, [this] { cmdExit_Click(); }))
        return;
    // Closed with the panel, or by "Exit": a lock still held from the load is let go.
    if (tookLock_ && remoteLock == 1 && !leaving_) {
        tookLock_ = false;
        if (frmNRD545 *p = thePanel())
            p->lockoffon(0);
    }
    storeAtUnload(this, Win::frmAdvancedDSP);
    isOpen(Win::frmAdvancedDSP) = false;
    frmWelcome::forgetOpenWindow(Win::frmAdvancedDSP, this);
    NRD545A.reset();
    e->accept();
}
