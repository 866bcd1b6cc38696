// The AR7030 panel driven as a listener drives it, against the simulated receiver: what it
// shows after the load, stepping, typing, the keyboard, the wheel, mute, the menu, the end.
#include "core/frmWelcome.h"
#include "drivers/clsAR7030.h"
#include "panels/frmAR7030.h"
#include "ui/widgets/spin_button.h"
#include "panel_rig.h"
#include "testmain.h"

#include <QAction>
#include <QComboBox>
#include <QPushButton>
#include <QSlider>
#include <QTimer>
#include <QtTest>

namespace {
QString khz2(double khz) { return QString::number(khz, 'f', 2); }

// Filter 3 out, so that its button and Shift+F3 have nothing to select.
void withoutFilter3(Ar7030Sim &s) { s.setFilterWidth(3, 0); }

void deliverDeletes() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }
} // namespace

class TestAr7030Panel : public QObject {
    Q_OBJECT
private slots:
    void loadShowsTheReceiver()
    {
        PanelRig rig(rxAR7030);
        rig.prepareAr = withoutFilter3;
        frmAR7030 *p = rig.open<frmAR7030>();
        QVERIFY(p);
        QVERIFY(isOpen(Win::frmAR7030));
        QVERIFY(!rig.welcome->isVisible());
        QCOMPARE(rig.welcome->hub.panel(), static_cast<RxPanel *>(p));
        QCOMPARE(p->txtFrequencyA->text(), QString("9410.00"));
        QCOMPARE(p->lblMode->text(), QString("AM"));
        QCOMPARE(p->lblAgcspeed->text(), QString("Med"));
        QCOMPARE(p->lblAttenuator->text(), QString("0"));
        QCOMPARE(p->lblBandwidth->text(), QString("0.0")); // filter 3 is in use but not fitted
        QCOMPARE(p->cmdBandwidth[0]->text(), QString("2.2"));
        QCOMPARE(p->cmdBandwidth[3]->text(), QString("7.0"));
        for (int i : {2, 4, 5})
            QVERIFY2(!p->cmdBandwidth[size_t(i)]->isEnabled(), qPrintable(QString::number(i)));
        QCOMPARE(rxFirmware, int16_t(14));
        QCOMPARE(p->cmbFreqstep->count(), 19);
        QCOMPARE(p->cmbFreqstep->currentText(), QString("5"));
        QCOMPARE(p->lblVolume->text(), QString("51"));
        QCOMPARE(p->cmdPowerOnOff->text(), QString("ON"));
        QCOMPARE(rig.welcome->Comm1.Settings(), QString("1200,N,8,1"));
        QCOMPARE(p->objectName(), QString("frmAR7030"));
        QCOMPARE(p->txtFrequencyA->accessibleDescription(), QString("txtFrequencyA"));
        VERIFY_DIALOGS_CLEAN(rig.env);
    }

    void stepStopsAtTheLowerLimit()
    {
        PanelRig rig(rxAR7030);
        frmAR7030 *p = rig.open<frmAR7030>();
        rig.typeFrequency("10");
        QCOMPARE(p->txtFrequencyA->text(), QString("10.00"));
        const qsizetype before = rig.wireSize();
        rig.click("cmdfreqstep_0");
        QCOMPARE(p->txtFrequencyA->text(), QString("10.00"));
        QVERIFY(rig.wireSize() > before); // written again, at the limit
        QVERIFY(qAbs(rig.ar().frequencyKhz() - 10.0) < 0.01);
        VERIFY_DIALOGS_CLEAN(rig.env);
    }

    // The step starts from the two decimals shown, so 0.001 down from 1000.00 gives 999.999
    // every time, and the box keeps showing 1000.00.
    void smallStepStartsFromTheTextShown()
    {
        PanelRig rig(rxAR7030);
        frmAR7030 *p = rig.open<frmAR7030>();
        rig.typeFrequency("1000");
        p->cmbFreqstep->setEditText("0.001");
        QSignalSpy spy(p->AR7030A.get(), &clsAR7030::FrequencyAChanged);
        rig.click("cmdfreqstep_0");
        QCOMPARE(p->txtFrequencyA->text(), QString("1000.00"));
        p->spnFreqstep_SpinDown();
        QCOMPARE(spy.size(), 2);
        QCOMPARE(spy[0][0].toDouble(), 999.999);
        QCOMPARE(spy[1][0].toDouble(), 999.999);
        QCOMPARE(p->txtFrequencyA->text(), QString("1000.00"));
    }

