// The Tracking window on a simulated receiver: a database loaded through the kind 5 reader, the
// rows as the panel tunes, stepping at the limits, the dial mode's bytes per model, the exit.
#include "panel_rig.h"
#include "testmain.h"
#include "data/file_store.h"
#include "data/frmTracking.h"
#include "log/frmLog.h"
#include "log/frmLoginput.h"
#include "ui/widgets/spin_button.h"

#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QtTest>

namespace {
QString rec(const QString &freq, const QString &utc, const QString &station, const QString &target)
{
    return freq + ' ' + utc + ' ' + station.leftJustified(22) + ' ' + target.leftJustified(8) + ' ' +
           QString("English").leftJustified(17) + ' ' + QString("250").leftJustified(7) + ' ' +
           "5130N 00012E 000000000 " + QString("Tarnholm").leftJustified(12) + ' ' + QString("Lorvik").leftJustified(12);
}

struct TrackingRig : PanelRig {
    QPointer<frmTracking> w;
    explicit TrackingRig(int type) : PanelRig(type)
    {
        slotDimIlg() = 1;
        slotRxTargetArea() = 3; // EU
        rxLatitude = "5200N";
        rxLongitude = "00500E";
        utcText = "2 Mar 2024  12:00";
        writeFile(dir.filePath("RX2DB/ILGSDATA.FTL"),
                  (QStringList{rec("09400.00", "1100-1300", "Radio Tarnholm", "AF"),
                               rec("09410.00", "1100-1300", "Velmar Overseas", "EU"),
                               rec("09410.00", "0100-0200", "Orlina Calling", "EU"),
                               rec("09420.00", "1000-1400", "Brelland Radio", "NAAS")}
                       .join("\r\n") + "\r\n")
                      .toLatin1());
        writeFile(dir.filePath("rx320settings.ini"), "9410\r\n2\r\n0\r\n2\r\n0\r\n0\r\n30\r\n0\r\n");
        open<frmPanelBase>();
        w = frmTracking::open();
    }
    ~TrackingRig()
    {
        if (w)
            w->close();
    }
    void load()
    {
        fileType = 5;
        chosenFileTable[5] = "ILGSDATA.FTL";
        QVERIFY(runReader());
    }
    QString row(int r) const { return w->lblBingo[size_t(r)]->text(); }
};
struct StepCase { QString from, step; bool up; double to; };
} // namespace
Q_DECLARE_METATYPE(StepCase)

class TestTrackingWindow : public QObject {
    Q_OBJECT
private slots:
    void loadAndTune()
    {
        TrackingRig rig(rxAR7030);
        QVERIFY(!rig.w->fraHitsall->isEnabled()); // nothing works before a file is loaded
        rig.load();
        QCOMPARE(rig.w->lblDatabase->text(), QString("Tracking database ILGSDATA.FTL / 4 records"));
        QVERIFY(rig.w->optAlternates[1]->isChecked());
        QVERIFY(rig.w->optHitsall[0]->isChecked());
        QVERIFY(!rig.w->txtFreqstep->isHidden());
        QVERIFY(rig.w->spnFreqstep->isEnabled());
        rig.w->txtCatchrange->setText("15");
        rig.typeFrequency("9410");
        // Hits: the two on the air at 12:00 and the one above, with the separator after 9410.
        QCOMPARE(rig.row(0).left(40), rec("09400.00", "1100-1300", "Radio Tarnholm", "AF").left(40));
        QCOMPARE(rig.row(0).mid(77, 12), QString("00335 km 262"));
        QCOMPARE(rig.w->rowColour(0), tracking::kOnAirColour);
        QVERIFY(rig.row(1).contains("Velmar Overseas"));
        QCOMPARE(rig.w->rowColour(1), tracking::kTargetColour);
        QVERIFY(rig.row(2).startsWith("= = ="));
        QCOMPARE(rig.w->rowColour(2), tracking::kPlainColour);
        QVERIFY(rig.row(3).contains("Brelland Radio"));
        QCOMPARE(rig.w->rowColour(3), tracking::kOnAirColour); // "AS" in "NAAS" is no target of EU
        QCOMPARE(rig.row(4), QString());
        QCOMPARE(rig.w->lblBingo[0]->palette().color(QPalette::Window), QColor(255, 255, 0));
        QCOMPARE(rig.w->lblBingo[1]->palette().color(QPalette::Window), QColor(0, 255, 0));
        QCOMPARE(rig.w->lblBingo[4]->palette().color(QPalette::Window), QColor(255, 255, 192));
        QCOMPARE(rig.w->cmdShow[0]->text(), QString("1"));
        QVERIFY(rig.w->cmdShow[0]->isEnabled());
        QCOMPARE(rig.w->cmdShow[1]->text(), QString());
        QVERIFY(!rig.w->cmdShow[1]->isEnabled());
        // A row clicked while the log's record form is open fills its language, station and
        // alternate boxes.
        logbook::logCount = -1;
        slotDimLog() = 1;
        writeFile(rig.dir.filePath("loggridformat.ini"), "111111111111111\r\n");
        QPointer<frmLog> log = frmLog::open();
        log->cmdAddrecord->click();
        auto *form = qobject_cast<frmLoginput *>(frmWelcome::openWindow(Win::frmLoginput));
        QVERIFY(form);
        QTest::mouseClick(rig.w->lblBingo[1], Qt::LeftButton);
        QCOMPARE(form->txtLoginput[5]->text(), QString("Eng"));
        QCOMPARE(form->txtLoginput[6]->text(), QString("Velmar Overseas     "));
        QCOMPARE(form->txtLoginput[7]->text(), rig.row(1).mid(77, 12));
        form->cmdCancel->click();
        delete log.data();
        // All: the station off the air comes too, plain; Ctry in the position's columns.
        rig.w->optHitsall[1]->click();
        rig.w->optAlternates[2]->click();
        QVERIFY(rig.row(2).contains("Orlina Calling"));
        QCOMPARE(rig.w->rowColour(2), tracking::kPlainColour);
        QCOMPARE(rig.row(2).mid(77, 12), QString("Tarnholm    "));
        rig.w->txtCatchrange->setText("0");
        rig.typeFrequency("9400");
        QCOMPARE(rig.row(0), QString());
        QVERIFY(!rig.w->cmdShow[0]->isEnabled());
    }

