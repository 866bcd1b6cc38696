#include "schedule_lists.h"
#include "core/numtext.h"
#include "core/runtime_error.h"
#include "core/shared_state.h"
#include "core/textfile.h"
#include "core/time_span.h"

#include <algorithm>

std::vector<QString> bdxcRecords;
std::vector<QString> ownRecords;
std::vector<Fields320> file320Fields;
int32_t bdxcRowCount = 0;

namespace lists {

namespace {
const QString kBlankRecord(kListRecordWidth, u' ');

// A frequency piece as the lists show it: the number text of its value, empty below 10. Plain
// digits, the common case, are read and written directly; all else goes through Val and str.
QString pieceText(QStringView piece, bool keepBlank)
{
    // Blanks and tabs around the number, as Val passes over them.
    auto blank = [](QChar c) { return c == u' ' || c == u'\t'; };
    qsizetype b = 0, e = piece.size();
    while (b < e && blank(piece[b]))
        ++b;
    while (e > b && blank(piece[e - 1]))
        --e;
    const QStringView digits = piece.mid(b, e - b);
    double v = 0;
    bool plain = digits.size() <= 9;
    int whole = 0;
    for (QChar c : digits) {
        if (!plain || c < u'0' || c > u'9') {
            plain = false;
            break;
        }
        whole = whole * 10 + (c.unicode() - u'0');
    }
    v = plain ? whole : numtext::Val(piece.toString());
    if (v < 10)
        return {};
    QString shown = plain ? u' ' + QString::number(whole) : numtext::strBlank(v);
    if (!keepBlank)
        shown.remove(0, 1);
    return shown;
}

int32_t capacityOf(float slot) { return numtext::clng(double(slot) * 1000.0); }

// Lines as the readers take them: a file without any still gives one empty line.
QStringList atLeastOneLine(const QByteArray &bytes)
{
    QStringList lines = textfile::splitLines(bytes);
    if (lines.isEmpty())
        lines.append(QString());
    return lines;
}

// Records 1.. of the lines into a fresh array; mark resolves a line against the record before.
template <class Resolve>
int32_t readRecords(std::vector<QString> &records, const QStringList &lines, int32_t capacity, Resolve resolve)
{
    records.clear();
    records.reserve(size_t(std::min<qsizetype>(lines.size(), capacity) + 1));
    records.push_back(kBlankRecord);
    int32_t i = 0;
    for (const QString &line : lines) {
        if (++i > capacity)
            throw RuntimeError::subscriptOutOfRange();
        records.push_back(resolve(fixedRecord(line), records.back()));
    }
    return i;
}
} // namespace

int32_t bdxcCapacity() { return capacityOf(slotDimBdxc()); }
int32_t ownCapacity() { return capacityOf(slotDimOwn()); }

QString fixedRecord(const QString &line) { return line.leftJustified(kListRecordWidth, u' ', true); }

QString resolveMarks(const QString &record, const QString &before)
{
    QString r = record;
    if (r[0] == u'.')
        r.replace(0, 17, before.left(17));
    if (r[17] == u'.')
        r.replace(17, 18, before.mid(17, 18));
    return r;
}

int32_t readBdxc(const QByteArray &bytes)
{
    return readRecords(bdxcRecords, atLeastOneLine(bytes), bdxcCapacity(), resolveMarks);
}

int32_t readOwn(const QByteArray &bytes)
{
    return readRecords(ownRecords, atLeastOneLine(bytes), ownCapacity(), [](QString r, const QString &) {
        r[43] = r[43].toUpper();
        return r;
    });
}

int32_t read320(const QByteArray &bytes)
{
    const QStringList lines = textfile::splitLines(bytes);
    const int32_t capacity = ownCapacity();
    file320Fields.clear();
    file320Fields.reserve(size_t(std::min<qsizetype>(lines.size(), capacity) + 1));
    file320Fields.emplace_back();
    int32_t i = 0;
    for (const QString &line : lines) {
        if (++i > capacity)
            throw RuntimeError::subscriptOutOfRange();
        file320Fields.push_back(split320(line));
    }
    return i;
}

// --- selection ---

Selection selectionOf(const QString &answer)
{
    if (answer.size() == 4) {
        const double v = numtext::Val(answer);
        if (v > 0 && v <= 2400)
            return Selection::Time;
    }
    return answer.toLower() == u"all" ? Selection::All : Selection::Keep;
}

QString selectionDefault(const QString &utcText) { return utcText.right(5).remove(u':'); }

bool bdxcOnAir(const QString &record, const QString &time)
{
    return inTimeSpan(time, QStringView(record).mid(35, 4), QStringView(record).mid(40, 4));
}

std::optional<std::vector<QStringList>> bdxcRows(const QString &answer, int32_t count)
{
    const Selection s = selectionOf(answer);
    if (s == Selection::Keep)
        return std::nullopt;
    std::vector<QStringList> rows;
    for (int32_t i = 1; i <= count && i < int32_t(bdxcRecords.size()); ++i)
        if (s == Selection::All || bdxcOnAir(bdxcRecords[size_t(i)], answer))
            rows.push_back(bdxcRow(bdxcRecords[size_t(i)]));
    return rows;
}

QStringList bdxcTitles(const QString &fileName, bool loaded)
{
    if (loaded && fileName.left(3).toUpper() == u"ILG")
        return {" Broadcast Org.", " Language", " Time(UTC)", " Frequencies"};
    return {" Country", loaded ? " Broadcast Org." : " Broadcast Org", " Time(UTC)", " Frequencies"};
}

QStringList ownTitles() { return {" Organisation", " ITU", " Lang", " Time(UTC)", " Frequencies"}; }

QStringList titles320() { return {"Name", "Frequency", "Md", "Location", "Language", "Strt", "End", "Notes"}; }

// --- rows ---

namespace {
// The pieces of a record from its first frequency column onto row, the first shown of them as
// text; the rest are counted, not shown. An eleventh piece is run-time error 9.
void appendPieces(QStringList &row, const QString &record, int firstColumn, bool keepBlank, int shown)
{
    constexpr int kPieces = 10;
    // The text to the record's end with one "," added: a piece before each comma.
    const QStringView text = QStringView(record).mid(firstColumn - 1);
    qsizetype from = 0;
    for (int n = 1;; ++n) {
        qsizetype comma = text.indexOf(u',', from);
        const bool last = comma < 0;
        if (last)
            comma = text.size();
        if (n > kPieces)
            throw RuntimeError::subscriptOutOfRange();
        if (n <= shown)
            row.append(pieceText(text.mid(from, comma - from), keepBlank));
        if (last) {
            for (; n < shown; ++n)
                row.append(QString());
            return;
        }
        from = comma + 1;
    }
}
} // namespace

QStringList frequencyPieces(const QString &record, int firstColumn, bool keepBlank)
{
    QStringList out;
    out.reserve(10);
    appendPieces(out, record, firstColumn, keepBlank, 10);
    return out;
}

QStringList bdxcRow(const QString &record)
{
    QStringList row;
    row.reserve(10);
    row << record.mid(0, 16) << record.mid(17, 17) << record.mid(35, 9);
    appendPieces(row, record, 49, true, 7);
    return row;
}

QStringList ownRow(const QString &record)
{
    QStringList row;
    row.reserve(14);
    row << record.mid(0, 19) << record.mid(20, 3) << record.mid(24, 3) << record.mid(28, 9);
    appendPieces(row, record, 51, false, 8);
    row << QString() << record.mid(43, 1);
    return row;
}

Fields320 split320(const QString &line)
{
    Fields320 f;
    const qsizetype last = line.lastIndexOf(u',');
    if (last < 0)
        return f;
    qsizetype from = 0;
    int i = 0;
    for (;;) {
        const qsizetype comma = line.indexOf(u',', from);
        if (comma < 0 || comma > last)
            break;
        if (i == k320Fields)
            throw RuntimeError::subscriptOutOfRange();
        QString field = line.mid(from, comma - from);
        if (field.startsWith(u'"'))
            field.remove(0, 1);
        if (field.endsWith(u'"'))
            field.chop(1);
        f[size_t(i++)] = field;
        from = comma + 1;
    }
    return f;
}

QString frequency320(const QString &mhz)
{
    // Plain decimals of at most three places, the common case, are shifted as text: the same
    // digits the pattern gives, without its general rounding.
    const QStringView t = QStringView(mhz).trimmed();
    const qsizetype dot = t.indexOf(u'.');
    const QStringView whole = dot < 0 ? t : t.left(dot);
    const QStringView frac = dot < 0 ? QStringView() : t.mid(dot + 1);
    auto digitsOnly = [](QStringView v) {
        return std::all_of(v.begin(), v.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
    };
    if (!t.isEmpty() && t.size() > (dot < 0 ? 0 : 1) && whole.size() <= 9 && frac.size() <= 3 && digitsOnly(whole)
        && digitsOnly(frac)) {
        QString khz = whole.toString() + frac.toString() + QString(3 - frac.size(), u'0');
        qsizetype zeros = 0;
        while (zeros < khz.size() - 5 && khz[zeros] == u'0')
            ++zeros;
        khz.remove(0, zeros);
        return khz.rightJustified(5, u'0') + QStringLiteral(".000");
    }
    return numtext::format(numtext::Val(mhz) * 1000, QStringLiteral("00000.000")).replace(u',', u'.');
}

QStringList row320(const Fields320 &f)
{
    return {f[0], frequency320(f[1]), f[2], f[7], f[8], f[9], f[10], f[11].left(20)};
}

// --- clicks ---

TuneSteps bdxcClick(int row, int col, const QString &text, int32_t rowCount)
{
    if (row > rowCount || col < 3 || col > 9)
        return {};
    return {{TuneStep::Frequency, numtext::Val(text), {}}};
}

TuneSteps ownClick(int col, const QString &text, const QString &modeCell)
{
    if (col < 4 || col > 10)
        return {};
    return {{TuneStep::Frequency, numtext::Val(text), {}}, {TuneStep::Mode, 0, modeCell}};
}

TuneSteps click320(const QString &frequencyCell, const QString &modeCell)
{
    return {{TuneStep::Mode, 0, modeCell.left(1).toLower()}, {TuneStep::Frequency, numtext::Val(frequencyCell), {}}};
}

} // namespace lists
