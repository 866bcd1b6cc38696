// The memory window's own work on a full NRD-545 image of 1000 cells: reading a MEM file, the
// sort by frequency and the lines of a printout, each against the limit a listener would notice.
#include "core/shared_state.h"
#include "drivers/nrd_tables.h"
#include "memory/mem_file.h"
#include "memory/mem_record.h"
#include "memory/memman_logic.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <algorithm>
#include <cstdio>
#include <functional>
#include <random>
#include <vector>

namespace {

constexpr int kRuns = 20;
constexpr double kLimitMs = 100;

void report(const char *op, std::vector<double> ms, double limitMs)
{
    std::sort(ms.begin(), ms.end());
    const double median = ms[ms.size() / 2];
    std::printf("%-44s median %8.2f ms  shortest %8.2f  worst %8.2f  limit %8.2f  ratio %.3f\n", op, median,
                ms.front(), ms.back(), limitMs, median / limitMs);
}

// prepare runs untimed before each timed job.
std::vector<double> timed(const std::function<void()> &prepare, const std::function<void()> &job)
{
    std::vector<double> ms;
    for (int i = 0; i < kRuns; ++i) {
        prepare();
        QElapsedTimer t;
        t.start();
        job();
        ms.push_back(double(t.nsecsElapsed()) / 1e6);
    }
    return ms;
}

// A full image as a listener's file holds it: mostly filled cells in no order, many on the same
// frequencies, every tenth vacant, a few never assigned, tags on most.
QByteArray sampleFile()
{
    std::mt19937 rnd(7030);
    std::uniform_int_distribution<int> khz(150, 29999);
    QByteArray file;
    for (int i = 0; i <= lastMemoryIndex; ++i) {
        QString line;
        if (i % 97 == 13) {
            line.clear();
        } else if (i % 10 == 3) {
            line = vacantMemRecord(i);
        } else {
            const int f = i % 7 == 0 ? 9410 : khz(rnd);
            line = filledMemRecord({i, memHzText(f), QString::number(i % 10), "0" + QString::number(i % 3),
                                    QString::number(i % 2), QString::number(1 + i % 9), "@@@", "@@@", "@"});
            if (i % 4 != 0)
                line += QStringLiteral("Station %1, evening news in English").arg(i);
        }
        file += line.toLatin1() + "\r\n";
    }
    return file;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    rxType = rxNRD545;
    labelRoutineNRD545();
    const QByteArray file = sampleFile();

    report("readMemFile, 1000 lines", timed([] {}, [&] { readMemFile(file); }), kLimitMs);

    readMemFile(file);
    const FixedTextArray<kMemRecordWidth> records = memRecord;
    const FixedTextArray<kMemTagWidth> tags = memTag;
    const auto restore = [&] {
        memRecord = records;
        memTag = tags;
    };
    report("sortImage, 1000 cells",
           timed(restore,
                 [] { memman::sortImage(memRecord, memTag, lastMemoryIndex); }),
           kLimitMs);

    report("printLines, 1000 cells",
           timed(restore,
                 [] { memman::printLines(memRecord, memTag, "mem_4bench.txt", 0, lastMemoryIndex, rxNRD545); }),
           kLimitMs);
    return 0;
}
