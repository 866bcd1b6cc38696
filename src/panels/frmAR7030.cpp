#include "frmAR7030.h"
#include "core/frmWelcome.h"
#include "core/numtext.h"
#include "drivers/ar7030_tables.h"
#include "drivers/clsAR7030.h"
#include "drivers/model_tables.h"
#include "memory/mem_record.h"
#include "serial/comm_line.h"
#include "ui/facades.h"
#include "ui/widgets/spin_button.h"

#include <QAction>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <QVBoxLayout>

frmAR7030::frmAR7030(QWidget *parent) : frmPanelBase(Win::frmAR7030, rxAR7030, true, parent)
{
    buildPanel();
    buildMenu({});
    wireMenu(QStringLiteral("mnuUpdate"), [this] { mnuUpdate_Click(); });
    wireMenu(QStringLiteral("mnuResetRX"), [this] { mnuResetRX_Click(); });
    wireMenu(QStringLiteral("mnuFirmware"), [this] { mnuFirmware_Click(); });
    wireMenu(QStringLiteral("mnuEnableLLLR"), [this] { mnuEnableLLLR_Click(); });
    wireMenu(QStringLiteral("mnuDisableLLLR"), [this] { mnuDisableLLLR_Click(); });
    wireMenu(QStringLiteral("mnuPowerOn"), [this] { mnuPowerOn_Click(); });
    wireMenu(QStringLiteral("mnuPowerOff"), [this] { mnuPowerOff_Click(); });
    finishMenu();
    connectCommon();
    connectControls();
    applyLook();
}

frmAR7030::~frmAR7030() = default;

frmAR7030 *frmAR7030::open()
{
    auto *p = new frmAR7030;
    return loadOrAbandon(p, [p] { p->AR7030A.reset(); });
}

// --- the face ---

