// The frequency list scan: the cycle and its pass count, the trend thresholds and the SFL file at
// the unit; the window on an AR7030 with a band of test stations and a fixed clock, its timer
// driven by hand; the NRD remote lock; the load and save windows; the ways the window goes.
#include "panel_rig.h"
#include "testmain.h"
#include "data/file_store.h"
#include "data/frmLoadfile.h"
#include "data/frmSavefile.h"
#include "panels/menu_holds_qt.h"
#include "scan/frmScanlist.h"
#include "scan/scan_list.h"
#include "ui/widgets/chart_canvas.h"

#include <QAction>
#include <QDir>
#include <QLineEdit>
#include <QComboBox>
#include <QListWidget>
#include <QPushButton>
#include <QtTest>

using namespace scanlist;

namespace {
// "3=9410 7=-": the places named, every other place "-".
Places placesOf(const QString &items)
{
    Places p;
    p.fill(QStringLiteral("-"));
    for (const QString &item : items.split(u' ', Qt::SkipEmptyParts))
        p[size_t(item.section(u'=', 0, 0).toInt())] = item.section(u'=', 1);
    return p;
}

QString joined(const Places &p) { return QStringList(p.begin(), p.end()).join(u'|'); }

// Test stations: one that comes on the air at 12:00 UTC, one always there; no fading to speak of.
SimBand testBand()
{
    return SimBand({{9410.0, 5, 15, 12 * 60, 18 * 60, 1e9, "Test Alpha"}, {6070.0, 5, 8, 0, 0, 1e9, "Test Beta"}});
}

struct ListRig : PanelRig {
    frmScanlist *w = nullptr;
    explicit ListRig(int type = rxAR7030) : PanelRig(type)
    {
        env.clock->set(QDateTime(QDate(2026, 3, 1), QTime(11, 59, 5), Qt::UTC));
        prepareAr = [](Ar7030Sim &s) { s.setBand(testBand()); };
        QDir(dir.path()).mkpath("SFL");
        open<frmPanelBase>();
        w = frmScanlist::open();
    }
    ~ListRig()
    {
        if (panel)
            panel->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    QString tuned() { return QString::number(ar().frequencyKhz(), 'f', 0); }
    // Enabled flags of Start, Stop, Continue, Cls, Load List, Save List.
    QString buttons() const
    {
        QString s;
        for (QPushButton *b : {w->cmdStart, w->cmdStop, w->cmdContinue, w->cmdCls, w->cmdLoad, w->cmdsaveas})
            s += b->isEnabled() ? u'1' : u'0';
        return s;
    }
};
struct MoveCase { QString places; double lower; int runCount; QString visited; int runsAfter; };
struct TrendCase { int n; float older, newer; int calls, age10, age9; };
// Actions, then what was tuned after each start, tick and place click, lblRuns, the enabled
// flags of Start, Stop, Continue, Cls, Load List and Save List, and "title|text" of a message.
struct ScanCase { QString actions, tuned, runs, buttons, message; };
// The remote command Start leaves the set in (none at all: empty), and the bytes of Stop.
struct LockCase { int type; bool userLock; QByteArray startLast, stopBytes; };
} // namespace
Q_DECLARE_METATYPE(MoveCase)
Q_DECLARE_METATYPE(TrendCase)
Q_DECLARE_METATYPE(ScanCase)
Q_DECLARE_METATYPE(LockCase)

class TestScanlist : public QObject {
    Q_OBJECT
private slots:
    // The move to the next valid place from place 0, as each tick makes it.
    void moveOn_data()
    {
        QTest::addColumn<MoveCase>("c");
        QTest::newRow("only place 7: a pass a tick") << MoveCase{"7=9410", 10, 0, "7 7 7", 2};
        QTest::newRow("dash and out of range passed over") << MoveCase{"0=- 3=5975 5=40000 6=6070", 10, 0, "3 6 3 6", 1};
        QTest::newRow("dash is 0: visited at lower limit 0") << MoveCase{"3=5975", 0, 0, "1 2 3 4", 0};
        QTest::newRow("comma as decimal point") << MoveCase{"2=9410,5 4=0,5", 10, 0, "2 2", 1};
        QTest::newRow("9999 goes on to 1") << MoveCase{"19=9410", 10, 9998, "19 19 19", 1};
        QTest::newRow("nothing valid: no move") << MoveCase{"", 10, 0, "-1 -1", 0};
    }
    void moveOn()
    {
        QFETCH(MoveCase, c);
        ListScan s;
        s.NewRun = true;
        s.beginTick();
        s.RunCount = int16_t(c.runCount);
        QStringList seen;
        for (int i = 0; i < c.visited.count(u' ') + 1; ++i)
            seen << QString::number(s.moveOn(placesOf(c.places), c.lower, 30000.0).place);
        QCOMPARE(seen.join(u' ') + " runs " + QString::number(s.RunCount), c.visited + " runs " + QString::number(c.runsAfter));
    }

