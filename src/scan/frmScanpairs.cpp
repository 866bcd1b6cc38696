#include "frmScanpairs.h"
#include "core/frmWelcome.h"
#include "core/numtext.h"
#include "core/shared_state.h"
#include "core/textfile.h"
#include "data/file_store.h"
#include "data/frmLoadfile.h"
#include "data/frmSavefile.h"
#include "ui/facades.h"
#include "ui/widgets/form_position.h"
#include "ui/widgets/list_frame.h"
#include "ui/widgets/raise_or_load.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QFontDatabase>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpressionValidator>
#include <QScrollBar>
#include <QVBoxLayout>

using namespace scanpairs;

namespace {
QPointer<frmScanpairs> theScanpairs;
constexpr int kSfpKind = 12;
const QString kCaption = QStringLiteral("Scan Frequency pairs from list");
const QColor kActiveSide(128, 255, 255);

void setBackColor(QLabel *l, const QColor &c)
{
    QPalette p = l->palette();
    p.setColor(QPalette::Window, c);
    l->setPalette(p);
}
} // namespace

frmScanpairs::frmScanpairs(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("frmScanpairs"));
    setWindowTitle(kCaption);
    setAttribute(Qt::WA_DeleteOnClose);
    tmrScanpairs.setObjectName(QStringLiteral("tmrScanpairs"));

    const QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    const QFontMetrics fm(fixed);
    auto cell = [&](const char *name, int i, int chars) {
        auto *l = new QLabel(this);
        l->setObjectName(QStringLiteral("%1_%2").arg(QLatin1String(name)).arg(i));
        l->setFont(fixed);
        l->setFrameShape(QFrame::Panel);
        l->setFrameShadow(QFrame::Sunken);
        l->setAutoFillBackground(true);
        l->setFixedWidth(fm.horizontalAdvance(QString(chars, u'0')) + 10);
        setBackColor(l, Qt::white);
        return l;
    };
    auto *rows = new QGridLayout;
    rows->setHorizontalSpacing(4);
    rows->setVerticalSpacing(1);
    const char *heads[] = {"Nr", "Channel A", "Channel B", "Scan", "Remarks"};
    for (int c = 0; c < 5; ++c)
        rows->addWidget(new QLabel(tr(heads[c]), this), 0, c);
    const auto noComma = new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[^,]*")), this);
    for (int i = 0; i < kRows; ++i) {
        const size_t k = size_t(i);
        lblNr[k] = cell("lblNr", i, 6);
        lblNr[k]->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        lblNr[k]->setFrameShape(QFrame::NoFrame);
        lblNr[k]->setAutoFillBackground(false);
        lblChannelA[k] = cell("lblChannelA", i, 10);
        lblChannelB[k] = cell("lblChannelB", i, 10);
        for (QLabel *l : {lblChannelA[k], lblChannelB[k]}) {
            l->setCursor(Qt::PointingHandCursor);
            l->setToolTip(tr("Click to tune to this frequency"));
            l->installEventFilter(this);
        }
        chkChannel[k] = new QCheckBox(this);
        chkChannel[k]->setObjectName(QStringLiteral("chkChannel_%1").arg(i));
        chkChannel[k]->setToolTip(tr("Ticked pairs are scanned"));
        chkChannel[k]->installEventFilter(this);
        txtRemarks[k] = new QLineEdit(this);
        txtRemarks[k]->setObjectName(QStringLiteral("txtRemarks_%1").arg(i));
        txtRemarks[k]->setValidator(noComma);
        txtRemarks[k]->setMinimumWidth(fm.horizontalAdvance(QString(28, u'x')));
        txtRemarks[k]->installEventFilter(this);
        const int h = txtRemarks[k]->sizeHint().height();
        for (QLabel *l : {lblNr[k], lblChannelA[k], lblChannelB[k]})
            l->setFixedHeight(h);
        rows->addWidget(lblNr[k], i + 1, 0);
        rows->addWidget(lblChannelA[k], i + 1, 1);
        rows->addWidget(lblChannelB[k], i + 1, 2);
        rows->addWidget(chkChannel[k], i + 1, 3, Qt::AlignCenter);
        rows->addWidget(txtRemarks[k], i + 1, 4);
    }
    QFont bold = fixed;
    bold.setBold(true);
    lblNr[kActiveRow]->setFont(bold);
    vsbActnr = new QScrollBar(Qt::Vertical, this);
    vsbActnr->setObjectName(QStringLiteral("vsbActnr"));
    vsbActnr->setRange(0, 0);
    vsbActnr->setToolTip(tr("Scroll through the pairs"));
    rows->addWidget(vsbActnr, 1, 5, kRows, 1);

    auto *sides = new QGroupBox(this);
    auto *sidesCol = new QVBoxLayout(sides);
    const QString sideCaptions[] = {QStringLiteral("Scan A channels"), QStringLiteral("Scan B channels")};
    for (int i = 0; i < 2; ++i) {
        optScanAB[size_t(i)] = new QRadioButton(sideCaptions[i], sides);
        optScanAB[size_t(i)]->setObjectName(QStringLiteral("optScanAB_%1").arg(i));
        sidesCol->addWidget(optScanAB[size_t(i)]);
    }
    optScanAB[0]->setChecked(true);

    auto box = [this](const char *name, const QString &text, const QString &tip) {
        auto *t = new QLineEdit(text, this);
        t->setObjectName(QLatin1String(name));
        t->setFixedWidth(QFontMetrics(font()).horizontalAdvance(QStringLiteral("000000")) + 12);
        t->setToolTip(tip);
        return t;
    };
    txtStart = box("txtStart", QStringLiteral("0"), tr("The first pair of the scan"));
    txtEnd = box("txtEnd", QStringLiteral("0"), tr("The last pair of the scan; below Scan Start the scan runs over the end of the list"));
    txtDelay = box("txtDelay", QStringLiteral("1"), tr("Seconds on each pair, 0.5 to 60"));
    auto *range = new QGridLayout;
    const std::pair<QString, QLineEdit *> boxes[] = {
        {QStringLiteral("Scan Start"), txtStart}, {QStringLiteral("Scan End"), txtEnd}, {QStringLiteral("Scan Delay"), txtDelay}};
    for (int i = 0; i < 3; ++i) {
        range->addWidget(new QLabel(boxes[i].first, this), i, 0);
        range->addWidget(boxes[i].second, i, 1);
    }

    auto button = [this](const char *name, const QString &caption, const QString &tip) {
        auto *b = new QPushButton(caption, this);
        b->setObjectName(QLatin1String(name));
        b->setAutoDefault(false);
        if (!tip.isEmpty())
            b->setToolTip(tip);
        return b;
    };
    cmdStart = button("cmdStart", QStringLiteral("Start"), tr("Scan from Scan Start"));
    cmdStop = button("cmdStop", QStringLiteral("Stop"), {});
    cmdContinue = button("cmdContinue", QStringLiteral("Continue"), tr("Scan on from where the scan stopped"));
    cmdLoad = button("cmdLoad", QStringLiteral("Load Pairs"), {});
    cmdsaveas = button("cmdsaveas", QStringLiteral("Save Pairs"), {});
    cmdPanel = button("cmdPanel", QStringLiteral("Panel"), tr("Show the receiver's panel"));
    cmdExit = button("cmdExit", QStringLiteral("Exit"), {});

    lblFile = new QLabel(QStringLiteral("File"), this);
    lblFile->setObjectName(QStringLiteral("lblFile"));
    lblFilename = new QLabel(this);
    lblFilename->setObjectName(QStringLiteral("lblFilename"));
    lblFilename->setFrameShape(QFrame::Panel);
    lblFilename->setFrameShadow(QFrame::Sunken);
    lblFilename->setMinimumWidth(fm.horizontalAdvance(QString(24, u'x')));
    lblFilename->setFixedHeight(txtRemarks[0]->sizeHint().height());

    auto *side = new QVBoxLayout;
    side->addWidget(sides);
    side->addLayout(range);
    side->addSpacing(8);
    for (QPushButton *b : {cmdStart, cmdStop, cmdContinue})
        side->addWidget(b);
    side->addStretch(1);
    for (QPushButton *b : {cmdLoad, cmdsaveas, cmdPanel, cmdExit})
        side->addWidget(b);
    auto *file = new QHBoxLayout;
    file->addWidget(lblFile);
    file->addWidget(lblFilename, 1);
    auto *left = new QVBoxLayout;
    left->addLayout(rows);
    left->addLayout(file);
    left->addStretch(1);
    auto *all = new QHBoxLayout(this);
    all->addLayout(left);
    all->addSpacing(8);
    all->addLayout(side);
    all->setSizeConstraint(QLayout::SetFixedSize);

    const std::pair<QPushButton *, void (frmScanpairs::*)()> handlers[] = {
        {cmdStart, &frmScanpairs::cmdStart_Click}, {cmdStop, &frmScanpairs::cmdStop_Click},
        {cmdContinue, &frmScanpairs::cmdContinue_Click}, {cmdLoad, &frmScanpairs::cmdLoad_Click},
        {cmdsaveas, &frmScanpairs::cmdsaveas_Click}, {cmdExit, &frmScanpairs::cmdExit_Click}};
    for (const auto &[b, h] : handlers)
        connect(b, &QPushButton::clicked, this, guarded(guard_, [this, h = h] { (this->*h)(); }));
    connect(cmdPanel, &QPushButton::clicked, this, guarded(guard_, [] { ListFrame::showPanel(); }));
    for (int i = 0; i < 2; ++i)
        connect(optScanAB[size_t(i)], &QRadioButton::clicked, this, guarded(guard_, [this, i] { optScanAB_Click(i); }));
    connect(vsbActnr, &QScrollBar::valueChanged, this, guarded<int>(guard_, [this](int v) { vsbActnr_Change(v); }));
    connect(txtStart, &QLineEdit::textChanged, this, guarded(guard_, [this] { txtStart_Change(); }));
    connect(txtEnd, &QLineEdit::textChanged, this, guarded(guard_, [this] { txtEnd_Change(); }));
    connect(txtDelay, &QLineEdit::textChanged, this, guarded(guard_, [this] { txtDelay_Change(); }));
    connect(&tmrScanpairs, &QTimer::timeout, this, guarded(guard_, [this] { tmrScanpairs_Timer(); }));
    nameForAccessibility(this);
}