    void spinButtonSteps()
    {
        PanelRig rig(rxAR7030);
        frmAR7030 *p = rig.open<frmAR7030>();
        QTest::mouseClick(p->spnFreqstep->findChild<QWidget *>("spinUp"), Qt::LeftButton);
        QCOMPARE(p->txtFrequencyA->text(), QString("9415.00"));
        QCOMPARE(khz2(rig.ar().frequencyKhz()), QString("9415.00"));
        QTest::mouseClick(p->spnFreqstep->findChild<QWidget *>("spinDown"), Qt::LeftButton);
        QCOMPARE(khz2(rig.ar().frequencyKhz()), QString("9410.00"));
        QVERIFY(p->spnFreqstep->isEnabled());
    }

    void keyboard_data()
    {
        QTest::addColumn<QString>("keys");
        QTest::addColumn<QString>("probe");
        QTest::addColumn<QString>("expected");
        QTest::newRow("up") << "Up" << "freq" << "9415.00";
        QTest::newRow("right") << "Right" << "freq" << "9415.00";
        QTest::newRow("down") << "Down" << "freq" << "9405.00";
        QTest::newRow("left") << "Left" << "freq" << "9405.00";
        QTest::newRow("ctrl up") << "Ctrl+Up" << "freq" << "9415.00";
        QTest::newRow("ctrl left twice") << "Ctrl+Left Ctrl+Left" << "box" << "9400.00";
        QTest::newRow("shift up does nothing") << "Shift+Up" << "sent" << "0";
        QTest::newRow("shift F1") << "Shift+F1" << "filter" << "1";
        QTest::newRow("shift F4") << "Shift+F4" << "lblBandwidth" << "7.0";
        QTest::newRow("shift F3 unfitted does nothing") << "Shift+F3" << "sent" << "0";
        QTest::newRow("shift L") << "Shift+L" << "lblMode" << "LSB";
        QTest::newRow("shift S") << "Shift+S" << "mode" << "2";
        QTest::newRow("shift D") << "Shift+D" << "mode" << "4";
        QTest::newRow("shift =") << "Shift+=" << "pbs" << "3";
        QTest::newRow("shift = twice") << "Shift+= Shift+=" << "lblPassbandshift" << "+0.2k";
        QTest::newRow("shift -") << "Shift+-" << "pbs" << "-3";
        QTest::newRow("shift 0 after =") << "Shift+= Shift+0" << "pbs" << "0";
        QTest::newRow("ctrl digits and F") << "Ctrl+9 Ctrl+4 Ctrl+0 Ctrl+0 Ctrl+F" << "freq" << "9400.00";
        QTest::newRow("ctrl F clears") << "Ctrl+9 Ctrl+4 Ctrl+0 Ctrl+0 Ctrl+F" << "lblMfreq" << "";
        QTest::newRow("ctrl digits shown") << "Ctrl+1 Ctrl+2 Ctrl+. Ctrl+5" << "lblMfreq" << "12.5";
        QTest::newRow("ctrl backspace") << "Ctrl+1 Ctrl+2 Ctrl+Backspace" << "lblMfreq" << "1";
        QTest::newRow("ctrl S") << "Ctrl+1 Ctrl+2 Ctrl+. Ctrl+5 Ctrl+S" << "step" << "12.5";
        QTest::newRow("alt =") << "Alt+=" << "lblVolume" << "56";
        QTest::newRow("alt -") << "Alt+-" << "lblVolume" << "46";
        QTest::newRow("alt 0") << "Alt+0" << "lblVolume" << "00";
        QTest::newRow("alt 0 on the receiver") << "Alt+0" << "volumeReg" << "15";
    }
    void keyboard()
    {
        QFETCH(QString, keys);
        QFETCH(QString, probe);
        QFETCH(QString, expected);
        PanelRig rig(rxAR7030);
        rig.prepareAr = withoutFilter3;
        frmAR7030 *p = rig.open<frmAR7030>();
        const qsizetype before = rig.wireSize();
        rig.press(keys);
        QString got;
        if (probe == "freq")
            got = khz2(rig.ar().frequencyKhz());
        else if (probe == "box")
            got = p->txtFrequencyA->text();
        else if (probe == "sent")
            got = QString::number(rig.wireSize() - before);
        else if (probe == "filter")
            got = QString::number(rig.ar().filter());
        else if (probe == "mode")
            got = QString::number(rig.ar().mode());
        else if (probe == "pbs")
            got = QString::number(rig.ar().state().pbs);
        else if (probe == "volumeReg")
            got = QString::number(rig.ar().state().volume);
        else if (probe == "step")
            got = p->cmbFreqstep->currentText();
        else
            got = p->findChild<QLabel *>(probe)->text();
        QCOMPARE(got, expected);
        VERIFY_DIALOGS_CLEAN(rig.env);
    }

