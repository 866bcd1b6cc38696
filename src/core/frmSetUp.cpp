#include "frmSetUp.h"
#include "core/frmWelcome.h"
#include "core/numtext.h"
#include "core/paths.h"
#include "core/settings_files.h"
#include "core/shared_state.h"
#include "ui/facades.h"
#include "ui/widgets/form_position.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QFocusEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <QVBoxLayout>

using setup::Box;

namespace {
// The data directory is shown as the file system names it; everything else as it stands.
QString shownText(Box box, const QString &text) { return box == Box::Dirpath ? paths::fromSettingsText(text) : text; }

frmSetUp *theSetUp = nullptr;

QString indexed(const char *name, int i) { return QString::fromLatin1(name) + u'_' + QString::number(i); }

QGroupBox *frame(QWidget *parent, const QString &caption, const QString &name = QString())
{
    auto *g = new QGroupBox(caption, parent);
    if (!name.isEmpty())
        g->setObjectName(name);
    return g;
}

// Select option index of an array; an index outside it leaves none selected.
template <size_t N> void selectOption(const std::array<QRadioButton *, N> &opts, int index)
{
    for (size_t i = 0; i < N; ++i) {
        // an exclusive button cannot be unchecked while it is the checked one
        opts[i]->setAutoExclusive(false);
        opts[i]->setChecked(int(i) == index);
        opts[i]->setAutoExclusive(true);
    }
}

// The option a slot's number selects.
int optionIndex(double v) { return numtext::cint(v); }

} // namespace

frmSetUp::frmSetUp(QWidget *parent) : QWidget(parent)
{
    theSetUp = this;
    setObjectName(QStringLiteral("frmSetUp"));
    setWindowTitle(QStringLiteral("Set Up"));
    setAttribute(Qt::WA_DeleteOnClose);
    buildControls();
    nameForAccessibility(this);
    // Every control takes part in the leave-then-click order of a mouse press.
    for (QWidget *c : findChildren<QWidget *>())
        c->installEventFilter(this);
}

frmSetUp::~frmSetUp()
{
    if (theSetUp == this)
        theSetUp = nullptr;
}

frmSetUp *frmSetUp::instance() { return theSetUp; }

frmSetUp *frmSetUp::open()
{
    if (theSetUp) {
        theSetUp->showNormal();
        theSetUp->raise();
        theSetUp->activateWindow();
        return theSetUp;
    }
    auto *w = new frmSetUp;
    w->Form_Load();
    return w;
}

// --- building ---

QLineEdit *frmSetUp::addBox(const char *name, Box box, int index, int chars, std::function<void()> lostFocus)
{
    auto *e = new QLineEdit(this);
    e->setObjectName(QString::fromLatin1(name));
    const int w = e->fontMetrics().horizontalAdvance(QString(chars, u'0')) + 16;
    if (chars <= 8)
        e->setFixedWidth(w);
    else
        e->setMinimumWidth(w);
    boxes_[e] = {box, index, std::move(lostFocus)};
    return e;
}

void frmSetUp::buildControls()
{
    auto *generic = frame(this, QStringLiteral("Generic set-up options"), QStringLiteral("fraGeneric"));
    auto *gl = new QVBoxLayout(generic);
    gl->addWidget(buildGeneric());

    auto *specific = frame(this, QStringLiteral("Receiver specific set-up options"), QStringLiteral("fraSpecific"));
    auto *sl = new QVBoxLayout(specific);
    sl->addWidget(buildReceiverFrames());

    cmdReload = new QPushButton(QStringLiteral("Reload"), this);
    cmdReload->setObjectName(QStringLiteral("cmdReload"));
    cmdReload->setToolTip(QStringLiteral("Put the values in memory back into the boxes"));
    cmdSave = new QPushButton(QStringLiteral("Save"), this);
    cmdSave->setObjectName(QStringLiteral("cmdSave"));
    cmdSave->setToolTip(QStringLiteral("Write the settings to brelvox2.ini in the data directory"));
    cmdClose = new QPushButton(QStringLiteral("Close"), this);
    cmdClose->setObjectName(QStringLiteral("cmdClose"));
    cmdClose->setToolTip(QStringLiteral("Close; changes stay in memory until they are saved"));
    connect(cmdReload, &QPushButton::clicked, this, &frmSetUp::cmdReload_Click);
    connect(cmdSave, &QPushButton::clicked, this, &frmSetUp::cmdSave_Click);
    connect(cmdClose, &QPushButton::clicked, this, &frmSetUp::cmdClose_Click);

    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cmdReload);
    buttons->addWidget(cmdSave);
    buttons->addWidget(cmdClose);

    auto *top = new QVBoxLayout(this);
    top->addWidget(generic);
    top->addWidget(specific);
    top->addLayout(buttons);
    top->setSizeConstraint(QLayout::SetFixedSize);
}