void frmAR7030::buildPanel()
{
    auto *face = new QWidget(this);
    face->setObjectName(QStringLiteral("panelFace"));
    face->setMouseTracking(true);
    setCentralWidget(face);

    QWidget *display = buildDisplay();
    lblAttenuator = addStatus("lblAttenuator", tr("RF dB"));
    displayStatus->addStretch(1);
    cmdPowerOnOff = makeButton(QStringLiteral("cmdPowerOnOff"), QStringLiteral("OFF"), face);
    cmdPowerOnOff->setToolTip(tr("Switch the receiver on or off"));
    cmdPowerOnOff->setMinimumSize(64, 40);

    static const char *const modes[] = {"AM", "Sync", "NFM", "Data", "CW", "LSB", "USB"};
    QList<QPushButton *> modeButtons, bwButtons, agcButtons, attButtons;
    for (int i = 0; i < 7; ++i)
        modeButtons << (cmdMode[size_t(i)] = makeButton(QStringLiteral("cmdMode_%1").arg(i), QLatin1String(modes[i]), face));
    for (int i = 0; i < 6; ++i)
        bwButtons << (cmdBandwidth[size_t(i)] = makeButton(QStringLiteral("cmdBandwidth_%1").arg(i), QString(), face));
    static const char *const agc[] = {"Fst", "Med", "Slw", "Off"};
    for (int i = 0; i < 4; ++i)
        agcButtons << (cmdAgcspeed[size_t(i)] = makeButton(QStringLiteral("cmdAgcspeed_%1").arg(i), QLatin1String(agc[i]), face));
    static const char *const att[] = {"+10", "0", "-10", "-20", "-30", "-40"};
    for (int i = 0; i < 6; ++i)
        attButtons << (cmdAttenuator[size_t(i)] = makeButton(QStringLiteral("cmdAttenuator_%1").arg(i), QLatin1String(att[i]), face));

    const Fader vol = makeFader("vsbVolume", "lblVolume", tr("Volume"), 0, 99, 1, 10, true);
    const Fader bass = makeFader("vsbBass", "lblBass", tr("Bass"), -8, 8, 1, 2, true);
    const Fader treble = makeFader("vsbTreble", "lblTreble", tr("Treble"), -8, 8, 1, 2, true);
    const Fader lineL = makeFader("vsbLineL", "lblLineL", tr("Line L"), 0, 99, 1, 10, true);
    const Fader lineR = makeFader("vsbLineR", "lblLineR", tr("Line R"), 0, 99, 1, 10, true);
    const Fader ifg = makeFader("vsbIfgain", "lblIfgain", tr("IF gain"), 0, 99, 1, 10, false);
    const Fader sql = makeFader("vsbSquelch", "lblSquelch", tr("Squelch"), 0, 99, 1, 10, false);
    const Fader pbs = makeFader("vsbPassbandshift", "lblPassbandshift", tr("PBS"), -panel::kShiftBarLimit,
                                panel::kShiftBarLimit, 1, 6, true);
    const Fader bfo = makeFader("vsbBeatfreqosc", "lblBeatfreqosc", tr("BFO"), -panel::kShiftBarLimit,
                                panel::kShiftBarLimit, 1, 6, true);
    vsbVolume = vol.bar, lblVolume = vol.label;
    vsbBass = bass.bar, lblBass = bass.label;
    vsbTreble = treble.bar, lblTreble = treble.label;
    vsbLineL = lineL.bar, lblLineL = lineL.label;
    vsbLineR = lineR.bar, lblLineR = lineR.label;
    vsbIfgain = ifg.bar, lblIfgain = ifg.label;
    vsbSquelch = sql.bar, lblSquelch = sql.label;
    vsbPassbandshift = pbs.bar, lblPassbandshift = pbs.label;
    vsbBeatfreqosc = bfo.bar, lblBeatfreqosc = bfo.label;

    lblMute = new ClickLabel(QStringLiteral("Mute"), face);
    lblMute->setObjectName(QStringLiteral("lblMute"));
    cmdClose = makeButton(QStringLiteral("cmdClose"), QStringLiteral("Close"), face);
    cmdClose->setMinimumWidth(90);

    // Top: the display beside the power switch, the keypad on the right.
    auto *displayRow = new QHBoxLayout;
    displayRow->addWidget(display, 1);
    auto *power = new QVBoxLayout;
    auto *powerCap = new QLabel(tr("Power"), face);
    powerCap->setProperty("role", "caption");
    powerCap->setAlignment(Qt::AlignHCenter);
    power->addStretch(1);
    power->addWidget(powerCap);
    power->addWidget(cmdPowerOnOff);
    power->addStretch(1);
    displayRow->addLayout(power);

    auto *left = new QVBoxLayout;
    left->addLayout(displayRow);
    left->addWidget(buildTuning());
    auto *settingsRow1 = new QHBoxLayout;
    settingsRow1->addWidget(buttonGroup(tr("Mode"), modeButtons), 7);
    settingsRow1->addWidget(buttonGroup(tr("Filter (kHz)"), bwButtons), 6);
    left->addLayout(settingsRow1);
    auto *settingsRow2 = new QHBoxLayout;
    settingsRow2->addWidget(buttonGroup(tr("AGC"), agcButtons), 4);
    settingsRow2->addWidget(buttonGroup(tr("Attenuator (dB)"), attButtons), 6);
    left->addLayout(settingsRow2);

    auto *audio = new QGroupBox(tr("Audio"), face);
    auto *audioRow = new QHBoxLayout(audio);
    for (const Fader &f : {vol, bass, treble, lineL, lineR})
        audioRow->addWidget(f.box);
    auto *muteCol = new QVBoxLayout;
    muteCol->addStretch(1);
    muteCol->addWidget(lblMute);
    muteCol->addStretch(1);
    audioRow->addSpacing(6);
    audioRow->addLayout(muteCol);
    auto *ifBox = new QGroupBox(tr("IF"), face);
    auto *ifRow = new QHBoxLayout(ifBox);
    for (const Fader &f : {ifg, sql, pbs, bfo})
        ifRow->addWidget(f.box);
    auto *bottom = new QHBoxLayout;
    bottom->addWidget(audio, 6);
    bottom->addWidget(ifBox, 4);
    left->addLayout(bottom, 1);

    arrangeFace(face, left, buildKeypad(),
                {keyHints({{QStringLiteral("\u2191 \u2193 \u2190 \u2192"), tr("step")},
                           {QStringLiteral("Ctrl+0\u20269 ."), tr("keypad")},
                           {QStringLiteral("Ctrl+F M S"), tr("enter")},
                           {QStringLiteral("Ctrl+G"), tr("GO / Stop")},
                           {QStringLiteral("Shift+F1\u2026F6"), tr("filter")},
                           {QStringLiteral("Shift+ASFDCLU"), tr("mode")},
                           {QStringLiteral("Shift+= - 0"), tr("PBS")},
                           {QStringLiteral("Alt+= - 0"), tr("volume")},
                           {tr("Wheel"), tr("over the frequency")}})});
}

