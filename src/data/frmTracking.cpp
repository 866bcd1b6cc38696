#include "frmTracking.h"
#include "ui/widgets/raise_or_load.h"
#include "core/frmWelcome.h"
#include "core/numtext.h"
#include "core/textfile.h"
#include "data/file_store.h"
#include "data/frmLoadfile.h"
#include "drivers/jrc_common.h"
#include "drivers/rx_driver.h"
#include "log/frmLoginput.h"
#include "ui/widgets/form_position.h"
#include "ui/widgets/images.h"
#include "ui/widgets/list_frame.h"
#include "ui/widgets/spin_button.h"

#include <QCloseEvent>
#include <QFontDatabase>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace {
constexpr int kTrackingKind = 5;
constexpr int kRowFontPixels = 12;
QPointer<frmTracking> theTracking;

QString indexed(const char *name, int i) { return QLatin1String(name) + u'_' + QString::number(i); }

QColor colourOf(uint32_t bgr) { return QColor::fromRgb(QRgb(0xFF000000u | tracking::toRgb(bgr))); }

QPushButton *button(QWidget *parent, const QString &name, const QString &caption, const QString &tip = {})
{
    auto *b = new QPushButton(caption, parent);
    b->setObjectName(name);
    b->setAutoDefault(false);
    if (!tip.isEmpty())
        b->setToolTip(tip);
    return b;
}

template <size_t N>
QGroupBox *optionFrame(QWidget *parent, const char *frame, const char *name, const char *const (&captions)[N],
                       std::array<QRadioButton *, N> &opts)
{
    auto *box = new QGroupBox(parent);
    box->setObjectName(QLatin1String(frame));
    auto *col = new QVBoxLayout(box);
    col->setContentsMargins(6, 2, 6, 2);
    col->setSpacing(0);
    for (size_t i = 0; i < N; ++i) {
        opts[i] = new QRadioButton(QLatin1String(captions[i]), box);
        opts[i]->setObjectName(indexed(name, int(i)));
        col->addWidget(opts[i]);
    }
    opts[0]->setChecked(true);
    return box;
}

bool ignoresSteps()
{
    frmWelcome *w = frmWelcome::instance();
    return w && w->hub.stepsIgnored();
}

void send(const QByteArray &bytes)
{
    if (frmWelcome *w = frmWelcome::instance())
        w->Comm1.Output(bytes);
}
} // namespace

