#pragma once
// The JRC NRD-535 and NRD-545 as seen from their serial ports: ASCII commands ended by CR, obeyed
// only while the set is in remote mode ("H1"). The set keeps its front-panel state, its memory
// cells and its clock, answers the few queries it knows (status frame, S-meter, memory, clock,
// single values), and with reporting on ("I1") sends its status frame by itself whenever its
// frequency changes, whether by a command or by the knob. One core holds what the two sets share;
// each model's own commands, field widths and meter curve live in its subclass.
#include "sim_band.h"
#include "sim_device.h"

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QTime>
#include <QVector>
#include <optional>

class NrdSim : public SimDevice {
public:
    // The present setting of the set, or the content of a filled memory cell: the fields of the
    // status frame.
    struct Setting {
        int attenuator = 0; // 0 off, 1 -20 dB
        int bandwidth = 0;  // 0 Wide, 1 Inter, 2 Narrow, 3 Aux (NRD-535 only)
        int mode = 4;       // 0 RTTY, 1 CW, 2 USB, 3 LSB, 4 AM, 5 FM, 6 FAX / AMS, 7 AM-U, 8 AM-L, 9 WFM
        qint64 hz = 10000000;
        int agc = 0;        // as on the wire: one digit on the NRD-535, three on the NRD-545
        bool operator==(const Setting &) const = default;
    };

    // Tuning range of both sets, in Hz.
    static constexpr qint64 kMinHz = 10000;
    static constexpr qint64 kMaxHz = 29999999;

    void receive(const QByteArray &bytes) override;
    int baudRate() const override { return 4800; }
    QString model() const override { return QString::fromLatin1(traits_.model); }

    // The listener turns the tuning knob to khz (works in local and remote mode alike).
    void turnDial(double khz);

    bool remote() const { return remote_; }
    bool reporting() const { return reporting_; }
    bool powerOn() const { return power_; }
    const Setting &setting() const { return now_; }
    qint64 frequencyHz() const { return now_.hz; }
    double frequencyKhz() const { return now_.hz / 1000.0; }
    int mode() const { return now_.mode; }
    int bandwidth() const { return now_.bandwidth; }
    int attenuator() const { return now_.attenuator; }
    int agc() const { return now_.agc; }
    int noiseBlanker() const { return noiseBlanker_; }
    int passBandShiftHz() const { return pbs_ * traits_.pbsUnitHz; }
    virtual int bandwidthControlHz() const = 0;
    int timerRelay() const { return timerRelay_; }

    // Memory cells 0 .. memoryCount() - 1; a vacant cell has no value.
    int memoryCount() const { return traits_.memories; }
    std::optional<Setting> memory(int n) const;
    void setMemory(int n, const std::optional<Setting> &cell);
    // Channel operation works from the memory channels; frequency operation is the free tuning.
    bool channelOperation() const { return channelOp_; }
    int channel() const { return channel_; }

    // The set's own clock, running from ui::now() in UTC until set.
    QTime clock() const;
    // User settings by the set's item number, as their value text came on the wire.
    QByteArray userSetting(int item) const { return user_.value(item); }
    int cwPitchHz() const { return cwPitchHz_; }
    QByteArray rttyParameters() const { return rttyParameters_; }
    bool rttyOn() const { return rttyOn_; }

    void setBand(const SimBand &band) { band_ = band; }
    const SimBand &band() const { return band_; }
    // Receiver bandwidth in kHz, as the band hears it.
    virtual double bandwidthKhz() const = 0;
    // Signal strength in S units at the present setting and time ui::now().
    double signalS() const;
    // The number the set's S-meter answers with.
    int smeterValue() const { return meterReading(signalS()); }
    // The status frame as the set sends it, CR included.
    QByteArray statusFrame() const;
    // The set's name for a mode code.
    virtual QString modeName(int mode) const = 0;

protected:
    struct Traits {
        const char *model;
        int freqDigits;  // width of the frequency field in Hz
        int agcDigits;   // width of the AGC field
        int memories;
        int bandwidths;  // bandwidth codes 0 .. bandwidths - 1
        int modes;       // mode codes 0 .. modes - 1
        int pbsDigits;   // digits of the pass band shift after its sign
        int pbsUnitHz;   // Hz per pass band shift step
        int maxAgc;      // highest AGC field value
        bool frameOnReportsOn; // "I1" answers with the present status at once
    };

    NrdSim(const Traits &traits, SimBand band);

    // The model's own commands, tried before the shared ones; true when understood.
    virtual bool executeOwn(const QByteArray &c) = 0;
    // The AGC field for the front-panel keys "G0" slow, "G1" fast, "G2" off.
    virtual int agcForKey(int key) const = 0;
    virtual QString agcName(int agc) const = 0;
    // A bare "F" or "I".
    virtual bool bareF() = 0;
    virtual bool bareI() = 0;
    // The meter's number for a signal of s S units.
    virtual int meterReading(double s) const = 0;

