#include "serialport_backend.h"

SerialPortBackend::SerialPortBackend(const QString &device, QObject *parent)
    : CommBackend(parent), device_(device)
{
    port_.setPortName(device);
    connect(&port_, &QSerialPort::readyRead, this, &CommBackend::bytesArrived);
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
    return true;
}

void SerialPortBackend::close()
{
    if (port_.isOpen()) {
        port_.flush();
        port_.close();
    }
}

void SerialPortBackend::write(const QByteArray &bytes)
{
    port_.write(bytes);
    // Without an event loop turn the bytes would sit in Qt's buffer; send them now.
    port_.waitForBytesWritten(2000);
}

void SerialPortBackend::collect(QByteArray &into) { into += port_.readAll(); }

bool SerialPortBackend::waitForBytes(int ms) { return port_.waitForReadyRead(ms); }
