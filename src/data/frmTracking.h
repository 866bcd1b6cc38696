#pragma once
// "Tracking": what of a loaded .FTL database lies around the tuned frequency, live, in 25
// fixed-pitch rows coloured by whether a station is on the air and beams at the listener.
// The frequency follows the hub, steps with the spin button, or follows the receiver's dial.
#include "data/tracking.h"
#include "ui/widgets/window_guard.h"

#include <QTimer>
#include <QWidget>
#include <array>

class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class ListFrame;
class SpinButton;

class frmTracking : public QWidget {
    Q_OBJECT
public:
    frmTracking();
    ~frmTracking() override;

    // The open window, raised, or a new one loaded.
    static frmTracking *open();
    void Form_Load();

    std::array<QLabel *, tracking::kRows> lblBingo{};
    QLabel *lblDatabase = nullptr;
    QLabel *lblCatchrange = nullptr;
    QLineEdit *txtCatchrange = nullptr;
    QLabel *lblFreqstep = nullptr;
    QLineEdit *txtFreqstep = nullptr;
    SpinButton *spnFreqstep = nullptr;
    QGroupBox *fraMousedial = nullptr, *fraHitsall = nullptr, *fraAlternates = nullptr;
    std::array<QRadioButton *, 2> optMousedial{};
    std::array<QRadioButton *, 2> optHitsall{};
    std::array<QRadioButton *, 4> optAlternates{};
    std::array<QPushButton *, tracking::kPages> cmdShow{};
    QPushButton *cmdLoad = nullptr;
    QPushButton *cmdExit = nullptr;
    QLineEdit *txtFrequencyA = nullptr;
    QPushButton *cmdPanel = nullptr;
    QTimer tmrDial7030;

    void LoadTrackingFile();
    void SearchTracking();
    void ListTrackingAll();
    void ListTrackingHits();
    void ShowTrackingAll(int page);
    void ShowTrackingHits(int page);

    void cmdLoad_Click();
    void cmdExit_Click();
    void cmdShow_Click(int index);
    void spnFreqstep_SpinDown() { step(false); }
    void spnFreqstep_SpinUp() { step(true); }
    void optMousedial_Click(int index);
    void optHitsall_Click();
    void optAlternates_Click();
    void lblBingo_Click(int index);
    void tmrDial7030_Timer();

    // The label's colour as set, blue-green-red.
    uint32_t rowColour(int r) const { return colours_[size_t(r)]; }

protected:
    void closeEvent(QCloseEvent *e) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void Form_Unload();
    void step(bool up);
    void fill(bool hitsOnly);
    void showPage(int page, bool hitsOnly);
    void paintRow(int r, const QString &text, uint32_t colour);
    void setStepControlsVisible(bool visible);
    // The NRD's own frequency reports ended, the lock given back.
    void endDial();

    ListFrame *frame_ = nullptr;
    std::array<uint32_t, tracking::kRows> colours_{};
    double lastDial_ = -1;
    bool ticking_ = false;
    bool unloaded_ = true;
    WindowGuard guard_{this};
};
