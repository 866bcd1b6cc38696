#include "ilg_tables.h"
#include "core/numtext.h"

#include <QFile>
#include <shapefil.h>

namespace ilgtables {

namespace {
struct Column { char type; int width; int decimals; };
// FREQ numeric wide enough for six digits; the text columns wider than the record's, so that
// the record's cuts show.
constexpr std::array<Column, ilg::FieldCount> kColumns = {{
    {'N', 9, 2}, {'C', 12, 0}, {'C', 30, 0}, {'C', 12, 0}, {'C', 25, 0}, {'C', 10, 0}, {'C', 8, 0}, {'C', 8, 0},
    {'C', 2, 0}, {'C', 2, 0}, {'C', 2, 0}, {'C', 2, 0}, {'C', 2, 0}, {'C', 2, 0}, {'C', 2, 0}, {'C', 2, 0}, {'C', 2, 0},
    {'C', 20, 0}, {'C', 20, 0}, {'C', 2, 0}}};

const QStringList kAreas = {"NA", "CA", "SA", "EU", "AF", "ME", "AS", "AU", "PA"};

// Fields in order: FREQ UTC STATION TARGET LANGUAGE POWER LATI LONGI, the areas as one text of
// codes (or "-" for blanks), COUNTRY LOCATION STATUS.
ilg::Record station(const QString &freq, const QString &utc, const QString &name, const QString &target,
                    const QString &language, const QString &power, const QString &lat, const QString &lon,
                    const QString &areas, const QString &country, const QString &location, const QString &status)
{
    QStringList f = {freq, utc, name, target, language, power, lat, lon};
    for (const QString &a : kAreas)
        f << (areas.contains(a) ? a : QString());
    f << country << location << status;
    return record(f);
}
} // namespace

ilg::Record record(const QStringList &fields)
{
    ilg::Record r;
    for (int i = 0; i < ilg::FieldCount && i < fields.size(); ++i)
        if (!fields[i].isEmpty())
            r[size_t(i)] = fields[i];
    return r;
}

bool write(const QString &path, const QVector<ilg::Record> &records)
{
    QFile::remove(path);
    DBFHandle h = DBFCreateEx(QFile::encodeName(path).constData(), "LDID/87");
    if (!h)
        return false;
    bool ok = true;
    for (int f = 0; f < ilg::FieldCount; ++f) {
        const Column &c = kColumns[size_t(f)];
        ok &= DBFAddField(h, ilg::kFieldNames[size_t(f)], c.type == 'N' ? FTDouble : FTString, c.width, c.decimals) == f;
    }
    for (int i = 0; ok && i < records.size(); ++i) {
        for (int f = 0; f < ilg::FieldCount; ++f) {
            const ilg::Field &v = records[i][size_t(f)];
            if (!v)
                ok &= DBFWriteNULLAttribute(h, i, f) != 0;
            else if (kColumns[size_t(f)].type == 'N')
                ok &= DBFWriteDoubleAttribute(h, i, f, numtext::valc(*v)) != 0;
            else
                ok &= DBFWriteStringAttribute(h, i, f, v->toLatin1().constData()) != 0;
        }
    }
    DBFClose(h);
    return ok;
}

QVector<ilg::Record> shortWave()
{
    return {
        station("3330", "0000-2400", "Time Signal Kilo", "NA", "Time signal", "3", "4520N", "07540W", "NA", "Kelvard", "Otterby", "C"),
        station("4625", "0000-2400", "Buzzer Station", "EU", "None", "10", "5610N", "03655E", "EU", "Varosk", "Dalnygrad", ""),
        station("5000", "0000-2400", "Standard Frequency 5", "", "Time signal", "10", "4000N", "10510W", "NA CA", "Kelvard", "Fortmeade", "C"),
        station("5975", "1800-2300", "Radio Tarnholm", "EUME", "English", "250", "5912N", "01804E", "EU ME", "Tarnholm", "Skarnholm", "C"),
        station("5975", "1900-2000", "Radio Tarnholm Planned", "AF", "French", "250", "5912N", "01804E", "AF", "Tarnholm", "Skarnholm", "P"),
        station("6070", "0000-2400", "Castlehill Radio", "NA", "English", "1", "4339N", "07923W", "NA", "Kelvard", "Castlehill", "C"),
        station("7255", "0400-2200", "Voice of Orlina", "AFEU", "English", "100", "0929N", "00724E", "AF EU", "Orlina", "Abujel", "C"),
        station("7255", "", "Voice of Orlina (no time)", "AF", "Hausa", "100", "0929N", "00724E", "AF", "Orlina", "Abujel", "C"),
        station("7490", "0000-0400", "Evening Gospel Net", "NACA", "English", "100", "3608N", "08646W", "NA CA", "Kelvard", "Nashford", "E"),
        station("9410", "0500-2300", "World Service Brel", "EUASAF", "English", "300", "5138N", "00123W", "EU AS AF", "Brelland", "Woofferton", "C"),
        station("9410", "irreg.", "World Service Brel Extra", "EU", "English", "300", "5138N", "00123W", "EU", "Brelland", "Woofferton", "C"),
        station("9420", "1200-1800", "Radio Hellas Vox", "EUAU", "Greek", "170", "3811N", "02343E", "EU AU", "Hellas", "Avlis", "i"),
        station("10000", "0000-2400", "Standard Frequency 10", "", "Time signal", "10", "4000N", "10510W", "NA SA", "Kelvard", "Fortmeade", "C"),
        station("11690", "0600-1400", "Radio Jordanel", "MEAS", "Arabic", "500", "3145N", "03559E", "ME AS", "Jordanel", "Al Karana", "N"),
        station("13570", "1400-0200", "Pan Am Radio South", "SACA", "Spanish", "100", "2332S", "04637W", "SA CA", "Paulistan", "Cachoeira", "C"),
        station("15400", "0900-1700", "Radio Kumasi International", "AF", "English", "250", "0540N", "00010W", "AF", "Kumasi", "Tema", "C"),
        station("17860", "1000-1600", "Deutschlandwelle SW", "ASAUPA", "German", "500", "5305N", "00840E", "AS AU PA", "Brelland", "Nauen", "C"),
        station("21500", "1100-1500", "Equator Radio", "PAAU", "English", "100", "0117S", "03649E", "PA AU", "Equatoria", "Nairon", "P"),
        station("25900.5", "0800-1000", "", "EU", "", "", "", "", "EU", "", "", ""),
    };
}

QVector<ilg::Record> longMediumWave()
{
    return {
        station("198", "0000-2400", "Longwave Relay", "EU", "English", "500", "5227N", "00112W", "EU", "Brelland", "Droitham", "C"),
        station("603", "1700-0600", "Medium Wave Nord", "EU", "French", "300", "5030N", "00306E", "EU", "Nordmark", "Lille", "C"),
        station("999", "0000-2400", "Night Voice 999", "EUAF", "Spanish", "", "4020N", "00345W", "EU AF", "Iberra", "Madreal", "I"),
        station("1000.3", "Z0000", "Test Carrier", "", "", "1", "", "", "", "", "", "C"),
    };
}

QVector<ilg::Record> many(int count)
{
    static const QString statuses[] = {"C", "E", "I", "N", "P", ""};
    QVector<ilg::Record> out;
    out.reserve(count);
    for (int i = 0; i < count; ++i) {
        const QString freq = numtext::format(2300.0 + i * 0.5, QStringLiteral("0.00"));
        const int h = i % 24;
        const QString utc = numtext::format(h, "00") + "00-" + numtext::format((h + 2) % 24, "00") + "00";
        const QString area = kAreas[i % kAreas.size()];
        out << station(freq, utc, QStringLiteral("Invented Station %1").arg(i), area, QStringLiteral("Language %1").arg(i % 40),
                       QString::number(1 + i % 500), QStringLiteral("4%1N").arg(i % 1000, 3, 10, QLatin1Char('0')),
                       QStringLiteral("01%1E").arg(i % 1000, 3, 10, QLatin1Char('0')), area, QStringLiteral("Country %1").arg(i % 90),
                       QStringLiteral("Site %1").arg(i % 300), statuses[i % 6]);
    }
    return out;
}

QStringList aeroList()
{
    // Columns 1-8 frequency, 9-16 hours, 17-38 network, 39 blank, then the station and remarks;
    // a remark of its own starts at column 40, under the columns it takes from the line before.
    auto line = [](const QString &freq, const QString &hours, const QString &net, const QString &rest) {
        return freq.leftJustified(8) + hours.leftJustified(8) + net.leftJustified(22) + " " + rest;
    };
    const QString more(39, QLatin1Char(' '));
    return {
        "AEROLIST - invented aeronautical frequencies for the Brelvox demo",
        "Frequencies in kHz, hours UTC.",
        "",
        line("1000", "", "Scale note", "a value of 1000 is never a station"),
        line("2850", "H24", "CAR-A Brelland", "Brelland Radio, primary"),
        more + "Orlina Radio, secondary",
        more + "Castlehill Radio, relay",
        "short",
        more + "after a short line nothing is carried",
        line("3016", "H24", "NAT-A North Atlantic", "Gander, Shanwick"),
        line("1000", "", "Scale note", "dropped inside the list too"),
        more + "carried from the line of 1000: dropped",
        line("3476", "06-20", "AFI-2 Kumasi", "Kumasi, Tema"),
        line("5598", "H24", "NAT-A North Atlantic", "Gander, Shanwick, Reykholt"),
        line("5598", "H24", "NAT-A North Atlantic", "Santa Maria"),
        line("6586", "H24", "CAR-A Brelland", "Brelland Radio"),
        line("8855", "H24", "NAT-B Tarnholm", "Tarnholm, Bodvik"),
        line("10000", "H24", "VOLMET Time", "standard frequency, heard on the demo band"),
        line("11690", "06-14", "MID-1 Jordanel", "Al Karana, Bahrel"),
        more + "Jordanel Air, evenings",
        line("13288", "H24", "VOLMET Tarnholm", "weather for Tarnholm"),
        line("17946", "H24", "NAT World", "Shanwick"),
    };
}

} // namespace ilgtables
