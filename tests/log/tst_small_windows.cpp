// Last 20, Marked and the scratchpad behind an AR7030 panel on its simulator: what each records,
// both scans' order and messages with their timers driven by hand, the FSP files through the
// load and save windows, the clear questions and leaving.
#include "panel_rig.h"
#include "testmain.h"
#include "data/file_store.h"
#include "data/frmLoadfile.h"
#include "data/frmSavefile.h"
#include "log/frmLast20.h"
#include "log/frmMarkfreqs.h"
#include "log/frmScratchpad.h"
#include "log/small_lists.h"
#include "panels/frmAR7030.h"
#include "ui/widgets/list_frame.h"
#include "ui/widgets/spin_button.h"
#include "ui/widgets/text_grid.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QListWidget>
#include <QPushButton>
#include <QWheelEvent>
#include <QtTest/qtestspontaneevent.h>
#include <QtTest>

using smalllists::last20Freqs;
using smalllists::markedFreqs;

namespace {
struct SmallRig : PanelRig {
    frmAR7030 *p = nullptr;
    SmallRig() : PanelRig(rxAR7030)
    {
        last20Freqs.fill({});
        markedFreqs.fill({});
        QDir(dir.path()).mkpath("FSP");
        p = open<frmAR7030>();
    }
    ~SmallRig()
    {
        if (panel)
            panel->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    QString tuned() { return QString::number(ar().frequencyKhz(), 'f', 2); }
    void wheel(int delta)
    {
        QLineEdit *box = p->txtFrequencyA;
        QMouseEvent move(QEvent::MouseMove, QPointF(3, 3), box->mapToGlobal(QPointF(3, 3)), Qt::NoButton, Qt::NoButton,
                         Qt::NoModifier);
        QApplication::sendEvent(box, &move);
        QWheelEvent e(QPointF(5, 5), box->mapToGlobal(QPointF(5, 5)), QPoint(), QPoint(0, delta), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(box, &e);
    }
};

// The first n entries of a list, joined by blanks.
QString head(const smalllists::FrequencyList &l, int n)
{
    return QStringList(l.begin(), l.begin() + n).join(u' ').trimmed();
}

void clickCell(TextGrid *g, int row, int col)
{
    QTest::mouseClick(g->viewport(), Qt::LeftButton, {}, g->visualRect(g->model()->index(row, col)).center());
}

struct PadScanCase { QStringList cells; QString delay, message; int interval; QString tuned; };
struct ClearCase { QString button; int answer; QString prompt, title, after; };
} // namespace
Q_DECLARE_METATYPE(PadScanCase)
Q_DECLARE_METATYPE(ClearCase)

class TestSmallWindows : public QObject {
    Q_OBJECT
private slots:
    // Steps of the spin button and the wheel are recorded unless "Ignore Freq steps" is ticked;
    // a typed frequency always is. Hidden, the window records; unloaded, it does not.
    void last20Records_data()
    {
        QTest::addColumn<bool>("ignoreSteps");
        QTest::addColumn<QString>("actions");
        QTest::addColumn<QString>("expected");
        const QString steps = "type:9500 spin:spinUp wheel:120 spin:spinDown wheel:-120";
        QTest::newRow("steps recorded") << false << steps << "9500.00 9505.00 9510.00 9505.00 9500.00";
        QTest::newRow("steps ignored, typed kept") << true << steps + " type:7255" << "7255.00 9500.00";
        QTest::newRow("recorded while hidden") << false << "hide type:5975 reopen" << "5975.00";
        QTest::newRow("not after the unload") << false << "type:6070 close type:7490 reopen" << "6070.00";
    }
    void last20Records()
    {
        QFETCH(bool, ignoreSteps);
        QFETCH(QString, actions);
        QFETCH(QString, expected);
        SmallRig rig;
        QPointer<frmLast20> w = frmLast20::open();
        w->chkNofreqsteps->setChecked(ignoreSteps);
        for (const QString &a : actions.split(u' ')) {
            const QString arg = a.section(u':', 1);
            if (a.startsWith("type:"))
                rig.typeFrequency(arg);
            else if (a.startsWith("spin:"))
                QTest::mouseClick(rig.p->spnFreqstep->findChild<QWidget *>(arg), Qt::LeftButton);
            else if (a.startsWith("wheel:"))
                rig.wheel(arg.toInt());
            else if (a == "hide")
                QTest::mouseClick(w->cmdExit, Qt::LeftButton);
            else if (a == "close")
                w->close();
            else if (a == "reopen")
                w = frmLast20::open();
        }
        QCOMPARE(head(last20Freqs, 6), expected);
        QVERIFY(w->isVisible() && isOpen(Win::frmLast20));
        QCOMPARE(w->grdLast20->text(0, 0) + "|" + w->grdLast20->text(0, 1), " 0|" + expected.section(u' ', 0, 0));
        VERIFY_DIALOGS_CLEAN(rig.env);
    }

