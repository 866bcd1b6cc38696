#include "testmain.h"
#include "datadir.h"

#include "core/settings_files.h"
#include "memory/mem_file.h"
#include "memory/mem_record.h"

#include <QTest>
#include <sys/stat.h>
#include <unistd.h>

class TestFileStore : public QObject {
    Q_OBJECT
private slots:
    void matchesPattern_data()
    {
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("match");
        const QString schedules = "BDX_*TOE.TXT;ADX_*TOW.TXT;ILG_*TOW.TXT";
        QTest::newRow("lower-case file") << "MEM_2*.TXT" << "mem_2abc.txt" << true;
        QTest::newRow("other digit") << "MEM_2*.TXT" << "MEM_3abc.TXT" << false;
        QTest::newRow("star empty") << "MEM_2*.TXT" << "MEM_2.TXT" << true;
        QTest::newRow("mixed-case pattern") << "Log_*.Txt" << "LOG_A.TXT" << true;
        QTest::newRow("second alternative") << schedules << "adx_b07tow.txt" << true;
        QTest::newRow("alternatives keep their ends") << schedules << "ILG_A08TOE.TXT" << false;
        QTest::newRow("ending must end") << "*.FTL" << "list.ftl.bak" << false;
        QTest::newRow("star then text repeated") << "*TOE.TXT" << "xtoe.txttoe.txt" << true;
        QTest::newRow("question mark one char") << "A?C.TXT" << "abc.txt" << true;
        QTest::newRow("question mark not zero") << "A?C.TXT" << "ac.txt" << false;
        QTest::newRow("accented letters fold") << QString::fromLatin1("\xc4*.TXT") << QString::fromLatin1("\xe4x.txt") << true;
    }
    void matchesPattern()
    {
        QFETCH(QString, pattern);
        QFETCH(QString, name);
        QFETCH(bool, match);
        QCOMPARE(::matchesPattern(name, pattern), match);
    }

