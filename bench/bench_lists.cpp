// The schedule list windows on 50,000-line files: from the load window's OK (the kind's reader run
// as it runs it) to the rows painted, for a club list shown whole and by a time, an own list and a
// ".320" file. Median and worst of five against 100 ms.
#include "bench_report.h"
#include "core/shared_state.h"
#include "data/file_store.h"
#include "data/frm320Files.h"
#include "data/frmBdxc.h"
#include "data/frmOwn.h"
#include "ui/facades.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

namespace {

constexpr int kRuns = 5;
constexpr int kLines = 50000;
constexpr double kLimitMs = 100;

// Answers every selection box with the same text.
struct Answer : ui::DialogBackend {
    QString text;
    int msgBox(const QString &, int, const QString &) override { return ui::vbOK; }
    QString inputBox(const QString &, const QString &, const QString &) override { return text; }
};

void write(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile f(path);
    if (!f.open(QIODevice::WriteOnly) || f.write(bytes) != bytes.size())
        std::fprintf(stderr, "cannot write %s\n", qPrintable(path));
}

QByteArray clubFile()
{
    QByteArray out;
    for (int i = 0; i < kLines; ++i) {
        const int start = (i * 7) % 24, end = (start + 3) % 24;
        out += QString("%1 %2 %3 %4    %5,%6,%7\r\n")
                   .arg(QString("Land %1").arg(i % 97), -16)
                   .arg(QString("Station %1").arg(i), -17)
                   .arg(start * 100, 4, 10, QChar('0'))
                   .arg(end * 100, 4, 10, QChar('0'))
                   .arg(5900 + i % 4000)
                   .arg(9400 + i % 300)
                   .arg(15100 + i % 700)
                   .toLatin1();
    }
    return out;
}

QByteArray ownFile()
{
    QByteArray out;
    for (int i = 0; i < kLines; ++i)
        out += QString("%1 TRH ENG 1800-2300      U      %2,%3,%4,%5\r\n")
                   .arg(QString("Own station %1").arg(i), -19)
                   .arg(5900 + i % 4000)
                   .arg(7200 + i % 300)
                   .arg(9400 + i % 300)
                   .arg(11600 + i % 300)
                   .toLatin1();
    return out;
}

QByteArray file320()
{
    QByteArray out;
    for (int i = 0; i < kLines; ++i)
        out += QString("\"Station %1\",%2,AM,,,,,Tarnholm,English,1800,2300,evening service,\r\n")
                   .arg(i)
                   .arg(5.9 + (i % 4000) / 1000.0)
                   .toLatin1();
    return out;
}

// The reader of the kind run as the load window's OK runs it, then the window painted.
void measure(const char *op, ScheduleListWindow *w, int kind, const QString &name)
{
    std::vector<double> ms;
    for (int run = 0; run < kRuns; ++run) {
        fileType = int16_t(kind);
        chosenFileTable[size_t(kind)] = name;
        QElapsedTimer t;
        t.start();
        runReader();
        QCoreApplication::processEvents();
        w->grab();
        ms.push_back(double(t.nsecsElapsed()) / 1e6);
    }
    reportRuns(op, ms, kLimitMs, w->dataGrid()->model()->rowCount() - 1);
}

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    QTemporaryDir dir;
    resetSharedState();
    dirPath = dir.path() + "/";
    computeFullDirTable();
    slotDimBdxc() = slotDimOwn() = 50;
    write(dir.filePath("BDXC/BDX_BENCHTOE.TXT"), clubFile());
    write(dir.filePath("OWN/OWN_BENCH.TXT"), ownFile());
    write(dir.filePath("F320/BENCH.320"), file320());
    auto answer = std::make_shared<Answer>();
    ui::installDialogs(answer);

    frmBdxc *bdxc = frmBdxc::open();
    answer->text = "all";
    measure("club list, all", bdxc, 1, "BDX_BENCHTOE.TXT");
    answer->text = "1200";
    measure("club list, 1200", bdxc, 1, "BDX_BENCHTOE.TXT");
    bdxc->close();
    frmOwn *own = frmOwn::open();
    measure("own list", own, 2, "OWN_BENCH.TXT");
    own->close();
    frm320Files *f320 = frm320Files::open();
    measure(".320 file", f320, 10, "BENCH.320");
    f320->close();
    return 0;
}
