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

// Filter 3 out, so that its button and Shift+F3 have nothing to select; memory cell 7 holds
// 7020.40 kHz CW with filter 2.
void prepare(Ar7030Sim &s)
{
    s.setFilterWidth(3, 0);
    const quint32 w = quint32(std::lround(7020.4 * Ar7030Sim::kStepsPerKhz));
    s.poke(2, 28, quint8(w >> 16));
    s.poke(2, 29, quint8(w >> 8));
    s.poke(2, 30, quint8(w));
    s.poke(2, 31, 0x25);
}

void deliverDeletes() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }
} // namespace

class TestAr7030Panel : public QObject {
    Q_OBJECT
private slots:
    void loadShowsTheReceiver()
    {
        PanelRig rig(rxAR7030);
        rig.prepareAr = prepare;
        frmAR7030 *p = rig.open<frmAR7030>();
        QVERIFY(p && isOpen(Win::frmAR7030) && !rig.welcome->isVisible());
        QCOMPARE(rig.welcome->hub.panel(), static_cast<RxPanel *>(p));
        QCOMPARE(p->txtFrequencyA->text(), QString("9410.00"));
        QCOMPARE(p->lblMode->text(), QString("AM"));
        QCOMPARE(p->lblAgcspeed->text(), QString("Med"));
        QCOMPARE(p->lblAttenuator->text(), QString("0"));
        QCOMPARE(p->lblBandwidth->text(), QString("0.0")); // filter 3 is in use but not fitted
        QCOMPARE(p->cmdBandwidth[3]->text(), QString("7.0"));
        QVERIFY(!p->cmdBandwidth[2]->isEnabled());
        QCOMPARE(rxFirmware, int16_t(14));
        QCOMPARE(p->cmbFreqstep->currentText(), QString("5"));
        QCOMPARE(p->lblVolume->text(), QString("51"));
        QCOMPARE(p->cmdPowerOnOff->text(), QString("ON"));
        QCOMPARE(rig.welcome->Comm1.Settings(), QString("1200,N,8,1"));
        VERIFY_DIALOGS_CLEAN(rig.env);
    }

