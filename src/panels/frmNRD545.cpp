#include "frmNRD545.h"
#include "core/frmWelcome.h"
#include "core/numtext.h"
#include "core/session_clock.h"
#include "drivers/clsNRD545.h"
#include "drivers/model_tables.h"
#include "drivers/nrd_tables.h"
#include "memory/mem_record.h"
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
constexpr int kModeSettleMs = 100;
constexpr int kModeAm = 4, kModeNfm = 5, kModeAms = 6, kModeAmU = 7, kModeAmL = 8;

void paintButton(QPushButton *b, unsigned bgrColour)
{
    b->setStyleSheet(QStringLiteral("QPushButton { background: %1; color: #101010; font-weight: bold; }")
                         .arg(nrdpanel::bgr(bgrColour).name()));
}
} // namespace

frmNRD545::frmNRD545(QWidget *parent) : frmPanelBase(Win::frmNRD545, rxNRD545, true, parent)
{
    buildPanel();
    buildMenu({QStringLiteral("mnuResetRX"), QStringLiteral("mnuFirmware"), QStringLiteral("mnuEnableLLLR"),
               QStringLiteral("mnuDisableLLLR")},
              {},
              {{QStringLiteral("mnuScratchpad"), QStringLiteral("mnuUserdefs"), QStringLiteral("User Definitions . . .")},
               {QStringLiteral("mnuScratchpad"), QStringLiteral("mnuAdvancedDSP"), QStringLiteral("Advanced DSP . . .")},
               {QStringLiteral("mnuScratchpad"), QStringLiteral("mnuRtty"), QStringLiteral("RTTY . . .")}});
    wireMenu(QStringLiteral("mnuUpdate"), [this] { mnuUpdate_Click(); });
    wireMenu(QStringLiteral("mnuPowerOn"), [this] { mnuPowerOn_Click(); });
    wireMenu(QStringLiteral("mnuPowerOff"), [this] { mnuPowerOff_Click(); });
    finishMenu();
    connectCommon();
    connectControls();
    applyLook();
}

frmNRD545::~frmNRD545() = default;

frmNRD545 *frmNRD545::open()
{
    auto *p = new frmNRD545;
    return loadOrAbandon(p, [p] { p->NRD545A.reset(); });
}

// --- the face ---