void frmAR7030::connectControls()
{
    connect(cmdPowerOnOff, &QPushButton::clicked, this, guarded(guard_, [this] { cmdPowerOnOff_Click(); }));
    for (int i = 0; i < 7; ++i)
        connect(cmdMode[size_t(i)], &QPushButton::clicked, this, guarded(guard_, [this, i] { cmdMode_Click(i); }));
    for (int i = 0; i < 6; ++i)
        connect(cmdBandwidth[size_t(i)], &QPushButton::clicked, this, guarded(guard_, [this, i] { cmdBandwidth_Click(i); }));
    for (int i = 0; i < 4; ++i)
        connect(cmdAgcspeed[size_t(i)], &QPushButton::clicked, this, guarded(guard_, [this, i] { cmdAgcspeed_Click(i); }));
    for (int i = 0; i < 6; ++i)
        connect(cmdAttenuator[size_t(i)], &QPushButton::clicked, this, guarded(guard_, [this, i] { cmdAttenuator_Click(i); }));
    connect(vsbVolume, &QSlider::valueChanged, this, guarded(guard_, [this] { vsbVolume_Change(); }));
    connect(vsbBass, &QSlider::valueChanged, this, guarded(guard_, [this] { vsbBass_Change(); }));
    connect(vsbTreble, &QSlider::valueChanged, this, guarded(guard_, [this] { vsbTreble_Change(); }));
    connect(vsbIfgain, &QSlider::valueChanged, this, guarded(guard_, [this] { vsbIfgain_Change(); }));
    connect(vsbLineL, &QSlider::valueChanged, this, guarded(guard_, [this] { vsbLineL_Change(); }));
    connect(vsbLineR, &QSlider::valueChanged, this, guarded(guard_, [this] { vsbLineR_Change(); }));
    connect(vsbSquelch, &QSlider::valueChanged, this, guarded(guard_, [this] { vsbSquelch_Change(); }));
    connect(vsbPassbandshift, &QSlider::valueChanged, this, guarded(guard_, [this] { vsbPassbandshift_Change(); }));
    connect(vsbBeatfreqosc, &QSlider::valueChanged, this, guarded(guard_, [this] { vsbBeatfreqosc_Change(); }));
}

void frmAR7030::connectDriver()
{
    clsAR7030 *d = AR7030A.get();
    connect(d, &clsAR7030::PoweronoffChanged, this, &frmAR7030::AR7030A_PoweronoffChanged);
    connect(d, &clsAR7030::AttenuatorChanged, this, &frmAR7030::AR7030A_AttenuatorChanged);
    connect(d, &clsAR7030::BandwidthChanged, this, &frmAR7030::AR7030A_BandwidthChanged);
    connect(d, &clsAR7030::ModeChanged, this, &frmAR7030::AR7030A_ModeChanged);
    connect(d, &clsAR7030::AgcspeedChanged, this, &frmAR7030::AR7030A_AgcspeedChanged);
    connect(d, &clsAR7030::FrequencyAChanged, this, &frmAR7030::AR7030A_FrequencyAChanged);
    connect(d, &clsAR7030::VolumeChanged, this, &frmAR7030::AR7030A_VolumeChanged);
    connect(d, &clsAR7030::LeftauxlevelChanged, this, &frmAR7030::AR7030A_LeftauxlevelChanged);
    connect(d, &clsAR7030::RightauxlevelChanged, this, &frmAR7030::AR7030A_RightauxlevelChanged);
    connect(d, &clsAR7030::BassChanged, this, &frmAR7030::AR7030A_BassChanged);
    connect(d, &clsAR7030::TrebleChanged, this, &frmAR7030::AR7030A_TrebleChanged);
    connect(d, &clsAR7030::PassbandshiftChanged, this, &frmAR7030::AR7030A_PassbandshiftChanged);
    connect(d, &clsAR7030::BeatfreqoscChanged, this, &frmAR7030::AR7030A_BeatfreqoscChanged);
    connect(d, &clsAR7030::SquelchChanged, this, &frmAR7030::AR7030A_SquelchChanged);
    connect(d, &clsAR7030::IfgainChanged, this, &frmAR7030::AR7030A_IfgainChanged);
}

// --- load and unload ---

