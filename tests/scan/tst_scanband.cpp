// The band scan on the simulated receivers, with a band of test stations and a fixed clock: the
// typed input, sweeps and holds driven tick by tick, SAN files both ways and their overlays, the
// attenuation compensation per model, the NRD lock and the panel's menu entries.
#include "panel_rig.h"
#include "testmain.h"
#include "core/session_clock.h"
#include "data/file_store.h"
#include "drivers/clsAR7030.h"
#include "scan/frmScanband.h"
#include "scan/scan_band.h"
#include "sim/sim_band.h"
#include "ui/widgets/chart_canvas.h"

#include <QAction>
#include <QCheckBox>
#include <QDir>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QtTest>

using namespace scanband;

namespace {
// Always on: A wide at 6020 kHz; B only from 20:00 to 21:00 UTC.
const SimBand kBand({{6020.0, 20, 14, 0, 0, 400, "Test A"}, {6035.0, 8, 16, 20 * 60, 21 * 60, 300, "Test B"}});
const QDateTime kEvening(QDate(2026, 3, 3), QTime(20, 30), Qt::UTC);

struct BandRig : PanelRig {
    frmScanband *w = nullptr;
    explicit BandRig(int type) : PanelRig(type)
    {
        resetState();
        env.clock->set(kEvening);
        slotLt2Utc() = 0;
        QDir(dir.path()).mkpath("SAN");
        writeFile(dir.filePath("rx320settings.ini"), "9410\r\n2\r\n0\r\n2\r\n0\r\n0\r\n30\r\n0\r\n");
        prepareAr = [](Ar7030Sim &a) { a.setBand(kBand); };
        open<frmPanelBase>();
        for (auto &n : nrds)
            n->setBand(kBand);
        SessionTimers::instance().Showtime_Timer();
        w = frmScanband::open();
    }
    ~BandRig()
    {
        if (panel)
            panel->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    // The delay is long enough that no timer fires by itself: the test ticks.
    void start(const QString &from, const QString &to, const QString &step, const QString &delay = "60")
    {
        const QString texts[] = {from, to, step, delay};
        for (int i = 0; i < 4; ++i)
            w->txtInput[size_t(i)]->setText(texts[i]);
        QTest::mouseClick(w->cmdStart, Qt::LeftButton);
    }
    void ticks(int n)
    {
        for (int i = 0; i < n; ++i)
            w->tmrScanband_Timer();
    }
    // The AR7030 tunes in steps of its frequency word.
    double tuned() { return std::round(ar().frequencyKhz() * 100) / 100; }
    int colorPixels(const QColor &c) const
    {
        const QImage &im = w->picScanband->image();
        int n = 0;
        for (int y = 184; y <= 360; ++y)
            for (int x = 70; x <= 570; ++x)
                n += im.pixelColor(x, y) == c;
        return n;
    }
    void load(const QString &name)
    {
        fileType = kSanKind;
        chosenFileTable[kSanKind] = name;
        QVERIFY(runReader());
    }
};

QByteArray san(const QString &band, const QStringList &values)
{
    return ("3 Mar 2026  20:30 Z\r\n" + band + "\r\n" + values.join("\r\n") + "\r\n").toLatin1();
}
} // namespace

class TestScanband : public QObject {
    Q_OBJECT
private slots:
    void input_data()
    {
        QTest::addColumn<QStringList>("texts");
        QTest::addColumn<int>("onDowns");
        QTest::addColumn<int>("intervalMs"); // -1: refused
        QTest::addColumn<QString>("sqlOff");
        QTest::newRow("exactly 500 steps") << QStringList{"6000", "6500", "1", "0.2"} << 0 << 200 << "S9+66dB";
        QTest::newRow("500.001 steps") << QStringList{"6000", "6500.001", "1", "1"} << 0 << -1 << "S9+66dB";
        QTest::newRow("step 0, half a kHz") << QStringList{"6000", "6000.5", "0", "1"} << 0 << 1000 << "S9+66dB";
        QTest::newRow("step 0, one kHz") << QStringList{"6000", "6001", "0", "1"} << 0 << -1 << "S9+66dB";
        QTest::newRow("commas") << QStringList{"6000,5", "6010,5", "0,5", "0,25"} << 0 << 250 << "S9+66dB";
        QTest::newRow("end not above start") << QStringList{"6000", "6000", "1", "1"} << 0 << -1 << "S9+66dB";
        QTest::newRow("negative delay") << QStringList{"6000", "6010", "1", "-1"} << 0 << -1 << "S9+66dB";
        QTest::newRow("delay past the timer") << QStringList{"6000", "6010", "1", "3000000"} << 0 << -1 << "S9+66dB";
        QTest::newRow("off pulled down") << QStringList{"6000", "6010", "1", "1"} << 5 << 1000 << "S9=42dB";
    }
    void input()
    {
        QFETCH(QStringList, texts);
        QFETCH(int, onDowns);
        QFETCH(int, intervalMs);
        QFETCH(QString, sqlOff);
        BandRig rig(rxAR7030);
        rig.w->spnSqloff_SpinUp(); // 20, above On once On comes down
        for (int i = 0; i < onDowns; ++i)
            rig.w->spnSqlon_SpinDown();
        if (intervalMs < 0)
            rig.env.dialogs->expectMsgBox("Input ERROR");
        const double tuned = rig.tuned();
        rig.start(texts[0], texts[1], texts[2], texts[3]);
        VERIFY_DIALOGS_CLEAN(rig.env);
        QCOMPARE(rig.w->lblSqloff->text(), sqlOff);
        QCOMPARE(rig.w->tmrScanband.isActive(), intervalMs >= 0);
        QCOMPARE(rig.tuned(), tuned); // Start does not tune
        if (intervalMs < 0) {
            QCOMPARE(rig.w->txtInput[0]->text() + rig.w->txtInput[1]->text() + rig.w->txtInput[2]->text(), QString());
            QCOMPARE(rig.w->txtInput[3]->text(), texts[3]);
            return;
        }
        QCOMPARE(rig.w->tmrScanband.interval(), intervalMs);
        QCOMPARE(rig.w->lblFreqlow->text(), QString(texts[0]).replace(',', '.'));
        QCOMPARE(rig.w->lblTimedate->text(), QString("3 Mar 2026  20:30 Z"));
        QVERIFY(!rig.w->cmdExit->isEnabled() && !rig.w->fraSetup->isEnabled() && rig.w->cmdStop->isEnabled());
    }