void frmNRD545::buildPanel()
{
    auto *face = new QWidget(this);
    face->setObjectName(QStringLiteral("panelFace"));
    face->setMouseTracking(true);
    setCentralWidget(face);

    QWidget *display = buildDisplay();
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
    lblAttenuator->setToolTip(tr("Attenuator in dB"));
    displayStatus->addWidget(attCap);
    displayStatus->addWidget(lblAttenuator);
    displayStatus->addStretch(1);

    cmdPowerOnOff = makeButton(QStringLiteral("cmdPowerOnOff"), tr("Power"), face);
    cmdPowerOnOff->setToolTip(tr("Switch the receiver on or off"));
    cmdPowerOnOff->setMinimumSize(64, 40);
    cmdFreqOrChan = makeButton(QStringLiteral("cmdFreqOrChan"), QStringLiteral("f/c"), face);
    cmdFreqOrChan->setToolTip(tr("Switch between frequency and channel operation"));

    static const char *const modeKeys[] = {"R", "C", "U", "L", "A", "F", "X"};
    QList<QPushButton *> modeButtons, ecssButtons, bwButtons, agcButtons, attButtons, lockButtons;
    for (int i = 0; i < 7; ++i) {
        QPushButton *b = cmdMode[size_t(i)] = makeButton(QStringLiteral("cmdMode_%1").arg(i), kNrd545Modes[i], face);
        b->setToolTip(tr("%1 (Shift+%2)").arg(kNrd545Modes[i], QLatin1String(modeKeys[i])));
        modeButtons << b;
    }
    static const char *const ecssKeys[] = {"P", "M"};
    for (int i = 0; i < 2; ++i) {
        QPushButton *b = cmdEcss[size_t(i)] =
            makeButton(QStringLiteral("cmdEcss_%1").arg(i), kNrd545Modes[kModeAmU + i], face);
        b->setToolTip(tr("Exalted carrier on the %1 side band, from AM (Shift+%2)")
                          .arg(i == 0 ? tr("upper") : tr("lower"), QLatin1String(ecssKeys[i])));
        ecssButtons << b;
    }
    static const char *const bwKeys[] = {"F3", "F2", "F1"};
    for (int i = 0; i < 3; ++i) {
        QPushButton *b = cmdBandwidth[size_t(i)] =
            makeButton(QStringLiteral("cmdBandwidth_%1").arg(i), kNrd545Filters[i], face);
        b->setToolTip(tr("Filter %1 (Shift+%2)").arg(kNrd545Filters[i], QLatin1String(bwKeys[i])));
        bwButtons << b;
    }
    static const char *const agc[] = {"Fst", "Med", "Slw", "Off"};
    for (int i = 0; i < 4; ++i)
        agcButtons << (cmdAgcspeed[size_t(i)] =
                           makeButton(QStringLiteral("cmdAgcspeed_%1").arg(i), QLatin1String(agc[i]), face));
    static const char *const att[] = {"0", "-20"};
    for (int i = 0; i < 2; ++i)
        attButtons << (cmdAttenuator[size_t(i)] =
                           makeButton(QStringLiteral("cmdAttenuator_%1").arg(i), QLatin1String(att[i]), face));
    static const char *const lock[] = {"Off", "On"};
    for (int i = 0; i < 2; ++i)
        lockButtons << (cmdLock[size_t(i)] = makeButton(QStringLiteral("cmdLock_%1").arg(i), QLatin1String(lock[i]), face));
    cmdLock[0]->setToolTip(tr("Release the receiver to its own front panel (Shift+Ctrl+-)"));
    cmdLock[1]->setToolTip(tr("Hold the receiver in remote mode: frees the bars (Shift+Ctrl+=)"));

    const Fader bwc = makeFader("vsbBandwidthcontrol", "lblBandwidthcontrol", tr("BWC kHz"),
                                kNrd545BandwidthcontrolBar.bottom, kNrd545BandwidthcontrolBar.top, 1,
                                kNrd545BandwidthcontrolBar.largeStep, false);
    const Fader pbs = makeFader("vsbPassbandshift", "lblPassbandshift", tr("PBS kHz"), kNrd545PassBandShiftBar.bottom,
                                kNrd545PassBandShiftBar.top, 1, kNrd545PassBandShiftBar.largeStep, false);
    const Fader ifg = makeFader("vsbIfgain", "lblIfgain", tr("IF gain"), kNrd545IfgainBar.bottom, kNrd545IfgainBar.top,
                                kNrd545IfgainBar.smallStep, kNrd545IfgainBar.largeStep, false);
    const Fader sql = makeFader("vsbSquelch", "lblSquelch", tr("Squelch"), kNrd545SquelchBar.bottom,
                                kNrd545SquelchBar.top, kNrd545SquelchBar.smallStep, kNrd545SquelchBar.largeStep, false);
    const Fader tone = makeFader("vsbTone", "lblTone", tr("Tone"), kNrd545ToneBar.bottom, kNrd545ToneBar.top,
                                 kNrd545ToneBar.smallStep, kNrd545ToneBar.largeStep, false);
    const Fader vol = makeFader("vsbVolume", "lblVolume", tr("Volume"), kNrd545VolumeBar.bottom, kNrd545VolumeBar.top,
                                kNrd545VolumeBar.smallStep, kNrd545VolumeBar.largeStep, false);
    vsbBandwidthcontrol = bwc.bar, lblBandwidthcontrol = bwc.label;
    vsbPassbandshift = pbs.bar, lblPassbandshift = pbs.label;
    vsbIfgain = ifg.bar, lblIfgain = ifg.label;
    vsbSquelch = sql.bar, lblSquelch = sql.label;
    vsbTone = tone.bar, lblTone = tone.label;
    vsbVolume = vol.bar, lblVolume = vol.label;
    vsbBandwidthcontrol->setToolTip(tr("DSP bandwidth of the filter in use (Ctrl+F1..F4, with the lock)"));
    vsbPassbandshift->setToolTip(tr("Pass band shift (Shift+= / Shift+- / Shift+0, with the lock)"));
    vsbVolume->setToolTip(tr("Volume (Alt+= / Alt+- / Alt+0, with the lock)"));
    lblPassbandshift->setToolTip(tr("Click to centre the pass band"));
    lblTone->setToolTip(tr("Click for a flat tone"));
    lblVolume->setToolTip(tr("Click to silence"));
    for (ClickLabel *l : {lblPassbandshift, lblTone, lblVolume})
        l->setCursor(Qt::PointingHandCursor);
    for (const auto &[bar, label] : bars()) {
        bar->setEnabled(false);
        label->setEnabled(false);
    }

    lblLock = new ClickLabel(QString(), face);
    lblLock->setObjectName(QStringLiteral("lblLock"));
    lblLock->setAlignment(Qt::AlignCenter);
    lblLock->setMinimumSize(48, 24);
    lblLock->setToolTip(tr("Remote lock"));

    lblMute = new ClickLabel(QStringLiteral("Mute"), face);
    lblMute->setObjectName(QStringLiteral("lblMute"));
    cmdClose = makeButton(QStringLiteral("cmdClose"), QStringLiteral("Close"), face);
    cmdClose->setMinimumWidth(90);

    auto *displayRow = new QHBoxLayout;
    displayRow->addWidget(display, 1);
    auto *power = new QVBoxLayout;
    power->addStretch(1);
    power->addWidget(cmdPowerOnOff);
    power->addWidget(cmdFreqOrChan);
    power->addStretch(1);
    displayRow->addLayout(power);

    auto *left = new QVBoxLayout;
    left->addLayout(displayRow);
    left->addWidget(buildTuning());
    auto *row1 = new QHBoxLayout;
    row1->addWidget(buttonGroup(tr("Mode"), modeButtons), 7);
    row1->addWidget(buttonGroup(tr("ECSS"), ecssButtons), 2);
    left->addLayout(row1);
    auto *row2 = new QHBoxLayout;
    fraBandwidth = buttonGroup(tr("Filter"), bwButtons);
    fraBandwidth->setObjectName(QStringLiteral("fraBandwidth"));
    row2->addWidget(fraBandwidth, 3);
    row2->addWidget(buttonGroup(tr("AGC"), agcButtons), 4);
    fraAttenuator = buttonGroup(tr("Attenuator (dB)"), attButtons);
    fraAttenuator->setObjectName(QStringLiteral("fraAttenuator"));
    row2->addWidget(fraAttenuator, 2);
    left->addLayout(row2);

    auto *top = new QHBoxLayout;
    top->addLayout(left, 1);
    top->addWidget(buildKeypad(), 0, Qt::AlignTop);

    auto *remote = new QGroupBox(tr("Remote lock"), face);
    auto *remoteCol = new QVBoxLayout(remote);
    remoteCol->addStretch(1);
    remoteCol->addWidget(lblLock, 0, Qt::AlignHCenter);
    auto *lockRow = new QHBoxLayout;
    for (QPushButton *b : lockButtons) {
        b->setParent(remote);
        b->setMinimumWidth(46);
        lockRow->addWidget(b);
    }
    remoteCol->addLayout(lockRow);
    remoteCol->addStretch(1);
    auto *ifBox = new QGroupBox(tr("IF (with the lock)"), face);
    auto *ifRow = new QHBoxLayout(ifBox);
    for (const Fader &f : {bwc, pbs, ifg, sql})
        ifRow->addWidget(f.box);
    auto *audio = new QGroupBox(tr("Audio (with the lock)"), face);
    auto *audioRow = new QHBoxLayout(audio);
    audioRow->addWidget(tone.box);
    audioRow->addWidget(vol.box);
    auto *muteCol = new QVBoxLayout;
    muteCol->addStretch(1);
    muteCol->addWidget(lblMute);
    muteCol->addStretch(1);
    audioRow->addSpacing(6);
    audioRow->addLayout(muteCol);

    auto *bottom = new QHBoxLayout;
    bottom->addWidget(remote);
    bottom->addWidget(ifBox, 4);
    bottom->addWidget(audio, 2);
    auto *closeCol = new QVBoxLayout;
    closeCol->addStretch(1);
    closeCol->addWidget(cmdClose);
    bottom->addLayout(closeCol);

    auto *col = new QVBoxLayout(face);
    col->setContentsMargins(10, 8, 10, 10);
    col->setSpacing(8);
    col->addLayout(top);
    col->addLayout(bottom, 1);
}

