#include "testmain.h"
#include "datadir.h"
#include "core/textfile.h"
#include "data/frmLoadfile.h"
#include "data/frmSavefile.h"
#include "memory/mem_record.h"

#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>

namespace {
void click(QWidget *w) { QTest::mouseClick(w, Qt::LeftButton); }

QStringList items(const QListWidget *l)
{
    QStringList out;
    for (int i = 0; i < l->count(); ++i)
        out << l->item(i)->text();
    return out;
}

QStringList items(const QComboBox *c)
{
    QStringList out;
    for (int i = 0; i < c->count(); ++i)
        out << c->itemText(i);
    return out;
}

void clickItem(QListWidget *l, int row, bool twice = false)
{
    const QPoint p = l->visualItemRect(l->item(row)).center();
    QTest::mouseClick(l->viewport(), Qt::LeftButton, {}, p);
    if (twice) { // the second press of a double click arrives as the double click itself
        QTest::mouseDClick(l->viewport(), Qt::LeftButton, {}, p);
        QTest::mouseRelease(l->viewport(), Qt::LeftButton, {}, p);
    }
}

void typeName(frmSavefile &w, const QString &name)
{
    QLineEdit *e = w.cmbSavefile->lineEdit();
    e->selectAll();
    QTest::keyClick(e, Qt::Key_Delete);
    QTest::keyClicks(e, name);
}

// The shown dialogs as "title|style|prompt".
QStringList shownDialogs(const TestEnv &env)
{
    QStringList out;
    for (const auto &s : env.dialogs->shown)
        out << QStringLiteral("%1|%2|%3").arg(s.title).arg(s.style).arg(s.prompt);
    return out;
}

const QString kError = "Something went wrong while\nsaving your data to a file ! ! !\nPLEASE TRY AGAIN";

// Readers and writers of kind 4 that record which file they were given.
struct FakeLogKind {
    QStringList read, written;
    FakeLogKind()
    {
        registerReader(4, [this] { read << chosenFilePath(); });
        registerWriter(4, [this] {
            written << chosenFilePath();
            textfile::writeAtomically(chosenFilePath(), "new log\r\n");
        });
    }
    ~FakeLogKind()
    {
        registerReader(4, {});
        registerWriter(4, {});
    }
};
} // namespace

class TestLoadSaveWindows : public QObject {
    Q_OBJECT
private slots:
    // --- the load window ---

