#include "tracking.h"
#include "core/numtext.h"
#include "core/runtime_error.h"
#include "core/shared_state.h"
#include "core/textfile.h"
#include "core/time_span.h"

#include <algorithm>
#include <cmath>

namespace tracking {

const QString kSeparator = QStringLiteral("= = = = = = = = = = = = = = = = = = = = = = = = =");

std::vector<QString> trackRecords;
int32_t trackCount = 0;
int32_t trackIndex = 0;
std::array<QString, 201> trackHits;
int32_t hitCount = -1;

namespace {
const QString kBlankRecord(kRecordWidth, u' ');

// Constants of the distance arithmetic as the program has always rounded them.
constexpr double kDegToRad = 0.0174533;
constexpr double kHalfDegToRad = 0.00872665;
constexpr double kKmPerArcMinute = 1.854;

// A 16-bit number as text whose character order is the numbers' order, for the time-span rule.
QString orderedText(int16_t v) { return QString::number(int(v) + 32768).rightJustified(5, u'0'); }

int16_t wholeAt(const QString &record, int from, int width)
{
    return numtext::cint(numtext::Val(record.mid(from - 1, width)));
}
} // namespace

int32_t trackCapacity() { return numtext::clng(double(slotDimIlg()) * 1000.0); }

int32_t readTracking(const QByteArray &bytes)
{
    const int32_t capacity = trackCapacity();
    trackRecords.clear();
    trackRecords.push_back(kBlankRecord);
    trackCount = 0;
    int32_t i = 0;
    textfile::forEachLine(bytes, [&](const char *d, qsizetype n) {
        if (++i > capacity)
            throw RuntimeError::subscriptOutOfRange();
        trackRecords.push_back(QString::fromLatin1(d, std::min<qsizetype>(n, kRecordWidth)).leftJustified(kRecordWidth, u' '));
    });
    trackCount = i;
    trackIndex = 0;
    return i;
}

FileLook lookFor(const QString &fileName)
{
    const QString name = fileName.toUpper();
    if (name == u"AERO.FTL")
        return {QStringLiteral("3"), 1, false, LatLon, false};
    if (name == u"ILGSDATA.FTL")
        return {QStringLiteral("5"), 0, true, DisDir, true};
    if (name == u"ILGADATA.FTL")
        return {QStringLiteral("9"), 0, true, DisDir, true};
    return {};
}

double recordFrequency(const QString &record)
{
    // Plain digits with one point, the common case, read directly (the same value Val gives).
    const QStringView s = QStringView(record).left(8);
    double whole = 0, scale = 1;
    bool point = false;
    for (QChar c : s) {
        if (c == u'.' && !point) {
            point = true;
        } else if (c >= u'0' && c <= u'9') {
            whole = whole * 10 + (c.unicode() - u'0');
            if (point)
                scale *= 10;
        } else {
            return numtext::Val(s.toString());
        }
    }
    return whole / scale;
}

bool searchIndex(double freq)
{
    if (trackCount < 2)
        return false;
    int32_t low = 1, high = trackCount;
    do {
        const int32_t mid = int32_t(numtext::roundHalfEven((double(low) + double(high)) / 2));
        if (freq >= recordFrequency(trackRecords[size_t(mid)]))
            low = mid;
        else
            high = mid;
    } while (low + 1 < high);
    trackIndex = low;
    return true;
}

int16_t presentTime(const QString &utc)
{
    const QString hm = utc.right(5);
    return numtext::cint(numtext::Val(hm.left(2) + hm.right(2)));
}

bool onAir(const QString &record, int16_t now)
{
    return inTimeSpan(orderedText(now), orderedText(wholeAt(record, 10, 4)), orderedText(wholeAt(record, 15, 4)));
}

bool targeted(const QString &record, int area)
{
    if (area < 0 || area >= int(regionCodes.size()))
        return false;
    const qsizetype at = record.mid(42, 8).indexOf(regionCodes[size_t(area)]);
    return (at >= 0 && at <= 6) || record.mid(90 + area, 1) == u"1";
}

int32_t ListTracking(double freq, double catchRange, bool hitsOnly, int16_t now)
{
    trackHits.fill(QString());
    int32_t count = -1;
    bool separated = false;
    for (int32_t k = -kWalk; k <= kWalk; ++k) {
        const int64_t i = int64_t(trackIndex) + k;
        if (i < 0 || i > trackCount || i >= int64_t(trackRecords.size()))
            continue;
        const QString &record = trackRecords[size_t(i)];
        const double f = recordFrequency(record);
        if (!(std::abs(f - freq) < catchRange))
            continue;
        if (hitsOnly && !onAir(record, now))
            continue;
        if (f > freq && !separated) {
            trackHits[size_t(++count)] = kSeparator;
            separated = true;
        }
        if (++count < kHeld)
            trackHits[size_t(count)] = record;
        else
            count = kHeld - 1;
    }
    hitCount = count;
    return count;
}

int enabledPages(int32_t count)
{
    const double pages = numtext::floorInt(double(count) / kPageStride);
    return int(std::clamp(pages + 1, 0.0, double(kPages)));
}

Row showRow(const QString &hit, const View &v)
{
    Row row{hit, kPlainColour};
    if (!hit.startsWith(u'=') && hit.size() >= 89) {
        switch (v.alternates) {
        case DisDir: row.text.replace(77, 12, DistanceBearing(hit, v.rxLatitude, v.rxLongitude)); break;
        case Ctry: row.text.replace(77, 12, hit.mid(100, 12).leftJustified(12)); break;
        case Loc: row.text.replace(77, 12, hit.mid(113, 12).leftJustified(12)); break;
        default: break;
        }
    }
    // The separator and rows without a record stay plain.
    if (recordFrequency(hit) >= 10 && (v.hitsOnly || onAir(hit, v.now)))
        row.colour = targeted(hit, v.area) ? kTargetColour : kOnAirColour;
    return row;
}

std::array<Row, kRows> ShowTracking(int page, const View &v)
{
    std::array<Row, kRows> rows;
    for (int r = 0; r < kRows; ++r) {
        const int at = page * kPageStride + r;
        rows[size_t(r)] = showRow(at >= 0 && at < int(trackHits.size()) ? trackHits[size_t(at)] : QString(), v);
    }
    return rows;
}

double coordinate(const QString &text)
{
    if (text.isEmpty())
        return 0;
    const QChar last = text.back();
    const double sign = last == u'S' || last == u'W' ? -1 : 1;
    const QString body = text.left(text.size() - 1);
    const double minutes = numtext::Val(body.right(2)) / 60;
    const double degrees = numtext::Val(body.left(std::max<qsizetype>(body.size() - 2, 0)));
    return sign * (degrees + minutes);
}

QString DistanceBearing(const QString &record, const QString &rxLat, const QString &rxLon)
{
    const double lat1 = coordinate(rxLat), lon1 = coordinate(rxLon);
    const double lat2 = coordinate(record.mid(77, 5)), lon2 = coordinate(record.mid(83, 6));
    double dLon = (lon2 - lon1) * kHalfDegToRad;
    double dLat = (lat2 - lat1) * kHalfDegToRad;
    if (dLat == 0)
        dLat = 1e-8;
    // The same guard for a transmitter on the listener's own longitude, which would divide by zero.
    if (dLon == 0)
        dLon = 1e-8;
    const double mLat = (lat1 + lat2) * kHalfDegToRad;
    const double a = std::atan(std::sin(dLat) / (std::tan(dLon) * std::cos(mLat)));
    const double b = std::atan(std::cos(dLat) / (std::tan(dLon) * std::sin(mLat)));
    const double c = std::atan((std::sin(b) / std::sin(a)) * std::tan(dLat));
    double distance = (c + c) * (60 / kDegToRad) * kKmPerArcMinute;
    double bearing = (b - a) / kDegToRad;
    // South of the equator the formula comes out negative: the great circle is the other way round.
    if (distance < 0) {
        distance = -distance;
        bearing += 180;
    }
    if (bearing < 0)
        bearing += 360;
    return numtext::format(distance, QStringLiteral("00000 km")) + numtext::format(bearing, QStringLiteral(" 000"));
}

double steppedFrequency(const QString &freqText, const QString &stepText, bool up, double lower, double upper)
{
    const double step = numtext::floorInt(numtext::Val(stepText) * 1000);
    const double now = numtext::floorInt(numtext::Val(freqText) * 1000 + 0.49);
    const double next = (up ? now + step : now - step) / 1000;
    if (next < lower)
        return lower;
    if (next > upper)
        return upper;
    return next;
}

} // namespace tracking
