#include "memman_logic.h"
#include "core/numtext.h"
#include "core/shared_state.h"
#include "panels/panel_logic.h"
#include "panels/rx320_panel_logic.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace memman {

namespace {

using memfield::Field;

QString field(const QString &rec, Field f) { return memField(rec, f); }

// A filler field: every character "@" (the field a model has not got, or a vacant cell's).
bool isFiller(const QString &text) { return !text.isEmpty() && text.count(u'@') == text.size(); }

// A cell that holds no record: never assigned, or only blanks (a never-assigned cell read back
// from its empty file line).
bool isUnassigned(const QString &rec) { return rec.trimmed().isEmpty(); }

// The value of a field, read leniently ("@" and other text count as 0), as a whole number.
// Fields are at most eight characters, but a record from elsewhere may hold an exponent: such
// values are not looked up in any table and come back as -1.
int code(const QString &text)
{
    const double v = numtext::roundHalfEven(numtext::Val(text));
    return v >= -1 && v <= 99999999 ? int(v) : -1;
}

// A register byte of the AR7030 from its field; nothing outside 0..255.
std::optional<int> byteOf(const QString &text)
{
    const int v = code(text);
    if (v < 0 || v > 255)
        return std::nullopt;
    return v;
}

QString shiftText(const QString &text)
{
    const auto b = byteOf(text);
    return b ? panel::b2fs(*b) : QStringLiteral("?");
}

QString squelchText(const QString &text)
{
    const auto b = byteOf(text);
    return b ? panel::b2sql(*b) : QStringLiteral("?");
}

bool shiftMode(int mode) { return mode == 4 || mode == 5; }

// The AGC label of a code. The RX-320's record holds the wire value 1..3, its table starts at
// the slowest; value 0 is the empty slot before it, as the AR7030's mode 0 is.
QString agcLabel(int v, int type)
{
    if (type == rxRX320)
        return v == 0 ? QString() : tableLabel(agcTable, rx320panel::agcIndexOfWire(v));
    return tableLabel(agcTable, v);
}

QString labelOrFiller(const QString &text, const QStringList &table, const QString &filler)
{
    return isFiller(text) ? filler : tableLabel(table, code(text));
}

// Index of text among table[first..last], formatted by pattern; empty when it is not there.
QString lookUp(const QString &text, const QStringList &table, int first, int last, const QString &pattern,
               int offset = 0)
{
    for (int i = first; i <= last && i < table.size(); ++i)
        if (table[i] == text)
            return numtext::format(i + offset, pattern);
    return {};
}

QString threeDigits(int n) { return numtext::format(n, QStringLiteral("000")); }

// A shift typed into the editor's list beyond its ends counts as the end it passed, so that the
// byte stays a byte.
int shiftByte(const QString &text)
{
    constexpr double kListEndKhz = 4.2;
    const double v = numtext::Val(text);
    if (std::fabs(v) > kListEndKhz)
        return panel::fs2b(text.startsWith(u'-') ? QStringLiteral("-4.2k") : QStringLiteral("+4.2k"));
    return panel::fs2b(text);
}

// The value ranges the editor's lists offer, by model.
struct EditorRanges {
    int modeFirst, modeLast, bwFirst, bwLast, agcLast;
};
EditorRanges editorRanges(int type)
{
    switch (type) {
    case rxAR7030: return {1, 7, 1, 6, -1};
    case rxNRD535: return {0, 8, 0, 3, 2};
    case rxRX320: return {0, 3, 0, 33, 2};
    // The NRD-545's search stops short of its last modes.
    case rxNRD545: return {0, 6, 0, 2, 9};
    default: return {0, -1, 0, -1, -1};
    }
}

} // namespace

QString tableLabel(const QStringList &table, int v)
{
    return v >= 0 && v < table.size() ? table[v] : QStringLiteral("?");
}