    // The twenty-first drops the oldest; a row click tunes to it, which makes it the newest.
    void last20TwentyFirst()
    {
        SmallRig rig;
        frmLast20 *w = frmLast20::open();
        for (int i = 1; i <= 21; ++i)
            rig.typeFrequency(QString::number(5000 + 10 * i));
        QCOMPARE(w->grdLast20->text(19, 0) + "|" + w->grdLast20->text(19, 1), QString(" 19|5020.00"));
        QVERIFY(last20Freqs[20].isEmpty());
        clickCell(w->grdLast20, 19, 0);
        QCOMPARE(rig.tuned(), QString("5020.00"));
        QCOMPARE(head(last20Freqs, 2), QString("5020.00 5210.00"));
        QTest::mouseClick(w->cmdClear, Qt::LeftButton);
        QVERIFY(head(last20Freqs, 20).isEmpty() && w->grdLast20->text(0, 1).isEmpty());
        VERIFY_DIALOGS_CLEAN(rig.env);
    }

    // Scan/Stop over the marked entries within the limits, newest first, every 2000 ms; nothing
    // to scan stops it with a message rather than ticking on.
    void markedScan_data()
    {
        QTest::addColumn<QString>("actions");
        QTest::addColumn<QString>("tuned");
        QTest::addColumn<QString>("message");
        QTest::addColumn<bool>("scanning");
        const QString three = "mark:9410 mark:5975 mark:7255 scan";
        QTest::newRow("newest first, round again") << three + " tick tick tick tick" << "7255.00 5975.00 9410.00 7255.00" << "" << true;
        QTest::newRow("equal ones both count") << "mark:9410 mark:9410 scan tick tick" << "9410.00 9410.00" << "" << true;
        QTest::newRow("one is not enough") << "mark:9410 scan" << "" << "Not enough valid    \nfrequencies filled  \nin for scanning     " << false;
        QTest::newRow("second click stops") << three + " tick scan tick" << "7255.00 7255.00" << "" << false;
        QTest::newRow("Cls stops it") << three + " tick cls" << "7255.00" << "The scan has stopped:\nNot enough valid" << false;
        QTest::newRow("none left in range") << three + " tick out tick" << "7255.00 7255.00" << "The scan has stopped:" << false;
    }
    void markedScan()
    {
        QFETCH(QString, actions);
        QFETCH(QString, tuned);
        QFETCH(QString, message);
        QFETCH(bool, scanning);
        SmallRig rig;
        frmMarkfreqs *w = frmMarkfreqs::open();
        if (!message.isEmpty())
            rig.env.dialogs->expectMsgBox(message);
        QStringList seen;
        for (const QString &a : actions.split(u' ')) {
            if (a.startsWith("mark:")) {
                rig.typeFrequency(a.mid(5));
                QTest::mouseClick(w->cmdMark, Qt::LeftButton);
            } else if (a == "scan") {
                QTest::mouseClick(w->cmdScan, Qt::LeftButton);
            } else if (a == "tick") {
                w->tmrScan_Timer();
                seen << rig.tuned();
            } else if (a == "cls") {
                QTest::mouseClick(w->cmdCls, Qt::LeftButton);
            } else if (a == "out") {
                markedFreqs.fill("40000");
            }
        }
        QCOMPARE(seen.join(u' '), tuned);
        QCOMPARE(w->scanning(), scanning);
        QCOMPARE(w->cmdScan->text(), QString(scanning ? "Stop" : "Scan"));
        if (scanning)
            QCOMPARE(w->tmrScan.interval(), 2000);
        if (!message.isEmpty())
            QCOMPARE(rig.env.dialogs->shown.value(0).title, QString("Error"));
        VERIFY_DIALOGS_CLEAN(rig.env);
    }