    void loadList_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<int>("rx");
        QTest::addColumn<QStringList>("files");
        QTest::addColumn<QStringList>("listed");
        QTest::newRow("log, both cases") << 4 << 1 << QStringList{"log_b.txt", "LOG_A.TXT", "Log_C.Txt", "san_x.txt"}
                                         << QStringList{"LOG_A.TXT", "log_b.txt", "Log_C.Txt"};
        QTest::newRow("memory of the NRD-535 only") << 8 << 2 << QStringList{"mem_2dx.txt", "MEM_4BIG.TXT", "mem_1ar.txt", "MEM_2UTE.TXT"}
                                                    << QStringList{"mem_2dx.txt", "MEM_2UTE.TXT"};
        QTest::newRow("empty") << 4 << 1 << QStringList{} << QStringList{};
    }
    void loadList()
    {
        QFETCH(int, kind);
        QFETCH(int, rx);
        QFETCH(QStringList, files);
        QFETCH(QStringList, listed);
        TestEnv env;
        DataDir d;
        rxType = int16_t(rx);
        fileType = int16_t(kind);
        d.mkdir(dirTable[kind].chopped(1).toLower());
        for (const QString &f : files)
            d.put(dirTable[kind].chopped(1).toLower() + "/" + f);
        frmLoadfile w;
        w.Form_Load();
        w.show();
        QCOMPARE(w.windowTitle(), QString("Select file to load"));
        QVERIFY(isOpen(Win::frmLoadfile));
        QCOMPARE(items(w.list), listed);
        QCOMPARE(chosenFileTable[kind], listed.value(0));
        QCOMPARE(w.list->currentRow(), listed.isEmpty() ? -1 : 0);
        click(w.cmdCancel);
        QVERIFY(!w.isVisible());
        QVERIFY(!isOpen(Win::frmLoadfile));
        QCOMPARE(chosenFileTable[kind], listed.value(0)); // Cancel leaves the choice
        VERIFY_DIALOGS_CLEAN(env);
    }

    void loadRunsReader_data()
    {
        QTest::addColumn<QString>("how");
        QTest::addColumn<QString>("earlier"); // chosenFileTable before the window
        QTest::addColumn<QStringList>("files");
        QTest::addColumn<QString>("read"); // bare name given to the reader, empty: none
        const QStringList three{"log_a.txt", "log_b.txt", "log_c.txt"};
        QTest::newRow("first, OK") << "ok" << "" << three << "log_a.txt";
        QTest::newRow("click third, OK") << "click 2" << "" << three << "log_c.txt";
        QTest::newRow("double click second") << "double 1" << "" << three << "log_b.txt";
        QTest::newRow("click third, Cancel") << "cancel 2" << "" << three << "";
        QTest::newRow("empty folder, no choice") << "ok" << "" << QStringList{} << "";
        QTest::newRow("empty folder, earlier choice") << "ok" << "log_old.txt" << QStringList{} << "log_old.txt";
    }
    void loadRunsReader()
    {
        QFETCH(QString, how);
        QFETCH(QString, earlier);
        QFETCH(QStringList, files);
        QFETCH(QString, read);
        TestEnv env;
        DataDir d;
        FakeLogKind fake;
        d.mkdir("Log");
        for (const QString &f : files)
            d.put("Log/" + f);
        fileType = 4;
        chosenFileTable[4] = earlier;
        frmLoadfile w;
        w.Form_Load();
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        const int row = how.section(' ', 1).toInt();
        if (how.startsWith("click") || how.startsWith("cancel"))
            clickItem(w.list, row);
        if (how.startsWith("double"))
            clickItem(w.list, row, true);
        else if (how.startsWith("cancel"))
            click(w.cmdCancel);
        else
            click(w.cmdOK);
        QVERIFY(!w.isVisible());
        QCOMPARE(fake.read, read.isEmpty() ? QStringList() : QStringList{dirPath + "LOG\\" + read});
        if (how.startsWith("cancel"))
            QCOMPARE(chosenFileTable[4], files[row]);
        VERIFY_DIALOGS_CLEAN(env);
    }

    void loadMemoryAsks_data()
    {
        QTest::addColumn<int>("answer");
        QTest::addColumn<bool>("loaded");
        QTest::newRow("Yes") << int(ui::vbYes) << true;
        QTest::newRow("No") << int(ui::vbNo) << false;
        QTest::newRow("Cancel") << int(ui::vbCancel) << false;
    }
    void loadMemoryAsks()
    {
        QFETCH(int, answer);
        QFETCH(bool, loaded);
        TestEnv env;
        DataDir d;
        rxType = rxNRD535;
        applyLimits(rxNRD535);
        dialActive = true;
        allocateMemImage();
        memRecord[0] = vacantMemRecord(0);
        d.put("mem/mem_2dx.txt", "MEM000 09600000 4 01 0 1 @@@ @@@ @ Voice of Nowhere\r\n");
        d.put("mem/mem_4dx.txt", "MEM000 01000000 4 01 0 1 @@@ @@@ @ other model\r\n");
        env.dialogs->expectMsgBox("Are sure you want to load the file", answer);
        fileType = 8;
        frmLoadfile w;
        w.Form_Load();
        w.show();
        QCOMPARE(items(w.list), QStringList{"mem_2dx.txt"});
        click(w.cmdOK);
        QCOMPARE(shownDialogs(env), QStringList{"Load Memory File|35|Are sure you want to load the file\n"
                                                "mem_2dx.txt in the MemMan Window\nand overwrite possible current data"});
        QCOMPARE(memRecord[0].str(), loaded ? QString("MEM000 09600000 4 01 0 1 @@@ @@@ @ ") : vacantMemRecord(0));
        if (loaded)
            QCOMPARE(memTag[0].str(), QString("Voice of Nowhere").leftJustified(45));
        QVERIFY(!dialActive); // a load through the window ends the receiver's dial reports
        QVERIFY(!w.isVisible());
        VERIFY_DIALOGS_CLEAN(env);
    }

    void deleteFile_data()
    {
        QTest::addColumn<int>("answer");
        QTest::addColumn<QStringList>("left");
        QTest::newRow("Yes") << int(ui::vbYes) << QStringList{"san_a.txt"};
        QTest::newRow("No") << int(ui::vbNo) << QStringList{"SAN_B.TXT", "san_a.txt"};
        QTest::newRow("Cancel") << int(ui::vbCancel) << QStringList{"SAN_B.TXT", "san_a.txt"};
    }
    void deleteFile()
    {
        QFETCH(int, answer);
        QFETCH(QStringList, left);
        TestEnv env;
        DataDir d;
        d.put("SAN/san_a.txt");
        d.put("SAN/SAN_B.TXT");
        fileType = 6;
        frmLoadfile w;
        w.Form_Load();
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        clickItem(w.list, 1);
        env.dialogs->expectMsgBox("want to delete the file", answer);
        click(w.cmdDelete);
        QCOMPARE(shownDialogs(env), QStringList{"Delete file|35|         Are you really sure you\n"
                                                "         want to delete the file\n         SAN_B.TXT  ? ? ?"});
        QCOMPARE(d.files("SAN"), left);
        // the list stays as it stood, the dead name still selected
        QCOMPARE(items(w.list), QStringList({"san_a.txt", "SAN_B.TXT"}));
        QCOMPARE(w.list->currentRow(), 1);
        QVERIFY(w.isVisible());
        VERIFY_DIALOGS_CLEAN(env);
        if (answer == ui::vbYes) {
            // deleting the dead name again is the platform's "File not found"
            env.dialogs->expectMsgBox("want to delete the file", ui::vbYes);
            QCOMPARE(errorOf([&] { click(w.cmdDelete); }), 53);
        }
        w.close();
        QVERIFY(!isOpen(Win::frmLoadfile));
    }

    void deleteAndEditWithoutChoice()
    {
        TestEnv env;
        DataDir d;
        d.mkdir("FSP");
        fileType = 9;
        frmLoadfile w;
        w.Form_Load();
        w.show();
        click(w.cmdDelete);
        click(w.cmdEdit);
        QVERIFY(env.dialogs->shown.isEmpty());
        QVERIFY(env.programs->started.isEmpty());
        QVERIFY(w.isVisible());
    }

    void editStartsEditor()
    {
        TestEnv env;
        DataDir d;
        d.put("fsp/fsp_pad.txt");
        d.put("alttxted.ini", "mousepad\r\n");
        fileType = 9;
        frmLoadfile w;
        w.Form_Load();
        w.show();
        click(w.cmdEdit);
        QCOMPARE(env.programs->started, (QList<QStringList>{{"mousepad", d.path("fsp/fsp_pad.txt")}}));
        QVERIFY(w.isVisible()); // the window stays and the program does not wait
        VERIFY_DIALOGS_CLEAN(env);
    }

    void loadWithoutFolder()
    {
        TestEnv env;
        DataDir d;
        fileType = 11;
        frmLoadfile w;
        QCOMPARE(errorOf([&] { w.Form_Load(); }), 76);
    }

    // --- the save window ---

    void saveList_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<int>("rx");
        QTest::addColumn<QStringList>("files");
        QTest::addColumn<QStringList>("entries");
        QTest::addColumn<QString>("offered");
        QTest::newRow("log, everything lower-cased") << 4 << 1 << QStringList{"LOG_A.TXT", "log_b.txt", "readme.DOC"}
                                                     << QStringList{"log_a.txt", "log_b.txt", "readme.doc", ""}
                                                     << "log_xyzxyzxyzxyz.txt";
        QTest::newRow("memory, RX-320") << 8 << 3 << QStringList{"MEM_3X.TXT", "mem_2y.txt"}
                                        << QStringList{"mem_2y.txt", "mem_3x.txt", ""} << "mem_3xyzxyzxyzxy.txt";
        QTest::newRow("no folder") << 12 << 1 << QStringList{} << QStringList{""} << "sfp_xyzxyzxyzxyz.txt";
    }
    void saveList()
    {
        QFETCH(int, kind);
        QFETCH(int, rx);
        QFETCH(QStringList, files);
        QFETCH(QStringList, entries);
        QFETCH(QString, offered);
        TestEnv env;
        DataDir d;
        rxType = int16_t(rx);
        fileType = int16_t(kind);
        for (const QString &f : files)
            d.put(dirTable[kind].chopped(1) + "/" + f);
        frmSavefile w;
        w.Form_Load();
        w.show();
        QCOMPARE(w.windowTitle(), QString("Select Save Filename"));
        QVERIFY(isOpen(Win::frmSavefile));
        QCOMPARE(items(w.cmbSavefile), entries);
        QCOMPARE(w.cmbSavefile->currentText(), offered);
        click(w.cmdCancel);
        QVERIFY(!isOpen(Win::frmSavefile));
        QVERIFY(env.dialogs->shown.isEmpty());
    }

    void saveName_data()
    {
        QTest::addColumn<QString>("typed"); // "#n": pick entry n of the combo
        QTest::addColumn<bool>("saved");
        QTest::newRow("offered name") << "" << true;
        QTest::newRow("typed, capitals") << "LOG_DX2026.TXT" << true;
        QTest::newRow("typed over the offered name") << "@log_over.txt" << true;
        QTest::newRow("typed, mixed") << "Log_Dx.Txt" << true;
        QTest::newRow("no ending") << "log_dx" << false;
        QTest::newRow("other prefix") << "lgo_dx.txt" << false;
        QTest::newRow("dot at 38") << "log_" + QString(33, 'x') + ".txt" << false;
        QTest::newRow("emptied") << "#clear" << false;
        QTest::newRow("empty last entry") << "#1" << false;
    }
    void saveName()
    {
        QFETCH(QString, typed);
        QFETCH(bool, saved);
        TestEnv env;
        DataDir d;
        FakeLogKind fake;
        d.put("LOG/LOG_OLD.TXT", "old\r\n");
        fileType = 4;
        frmSavefile w;
        w.Form_Load();
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        if (typed == "#clear")
            typeName(w, "");
        else if (typed.startsWith('@'))
            QTest::keyClicks(w.cmbSavefile->lineEdit(), typed.mid(1));
        else if (typed.startsWith('#'))
            w.cmbSavefile->setCurrentIndex(typed.mid(1).toInt());
        else if (!typed.isEmpty())
            typeName(w, typed);
        const QString name = w.cmbSavefile->currentText();
        if (typed.startsWith('@'))
            QCOMPARE(name, typed.mid(1));
        if (saved)
            env.dialogs->expectMsgBox("The data is now saved");
        else
            env.dialogs->expectMsgBox("Something went wrong");
        click(w.cmdOK);
        QVERIFY(!w.isVisible());
        QCOMPARE(chosenFileTable[4], name);
        if (saved) {
            QCOMPARE(shownDialogs(env), QStringList{"Save File|48|The data is now saved\nto the file " + name});
            QCOMPARE(fake.written, QStringList{dirPath + "LOG\\" + name});
            QStringList both{"LOG_OLD.TXT", name};
            both.sort();
            QCOMPARE(d.files("LOG"), both);
            QCOMPARE(readFile(d.path("LOG/" + name)), QByteArray("new log\r\n"));
        } else {
            QCOMPARE(shownDialogs(env), QStringList{"Error 2|48|" + kError});
            QVERIFY(fake.written.isEmpty());
            QCOMPARE(d.files("LOG"), QStringList{"LOG_OLD.TXT"});
        }
        VERIFY_DIALOGS_CLEAN(env);
    }

    void replaceQuestion_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<int>("answer"); // 0: no question expected
        QTest::addColumn<QStringList>("dialogs");
        QTest::addColumn<QByteArray>("content");
        const QString q = "Save File|35|This file already exist.\nDo you want to replace it ?";
        const QString saved = "Save File|48|The data is now saved\nto the file log_dx.txt";
        QTest::newRow("Yes") << "log_dx.txt" << int(ui::vbYes) << QStringList{q, saved} << QByteArray("new log\r\n");
        QTest::newRow("No") << "log_dx.txt" << int(ui::vbNo)
                            << QStringList{q, "Save File|64|File save action aborted", "Error 1|48|" + kError}
                            << QByteArray("old\r\n");
        QTest::newRow("Cancel") << "log_dx.txt" << int(ui::vbCancel)
                                << QStringList{q, "Save File|64|File save action aborted", "Error 1|48|" + kError}
                                << QByteArray("old\r\n");
        QTest::newRow("other case: no question, overwritten") << "LOG_DX.TXT" << 0
                                << QStringList{"Save File|48|The data is now saved\nto the file LOG_DX.TXT"}
                                << QByteArray("new log\r\n");
    }
    void replaceQuestion()
    {
        QFETCH(QString, typed);
        QFETCH(int, answer);
        QFETCH(QStringList, dialogs);
        QFETCH(QByteArray, content);
        TestEnv env;
        DataDir d;
        FakeLogKind fake;
        d.put("log/log_dx.txt", "old\r\n");
        fileType = 4;
        frmSavefile w;
        w.Form_Load();
        w.show();
        QCOMPARE(items(w.cmbSavefile), QStringList({"log_dx.txt", ""}));
        typeName(w, typed);
        if (answer) {
            env.dialogs->expectMsgBox("This file already exist.", answer);
            if (answer != ui::vbYes) {
                env.dialogs->expectMsgBox("File save action aborted");
                env.dialogs->expectMsgBox("Something went wrong");
            }
        }
        if (answer == 0 || answer == ui::vbYes)
            env.dialogs->expectMsgBox("The data is now saved");
        click(w.cmdOK);
        QCOMPARE(shownDialogs(env), dialogs);
        QCOMPARE(d.files("log"), QStringList{"log_dx.txt"}); // one file, whatever the case typed
        QCOMPARE(readFile(d.path("log/log_dx.txt")), content);
        QVERIFY(!w.isVisible());
        VERIFY_DIALOGS_CLEAN(env);
    }

    void saveMemoryFile()
    {
        TestEnv env;
        DataDir d;
        rxType = rxNRD545;
        applyLimits(rxNRD545);
        allocateMemImage();
        memRecord[999] = filledMemRecord({999, "21550000", "2", "01", "0", "3"});
        memTag[999] = "Last cell";
        d.mkdir("MEM");
        fileType = 8;
        frmSavefile w;
        w.Form_Load();
        w.show();
        QCOMPARE(w.cmbSavefile->currentText(), QString("mem_4xyzxyzxyzxy.txt"));
        typeName(w, "mem_4dx.txt");
        env.dialogs->expectMsgBox("The data is now saved");
        click(w.cmdOK);
        const QByteArray bytes = readFile(d.path("MEM/mem_4dx.txt"));
        QCOMPARE(bytes.count("\r\n"), 1000);
        QVERIFY(bytes.endsWith("\r\nMEM999 21550000 2 01 0 3 @@@ @@@ @ Last cell" + QByteArray(36, ' ') + "\r\n"));
        VERIFY_DIALOGS_CLEAN(env);
    }

    void kindsWithoutMessage_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("name");
        QTest::newRow("propagation") << 7 << "pan_0314.txt";
        QTest::newRow("RTTY appends, never asks") << 13 << "rty_0314.txt";
    }
    void kindsWithoutMessage()
    {
        QFETCH(int, kind);
        QFETCH(QString, name);
        TestEnv env;
        DataDir d;
        d.put(dirTable[kind].chopped(1) + "/" + name, "kept\r\n");
        QStringList ran;
        registerWriter(kind, [&] { ran << chosenFilePath(); });
        fileType = int16_t(kind);
        if (kind != 13)
            env.dialogs->expectMsgBox("This file already exist.", ui::vbYes);
        frmSavefile w;
        w.Form_Load();
        w.show();
        typeName(w, name);
        click(w.cmdOK);
        registerWriter(kind, {});
        QCOMPARE(ran, QStringList{dirPath + dirTable[kind] + name});
        // the old file is left for the writer (here a recorder) to replace
        QVERIFY(d.has(dirTable[kind].chopped(1) + "/" + name));
        QVERIFY(!w.isVisible());
        VERIFY_DIALOGS_CLEAN(env);
    }

    void saveWithoutFolder()
    {
        TestEnv env;
        DataDir d;
        rxType = rxAR7030;
        applyLimits(rxAR7030);
        allocateMemImage();
        fileType = 8;
        frmSavefile w;
        w.Form_Load();
        w.show();
        QCOMPARE(items(w.cmbSavefile), QStringList{""});
        typeName(w, "mem_1new.txt");
        QCOMPARE(errorOf([&] { click(w.cmdOK); }), 76);
        QVERIFY(QDir(d.tmp.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden).isEmpty());
        VERIFY_DIALOGS_CLEAN(env);
    }
};

BRELVOX_TEST(TestLoadSaveWindows)
#include "tst_loadsave_windows.moc"