    void wheelTunesOnlyOverTheFrequencyBox()
    {
        PanelRig rig(rxAR7030);
        frmAR7030 *p = rig.open<frmAR7030>();
        QLineEdit *box = p->txtFrequencyA;
        auto wheel = [&](int delta) {
            QWheelEvent e(QPointF(5, 5), box->mapToGlobal(QPointF(5, 5)), QPoint(), QPoint(0, delta), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
            QApplication::sendEvent(box, &e);
        };
        auto move = [&](QWidget *w) {
            QMouseEvent e(QEvent::MouseMove, QPointF(3, 3), w->mapToGlobal(QPointF(3, 3)), Qt::NoButton,
                          Qt::NoButton, Qt::NoModifier);
            QApplication::sendEvent(w, &e);
        };
        wheel(120);
        QCOMPARE(box->text(), QString("9410.00")); // not armed yet
        move(box);
        QVERIFY(p->wheelArmed());
        wheel(120);
        QCOMPARE(box->text(), QString("9415.00"));
        wheel(-240);
        QCOMPARE(box->text(), QString("9410.00"));
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(box, &leave);
        QVERIFY(!p->wheelArmed());
        wheel(120);
        QCOMPARE(box->text(), QString("9410.00"));
        move(box);
        move(p->lblMode);
        QVERIFY(!p->wheelArmed());
        wheel(120);
        QCOMPARE(khz2(rig.ar().frequencyKhz()), QString("9410.00"));
    }

    void muteAndUnmute_data()
    {
        QTest::addColumn<int>("disableLines");
        QTest::newRow("line outputs muted too") << 0;
        QTest::newRow("line outputs disabled") << 1;
    }
    void muteAndUnmute()
    {
        QFETCH(int, disableLines);
        PanelRig rig(rxAR7030);
        slotLevelL() = 30;
        slotLevelR() = 20;
        slotDisableLLLR() = float(disableLines);
        frmAR7030 *p = rig.open<frmAR7030>();
        QCOMPARE(p->vsbLineL->isEnabled(), disableLines == 0);
        QCOMPARE(p->lblLineL->text(), QString("30"));
        const QString lineRShown = p->lblLineR->text();
        const int lineLBefore = rig.ar().state().auxLeft;
        const int volumeBefore = rig.ar().state().volume;
        rig.click("lblMute");
        QCOMPARE(p->lblMute->backColor(), QColor(255, 0, 0));
        QCOMPARE(rig.ar().state().volume, 15); // the register's floor: silent
        QCOMPARE(rig.ar().state().auxLeft, disableLines ? lineLBefore : 27);
        QCOMPARE(p->lblVolume->text(), QString("00"));
        rig.click("lblMute");
        QCOMPARE(p->lblMute->backColor(), QColor(0, 255, 0));
        QCOMPARE(rig.ar().state().volume, volumeBefore);
        QCOMPARE(rig.ar().state().auxLeft, lineLBefore);
        QCOMPARE(p->lblVolume->text(), QString("51"));
        QCOMPARE(p->lblLineL->text(), QString("30"));
        QCOMPARE(p->lblLineR->text(), lineRShown);
    }

    void entries_data()
    {
        QTest::addColumn<QString>("route");   // "box", or the keypad's F, M, S
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("tuned");   // expected frequency, empty when refused
        QTest::addColumn<QString>("message"); // expected message, empty when none
        QTest::addColumn<QString>("title");
        QTest::newRow("box 14230") << "box" << "14230" << "14230.00" << "" << "";
        QTest::newRow("box 30 MHz") << "box" << "30000" << "30000.00" << "" << "";
        QTest::newRow("box below") << "box" << "9.99" << "" << "Frequency outside range" << "Input Error";
        QTest::newRow("box above") << "box" << "40000" << "" << "Frequency outside range" << "Input Error";
        QTest::newRow("keypad F") << "F" << "6070.5" << "6070.50" << "" << "";
        QTest::newRow("keypad F above") << "F" << "40000" << "" << "\nFrequency\noutside range" << "Error";
        QTest::newRow("keypad M above") << "M" << "100" << "" << "\nMemory cell\noutside range" << "Error";
        QTest::newRow("keypad S above") << "S" << "150" << "" << "\nFrequency Stepsize\noutside range" << "Error";
    }
    void entries()
    {
        QFETCH(QString, route);
        QFETCH(QString, typed);
        QFETCH(QString, tuned);
        QFETCH(QString, message);
        QFETCH(QString, title);
        PanelRig rig(rxAR7030);
        frmAR7030 *p = rig.open<frmAR7030>();
        p->cmbFreqstep->setEditText("9");
        if (!message.isEmpty())
            rig.env.dialogs->expectMsgBox(message);
        const qsizetype before = rig.wireSize();
        if (route == "box") {
            rig.typeFrequency(typed);
        } else {
            for (QChar c : typed)
                rig.click(c == '.' ? "cmdDot" : qPrintable("cmd0to9_" + QString(c)));
            QCOMPARE(p->lblMfreq->text(), typed);
            rig.click(route == "F" ? "cmdEnterfreq" : route == "M" ? "cmdEnterMem" : "cmdEnterS");
            QCOMPARE(p->lblMfreq->text(), QString());
        }
        VERIFY_DIALOGS_CLEAN(rig.env);
        if (!message.isEmpty()) {
            QCOMPARE(rig.env.dialogs->shown.last().title, title);
            QCOMPARE(rig.wireSize(), before); // nothing sent
            if (route == "S")
                QCOMPARE(p->cmbFreqstep->currentText(), QString("5"));
        } else {
            QCOMPARE(khz2(rig.ar().frequencyKhz()), tuned);
            QCOMPARE(p->txtFrequencyA->text(), tuned);
        }
    }

    void memoryCellTunesAndSets()
    {
        PanelRig rig(rxAR7030);
        rig.prepareAr = [](Ar7030Sim &s) {
            // cell 7: CW with BFO byte 6, filter 2, shift byte 3
            const quint32 w = quint32(std::lround(7020.4 * Ar7030Sim::kStepsPerKhz));
            s.poke(2, 28, quint8(w >> 16));
            s.poke(2, 29, quint8(w >> 8));
            s.poke(2, 30, quint8(w));
            s.poke(2, 31, 0x25);
            s.poke(2, Ar7030Sim::kMemoryPbs + 7, 3);
            s.poke(1, Ar7030Sim::Reg1MemorySqlBfo + 7, 6);
        };
        frmAR7030 *p = rig.open<frmAR7030>();
        rig.press("Ctrl+7 Ctrl+M");
        QCOMPARE(khz2(rig.ar().frequencyKhz()), QString("7020.40"));
        QCOMPARE(rig.ar().mode(), 5);
        QCOMPARE(rig.ar().filter(), 2);
        QCOMPARE(rig.ar().state().pbs, 3);
        QCOMPARE(rig.ar().state().bfo, 6);
        QCOMPARE(p->lblMode->text(), QString("CW"));
        QCOMPARE(p->lblBeatfreqosc->text(), QString("+0.2k"));
        // an erased cell changes nothing
        rig.press("Ctrl+9 Ctrl+9 Ctrl+M");
        QCOMPARE(khz2(rig.ar().frequencyKhz()), QString("7020.40"));
        VERIFY_DIALOGS_CLEAN(rig.env);
    }

    void roundingButtonsGoThroughTheHub_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("button");
        QTest::addColumn<QString>("tuned");
        QTest::newRow("i 5 down") << "9412.49" << "lblInt5" << "9410.00";
        QTest::newRow("i 5 up") << "9412.50" << "lblInt5" << "9415.00";
        QTest::newRow("i 1 up") << "9412.50" << "lbnInt1" << "9413.00";
        QTest::newRow("i 1 down") << "9412.49" << "lbnInt1" << "9412.00";
    }
    void roundingButtonsGoThroughTheHub()
    {
        QFETCH(QString, typed);
        QFETCH(QString, button);
        QFETCH(QString, tuned);
        PanelRig rig(rxAR7030);
        frmAR7030 *p = rig.open<frmAR7030>();
        rig.typeFrequency(typed);
        QSignalSpy own(p->AR7030A.get(), &clsAR7030::FrequencyAChanged);
        rig.click(qPrintable(button));
        QCOMPARE(khz2(rig.ar().frequencyKhz()), tuned);
        QCOMPARE(p->txtFrequencyA->text(), tuned);
        QCOMPARE(own.size(), 0); // the start window's driver wrote it, the hub showed it
    }

