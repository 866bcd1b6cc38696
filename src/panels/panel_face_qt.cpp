#include "panel_face_qt.h"
#include "ui/widgets/spin_button.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QFontDatabase>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSlider>
#include <QStyle>
#include <QVBoxLayout>

namespace {

// The receiver's face: dark metal, light lettering, an amber mark on the setting in force,
// and a display of green light behind dark glass.
const char *const kPanelStyle = R"(
QMainWindow, QWidget#panelFace { background: #2a2f38; }
QWidget { color: #e3e6eb; }
QMenuBar { background: #20242b; color: #e3e6eb; }
QMenuBar::item:selected { background: #3d4552; }
QMenu { background: #2a2f38; color: #e3e6eb; border: 1px solid #4a5260; }
QMenu::item:selected { background: #3d4552; }
QMenu::item:disabled { color: #6e7582; }
QGroupBox { border: 1px solid #4a5260; border-radius: 5px; margin-top: 9px; padding: 4px 4px 3px 4px; }
QGroupBox::title { subcontrol-origin: margin; left: 8px; padding: 0 3px; color: #aab3c0; }
QPushButton { background: #3a414d; border: 1px solid #566070; border-radius: 4px; padding: 3px 6px;
              min-height: 20px; color: #eef0f3; }
QPushButton:hover { background: #454d5b; }
QPushButton:pressed { background: #566070; }
QPushButton:focus { border: 1px solid #9fb4d0; }
QPushButton:disabled { background: #30353e; color: #5f6672; border-color: #3c424c; }
QPushButton[active="true"] { background: #e0a93e; color: #17130a; border-color: #f3c66b; font-weight: bold; }
QPushButton#cmdMovefreq { background: #2f5a3a; border-color: #4f8a5d; font-weight: bold; min-width: 44px; }
QPushButton#cmdMovefreq[running="true"] { background: #8a2f2f; border-color: #c05050; }
QPushButton#cmdMovefreq:disabled { background: #30353e; color: #5f6672; border-color: #3c424c; }
QPushButton#cmdPowerOnOff[active="true"] { background: #3f8f4f; color: #ffffff; border-color: #6fd07f; }
QComboBox { background: #1d2127; border: 1px solid #566070; border-radius: 3px; padding: 1px 4px; color: #eef0f3; }
QComboBox:disabled { color: #5f6672; background: #24282e; border-color: #3c424c; }
QComboBox QAbstractItemView { background: #1d2127; color: #eef0f3; selection-background-color: #3d4552; }
QToolButton { background: #3a414d; border: 1px solid #566070; border-radius: 3px; }
QToolButton:pressed { background: #566070; }
QSlider::groove:vertical { background: #15181d; width: 6px; border-radius: 3px; }
QSlider::handle:vertical { background: #d5dae2; border: 1px solid #8a93a1; height: 12px; margin: 0 -7px; border-radius: 3px; }
QSlider::sub-page:vertical { background: #15181d; border-radius: 3px; }
QSlider::add-page:vertical { background: #5d8f73; border-radius: 3px; }
QSlider::add-page:vertical:disabled { background: #3a414d; }
QSlider::handle:vertical:disabled { background: #5f6672; border-color: #4a5260; }
QLabel[role="caption"] { color: #aab3c0; }
QLabel[role="key"] { background: #3a414d; border: 1px solid #566070; border-radius: 4px; padding: 4px 8px; font-weight: bold; }
QLabel[role="key"]:disabled, QLabel[role="caption"]:disabled { color: #5f6672; background: transparent; }
QToolButton:disabled { background: #30353e; border-color: #3c424c; }
QLabel[role="value"] { color: #7df9c6; background: #0c1712; border: 1px solid #28372f; border-radius: 3px; padding: 1px 2px; }
QLabel[role="value"]:disabled { color: #4e5a54; border-color: #2a302d; }
QFrame#fraDisplay { background: #07120d; border: 2px solid #1e3a2c; border-radius: 8px; }
QFrame#fraDisplay QLabel { color: #7df9c6; background: transparent; }
QFrame#fraDisplay QLabel[role="dim"] { color: #3f8f70; }
QLineEdit#txtFrequencyA { background: transparent; border: none; color: #8dffd2; selection-background-color: #2d6b52; }
QLabel#lblMfreq { color: #ffd27a; background: #15120a; border: 1px solid #4a3f22; border-radius: 3px; padding: 2px 4px; }
)";

QString tr(const char *text) { return QCoreApplication::translate("panelface", text); }

} // namespace

// --- ClickLabel ---

ClickLabel::ClickLabel(const QString &text, QWidget *parent) : QLabel(text, parent) {}

void ClickLabel::setBackColor(const QColor &c)
{
    back_ = c;
    setStyleSheet(QStringLiteral("QLabel { background: %1; color: #101010; border-radius: 3px; font-weight: bold; }")
                      .arg(c.name()));
}

void ClickLabel::mouseReleaseEvent(QMouseEvent *e)
{
    QLabel::mouseReleaseEvent(e);
    if (e->button() == Qt::LeftButton && rect().contains(e->position().toPoint()))
        emit clicked();
}

void setBarQuietly(QAbstractSlider *bar, int value)
{
    const QSignalBlocker quiet(bar);
    bar->setValue(value);
}

namespace panelface {

QFont fixedFont(int pixelSize, bool bold)
{
    QFont f(QStringLiteral("DejaVu Sans Mono"));
    f.setStyleHint(QFont::Monospace);
    f.setFixedPitch(true);
    if (!QFontInfo(f).fixedPitch())
        f = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    f.setPixelSize(pixelSize);
    f.setBold(bold);
    return f;
}

QPushButton *makeButton(const QString &name, const QString &caption, QWidget *parent)
{
    auto *b = new QPushButton(caption, parent);
    b->setObjectName(name);
    b->setAutoDefault(false);
    // The window's keys work wherever the focus is; a click need not take it from the box.
    b->setFocusPolicy(Qt::TabFocus);
    return b;
}

QGroupBox *buttonGroup(const QString &title, const QList<QPushButton *> &buttons, int columns)
{
    auto *g = new QGroupBox(title);
    auto *grid = new QGridLayout(g);
    grid->setContentsMargins(6, 8, 6, 6);
    grid->setSpacing(4);
    const int cols = columns > 0 ? columns : int(buttons.size());
    for (int i = 0; i < buttons.size(); ++i) {
        buttons[i]->setParent(g);
        buttons[i]->setMinimumWidth(46);
        grid->addWidget(buttons[i], i / cols, i % cols);
    }
    return g;
}

Fader makeFader(const char *barName, const char *labelName, const QString &caption, int min, int max, int small,
                int large, bool clickZero)
{
    auto *box = new QWidget;
    auto *col = new QVBoxLayout(box);
    col->setContentsMargins(2, 0, 2, 0);
    col->setSpacing(3);
    auto *cap = new QLabel(caption, box);
    cap->setProperty("role", "caption");
    cap->setAlignment(Qt::AlignHCenter);
    auto *bar = new QSlider(Qt::Vertical, box);
    bar->setObjectName(QLatin1String(barName));
    bar->setRange(min, max);
    bar->setSingleStep(small);
    bar->setPageStep(large);
    // A value is sent when the bar is let go, not at every pixel of a drag.
    bar->setTracking(false);
    bar->setMinimumHeight(110);
    bar->setFocusPolicy(Qt::TabFocus);
    bar->setAccessibleName(caption);
    auto *label = new ClickLabel(QString(), box);
    label->setObjectName(QLatin1String(labelName));
    label->setProperty("role", "value");
    label->setAlignment(Qt::AlignCenter);
    label->setFont(fixedFont(13, true));
    label->setMinimumWidth(50);
    label->setMaximumWidth(76);
    if (clickZero) {
        label->setToolTip(tr("Click to set %1 to 0").arg(caption));
        label->setCursor(Qt::PointingHandCursor);
        QObject::connect(label, &ClickLabel::clicked, bar, [bar] { bar->setValue(0); });
    }
    col->addWidget(cap);
    col->addWidget(bar, 1, Qt::AlignHCenter);
    col->addWidget(label, 0, Qt::AlignHCenter);
    return {bar, label, box};
}

QLabel *addStatus(QHBoxLayout *status, const char *name, const QString &caption)
{
    auto *cap = new QLabel(caption);
    cap->setProperty("role", "dim");
    cap->setFont(fixedFont(13, false));
    auto *value = new QLabel;
    value->setObjectName(QLatin1String(name));
    value->setFont(fixedFont(20, true));
    value->setMinimumWidth(70);
    status->addWidget(cap);
    status->addWidget(value);
    status->addSpacing(14);
    return value;
}

Display buildDisplay()
{
    Display d{};
    auto *frame = new QFrame;
    d.frame = frame;
    frame->setObjectName(QStringLiteral("fraDisplay"));
    auto *col = new QVBoxLayout(frame);
    col->setContentsMargins(16, 8, 16, 10);
    col->setSpacing(2);

    auto *row = new QHBoxLayout;
    QLineEdit *f = d.frequency = new QLineEdit(frame);
    f->setObjectName(QStringLiteral("txtFrequencyA"));
    f->setFont(fixedFont(54, true));
    f->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    f->setMouseTracking(true);
    f->setToolTip(tr("Type a frequency in kHz and press Enter; double click to clear.\n"
                     "The mouse wheel tunes while the pointer is here."));
    // Room for "30000.000" however wide the font draws.
    f->setMinimumWidth(QFontMetrics(f->font()).horizontalAdvance(QStringLiteral("30000.0000")));
    auto *unit = new QLabel(QStringLiteral("kHz"), frame);
    unit->setProperty("role", "dim");
    unit->setFont(fixedFont(20, true));
    row->addWidget(f, 1);
    row->addWidget(unit, 0, Qt::AlignBottom);
    col->addLayout(row);

    d.status = new QHBoxLayout;
    d.status->setSpacing(6);
    d.mode = addStatus(d.status, "lblMode", tr("MODE"));
    d.bandwidth = addStatus(d.status, "lblBandwidth", tr("FIL"));
    d.agcSpeed = addStatus(d.status, "lblAgcspeed", tr("AGC"));
    col->addLayout(d.status);
    return d;
}

Keypad buildKeypad()
{
    Keypad k{};
    auto *g = new QGroupBox(tr("Keypad"));
    k.box = g;
    auto *grid = new QGridLayout(g);
    grid->setContentsMargins(6, 8, 6, 6);
    grid->setSpacing(4);
    k.number = new QLabel(g);
    k.number->setObjectName(QStringLiteral("lblMfreq"));
    k.number->setFont(fixedFont(18, true));
    k.number->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    k.number->setMinimumHeight(28);
    k.number->setToolTip(tr("The number typed on the keypad (or with Ctrl and the digits)"));
    grid->addWidget(k.number, 0, 0, 1, 4);
    for (int i = 0; i < 10; ++i) {
        k.digits[size_t(i)] = makeButton(QStringLiteral("cmd0to9_%1").arg(i), QString::number(i), g);
        k.digits[size_t(i)]->setFont(fixedFont(15, true));
    }
    k.dot = makeButton(QStringLiteral("cmdDot"), QStringLiteral("."), g);
    k.dot->setToolTip(tr("Decimal point"));
    k.dot->setAccessibleName(tr("Decimal point"));
    k.back = makeButton(QStringLiteral("cmdBack"), QStringLiteral("\u2190"), g);
    k.back->setToolTip(tr("Drop the last character"));
    k.back->setAccessibleName(tr("Back"));
    k.enterFreq = makeButton(QStringLiteral("cmdEnterfreq"), QStringLiteral("F"), g);
    k.enterFreq->setToolTip(tr("Tune to the number as a frequency in kHz (Ctrl+F)"));
    k.enterMem = makeButton(QStringLiteral("cmdEnterMem"), QStringLiteral("M"), g);
    k.enterMem->setToolTip(tr("Recall the number as a memory cell (Ctrl+M)"));
    k.enterStep = makeButton(QStringLiteral("cmdEnterS"), QStringLiteral("S"), g);
    k.enterStep->setToolTip(tr("Take the number as the step in kHz (Ctrl+S)"));
    for (QPushButton *b : {k.dot, k.back, k.enterFreq, k.enterMem, k.enterStep})
        b->setFont(fixedFont(15, true));
    const int order[3][3] = {{7, 8, 9}, {4, 5, 6}, {1, 2, 3}};
    for (int r = 0; r < 3; ++r)
        for (int c = 0; c < 3; ++c)
            grid->addWidget(k.digits[size_t(order[r][c])], r + 1, c);
    grid->addWidget(k.digits[0], 4, 0);
    grid->addWidget(k.dot, 4, 1);
    grid->addWidget(k.back, 4, 2);
    grid->addWidget(k.enterFreq, 1, 3);
    grid->addWidget(k.enterMem, 2, 3);
    grid->addWidget(k.enterStep, 3, 3);
    for (int c = 0; c < 4; ++c)
        grid->setColumnMinimumWidth(c, 38);
    return k;
}

Tuning buildTuning()
{
    Tuning t{};
    auto *g = new QGroupBox(tr("Tuning"));
    t.box = g;
    auto *row = new QHBoxLayout(g);
    row->setContentsMargins(6, 8, 6, 6);
    row->setSpacing(6);
    t.step[0] = makeButton(QStringLiteral("cmdfreqstep_0"), QStringLiteral("\u25C0"), g);
    t.step[0]->setToolTip(tr("One step down"));
    t.step[0]->setAccessibleName(tr("Step down"));
    t.step[1] = makeButton(QStringLiteral("cmdfreqstep_1"), QStringLiteral("\u25B6"), g);
    t.step[1]->setToolTip(tr("One step up"));
    t.step[1]->setAccessibleName(tr("Step up"));
    t.spin = new SpinButton(Qt::Vertical, g);
    t.spin->setObjectName(QStringLiteral("spnFreqstep"));
    t.spin->setFixedSize(24, 34);
    t.spin->setToolTip(tr("Step up or down"));
    auto *stepCap = new QLabel(tr("Step"), g);
    stepCap->setProperty("role", "caption");
    QComboBox *size = t.stepSize = new QComboBox(g);
    size->setObjectName(QStringLiteral("cmbFreqstep"));
    size->setEditable(true);
    size->setInsertPolicy(QComboBox::NoInsert);
    size->setMaxVisibleItems(19);
    size->setMinimumWidth(80);
    size->setFocusPolicy(Qt::ClickFocus);
    auto *unit = new QLabel(QStringLiteral("kHz"), g);
    unit->setProperty("role", "caption");
    t.move = makeButton(QStringLiteral("cmdMovefreq"), QStringLiteral("GO"), g);
    t.move->setToolTip(tr("Run the dial in the direction of the last step; click again to stop (Ctrl+G)"));
    t.round5 = new ClickLabel(QStringLiteral("i 5"), g);
    t.round5->setObjectName(QStringLiteral("lblInt5"));
    t.round5->setToolTip(tr("Round the frequency to the nearest 5 kHz"));
    t.round1 = new ClickLabel(QStringLiteral("i 1"), g);
    t.round1->setObjectName(QStringLiteral("lbnInt1"));
    t.round1->setToolTip(tr("Round the frequency to the nearest kHz"));
    for (ClickLabel *l : {t.round5, t.round1}) {
        l->setProperty("role", "key");
        l->setAlignment(Qt::AlignCenter);
        l->setMinimumWidth(40);
        l->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
        l->setCursor(Qt::PointingHandCursor);
    }
    row->addWidget(t.step[0]);
    row->addWidget(t.spin);
    row->addWidget(t.step[1]);
    row->addSpacing(10);
    row->addWidget(stepCap);
    row->addWidget(size);
    row->addWidget(unit);
    row->addSpacing(10);
    row->addWidget(t.move);
    row->addStretch(1);
    row->addWidget(t.round5);
    row->addWidget(t.round1);
    return t;
}

QWidget *keyHints(const QList<std::pair<QString, QString>> &rows)
{
    auto *g = new QGroupBox(tr("Keys"));
    g->setObjectName(QStringLiteral("fraKeys"));
    auto *grid = new QGridLayout(g);
    grid->setContentsMargins(8, 8, 8, 6);
    grid->setHorizontalSpacing(10);
    grid->setVerticalSpacing(2);
    int r = 0;
    for (const auto &[keys, what] : rows) {
        auto *k = new QLabel(keys, g);
        k->setFont(fixedFont(11, true));
        auto *w = new QLabel(what, g);
        w->setProperty("role", "caption");
        grid->addWidget(k, r, 0);
        grid->addWidget(w, r, 1);
        ++r;
    }
    return g;
}

void arrangeFace(QWidget *face, QVBoxLayout *left, QWidget *keypad, const QList<QWidget *> &rightExtras,
                 QPushButton *close)
{
    auto *right = new QVBoxLayout;
    right->addWidget(keypad);
    for (QWidget *w : rightExtras)
        right->addWidget(w);
    right->addStretch(1);
    right->addWidget(close, 0, Qt::AlignRight);
    auto *row = new QHBoxLayout(face);
    row->setContentsMargins(10, 8, 10, 10);
    row->setSpacing(10);
    row->addLayout(left, 1);
    row->addLayout(right);
}

void applyLook(QWidget *window, ClickLabel *mute)
{
    window->setStyleSheet(QString::fromLatin1(kPanelStyle));
    if (!mute)
        return;
    mute->setAlignment(Qt::AlignCenter);
    mute->setMinimumSize(60, 26);
    mute->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    mute->setCursor(Qt::PointingHandCursor);
    mute->setToolTip(tr("Mute; click again to bring the levels back"));
    mute->setBackColor(QColor::fromRgb(kMuteOff));
}

void markActive(const QList<QPushButton *> &buttons, int index)
{
    for (int i = 0; i < buttons.size(); ++i) {
        QPushButton *b = buttons[i];
        const bool on = i == index;
        if (b->property("active").toBool() == on)
            continue;
        b->setProperty("active", on);
        b->style()->unpolish(b);
        b->style()->polish(b);
    }
}

} // namespace panelface
