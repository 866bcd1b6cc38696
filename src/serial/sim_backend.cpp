#include "sim_backend.h"
#include "sim/sim_device.h"

#include <QThread>

SimBackend::SimBackend(std::unique_ptr<SimDevice> device, QObject *parent)
    : CommBackend(parent), device_(std::move(device))
{
    clock_.start();
    timer_.setSingleShot(true);
    connect(&timer_, &QTimer::timeout, this, [this] {
        const qsizetype before = arrived_.size();
        deliverDue();
        if (arrived_.size() > before)
            emit bytesArrived();
        armTimer();
    });
    device_->transmit = [this](const QByteArray &b) {
        qint64 due = nowMs();
        if (paced_) {
            const qint64 start = std::max(due, lineFreeAt_);
            due = start + qint64(b.size()) * 10 * 1000 / std::max(1, baud_);
            lineFreeAt_ = due;
        }
        pending_.push_back({due, b});
        armTimer();
    };
    device_->log = [this](const QString &s) { log << s; };
}

SimBackend::~SimBackend()
{
    if (device_) {
        device_->transmit = nullptr;
        device_->log = nullptr;
    }
}

bool SimBackend::open(const LineSettings &s, QString *)
{
    baud_ = s.baud > 0 ? s.baud : device_->baudRate();
    open_ = true;
    return true;
}

void SimBackend::close()
{
    open_ = false;
    timer_.stop();
    pending_.clear();
    arrived_.clear();
}

void SimBackend::write(const QByteArray &bytes)
{
    if (!open_)
        return;
    written += bytes;
    if (paced_)
        lineFreeAt_ = std::max(lineFreeAt_, nowMs()) + qint64(bytes.size()) * 10 * 1000 / std::max(1, baud_);
    device_->receive(bytes);
}

int SimBackend::bytesToWrite() const
{
    const qint64 busyMs = paced_ && open_ ? lineFreeAt_ - nowMs() : 0;
    return busyMs > 0 ? int((busyMs * std::max(1, baud_) + 9999) / 10000) : 0;
}

void SimBackend::deliverDue()
{
    const qint64 now = nowMs();
    while (!pending_.empty() && pending_.front().dueMs <= now) {
        arrived_ += pending_.front().bytes;
        pending_.pop_front();
    }
}

void SimBackend::armTimer()
{
    if (pending_.empty() || !open_)
        return;
    const qint64 wait = std::max<qint64>(0, pending_.front().dueMs - nowMs());
    if (!timer_.isActive() || timer_.remainingTime() > wait)
        timer_.start(int(wait));
}

void SimBackend::collect(QByteArray &into)
{
    deliverDue();
    into += arrived_;
    arrived_.clear();
}

bool SimBackend::waitForBytes(int ms)
{
    QElapsedTimer waited;
    waited.start();
    for (;;) {
        const qsizetype before = arrived_.size();
        deliverDue();
        if (arrived_.size() > before)
            return true;
        if (!pending_.empty()) {
            const qint64 wait = pending_.front().dueMs - nowMs();
            if (ms >= 0 && waited.elapsed() + wait > ms) {
                QThread::msleep(ulong(std::max<qint64>(0, ms - waited.elapsed())));
                return false;
            }
            QThread::msleep(ulong(std::max<qint64>(0, wait)));
            continue;
        }
        // A silent receiver: sleep, never spin.
        if (ms >= 0) {
            const qint64 left = ms - waited.elapsed();
            if (left > 0)
                QThread::msleep(ulong(left));
            return false;
        }
        QThread::msleep(50);
    }
}
