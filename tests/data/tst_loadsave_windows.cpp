// The load and save windows, driven by clicks on a temporary data directory.
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
#include <csignal>
#include <sys/resource.h>

namespace {
void click(QWidget *w) { QTest::mouseClick(w, Qt::LeftButton); }

// A load or save window for files of a kind, loaded and shown.
template <class W>
struct Shown : W {
    explicit Shown(int kind)
    {
        fileType = int16_t(kind);
        this->Form_Load();
        this->show();
        if (!QTest::qWaitForWindowExposed(this))
            qWarning("window not exposed");
    }
};

QStringList items(const QListWidget *l)
{
    QStringList out;
    for (int i = 0; i < l->count(); ++i)
        out << l->item(i)->text();
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
    w.cmbSavefile->lineEdit()->selectAll();
    QTest::keyClick(w.cmbSavefile->lineEdit(), Qt::Key_Delete);
    QTest::keyClicks(w.cmbSavefile->lineEdit(), name);
}

// The shown dialogs as "title|style|prompt".
QStringList shownDialogs(const TestEnv &env)
{
    QStringList out;
    for (const auto &s : env.dialogs->shown)
        out << QStringLiteral("%1|%2|%3").arg(s.title).arg(s.style).arg(s.prompt);
    return out;
}

// A file size limit on this process while it lives (none for a negative limit): writes past it
// fail with "file too large".
struct FileSizeLimit {
    rlimit old{};
    void (*oldHandler)(int) = nullptr;
    bool set = false;
    explicit FileSizeLimit(long limit)
    {
        if (limit < 0)
            return;
        getrlimit(RLIMIT_FSIZE, &old);
        oldHandler = std::signal(SIGXFSZ, SIG_IGN);
        const rlimit r{rlim_t(limit), old.rlim_max};
        set = setrlimit(RLIMIT_FSIZE, &r) == 0;
    }
    ~FileSizeLimit()
    {
        if (!set)
            return;
        setrlimit(RLIMIT_FSIZE, &old);
        std::signal(SIGXFSZ, oldHandler);
    }
};

const QString kError = "Something went wrong while\nsaving your data to a file ! ! !\nPLEASE TRY AGAIN";

// A reader and a writer of logs that record the path they were given.
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
    // The list in either case; what OK, a click, a double click or Cancel hands the reader.
    void load_data()
    {
        QTest::addColumn<QString>("how");
        QTest::addColumn<QString>("earlier"); // chosenFileTable before the window
        QTest::addColumn<QStringList>("files");
        QTest::addColumn<QString>("read"); // bare name given to the reader, empty: none
        const QStringList three{"log_b.txt", "LOG_A.TXT", "Log_C.Txt", "san_x.txt"};
        QTest::newRow("first, OK") << "ok" << "" << three << "LOG_A.TXT";
        QTest::newRow("click third, OK") << "click 2" << "" << three << "Log_C.Txt";
        QTest::newRow("double click second") << "double 1" << "" << three << "log_b.txt";
        QTest::newRow("click third, Cancel") << "cancel 2" << "" << three << "";
        QTest::newRow("empty folder, no choice") << "ok" << "" << QStringList{} << "";
        QTest::newRow("empty folder, earlier choice") << "ok" << "log_old.txt" << QStringList{} << "log_old.txt";
    }
    void load()
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
        chosenFileTable[4] = earlier;
        Shown<frmLoadfile> w(4);
        QCOMPARE(w.windowTitle(), QString("Select file to load"));
        QVERIFY(isOpen(Win::frmLoadfile));
        const QStringList listed = files.isEmpty() ? QStringList() : QStringList{"LOG_A.TXT", "log_b.txt", "Log_C.Txt"};
        QCOMPARE(items(w.list), listed);
        QCOMPARE(w.list->currentRow(), listed.isEmpty() ? -1 : 0);
        const int row = how.section(' ', 1).toInt();
        if (how != "ok")
            clickItem(w.list, row, how.startsWith("double"));
        if (!how.startsWith("double"))
            click(how.startsWith("cancel") ? w.cmdCancel : w.cmdOK);
        QVERIFY(!w.isVisible() && !isOpen(Win::frmLoadfile));
        QCOMPARE(fake.read, read.isEmpty() ? QStringList() : QStringList{dirPath + "LOG\\" + read});
        if (how.startsWith("cancel")) // Cancel leaves the choice
            QCOMPARE(chosenFileTable[4], listed[row]);
    }

    // Only this receiver's memory files are offered, and loading one asks first.
    void loadMemoryAsks_data()
    {
        QTest::addColumn<int>("answer");
        QTest::newRow("Yes") << int(ui::vbYes);
        QTest::newRow("No") << int(ui::vbNo);
    }
    void loadMemoryAsks()
    {
        QFETCH(int, answer);
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
        Shown<frmLoadfile> w(8);
        QCOMPARE(items(w.list), QStringList{"mem_2dx.txt"});
        click(w.cmdOK);
        QCOMPARE(shownDialogs(env), QStringList{"Load Memory File|35|Are sure you want to load the file\n"
                                                "mem_2dx.txt in the MemMan Window\nand overwrite possible current data"});
        const bool loaded = answer == ui::vbYes;
        QCOMPARE(memRecord[0].str(), loaded ? QString("MEM000 09600000 4 01 0 1 @@@ @@@ @ ") : vacantMemRecord(0));
        QCOMPARE(memTag[0].str(), loaded ? QString("Voice of Nowhere").leftJustified(45) : QString());
        QVERIFY(!dialActive); // a load through the window ends the receiver's dial reports
    }

    void deleteFile_data()
    {
        QTest::addColumn<int>("answer");
        QTest::addColumn<QStringList>("left");
        QTest::newRow("Yes") << int(ui::vbYes) << QStringList{"san_a.txt"};
        QTest::newRow("No") << int(ui::vbNo) << QStringList{"SAN_B.TXT", "san_a.txt"};
    }
    void deleteFile()
    {
        QFETCH(int, answer);
        QFETCH(QStringList, left);
        TestEnv env;
        DataDir d;
        d.put("SAN/san_a.txt");
        d.put("SAN/SAN_B.TXT");
        Shown<frmLoadfile> w(6);
        clickItem(w.list, 1);
        env.dialogs->expectMsgBox("want to delete the file", answer);
        click(w.cmdDelete);
        QCOMPARE(shownDialogs(env), QStringList{"Delete file|35|         Are you really sure you\n"
                                                "         want to delete the file\n         SAN_B.TXT  ? ? ?"});
        QCOMPARE(d.files("SAN"), left);
        // the list stays as it stood, the dead name still selected, the window open
        QCOMPARE(items(w.list), QStringList({"san_a.txt", "SAN_B.TXT"}));
        QVERIFY(w.list->currentRow() == 1 && w.isVisible());
        if (answer == ui::vbYes) { // deleting the dead name again is the platform's "File not found"
            env.dialogs->expectMsgBox("want to delete the file", ui::vbYes);
            QCOMPARE(errorOf([&] { click(w.cmdDelete); }), 53);
        }
    }

    // Edit starts the editor on the chosen file and the window stays; with no file to choose,
    // neither Edit nor Delete does anything. A missing folder is error 76.
    void editAndNothingChosen()
    {
        TestEnv env;
        DataDir d;
        d.mkdir("FSP");
        {
            Shown<frmLoadfile> empty(9);
            click(empty.cmdDelete);
            click(empty.cmdEdit);
            QVERIFY(empty.isVisible() && env.dialogs->shown.isEmpty() && env.programs->started.isEmpty());
        }
        d.put("FSP/fsp_pad.txt");
        d.put("alttxted.ini", "mousepad\r\n");
        Shown<frmLoadfile> w(9);
        click(w.cmdEdit);
        QCOMPARE(env.programs->started, (QList<QStringList>{{"mousepad", d.path("FSP/fsp_pad.txt")}}));
        QVERIFY(w.isVisible());
        QCOMPARE(errorOf([] { Shown<frmLoadfile> w(11); }), 76);
    }

    // The names on offer (every file, lower-cased) and the default; the name typed or picked, the
    // checks on it, the replace question and its answers.
    void save_data()
    {
        QTest::addColumn<QString>("typed"); // "@...": typed after the offered name, "#n": entry n picked
        QTest::addColumn<int>("answer");    // to the replace question
        QTest::addColumn<QStringList>("dialogs");
        QTest::addColumn<QStringList>("files"); // in the folder afterwards, "name=content"
        QTest::addColumn<long>("limit");        // file size limit while saving, bytes; -1 none
        const QString q = "Save File|35|This file already exist.\nDo you want to replace it ?";
        const QString saved = "Save File|48|The data is now saved\nto the file ";
        const QStringList aborted{q, "Save File|64|File save action aborted", "Error 1|48|" + kError};
        const QString old = "log_dx.txt=old\r\n", bad = "Error 2|48|" + kError;
        QTest::newRow("offered name") << "" << 0 << QStringList{saved + "log_xyzxyzxyzxyz.txt"}
                                      << QStringList{old, "log_xyzxyzxyzxyz.txt=new log\r\n"} << -1L;
        QTest::newRow("typed over the offered name") << "@log_over.txt" << 0 << QStringList{saved + "log_over.txt"}
                                                     << QStringList{old, "log_over.txt=new log\r\n"} << -1L;
        QTest::newRow("typed, capitals") << "LOG_NEW.TXT" << 0 << QStringList{saved + "LOG_NEW.TXT"} << QStringList{"LOG_NEW.TXT=new log\r\n", old} << -1L;
        QTest::newRow("no ending") << "log_dx" << 0 << QStringList{bad} << QStringList{old} << -1L;
        QTest::newRow("other prefix") << "lgo_dx.txt" << 0 << QStringList{bad} << QStringList{old} << -1L;
        QTest::newRow("dot at 38") << "log_" + QString(33, 'x') + ".txt" << 0 << QStringList{bad} << QStringList{old} << -1L;
        QTest::newRow("emptied") << "#clear" << 0 << QStringList{bad} << QStringList{old} << -1L;
        QTest::newRow("empty last entry") << "#2" << 0 << QStringList{bad} << QStringList{old} << -1L;
        QTest::newRow("replace, Yes") << "log_dx.txt" << int(ui::vbYes) << QStringList{q, saved + "log_dx.txt"} << QStringList{"log_dx.txt=new log\r\n"} << -1L;
        QTest::newRow("replace, No") << "log_dx.txt" << int(ui::vbNo) << aborted << QStringList{old} << -1L;
        QTest::newRow("replace, Cancel") << "log_dx.txt" << int(ui::vbCancel) << aborted << QStringList{old} << -1L;
        QTest::newRow("other case: no question, overwritten") << "LOG_DX.TXT" << 0 << QStringList{saved + "LOG_DX.TXT"}
                                                               << QStringList{"log_dx.txt=new log\r\n"} << -1L;
        QTest::newRow("size limit: the error told, old file kept")
            << "log_dx.txt" << int(ui::vbYes) << QStringList{q, "Save File|48|" + kError + "\n\nDevice I/O error (run-time error 57)"}
            << QStringList{old} << 4L;
    }

    void save()
    {
        QFETCH(QString, typed);
        QFETCH(int, answer);
        QFETCH(QStringList, dialogs);
        QFETCH(QStringList, files);
        QFETCH(long, limit);
        TestEnv env;
        DataDir d;
        FakeLogKind fake;
        d.put("log/log_dx.txt", "old\r\n");
        d.put("log/README.DOC");
        Shown<frmSavefile> w(4);
        QCOMPARE(w.windowTitle(), QString("Select Save Filename"));
        QVERIFY(isOpen(Win::frmSavefile));
        QStringList entries;
        for (int i = 0; i < w.cmbSavefile->count(); ++i)
            entries << w.cmbSavefile->itemText(i);
        QCOMPARE(entries, QStringList({"log_dx.txt", "readme.doc", ""}));
        QCOMPARE(w.cmbSavefile->currentText(), QString("log_xyzxyzxyzxyz.txt"));
        if (typed.startsWith('@'))
            QTest::keyClicks(w.cmbSavefile->lineEdit(), typed.mid(1));
        else if (typed == "#clear")
            typeName(w, "");
        else if (typed.startsWith('#'))
            w.cmbSavefile->setCurrentIndex(typed.mid(1).toInt());
        else if (!typed.isEmpty())
            typeName(w, typed);
        const QString name = w.cmbSavefile->currentText();
        for (const QString &dlg : dialogs)
            env.dialogs->expectMsgBox(dlg.section('|', 2).section('\n', 0, 0), dlg.contains("already exist") ? answer : ui::vbOK);
        {
            FileSizeLimit held(limit);
            click(w.cmdOK);
        }
        QVERIFY(!w.isVisible() && !isOpen(Win::frmSavefile));
        QCOMPARE(chosenFileTable[4], name);
        QCOMPARE(shownDialogs(env), dialogs);
        QStringList onDisk;
        for (const QString &f : d.files("log").filter("log_", Qt::CaseInsensitive))
            onDisk << f + "=" + readFile(d.path("log/" + f));
        QCOMPARE(onDisk, files);
        const bool wrote = dialogs.last().contains("now saved") || limit >= 0;
        QCOMPARE(fake.written, wrote ? QStringList{dirPath + "LOG\\" + name} : QStringList());
    }

    // Propagation asks before it replaces but tells nothing after; RTTY appends, never asks.
    // The old file is left for the writer (here a recorder) to replace.
    void kindsWithoutMessage()
    {
        for (auto [kind, name] : {std::pair{7, "pan_0314.txt"}, std::pair{13, "rty_0314.txt"}}) {
            TestEnv env;
            DataDir d;
            const QString rel = dirTable[kind].chopped(1) + "/" + name;
            d.put(rel, "kept\r\n");
            QStringList ran;
            registerWriter(kind, [&] { ran << chosenFilePath(); });
            if (kind != 13)
                env.dialogs->expectMsgBox("This file already exist.", ui::vbYes);
            Shown<frmSavefile> w(kind);
            typeName(w, name);
            click(w.cmdOK);
            registerWriter(kind, {});
            QCOMPARE(ran, QStringList{dirPath + dirTable[kind] + name});
            QCOMPARE(readFile(d.path(rel)), QByteArray("kept\r\n"));
        }
    }

    // A memory file: without the sub-directory the list is empty and a save is error 76 with
    // nothing written; with it, every cell is written.
    void saveMemoryFile()
    {
        TestEnv env;
        DataDir d;
        rxType = rxAR7030;
        applyLimits(rxAR7030);
        allocateMemImage();
        memRecord[99] = filledMemRecord({99, "21550000", "2", "01", "@", "@", "128", "040", "1"});
        memTag[99] = "Last cell";
        {
            Shown<frmSavefile> w(8);
            QCOMPARE(w.cmbSavefile->count(), 1);
            typeName(w, "mem_1new.txt");
            QCOMPARE(errorOf([&] { click(w.cmdOK); }), 76);
            QVERIFY(QDir(d.tmp.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden).isEmpty());
        }
        d.mkdir("MEM");
        Shown<frmSavefile> w(8);
        typeName(w, "mem_1new.txt");
        env.dialogs->expectMsgBox("The data is now saved");
        click(w.cmdOK);
        const QByteArray bytes = readFile(d.path("MEM/mem_1new.txt"));
        QCOMPARE(bytes.count("\r\n"), 100);
        QVERIFY(bytes.endsWith("\r\nMEM099 21550000 2 01 @ @ 128 040 1 Last cell" + QByteArray(36, ' ') + "\r\n"));
    }
};

BRELVOX_TEST(TestLoadSaveWindows)
#include "tst_loadsave_windows.moc"
