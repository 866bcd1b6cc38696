#include "simtool.h"

#include <QCoreApplication>
#include <QElapsedTimer>

SimTool::~SimTool()
{
    if (proc_.state() != QProcess::NotRunning) {
        proc_.terminate();
        if (!proc_.waitForFinished(3000))
            proc_.kill();
    }
}

bool SimTool::start(const QString &model, QString *why, const QStringList &extra)
{
    const QString tool = qEnvironmentVariable("BRELVOX_SIM_TOOL");
    if (tool.isEmpty()) {
        *why = QStringLiteral("BRELVOX_SIM_TOOL is not set");
        return false;
    }
    proc_.start(tool, QStringList{model} + extra);
    if (!proc_.waitForStarted(5000)) {
        *why = proc_.errorString();
        return false;
    }
    QElapsedTimer t;
    t.start();
    while (!proc_.canReadLine() && t.elapsed() < 5000)
        proc_.waitForReadyRead(100);
    device_ = QString::fromLocal8Bit(proc_.readLine()).trimmed();
    if (!device_.startsWith(QStringLiteral("/dev/"))) {
        *why = QStringLiteral("no device from the tool: ") + device_;
        return false;
    }
    return true;
}

bool SimTool::waitForLog(const QString &text, int ms)
{
    QElapsedTimer t;
    t.start();
    for (;;) {
        log_ += QString::fromLocal8Bit(proc_.readAllStandardOutput());
        if (log_.contains(text))
            return true;
        if (t.elapsed() > ms)
            return false;
        proc_.waitForReadyRead(100);
    }
}
