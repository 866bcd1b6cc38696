// Timed waits and JRC frames against their limits: a wait is never shorter than asked, and a frame
// takes its bytes' time on the line plus its pauses, little more.
#include "core/session_clock.h"
#include "core/shared_state.h"
#include "drivers/clsNRD545.h"
#include "serial/comm_line.h"
#include "serial/sim_backend.h"
#include "sim/nrd_sim.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

namespace {

constexpr int kRuns = 20;

void report(const char *op, std::vector<double> ms, double limitMs)
{
    std::sort(ms.begin(), ms.end());
    const double median = ms[ms.size() / 2];
    std::printf("%-44s median %8.2f ms  shortest %8.2f  worst %8.2f  limit %8.2f  ratio %.3f\n", op, median,
                ms.front(), ms.back(), limitMs, median / limitMs);
}

std::vector<double> timed(const std::function<void()> &job)
{
    std::vector<double> ms;
    for (int i = 0; i < kRuns; ++i) {
        QElapsedTimer t;
        t.start();
        job();
        ms.push_back(double(t.nsecsElapsed()) / 1e6);
    }
    return ms;
}

// Bytes each way at 10 bits a byte.
double lineMs(int bytesOut, int bytesIn, int baud) { return (bytesOut + bytesIn) * 10.0 * 1000.0 / baud; }

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    for (const int n : {15, 25, 50, 100})
        report(qPrintable(QStringLiteral("delayMs(%1)").arg(n)), timed([n] { delayMs(n); }), n);

    CommLine comm;
    auto backend = std::make_unique<SimBackend>(std::make_unique<Nrd545Sim>());
    backend->open(parseSettings(QStringLiteral("4800,N,8,1")), nullptr);
    backend->setPaced(true);
    comm.openWith(std::move(backend));
    clsNRD545 rx(comm);

    // H1 twice, the frequency, H0 twice; four 50 ms settle waits around it.
    remoteLock = 0;
    remoteCommand = 0;
    report("NRD-545 FrequencyA, remote frame", timed([&] { rx.setFrequencyA(9410); }),
           lineMs(3 + 3 + 12 + 3 + 3, 0, 4800) + 4 * 50);
    // Locked: "M" CR out, "M" and three digits and CR back.
    rx.Lockonoff(1);
    report("NRD-545 Smeter, locked", timed([&] { rx.Smeter(); }), lineMs(2, 5, 4800));
    return 0;
}