frmScanpairs::~frmScanpairs()
{
    tmrScanpairs.stop();
    frmWelcome::forgetOpenWindow(Win::frmScanpairs, this);
}

frmScanpairs *frmScanpairs::open()
{
    return raiseOrLoad(theScanpairs, [](const frmScanpairs &) { return isOpen(Win::frmScanpairs); });
}

void frmScanpairs::Form_Load()
{
    placeAtLoad(this, Win::frmScanpairs);
    receiver_ = std::make_unique<ScanReceiver>();
    holds_.take({QStringLiteral("mnuSmeter"), QStringLiteral("mnuScanBand"), QStringLiteral("mnuScanFreqlist"),
                 QStringLiteral("mnuPropagation")});
    QPointer<frmScanpairs> self(this);
    registerReader(kSfpKind, [self] {
        if (self)
            self->LoadSfpFile();
    });
    registerWriter(kSfpKind, [self] {
        if (self)
            self->SaveSfpFile();
    });
    scanDelay_ = 1;
    scanFirst_ = scanLast_ = 0;
    // The pairs of an earlier load are still there.
    vsbActnr->setMaximum(PairLast);
    lblFilename->setText(pairFileName);
    cmdStart->setEnabled(!pairFileName.isEmpty());
    cmdContinue->setEnabled(false);
    optScanAB_Click(optScanAB[1]->isChecked() ? 1 : 0);
    showactivepairs(pairShown_);
    show();
    isOpen(Win::frmScanpairs) = true;
    frmWelcome::setOpenWindow(Win::frmScanpairs, this);
}