void frmAR7030::Form_Load()
{
    beginLoad();
    labelRoutineAR7030(); // limits, memory size, label tables; filterTable holds 1..6
    AR7030A = std::make_unique<clsAR7030>(comm());
    connectDriver();
    registerOpen();
    fillStepCombo();
    comm().setCommPort(numtext::cint(slotCommPort()));
    comm().setSettings(QLatin1String(serialFor(rxAR7030).settings));
    comm().setPortOpen(true);
    for (int n = 1; n <= 6; ++n) {
        int16_t width = int16_t(n);
        QString text;
        AR7030A->Installedfilter(width, text);
        filterTable[n] = text;
        QPushButton *b = cmdBandwidth[size_t(n - 1)];
        if (numtext::Val(text) <= 0) {
            b->setEnabled(false);
            b->setText(QStringLiteral("\u2013"));
            b->setToolTip(tr("Filter %1 is not fitted").arg(n));
            b->setAccessibleName(b->toolTip()); // the dash alone says nothing
        } else {
            b->setEnabled(true);
            b->setText(text);
            b->setAccessibleName(QString());
            b->setToolTip(tr("Filter %1, %2 kHz (Shift+F%1)").arg(n).arg(text));
        }
    }
    rxFirmware = ar7030FirmwareNumber(AR7030A->Firmware());
    setStartStep();
    AR7030A->setLeftauxlevel(numtext::cint(slotLevelL()));
    AR7030A->setRightauxlevel(numtext::cint(slotLevelR()));
    if (slotDisableLLLR() == 1)
        mnuDisableLLLR_Click();
    AR7030A_PoweronoffChanged(AR7030A->PowerOnOff());
    RxUpdatefull();
    endLoad();
}

void frmAR7030::Form_Unload()
{
    unloadCommon(true, [this] { AR7030A.reset(); });
}

void frmAR7030::RxUpdatefull()
{
    // Each read lets other handlers run; one of them may end the panel.
    QPointer<frmAR7030> self(this);
    auto alive = [&] { return self && AR7030A && !stopping(); };
    if (alive()) AR7030A_AttenuatorChanged(AR7030A->Attenuator());
    if (alive()) AR7030A_BandwidthChanged(AR7030A->Bandwidth());
    if (alive()) AR7030A_AgcspeedChanged(AR7030A->Agcspeed());
    if (alive()) AR7030A_ModeChanged(AR7030A->Mode());
    if (alive()) AR7030A_FrequencyAChanged(AR7030A->FrequencyA());
    if (alive()) AR7030A_VolumeChanged(AR7030A->Volume());
    if (alive()) AR7030A_BassChanged(AR7030A->Bass());
    if (alive()) AR7030A_TrebleChanged(AR7030A->Treble());
    if (alive()) AR7030A_LeftauxlevelChanged(AR7030A->Leftauxlevel());
    if (alive()) AR7030A_RightauxlevelChanged(AR7030A->Rightauxlevel());
    if (alive()) AR7030A_PassbandshiftChanged(AR7030A->PassBandShift());
    if (alive()) AR7030A_IfgainChanged(AR7030A->Ifgain());
    if (alive()) AR7030A_SquelchChanged(AR7030A->Squelch());
    if (alive()) AR7030A_BeatfreqoscChanged(AR7030A->Beatfreqosc());
}

// --- the receiver's buttons and bars ---

void frmAR7030::cmdPowerOnOff_Click()
{
    if (AR7030A)
        AR7030A->setPowerOnOff(powerOn_ ? 0 : 1);
}

void frmAR7030::cmdMode_Click(int index)
{
    if (!AR7030A)
        return;
    AR7030A->setMode(int16_t(index + 1));
    // A new mode brings back the receiver's own settings for it.
    RxUpdatefull();
}

void frmAR7030::cmdBandwidth_Click(int index)
{
    if (!AR7030A)
        return;
    int16_t v = int16_t(index + 1);
    AR7030A->setBandwidth(v);
}

void frmAR7030::cmdAgcspeed_Click(int index)
{
    if (AR7030A)
        AR7030A->setAgcspeed(int16_t(index));
}

void frmAR7030::cmdAttenuator_Click(int index)
{
    if (AR7030A)
        AR7030A->setAttenuator(int16_t(index));
}

void frmAR7030::vsbVolume_Change()
{
    if (AR7030A)
        AR7030A->setVolume(int16_t(vsbVolume->value()));
}

