// Tracking on a 50,000-record .FTL file: one tune is the search, its filler and the 25 rows
// written, as a turn of the dial makes it. Median and worst of 1,000 tunes against 1 ms.
#include "bench_report.h"
#include "core/shared_state.h"
#include "data/file_store.h"
#include "data/frmTracking.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLineEdit>
#include <QRadioButton>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

constexpr int kTunes = 1000;
constexpr int kRecords = 50000;
constexpr double kLimitMs = 1;

// Invented stations in frequency order over 0.15 to 30 MHz, on the air at staggered hours.
QByteArray ftlFile()
{
    QByteArray out;
    out.reserve(kRecords * 127);
    for (int i = 0; i < kRecords; ++i) {
        const double khz = 150 + i * (29850.0 / kRecords);
        const int start = (i * 7) % 24, end = (start + 3) % 24;
        QString flags(9, '0');
        flags[i % 9] = '1';
        out += QString("%1 %2-%3 %4 %5 %6 %7 %8 %9 %10 %11 %12\r\n")
                   .arg(khz, 8, 'f', 2, QChar('0'))
                   .arg(start * 100, 4, 10, QChar('0'))
                   .arg(end * 100, 4, 10, QChar('0'))
                   .arg(QString("Station %1").arg(i), -22)
                   .arg(i % 3 ? "EU" : "NAAF", -8)
                   .arg("English", -17)
                   .arg(QString::number(10 * (i % 50)), -7)
                   .arg(QString("%1%2N").arg(i % 70, 2, 10, QChar('0')).arg(i % 60, 2, 10, QChar('0')))
                   .arg(QString("%1%2E").arg(i % 180, 3, 10, QChar('0')).arg(i % 60, 2, 10, QChar('0')))
                   .arg(flags)
                   .arg("Tarnholm", -12)
                   .arg(QString("Site %1").arg(i % 400), -12)
                   .toLatin1();
    }
    return out;
}

void measure(const char *op, frmTracking *w, double catchKhz)
{
    w->txtCatchrange->setText(QString::number(catchKhz));
    std::vector<double> ms;
    ms.reserve(kTunes);
    for (int t = 0; t < kTunes; ++t) {
        trackFreq = 5000 + t * 5.0;
        QElapsedTimer timer;
        timer.start();
        w->SearchTracking();
        ms.push_back(double(timer.nsecsElapsed()) / 1e6);
    }
    reportRuns(op, ms, kLimitMs);
}

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    QTemporaryDir dir;
    resetSharedState();
    dirPath = dir.path() + "/";
    computeFullDirTable();
    slotDimIlg() = 50;
    slotRxTargetArea() = 3;
    rxLatitude = "5130N";
    rxLongitude = "00012E";
    utcText = "2 Mar 2024  12:00";
    QDir().mkpath(dir.filePath("RX2DB"));
    QFile f(dir.filePath("RX2DB/ILGSDATA.FTL"));
    if (!f.open(QIODevice::WriteOnly) || f.write(ftlFile()) != kRecords * 127)
        std::fprintf(stderr, "cannot write the database\n");
    f.close();

    frmTracking *w = frmTracking::open();
    fileType = 5;
    chosenFileTable[5] = "ILGSDATA.FTL";
    runReader();
    measure("tune, hits, Dis/Dir, catch 2 kHz", w, 2);
    w->optHitsall[1]->setChecked(true);
    measure("tune, all, Dis/Dir, catch 10 kHz (33 rows)", w, 10);
    w->optAlternates[2]->setChecked(true);
    measure("tune, all, Ctry, catch 60 kHz (176 rows)", w, 60);
    w->close();
    return 0;
}