// --- the list ---

int frmScanpairs::rowPair(int row) const
{
    const QString nr = lblNr[size_t(row)]->text();
    if (nr.isEmpty())
        return -1;
    const double v = numtext::Val(nr);
    return v >= 0 && v <= PairLast ? int(v) : -1;
}

void frmScanpairs::showactivepairs(int a)
{
    storeFocusedRow();
    const std::array<int, kRows> pairs = rowPairs(a, scanFirst_, scanLast_, PairLast);
    for (int r = 0; r < kRows; ++r) {
        const size_t k = size_t(r);
        const int i = pairs[k];
        const bool shown = i >= 0 && i < PairChecked.size();
        lblNr[k]->setText(shown ? numtext::strBlank(i) : QString());
        lblChannelA[k]->setText(shown ? PairChannelA[i] : QString());
        lblChannelB[k]->setText(shown ? PairChannelB[i] : QString());
        chkChannel[k]->setChecked(shown && PairChecked[i] == 1);
        txtRemarks[k]->setText(shown ? PairRemarks[i] : QString());
    }
}

void frmScanpairs::chkChannel_LostFocus(int row)
{
    const int i = rowPair(row);
    // A tick of another value than 1 stays as the file has it until the box is changed.
    if (i >= 0 && chkChannel[size_t(row)]->isChecked() != (PairChecked[i] == 1))
        PairChecked[i] = chkChannel[size_t(row)]->isChecked() ? 1 : 0;
}