void frmAR7030::vsbBass_Change()
{
    if (AR7030A)
        AR7030A->setBass(int16_t(vsbBass->value()));
}

void frmAR7030::vsbTreble_Change()
{
    if (AR7030A)
        AR7030A->setTreble(int16_t(vsbTreble->value()));
}

void frmAR7030::vsbIfgain_Change()
{
    if (AR7030A)
        AR7030A->setIfgain(int16_t(vsbIfgain->value()));
}

void frmAR7030::vsbLineL_Change()
{
    if (AR7030A)
        AR7030A->setLeftauxlevel(int16_t(vsbLineL->value()));
}

void frmAR7030::vsbLineR_Change()
{
    if (AR7030A)
        AR7030A->setRightauxlevel(int16_t(vsbLineR->value()));
}

void frmAR7030::vsbSquelch_Change()
{
    if (AR7030A)
        AR7030A->setSquelch(int16_t(panel::sql2b(vsbSquelch->value())));
}

void frmAR7030::vsbPassbandshift_Change()
{
    if (AR7030A)
        AR7030A->setPassBandShift(int16_t(panel::vsb2b(vsbPassbandshift->value())));
}

void frmAR7030::vsbBeatfreqosc_Change()
{
    if (AR7030A)
        AR7030A->setBeatfreqosc(int16_t(panel::vsb2b(vsbBeatfreqosc->value())));
}

// --- what the receiver reports ---

void frmAR7030::AR7030A_PoweronoffChanged(int v)
{
    powerOn_ = v == 1;
    cmdPowerOnOff->setText(powerOn_ ? QStringLiteral("ON") : QStringLiteral("OFF"));
    markActive({cmdPowerOnOff}, powerOn_ ? 0 : -1);
}

void frmAR7030::AR7030A_AttenuatorChanged(int v)
{
    lblAttenuator->setText(panel::attenuatorText(v));
    markActive({cmdAttenuator.begin(), cmdAttenuator.end()}, v);
}

void frmAR7030::AR7030A_BandwidthChanged(int v)
{
    lblBandwidth->setText(panel::tableText(filterTable, v, 1, 6));
    markActive({cmdBandwidth.begin(), cmdBandwidth.end()}, v - 1);
}

void frmAR7030::AR7030A_ModeChanged(int v)
{
    lblMode->setText(panel::tableText(modeTable, v, 1, 7));
    markActive({cmdMode.begin(), cmdMode.end()}, v - 1);
}

void frmAR7030::AR7030A_AgcspeedChanged(int v)
{
    lblAgcspeed->setText(panel::tableText(agcTable, v, 0, 3));
    markActive({cmdAgcspeed.begin(), cmdAgcspeed.end()}, v);
}

void frmAR7030::AR7030A_FrequencyAChanged(double khz) { showFrequency(khz); }

void frmAR7030::showLevel(QAbstractSlider *bar, QLabel *label, int v)
{
    if (v >= 0 && v <= 99) {
        setBarQuietly(bar, v);
        label->setText(panel::levelText(v));
    } else {
        label->setText(QStringLiteral("?"));
    }
}

void frmAR7030::AR7030A_VolumeChanged(int v) { showLevel(vsbVolume, lblVolume, v); }
void frmAR7030::AR7030A_LeftauxlevelChanged(int v) { showLevel(vsbLineL, lblLineL, v); }
void frmAR7030::AR7030A_RightauxlevelChanged(int v) { showLevel(vsbLineR, lblLineR, v); }

void frmAR7030::AR7030A_BassChanged(int v)
{
    setBarQuietly(vsbBass, v);
    lblBass->setText(QString::number(v));
}

void frmAR7030::AR7030A_TrebleChanged(int v)
{
    setBarQuietly(vsbTreble, v);
    lblTreble->setText(QString::number(v));
}

void frmAR7030::AR7030A_PassbandshiftChanged(int v)
{
    setBarQuietly(vsbPassbandshift, panel::b2vsb(v));
    lblPassbandshift->setText(panel::b2fs(v));
}

void frmAR7030::AR7030A_BeatfreqoscChanged(int v)
{
    setBarQuietly(vsbBeatfreqosc, panel::b2vsb(v));
    lblBeatfreqosc->setText(panel::b2fs(v));
}

