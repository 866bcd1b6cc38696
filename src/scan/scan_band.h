#pragma once
// The band scan without its window: the sweep's state, which outlives the window since the file
// store reads and writes it, the check of what the listener typed, the arithmetic of one step and
// of the chart, and the SAN files (a sweep saved, read back as an overlay).
#include <QByteArray>
#include <QString>
#include <array>
#include <cstdint>
#include <optional>
#include <vector>

namespace scanband {

constexpr int kSanKind = 6;
constexpr int kLastIndex = 500; // 501 values, one a step
using Levels = std::array<float, kLastIndex + 1>;

// --- the sweep's state ---
extern double ScanBandStart;
extern double ScanBandEnd;
extern double ScanBandStep;
extern double ScanBandFreq;
extern int16_t ScanBandIndex;
extern int16_t ScanBandLoop;
extern bool ScanBandTuneMode;
extern Levels ScanBandLatest;
extern double ScanBandPickFreq;
extern double ScanBandHoverFreq;
extern int16_t ScanBandLastCount;
// All of it back to its start state (tests).
void resetState();

// The threshold texts, index 0 .. 22 (22 stays empty); an index compares with a level directly.
extern const std::array<QString, 23> SLevelNames;

// --- Start ---
struct BandInput {
    QString startText, endText; // the boxes' texts with "," made "."
    double start = 0, end = 0, step = 0, delay = 0;
    int intervalMs = 0;
    bool valid = false;
};
// The four boxes read leniently, a step of 0 taken as 0.001, and the verdict: a band within the
// limits of at most 500 steps, and a delay a timer can take.
BandInput readInput(const QString &start, const QString &end, const QString &step, const QString &delay,
                    double lowerLimit, double upperLimit);
// The range rule shared by Start and the overlay's reader.
bool bandFits(double start, double end, double step, double lowerLimit, double upperLimit);

// --- one step ---
// Int((end - start) / step): the last index of the sweep.
double lastStep(double start, double end, double step);
// ShowMode 0 latest, 1 highest, 2 averaging the last three sweeps: stores v at i, returns what
// the column shows.
float storeLevel(int showMode, int i, float v, Levels &latest, Levels &prev1, Levels &prev2);
// Column x of a frequency of the band, and y of a level (halves to even).
int columnX(double freq, double start, double end);
int levelY(double value);
// The index after index: one on, back to 0 past the last with the loop on.
int16_t nextIndex(int16_t index, double lastStep, int loop);
// Continue after a stop only while more than two steps are left, on the plain quotient.
bool mayContinue(double start, double end, double step, int index);
// Inside the chart for the mouse.
bool inChart(double x, double y);
// The step's frequency under x.
double frequencyAt(double x, double start, double end, double step);

// --- SAN files ---
// The file of the sweep in the state above: date, band, index, then values 0..ScanBandIndex.
// An index past the last element is run-time error 9, raised before anything is written.
QByteArray sanBytes(const QString &dateText);

struct SanFile {
    QString date;
    double start = 0, end = 0, step = 0;
    int16_t lastCount = 0;
    std::vector<float> values; // lastCount + 1 of them, none when lastCount < 0
};
// Lenient numbers; more than 501 values is run-time error 9, a file that ends before its count
// 62 "Input past end of file".
SanFile readSan(const QByteArray &bytes);

struct Segment {
    int x1, y1, x2, y2;
};
// The overlay's line, from (70, 400) under the chart through each value's point; only points
// whose x lies within the chart are joined.
std::vector<Segment> overlaySegments(const SanFile &f);
// The name an overlay is shown by: without "SAN_" and ".TXT" where it is longer than 8.
QString shownName(const QString &fileName);
// Standard colour of overlay n (1..4).
int overlayColor(int n);

} // namespace scanband
