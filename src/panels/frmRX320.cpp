#include "frmRX320.h"
#include "core/frmWelcome.h"
#include "core/numtext.h"
#include "core/textfile.h"
#include "drivers/clsRX320.h"
#include "drivers/model_tables.h"
#include "memory/mem_record.h"
#include "serial/comm_line.h"
#include "ui/facades.h"
#include "ui/widgets/form_position.h"

#include <QAction>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <QVBoxLayout>

frmRX320::frmRX320(QWidget *parent) : frmPanelBase(Win::frmRX320, rxRX320, true, parent)
{
    buildPanel();
    buildMenu({QStringLiteral("mnuUpdate"), QStringLiteral("mnuResetRX"), QStringLiteral("mnuPowerOn"),
               QStringLiteral("mnuPowerOff"), QStringLiteral("mnuEnableLLLR"), QStringLiteral("mnuDisableLLLR")},
              {{QStringLiteral("mnuMaqrkfreqs"), {QStringLiteral("mnuMarkfreqs"), QStringLiteral("Mark freqs . . . ")}},
               {QStringLiteral("mnuScratchpad"), {QStringLiteral("mnuSratchpad"), QStringLiteral("Freq Scratchpad . . .")}}},
              {{QStringLiteral("mnuSratchpad"), QStringLiteral("mnuEnableLine"), QStringLiteral("Enable Line Out")},
               {QStringLiteral("mnuSratchpad"), QStringLiteral("mnuDisableLine"), QStringLiteral("Disable Line out")}});
    wireMenu(QStringLiteral("mnuFirmware"), [this] { mnuFirmware_Click(); });
    wireMenu(QStringLiteral("mnuEnableLine"), [this] { mnuEnableLine_Click(); });
    wireMenu(QStringLiteral("mnuDisableLine"), [this] { mnuDisableLine_Click(); });
    // "Set RX Clock" stays, disabled: this receiver has no clock.
    finishMenu();
    connectCommon();
    connectControls();
    applyLook();
}

frmRX320::~frmRX320() = default;

frmRX320 *frmRX320::open()
{
    auto *p = new frmRX320;
    return loadOrAbandon(p, [p] { p->RX320A.reset(); });
}

// --- the face ---

