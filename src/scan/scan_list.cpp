#include "scan_list.h"
#include "core/numtext.h"
#include "core/textfile.h"

#include <cmath>

namespace scanlist {

int16_t runsPerUpdateOf(const QString &text, bool *fellBack)
{
    const double n = numtext::roundHalfEven(numtext::valc(text));
    const bool ok = n >= 3 && n <= 10;
    if (fellBack)
        *fellBack = !ok;
    return ok ? int16_t(n) : int16_t(5);
}

double delayOf(const QString &text, bool *fellBack)
{
    const double d = numtext::valc(text);
    const bool ok = d >= 1 && d <= 10;
    if (fellBack)
        *fellBack = !ok;
    return ok ? d : 2.0;
}

int intervalMs(double delay) { return numtext::clng(delay * 1000); }

double placeValue(const QString &text) { return numtext::valc(text); }

bool validPlace(const QString &text, double lower, double upper)
{
    const double f = placeValue(text);
    return f >= lower && f <= upper;
}

bool anyValidPlace(const Places &places, double lower, double upper)
{
    for (const QString &p : places)
        if (validPlace(p, lower, upper))
            return true;
    return false;
}

void ListScan::beginTick()
{
    if (!NewRun)
        return;
    ListPos = RunCount = UpdateCount = 0;
    NewRun = false;
}

void ListScan::record(float v)
{
    float *h = ListLevels[ListPos];
    for (int k = 1; k < kAges; ++k)
        h[k] = h[k + 1];
    h[kAges] = v;
}

ListScan::Move ListScan::moveOn(const Places &places, double lower, double upper)
{
    Move m;
    // A list emptied by editing during the run would keep this loop from ever ending.
    if (!anyValidPlace(places, lower, upper))
        return m;
    do {
        if (++ListPos > kPlaces - 1) {
            ListPos = 0;
            if (++UpdateCount > RunsPerUpdate - 1) {
                UpdateCount = 0;
                m.trended = calctrend() || m.trended;
            }
            if (++RunCount == 10000)
                RunCount = 1;
            m.passEnded = true;
        }
    } while (!validPlace(places[size_t(ListPos)], lower, upper));
    m.place = ListPos;
    return m;
}

int16_t trendColor(double d, int n)
{
    const double half = 0.5 * n;
    if (std::fabs(d) <= half)
        return kSteady;
    return d > half ? kRising : kFalling;
}

bool ListScan::calctrend()
{
    if (NewTrend) {
        TrendCalls = 0;
        NewTrend = false;
    }
    // Two blocks of n runs must be there before they can be compared.
    if (++TrendCalls < 3)
        return false;
    const int n = RunsPerUpdate;
    for (int i = 0; i < kPlaces; ++i) {
        int16_t *row = ListTrend[i];
        for (int k = 1; k < kTrendAges; ++k)
            row[k] = row[k + 1] == 0 ? kBlankCell : row[k + 1];
        double older = 0, newer = 0;
        for (int j = 0; j < n; ++j) {
            older += ListLevels[i][kAges - 2 * n + j];
            newer += ListLevels[i][kAges - n + j];
        }
        row[kTrendAges] = trendColor(newer - older, n);
    }
    return true;
}

int barTop(float v) { return numtext::toInt(numtext::roundHalfEven(270.0 - 9.0 * double(v))); }

QByteArray sflBytes(const Places &places, double lower, double upper)
{
    QStringList lines;
    for (const QString &p : places) {
        const QString t = numtext::commaToPoint(p);
        lines << (validPlace(t, lower, upper) ? t : QStringLiteral("-"));
    }
    return textfile::joinLines(lines);
}

Places readSfl(const QByteArray &bytes, double lower, double upper)
{
    Places places;
    places.fill(QStringLiteral("-"));
    const QStringList lines = textfile::splitLines(bytes);
    for (int i = 0; i < kPlaces && i < lines.size(); ++i) {
        const QString t = numtext::commaToPoint(lines[i]);
        if (validPlace(t, lower, upper))
            places[size_t(i)] = t;
    }
    return places;
}

} // namespace scanlist
