#pragma once
// The AOR AR7030. It takes no text commands: the program selects a memory page and an
// address, reads or writes bytes there, and runs one of the receiver's routines so that
// the change takes effect. Every byte on the line is one command: high nibble the operation,
// low nibble its operand. The driver remembers nothing; every read goes to the receiver.
#include "rx_driver.h"

#include <QByteArray>
#include <QString>

// The firmware number, taken by the panel from characters 6 and 7 of Firmware. Below 14 the
// receiver lacks the routines that apply audio and gain settings alone.
extern int16_t rxFirmware;
int16_t ar7030FirmwareNumber(const QString &firmware);

// Synthesiser steps per kHz: writing and reading use constants that differ in the last digits.
constexpr double kAr7030WordPerKhzWrite = 376.6352228;
constexpr double kAr7030WordPerKhzRead = 376.635223;

// The meter's reading in S units from its two bytes (whole units, fifths), and the
// calibration of the upper part of the scale on its own.
float ar7030SmeterCalibration(float s);

// Byte helpers of the receiver's command set.
namespace ar7030 {
// Page n: 0x5n.
QByteArray page(int n);
// Address bits 4..7 then 0..3; bits 8..11 follow as 0x1n only for addresses above 255.
QByteArray address(int addr);
// A value 0..255 at the current address: 0x3h 0x6l.
QByteArray data(int v);
// A 24-bit frequency word as six nibbles, high first.
QByteArray word(int64_t w);
} // namespace ar7030

class clsAR7030 : public RxDriver {
    Q_OBJECT
public:
    using RxDriver::RxDriver;

    // The guarded read of the byte at the current address: 0 when nothing came in 300 ms.
    // Returns whether a byte came.
    bool readbyte(int16_t &value);
    void Reset();
    QString Firmware() override;

    int16_t PowerOnOff();
    void setPowerOnOff(int16_t v);
    int16_t Attenuator();
    void setAttenuator(int16_t v);
    int16_t Bandwidth();
    void setBandwidth(int16_t &v) override;
    int16_t Mode() override;
    void setMode(int16_t v) override;
    int16_t Agcspeed();
    void setAgcspeed(int16_t v) override;
    double FrequencyA() override;
    void setFrequencyA(double khz) override;
    // Width of filter n (1..6) as "k.h" kHz; the width byte (255 read as 0) comes back in n.
    void Installedfilter(int16_t &n, QString &text);
    int16_t Volume();
    void setVolume(int16_t v);
    int16_t Leftauxlevel();
    void setLeftauxlevel(int16_t v);
    int16_t Rightauxlevel();
    void setRightauxlevel(int16_t v);
    int16_t Bass();
    void setBass(int16_t v);
    int16_t Treble();
    void setTreble(int16_t v);
    int16_t PassBandShift();
    void setPassBandShift(int16_t v);
    int16_t Ifgain();
    void setIfgain(int16_t v);
    int16_t Squelch();
    void setSquelch(int16_t v);
    int16_t Beatfreqosc();
    void setBeatfreqosc(int16_t v);
    float Smeter() override;
    // Cell n, 0..99, as a 35-character memory record.
    QString Memory(int16_t n);
    void setMemory(int16_t n, const QString &record);
    // "HH:MM:SS"
    QString RxClock();
    void setRxClock(const QString &hhmmss);

signals:
    void PoweronoffChanged(int v);
    void AttenuatorChanged(int v);
    void LeftauxlevelChanged(int v);
    void RightauxlevelChanged(int v);
    void BassChanged(int v);
    void TrebleChanged(int v);
    void IfgainChanged(int v);
    void SquelchChanged(int v);

private:
    void send(const QByteArray &bytes);
    // Page 0, address addr: select, read one byte.
    int16_t readRegister(int addr);
    // Page 0: select, write v as written by the caller, then the routine bytes.
    void writeRegister(int addr, const QByteArray &dataBytes, const QByteArray &routine);
    // Levels and tone: the byte's bits outside keep are the receiver's own, so they are read
    // and written back around x.
    void writeLevel(int addr, int x, int keep);
    // Routine that applies RF gain, AGC and IF gain: only firmware 14 and later has one of its own.
    QByteArray gainRoutine() const;
    QByteArray audioRoutine() const;
};
