#pragma once
// The JRC NRD-535's front panel. The set reports its state only as a whole (the status text),
// so the panel reads that after each change. The pass band shift and the bandwidth control
// reach the set only in remote mode, so their bars work only while the lock holds it there.
#include "panels/frmPanelBase.h"

#include <memory>

class clsNRD535;
class QGroupBox;

class frmNRD535 : public frmPanelBase {
    Q_OBJECT
public:
    explicit frmNRD535(QWidget *parent = nullptr);
    ~frmNRD535() override;

    // A new panel, loaded and shown. A fatal error during the load leaves no panel behind.
    static frmNRD535 *open();
    void Form_Load() override;

    std::unique_ptr<clsNRD535> NRD535A;

    QPushButton *cmdPowerOnOff = nullptr;
    std::array<QPushButton *, 2> cmdAttenuator{};
    std::array<QPushButton *, 4> cmdBandwidth{};
    std::array<QPushButton *, 9> cmdMode{};
    std::array<QPushButton *, 3> cmdAgcspeed{};
    std::array<QPushButton *, 3> cmdNoiseblanker{};
    std::array<QPushButton *, 2> cmdLock{};
    QGroupBox *fraAttenuator = nullptr;
    QGroupBox *fraAgcspeed = nullptr;
    ClickLabel *lblAttenuator = nullptr;
    QLabel *lblNoiseblanker = nullptr;
    ClickLabel *lblLock = nullptr;
    QSlider *vsbBandwidthcontrol = nullptr, *vsbPassbandshift = nullptr;
    ClickLabel *lblBandwidthcontrol = nullptr, *lblPassbandshift = nullptr;

    // The status read and shown; and everything, with the bars the mode and the lock allow.
    void RxUpdatebasics();
    void RxUpdatefull();
    // The lock: 1 holds the set in remote mode (and frees the bars), 0 releases it.
    void lockoffon(int v);
    // The attenuator label's colour tells whether the VBT is bypassed.
    void showVbtBypass(bool bypassed);

    void cmdPowerOnOff_Click();
    void cmdAttenuator_Click(int index);
    void cmdBandwidth_Click(int index);
    void cmdMode_Click(int index);
    void cmdAgcspeed_Click(int index);
    void cmdNoiseblanker_Click(int index);
    void cmdLock_Click(int index);
    // The receiver recalls the cell itself.
    void cmdEnterMem_Click();
    void lblPassbandshift_Click();
    void vsbBandwidthcontrol_Change();
    void vsbPassbandshift_Change();

    void NRD535A_PoweronoffChanged(int v);
    void NRD535A_AttenuatorChanged(int v);
    void NRD535A_BandwidthChanged(int v);
    void NRD535A_ModeChanged(int v);
    void NRD535A_AgcspeedChanged(int v);
    void NRD535A_NoiseblankerChanged(int v);
    void NRD535A_BandwidthcontrolChanged(int v);
    void NRD535A_PassbandshiftChanged(int v);
    void NRD535A_FrequencyAChanged(double khz);
    void NRD535A_LockChanged(int v);
    void NRD535A_RxStatusChanged(const QString &s);

    void mnuUpdate_Click();
    void mnuPowerOn_Click();
    void mnuPowerOff_Click();

    void hubFrequencyAChanged(double khz) override { NRD535A_FrequencyAChanged(khz); }
    void hubModeChanged(int16_t v) override { NRD535A_ModeChanged(v); }
    void hubBandwidthChanged(int16_t v) override { NRD535A_BandwidthChanged(v); }
    void hubAgcspeedChanged(int16_t v) override { NRD535A_AgcspeedChanged(v); }

protected:
    void writeFrequency(double khz) override;
    QString frequencyPattern() const override { return QStringLiteral("####0.000"); }
    void enterMemory(int n) override;
    const std::vector<panel::KeyRow> &keyTable() const override;
    void keyAction(const panel::KeyRow &row) override;
    std::vector<MuteBar> muteBars() const override { return {}; }
    void Form_Unload() override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void buildPanel();
    void connectControls();
    void connectDriver();
    void setBarsOff(bool bwc, bool pbs);
    bool powerFlag_ = false;
};
