#pragma once
#include "comm_backend.h"

#include <QElapsedTimer>
#include <QTimer>
#include <deque>
#include <memory>

class SimDevice;

// A simulated receiver in this process. What it sends reaches the line after the time its
// bytes take on the wire at the model's speed (optional), and never in the same call that
// wrote the command: as on a real line, a reply is there only after a wait.
class SimBackend : public CommBackend {
    Q_OBJECT
public:
    explicit SimBackend(std::unique_ptr<SimDevice> device, QObject *parent = nullptr);
    ~SimBackend() override;
    bool open(const LineSettings &s, QString *reason) override;
    void close() override;
    void write(const QByteArray &bytes) override;
    void collect(QByteArray &into) override;
    bool waitForBytes(int ms) override;
    QString deviceName() const override { return QStringLiteral("sim"); }

    // Pace replies at the line's byte rate (10 bits a byte).
    void setPaced(bool paced) { paced_ = paced; }
    // A paced line is busy until its last byte has gone at the line's rate.
    int bytesToWrite() const override;
    SimDevice *device() const { return device_.get(); }
    // Everything the program wrote, in order (tests read the wire here).
    QByteArray written;
    // What the simulator understood, one line per command.
    QStringList log;

private:
    struct Pending { qint64 dueMs; QByteArray bytes; };
    void deliverDue();
    void armTimer();
    qint64 nowMs() const { return clock_.elapsed(); }

    std::unique_ptr<SimDevice> device_;
    std::deque<Pending> pending_;
    QByteArray arrived_;
    QElapsedTimer clock_;
    QTimer timer_;
    bool paced_ = false;
    bool open_ = false;
    int baud_ = 1200;
    qint64 lineFreeAt_ = 0;
};
