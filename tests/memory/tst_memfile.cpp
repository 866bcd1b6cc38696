#include "testmain.h"
#include "testutil.h"
#include "core/runtime_error.h"
#include "core/shared_state.h"
#include "core/textfile.h"
#include "data/file_store.h"
#include "memory/mem_file.h"
#include "memory/mem_record.h"

#include <QDir>
#include <QFile>
#include <QTest>

namespace {
// A record line as another model (an AR7030, with pass band shift and squelch) wrote it.
QString sampleLine(int i)
{
    return QStringLiteral("MEM%1 %2 1 02 @ @ 128 040 0 ").arg(i, 3, 10, QChar(u'0')).arg(9500000 + i * 5000, 8, 10, QChar(u'0'));
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
        lastMemoryIndex = 99;
    }

    void records()
    {
        QCOMPARE(vacantMemRecord(7), QString("XXX007 No data  @ @@ @ @ @@@ @@@ @ "));
        QVERIFY(isVacantMemRecord(vacantMemRecord(7)) && !isVacantMemRecord(sampleLine(7)));
        const QString ar = filledMemRecord({42, memHzText(15070.0), "5", "03", "@", "@", "250", "012", "1"});
        QCOMPARE(ar, QString("MEM042 15070000 5 03 @ @ 250 012 1 "));
        const memfield::Field order[] = {memfield::state, memfield::number, memfield::frequency, memfield::mode,
                                         memfield::bandwidth, memfield::attenuator, memfield::agc, memfield::pbs,
                                         memfield::sqlBfo, memfield::scan};
        QStringList fields;
        for (const auto &f : order)
            fields << memField(ar, f);
        QCOMPARE(fields.join(u'|'), QString("MEM|042|15070000|5|03|@|@|250|012|1"));
    }

    // Sorting compares the frequency field as text; vacant and empty cells go last.
    void sortKeyAndDisplay()
    {
        QStringList keys, shown;
        for (const QString &r : {QString("MEM001 09600000 4 01 0 1 @@@ @@@ @ "), QString("MEM003 00000001 4 01 0 1 @@@ @@@ @ "),
                                 QString("MEM003 00000002 4 01 0 1 @@@ @@@ @ "), vacantMemRecord(9), QString(),
                                 QString(35, ' ')}) {
            keys << memSortKey(r);
            shown << memFrequencyDisplay(r);
        }
        QCOMPARE(keys, QStringList({"09600000", "00000001", "00000002", "32016666", "32016666", "32016666"}));
        QCOMPARE(shown, QStringList({"09600.000", "00000001", "00000.002", "No data ", "", "        "}));
    }

    // Cells hold fixed-width text; the image is 0..lastMemoryIndex, anything else is error 9.
    void image()
    {
        allocateMemImage();
        QVERIFY(memRecord[2].isEmpty());
        memRecord[2] = "abc";
        memTag[2] = QString(50, 'x');
        QCOMPARE(memRecord[2].str(), "abc" + QString(32, ' '));
        QCOMPARE(memTag[2].str(), QString(45, 'x'));
        memRecord[2] = ""; // assigned, even empty, a cell is padded
        QCOMPARE(memRecord[2].str(), QString(35, ' '));
        QCOMPARE(errorOf([] { memRecord[100] = "x"; }), 9);
        QCOMPARE(errorOf([] { (void)memTag[-1]; }), 9);
        memRecord[5] = "MEM005";
        allocateMemImage(); // replacing the image drops what it held
        QVERIFY(memRecord[5].isEmpty());
    }

