#pragma once
// The Ten-Tec RX-320: commands with binary operands, each ended by CR. The receiver reports
// only its signal level and its version, so every setting is remembered in the rx320 variables.
#include "rx_driver.h"

#include <QByteArray>
#include <array>

// The tuning words of one tune command.
struct Rx320Tuning {
    int coarse = 0;
    double fine = 0;
    int bfo = 0;
    std::array<uint8_t, 6> bytes{}; // coarseHi, coarseLo, fineHi, fineLo, bfoHi, bfoLo
};

// The tuning arithmetic from the rx320 variables and the two frequency corrections.
Rx320Tuning rx320Tuning(double khz);
// Level byte 0 (loudest) .. 63 (softest) for a level 0..99.
uint8_t rx320LevelByte(int16_t v);

class clsRX320 : public RxDriver {
    Q_OBJECT
public:
    using RxDriver::RxDriver;

    QString Firmware() override;
    void setBandwidth(int16_t &v) override;
    void setMode(int16_t v) override;
    void setAgcspeed(int16_t v) override;
    void setPassBandShift(int16_t v);
    void setBeatfreqosc(int16_t v);
    void setFrequencyA(double khz) override;
    void setVolume(int16_t v);
    void setLinelevel(int16_t v);
    float Smeter() override;
};
