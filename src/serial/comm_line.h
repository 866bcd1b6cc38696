#pragma once
// The serial line as the program has always used it: a port number and a settings string,
// open and close, bytes out, bytes in (one character 0..255 per byte, never text-encoded).
#include "comm_backend.h"

#include <QByteArray>
#include <QObject>
#include <functional>
#include <memory>

class SimDevice;

class CommLine : public QObject {
    Q_OBJECT
public:
    explicit CommLine(QObject *parent = nullptr);
    ~CommLine() override;

    enum { comEvReceive = 2 };

    void setCommPort(int n) { commPort_ = n; }
    int CommPort() const { return commPort_; }
    void setSettings(const QString &s) { settings_ = s; }
    QString Settings() const { return settings_; }

    // True opens the port that the port map gives for CommPort; a failure is told in a
    // message box naming the device and the reason, and the line stays closed.
    // A device that goes away while open closes the line and cuts its waits; the listener is
    // told once, from the event loop. Opening again starts afresh.
    void setPortOpen(bool open);
    bool PortOpen() const { return open_; }

    // Sends the bytes as they stand. On a closed line they go nowhere.
    void Output(const QByteArray &bytes);
    // Returns and removes what has been received: all of it when InputLen is 0.
    QByteArray Input();
    int InBufferCount();
    // Bytes Output has taken that are not yet on the wire.
    int OutBufferCount() const;
    // Writing 0 discards what is waiting.
    void setInBufferCount(int n);
    void setInputLen(int n) { inputLen_ = n; }
    int CommEvent() const { return commEvent_; }

    // Blocks up to ms (-1: no limit) for more bytes without running other events.
    // Once the waits are cut it returns false at once.
    bool waitForBytes(int ms);

    // Ends every wait on the line at once, now and until the line is opened again: the device
    // is gone, or the window whose job waits is closing. Reads then end with what they have,
    // as reads that timed out.
    void cutWaits() { waitsCut_ = true; }
    bool waitsCut() const { return waitsCut_; }

    // Opens over a backend of the caller's (tests, the brelvox-sim client); the port map is bypassed.
    void openWith(std::unique_ptr<CommBackend> backend);
    CommBackend *backend() const { return backend_.get(); }
    QString deviceName() const;

    // Chooses the simulator that the port map's "sim" stands for; by default the one of rxType.
    static void setSimulatorFactory(std::function<std::unique_ptr<SimDevice>()> f);

signals:
    // The receive event: CommEvent reads 2 while it is delivered.
    void OnComm();

private:
    void onBytes();
    void onLost();
    void dropBackend();
    int commPort_ = 1;
    QString settings_ = QStringLiteral("9600,N,8,1");
    bool open_ = false;
    bool waitsCut_ = false;
    int inputLen_ = 0;
    int commEvent_ = 0;
    QByteArray buffer_;
    std::unique_ptr<CommBackend> backend_;
};