QList<std::pair<QSlider *, ClickLabel *>> frmNRD545::bars() const
{
    return {{vsbBandwidthcontrol, lblBandwidthcontrol}, {vsbPassbandshift, lblPassbandshift}, {vsbIfgain, lblIfgain},
            {vsbSquelch, lblSquelch}, {vsbTone, lblTone}, {vsbVolume, lblVolume}};
}

void frmNRD545::connectControls()
{
    connect(cmdPowerOnOff, &QPushButton::clicked, this, guarded(guard_, [this] { cmdPowerOnOff_Click(); }));
    connect(cmdFreqOrChan, &QPushButton::clicked, this, guarded(guard_, [this] { cmdFreqOrChan_Click(); }));
    for (int i = 0; i < 2; ++i) {
        connect(cmdAttenuator[size_t(i)], &QPushButton::clicked, this, guarded(guard_, [this, i] { cmdAttenuator_Click(i); }));
        connect(cmdEcss[size_t(i)], &QPushButton::clicked, this, guarded(guard_, [this, i] { cmdEcss_Click(i); }));
        connect(cmdLock[size_t(i)], &QPushButton::clicked, this, guarded(guard_, [this, i] { cmdLock_Click(i); }));
    }
    for (int i = 0; i < 3; ++i)
        connect(cmdBandwidth[size_t(i)], &QPushButton::clicked, this, guarded(guard_, [this, i] { cmdBandwidth_Click(i); }));
    for (int i = 0; i < 7; ++i)
        connect(cmdMode[size_t(i)], &QPushButton::clicked, this, guarded(guard_, [this, i] { cmdMode_Click(i); }));
    for (int i = 0; i < 4; ++i)
        connect(cmdAgcspeed[size_t(i)], &QPushButton::clicked, this, guarded(guard_, [this, i] { cmdAgcspeed_Click(i); }));
    connect(lblTone, &ClickLabel::clicked, this, guarded(guard_, [this] { lblTone_Click(); }));
    connect(lblVolume, &ClickLabel::clicked, this, guarded(guard_, [this] { lblVolume_Click(); }));
    connect(lblPassbandshift, &ClickLabel::clicked, this, guarded(guard_, [this] { lblPassbandshift_Click(); }));
    connect(vsbBandwidthcontrol, &QSlider::valueChanged, this, guarded(guard_, [this] { vsbBandwidthcontrol_Change(); }));
    connect(vsbPassbandshift, &QSlider::valueChanged, this, guarded(guard_, [this] { vsbPassbandshift_Change(); }));
    connect(vsbIfgain, &QSlider::valueChanged, this, guarded(guard_, [this] { vsbIfgain_Change(); }));
    connect(vsbSquelch, &QSlider::valueChanged, this, guarded(guard_, [this] { vsbSquelch_Change(); }));
    connect(vsbTone, &QSlider::valueChanged, this, guarded(guard_, [this] { vsbTone_Change(); }));
    connect(vsbVolume, &QSlider::valueChanged, this, guarded(guard_, [this] { vsbVolume_Change(); }));
}

