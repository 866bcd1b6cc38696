#pragma once
// The log book: one table of reception reports, for the whole run, kept in fixed-column text
// files. A line is the record number (three digits), a blank, then the fifteen fields, each
// padded to its width and followed by a blank: 160 characters. Loaded fields keep their
// padding; typed ones have none.
#include <QByteArray>
#include <QString>
#include <QStringList>
#include <array>
#include <cstdint>
#include <optional>
#include <vector>

namespace logbook {

constexpr int kFields = 15;
constexpr int kLineLength = 160;
constexpr int kNumberTwips = 360;   // the "Nr" column
constexpr int kDateField = 0, kStartField = 1, kEndField = 2, kFrequencyField = 3, kSinpoField = 4,
              kLanguageField = 5, kOrganisationField = 6, kRxSettingField = 13;

struct FieldSpec {
    int start;            // column in the file, counted from 1
    int width;            // also the MaxLength of its box in the record form
    const char *title;    // grid column title
    int twips;            // grid column width
    const char *label;    // label in the record form
    const char *checkBox; // caption in the screen format window
};
extern const std::array<FieldSpec, kFields> kFieldSpecs;

using Record = std::array<QString, kFields>;

// Rows 0..logCount of the log; logCount is -1 for an empty log. Both live for the whole run.
extern std::vector<Record> logRecords;
extern int32_t logCount;
// Fifteen characters, "1" shows the field as a grid column.
extern QString logMask;

// The last row index the set-up allows: slotDimLog x 1000.
int32_t lastRowAllowed();

// "000" for row 0: the last three digits of row + 1000, so 1000 is "000" again.
QString recordNumber(int32_t row);

// --- the LOG file ---

// Rows from file bytes, each line cut by the columns without trimming; a short line gives empty
// fields, the number in columns 1-3 is not read. A row past lastRow is run-time error 9.
std::vector<Record> readLog(const QByteArray &bytes, int32_t lastRow);
// Rows 0..count-1 as file bytes, numbered from 0, every line 160 characters, CR LF ended.
QByteArray logBytes(const std::vector<Record> &rows, int32_t count);
// Path level, on the globals: the load replaces logRecords and logCount (run-time error 53 for a
// missing file, 76 for a missing directory, 9 past the capacity); the save writes rows
// 0..logCount and leaves the old file standing when it fails.
void loadLogFile(const QString &path);
void saveLogFile(const QString &path);

// --- "loggridformat.ini" ---

// The first line's first fifteen characters; a shorter line hides what it lacks.
QString readMask(const QByteArray &bytes);
QByteArray maskBytes(const QString &mask);
// Reads logMask from dir + "loggridformat.ini": a missing file is run-time error 53.
void loadMask(const QString &dir);
void saveMask(const QString &dir);
bool shows(const QString &mask, int field);

// --- grid ---

// The grid row of a record: its number, then each shown field.
QStringList gridRow(const Record &r, int32_t row, const QString &mask);
// "Nr" and the shown fields' titles, with their widths in twips.
struct Columns {
    QStringList titles;
    std::vector<int> twips;
};
Columns buildColumns(const QString &mask);
// The click rule: a column of this width tunes (1080 "Frequency", 600 "//Freq" and "SINPO").
bool tunesByWidth(int twips);
// The sum over the shown fields of width + 1 (the screen format window's length).
int formatLength(const QString &mask);

// --- the record form's OK ---

// What field n stores of typed text: start and end times as "0000" ("" stays ""), the
// frequency by its value (a "," typed is read as ".") as "00000" when whole, so an empty one is
// "00000", else "00000.000"; the rest as typed. nullopt when the stored text would be longer
// than the field's width.
std::optional<QString> storedField(int n, const QString &typed);
// The time boxes take digits only, the frequency box a number ("," or "." once); the rest take
// anything: true when typed may stand in box n.
bool acceptableTyping(int n, const QString &typed);

// --- sort ---

// The key texts of the sort window's options 0..4: "01365", "10365", "30165", "60135", "50136".
extern const std::array<const char *, 5> kSortKeys;
// The five fields of the key, upper-cased and joined.
QString sortKey(const Record &r, int option);
// The shell sort of rows 0..last by the key (keys made once per row, not per comparison).
void sortLog(std::vector<Record> &rows, int32_t last, int option);

} // namespace logbook