frmTracking::frmTracking()
{
    setObjectName(QStringLiteral("frmTracking"));
    setWindowTitle(QStringLiteral("Tracking"));
    setAttribute(Qt::WA_DeleteOnClose);
    tmrDial7030.setObjectName(QStringLiteral("tmrDial7030"));
    tmrDial7030.setInterval(250);

    QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    fixed.setPixelSize(kRowFontPixels);
    const QFontMetrics fm(fixed);
    const QSize rowSize(fm.horizontalAdvance(QString(tracking::kRecordWidth, u'0')) + 8, fm.height() + 2);
    auto *rows = new QVBoxLayout;
    rows->setSpacing(1);
    for (int r = 0; r < tracking::kRows; ++r) {
        auto *l = new QLabel(this);
        l->setObjectName(indexed("lblBingo", r));
        l->setFont(fixed);
        l->setFixedSize(rowSize);
        l->setAutoFillBackground(true);
        l->setTextFormat(Qt::PlainText);
        l->setIndent(4);
        l->installEventFilter(this);
        lblBingo[size_t(r)] = l;
        colours_[size_t(r)] = 0;
        paintRow(r, QString(), tracking::kPlainColour);
        rows->addWidget(l);
    }
    lblBingo[0]->setToolTip(tr("A click copies language, station and site into the open log record"));

    lblDatabase = new QLabel(this);
    lblDatabase->setObjectName(QStringLiteral("lblDatabase"));
    lblCatchrange = new QLabel(QStringLiteral("Catching (kHz) :"), this);
    lblCatchrange->setObjectName(QStringLiteral("lblCatchrange"));
    txtCatchrange = new QLineEdit(QStringLiteral("2"), this);
    txtCatchrange->setObjectName(QStringLiteral("txtCatchrange"));
    lblFreqstep = new QLabel(QStringLiteral("Stepping (kHz) :"), this);
    lblFreqstep->setObjectName(QStringLiteral("lblFreqstep"));
    txtFreqstep = new QLineEdit(QStringLiteral("5"), this);
    txtFreqstep->setObjectName(QStringLiteral("txtFreqstep"));
    const int boxWidth = QFontMetrics(font()).horizontalAdvance(QStringLiteral("00000")) + 16;
    for (QLineEdit *e : {txtCatchrange, txtFreqstep})
        e->setFixedWidth(boxWidth);
    lblCatchrange->setBuddy(txtCatchrange);
    lblFreqstep->setBuddy(txtFreqstep);
    spnFreqstep = new SpinButton(Qt::Horizontal, this);
    spnFreqstep->setObjectName(QStringLiteral("spnFreqstep"));
    spnFreqstep->setToolTip(tr("Step the frequency down or up"));

    static const char *const dial[] = {"Mouse", "Dial"};
    static const char *const hits[] = {"Hits", "All"};
    static const char *const alternates[] = {"Lat/Lon", "Dis/Dir", "Ctry", "Loc"};
    fraMousedial = optionFrame(this, "fraMousedial", "optMousedial", dial, optMousedial);
    fraHitsall = optionFrame(this, "fraHitsall", "optHitsall", hits, optHitsall);
    fraAlternates = optionFrame(this, "fraAlternates", "optAlternates", alternates, optAlternates);
    fraMousedial->setToolTip(tr("Step with the spin button, or follow the receiver's tuning knob"));
    fraHitsall->setToolTip(tr("Only stations on the air now, or all within the catch range"));
    fraAlternates->setToolTip(tr("What the columns of the transmitter's position show"));

    auto *pages = new QHBoxLayout;
    pages->setSpacing(2);
    for (int p = 0; p < tracking::kPages; ++p) {
        cmdShow[size_t(p)] = button(this, indexed("cmdShow", p), QString::number(p + 1), tr("Page %1 of the list").arg(p + 1));
        cmdShow[size_t(p)]->setFixedWidth(QFontMetrics(font()).horizontalAdvance(QStringLiteral("0")) + 20);
        pages->addWidget(cmdShow[size_t(p)]);
    }
    cmdLoad = button(this, QStringLiteral("cmdLoad"), QStringLiteral("Load File"), tr("Open an .FTL database"));
    cmdExit = button(this, QStringLiteral("cmdExit"), QStringLiteral("Exit"));

    frame_ = new ListFrame(this, Win::frmTracking, QString());
    txtFrequencyA = frame_->txtFrequencyA;
    cmdPanel = frame_->cmdPanel;
    frame_->cmdHeigh->hide();
    txtFrequencyA->setFixedWidth(QFontMetrics(font()).horizontalAdvance(QStringLiteral("00000.000")) + 16);
    txtFrequencyA->setToolTip(tr("Frequency in kHz: Enter tunes, a double click empties"));
    cmdPanel->setIcon(QIcon(images::receiver()));
    cmdPanel->setIconSize(QSize(32, 24));
    cmdPanel->setToolTip(tr("Receiver panel"));
    cmdPanel->setAccessibleName(tr("Receiver panel"));
    cmdPanel->setAutoDefault(false);

    auto *settings = new QHBoxLayout;
    settings->addWidget(lblCatchrange);
    settings->addWidget(txtCatchrange);
    settings->addSpacing(12);
    settings->addWidget(lblFreqstep);
    settings->addWidget(txtFreqstep);
    settings->addWidget(spnFreqstep);
    settings->addStretch(1);
    settings->addLayout(pages);
    settings->addSpacing(12);
    settings->addWidget(txtFrequencyA);
    settings->addWidget(cmdPanel);
    auto *frames = new QHBoxLayout;
    frames->addWidget(fraMousedial);
    frames->addWidget(fraHitsall);
    frames->addWidget(fraAlternates);
    frames->addStretch(1);
    auto *buttons = new QVBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cmdLoad);
    buttons->addWidget(cmdExit);
    frames->addLayout(buttons);
    auto *col = new QVBoxLayout(this);
    col->setSpacing(4);
    col->addWidget(lblDatabase);
    col->addLayout(rows);
    col->addLayout(settings);
    col->addLayout(frames);
    col->setSizeConstraint(QLayout::SetFixedSize);

    for (int p = 0; p < tracking::kPages; ++p)
        connect(cmdShow[size_t(p)], &QPushButton::clicked, this, guarded(guard_, [this, p] { cmdShow_Click(p); }));
    // An option's handler runs when it comes on, by a click or by the load's choice, as its click did.
    for (int i = 0; i < 2; ++i) {
        connect(optMousedial[size_t(i)], &QRadioButton::toggled, this, guarded<bool>(guard_, [this, i](bool on) {
                    if (on)
                        optMousedial_Click(i);
                }));
        connect(optHitsall[size_t(i)], &QRadioButton::toggled, this, guarded<bool>(guard_, [this](bool on) {
                    if (on)
                        optHitsall_Click();
                }));
    }
    for (QRadioButton *o : optAlternates)
        connect(o, &QRadioButton::toggled, this, guarded<bool>(guard_, [this](bool on) {
                    if (on)
                        optAlternates_Click();
                }));
    connect(spnFreqstep, &SpinButton::SpinDown, this, guarded(guard_, [this] { spnFreqstep_SpinDown(); }));
    connect(spnFreqstep, &SpinButton::SpinUp, this, guarded(guard_, [this] { spnFreqstep_SpinUp(); }));
    connect(cmdLoad, &QPushButton::clicked, this, guarded(guard_, [this] { cmdLoad_Click(); }));
    connect(cmdExit, &QPushButton::clicked, this, guarded(guard_, [this] { cmdExit_Click(); }));
    connect(&tmrDial7030, &QTimer::timeout, this, guarded(guard_, [this] { tmrDial7030_Timer(); }));
    nameForAccessibility(this);
}

