#pragma once
// What the memory window and the cell editor compute, apart from their widgets: a cell's grid
// row and detail labels, the range and delay rules of fill, print and scan, the sort by
// frequency, the printed lines, and the editor's record built from its fields and taken apart
// again. Label texts come from the label tables of the model in force (modeTable, filterTable,
// attTable, agcTable, yesNoTable), so the functions serve every model.
#include "memory/mem_record.h"

#include <QString>
#include <QStringList>
#include <optional>

namespace memman {

// --- rows and labels ---

// The five cells of a grid row: number, frequency, mode, bandwidth, tag. A field at its "@"
// filler gives a blank label, a code outside its table "?". A cell never assigned (or holding
// only blanks, as such a cell reads back from its empty file line) gives five empty texts.
struct GridRow {
    QString number, frequency, mode, bandwidth, tag;
};
GridRow gridRow(const QString &rec, const QString &tag);

// The detail labels of a selected cell. A field at its filler shows "---", the scan flag "-".
// Mode 4 or 5 puts the shift text under BFO and "---" under squelch, other modes the squelch
// text under squelch and "---" under BFO. A cell never assigned gives empty texts. A byte
// outside 0..255 shows "?". With rxType an RX-320 the AGC field is its wire value 1..3, shown as
// agcTable(v - 1).
struct Details {
    QString att, agc, pbs, bfo, sql, scan;
};
Details details(const QString &rec);

// The label of index v in table, "?" outside it.
QString tableLabel(const QStringList &table, int v);

// --- range and delay ---

// From and to as typed, checked as fill, print and scan check them: 0 <= from < last and
// 0 <= to <= last, exchanged when from > to. Text that is no number counts as 0; a number is
// checked before it is made a 16-bit integer, so no typed text can overflow. Decimals go to the
// nearest whole number, halves to even, as that assignment makes them.
struct Range {
    bool ok = false;
    int from = 0;
    int to = 0;
};
Range checkRange(const QString &fromText, const QString &toText, int last);

// The scan delay in seconds: below 1 becomes 1, above 60 becomes 60; text is the value to write
// back into the box when it was clamped, empty when the typed text stands.
struct Delay {
    double seconds = 1;
    QString text;
};
Delay clampDelay(const QString &typed);

// The scan timer's interval for a delay: (delay - 0.1) s, on the AR7030 (delay - 0.95) s, in ms.
int scanIntervalMs(double delaySeconds, int rxType);

// --- sort ---

// Sorts cells 0..last of the image by frequency: frequencies below 5 Hz (vacant cells too)
// take "32016666" and go last; a shell sort with gaps halved, halves to even, exchanging record
// and tag together on strictly greater; then every record gets its new cell number and vacant
// records are written anew. Cells never assigned (or of blanks) take part as "32016666" and
// stay as they are: no number is written into them.
void sortImage(FixedTextArray<kMemRecordWidth> &records, FixedTextArray<kMemTagWidth> &tags, int last);

// --- printing ---

// The printed lines of cells from..to for the model in force: two empty lines, five blanks
// and the file name in capitals, an empty line, the model's header, an empty line, one line
// per cell. Cells never assigned are not printed; vacant ones are, with the labels of value 0.
QStringList printLines(const FixedTextArray<kMemRecordWidth> &records, const FixedTextArray<kMemTagWidth> &tags,
                       const QString &fileName, int from, int to, int rxType);
// The header line of a model's printout.
QString printHeader(int rxType);
// The line of one cell.
QString printLine(const QString &rec, const QString &tag, int rxType);

// --- the cell editor ---

// The editor's fields as texts, as its controls hold them.
struct CellFields {
    int cell = 0;
    QString frequency;  // kHz, "06070.000" from a record; a comma counts as a point
    QString mode;       // texts as in the label tables
    QString bandwidth;
    QString attenuator;
    QString agc;
    QString pbs;        // AR7030: a shift text (" 0.0k", "+1.2k")
    QString sqlBfo;     // AR7030: "00".."99" squelch, or a shift text in modes 4 and 5
    QString scan;       // AR7030: a yesNoTable text
    QString tag;
};

// The fields shown for a record and its tag (actions other than "store the receiver's
// setting"): the frequency as positions 8..12 + "." + 13..15, labels from the tables, the tag
// without its trailing blanks. Fields the model has not got, and fields at their "@" filler,
// are left empty; No RX gets the frequency and the tag only. cell is the record's own number
// (the window shows memRow).
CellFields fieldsFromRecord(const QString &rec, const QString &tag, int rxType);

// The fields of a JRC status text ("X" att bw mode freq[8] agc).
CellFields fieldsFromJrcStatus(const QString &status);

// Whether "Data" or "CW" is chosen, so that the AR7030's Sql/BFO list holds shift texts.
bool bfoMode(const QString &modeText);

// The frequency of the editor in Hz as eight digits, or nothing when it would not fit (below 0,
// or 100000 kHz and above). No number counts as 0: "00000000".
std::optional<QString> editorHz(const QString &frequencyText);

// The record built from the fields for the model: "MEM" + NNN + " " + hz + " " + mode + " " +
// bandwidth + the model's tail. A mode text not found leaves the mode field empty and the
// fields behind it move up one place (the NRD-545's search covers modes 0..6 only). Returns
// nothing when the frequency does not fit (see editorHz).
std::optional<QString> recordFromFields(const CellFields &f, int rxType);

// The tag as the editor takes it: at most 45 Latin-1 characters, no tab or line break.
bool acceptableTag(const QString &tag);

} // namespace memman
