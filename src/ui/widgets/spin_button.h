#pragma once
// A spin button: two arrow buttons, up over down (or down left of up when horizontal), that
// report SpinUp and SpinDown, one event a click.
#include <QToolButton>
#include <QWidget>

class SpinButton : public QWidget {
    Q_OBJECT
public:
    explicit SpinButton(Qt::Orientation orientation = Qt::Vertical, QWidget *parent = nullptr);

    QToolButton *upButton() const { return up_; }
    QToolButton *downButton() const { return down_; }

signals:
    void SpinUp();
    void SpinDown();

private:
    QToolButton *up_;
    QToolButton *down_;
};