GridRow gridRow(const QString &rec, const QString &tag)
{
    if (isUnassigned(rec))
        return {};
    const QString blank = QStringLiteral(" ");
    return {field(rec, memfield::number), memFrequencyDisplay(rec),
            labelOrFiller(field(rec, memfield::mode), modeTable, blank),
            labelOrFiller(field(rec, memfield::bandwidth), filterTable, blank), tag};
}

Details details(const QString &rec)
{
    if (isUnassigned(rec))
        return {};
    const QString none = QStringLiteral("---");
    Details d;
    d.att = labelOrFiller(field(rec, memfield::attenuator), attTable, none);
    const QString agc = field(rec, memfield::agc);
    d.agc = isFiller(agc) ? none : agcLabel(code(agc), rxType);
    const QString pbs = field(rec, memfield::pbs);
    d.pbs = isFiller(pbs) ? none : shiftText(pbs);
    const QString sb = field(rec, memfield::sqlBfo);
    d.bfo = d.sql = none;
    if (!isFiller(sb)) {
        if (shiftMode(code(field(rec, memfield::mode))))
            d.bfo = shiftText(sb);
        else
            d.sql = squelchText(sb);
    }
    d.scan = labelOrFiller(field(rec, memfield::scan), yesNoTable, QStringLiteral("-"));
    return d;
}

Range checkRange(const QString &fromText, const QString &toText, int last)
{
    // Whole numbers as a 16-bit assignment makes them (halves to even), but compared first.
    const double from = numtext::roundHalfEven(numtext::Val(fromText));
    const double to = numtext::roundHalfEven(numtext::Val(toText));
    if (!(from >= 0 && from < last && to >= 0 && to <= last))
        return {};
    Range r{true, int(from), int(to)};
    if (r.from > r.to)
        std::swap(r.from, r.to);
    return r;
}

Delay clampDelay(const QString &typed)
{
    const float v = float(numtext::Val(typed));
    if (!(v >= 1))
        return {1, QStringLiteral("1")};
    if (v > 60)
        return {60, QStringLiteral("60")};
    return {double(v), {}};
}

int scanIntervalMs(double delaySeconds, int type)
{
    const double ms = (delaySeconds - (type == rxAR7030 ? 0.95 : 0.1)) * 1000;
    return ms > 0 ? numtext::clng(ms) : 0;
}

void sortImage(FixedTextArray<kMemRecordWidth> &records, FixedTextArray<kMemTagWidth> &tags, int last)
{
    const QString lastKey = QString::fromLatin1(kMemLastKey);
    // Frequencies below 5 Hz, vacant cells among them, take the last key into the record.
    for (int i = 0; i <= last; ++i) {
        const QString rec = records[i].str();
        if (!isUnassigned(rec) && numtext::Val(field(rec, memfield::frequency)) < 5)
            records[i] = rec.left(memfield::frequency.pos - 1) + lastKey
                         + rec.mid(memfield::frequency.pos - 1 + memfield::frequency.len);
    }
    std::vector<QString> key(size_t(last < 0 ? 0 : last + 1));
    for (int i = 0; i <= last; ++i) {
        const QString &rec = records[i].str();
        key[size_t(i)] = isUnassigned(rec) ? lastKey : field(rec, memfield::frequency);
    }
    int gap = last;
    while (gap >= 2) {
        gap = int(numtext::roundHalfEven(gap / 2.0));
        int mark;
        do {
            mark = 0;
            for (int i = 0; i <= last - gap; ++i) {
                if (key[size_t(i)] > key[size_t(i + gap)]) {
                    std::swap(key[size_t(i)], key[size_t(i + gap)]);
                    std::swap(records[i], records[i + gap]);
                    std::swap(tags[i], tags[i + gap]);
                    // The row of the exchange, not a flag: one in row 0 alone ends the repeat.
                    mark = i;
                }
            }
        } while (mark != 0);
    }
    for (int i = 0; i <= last; ++i) {
        const QString rec = records[i].str();
        if (isUnassigned(rec))
            continue;
        if (isVacantMemRecord(rec))
            records[i] = vacantMemRecord(i);
        else
            records[i] = rec.left(memfield::number.pos - 1) + threeDigits(i)
                         + rec.mid(memfield::number.pos - 1 + memfield::number.len);
    }
}

