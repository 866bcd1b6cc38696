// The pairs scan behind a panel on its simulator: the order of the steps and the side tuned, the
// rows around the active one, the boxes' fallbacks, SFP files in and out, the guard against a
// range without a tick, and the NRD remote lock at Start and Stop.
#include "panel_rig.h"
#include "testmain.h"
#include "data/file_store.h"
#include "panels/frmAR7030.h"
#include "panels/frmNRD535.h"
#include "panels/menu_holds_qt.h"
#include "scan/frmScanpairs.h"
#include "scan/scan_pairs.h"

#include <QCheckBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QtTest>

using namespace scanpairs;

namespace {
// Pair i: A 3000 + 10 i, B 4000 + 10 i, remark "r<i>"; ticked where ticks has a "1" at i.
QByteArray pairFile(const QString &ticks)
{
    QByteArray out;
    for (int i = 0; i < ticks.size(); ++i)
        out += QStringLiteral("%1,%2, %3,r%4\r\n").arg(3000 + 10 * i).arg(4000 + 10 * i).arg(ticks[i]).arg(i).toLatin1();
    return out;
}

struct PairsRig : PanelRig {
    frmScanpairs *w = nullptr;
    explicit PairsRig(int type = rxAR7030) : PanelRig(type)
    {
        resetPairs();
        QDir(dir.path()).mkpath("SFP");
        open<frmPanelBase>();
        w = frmScanpairs::open();
    }
    ~PairsRig()
    {
        if (panel)
            panel->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        resetPairs();
    }
    void load(const QByteArray &bytes)
    {
        writeFile(dir.filePath("SFP/SFP_test.TXT"), bytes);
        fileType = 12;
        chosenFileTable[12] = "SFP_test.TXT";
        QVERIFY(runReader());
    }
    QString column(const std::array<QLabel *, kRows> &labels) const
    {
        QStringList t;
        for (QLabel *l : labels)
            t << l->text();
        return t.join(u'|');
    }
};

struct PairScanCase { QString ticks, start, end; int side; int ticksRun; QString tuned; bool guard; };
struct PairBoxCase { QString box, text, shown; double value; };
struct PairLockCase { int lockState; QString end; QByteArray atStart, atEnd; };
} // namespace
Q_DECLARE_METATYPE(PairScanCase)
Q_DECLARE_METATYPE(PairBoxCase)
Q_DECLARE_METATYPE(PairLockCase)

class TestScanPairs : public QObject {
    Q_OBJECT
private slots:
    // Each tick tunes the next ticked pair of the range on the chosen side; the range wraps
    // through the end of the list; a range without a tick stops as Stop does and says so.
    void scanOrder_data()
    {
        QTest::addColumn<PairScanCase>("c");
        QTest::newRow("over the end") << PairScanCase{"1111111111", "8", "2", 0, 6, "3080 3090 3000 3010 3020 3080", false};
        QTest::newRow("plain range, B side") << PairScanCase{"1111111111", "3", "5", 1, 4, "4030 4040 4050 4030", false};
        QTest::newRow("unticked passed over") << PairScanCase{"0110000001", "8", "2", 0, 4, "3090 3010 3020 3090", false};
        QTest::newRow("tick other than 1 counts") << PairScanCase{"0020000000", "0", "9", 0, 2, "3020 3020", false};
        QTest::newRow("ticks only outside the range") << PairScanCase{"1000011111", "1", "4", 0, 1, "", true};
        QTest::newRow("end falls back to the last") << PairScanCase{"0000000001", "7", "12", 0, 2, "3090 3090", false};
    }
    void scanOrder()
    {
        QFETCH(PairScanCase, c);
        PairsRig rig;
        rig.load(pairFile(c.ticks));
        rig.w->txtStart->setText(c.start);
        rig.w->txtEnd->setText(c.end);
        QTest::mouseClick(rig.w->optScanAB[size_t(c.side)], Qt::LeftButton);
        QTest::mouseClick(rig.w->cmdStart, Qt::LeftButton);
        QVERIFY(rig.w->scanning() && !rig.w->cmdLoad->isEnabled() && !rig.w->optScanAB[0]->isEnabled());
        if (c.guard)
            rig.env.dialogs->expectMsgBox("No pair from Scan Start to Scan End is ticked");
        QStringList tuned;
        for (int i = 0; i < c.ticksRun && rig.w->scanning(); ++i) {
            rig.w->tmrScanpairs_Timer();
            if (rig.w->scanning())
                tuned << QString::number(qRound(rig.ar().frequencyKhz()));
        }
        QCOMPARE(tuned.join(u' '), c.tuned);
        QCOMPARE(rig.w->scanning(), !c.guard);
        QCOMPARE(rig.w->cmdStart->isEnabled(), c.guard);
        VERIFY_DIALOGS_CLEAN(rig.env);
    }