QWidget *frmSetUp::buildGeneric()
{
    auto *page = new QWidget(this);
    auto *grid = new QGridLayout(page);
    grid->setContentsMargins(0, 0, 0, 0);

    // Option frames
    auto *fraType = frame(page, QStringLiteral("RX type"), QStringLiteral("fraRxtype"));
    auto *tl = new QVBoxLayout(fraType);
    static const char *types[] = {"No RX", "AR 7030", "NRD-535", "RX-320", "NRD-545"};
    for (int i = 0; i < 5; ++i) {
        optRxtype[i] = new QRadioButton(QString::fromLatin1(types[i]), fraType);
        optRxtype[i]->setObjectName(indexed("optRxtype", i));
        tl->addWidget(optRxtype[i]);
        connect(optRxtype[i], &QRadioButton::clicked, this, [this, i] { optRxtype_Click(i); });
    }
    tl->addStretch(1);

    auto *fraCom = frame(page, QStringLiteral("Comm Port"), QStringLiteral("fraCom"));
    auto *cl = new QVBoxLayout(fraCom);
    for (int i = 0; i < 5; ++i) {
        optCom[i] = new QRadioButton(QStringLiteral("COM %1").arg(i + 1), fraCom);
        optCom[i]->setObjectName(indexed("optCom", i));
        cl->addWidget(optCom[i]);
        connect(optCom[i], &QRadioButton::clicked, this, [this, i] { optCom_Click(i); });
    }
    cl->addStretch(1);

    auto *fraArea = frame(page, QStringLiteral("RX Target Area"), QStringLiteral("fraRxtargetarea"));
    auto *al = new QGridLayout(fraArea);
    static const char *areas[] = {"NA", "CA", "SA", "EU", "AF", "ME", "AS", "AU", "PA"};
    static const char *areaNames[] = {"North America", "Central America", "South America", "Europe", "Africa",
                                      "Middle East", "Asia", "Australia", "Pacific"};
    for (int i = 0; i < 9; ++i) {
        optRxtargetarea[i] = new QRadioButton(QString::fromLatin1(areas[i]), fraArea);
        optRxtargetarea[i]->setObjectName(indexed("optRxtargetarea", i));
        optRxtargetarea[i]->setToolTip(QString::fromLatin1(areaNames[i]));
        al->addWidget(optRxtargetarea[i], i / 3, i % 3);
        connect(optRxtargetarea[i], &QRadioButton::clicked, this, [this, i] { optRxtargetarea_Click(i); });
    }
    al->setRowStretch(3, 1);

    auto *fraStep = frame(page, QStringLiteral("Startup Freq. step"), QStringLiteral("fraStartstep"));
    auto *stl = new QVBoxLayout(fraStep);
    static const char *steps[] = {"5 kHz", "9 kHz", "10 kHz"};
    for (int i = 0; i < 3; ++i) {
        optStartstep[i] = new QRadioButton(QString::fromLatin1(steps[i]), fraStep);
        optStartstep[i]->setObjectName(indexed("optStartstep", i));
        stl->addWidget(optStartstep[i]);
        connect(optStartstep[i], &QRadioButton::clicked, this, [this, i] { optStartstep_Click(i); });
    }
    stl->addStretch(1);

    grid->addWidget(fraType, 0, 0);
    grid->addWidget(fraCom, 0, 1);
    grid->addWidget(fraArea, 0, 2);
    grid->addWidget(fraStep, 0, 3);

    // Text frames: one box each
    auto boxFrame = [page](const QString &caption, const char *frameName, QLineEdit *box, const QString &unit,
                           bool wide = false) {
        auto *f = frame(page, caption, QString::fromLatin1(frameName));
        auto *l = new QHBoxLayout(f);
        box->setParent(f);
        l->addWidget(box, wide ? 1 : 0);
        if (!unit.isEmpty())
            l->addWidget(new QLabel(unit, f));
        if (!wide)
            l->addStretch(1);
        return f;
    };

    txtDirpath = addBox("txtDirpath", Box::Dirpath, 0, 30, [this] { txtDirpath_LostFocus(); });
    txtDirpath->setToolTip(QStringLiteral("The data directory, ending in a separator"));
    txtRxlatitude = addBox("txtRxlatitude", Box::Rxlatitude, 0, 7, [this] { txtRxlatitude_LostFocus(); });
    txtRxlatitude->setToolTip(QStringLiteral("Degrees, minutes and N or S, e.g. 5205N"));
    txtRxlongitude = addBox("txtRxlongitude", Box::Rxlongitude, 0, 7, [this] { txtRxlongitude_LostFocus(); });
    txtRxlongitude->setToolTip(QStringLiteral("Degrees, minutes and E or W, e.g. 0445E"));
    txtLt2utc = addBox("txtLt2utc", Box::Lt2utc, 0, 5, [this] { txtLt2utc_LostFocus(); });
    txtLt2utc->setToolTip(QStringLiteral("Local time minus UTC in hours, whole or half"));

    grid->addWidget(boxFrame(QStringLiteral("Dir Path"), "fraDirpath", txtDirpath, {}, true), 1, 0, 1, 2);
    auto *coords = new QHBoxLayout;
    coords->addWidget(boxFrame(QStringLiteral("RX Latitude"), "fraRxlatitude", txtRxlatitude, {}));
    coords->addWidget(boxFrame(QStringLiteral("RX Longitude"), "fraRxlongitude", txtRxlongitude, {}));
    coords->addWidget(boxFrame(QStringLiteral("LT - UTC"), "fraLt2utc", txtLt2utc, QStringLiteral("h")));
    grid->addLayout(coords, 1, 2, 1, 2);

    auto *dims = new QHBoxLayout;
    struct D {
        const char *name; const char *frameName; const char *caption; Box box; QLineEdit **member;
        void (frmSetUp::*lostFocus)();
    };
    const D ds[] = {{"txtDimbdxc", "fraDimbdxc", "Dim BDXC", Box::Dimbdxc, &txtDimbdxc, &frmSetUp::txtDimbdxc_LostFocus},
                    {"txtDimown", "fraDimown", "Dim OWN", Box::Dimown, &txtDimown, &frmSetUp::txtDimown_LostFocus},
                    {"txtDimlog", "fraDimlog", "Dim LOG", Box::Dimlog, &txtDimlog, &frmSetUp::txtDimlog_LostFocus},
                    {"txtDimilg", "fraDimilg", "Dim ILG", Box::Dimilg, &txtDimilg, &frmSetUp::txtDimilg_LostFocus}};
    for (const D &d : ds) {
        *d.member = addBox(d.name, d.box, 0, 4, [this, h = d.lostFocus] { (this->*h)(); });
        (*d.member)->setToolTip(QStringLiteral("Room in memory, in thousands of entries"));
        dims->addWidget(boxFrame(QString::fromLatin1(d.caption), d.frameName, *d.member, QStringLiteral("x 1000")));
    }
    grid->addLayout(dims, 2, 0, 1, 4);
    return page;
}