    // Load through the load window: the odd lines as the reader takes them, the notes of rows the
    // file lacks kept. Save As writes ten lines; once the window is gone kind 9 has no reader.
    void scratchpadFiles()
    {
        SmallRig rig;
        frmScratchpad *w = frmScratchpad::open();
        w->txtNotes[2]->setText("kept");
        w->grdScratchpad->rows()->setText(3, 0, "gone");
        writeFile(rig.dir.filePath("FSP/FSP_evening.TXT"), "Tarn, Holm,5975,6070,\r\nno comma\r\n");
        whenModal<frmLoadfile>([](frmLoadfile *l) {
            l->list->setCurrentRow(0);
            QTest::mouseClick(l->cmdOK, Qt::LeftButton);
        });
        QTest::mouseClick(w->cmdLoad, Qt::LeftButton);
        QCOMPARE(fileType, int16_t(9));
        QCOMPARE(w->txtNotes[0]->text() + "|" + w->grdScratchpad->text(0, 0) + "|" + w->grdScratchpad->text(0, 2),
                 QString("Tarn| Holm|6070"));
        QCOMPARE(w->txtNotes[1]->text() + w->txtNotes[2]->text() + w->grdScratchpad->text(3, 0), QString("kept"));

        whenModal<frmSavefile>([](frmSavefile *s) {
            s->cmbSavefile->setEditText("FSP_again.TXT");
            QTest::mouseClick(s->cmdOK, Qt::LeftButton);
        });
        rig.env.dialogs->expectMsgBox("The data is now saved");
        QTest::mouseClick(w->cmdSave, Qt::LeftButton);
        QCOMPARE(readFile(rig.dir.filePath("FSP/FSP_again.TXT")),
                 "Tarn, Holm,5975,6070,,,,,,\r\n,,,,,,,,,\r\nkept,,,,,,,,,\r\n" + QByteArray(",,,,,,,,,\r\n").repeated(7));
        rig.env.dialogs->expectMsgBox("Do you want to save data\nfrom the Frequency Scratchpad", ui::vbNo);
        QTest::mouseClick(w->cmdExit, Qt::LeftButton);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        fileType = 9;
        QVERIFY(!isOpen(Win::frmScratchpad) && !runReader() && !runWriter());
        VERIFY_DIALOGS_CLEAN(rig.env);
    }

    // "To Scratchpad " copies the panel's text into the active cell; a click on a cell tunes to
    // it, an empty one is passed over; the frequency box follows the hub.
    void scratchpadCells()
    {
        SmallRig rig;
        frmScratchpad *w = frmScratchpad::open();
        rig.typeFrequency("7255");
        QCOMPARE(w->frame()->txtFrequencyA->text(), QString("7255.00"));
        clickCell(w->grdScratchpad, 4, 6);
        QTest::mouseClick(w->cmdRx2sp, Qt::LeftButton);
        QCOMPARE(w->grdScratchpad->text(4, 6), QString("7255.00"));
        rig.typeFrequency("9410");
        clickCell(w->grdScratchpad, 4, 5);
        QCOMPARE(rig.tuned(), QString("9410.00"));
        clickCell(w->grdScratchpad, 4, 6);
        QCOMPARE(rig.tuned(), QString("7255.00"));
        VERIFY_DIALOGS_CLEAN(rig.env);
    }

    void scratchpadClears_data()
    {
        QTest::addColumn<ClearCase>("c");
        const QString cell = "You are sure you want to clear\nthe active scratchpad gridcell";
        const QString grid = "You are sure you want to clear\nthe whole scratchpad grid";
        const QString notes = "You are sure you want\nto clear the Notes textboxes";
        QTest::newRow("cell, Yes") << ClearCase{"cmdClrcell", ui::vbYes, cell, "Clear grid cell check", "|b|n"};
        QTest::newRow("cell, No") << ClearCase{"cmdClrcell", ui::vbNo, cell, "Clear grid cell check", "a|b|n"};
        QTest::newRow("grid, Yes") << ClearCase{"cmdClrgrid", ui::vbYes, grid, "Clear grid check", "||n"};
        QTest::newRow("grid, No") << ClearCase{"cmdClrgrid", ui::vbNo, grid, "Clear grid check", "a|b|n"};
        QTest::newRow("notes, Yes") << ClearCase{"cmdClrnotes", ui::vbYes, notes, "Clear Notes check", "a|b|"};
    }
    void scratchpadClears()
    {
        QFETCH(ClearCase, c);
        SmallRig rig;
        frmScratchpad *w = frmScratchpad::open();
        w->grdScratchpad->rows()->setText(1, 1, "a");
        w->grdScratchpad->rows()->setText(9, 7, "b");
        w->txtNotes[9]->setText("n");
        w->grdScratchpad->setCurrentIndex(w->grdScratchpad->model()->index(1, 1));
        rig.env.dialogs->expectMsgBox(c.prompt, c.answer);
        QTest::mouseClick(w->findChild<QPushButton *>(c.button), Qt::LeftButton);
        QCOMPARE(w->grdScratchpad->text(1, 1) + "|" + w->grdScratchpad->text(9, 7) + "|" + w->txtNotes[9]->text(), c.after);
        QCOMPARE(rig.env.dialogs->shown.value(0).title, c.title);
        QCOMPARE(rig.env.dialogs->shown.value(0).style, ui::vbYesNo + ui::vbQuestion);
        VERIFY_DIALOGS_CLEAN(rig.env);
    }

