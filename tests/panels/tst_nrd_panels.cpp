// The JRC panels and their windows driven as a listener drives them, against the simulated
// receivers: options, the lock and its bars, modes that take controls away, the keyboard, the
// keypad's memory recall, the user settings and the DSP window.
#include "core/frmWelcome.h"
#include "drivers/clsNRD535.h"
#include "drivers/clsNRD545.h"
#include "drivers/jrc_common.h"
#include "panels/frmAdvancedDSP.h"
#include "panels/frmNRD535.h"
#include "panels/frmNRD545.h"
#include "panels/frmUserdefs.h"
#include "panels/frmUserdefs545.h"
#include "panels/nrd_panel_logic.h"
#include "sim/nrd_sim.h"
#include "ui/widgets/spin_button.h"
#include "panel_rig.h"
#include "testmain.h"

#include <QAction>
#include <QComboBox>
#include <QGroupBox>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QSlider>
#include <QtTest>

namespace {

// The shared rig on a JRC receiver with the set-up's options; the panel is opened directly.
struct NrdRig : PanelRig {
    NrdRig(int type, int options = 0) : PanelRig(type)
    {
        for (int i = 0; i < 4; ++i)
            slotNrdOption(i) = float((options >> i) & 1);
        slotAgctc(0) = 1;
        slotAgctc(1) = 3;
        slotAgctc(2) = 9;
        slotNrbc(0) = 50;
        slotNrbc(1) = 20;
        if (type == rxNRD535)
            welcome->hub.setDriver(type, std::make_unique<clsNRD535>(welcome->Comm1));
        else
            welcome->hub.setDriver(type, std::make_unique<clsNRD545>(welcome->Comm1));
    }
    ~NrdRig()
    {
        for (Win w : {Win::frmAdvancedDSP, Win::frmUserdefs, Win::frmUserdefs545})
            if (QWidget *x = frmWelcome::openWindow(w))
                x->close();
    }

    frmPanelBase *open()
    {
        if (rxType == rxNRD535)
            panel = frmNRD535::open();
        else
            panel = frmNRD545::open();
        return panel;
    }
    frmNRD535 *p535() { return qobject_cast<frmNRD535 *>(panel ? panel.data() : open()); }
    frmNRD545 *p545() { return qobject_cast<frmNRD545 *>(panel ? panel.data() : open()); }

    NrdSim &sim() { return *nrds.back(); }
    Nrd545Sim &sim545() { return static_cast<Nrd545Sim &>(*nrds.back()); }
    QByteArray wire() const { return line() ? line()->written : QByteArray(); }

    // The commands that went out after position from, CR-separated, without the remote frame.
    QStringList commandsSince(qsizetype from, const QString &prefix = QString()) const
    {
        QStringList out;
        for (const QByteArray &c : wire().mid(from).split('\r'))
            if (!c.isEmpty() && c != "H1" && c != "H0" && (prefix.isEmpty() || c.startsWith(prefix.toLatin1())))
                out << QString::fromLatin1(c);
        return out;
    }

    void press(const QString &keys)
    {
        for (const QString &k : keys.split(u' ', Qt::SkipEmptyParts)) {
            const QKeyCombination c = QKeySequence::fromString(k)[0];
            QTest::keyClick(panel->txtFrequencyA, c.key(), c.keyboardModifiers());
        }
    }

    void click(QWidget *root, const QString &name)
    {
        auto *w = root->findChild<QWidget *>(name);
        QVERIFY2(w, qPrintable(name));
        QTest::mouseClick(w, Qt::LeftButton);
    }
    void click(const QString &name) { click(panel, name); }
    // On the button's indicator: a wide option button takes clicks only there and on its text.
    void clickOption(QWidget *root, const QString &name)
    {
        auto *r = root->findChild<QRadioButton *>(name);
        QVERIFY2(r, qPrintable(name));
        QTest::mouseClick(r, Qt::LeftButton, {}, QPoint(6, r->height() / 2));
    }
    // The line alone, for the user settings windows, which need no panel.
    void openLine()
    {
        welcome->Comm1.setCommPort(1);
        welcome->Comm1.setSettings(QStringLiteral("4800,N,8,1"));
        welcome->Comm1.setPortOpen(true);
    }