void frmRX320::buildPanel()
{
    auto *face = new QWidget(this);
    face->setObjectName(QStringLiteral("panelFace"));
    face->setMouseTracking(true);
    setCentralWidget(face);

    QWidget *display = buildDisplay();
    displayStatus->addStretch(1);

    static const char *const modes[] = {"AM", "USB", "LSB", "CW"};
    static const char *const agc[] = {"Slw", "Med", "Fst"};
    // The groups by the widths they hold, widest first.
    static const char16_t *const ranges[] = {u"8000\u20134200", u"3900\u20132100", u"1950\u20131050", u"900\u2013300"};
    QList<QPushButton *> modeButtons, agcButtons, rangeButtons, groupButtons;
    for (int i = 0; i < 4; ++i)
        modeButtons << (cmdMode[size_t(i)] = makeButton(QStringLiteral("cmdMode_%1").arg(i), QLatin1String(modes[i]), face));
    for (int i = 0; i < 3; ++i)
        agcButtons << (cmdAgcspeed[size_t(i)] = makeButton(QStringLiteral("cmdAgcspeed_%1").arg(i), QLatin1String(agc[i]), face));
    for (int i = 0; i < rx320panel::kGroups; ++i) {
        rangeButtons << (cmdBwrange[size_t(i)] = makeButton(QStringLiteral("cmdBwrange_%1").arg(i), QString::fromUtf16(ranges[i]), face));
        cmdBwrange[size_t(i)]->setToolTip(tr("Show the filters of this group (Shift+F%1)").arg(4 - i));
    }
    for (int i = 0; i < rx320panel::kGroupButtons; ++i)
        groupButtons << (cmdBwgroup[size_t(i)] = makeButton(QStringLiteral("cmdBwgroup_%1").arg(i), QString(), face));

    const Fader vol = makeFader("vsbVolume", "lblVolume", tr("Volume"), 0, 99, 2, 10, true);
    const Fader line = makeFader("vsbLinelevel", "lblLinelevel", tr("Line"), 0, 99, 2, 10, true);
    const Fader pbs = makeFader("vsbPassbandshift", "lblPassbandshift", tr("PBS Hz"), -2000, 2000, 50, 200, true);
    const Fader bfo = makeFader("vsbBeatfreqosc", "lblBeatfreqosc", tr("BFO Hz"), -3000, 3000, 50, 300, true);
    vsbVolume = vol.bar, lblVolume = vol.label;
    vsbLinelevel = line.bar, lblLinelevel = line.label;
    vsbPassbandshift = pbs.bar, lblPassbandshift = pbs.label;
    vsbBeatfreqosc = bfo.bar, lblBeatfreqosc = bfo.label;

    lblMute = new ClickLabel(QStringLiteral("Mute"), face);
    lblMute->setObjectName(QStringLiteral("lblMute"));
    cmdClose = makeButton(QStringLiteral("cmdClose"), QStringLiteral("Close"), face);
    cmdClose->setMinimumWidth(90);

    auto *left = new QVBoxLayout;
    left->addWidget(display);
    left->addWidget(buildTuning());
    auto *row1 = new QHBoxLayout;
    row1->addWidget(buttonGroup(tr("Mode"), modeButtons), 4);
    row1->addWidget(buttonGroup(tr("AGC"), agcButtons), 3);
    left->addLayout(row1);
    auto *filters = new QGroupBox(tr("Filter (Hz)"), face);
    auto *fcol = new QVBoxLayout(filters);
    fcol->setContentsMargins(6, 8, 6, 6);
    auto *rangeRow = new QHBoxLayout;
    for (QPushButton *b : rangeButtons) {
        b->setParent(filters);
        rangeRow->addWidget(b);
    }
    auto *groupRow = new QHBoxLayout;
    groupRow->setSpacing(4);
    for (QPushButton *b : groupButtons) {
        b->setParent(filters);
        b->setMinimumWidth(46);
        groupRow->addWidget(b);
    }
    fcol->addLayout(rangeRow);
    fcol->addLayout(groupRow);
    left->addWidget(filters);

    auto *audio = new QGroupBox(tr("Audio"), face);
    auto *audioRow = new QHBoxLayout(audio);
    audioRow->addWidget(vol.box);
    audioRow->addWidget(line.box);
    auto *muteCol = new QVBoxLayout;
    muteCol->addStretch(1);
    muteCol->addWidget(lblMute);
    muteCol->addStretch(1);
    audioRow->addSpacing(6);
    audioRow->addLayout(muteCol);
    auto *ifBox = new QGroupBox(tr("IF"), face);
    auto *ifRow = new QHBoxLayout(ifBox);
    ifRow->addWidget(pbs.box);
    ifRow->addWidget(bfo.box);
    auto *bottom = new QHBoxLayout;
    bottom->addWidget(audio, 1);
    bottom->addWidget(ifBox, 1);
    left->addLayout(bottom, 1);

    arrangeFace(face, left, buildKeypad(),
                {keyHints({{QStringLiteral("\u2191 \u2193 \u2190 \u2192"), tr("step")},
                           {QStringLiteral("Ctrl+0\u20269 ."), tr("keypad")},
                           {QStringLiteral("Ctrl+F M S"), tr("enter")},
                           {QStringLiteral("Ctrl+G"), tr("GO / Stop")},
                           {QStringLiteral("Shift+F1\u2026F4"), tr("filter group")},
                           {QStringLiteral("Shift+F5\u2026F8"), tr("filter")},
                           {QStringLiteral("Shift+AULC"), tr("mode")},
                           {QStringLiteral("Shift+= - 0"), tr("PBS")},
                           {QStringLiteral("Alt+= - 0"), tr("volume")},
                           {tr("Wheel"), tr("over the frequency")}})});
}

