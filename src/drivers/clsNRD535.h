#pragma once
// The JRC NRD-535: eight-digit frequencies in Hz, one-digit AGC, memories 0..199.
// The set cannot report its state directly: the status is stored into cell 199 and read back.
#include "jrc_common.h"

// S units 0..18 from the meter number r, which falls as the signal rises.
float nrd535SmeterCurve(double r);

class clsNRD535 : public JrcDriver {
    Q_OBJECT
public:
    using JrcDriver::JrcDriver;

    void setRttyOnOff(int16_t v);
    int16_t Bandwidth();
    int16_t Agcspeed();
    void setAgcspeed(int16_t v) override;
    void setNoiseblanker(int16_t v);
    // Hz; reaches the set only while the lock holds it in remote mode.
    void setBandwidthcontrol(int16_t v);
    void setPassBandShift(int16_t v);
    double FrequencyA() override;
    void setFrequencyA(double khz) override;
    QString RxStatus() override;
    void setRxStatus(const QString &s) override;
    float Smeter() override;
    // Cell n as the 35-character memory record.
    QString Memory(int16_t n);
    void setMemory(int16_t n, const QString &record);
    void setRxClock(const QString &hhmmss);
    void RttyParameters(const QString &p);
    // The receiver's user settings; the read is a stub that answers 0.
    int16_t Userdefs(int16_t index) const;
    void setUserdefs(int16_t index, int16_t value);

    // The command text of a user setting; empty for an index or value the set does not know.
    static QByteArray userdefCommand(int16_t index, int16_t value);

signals:
    void NoiseblankerChanged(int v);
};