    QString label(const QString &name) const
    {
        auto *l = panel->findChild<QLabel *>(name);
        return l ? l->text() : QStringLiteral("<no %1>").arg(name);
    }
};

constexpr int kAllOptions = 0xF;
QString khz3(double khz) { return QString::number(khz, 'f', 3); }
void deliverDeletes() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

} // namespace

class TestNrdPanels : public QObject {
    Q_OBJECT
private slots:
    // The set-up's options decide which controls live on the NRD-535.
    void nrd535Options_data()
    {
        QTest::addColumn<int>("options");
        QTest::newRow("no options") << 0;
        QTest::newRow("all options") << kAllOptions;
    }
    void nrd535Options()
    {
        QFETCH(int, options);
        const bool on = options != 0;
        NrdRig rig(rxNRD535, options);
        frmNRD535 *p = rig.p535();
        QVERIFY(p);
        QCOMPARE(rig.welcome->Comm1.Settings(), QString("4800,N,8,1"));
        QCOMPARE(p->txtFrequencyA->text(), QString("10000.000"));
        QCOMPARE(p->lblMode->text(), QString("AM"));
        QCOMPARE(p->lblLock->text(), QString("Off"));
        QCOMPARE(p->lblAttenuator->backColor(), QColor(0xFF, 0xFF, 0xC0));
        QCOMPARE(rig.sim().userSetting(1), QByteArray("1")); // VBT bypass off is "U11"
        QVERIFY(!rig.sim().remote());
        QCOMPARE(p->cmdBandwidth[2]->isEnabled(), on);
        QCOMPARE(p->cmdMode[7]->isEnabled(), on);
        QCOMPARE(p->cmdMode[8]->isEnabled(), on);

        // A status with mode 7: its label is empty without the ECSS unit.
        rig.sim().receive("H1\rD7\rH0\r");
        p->menuEntry("mnuUpdate")->trigger();
        QCOMPARE(p->lblMode->text(), on ? QString("AM-U") : QString());

        // The bandwidth control lives only with the BWC unit, and only with the lock.
        rig.click("cmdMode_4");
        rig.click("cmdLock_1");
        QVERIFY(p->vsbPassbandshift->isEnabled());
        QCOMPARE(p->vsbBandwidthcontrol->isEnabled(), on);
        if (on) {
            QCOMPARE(p->lblBandwidthcontrol->text(), QString("5500"));
            QCOMPARE(rig.sim().bandwidthControlHz(), 5500);
        }

        QAction *rtty = p->menuEntry("mnuRtty");
        QVERIFY(rtty);
        QCOMPARE(rtty->isEnabled(), !on);
        if (!on) {
            rig.env.dialogs->expectMsgBox("Reserved for RTTY demodulation\nwith optional unit CMH-530");
            rtty->trigger();
            QCOMPARE(rig.env.dialogs->shown.last().title, QString("RTTY demodulation"));
        }
        VERIFY_DIALOGS_CLEAN(rig.env);
    }

