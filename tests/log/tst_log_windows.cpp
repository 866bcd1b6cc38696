// The log's windows driven as the listener drives them, over a panel on a simulated receiver:
// the record form and its rewritings, delete and its numbers, every message, the mask and the
// columns, the column click, the current setting, the files, and the log outliving the window.
#include "panel_rig.h"
#include "data/file_store.h"
#include "data/frmSavefile.h"
#include "log/frmLog.h"
#include "log/frmLogFormat.h"
#include "log/frmLoginput.h"
#include "log/frmLogsort.h"
#include "log/log_book.h"
#include "testmain.h"

#include <QCheckBox>
#include <QHeaderView>
#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QtTest>

using namespace logbook;

namespace {
// Records as "|"-cut fields; a loaded log keeps each field padded to its width.
std::vector<Record> records(const QStringList &lines, bool padded)
{
    std::vector<Record> out;
    for (const QString &l : lines) {
        Record r;
        const QStringList f = l.split(u'|');
        for (int n = 0; n < kFields && n < f.size(); ++n)
            r[size_t(n)] = padded ? f[n].leftJustified(kFieldSpecs[size_t(n)].width) : f[n];
        out.push_back(r);
    }
    return out;
}

struct LogRig : PanelRig {
    QPointer<frmLog> log;
    explicit LogRig(int type = rxAR7030, const QByteArray &mask = "111111111111111") : PanelRig(type)
    {
        logRecords.clear();
        logCount = -1;
        slotDimLog() = 1;
        if (type == rxRX320)
            writeFile(dir.filePath("rx320settings.ini"), "7100.5\r\n33\r\n0\r\n2\r\n0\r\n0\r\n40\r\n20\r\n");
        writeFile(dir.filePath("loggridformat.ini"), mask + "\r\n");
        QDir(dir.path()).mkpath("LOG");
        open<frmPanelBase>();
        log = frmLog::open();
    }
    ~LogRig()
    {
        if (log)
            log->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    // The log's file of that name written and loaded through the window's reader.
    void load(const QStringList &lines, const QString &name = "LOG_test.TXT")
    {
        const std::vector<Record> rows = records(lines, true);
        writeFile(dir.filePath("LOG/" + name), logBytes(rows, int32_t(rows.size())));
        fileType = 4;
        chosenFileTable[4] = name;
        QVERIFY(runReader());
    }
    void click(QWidget *w) { QTest::mouseClick(w, Qt::LeftButton); }
    void clickCell(int record, int col)
    {
        QTableView *g = log->grdLog;
        QTest::mouseClick(g->viewport(), Qt::LeftButton, {}, g->visualRect(g->model()->index(record + 1, col)).center());
    }
    // Grid rows of records, visible cells trimmed and joined by "|".
    QString rows() const
    {
        QStringList out;
        const auto *m = log->grdLog->model();
        for (int r = 1; r < m->rowCount(); ++r) {
            QStringList cells;
            for (int c = 0; c < m->columnCount(); ++c)
                if (!log->grdLog->isColumnHidden(c))
                    cells << m->index(r, c).data().toString().trimmed();
            out << cells.join(u'|');
        }
        return out.join(u'\n');
    }
    QString cell(int record, int col) const { return log->grdLog->model()->index(record + 1, col).data().toString(); }
    frmLoginput *form() const { return qobject_cast<frmLoginput *>(frmWelcome::openWindow(Win::frmLoginput)); }
    // "n=text;n=text": each box emptied, then typed into key by key.
    void type(const QString &edits)
    {
        for (const QString &e : edits.split(u';', Qt::SkipEmptyParts)) {
            QLineEdit *t = form()->txtLoginput[size_t(e.section(u'=', 0, 0).toInt())];
            t->clear();
            QTest::keyClicks(t, e.section(u'=', 1));
        }
    }
};

const QStringList kThree = {"20261102|1905|1930|05975|45444|Eng|Radio Tarnholm",
                            "20261102|2010|2025|07490|34333|Eng|Evening Gospel",
                            "20261103|0615|0630|11690|44444|Ara|Radio Jordanel"};

struct FormCase { int row; QString edits, button, grid, message = {}; }; // row -1: a new record
struct DeleteCase { int count, row, answer; QString question; QStringList numbersAndFrequencies; };
struct SaveCase { QString button, name; QList<int> answers; QStringList prompts; bool written, saveAs, open; };
struct ColumnsCase { QByteArray mask; QString titles, row; int length; };
} // namespace
Q_DECLARE_METATYPE(FormCase)
Q_DECLARE_METATYPE(DeleteCase)
Q_DECLARE_METATYPE(SaveCase)
Q_DECLARE_METATYPE(ColumnsCase)

class TestLogWindows : public QObject {
    Q_OBJECT
private slots:
    // The form's OK and Cancel, in add mode (row -1) and on a selected record; mask "1111".
    void recordForm_data()
    {
        QTest::addColumn<FormCase>("c");
        const QString two = "000|20261102|1905|1930|05975\n001|20261102|2010|2025|07490";
        const QString tooLong = "Frequency (kHz): \"123456.5\" does not fit the log's 9 columns.";
        QTest::newRow("830 and a whole frequency") << FormCase{-1, "0=20261123;1=830;3=5970", "cmdOk", two + "\n002|20261123|0830||05970"};
        QTest::newRow("letters in a time box are not typed") << FormCase{-1, "1=8a3:0", "cmdOk", two + "\n002||0830||00000"};
        QTest::newRow("decimal comma") << FormCase{-1, "3=5970,5", "cmdOk", two + "\n002||||05970.500"};
        QTest::newRow("all empty adds nothing") << FormCase{-1, "", "cmdOk", two};
        QTest::newRow("cancel adds nothing") << FormCase{-1, "0=20261123", "cmdCancel", two};
        QTest::newRow("too long is refused") << FormCase{-1, "3=123456.5", "cmdOk", two, tooLong};
        QTest::newRow("change keeps the other fields")
            << FormCase{1, "2=2100", "cmdOk", "000|20261102|1905|1930|05975\n001|20261102|2010|2100|07490"};
        QTest::newRow("change with all emptied") << FormCase{0, "0=;1=;2=;3=;4=;5=;6=", "cmdOk", two};
    }
    void recordForm()
    {
        QFETCH(FormCase, c);
        const auto &[row, edits, button, grid, message] = c;
        LogRig rig(rxAR7030, "1111");
        rig.load(kThree.mid(0, 2));
        if (row >= 0)
            rig.clickCell(row, 0);
        rig.click(row >= 0 ? rig.log->cmdChangerecord : rig.log->cmdAddrecord);
        QVERIFY(rig.form());
        QCOMPARE(rig.form()->lblRecordnr->text(), "Record " + recordNumber(row >= 0 ? row : 2));
        if (row >= 0) // boxes hold the fields without their padding
            QCOMPARE(rig.form()->txtLoginput[3]->text(), rig.cell(row, 4).trimmed());
        rig.type(edits);
        if (!message.isEmpty())
            rig.env.dialogs->expectMsgBox(message);
        rig.click(rig.form()->findChild<QPushButton *>(button));
        if (!message.isEmpty()) { // the form stays with the text, the record still counted
            QVERIFY(rig.form());
            QCOMPARE(logCount, 2);
            rig.click(rig.form()->cmdCancel);
        }
        QVERIFY(!isOpen(Win::frmLoginput));
        QCOMPARE(rig.rows(), grid);
        QCOMPARE(logCount, int32_t(grid.count(u'\n')));
    }

