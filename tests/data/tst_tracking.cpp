// Tracking's logic: the search with its rounding, what the fillers keep and where the separator
// goes, the rows' colours and alternates, the page buttons, the capacity, stepping, and the
// distance and bearing against a great circle computed here on its own.
#include "testmain.h"
#include "testutil.h"
#include "core/numtext.h"
#include "core/runtime_error.h"
#include "core/shared_state.h"
#include "data/tracking.h"

#include <QTest>
#include <cmath>

using namespace tracking;

namespace {
// A record of 125 columns.
QString rec(const QString &freq, const QString &utc = "0000-2400", const QString &target = "EU",
            const QString &flags = "000000000", const QString &lat = "5130N", const QString &lon = "00012E")
{
    return freq.leftJustified(8) + ' ' + utc.leftJustified(9) + ' ' + QString("Radio Tarnholm").leftJustified(22) +
           ' ' + target.leftJustified(8) + ' ' + QString("English").leftJustified(17) + ' ' +
           QString("250").leftJustified(7) + ' ' + lat.leftJustified(5) + ' ' + lon.leftJustified(6) + ' ' + flags +
           ' ' + QString("Tarnholm").leftJustified(12) + ' ' + QString("Lorvik").leftJustified(12);
}

// "5975,6000:0100-0200" is a record at 5975 on the air all day, then one at 6000 from 0100 to 0200.
QByteArray file(const QString &pattern)
{
    QByteArray out;
    for (const QString &piece : pattern.split(',', Qt::SkipEmptyParts)) {
        const QStringList p = piece.split(':');
        out += rec(QString("%1").arg(p[0].toDouble(), 8, 'f', 2, QChar('0')), p.value(1, "0000-2400")).toLatin1() + "\r\n";
    }
    return out;
}

// The held rows as frequencies, "=" for the separator.
QString held()
{
    QStringList out;
    for (int32_t i = 0; i <= hitCount; ++i)
        out << (trackHits[size_t(i)].startsWith('=') ? QString("=") : QString::number(recordFrequency(trackHits[size_t(i)])));
    return out.join(',');
}

// Great-circle distance (km) and initial bearing (degrees) on a sphere of 1.854 km per arc minute.
std::pair<double, double> greatCircle(double lat1, double lon1, double lat2, double lon2)
{
    const double rad = M_PI / 180, radius = 1.854 * 60 / rad;
    const double p1 = lat1 * rad, p2 = lat2 * rad, dl = (lon2 - lon1) * rad;
    const double h = std::pow(std::sin((p2 - p1) / 2), 2) + std::cos(p1) * std::cos(p2) * std::pow(std::sin(dl / 2), 2);
    const double km = 2 * radius * std::asin(std::sqrt(h));
    const double deg = std::atan2(std::sin(dl) * std::cos(p2), std::cos(p1) * std::sin(p2) - std::sin(p1) * std::cos(p2) * std::cos(dl)) / rad;
    return {km, std::fmod(deg + 360, 360)};
}
struct SearchCase { QString records; double freq; QString catchRange; bool hitsOnly; QString utc; int index; QString held; };
struct RowCase { QString hit; bool hitsOnly; int alternates, area; uint colour; QString alternate; };
} // namespace
Q_DECLARE_METATYPE(SearchCase)
Q_DECLARE_METATYPE(RowCase)

class TestTracking : public QObject {
    Q_OBJECT
private slots:
    void init()
    {
        resetSharedState();
        slotDimIlg() = 1;
    }

    // Which rows a search around freq holds; index -1: no search at all.
    void search_data()
    {
        QTest::addColumn<SearchCase>("c");
        const QString four = "5950,5975,6000,6025";
        QTest::newRow("exact match, separator after it") << SearchCase{four, 5975, "30", false, "", 2, "5950,5975,=,6000"};
        QTest::newRow("between two") << SearchCase{four, 5990, "30", false, "", 2, "5975,=,6000"};
        QTest::newRow("beyond the last: no separator") << SearchCase{four, 6100, "200", false, "", 3, "5950,5975,6000,6025"};
        QTest::newRow("below the first") << SearchCase{four, 5900, "80", false, "", 1, "=,5950,5975"};
        QTest::newRow("range is strictly below") << SearchCase{four, 5975, "25", false, "", 2, "5975"};
        QTest::newRow("range 0: nothing") << SearchCase{four, 5975, "0", false, "", 2, ""};
        QTest::newRow("range with a comma") << SearchCase{four, 5975, "25,5", false, "", 2, "5950,5975,=,6000"};
        QTest::newRow("equal frequencies in file order")
            << SearchCase{"5975:0100-0200,5975:0300-0400,6000", 5975, "1", false, "", 2, "5975,5975"};
        QTest::newRow("hits: over midnight at 0030")
            << SearchCase{"5975:2300-0100,5980:0100-2300,5985:0030-0030", 5980, "10", true, "1 Jan 2024  00:30", 2, "5975"};
        QTest::newRow("hits: bounds included")
            << SearchCase{"5975:0030-0100,5980:0000-0030,5985:0031-0100", 5980, "10", true, "1 Jan 2024  00:30", 2, "5975,5980"};
        QTest::newRow("a single record") << SearchCase{"5975", 5975, "30", false, "", -1, ""};
        // Mid rounds halves to even: (1 + 4) / 2 looks at record 2, not 3.
        QTest::newRow("mid halves to even") << SearchCase{"100,300,200,400", 250, "0", false, "", 1, ""};
    }
    void search()
    {
        QFETCH(SearchCase, c);
        readTracking(file(c.records));
        trackIndex = -1;
        QCOMPARE(searchIndex(c.freq), c.index >= 0);
        QCOMPARE(trackIndex, c.index);
        if (c.index < 0)
            return;
        ListTracking(c.freq, numtext::valc(c.catchRange), c.hitsOnly, presentTime(c.utc));
        QCOMPARE(held(), c.held);
    }