    void goRunsUntilStopped()
    {
        PanelRig rig(rxAR7030);
        frmAR7030 *p = rig.open<frmAR7030>();
        rig.press("Up"); // the direction GO repeats
        int steps = 0;
        connect(p->AR7030A.get(), &clsAR7030::FrequencyAChanged, p, [&] {
            if (++steps == 20)
                QTimer::singleShot(0, p, [p] { p->cmdMovefreq->click(); });
        });
        QTest::mouseClick(p->cmdMovefreq, Qt::LeftButton);
        QVERIFY(!p->running());
        QCOMPARE(p->cmdMovefreq->text(), QString("GO"));
        QVERIFY(steps >= 20);
        QVERIFY(rig.ar().frequencyKhz() > 9415 + 5 * 18);
        const QString stopped = p->txtFrequencyA->text();
        QTest::qWait(20);
        QCOMPARE(p->txtFrequencyA->text(), stopped);
    }

    void menuEntries()
    {
        PanelRig rig(rxAR7030);
        frmAR7030 *p = rig.open<frmAR7030>();
        for (const char *n : {"mnuUpdate", "mnuResetRX", "mnuSetup", "mnuFirmware", "mnuLast20", "mnuMaqrkfreqs",
                              "mnuScratchpad", "mnuEnableLLLR", "mnuDisableLLLR", "mnuPowerOn", "mnuPowerOff",
                              "mnuClose", "mnuExit", "mnuBdxc", "mnuOwn", "mnu320Files", "mnuIlg2Rx", "mnuAero2rx",
                              "mnuConvertILG1", "mnuConvertaero2", "mnuLog", "mnuTracking", "mnuConvertILG2",
                              "mnuConvertaero", "mnuSmeter", "mnuScanBand", "mnuScanFreqlist", "mnuScanfreqpairs",
                              "mnuTimean", "mnuTimean2prt", "mnuProphisto", "mnuMemman", "mnuPCclock", "mnuRXclock",
                              "mnuRxTimer", "mnuHtmlhelp", "mnuAbout"})
            QVERIFY2(p->menuEntry(n), n);
        QCOMPARE(p->menuEntry("mnuBdxc")->text(), QString("BDXC . . ."));
        QVERIFY(!p->menuEntry("mnuBdxc")->isEnabled()); // its window is not there yet
        QVERIFY(p->menuEntry("mnuSetup")->isEnabled());

        rig.env.dialogs->expectMsgBox("7030_14A");
        p->menuEntry("mnuFirmware")->trigger();
        VERIFY_DIALOGS_CLEAN(rig.env);
        QCOMPARE(rig.env.dialogs->shown.last().title, QString("Firmware Version"));

        p->menuEntry("mnuHtmlhelp")->trigger();
        QCOMPARE(rig.env.programs->started.last(),
                 (QStringList{"xdg-open", dirPath + "brelvox2.chm"}));

        p->menuEntry("mnuDisableLLLR")->trigger();
        QVERIFY(!p->vsbLineL->isEnabled() && !p->vsbLineR->isEnabled());
        QCOMPARE(slotDisableLLLR(), 1.0f);
        p->menuEntry("mnuEnableLLLR")->trigger();
        QVERIFY(p->vsbLineL->isEnabled());
        QCOMPARE(slotDisableLLLR(), 0.0f);

        p->menuEntry("mnuPowerOff")->trigger();
        QCOMPARE(p->cmdPowerOnOff->text(), QString("OFF"));
        QVERIFY(!rig.ar().state().powerOn);
        rig.click("cmdPowerOnOff");
        QCOMPARE(p->cmdPowerOnOff->text(), QString("ON"));
        QVERIFY(rig.ar().state().powerOn);

        // a change on the receiver's own front shows after Update
        rig.ar().poke(0, Ar7030Sim::RegAgc, 2);
        p->menuEntry("mnuUpdate")->trigger();
        QCOMPARE(p->lblAgcspeed->text(), QString("Slw"));
    }