    // The pattern a kind gets for the receiver (and FTL subtype), and the files it lists from
    // a folder made in whatever case; a folder is never a file.
    void listing_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<int>("rx");
        QTest::addColumn<int>("subtype");
        QTest::addColumn<QString>("subdir");
        QTest::addColumn<QStringList>("files");
        QTest::addColumn<QStringList>("listed");
        QTest::addColumn<QString>("pattern");
        const QStringList mem{"mem_2a.txt", "MEM_2B.TXT", "mem_4c.txt", "mem_2d.dat", "MEM_#x.txt", "notes.txt"};
        const QStringList ftl{"ILG_summer.ftl", "AERO2026.FTL", "own.ftl", "ilg.txt"};
        QTest::newRow("memory, NRD-535") << 8 << 2 << 0 << "MEM" << mem << QStringList{"mem_2a.txt", "MEM_2B.TXT"} << "MEM_2*.TXT";
        QTest::newRow("memory, NRD-545, lower-case folder") << 8 << 4 << 0 << "mem" << mem << QStringList{"mem_4c.txt"} << "MEM_4*.TXT";
        QTest::newRow("memory, no receiver") << 8 << 0 << 0 << "Mem" << mem << QStringList{} << "MEM_0*.TXT";
        QTest::newRow("FTL, Aero") << 3 << 1 << 2 << "RX2DB" << ftl << QStringList{"AERO2026.FTL"} << "AERO*.FTL";
        QTest::newRow("tracking lists all FTL") << 5 << 1 << 2 << "rx2db" << ftl << QStringList{"AERO2026.FTL", "ILG_summer.ftl", "own.ftl"} << "*.FTL";
        QTest::newRow("schedules") << 1 << 1 << 0 << "bdxc"
                                   << QStringList{"bdx_b07toe.txt", "ADX_B07TOW.TXT", "ilg_a08tow.txt", "ILG_A08TOE.TXT"}
                                   << QStringList{"ADX_B07TOW.TXT", "bdx_b07toe.txt", "ilg_a08tow.txt"}
                                   << "BDX_*TOE.TXT;ADX_*TOW.TXT;ILG_*TOW.TXT";
    }
    void listing()
    {
        QFETCH(int, kind);
        QFETCH(int, rx);
        QFETCH(int, subtype);
        QFETCH(QString, subdir);
        QFETCH(QStringList, files);
        QFETCH(QStringList, listed);
        QFETCH(QString, pattern);
        TestEnv env;
        DataDir d;
        rxType = int16_t(rx);
        fileSubtype = int16_t(subtype);
        d.mkdir(subdir + "/sub_2dir.txt");
        for (const QString &f : files)
            d.put(subdir + "/" + f);
        preparePattern(kind);
        QCOMPARE(patternTable[kind], pattern);
        QCOMPARE(listKindFiles(kind), listed);
    }

    void memoryNamesFollowTheReceiver()
    {
        TestEnv env;
        for (auto [rx, digit] : {std::pair{rxNRD545, '4'}, std::pair{rxAR7030, '1'}}) {
            rxType = rx;
            preparePattern(8);
            prepareDefaultName(8);
            QCOMPARE(patternTable[8], QString("MEM_%1*.TXT").arg(digit));
            QCOMPARE(defaultNameTable[8], QString("mem_%1xyzxyzxyzxy.txt").arg(digit));
        }
        prepareDefaultName(4); // other kinds keep their names
        QCOMPARE(defaultNameTable[4], QString("log_xyzxyzxyzxyz.txt"));
    }

    void missingFolderAndFile()
    {
        TestEnv env;
        DataDir d;
        QCOMPARE(errorOf([] { listKindFiles(4); }), 76);
        QCOMPARE(errorOf([] { killFile(fullDirTable[4] + "LOG_A.TXT"); }), 76);
        d.mkdir("LOG");
        QCOMPARE(errorOf([] { killFile(fullDirTable[4] + "LOG_A.TXT"); }), 53);
        d.put("LOG/log_a.txt");
        QCOMPARE(errorOf([] { killFile(fullDirTable[4] + "LOG_A.TXT"); }), 0);
        QVERIFY(!d.has("LOG/log_a.txt"));
    }

    void saveName_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("valid");
        QTest::newRow("mixed case") << 4 << "Log_dx.Txt" << true;
        QTest::newRow("prefix and ending only") << 4 << "log_.txt" << true;
        QTest::newRow("two dots") << 4 << "log_a.b.txt" << true;
        QTest::newRow("empty") << 4 << "" << false;
        QTest::newRow("other ending") << 4 << "log_dx.doc" << false;
        QTest::newRow("another kind's prefix") << 4 << "san_dx.txt" << false;
        QTest::newRow("leading blank") << 4 << " log_dx.txt" << false;
        QTest::newRow("trailing blank") << 4 << "log_dx.txt " << false;
        QTest::newRow("dot at 37") << 4 << "log_" + QString(32, 'x') + ".txt" << true;
        QTest::newRow("dot at 38") << 4 << "log_" + QString(33, 'x') + ".txt" << false;
        QTest::newRow("memory, any digit") << 8 << "MEM_3old.TXT" << true;
        QTest::newRow("kind without prefix") << 3 << "ilg.txt" << false;
    }
    void saveName()
    {
        QFETCH(int, kind);
        QFETCH(QString, name);
        QFETCH(bool, valid);
        TestEnv env;
        QCOMPARE(isValidSaveName(name, kind), valid);
    }

    void dispatch_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<int>("subtype");
        QTest::addColumn<QString>("ran"); // empty: nothing ran
        QTest::newRow("log") << 4 << 0 << "log";
        QTest::newRow("ILG by subtype") << 3 << 1 << "ilg";
        QTest::newRow("Aero by subtype") << 3 << 2 << "aero";
        QTest::newRow("FTL without subtype") << 3 << 0 << "";
        QTest::newRow("RTTY has no reader") << 13 << 0 << "";
        QTest::newRow("past the table") << 16 << 0 << "";
    }
    void dispatch()
    {
        QFETCH(int, type);
        QFETCH(int, subtype);
        QFETCH(QString, ran);
        QString log;
        registerReader(4, [&] { log += "log"; });
        registerReader(3, [&] { log += "ilg"; }, 1);
        registerReader(3, [&] { log += "aero"; }, 2);
        fileType = int16_t(type);
        fileSubtype = int16_t(subtype);
        QCOMPARE(runReader(), !ran.isEmpty());
        QCOMPARE(log, ran);
        registerReader(4, {});
        registerReader(3, {}, 1);
        registerReader(3, {}, 2);
        QCOMPARE(errorOf([] { registerWriter(16, [] {}); }), 9);
    }

    // The first line of alttxted.ini, in either case, names the editor; a file that is not
    // there cannot be edited.
    void editor_data()
    {
        QTest::addColumn<QByteArray>("ini"); // empty: no file
        QTest::addColumn<QString>("iniName");
        QTest::addColumn<QStringList>("command"); // without the file argument
        QTest::newRow("platform default") << QByteArray() << "" << QStringList{"xdg-open"};
        QTest::newRow("first line only") << QByteArray("mousepad\r\ngedit\r\n") << "alttxted.ini" << QStringList{"mousepad"};
        QTest::newRow("arguments and quotes") << QByteArray("\"/opt/My Editor/ed\" -n --wait") << "alttxted.ini"
                                              << QStringList{"/opt/My Editor/ed", "-n", "--wait"};
        QTest::newRow("name in capitals") << QByteArray("vi\r\n") << "ALTTXTED.INI" << QStringList{"vi"};
        QTest::newRow("empty first line") << QByteArray("\r\nkate\r\n") << "alttxted.ini" << QStringList{"xdg-open"};
    }
    void editor()
    {
        QFETCH(QByteArray, ini);
        QFETCH(QString, iniName);
        QFETCH(QStringList, command);
        TestEnv env;
        DataDir d;
        d.put("log/log_dx.txt");
        if (!iniName.isEmpty())
            d.put(iniName, ini);
        fileType = 4;
        startEditor(fullDirTable[4] + "LOG_DX.TXT");
        QCOMPARE(env.programs->started, QList<QStringList>{command + QStringList{d.path("log/log_dx.txt")}});
        env.programs->result = false;
        QCOMPARE(errorOf([] { startEditor(fullDirTable[4] + "log_dx.txt"); }), 53);
    }

    // A data directory with letters outside ASCII, its name in the settings as UTF-8 bytes or as
    // the Latin-1 byte: it is found, its files listed, read and written, and the settings go back
    // with the bytes they came with. A folder whose own name is the Latin-1 byte stands beside
    // it and is not touched.
    void nonAsciiDataDirectory_data()
    {
        QTest::addColumn<QByteArray>("typed"); // the folder's name as the settings file holds it
        QTest::addColumn<QString>("shown");    // the name the file system knows
        QTest::newRow("UTF-8 bytes") << QByteArray("Empf\xc3\xa4nger") << QString("Empfänger");
        QTest::newRow("Latin-1 byte") << QByteArray("Empf\xe4nger") << QString("Empfänger");
        QTest::newRow("both in one path") << QByteArray("Empf\xc3\xa4nger/\xe4lter") << QString("Empfänger/älter");
    }
    void nonAsciiDataDirectory()
    {
        QFETCH(QByteArray, typed);
        QFETCH(QString, shown);
        TestEnv env;
        QTemporaryDir tmp;
        const QByteArray root = QFile::encodeName(tmp.path()) + "/";
        QVERIFY(::mkdir(root + "Empf\xe4nger", 0755) == 0); // the Latin-1 byte on disk
        const QString real = tmp.path() + "/" + shown + "/";
        const QString file = QString::fromUtf8("mem_1Gr\xc3\xbcn.txt");
        writeFile(real + "MEM/" + file, "MEM000 09600000 4 01 0 1 @@@ @@@ @ Kurzwelle\r\n");
        dirPath = QString::fromLatin1(root + typed + "/");
        computeFullDirTable();
        rxType = rxAR7030;
        lastMemoryIndex = 99;
        preparePattern(8);
        const QStringList listed = listKindFiles(8);
        QCOMPARE(listed, QStringList{QString::fromLatin1("mem_1Gr\xc3\xbcn.txt")}); // as settings text
        loadMemFile(fullDirTable[8], listed[0]);
        QCOMPARE(memTag[0].str().trimmed(), QString("Kurzwelle"));
        memTag[0] = "Langwelle";
        saveMemFile(fullDirTable[8], listed[0]);
        QVERIFY(readFile(real + "MEM/" + file).contains("Langwelle"));
        settings::saveSettings();
        QCOMPARE(readFile(real + "brelvox2.ini").left(dirPath.size() + 2), root + typed + "/\r\n");
        QCOMPARE(::access(root + "Empf\xe4nger/brelvox2.ini", F_OK), -1);
    }
};

BRELVOX_TEST(TestFileStore)
#include "tst_filestore.moc"
