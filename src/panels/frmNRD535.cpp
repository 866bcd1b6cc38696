#include "frmNRD535.h"
#include "core/frmWelcome.h"
#include "core/numtext.h"
#include "core/session_clock.h"
#include "drivers/clsNRD535.h"
#include "drivers/model_tables.h"
#include "drivers/nrd_tables.h"
#include "panels/nrd_panel_logic.h"
#include "serial/comm_line.h"
#include "ui/facades.h"

#include <QAction>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <QVBoxLayout>

namespace {
// A change of mode needs a moment before the set reports its new state.
constexpr int kModeSettleMs = 100;

void paintButton(QPushButton *b, unsigned bgrColour)
{
    b->setStyleSheet(QStringLiteral("QPushButton { background: %1; color: #101010; font-weight: bold; }")
                         .arg(nrdpanel::bgr(bgrColour).name()));
}
} // namespace

frmNRD535::frmNRD535(QWidget *parent) : frmPanelBase(Win::frmNRD535, rxNRD535, true, parent)
{
    buildPanel();
    // The set has no reset, no firmware report and no line outputs of the AR7030's kind.
    buildMenu({QStringLiteral("mnuResetRX"), QStringLiteral("mnuFirmware"), QStringLiteral("mnuEnableLLLR"),
               QStringLiteral("mnuDisableLLLR")},
              {},
              {{QStringLiteral("mnuScratchpad"), QStringLiteral("mnuUserdefs"), QStringLiteral("User Definitions . . .")},
               {QStringLiteral("mnuScratchpad"), QStringLiteral("mnuRtty"), QStringLiteral("RTTY . . .")}});
    wireMenu(QStringLiteral("mnuUpdate"), [this] { mnuUpdate_Click(); });
    wireMenu(QStringLiteral("mnuPowerOn"), [this] { mnuPowerOn_Click(); });
    wireMenu(QStringLiteral("mnuPowerOff"), [this] { mnuPowerOff_Click(); });
    finishMenu();
    connectCommon();
    // The keypad's "M" recalls through the receiver here.
    disconnect(cmdEnterMem, &QPushButton::clicked, this, nullptr);
    connect(cmdEnterMem, &QPushButton::clicked, this, guarded(guard_, [this] { cmdEnterMem_Click(); }));
    connectControls();
    applyLook();
    // The set's volume is its own knob: there is nothing to mute from here.
    lblMute->hide();
}

frmNRD535::~frmNRD535() = default;

frmNRD535 *frmNRD535::open()
{
    auto *p = new frmNRD535;
    return loadOrAbandon(p, [p] { p->NRD535A.reset(); });
}

// --- the face ---