void frmScanpairs::txtRemarks_LostFocus(int row)
{
    const int i = rowPair(row);
    if (i >= 0)
        PairRemarks[i] = txtRemarks[size_t(row)]->text();
}

void frmScanpairs::storeFocusedRow()
{
    QWidget *f = focusWidget();
    for (int r = 0; r < kRows; ++r) {
        if (f == chkChannel[size_t(r)])
            chkChannel_LostFocus(r);
        else if (f == txtRemarks[size_t(r)])
            txtRemarks_LostFocus(r);
    }
}

void frmScanpairs::vsbActnr_Change(int value)
{
    pairShown_ = value;
    showactivepairs(pairShown_);
}

void frmScanpairs::optScanAB_Click(int index)
{
    setBackColor(lblChannelA[kActiveRow], index == 0 ? kActiveSide : QColor(Qt::white));
    setBackColor(lblChannelB[kActiveRow], index == 0 ? QColor(Qt::white) : kActiveSide);
}

void frmScanpairs::lblChannel_Click(QLabel *label)
{
    if (scanning())
        return;
    double f = numtext::Val(label->text());
    if (f >= freqLowerLimit && f <= freqUpperLimit)
        if (frmWelcome *w = frmWelcome::instance())
            w->Change2FreqA(f);
}

bool frmScanpairs::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseButtonPress) {
        for (int r = 0; r < kRows; ++r)
            for (QLabel *l : {lblChannelA[size_t(r)], lblChannelB[size_t(r)]})
                if (watched == l) {
                    const HandlerScope scope(guard_);
                    lblChannel_Click(l);
                    return true;
                }
    } else if (event->type() == QEvent::FocusOut) {
        for (int r = 0; r < kRows; ++r) {
            if (watched == chkChannel[size_t(r)])
                chkChannel_LostFocus(r);
            else if (watched == txtRemarks[size_t(r)])
                txtRemarks_LostFocus(r);
        }
    }
    return QWidget::eventFilter(watched, event);
}

// --- the boxes ---

void frmScanpairs::txtStart_Change()
{
    if (const std::optional<int> v = pairIndexValue(txtStart->text(), PairLast)) {
        scanFirst_ = *v;
    } else {
        scanFirst_ = 0;
        txtStart->setText(QStringLiteral("0"));
    }
}

void frmScanpairs::txtEnd_Change()
{
    if (const std::optional<int> v = pairIndexValue(txtEnd->text(), PairLast)) {
        scanLast_ = *v;
    } else {
        scanLast_ = PairLast;
        txtEnd->setText(numtext::strBlank(PairLast));
    }
}

void frmScanpairs::txtDelay_Change()
{
    if (const std::optional<double> v = delayValue(txtDelay->text())) {
        scanDelay_ = float(*v);
    } else {
        scanDelay_ = 1;
        txtDelay->setText(QStringLiteral("1"));
    }
}

// --- the scan ---

void frmScanpairs::setIdleControls(bool enabled)
{
    for (QWidget *w : std::initializer_list<QWidget *>{cmdStart, cmdContinue, cmdLoad, cmdsaveas, vsbActnr,
                                                       optScanAB[0], optScanAB[1]})
        w->setEnabled(enabled);
}

