// The log window with a log of 50,000 records: loaded and shown, saved, and sorted by each key
// from a shuffled order, through the window's own reader, writer and sort window.
#include "bench_report.h"
#include "core/shared_state.h"
#include "data/file_store.h"
#include "log/frmLog.h"
#include "log/frmLogsort.h"
#include "log/log_book.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <functional>
#include <random>
#include <vector>

using namespace logbook;

namespace {
constexpr int kRuns = 5;
constexpr int kRecords = 50000;

std::vector<double> timed(const std::function<void()> &prepare, const std::function<void()> &op)
{
    std::vector<double> ms;
    for (int i = 0; i < kRuns; ++i) {
        prepare();
        QElapsedTimer t;
        t.start();
        op();
        ms.push_back(double(t.nsecsElapsed()) / 1e6);
    }
    return ms;
}

// Invented stations on a spread of dates, times, frequencies and languages; fields padded as a
// loaded log keeps them.
std::vector<Record> makeLog()
{
    static const char *const orgs[] = {"Radio Tarnholm", "Evening Gospel Net", "Radio Jordanel", "World Service Brel",
                                       "Voice of Kessa", "Radio Hellenor", "Tropical Wave", "Coastal Weather"};
    static const char *const langs[] = {"Eng", "Ara", "Gre", "Fre", "Spa", "Ger", "Por", "Rus"};
    std::mt19937 rnd(7);
    std::vector<Record> rows(kRecords);
    for (int i = 0; i < kRecords; ++i) {
        Record &r = rows[size_t(i)];
        const int day = int(rnd() % 3650);
        const int start = int(rnd() % 1440);
        r[kDateField] = QDate(2016, 1, 1).addDays(day).toString("yyyyMMdd");
        r[kStartField] = QString::asprintf("%02d%02d", start / 60, start % 60);
        r[kEndField] = QString::asprintf("%02d%02d", (start + 15) / 60 % 24, (start + 15) % 60);
        r[kFrequencyField] = QString::asprintf("%05d", 2300 + int(rnd() % 24000));
        r[kSinpoField] = QStringLiteral("45444");
        r[kLanguageField] = QString::fromLatin1(langs[rnd() % 8]);
        r[kOrganisationField] = QString::fromLatin1(orgs[rnd() % 8]);
        r[7] = QStringLiteral("Somewhere");
        r[12] = QStringLiteral("Fair signal, news at the top of the hour");
        r[kRxSettingField] = QStringLiteral("a");
        for (int n = 0; n < kFields; ++n)
            r[size_t(n)] = r[size_t(n)].leftJustified(kFieldSpecs[size_t(n)].width);
    }
    return rows;
}
} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    QTemporaryDir dir;
    dirPath = dir.path() + "/";
    fillFixedTables();
    computeFullDirTable();
    rxType = 0;
    slotDimLog() = 50;
    QDir(dir.path()).mkpath("LOG");
    QFile mask(dir.filePath("loggridformat.ini"));
    mask.open(QIODevice::WriteOnly);
    mask.write("111111110000101\r\n");
    mask.close();

    const std::vector<Record> records = makeLog();
    const QString name = QStringLiteral("LOG_bench.TXT");
    QFile file(dir.filePath("LOG/" + name));
    file.open(QIODevice::WriteOnly);
    file.write(logBytes(records, kRecords));
    file.close();
    fileType = 4;
    chosenFileTable[4] = name;

    frmLog *log = frmLog::open();
    auto paint = [&] {
        log->grdLog->viewport()->repaint();
        QCoreApplication::processEvents();
    };
    paint();

    reportRuns("log of 50,000 loaded and shown", timed([] {}, [&] {
               fileType = 4;
               runReader();
               paint();
           }),
           100);
    reportRuns("log of 50,000 saved", timed([] {}, [&] {
               fileType = 4;
               runWriter();
           }),
           100);

    static const char *const keys[] = {"sorted by date", "sorted by time", "sorted by frequency",
                                       "sorted by organisation", "sorted by language"};
    for (int option = 0; option < 5; ++option) {
        std::mt19937 rnd(11);
        frmLogsort *sort = nullptr;
        auto shuffle = [&] {
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            std::shuffle(logRecords.begin(), logRecords.end(), rnd);
            log->cmdSort->click();
            sort = log->findChild<frmLogsort *>();
            sort->optSort[size_t(option)]->setChecked(true);
        };
        const std::vector<double> ms = timed(shuffle, [&] {
            sort->cmdOK->click();
            paint();
        });
        reportRuns(keys[option], ms, 300);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    log->close();
    return 0;
}
