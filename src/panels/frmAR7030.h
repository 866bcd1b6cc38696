#pragma once
// The AOR AR7030's front panel: every setting of the receiver, read back from it after each
// change, and the program's menu.
#include "panels/frmPanelBase.h"

#include <memory>

class clsAR7030;

class frmAR7030 : public frmPanelBase {
    Q_OBJECT
public:
    explicit frmAR7030(QWidget *parent = nullptr);
    ~frmAR7030() override;

    // A new panel, loaded and shown. A fatal error during the load leaves no panel behind.
    static frmAR7030 *open();
    void Form_Load() override;

    // The panel's own driver, subscribed to its change events.
    std::unique_ptr<clsAR7030> AR7030A;

    QPushButton *cmdPowerOnOff = nullptr;
    std::array<QPushButton *, 7> cmdMode{};
    std::array<QPushButton *, 6> cmdBandwidth{};
    std::array<QPushButton *, 4> cmdAgcspeed{};
    std::array<QPushButton *, 6> cmdAttenuator{};
    QLabel *lblAttenuator = nullptr;
    QSlider *vsbBass = nullptr, *vsbVolume = nullptr, *vsbTreble = nullptr, *vsbLineL = nullptr,
            *vsbLineR = nullptr, *vsbIfgain = nullptr, *vsbSquelch = nullptr, *vsbBeatfreqosc = nullptr,
            *vsbPassbandshift = nullptr;
    ClickLabel *lblBass = nullptr, *lblVolume = nullptr, *lblTreble = nullptr, *lblLineL = nullptr,
               *lblLineR = nullptr, *lblIfgain = nullptr, *lblSquelch = nullptr, *lblBeatfreqosc = nullptr,
               *lblPassbandshift = nullptr;

    // Reads every setting back and shows it.
    void RxUpdatefull();

    void cmdPowerOnOff_Click();
    void cmdMode_Click(int index);
    void cmdBandwidth_Click(int index);
    void cmdAgcspeed_Click(int index);
    void cmdAttenuator_Click(int index);
    void vsbVolume_Change();
    void vsbBass_Change();
    void vsbTreble_Change();
    void vsbIfgain_Change();
    void vsbLineL_Change();
    void vsbLineR_Change();
    void vsbSquelch_Change();
    void vsbPassbandshift_Change();
    void vsbBeatfreqosc_Change();

    void AR7030A_PoweronoffChanged(int v);
    void AR7030A_AttenuatorChanged(int v);
    void AR7030A_BandwidthChanged(int v);
    void AR7030A_ModeChanged(int v);
    void AR7030A_AgcspeedChanged(int v);
    void AR7030A_FrequencyAChanged(double khz);
    void AR7030A_VolumeChanged(int v);
    void AR7030A_LeftauxlevelChanged(int v);
    void AR7030A_RightauxlevelChanged(int v);
    void AR7030A_BassChanged(int v);
    void AR7030A_TrebleChanged(int v);
    void AR7030A_PassbandshiftChanged(int v);
    void AR7030A_BeatfreqoscChanged(int v);
    void AR7030A_SquelchChanged(int v);
    void AR7030A_IfgainChanged(int v);

    void mnuUpdate_Click();
    void mnuResetRX_Click();
    void mnuFirmware_Click();
    void mnuEnableLLLR_Click();
    void mnuDisableLLLR_Click();
    void mnuPowerOn_Click();
    void mnuPowerOff_Click();

    // The hub's hand calls.
    void hubFrequencyAChanged(double khz) override { AR7030A_FrequencyAChanged(khz); }
    void hubModeChanged(int16_t v) override { AR7030A_ModeChanged(v); }
    void hubBandwidthChanged(int16_t v) override { AR7030A_BandwidthChanged(v); }
    void hubAgcspeedChanged(int16_t v) override { AR7030A_AgcspeedChanged(v); }

protected:
    void writeFrequency(double khz) override;
    void enterMemory(int n) override;
    const std::vector<panel::KeyRow> &keyTable() const override { return panel::ar7030Keys(); }
    void keyAction(const panel::KeyRow &row) override;
    std::vector<MuteBar> muteBars() const override;
    void Form_Unload() override;

private:
    void buildPanel();
    void connectControls();
    void connectDriver();
    static void showLevel(QAbstractSlider *bar, QLabel *label, int v);
    bool powerOn_ = false;
};
