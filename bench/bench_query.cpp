// The ILG list window on a 50,000-record .FTL file: from the load window's OK (the kind 3 reader
// run as it runs it) to the rows painted, and a query from its search button to the list painted.
// Median and worst of five against 100 ms.
#include "bench_report.h"
#include "core/shared_state.h"
#include "data/file_store.h"
#include "data/frmIlg2rx.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QPushButton>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

namespace {

constexpr int kRuns = 5;
constexpr int kRecords = 50000;
constexpr double kLimitMs = 100;

void write(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile f(path);
    if (!f.open(QIODevice::WriteOnly) || f.write(bytes) != bytes.size())
        std::fprintf(stderr, "cannot write %s\n", qPrintable(path));
}

// Records in frequency order over 0.15 to 30 MHz, of invented stations.
QByteArray ftlFile()
{
    static const char *const languages[] = {"English", "French", "Arabic", "Spanish", "Norwegian", "Portuguese"};
    static const char *const countries[] = {"Brelland", "Tarnholm", "Orlina", "Velmaria", "Jordanel"};
    QByteArray out;
    out.reserve(kRecords * 127);
    for (int i = 0; i < kRecords; ++i) {
        const double khz = 150 + i * (29850.0 / kRecords);
        const int start = (i * 7) % 24, end = (start + 3) % 24;
        QString flags(9, '0');
        flags[i % 9] = '1';
        out += QString("%1 %2-%3 %4 %5 %6 %7 5130N 00012E %8 %9 %10\r\n")
                   .arg(khz, 8, 'f', 2, QChar('0'))
                   .arg(start * 100, 4, 10, QChar('0'))
                   .arg(end * 100, 4, 10, QChar('0'))
                   .arg(QString("Station %1").arg(i), -22)
                   .arg("EU", -8)
                   .arg(languages[i % 6], -17)
                   .arg(QString::number(10 * (i % 50)), -7)
                   .arg(flags)
                   .arg(countries[i % 5], -12)
                   .arg(QString("Site %1").arg(i % 400), -12)
                   .toLatin1();
    }
    return out;
}

void measure(const char *op, frmIlg2rx *w, const std::function<void()> &action)
{
    std::vector<double> ms;
    for (int run = 0; run < kRuns; ++run) {
        QElapsedTimer t;
        t.start();
        action();
        QCoreApplication::processEvents();
        w->grab();
        ms.push_back(double(t.nsecsElapsed()) / 1e6);
    }
    reportRuns(op, ms, kLimitMs, w->shownRows());
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
    write(dir.filePath("RX2DB/ILGSDATA.FTL"), ftlFile());
    write(dir.filePath("ilgquery.ini"), "***\r\nEnglish\r\n");

    frmIlg2rx *w = frmIlg2rx::open();
    measure("load 50,000 records", w, [] {
        fileType = kFtlFileKind;
        fileSubtype = 1;
        chosenFileTable[kFtlFileKind] = "ILGSDATA.FTL";
        runReader();
    });
    FtlQueryWindow *q = w->queryWindow();
    measure("query, all boxes off", w, [q] {
        q->cmdClear_Click();
        q->cmdSearchilg->click();
    });
    measure("query, language and 5-15 MHz", w, [q] {
        q->cmdClear_Click();
        q->chkQuery[0]->setChecked(true);
        q->cmbQuery[0]->setEditText("eng");
        q->cmbQuery[4]->setEditText("5");
        q->cmbQuery[5]->setEditText("15");
        q->cmdSearchilg->click();
    });
    w->close();
    return 0;
}