    // 200 records below the tuned frequency and 10 above: 176 are kept, the walk's first, the
    // count stays 175 and the separator that came after them is never shown.
    void heldRowsAreCapped()
    {
        slotDimIlg() = 2;
        QString pattern;
        for (int i = 0; i < 210; ++i)
            pattern += QString::number(6000 + i) + ',';
        readTracking(file(pattern));
        QVERIFY(searchIndex(6199.5));
        QCOMPARE(ListTracking(6199.5, 1000, false, 0), 175);
        QCOMPARE(recordFrequency(trackHits[175]), 6175.0);
        QCOMPARE(enabledPages(hitCount), 7);
        View all;
        all.hitsOnly = false;
        QCOMPARE(recordFrequency(ShowTracking(6, all)[24].text), 6168.0); // rows past 168 have no page
        QCOMPARE(recordFrequency(ShowTracking(1, all)[0].text), 6024.0);  // pages overlap by one row
        for (const auto &[count, pages] : std::initializer_list<std::pair<int, int>>{{-1, 0}, {0, 1}, {23, 1}, {24, 2}})
            QCOMPARE(enabledPages(count), pages);
    }

    // A row's colour and columns 78-89. area 3 is "EU".
    void rows_data()
    {
        QTest::addColumn<RowCase>("c");
        const QString off = rec("09410.00", "0100-0200", "AF"), pos = "5130N 00012E";
        QTest::newRow("all, off the air") << RowCase{off, false, LatLon, 3, kPlainColour, pos};
        QTest::newRow("all, on the air") << RowCase{rec("09410.00", "1100-1300", "AF"), false, LatLon, 3, kOnAirColour, pos};
        QTest::newRow("start = end is never") << RowCase{rec("09410.00", "1200-1200"), false, LatLon, 3, kPlainColour, pos};
        QTest::newRow("target code") << RowCase{rec("09410.00", "1100-1300", "NAEU"), false, Ctry, 3, kTargetColour, "Tarnholm    "};
        QTest::newRow("target flag")
            << RowCase{rec("09410.00", "1100-1300", "AF", "000100000"), false, Loc, 3, kTargetColour, "Lorvik      "};
        QTest::newRow("flag of another area")
            << RowCase{rec("09410.00", "1100-1300", "NA", "000100000"), false, LatLon, 4, kOnAirColour, pos};
        QTest::newRow("hits need no time test") << RowCase{off, true, LatLon, 0, kOnAirColour, pos};
        QTest::newRow("hits, targeted") << RowCase{rec("09410.00", "0100-0200", "AF EU"), true, LatLon, 3, kTargetColour, pos};
        QTest::newRow("below 10 kHz is no station") << RowCase{rec("00009.00", "1100-1300", "EU"), true, LatLon, 3, kPlainColour, pos};
        QTest::newRow("separator") << RowCase{kSeparator, true, DisDir, 3, kPlainColour, ""};
        QTest::newRow("no record stays empty") << RowCase{"", false, DisDir, 3, kPlainColour, ""};
    }
    void rows()
    {
        QFETCH(RowCase, c);
        View v;
        v.hitsOnly = c.hitsOnly;
        v.alternates = c.alternates;
        v.area = c.area;
        v.now = presentTime("2 Mar 2024  12:00");
        const Row row = showRow(c.hit, v);
        QCOMPARE(row.colour, c.colour);
        QCOMPARE(row.text.mid(77, 12), c.alternate);
        QCOMPARE(row.text.left(77) + row.text.mid(89), c.hit.left(77) + c.hit.mid(89));
    }

