#pragma once
// brelvox-sim run as a separate process on a pseudo-terminal, for tests through a real line.
#include <QProcess>
#include <QString>

class SimTool {
public:
    ~SimTool();
    // Starts the tool for model; false and a reason when it does not come up.
    bool start(const QString &model, QString *why, const QStringList &extra = {});
    QString device() const { return device_; }
    // Waits up to ms for a log line containing text; returns the log read so far.
    bool waitForLog(const QString &text, int ms = 5000);
    QString log() const { return log_; }

private:
    QProcess proc_;
    QString device_;
    QString log_;
};