void frmRX320::connectControls()
{
    for (int i = 0; i < 4; ++i)
        connect(cmdMode[size_t(i)], &QPushButton::clicked, this, guarded(guard_, [this, i] { cmdMode_Click(i); }));
    for (int i = 0; i < 3; ++i)
        connect(cmdAgcspeed[size_t(i)], &QPushButton::clicked, this, guarded(guard_, [this, i] { cmdAgcspeed_Click(i); }));
    for (int i = 0; i < rx320panel::kGroups; ++i)
        connect(cmdBwrange[size_t(i)], &QPushButton::clicked, this, guarded(guard_, [this, i] { cmdBwrange_Click(i); }));
    for (int i = 0; i < rx320panel::kGroupButtons; ++i)
        connect(cmdBwgroup[size_t(i)], &QPushButton::clicked, this, guarded(guard_, [this, i] { cmdBwgroup_Click(i); }));
    connect(vsbVolume, &QSlider::valueChanged, this, guarded(guard_, [this] { vsbVolume_Change(); }));
    connect(vsbLinelevel, &QSlider::valueChanged, this, guarded(guard_, [this] { vsbLinelevel_Change(); }));
    connect(vsbPassbandshift, &QSlider::valueChanged, this, guarded(guard_, [this] { vsbPassbandshift_Change(); }));
    connect(vsbBeatfreqosc, &QSlider::valueChanged, this, guarded(guard_, [this] { vsbBeatfreqosc_Change(); }));
}

void frmRX320::connectDriver()
{
    clsRX320 *d = RX320A.get();
    connect(d, &clsRX320::FrequencyAChanged, this, &frmRX320::RX320A_FrequencyAChanged);
    connect(d, &clsRX320::BandwidthChanged, this, &frmRX320::RX320A_BandwidthChanged);
    connect(d, &clsRX320::ModeChanged, this, &frmRX320::RX320A_ModeChanged);
    connect(d, &clsRX320::AgcspeedChanged, this, &frmRX320::RX320A_AgcspeedChanged);
    connect(d, &clsRX320::VolumeChanged, this, &frmRX320::RX320A_VolumeChanged);
    connect(d, &clsRX320::LinelevelChanged, this, &frmRX320::RX320A_LinelevelChanged);
    connect(d, &clsRX320::PassbandshiftChanged, this, &frmRX320::RX320A_PassbandshiftChanged);
    connect(d, &clsRX320::BeatfreqoscChanged, this, &frmRX320::RX320A_BeatfreqoscChanged);
}

// --- load and unload ---

void frmRX320::Form_Load()
{
    beginLoad();
    labelRoutineRX320(); // limits, memory size, the 34 filter widths, modes, AGC
    groups_ = rx320panel::makeFilterGroups();
    fillStepCombo();
    RX320A = std::make_unique<clsRX320>(comm());
    connectDriver();
    registerOpen();
    comm().setCommPort(numtext::cint(slotCommPort()));
    comm().setSettings(QLatin1String(serialFor(rxRX320).settings));
    comm().setPortOpen(true);
    setStartStep();
    RX320A->setLinelevel(numtext::cint(slotLevel()));
    if (slotDisableLL() == 1)
        mnuDisableLine_Click();

    const rx320panel::Settings s =
        rx320panel::readSettings(textfile::readAll(dirPath + QLatin1String(rx320panel::kSettingsFile)));
    rx320panel::setSharedSettings(s);
    // Sent in this order: the filter and the mode re-tune with what is already stored.
    int16_t bw = s.bandwidth;
    RX320A->setBandwidth(bw);
    RX320A->setAgcspeed(s.agc);
    RX320A->setVolume(s.volume);
    RX320A->setLinelevel(s.line);
    RX320A->setMode(s.mode);
    RX320A->setPassBandShift(s.pbs);
    RX320A->setBeatfreqosc(s.bfo);
    RX320A->setFrequencyA(s.freq);
    cmdBwrange_Click(rx320panel::groupOf(groups_, s.bandwidth));
    endLoad();
}