void frmNRD535::buildPanel()
{
    auto *face = new QWidget(this);
    face->setObjectName(QStringLiteral("panelFace"));
    face->setMouseTracking(true);
    setCentralWidget(face);

    QWidget *display = buildDisplay();
    lblNoiseblanker = addStatus("lblNoiseblanker", tr("NB"));
    // The attenuator's label is a lamp as well: its colour tells the VBT bypass.
    auto *attCap = new QLabel(tr("RF dB"));
    attCap->setProperty("role", "dim");
    QFont capFont = lblMode->font();
    capFont.setPixelSize(13);
    capFont.setBold(false);
    attCap->setFont(capFont);
    lblAttenuator = new ClickLabel;
    lblAttenuator->setObjectName(QStringLiteral("lblAttenuator"));
    lblAttenuator->setFont(lblMode->font());
    lblAttenuator->setAlignment(Qt::AlignCenter);
    lblAttenuator->setMinimumWidth(60);
    lblAttenuator->setToolTip(tr("Attenuator in dB; orange while the VBT is bypassed"));
    displayStatus->addWidget(attCap);
    displayStatus->addWidget(lblAttenuator);
    displayStatus->addStretch(1);

    cmdPowerOnOff = makeButton(QStringLiteral("cmdPowerOnOff"), tr("Power"), face);
    cmdPowerOnOff->setToolTip(tr("Switch the receiver on or off"));
    cmdPowerOnOff->setMinimumSize(64, 40);

    QStringList modes = kNrd535Modes;
    modes << kNrd535EcssModes;
    static const char *const modeKeys[] = {"R", "C", "U", "L", "A", "F", "X", "P", "M"};
    QList<QPushButton *> modeButtons, bwButtons, agcButtons, attButtons, nbButtons, lockButtons;
    for (int i = 0; i < 9; ++i) {
        QPushButton *b = cmdMode[size_t(i)] = makeButton(QStringLiteral("cmdMode_%1").arg(i), modes[i], face);
        b->setToolTip(tr("%1 (Shift+%2)").arg(modes[i], QLatin1String(modeKeys[i])));
        modeButtons << b;
    }
    static const char *const bwKeys[] = {"F3", "F2", "F1", "F4"};
    for (int i = 0; i < 4; ++i) {
        QPushButton *b = cmdBandwidth[size_t(i)] =
            makeButton(QStringLiteral("cmdBandwidth_%1").arg(i), kNrd535Filters[i], face);
        b->setToolTip(tr("Filter %1 (Shift+%2)").arg(kNrd535Filters[i], QLatin1String(bwKeys[i])));
        bwButtons << b;
    }
    for (int i = 0; i < 3; ++i)
        agcButtons << (cmdAgcspeed[size_t(i)] =
                           makeButton(QStringLiteral("cmdAgcspeed_%1").arg(i), kNrd535Agc[i], face));
    static const char *const att[] = {"0", "-20"};
    for (int i = 0; i < 2; ++i)
        attButtons << (cmdAttenuator[size_t(i)] =
                           makeButton(QStringLiteral("cmdAttenuator_%1").arg(i), QLatin1String(att[i]), face));
    for (int i = 0; i < 3; ++i)
        nbButtons << (cmdNoiseblanker[size_t(i)] =
                          makeButton(QStringLiteral("cmdNoiseblanker_%1").arg(i), kNrdNoiseBlankers[i], face));
    static const char *const lock[] = {"Off", "On"};
    for (int i = 0; i < 2; ++i)
        lockButtons << (cmdLock[size_t(i)] = makeButton(QStringLiteral("cmdLock_%1").arg(i), QLatin1String(lock[i]), face));
    cmdLock[0]->setToolTip(tr("Release the receiver to its own front panel (Shift+Ctrl+-)"));
    cmdLock[1]->setToolTip(tr("Hold the receiver in remote mode: frees the shift and bandwidth bars (Shift+Ctrl+=)"));

    const Fader bwc = makeFader("vsbBandwidthcontrol", "lblBandwidthcontrol", tr("BWC Hz"), kNrd535BwcWideBar.bottom,
                                kNrd535BwcWideBar.top, 1, 10, false);
    const Fader pbs = makeFader("vsbPassbandshift", "lblPassbandshift", tr("PBS Hz"), kNrd535PassBandShiftBar.bottom,
                                kNrd535PassBandShiftBar.top, kNrd535PassBandShiftBar.smallStep,
                                kNrd535PassBandShiftBar.largeStep, false);
    vsbBandwidthcontrol = bwc.bar, lblBandwidthcontrol = bwc.label;
    vsbPassbandshift = pbs.bar, lblPassbandshift = pbs.label;
    vsbBandwidthcontrol->setToolTip(tr("Bandwidth control of the Wid and Int filters (Ctrl+F1..F4, with the lock)"));
    vsbPassbandshift->setToolTip(tr("Pass band shift (Shift+= / Shift+- / Shift+0, with the lock)"));
    lblPassbandshift->setToolTip(tr("Click to centre the pass band"));
    lblPassbandshift->setCursor(Qt::PointingHandCursor);
    for (QWidget *w : {static_cast<QWidget *>(vsbBandwidthcontrol), static_cast<QWidget *>(vsbPassbandshift),
                       static_cast<QWidget *>(lblBandwidthcontrol), static_cast<QWidget *>(lblPassbandshift)})
        w->setEnabled(false);

    lblLock = new ClickLabel(QString(), face);
    lblLock->setObjectName(QStringLiteral("lblLock"));
    lblLock->setAlignment(Qt::AlignCenter);
    lblLock->setMinimumSize(48, 24);
    lblLock->setToolTip(tr("Remote lock"));

    lblMute = new ClickLabel(QStringLiteral("Mute"), face);
    lblMute->setObjectName(QStringLiteral("lblMute"));
    cmdClose = makeButton(QStringLiteral("cmdClose"), QStringLiteral("Close"), face);
    cmdClose->setMinimumWidth(90);

    // Top: the display beside the power switch, the keypad on the right.
    auto *displayRow = new QHBoxLayout;
    displayRow->addWidget(display, 1);
    auto *power = new QVBoxLayout;
    power->addStretch(1);
    power->addWidget(cmdPowerOnOff);
    power->addStretch(1);
    displayRow->addLayout(power);

    auto *left = new QVBoxLayout;
    left->addLayout(displayRow);
    left->addWidget(buildTuning());
    left->addWidget(buttonGroup(tr("Mode"), modeButtons));
    auto *row2 = new QHBoxLayout;
    row2->addWidget(buttonGroup(tr("Filter"), bwButtons), 4);
    fraAgcspeed = buttonGroup(tr("AGC"), agcButtons);
    fraAgcspeed->setObjectName(QStringLiteral("fraAgcspeed"));
    row2->addWidget(fraAgcspeed, 3);
    left->addLayout(row2);
    auto *row3 = new QHBoxLayout;
    fraAttenuator = buttonGroup(tr("Attenuator (dB)"), attButtons);
    fraAttenuator->setObjectName(QStringLiteral("fraAttenuator"));
    row3->addWidget(fraAttenuator, 2);
    row3->addWidget(buttonGroup(tr("Noise blanker"), nbButtons), 3);
    left->addLayout(row3);

    // Right: the keypad, and under it the lock with the two bars that live only with it.
    auto *remote = new QGroupBox(tr("Remote lock"), face);
    auto *remoteCol = new QVBoxLayout(remote);
    auto *lockRow = new QHBoxLayout;
    lockRow->addWidget(lblLock);
    lockRow->addSpacing(6);
    for (QPushButton *b : lockButtons) {
        b->setParent(remote);
        b->setMinimumWidth(46);
        lockRow->addWidget(b);
    }
    remoteCol->addLayout(lockRow);
    auto *bars = new QHBoxLayout;
    bars->addWidget(bwc.box);
    bars->addWidget(pbs.box);
    remoteCol->addLayout(bars, 1);

    auto *right = new QVBoxLayout;
    right->addWidget(buildKeypad());
    right->addWidget(remote, 1);
    auto *closeRow = new QHBoxLayout;
    closeRow->addWidget(lblMute);
    closeRow->addStretch(1);
    closeRow->addWidget(cmdClose);
    right->addLayout(closeRow);

    left->addStretch(1);
    auto *col = new QHBoxLayout(face);
    col->setContentsMargins(10, 8, 10, 10);
    col->setSpacing(8);
    col->addLayout(left, 1);
    col->addLayout(right);
}