frmTracking::~frmTracking()
{
    tmrDial7030.stop();
    // Gone without its unload (the program ending): nothing may call into it.
    if (!unloaded_) {
        if (frmWelcome *w = frmWelcome::instance())
            w->hub.searchTracking = nullptr;
        registerReader(kTrackingKind, {});
        trackDataLoaded = false;
    }
}

frmTracking *frmTracking::open()
{
    return raiseOrLoad(theTracking, [](const frmTracking &) { return isOpen(Win::frmTracking); });
}

void frmTracking::Form_Load()
{
    unloaded_ = false;
    tmrDial7030.stop();
    setStepControlsVisible(false);
    spnFreqstep->setEnabled(false);
    for (QGroupBox *f : {fraMousedial, fraHitsall, fraAlternates})
        f->setEnabled(false);
    // Neither a set without a receiver nor the RX-320 has a dial to read.
    optMousedial[1]->setEnabled(rxType != rxRX320 && rxType != rxNone);
    registerReader(kTrackingKind, [this] { LoadTrackingFile(); });
    if (frmWelcome *w = frmWelcome::instance()) {
        QPointer<frmTracking> self(this);
        w->hub.searchTracking = [self] {
            if (self)
                self->SearchTracking();
        };
    }
    frame_->load();
    if (frmWelcome *w = frmWelcome::instance())
        w->Update4RxFreq();
    show();
}

void frmTracking::Form_Unload()
{
    if (unloaded_)
        return;
    unloaded_ = true;
    tmrDial7030.stop();
    // Closed by its close box in dial mode: the receiver stops reporting all the same.
    if (dialActive && (rxType == rxNRD535 || rxType == rxNRD545))
        endDial();
    frame_->unload();
    trackDataLoaded = false;
    registerReader(kTrackingKind, {});
    if (frmWelcome *w = frmWelcome::instance())
        w->hub.searchTracking = nullptr;
}

void frmTracking::cmdExit_Click()
{
    if (rxType == rxNRD535 || rxType == rxNRD545)
        endDial();
    close();
}