    // Place 0's two last blocks of n levels; what the calls of calctrend leave in its newest
    // cells, and in those of a place that heard nothing.
    void calctrend_data()
    {
        QTest::addColumn<TrendCase>("c");
        QTest::newRow("two calls only counted") << TrendCase{3, 2, 5, 2, 0, 0};
        QTest::newRow("third call paints") << TrendCase{3, 2, 5, 3, 10, 15};
        QTest::newRow("fourth shifts it on") << TrendCase{3, 5, 2, 4, 12, 12};
        QTest::newRow("+half S per run is steady") << TrendCase{4, 2, 2.5f, 3, 14, 15};
        QTest::newRow("above it rising") << TrendCase{4, 2, 2.75f, 3, 10, 15};
        QTest::newRow("-half S per run is steady") << TrendCase{4, 2.5f, 2, 3, 14, 15};
        QTest::newRow("below it falling") << TrendCase{4, 2.75f, 2, 3, 12, 15};
        QTest::newRow("ten runs a block") << TrendCase{10, 1, 3, 3, 10, 15};
    }
    void calctrend()
    {
        QFETCH(TrendCase, c);
        ListScan s;
        s.RunsPerUpdate = int16_t(c.n);
        s.NewTrend = true;
        s.TrendCalls = 7;
        for (int j = 0; j < c.n; ++j) {
            s.ListLevels[0][kAges - 2 * c.n + j] = c.older;
            s.ListLevels[0][kAges - c.n + j] = c.newer;
        }
        bool painted = false;
        for (int k = 0; k < c.calls; ++k)
            painted = s.calctrend();
        QCOMPARE(painted, c.calls >= 3);
        QCOMPARE(QList<int>({s.ListTrend[0][kTrendAges], s.ListTrend[0][kTrendAges - 1], s.ListTrend[19][kTrendAges]}),
                 QList<int>({c.age10, c.age9, c.calls >= 3 ? 14 : 0}));
    }

    void sflRead_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<double>("lower");
        QTest::addColumn<QString>("places");
        QTest::newRow("comma, out of range, dash") << QByteArray("9410,5\r\n40000\r\n5\r\n-\r\n7255kHz\r\n") << 10.0
                                                   << "0=9410.5 4=7255kHz";
        QTest::newRow("lone LF and empty lines") << QByteArray("\n6070\n\n9420") << 10.0 << "1=6070 3=9420";
        QTest::newRow("lower limit 0 keeps what reads as 0") << QByteArray("-\r\nnone\r\n-3\r\n") << 0.0 << "1=none";
        QTest::newRow("the demo's list") << readFile(QFINDTESTDATA("../../demo/SFL/SFL_demo.TXT")) << 10.0
                                         << "0=3330 1=4625 2=5000 3=5975 4=6070 5=7255 6=7490 7=9410 8=9420 9=10000 "
                                            "10=11690 11=13570 12=15400 13=17860 14=21500";
        QTest::newRow("past twenty lines not read") << QByteArray("-\r\n").repeated(19) + "6070\r\n7255\r\n" << 10.0
                                                    << "19=6070";
    }
    void sflRead()
    {
        QFETCH(QByteArray, file);
        QFETCH(double, lower);
        QFETCH(QString, places);
        QCOMPARE(joined(readSfl(file, lower, 30000.0)), joined(placesOf(places)));
    }

    // txtUpdate and txtDelay at Start: the fallbacks, shown in their boxes; a value within range
    // stands as typed.
    void startFallbacks_data()
    {
        QTest::addColumn<QString>("update");
        QTest::addColumn<QString>("delay");
        QTest::addColumn<QString>("result"); // the boxes, RunsPerUpdate, the interval
        QTest::newRow("2 and 0.5") << "2" << "0.5" << "5 2 5 2000";
        QTest::newRow("11 and 10") << "11" << "10" << "5 10 5 10000";
        QTest::newRow("3 and 1") << "3" << "1" << "3 1 3 1000";
        QTest::newRow("10 and 1,5") << "10" << "1,5" << "10 1,5 10 1500";
        QTest::newRow("words and 10.5") << "many" << "10.5" << "5 2 5 2000";
    }
    void startFallbacks()
    {
        QFETCH(QString, update);
        QFETCH(QString, delay);
        QFETCH(QString, result);
        ListRig rig;
        rig.w->txtFreqlist[5]->setText("6070");
        rig.w->txtUpdate->setText(update);
        rig.w->txtDelay->setText(delay);
        QTest::mouseClick(rig.w->cmdStart, Qt::LeftButton);
        QCOMPARE(QStringList({rig.w->txtUpdate->text(), rig.w->txtDelay->text(), QString::number(rig.w->state().RunsPerUpdate),
                              QString::number(rig.w->tmrScanlist.interval())}).join(u' '), result);
        QVERIFY(rig.w->scanning());
    }