    // How many lines reach the image, and what the last line read becomes: its first 34
    // characters are the record, from position 36 on the tag.
    void read_data()
    {
        QTest::addColumn<int>("lastIndex");
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<int>("cellsRead");
        QTest::addColumn<QString>("record"); // of the last cell read
        QTest::addColumn<QString>("tag");
        const auto lines = [](int n) {
            QByteArray b;
            for (int i = 0; i < n; ++i)
                b += (sampleLine(i) + "tag " + QString::number(i)).toLatin1() + "\r\n";
            return b;
        };
        QTest::newRow("250 lines into 200 cells") << 199 << lines(250) << 200 << sampleLine(199) << "tag 199";
        QTest::newRow("exactly full") << 99 << lines(100) << 100 << sampleLine(99) << "tag 99";
        QTest::newRow("other model's file, short") << 999 << lines(100) << 100 << sampleLine(99) << "tag 99";
        QTest::newRow("empty file") << 999 << QByteArray() << 0 << "" << "";
        const QString rec = "MEM004 07300000 2 01 1 2 @@@ @@@ @ ";
        QTest::newRow("blank line") << 99 << QByteArray("\r\n") << 1 << "" << "";
        QTest::newRow("34 characters: no tag") << 99 << (rec.left(34) + "\r\n").toLatin1() << 1 << rec << "";
        QTest::newRow("short line") << 99 << QByteArray("MEM004 07300000\r\n") << 1 << rec.left(15) << "";
        QTest::newRow("35th is not read back") << 99 << (rec.left(34) + "ZHello\r\n").toLatin1() << 1 << rec << "Hello";
        QTest::newRow("overlong tag cut") << 99 << (rec + QString(45, 'T') + "XYZ\r\n").toLatin1() << 1 << rec << QString(45, 'T');
        QTest::newRow("Latin-1 tag") << 99 << (rec + QString::fromLatin1("R\xe9seau \xc5land\r\n")).toLatin1() << 1 << rec
                                     << QString::fromLatin1("R\xe9seau \xc5land");
    }
    void read()
    {
        QFETCH(int, lastIndex);
        QFETCH(QByteArray, file);
        QFETCH(int, cellsRead);
        QFETCH(QString, record);
        QFETCH(QString, tag);
        lastMemoryIndex = lastIndex;
        ViewLog view;
        QCOMPARE(readMemFile(file, &view), cellsRead);
        QCOMPARE(view.events.size(), cellsRead + 1);
        QCOMPARE(memRecord.size(), lastIndex + 1);
        QCOMPARE(memTag.size(), lastIndex + 1);
        if (cellsRead > 0) {
            QCOMPARE(memRecord[cellsRead - 1].str(), record.leftJustified(35));
            QCOMPARE(memTag[cellsRead - 1].str(), tag.isEmpty() ? tag : tag.leftJustified(45));
        }
        for (int i = cellsRead; i <= lastIndex; ++i)
            QVERIFY2(memRecord[i].isEmpty() && memTag[i].isEmpty(), qPrintable(QString::number(i)));
        // saved back, every line read keeps its 80 columns; cells past the file stay empty
        const QStringList saved = textfile::splitLines(memFileBytes());
        QCOMPARE(saved.size(), lastIndex + 1);
        for (int i = 0; i <= lastIndex; ++i)
            QVERIFY2(saved[i].size() == (i < cellsRead ? 80 : 0), qPrintable(QString::number(i)));
    }

    // Saved and loaded again, the window told of both; each line is record and tag, 80 characters.
    void roundTrip_data()
    {
        QTest::addColumn<QString>("tag");
        QTest::addColumn<QString>("lineEnd"); // what the file line ends with
        const QString full = "Radio Nowhere Int. 0500-0700 UT English /Test";
        QTest::newRow("45 characters") << full << full;
        QTest::newRow("trailing blanks") << "Beacon   " << "Beacon" + QString(39, ' ');
        QTest::newRow("no tag") << QString() << QString(45, ' ');
    }
    void roundTrip()
    {
        QFETCH(QString, tag);
        QFETCH(QString, lineEnd);
        QTemporaryDir tmp;
        const QString dir = tmp.path() + "/";
        allocateMemImage();
        const QString rec = filledMemRecord({5, "06005000", "3", "02", "1", "0"});
        memRecord[5] = rec;
        if (!tag.isNull())
            memTag[5] = tag;
        memRecord[6] = vacantMemRecord(6);
        ViewLog view;
        setMemFileView(&view);
        saveMemFile(dir, "mem_2test.txt");
        const QByteArray bytes = readFile(dir + "mem_2test.txt");
        const QStringList lines = QString::fromLatin1(bytes).split("\r\n");
        QCOMPARE(lines.size(), 101); // 100 lines, each ended by CR LF
        // a cell never assigned is empty; one with a record keeps 80 columns
        QCOMPARE(lines.mid(4, 3), QStringList({"", rec + lineEnd, vacantMemRecord(6) + QString(45, ' ')}));
        QCOMPARE(lines[5].size(), 80);
        allocateMemImage();
        loadMemFile(dir, "mem_2test.txt");
        setMemFileView(nullptr);
        QCOMPARE(memTag[5].str(), tag.leftJustified(45));
        QCOMPARE(memRecord[4].str(), QString(35, ' ')); // a blank line read is an assigned empty text
        QStringList again = lines;
        for (int i = 0; i < 100; ++i)
            if (again[i].isEmpty())
                again[i] = QString(80, ' ');
        QCOMPARE(memFileBytes(), again.join("\r\n").toLatin1()); // and keeps its 80 columns from now on
        QCOMPARE(view.events.mid(0, 3) + view.events.mid(102), QStringList({"save", "saved mem_2test.txt", "begin", "99", "end mem_2test.txt"}));
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
        allocateMemImage();
        memRecord[1] = sampleLine(1);
        const QString dir = tmp.path() + "/MEM/";
        QCOMPARE(errorOf([&] { save ? saveMemFile(dir, "MEM_1X.TXT") : loadMemFile(dir, "MEM_1X.TXT"); }), error);
        QCOMPARE(QDir(tmp.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden), makeDir ? QStringList{"MEM"} : QStringList());
        QVERIFY(!QFile::exists(dir + "MEM_1X.TXT"));
    }
};

BRELVOX_TEST(TestMemFile)
#include "tst_memfile.moc"
