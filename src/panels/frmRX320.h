#pragma once
// The Ten-Tec RX-320's front panel. The receiver cannot report its settings, so the panel
// restores them from "rx320settings.ini" at load, sends them, and saves them at unload.
#include "panels/frmPanelBase.h"
#include "panels/rx320_panel_logic.h"

#include <memory>

class clsRX320;

class frmRX320 : public frmPanelBase {
    Q_OBJECT
public:
    explicit frmRX320(QWidget *parent = nullptr);
    ~frmRX320() override;

    // A new panel, loaded and shown. A fatal error during the load (a missing settings file)
    // leaves no panel behind and goes on to the caller.
    static frmRX320 *open();
    void Form_Load() override;

    std::unique_ptr<clsRX320> RX320A;

    std::array<QPushButton *, 4> cmdMode{};
    std::array<QPushButton *, 3> cmdAgcspeed{};
    std::array<QPushButton *, rx320panel::kGroups> cmdBwrange{};
    std::array<QPushButton *, rx320panel::kGroupButtons> cmdBwgroup{};
    QSlider *vsbVolume = nullptr, *vsbLinelevel = nullptr, *vsbPassbandshift = nullptr, *vsbBeatfreqosc = nullptr;
    ClickLabel *lblVolume = nullptr, *lblLinelevel = nullptr, *lblPassbandshift = nullptr, *lblBeatfreqosc = nullptr;

    void cmdMode_Click(int index);
    void cmdAgcspeed_Click(int index);
    void cmdBwrange_Click(int group);
    void cmdBwgroup_Click(int index);
    void vsbVolume_Change();
    void vsbLinelevel_Change();
    void vsbPassbandshift_Change();
    void vsbBeatfreqosc_Change();

    void RX320A_FrequencyAChanged(double khz);
    // v is the wire value, 1 slow .. 3 fast.
    void RX320A_AgcspeedChanged(int v);
    void RX320A_BandwidthChanged(int v);
    void RX320A_ModeChanged(int v);
    void RX320A_PassbandshiftChanged(int v);
    void RX320A_BeatfreqoscChanged(int v);
    void RX320A_VolumeChanged(int v);
    void RX320A_LinelevelChanged(int v);

    void mnuFirmware_Click();
    void mnuEnableLine_Click();
    void mnuDisableLine_Click();

    int shownGroup() const { return group_; }

    // The hub's hand calls; the hub hands the AGC over as the label's index.
    void hubFrequencyAChanged(double khz) override { RX320A_FrequencyAChanged(khz); }
    void hubModeChanged(int16_t v) override { RX320A_ModeChanged(v); }
    void hubBandwidthChanged(int16_t v) override { RX320A_BandwidthChanged(v); }
    void hubAgcspeedChanged(int16_t v) override { showAgc(v); }

protected:
    void writeFrequency(double khz) override;
    QString frequencyPattern() const override { return QStringLiteral("####0.000"); }
    void enterMemory(int n) override;
    const std::vector<panel::KeyRow> &keyTable() const override { return panel::rx320Keys(); }
    void keyAction(const panel::KeyRow &row) override;
    std::vector<MuteBar> muteBars() const override;
    void Form_Unload() override;

private:
    void buildPanel();
    void connectControls();
    void connectDriver();
    void showAgc(int index);
    void markFilter();
    rx320panel::FilterGroups groups_ = rx320panel::makeFilterGroups();
    int group_ = 0;
};