void frmNRD545::connectDriver()
{
    clsNRD545 *d = NRD545A.get();
    connect(d, &clsNRD545::PoweronoffChanged, this, &frmNRD545::NRD545A_PoweronoffChanged);
    connect(d, &clsNRD545::AttenuatorChanged, this, &frmNRD545::NRD545A_AttenuatorChanged);
    connect(d, &clsNRD545::BandwidthChanged, this, &frmNRD545::NRD545A_BandwidthChanged);
    connect(d, &clsNRD545::ModeChanged, this, &frmNRD545::NRD545A_ModeChanged);
    connect(d, &clsNRD545::EcssChanged, this, &frmNRD545::NRD545A_EcssChanged);
    connect(d, &clsNRD545::AgcspeedChanged, this, &frmNRD545::NRD545A_AgcspeedChanged);
    connect(d, &clsNRD545::BandwidthcontrolChanged, this, &frmNRD545::NRD545A_BandwidthcontrolChanged);
    connect(d, &clsNRD545::PassbandshiftChanged, this, &frmNRD545::NRD545A_PassbandshiftChanged);
    connect(d, &clsNRD545::IfgainChanged, this, &frmNRD545::NRD545A_IfgainChanged);
    connect(d, &clsNRD545::SquelchChanged, this, &frmNRD545::NRD545A_SquelchChanged);
    connect(d, &clsNRD545::ToneChanged, this, &frmNRD545::NRD545A_ToneChanged);
    connect(d, &clsNRD545::VolumeChanged, this, &frmNRD545::NRD545A_VolumeChanged);
    connect(d, &clsNRD545::FrequencyAChanged, this, &frmNRD545::NRD545A_FrequencyAChanged);
    connect(d, &clsNRD545::LockChanged, this, &frmNRD545::NRD545A_LockChanged);
    connect(d, &clsNRD545::RxStatusChanged, this, &frmNRD545::NRD545A_RxStatusChanged);
}

