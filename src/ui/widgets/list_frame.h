#pragma once
// What every list window has besides its grids: the frequency box that follows the tuned
// frequency (Enter tunes to it, a double click empties it), the height button ("L" while small,
// "S" while tall), the panel button, and the window's place, open flag and title registration.
//
//   frame_ = new ListFrame(this, Win::frmBdxc);          // in the constructor
//   layout->addWidget(frame_->txtFrequencyA);             // place its controls
//   frame_->load();                                       // at the end of Form_Load
//   frame_->unload();                                     // in the accepted closeEvent
#include "core/hub.h"
#include "core/shared_state.h"

#include <QObject>

class QLineEdit;
class QPushButton;
class QWidget;

class ListFrame : public QObject, public FrequencyFollower {
    Q_OBJECT
public:
    // Makes txtFrequencyA, cmdHeigh ("L") and the panel button (cmdPanel, caption panelCaption)
    // as children of window, named as the window's other controls are.
    ListFrame(QWidget *window, Win win, const QString &panelCaption = QStringLiteral("Panel"));
    ~ListFrame() override;

    QLineEdit *txtFrequencyA = nullptr;
    QPushButton *cmdHeigh = nullptr;
    QPushButton *cmdPanel = nullptr;

    // Form_Load's frame: the open flag false while loading, the saved place, then open, registered
    // for its title and following the hub.
    void load();
    // Form_Unload's frame: the place stored, no longer open, registered or following.
    void unload();

    // cmdHeigh: the state flips and the caption with it; true when the window is now tall. The
    // window sets its own heights.
    bool toggleHeight();
    bool tall() const { return tall_; }

    // The frequency box as the hub writes it.
    void setFrequencyText(const QString &text) override;

    // The panel window of rxType shown and raised; the list window stays open.
    static void showPanel();
    // The open panel window of rxType, if any.
    static QWidget *panelWindow();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void txtFrequencyA_KeyPress();
    QWidget *window_;
    Win win_;
    bool tall_ = false;
    bool following_ = false;
};
