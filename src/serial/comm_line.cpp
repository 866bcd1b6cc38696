#include "comm_line.h"
#include "port_map.h"
#include "serialport_backend.h"
#include "sim_backend.h"
#include "core/shared_state.h"
#include "sim/sim_device.h"
#include "sim/simulators.h"
#include "ui/facades.h"

#include <QStringList>
#include <QThread>

namespace {
std::function<std::unique_ptr<SimDevice>()> &simFactory()
{
    static std::function<std::unique_ptr<SimDevice>()> f;
    return f;
}
} // namespace

LineSettings parseSettings(const QString &s)
{
    LineSettings out;
    const QStringList p = s.split(u',');
    if (p.size() != 4)
        return out;
    bool ok1, ok2, ok3;
    out.baud = p[0].trimmed().toInt(&ok1);
    out.parity = p[1].trimmed().toUpper().isEmpty() ? 'N' : p[1].trimmed().toUpper()[0].toLatin1();
    out.dataBits = p[2].trimmed().toInt(&ok2);
    out.stopBits = p[3].trimmed().toInt(&ok3);
    out.valid = ok1 && ok2 && ok3 && out.baud > 0;
    return out;
}

CommLine::CommLine(QObject *parent) : QObject(parent) {}

CommLine::~CommLine() { dropBackend(); }

void CommLine::dropBackend()
{
    if (!backend_)
        return;
    // A close of our own is no loss to tell of, even if the device went in the meantime.
    backend_->disconnect(this);
    backend_->close();
    backend_.reset();
}

void CommLine::setSimulatorFactory(std::function<std::unique_ptr<SimDevice>()> f)
{
    simFactory() = std::move(f);
}

void CommLine::setPortOpen(bool open)
{
    if (!open) {
        dropBackend();
        open_ = false;
        buffer_.clear();
        return;
    }
    if (open_)
        return;
    const PortTarget target = resolvePort(commPort_, dirPath);
    std::unique_ptr<CommBackend> b;
    if (target.simulator) {
        const bool builtIn = !simFactory();
        std::unique_ptr<SimDevice> dev = builtIn ? makeSimulator(rxType) : simFactory()();
        if (!dev) {
            ui::MsgBox(QStringLiteral("Cannot open the serial port COM%1 (sim):\nthere is no simulator for this receiver.")
                           .arg(commPort_),
                       ui::vbExclamation, QStringLiteral("Serial port"));
            return;
        }
        auto sim = std::make_unique<SimBackend>(std::move(dev));
        // The built-in receiver answers at its line's real speed, so the program feels as with a set.
        sim->setPaced(builtIn);
        b = std::move(sim);
    } else {
        b = std::make_unique<SerialPortBackend>(target.device);
    }
    QString reason;
    if (!b->open(parseSettings(settings_), &reason)) {
        ui::MsgBox(QStringLiteral("Cannot open the serial port COM%1 (%2):\n%3").arg(commPort_).arg(target.device, reason),
                   ui::vbExclamation, QStringLiteral("Serial port"));
        return;
    }
    openWith(std::move(b));
}

void CommLine::openWith(std::unique_ptr<CommBackend> backend)
{
    dropBackend();
    backend_ = std::move(backend);
    buffer_.clear();
    open_ = true;
    waitsCut_ = false;
    connect(backend_.get(), &CommBackend::bytesArrived, this, &CommLine::onBytes);
    connect(backend_.get(), &CommBackend::lost, this, &CommLine::onLost);
}

QString CommLine::deviceName() const { return backend_ ? backend_->deviceName() : QString(); }

void CommLine::Output(const QByteArray &bytes)
{
    if (open_ && backend_)
        backend_->write(bytes);
}

QByteArray CommLine::Input()
{
    if (backend_)
        backend_->collect(buffer_);
    QByteArray out;
    if (inputLen_ <= 0 || inputLen_ >= buffer_.size()) {
        out.swap(buffer_);
    } else {
        out = buffer_.left(inputLen_);
        buffer_.remove(0, inputLen_);
    }
    return out;
}

int CommLine::OutBufferCount() const { return backend_ ? backend_->bytesToWrite() : 0; }

int CommLine::InBufferCount()
{
    if (backend_)
        backend_->collect(buffer_);
    return int(buffer_.size());
}

void CommLine::setInBufferCount(int n)
{
    if (n == 0) {
        if (backend_)
            backend_->collect(buffer_);
        buffer_.clear();
    }
}

bool CommLine::waitForBytes(int ms)
{
    if (waitsCut_) {
        if (backend_)
            backend_->collect(buffer_);
        return false;
    }
    if (!open_ || !backend_) {
        // Nothing can come on a closed line; a caller that loops on it sleeps instead of spinning.
        QThread::msleep(ulong(ms < 0 ? 50 : ms));
        return false;
    }
    const bool got = backend_->waitForBytes(ms);
    backend_->collect(buffer_);
    return got;
}

void CommLine::onLost()
{
    if (!open_)
        return;
    open_ = false;
    cutWaits();
    const QString text = QStringLiteral("The serial port COM%1 (%2) has gone:\nthe receiver's device was removed or closed.")
                             .arg(commPort_)
                             .arg(deviceName());
    // The loss may show inside a read that lets nothing else run: tell it from the event loop.
    QMetaObject::invokeMethod(
        this, [text] { ui::MsgBox(text, ui::vbExclamation, QStringLiteral("Serial port")); }, Qt::QueuedConnection);
}

void CommLine::onBytes()
{
    if (!backend_)
        return;
    backend_->collect(buffer_);
    if (buffer_.isEmpty())
        return;
    commEvent_ = comEvReceive;
    emit OnComm();
    commEvent_ = 0;
}