QString printHeader(int type)
{
    switch (type) {
    case rxAR7030: return QStringLiteral("     Nr  Frequency Mode  Bw    PBS  Sql  BFO  Scn Alpha tag");
    case rxNRD535:
    case rxNRD545: return QStringLiteral("     Nr  Frequency Mode Bw   Att  Agc  Alpha tag");
    case rxRX320: return QStringLiteral("     Nr  Frequency Mode Bw   Agc  Alpha tag");
    default: return {};
    }
}

QString printLine(const QString &rec, const QString &tag, int type)
{
    using numtext::format;
    using numtext::formatText;
    const QString four = QStringLiteral("@@@@ ");
    const QString six = QStringLiteral("@@@@@@ ");
    // Every field by its value: a vacant cell prints the labels of value 0.
    const auto value = [&](Field f) { return code(field(rec, f)); };
    QString line = format(numtext::Val(field(rec, memfield::number)), QStringLiteral("     000 "))
                   + format(numtext::Val(rec.mid(7, 5)), QStringLiteral("00000")) + u'.'
                   + format(numtext::Val(rec.mid(12, 3)), QStringLiteral("000 "))
                   + formatText(tableLabel(modeTable, value(memfield::mode)), four)
                   + formatText(tableLabel(filterTable, value(memfield::bandwidth)), four);
    switch (type) {
    case rxAR7030: {
        const QString sb = field(rec, memfield::sqlBfo);
        line += formatText(shiftText(field(rec, memfield::pbs)), six);
        if (shiftMode(value(memfield::mode)))
            line += QStringLiteral("   ") + formatText(shiftText(sb), six);
        else
            line += squelchText(sb) + QStringLiteral("        ");
        line += tableLabel(yesNoTable, value(memfield::scan)) + QStringLiteral("  ");
        break;
    }
    case rxNRD535:
    case rxNRD545:
        line += formatText(tableLabel(attTable, value(memfield::attenuator)), four)
                + formatText(agcLabel(value(memfield::agc), type), QStringLiteral("@@@@  "));
        break;
    case rxRX320: line += formatText(agcLabel(value(memfield::agc), type), QStringLiteral("@@@@  ")); break;
    default: break;
    }
    return line + tag;
}

QStringList printLines(const FixedTextArray<kMemRecordWidth> &records, const FixedTextArray<kMemTagWidth> &tags,
                       const QString &fileName, int from, int to, int type)
{
    QStringList lines{QString(), QString(), QStringLiteral("     ") + fileName.toUpper(), QString(),
                      printHeader(type), QString()};
    for (int i = from; i <= to; ++i)
        if (!isUnassigned(records[i].str()))
            lines << printLine(records[i].str(), tags[i].str(), type);
    return lines;
}

CellFields fieldsFromRecord(const QString &rec, const QString &tag, int type)
{
    CellFields f;
    const int n = code(field(rec, memfield::number));
    f.cell = n >= 0 && n <= 999 ? n : 0;
    QString t = tag;
    while (t.endsWith(u' '))
        t.chop(1);
    f.tag = t;
    if (isUnassigned(rec))
        return f;
    f.frequency = rec.mid(7, 5) + u'.' + rec.mid(12, 3);
    if (type == rxNone)
        return f;
    const auto label = [&](Field fl, const QStringList &table) {
        const QString text = field(rec, fl);
        return isFiller(text) ? QString() : tableLabel(table, code(text));
    };
    f.mode = label(memfield::mode, modeTable);
    f.bandwidth = label(memfield::bandwidth, filterTable);
    const QString agc = field(rec, memfield::agc);
    const QString agcText = isFiller(agc) ? QString() : agcLabel(code(agc), type);
    switch (type) {
    case rxNRD535:
    case rxNRD545:
        f.attenuator = label(memfield::attenuator, attTable);
        f.agc = agcText;
        break;
    case rxRX320: f.agc = agcText; break;
    case rxAR7030: {
        const QString pbs = field(rec, memfield::pbs);
        const QString sb = field(rec, memfield::sqlBfo);
        // b2fs and b2sql give nothing for a byte outside 0..255: the list keeps no choice then.
        const auto byteText = [](const QString &text, bool shift) -> QString {
            const auto b = byteOf(text);
            if (isFiller(text) || !b)
                return {};
            return shift ? panel::b2fs(*b) : panel::b2sql(*b);
        };
        f.pbs = byteText(pbs, true);
        f.sqlBfo = byteText(sb, shiftMode(code(field(rec, memfield::mode))));
        f.scan = label(memfield::scan, yesNoTable);
        break;
    }
    default: break;
    }
    return f;
}