QWidget *frmSetUp::buildReceiverFrames()
{
    auto *page = new QWidget(this);
    auto *stack = new QGridLayout(page);
    stack->setContentsMargins(0, 0, 0, 0);
    static const char *captions[] = {"No RX", "AR7030", "NRD-535", "RX-320", "NRD-545"};
    for (int i = 0; i < 5; ++i) {
        fraRx[i] = frame(page, QString::fromLatin1(captions[i]), indexed("fraRx", i));
        stack->addWidget(fraRx[i], 0, 0);
    }

    // A frame of labelled boxes, one row each.
    auto labelled = [](QGroupBox *f, QGridLayout *l, int row, QLabel *label, QLineEdit *box, const QString &unit) {
        label->setParent(f);
        box->setParent(f);
        label->setBuddy(box);
        l->addWidget(label, row, 0);
        l->addWidget(box, row, 1);
        if (!unit.isEmpty())
            l->addWidget(new QLabel(unit, f), row, 2);
    };
    auto label = [](const QString &text, const QString &name) {
        auto *l = new QLabel(text);
        if (!name.isEmpty())
            l->setObjectName(name);
        return l;
    };

    // No RX
    {
        auto *l = new QVBoxLayout(fraRx[rxNone]);
        auto *t = new QLabel(QStringLiteral("No special set-up necessary"), fraRx[rxNone]);
        t->setObjectName(QStringLiteral("lblNoRx"));
        l->addWidget(t);
        l->addStretch(1);
    }
    // AR7030
    {
        auto *h = new QHBoxLayout(fraRx[rxAR7030]);
        auto *fil = frame(fraRx[rxAR7030], QStringLiteral("Standard IF filter"), QStringLiteral("fraARoptions"));
        auto *fl = new QGridLayout(fil);
        static const char *modes[] = {"For AM", "For SSB", "For CW", "For FM"};
        for (int i = 0; i < 4; ++i) {
            txtARoptions[i] = addBox("", Box::ARoptions, i, 3, [this, i] { txtARoptions_LostFocus(i); });
            txtARoptions[i]->setObjectName(indexed("txtARoptions", i));
            txtARoptions[i]->setToolTip(QStringLiteral("Filter number 1 to 6"));
            lblOpt7030[i] = label(QString::fromLatin1(modes[i]), indexed("lblOpt7030", i));
            labelled(fil, fl, i % 2, lblOpt7030[i], txtARoptions[i], {});
            // two columns of two: AM and SSB, then CW and FM
            if (i >= 2) {
                fl->removeWidget(lblOpt7030[i]);
                fl->removeWidget(txtARoptions[i]);
                fl->addWidget(lblOpt7030[i], i - 2, 3);
                fl->addWidget(txtARoptions[i], i - 2, 4);
            }
        }
        fl->setColumnMinimumWidth(2, 12);
        auto *lines = frame(fraRx[rxAR7030], QStringLiteral("LL+LR Scrollbars"), QStringLiteral("fraLLLR"));
        auto *ll = new QGridLayout(lines);
        txtLevelL = addBox("txtLevelL", Box::LevelL, 0, 3, [this] { txtLevelL_LostFocus(); });
        txtLevelR = addBox("txtLevelR", Box::LevelR, 0, 3, [this] { txtLevelR_LostFocus(); });
        txtLevelL->setToolTip(QStringLiteral("Left line level, 0 to 99"));
        txtLevelR->setToolTip(QStringLiteral("Right line level, 0 to 99"));
        labelled(lines, ll, 0, label(QStringLiteral("Level L"), {}), txtLevelL, {});
        labelled(lines, ll, 1, label(QStringLiteral("Level R"), {}), txtLevelR, {});
        chkDisableLLLR = new QCheckBox(QStringLiteral("Disabled"), lines);
        chkDisableLLLR->setObjectName(QStringLiteral("chkDisableLLLR"));
        ll->addWidget(chkDisableLLLR, 0, 2, 2, 1);
        ll->setColumnMinimumWidth(2, 12);
        connect(chkDisableLLLR, &QCheckBox::clicked, this, &frmSetUp::chkDisableLLLR_Click);
        h->addWidget(fil);
        h->addWidget(lines);
        h->addStretch(1);
    }
    // NRD-535
    {
        auto *h = new QHBoxLayout(fraRx[rxNRD535]);
        auto *opts = frame(fraRx[rxNRD535], QStringLiteral("NRD-535 options"), QStringLiteral("fraNRDoptions"));
        auto *ol = new QHBoxLayout(opts);
        static const char *names[] = {"1 kHz", "BWC", "ECSS", "RTTY"};
        for (int i = 0; i < 4; ++i) {
            chkNRDoptions[i] = new QCheckBox(QString::fromLatin1(names[i]), opts);
            chkNRDoptions[i]->setObjectName(indexed("chkNRDoptions", i));
            ol->addWidget(chkNRDoptions[i]);
            connect(chkNRDoptions[i], &QCheckBox::clicked, this, [this, i] { chkNRDoptions_Click(i); });
        }
        chkNRDoptions[0]->setToolTip(QStringLiteral("The 1 kHz filter is fitted"));
        h->addWidget(opts, 0, Qt::AlignTop);
        h->addStretch(1);
    }
    // RX-320
    {
        auto *h = new QHBoxLayout(fraRx[rxRX320]);
        auto *corr = frame(fraRx[rxRX320], QStringLiteral("Freq. corrections"), QStringLiteral("fraFreqcorr"));
        auto *cl = new QGridLayout(corr);
        static const char *at[] = {" at 5 MHz", "at 15 MHz"};
        for (int i = 0; i < 2; ++i) {
            txtFreqcorr[i] = addBox("", Box::Freqcorr, i, 6, [this, i] { txtFreqcorr_LostFocus(i); });
            txtFreqcorr[i]->setObjectName(indexed("txtFreqcorr", i));
            txtFreqcorr[i]->setToolTip(QStringLiteral("Hz, -1000 to 1000"));
            lblfreqcorr[i] = label(QString::fromLatin1(at[i]), indexed("lblfreqcorr", i));
            labelled(corr, cl, i, lblfreqcorr[i], txtFreqcorr[i], QStringLiteral("Hz"));
        }
        auto *line = frame(fraRx[rxRX320], QStringLiteral("Line Scrollbar"), QStringLiteral("fraLL"));
        auto *ll = new QGridLayout(line);
        txtLevel = addBox("txtLevel", Box::Level, 0, 3, [this] { txtLevel_LostFocus(); });
        txtLevel->setToolTip(QStringLiteral("Line level, 0 to 99"));
        labelled(line, ll, 0, label(QStringLiteral("Level"), {}), txtLevel, {});
        chkDisableLL = new QCheckBox(QStringLiteral(" Disabled"), line);
        chkDisableLL->setObjectName(QStringLiteral("chkDisableLL"));
        ll->addWidget(chkDisableLL, 1, 0, 1, 2);
        connect(chkDisableLL, &QCheckBox::clicked, this, &frmSetUp::chkDisableLL_Click);
        auto *mute = frame(fraRx[rxRX320], QStringLiteral("Mute on exit"), QStringLiteral("fraMute"));
        auto *ml = new QVBoxLayout(mute);
        static const char *outs[] = {"Loudspeaker", "Line"};
        for (int i = 0; i < 2; ++i) {
            chkMute[i] = new QCheckBox(QString::fromLatin1(outs[i]), mute);
            chkMute[i]->setObjectName(indexed("chkMute", i));
            ml->addWidget(chkMute[i]);
            connect(chkMute[i], &QCheckBox::clicked, this, [this, i] { chkMute_Click(i); });
        }
        h->addWidget(corr);
        h->addWidget(line);
        h->addWidget(mute);
        h->addStretch(1);
    }
    // NRD-545
    {
        auto *h = new QHBoxLayout(fraRx[rxNRD545]);
        auto *agc = frame(fraRx[rxNRD545], QStringLiteral("AGC (x 200msec)"), QStringLiteral("fraAgctc"));
        auto *al = new QGridLayout(agc);
        static const char *speeds[] = {"Fast", "Med", "Slow"};
        for (int i = 0; i < 3; ++i) {
            txtAgctc[i] = addBox("", Box::Agctc, i, 3, [this, i] { txtAgctc_LostFocus(i); });
            txtAgctc[i]->setObjectName(indexed("txtAgctc", i));
            txtAgctc[i]->setToolTip(QStringLiteral("1 to 9 times 200 ms"));
            lblAgctc[i] = label(QString::fromLatin1(speeds[i]), indexed("lblAgctc", i));
            labelled(agc, al, i, lblAgctc[i], txtAgctc[i], {});
        }
        auto *nrbc = frame(fraRx[rxNRD545], QStringLiteral("NR/BC default"), QStringLiteral("fraNrbc"));
        auto *nl = new QGridLayout(nrbc);
        static const char *what[] = {"NR", "BC"};
        static const char *tips[] = {"Noise reduction, 0 to 255", "Beat canceller, 0 to 255"};
        for (int i = 0; i < 2; ++i) {
            txtNrbc[i] = addBox("", Box::Nrbc, i, 4, [this, i] { txtNrbc_LostFocus(i); });
            txtNrbc[i]->setObjectName(indexed("txtNrbc", i));
            txtNrbc[i]->setToolTip(QString::fromLatin1(tips[i]));
            lblNrbc[i] = label(QString::fromLatin1(what[i]), indexed("lblNrbc", i));
            labelled(nrbc, nl, i, lblNrbc[i], txtNrbc[i], {});
        }
        nl->setRowStretch(2, 1);
        h->addWidget(agc);
        h->addWidget(nrbc, 0, Qt::AlignTop);
        h->addStretch(1);
    }

    // The area keeps the size of the largest frame, so the window does not jump when the model changes.
    QSize most;
    for (QGroupBox *f : fraRx)
        most = most.expandedTo(f->sizeHint());
    page->setMinimumSize(most);
    return page;
}