    void closeEndsEverythingAndReturnsToTheStart()
    {
        PanelRig rig(rxAR7030);
        frmAR7030 *p = rig.open<frmAR7030>();
        p->move(300, 200);
        p->menuEntry("mnuAbout")->trigger();
        QVERIFY(isOpen(Win::frmAbout));
        p->menuEntry("mnuSetup")->trigger();
        QVERIFY(isOpen(Win::frmSetUp));
        rig.click("cmdClose");
        deliverDeletes();
        QVERIFY(rig.panel.isNull());
        QVERIFY(!isOpen(Win::frmAR7030));
        QVERIFY(!isOpen(Win::frmAbout));
        QVERIFY(!isOpen(Win::frmSetUp));
        QVERIFY(!rig.welcome->Comm1.PortOpen());
        QVERIFY(rig.welcome->isVisible());
        QVERIFY(rig.welcome->hub.panel() == nullptr);
        QVERIFY(frmWelcome::openWindow(Win::frmAR7030) == nullptr);
        QCOMPARE(formTop[size_t(Win::frmAR7030)], 200 * 15);
        // keys and wheel go nowhere now
        QTest::keyClick(rig.welcome.get(), Qt::Key_Up);
        VERIFY_DIALOGS_CLEAN(rig.env);
    }

