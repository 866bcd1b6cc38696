#include "small_lists.h"
#include "core/numtext.h"
#include "core/textfile.h"

#include <algorithm>

namespace smalllists {

FrequencyList last20Freqs;
FrequencyList markedFreqs;

void readFsp(const QByteArray &bytes, Scratchpad &pad)
{
    for (auto &row : pad.cells)
        row.fill(QString());
    const QStringList lines = textfile::splitLines(bytes);
    const int n = std::min<int>(kPadRows, int(lines.size()));
    for (int r = 0; r < n; ++r) {
        const QString &line = lines[r];
        qsizetype comma = line.indexOf(u',');
        if (comma < 0)
            continue;
        pad.notes[size_t(r)] = line.left(comma);
        int c = 0;
        for (qsizetype from = comma + 1; c < kPadColumns; ++c) {
            comma = line.indexOf(u',', from);
            if (comma < 0)
                break;
            pad.cells[size_t(r)][size_t(c)] = line.mid(from, comma - from);
            from = comma + 1;
        }
    }
}

QByteArray fspBytes(const Scratchpad &pad)
{
    QStringList lines;
    for (int r = 0; r < kPadRows; ++r) {
        QString line = pad.notes[size_t(r)] + u',';
        for (const QString &cell : pad.cells[size_t(r)])
            line += cell + u',';
        lines << line;
    }
    return textfile::joinLines(lines);
}

void shiftIn(FrequencyList &list, const QString &text)
{
    for (int i = kListShown - 1; i >= 1; --i)
        list[size_t(i)] = list[size_t(i - 1)];
    list[0] = text;
}

double frequencyValue(const QString &text) { return numtext::Val(text); }

bool scannable(const QString &text, double lower, double upper)
{
    const double f = frequencyValue(text);
    return lower <= f && f <= upper;
}

std::vector<double> scanTable(const QStringList &texts, double lower, double upper)
{
    std::vector<double> table;
    for (const QString &t : texts)
        if (scannable(t, lower, upper))
            table.push_back(frequencyValue(t));
    return table;
}

int scannableCount(const FrequencyList &list, double lower, double upper)
{
    int n = 0;
    for (int i = 0; i < kListShown; ++i)
        n += scannable(list[size_t(i)], lower, upper) ? 1 : 0;
    return n;
}

int nextScanEntry(const FrequencyList &list, int current, double lower, double upper)
{
    const int start = current < 0 || current >= kListShown ? kListShown - 1 : current;
    for (int k = 1; k <= kListShown; ++k) {
        const int i = (start + k) % kListShown;
        if (scannable(list[size_t(i)], lower, upper))
            return i;
    }
    return -1;
}

} // namespace smalllists