    // Keys as a key sequence, "click:" a button, "type:" into the frequency box and Enter,
    // "pad:" on the keypad, "step:" the step box's text, "spin:" a half of the spin button;
    // then a probe: the receiver's frequency, filter, mode, shift or volume register, the
    // frequencies written, how many bytes were sent, the box, the step, the refusal (bytes
    // sent and the message's title), or a label by name; several probes separated by "|".
    // A row may expect a message.
    void actions_data()
    {
        QTest::addColumn<QString>("actions");
        QTest::addColumn<QString>("probe");
        QTest::addColumn<QString>("expected");
        QTest::addColumn<QString>("message");
        // At the lower limit the frequency is written again and stays; a 0.001 step starts from
        // the two decimals shown, so down from 1000.00 gives 999.999 each time.
        QTest::newRow("lower limit") << "type:10 click:cmdfreqstep_0" << "written|box" << "10 10|10.00" << "";
        QTest::newRow("0.001 from 1000.00") << "type:1000 step:0.001 click:cmdfreqstep_0 spin:spinDown" << "written|box"
                                            << "1000 999.999 999.999|1000.00" << "";
        QTest::newRow("spin button") << "spin:spinUp spin:spinUp spin:spinDown" << "written" << "9415 9420 9415" << "";
        QTest::newRow("up") << "Up" << "freq" << "9415.00" << "";
        QTest::newRow("left") << "Left" << "freq" << "9405.00" << "";
        QTest::newRow("ctrl left twice") << "Ctrl+Left Ctrl+Left" << "box" << "9400.00" << "";
        QTest::newRow("shift up does nothing") << "Shift+Up" << "sent" << "0" << "";
        QTest::newRow("shift F1") << "Shift+F1" << "filter" << "1" << "";
        QTest::newRow("shift F4") << "Shift+F4" << "lblBandwidth" << "7.0" << "";
        QTest::newRow("shift F3 unfitted does nothing") << "Shift+F3" << "sent" << "0" << "";
        QTest::newRow("shift L") << "Shift+L" << "lblMode" << "LSB" << "";
        QTest::newRow("shift D") << "Shift+D" << "mode" << "4" << "";
        QTest::newRow("shift = twice") << "Shift+= Shift+=" << "lblPassbandshift" << "+0.2k" << "";
        QTest::newRow("shift -") << "Shift+-" << "pbs" << "-3" << "";
        QTest::newRow("shift 0 after =") << "Shift+= Shift+0" << "pbs" << "0" << "";
        QTest::newRow("ctrl digits and F") << "Ctrl+9 Ctrl+4 Ctrl+0 Ctrl+0 Ctrl+F" << "freq|lblMfreq" << "9400.00|" << "";
        QTest::newRow("ctrl backspace") << "Ctrl+1 Ctrl+2 Ctrl+Backspace" << "lblMfreq" << "1" << "";
        QTest::newRow("ctrl S") << "Ctrl+1 Ctrl+2 Ctrl+. Ctrl+5 Ctrl+S" << "step" << "12.5" << "";
        QTest::newRow("ctrl M recalls a cell") << "Ctrl+7 Ctrl+M" << "freq|lblMode" << "7020.40|CW" << "";
        QTest::newRow("ctrl M on an erased cell") << "Ctrl+9 Ctrl+9 Ctrl+M" << "freq" << "9410.00" << "";
        QTest::newRow("alt =") << "Alt+=" << "lblVolume" << "56" << "";
        QTest::newRow("alt -") << "Alt+-" << "lblVolume" << "46" << "";
        QTest::newRow("alt 0 on the receiver") << "Alt+0" << "volumeReg" << "15" << "";
        QTest::newRow("round to 5 kHz") << "type:9412.49 click:lblInt5" << "box" << "9410.00" << "";
        QTest::newRow("round to 1 kHz") << "type:9412.50 click:lbnInt1" << "freq" << "9413.00" << "";
        QTest::newRow("mode button") << "click:cmdMode_6" << "mode|lblMode" << "7|USB" << "";
        QTest::newRow("box 14230") << "type:14230" << "freq" << "14230.00" << "";
        QTest::newRow("box below") << "type:9.99" << "refused" << "0 Input Error" << "Frequency outside range";
        QTest::newRow("box above") << "type:32016.001" << "refused" << "0 Input Error" << "Frequency outside range";
        QTest::newRow("keypad shows") << "pad:6070.5" << "lblMfreq" << "6070.5" << "";
        QTest::newRow("keypad F") << "pad:6070.5 click:cmdEnterfreq" << "box|lblMfreq" << "6070.50|" << "";
        QTest::newRow("keypad F above") << "pad:40000 click:cmdEnterfreq" << "refused" << "0 Error"
                                        << "\nFrequency\noutside range";
        QTest::newRow("keypad M above") << "pad:100 click:cmdEnterMem" << "refused" << "0 Error"
                                        << "\nMemory cell\noutside range";
        QTest::newRow("keypad S above") << "step:9 pad:150 click:cmdEnterS" << "step" << "5"
                                        << "\nFrequency Stepsize\noutside range";
    }
    void actions()
    {
        QFETCH(QString, actions);
        QFETCH(QString, probe);
        QFETCH(QString, expected);
        QFETCH(QString, message);
        PanelRig rig(rxAR7030);
        rig.prepareAr = prepare;
        frmAR7030 *p = rig.open<frmAR7030>();
        if (!message.isEmpty())
            rig.env.dialogs->expectMsgBox(message);
        QSignalSpy written(p->AR7030A.get(), &clsAR7030::FrequencyAChanged);
        const qsizetype before = rig.wireSize();
        for (const QString &a : actions.split(u' ')) {
            const QString arg = a.section(u':', 1);
            if (a.startsWith("pad:"))
                for (QChar c : arg)
                    rig.click(c == '.' ? "cmdDot" : qPrintable("cmd0to9_" + QString(c)));
            else if (a.startsWith("click:"))
                rig.click(qPrintable(arg));
            else if (a.startsWith("type:"))
                rig.typeFrequency(arg);
            else if (a.startsWith("step:"))
                p->cmbFreqstep->setEditText(arg);
            else if (a.startsWith("spin:"))
                QTest::mouseClick(p->spnFreqstep->findChild<QWidget *>(arg), Qt::LeftButton);
            else
                rig.press(a);
        }
        QStringList freqs;
        for (const auto &args : written)
            freqs << QString::number(args[0].toDouble());
        const QMap<QString, std::function<QString()>> probes{
            {"freq", [&] { return khz2(rig.ar().frequencyKhz()); }},
            {"written", [&] { return freqs.join(u' '); }},
            {"box", [&] { return p->txtFrequencyA->text(); }},
            {"sent", [&] { return QString::number(rig.wireSize() - before); }},
            {"filter", [&] { return QString::number(rig.ar().filter()); }},
            {"mode", [&] { return QString::number(rig.ar().mode()); }},
            {"pbs", [&] { return QString::number(rig.ar().state().pbs); }},
            {"volumeReg", [&] { return QString::number(rig.ar().state().volume); }},
            {"step", [&] { return p->cmbFreqstep->currentText(); }},
            {"refused",
             [&] { return QString::number(rig.wireSize() - before) + ' ' + rig.env.dialogs->shown.value(0).title; }}};
        const QStringList ps = probe.split(u'|'), es = expected.split(u'|');
        for (qsizetype i = 0; i < ps.size(); ++i)
            QCOMPARE(probes.contains(ps[i]) ? probes[ps[i]]() : p->findChild<QLabel *>(ps[i])->text(), es.value(i));
        VERIFY_DIALOGS_CLEAN(rig.env);
    }

