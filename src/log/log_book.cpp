#include "log_book.h"
#include "core/numtext.h"
#include "core/paths.h"
#include "core/runtime_error.h"
#include "core/shared_state.h"
#include "core/shell_sort.h"
#include "core/textfile.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace logbook {

const std::array<FieldSpec, kFields> kFieldSpecs = {{
    {5, 8, "Date", 960, "Date (yyyymmdd)", "Date"},
    {14, 4, "UTC", 480, "Start UTC (hhmm)", "Start Time"},
    {19, 4, "UTC", 480, "End UTC (hhmm)", "End Time"},
    {24, 9, "Frequency", 1080, "Frequency (kHz)", "Frequency"},
    {34, 5, "SINPO", 600, "SINPO (#####)", "SINPO"},
    {40, 3, "Lan", 360, "Language (%%%)", "Language"},
    {44, 20, "Organisation", 2400, "Organisation", "BC org."},
    {65, 20, "Tx location", 2400, "TX Location", "Tx Loc."},
    {86, 5, "//Freq", 600, "// Frequency 1", "// Freq 1"},
    {92, 5, "//Freq", 600, "// Frequency 2", "// Freq 2"},
    {98, 5, "//Freq", 600, "// Frequency 3", "// Freq 3"},
    {104, 5, "//Freq", 600, "// Frequency 4", "// Freq 4"},
    {110, 40, "Remarks", 4800, "Remarks", "Remarks"},
    {151, 4, "Rx", 480, "RX setting", "RX setting"},
    {156, 4, "Aux", 480, "Auxilary", "Auxilary"},
}};

const std::array<const char *, 5> kSortKeys = {"01365", "10365", "30165", "60135", "50136"};

std::vector<Record> logRecords;
int32_t logCount = -1;
QString logMask;

namespace {
const QString kMaskFile = QStringLiteral("loggridformat.ini");
}

int32_t lastRowAllowed() { return numtext::toInt(numtext::roundHalfEven(double(slotDimLog()) * 1000.0)); }

QString recordNumber(int32_t row)
{
    const int64_t n = (int64_t(row) + 1000) % 1000;
    return QString::number(n < 0 ? n + 1000 : n).rightJustified(3, u'0');
}

std::vector<Record> readLog(const QByteArray &bytes, int32_t lastRow)
{
    std::vector<Record> rows;
    rows.reserve(size_t(std::min<qsizetype>(bytes.count('\n') + 1, qsizetype(lastRow) + 1)));
    textfile::forEachLine(bytes, [&](const char *d, qsizetype n) {
        if (int64_t(rows.size()) > int64_t(lastRow))
            throw RuntimeError::subscriptOutOfRange();
        Record &r = rows.emplace_back();
        // Cut by the columns straight from the bytes, without trimming: a short line gives what it has.
        for (int f = 0; f < kFields; ++f) {
            const qsizetype from = kFieldSpecs[size_t(f)].start - 1;
            if (from < n)
                r[size_t(f)] = QString::fromLatin1(d + from, std::min<qsizetype>(kFieldSpecs[size_t(f)].width, n - from));
        }
    });
    return rows;
}

QByteArray logBytes(const std::vector<Record> &rows, int32_t count)
{
    QByteArray out;
    out.reserve(qsizetype(count) * (kLineLength + 2));
    QString line;
    line.reserve(kLineLength);
    for (int32_t r = 0; r < count && size_t(r) < rows.size(); ++r) {
        line = recordNumber(r);
        line += u' ';
        for (int n = 0; n < kFields; ++n) {
            line += rows[size_t(r)][size_t(n)].leftJustified(kFieldSpecs[size_t(n)].width, u' ', true);
            line += u' ';
        }
        out += line.toLatin1();
        out += "\r\n";
    }
    return out;
}

void loadLogFile(const QString &path)
{
    logRecords = readLog(textfile::readAll(path), lastRowAllowed());
    logCount = int32_t(logRecords.size()) - 1;
}

void saveLogFile(const QString &path) { textfile::writeAtomically(path, logBytes(logRecords, logCount + 1)); }

QString readMask(const QByteArray &bytes)
{
    const QStringList lines = textfile::splitLines(bytes);
    return lines.isEmpty() ? QString() : lines.first().left(kFields);
}

QByteArray maskBytes(const QString &mask) { return textfile::joinLines({mask}); }

void loadMask(const QString &dir) { logMask = readMask(textfile::readAll(paths::native(dir + kMaskFile))); }

void saveMask(const QString &dir) { textfile::writeAtomically(paths::native(dir + kMaskFile), maskBytes(logMask)); }