void frmRX320::Form_Unload()
{
    storeAtUnload(this, win_);
    textfile::writeAtomically(dirPath + QLatin1String(rx320panel::kSettingsFile),
                              rx320panel::settingsText(rx320panel::sharedSettings()));
    // After the file: it keeps the levels the listener had.
    if (RX320A && slotMute(0) == 1)
        RX320A->setVolume(0);
    if (RX320A && slotMute(1) == 1)
        RX320A->setLinelevel(0);
    unloadCommon(true, [this] { RX320A.reset(); });
}

// --- buttons and bars ---

void frmRX320::cmdMode_Click(int index)
{
    if (RX320A)
        RX320A->setMode(int16_t(index));
}

void frmRX320::cmdAgcspeed_Click(int index)
{
    if (RX320A)
        RX320A->setAgcspeed(int16_t(index + 1));
}

void frmRX320::cmdBwrange_Click(int group)
{
    if (group < 0 || group >= rx320panel::kGroups)
        return;
    group_ = group;
    const auto &filters = groups_.filter[size_t(group)];
    for (int i = 0; i < rx320panel::kGroupButtons; ++i) {
        QPushButton *b = cmdBwgroup[size_t(i)];
        const int idx = filters[size_t(i)];
        if (i < groups_.used[size_t(group)] && idx >= 0 && idx < filterTable.size()) {
            b->setEnabled(true);
            b->setText(filterTable[idx]);
        } else {
            b->setText(QString());
            b->setEnabled(false);
        }
    }
    markActive({cmdBwrange.begin(), cmdBwrange.end()}, group);
    markFilter();
}

void frmRX320::cmdBwgroup_Click(int index)
{
    const int idx = groups_.filter[size_t(group_)][size_t(index)];
    if (!RX320A || idx < 0)
        return;
    int16_t v = int16_t(idx);
    RX320A->setBandwidth(v);
}

void frmRX320::vsbVolume_Change()
{
    if (RX320A)
        RX320A->setVolume(int16_t(vsbVolume->value()));
}

void frmRX320::vsbLinelevel_Change()
{
    if (RX320A)
        RX320A->setLinelevel(int16_t(vsbLinelevel->value()));
}

void frmRX320::vsbPassbandshift_Change()
{
    if (RX320A)
        RX320A->setPassBandShift(int16_t(vsbPassbandshift->value()));
}

void frmRX320::vsbBeatfreqosc_Change()
{
    if (RX320A)
        RX320A->setBeatfreqosc(int16_t(vsbBeatfreqosc->value()));
}

// --- what was sent ---

void frmRX320::RX320A_FrequencyAChanged(double khz) { showFrequency(khz); }

void frmRX320::RX320A_AgcspeedChanged(int v) { showAgc(rx320panel::agcIndexOfWire(v)); }

void frmRX320::showAgc(int index)
{
    lblAgcspeed->setText(panel::tableText(agcTable, index, 0, 2));
    markActive({cmdAgcspeed.begin(), cmdAgcspeed.end()}, index);
}

void frmRX320::RX320A_BandwidthChanged(int v)
{
    lblBandwidth->setText(panel::tableText(filterTable, v, 0, rx320panel::kFilters - 1));
    markFilter();
}

void frmRX320::markFilter()
{
    int shown = -1;
    for (int i = 0; i < groups_.used[size_t(group_)]; ++i)
        if (groups_.filter[size_t(group_)][size_t(i)] == rx320Bandwidth)
            shown = i;
    markActive({cmdBwgroup.begin(), cmdBwgroup.end()}, shown);
}

void frmRX320::RX320A_ModeChanged(int v)
{
    lblMode->setText(panel::tableText(modeTable, v, 0, 3));
    markActive({cmdMode.begin(), cmdMode.end()}, v);
    // The BFO sets the pitch of CW only.
    const bool cw = v >= 3;
    vsbBeatfreqosc->setEnabled(cw);
    lblBeatfreqosc->setEnabled(cw);
}

