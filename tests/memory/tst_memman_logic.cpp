#include "testmain.h"
#include "testutil.h"
#include "core/shared_state.h"
#include "drivers/ar7030_tables.h"
#include "drivers/model_tables.h"
#include "drivers/nrd_tables.h"
#include "memory/memman_logic.h"

#include <QTest>

namespace {
// The label tables of a model as its panel leaves them; the AR7030's filters as one set reports them.
void selectModel(int type)
{
    resetSharedState();
    rxType = int16_t(type);
    switch (type) {
    case rxAR7030:
        labelRoutineAR7030();
        filterTable = QStringList{"", "0.5k", "1.4k", "2.3k", "3.3k", "5.5k", "9.5k"};
        break;
    case rxNRD535: labelRoutineNRD535(); break;
    case rxNRD545: labelRoutineNRD545(); break;
    case rxRX320: labelRoutineRX320(); break;
    default: labelRoutineNoRx();
    }
}

const QString kNrd = "MEM007 09600000 4 01 0 1 @@@ @@@ @ ";
const QString kArSql = "MEM003 06070000 1 02 @ @ 003 040 0 ";
const QString kArBfo = "MEM004 07000000 5 03 @ @ 250 012 1 ";
const QString kRx = "MEM001 05000000 1 05 @ 3 @@@ @@@ @ ";
const QString kNrd545 = "MEM999 15000000 9 02 1 9 @@@ @@@ @ ";
const QString kOutside = "MEM010 09600000 9 07 5 7 300 999 4 ";
QString tag45(const QString &t) { return t.leftJustified(45); }

QString joined(const memman::CellFields &f)
{
    return QStringList{f.frequency, f.mode, f.bandwidth, f.attenuator, f.agc, f.pbs, f.sqlBfo, f.scan, f.tag}.join(u'|');
}
} // namespace

class TestMemmanLogic : public QObject {
    Q_OBJECT
private slots:
    // A grid row (number|frequency|mode|bandwidth|tag) and the detail labels
    // (att|agc|pbs|bfo|sql|scan) of one record, by model.
    void rowsAndLabels_data()
    {
        QTest::addColumn<int>("model");
        QTest::addColumn<QString>("record");
        QTest::addColumn<QString>("row");
        QTest::addColumn<QString>("labels");
        QTest::newRow("NRD-535 filled") << int(rxNRD535) << kNrd << "007|09600.000|AM|Int|T" << "0 dB|Fst|---|---|---|-";
        QTest::newRow("NRD-535 vacant") << int(rxNRD535) << vacantMemRecord(17) << "017|No data | | |T" << "---|---|---|---|---|-";
        QTest::newRow("never assigned") << int(rxNRD535) << QString() << "||||" << "|||||";
        QTest::newRow("blanks read back") << int(rxNRD535) << QString(35, ' ') << "||||" << "|||||";
        QTest::newRow("codes outside the tables") << int(rxNRD535) << kOutside << "010|09600.000|?|?|T" << "?|?|?|---|?|?";
        QTest::newRow("AR7030 squelch") << int(rxAR7030) << kArSql << "003|06070.000|AM|1.4k|T" << "---|---|+0.1k|---|26.4|Y";
        QTest::newRow("AR7030 BFO in CW") << int(rxAR7030) << kArBfo << "004|07000.000|CW|2.3k|T" << "---|---|-0.2k|+0.4k|---|N";
        QTest::newRow("RX-320 wire AGC 3") << int(rxRX320) << kRx << "001|05000.000|USB|4500|T" << "---|Fst|---|---|---|-";
        QTest::newRow("NRD-545") << int(rxNRD545) << kNrd545 << "999|15000.000|WFM|Nar|T" << "-20 dB|1800|---|---|---|-";
    }
    void rowsAndLabels()
    {
        QFETCH(int, model);
        QFETCH(QString, record);
        QFETCH(QString, row);
        QFETCH(QString, labels);
        selectModel(model);
        const memman::GridRow g = memman::gridRow(record, record.isEmpty() ? QString() : "T");
        QCOMPARE(QStringList({g.number, g.frequency, g.mode, g.bandwidth, g.tag}).join(u'|'), row);
        const memman::Details d = memman::details(record);
        QCOMPARE(QStringList({d.att, d.agc, d.pbs, d.bfo, d.sql, d.scan}).join(u'|'), labels);
    }