    // The active row's cells within the limits, equal ones each, at the typed delay; the other
    // buttons wait until Stop.
    void scratchpadScan_data()
    {
        QTest::addColumn<PadScanCase>("c");
        const QString few = "Not enough valid    \nfrequencies filled  \nin for scanning     ";
        const QString delay = "Scan delay outside range.\nSelect value between 1 and 60 sec.";
        QTest::newRow("in order, round again") << PadScanCase{{"5975", "", "abc", "9410", "3"}, "1", "", 1000, "5975.00 9410.00 5975.00"};
        QTest::newRow("equal ones both") << PadScanCase{{"", "7255", "7255"}, "60", "", 60000, "7255.00 7255.00 7255.00"};
        QTest::newRow("one in range") << PadScanCase{{"5975", "40000", "9.99"}, "5", few, 0, ""};
        QTest::newRow("delay 0") << PadScanCase{{"5975", "9410"}, "0", delay, 0, ""};
        QTest::newRow("delay 60.5") << PadScanCase{{"5975", "9410"}, "60.5", delay, 0, ""};
        QTest::newRow("delay 1.5") << PadScanCase{{"5975", "9410"}, "1.5", "", 1500, "5975.00 9410.00 5975.00"};
    }
    void scratchpadScan()
    {
        QFETCH(PadScanCase, c);
        SmallRig rig;
        frmScratchpad *w = frmScratchpad::open();
        for (int i = 0; i < c.cells.size(); ++i)
            w->grdScratchpad->rows()->setText(6, i, c.cells[i]);
        w->grdScratchpad->rows()->setText(5, 0, "6070");
        w->grdScratchpad->setCurrentIndex(w->grdScratchpad->model()->index(6, 7));
        w->txtScandelay->setText(c.delay);
        if (!c.message.isEmpty())
            rig.env.dialogs->expectMsgBox(c.message);
        QTest::mouseClick(w->cmdScan, Qt::LeftButton);
        QCOMPARE(w->scanning(), c.interval > 0);
        QStringList seen;
        if (w->scanning()) {
            QCOMPARE(w->tmrScan.interval(), c.interval);
            QVERIFY(!w->cmdLoad->isEnabled() && !w->cmdExit->isEnabled() && w->cmdStop->isEnabled());
            for (int i = 0; i < 3; ++i) {
                w->tmrScan_Timer();
                seen << rig.tuned();
            }
            QTest::mouseClick(w->cmdStop, Qt::LeftButton);
        }
        QCOMPARE(seen.join(u' '), c.tuned);
        QVERIFY(!w->scanning() && w->cmdLoad->isEnabled() && w->cmdScan->isEnabled());
        if (!c.message.isEmpty())
            QCOMPARE(rig.env.dialogs->shown.value(0).style, c.message.startsWith("Not enough") ? 48 : 16);
        VERIFY_DIALOGS_CLEAN(rig.env);
    }

    // The close box asks as Exit does: Cancel stays, No unloads; the panel's end closes it unasked.
    void scratchpadCloseBox_data()
    {
        QTest::addColumn<int>("answer");
        QTest::addColumn<bool>("open");
        QTest::newRow("Cancel") << int(ui::vbCancel) << true;
        QTest::newRow("No") << int(ui::vbNo) << false;
    }
    void scratchpadCloseBox()
    {
        QFETCH(int, answer);
        QFETCH(bool, open);
        SmallRig rig;
        QPointer<frmScratchpad> w = frmScratchpad::open();
        rig.env.dialogs->expectMsgBox("Do you want to save data\nfrom the Frequency Scratchpad", answer);
        QCloseEvent box; // as the title bar's close box sends it
        QSpontaneKeyEvent::setSpontaneous(&box);
        qApp->notify(w, &box); // sendEvent would take the flag off
        QCoreApplication::processEvents();
        QCOMPARE(isOpen(Win::frmScratchpad), open);
        rig.panel->close();
        QVERIFY(!isOpen(Win::frmScratchpad));
        VERIFY_DIALOGS_CLEAN(rig.env);
    }
};
BRELVOX_TEST(TestSmallWindows)
#include "tst_small_windows.moc"
