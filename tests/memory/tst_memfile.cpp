#include "testmain.h"
#include "testutil.h"
#include "core/runtime_error.h"
#include "core/shared_state.h"
#include "data/file_store.h"
#include "memory/mem_file.h"
#include "memory/mem_record.h"

#include <QDir>
#include <QFile>
#include <QTest>

namespace {
QByteArray crlf(const QStringList &lines)
{
    QByteArray b;
    for (const QString &l : lines)
        b += l.toLatin1() + "\r\n";
    return b;
}

// A record line as another program might have written it, numbered i.
QString sampleLine(int i, const QString &tag = QString())
{
    return QStringLiteral("MEM%1 %2 1 02 @ @ 128 040 0 ").arg(i, 3, 10, QChar(u'0')).arg(9500000 + i * 5000, 8, 10, QChar(u'0'))
           + tag;
}

struct ViewLog : MemFileView {
    QStringList events;
    void memLoadBegins() override { events << "begin"; }
    void memRowLoaded(int i) override { events << QString::number(i); }
    void memLoadEnds(const QString &n) override { events << "end " + n; }
    void memSaveBegins() override { events << "save"; }
    void memSaveEnds(const QString &n) override { events << "saved " + n; }
};
} // namespace

class TestMemFile : public QObject {
    Q_OBJECT
private slots:
    void init()
    {
        resetFileStore();
        setMemFileView(nullptr);
    }

    void vacantRecord_data()
    {
        QTest::addColumn<int>("cell");
        QTest::addColumn<QString>("expected");
        QTest::newRow("0") << 0 << "XXX000 No data  @ @@ @ @ @@@ @@@ @ ";
        QTest::newRow("17") << 17 << "XXX017 No data  @ @@ @ @ @@@ @@@ @ ";
        QTest::newRow("999") << 999 << "XXX999 No data  @ @@ @ @ @@@ @@@ @ ";
    }
    void vacantRecord()
    {
        QFETCH(int, cell);
        QFETCH(QString, expected);
        const QString r = vacantMemRecord(cell);
        QCOMPARE(r, expected);
        QCOMPARE(r.size(), 35);
        QCOMPARE(r.mid(16, 1), QString("@")); // position 17
        QCOMPARE(r.mid(33, 1), QString("@")); // position 34
        QVERIFY(isVacantMemRecord(r));
        QCOMPARE(memSortKey(r), QString("32016666"));
        QCOMPARE(memFrequencyDisplay(r), QString("No data "));
    }

    // Fields by position, on the records of two models.
    void fields_data()
    {
        QTest::addColumn<QString>("record");
        QTest::addColumn<QStringList>("fields"); // state number freq mode bw att agc pbs sql scan
        const QString nrd = filledMemRecord({7, "09600000", "4", "01", "0", "1"});
        QTest::newRow("NRD-535 cell 7") << nrd
            << QStringList{"MEM", "007", "09600000", "4", "01", "0", "1", "@@@", "@@@", "@"};
        MemFields ar;
        ar.number = 42;
        ar.hz = memHzText(15070.0);
        ar.mode = "5";
        ar.bandwidth = "03";
        ar.pbs = "250";
        ar.sqlBfo = "012";
        ar.scan = "1";
        QTest::newRow("AR7030 cell 42") << filledMemRecord(ar)
            << QStringList{"MEM", "042", "15070000", "5", "03", "@", "@", "250", "012", "1"};
    }
    void fields()
    {
        QFETCH(QString, record);
        QFETCH(QStringList, fields);
        QCOMPARE(record.size(), 35);
        const memfield::Field order[] = {memfield::state, memfield::number, memfield::frequency,
                                         memfield::mode, memfield::bandwidth, memfield::attenuator,
                                         memfield::agc, memfield::pbs, memfield::sqlBfo, memfield::scan};
        for (int i = 0; i < 10; ++i)
            QCOMPARE(memField(record, order[i]), fields[i]);
        // every separator position holds a blank
        for (int pos : {7, 16, 18, 21, 23, 25, 29, 33, 35})
            QCOMPARE(record.at(pos - 1), QChar(u' '));
    }

    void fixedWidth_data()
    {
        QTest::addColumn<QString>("assigned");
        QTest::addColumn<QString>("record");
        QTest::addColumn<QString>("tag");
        QTest::newRow("empty stays empty") << "" << "" << "";
        QTest::newRow("short padded") << "abc" << "abc" + QString(32, ' ') << "abc" + QString(42, ' ');
        QTest::newRow("long cut") << QString(50, 'x') + "yz" << QString(35, 'x') << QString(45, 'x');
        QTest::newRow("trailing blanks kept") << "a  " << "a" + QString(34, ' ') << "a" + QString(44, ' ');
    }
    void fixedWidth()
    {
        QFETCH(QString, assigned);
        QFETCH(QString, record);
        QFETCH(QString, tag);
        lastMemoryIndex = 3;
        allocateMemImage();
        QVERIFY(memRecord[2].isEmpty());
        memRecord[2] = assigned;
        memTag[2] = assigned;
        QCOMPARE(memRecord[2].str(), record);
        QCOMPARE(memTag[2].str(), tag);
        QVERIFY(memRecord[1].isEmpty());
    }