void frmNRD535::connectControls()
{
    connect(cmdPowerOnOff, &QPushButton::clicked, this, guarded(guard_, [this] { cmdPowerOnOff_Click(); }));
    for (int i = 0; i < 2; ++i)
        connect(cmdAttenuator[size_t(i)], &QPushButton::clicked, this, guarded(guard_, [this, i] { cmdAttenuator_Click(i); }));
    for (int i = 0; i < 4; ++i)
        connect(cmdBandwidth[size_t(i)], &QPushButton::clicked, this, guarded(guard_, [this, i] { cmdBandwidth_Click(i); }));
    for (int i = 0; i < 9; ++i)
        connect(cmdMode[size_t(i)], &QPushButton::clicked, this, guarded(guard_, [this, i] { cmdMode_Click(i); }));
    for (int i = 0; i < 3; ++i) {
        connect(cmdAgcspeed[size_t(i)], &QPushButton::clicked, this, guarded(guard_, [this, i] { cmdAgcspeed_Click(i); }));
        connect(cmdNoiseblanker[size_t(i)], &QPushButton::clicked, this, guarded(guard_, [this, i] { cmdNoiseblanker_Click(i); }));
    }
    for (int i = 0; i < 2; ++i)
        connect(cmdLock[size_t(i)], &QPushButton::clicked, this, guarded(guard_, [this, i] { cmdLock_Click(i); }));
    connect(lblPassbandshift, &ClickLabel::clicked, this, guarded(guard_, [this] { lblPassbandshift_Click(); }));
    connect(vsbBandwidthcontrol, &QSlider::valueChanged, this, guarded(guard_, [this] { vsbBandwidthcontrol_Change(); }));
    connect(vsbPassbandshift, &QSlider::valueChanged, this, guarded(guard_, [this] { vsbPassbandshift_Change(); }));
}

