#include "scan_pairs.h"
#include "core/numtext.h"
#include "core/textfile.h"

#include <limits>

namespace scanpairs {

QStringList PairChannelA{QString()};
QStringList PairChannelB{QString()};
QList<int16_t> PairChecked{0};
QStringList PairRemarks{QString()};
int16_t PairLast = 0;
QString pairFileName;

void resetPairs()
{
    PairChannelA = {QString()};
    PairChannelB = {QString()};
    PairChecked = {0};
    PairRemarks = {QString()};
    PairLast = 0;
    pairFileName.clear();
}

bool inRange(int i, int first, int last)
{
    if (first > last)
        return i >= first || i <= last;
    return i >= first && i <= last;
}

int advance(int pos, int first, int last, int pairLast)
{
    ++pos;
    if (first > last) {
        if (pos > pairLast)
            pos = 0;
        if (pos == last + 1)
            pos = first;
    } else if (pos > last) {
        pos = first;
    }
    return pos;
}

int nextTicked(int pos, int first, int last)
{
    const int pairLast = PairLast;
    auto ticked = [](int i) { return i >= 0 && i < PairChecked.size() && PairChecked[i] != 0; };
    // Any start reaches the range within one pass of the list and then goes round it once more.
    for (int steps = 2 * (pairLast + 2); steps > 0; --steps) {
        if (ticked(pos))
            return pos;
        pos = advance(pos, first, last, pairLast);
    }
    return -1;
}

std::array<int, kRows> rowPairs(int a, int first, int last, int pairLast)
{
    std::array<int, kRows> rows;
    rows.fill(-1);
    if (a >= 0 && a <= pairLast)
        rows[kActiveRow] = a;
    for (int d = 1; d <= kActiveRow; ++d) {
        if (a - d >= 0 && a - d <= pairLast && inRange(a - d, first, last))
            rows[size_t(kActiveRow - d)] = a - d;
        if (a + d >= 0 && a + d <= pairLast && inRange(a + d, first, last))
            rows[size_t(kActiveRow + d)] = a + d;
    }
    return rows;
}

std::optional<int> pairIndexValue(const QString &text, int pairLast)
{
    const double v = numtext::floorInt(numtext::Val(text));
    if (!(v >= 0 && v <= pairLast))
        return std::nullopt;
    return int(v);
}

std::optional<double> delayValue(const QString &text)
{
    // Held as a single, as the delay always was.
    const double v = float(numtext::valc(text));
    if (!(v >= 0.5 && v <= 60))
        return std::nullopt;
    return v;
}

QByteArray sfpLine(const QString &a, const QString &b, int16_t checked, const QString &remark)
{
    return (a + u',' + b + u',' + numtext::strBlank(checked) + u',' + remark).toLatin1();
}

QByteArray sfpBytes()
{
    QByteArray out;
    for (int i = 0; i <= PairLast && i < PairChecked.size(); ++i)
        out += sfpLine(PairChannelA[i], PairChannelB[i], PairChecked[i], PairRemarks[i]) + "\r\n";
    return out;
}

namespace {
QString bare(const QString &item)
{
    qsizetype from = 0, to = item.size();
    while (from < to && (item[from] == u' ' || item[from] == u'\t'))
        ++from;
    while (to > from && (item[to - 1] == u' ' || item[to - 1] == u'\t'))
        --to;
    return item.mid(from, to - from);
}
} // namespace

QString readSfp(const QByteArray &bytes)
{
    QStringList lines = textfile::splitLines(bytes);
    // Blank lines an editor leaves at the end are no pairs.
    while (!lines.isEmpty() && bare(lines.last()).isEmpty())
        lines.removeLast();
    if (lines.isEmpty())
        return QStringLiteral("It holds no pair.");
    if (lines.size() - 1 > std::numeric_limits<int16_t>::max())
        return QStringLiteral("It holds more than %1 pairs.").arg(int(std::numeric_limits<int16_t>::max()) + 1);
    QStringList a, b, remarks;
    QList<int16_t> checked;
    for (qsizetype n = 0; n < lines.size(); ++n) {
        const QStringList items = lines[n].split(u',');
        const QString tick = items.size() == 4 ? bare(items[2]) : QString();
        const double v = numtext::Val(tick);
        if (items.size() != 4 || !(v > -32768.5 && v < 32767.5)) {
            const QString shown = lines[n].size() > 60 ? lines[n].left(60) + QStringLiteral("...") : lines[n];
            return QStringLiteral("Line %1 is not a pair:\n\"%2\"").arg(n + 1).arg(shown);
        }
        a << bare(items[0]);
        b << bare(items[1]);
        checked << numtext::cint(v);
        remarks << bare(items[3]);
    }
    PairChannelA = a;
    PairChannelB = b;
    PairChecked = checked;
    PairRemarks = remarks;
    PairLast = int16_t(lines.size() - 1);
    return {};
}

} // namespace scanpairs