// --- load and unload ---

void frmNRD545::Form_Load()
{
    beginLoad();
    labelRoutineNRD545();
    fillStepCombo();
    setStartStep();
    NRD545A = std::make_unique<clsNRD545>(comm());
    connectDriver();
    registerOpen();
    for (int i = 0; i < 3; ++i)
        cmdAgcspeed[size_t(i)]->setToolTip(
            tr("AGC time constant %1 ms (set-up)").arg(numtext::cint(slotAgctc(i)) * 200));
    cmdAgcspeed[3]->setToolTip(tr("AGC off"));
    comm().setCommPort(numtext::cint(slotCommPort()));
    comm().setSettings(QLatin1String(serialFor(rxNRD545).settings));
    comm().setPortOpen(true);
    QPointer<frmNRD545> self(this);
    NRD545A->setRttyOnOff(0);
    if (!self || !NRD545A || stopping())
        return;
    NRD545A->setUserdefs(24, 1); // input tuning circuit on
    if (!self || !NRD545A || stopping())
        return;
    lblAttenuator->setBackColor(nrdpanel::bgr(nrdpanel::kLockOff));
    RxUpdatefull();
    if (!self || !NRD545A || stopping())
        return;
    lockState = 0;
    NRD545A->Lockonoff(0);
    if (self)
        endLoad();
}

void frmNRD545::Form_Unload()
{
    if (NRD545A)
        lockoffon(0);
    unloadCommon(true, [this] { NRD545A.reset(); });
}

// --- reading the set ---

void frmNRD545::NRD545A_RxStatusChanged(const QString &s)
{
    const nrdpanel::Status st = nrdpanel::parseStatus(s);
    NRD545A_AttenuatorChanged(st.attenuator);
    NRD545A_BandwidthChanged(st.bandwidth);
    NRD545A_ModeChanged(st.mode);
    NRD545A_AgcspeedChanged(st.agc);
    txtFrequencyA->setText(panel::frequencyText(st.khz, freqLowerLimit, freqUpperLimit, frequencyPattern()));
}

void frmNRD545::RxUpdatefull()
{
    if (!NRD545A)
        return;
    QPointer<frmNRD545> self(this);
    auto alive = [&] { return self && NRD545A && !stopping(); };
    const QString s = NRD545A->RxStatus();
    if (!alive())
        return;
    NRD545A_RxStatusChanged(s);
    const nrdpanel::Status st = nrdpanel::parseStatus(s);
    for (QPushButton *b : cmdEcss)
        b->setEnabled(st.mode == kModeAm);
    // NFM and AMS have a fixed filter.
    const bool fixedFilter = st.mode == kModeNfm || st.mode == kModeAms;
    for (QPushButton *b : cmdBandwidth)
        b->setEnabled(!fixedFilter);
    lblBandwidth->setEnabled(!fixedFilter);
    if (fixedFilter) {
        lblBandwidth->clear();
        markActive({cmdBandwidth.begin(), cmdBandwidth.end()}, -1);
        setBwcAndShiftEnabled(false);
    }
    if (remoteLock != 1)
        return; // the single reads need the set in remote mode
    if (!fixedFilter) {
        setBwcAndShiftEnabled(true);
        NRD545A_BandwidthcontrolChanged(NRD545A->Bandwidthcontrol());
        if (!alive())
            return;
        NRD545A_PassbandshiftChanged(NRD545A->PassBandShift());
        if (!alive())
            return;
    }
    setLevelBarsEnabled(true);
    NRD545A_IfgainChanged(NRD545A->Ifgain());
    if (alive())
        NRD545A_SquelchChanged(NRD545A->Squelch());
    if (alive())
        NRD545A_ToneChanged(NRD545A->Tone());
    if (alive())
        NRD545A_VolumeChanged(NRD545A->Volume());
}