bool shows(const QString &mask, int field) { return field >= 0 && field < mask.size() && mask[field] == u'1'; }

QStringList gridRow(const Record &r, int32_t row, const QString &mask)
{
    QStringList cells{recordNumber(row)};
    for (int n = 0; n < kFields; ++n)
        if (shows(mask, n))
            cells << r[size_t(n)];
    return cells;
}

Columns buildColumns(const QString &mask)
{
    Columns c{{QStringLiteral("Nr")}, {kNumberTwips}};
    for (int n = 0; n < kFields; ++n)
        if (shows(mask, n)) {
            c.titles << QString::fromLatin1(kFieldSpecs[size_t(n)].title);
            c.twips.push_back(kFieldSpecs[size_t(n)].twips);
        }
    return c;
}

bool tunesByWidth(int twips) { return twips == 1080 || twips == 600; }

int formatLength(const QString &mask)
{
    int sum = 0;
    for (int n = 0; n < kFields; ++n)
        if (shows(mask, n))
            sum += kFieldSpecs[size_t(n)].width + 1;
    return sum;
}

std::optional<QString> storedField(int n, const QString &typed)
{
    if (n < 0 || n >= kFields)
        return std::nullopt;
    QString s = typed;
    if (n == kStartField || n == kEndField) {
        if (!s.isEmpty())
            s = numtext::format(numtext::Val(s), QStringLiteral("0000"));
    } else if (n == kFrequencyField) {
        const double v = numtext::valc(s);
        s = numtext::format(v, v == std::floor(v) ? QStringLiteral("00000") : QStringLiteral("00000.000"));
    }
    if (s.size() > kFieldSpecs[size_t(n)].width)
        return std::nullopt;
    return s;
}

bool acceptableTyping(int n, const QString &typed)
{
    if (n == kStartField || n == kEndField) {
        for (QChar c : typed)
            if (c < u'0' || c > u'9')
                return false;
        return true;
    }
    if (n == kFrequencyField) {
        bool point = false;
        for (QChar c : typed) {
            if (c == u'.' || c == u',') {
                if (point)
                    return false;
                point = true;
            } else if (c < u'0' || c > u'9') {
                return false;
            }
        }
        return true;
    }
    return true;
}

QString sortKey(const Record &r, int option)
{
    QString key;
    for (const char *d = kSortKeys[size_t(option)]; *d; ++d)
        key += r[size_t(*d - '0')];
    return key.toUpper();
}

namespace {
// A sort key as the passes compare it: its first eight bytes as one number for the common case,
// all of its bytes (in one shared buffer) where those are equal; and the row it belongs to, so
// the passes move keys and the rows move once at the end.
struct PackedKey {
    uint64_t head;
    uint32_t offset;
    uint32_t size;
    uint32_t row;
};
} // namespace

void sortLog(std::vector<Record> &rows, int32_t last, int option)
{
    if (option < 0 || option >= int(kSortKeys.size()) || last < 1)
        return;
    last = std::min(last, int32_t(rows.size()) - 1);
    QByteArray bytes;
    std::vector<PackedKey> keys(size_t(last) + 1);
    for (int32_t i = 0; i <= last; ++i) {
        // Latin-1 bytes compare by character code, as the texts do.
        const QByteArray k = sortKey(rows[size_t(i)], option).toLatin1();
        uint64_t head = 0;
        for (int b = 0; b < 8; ++b)
            head = head << 8 | (b < k.size() ? uint8_t(k[b]) : 0);
        keys[size_t(i)] = {head, uint32_t(bytes.size()), uint32_t(k.size()), uint32_t(i)};
        bytes += k;
    }
    const char *base = bytes.constData();
    const auto greater = [&](const PackedKey &a, const PackedKey &b) {
        if (a.head != b.head)
            return a.head > b.head;
        const int c = std::memcmp(base + a.offset, base + b.offset, std::min(a.size, b.size));
        return c != 0 ? c > 0 : a.size > b.size;
    };
    shellSort(
        last, [&](int32_t a, int32_t b) { return greater(keys[size_t(a)], keys[size_t(b)]); },
        [&](int32_t a, int32_t b) { std::swap(keys[size_t(a)], keys[size_t(b)]); });
    std::vector<Record> sorted;
    sorted.reserve(rows.size());
    for (const PackedKey &k : keys)
        sorted.push_back(std::move(rows[k.row]));
    for (size_t i = keys.size(); i < rows.size(); ++i)
        sorted.push_back(std::move(rows[i]));
    rows = std::move(sorted);
}

} // namespace logbook
