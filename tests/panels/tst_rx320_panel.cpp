// The RX-320 panel against the simulated receiver: its settings file across sessions, its
// filter groups, its keyboard, and muting.
#include "core/frmWelcome.h"
#include "core/textfile.h"
#include "drivers/clsRX320.h"
#include "panels/frmRX320.h"
#include "panel_rig.h"
#include "testmain.h"

#include <QAction>
#include <QComboBox>
#include <QPushButton>
#include <QSlider>
#include <QtTest>

namespace {
// freq, filter, shift, AGC, BFO, mode, volume, line
QByteArray settingsLines(const QStringList &v) { return textfile::joinLines(v); }

const QStringList kUsb7100 = {"7100.5", "10", "-150", "1", "400", "1", "40", "20"};
const QStringList kAmWide = {"7100.5", "33", "0", "2", "0", "0", "40", "20"};

double tunedKhz(const Rx320Sim &s) { return s.tunedHz() / 1000.0; }

void deliverDeletes() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }
} // namespace

class TestRx320Panel : public QObject {
    Q_OBJECT
private slots:
    // The load sends the file's eight settings; closed and opened again, the changed settings
    // come back and a fresh receiver is tuned to them.
    void settingsRoundTripAcrossSessions()
    {
        PanelRig rig(rxRX320);
        writeFile(rig.dir.filePath("rx320settings.ini"), settingsLines(kUsb7100));
        frmRX320 *p = rig.open<frmRX320>();
        QVERIFY(qAbs(tunedKhz(rig.rx()) - 7100.5) < 0.005);
        QCOMPARE(rig.rx().mode(), 1);
        QCOMPARE(rig.rx().filterIndex(), 10);
        QCOMPARE(rig.rx().agc(), 1);
        QCOMPARE(p->txtFrequencyA->text(), QString("7100.500"));
        QCOMPARE(p->lblPassbandshift->text(), QString("-150"));
        QVERIFY(!p->vsbBeatfreqosc->isEnabled()); // the BFO waits for CW
        QCOMPARE(p->shownGroup(), 1);             // the group that holds 3000 Hz
        rig.typeFrequency("9410");
        rig.press("Shift+C Shift+F2 Shift+F5 Alt+= Shift+= Shift+= Shift+=");
        QVERIFY(p->vsbBeatfreqosc->isEnabled());
        QCOMPARE(p->lblBandwidth->text(), QString("1050")); // group 2, button 6
        rig.click("cmdClose");
        deliverDeletes();
        QCOMPARE(readFile(rig.dir.filePath("rx320settings.ini")),
                 settingsLines({"9410", "23", "0", "1", "400", "3", "45", "20"}));

        frmRX320 *again = rig.open<frmRX320>();
        QCOMPARE(int(rig.rxs.size()), 2); // a new receiver on the new line
        QVERIFY(qAbs(tunedKhz(rig.rx()) - 9410.0) < 0.005);
        QCOMPARE(rig.rx().mode(), 3);
        QCOMPARE(rig.rx().filterIndex(), 23);
        QVERIFY(qAbs(rig.rx().bfoHz() - 400) < 1); // the stored BFO is in use in CW
        QCOMPARE(rig.rx().speakerByte(), int(rx320LevelByte(45)));
        QCOMPARE(again->txtFrequencyA->text(), QString("9410.000"));
        QCOMPARE(again->lblBeatfreqosc->text(), QString("400"));
        QCOMPARE(again->shownGroup(), 2);
        VERIFY_DIALOGS_CLEAN(rig.env);
    }

    void missingSettingsFileIsFatal()
    {
        PanelRig rig(rxRX320);
        QCOMPARE(errorOf([&] { rig.welcome->imgGo_Click(); }), 53);
        deliverDeletes();
        QVERIFY(!isOpen(Win::frmRX320));
        QVERIFY(rig.welcome->hub.panel() == nullptr);
    }

    void muteOnExit_data()
    {
        QTest::addColumn<int>("speaker");
        QTest::addColumn<int>("line");
        QTest::newRow("loudspeaker") << 1 << 0;
        QTest::newRow("line") << 0 << 1;
    }
    void muteOnExit()
    {
        QFETCH(int, speaker);
        QFETCH(int, line);
        PanelRig rig(rxRX320);
        slotMute(0) = float(speaker);
        slotMute(1) = float(line);
        writeFile(rig.dir.filePath("rx320settings.ini"), settingsLines(kAmWide));
        rig.open<frmRX320>();
        rig.click("cmdClose");
        deliverDeletes();
        QCOMPARE(rig.rx().speakerByte(), speaker ? 63 : int(rx320LevelByte(40)));
        QCOMPARE(rig.rx().lineByte(), line ? 63 : int(rx320LevelByte(20)));
        // the file keeps the levels the listener had
        QCOMPARE(readFile(rig.dir.filePath("rx320settings.ini")), settingsLines(kAmWide));
    }