// --- load ---

void frmSetUp::Form_Load()
{
    placeAtLoad(this, Win::frmSetUp);
    loadValues();
    show();
    isOpen(Win::frmSetUp) = true;
    frmWelcome::setOpenWindow(Win::frmSetUp, this);
}

void frmSetUp::loadValues()
{
    selectOption(optRxtype, rxType);
    selectOption(optCom, optionIndex(slotCommPort()) - 1);
    selectOption(optRxtargetarea, optionIndex(slotRxTargetArea()));
    selectOption(optStartstep, optionIndex(slotStartstep()));
    for (const auto &[box, ref] : boxes_)
        box->setText(shownText(ref.box, setup::boxText(ref.box, ref.index)));
    for (int i = 0; i < 4; ++i)
        chkNRDoptions[i]->setChecked(slotNrdOption(i) != 0);
    for (int i = 0; i < 2; ++i)
        chkMute[i]->setChecked(slotMute(i) != 0);
    chkDisableLLLR->setChecked(slotDisableLLLR() != 0);
    chkDisableLL->setChecked(slotDisableLL() != 0);
    showFrame(rxType);
}

void frmSetUp::showFrame(int type)
{
    for (int i = 0; i < 5; ++i)
        fraRx[i]->setVisible(i == type);
}

// --- options and check boxes ---

