#include "frmUserdefs.h"
#include "core/frmWelcome.h"
#include "core/numtext.h"
#include "core/session_clock.h"
#include "drivers/clsNRD535.h"
#include "panels/frmNRD535.h"
#include "ui/widgets/form_position.h"
#include "ui/widgets/spin_button.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFontDatabase>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <QVBoxLayout>

namespace {
// The receiver needs a moment between two settings.
constexpr int kDefaultsPaceMs = 20;

// The hourglass for as long as it lives.
struct WaitCursor {
    WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QApplication::restoreOverrideCursor(); }
};

QPointer<frmUserdefs> theUserdefs;
} // namespace

// --- what both models' windows share ---

frmUserdefsBase::frmUserdefsBase(Win win, const QString &title, QWidget *parent) : QWidget(parent), win_(win)
{
    setObjectName(panel::windowName(win));
    setWindowTitle(title);
    setAttribute(Qt::WA_DeleteOnClose);
}

frmUserdefsBase::~frmUserdefsBase()
{
    // Gone without its close (the program ending): nothing may point at it.
    if (frmWelcome::openWindow(win_) == this) {
        frmWelcome::setOpenWindow(win_, nullptr);
        isOpen(win_) = false;
    }
}

void frmUserdefsBase::build(const QList<OptionGroup> &groups, const QList<ValueSetting> &values, int columns)
{
    auto *grid = new QGridLayout;
    grid->setSpacing(8);
    int cell = 0;
    auto place = [&](QWidget *w) {
        grid->addWidget(w, cell / columns, cell % columns);
        ++cell;
    };
    QFont valueFont = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    valueFont.setPointSizeF(valueFont.pointSizeF() * 1.3);
    valueFont.setBold(true);

    for (const OptionGroup &g : groups) {
        auto *box = new QGroupBox(QLatin1String(g.title), this);
        box->setObjectName(QStringLiteral("fra") + QLatin1String(g.name).mid(3));
        auto *col = new QVBoxLayout(box);
        col->setSpacing(2);
        QList<QRadioButton *> &opts = options_[g.index];
        for (int i = 0; i < g.captions.size(); ++i) {
            auto *r = new QRadioButton(g.captions[i], box);
            r->setObjectName(QStringLiteral("%1_%2").arg(QLatin1String(g.name)).arg(i));
            const int index = g.index;
            connect(r, &QRadioButton::clicked, this, guarded(guard_, [this, index, i] { option_Click(index, i); }));
            col->addWidget(r);
            opts << r;
        }
        col->addStretch(1);
        place(box);
    }
    for (const ValueSetting &v : values) {
        auto *box = new QGroupBox(QLatin1String(v.title), this);
        box->setObjectName(QStringLiteral("fra") + QLatin1String(v.stem));
        auto *row = new QHBoxLayout(box);
        auto *label = new QLabel(nrdpanel::spinText(v.spin, v.spin.start), box);
        label->setObjectName(QStringLiteral("lbl") + QLatin1String(v.stem));
        label->setFont(valueFont);
        label->setFrameShape(QFrame::StyledPanel);
        label->setFrameShadow(QFrame::Sunken);
        label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        label->setMinimumWidth(QFontMetrics(valueFont).horizontalAdvance(QStringLiteral("+00000")));
        auto *spin = new SpinButton(Qt::Vertical, box);
        spin->setObjectName(QStringLiteral("spn") + QLatin1String(v.stem));
        spin->setFixedSize(22, 30);
        auto *set = new QPushButton(tr("Set"), box);
        set->setObjectName(QStringLiteral("cmd") + QLatin1String(v.stem));
        set->setAutoDefault(false);
        set->setToolTip(tr("Send this value to the receiver"));
        const int index = v.index;
        connect(spin, &SpinButton::SpinUp, this, guarded(guard_, [this, index] { spin_Click(index, true); }));
        connect(spin, &SpinButton::SpinDown, this, guarded(guard_, [this, index] { spin_Click(index, false); }));
        connect(set, &QPushButton::clicked, this, guarded(guard_, [this, index] { cmdSet_Click(index); }));
        row->addWidget(label, 1);
        row->addWidget(spin);
        row->addWidget(set);
        values_[v.index] = Held{v, v.spin.start, label};
        place(box);
    }

    cmdDefaults = new QPushButton(QStringLiteral("Reset to Defaults"), this);
    cmdDefaults->setObjectName(QStringLiteral("cmdDefaults"));
    cmdDefaults->setAutoDefault(false);
    cmdDefaults->setToolTip(tr("Send the receiver's factory settings"));
    cmdOK = new QPushButton(QStringLiteral("OK"), this);
    cmdOK->setObjectName(QStringLiteral("cmdOK"));
    cmdOK->setAutoDefault(false);
    connect(cmdDefaults, &QPushButton::clicked, this, guarded(guard_, [this] { cmdDefaults_Click(); }));
    connect(cmdOK, &QPushButton::clicked, this, guarded(guard_, [this] { cmdOK_Click(); }));
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(cmdDefaults);
    buttons->addStretch(1);
    buttons->addWidget(cmdOK);

    auto *col = new QVBoxLayout(this);
    col->addLayout(grid);
    col->addLayout(buttons);
    nameForAccessibility(this);
}