void frmNRD545::setBwcAndShiftEnabled(bool on)
{
    for (auto [bar, label] : {std::pair{vsbBandwidthcontrol, lblBandwidthcontrol}, std::pair{vsbPassbandshift, lblPassbandshift}}) {
        bar->setEnabled(on);
        label->setEnabled(on);
        if (!on)
            label->clear();
    }
}

void frmNRD545::setLevelBarsEnabled(bool on)
{
    for (auto [bar, label] : {std::pair{vsbIfgain, lblIfgain}, std::pair{vsbSquelch, lblSquelch},
                              std::pair{vsbTone, lblTone}, std::pair{vsbVolume, lblVolume}}) {
        bar->setEnabled(on);
        label->setEnabled(on);
        if (!on)
            label->clear();
    }
}

void frmNRD545::lockoffon(int v)
{
    if (!NRD545A)
        return;
    QPointer<frmNRD545> self(this);
    NRD545A->Lockonoff(int16_t(v));
    if (!self)
        return;
    if (v == 0) {
        setBwcAndShiftEnabled(false);
        setLevelBarsEnabled(false);
    } else if (v == 1) {
        RxUpdatefull();
    }
}

// --- buttons and bars ---

void frmNRD545::cmdPowerOnOff_Click()
{
    if (!NRD545A)
        return;
    powerFlag_ = !powerFlag_;
    NRD545A->setPowerOnOff(powerFlag_ ? 1 : 0);
}

void frmNRD545::cmdFreqOrChan_Click()
{
    if (NRD545A)
        NRD545A->FreqOrChan();
}

void frmNRD545::cmdAttenuator_Click(int index)
{
    if (NRD545A)
        NRD545A->setAttenuator(int16_t(index));
}

void frmNRD545::cmdBandwidth_Click(int index)
{
    if (!NRD545A)
        return;
    QPointer<frmNRD545> self(this);
    int16_t v = int16_t(index);
    NRD545A->setBandwidth(v);
    // Each filter keeps a bandwidth of its own.
    if (self && NRD545A && remoteLock == 1)
        NRD545A_BandwidthcontrolChanged(NRD545A->Bandwidthcontrol());
}

void frmNRD545::cmdMode_Click(int index)
{
    if (!NRD545A)
        return;
    QPointer<frmNRD545> self(this);
    NRD545A->setMode(int16_t(index));
    delayMs(kModeSettleMs);
    if (self && !stopping())
        RxUpdatefull();
}

void frmNRD545::cmdEcss_Click(int index)
{
    if (NRD545A)
        NRD545A->Ecss(int16_t(index + 1));
}

int frmNRD545::agcButtonOf(int code) const
{
    if (code == 0)
        return 3;
    for (int i = 0; i < 3; ++i)
        if (numtext::cint(slotAgctc(i)) == code)
            return i;
    return -1;
}

void frmNRD545::cmdAgcspeed_Click(int index)
{
    if (!NRD545A)
        return;
    NRD545A->setAgcspeed(index < 3 ? numtext::cint(slotAgctc(index)) : 0);
}

void frmNRD545::cmdLock_Click(int index)
{
    lockState = int16_t(index);
    lockoffon(index);
}

void frmNRD545::lblTone_Click()
{
    if (vsbTone->isEnabled())
        vsbTone->setValue(nrdpanel::kToneFlat);
}

void frmNRD545::lblVolume_Click()
{
    if (vsbVolume->isEnabled())
        vsbVolume->setValue(0);
}

void frmNRD545::lblPassbandshift_Click()
{
    if (vsbPassbandshift->isEnabled())
        vsbPassbandshift->setValue(0);
}

void frmNRD545::vsbBandwidthcontrol_Change()
{
    if (NRD545A)
        NRD545A->setBandwidthcontrol(int16_t(vsbBandwidthcontrol->value()));
}

void frmNRD545::vsbPassbandshift_Change()
{
    if (NRD545A)
        NRD545A->setPassBandShift(int16_t(vsbPassbandshift->value()));
}

void frmNRD545::vsbIfgain_Change()
{
    if (NRD545A)
        NRD545A->setIfgain(int16_t(vsbIfgain->value()));
}

void frmNRD545::vsbSquelch_Change()
{
    if (NRD545A)
        NRD545A->setSquelch(int16_t(vsbSquelch->value()));
}