    void scan_data()
    {
        QTest::addColumn<ScanCase>("c");
        QTest::newRow("empty list") << ScanCase{"start", "1000", "0000", "100011", "Error|No valid\nFrequencies\nfilled in"};
        QTest::newRow("one valid place") << ScanCase{"7=9410 start tick tick tick", "1000 9410 9410 9410", "0002", "010000", ""};
        QTest::newRow("place 0 tuned at Start")
            << ScanCase{"0=6070 2=9410 start tick tick tick", "6070 9410 6070 9410", "0001", "010000", ""};
        QTest::newRow("emptied while scanning") << ScanCase{"0=6070 start tick 0=- tick", "6070 6070 6070", "0001", "011111",
                                                            "Scan Frequencies from list|No frequency of the list"};
        QTest::newRow("clicks tune only while off")
            << ScanCase{"0=6070 4=7255 click4 start click4 tick stop click0", "7255 6070 6070 7255 6070", "0000", "011111", ""};
        QTest::newRow("continue counts on") << ScanCase{"0=6070 start tick stop continue tick", "6070 6070 6070", "0002", "010000", ""};
        QTest::newRow("cls after stop") << ScanCase{"0=6070 start tick stop cls", "6070 6070", "0000", "110111", ""};
        QTest::newRow("stopped: Start back only by Cls") << ScanCase{"0=6070 start stop start", "6070 6070", "0000", "011111", ""};
    }
    void scan()
    {
        QFETCH(ScanCase, c);
        ListRig rig;
        rig.typeFrequency("1000");
        QCOMPARE(rig.buttons(), QString("100011"));
        if (!c.message.isEmpty())
            rig.env.dialogs->expectMsgBox(c.message.section(u'|', 1));
        QStringList seen;
        for (const QString &a : c.actions.split(u' ')) {
            if (a.contains(u'=')) {
                rig.w->txtFreqlist[size_t(a.section(u'=', 0, 0).toInt())]->setText(a.section(u'=', 1));
                continue;
            }
            if (a == "tick") {
                rig.w->tmrScanlist_Timer();
            } else if (a.startsWith("click")) {
                QTest::mouseClick(rig.w->txtFreqlist[size_t(a.mid(5).toInt())], Qt::LeftButton);
            } else {
                QTest::mouseClick(rig.w->findChild<QPushButton *>("cmd" + a.left(1).toUpper() + a.mid(1)), Qt::LeftButton);
                if (a != "start")
                    continue;
            }
            seen << rig.tuned();
        }
        QCOMPARE(QStringList({seen.join(u' '), rig.w->lblRuns->text(), rig.buttons()}),
                 QStringList({c.tuned, c.runs, c.buttons}));
        if (!c.message.isEmpty())
            QCOMPARE(rig.env.dialogs->shown.value(0).title, c.message.section(u'|', 0, 0));
        VERIFY_DIALOGS_CLEAN(rig.env);
    }

