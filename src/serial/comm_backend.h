#pragma once
// What lies behind the serial line: a real port, or a simulated receiver in this process.
#include <QByteArray>
#include <QObject>
#include <QString>

struct LineSettings {
    int baud = 1200;
    char parity = 'N';
    int dataBits = 8;
    int stopBits = 1;
    bool valid = false;
};
// "1200,N,8,1"
LineSettings parseSettings(const QString &s);

class CommBackend : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;
    ~CommBackend() override = default;
    // Opens with the settings; false and a reason when it cannot.
    virtual bool open(const LineSettings &s, QString *reason) = 0;
    virtual void close() = 0;
    virtual void write(const QByteArray &bytes) = 0;
    // Moves whatever has arrived at the line into 'into'. Never blocks.
    virtual void collect(QByteArray &into) = 0;
    // Blocks up to ms (-1: no limit) for more bytes, without running other events.
    virtual bool waitForBytes(int ms) = 0;
    virtual QString deviceName() const = 0;
    // Bytes written but not yet sent on the wire.
    virtual int bytesToWrite() const { return 0; }
signals:
    void bytesArrived();
    // The device went away under an open line (unplugged, or the far end of a pty closed).
    // Sent once, possibly from inside waitForBytes; the backend closes itself afterwards.
    void lost();
};