    // Keys as a key sequence, "click:" a button, "hub:" a mode letter from the hub; then a
    // probe of the receiver, the panel, or a label by name.
    void actions_data()
    {
        QTest::addColumn<QString>("actions");
        QTest::addColumn<QString>("probe");
        QTest::addColumn<QString>("expected");
        QTest::newRow("button 0 of group 0") << "" << "button0" << "8000";
        QTest::newRow("group 1 button") << "click:cmdBwgroup_1" << "width" << "6000";
        QTest::newRow("group 0 button 0") << "click:cmdBwgroup_1 click:cmdBwgroup_0" << "filter" << "33";
        QTest::newRow("group 0 button 0 shown") << "click:cmdBwgroup_1 click:cmdBwgroup_0" << "lblBandwidth" << "8000";
        QTest::newRow("range 2") << "click:cmdBwrange_2" << "captions" << "1950 1800 1650 1500 1350 1200 1050 - - -";
        // The AGC buttons send 1..3 and show the label of index 0..2; the hub hands over an
        // index, and its "U" deliberately shows "Med" while the receiver runs slow.
        QTest::newRow("agc button") << "click:cmdAgcspeed_2" << "agc" << "3";
        QTest::newRow("agc button shown") << "click:cmdAgcspeed_2" << "lblAgcspeed" << "Fst";
        QTest::newRow("hub U") << "click:cmdAgcspeed_2 hub:u" << "agc" << "1";
        QTest::newRow("hub U shown") << "click:cmdAgcspeed_2 hub:u" << "lblAgcspeed" << "Med";
        QTest::newRow("hub U filter") << "hub:u" << "lblBandwidth" << "3000";
        QTest::newRow("shift F1 shows group 3") << "Shift+F1" << "button0" << "900";
        QTest::newRow("shift F4 F8") << "Shift+F2 Shift+F4 Shift+F8" << "filter" << "33";
        QTest::newRow("shift F3 F5") << "Shift+F3 Shift+F5" << "filter" << "13";
        QTest::newRow("shift C") << "Shift+C" << "mode" << "3";
        QTest::newRow("shift L") << "Shift+L" << "lblMode" << "LSB";
        QTest::newRow("shift A after C") << "Shift+C Shift+A" << "mode" << "0";
        QTest::newRow("shift -") << "Shift+-" << "lblPassbandshift" << "-50";
        QTest::newRow("shift = 0") << "Shift+= Shift+= Shift+0" << "lblPassbandshift" << "0";
        QTest::newRow("alt =") << "Alt+=" << "speaker" << QString::number(rx320LevelByte(45));
        QTest::newRow("alt 0") << "Alt+0" << "speaker" << "63";
        QTest::newRow("up") << "Up" << "box" << "7105.500";
        QTest::newRow("ctrl digits") << "Ctrl+9 Ctrl+4 Ctrl+1 Ctrl+0 Ctrl+F" << "freq" << "9410.000";
    }
    void actions()
    {
        QFETCH(QString, actions);
        QFETCH(QString, probe);
        QFETCH(QString, expected);
        PanelRig rig(rxRX320);
        writeFile(rig.dir.filePath("rx320settings.ini"), settingsLines(kAmWide));
        frmRX320 *p = rig.open<frmRX320>();
        for (const QString &a : actions.split(u' ', Qt::SkipEmptyParts)) {
            QString letter = a.section(u':', 1);
            if (a.startsWith("click:"))
                rig.click(qPrintable(letter));
            else if (a.startsWith("hub:"))
                rig.welcome->SetRx2mfa(letter);
            else
                rig.press(a);
        }
        QStringList captions;
        for (QPushButton *b : p->cmdBwgroup)
            captions << (b->isEnabled() ? b->text() : "-");
        const QMap<QString, std::function<QString()>> probes{
            {"button0", [&] { return captions[0]; }},
            {"captions", [&] { return captions.join(u' '); }},
            {"width", [&] { return QString::number(rig.rx().filterWidthHz()); }},
            {"agc", [&] { return QString::number(rig.rx().agc()); }},
            {"filter", [&] { return QString::number(rig.rx().filterIndex()); }},
            {"mode", [&] { return QString::number(rig.rx().mode()); }},
            {"speaker", [&] { return QString::number(rig.rx().speakerByte()); }},
            {"box", [&] { return p->txtFrequencyA->text(); }},
            {"freq", [&] { return QString::number(tunedKhz(rig.rx()), 'f', 3); }}};
        QCOMPARE(probes.contains(probe) ? probes[probe]() : p->findChild<QLabel *>(probe)->text(), expected);
        VERIFY_DIALOGS_CLEAN(rig.env);
    }

    void menuDifferences()
    {
        PanelRig rig(rxRX320);
        writeFile(rig.dir.filePath("rx320settings.ini"), settingsLines(kAmWide));
        frmRX320 *p = rig.open<frmRX320>();
        p->menuEntry("mnuDisableLine")->trigger();
        QVERIFY(!p->vsbLinelevel->isEnabled() && !p->lblLinelevel->isEnabled());
        QCOMPARE(slotDisableLL(), 1.0f);
        // mute leaves a disabled line alone
        rig.click("lblMute");
        QCOMPARE(rig.rx().speakerByte(), 63);
        QCOMPARE(rig.rx().lineByte(), int(rx320LevelByte(20)));
        rig.click("lblMute");
        QCOMPARE(rig.rx().speakerByte(), int(rx320LevelByte(40)));
        p->menuEntry("mnuEnableLine")->trigger();
        QVERIFY(p->vsbLinelevel->isEnabled());
        QCOMPARE(slotDisableLL(), 0.0f);
        rig.click("lblMute");
        QCOMPARE(rig.rx().lineByte(), 63);
        rig.click("lblMute");
        QCOMPARE(rig.rx().lineByte(), int(rx320LevelByte(20)));
        QCOMPARE(p->lblLinelevel->text(), QString("20"));

        rig.env.dialogs->expectMsgBox(Rx320Sim::kVersionText);
        p->menuEntry("mnuFirmware")->trigger();
        VERIFY_DIALOGS_CLEAN(rig.env);
    }
};

BRELVOX_TEST(TestRx320Panel)
#include "tst_rx320_panel.moc"