void frmAR7030::AR7030A_SquelchChanged(int v)
{
    setBarQuietly(vsbSquelch, panel::b2sqlBar(v));
    lblSquelch->setText(panel::b2sql(v));
}

void frmAR7030::AR7030A_IfgainChanged(int v)
{
    setBarQuietly(vsbIfgain, v);
    lblIfgain->setText(QString::number(v));
}

// --- the menu ---

void frmAR7030::mnuUpdate_Click() { RxUpdatefull(); }

void frmAR7030::mnuResetRX_Click()
{
    if (AR7030A)
        AR7030A->Reset();
}

void frmAR7030::mnuFirmware_Click()
{
    if (AR7030A)
        ui::MsgBox(AR7030A->Firmware(), ui::vbOKOnly, QStringLiteral("Firmware Version"));
}

void frmAR7030::mnuEnableLLLR_Click()
{
    vsbLineL->setEnabled(true);
    vsbLineR->setEnabled(true);
    slotDisableLLLR() = 0;
}

void frmAR7030::mnuDisableLLLR_Click()
{
    vsbLineL->setEnabled(false);
    vsbLineR->setEnabled(false);
    slotDisableLLLR() = 1;
}

void frmAR7030::mnuPowerOn_Click()
{
    if (AR7030A)
        AR7030A->setPowerOnOff(1);
}

void frmAR7030::mnuPowerOff_Click()
{
    if (AR7030A)
        AR7030A->setPowerOnOff(0);
}

// --- what the shared parts ask of the model ---

void frmAR7030::writeFrequency(double khz)
{
    if (AR7030A)
        AR7030A->setFrequencyA(khz);
}

void frmAR7030::enterMemory(int n)
{
    if (!AR7030A)
        return;
    const QString rec = AR7030A->Memory(int16_t(n));
    if (AR7030A && !isVacantMemRecord(rec)) {
        auto field = [&](memfield::Field f) { return numtext::Val(memField(rec, f)); };
        const auto mode = numtext::toInt16(field(memfield::mode));
        AR7030A->setFrequencyA(field(memfield::frequency) / 1000);
        AR7030A->setMode(mode);
        int16_t bw = numtext::toInt16(field(memfield::bandwidth));
        AR7030A->setBandwidth(bw);
        AR7030A->setPassBandShift(numtext::toInt16(field(memfield::pbs)));
        // In data and CW the cell's last byte is the BFO, otherwise the squelch.
        if (mode == 4 || mode == 5)
            AR7030A->setBeatfreqosc(numtext::toInt16(field(memfield::sqlBfo)));
        else
            AR7030A->setSquelch(numtext::toInt16(field(memfield::sqlBfo)));
    }
    RxUpdatefull();
}

void frmAR7030::keyAction(const panel::KeyRow &row)
{
    using panel::KeyAction;
    if (!AR7030A)
        return;
    switch (row.action) {
    case KeyAction::Bandwidth:
        cmdBandwidth[size_t(row.arg)]->click(); // an unfitted filter's button is disabled: nothing
        break;
    case KeyAction::Mode:
        cmdMode[size_t(row.arg)]->click();
        break;
    case KeyAction::ShiftUp:
    case KeyAction::ShiftDown:
    case KeyAction::ShiftZero: {
        const int v = row.action == KeyAction::ShiftZero ? 0
            : panel::nudged(vsbPassbandshift->value(), row.action == KeyAction::ShiftUp ? 1 : -1,
                            -panel::kShiftBarLimit, panel::kShiftBarLimit);
        setBarQuietly(vsbPassbandshift, v);
        vsbPassbandshift_Change();
        break;
    }
    case KeyAction::VolumeUp:
    case KeyAction::VolumeDown:
    case KeyAction::VolumeZero: {
        const int v = row.action == KeyAction::VolumeZero ? 0
            : panel::nudged(vsbVolume->value(), row.action == KeyAction::VolumeUp ? 5 : -5, 0, vsbVolume->maximum());
        setBarQuietly(vsbVolume, v);
        vsbVolume_Change();
        break;
    }
    default:
        break;
    }
}

std::vector<frmPanelBase::MuteBar> frmAR7030::muteBars() const
{
    std::vector<MuteBar> bars{{vsbVolume, lblVolume}};
    if (slotDisableLLLR() == 0) {
        bars.push_back({vsbLineL, lblLineL});
        bars.push_back({vsbLineR, lblLineR});
    }
    return bars;
}
