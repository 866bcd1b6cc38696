#pragma once
// The AOR AR7030 as seen from its serial port: a byte-code machine working on the receiver's
// memory pages. Writes land in the raw registers at once; what the receiver does (its tuning,
// mode, filter, audio) changes only when the routine that reads those registers runs, so a
// driver that forgets a routine leaves the receiver as it was.
#include "sim_band.h"
#include "sim_device.h"

#include <QVector>
#include <array>

class Ar7030Sim : public SimDevice {
public:
    // Synthesiser steps per kHz: 2^24 / 44545.
    static constexpr double kStepsPerKhz = 16777216.0 / 44545.0;

    // Page 0, the working registers.
    enum Reg : int {
        RegSquelchCopy = 0x17,
        RegIfGain = 0x18,
        RegFrequency = 0x1A, // three bytes, high first
        RegMode = 0x1D,
        RegVolume = 0x1E,
        RegBass = 0x21,
        RegTreble = 0x22,
        RegAuxLeft = 0x23,
        RegAuxRight = 0x24,
        RegPowerFlags = 0x2E, // bit 0: the receiver is on
        RegRfGain = 0x30,
        RegAgc = 0x32,
        RegSquelch = 0x33,
        RegFilter = 0x34,
        RegPbs = 0x35,
        RegBfo = 0x36,
        RegSmeterBars = 0x3F,
        RegSmeterFifths = 0x40,
    };
    // Page 1.
    enum Reg1 : int {
        Reg1Clock = 0x02,        // seconds, minutes, hours in BCD
        Reg1Power = 0x16,        // bit 0: on after the next reset routine
        Reg1FilterWidth = 0x85,  // filter n's width at 0x85 + 4 * (n - 1), BCD tenths of kHz
        Reg1MemorySqlBfo = 0x9C, // memory n's squelch or BFO at 0x9C + n
    };
    // Page 2: memory n's frequency word and flags at 4 * n, its pass band shift at 400 + n.
    static constexpr int kMemoryPbs = 400;
    // Eight bytes calibrating the raw signal reading: the reading at -113 dBm, then how much it
    // rises to -103, -93, -83, -73, -63, -43 and -23 dBm.
    static constexpr int kSignalCalibration = 500;
    static constexpr int kMemories = 100;

    // What the receiver is doing, as its routines last set it.
    struct State {
        bool powerOn = true;
        quint32 word = 0;
        double khz = 0;
        int mode = 1;    // 1 AM, 2 Sync, 3 NFM, 4 Data, 5 CW, 6 LSB, 7 USB
        int filter = 3;  // 1..6
        int pbs = 0;     // signed byte
        int bfo = 0;     // signed byte
        int volume = 0;  // 0..63
        int bass = 0;    // 0..31
        int treble = 0;  // 0..15
        int auxLeft = 0; // 0..63
        int auxRight = 0;
        int rfGain = 1;  // 0..5: +10, 0, -10, -20, -30, -40 dB
        int agc = 1;     // 0 fast, 1 medium, 2 slow, 3 off
        int ifGain = 0;  // attenuation steps, 0 = full gain
        int squelch = 0;
    };

    struct MemoryCell {
        quint32 word = 0;
        double khz = 0;
        int mode = 0;
        int filter = 0;
        bool scanSkip = false;
        int pbs = 0;
        int squelchBfo = 0;
    };

    Ar7030Sim();

    void receive(const QByteArray &bytes) override;
    int baudRate() const override { return 1200; }
    QString model() const override { return QStringLiteral("ar7030"); }

    // The eight characters on page 15; characters 6 and 7 are the firmware number.
    void setFirmware(const QString &text);
    QString firmware() const;
    int firmwareNumber() const;

    // A receiver that hears and obeys but answers nothing.
    void setSilent(bool silent) { silent_ = silent; }
    bool silent() const { return silent_; }

    void setBand(const SimBand &band) { band_ = band; }
    const SimBand &band() const { return band_; }

    // Raw memory, as the byte machine sees it; addresses wrap at the page's size.
    quint8 peek(int page, int addr) const;
    void poke(int page, int addr, quint8 value);
    // A filter's width byte (BCD tenths of kHz; 0 or 0xFF: not fitted).
    void setFilterWidth(int n, quint8 bcd);
    // Width in kHz of filter n, 0 if it is not fitted.
    double filterKhz(int n) const;

    const State &state() const { return state_; }
    double frequencyKhz() const { return state_.khz; }
    int mode() const { return state_.mode; }
    int filter() const { return state_.filter; }
    MemoryCell memoryCell(int n) const;

    // The byte machine's registers.
    int page() const { return page_; }
    int address() const { return addr_; }
    int nibble() const { return high_; }

    static QString modeName(int mode);

private:
    QByteArray &pageBytes(int page);
    const QByteArray *pageBytesOrNull(int page) const;
    void command(quint8 b);
    void writeByte(quint8 v);
    void readByte(quint8 step);
    void runRoutine(int n);
    QString where() const;

    QString applyFrequency();
    QString applyMode();
    QString applyFilter();
    QString applyAudio();
    QString applyGains();
    QString applySquelch();
    QString applyAll();

    double bandLevel() const;
    void refreshSmeter();
    quint8 rawSignal() const;
    void refreshClock();
    void clockWritten();

    QByteArray page0_, page1_, page2_, page3_, page4_, page15_;
    int page_ = 0;
    int addr_ = 0;
    int high_ = 0;
    bool silent_ = false;
    qint64 clockOffsetSecs_ = 0; // receiver's clock minus the wall clock
    State state_;
    SimBand band_;
};