    void imageBounds()
    {
        lastMemoryIndex = 199;
        allocateMemImage();
        QCOMPARE(memRecord.size(), 200);
        QCOMPARE(memTag.size(), 200);
        QCOMPARE(errorOf([] { memRecord[200] = "x"; }), 9);
        QCOMPARE(errorOf([] { (void)memTag[-1]; }), 9);
        memRecord[5] = "MEM005";
        lastMemoryIndex = 99;
        allocateMemImage(); // replacing the image drops what it held
        QCOMPARE(memRecord.size(), 100);
        QVERIFY(memRecord[5].isEmpty());
    }

    void sortKeyAndDisplay_data()
    {
        QTest::addColumn<QString>("record");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("shown");
        QTest::newRow("filled") << "MEM001 09600000 4 01 0 1 @@@ @@@ @ " << "09600000" << "09600.000";
        QTest::newRow("top of range") << "MEM002 29999999 4 01 0 1 @@@ @@@ @ " << "29999999" << "29999.999";
        QTest::newRow("value 1 stays") << "MEM003 00000001 4 01 0 1 @@@ @@@ @ " << "00000001" << "00000001";
        QTest::newRow("value 2 shown") << "MEM003 00000002 4 01 0 1 @@@ @@@ @ " << "00000002" << "00000.002";
        QTest::newRow("vacant") << vacantMemRecord(9) << "32016666" << "No data ";
        QTest::newRow("empty") << "" << "32016666" << "";
    }
    void sortKeyAndDisplay()
    {
        QFETCH(QString, record);
        QFETCH(QString, key);
        QFETCH(QString, shown);
        QCOMPARE(memSortKey(record), key);
        QCOMPARE(memFrequencyDisplay(record), shown);
    }

    // How many lines reach the image, by file length and image size.
    void readLines_data()
    {
        QTest::addColumn<int>("lastIndex");
        QTest::addColumn<int>("lineCount");
        QTest::addColumn<int>("cellsRead");
        QTest::newRow("250 lines into 200 cells") << 199 << 250 << 200;
        QTest::newRow("exactly full") << 99 << 100 << 100;
        QTest::newRow("too short") << 99 << 3 << 3;
        QTest::newRow("empty file") << 999 << 0 << 0;
        // AR7030 records, with their PBS and squelch fields, into the NRD-545's image
        QTest::newRow("other model's file") << 999 << 100 << 100;
    }
    void readLines()
    {
        QFETCH(int, lastIndex);
        QFETCH(int, lineCount);
        QFETCH(int, cellsRead);
        TestEnv env;
        lastMemoryIndex = lastIndex;
        QStringList lines;
        for (int i = 0; i < lineCount; ++i)
            lines << sampleLine(i, QStringLiteral("tag %1").arg(i));
        ViewLog view;
        QCOMPARE(readMemFile(crlf(lines), &view), cellsRead);
        QCOMPARE(memRecord.size(), lastIndex + 1);
        QCOMPARE(memTag.size(), lastIndex + 1);
        if (cellsRead > 0) {
            const int last = cellsRead - 1;
            QCOMPARE(memRecord[last].str(), sampleLine(last));
            QCOMPARE(memTag[last].str(), QStringLiteral("tag %1").arg(last).leftJustified(45));
        }
        for (int i = cellsRead; i <= lastIndex; ++i) {
            QVERIFY2(memRecord[i].isEmpty(), qPrintable(QString::number(i)));
            QVERIFY(memTag[i].isEmpty());
        }
        QCOMPARE(view.events.size(), cellsRead + 1);
        QCOMPARE(view.events.first(), QString("begin"));
        VERIFY_DIALOGS_CLEAN(env);
    }