void frmSetUp::optRxtype_Click(int index)
{
    rxType = int16_t(index);
    if (frmWelcome *w = frmWelcome::instance())
        w->showRxType(index);
    showFrame(index);
}

void frmSetUp::optCom_Click(int index) { slotCommPort() = float(index + 1); }
void frmSetUp::optRxtargetarea_Click(int index) { slotRxTargetArea() = float(index); }
void frmSetUp::optStartstep_Click(int index) { slotStartstep() = float(index); }
void frmSetUp::chkNRDoptions_Click(int index) { slotNrdOption(index) = chkNRDoptions[index]->isChecked() ? 1 : 0; }
void frmSetUp::chkMute_Click(int index) { slotMute(index) = chkMute[index]->isChecked() ? 1 : 0; }
void frmSetUp::chkDisableLLLR_Click() { slotDisableLLLR() = chkDisableLLLR->isChecked() ? 1 : 0; }
void frmSetUp::chkDisableLL_Click() { slotDisableLL() = chkDisableLL->isChecked() ? 1 : 0; }

// --- text boxes ---

void frmSetUp::txtDirpath_LostFocus() { leave(txtDirpath); }
void frmSetUp::txtRxlatitude_LostFocus() { leave(txtRxlatitude); }
void frmSetUp::txtRxlongitude_LostFocus() { leave(txtRxlongitude); }
void frmSetUp::txtLt2utc_LostFocus() { leave(txtLt2utc); }
void frmSetUp::txtDimbdxc_LostFocus() { leave(txtDimbdxc); }
void frmSetUp::txtDimown_LostFocus() { leave(txtDimown); }
void frmSetUp::txtDimlog_LostFocus() { leave(txtDimlog); }
void frmSetUp::txtDimilg_LostFocus() { leave(txtDimilg); }
void frmSetUp::txtARoptions_LostFocus(int index) { leave(txtARoptions[index]); }
void frmSetUp::txtLevelL_LostFocus() { leave(txtLevelL); }
void frmSetUp::txtLevelR_LostFocus() { leave(txtLevelR); }
void frmSetUp::txtAgctc_LostFocus(int index) { leave(txtAgctc[index]); }
void frmSetUp::txtNrbc_LostFocus(int index) { leave(txtNrbc[index]); }
void frmSetUp::txtFreqcorr_LostFocus(int index) { leave(txtFreqcorr[index]); }
void frmSetUp::txtLevel_LostFocus() { leave(txtLevel); }