    // One sweep without loop to its idle end, saved, tuned from the chart, loaded back.
    void sweepSavedAndLoaded()
    {
        BandRig rig(rxAR7030);
        rig.start("6000", "6050", "5");
        rig.ticks(13);
        QCOMPARE(int(ScanBandIndex), 11);
        QCOMPARE(rig.tuned(), 6055.0); // one step beyond the end
        QCOMPARE(rig.w->lblFreq1->text(), QString("Scanning"));
        QVERIFY(ScanBandLatest[4] > 12 && ScanBandLatest[10] < 1); // 6020 on the air, 6050 noise
        QTest::mouseClick(rig.w->cmdStop, Qt::LeftButton);
        QVERIFY(rig.w->cmdStop->isEnabled() && !rig.w->cmdContinue->isEnabled());
        fileType = kSanKind;
        chosenFileTable[kSanKind] = "SAN_evening.TXT";
        QVERIFY(runWriter());
        const QStringList lines = QString::fromLatin1(readFile(rig.dir.filePath("SAN/SAN_evening.TXT"))).split("\r\n");
        QCOMPARE(lines.mid(0, 5), QStringList({"3 Mar 2026  20:30 Z", " 6000", " 6050", " 5", " 11"}));
        QCOMPARE(lines.size(), 5 + 12 + 1);
        QCOMPARE(lines[5 + 11], QString("000"));

        QTest::mouseClick(rig.w->cmdTunerx, Qt::LeftButton);
        QMouseEvent move(QEvent::MouseMove, QPointF(70 + 4 * 50 + 10, 300), QPointF(), Qt::NoButton, Qt::NoButton,
                         Qt::NoModifier);
        QApplication::sendEvent(rig.w->picScanband, &move);
        QCOMPARE(rig.w->lblFreq1->text(), QString("6020"));
        QTest::mousePress(rig.w->picScanband, Qt::LeftButton, {}, QPoint(70 + 7 * 50 + 49, 300));
        QCOMPARE(rig.tuned(), 6035.0);

        QTest::mouseClick(rig.w->cmdCls, Qt::LeftButton);
        const QColor blue = ChartCanvas::standardColor(9);
        QCOMPARE(rig.colorPixels(blue), 0);
        rig.load("SAN_evening.TXT");
        QCOMPARE(rig.w->picScanband->pixel(270, levelY(ScanBandLatest[4])), blue);
        QCOMPARE(rig.w->picScanband->pixel(570, levelY(ScanBandLatest[10])), blue);
        QCOMPARE(rig.w->lblDbname[0]->text(), QString("3 Mar 2026  20:30 Z   evening"));
        QCOMPARE(int(ScanBandLastCount), 11);
    }