void frmNRD545::vsbTone_Change()
{
    if (NRD545A)
        NRD545A->setTone(int16_t(vsbTone->value()));
}

void frmNRD545::vsbVolume_Change()
{
    if (NRD545A)
        NRD545A->setVolume(int16_t(vsbVolume->value()));
}

// --- what the receiver was told or said ---

void frmNRD545::NRD545A_PoweronoffChanged(int v)
{
    powerFlag_ = v == 1;
    paintButton(cmdPowerOnOff, powerFlag_ ? nrdpanel::kPowerOn : nrdpanel::kPowerOff);
    cmdPowerOnOff->setText(powerFlag_ ? tr("ON") : tr("OFF"));
}

void frmNRD545::NRD545A_AttenuatorChanged(int v)
{
    lblAttenuator->setText(nrdpanel::attenuatorText(v));
    markActive({cmdAttenuator.begin(), cmdAttenuator.end()}, v);
}

void frmNRD545::NRD545A_BandwidthChanged(int v)
{
    lblBandwidth->setText(panel::tableText(filterTable, v, 0, 2));
    markActive({cmdBandwidth.begin(), cmdBandwidth.end()}, v);
}

void frmNRD545::NRD545A_ModeChanged(int v)
{
    lblMode->setText(panel::tableText(modeTable, v, 0, 9));
    markActive({cmdMode.begin(), cmdMode.end()}, v);
    markActive({cmdEcss.begin(), cmdEcss.end()}, v == kModeAmU ? 0 : v == kModeAmL ? 1 : -1);
}

void frmNRD545::NRD545A_EcssChanged(int v)
{
    // ECSS turns AM into AM-U (1) or AM-L (2); 0 is AM again.
    NRD545A_ModeChanged(v == 1 ? kModeAmU : v == 2 ? kModeAmL : v == 0 ? kModeAm : -1);
}

void frmNRD545::NRD545A_AgcspeedChanged(int v)
{
    lblAgcspeed->setText(nrdpanel::agc545Text(v));
    markActive({cmdAgcspeed.begin(), cmdAgcspeed.end()}, agcButtonOf(v));
}

void frmNRD545::NRD545A_BandwidthcontrolChanged(int v)
{
    setBarQuietly(vsbBandwidthcontrol, v);
    lblBandwidthcontrol->setText(nrdpanel::bwc545Text(v));
}

void frmNRD545::NRD545A_PassbandshiftChanged(int v)
{
    setBarQuietly(vsbPassbandshift, v);
    lblPassbandshift->setText(nrdpanel::pbs545Text(v));
}

void frmNRD545::NRD545A_IfgainChanged(int v)
{
    setBarQuietly(vsbIfgain, v);
    lblIfgain->setText(nrdpanel::gainText(v));
}

void frmNRD545::NRD545A_SquelchChanged(int v)
{
    setBarQuietly(vsbSquelch, v);
    lblSquelch->setText(nrdpanel::gainText(v));
}

void frmNRD545::NRD545A_ToneChanged(int v)
{
    setBarQuietly(vsbTone, v);
    lblTone->setText(nrdpanel::toneText(v));
}

void frmNRD545::NRD545A_VolumeChanged(int v)
{
    setBarQuietly(vsbVolume, v);
    lblVolume->setText(nrdpanel::volumeText(v));
}

void frmNRD545::NRD545A_FrequencyAChanged(double khz) { showFrequency(khz); }

void frmNRD545::NRD545A_LockChanged(int v)
{
    const bool on = v == 1;
    lblLock->setText(on ? QStringLiteral("On") : QStringLiteral("Off"));
    lblLock->setBackColor(nrdpanel::bgr(on ? nrdpanel::kLockOn : nrdpanel::kLockOff));
    markActive({cmdLock.begin(), cmdLock.end()}, on ? 1 : 0);
}

// --- the menu ---

void frmNRD545::mnuUpdate_Click() { RxUpdatefull(); }

void frmNRD545::mnuPowerOn_Click()
{
    if (NRD545A)
        NRD545A->setPowerOnOff(1);
}

void frmNRD545::mnuPowerOff_Click()
{
    if (NRD545A)
        NRD545A->setPowerOnOff(0);
}

// --- what the shared parts ask of the model ---