    // The active row shows its pair always, the rows around it only the pairs of the range.
    void rows_data()
    {
        QTest::addColumn<QString>("start");
        QTest::addColumn<QString>("end");
        QTest::addColumn<int>("shown");
        QTest::addColumn<QString>("numbers");
        QTest::newRow("head of the list") << "0" << "9" << 0 << "||||| 0| 1| 2| 3| 4| 5";
        QTest::newRow("outside the range") << "3" << "4" << 7 << "| 3| 4||| 7|||||";
        QTest::newRow("wrapped range") << "8" << "1" << 9 << "|||| 8| 9|||||";
        QTest::newRow("wrapped, at the head") << "8" << "1" << 1 << "|||| 0| 1|||||";
    }
    void rows()
    {
        QFETCH(QString, start);
        QFETCH(QString, end);
        QFETCH(int, shown);
        QFETCH(QString, numbers);
        PairsRig rig;
        rig.load(pairFile("1010101010"));
        rig.w->txtStart->setText(start);
        rig.w->txtEnd->setText(end);
        rig.w->vsbActnr->setValue(shown);
        QCOMPARE(rig.column(rig.w->lblNr), numbers);
        const int i = shown;
        QCOMPARE(rig.w->lblChannelB[5]->text() + rig.w->txtRemarks[5]->text(), QStringLiteral("%1r%2").arg(4000 + 10 * i).arg(i));
        QCOMPARE(rig.w->chkChannel[5]->isChecked(), i % 2 == 0);
        // A click on a channel tunes to it while no scan runs.
        QTest::mouseClick(rig.w->lblChannelB[5], Qt::LeftButton);
        QCOMPARE(qRound(rig.ar().frequencyKhz()), 4000 + 10 * i);
    }

    // The boxes take what lies within their bounds and fall back silently otherwise: the start
    // to 0, the end to the last pair, the delay to one second.
    void boxes_data()
    {
        QTest::addColumn<PairBoxCase>("c");
        QTest::newRow("delay 0.4") << PairBoxCase{"txtDelay", "0.4", "1", 1000};
        QTest::newRow("delay 61") << PairBoxCase{"txtDelay", "61", "1", 1000};
        QTest::newRow("delay 0,5") << PairBoxCase{"txtDelay", "0,5", "0,5", 500};
        QTest::newRow("delay 60") << PairBoxCase{"txtDelay", "60", "60", 60000};
        QTest::newRow("end above the last") << PairBoxCase{"txtEnd", "10", " 9", 9};
        QTest::newRow("end within") << PairBoxCase{"txtEnd", "4", "4", 4};
        QTest::newRow("start below 0") << PairBoxCase{"txtStart", "-1", "0", 0};
        QTest::newRow("start above the last") << PairBoxCase{"txtStart", "10", "0", 0};
        QTest::newRow("start 3.7") << PairBoxCase{"txtStart", "3.7", "3.7", 3};
    }
    void boxes()
    {
        QFETCH(PairBoxCase, c);
        PairsRig rig;
        rig.load(pairFile("1111111111"));
        auto *box = rig.w->findChild<QLineEdit *>(c.box);
        box->setText(c.text);
        QCOMPARE(box->text(), c.shown);
        QTest::mouseClick(rig.w->cmdStart, Qt::LeftButton);
        const double value = c.box == "txtStart" ? rig.w->ScanFirst()
                             : c.box == "txtEnd" ? rig.w->ScanLast() : rig.w->tmrScanpairs.interval();
        QCOMPARE(value, c.value);
        QCOMPARE(rig.w->ScanPos(), rig.w->ScanFirst());
    }