    // A close that comes while the receiver is being read waits for the read to end: the read
    // runs inside a handler of the panel and needs its driver.
    void closeDuringAReadWaitsForIt()
    {
        PanelRig rig(rxAR7030);
        frmAR7030 *p = rig.open<frmAR7030>();
        rig.line()->setPaced(true); // replies take their time on the wire
        QTimer::singleShot(15, p, [p] { p->close(); });
        p->menuEntry("mnuUpdate")->trigger();
        QVERIFY(!rig.panel.isNull());
        QCOMPARE(p->lblMode->text(), QString("AM")); // the update ran to its end
        QTRY_VERIFY(!isOpen(Win::frmAR7030));
        deliverDeletes();
        QVERIFY(rig.panel.isNull());
        QVERIFY(!rig.welcome->Comm1.PortOpen());
    }

    void modeButtonReadsTheReceiverBack()
    {
        PanelRig rig(rxAR7030);
        frmAR7030 *p = rig.open<frmAR7030>();
        rig.ar().poke(0, Ar7030Sim::RegSquelch, 30); // as if set on the receiver itself
        rig.click("cmdMode_6");
        QCOMPARE(rig.ar().mode(), 7);
        QCOMPARE(p->lblMode->text(), QString("USB"));
        QCOMPARE(p->lblSquelch->text(), QString("19.8"));
        QCOMPARE(p->vsbSquelch->value(), 20);
        // the bars write what the listener sets
        p->vsbSquelch->setValue(33);
        QCOMPARE(rig.ar().peek(0, Ar7030Sim::RegSquelch), quint8(50));
        p->vsbPassbandshift->setValue(-42);
        QCOMPARE(rig.ar().state().pbs, -126);
        QCOMPARE(p->lblPassbandshift->text(), QString("-4.2k"));
        rig.click("lblPassbandshift");
        QCOMPARE(rig.ar().state().pbs, 0);
    }
};

BRELVOX_TEST(TestAr7030Panel)
#include "tst_ar7030_panel.moc"
