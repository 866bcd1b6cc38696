#include "ilg_convert.h"
#include "core/numtext.h"
#include "core/shared_state.h"

int16_t fileConvertKind = 0;

namespace ilg {

const std::array<const char *, FieldCount> kFieldNames = {
    "FREQ", "UTC", "STATION", "TARGET", "LANGUAGE", "POWER", "LATI", "LONGI",
    "NA", "CA", "SA", "EU", "AF", "ME", "AS", "AU", "PA",
    "COUNTRY", "LOCATION", "STATUS"};

namespace {
QString fit(const Field &f, int width)
{
    const QString s = f ? *f : QStringLiteral("  ");
    return s.left(width).leftJustified(width, QLatin1Char(' '));
}
} // namespace

QString ftlLine(const Record &r)
{
    // A Null frequency has no number to format: it is a blank field like any other.
    const QString freq = r[Freq] ? numtext::commaToPoint(numtext::format(numtext::valc(*r[Freq]), QStringLiteral("00000.00")))
                                 : fit(r[Freq], 8);
    QString flags(kAreaCount, QLatin1Char('0'));
    for (int i = 0; i < kAreaCount; ++i) {
        const Field &a = r[AreaNA + i];
        if (a && *a == QLatin1String(kFieldNames[AreaNA + i]))
            flags[i] = QLatin1Char('1');
    }
    const QChar b(QLatin1Char(' '));
    return freq + b + fit(r[Utc], 9) + b + fit(r[Station], 22) + b + fit(r[Target], 8) + b + fit(r[Language], 17) + b
           + fit(r[Power], 7) + b + fit(r[Lati], 5) + b + fit(r[Longi], 6) + b + flags + b + fit(r[Country], 12) + b
           + fit(r[Location], 12);
}

bool utcPasses(const Field &utc)
{
    return utc && !utc->isEmpty() && utc->at(0) >= QLatin1Char('0') && utc->at(0) <= QLatin1Char('9');
}

bool statusPasses(const Field &status, const Include &include)
{
    const QString s = status ? status->toUpper() : QStringLiteral("C");
    static const QString codes[4] = {QStringLiteral("E"), QStringLiteral("I"), QStringLiteral("N"), QStringLiteral("P")};
    for (int i = 0; i < 4; ++i)
        if (s == codes[i])
            return include[size_t(i)];
    return true;
}

bool Table::open(const QString &path)
{
    if (!dbf_.open(path))
        return false;
    for (int f = 0; f < FieldCount; ++f) {
        index_[size_t(f)] = dbf_.fieldIndex(QLatin1String(kFieldNames[size_t(f)]));
        if (index_[size_t(f)] < 0) {
            dbf_.close();
            return false;
        }
    }
    return true;
}

Record Table::record(int i) const
{
    Record r;
    for (int f = 0; f < FieldCount; ++f)
        r[size_t(f)] = dbf_.value(i, index_[size_t(f)]);
    return r;
}

QStringList convert(const Table &table, const Include &include)
{
    QStringList out;
    for (int i = 0; i < table.recordCount(); ++i) {
        if (table.isDeleted(i))
            continue;
        const Record r = table.record(i);
        if (admitted(r, include))
            out << ftlLine(r);
    }
    return out;
}

QString ftlPath(const QString &fileName) { return dirPath + QStringLiteral("rx2db\\") + fileName; }

} // namespace ilg