    // from and to as fill, print and scan take them: "-" for refused, else the range in order.
    void range_data()
    {
        QTest::addColumn<QString>("from");
        QTest::addColumn<QString>("to");
        QTest::addColumn<QString>("range");
        QTest::newRow("whole image") << "0" << "99" << "0-99";
        QTest::newRow("exchanged") << "30" << "10" << "10-30";
        QTest::newRow("from at the last cell") << "99" << "99" << "-";
        QTest::newRow("last cell, exchange would help") << "99" << "10" << "-";
        QTest::newRow("to past the last") << "0" << "100" << "-";
        QTest::newRow("past 16 bits") << "0" << "99999" << "-";
        QTest::newRow("negative") << "-1" << "5" << "-";
        QTest::newRow("decimals, halves to even") << "1.5" << "2.5" << "2-2";
        QTest::newRow("rounds up to zero") << "-0.4" << "3" << "0-3";
        QTest::newRow("no number is 0") << "abc" << "" << "0-0";
    }
    void range()
    {
        QFETCH(QString, from);
        QFETCH(QString, to);
        QFETCH(QString, range);
        memman::Range r;
        QCOMPARE(errorOf([&] { r = memman::checkRange(from, to, 99); }), 0);
        QCOMPARE(r.ok ? QString("%1-%2").arg(r.from).arg(r.to) : QString("-"), range);
    }

