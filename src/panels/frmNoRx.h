#pragma once
// The panel for working without a receiver: lists, log, databases and conversions. It looks
// like a receiver's panel, but only closing, the menu and emptying the frequency box act.
#include "panels/frmPanelBase.h"

class frmNoRx : public frmPanelBase {
    Q_OBJECT
public:
    explicit frmNoRx(QWidget *parent = nullptr);
    ~frmNoRx() override;

    static frmNoRx *open();
    void Form_Load() override;

    QSlider *vsbVolume = nullptr;
    QLabel *lblVolume = nullptr;
    std::array<QPushButton *, 5> cmdMode{};
    std::array<QPushButton *, 3> cmdBandwidth{};
    std::array<QPushButton *, 3> cmdAgcspeed{};

    // Nothing reaches a receiver from here: the hub does not call a panel without one.
    void hubFrequencyAChanged(double) override {}
    void hubModeChanged(int16_t) override {}
    void hubBandwidthChanged(int16_t) override {}
    void hubAgcspeedChanged(int16_t) override {}

protected:
    void writeFrequency(double) override {}
    void enterMemory(int) override {}
    const std::vector<panel::KeyRow> &keyTable() const override;
    void keyAction(const panel::KeyRow &) override {}
    std::vector<MuteBar> muteBars() const override { return {}; }
    void Form_Unload() override;

private:
    void buildPanel();
};