    // NFM (both sets) and AMS (NRD-545) take away what they have no use for, even with the
    // lock; other modes bring it back. A row is a run of modes on one panel: "mode:off|on".
    void modesThatDisableControls_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QString>("modes");
        QTest::newRow("535") << int(rxNRD535) << "5:off 4:on";
        QTest::newRow("545") << int(rxNRD545) << "5:off 1:on 6:off";
    }
    void modesThatDisableControls()
    {
        QFETCH(int, type);
        QFETCH(QString, modes);
        NrdRig rig(type, kAllOptions);
        frmPanelBase *p = rig.open();
        rig.click("cmdLock_1");
        auto enabled = [&](const char *name) { return p->findChild<QWidget *>(name)->isEnabled(); };
        for (const QString &step : modes.split(u' ')) {
            const int mode = step.section(u':', 0, 0).toInt();
            const bool disabled = step.section(u':', 1) == "off";
            rig.click(QString("cmdMode_%1").arg(mode));
            const QByteArray where = step.toLatin1();
            QCOMPARE(rig.sim().mode(), mode);
            QVERIFY2(enabled("vsbPassbandshift") == !disabled, where);
            QVERIFY2(enabled("vsbBandwidthcontrol") == !disabled, where);
            if (type == rxNRD535) {
                QVERIFY2(enabled("fraAgcspeed") == !disabled, where);
                QVERIFY2(enabled("cmdAgcspeed_1") == !disabled, where);
                QVERIFY2(p->lblAgcspeed->text().isEmpty() == disabled, where);
            } else {
                QVERIFY2(enabled("cmdBandwidth_0") == !disabled, where);
                QVERIFY2(p->lblBandwidth->text().isEmpty() == disabled, where);
                QVERIFY2(enabled("vsbVolume"), where); // the audio stays with the lock
                QVERIFY2(!enabled("cmdEcss_0"), where); // ECSS only from AM
            }
        }
        VERIFY_DIALOGS_CLEAN(rig.env);
    }

    // The NRD-535 recalls a cell by itself; numbers past its 200 cells are refused, by the
    // keys and by the keypad alike.
    void nrd535MemoryRecall()
    {
        NrdRig rig(rxNRD535);
        frmNRD535 *p = rig.p535();
        rig.sim().setMemory(5, NrdSim::Setting{0, 1, 2, 7100000, 1});
        rig.sim().setMemory(150, NrdSim::Setting{1, 0, 4, 15400000, 0});
        struct Entry { const char *route; const char *cell; const char *tuned; };
        const Entry entries[] = {{"keys", "200", ""},
                                 {"keypad", "200", ""},
                                 {"keys", "5", "7100.000"},
                                 {"keypad", "150", "15400.000"}};
        for (const Entry &e : entries) {
            const QString what = QString("%1 %2").arg(e.route, e.cell);
            const bool refused = !*e.tuned;
            if (refused)
                rig.env.dialogs->expectMsgBox("Memory cell outside range");
            const qsizetype before = rig.wire().size();
            if (QLatin1String(e.route) == "keys") {
                QString keys;
                for (QChar c : QLatin1String(e.cell))
                    keys += QString("Ctrl+%1 ").arg(c);
                rig.press(keys + "Ctrl+M");
            } else {
                for (QChar c : QLatin1String(e.cell))
                    rig.click(QString("cmd0to9_%1").arg(c));
                rig.click("cmdEnterMem");
            }
            VERIFY_DIALOGS_CLEAN(rig.env);
            QVERIFY2(p->lblMfreq->text().isEmpty(), qPrintable(what));
            if (refused) {
                QCOMPARE(rig.env.dialogs->shown.last().title, QString("Error"));
                QVERIFY2(rig.wire().size() == before, qPrintable(what));
            } else {
                QCOMPARE(khz3(rig.sim().frequencyKhz()), QLatin1String(e.tuned));
                QCOMPARE(p->txtFrequencyA->text(), QLatin1String(e.tuned));
            }
        }
    }

    // Every modifier group of each panel's table at least once. A row is a script of steps on
    // one panel: "keys => probe=expected" (or "click:name => ..."), separated by ";". Without the
    // lock the shift keys leave the set alone; with it they move it, and unlocking clears the label.
    void keyboard_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QString>("script");
        const int n5 = rxNRD535, n4 = rxNRD545;
        QTest::newRow("535 arrows and ctrl keypad")
            << n5 << "Up => freq=10005.000; Ctrl+Left Ctrl+Left => freq=9995.000;"
                     "Ctrl+6 Ctrl+0 Ctrl+7 Ctrl+0 Ctrl+. Ctrl+5 Ctrl+F => freq=6070.500";
        QTest::newRow("535 shift; bars without the lock")
            << n5 << "Shift+F1 => bw=2; Shift+F3 => bw=0; Shift+F4 => lblBandwidth=Aux; Shift+F2 => bw=1;"
                     "Shift+X => mode=6; Shift+M => lblMode=AM-L; Shift+R => mode=0;"
                     "Shift+= => pbsHz=0; Ctrl+F1 => bwcHz=3000";
        QTest::newRow("535 bars with the lock")
            << n5 << "Shift+Ctrl+= => lblLock=On; Shift+- => pbsHz=-50; Shift+0 => pbsHz=0;"
                     "Ctrl+F2 => bwcHz=5300; Ctrl+F3 => lblBandwidthcontrol=5500; Ctrl+F1 => bwcHz=2000;"
                     "Shift+= Shift+= => lblPassbandshift=+100; click:lblPassbandshift => pbsHz=0;"
                     "Shift+Ctrl+- => remote=0; => lblPassbandshift=";
        QTest::newRow("535 intermediate filter's control")
            << n5 << "Shift+F2 Shift+Ctrl+= Ctrl+F1 => bwcHz=500; Ctrl+F4 => bwcHz=2200; Ctrl+F2 => bwcHz=2100";
        QTest::newRow("545 arrows and shift; bars without the lock")
            << n4 << "Down => freq=9995.000; Shift+F1 => bw=2; Shift+F3 => bw=0; Shift+C Shift+M => mode=1;"
                     "Shift+R => lblMode=RY; Shift+A Shift+P => mode=7;"
                     "Alt+= => volume=100; Shift+= => pbsHz=0; Ctrl+F3 => bwcHz=6000";
        QTest::newRow("545 bars with the lock")
            << n4 << "Shift+Ctrl+= => lblLock=On; Alt+= => volume=115; Alt+- Alt+- => lblVolume=85;"
                     "Alt+0 => volume=0; Ctrl+F3 => bwcHz=6100; Ctrl+F1 => lblBandwidthcontrol=0.10;"
                     "Shift+= => pbsHz=100; Shift+= => lblPassbandshift=0.20; Shift+Ctrl+- => remote=0";
    }
    void keyboard()
    {
        QFETCH(int, type);
        QFETCH(QString, script);
        NrdRig rig(type, kAllOptions);
        rig.open();
        NrdSim &s = rig.sim();
        for (const QString &step : script.split(u';', Qt::SkipEmptyParts)) {
            const QStringList parts = step.split(QStringLiteral("=>"));
            QCOMPARE(parts.size(), 2);
            const QString probe = parts[1].section(u'=', 0, 0).trimmed();
            const QString expected = parts[1].section(u'=', 1).trimmed();
            if (parts[0].trimmed().startsWith("click:"))
                rig.click(parts[0].trimmed().mid(6));
            else
                rig.press(parts[0]);
            QString got;
            if (probe == "freq")
                got = khz3(s.frequencyKhz());
            else if (probe == "bw")
                got = QString::number(s.bandwidth());
            else if (probe == "mode")
                got = QString::number(s.mode());
            else if (probe == "pbsHz")
                got = QString::number(s.passBandShiftHz());
            else if (probe == "bwcHz")
                got = QString::number(s.bandwidthControlHz());
            else if (probe == "volume")
                got = QString::number(rig.sim545().volume());
            else if (probe == "remote")
                got = QString::number(int(s.remote()));
            else
                got = rig.label(probe);
            QVERIFY2(got == expected, qPrintable(QString("%1: got %2").arg(step.trimmed(), got)));
        }
        VERIFY_DIALOGS_CLEAN(rig.env);
    }

    // "Reset to Defaults" sends each row and then sets its control, whose own action sends again:
    // so the NRD-535's clock colon ends off and the NRD-545's 1 Hz steps on. The NRD-545 holds
    // the lock meanwhile, so the run goes out without remote frames, and lets it go afterwards.
    void defaultsRun_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QString>("sent");
        QTest::newRow("535") << int(rxNRD535)
                             << "U00 U00 U11 U11 U2+0800 U41 U41 U61 U61 U71 U71 U81 U80 U91 U91";
        QTest::newRow("545") << int(rxNRD545)
                             << "U010 U011 U020 U020 U030 U030 U040 U040 U080 U080 U091 U091 U101 U101 U111 U111 "
                                "U121 U121 U130 U130 U2+0800 U181 U181 U191 U191 U2005 U21005 U22030 U241 U241 "
                                "U281 U281 U310 U310";
    }
    void defaultsRun()
    {
        QFETCH(int, type);
        QFETCH(QString, sent);
        NrdRig rig(type);
        frmPanelBase *p = rig.open();
        frmUserdefsBase *w = nullptr;
        if (type == rxNRD535) {
            p->menuEntry("mnuUserdefs")->trigger();
            w = qobject_cast<frmUserdefsBase *>(frmWelcome::openWindow(Win::frmUserdefs));
        } else {
            p->menuEntry("mnuUserdefs")->trigger();
            w = qobject_cast<frmUserdefsBase *>(frmWelcome::openWindow(Win::frmUserdefs545));
        }
        QVERIFY(w);
        // Move the values first, so that the run visibly brings them back.
        for (int i = 0; i < 3; ++i)
            QTest::mouseClick(w->findChild<SpinButton *>("spnCWpitch")->upButton(), Qt::LeftButton);
        const qsizetype before = rig.wire().size();
        QTest::mouseClick(w->cmdDefaults, Qt::LeftButton);
        QCOMPARE(rig.commandsSince(before, "U").join(' '), sent);
        QCOMPARE(w->findChild<QLabel *>("lblCWpitch")->text(), QString("+0800"));
        QVERIFY(!QApplication::overrideCursor());
        if (type == rxNRD535) {
            QVERIFY(w->findChild<QRadioButton *>("optColonblink_0")->isChecked());
            QCOMPARE(rig.sim().userSetting(8), QByteArray("0"));
        } else {
            const QByteArray run = rig.wire().mid(before);
            const QByteArray between = run.mid(run.indexOf("U010"), run.lastIndexOf("U310") - run.indexOf("U010"));
            QVERIFY2(!between.contains('H'), between.constData());
            QCOMPARE(rig.sim().userSetting(1), QByteArray("1"));
            QCOMPARE(w->findChild<QLabel *>("lblSweeptime")->text(), QString("0.05"));
            QCOMPARE(w->findChild<QLabel *>("lblAutostoptime")->text(), QString("3.0"));
            QCOMPARE(remoteLock, int16_t(0));
            QVERIFY(!rig.sim().remote());
        }
        QTest::mouseClick(w->cmdOK, Qt::LeftButton);
        deliverDeletes();
        QVERIFY(!isOpen(type == rxNRD535 ? Win::frmUserdefs : Win::frmUserdefs545));
        VERIFY_DIALOGS_CLEAN(rig.env);
    }

    // The VBT bypass shows on the panel's attenuator label.
    void vbtBypassColoursThePanel()
    {
        NrdRig rig(rxNRD535);
        frmNRD535 *p = rig.p535();
        p->menuEntry("mnuUserdefs")->trigger();
        auto *w = qobject_cast<frmUserdefs *>(frmWelcome::openWindow(Win::frmUserdefs));
        QVERIFY(w);
        rig.clickOption(w, "optVBTbypass_1");
        QCOMPARE(rig.sim().userSetting(1), QByteArray("0")); // "U10": bypassed
        QCOMPARE(p->lblAttenuator->backColor(), QColor(0xFF, 0x80, 0x00));
        rig.clickOption(w, "optVBTbypass_0");
        QCOMPARE(p->lblAttenuator->backColor(), QColor(0xFF, 0xFF, 0xC0));
    }

    // The spin buttons stop at their limits, the CW pitch lower upward than downward on the
    // NRD-545; "Set" sends what is shown.
    void spinLimits_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QString>("stem");
        QTest::addColumn<bool>("up");
        QTest::addColumn<int>("clicks");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<QString>("sent");
        QTest::newRow("545 sweep up") << int(rxNRD545) << "Sweeptime" << true << 60 << "0.50" << "U21050";
        QTest::newRow("545 sweep down") << int(rxNRD545) << "Sweeptime" << false << 3 << "0.05" << "U21005";
        QTest::newRow("545 pitch down") << int(rxNRD545) << "CWpitch" << false << 200 << "-2550" << "U2-2550";
        QTest::newRow("545 pitch up") << int(rxNRD545) << "CWpitch" << true << 200 << "+5000" << "U2+5000";
        QTest::newRow("545 scan time down") << int(rxNRD545) << "Scantime" << false << 5 << "0.3" << "U2003";
        QTest::newRow("535 pitch down") << int(rxNRD535) << "CWpitch" << false << 300 << "-5000" << "U2-5000";
    }
    void spinLimits()
    {
        QFETCH(int, type);
        QFETCH(QString, stem);
        QFETCH(bool, up);
        QFETCH(int, clicks);
        QFETCH(QString, shown);
        QFETCH(QString, sent);
        NrdRig rig(type);
        rig.openLine();
        QWidget *w = type == rxNRD535 ? static_cast<QWidget *>(frmUserdefs::open()) : frmUserdefs545::open();
        QVERIFY(w);
        auto *spin = w->findChild<SpinButton *>("spn" + stem);
        QVERIFY(spin);
        for (int i = 0; i < clicks; ++i)
            QTest::mouseClick(up ? spin->upButton() : spin->downButton(), Qt::LeftButton);
        QCOMPARE(w->findChild<QLabel *>("lbl" + stem)->text(), shown);
        const qsizetype before = rig.wire().size();
        rig.click(w, "cmd" + stem);
        QCOMPARE(rig.commandsSince(before), QStringList{sent});
    }

    // The DSP window asks about the noise reduction and beat canceller levels only when they
    // are not the set-up's defaults; Cancel stays, Yes sends the defaults back.
    void dspExit_data()
    {
        QTest::addColumn<int>("moveNr");   // 0: leave the levels alone
        QTest::addColumn<int>("answer");   // 0: no question expected
        QTest::addColumn<bool>("closes");
        QTest::addColumn<QString>("nrOnSet"); // item 29 on the set afterwards
        QTest::newRow("at defaults") << 0 << 0 << true << "050";
        QTest::newRow("moved, yes") << 80 << int(ui::vbYes) << true << "050";
        QTest::newRow("moved, no") << 80 << int(ui::vbNo) << true << "080";
        QTest::newRow("moved, cancel") << 80 << int(ui::vbCancel) << false << "080";
    }
    void dspExit()
    {
        QFETCH(int, moveNr);
        QFETCH(int, answer);
        QFETCH(bool, closes);
        QFETCH(QString, nrOnSet);
        NrdRig rig(rxNRD545);
        frmNRD545 *p = rig.p545();
        p->menuEntry("mnuAdvancedDSP")->trigger();
        auto *dsp = qobject_cast<frmAdvancedDSP *>(frmWelcome::openWindow(Win::frmAdvancedDSP));
        QVERIFY(dsp);
        // The load switched NR/BC off, sent the defaults and took the lock.
        QCOMPARE(rig.sim545().nrBc(), 0);
        QCOMPARE(dsp->lblNR->text(), QString("050"));
        QCOMPARE(dsp->lblBC->text(), QString("020"));
        QCOMPARE(dsp->lblNB->text(), QString("Off"));
        QCOMPARE(dsp->lblNB2->text(), QString("128"));
        QVERIFY(!dsp->vsbNR->isEnabled());
        QCOMPARE(remoteLock, int16_t(1));
        if (moveNr) {
            rig.click(dsp, "cmdNrbc_1");
            QCOMPARE(rig.sim545().nrBc(), 1);
            QVERIFY(dsp->vsbNR->isEnabled() && !dsp->vsbBC->isEnabled());
            dsp->vsbNR->setValue(moveNr);
            QCOMPARE(rig.sim().userSetting(29), QByteArray("080"));
        }
        if (answer)
            rig.env.dialogs->expectMsgBox("Noise reduction and Beat canceler", answer);
        rig.click(dsp, "cmdExit");
        deliverDeletes();
        VERIFY_DIALOGS_CLEAN(rig.env);
        if (answer)
            QCOMPARE(rig.env.dialogs->shown.last().title, QString("Defaults"));
        QCOMPARE(isOpen(Win::frmAdvancedDSP), !closes);
        QCOMPARE(rig.sim().userSetting(29), nrOnSet.toLatin1());
        // The lock the load took goes with the window.
        QCOMPARE(remoteLock, int16_t(closes ? 0 : 1));
    }

    // Closing a panel lets the set go, closes its windows, the port, and shows the start window.
    void closeReleasesTheSet_data()
    {
        QTest::addColumn<int>("type");
        QTest::newRow("535") << int(rxNRD535);
        QTest::newRow("545") << int(rxNRD545);
    }
    void closeReleasesTheSet()
    {
        QFETCH(int, type);
        NrdRig rig(type);
        frmPanelBase *p = rig.open();
        rig.click("cmdLock_1");
        p->menuEntry("mnuUserdefs")->trigger();
        const Win defs = type == rxNRD535 ? Win::frmUserdefs : Win::frmUserdefs545;
        QVERIFY(isOpen(defs));
        rig.click("cmdClose");
        deliverDeletes();
        QVERIFY(rig.panel.isNull());
        QVERIFY(!isOpen(defs));
        QCOMPARE(remoteLock, int16_t(0));
        QVERIFY(!rig.sim().remote());
        QVERIFY(!rig.welcome->Comm1.PortOpen());
        QVERIFY(rig.welcome->isVisible());
    }

    // A close that comes while a handler waits (a read from a set gone silent, a timed wait, the
    // dial running, the user settings being reset) is held until that handler returns: the job
    // stops at its next step, the waits on the line are cut, and then the panel goes as by any close.
    void closeWhileAHandlerWaits_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QString>("job");     // what the listener started
        QTest::addColumn<QByteArray>("cue");  // the close comes when the set is sent this
        QTest::addColumn<bool>("silent");     // and the set goes silent there
        QTest::newRow("535 update, set silent") << int(rxNRD535) << "mnuUpdate" << QByteArray("L") << true;
        QTest::newRow("545 mode, timed wait") << int(rxNRD545) << "cmdMode_2" << QByteArray("D") << false;
        QTest::newRow("535 dial running") << int(rxNRD535) << "cmdMovefreq" << QByteArray("F") << false;
        QTest::newRow("545 user settings reset") << int(rxNRD545) << "cmdDefaults" << QByteArray("U") << false;
    }
    void closeWhileAHandlerWaits()
    {
        QFETCH(int, type);
        QFETCH(QString, job);
        QFETCH(QByteArray, cue);
        QFETCH(bool, silent);
        NrdRig rig(type);
        frmPanelBase *p = rig.open();
        const Win win = type == rxNRD535 ? Win::frmNRD535 : Win::frmNRD545;
        const Win defs = type == rxNRD535 ? Win::frmUserdefs : Win::frmUserdefs545;
        QWidget *root = p;
        if (job == "cmdDefaults") {
            p->menuEntry("mnuUserdefs")->trigger();
            root = frmWelcome::openWindow(defs);
            QVERIFY(root);
        }
        auto *loan = dynamic_cast<SimOnLoan *>(rig.line()->device());
        QVERIFY(loan);
        bool running = true, closed = false, heldOpen = false, cut = false, valveOpened = false;
        // A read that did not end when its waits were cut would hang the test: the set speaks
        // again after a while, and the test fails.
        QTimer valve;
        valve.setSingleShot(true);
        connect(&valve, &QTimer::timeout, [&] {
            if (running) {
                valveOpened = true;
                loan->wake();
            }
        });
        loan->heard = [&](const QByteArray &b) {
            if (closed || !b.startsWith(cue))
                return;
            closed = true;
            loan->silent = silent;
            QTimer::singleShot(0, p, [&] {
                p->close();
                heldOpen = isOpen(win) && !rig.panel.isNull();
                cut = rig.welcome->Comm1.waitsCut();
                valve.start(500);
            });
        };
        if (job.startsWith("mnu"))
            p->menuEntry(job)->trigger();
        else
            rig.click(root, job);
        running = false;
        if (SimBackend *line = rig.line()) // the line may have gone with the panel
            if (auto *still = dynamic_cast<SimOnLoan *>(line->device()))
                still->heard = nullptr;
        QVERIFY(closed);
        QVERIFY(heldOpen);
        QVERIFY(cut);
        QVERIFY(!valveOpened);
        QTRY_VERIFY(rig.panel.isNull());
        QVERIFY(!isOpen(win) && !isOpen(defs));
        QVERIFY(frmWelcome::openWindow(defs) == nullptr);
        QVERIFY(!rig.welcome->Comm1.PortOpen());
        QVERIFY(rig.welcome->isVisible());
        QCOMPARE(remoteLock, int16_t(0));
    }

    // Label forms: values outside what a label can show give "?".
    void labelForms_data()
    {
        QTest::addColumn<QString>("form");
        QTest::addColumn<int>("value");
        QTest::addColumn<QString>("text");
        QTest::newRow("att 1") << "att" << 1 << "-20";
        QTest::newRow("att 2") << "att" << 2 << "?";
        QTest::newRow("535 pbs -2000") << "pbs535" << -2000 << "-2000";
        QTest::newRow("535 pbs 2001") << "pbs535" << 2001 << "?";
        QTest::newRow("535 bwc 499") << "bwc535" << 499 << "?";
        QTest::newRow("545 bwc 999") << "bwc545" << 999 << "9.99";
        QTest::newRow("545 bwc 0") << "bwc545" << 0 << "?";
        QTest::newRow("545 pbs -230") << "pbs545" << -230 << "-2.30";
        QTest::newRow("545 pbs 231") << "pbs545" << 231 << "?";
        QTest::newRow("gain 255") << "gain" << 255 << "99";
        QTest::newRow("gain 128") << "gain" << 128 << "49";
        QTest::newRow("tone 255") << "tone" << 255 << "+9";
        QTest::newRow("tone 127") << "tone" << 127 << " 0";
        QTest::newRow("tone 0") << "tone" << 0 << "-9";
        QTest::newRow("tone 256") << "tone" << 256 << "?";
        QTest::newRow("agc 0") << "agc545" << 0 << "Off";
        QTest::newRow("agc 9") << "agc545" << 9 << "1800";
        QTest::newRow("agc 10") << "agc545" << 10 << "?";
        QTest::newRow("autostop 30") << "autostop" << 30 << "03.0";
        QTest::newRow("pitch -50") << "pitch" << -50 << "-0050";
    }
    void labelForms()
    {
        QFETCH(QString, form);
        QFETCH(int, value);
        QFETCH(QString, text);
        using namespace nrdpanel;
        const std::map<QString, std::function<QString(int)>> forms = {
            {"att", attenuatorText},
            {"pbs535", pbs535Text},
            {"bwc535", bwc535Text},
            {"bwc545", bwc545Text},
            {"pbs545", pbs545Text},
            {"gain", gainText},
            {"tone", toneText},
            {"agc545", agc545Text},
            {"autostop", [](int v) { return spinText(kAutostopTime545, v); }},
            {"pitch", [](int v) { return spinText(kCwPitch545, v); }},
        };
        QCOMPARE(forms.at(form)(value), text);
    }
};

BRELVOX_TEST(TestNrdPanels)
#include "tst_nrd_panels.moc"
