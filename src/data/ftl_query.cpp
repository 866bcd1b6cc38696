#include "ftl_query.h"
#include "core/numtext.h"
#include "core/paths.h"
#include "core/runtime_error.h"
#include "core/shared_state.h"
#include "core/shell_sort.h"
#include "core/textfile.h"
#include "core/time_span.h"

#include <algorithm>

namespace ftlquery {

std::vector<QString> ilgRecords;
std::vector<int32_t> ilgListIndex;
int32_t ilgCount = 0;
int32_t ilgShown = 0;

namespace {
const QString kBlankRecord(kRecordWidth, u' ');

// The value of a record's first width characters; plain digits, the common case, are read
// directly, all else goes through Val.
double leadingValue(const QString &record, int width)
{
    const QStringView s = QStringView(record).left(width);
    double v = 0;
    for (QChar c : s) {
        if (c < u'0' || c > u'9')
            return numtext::Val(s.toString());
        v = v * 10 + (c.unicode() - u'0');
    }
    return v;
}

// Columns from..from+text.size()-1 (counted from 1) begin with text, case-blind.
bool startsAt(const QString &record, int from, const QString &text)
{
    return QStringView(record).mid(from - 1, text.size()).compare(text, Qt::CaseInsensitive) == 0;
}

bool targetFlagged(const QString &record, const QString &code)
{
    for (int i = 0; i < int(regionCodes.size()); ++i)
        if (code.compare(regionCodes[size_t(i)], Qt::CaseInsensitive) == 0)
            return record.mid(90 + i, 1) == u"1";
    return false;
}

int boundWidth(const Criteria &c) { return c.aero ? 8 : 5; }
double lowerKhz(const Criteria &c) { return numtext::valc(c.text[c.aero ? int(AeroLowerBox) : int(LowerBox)]) * 1000; }
double upperKhz(const Criteria &c) { return numtext::valc(c.text[c.aero ? int(AeroUpperBox) : int(UpperBox)]) * 1000; }
} // namespace

int32_t ilgCapacity() { return numtext::clng(double(slotDimIlg()) * 1000.0); }

QString fixedRecord(const QString &line) { return line.leftJustified(kRecordWidth, u' ', true); }

int32_t readFtl(const QByteArray &bytes)
{
    const QStringList lines = textfile::splitLines(bytes);
    const int32_t capacity = ilgCapacity();
    ilgRecords.clear();
    ilgListIndex.clear();
    const size_t n = size_t(std::min<qsizetype>(lines.size(), std::max(capacity, 0)));
    ilgRecords.reserve(n + 1);
    ilgListIndex.reserve(n);
    ilgRecords.push_back(kBlankRecord);
    ilgCount = ilgShown = 0;
    int32_t i = 0;
    for (const QString &line : lines) {
        if (++i > capacity)
            throw RuntimeError::subscriptOutOfRange();
        ilgRecords.push_back(fixedRecord(line));
        ilgListIndex.push_back(i);
    }
    ilgCount = ilgShown = i;
    return i;
}

QString loadedRow(int32_t r) { return ilgRecords.at(size_t(r)); }

QString queriedRow(int32_t r)
{
    const QString &rec = ilgRecords.at(size_t(r));
    return rec.left(77) + rec.mid(100);
}

std::vector<QStringList> listRows(QString (*row)(int32_t))
{
    std::vector<QStringList> rows;
    rows.reserve(size_t(ilgShown));
    for (int32_t k = 0; k < ilgShown; ++k)
        rows.push_back({row(ilgListIndex[size_t(k)])});
    return rows;
}

double rowFrequency(const QString &row) { return numtext::Val(row.left(8)); }

// --- query files ---

std::vector<QStringList> readQueryFile(const QByteArray &bytes, int boxCount)
{
    std::vector<QStringList> boxes(size_t(std::max(boxCount, 0)));
    int box = -1;
    for (const QString &line : textfile::splitLines(bytes)) {
        if (line.startsWith(QLatin1String("***")))
            ++box;
        else if (!line.startsWith(QLatin1String("===")) && box >= 0 && box < boxCount)
            boxes[size_t(box)] << line;
    }
    return boxes;
}

std::vector<QStringList> loadQueryFile(const QString &name, int boxCount)
{
    return readQueryFile(textfile::readAll(paths::native(dirPath + name)), boxCount);
}

// --- the search ---

void normaliseBounds(Criteria &c)
{
    QString &lower = c.text[c.aero ? int(AeroLowerBox) : int(LowerBox)];
    QString &upper = c.text[c.aero ? int(AeroUpperBox) : int(UpperBox)];
    if (numtext::valc(lower) == 0)
        lower = QStringLiteral("0");
    if (numtext::valc(upper) == 0)
        upper = QStringLiteral("32");
}

int32_t walkFirst(const Criteria &c)
{
    const double lower = lowerKhz(c);
    int32_t i = 1;
    while (i <= ilgCount && leadingValue(ilgRecords[size_t(i)], boundWidth(c)) <= lower)
        ++i;
    return i;
}

int32_t walkLast(const Criteria &c)
{
    const double upper = upperKhz(c);
    int32_t i = ilgCount;
    while (i >= 1 && leadingValue(ilgRecords[size_t(i)], boundWidth(c)) > upper)
        --i;
    return i;
}

bool passes(const QString &record, const Criteria &c)
{
    if (c.aero)
        return !c.checked[0] || startsAt(record, 19, c.text[NetworkBox]);
    int count = 0;
    count += !c.checked[LanguageCheck] || startsAt(record, 52, c.text[LanguageBox]);
    count += !c.checked[StationCheck] || startsAt(record, 20, c.text[StationBox]);
    count += !c.checked[CountryCheck] || startsAt(record, 101, c.text[CountryBox]);
    count += !c.checked[OnAirCheck] || inTimeSpan(c.utc, QStringView(record).mid(9, 4), QStringView(record).mid(14, 4));
    count += !c.checked[TargetCheck] || targetFlagged(record, c.text[TargetBox]);
    return count == kIlgChecks;
}

void search(Criteria &c, const std::function<void(int)> &progress)
{
    const auto show = [&](int p) {
        if (progress)
            progress(p);
    };
    normaliseBounds(c);
    const int32_t first = walkFirst(c);
    show(10);
    const int32_t last = walkLast(c);
    show(20);
    ilgListIndex.clear();
    const int32_t span = std::max(last - first + 1, 0);
    ilgListIndex.reserve(size_t(span));
    for (int32_t i = first, walked = 1; i <= last; ++i, ++walked) {
        if (passes(ilgRecords[size_t(i)], c))
            ilgListIndex.push_back(i);
        if (walked % 250 == 0)
            show(int(numtext::floorInt(double(walked) / span * 80 + 20)));
    }
    ilgShown = int32_t(ilgListIndex.size());
}

// --- the sort ---

QString sortKey(const QString &record, int option)
{
    static constexpr int from[kSortOptions] = {1, 10, 20, 52};
    static constexpr int width[kSortOptions] = {8, 9, 22, 17};
    return record.mid(from[option] - 1, width[option]);
}

void SortIlgList(int option)
{
    if (option < 0 || option >= kSortOptions || ilgShown < 2)
        return;
    const int32_t last = ilgShown - 1;
    // Keys as Latin-1 bytes, compared by character code, made once per entry.
    std::vector<QByteArray> keys(static_cast<size_t>(ilgShown));
    for (int32_t k = 0; k <= last; ++k)
        keys[size_t(k)] = sortKey(ilgRecords[size_t(ilgListIndex[size_t(k)])], option).toLatin1();
    shellSort(
        last, [&](int a, int b) { return keys[size_t(a)] > keys[size_t(b)]; },
        [&](int a, int b) {
            std::swap(keys[size_t(a)], keys[size_t(b)]);
            std::swap(ilgListIndex[size_t(a)], ilgListIndex[size_t(b)]);
        });
}

// --- the scan ---

ScanStep scanStep(const std::function<double(int32_t)> &frequencyOf, int32_t rows, int32_t position,
                  double lastTuned)
{
    if (rows <= 0)
        return {0, 0, 0};
    int32_t row = position >= 0 && position < rows ? position : 0;
    double f = frequencyOf(row);
    int tries = 0;
    while (f == lastTuned && tries < kScanTries) {
        row = row + 1 < rows ? row + 1 : 0;
        f = frequencyOf(row);
        ++tries;
    }
    if (f == lastTuned) {
        row = 0;
        f = frequencyOf(0);
    }
    return {row, f, row + 1 < rows ? row + 1 : 0};
}

bool scanDelayValid(double seconds, int maxSeconds) { return seconds >= 1 && seconds <= maxSeconds; }

} // namespace ftlquery
