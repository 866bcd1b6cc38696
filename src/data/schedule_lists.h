#pragma once
// The three schedule lists the listener keeps as text: club lists of fixed columns with their
// continuation marks, his own lists, and comma-cut ".320" station files. The records stay in
// memory for the whole run, until the next load of their kind; the windows show rows made here
// and tune by the click rules here.
#include <QByteArray>
#include <QString>
#include <QStringList>
#include <array>
#include <cstdint>
#include <optional>
#include <vector>

constexpr int kListRecordWidth = 100;
constexpr int k320Fields = 15;

using Fields320 = std::array<QString, k320Fields>;

// Index 0 is the blank record; the records of a file start at 1. Each is 100 characters.
extern std::vector<QString> bdxcRecords;
extern std::vector<QString> ownRecords;
// Index 0 unused; the lines of a file start at 1.
extern std::vector<Fields320> file320Fields;
// How many data rows the club list's grid now shows (grid rows 1..bdxcRowCount).
extern int32_t bdxcRowCount;

namespace lists {

// The highest record index a load may fill: slotDimBdxc x 1000, slotDimOwn x 1000 (the ".320"
// lines share the latter).
int32_t bdxcCapacity();
int32_t ownCapacity();

// A line as a record: cut after column 100, padded with blanks to it.
QString fixedRecord(const QString &line);

// The readers: the records (or fields) of a file's bytes, index 0 blank. A line past the capacity
// is run-time error 9. An empty club or own file reads as one blank line; an empty ".320" file
// as none. Return the count of lines read.
int32_t readBdxc(const QByteArray &bytes);
int32_t readOwn(const QByteArray &bytes);
int32_t read320(const QByteArray &bytes);

// A club list line with its marks resolved against the record before it: "." in column 1 takes
// columns 1-17 from it, then "." in column 18 takes columns 18-35.
QString resolveMarks(const QString &record, const QString &before);

// --- the selection box of a club list ---
enum class Selection { Time, All, Keep };
// Four characters of a value above 0 and at most 2400 select by time; "all" in any case selects
// all; anything else (the empty answer of Cancel, "0000") keeps the grid as it is.
Selection selectionOf(const QString &answer);
// The box's default: the hh:mm at the end of utcText without its colon.
QString selectionDefault(const QString &utcText);
// Whether a record's span (columns 36-39 to 41-44, compared as text) holds the time.
bool bdxcOnAir(const QString &record, const QString &time);
// The rows the answer shows, from records 1..count; nothing where it keeps the grid as it is.
std::optional<std::vector<QStringList>> bdxcRows(const QString &answer, int32_t count);

// The title rows: the club list's by the name of the file loaded ("ILG" first or not; the full
// stop after " Broadcast Org" only once a file is loaded), the own list's.
QStringList bdxcTitles(const QString &fileName, bool loaded);
QStringList ownTitles();
QStringList titles320();

// --- rows ---
// The frequency pieces of a record from its first frequency column (49 club, 51 own): each the
// number text of its value, empty below 10; keepBlank false cuts the number's leading blank.
// Always ten; an eleventh piece is run-time error 9.
QStringList frequencyPieces(const QString &record, int firstColumn, bool keepBlank);
// Country (or organisation), organisation (or language), times, pieces 1-7.
QStringList bdxcRow(const QString &record);
// Organisation, ITU, language, time text, pieces 1-8, an empty column, the mode letter.
QStringList ownRow(const QString &record);

// A ".320" line cut into its fields: text after the last comma dropped, one pair of quotes taken
// off each field, a quoted comma splitting all the same. A sixteenth field is run-time error 9.
Fields320 split320(const QString &line);
// The MHz field shown in kHz: "00000.000" with "." whatever the number format.
QString frequency320(const QString &mhz);
// Name, frequency, mode word, location, language, start, end, first 20 characters of the notes.
QStringList row320(const Fields320 &f);

// --- clicks: what to tune, in order ---
struct TuneStep {
    enum Kind { Frequency, Mode } kind;
    double khz = 0;
    QString mode;
    bool operator==(const TuneStep &) const = default;
};
using TuneSteps = std::vector<TuneStep>;

constexpr int kOwnModeColumn = 13;
constexpr int k320FrequencyColumn = 1;
constexpr int k320ModeColumn = 2;

// Club list: a frequency column (3 to 9) of a row not past bdxcRowCount tunes to it.
TuneSteps bdxcClick(int row, int col, const QString &text, int32_t rowCount);
// Own list: a frequency column 4 to 10 tunes, then the row's mode letter; the eighth
// frequency (column 11) is shown and does not tune.
TuneSteps ownClick(int col, const QString &text, const QString &modeCell);
// ".320": any cell sets the mode by the first letter of the mode word, then tunes.
TuneSteps click320(const QString &frequencyCell, const QString &modeCell);

} // namespace lists