    const Traits &traits() const { return traits_; }
    Setting &current() { return now_; }
    void reply(const QByteArray &text); // sends text and a CR
    void storeCell(int n, const Setting &s);
    void eraseCell(int n);
    void enterChannelOperation();
    void leaveChannelOperation();
    void setUser(int item, const QByteArray &value) { user_[item] = value; }
    void setCwPitch(int hz) { cwPitchHz_ = hz; }
    void setRttyParameters(const QByteArray &p) { rttyParameters_ = p; }
    void setRtty(bool on) { rttyOn_ = on; }

    static QString khzText(qint64 hz);
    // The value of text when it is all digits (at least one), else -1.
    static qint64 digits(const QByteArray &text);
    // A value written as sign and exactly n digits ("+0500"), or nullopt.
    static std::optional<int> signedDigits(const QByteArray &text, int n);
    static QByteArray pad(qint64 v, int width);
    static QByteArray signedPad(int v, int width);

private:
    void execute(QByteArray c);
    bool executeShared(const QByteArray &c);
    bool parseSetting(const QByteArray &text, Setting *out) const;
    bool validSetting(const Setting &s) const;
    QByteArray fields(const Setting &s) const;
    QString settingText(const Setting &s) const;
    bool readMemories(const QByteArray &args);
    bool setClock(const QByteArray &hhmmss);
    void tune(qint64 hz, const QString &how);

    Traits traits_;
    SimBand band_;
    QByteArray pending_;
    bool remote_ = false;
    bool reporting_ = false;
    bool power_ = true;
    Setting now_;
    Setting vfoSaved_;   // the frequency operation's setting while channel operation is on
    bool channelOp_ = false;
    int channel_ = 0;
    int noiseBlanker_ = 0;
    int pbs_ = 0;        // in pbsUnitHz steps
    int timerRelay_ = 0;
    int cwPitchHz_ = 800;
    bool rttyOn_ = false;
    QByteArray rttyParameters_;
    QMap<int, QByteArray> user_;
    QVector<std::optional<Setting>> cells_;
    qint64 clockOffsetSecs_ = 0; // the set's clock minus UTC, within a day
};

class Nrd535Sim final : public NrdSim {
public:
    explicit Nrd535Sim(SimBand band = SimBand());

    int bandwidthControlHz() const override { return bwcHz_; }
    double bandwidthKhz() const override;
    QString modeName(int mode) const override;

protected:
    bool executeOwn(const QByteArray &c) override;
    int agcForKey(int key) const override { return key; }
    QString agcName(int agc) const override;
    bool bareF() override;
    bool bareI() override { return false; }
    int meterReading(double s) const override;

private:
    bool userCommand(const QByteArray &c);
    int bwcHz_ = 3000;
};

class Nrd545Sim final : public NrdSim {
public:
    // AGC fields the fast and slow keys select: time constants of 200 ms and 1600 ms.
    static constexpr int kAgcFast = 10;
    static constexpr int kAgcSlow = 80;

    explicit Nrd545Sim(SimBand band = SimBand());

    // The DSP bandwidth of the selected bandwidth key, set by "W" in steps of 10 Hz.
    int bandwidthControlHz() const override { return bwc_[bandwidth()] * 10; }
    double bandwidthKhz() const override { return bandwidthControlHz() / 1000.0; }
    QString modeName(int mode) const override;

    int ifGain() const { return ifGain_; }
    int squelch() const { return squelch_; }
    int tone() const { return tone_; }
    int volume() const { return volume_; }
    int nrBc() const { return nrBc_; }         // 0 off, 1 noise reduction, 2 beat cancel
    int nbLevel() const { return nbLevel_; }
    bool notch() const { return notch_; }
    int notchHz() const { return notchHz_; }
    bool dialLock() const { return dialLock_; }
    int dimmer() const { return dimmer_; }

protected:
    bool executeOwn(const QByteArray &c) override;
    int agcForKey(int key) const override;
    QString agcName(int agc) const override;
    bool bareF() override;
    bool bareI() override;
    int meterReading(double s) const override;

private:
    bool level(const QByteArray &c, const char *name, int *value, const QString &what);
    bool userCommand(const QByteArray &c);

    int bwc_[3] = {600, 240, 100};
    int ifGain_ = 255;
    int squelch_ = 0;
    int tone_ = 127;
    int volume_ = 100;
    int nrBc_ = 0;
    int nbLevel_ = 128;
    bool notch_ = false;
    int notchHz_ = 0;
    bool dialLock_ = false;
    int dimmer_ = 0;
};
