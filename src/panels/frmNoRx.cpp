#include "frmNoRx.h"
#include "drivers/model_tables.h"
#include "ui/widgets/spin_button.h"

#include <QComboBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <QVBoxLayout>

frmNoRx::frmNoRx(QWidget *parent) : frmPanelBase(Win::frmNoRx, rxNone, false, parent)
{
    buildPanel();
    buildMenu({QStringLiteral("mnuUpdate"), QStringLiteral("mnuResetRX"), QStringLiteral("mnuFirmware"),
               QStringLiteral("mnuEnableLLLR"), QStringLiteral("mnuDisableLLLR"), QStringLiteral("mnuPowerOn"),
               QStringLiteral("mnuPowerOff"), QStringLiteral("mnuRXclock")});
    finishMenu();
    connect(cmdClose, &QPushButton::clicked, this, guarded(guard_, [this] { cmdClose_Click(); }));
    txtFrequencyA->installEventFilter(this);
    applyLook();
}

frmNoRx::~frmNoRx() = default;

frmNoRx *frmNoRx::open() { return loadOrAbandon(new frmNoRx); }

const std::vector<panel::KeyRow> &frmNoRx::keyTable() const
{
    static const std::vector<panel::KeyRow> none;
    return none;
}

void frmNoRx::buildPanel()
{
    auto *face = new QWidget(this);
    face->setObjectName(QStringLiteral("panelFace"));
    setCentralWidget(face);

    QWidget *display = buildDisplay();
    displayStatus->addStretch(1);
    lblMode->setText(QStringLiteral("AM"));
    lblBandwidth->setText(QStringLiteral("Wid"));
    lblAgcspeed->setText(QStringLiteral("Med"));
    txtFrequencyA->setPlaceholderText(tr("No RX"));
    auto *note = new QLabel(tr("No receiver: the lists, the log, the databases and the conversions work as usual."), face);
    note->setProperty("role", "caption");
    note->setWordWrap(true);

    static const char *const modes[] = {"AM", "USB", "LSB", "CW", "FM"};
    static const char *const widths[] = {"Wid", "Int", "Nar"};
    static const char *const agc[] = {"Fst", "Med", "Slw"};
    QList<QPushButton *> modeButtons, bwButtons, agcButtons;
    for (int i = 0; i < 5; ++i)
        modeButtons << (cmdMode[size_t(i)] = makeButton(QStringLiteral("cmdMode_%1").arg(i), QLatin1String(modes[i]), face));
    for (int i = 0; i < 3; ++i)
        bwButtons << (cmdBandwidth[size_t(i)] = makeButton(QStringLiteral("cmdBandwidth_%1").arg(i), QLatin1String(widths[i]), face));
    for (int i = 0; i < 3; ++i)
        agcButtons << (cmdAgcspeed[size_t(i)] = makeButton(QStringLiteral("cmdAgcspeed_%1").arg(i), QLatin1String(agc[i]), face));
    const Fader vol = makeFader("vsbVolume", "lblVolume", tr("Volume"), 0, 99, 1, 10, false);
    vsbVolume = vol.bar;
    lblVolume = vol.label;
    vsbVolume->setValue(50);
    lblVolume->setText(QStringLiteral("50"));
    cmdClose = makeButton(QStringLiteral("cmdClose"), QStringLiteral("Close"), face);
    cmdClose->setMinimumWidth(90);

    QWidget *tuning = buildTuning();
    QWidget *keypad = buildKeypad();
    QGroupBox *modeBox = buttonGroup(tr("Mode"), modeButtons);
    QGroupBox *bwBox = buttonGroup(tr("Filter"), bwButtons);
    QGroupBox *agcBox = buttonGroup(tr("AGC"), agcButtons);
    // Decoration only: greyed, so that nobody expects a receiver to answer.
    for (QWidget *w : {static_cast<QWidget *>(tuning), keypad, static_cast<QWidget *>(modeBox),
                       static_cast<QWidget *>(bwBox), static_cast<QWidget *>(agcBox), vol.box})
        w->setEnabled(false);

    auto *left = new QVBoxLayout;
    left->addWidget(display);
    left->addWidget(note);
    left->addWidget(tuning);
    auto *row = new QHBoxLayout;
    row->addWidget(modeBox, 5);
    row->addWidget(bwBox, 3);
    row->addWidget(agcBox, 3);
    left->addLayout(row);
    left->addStretch(1);
    auto *audio = new QGroupBox(tr("Audio"), face);
    auto *audioRow = new QHBoxLayout(audio);
    audioRow->addWidget(vol.box);
    arrangeFace(face, left, keypad, {audio});
}

void frmNoRx::Form_Load()
{
    beginLoad();
    labelRoutineNoRx();
    registerOpen();
    fillStepCombo();
    setStartStep();
    // The hub shows nothing here: no receiver, no frequency.
    endLoad();
}

void frmNoRx::Form_Unload()
{
    unloadCommon(false, {});
}
