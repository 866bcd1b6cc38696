#pragma once
// The Ten-Tec RX-320 as seen from its serial port: it takes length-framed commands with
// binary operands, keeps its tuning registers and settings, and answers only the S-meter
// ("X") and version ("?") requests. It cannot report its settings; the accessors are for tests.
#include "sim_band.h"
#include "sim_device.h"

#include <QByteArray>
#include <QString>

class Rx320Sim : public SimDevice {
public:
    // The text the version request answers with (a CR follows it on the wire).
    static constexpr const char *kVersionText = "VER 1.03";
    // The most the S-meter reports: the high byte always stays below 128.
    static constexpr int kMaxSmeter = 32767;

    explicit Rx320Sim(SimBand band = SimBand());

    void receive(const QByteArray &bytes) override;
    int baudRate() const override { return 1200; }
    QString model() const override { return QStringLiteral("rx320"); }

    // The frequency the receiver hears as its carrier, in Hz, from the registers and the mode.
    double tunedHz() const;
    int mode() const { return mode_; }             // 0 AM, 1 USB, 2 LSB, 3 CW
    int filterIndex() const { return filter_; }    // 0..33
    int filterWidthHz() const { return filterWidthHz(filter_); }
    int agc() const { return agc_; }               // 1 slow, 2 medium, 3 fast
    double bfoHz() const;                          // BFO offset in Hz
    int speakerByte() const { return speaker_; }   // 0 loudest .. 63 softest
    int lineByte() const { return line_; }
    int coarse() const { return coarse_; }
    int fine() const { return fine_; }
    int bfo() const { return bfo_; }

    // The raw S-meter value the receiver reports at its present tuning and the time ui::now().
    int smeterValue() const;

    static int filterWidthHz(int index);
    static QString modeName(int mode);

private:
    void execute(char command, const QByteArray &operands);
    void tune(const QByteArray &op);

    SimBand band_;
    QByteArray pending_;  // bytes of a command not yet complete
    bool skipping_ = false; // after a malformed command: drop bytes through the next CR

    // Power-up state: 10000 kHz AM, widest filter, medium AGC, audio muted.
    int coarse_ = 21999;
    int fine_ = 6825;
    int bfo_ = 21840;
    int mode_ = 0;
    int filter_ = 33;
    int agc_ = 2;
    int speaker_ = 63;
    int line_ = 63;
};
