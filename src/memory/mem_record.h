#pragma once
// The receiver memory cell as one fixed-width text record, shared by the drivers' Memory
// properties, the memory window, the cell editor and the memory files. One layout serves all
// four receivers; a field a receiver has not got holds "@" fillers. Numbers stay text and are
// taken apart by character position each time they are used.
#include "core/runtime_error.h"

#include <QString>
#include <cstdint>
#include <vector>

constexpr int kMemRecordWidth = 35;
constexpr int kMemTagWidth = 45;

// A text of fixed width N. Never assigned it reads as empty; any text assigned, the empty text
// too, is padded with blanks to N characters, longer text is cut.
template <int N>
class FixedText {
public:
    FixedText() = default;
    FixedText(const QString &s) { assign(s); } // NOLINT: assignment from text is the point
    FixedText &operator=(const QString &s)
    {
        assign(s);
        return *this;
    }
    const QString &str() const { return text_; }
    operator const QString &() const { return text_; } // NOLINT
    bool isEmpty() const { return text_.isEmpty(); }
    // Characters by position, counted from 1 as the record layout counts them.
    QString mid(int pos, int len) const { return text_.mid(pos - 1, len); }
    bool operator==(const QString &s) const { return text_ == s; }

private:
    void assign(const QString &s) { text_ = s.left(N).leftJustified(N, u' '); }
    QString text_;
};

using MemRecordText = FixedText<kMemRecordWidth>;
using MemTagText = FixedText<kMemTagWidth>;

// An array of fixed texts indexed 0..last; an index outside it is run-time error 9.
template <int N>
class FixedTextArray {
public:
    FixedText<N> &operator[](int i) { return items_.at(check(i)); }
    const FixedText<N> &operator[](int i) const { return items_.at(check(i)); }
    int size() const { return int(items_.size()); }
    // Drop every element and allocate 0..last anew, empty.
    void redim(int last) { items_.assign(size_t(last < 0 ? 0 : last + 1), FixedText<N>()); }

private:
    size_t check(int i) const
    {
        if (i < 0 || i >= int(items_.size()))
            throw RuntimeError::subscriptOutOfRange();
        return size_t(i);
    }
    std::vector<FixedText<N>> items_;
};

// The memory image: one record and one free "alpha tag" per cell, 0..lastMemoryIndex.
extern FixedTextArray<kMemRecordWidth> memRecord;
extern FixedTextArray<kMemTagWidth> memTag;
// The cell the memory window and the cell editor work on.
extern int16_t memRow;

// Both arrays dropped and allocated anew, empty, for 0..lastMemoryIndex.
void allocateMemImage();

// Field positions (from 1) and lengths in the record.
namespace memfield {
struct Field { int pos; int len; };
constexpr Field state{1, 3};      // "MEM" filled, "XXX" vacant
constexpr Field number{4, 3};     // cell number, three digits
constexpr Field frequency{8, 8};  // Hz, eight digits; "No data " when vacant
constexpr Field mode{17, 1};      // index into modeTable, or "@"
constexpr Field bandwidth{19, 2}; // index into filterTable, or "@@"
constexpr Field attenuator{22, 1};
constexpr Field agc{24, 1};
constexpr Field pbs{26, 3};       // AR7030 pass band shift byte
constexpr Field sqlBfo{30, 3};    // AR7030 squelch byte, or BFO byte in modes 4 and 5
constexpr Field scan{34, 1};      // AR7030 scan flag, index into yesNoTable
} // namespace memfield

// The text of a field of rec; empty where rec is too short to hold it.
QString memField(const QString &rec, memfield::Field f);

// The fields of a filled record, as text; a field left at its filler is absent on that model.
struct MemFields {
    int number = 0;
    QString hz = QStringLiteral("00000000"); // eight digits
    QString mode = QStringLiteral("@");
    QString bandwidth = QStringLiteral("@@");
    QString attenuator = QStringLiteral("@");
    QString agc = QStringLiteral("@");
    QString pbs = QStringLiteral("@@@");
    QString sqlBfo = QStringLiteral("@@@");
    QString scan = QStringLiteral("@");
};
// "MEM" + number + fields, blanks between them and after the last: 35 characters.
QString filledMemRecord(const MemFields &f);
// "XXX" + number + " No data  @ @@ @ @ @@@ @@@ @ ": 35 characters.
QString vacantMemRecord(int number);
bool isVacantMemRecord(const QString &rec);

// Frequencies as the record holds them: Hz in eight digits, and back to kHz.
QString memHzText(double khz);
double memKhz(const QString &rec);

// The sort key: the frequency field compared as text (numeric order, the field being of fixed
// width); vacant and empty cells (never assigned, or all blanks) get "32016666" so that they
// end up last.
QString memSortKey(const QString &rec);
inline constexpr const char *kMemLastKey = "32016666";

// The frequency field as shown: d[1..5] + "." + d[6..8] in kHz, when its value is above 1;
// otherwise the field as it stands ("No data ").
QString memFrequencyDisplay(const QString &rec);