    // The part of a line after position 34 and what becomes of it.
    void lineTags_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("record");
        QTest::addColumn<QString>("tag");
        const QString rec = "MEM004 07300000 2 01 1 2 @@@ @@@ @ ";
        QTest::newRow("34 characters: no tag") << rec.left(34) << rec << "";
        QTest::newRow("35 characters: no tag") << rec << rec << "";
        QTest::newRow("short line") << "MEM004 07300000" << rec.left(15) + QString(20, ' ') << "";
        QTest::newRow("35th is not read back") << rec.left(34) + "Z" + "Hello" << rec << "Hello" + QString(40, ' ');
        QTest::newRow("full 80") << rec + QString(45, 'T') << rec << QString(45, 'T');
        QTest::newRow("overlong tag cut") << rec + QString(45, 'T') + "XYZ" << rec << QString(45, 'T');
        QTest::newRow("Latin-1 tag") << rec + QString::fromLatin1("R\xe9seau \xc5land") << rec
                                     << QString::fromLatin1("R\xe9seau \xc5land").leftJustified(45);
    }
    void lineTags()
    {
        QFETCH(QString, line);
        QFETCH(QString, record);
        QFETCH(QString, tag);
        lastMemoryIndex = 99;
        readMemFile(line.toLatin1() + "\r\n" + sampleLine(1).toLatin1() + "\r\n");
        QCOMPARE(memRecord[0].str(), record);
        QCOMPARE(memTag[0].str(), tag);
        QCOMPARE(memRecord[1].str(), sampleLine(1));
    }

    void tagRoundTrip_data()
    {
        QTest::addColumn<QString>("tag");
        QTest::addColumn<QString>("lineEnd"); // what the file line ends with
        const QString full = "Radio Nowhere Int. 0500-0700 UT English /Test";
        QTest::newRow("45 characters") << full << full;
        QTest::newRow("trailing blanks") << "Beacon   " << "Beacon" + QString(39, ' ');
        QTest::newRow("leading blanks") << "  QRM" << "  QRM" + QString(40, ' ');
    }
    void tagRoundTrip()
    {
        QFETCH(QString, tag);
        QFETCH(QString, lineEnd);
        QCOMPARE(QString("Radio Nowhere Int. 0500-0700 UT English /Test").size(), 45);
        lastMemoryIndex = 99;
        allocateMemImage();
        const QString rec = filledMemRecord({5, "06005000", "3", "02", "1", "0"});
        memRecord[5] = rec;
        memTag[5] = tag;
        memRecord[6] = vacantMemRecord(6);
        const QByteArray bytes = memFileBytes();
        QCOMPARE(bytes.count("\r\n"), 100);
        QVERIFY(!bytes.contains("\n\n") && !bytes.contains("\r\r"));
        const QStringList lines = QString::fromLatin1(bytes).split("\r\n");
        QCOMPARE(lines[5], rec + lineEnd);
        QCOMPARE(lines[5].size(), 80);
        QCOMPARE(lines[6], vacantMemRecord(6));
        QCOMPARE(lines[0], QString()); // a cell never assigned holds no record

        readMemFile(bytes);
        QCOMPARE(memRecord[5].str(), rec);
        QCOMPARE(memTag[5].str(), tag.leftJustified(45));
        QCOMPARE(memRecord[6].str(), vacantMemRecord(6));
        QVERIFY(memTag[6].isEmpty());
        QVERIFY(memRecord[0].isEmpty());
        QCOMPARE(memFileBytes(), bytes); // and a second save gives the same bytes
    }

    // Through the file store's dispatch, on a real directory.
    void loadAndSaveFiles()
    {
        TestEnv env;
        resetFileStore();
        QTemporaryDir tmp;
        QVERIFY(QDir(tmp.path()).mkdir("mem")); // made on a case-insensitive system
        dirPath = tmp.path() + "/";
        computeFullDirTable();
        rxType = rxNRD535;
        applyLimits(rxNRD535);
        allocateMemImage();
        memRecord[7] = filledMemRecord({7, "09600000", "4", "01", "0", "1"});
        memTag[7] = "Nowhere Radio   ";
        ViewLog view;
        setMemFileView(&view);
        fileType = kMemFileKind;
        chosenFileTable[kMemFileKind] = "mem_2test.txt";
        QVERIFY(runWriter());
        QCOMPARE(view.events, QStringList({"save", "saved mem_2test.txt"}));
        const QByteArray onDisk = readFile(tmp.path() + "/mem/mem_2test.txt");
        QCOMPARE(onDisk.count("\r\n"), 200);
        QVERIFY(onDisk.contains("MEM007 09600000 4 01 0 1 @@@ @@@ @ Nowhere Radio" + QByteArray(32, ' ') + "\r\n"));

        allocateMemImage();
        view.events.clear();
        QVERIFY(runReader());
        QCOMPARE(memTag[7].str(), QString("Nowhere Radio").leftJustified(45));
        QCOMPARE(view.events.size(), 202);
        QCOMPARE(view.events.last(), QString("end mem_2test.txt"));
        setMemFileView(nullptr);
        VERIFY_DIALOGS_CLEAN(env);
    }

    void failuresLeaveNoFile_data()
    {
        QTest::addColumn<bool>("makeDir");
        QTest::addColumn<bool>("save");
        QTest::addColumn<int>("error");
        QTest::newRow("save, no sub-directory") << false << true << 76;
        QTest::newRow("load, no sub-directory") << false << false << 76;
        QTest::newRow("load, no file") << true << false << 53;
    }
    void failuresLeaveNoFile()
    {
        QFETCH(bool, makeDir);
        QFETCH(bool, save);
        QFETCH(int, error);
        QTemporaryDir tmp;
        if (makeDir)
            QVERIFY(QDir(tmp.path()).mkdir("MEM"));
        lastMemoryIndex = 99;
        allocateMemImage();
        memRecord[1] = sampleLine(1);
        const QString dir = tmp.path() + "/MEM/";
        if (save)
            QCOMPARE(errorOf([&] { saveMemFile(dir, "MEM_1X.TXT"); }), error);
        else
            QCOMPARE(errorOf([&] { loadMemFile(dir, "MEM_1X.TXT"); }), error);
        QVERIFY(!QFile::exists(dir + "MEM_1X.TXT"));
        QCOMPARE(QDir(tmp.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden).size(),
                 makeDir ? 1 : 0);
    }
};

BRELVOX_TEST(TestMemFile)
#include "tst_memfile.moc"
