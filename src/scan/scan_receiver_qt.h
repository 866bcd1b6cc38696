#pragma once
// What the measuring windows share about the receiver: a driver of their own on the start window's
// line, the level read with the attenuation compensation, and the NRD panel's remote lock taken
// for a run unless the listener holds it himself.
#include "drivers/rx_driver.h"

#include <memory>

class ScanReceiver {
public:
    // A driver for the selected receiver (none for No RX), released with this object.
    ScanReceiver();
    ~ScanReceiver();
    ScanReceiver(const ScanReceiver &) = delete;
    ScanReceiver &operator=(const ScanReceiver &) = delete;

    RxDriver *driver() const { return driver_.get(); }
    int type() const { return type_; }

    // At Start: the attenuator's setting, on the AR7030 and the NRD sets.
    void readAttenuation();
    int attenuation() const { return attenuation_; }
    // The S-meter with the compensation for the attenuation read at Start; 0 without a receiver.
    float level();
    // The open NRD panel's lockoffon(v), unless the listener has locked the panel himself.
    void lockPanel(int v);

private:
    int type_;
    std::unique_ptr<RxDriver> driver_;
    int attenuation_ = 0;
};
