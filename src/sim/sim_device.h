#pragma once
// A simulated receiver on the far side of a serial line: it takes the bytes the computer
// writes and sends back what the real receiver would, from a model of its own state.
#include <QByteArray>
#include <QString>
#include <functional>

class SimDevice {
public:
    virtual ~SimDevice() = default;
    // Bytes from the computer, in whatever pieces the line delivers them.
    virtual void receive(const QByteArray &bytes) = 0;
    // The model's line speed (bits per second, 10 bits a byte).
    virtual int baudRate() const = 0;
    // The receiver's model name for logs ("rx320", "ar7030", ...).
    virtual QString model() const = 0;

    // Set by whoever carries the line: bytes the receiver sends, and one line per
    // command the receiver understood.
    std::function<void(const QByteArray &)> transmit;
    std::function<void(const QString &)> log;

protected:
    void send(const QByteArray &b)
    {
        if (transmit)
            transmit(b);
    }
    void note(const QString &s)
    {
        if (log)
            log(s);
    }
};