    // Delete: the question names the record and its frequency as loaded; numbers close up and
    // wrap after 999.
    void deleteRecord_data()
    {
        QTest::addColumn<DeleteCase>("c"); // numbers and frequencies of records 0, 1 and the last
        const QString q1 = "record 001 about frequency 07490    ?";
        QTest::newRow("middle") << DeleteCase{3, 1, ui::vbOK, q1, {"000 05975", "001 11690", "001 11690"}};
        QTest::newRow("cancel") << DeleteCase{3, 1, ui::vbCancel, q1, {"000 05975", "001 07490", "002 11690"}};
        QTest::newRow("past 999")
            << DeleteCase{1002, 0, ui::vbOK, "record 000 about frequency 05975    ?", {"000 07490", "001 11690", "000 11690"}};
    }
    void deleteRecord()
    {
        QFETCH(DeleteCase, c);
        const auto &[count, row, answer, question, numbersAndFrequencies] = c;
        LogRig rig(rxAR7030, "0001");
        slotDimLog() = 2;
        QStringList lines = kThree;
        while (lines.size() < count)
            lines << kThree[2];
        rig.load(lines);
        rig.clickCell(row, 0);
        rig.env.dialogs->expectMsgBox("You are sure you want to delete\n" + question, answer);
        rig.click(rig.log->cmdDeleterecord);
        QCOMPARE(rig.env.dialogs->shown.last().title, QStringLiteral("Check on Delete"));
        QCOMPARE(rig.env.dialogs->shown.last().style, ui::vbOKCancel + ui::vbQuestion);
        const int last = logCount;
        QCOMPARE(last, count - (answer == ui::vbOK ? 2 : 1));
        const int at[] = {0, 1, last};
        for (int i = 0; i < 3; ++i)
            QCOMPARE(rig.cell(at[i], 0) + " " + rig.cell(at[i], 1).trimmed(), numbersAndFrequencies[i]);
    }