void frmSetUp::leave(QLineEdit *box)
{
    const BoxRef &ref = boxes_.at(box);
    QString text = box->text();
    // The data directory is settings text, its bytes one character each. Left as shown it keeps
    // its bytes, however it was typed; typed anew it takes the bytes the file system gives it.
    if (ref.box == Box::Dirpath)
        text = text == shownText(ref.box, dirPath) ? dirPath : paths::toSettingsText(text);
    const setup::Verdict v = setup::leaveBox(ref.box, ref.index, text);
    box->setText(shownText(ref.box, v.boxText));
    lastLeaveFailed_ = !v.passed;
    if (v.passed)
        return;
    checking_ = true;
    ui::MsgBox(v.message, ui::vbExclamation, v.title);
    if (v.focusBack) {
        box->setFocus(Qt::OtherFocusReason);
        entered_ = box;
    }
    checking_ = false;
}

bool frmSetUp::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        if (swallowPress_) {
            swallowPress_ = false;
            return true;
        }
        break;
    case QEvent::FocusIn:
        if (!checking_) {
            auto *box = qobject_cast<QLineEdit *>(watched);
            if (box && boxes_.count(box))
                entered_ = box;
        }
        break;
    case QEvent::FocusOut: {
        auto *box = qobject_cast<QLineEdit *>(watched);
        if (!box || box != entered_ || checking_ || unloading_)
            break;
        const auto reason = static_cast<QFocusEvent *>(event)->reason();
        // Another window coming to the front, or a context menu, is not leaving the box.
        if (reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason)
            break;
        entered_ = nullptr;
        // A failure is told before the click that left the box goes on, and that click is then not
        // carried out: the message took its place.
        boxes_.at(box).lostFocus();
        if (lastLeaveFailed_ && reason == Qt::MouseFocusReason) {
            swallowPress_ = true;
            QTimer::singleShot(0, this, [this] { swallowPress_ = false; });
        }
        break;
    }
    default: break;
    }
    return QWidget::eventFilter(watched, event);
}

// --- buttons ---

void frmSetUp::cmdSave_Click()
{
    close();
    settings::saveSettings();
    ui::MsgBox(QStringLiteral("New INI data is now saved"), ui::vbExclamation, QStringLiteral("Save INI"));
}

void frmSetUp::cmdClose_Click() { close(); }

void frmSetUp::cmdReload_Click() { loadValues(); }

void frmSetUp::closeEvent(QCloseEvent *e)
{
    unloading_ = true;
    if (theSetUp == this)
        theSetUp = nullptr; // unloaded: the next open makes a new one
    storeAtUnload(this, Win::frmSetUp);
    isOpen(Win::frmSetUp) = false;
    frmWelcome::setOpenWindow(Win::frmSetUp, nullptr);
    e->accept();
}