void frmTracking::closeEvent(QCloseEvent *e)
{
    if (guard_.holdClose(e))
        return;
    Form_Unload();
    e->accept();
}

bool frmTracking::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseButtonRelease && static_cast<QMouseEvent *>(event)->button() == Qt::LeftButton)
        for (int r = 0; r < tracking::kRows; ++r)
            if (watched == lblBingo[size_t(r)]) {
                const HandlerScope scope(guard_);
                lblBingo_Click(r);
                return true;
            }
    return QWidget::eventFilter(watched, event);
}

// ---------------------------------------------------------------- the database

void frmTracking::cmdLoad_Click()
{
    QPointer<frmTracking> self(this);
    fileType = int16_t(kTrackingKind);
    frmLoadfile::showModal(this);
    if (self)
        unsetCursor();
}

void frmTracking::LoadTrackingFile()
{
    setCursor(Qt::WaitCursor);
    for (int r = 0; r < tracking::kRows; ++r)
        paintRow(r, QString(), tracking::kPlainColour);
    lblCatchrange->hide();
    txtCatchrange->hide();
    tracking::readTracking(textfile::readAll(chosenFilePath()));
    trackFreq = numtext::Val(txtFrequencyA->text());
    SearchTracking();
    lblCatchrange->show();
    txtCatchrange->show();
    spnFreqstep->setEnabled(true);
    for (QGroupBox *f : {fraMousedial, fraAlternates, fraHitsall})
        f->setEnabled(true);
    const QString name = chosenFileTable[kTrackingKind];
    const tracking::FileLook look = tracking::lookFor(name);
    if (!look.step.isEmpty())
        txtFreqstep->setText(look.step);
    if (look.hitsAll >= 0)
        optHitsall[size_t(look.hitsAll)]->setChecked(true);
    fraHitsall->setEnabled(look.hitsFrame);
    if (look.alternates >= 0)
        optAlternates[size_t(look.alternates)]->setChecked(true);
    fraAlternates->setEnabled(look.alternatesFrame);
    // Turned on also when it is on already: its handler shows the step controls.
    if (optMousedial[0]->isChecked())
        optMousedial_Click(0);
    else
        optMousedial[0]->setChecked(true);
    lblDatabase->setText(QStringLiteral("Tracking database ") + name + QStringLiteral(" / ") +
                         QString::number(tracking::trackCount) + QStringLiteral(" records"));
    trackDataLoaded = true;
    unsetCursor();
}

// ---------------------------------------------------------------- search and rows

void frmTracking::SearchTracking()
{
    if (!tracking::searchIndex(trackFreq))
        return;
    // The filler writes every row; emptying them first would only make them flicker.
    fill(optHitsall[0]->isChecked());
}

void frmTracking::ListTrackingAll() { fill(false); }
void frmTracking::ListTrackingHits() { fill(true); }
void frmTracking::ShowTrackingAll(int page) { showPage(page, false); }
void frmTracking::ShowTrackingHits(int page) { showPage(page, true); }

void frmTracking::fill(bool hitsOnly)
{
    for (QPushButton *b : cmdShow) {
        b->setEnabled(false);
        b->setText(QString());
    }
    const int32_t count = tracking::ListTracking(trackFreq, numtext::valc(txtCatchrange->text()), hitsOnly,
                                                 tracking::presentTime(utcText));
    const int pages = tracking::enabledPages(count);
    for (int p = 0; p < pages; ++p) {
        cmdShow[size_t(p)]->setEnabled(true);
        cmdShow[size_t(p)]->setText(QString::number(p + 1));
    }
    showPage(0, hitsOnly);
}

void frmTracking::showPage(int page, bool hitsOnly)
{
    tracking::View v;
    v.hitsOnly = hitsOnly;
    for (int i = 0; i < int(optAlternates.size()); ++i)
        if (optAlternates[size_t(i)]->isChecked())
            v.alternates = i;
    v.now = tracking::presentTime(utcText);
    v.area = numtext::cint(slotRxTargetArea());
    v.rxLatitude = rxLatitude;
    v.rxLongitude = rxLongitude;
    const auto rows = tracking::ShowTracking(page, v);
    for (int r = 0; r < tracking::kRows; ++r)
        paintRow(r, rows[size_t(r)].text, rows[size_t(r)].colour);
}

