#pragma once
// The JRC NRD-545's front panel. Its DSP settings (bandwidth, shift, gains, tone, volume) can be
// read back one at a time, but only while the lock holds the set in remote mode: so their bars
// live only with the lock.
#include "panels/frmPanelBase.h"

#include <memory>

class clsNRD545;
class QGroupBox;

class frmNRD545 : public frmPanelBase {
    Q_OBJECT
public:
    explicit frmNRD545(QWidget *parent = nullptr);
    ~frmNRD545() override;

    static frmNRD545 *open();
    void Form_Load() override;

    std::unique_ptr<clsNRD545> NRD545A;

    QPushButton *cmdPowerOnOff = nullptr;
    QPushButton *cmdFreqOrChan = nullptr;
    std::array<QPushButton *, 2> cmdAttenuator{};
    std::array<QPushButton *, 3> cmdBandwidth{};
    std::array<QPushButton *, 7> cmdMode{};
    std::array<QPushButton *, 2> cmdEcss{};
    // Fast, medium and slow by the time constants of the set-up, then off.
    std::array<QPushButton *, 4> cmdAgcspeed{};
    std::array<QPushButton *, 2> cmdLock{};
    QGroupBox *fraAttenuator = nullptr;
    QGroupBox *fraBandwidth = nullptr;
    ClickLabel *lblAttenuator = nullptr;
    ClickLabel *lblLock = nullptr;
    QSlider *vsbBandwidthcontrol = nullptr, *vsbPassbandshift = nullptr, *vsbIfgain = nullptr,
            *vsbSquelch = nullptr, *vsbTone = nullptr, *vsbVolume = nullptr;
    ClickLabel *lblBandwidthcontrol = nullptr, *lblPassbandshift = nullptr, *lblIfgain = nullptr,
               *lblSquelch = nullptr, *lblTone = nullptr, *lblVolume = nullptr;

    void RxUpdatefull();
    void lockoffon(int v);

    void cmdPowerOnOff_Click();
    void cmdFreqOrChan_Click();
    void cmdAttenuator_Click(int index);
    void cmdBandwidth_Click(int index);
    void cmdMode_Click(int index);
    void cmdEcss_Click(int index);
    void cmdAgcspeed_Click(int index);
    void cmdLock_Click(int index);
    void lblTone_Click();
    void lblVolume_Click();
    void lblPassbandshift_Click();
    void vsbBandwidthcontrol_Change();
    void vsbPassbandshift_Change();
    void vsbIfgain_Change();
    void vsbSquelch_Change();
    void vsbTone_Change();
    void vsbVolume_Change();

    void NRD545A_PoweronoffChanged(int v);
    void NRD545A_AttenuatorChanged(int v);
    void NRD545A_BandwidthChanged(int v);
    void NRD545A_ModeChanged(int v);
    void NRD545A_EcssChanged(int v);
    void NRD545A_AgcspeedChanged(int v);
    void NRD545A_BandwidthcontrolChanged(int v);
    void NRD545A_PassbandshiftChanged(int v);
    void NRD545A_IfgainChanged(int v);
    void NRD545A_SquelchChanged(int v);
    void NRD545A_ToneChanged(int v);
    void NRD545A_VolumeChanged(int v);
    void NRD545A_FrequencyAChanged(double khz);
    void NRD545A_LockChanged(int v);
    void NRD545A_RxStatusChanged(const QString &s);

    void mnuUpdate_Click();
    void mnuPowerOn_Click();
    void mnuPowerOff_Click();

    void hubFrequencyAChanged(double khz) override { NRD545A_FrequencyAChanged(khz); }
    void hubModeChanged(int16_t v) override { NRD545A_ModeChanged(v); }
    void hubBandwidthChanged(int16_t v) override { NRD545A_BandwidthChanged(v); }
    void hubAgcspeedChanged(int16_t v) override { NRD545A_AgcspeedChanged(v); }

protected:
    void writeFrequency(double khz) override;
    QString frequencyPattern() const override { return QStringLiteral("####0.000"); }
    void enterMemory(int n) override;
    const std::vector<panel::KeyRow> &keyTable() const override;
    void keyAction(const panel::KeyRow &row) override;
    std::vector<MuteBar> muteBars() const override;
    void Form_Unload() override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void buildPanel();
    void connectControls();
    void connectDriver();
    void setBwcAndShiftEnabled(bool on);
    void setLevelBarsEnabled(bool on);
    // The AGC button of a code: the set-up's fast, medium, slow, or off.
    int agcButtonOf(int code) const;
    QList<std::pair<QSlider *, ClickLabel *>> bars() const;
    bool powerFlag_ = false;
};