    // A step measured sweep after sweep, as each ShowMode keeps and shows it.
    void showModes_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QList<float>>("levels");
        QTest::addColumn<QList<float>>("shown");
        QTest::newRow("latest") << 0 << QList<float>{3, 1} << QList<float>{3, 1};
        QTest::newRow("highest") << 1 << QList<float>{3, 5, 4} << QList<float>{3, 5, 5};
        QTest::newRow("averaging last 3") << 2 << QList<float>{3, 6, 9, 12} << QList<float>{1, 3, 6, 9};
    }
    void showModes()
    {
        QFETCH(int, mode);
        QFETCH(QList<float>, levels);
        QFETCH(QList<float>, shown);
        Levels latest{}, prev1{}, prev2{};
        for (int k = 0; k < levels.size(); ++k)
            QCOMPARE(storeLevel(mode, 500, levels[k], latest, prev1, prev2), shown[k]);
        QCOMPARE(latest[500], mode == 1 ? 5.0f : levels.back());
    }

    void sanWriter()
    {
        resetState();
        ScanBandStart = 5900.5, ScanBandEnd = 5901, ScanBandStep = 0.25, ScanBandIndex = 3;
        ScanBandLatest[0] = 4.1f, ScanBandLatest[1] = 0.99f, ScanBandLatest[2] = 21;
        QCOMPARE(sanBytes("d Z"), QByteArray("d Z\r\n 5900.5\r\n 5901\r\n 0.25\r\n 3\r\n041\r\n009\r\n210\r\n000\r\n"));
        ScanBandIndex = 501;
        QCOMPARE(errorOf([] { sanBytes("d"); }), 9);
    }