    void stepping_data()
    {
        QTest::addColumn<StepCase>("c");
        QTest::newRow("up") << StepCase{"9410", "5", true, 9415};
        QTest::newRow("down") << StepCase{"9410", "0.5", false, 9409.5};
        QTest::newRow("down to the lower limit") << StepCase{"12", "5", false, 10};
        QTest::newRow("up to the upper limit") << StepCase{"32014", "5", true, 32016};
    }
    void stepping()
    {
        QFETCH(StepCase, c);
        const auto &[from, step, up, to] = c;
        TrackingRig rig(rxAR7030);
        rig.load();
        rig.typeFrequency(from);
        rig.w->txtFreqstep->setText(step);
        QTest::mouseClick(up ? rig.w->spnFreqstep->upButton() : rig.w->spnFreqstep->downButton(), Qt::LeftButton);
        QCOMPARE(trackFreq, to);
        if (to < 30000)
            QVERIFY(std::abs(rig.ar().frequencyKhz() - to) < 0.01);
        QVERIFY(rig.w->spnFreqstep->isEnabled());
    }

    // Dial on and off: the bytes each model gets, the lock and the dial flag.
    void dial_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<bool>("dialable");
        QTest::addColumn<QByteArray>("on");
        QTest::newRow("NRD-535") << int(rxNRD535) << true << QByteArray("I1\rH0\r");
        QTest::newRow("NRD-545") << int(rxNRD545) << true << QByteArray("I1\rDD0\r");
        QTest::newRow("AR7030: its timer") << int(rxAR7030) << true << QByteArray();
        QTest::newRow("RX-320: no dial") << int(rxRX320) << false << QByteArray();
    }
    void dial()
    {
        QFETCH(int, type);
        QFETCH(bool, dialable);
        QFETCH(QByteArray, on);
        TrackingRig rig(type);
        rig.load();
        QCOMPARE(rig.w->optMousedial[1]->isEnabled(), dialable);
        if (!dialable)
            return;
        const bool nrd = type != rxAR7030;
        qsizetype before = rig.wireSize();
        rig.w->optMousedial[1]->click();
        if (nrd)
            QCOMPARE(rig.line()->written.mid(before), on);
        QCOMPARE(dialActive, nrd);
        QCOMPARE(remoteLock, int16_t(nrd ? 1 : 0));
        QCOMPARE(rig.w->tmrDial7030.isActive(), !nrd);
        QVERIFY(rig.w->txtFreqstep->isHidden());
        // Stepping does nothing while the dial is followed.
        const double tuned = trackFreq;
        QTest::mouseClick(rig.w->spnFreqstep->upButton(), Qt::LeftButton);
        QCOMPARE(trackFreq, tuned);
        before = rig.wireSize();
        rig.w->optMousedial[0]->click();
        QCOMPARE(rig.line()->written.mid(before), QByteArray(nrd ? "I0\r" : ""));
        QVERIFY(!dialActive);
        QCOMPARE(remoteLock, int16_t(0));
        QVERIFY(!rig.w->tmrDial7030.isActive());
        QVERIFY(!rig.w->txtFreqstep->isHidden());
    }

    // The AR7030's dial: each tick reads the receiver and follows it when it moved.
    void dialTimer()
    {
        TrackingRig rig(rxAR7030);
        rig.load();
        rig.w->txtCatchrange->setText("5");
        rig.w->optMousedial[1]->click();
        rig.typeFrequency("9420"); // as if the knob had turned the set there
        trackFreq = 0;
        rig.w->tmrDial7030_Timer();
        QVERIFY(std::abs(trackFreq - 9420) < 0.01);
        QVERIFY(rig.row(0).contains("Brelland Radio"));
        trackFreq = 0;
        rig.w->tmrDial7030_Timer(); // not moved: nothing to follow
        QCOMPARE(trackFreq, 0.0);
    }

    void exitEndsTheDial()
    {
        TrackingRig rig(rxNRD545);
        rig.load();
        rig.w->optMousedial[1]->click();
        const qsizetype before = rig.wireSize();
        QTest::mouseClick(rig.w->cmdExit, Qt::LeftButton);
        QCOMPARE(rig.line()->written.mid(before), QByteArray("I0\r"));
        QVERIFY(!dialActive);
        QVERIFY(!trackDataLoaded);
        QVERIFY(!isOpen(Win::frmTracking));
        QVERIFY(!rig.welcome->hub.searchTracking);
        fileType = 5;
        QVERIFY(!runReader());
    }
};

BRELVOX_TEST(TestTrackingWindow)
#include "tst_tracking_window.moc"
