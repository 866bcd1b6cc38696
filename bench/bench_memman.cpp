// The memory window's fill and fetch of every cell, on each model's simulator paced at its line
// rate, against the bytes each way at 10 bits a byte plus the pauses the jobs and the remote
// frames ask for: a job should take its line time and its waits, little more.
#include "counting_device.h"
#include "core/frmWelcome.h"
#include "core/shared_state.h"
#include "drivers/jrc_common.h"
#include "memory/frmMemman.h"
#include "memory/mem_record.h"
#include "panels/frmPanelBase.h"
#include "serial/sim_backend.h"
#include "sim/ar7030_sim.h"
#include "sim/nrd_sim.h"
#include "ui/facades.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QThread>
#include <QPushButton>
#include <QTemporaryDir>
#include <QFile>
#include <QLineEdit>
#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

constexpr int kRuns = 3;
constexpr double kSettleMs = 50;   // after each "H1" and before each "H0" of a remote frame
constexpr double kCellFetchMs = 15; // the window's wait before each JRC cell
constexpr double kCellFillMs = 10;  // and after each JRC cell it fills
constexpr double kFetchStartMs = 100;

struct Run {
    double ms = 0;
    double limitMs = 0;
    double outLineMs = 0; // the line time of the bytes the computer sent
};

void report(const char *op, std::vector<Run> runs)
{
    std::sort(runs.begin(), runs.end(), [](const Run &a, const Run &b) { return a.ms < b.ms; });
    const Run &median = runs[runs.size() / 2];
    std::printf("%-34s median %9.1f ms  worst %9.1f  limit %9.1f  ratio %.3f", op, median.ms, runs.back().ms,
                median.limitMs, median.ms / median.limitMs);
    // A fill hands its bytes to the line faster than the line carries them.
    if (median.outLineMs > median.ms)
        std::printf("  (its bytes take %.1f ms on the line)", median.outLineMs);
    std::printf("\n");
}

QString record(int type, int i)
{
    const int hz = 5900000 + i * 5000;
    if (type == rxAR7030)
        return QString("MEM%1 %2 1 02 @ @ 000 000 0 ").arg(i, 3, 10, QChar('0')).arg(hz, 8, 10, QChar('0'));
    return QString("MEM%1 %2 4 01 0 1 @@@ @@@ @ ").arg(i, 3, 10, QChar('0')).arg(hz, 8, 10, QChar('0'));
}

// One job of the window, clicked as the listener clicks it, with the limit from what went over the line.
Run job(SimBackend *line, Counting *dev, QPushButton *button, int cells, bool fetch)
{
    const qsizetype out0 = line->written.size();
    const qint64 in0 = dev->in;
    QElapsedTimer t;
    t.start();
    button->click();
    Run r{double(t.nsecsElapsed()) / 1e6, 0};
    const QByteArray out = line->written.mid(out0);
    double waits = 0;
    if (rxType != rxAR7030) {
        waits = fetch ? kFetchStartMs + cells * kCellFetchMs : cells * kCellFillMs;
        waits += (out.count("H1\r") + out.count("H0\r")) * kSettleMs;
        // The panel's status read when the lock is taken: its pauses by model.
        waits += out.count("J1") * (rxType == rxNRD545 ? 100 : 50);
    }
    r.limitMs = (out.size() + (dev->in - in0)) * 10.0 * 1000.0 / dev->baudRate() + waits;
    r.outLineMs = out.size() * 10.0 * 1000.0 / dev->baudRate();
    // Writes are handed to the line and not waited for: let it carry them before the next job.
    if (r.outLineMs > r.ms) {
        QThread::msleep(ulong(r.outLineMs - r.ms) + 100);
        QCoreApplication::processEvents();
    }
    return r;
}

// Cells per job: all of the model's, or fewer when the program is given a number (a quick look).
int cellLimit = 0;

void benchModel(int type, const char *name)
{
    PacedStation station(type);
    if (!station.ok()) {
        std::printf("%s: no simulated line\n", name);
        return;
    }
    SimBackend *line = station.line;
    Counting *dev = station.dev;
    frmMemman *mm = frmMemman::open();
    auto dialogs = std::make_shared<ui::ScriptedDialogs>();
    const auto oldDialogs = ui::installDialogs(dialogs);

    const int cells = cellLimit > 1 ? std::min(cellLimit, lastMemoryIndex + 1) : lastMemoryIndex + 1;
    std::vector<Run> fills, fetches;
    for (int run = 0; run < kRuns; ++run) {
        allocateMemImage();
        for (int i = 0; i < cells; ++i) {
            memRecord[i] = record(type, i);
            mm->showRow(i);
        }
        mm->memcmdenabler(true);
        mm->txtFrom->setText("0");
        mm->txtTo->setText(QString::number(cells - 1));
        dialogs->expectMsgBox("Are sure you want", ui::vbYes);
        dialogs->expectMsgBox("MemMan data is now");
        fills.push_back(job(line, dev, mm->cmdFill, cells, false));
        dialogs->expectMsgBox("Do you want to capture", ui::vbYes);
        dialogs->expectMsgBox("Rx memory is now loaded");
        fetches.push_back(job(line, dev, mm->cmdFetch, cells, true));
        // The JRC sets' last cell holds the status the panel stored when it took the lock.
        if (!dialogs->unexpected.isEmpty() || memRecord[cells - 2].str() != record(type, cells - 2)) {
            std::printf("%s: the job did not run through: %s [%s]\n", name, qPrintable(dialogs->unexpected.join("; ")), qPrintable(memRecord[cells - 2].str()));
            break;
        }
    }
    if (!fills.empty() && !fetches.empty()) {
        report(qPrintable(QString("%1 fill %2 cells").arg(name).arg(cells)), fills);
        report(qPrintable(QString("%1 fetch %2 cells").arg(name).arg(cells)), fetches);
    }
    mm->close();
    if (QWidget *p = frmWelcome::openWindow(type == rxAR7030 ? Win::frmAR7030 : type == rxNRD535 ? Win::frmNRD535 : Win::frmNRD545))
        p->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    ui::installDialogs(oldDialogs);
}

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    ui::installClock(ui::systemClock());
    if (argc > 1)
        cellLimit = QString::fromLocal8Bit(argv[1]).toInt();
    benchModel(rxAR7030, "AR7030");
    benchModel(rxNRD535, "NRD-535");
    benchModel(rxNRD545, "NRD-545");
    return 0;
}
