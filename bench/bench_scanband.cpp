// The band scan's sweep of 100 steps with a delay of 0 on each model's simulator paced at its line
// rate, against the bytes each way at 10 bits a byte plus the waits the drivers and the lock ask
// for: a step should take its line time and its waits, and the tick add none of its own.
#include "counting_device.h"
#include "core/frmWelcome.h"
#include "core/shared_state.h"
#include "drivers/jrc_common.h"
#include "panels/frmPanelBase.h"
#include "scan/frmScanband.h"
#include "scan/scan_band.h"
#include "serial/sim_backend.h"
#include "sim/ar7030_sim.h"
#include "sim/nrd_sim.h"
#include "sim/rx320_sim.h"
#include "ui/facades.h"
#include "bench_report.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QThread>
#include <cstdio>
#include <vector>

namespace {

constexpr int kSteps = 100;
constexpr int kRuns = 3;
constexpr double kSettleMs = 50; // after each "H1" and before each "H0" of a remote frame

void benchModel(int type, const char *name)
{
    PacedStation station(type);
    if (!station.ok()) {
        std::printf("%s: no simulated line\n", name);
        return;
    }
    SimBackend *line = station.line;
    Counting *dev = station.dev;
    frmScanband *w = frmScanband::open();
    std::vector<double> perStep;
    double limitPerStep = 0;
    for (int run = 0; run < kRuns; ++run) {
        w->txtInput[0]->setText(QStringLiteral("5900"));
        w->txtInput[1]->setText(QString::number(5900 + kSteps * 5 - 5));
        w->txtInput[2]->setText(QStringLiteral("5"));
        w->txtInput[3]->setText(QStringLiteral("0"));
        QThread::msleep(300);
        QCoreApplication::processEvents();
        w->cmdStart->click();
        // Each step as the timer runs it: a delay of 0 fires as soon as the event loop is free.
        const qsizetype out0 = line->written.size();
        const qint64 in0 = dev->in;
        QElapsedTimer t;
        t.start();
        while (w->tmrScanband.isActive() && scanband::ScanBandIndex < kSteps)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        const double ms = double(t.nsecsElapsed()) / 1e6;
        const QByteArray out = line->written.mid(out0);
        const double waits = (out.count("H1\r") + out.count("H0\r")) * kSettleMs;
        const double limit = (out.size() + (dev->in - in0)) * 10.0 * 1000.0 / dev->baudRate() + waits;
        w->cmdStop->click();
        perStep.push_back(ms / kSteps);
        limitPerStep = limit / kSteps;
    }
    char op[64];
    std::snprintf(op, sizeof op, "%s band scan, ms per step", name);
    reportRuns(op, perStep, limitPerStep, kSteps);
    w->close();
    QCoreApplication::processEvents();
    if (auto *p = frmWelcome::openWindow(panelWin(type)))
        p->close();
    QCoreApplication::processEvents();
}

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    ui::installDialogs(std::make_shared<ui::ScriptedDialogs>());
    benchModel(rxAR7030, "AR7030");
    benchModel(rxNRD535, "NRD-535");
    benchModel(rxNRD545, "NRD-545");
    benchModel(rxRX320, "RX-320");
    return 0;
}
