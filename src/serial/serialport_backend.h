#pragma once
#include "comm_backend.h"

#include <QSerialPort>

// A real serial device through QSerialPort.
class SerialPortBackend : public CommBackend {
    Q_OBJECT
public:
    explicit SerialPortBackend(const QString &device, QObject *parent = nullptr);
    bool open(const LineSettings &s, QString *reason) override;
    void close() override;
    void write(const QByteArray &bytes) override;
    void collect(QByteArray &into) override;
    bool waitForBytes(int ms) override;
    QString deviceName() const override { return device_; }
    int bytesToWrite() const override { return int(port_.bytesToWrite()); }

private:
    void onError(QSerialPort::SerialPortError e);
    QString device_;
    bool gone_ = false;
    QSerialPort port_;
};