    // The wheel tunes only once the mouse has moved over the frequency box, and no longer once
    // it has left or moved over something else.
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
        wheel(120);
        QCOMPARE(box->text(), QString("9415.00"));
        wheel(-240);
        QCOMPARE(box->text(), QString("9410.00"));
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(box, &leave);
        wheel(120);
        QCOMPARE(box->text(), QString("9410.00"));
        move(box);
        move(p->lblMode);
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
        QVERIFY(rig.ar().frequencyKhz() > 9415 + 5 * 18);
        const QString stopped = p->txtFrequencyA->text();
        QTest::qWait(20);
        QCOMPARE(p->txtFrequencyA->text(), stopped);
    }

    void menuEntries()
    {
        PanelRig rig(rxAR7030);
        frmAR7030 *p = rig.open<frmAR7030>();
        rig.env.dialogs->expectMsgBox("7030_14A");
        p->menuEntry("mnuFirmware")->trigger();
        VERIFY_DIALOGS_CLEAN(rig.env);
        QCOMPARE(rig.env.dialogs->shown.last().title, QString("Firmware Version"));
        p->menuEntry("mnuHtmlhelp")->trigger();
        QCOMPARE(rig.env.programs->started.last(), (QStringList{"xdg-open", dirPath + "brelvox2.chm"}));
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
        QVERIFY(rig.ar().state().powerOn);
        // changes on the receiver's own front show after Update
        rig.ar().poke(0, Ar7030Sim::RegAgc, 2);
        rig.ar().poke(0, Ar7030Sim::RegSquelch, 30);
        p->menuEntry("mnuUpdate")->trigger();
        QCOMPARE(p->lblAgcspeed->text(), QString("Slw"));
        QCOMPARE(p->lblSquelch->text(), QString("19.8"));
        // the bars write what the listener sets
        p->vsbSquelch->setValue(33);
        QCOMPARE(rig.ar().peek(0, Ar7030Sim::RegSquelch), quint8(50));
        p->vsbPassbandshift->setValue(-42);
        QCOMPARE(rig.ar().state().pbs, -126);
        QCOMPARE(p->lblPassbandshift->text(), QString("-4.2k"));
    }

    void closeEndsEverythingAndReturnsToTheStart()
    {
        PanelRig rig(rxAR7030);
        frmAR7030 *p = rig.open<frmAR7030>();
        p->move(300, 200);
        p->menuEntry("mnuAbout")->trigger();
        p->menuEntry("mnuSetup")->trigger();
        QVERIFY(isOpen(Win::frmAbout) && isOpen(Win::frmSetUp));
        rig.click("cmdClose");
        deliverDeletes();
        QVERIFY(rig.panel.isNull());
        QVERIFY(!isOpen(Win::frmAR7030) && !isOpen(Win::frmAbout) && !isOpen(Win::frmSetUp));
        QVERIFY(!rig.welcome->Comm1.PortOpen());
        QVERIFY(rig.welcome->isVisible());
        QVERIFY(rig.welcome->hub.panel() == nullptr);
        QCOMPARE(formTop[size_t(Win::frmAR7030)], 200 * 15);
        QTest::keyClick(rig.welcome.get(), Qt::Key_Up); // keys go nowhere now
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
};

BRELVOX_TEST(TestAr7030Panel)
#include "tst_ar7030_panel.moc"