void frmNRD535::connectDriver()
{
    clsNRD535 *d = NRD535A.get();
    connect(d, &clsNRD535::PoweronoffChanged, this, &frmNRD535::NRD535A_PoweronoffChanged);
    connect(d, &clsNRD535::AttenuatorChanged, this, &frmNRD535::NRD535A_AttenuatorChanged);
    connect(d, &clsNRD535::BandwidthChanged, this, &frmNRD535::NRD535A_BandwidthChanged);
    connect(d, &clsNRD535::ModeChanged, this, &frmNRD535::NRD535A_ModeChanged);
    connect(d, &clsNRD535::AgcspeedChanged, this, &frmNRD535::NRD535A_AgcspeedChanged);
    connect(d, &clsNRD535::NoiseblankerChanged, this, &frmNRD535::NRD535A_NoiseblankerChanged);
    connect(d, &clsNRD535::BandwidthcontrolChanged, this, &frmNRD535::NRD535A_BandwidthcontrolChanged);
    connect(d, &clsNRD535::PassbandshiftChanged, this, &frmNRD535::NRD535A_PassbandshiftChanged);
    connect(d, &clsNRD535::FrequencyAChanged, this, &frmNRD535::NRD535A_FrequencyAChanged);
    connect(d, &clsNRD535::LockChanged, this, &frmNRD535::NRD535A_LockChanged);
    connect(d, &clsNRD535::RxStatusChanged, this, &frmNRD535::NRD535A_RxStatusChanged);
}

// --- load and unload ---

void frmNRD535::Form_Load()
{
    beginLoad();
    labelRoutineNRD535(); // limits, memory size, label tables (AM-U/AM-L with the ECSS option)
    fillStepCombo();
    setStartStep();
    NRD535A = std::make_unique<clsNRD535>(comm());
    connectDriver();
    registerOpen();
    // Options the set lacks leave their controls dead.
    cmdBandwidth[2]->setEnabled(slotNrdOption(0) == 1);
    if (slotNrdOption(0) != 1)
        cmdBandwidth[2]->setToolTip(tr("The 1 kHz filter is not fitted (set-up)"));
    for (int i : {7, 8}) {
        cmdMode[size_t(i)]->setEnabled(slotNrdOption(2) == 1);
        if (slotNrdOption(2) != 1)
            cmdMode[size_t(i)]->setToolTip(tr("The ECSS unit is not fitted (set-up)"));
    }
    comm().setCommPort(numtext::cint(slotCommPort()));
    comm().setSettings(QLatin1String(serialFor(rxNRD535).settings));
    comm().setPortOpen(true);
    QPointer<frmNRD535> self(this);
    NRD535A->setRttyOnOff(0);
    if (!self || !NRD535A || stopping())
        return;
    RxUpdatebasics();
    if (!self || !NRD535A || stopping())
        return;
    NRD535A->setUserdefs(1, 0); // VBT bypass off
    showVbtBypass(false);
    NRD535A->setNoiseblanker(0);
    lockState = 0;
    if (NRD535A)
        NRD535A->Lockonoff(0);
    if (self)
        endLoad();
}

void frmNRD535::Form_Unload()
{
    if (NRD535A)
        lockoffon(0);
    unloadCommon(true, [this] { NRD535A.reset(); });
}

// --- reading the set ---

void frmNRD535::RxUpdatebasics()
{
    if (!NRD535A)
        return;
    QPointer<frmNRD535> self(this);
    const QString s = NRD535A->RxStatus();
    if (self)
        NRD535A_RxStatusChanged(s);
}