void frmScanpairs::run(bool fromFirst)
{
    setIdleControls(false);
    tmrScanpairs.setInterval(numtext::clng(double(scanDelay_) * 1000));
    if (fromFirst)
        scanPos_ = scanFirst_;
    receiver_->lockPanel(1);
    tmrScanpairs.start();
}

void frmScanpairs::cmdStart_Click() { run(true); }
void frmScanpairs::cmdContinue_Click() { run(false); }

void frmScanpairs::cmdStop_Click()
{
    tmrScanpairs.stop();
    receiver_->lockPanel(0);
    setIdleControls(true);
}

void frmScanpairs::tmrScanpairs_Timer()
{
    // The hub's message for a frequency out of range waits for the listener while the timer
    // goes on: those ticks are passed over, not piled up.
    if (!scanning() || guard_.stopRequested() || ticking_)
        return;
    const int pos = nextTicked(scanPos_, scanFirst_, scanLast_);
    if (pos < 0) {
        cmdStop_Click();
        ui::MsgBox(QStringLiteral("No pair from Scan Start to Scan End is ticked,\nso there is nothing to scan.\n"
                                  "Tick the pairs to scan and press Start again."),
                   ui::vbExclamation, kCaption);
        return;
    }
    scanPos_ = pos;
    const QString &text = optScanAB[1]->isChecked() ? PairChannelB[pos] : PairChannelA[pos];
    double f = numtext::Val(text);
    QPointer<frmScanpairs> self(this);
    ticking_ = true;
    if (frmWelcome *w = frmWelcome::instance())
        w->Change2FreqA(f);
    if (!self)
        return;
    ticking_ = false;
    showactivepairs(pos);
    scanPos_ = advance(pos, scanFirst_, scanLast_, PairLast);
}

// --- the file ---

void frmScanpairs::LoadSfpFile()
{
    storeFocusedRow();
    setCursor(Qt::WaitCursor);
    const QString name = chosenFileTable[kSfpKind];
    const QString why = readSfp(textfile::readAll(chosenFilePath()));
    unsetCursor();
    if (!why.isEmpty()) {
        ui::MsgBox(QStringLiteral("%1 is not a file of frequency pairs.\n%2\n"
                                  "Each line must hold frequency A, frequency B, the tick (1 or 0)\n"
                                  "and a remark, split by three commas.\nThe pairs on screen are unchanged.")
                       .arg(name, why),
                   ui::vbExclamation, QStringLiteral("Load Pairs"));
        return;
    }
    pairFileName = name;
    // The rows still show the numbers of the old pairs: nothing of them may go into the new ones.
    for (QLabel *l : lblNr)
        l->clear();
    vsbActnr->setMaximum(PairLast);
    txtEnd->setText(numtext::strBlank(PairLast));
    lblFilename->setText(name);
    showactivepairs(pairShown_);
    cmdStart->setEnabled(true);
    cmdContinue->setEnabled(false);
}

void frmScanpairs::SaveSfpFile()
{
    storeFocusedRow();
    setCursor(Qt::WaitCursor);
    textfile::writeAtomically(chosenFilePath(), sfpBytes());
    unsetCursor();
}

void frmScanpairs::cmdLoad_Click()
{
    QPointer<frmScanpairs> self(this);
    fileType = kSfpKind;
    frmLoadfile::showModal(this);
    if (self)
        unsetCursor();
}

void frmScanpairs::cmdsaveas_Click()
{
    QPointer<frmScanpairs> self(this);
    storeFocusedRow();
    fileType = kSfpKind;
    frmSavefile::showModal(this);
    // A save that failed never reached its end: the pointer comes back all the same.
    if (self)
        unsetCursor();
}

// --- leaving ---

void frmScanpairs::cmdExit_Click() { close(); }

void frmScanpairs::closeEvent(QCloseEvent *e)
{
    if (guard_.holdClose(e))
        return;
    // No tick after this; the lock goes back to the panel if the panel is still there.
    if (scanning())
        cmdStop_Click();
    storeFocusedRow();
    registerReader(kSfpKind, {});
    registerWriter(kSfpKind, {});
    holds_.release();
    receiver_.reset();
    storeAtUnload(this, Win::frmScanpairs);
    isOpen(Win::frmScanpairs) = false;
    frmWelcome::forgetOpenWindow(Win::frmScanpairs, this);
    e->accept();
}