    // Messages that refuse: no selection, a full log.
    void refusals_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QString>("message");
        QTest::newRow("change") << "cmdChangerecord" << "No record selected";
        QTest::newRow("delete") << "cmdDeleterecord" << "No record selected";
        QTest::newRow("add on a full log")
            << "cmdAddrecord" << "The log is full: it holds 3 records.\nA larger \"Dim LOG\" in the set-up makes room for more.";
    }
    void refusals()
    {
        QFETCH(QString, button);
        QFETCH(QString, message);
        LogRig rig;
        slotDimLog() = 0.002f;
        rig.load(kThree);
        rig.env.dialogs->expectMsgBox(message);
        rig.click(rig.log->findChild<QPushButton *>(button));
        QVERIFY(!isOpen(Win::frmLoginput));
        QCOMPARE(rig.env.dialogs->shown.size(), 1);
        QCOMPARE(rig.env.dialogs->shown.last().prompt, message);
        QCOMPARE(rig.env.dialogs->shown.last().title, QStringLiteral("Logging"));
        QCOMPARE(rig.env.dialogs->shown.last().style, int(ui::vbExclamation));
        QCOMPARE(logCount, 2);
    }

    // Save, Close and Exit: their questions, what reaches the disk, what stays on screen.
    void saving_data()
    {
        QTest::addColumn<SaveCase>("c");
        const QString ask = "File LOG_test.TXT already exist.\nDo you want to replace it ?";
        const QString saved = "The data is now saved\nto the file LOG_test.TXT";
        const QString exit = "Do you want to save data\nfrom the Logging window";
        const QList<int> yes{ui::vbYes, ui::vbOK}, no{ui::vbNo};
        const QString n = "LOG_test.TXT";
        QTest::newRow("save yes") << SaveCase{"cmdSave", n, yes, {ask, saved}, true, false, true};
        QTest::newRow("save no") << SaveCase{"cmdSave", n, no, {ask}, false, false, true};
        QTest::newRow("save without a name")
            << SaveCase{"cmdSave", "", yes, {"File  already exist.\nDo you want to replace it ?",
                                           "This log has no file name yet.\nUse \"Save As\" to give it one."},
                        false, false, true};
        QTest::newRow("close") << SaveCase{"cmdClose", n, no, {ask}, false, false, true};
        QTest::newRow("exit yes") << SaveCase{"cmdExit", n, {ui::vbYes}, {exit}, false, true, true};
        QTest::newRow("exit no") << SaveCase{"cmdExit", n, no, {exit}, false, false, false};
        QTest::newRow("exit cancel") << SaveCase{"cmdExit", n, {ui::vbCancel}, {exit}, false, false, true};
    }
    void saving()
    {
        QFETCH(SaveCase, c);
        const auto &[button, name, answers, prompts, written, saveAsShown, open] = c;
        LogRig rig(rxAR7030, "1");
        rig.load(kThree);
        QFile::remove(rig.dir.filePath("LOG/LOG_test.TXT"));
        rig.click(rig.log->cmdAddrecord); // a typed record joins the loaded ones
        rig.type("0=20261124;3=9410");
        rig.click(rig.form()->cmdOk);
        chosenFileTable[4] = name;
        for (int i = 0; i < prompts.size(); ++i)
            rig.env.dialogs->expectMsgBox(prompts[i], answers.value(i, ui::vbOK));
        bool saveAs = false;
        QTimer poll;
        QObject::connect(&poll, &QTimer::timeout, [&] {
            if (auto *f = qobject_cast<frmSavefile *>(QApplication::activeModalWidget())) {
                saveAs = true;
                f->cmdCancel_Click();
            }
        });
        poll.start(5);
        rig.click(rig.log->findChild<QPushButton *>(button));
        QCOMPARE(rig.env.dialogs->shown.size(), prompts.size());
        QCOMPARE(saveAs, saveAsShown);
        QCOMPARE(bool(rig.log && rig.log->isVisible()), open);
        QCOMPARE(QDir(rig.dir.filePath("LOG")).entryList(QDir::Files), written ? QStringList{"LOG_test.TXT"} : QStringList{});
        if (written)
            QCOMPARE(readFile(rig.dir.filePath("LOG/LOG_test.TXT")),
                     logBytes(records(QStringList(kThree) << "20261124|||09410", false), 4));
        QCOMPARE(logCount, 3); // nothing of these loses the log
        if (button == "cmdClose") {
            QCOMPARE(rig.rows(), QString());
            QVERIFY(!rig.log->cmdSave->isEnabled() && rig.log->cmdsaveas->isEnabled());
        }
    }