    // The delay as typed, what is written back, and the scan timer's intervals.
    void delay_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<double>("seconds");
        QTest::addColumn<QString>("writeBack");
        QTest::addColumn<int>("ms");
        QTest::addColumn<int>("arMs");
        QTest::newRow("stands") << "2" << 2.0 << "" << 1900 << 1050;
        QTest::newRow("a single's decimals") << "1.3" << double(1.3f) << "" << 1200 << 350;
        QTest::newRow("below 1") << "0.5" << 1.0 << "1" << 900 << 50;
        QTest::newRow("no number") << "abc" << 1.0 << "1" << 900 << 50;
        QTest::newRow("above 60") << "75" << 60.0 << "60" << 59900 << 59050;
    }
    void delay()
    {
        QFETCH(QString, typed);
        QFETCH(double, seconds);
        QFETCH(QString, writeBack);
        QFETCH(int, ms);
        QFETCH(int, arMs);
        const memman::Delay d = memman::clampDelay(typed);
        QCOMPARE(d.seconds, seconds);
        QCOMPARE(d.text, writeBack);
        QCOMPARE(memman::scanIntervalMs(d.seconds, rxNRD545), ms);
        QCOMPARE(memman::scanIntervalMs(d.seconds, rxAR7030), arMs);
    }

    // Sorts worked by hand. Cells are "hz:tag" ("-" vacant, empty never assigned); the mode digit
    // is the cell's first number, so each record can be followed. Equal frequencies end in an
    // order that only the gaps halved with halves to even give (9 -> 4, 5 -> 2).
    void sort_data()
    {
        QTest::addColumn<QStringList>("cells");
        QTest::addColumn<QStringList>("sorted"); // record|tag
        const QString tail = " 01 0 1 @@@ @@@ @ |";
        QTest::newRow("vacant, empty and below 5 Hz")
            << QStringList{"-:A", "09600000:B", "", "07000000:D", "07000000:E", "05000000:F", "09600000:G",
                           "00000003:H", "09600000:I", "05000000:J"}
            << QStringList{"MEM000 05000000 5" + tail + "F", "MEM001 05000000 9" + tail + "J",
                           "MEM002 07000000 4" + tail + "E", "MEM003 07000000 3" + tail + "D",
                           "MEM004 09600000 6" + tail + "G", "MEM005 09600000 8" + tail + "I",
                           "MEM006 09600000 1" + tail + "B", "|",
                           "XXX008 No data  @ @@ @ @ @@@ @@@ @ |A", "MEM009 32016666 7" + tail + "H"};
        QTest::newRow("six cells")
            << QStringList{"07000000:A", "07000000:B", "09600000:C", "09600000:D", "07000000:E", "05000000:F"}
            << QStringList{"MEM000 05000000 5" + tail + "F", "MEM001 07000000 0" + tail + "A",
                           "MEM002 07000000 4" + tail + "E", "MEM003 07000000 1" + tail + "B",
                           "MEM004 09600000 2" + tail + "C", "MEM005 09600000 3" + tail + "D"};
    }
    void sort()
    {
        QFETCH(QStringList, cells);
        QFETCH(QStringList, sorted);
        const int last = int(cells.size()) - 1;
        FixedTextArray<kMemRecordWidth> recs;
        FixedTextArray<kMemTagWidth> tags;
        recs.redim(last);
        tags.redim(last);
        for (int i = 0; i <= last; ++i) {
            if (cells[i].isEmpty())
                continue;
            const QString hz = cells[i].section(u':', 0, 0);
            recs[i] = hz == "-" ? vacantMemRecord(i)
                                : filledMemRecord({i, hz, QString::number(i), "01", "0", "1", "@@@", "@@@", "@"});
            tags[i] = cells[i].section(u':', 1);
        }
        memman::sortImage(recs, tags, last);
        QStringList got;
        for (int i = 0; i <= last; ++i)
            got << recs[i].str() + u'|' + tags[i].str().trimmed();
        QCOMPARE(got, sorted);
    }

    // One printed line per model, exact to the blank.
    void printLine_data()
    {
        QTest::addColumn<int>("model");
        QTest::addColumn<QString>("record");
        QTest::addColumn<QString>("tag");
        QTest::addColumn<QString>("line");
        const QString t = tag45("Radio Nowhere");
        QTest::newRow("NRD-535") << int(rxNRD535) << kNrd << t << "     007 09600.000   AM  Int 0 dB  Fst  " + t;
        QTest::newRow("NRD-535 vacant: labels of 0") << int(rxNRD535) << vacantMemRecord(17) << t
                                                     << "     017 00000.000   RY  Wid 0 dB  Slw  " + t;
        QTest::newRow("outside codes") << int(rxNRD535) << kOutside << t << "     010 09600.000    ?    ?    ?    ?  " + t;
        QTest::newRow("NRD-545, longer label whole") << int(rxNRD545) << kNrd545 << t
                                                     << "     999 15000.000  WFM  Nar -20 dB 1800  " + t;
        QTest::newRow("AR7030 squelch unpadded, fetched: no tag")
            << int(rxAR7030) << kArSql << QString() << "     003 06070.000   AM 1.4k  +0.1k 26.4        Y  ";
        QTest::newRow("AR7030 BFO") << int(rxAR7030) << kArBfo << t << "     004 07000.000   CW 2.3k  -0.2k     +0.4k N  " + t;
        QTest::newRow("AR7030 vacant") << int(rxAR7030) << vacantMemRecord(5) << t
                                       << "     005 00000.000 " + QString(10, ' ') + "  0.0k 0        Y  " + t;
        QTest::newRow("RX-320") << int(rxRX320) << kRx << t << "     001 05000.000  USB 4500  Fst  " + t;
        QTest::newRow("RX-320 vacant") << int(rxRX320) << vacantMemRecord(9) << t << "     009 00000.000   AM 6000       " + t;
    }
    void printLine()
    {
        QFETCH(int, model);
        QFETCH(QString, record);
        QFETCH(QString, tag);
        QFETCH(QString, line);
        selectModel(model);
        QCOMPARE(memman::printLine(record, tag, model), line);
    }

    // The frame of a printout; cells never assigned are left out.
    void printout()
    {
        selectModel(rxNRD535);
        FixedTextArray<kMemRecordWidth> recs;
        FixedTextArray<kMemTagWidth> tags;
        recs.redim(3);
        tags.redim(3);
        recs[0] = kNrd;
        recs[2] = vacantMemRecord(2);
        recs[3] = kNrd;
        const QStringList lines = memman::printLines(recs, tags, "mem_2Demo.txt", 0, 2, rxNRD535);
        QCOMPARE(lines.mid(0, 6), QStringList({"", "", "     MEM_2DEMO.TXT", "", memman::printHeader(rxNRD535), ""}));
        QCOMPARE(lines.mid(6), QStringList({memman::printLine(kNrd, tags[0], rxNRD535),
                                            memman::printLine(vacantMemRecord(2), tags[2], rxNRD535)}));
    }

    // The editor's record from its fields: frequency|mode|bandwidth|att|agc|pbs|sqlBfo|scan, cell 12.
    void recordFromFields_data()
    {
        QTest::addColumn<int>("model");
        QTest::addColumn<QString>("fields");
        QTest::addColumn<QString>("record"); // "-" for refused
        QTest::newRow("NRD-535") << int(rxNRD535) << "9600|AM|Int|0 dB|Fst|||" << "MEM012 09600000 4 01 0 1 @@@ @@@ @ ";
        QTest::newRow("comma is a point") << int(rxNRD535) << "9600,5|AM|Int|0 dB|Fst|||" << "MEM012 09600500 4 01 0 1 @@@ @@@ @ ";
        QTest::newRow("no number") << int(rxNRD535) << "abc|AM|Int|0 dB|Fst|||" << "MEM012 00000000 4 01 0 1 @@@ @@@ @ ";
        QTest::newRow("highest") << int(rxNRD535) << "99999.999|AM|Int|0 dB|Fst|||" << "MEM012 99999999 4 01 0 1 @@@ @@@ @ ";
        QTest::newRow("rounds past eight digits") << int(rxNRD535) << "99999.9995|AM|Int|0 dB|Fst|||" << "-";
        QTest::newRow("100000 kHz") << int(rxNRD535) << "100000|AM|Int|0 dB|Fst|||" << "-";
        QTest::newRow("negative") << int(rxNRD535) << "-1|AM|Int|0 dB|Fst|||" << "-";
        QTest::newRow("NRD-545 mode 6") << int(rxNRD545) << "9600|AMS|Int|-20 dB|0600|||" << "MEM012 09600000 6 01 1 3 @@@ @@@ @ ";
        QTest::newRow("NRD-545 mode 7 moves fields up") << int(rxNRD545) << "9600|AM-U|Int|0 dB|Off|||"
                                                         << "MEM012 09600000  01 0 0 @@@ @@@ @  ";
        QTest::newRow("RX-320 wire AGC") << int(rxRX320) << "5000|USB|4500||Fst|||" << "MEM012 05000000 1 05 @ 3 @@@ @@@ @ ";
        QTest::newRow("AR7030 squelch") << int(rxAR7030) << "6070|AM|1.4k|||+0.1k|26.4|Y" << "MEM012 06070000 1 02 @ @ 003 040 0 ";
        QTest::newRow("AR7030 BFO") << int(rxAR7030) << "7000|CW|2.3k|||-0.2k|+0.4k|N" << "MEM012 07000000 5 03 @ @ 250 012 1 ";
        QTest::newRow("AR7030 shift ends") << int(rxAR7030) << "7000|Data|2.3k|||+4.2k|-4.2k|N" << "MEM012 07000000 4 03 @ @ 127 129 1 ";
        QTest::newRow("AR7030 typed past the ends") << int(rxAR7030) << "7000|AM|2.3k|||+1E300k|-9|N" << "MEM012 07000000 1 03 @ @ 127 000 1 ";
        QTest::newRow("AR7030 BFO typed past") << int(rxAR7030) << "7000|CW|2.3k|||-9.9k|+99k|N" << "MEM012 07000000 5 03 @ @ 129 127 1 ";
    }
    void recordFromFields()
    {
        QFETCH(int, model);
        QFETCH(QString, fields);
        QFETCH(QString, record);
        selectModel(model);
        const QStringList v = fields.split(u'|');
        const memman::CellFields f{12, v[0], v[1], v[2], v[3], v[4], v[5], v[6], v[7], {}};
        QCOMPARE(memman::recordFromFields(f, model).value_or("-"), record);
    }

    // The fields shown for a record (or a JRC status text): frequency|mode|bw|att|agc|pbs|sqlBfo|scan|tag.
    void fieldsFromRecord_data()
    {
        QTest::addColumn<int>("model");
        QTest::addColumn<QString>("record");
        QTest::addColumn<QString>("fields");
        QTest::newRow("NRD-535") << int(rxNRD535) << kNrd << "09600.000|AM|Int|0 dB|Fst||||Radio";
        QTest::newRow("vacant") << int(rxNRD535) << vacantMemRecord(3) << "No da.ta ||||||||Radio";
        QTest::newRow("never assigned") << int(rxNRD535) << QString() << "||||||||Radio";
        QTest::newRow("NRD-545 outside codes") << int(rxNRD545) << kOutside << "09600.000|WFM|?|?|1400||||Radio";
        QTest::newRow("AR7030 squelch") << int(rxAR7030) << kArSql << "06070.000|AM|1.4k|||+0.1k|26.4|Y|Radio";
        QTest::newRow("AR7030 BFO") << int(rxAR7030) << kArBfo << "07000.000|CW|2.3k|||-0.2k|+0.4k|N|Radio";
        QTest::newRow("AR7030 bytes outside") << int(rxAR7030) << kOutside << "09600.000|?|?|||||?|Radio";
        QTest::newRow("RX-320") << int(rxRX320) << kRx << "05000.000|USB|4500||Fst||||Radio";
        QTest::newRow("JRC status") << int(rxNRD535) << "X124096000001" << "09600.000|AM|Nar|-20 dB|Fst||||";
    }
    void fieldsFromRecord()
    {
        QFETCH(int, model);
        QFETCH(QString, record);
        QFETCH(QString, fields);
        selectModel(model);
        const memman::CellFields f = record.startsWith(u'X') && record.size() == 13
                                         ? memman::fieldsFromJrcStatus(record)
                                         : memman::fieldsFromRecord(record, tag45("Radio"), model);
        QCOMPARE(joined(f), fields);
        // What is shown goes back into the same record.
        if (model == rxAR7030 && record.startsWith("MEM")) {
            memman::CellFields g = f;
            g.cell = record.mid(3, 3).toInt();
            if (!f.mode.contains(u'?'))
                QCOMPARE(memman::recordFromFields(g, model).value_or("-"), record);
        }
    }

    void tag_data()
    {
        QTest::addColumn<QString>("tag");
        QTest::addColumn<bool>("ok");
        QTest::newRow("45 characters") << QString(45, 'x') << true;
        QTest::newRow("46 characters") << QString(46, 'x') << false;
        QTest::newRow("Latin-1") << QString::fromLatin1("R\xe9seau \xc5land") << true;
        QTest::newRow("outside Latin-1") << QString::fromUtf8("Euro \u20ac") << false;
        QTest::newRow("tab") << "a\tb" << false;
        QTest::newRow("line feed") << "a\nb" << false;
    }
    void tag()
    {
        QFETCH(QString, tag);
        QFETCH(bool, ok);
        QCOMPARE(memman::acceptableTag(tag), ok);
    }
};

BRELVOX_TEST(TestMemmanLogic)
#include "tst_memman_logic.moc"