void frmNRD535::NRD535A_RxStatusChanged(const QString &s)
{
    const nrdpanel::Status st = nrdpanel::parseStatus(s);
    NRD535A_AttenuatorChanged(st.attenuator);
    NRD535A_BandwidthChanged(st.bandwidth);
    NRD535A_ModeChanged(st.mode);
    NRD535A_AgcspeedChanged(st.agc);
    txtFrequencyA->setText(panel::frequencyText(st.khz, freqLowerLimit, freqUpperLimit, frequencyPattern()));
}

void frmNRD535::RxUpdatefull()
{
    if (!NRD535A)
        return;
    QPointer<frmNRD535> self(this);
    const QString s = NRD535A->RxStatus();
    if (!self || !NRD535A || stopping())
        return;
    NRD535A_RxStatusChanged(s);
    const nrdpanel::Status st = nrdpanel::parseStatus(s);
    // NFM has neither AGC choice nor the IF controls.
    if (st.mode == 5) {
        for (QPushButton *b : cmdAgcspeed)
            b->setEnabled(false);
        fraAgcspeed->setEnabled(false);
        lblAgcspeed->clear();
        markActive({cmdAgcspeed.begin(), cmdAgcspeed.end()}, -1);
        setBarsOff(true, true);
        return;
    }
    for (QPushButton *b : cmdAgcspeed)
        b->setEnabled(true);
    fraAgcspeed->setEnabled(true);
    NRD535A_AgcspeedChanged(st.agc);
    if (remoteLock != 1)
        return; // outside remote mode the set would not hear the bars
    vsbPassbandshift->setEnabled(true);
    lblPassbandshift->setEnabled(true);
    setBarQuietly(vsbPassbandshift, 0);
    NRD535A->setPassBandShift(0);
    if (!self || !NRD535A || stopping())
        return;
    const bool bwcFitted = slotNrdOption(1) == 1;
    if ((st.bandwidth == 0 || st.bandwidth == 1) && bwcFitted) {
        const NrdBar &bar = st.bandwidth == 0 ? kNrd535BwcWideBar : kNrd535BwcIntBar;
        vsbBandwidthcontrol->setEnabled(true);
        lblBandwidthcontrol->setEnabled(true);
        {
            const QSignalBlocker quiet(vsbBandwidthcontrol);
            vsbBandwidthcontrol->setRange(bar.bottom, bar.top);
            vsbBandwidthcontrol->setValue(bar.top);
        }
        NRD535A->setBandwidthcontrol(int16_t(bar.top));
    } else if (st.bandwidth == 2 || st.bandwidth == 3) {
        setBarsOff(true, false);
    }
}

void frmNRD535::setBarsOff(bool bwc, bool pbs)
{
    if (bwc) {
        vsbBandwidthcontrol->setEnabled(false);
        lblBandwidthcontrol->setEnabled(false);
        lblBandwidthcontrol->clear();
    }
    if (pbs) {
        vsbPassbandshift->setEnabled(false);
        lblPassbandshift->setEnabled(false);
        lblPassbandshift->clear();
    }
}

void frmNRD535::lockoffon(int v)
{
    if (!NRD535A)
        return;
    QPointer<frmNRD535> self(this);
    NRD535A->Lockonoff(int16_t(v));
    if (!self)
        return;
    if (v == 0)
        setBarsOff(true, true);
    else if (v == 1)
        RxUpdatefull();
}

void frmNRD535::showVbtBypass(bool bypassed)
{
    lblAttenuator->setBackColor(nrdpanel::bgr(bypassed ? nrdpanel::kLockOn : nrdpanel::kLockOff));
}

// --- buttons and bars ---

void frmNRD535::cmdPowerOnOff_Click()
{
    if (!NRD535A)
        return;
    powerFlag_ = !powerFlag_;
    NRD535A->setPowerOnOff(powerFlag_ ? 1 : 0);
}

void frmNRD535::cmdAttenuator_Click(int index)
{
    if (NRD535A)
        NRD535A->setAttenuator(int16_t(index));
}

void frmNRD535::cmdBandwidth_Click(int index)
{
    if (!NRD535A)
        return;
    int16_t v = int16_t(index);
    NRD535A->setBandwidth(v);
    RxUpdatefull();
}