    // Bars and trend cells on the canvas: a station coming on the air during the run shows as a
    // tall bar and, at the third trend update, as a rising (green) cell; the silent places steady.
    void chart()
    {
        ListRig rig;
        ChartCanvas *c = rig.w->picture;
        rig.w->txtFreqlist[0]->setText("9410");
        rig.w->txtUpdate->setText("3");
        QTest::mouseClick(rig.w->cmdStart, Qt::LeftButton);
        const QColor white = ChartCanvas::standardColor(15), chartBack(255, 255, 192);
        for (int tick = 1; tick <= 9; ++tick) {
            QCOMPARE(c->pixel(cellLeft(0, 10), 300), white);
            rig.env.clock->advanceSecs(10);
            rig.w->tmrScanlist_Timer();
        }
        QCOMPARE(c->pixel(cellLeft(0, 10), 300), ChartCanvas::standardColor(10));
        QCOMPARE(c->pixel(cellLeft(1, 10) + 1, 310), ChartCanvas::standardColor(14));
        QCOMPARE(c->pixel(cellLeft(19, 9), 290), white);
        // Latest level on the air (about S9+36 dB), the one of tick 3 band noise.
        QCOMPARE(c->pixel(columnX(0, 20), barTop(12)), QColor(Qt::black));
        QCOMPARE(c->pixel(columnX(0, 14), barTop(2)), chartBack);
        QCOMPARE(c->pixel(columnX(0, 14), 270), QColor(Qt::black));
        QCOMPARE(rig.w->lblRuns->text(), QString("0009"));
        // Cls clears bars and cells.
        QTest::mouseClick(rig.w->cmdStop, Qt::LeftButton);
        QTest::mouseClick(rig.w->cmdCls, Qt::LeftButton);
        QCOMPARE(c->pixel(columnX(0, 20), barTop(12)), c->backColor());
        QCOMPARE(c->pixel(cellLeft(0, 10), 300), white);
        // The panel closing mid-scan takes the window with it, its timer stopped first.
        QTest::mouseClick(rig.w->cmdStart, Qt::LeftButton);
        QPointer<frmScanlist> w = rig.w;
        rig.panel->close();
        QVERIFY(w && !w->scanning() && !isOpen(Win::frmScanlist));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!w);
    }

    // The remote lock of the NRD sets: taken at Start and given back at Stop, unless the listener
    // holds it himself.
    void nrdLock_data()
    {
        QTest::addColumn<LockCase>("c");
        QTest::newRow("NRD-535") << LockCase{rxNRD535, false, "H1", "H0\rH0\r"};
        QTest::newRow("NRD-535 locked by the user") << LockCase{rxNRD535, true, {}, {}};
        QTest::newRow("NRD-545") << LockCase{rxNRD545, false, "H1", "H0\rH0\r"};
        QTest::newRow("NRD-545 locked by the user") << LockCase{rxNRD545, true, {}, {}};
    }
    void nrdLock()
    {
        QFETCH(LockCase, c);
        ListRig rig(c.type);
        if (c.userLock)
            rig.click("cmdLock_1");
        rig.w->txtFreqlist[0]->setText("9410");
        const qsizetype before = rig.wireSize();
        QTest::mouseClick(rig.w->cmdStart, Qt::LeftButton);
        const QByteArray start = rig.line()->written.mid(before);
        QByteArray last;
        for (const QByteArray &command : start.split('\r'))
            if (command == "H0" || command == "H1")
                last = command;
        QCOMPARE(last, c.startLast);
        const qsizetype stopped = rig.wireSize();
        QTest::mouseClick(rig.w->cmdStop, Qt::LeftButton);
        QCOMPARE(rig.line()->written.mid(stopped), c.stopBytes);
    }

    // Save List and Load List through the file windows with kind 11; the reader and the holds on
    // the panel's entries belong to the window only while it is open.
    void files()
    {
        ListRig rig;
        QAction *propagation = rig.panel->findChild<QAction *>("mnuPropagation");
        QVERIFY(propagation && !propagation->isEnabled());
        for (const char *e : {"mnuSmeter", "mnuScanBand", "mnuScanfreqpairs", "mnuPropagation"})
            QCOMPARE(menuHoldCount(e), 1);
        for (int i = 0; i < kPlaces; ++i)
            rig.w->txtFreqlist[size_t(i)]->setText(i == 1 ? "9410,5" : i == 2 ? "40000" : i == 19 ? "5975" : "-");
        whenModal<frmSavefile>([](frmSavefile *s) {
            s->cmbSavefile->setEditText("SFL_evening.TXT");
            QTest::mouseClick(s->cmdOK, Qt::LeftButton);
        });
        rig.env.dialogs->expectMsgBox("The data is now saved");
        QTest::mouseClick(rig.w->cmdsaveas, Qt::LeftButton);
        QCOMPARE(fileType, int16_t(kSflKind));
        const QByteArray dash("-\r\n");
        QCOMPARE(readFile(rig.dir.filePath("SFL/SFL_evening.TXT")),
                 dash + "9410.5\r\n" + dash.repeated(17) + "5975\r\n");
        for (QLineEdit *t : rig.w->txtFreqlist)
            t->setText("7255");
        whenModal<frmLoadfile>([](frmLoadfile *l) {
            l->list->setCurrentRow(0);
            QTest::mouseClick(l->cmdOK, Qt::LeftButton);
        });
        QTest::mouseClick(rig.w->cmdLoad, Qt::LeftButton);
        QCOMPARE(joined(rig.w->places()), joined(placesOf("1=9410.5 19=5975")));
        QVERIFY(rig.w->cmdStart->isEnabled() && !rig.w->cmdContinue->isEnabled());
        rig.w->cmdStart_Click();
        QTest::mouseClick(rig.w->cmdExit, Qt::LeftButton);
        fileType = kSflKind;
        QVERIFY(!runReader() && !runWriter() && !isOpen(Win::frmScanlist));
        QVERIFY(propagation->isEnabled() && menuHoldCount("mnuScanBand") == 0);
        VERIFY_DIALOGS_CLEAN(rig.env);
    }
};

BRELVOX_TEST(TestScanlist)
#include "tst_scanlist.moc"