CellFields fieldsFromJrcStatus(const QString &status)
{
    const auto at = [&](int pos, int len) { return status.mid(pos - 1, len); };
    CellFields f;
    f.frequency = at(5, 5) + u'.' + at(10, 3);
    f.mode = tableLabel(modeTable, code(at(4, 1)));
    f.bandwidth = tableLabel(filterTable, code(at(3, 1)));
    f.attenuator = tableLabel(attTable, code(at(2, 1)));
    f.agc = tableLabel(agcTable, code(at(13, 1)));
    return f;
}

bool bfoMode(const QString &modeText)
{
    return modeText == QLatin1String("Data") || modeText == QLatin1String("CW");
}

std::optional<QString> editorHz(const QString &frequencyText)
{
    const double khz = numtext::valc(frequencyText);
    // Far beyond eight digits either way: not worth the formatting (and no infinity reaches it).
    if (!(std::fabs(khz) < 1e6))
        return std::nullopt;
    const QString hz = numtext::format(khz * 1000, QStringLiteral("00000000"));
    if (hz.size() != 8 || hz.startsWith(u'-'))
        return std::nullopt;
    return hz;
}

std::optional<QString> recordFromFields(const CellFields &f, int type)
{
    const auto hz = editorHz(f.frequency);
    if (!hz)
        return std::nullopt;
    const EditorRanges r = editorRanges(type);
    const QString one = QStringLiteral("0");
    const QString mode = lookUp(f.mode, modeTable, r.modeFirst, r.modeLast, one);
    // Texts not found leave their field empty: what follows moves up one place.
    QString rec = QStringLiteral("MEM") + threeDigits(f.cell) + u' ' + *hz + u' ' + mode + u' '
                  + lookUp(f.bandwidth, filterTable, r.bwFirst, r.bwLast, QStringLiteral("00"));
    switch (type) {
    case rxAR7030: {
        const bool shift = mode == QLatin1String("4") || mode == QLatin1String("5");
        const int sqlBfo = shift ? shiftByte(f.sqlBfo) : panel::sql2b(std::clamp(numtext::Val(f.sqlBfo), 0.0, 99.0));
        rec += QStringLiteral(" @ @ ") + threeDigits(shiftByte(f.pbs)) + u' ' + threeDigits(sqlBfo) + u' '
               + lookUp(f.scan, yesNoTable, 0, 1, one);
        break;
    }
    case rxNRD535:
    case rxNRD545:
        rec += u' ' + lookUp(f.attenuator, attTable, 0, 1, one) + u' ' + lookUp(f.agc, agcTable, 0, r.agcLast, one)
               + QStringLiteral(" @@@ @@@ @");
        break;
    case rxRX320:
        // The record keeps the RX-320's wire value, one above the label's index.
        rec += QStringLiteral(" @ ") + lookUp(f.agc, agcTable, 0, r.agcLast, one, 1) + QStringLiteral(" @@@ @@@ @");
        break;
    default: break;
    }
    return MemRecordText(rec).str();
}

bool acceptableTag(const QString &tag)
{
    if (tag.size() > kMemTagWidth)
        return false;
    for (QChar c : tag)
        if (c.unicode() > 0xFF || c == u'\t' || c == u'\r' || c == u'\n')
            return false;
    return true;
}

} // namespace memman
