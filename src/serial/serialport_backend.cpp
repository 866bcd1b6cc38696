#include "serialport_backend.h"

SerialPortBackend::SerialPortBackend(const QString &device, QObject *parent)
    : CommBackend(parent), device_(device)
{
    port_.setPortName(device);
    connect(&port_, &QSerialPort::readyRead, this, &CommBackend::bytesArrived);
    connect(&port_, &QSerialPort::errorOccurred, this, &SerialPortBackend::onError);
}

bool SerialPortBackend::open(const LineSettings &s, QString *reason)
{
    port_.setBaudRate(s.baud);
    port_.setDataBits(QSerialPort::DataBits(s.dataBits));
    port_.setParity(s.parity == 'E' ? QSerialPort::EvenParity
                    : s.parity == 'O' ? QSerialPort::OddParity
                    : s.parity == 'M' ? QSerialPort::MarkParity
                    : s.parity == 'S' ? QSerialPort::SpaceParity
                                      : QSerialPort::NoParity);
    port_.setStopBits(s.stopBits == 2 ? QSerialPort::TwoStop : QSerialPort::OneStop);
    port_.setFlowControl(QSerialPort::NoFlowControl);
    if (!port_.open(QIODevice::ReadWrite)) {
        if (reason)
            *reason = port_.errorString();
        return false;
    }
    gone_ = false;
    return true;
}

void SerialPortBackend::close()
{
    if (port_.isOpen()) {
        if (!gone_)
            port_.flush();
        port_.close();
    }
}

void SerialPortBackend::write(const QByteArray &bytes)
{
    if (gone_ || !port_.isOpen())
        return;
    port_.write(bytes);
    // Without an event loop turn the bytes would sit in Qt's buffer; send them now.
    port_.waitForBytesWritten(2000);
}

void SerialPortBackend::collect(QByteArray &into)
{
    if (port_.isOpen())
        into += port_.readAll();
}

bool SerialPortBackend::waitForBytes(int ms)
{
    if (gone_ || !port_.isOpen())
        return false;
    return port_.waitForReadyRead(ms);
}

void SerialPortBackend::onError(QSerialPort::SerialPortError e)
{
    // A removed adapter or a closed pty shows as a resource error (EIO), a missing device
    // (ENODEV), or a read error when the hung-up fd reads 0 bytes; Qt then signals that again on
    // every turn of the event loop, so the port must go. Other errors leave the line as it is.
    if (gone_ || !port_.isOpen())
        return;
    if (e != QSerialPort::ResourceError && e != QSerialPort::ReadError && e != QSerialPort::DeviceNotFoundError)
        return;
    gone_ = true;
    // This runs inside QSerialPort's own notifier or wait: close it once that has returned.
    QMetaObject::invokeMethod(this, [this] { close(); }, Qt::QueuedConnection);
    emit lost();
}
