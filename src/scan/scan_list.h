#pragma once
// The frequency list scan without its window: twenty places visited in a fixed cycle, a history
// of twenty levels per place, the trend of each place every few passes, the chart's geometry,
// and the SFL file of the twenty places.
#include <QByteArray>
#include <QString>
#include <array>
#include <cstdint>

namespace scanlist {

constexpr int kPlaces = 20;
constexpr int kAges = 20;      // levels kept per place, ages 1 (oldest) to 20 (latest)
constexpr int kTrendAges = 10; // trend cells per place, ages 1 to 10 (latest)
constexpr int kSflKind = 11;

// Trend colours, standard colours of the chart.
constexpr int16_t kSteady = 14, kRising = 10, kFalling = 12, kBlankCell = 15;

using Places = std::array<QString, kPlaces>;

// txtUpdate's runs per trend update: 3 to 10, anything else 5 (fellBack then true).
int16_t runsPerUpdateOf(const QString &text, bool *fellBack = nullptr);
// txtDelay's seconds per place: 1 to 10, anything else 2 (fellBack then true).
double delayOf(const QString &text, bool *fellBack = nullptr);
// The timer interval of a delay in seconds.
int intervalMs(double delay);

// A place's frequency: the leading number of its text ("-" and blanks are 0), and whether it is
// one to visit.
double placeValue(const QString &text);
bool validPlace(const QString &text, double lower, double upper);
bool anyValidPlace(const Places &places, double lower, double upper);

// The run-time state of the scan, as the window keeps it.
struct ListScan {
    float ListLevels[kPlaces + 1][kAges + 1]{};
    int16_t ListTrend[kPlaces + 1][kTrendAges + 1]{};
    int16_t ListPos = 0;
    int16_t RunCount = 0;
    int16_t UpdateCount = 0;
    int32_t TrendCalls = 0;
    int16_t RunsPerUpdate = 5;
    bool NewRun = false;
    bool NewTrend = false;

    // The counters of a new run, once NewRun is set.
    void beginTick();
    // The history of the place being measured moves one age on, v as its latest level.
    void record(float v);

    struct Move {
        int place = -1;       // the place reached; -1: no place of the list is valid any more
        bool passEnded = false; // RunCount changed
        bool trended = false;   // calctrend painted a new trend row
    };
    // On to the next valid place, counting passes and calling calctrend as passes complete.
    // Without a valid place anywhere it moves nothing and says so, instead of looping.
    Move moveOn(const Places &places, double lower, double upper);

    // The trend of every place from its two last blocks of RunsPerUpdate levels; true when the row
    // was shifted and a new latest cell found (from the third call on).
    bool calctrend();
};

// The trend colour of a change of the summed levels over n runs.
int16_t trendColor(double newerMinusOlder, int n);

// --- chart geometry, in the window's pixels ---

// The bar column of place i (0..19) at age k (1..20).
inline int columnX(int i, int k) { return 74 + 25 * i + k; }
// The top of a bar of level v; bars stand on y 270.
int barTop(float v);
// The trend cell of place i at age k (1..10) spans x from cellLeft to cellLeft + 1, y 290 to 310.
inline int cellLeft(int i, int k) { return 74 + 25 * i + 2 * k - 1; }
constexpr int kCellTop = 290, kCellBottom = 310;

// --- SFL files: twenty lines ended by CR LF, one per place ---

// Each place's text with "," as ".", or "-" where its value lies outside the limits.
QByteArray sflBytes(const Places &places, double lower, double upper);
// The places of a file: line i fills place i (lines past the twentieth are not read), "," read as
// ".", a value outside the limits as "-"; places without a line are "-".
Places readSfl(const QByteArray &bytes, double lower, double upper);

} // namespace scanlist
