#pragma once
// Tracking: the records of one .FTL database in frequency order, the search for the tuned
// frequency, the list of what lies within the catch range around it, and the rows of one page
// with their colours. The window only shows what these give.
#include <QByteArray>
#include <QString>
#include <array>
#include <cstdint>
#include <vector>

namespace tracking {

constexpr int kRecordWidth = 126;
constexpr int kRows = 25;        // lblBingo(0..24)
constexpr int kPageStride = 24;  // pages overlap by one row
constexpr int kPages = 7;        // cmdShow(0..6)
constexpr int kHeld = 176;       // rows a filler keeps
constexpr int kWalk = 250;       // records looked at each way from the search result

// Row colours as the forms engine numbers them, blue-green-red.
constexpr uint32_t kPlainColour = 0xC0FFFF;
constexpr uint32_t kOnAirColour = 65535;
constexpr uint32_t kTargetColour = 65280;
// The same colour as 0xRRGGBB.
constexpr uint32_t toRgb(uint32_t bgr)
{
    return ((bgr & 0xFF) << 16) | (bgr & 0xFF00) | ((bgr >> 16) & 0xFF);
}

extern const QString kSeparator;

// Index 0 is a blank record; the lines of the file are records 1..trackCount.
extern std::vector<QString> trackRecords;
extern int32_t trackCount;
extern int32_t trackIndex;
extern std::array<QString, 201> trackHits;
// The last row index a filler used, -1 when it found nothing.
extern int32_t hitCount;

// The highest record index a load may fill: slotDimIlg x 1000.
int32_t trackCapacity();

// The records of a file's bytes, each line cut or padded to 126 characters; a line past the
// capacity is run-time error 9. Returns trackCount.
int32_t readTracking(const QByteArray &bytes);

// What a load sets by the file's name (upper-cased): a step text (empty: unchanged), the
// Hits/All and alternates options (-1: unchanged) and whether their frames are enabled.
struct FileLook {
    QString step;
    int hitsAll = -1;
    bool hitsFrame = true;
    int alternates = -1;
    bool alternatesFrame = true;
};
FileLook lookFor(const QString &fileName);

// The value of a record's first eight characters.
double recordFrequency(const QString &record);

// The binary search: trackIndex = the last record at or below freq. False, and nothing
// changed, with fewer than two records.
bool searchIndex(double freq);

// The present time hhmm as a number, from the last five characters of utcText ("hh:mm").
int16_t presentTime(const QString &utc);
// The record's time span (columns 10-13 to 15-18) holds now.
bool onAir(const QString &record, int16_t now);
// The listener's area (an index into regionCodes) among the record's targets or flags.
bool targeted(const QString &record, int area);

// The fillers: trackHits from the records within catchRange (strictly) of freq, at most 250
// each way from trackIndex, with the separator before the first above freq; hitsOnly keeps
// those on the air at now. Returns hitCount.
int32_t ListTracking(double freq, double catchRange, bool hitsOnly, int16_t now);
// The page buttons a count enables: pages 0..result-1.
int enabledPages(int32_t count);

enum Alternates { LatLon, DisDir, Ctry, Loc };
struct View {
    bool hitsOnly = true;
    int alternates = LatLon;
    int16_t now = 0;
    int area = 0;               // slotRxTargetArea
    QString rxLatitude, rxLongitude;
};
struct Row {
    QString text;
    uint32_t colour = kPlainColour;
};
// The 25 rows of page p of trackHits.
std::array<Row, kRows> ShowTracking(int page, const View &v);
// One row of it, from its source text.
Row showRow(const QString &hit, const View &v);

// A coordinate text ("5130N", "00012E"): degrees, then two digits of minutes, then the sign
// letter (S and W south and west); a blank one is 0.
double coordinate(const QString &text);
// Distance and initial bearing from the listener to the record's transmitter: "00000 km 000".
QString DistanceBearing(const QString &record, const QString &rxLat, const QString &rxLon);

// The spin button's step from the frequency text: the step in whole Hz, the frequency rounded
// up from .51 Hz, kept within lower..upper.
double steppedFrequency(const QString &freqText, const QString &stepText, bool up, double lower, double upper);

} // namespace tracking