void frmTracking::paintRow(int r, const QString &text, uint32_t colour)
{
    QLabel *l = lblBingo[size_t(r)];
    // Only what changed is written, so that the rows do not flicker as the dial turns.
    if (l->text() != text)
        l->setText(text);
    if (colours_[size_t(r)] != colour) {
        colours_[size_t(r)] = colour;
        QPalette p = l->palette();
        p.setColor(QPalette::Window, colourOf(colour));
        p.setColor(QPalette::WindowText, Qt::black);
        l->setPalette(p);
    }
}

void frmTracking::cmdShow_Click(int index)
{
    showPage(index, optHitsall[0]->isChecked());
}

void frmTracking::optHitsall_Click() { fill(optHitsall[0]->isChecked()); }
void frmTracking::optAlternates_Click() { fill(optHitsall[0]->isChecked()); }

void frmTracking::lblBingo_Click(int index)
{
    if (!isOpen(Win::frmLoginput))
        return;
    auto *input = qobject_cast<frmLoginput *>(frmWelcome::openWindow(Win::frmLoginput));
    if (!input)
        return;
    const QString caption = lblBingo[size_t(index)]->text();
    input->txtLoginput[5]->setText(caption.mid(51, 3));
    input->txtLoginput[6]->setText(caption.mid(19, 20));
    input->txtLoginput[7]->setText(caption.mid(77, 12));
}

// ---------------------------------------------------------------- stepping and the dial

void frmTracking::step(bool up)
{
    if (!optMousedial[0]->isChecked())
        return;
    last20Enabled = !ignoresSteps();
    spnFreqstep->setEnabled(false);
    double f = tracking::steppedFrequency(txtFrequencyA->text(), txtFreqstep->text(), up, freqLowerLimit, freqUpperLimit);
    if (frmWelcome *w = frmWelcome::instance())
        w->Change2FreqA(f);
    spnFreqstep->setEnabled(true);
}

void frmTracking::setStepControlsVisible(bool visible)
{
    for (QWidget *w : {static_cast<QWidget *>(lblFreqstep), static_cast<QWidget *>(txtFreqstep),
                       static_cast<QWidget *>(spnFreqstep)})
        w->setVisible(visible);
}

void frmTracking::endDial()
{
    dialActive = false;
    send("I0\r");
    remoteLock = 0;
}

void frmTracking::optMousedial_Click(int index)
{
    frmWelcome *w = frmWelcome::instance();
    if (index == 1) {
        switch (rxType) {
        case rxAR7030:
            if (w)
                w->Update4RxFreq();
            lastDial_ = -1;
            tmrDial7030.start();
            break;
        case rxNRD535:
        case rxNRD545:
            remoteLock = 1;
            send("I1\r");
            send(rxType == rxNRD535 ? QByteArray("H0\r") : QByteArray("DD0\r"));
            dialActive = true;
            break;
        default:
            break;
        }
    } else if (rxType == rxAR7030) {
        tmrDial7030.stop();
    } else if (rxType == rxNRD535 || rxType == rxNRD545) {
        endDial();
    }
    setStepControlsVisible(index == 0);
    if (trackDataLoaded)
        SearchTracking();
}

void frmTracking::tmrDial7030_Timer()
{
    // The read waits on the line: a tick that comes meanwhile is passed over.
    if (ticking_ || guard_.stopRequested())
        return;
    ticking_ = true;
    last20Enabled = !ignoresSteps();
    frmWelcome *w = frmWelcome::instance();
    RxDriver *d = w ? w->hub.driver(rxAR7030) : nullptr;
    const double f = d ? d->FrequencyA() : lastDial_;
    if (f != lastDial_) {
        lastDial_ = f;
        if (RxPanel *p = w->hub.panel())
            p->hubFrequencyAChanged(f);
        trackFreq = f;
        SearchTracking();
    }
    ticking_ = false;
}