    // The mask decides the columns, their titles and widths; the format window changes it.
    void columns_data()
    {
        QTest::addColumn<ColumnsCase>("c");
        const QString first = "000|20261102|1905|1930|05975|45444|Eng|Radio Tarnholm";
        QTest::newRow("all") << ColumnsCase{"111111111111111",
                                            "Nr|Date|UTC|UTC|Frequency|SINPO|Lan|Organisation|Tx location|//Freq|//Freq|"
                                            "//Freq|//Freq|Remarks|Rx|Aux",
                                            first + "||||||||", 156};
        QTest::newRow("demo") << ColumnsCase{"111111110000101",
                                             "Nr|Date|UTC|UTC|Frequency|SINPO|Lan|Organisation|Tx location|Remarks|Aux",
                                             first + "|||", 127};
        QTest::newRow("short line") << ColumnsCase{"0001", "Nr|Frequency", "000|05975", 10};
        QTest::newRow("none") << ColumnsCase{"x", "Nr", "000", 0};
    }
    void columns()
    {
        QFETCH(ColumnsCase, c);
        const auto &[mask, titles, row, length] = c;
        LogRig rig(rxAR7030, mask);
        rig.load(kThree.mid(0, 1));
        QStringList shown;
        for (int c = 0; c <= kFields; ++c)
            if (!rig.log->grdTitles->isColumnHidden(c)) {
                shown << rig.log->grdTitles->text(0, c);
                QCOMPARE(rig.log->grdLog->columnWidth(c), twipsToPixels(rig.log->columnTwips(c)));
            }
        QCOMPARE(shown.join(u'|'), titles);
        QCOMPARE(rig.rows(), row);

        rig.click(rig.log->cmdFormat);
        auto *f = qobject_cast<frmLogFormat *>(frmWelcome::openWindow(Win::frmLogFormat));
        QVERIFY(f);
        QCOMPARE(f->lblLoglength->text(), QString::number(length));
        rig.click(f->chkLogformat[14]); // "Auxilary" flips
        const bool aux = mask.size() > 14 && mask[14] == '1';
        QCOMPARE(f->lblLoglength->text(), QString::number(length + (aux ? -5 : 5)));
        rig.click(f->cmdSave);
        QCOMPARE(readFile(rig.dir.filePath("loggridformat.ini")), maskBytes(logMask));
        QCOMPARE(logMask[14], aux ? u'0' : u'1');
        rig.click(f->cmdOK);
        QVERIFY(!isOpen(Win::frmLogFormat));
        QCOMPARE(rig.log->grdTitles->text(0, shown.size() - (aux ? 1 : 0)), aux ? QString() : QStringLiteral("Aux"));
    }

    // A click tunes where the column's width is that of a frequency (SINPO too); the mode letter
    // of the record's RX setting follows.
    void columnClick_data()
    {
        QTest::addColumn<QString>("title");
        QTest::addColumn<double>("khz");
        QTest::addColumn<QString>("message");
        QTest::newRow("frequency") << "Frequency" << 9410.0 << "";
        QTest::newRow("parallel") << "//Freq" << 6000.0 << "";
        QTest::newRow("sinpo") << "SINPO" << 0.0 << "Frequency outside range";
        QTest::newRow("date") << "Date" << 0.0 << "";
    }
    void columnClick()
    {
        QFETCH(QString, title);
        QFETCH(double, khz);
        QFETCH(QString, message);
        LogRig rig;
        rig.load({"20261102|1905|1930|9410|45444|Eng|Radio|Town|6000|||||usb|"});
        const double before = rig.ar().frequencyKhz();
        const int mode = rig.ar().mode();
        if (!message.isEmpty())
            rig.env.dialogs->expectMsgBox(message);
        int col = 0;
        while (rig.log->grdTitles->text(0, col) != title)
            ++col;
        rig.clickCell(0, col);
        QTest::qWait(0);
        QVERIFY(qAbs(rig.ar().frequencyKhz() - (khz > 0 ? khz : before)) < 0.01);
        QCOMPARE(rig.ar().mode(), khz > 0 || !message.isEmpty() ? 7 : mode);
    }