    // Listener, transmitter: texts as in the settings and the record.
    void distanceBearing_data()
    {
        QTest::addColumn<QString>("rx");
        QTest::addColumn<QString>("tx");
        QTest::newRow("north-east, far") << "5130N 00012W" << "3545N 13940E";
        QTest::newRow("south-east") << "4045N 07400W" << "3436S 05822W";
        QTest::newRow("south-west") << "5130N 00012W" << "2254S 04312W";
        QTest::newRow("north-west") << "5130N 00012W" << "4045N 07400W";
        QTest::newRow("from the south, north-west") << "3352S 15112E" << "5130N 00012W";
        QTest::newRow("across the date line") << "3352S 15112E" << "2118N 15750W";
        QTest::newRow("same longitude, south") << "5130N 00012E" << "0100N 00012E";
        QTest::newRow("same latitude") << "4000N 01000E" << "4000N 05000E";
        QTest::newRow("blank position, listener on 0") << "5130N 00000E" << "           ";
        QTest::newRow("mean latitude 0") << "1000N 01000E" << "1000S 03000E";
    }
    void distanceBearing()
    {
        QFETCH(QString, rx);
        QFETCH(QString, tx);
        const QString record = rec("09410.00", "0000-2400", "EU", "000000000", tx.left(5), tx.mid(6));
        const QString text = DistanceBearing(record, rx.left(5), rx.mid(6));
        QCOMPARE(text.size(), 12);
        QCOMPARE(text.mid(5, 4), QString(" km "));
        const auto [km, deg] = greatCircle(coordinate(rx.left(5)), coordinate(rx.mid(6)), coordinate(tx.left(5)),
                                           coordinate(tx.mid(6)));
        QVERIFY2(std::abs(text.left(5).toDouble() - km) <= 1, qPrintable(text + " / " + QString::number(km)));
        const double off = std::fmod(std::abs(text.mid(9).toDouble() - deg), 360);
        QVERIFY2(std::min(off, 360 - off) <= 1, qPrintable(text + " / " + QString::number(deg)));
    }

    void coordinates_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("value");
        QTest::newRow("north") << "5130N" << 51.5;
        QTest::newRow("west") << "07445W" << -74.75;
        QTest::newRow("south") << "0006S" << -0.1;
        QTest::newRow("blank") << "     " << 0.0;
        QTest::newRow("empty") << "" << 0.0;
    }
    void coordinates()
    {
        QFETCH(QString, text);
        QFETCH(double, value);
        QCOMPARE(coordinate(text), value);
    }

    void stepping_data()
    {
        QTest::addColumn<QString>("freq");
        QTest::addColumn<QString>("step");
        QTest::addColumn<bool>("up");
        QTest::addColumn<double>("result");
        QTest::newRow("up") << "9410.000" << "5" << true << 9415.0;
        QTest::newRow("down") << "9410.000" << "5" << false << 9405.0;
        QTest::newRow("fraction of a Hz rounds up from .51") << "9410.0006" << "0.001" << true << 9410.002;
        QTest::newRow(".5 Hz stays") << "9410.0005" << "0.001" << true << 9410.001;
        QTest::newRow("step not a number") << "9410" << "x" << true << 9410.0;
        QTest::newRow("held at the lower limit") << "101" << "5" << false << 100.0;
        QTest::newRow("held at the upper limit") << "29999" << "5" << true << 30000.0;
    }
    void stepping()
    {
        QFETCH(QString, freq);
        QFETCH(QString, step);
        QFETCH(bool, up);
        QFETCH(double, result);
        QCOMPARE(steppedFrequency(freq, step, up, 100, 30000), result);
    }

    void fileLooks_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("look"); // step, hits/all, frame, alternates, frame
        QTest::newRow("aero") << "aero.ftl" << "3,1,0,0,0";
        QTest::newRow("short wave") << "ILGSDATA.FTL" << "5,0,1,1,1";
        QTest::newRow("long wave") << "ilgadata.FTL" << "9,0,1,1,1";
        QTest::newRow("any other") << "AERO2.FTL" << ",-1,1,-1,1";
    }
    void fileLooks()
    {
        QFETCH(QString, name);
        QFETCH(QString, look);
        const FileLook l = lookFor(name);
        QCOMPARE(QString("%1,%2,%3,%4,%5").arg(l.step).arg(l.hitsAll).arg(int(l.hitsFrame)).arg(l.alternates).arg(int(l.alternatesFrame)),
                 look);
    }

    // Lines cut or padded to 126 characters; the capacity holds, one more is error 9; counts
    // past 32,767 search as well as small ones.
    void reading()
    {
        readTracking(rec("05975.00").toLatin1() + "\r\n" + QByteArray(200, 'x') + "\r\n");
        QCOMPARE(trackCount, 2);
        QCOMPARE(trackRecords.at(1).size(), 126);
        QCOMPARE(trackRecords.at(2), QString(126, 'x'));
        QCOMPARE(trackRecords.at(0), QString(126, ' '));
        slotDimIlg() = 50;
        QByteArray big;
        for (int i = 1; i <= 50000; ++i)
            big += QByteArray::number(1000000 + i) + "\r\n";
        QCOMPARE(readTracking(big), 50000);
        QVERIFY(searchIndex(1040000.5));
        QCOMPARE(trackIndex, 40000);
        QCOMPARE(errorOf([&] { readTracking(big + "1\r\n"); }), 9);
    }
};

BRELVOX_TEST(TestTracking)
#include "tst_tracking.moc"