    void sanReader_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<int>("error");
        QTest::addColumn<int>("count");
        QTest::addColumn<float>("last");
        const QStringList full(502, "010");
        QTest::newRow("plain") << san(" 6000\r\n 6050\r\n 5", {" 2", "041", "9x", "120"}) << 0 << 2 << 12.0f;
        QTest::newRow("items by comma") << san("6000\r\n6050\r\n5", {"1.6,5,7", "9"}) << 0 << 2 << 0.9f;
        QTest::newRow("count rounded to even") << san("6000\r\n6050\r\n5", {"2.5", "1", "2", "3"}) << 0 << 2 << 0.3f;
        QTest::newRow("501 values") << san("6000\r\n6500\r\n1", QStringList{"500"} + full.mid(1)) << 0 << 500 << 1.0f;
        QTest::newRow("502 values") << san("6000\r\n6500\r\n1", QStringList{"501"} + full) << 9 << 0 << 0.0f;
        QTest::newRow("shorter than its count") << san("6000\r\n6050\r\n5", {"3", "1", "2"}) << 62 << 0 << 0.0f;
        QTest::newRow("no count") << QByteArray("d\r\n6000\r\n6050\r\n5\r\n") << 62 << 0 << 0.0f;
    }
    void sanReader()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(int, error);
        SanFile f;
        QCOMPARE(errorOf([&] { f = readSan(bytes); }), error);
        if (error)
            return;
        QFETCH(int, count);
        QFETCH(float, last);
        QCOMPARE(int(f.lastCount), count);
        QCOMPARE(int(f.values.size()), count + 1);
        QCOMPARE(f.values.back(), last);
    }

    // Five loads: the third fails the range check and draws all the same, the fifth takes the
    // first colour and the first label.
    void overlays()
    {
        BandRig rig(rxAR7030);
        const QString bands[] = {" 6000\r\n 6050\r\n 5", " 6000\r\n 6050\r\n 5", " 6000\r\n 99999\r\n 5",
                                 " 6000\r\n 6050\r\n 5", " 6000\r\n 6050\r\n 5"};
        const int labels[] = {0, 1, 2, 3, 0};
        const int colors[] = {9, 10, 13, 12, 9};
        for (int k = 0; k < 5; ++k) {
            const QString name = QString("SAN_load%1.TXT").arg(k + 1);
            writeFile(rig.dir.filePath("SAN/" + name), san(bands[k], {" 2", "010", QString::number(50 + 20 * k), "000"}));
            if (k == 2)
                rig.env.dialogs->expectMsgBox("Input ERROR");
            rig.load(name);
            VERIFY_DIALOGS_CLEAN(rig.env);
            const QColor c = ChartCanvas::standardColor(colors[k]);
            QCOMPARE(rig.w->lblDbname[size_t(labels[k])]->text(), QString("3 Mar 2026  20:30 Z   load%1").arg(k + 1));
            QCOMPARE(rig.w->lblDbname[size_t(labels[k])]->palette().color(QPalette::WindowText), c);
            QVERIFY2(rig.colorPixels(c) > 0, qPrintable(name));
        }
        QCOMPARE(rig.w->txtInput[1]->text(), QString("6050"));
        QCOMPARE(rig.w->lblFreqhigh->text(), QString("6050"));
    }

    // The hold stays while the station is on, and measures the same step again once it has gone.
    void holdMeasuresAgain()
    {
        BandRig rig(rxAR7030);
        rig.w->chkSqlonoff->click();
        for (int i = 0; i < 10; ++i)
            rig.w->spnSqlon_SpinDown(); // on at S9+12dB, and off there too from Start
        rig.start("6025", "6045", "5");
        rig.ticks(3); // 6030, then 6035: B at about S9+42dB
        QCOMPARE(rig.w->lblFreq1->text(), QString("On Hold"));
        QVERIFY(rig.w->tmrSqlon.isActive() && !rig.w->tmrScanband.isActive() && rig.w->cmdContinue->isEnabled());
        QCOMPARE(int(ScanBandIndex), 2);
        const float held = ScanBandLatest[2];
        rig.w->tmrSqlon_Timer();
        QVERIFY(rig.w->tmrSqlon.isActive());
        rig.env.clock->set(kEvening.addSecs(3600));
        rig.w->tmrSqlon_Timer();
        QCOMPARE(rig.w->lblFreq1->text(), QString("Scanning"));
        QVERIFY(rig.w->tmrScanband.isActive() && !rig.w->cmdContinue->isEnabled());
        rig.ticks(1);
        QCOMPARE(rig.tuned(), 6040.0);
        QVERIFY(held > 12 && ScanBandLatest[2] < 1); // 6035 measured again, now silent
    }

    void continueAfterStop_data()
    {
        QTest::addColumn<QString>("end");
        QTest::addColumn<bool>("loop");
        QTest::addColumn<int>("ticks");
        QTest::addColumn<double>("continuedKhz"); // 0: Continue stays off
        QTest::newRow("three to go") << "6050" << false << 7 << 6040.0;
        QTest::newRow("two to go") << "6050" << false << 8 << 0.0;
        QTest::newRow("plain quotient 10.4") << "6052" << false << 8 << 6045.0;
        QTest::newRow("plain quotient 10.4, one more") << "6052" << false << 9 << 0.0;
        QTest::newRow("looped to the start") << "6050" << true << 11 << 6005.0;
    }
    void continueAfterStop()
    {
        QFETCH(QString, end);
        QFETCH(bool, loop);
        QFETCH(int, ticks);
        QFETCH(double, continuedKhz);
        BandRig rig(rxAR7030);
        if (loop)
            rig.w->chkLoop->click();
        rig.start("6000", end, "5");
        rig.ticks(ticks);
        QTest::mouseClick(rig.w->cmdStop, Qt::LeftButton);
        QCOMPARE(rig.w->cmdContinue->isEnabled(), continuedKhz > 0);
        if (continuedKhz > 0) {
            QTest::mouseClick(rig.w->cmdContinue, Qt::LeftButton);
            QCOMPARE(rig.tuned(), continuedKhz);
            QVERIFY(rig.w->tmrScanband.isActive());
        }
    }

    // The level each model charts, with its attenuator set before Start; on the NRD sets the lock
    // taken at Start and given back at Stop, unless the listener holds it.
    void compensationAndLock_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<int>("attenuator");
        QTest::addColumn<double>("khz"); // the RX-320's simulator hears the default band
        QTest::addColumn<bool>("userLock");
        QTest::addColumn<bool>("closeBox"); // the sweep ended by the close box, not by Stop
        QTest::newRow("AR7030 RF -20 dB") << int(rxAR7030) << 3 << 6020.0 << false << false;
        QTest::newRow("AR7030 RF +10 dB") << int(rxAR7030) << 0 << 6020.0 << false << false;
        QTest::newRow("NRD535 -20 dB") << int(rxNRD535) << 1 << 6020.0 << false << false;
        QTest::newRow("NRD545 -20 dB") << int(rxNRD545) << 1 << 6020.0 << false << false;
        QTest::newRow("NRD545, closed mid-sweep") << int(rxNRD545) << 1 << 6020.0 << false << true;
        QTest::newRow("NRD535 locked by the user") << int(rxNRD535) << 0 << 6020.0 << true << false;
        QTest::newRow("NRD545 -20 dB, locked by the user") << int(rxNRD545) << 1 << 6020.0 << true << false;
        QTest::newRow("RX320") << int(rxRX320) << 0 << 6070.0 << false << false;
        QTest::newRow("No RX") << int(rxNone) << 0 << 6020.0 << false << false;
    }
    void compensationAndLock()
    {
        QFETCH(int, type);
        QFETCH(int, attenuator);
        QFETCH(double, khz);
        QFETCH(bool, userLock);
        QFETCH(bool, closeBox);
        BandRig rig(type);
        RxDriver *d = rig.w->receiver()->driver();
        if (auto *ar = qobject_cast<clsAR7030 *>(d))
            ar->setAttenuator(int16_t(attenuator));
        else if (auto *jrc = qobject_cast<JrcDriver *>(d))
            jrc->setAttenuator(int16_t(attenuator));
        if (userLock)
            rig.click("cmdLock_1");
        const bool nrd = type == rxNRD535 || type == rxNRD545;
        qsizetype from = rig.wireSize();
        rig.start(QString::number(khz - 5), QString::number(khz + 5), "5");
        if (nrd)
            QCOMPARE(rig.line()->written.mid(from).count("H1\r"), userLock ? 0 : 2);
        rig.ticks(2);
        const double truth = type == rxNone ? 0 : (type == rxRX320 ? SimBand() : kBand).sUnits(khz, kEvening);
        QVERIFY2(std::abs(ScanBandLatest[1] - truth) < 0.5,
                 qPrintable(QString("%1 read, %2 on the air").arg(ScanBandLatest[1]).arg(truth)));
        from = rig.wireSize();
        if (closeBox)
            rig.w->close();
        else
            QTest::mouseClick(rig.w->cmdStop, Qt::LeftButton);
        if (nrd)
            QCOMPARE(rig.line()->written.mid(from).count("H0\r"), userLock ? 0 : 2);
    }

    // The entries are held while the window is open and given back however it closes; a close
    // mid-sweep leaves no timer running.
    void menusAndClosing_data()
    {
        QTest::addColumn<bool>("byPanel");
        QTest::newRow("window closed") << false;
        QTest::newRow("panel closed") << true;
    }
    void menusAndClosing()
    {
        QFETCH(bool, byPanel);
        BandRig rig(rxAR7030);
        const QStringList held{"mnuSmeter", "mnuScanFreqlist", "mnuScanfreqpairs", "mnuPropagation"};
        for (const QString &e : held) {
            QCOMPARE(menuHoldCount(e), 1);
            QVERIFY2(!rig.panel->menuEntry(e)->isEnabled(), qPrintable(e));
        }
        rig.start("6000", "6050", "5");
        rig.w->chkSqlonoff->click();
        rig.ticks(2);
        QPointer<frmScanband> w = rig.w;
        if (byPanel)
            rig.panel->close();
        else
            w->close();
        QVERIFY(!isOpen(Win::frmScanband));
        if (w)
            QVERIFY(!w->tmrScanband.isActive() && !w->tmrSqlon.isActive());
        fileType = kSanKind;
        QVERIFY(!runReader());
        for (const QString &e : held)
            QCOMPARE(menuHoldCount(e), 0);
    }
};
BRELVOX_TEST(TestScanband)
#include "tst_scanband.moc"
