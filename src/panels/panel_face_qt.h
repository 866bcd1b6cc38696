#pragma once
// The face every receiver panel wears: its look, and the parts it is built of (the display,
// the keypad, the tuning row, faders, button groups, key hints). The parts only make widgets;
// the panel keeps them and connects them.
#include <QLabel>
#include <QList>
#include <array>
#include <utility>

class QAbstractSlider;
class QComboBox;
class QGroupBox;
class QHBoxLayout;
class QLineEdit;
class QPushButton;
class QSlider;
class QVBoxLayout;
class SpinButton;

// A label that can be clicked, with a back colour of its own (the mute lamp).
class ClickLabel : public QLabel {
    Q_OBJECT
public:
    explicit ClickLabel(const QString &text = QString(), QWidget *parent = nullptr);
    void setBackColor(const QColor &c);
    QColor backColor() const { return back_; }
signals:
    void clicked();

protected:
    void mouseReleaseEvent(QMouseEvent *e) override;

private:
    QColor back_;
};

// Sets a bar from a receiver's report without writing it back to the receiver.
void setBarQuietly(QAbstractSlider *bar, int value);

namespace panelface {

constexpr QRgb kMuteOn = 0xFF0000;  // red while muted
constexpr QRgb kMuteOff = 0x00FF00; // green

QFont fixedFont(int pixelSize, bool bold);

QPushButton *makeButton(const QString &name, const QString &caption, QWidget *parent);
// The buttons in rows of columns (0: one row), under a titled frame.
QGroupBox *buttonGroup(const QString &title, const QList<QPushButton *> &buttons, int columns = 0);

struct Fader {
    QSlider *bar;
    ClickLabel *label;
    QWidget *box;
};
// A vertical bar under a caption, with its value label below; the label zeroes the bar when
// clicked (clickZero).
Fader makeFader(const char *barName, const char *labelName, const QString &caption, int min, int max, int small,
                int large, bool clickZero);

// The frequency behind dark glass, with a status line below it (mode, filter, AGC ...).
struct Display {
    QWidget *frame;
    QLineEdit *frequency; // txtFrequencyA
    QHBoxLayout *status;
    QLabel *mode, *bandwidth, *agcSpeed;
};
Display buildDisplay();
// A caption and its value label at the end of the display's status line.
QLabel *addStatus(QHBoxLayout *status, const char *name, const QString &caption);

struct Keypad {
    QWidget *box;
    QLabel *number; // lblMfreq
    std::array<QPushButton *, 10> digits;
    QPushButton *dot, *back, *enterFreq, *enterMem, *enterStep;
};
Keypad buildKeypad();

struct Tuning {
    QWidget *box;
    std::array<QPushButton *, 2> step; // 0 down, 1 up
    SpinButton *spin;
    QComboBox *stepSize;
    QPushButton *move; // "GO"
    ClickLabel *round5, *round1;
};
Tuning buildTuning();

// A small table of the panel's keys, so that they can be found without a manual.
QWidget *keyHints(const QList<std::pair<QString, QString>> &rows);

// The panel's own column on the left, the keypad (and extras) on the right with close at the foot.
void arrangeFace(QWidget *face, QVBoxLayout *left, QWidget *keypad, const QList<QWidget *> &rightExtras,
                 QPushButton *close);

// The panel's style on its window, and the mute lamp's shape and colour (mute may be null).
void applyLook(QWidget *window, ClickLabel *mute);

// Marks the button of the setting in force in a row of buttons (index outside: none).
void markActive(const QList<QPushButton *> &buttons, int index);

} // namespace panelface