void frmNRD535::cmdMode_Click(int index)
{
    if (!NRD535A)
        return;
    QPointer<frmNRD535> self(this);
    NRD535A->setMode(int16_t(index));
    delayMs(kModeSettleMs);
    if (self && !stopping())
        RxUpdatefull();
}

void frmNRD535::cmdAgcspeed_Click(int index)
{
    if (NRD535A)
        NRD535A->setAgcspeed(int16_t(index));
}

void frmNRD535::cmdNoiseblanker_Click(int index)
{
    if (NRD535A)
        NRD535A->setNoiseblanker(int16_t(index));
}

void frmNRD535::cmdLock_Click(int index)
{
    lockState = int16_t(index);
    lockoffon(index);
}

void frmNRD535::cmdEnterMem_Click()
{
    const panel::KeypadResult r = panel::keypadMemoryCell(lblMfreq->text(), lastMemoryIndex);
    lblMfreq->clear();
    if (r.ok)
        enterMemory(int(r.value));
    else
        ui::MsgBox(QStringLiteral("Memory cell outside range"), ui::vbOKOnly, QStringLiteral("Error"));
}

void frmNRD535::enterMemory(int n)
{
    if (!NRD535A)
        return;
    QPointer<frmNRD535> self(this);
    NRD535A->Rx2Mem(int16_t(n));
    if (self && !stopping())
        RxUpdatebasics();
}

void frmNRD535::lblPassbandshift_Click()
{
    if (vsbPassbandshift->isEnabled())
        vsbPassbandshift->setValue(0);
}

void frmNRD535::vsbBandwidthcontrol_Change()
{
    if (NRD535A)
        NRD535A->setBandwidthcontrol(int16_t(vsbBandwidthcontrol->value()));
}

void frmNRD535::vsbPassbandshift_Change()
{
    if (NRD535A)
        NRD535A->setPassBandShift(int16_t(vsbPassbandshift->value()));
}

// --- what the receiver was told ---

void frmNRD535::NRD535A_PoweronoffChanged(int v)
{
    powerFlag_ = v == 1;
    paintButton(cmdPowerOnOff, powerFlag_ ? nrdpanel::kPowerOn : nrdpanel::kPowerOff);
    cmdPowerOnOff->setText(powerFlag_ ? tr("ON") : tr("OFF"));
}

void frmNRD535::NRD535A_AttenuatorChanged(int v)
{
    lblAttenuator->setText(nrdpanel::attenuatorText(v));
    markActive({cmdAttenuator.begin(), cmdAttenuator.end()}, v);
}

void frmNRD535::NRD535A_BandwidthChanged(int v)
{
    lblBandwidth->setText(panel::tableText(filterTable, v, 0, 3));
    markActive({cmdBandwidth.begin(), cmdBandwidth.end()}, v);
}

void frmNRD535::NRD535A_ModeChanged(int v)
{
    // Without the ECSS unit entries 7 and 8 are empty, and so is the label.
    lblMode->setText(panel::tableText(modeTable, v, 0, 8));
    markActive({cmdMode.begin(), cmdMode.end()}, v);
}

void frmNRD535::NRD535A_AgcspeedChanged(int v)
{
    lblAgcspeed->setText(panel::tableText(agcTable, v, 0, 2));
    markActive({cmdAgcspeed.begin(), cmdAgcspeed.end()}, v);
}

void frmNRD535::NRD535A_NoiseblankerChanged(int v)
{
    lblNoiseblanker->setText(panel::tableText(nbTable, v, 0, 2));
    markActive({cmdNoiseblanker.begin(), cmdNoiseblanker.end()}, v);
}

void frmNRD535::NRD535A_BandwidthcontrolChanged(int v)
{
    if (v >= vsbBandwidthcontrol->minimum() && v <= vsbBandwidthcontrol->maximum())
        setBarQuietly(vsbBandwidthcontrol, v);
    lblBandwidthcontrol->setText(nrdpanel::bwc535Text(v));
}

void frmNRD535::NRD535A_PassbandshiftChanged(int v)
{
    setBarQuietly(vsbPassbandshift, v);
    lblPassbandshift->setText(nrdpanel::pbs535Text(v));
}

