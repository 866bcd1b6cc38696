#pragma once
// Hands the line's bytes to a model's simulator and counts what it sends back, so that a
// benchmark can set its time against the line time of the bytes each way.
#include "sim/sim_device.h"

#include <memory>

class Counting : public SimDevice {
public:
    explicit Counting(std::unique_ptr<SimDevice> target) : target_(std::move(target))
    {
        target_->transmit = [this](const QByteArray &b) {
            in += b.size();
            send(b);
        };
    }
    void receive(const QByteArray &b) override { target_->receive(b); }
    int baudRate() const override { return target_->baudRate(); }
    QString model() const override { return target_->model(); }
    qint64 in = 0;

private:
    std::unique_ptr<SimDevice> target_;
};
