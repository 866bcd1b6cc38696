#pragma once
// The JRC NRD-545: ten-digit frequencies, the AGC as ten times its code in three digits,
// memories 0..999, settings that can be read back one at a time, and the DSP controls.
// The status is stored into cell 999 between two frequency/channel switches and read back.
#include "jrc_common.h"

#include <QVariant>

// S units 0..19 from the meter number r, which rises with the signal.
float nrd545SmeterCurve(double r);

class clsNRD545 : public JrcDriver {
    Q_OBJECT
public:
    using JrcDriver::JrcDriver;

    void setRttyOnOff(int16_t v);
    // The reads without "xxx" leave the remote frame to the caller (the lock); the "xxx"
    // twins frame themselves.
    int16_t Bandwidthcontrol();
    int16_t Bandwidthcontrolxxx();
    void setBandwidthcontrol(int16_t v);
    void Ecss(int16_t v);
    int16_t Agcspeed();
    void setAgcspeed(int16_t v) override;
    double FrequencyA() override;
    void setFrequencyA(double khz) override;
    // Switches between frequency and channel operation.
    void FreqOrChan();
    int16_t PassBandShift();
    int16_t PassBandShiftxxx();
    void setPassBandShift(int16_t v);
    int16_t Ifgain();
    void setIfgain(int16_t v);
    int16_t Squelch();
    void setSquelch(int16_t v);
    QString RxStatus() override;
    void setRxStatus(const QString &s) override;
    int16_t Tone();
    void setTone(int16_t v);
    int16_t Volume();
    void setVolume(int16_t v);
    float Smeter() override;
    QString Memory(int16_t n);
    void setMemory(int16_t n, const QString &record);
    // "HH:MM:SS"; the seconds are not sent.
    void setRxClock(const QString &hhmmss);
    void RttyParameters(const QString &p);
    // Noise reduction / beat canceller: index 0 selects (0 off, 1 NR, 2 BC), 1 and 2 set levels.
    void nrbc(const QVariant &index, const QVariant &value);
    // Noise blanker: index 0 selects, index 1 is the level.
    int16_t nb(int16_t index);
    void setNb(int16_t index, int16_t value);
    // Notch: index 0 selects, index 1 is the notch frequency.
    int16_t nt(int16_t index);
    void setNt(int16_t index, int16_t value);
    int16_t Userdefs(int16_t index) const;
    void setUserdefs(int16_t index, int16_t value);

    static QByteArray userdefCommand(int16_t index, int16_t value);

signals:
    void EcssChanged(int v);
    void IfgainChanged(int v);
    void SquelchChanged(int v);
    void ToneChanged(int v);

private:
    // A single-value read: query, byte count, value from character pos on.
    int16_t readValue(const QByteArray &q, int bytes, int pos, int len = -1);
};
