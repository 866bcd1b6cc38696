#pragma once
// The frequency pairs of the pairs scan: for each pair an A and a B frequency (kHz, kept as the
// file's text), a tick and a remark; the scan range with its wrap through the end of the list,
// the order of the steps, the eleven rows of the window, the fallbacks of its boxes, and the SFP
// file. The pairs live for the whole run, whether the window is open or not.
#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <array>
#include <cstdint>
#include <optional>

namespace scanpairs {

extern QStringList PairChannelA;
extern QStringList PairChannelB;
extern QList<int16_t> PairChecked;
extern QStringList PairRemarks;
extern int16_t PairLast;
// The name of the file the pairs came from, empty before the first load.
extern QString pairFileName;

// Back to one empty, unticked pair and no file (tests).
void resetPairs();

// The scan range: first..last, or, with first above last, first..PairLast and 0..last.
bool inRange(int i, int first, int last);
// The pair after pos in the scan's order.
int advance(int pos, int first, int last, int pairLast);
// From pos on in the scan's order, the first ticked pair (pos itself when ticked); -1 when the
// walk meets none, so that a range without a tick ends instead of looping.
int nextTicked(int pos, int first, int last);

constexpr int kRows = 11;
constexpr int kActiveRow = 5;
// The pair shown on each row around pair a (-1 for an empty row): a on the active row always,
// its neighbours only where they lie in the range.
std::array<int, kRows> rowPairs(int a, int first, int last, int pairLast);

// The boxes' values, or nothing where the box falls back (txtStart to 0, txtEnd to PairLast,
// txtDelay to 1 second).
std::optional<int> pairIndexValue(const QString &text, int pairLast);
std::optional<double> delayValue(const QString &text);

// One line of the file: "A,B, 1,remark".
QByteArray sfpLine(const QString &a, const QString &b, int16_t checked, const QString &remark);
// All pairs, 0 to PairLast, each line ended by CR LF.
QByteArray sfpBytes();
// An SFP file into the pairs: every line four items split by commas, blanks around each item
// dropped, the tick read as a whole number. A file without a pair or with a line that is not
// one leaves the pairs as they are and returns what is wrong; an empty text when read.
QString readSfp(const QByteArray &bytes);

} // namespace scanpairs