void frmRX320::RX320A_PassbandshiftChanged(int v)
{
    setBarQuietly(vsbPassbandshift, v);
    lblPassbandshift->setText(QString::number(v));
}

void frmRX320::RX320A_BeatfreqoscChanged(int v)
{
    setBarQuietly(vsbBeatfreqosc, v);
    lblBeatfreqosc->setText(QString::number(v));
}

void frmRX320::RX320A_VolumeChanged(int v)
{
    setBarQuietly(vsbVolume, v);
    lblVolume->setText(QString::number(v));
}

void frmRX320::RX320A_LinelevelChanged(int v)
{
    setBarQuietly(vsbLinelevel, v);
    lblLinelevel->setText(QString::number(v));
}

// --- the menu ---

void frmRX320::mnuFirmware_Click()
{
    if (RX320A)
        ui::MsgBox(RX320A->Firmware(), ui::vbOKOnly, QStringLiteral("Firmware Version"));
}

void frmRX320::mnuEnableLine_Click()
{
    vsbLinelevel->setEnabled(true);
    lblLinelevel->setEnabled(true);
    slotDisableLL() = 0;
}

void frmRX320::mnuDisableLine_Click()
{
    vsbLinelevel->setEnabled(false);
    lblLinelevel->setEnabled(false);
    slotDisableLL() = 1;
}

// --- what the shared parts ask of the model ---

void frmRX320::writeFrequency(double khz)
{
    if (RX320A)
        RX320A->setFrequencyA(khz);
}

void frmRX320::enterMemory(int n)
{
    // The receiver has no memories: the cell comes from the memory image, when one is loaded.
    if (!RX320A || n >= memRecord.size())
        return;
    const QString rec = memRecord[n].str();
    if (rec.trimmed().isEmpty() || isVacantMemRecord(rec)) // a blank line read from a file holds no cell
        return;
    auto field = [&](memfield::Field f) { return numtext::Val(memField(rec, f)); };
    RX320A->setFrequencyA(field(memfield::frequency) / 1000);
    RX320A->setMode(numtext::toInt16(field(memfield::mode)));
    int16_t bw = numtext::toInt16(field(memfield::bandwidth));
    RX320A->setBandwidth(bw);
    RX320A->setAgcspeed(numtext::toInt16(field(memfield::agc)));
}

void frmRX320::keyAction(const panel::KeyRow &row)
{
    using panel::KeyAction;
    if (!RX320A)
        return;
    switch (row.action) {
    case KeyAction::BwRange:
        cmdBwrange[size_t(row.arg)]->click();
        break;
    case KeyAction::BwGroup:
        cmdBwgroup[size_t(row.arg)]->click(); // a button the group does not use is disabled
        break;
    case KeyAction::Mode:
        cmdMode[size_t(row.arg)]->click();
        break;
    case KeyAction::ShiftUp:
    case KeyAction::ShiftDown:
    case KeyAction::ShiftZero: {
        const int now = vsbPassbandshift->value();
        const int v = row.action == KeyAction::ShiftZero ? 0
            : row.action == KeyAction::ShiftUp       ? rx320panel::shiftUp(now)
                                                     : rx320panel::shiftDown(now);
        setBarQuietly(vsbPassbandshift, v);
        RX320A->setPassBandShift(int16_t(v));
        break;
    }
    case KeyAction::VolumeUp:
    case KeyAction::VolumeDown:
    case KeyAction::VolumeZero: {
        const int now = vsbVolume->value();
        const int v = row.action == KeyAction::VolumeZero ? 0
            : row.action == KeyAction::VolumeUp       ? rx320panel::volumeUp(now)
                                                      : rx320panel::volumeDown(now);
        setBarQuietly(vsbVolume, v);
        RX320A->setVolume(int16_t(v));
        break;
    }
    default:
        break;
    }
}

std::vector<frmPanelBase::MuteBar> frmRX320::muteBars() const
{
    std::vector<MuteBar> bars{{vsbVolume, lblVolume}};
    if (slotDisableLL() == 0)
        bars.push_back({vsbLinelevel, lblLinelevel});
    return bars;
}