QList<QRadioButton *> frmUserdefsBase::options(int index) const
{
    auto it = options_.find(index);
    return it == options_.end() ? QList<QRadioButton *>() : it->second;
}

int frmUserdefsBase::value(int index) const
{
    auto it = values_.find(index);
    return it == values_.end() ? 0 : it->second.value;
}

QLabel *frmUserdefsBase::valueLabel(int index) const
{
    auto it = values_.find(index);
    return it == values_.end() ? nullptr : it->second.label;
}

void frmUserdefsBase::showAtLoad()
{
    placeAtLoad(this, win_);
    show();
    isOpen(win_) = true;
    frmWelcome::setOpenWindow(win_, this);
}

void frmUserdefsBase::setOption(int index, int value)
{
    const QList<QRadioButton *> opts = options(index);
    if (value < 0 || value >= opts.size())
        return;
    opts[value]->setChecked(true);
    option_Click(index, value);
}

void frmUserdefsBase::option_Click(int index, int value)
{
    sendUserdef(index, value);
    optionExtra(index, value);
}

void frmUserdefsBase::spin_Click(int index, bool up)
{
    auto it = values_.find(index);
    if (it == values_.end())
        return;
    Held &h = it->second;
    h.value = nrdpanel::spun(h.setting.spin, h.value, up);
    h.label->setText(nrdpanel::spinText(h.setting.spin, h.value));
}

void frmUserdefsBase::cmdSet_Click(int index)
{
    auto it = values_.find(index);
    if (it != values_.end())
        sendUserdef(index, it->second.value);
}

void frmUserdefsBase::cmdDefaults_Click()
{
    if (busy_)
        return;
    busy_ = true;
    const WaitCursor hourglass;
    QPointer<frmUserdefsBase> self(this);
    beforeDefaults();
    for (const nrdpanel::DefaultRow &row : defaultRows()) {
        delayMs(kDefaultsPaceMs);
        if (!self)
            return;
        if (guard_.stopRequested())
            break; // the window is closing: what is sent stays sent
        sendUserdef(row.index, row.value);
        if (row.option >= 0) {
            setOption(row.index, row.option);
        } else if (auto it = values_.find(row.index); it != values_.end()) {
            Held &h = it->second;
            h.label->setText(QLatin1String(row.label));
            h.value = numtext::clng(numtext::Val(h.label->text()) / h.setting.spin.scale);
        }
    }
    if (!self)
        return;
    afterDefaults();
    if (self)
        busy_ = false;
}

void frmUserdefsBase::cmdOK_Click() { close(); }

void frmUserdefsBase::closeEvent(QCloseEvent *e)
{
    // Not in the middle of a defaults run: it comes back when the run is over.
    if (guard_.holdClose(e))
        return;
    storeAtUnload(this, win_);
    isOpen(win_) = false;
    if (frmWelcome::openWindow(win_) == this)
        frmWelcome::setOpenWindow(win_, nullptr);
    releaseDriver();
    e->accept();
}

// --- the NRD-535 ---

frmUserdefs::frmUserdefs(QWidget *parent)
    : frmUserdefsBase(Win::frmUserdefs, QStringLiteral("NRD-535 User Definition Settings"), parent)
{
    const QStringList offOn = {tr("Off"), tr("On")};
    build({{"Relay Mode", 0, "optRelaymode", {"Normally Off", "Normally On", "Squelch-On/Off"}},
           {"VBT bypass", 1, "optVBTbypass", offOn},
           {"S-meter display", 4, "optSmeterdisplay", {"Single segment", "Bar Graph"}},
           {"SSB Freq. Display", 6, "optFreqshift", {"No shift", "1.5 kHz shift"}},
           {"10 Hz Digit Display", 7, "opt10Hzdisplay", offOn},
           {"Clock Colon Blinking", 8, "optColonblink", offOn},
           {"Beep on KeyPress", 9, "optBeeponkey", offOn}},
          {{"CW BFO Pitch", 2, "CWpitch", nrdpanel::kCwPitch535}}, 4);
}

frmUserdefs::~frmUserdefs() = default;

frmUserdefs *frmUserdefs::open()
{
    if (theUserdefs) {
        theUserdefs->showNormal();
        theUserdefs->raise();
        theUserdefs->activateWindow();
        return theUserdefs;
    }
    auto *w = new frmUserdefs;
    theUserdefs = w;
    w->Form_Load();
    return w;
}

void frmUserdefs::Form_Load()
{
    NRD535A = std::make_unique<clsNRD535>(frmWelcome::instance()->Comm1);
    showAtLoad();
}

void frmUserdefs::sendUserdef(int index, int value)
{
    if (NRD535A)
        NRD535A->setUserdefs(int16_t(index), int16_t(value));
}

void frmUserdefs::optionExtra(int index, int value)
{
    // The bypass shows on the panel, on its attenuator label.
    if (index != 1)
        return;
    if (auto *p = qobject_cast<frmNRD535 *>(frmWelcome::openWindow(Win::frmNRD535)))
        p->showVbtBypass(value == 1);
}

void frmUserdefs::releaseDriver() { NRD535A.reset(); }