    // Get Current Setting: date and start from the UTC stamp, the panel's frequency text, the
    // mode letter; a filled date asks first. The form is modal to the log window only.
    void currentSetting_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QString>("frequency");
        QTest::addColumn<QString>("mode");
        QTest::newRow("AR7030") << int(rxAR7030) << "9410.00" << "a";
        QTest::newRow("RX-320") << int(rxRX320) << "9410.000" << "a";
        QTest::newRow("No RX") << int(rxNone) << "" << "";
    }
    void currentSetting()
    {
        QFETCH(int, type);
        QFETCH(QString, frequency);
        QFETCH(QString, mode);
        LogRig rig(type);
        rig.env.clock->set(QDateTime(QDate(2026, 11, 23), QTime(21, 45)));
        rig.welcome->timers.Showtime_Timer();
        rig.click(rig.log->cmdAddrecord);
        frmLoginput *f = rig.form();
        QCOMPARE(f->windowModality(), Qt::WindowModal);
        rig.typeFrequency("9410");
        rig.click(f->cmdGetcurrentsetting);
        auto boxes = [&] {
            return QStringList{f->txtLoginput[0]->text(), f->txtLoginput[1]->text(), f->txtLoginput[3]->text(),
                               f->txtLoginput[13]->text()};
        };
        QCOMPARE(boxes(), (QStringList{"20261123", "2145", frequency, mode}));
        QVERIFY(f->cmdGetcurrentsetting->isEnabled());
        rig.env.clock->set(QDateTime(QDate(2026, 11, 24), QTime(6, 5)));
        rig.welcome->timers.Showtime_Timer();
        const QString replace = "You are sure you want to replace the\ncurrent record by current Rx setting";
        rig.env.dialogs->expectMsgBox(replace, ui::vbNo);
        rig.click(f->cmdGetcurrentsetting);
        QCOMPARE(boxes()[1], QStringLiteral("2145"));
        rig.env.dialogs->expectMsgBox(replace, ui::vbYes);
        rig.click(f->cmdGetcurrentsetting);
        QCOMPARE(boxes().mid(0, 2), (QStringList{"20261124", "0605"}));
        QCOMPARE(rig.env.dialogs->shown.last().title, QStringLiteral("Replace"));
    }

    // The log outlives the window: reopened, it shows no rows and disabled buttons until Format's
    // OK or a load; the files are the window's only while it is open; the mask file must exist.
    void lifecycle()
    {
        LogRig rig(rxAR7030, "1");
        rig.load(kThree);
        QVERIFY(rig.log->cmdSort->isEnabled());
        QCOMPARE(rig.log->lblDbname->text(), QStringLiteral("LOG_test.TXT"));
        rig.log->close();
        QTest::qWait(0);
        QVERIFY(!runReader());
        rig.log = frmLog::open();
        QCOMPARE(rig.rows(), QString());
        QCOMPARE(logCount, 2);
        QVERIFY(!rig.log->cmdChangerecord->isEnabled() && !rig.log->cmdSave->isEnabled());
        rig.click(rig.log->cmdFormat);
        rig.click(qobject_cast<frmLogFormat *>(frmWelcome::openWindow(Win::frmLogFormat))->cmdOK);
        QCOMPARE(rig.rows(), QStringLiteral("000|20261102\n001|20261102\n002|20261103"));
        QCOMPARE(rig.log->grdLog->verticalHeader()->count(), 4); // the view knows its rows

        // Sort, "Date" first, once a load has enabled it.
        QVERIFY(!rig.log->cmdSort->isEnabled());
        rig.load(kThree);
        rig.click(rig.log->cmdSort);
        auto *s = qobject_cast<frmLogsort *>(frmWelcome::openWindow(Win::frmLogsort));
        QVERIFY(s && s->optSort[0]->isChecked());
        rig.click(s->optSort[4]); // language: "Ara" first
        rig.click(s->cmdOK);
        QCOMPARE(rig.rows(), QStringLiteral("000|20261103\n001|20261102\n002|20261102"));

        rig.log->close();
        QTest::qWait(0);
        QFile::remove(rig.dir.filePath("loggridformat.ini"));
        QCOMPARE(errorOf([] { frmLog::open(); }), 53);
        QVERIFY(!isOpen(Win::frmLog) && !frmLog::current());
    }
};
BRELVOX_TEST(TestLogWindows)
#include "tst_log_windows.moc"
