#pragma once
// The ILG and Aero databases as the query windows see them: the records of one .FTL file, and a
// list of indices into them that queries and sorts rearrange without moving a record. Both
// windows share the one record array: a load of either kind replaces it.
#include <QByteArray>
#include <QString>
#include <QStringList>
#include <cstdint>
#include <functional>
#include <vector>

namespace ftlquery {

constexpr int kRecordWidth = 126;

// Index 0 is blank; the lines of a file are records 1..ilgCount, each 126 characters.
extern std::vector<QString> ilgRecords;
// Entry k is the record index of list row k, for rows 0..ilgShown-1.
extern std::vector<int32_t> ilgListIndex;
extern int32_t ilgCount;
extern int32_t ilgShown;

// The highest record index a load may fill: slotDimIlg x 1000.
int32_t ilgCapacity();

// A line as a record: cut after column 126, padded with blanks to it.
QString fixedRecord(const QString &line);

// The records of a file's bytes, every one on the list in file order. A line past the capacity
// is run-time error 9. Returns ilgCount.
int32_t readFtl(const QByteArray &bytes);

// The list row of record r as a load shows it (the record as it stands), and as a query or a
// sort shows it: columns 1-77, then 101 to the end, so that position and area flags drop out.
QString loadedRow(int32_t r);
QString queriedRow(int32_t r);
// The rows of list entries 0..ilgShown-1, by one of the two above.
std::vector<QStringList> listRows(QString (*row)(int32_t));

// The frequency of a list row or record: the value of its first eight characters.
double rowFrequency(const QString &row);

// --- query files ---

// The choices of each combo box, box 0 first: a line beginning "***" opens the next box, one
// beginning "===" is a comment, every other line is a choice as it stands. Lines before the first
// "***" and boxes past boxCount have no box to go to and are passed over.
std::vector<QStringList> readQueryFile(const QByteArray &bytes, int boxCount);
// Reads dirPath + name; a missing file is run-time error 53.
std::vector<QStringList> loadQueryFile(const QString &name, int boxCount);

// --- the search ---

enum IlgBox { LanguageBox, StationBox, CountryBox, TargetBox, LowerBox, UpperBox, kIlgBoxes };
enum IlgCheck { LanguageCheck, StationCheck, CountryCheck, OnAirCheck, TargetCheck, kIlgChecks };
enum AeroBox { NetworkBox, AeroLowerBox, AeroUpperBox, kAeroBoxes };

struct Criteria {
    bool aero = false;
    // By IlgCheck; Aero uses index 0 for "Network".
    bool checked[kIlgChecks] = {};
    // The box texts by IlgBox, or by AeroBox for Aero.
    QString text[kIlgBoxes];
    // The present UTC as "hhmm", for the on-air test.
    QString utc;
};

// The frequency boxes as the search leaves them: empty or zero, the lower becomes "0" and the
// upper "32" (MHz).
void normaliseBounds(Criteria &c);
// The walk's first record: the first from 1 up whose frequency (columns 1-5, Aero 1-8) is above
// lower x 1000, ilgCount + 1 when none is. Its last: the last from ilgCount down whose frequency
// is not above upper x 1000, 0 when none is.
int32_t walkFirst(const Criteria &c);
int32_t walkLast(const Criteria &c);
// Whether a record passes every test whose box is checked (a frame whose box is off passes).
bool passes(const QString &record, const Criteria &c);
// The search over the records between the bounds, in file order: ilgListIndex and ilgShown hold
// the records that pass. progress gets the percentage as the search goes (may be empty).
void search(Criteria &c, const std::function<void(int)> &progress = {});

// --- the sort ---

// "Frequency", "Start time", "Organisation", "Language": columns 1-8, 10-18, 20-41, 52-68.
constexpr int kSortOptions = 4;
QString sortKey(const QString &record, int option);
// The list entries 0..ilgShown-1 in order of the option's key, by the shell sort on indices.
void SortIlgList(int option);

// --- the scan ---

struct ScanStep {
    int32_t row;    // the row tuned and selected
    double khz;     // its frequency
    int32_t next;   // the present position after the tick
};
constexpr int kScanTries = 200;
// One tick over rows 0..rows-1: from position, rows whose frequency equals lastTuned are passed
// over, at most 200 of them, after which row 0 is taken; the tick tunes that row and moves one on.
ScanStep scanStep(const std::function<double(int32_t)> &frequencyOf, int32_t rows, int32_t position,
                  double lastTuned);
// The scan delay in seconds: from 1 to maxSeconds, both included.
bool scanDelayValid(double seconds, int maxSeconds);

} // namespace ftlquery
