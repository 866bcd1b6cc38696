#pragma once
// The three small frequency stores: the scratchpad (ten rows of eight frequencies, each row with
// a note, kept in FSP files), the last twenty frequencies tuned, and the frequencies marked by
// hand. Both lists live for the whole run, whether their windows are open or not.
#include <QByteArray>
#include <QString>
#include <QStringList>
#include <array>
#include <vector>

namespace smalllists {

constexpr int kPadRows = 10;
constexpr int kPadColumns = 8;

struct Scratchpad {
    std::array<QString, kPadRows> notes;
    std::array<std::array<QString, kPadColumns>, kPadRows> cells;
};

// An FSP file into pad: every cell emptied, then for each of the first ten lines the text before
// the first comma becomes that row's note and the pieces after it, each ended by a comma, its
// cells (what follows the last comma and pieces past the eighth are dropped). A comma in a note
// thus shifts the row; a line without a comma keeps the row's note and leaves its cells empty;
// rows past the file's end keep their notes.
void readFsp(const QByteArray &bytes, Scratchpad &pad);
// Ten lines, each the note, ",", and every cell followed by ",".
QByteArray fspBytes(const Scratchpad &pad);

// Index 0 is the newest; twenty are shown, the array holds one more that nothing fills.
constexpr int kListEntries = 21;
constexpr int kListShown = 20;
using FrequencyList = std::array<QString, kListEntries>;
extern FrequencyList last20Freqs;
extern FrequencyList markedFreqs;

// text at the head, the others one down; the twentieth falls off.
void shiftIn(FrequencyList &list, const QString &text);

// The value of a frequency text (the leading number, else 0).
double frequencyValue(const QString &text);
// Within freqLowerLimit..freqUpperLimit, both ends included.
bool scannable(const QString &text, double lower, double upper);
// The scannable values among texts, in their order; equal ones each count.
std::vector<double> scanTable(const QStringList &texts, double lower, double upper);
// How many of the shown entries are scannable.
int scannableCount(const FrequencyList &list, double lower, double upper);
// The first scannable shown entry after current, past the last back to the first (current -1
// starts at the head); -1 when none is left.
int nextScanEntry(const FrequencyList &list, int current, double lower, double upper);

} // namespace smalllists