    // An SFP file read as four items a line, blanks around each dropped; a file with no pair or
    // with a line that is not one is refused with a message and leaves the pairs as they were.
    void files_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("message");
        QTest::addColumn<QByteArray>("saved");
        QTest::newRow("blanks dropped, blank end lines") << QByteArray(" 7255 , 7260 ,1 , a b \r\n5975,5980,0,\n\r\n \r\n")
                                                         << "" << QByteArray("7255,7260, 1,a b\r\n5975,5980, 0,\r\n");
        QTest::newRow("tick -1 kept") << QByteArray("1,2,-1,x") << "" << QByteArray("1,2,-1,x\r\n");
        QTest::newRow("no line") << QByteArray() << "It holds no pair." << pairFile("10");
        QTest::newRow("blank lines only") << QByteArray("\r\n  \r\n") << "It holds no pair." << pairFile("10");
        QTest::newRow("three items") << QByteArray("3000,4000, 1,x\r\n3010,4010,1\r\n") << "Line 2 is not a pair" << pairFile("10");
        QTest::newRow("comma in a remark") << QByteArray("3000,4000, 1,x,y\r\n") << "Line 1 is not a pair" << pairFile("10");
        QTest::newRow("tick past 16 bits") << QByteArray("3000,4000,40000,x\r\n") << "Line 1 is not a pair" << pairFile("10");
    }
    void files()
    {
        QFETCH(QByteArray, file);
        QFETCH(QString, message);
        QFETCH(QByteArray, saved);
        PairsRig rig;
        rig.load(pairFile("10"));
        const QString numbers = rig.column(rig.w->lblNr);
        if (!message.isEmpty())
            rig.env.dialogs->expectMsgBox(message);
        rig.load(file);
        VERIFY_DIALOGS_CLEAN(rig.env);
        if (!message.isEmpty()) {
            QCOMPARE(rig.env.dialogs->shown.value(0).title, QString("Load Pairs"));
            QCOMPARE(rig.column(rig.w->lblNr), numbers);
        }
        chosenFileTable[12] = "SFP_out.TXT";
        QVERIFY(runWriter());
        QCOMPARE(readFile(rig.dir.filePath("SFP/SFP_out.TXT")), saved);
    }

    // A tick and a remark are stored when their row is left, also by scrolling it away; the
    // remark box takes no comma; the pairs outlive the window.
    void editAndSave()
    {
        PairsRig rig;
        rig.load(pairFile("010"));
        QApplication::setActiveWindow(rig.w);
        rig.w->chkChannel[5]->setFocus();
        QTest::mouseClick(rig.w->chkChannel[5], Qt::LeftButton);
        rig.w->txtRemarks[6]->setFocus();
        rig.w->txtRemarks[6]->clear();
        QTest::keyClicks(rig.w->txtRemarks[6], "net, day");
        rig.w->vsbActnr->setValue(2);
        QCOMPARE(rig.w->txtRemarks[5]->text(), QString("r2"));
        rig.w->close();
        QCOMPARE(menuHoldCount("mnuSmeter"), 0);
        QCOMPARE(runWriter(), false);
        rig.w = frmScanpairs::open();
        QCOMPARE(menuHoldCount("mnuScanFreqlist"), 1);
        QCOMPARE(rig.w->lblFilename->text(), QString("SFP_test.TXT"));
        chosenFileTable[12] = "SFP_out.TXT";
        QVERIFY(runWriter());
        QCOMPARE(readFile(rig.dir.filePath("SFP/SFP_out.TXT")), QByteArray("3000,4000, 1,r0\r\n3010,4010, 1,net day\r\n3020,4020, 0,r2\r\n"));
        // An edit left by loading goes to the pair it belonged to, never into the new ones.
        QApplication::setActiveWindow(rig.w);
        rig.w->txtRemarks[5]->setFocus();
        rig.w->txtRemarks[5]->setText("stale");
        rig.load(pairFile("1"));
        QCOMPARE(sfpBytes(), QByteArray("3000,4000, 1,r0\r\n"));
    }

    // The hub's message for a pair out of the receiver's range waits for the listener; the ticks
    // that come meanwhile are passed over, and the scan goes on after it.
    void outOfRangeWhileWaiting()
    {
        PairsRig rig;
        rig.load("99999,1, 1,far\r\n3000,4000, 1,near\r\n");
        QTest::mouseClick(rig.w->cmdStart, Qt::LeftButton);
        struct Nested : ui::DialogBackend {
            frmScanpairs *w;
            int shown = 0;
            int msgBox(const QString &, int, const QString &) override
            {
                ++shown;
                w->tmrScanpairs_Timer();
                return ui::vbOK;
            }
            QString inputBox(const QString &, const QString &, const QString &def) override { return def; }
        };
        auto nested = std::make_shared<Nested>();
        nested->w = rig.w;
        const auto old = ui::installDialogs(nested);
        rig.w->tmrScanpairs_Timer();
        ui::installDialogs(old);
        QCOMPARE(nested->shown, 1);
        rig.w->tmrScanpairs_Timer();
        QCOMPARE(qRound(rig.ar().frequencyKhz()), 3000);
    }

    // On the NRD sets Start takes the remote lock and Stop (or leaving while scanning) gives it
    // back, unless the listener has locked the panel himself.
    void lock_data()
    {
        QTest::addColumn<PairLockCase>("c");
        QTest::newRow("Start, Stop") << PairLockCase{0, "cmdStop", "H1\rH1\r", "H0\rH0\r"};
        QTest::newRow("Start, Exit") << PairLockCase{0, "cmdExit", "H1\rH1\r", "H0\rH0\r"};
        QTest::newRow("panel locked by hand") << PairLockCase{1, "cmdStop", "", ""};
        QTest::newRow("panel closed while scanning") << PairLockCase{0, "panel", "H1\rH1\r", "line closed"};
    }
    void lock()
    {
        QFETCH(PairLockCase, c);
        PairsRig rig(rxNRD535);
        rig.load(pairFile("11"));
        lockState = int16_t(c.lockState);
        auto locks = [&](qsizetype from) {
            QByteArray out;
            const QByteArray w = rig.line()->written.mid(from);
            for (qsizetype i = w.indexOf('H'); i >= 0; i = w.indexOf('H', i + 1))
                out += w.mid(i, 3);
            return out;
        };
        qsizetype from = rig.wireSize();
        QTest::mouseClick(rig.w->cmdStart, Qt::LeftButton);
        QCOMPARE(locks(from), c.atStart);
        rig.w->tmrScanpairs_Timer();
        QCOMPARE(qRound(rig.nrds.back()->frequencyKhz()), 3000);
        QPointer<frmScanpairs> w = rig.w;
        from = rig.wireSize();
        if (c.end == "panel")
            rig.panel->close();
        else
            QTest::mouseClick(rig.w->findChild<QPushButton *>(c.end), Qt::LeftButton);
        QCOMPARE(rig.line() ? locks(from) : QByteArray("line closed"), c.atEnd);
        QCOMPARE(isOpen(Win::frmScanpairs), c.end == "cmdStop");
        QVERIFY(!w || !w->scanning());
    }
};
BRELVOX_TEST(TestScanPairs)
#include "tst_scanpairs.moc"