void frmNRD545::writeFrequency(double khz)
{
    if (NRD545A)
        NRD545A->setFrequencyA(khz);
}

void frmNRD545::enterMemory(int n)
{
    if (!NRD545A)
        return;
    QPointer<frmNRD545> self(this);
    auto alive = [&] { return self && NRD545A && !stopping(); };
    // The memory read is no framed command: the set hears it only in remote mode.
    const bool held = remoteLock == 1;
    if (!held)
        NRD545A->Lockonoff(1);
    QString rec;
    if (alive())
        rec = NRD545A->Memory(int16_t(n));
    if (alive() && !held)
        NRD545A->Lockonoff(0);
    if (!alive())
        return;
    if (!isVacantMemRecord(rec)) {
        auto field = [&](memfield::Field f) { return numtext::Val(memField(rec, f)); };
        NRD545A->setFrequencyA(field(memfield::frequency) / 1000);
        if (alive())
            NRD545A->setMode(numtext::toInt16(field(memfield::mode)));
        int16_t bw = numtext::toInt16(field(memfield::bandwidth));
        if (alive())
            NRD545A->setBandwidth(bw);
    }
    if (alive())
        RxUpdatefull();
}

const std::vector<panel::KeyRow> &frmNRD545::keyTable() const { return nrdpanel::nrd545Keys(); }

std::vector<frmPanelBase::MuteBar> frmNRD545::muteBars() const
{
    // Without the lock the volume is the set's own knob, and its level unknown here.
    if (!vsbVolume->isEnabled())
        return {};
    return {{vsbVolume, lblVolume}};
}

void frmNRD545::keyAction(const panel::KeyRow &row)
{
    using panel::KeyAction;
    using nrdpanel::NrdKey;
    if (!NRD545A)
        return;
    if (nrdpanel::isNrdKey(row.action, NrdKey::Ecss)) {
        cmdEcss[size_t(row.arg)]->click(); // only in AM is it enabled
        return;
    }
    // The keys move the bars, so they work where the bars do: with the lock.
    auto barKey = [&](QSlider *bar, int v, auto send) {
        if (lockState != 1 || !bar->isEnabled())
            return;
        setBarQuietly(bar, v);
        send(int16_t(bar->value()));
    };
    switch (row.action) {
    case KeyAction::Bandwidth:
        cmdBandwidth[size_t(row.arg)]->click();
        return;
    case KeyAction::Mode:
        cmdMode[size_t(row.arg)]->click();
        return;
    case KeyAction::ShiftUp:
    case KeyAction::ShiftDown:
    case KeyAction::ShiftZero: {
        const int now = vsbPassbandshift->value();
        const int v = row.action == KeyAction::ShiftZero ? 0
            : row.action == KeyAction::ShiftUp       ? nrdpanel::pbs545Up(now)
                                                     : nrdpanel::pbs545Down(now);
        barKey(vsbPassbandshift, v, [this](int16_t x) { NRD545A->setPassBandShift(x); });
        return;
    }
    case KeyAction::VolumeUp:
    case KeyAction::VolumeDown:
    case KeyAction::VolumeZero: {
        const int now = vsbVolume->value();
        const int v = row.action == KeyAction::VolumeZero ? 0
            : row.action == KeyAction::VolumeUp       ? nrdpanel::volume545Up(now)
                                                      : nrdpanel::volume545Down(now);
        barKey(vsbVolume, v, [this](int16_t x) { NRD545A->setVolume(x); });
        return;
    }
    default:
        break;
    }
    const int now = vsbBandwidthcontrol->value();
    int v = -1;
    if (nrdpanel::isNrdKey(row.action, NrdKey::BwcLowest))
        v = nrdpanel::kBwc545KeyLowest;
    else if (nrdpanel::isNrdKey(row.action, NrdKey::BwcDown))
        v = nrdpanel::bwc545Down(now);
    else if (nrdpanel::isNrdKey(row.action, NrdKey::BwcUp))
        v = nrdpanel::bwc545Up(now);
    else if (nrdpanel::isNrdKey(row.action, NrdKey::BwcHighest))
        v = nrdpanel::kBwc545KeyHighest;
    if (v >= 0)
        barKey(vsbBandwidthcontrol, v, [this](int16_t x) { NRD545A->setBandwidthcontrol(x); });
}

bool frmNRD545::eventFilter(QObject *watched, QEvent *event)
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
