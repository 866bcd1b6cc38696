#pragma once
// The NRD-545's DSP: noise reduction or beat canceller with their levels, the noise blanker and
// its level, the notch and its frequency, the IF filter slope and the hold of the noise reduction.
// It holds the panel's lock while open, when the listener had not.
#include "core/shared_state.h"
#include "ui/widgets/window_guard.h"

#include <QWidget>
#include <array>
#include <memory>

class QLabel;
class QPushButton;
class QRadioButton;
class QSlider;
class clsNRD545;

class frmAdvancedDSP : public QWidget {
    Q_OBJECT
public:
    explicit frmAdvancedDSP(QWidget *parent = nullptr);
    ~frmAdvancedDSP() override;

    static frmAdvancedDSP *open();
    void Form_Load();

    std::unique_ptr<clsNRD545> NRD545A;

    std::array<QPushButton *, 3> cmdNrbc{};
    std::array<QPushButton *, 3> cmdNB{};
    std::array<QPushButton *, 3> cmdNT{};
    QPushButton *cmdDefaultNRBC = nullptr;
    QPushButton *cmdExit = nullptr;
    QLabel *lblNrbc = nullptr, *lblNR = nullptr, *lblBC = nullptr, *lblNB = nullptr, *lblNB2 = nullptr,
           *lblNT = nullptr, *lblNT2 = nullptr;
    QSlider *vsbNR = nullptr, *vsbBC = nullptr, *vsbNB = nullptr, *vsbNT = nullptr;
    std::array<QRadioButton *, 2> optFilterslope{};
    std::array<QRadioButton *, 2> optHoldofnr{};

    void cmdNrbc_Click(int index);
    void vsbNR_Change();
    void vsbBC_Change();
    void cmdDefaultNRBC_Click();
    void cmdNB_Click(int index);
    void vsbNB_Change();
    void cmdNT_Click(int index);
    void vsbNT_Change();
    void optFilterslope_Click(int index);
    void optHoldofnr_Click(int index);
    // Asks about the levels when they are not the defaults; Cancel stays.
    void cmdExit_Click();

protected:
    void closeEvent(QCloseEvent *e) override;

private:
    void build();
    void leave();
    QStringList nrbcList_, nbList_, ntList_;
    bool tookLock_ = false;
    bool leaving_ = false;
    bool loading_ = false;
    WindowGuard guard_{this};
};