void frmNRD535::NRD535A_FrequencyAChanged(double khz) { showFrequency(khz); }

void frmNRD535::NRD535A_LockChanged(int v)
{
    const bool on = v == 1;
    lblLock->setText(on ? QStringLiteral("On") : QStringLiteral("Off"));
    lblLock->setBackColor(nrdpanel::bgr(on ? nrdpanel::kLockOn : nrdpanel::kLockOff));
    markActive({cmdLock.begin(), cmdLock.end()}, on ? 1 : 0);
}

// --- the menu ---

void frmNRD535::mnuUpdate_Click() { RxUpdatefull(); }

void frmNRD535::mnuPowerOn_Click()
{
    if (NRD535A)
        NRD535A->setPowerOnOff(1);
}

void frmNRD535::mnuPowerOff_Click()
{
    if (NRD535A)
        NRD535A->setPowerOnOff(0);
}

// --- what the shared parts ask of the model ---

void frmNRD535::writeFrequency(double khz)
{
    if (NRD535A)
        NRD535A->setFrequencyA(khz);
}

const std::vector<panel::KeyRow> &frmNRD535::keyTable() const { return nrdpanel::nrd535Keys(); }

void frmNRD535::keyAction(const panel::KeyRow &row)
{
    using panel::KeyAction;
    using nrdpanel::NrdKey;
    if (!NRD535A)
        return;
    if (nrdpanel::isNrdKey(row.action, NrdKey::EnterMem)) {
        cmdEnterMem_Click();
        digitBuffer_.clear();
        return;
    }
    switch (row.action) {
    case KeyAction::Bandwidth:
        cmdBandwidth[size_t(row.arg)]->click(); // a filter not fitted has its button disabled
        return;
    case KeyAction::Mode:
        cmdMode[size_t(row.arg)]->click();
        return;
    case KeyAction::ShiftUp:
    case KeyAction::ShiftDown:
    case KeyAction::ShiftZero: {
        // The keys move the bar, so they work where it does: with the lock, outside NFM.
        if (lockState != 1 || !vsbPassbandshift->isEnabled())
            return;
        const int now = vsbPassbandshift->value();
        const int v = row.action == KeyAction::ShiftZero ? 0
            : row.action == KeyAction::ShiftUp       ? nrdpanel::pbs535Up(now)
                                                     : nrdpanel::pbs535Down(now);
        setBarQuietly(vsbPassbandshift, v);
        NRD535A->setPassBandShift(int16_t(v));
        return;
    }
    default:
        break;
    }
    using nrdpanel::Bwc535Key;
    const Bwc535Key keys[] = {Bwc535Key::Lowest, Bwc535Key::Down, Bwc535Key::Up, Bwc535Key::Highest};
    const NrdKey actions[] = {NrdKey::BwcLowest, NrdKey::BwcDown, NrdKey::BwcUp, NrdKey::BwcHighest};
    for (int i = 0; i < 4; ++i) {
        if (!nrdpanel::isNrdKey(row.action, actions[i]))
            continue;
        if (lockState != 1 || !vsbBandwidthcontrol->isEnabled())
            return;
        const int v = nrdpanel::bwc535Key(lblBandwidth->text(), vsbBandwidthcontrol->value(), keys[i]);
        if (v < 0)
            return;
        setBarQuietly(vsbBandwidthcontrol, v);
        NRD535A->setBandwidthcontrol(int16_t(v));
        return;
    }
}

bool frmNRD535::eventFilter(QObject *watched, QEvent *event)
{
    // Shift and Ctrl together take or release the lock; the shared table knows one modifier only.
    if (event->type() == QEvent::KeyPress && !unloaded_ && isEnabled()) {
        auto *w = qobject_cast<QWidget *>(watched);
        if (w && (w == this || isAncestorOf(w))) {
            auto *k = static_cast<QKeyEvent *>(event);
            const int lock = nrdpanel::lockKey(k->key(), k->modifiers());
            if (lock >= 0) {
                const HandlerScope scope(guard_);
                cmdLock_Click(lock);
                return true;
            }
        }
    }
    return frmPanelBase::eventFilter(watched, event);
}
