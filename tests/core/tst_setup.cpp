#include "core/frmSetUp.h"
#include "core/frmWelcome.h"
#include "core/numtext.h"
#include "core/settings_files.h"
#include "core/setup_checks.h"
#include "core/shared_state.h"
#include "core/textfile.h"
#include "testmain.h"
#include "testutil.h"

#include <QCheckBox>
#include <QDir>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

using setup::Box;
using setup::PathStyle;

namespace {

const QString kDim = "Range is between\n1 and 30 (x 1000)";
const QString kLt = "Range is between\n+13 and -13 h";
const QString kLevel = "Level setting should\nbe between 0 and 99";
const QString kFilter = "Filter number should be\nwithin the range 1 to 6";
const QString kAgc = "AGC time constant factor\nshould be between 1 and 9";
const QString kNrbc = "Noise reduction or Beat Canceller effect\nshould be between 0 and 255";
const QString kCorr = "Frequency error correction\nshould be within the range\n+ 1000 to - 1000 Hz";

// What a place of the shared block holds, as text: "dirPath", "rxLatitude", "rxLongitude" or "slotN".
QString stored(const QString &where)
{
    if (where == "dirPath")
        return dirPath;
    if (where == "rxLatitude")
        return rxLatitude;
    if (where == "rxLongitude")
        return rxLongitude;
    return numtext::str(iniSlot[size_t(where.mid(4).toInt())]);
}

frmSetUp *openActive()
{
    frmSetUp *w = frmSetUp::open();
    w->activateWindow();
    if (!QTest::qWaitForWindowActive(w))
        qWarning("set-up window did not become active");
    return w;
}

void typeInto(QLineEdit *box, const QString &text)
{
    box->setFocus();
    box->clear();
    QTest::keyClicks(box, text);
}

// Closes the window and lets it go.
void finish(frmSetUp *w)
{
    QPointer<frmSetUp> p(w);
    if (frmSetUp::instance() == w)
        w->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    delete p.data();
}

void fillSlots()
{
    dirPath = QDir::tempPath() + "/";
    rxLatitude = "5205N";
    rxLongitude = "0445E";
    rxType = rxAR7030;
    for (int i = 1; i <= 31; ++i)
        iniSlot[size_t(i)] = 1;
}

} // namespace

class TestSetUp : public QObject {
    Q_OBJECT
private slots:
    // a failed check leaves no window behind for the next case
    void cleanup()
    {
        if (frmSetUp *w = frmSetUp::instance())
            finish(w);
    }

    void rules_data()
    {
        QTest::addColumn<int>("box");
        QTest::addColumn<int>("index");
        QTest::addColumn<bool>("slash");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("where");
        QTest::addColumn<QString>("storedValue");
        QTest::addColumn<QString>("boxAfter");
        QTest::addColumn<QString>("message"); // empty: passes
        QTest::addColumn<QString>("title");
        QTest::addColumn<bool>("focusBack");
        const int P = int(Box::Dirpath), La = int(Box::Rxlatitude), Lo = int(Box::Rxlongitude), Lt = int(Box::Lt2utc);
        const QString win = "Invalid path\nExample C:\\Dorvane\\";
        const QString nix = "Invalid path\nExample /home/tester/brelvox/";
        QTest::newRow("win D:\\data gets its backslash") << P << 0 << false << "D:\\data" << "dirPath" << "D:\\data\\" << "D:\\data\\" << "" << "" << false;
        QTest::newRow("win drive root") << P << 0 << false << "C:" << "dirPath" << "C:\\" << "C:\\" << "" << "" << false;
        QTest::newRow("win data\\ fails") << P << 0 << false << "data\\" << "dirPath" << "data\\" << "C:\\Dorvane\\" << win << "Default" << true;
        QTest::newRow("win slash path fails") << P << 0 << false << "/srv/x/" << "dirPath" << "/srv/x/\\" << "C:\\Dorvane\\" << win << "Default" << true;
        QTest::newRow("nix gets its slash") << P << 0 << true << "/srv/radio" << "dirPath" << "/srv/radio/" << "/srv/radio/" << "" << "" << false;
        QTest::newRow("nix backslash ends too") << P << 0 << true << "/srv/radio\\" << "dirPath" << "/srv/radio\\" << "/srv/radio\\" << "" << "" << false;
        QTest::newRow("nix drive path fails") << P << 0 << true << "D:\\data" << "dirPath" << "D:\\data/" << "/home/tester/brelvox/" << nix << "Default" << true;
        QTest::newRow("nix relative fails") << P << 0 << true << "data/" << "dirPath" << "data/" << "/home/tester/brelvox/" << nix << "Default" << true;
        QTest::newRow("nix empty is not the root") << P << 0 << true << "" << "dirPath" << "/" << "/home/tester/brelvox/" << nix << "Default" << true;

        const QString lat = "Invalid Latitude\nExample: 5205N", lon = "Invalid Longitude\nExample: 0445E";
        QTest::newRow("lat 8959S") << La << 0 << true << "8959S" << "rxLatitude" << "8959S" << "8959S" << "" << "" << false;
        QTest::newRow("lat 0000N") << La << 0 << true << "0000N" << "rxLatitude" << "0000N" << "5205N" << lat << "Default" << true;
        QTest::newRow("lat 9000N") << La << 0 << true << "9000N" << "rxLatitude" << "9000N" << "5205N" << lat << "Default" << true;
        QTest::newRow("lat small letter") << La << 0 << true << "5205n" << "rxLatitude" << "5205n" << "5205N" << lat << "Default" << true;
        QTest::newRow("lat six long") << La << 0 << true << "05205N" << "rxLatitude" << "05205N" << "5205N" << lat << "Default" << true;
        QTest::newRow("lat east") << La << 0 << true << "5205E" << "rxLatitude" << "5205E" << "5205N" << lat << "Default" << true;
        QTest::newRow("lon 17959W") << Lo << 0 << true << "17959W" << "rxLongitude" << "17959W" << "17959W" << "" << "" << false;
        QTest::newRow("lon 0001E") << Lo << 0 << true << "0001E" << "rxLongitude" << "0001E" << "0001E" << "" << "" << false;
        QTest::newRow("lon 18000E") << Lo << 0 << true << "18000E" << "rxLongitude" << "18000E" << "0445E" << lon << "Default" << true;
        QTest::newRow("lon 00000W") << Lo << 0 << true << "00000W" << "rxLongitude" << "00000W" << "0445E" << lon << "Default" << true;
        QTest::newRow("lon north") << Lo << 0 << true << "0445N" << "rxLongitude" << "0445N" << "0445E" << lon << "Default" << true;
        QTest::newRow("lon four long") << Lo << 0 << true << "445E" << "rxLongitude" << "445E" << "0445E" << lon << "Default" << true;

        QTest::newRow("lt 1.3 half up") << Lt << 0 << true << "1.3" << "slot3" << "1.5" << "1.3" << "" << "" << false;
        QTest::newRow("lt -1.3 half down") << Lt << 0 << true << "-1.3" << "slot3" << "-1.5" << "-1.3" << "" << "" << false;
        QTest::newRow("lt 1:30 is 1") << Lt << 0 << true << "1:30" << "slot3" << "1" << "1:30" << "" << "" << false;
        QTest::newRow("lt +13") << Lt << 0 << true << "+13" << "slot3" << "13" << "+13" << "" << "" << false;
        QTest::newRow("lt leading blank") << Lt << 0 << true << " 2" << "slot3" << "2" << " 2" << "" << "" << false;
        QTest::newRow("lt 14") << Lt << 0 << true << "14" << "slot3" << "14" << "0" << kLt << "Default 1" << true;
        QTest::newRow("lt 13.2 rounds beyond") << Lt << 0 << true << "13.2" << "slot3" << "13.5" << "0" << kLt << "Default 1" << true;
        QTest::newRow("lt empty") << Lt << 0 << true << "" << "slot3" << "0" << "0" << kLt << "Default 1" << true;
        QTest::newRow("lt 1a") << Lt << 0 << true << "1a" << "slot3" << "1" << "0" << kLt << "Default 2" << true;
        QTest::newRow("lt trailing blank") << Lt << 0 << true << "2 " << "slot3" << "2" << "0" << kLt << "Default 2" << true;

        QTest::newRow("dim bdxc 45 passes") << int(Box::Dimbdxc) << 0 << true << "45" << "slot4" << "45" << "45" << "" << "" << false;
        QTest::newRow("dim bdxc 50") << int(Box::Dimbdxc) << 0 << true << "50" << "slot4" << "50" << "2" << kDim << "Default" << true;
        QTest::newRow("dim own 0") << int(Box::Dimown) << 0 << true << "0" << "slot5" << "0" << "1" << kDim << "Default" << true;
        QTest::newRow("dim log 0.5") << int(Box::Dimlog) << 0 << true << "0.5" << "slot6" << "0.5" << "1" << kDim << "Default" << true;
        QTest::newRow("dim ilg 60") << int(Box::Dimilg) << 0 << true << "60" << "slot7" << "60" << "15" << kDim << "Default" << true;

        QTest::newRow("filter FM 6") << int(Box::ARoptions) << 3 << true << "6" << "slot17" << "6" << "6" << "" << "" << false;
        QTest::newRow("filter CW 7") << int(Box::ARoptions) << 2 << true << "7" << "slot16" << "7" << "1" << kFilter << "Default" << false;
        QTest::newRow("agc fast 9") << int(Box::Agctc) << 0 << true << "9" << "slot23" << "9" << "9" << "" << "" << false;
        QTest::newRow("agc med 0") << int(Box::Agctc) << 1 << true << "0" << "slot24" << "0" << "3" << kAgc << "Default" << false;
        QTest::newRow("agc slow 10") << int(Box::Agctc) << 2 << true << "10" << "slot25" << "10" << "9" << kAgc << "Default" << false;
        QTest::newRow("nr 256") << int(Box::Nrbc) << 0 << true << "256" << "slot26" << "256" << "50" << kNrbc << "Default" << false;
        QTest::newRow("bc -1") << int(Box::Nrbc) << 1 << true << "-1" << "slot27" << "-1" << "20" << kNrbc << "Default" << false;
        QTest::newRow("bc 255") << int(Box::Nrbc) << 1 << true << "255" << "slot27" << "255" << "255" << "" << "" << false;
        QTest::newRow("corr 5 MHz -1000") << int(Box::Freqcorr) << 0 << true << "-1000" << "slot20" << "-1000" << "-1000" << "" << "" << false;
        QTest::newRow("corr 15 MHz 1001") << int(Box::Freqcorr) << 1 << true << "1001" << "slot21" << "1001" << "0" << kCorr << "Default" << true;
        QTest::newRow("level L 100") << int(Box::LevelL) << 0 << true << "100" << "slot28" << "100" << "0" << kLevel << "Default" << true;
        QTest::newRow("level R 99") << int(Box::LevelR) << 0 << true << "99" << "slot29" << "99" << "99" << "" << "" << false;
        QTest::newRow("level -1") << int(Box::Level) << 0 << true << "-1" << "slot31" << "-1" << "0" << kLevel << "Default" << true;
    }
    void rules()
    {
        QFETCH(int, box);
        QFETCH(int, index);
        QFETCH(bool, slash);
        QFETCH(QString, text);
        QFETCH(QString, where);
        QFETCH(QString, storedValue);
        QFETCH(QString, boxAfter);
        QFETCH(QString, message);
        QFETCH(QString, title);
        QFETCH(bool, focusBack);
        TestEnv env;
        fillSlots();
        const setup::Verdict v = setup::leaveBox(Box(box), index, text, slash ? PathStyle::Slash : PathStyle::Backslash,
                                                 "/home/tester");
        QCOMPARE(stored(where), storedValue);
        QCOMPARE(v.boxText, boxAfter);
        QCOMPARE(v.passed, message.isEmpty());
        QCOMPARE(v.message, message);
        QCOMPARE(v.title, title);
        QCOMPARE(v.focusBack, focusBack);
    }

    void loadShowsWhatIsInMemory()
    {
        TestEnv env;
        fillSlots();
        dirPath = "/data/radio/";
        rxType = rxRX320;
        slotCommPort() = 2;
        slotRxTargetArea() = 3;
        slotStartstep() = 2;
        slotLt2Utc() = -1.5f;
        slotDimIlg() = 15;
        slotLevelL() = 7;
        slotLevel() = 0;
        slotNrdOption(2) = 1;
        slotNrdOption(1) = 0;
        formLeft[28] = 1500; // twips
        frmSetUp *w = openActive();
        QCOMPARE(w->windowTitle(), QString("Set Up"));
        QCOMPARE(w->pos(), QPoint(100, 0));
        QVERIFY(isOpen(Win::frmSetUp));
        QCOMPARE(w->txtDirpath->text(), QString("/data/radio/"));
        QCOMPARE(w->txtLt2utc->text(), QString("-1.5"));
        QCOMPARE(w->txtDimilg->text(), QString("15"));
        QCOMPARE(w->txtLevelL->text(), QString("07"));
        QCOMPARE(w->txtLevel->text(), QString("00"));
        QVERIFY(w->optRxtype[3]->isChecked());
        QVERIFY(w->optCom[1]->isChecked());
        QVERIFY(w->optRxtargetarea[3]->isChecked());
        QVERIFY(w->optStartstep[2]->isChecked());
        QVERIFY(w->chkNRDoptions[2]->isChecked());
        QVERIFY(!w->chkNRDoptions[1]->isChecked());
        for (int i = 0; i < 5; ++i)
            QCOMPARE(w->fraRx[i]->isVisible(), i == 3);
        // Every control is found by its name, and tools find it by the same name.
        for (const char *n : {"optRxtype_4", "optCom_0", "optRxtargetarea_8", "optStartstep_1", "txtARoptions_3",
                              "lblOpt7030_0", "txtAgctc_2", "txtNrbc_1", "txtFreqcorr_1", "lblfreqcorr_0",
                              "chkNRDoptions_3", "chkMute_1", "chkDisableLL", "chkDisableLLLR", "cmdSave", "fraRx_2"}) {
            QWidget *c = w->findChild<QWidget *>(n);
            QVERIFY2(c, n);
            QCOMPARE(c->accessibleDescription(), QString(n));
        }
        QCOMPARE(w->optRxtype[1]->text(), QString("AR 7030"));
        QCOMPARE(w->optCom[4]->text(), QString("COM 5"));
        QCOMPARE(w->optRxtargetarea[8]->text(), QString("PA"));
        QCOMPARE(w->lblfreqcorr[0]->text(), QString(" at 5 MHz"));
        QCOMPARE(w->chkDisableLL->text(), QString(" Disabled"));
        QCOMPARE(w->fraRx[4]->findChild<QGroupBox *>("fraAgctc")->title(), QString("AGC (x 200msec)"));
        // one window at a time
        QCOMPARE(frmSetUp::open(), w);
        finish(w);
        QVERIFY(!isOpen(Win::frmSetUp));
        QVERIFY(!frmSetUp::instance());
        VERIFY_DIALOGS_CLEAN(env);
    }

    void leavingABox_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("where");
        QTest::addColumn<QString>("storedValue");
        QTest::addColumn<QString>("boxAfter");
        QTest::addColumn<QString>("message"); // empty: passes
        QTest::addColumn<QString>("title");
        QTest::addColumn<bool>("focusBack");
        QTest::addColumn<QString>("storedLater"); // after leaving once more
#ifdef Q_OS_WIN
        const QString home = "C:\\Dorvane\\";
        QTest::newRow("path D:\\data") << 0 << "txtDirpath" << "D:\\data" << "dirPath" << "D:\\data\\" << "D:\\data\\" << "" << "" << false << "D:\\data\\";
#else
        const QString home = QDir::homePath() + "/brelvox/";
        QTest::newRow("path gets its slash") << 0 << "txtDirpath" << "/srv/radio" << "dirPath" << "/srv/radio/" << "/srv/radio/" << "" << "" << false << "/srv/radio/";
#endif
        QTest::newRow("path data\\") << 0 << "txtDirpath" << "data\\" << "dirPath" << "data\\" << home << "Invalid path\nExample " + home << "Default" << true << home;
        QTest::newRow("latitude 9000N") << 0 << "txtRxlatitude" << "9000N" << "rxLatitude" << "9000N" << "5205N" << "Invalid Latitude\nExample: 5205N" << "Default" << true << "5205N";
        QTest::newRow("longitude 0445W") << 0 << "txtRxlongitude" << "0445W" << "rxLongitude" << "0445W" << "0445W" << "" << "" << false << "0445W";
        QTest::newRow("lt 1.3") << 0 << "txtLt2utc" << "1.3" << "slot3" << "1.5" << "1.3" << "" << "" << false << "1.5";
        QTest::newRow("lt 1:30") << 0 << "txtLt2utc" << "1:30" << "slot3" << "1" << "1:30" << "" << "" << false << "1";
        QTest::newRow("lt 14") << 0 << "txtLt2utc" << "14" << "slot3" << "14" << "0" << kLt << "Default 1" << true << "0";
        QTest::newRow("lt 1a") << 0 << "txtLt2utc" << "1a" << "slot3" << "1" << "0" << kLt << "Default 2" << true << "0";
        QTest::newRow("dim bdxc 45") << 0 << "txtDimbdxc" << "45" << "slot4" << "45" << "45" << "" << "" << false << "45";
        QTest::newRow("dim ilg 0") << 0 << "txtDimilg" << "0" << "slot7" << "0" << "15" << kDim << "Default" << true << "15";
        QTest::newRow("filter SSB 0") << 1 << "txtARoptions_1" << "0" << "slot15" << "0" << "1" << kFilter << "Default" << false << "0";
        QTest::newRow("level R 120") << 1 << "txtLevelR" << "120" << "slot29" << "120" << "0" << kLevel << "Default" << true << "0";
        QTest::newRow("level L 5") << 1 << "txtLevelL" << "5" << "slot28" << "5" << "5" << "" << "" << false << "5";
        QTest::newRow("agc slow 12") << 4 << "txtAgctc_2" << "12" << "slot25" << "12" << "9" << kAgc << "Default" << false << "12";
        QTest::newRow("bc 300") << 4 << "txtNrbc_1" << "300" << "slot27" << "300" << "20" << kNrbc << "Default" << false << "300";
        QTest::newRow("corr 5 MHz -2000") << 3 << "txtFreqcorr_0" << "-2000" << "slot20" << "-2000" << "0" << kCorr << "Default" << true << "0";
        QTest::newRow("line level 99") << 3 << "txtLevel" << "99" << "slot31" << "99" << "99" << "" << "" << false << "99";
    }
    void leavingABox()
    {
        QFETCH(int, type);
        QFETCH(QString, name);
        QFETCH(QString, text);
        QFETCH(QString, where);
        QFETCH(QString, storedValue);
        QFETCH(QString, boxAfter);
        QFETCH(QString, message);
        QFETCH(QString, title);
        QFETCH(bool, focusBack);
        QFETCH(QString, storedLater);
        TestEnv env;
        fillSlots();
        rxType = int16_t(type);
        frmSetUp *w = openActive();
        auto *box = w->findChild<QLineEdit *>(name);
        QVERIFY(box && box->isVisible());
        if (!message.isEmpty())
            env.dialogs->expectMsgBox(message);
        typeInto(box, text);
        QVERIFY(box->hasFocus());
        w->optStartstep[0]->setFocus(); // leave the box
        QCOMPARE(stored(where), storedValue);
        QCOMPARE(box->text(), boxAfter);
        VERIFY_DIALOGS_CLEAN(env);
        if (!message.isEmpty()) {
            QCOMPARE(env.dialogs->shown.size(), 1);
            QCOMPARE(env.dialogs->shown[0].prompt, message);
            QCOMPARE(env.dialogs->shown[0].title, title);
            QCOMPARE(env.dialogs->shown[0].style, int(ui::vbExclamation));
        } else {
            QVERIFY(env.dialogs->shown.isEmpty());
        }
        QCOMPARE(box->hasFocus(), focusBack);
        QCOMPARE(w->optStartstep[0]->hasFocus(), !focusBack);
        // Going on: the focus moves on from where it is. A box that took the focus back stores its
        // default now; any other keeps what it stored until it is left again.
        w->txtDimown->setFocus();
        w->optStartstep[1]->setFocus();
        QCOMPARE(stored(where), storedLater);
        QVERIFY(env.dialogs->shown.size() <= 1);
        finish(w);
        VERIFY_DIALOGS_CLEAN(env);
    }

    void clickThatLeavesAFailingBoxIsNotCarriedOut()
    {
        TestEnv env;
        fillSlots();
        frmSetUp *w = openActive();
        env.dialogs->expectMsgBox("Invalid Latitude");
        typeInto(w->txtRxlatitude, "52N");
        QTest::mouseClick(w->cmdClose, Qt::LeftButton);
        VERIFY_DIALOGS_CLEAN(env);
        QVERIFY(isOpen(Win::frmSetUp));
        QVERIFY(w->txtRxlatitude->hasFocus());
        QCOMPARE(rxLatitude, QString("52N"));
        // the next click leaves the box with its default, which passes, and closes
        QTest::mouseClick(w->cmdClose, Qt::LeftButton);
        QCOMPARE(rxLatitude, QString("5205N"));
        QVERIFY(!isOpen(Win::frmSetUp));
        finish(w);
        VERIFY_DIALOGS_CLEAN(env);
    }

    void optionsAndChecksWriteTheirSlots_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("slot");
        QTest::addColumn<float>("first");  // after one click
        QTest::addColumn<float>("second"); // after a second click
        QTest::newRow("COM 4") << 0 << "optCom_3" << 1 << 4.0f << 4.0f;
        QTest::newRow("COM 1") << 0 << "optCom_0" << 1 << 1.0f << 1.0f;
        QTest::newRow("area PA") << 0 << "optRxtargetarea_8" << 2 << 8.0f << 8.0f;
        QTest::newRow("area NA") << 0 << "optRxtargetarea_0" << 2 << 0.0f << 0.0f;
        QTest::newRow("step 9") << 0 << "optStartstep_1" << 8 << 1.0f << 1.0f;
        QTest::newRow("1 kHz") << 2 << "chkNRDoptions_0" << 10 << 0.0f << 1.0f;
        QTest::newRow("RTTY") << 2 << "chkNRDoptions_3" << 13 << 0.0f << 1.0f;
        QTest::newRow("mute line") << 3 << "chkMute_1" << 19 << 0.0f << 1.0f;
        QTest::newRow("LL+LR disabled") << 1 << "chkDisableLLLR" << 22 << 0.0f << 1.0f;
        QTest::newRow("LL disabled") << 3 << "chkDisableLL" << 30 << 0.0f << 1.0f;
    }
    void optionsAndChecksWriteTheirSlots()
    {
        QFETCH(int, type);
        QFETCH(QString, name);
        QFETCH(int, slot);
        QFETCH(float, first);
        QFETCH(float, second);
        TestEnv env;
        fillSlots();
        iniSlot[1] = 2;
        iniSlot[2] = 4;
        iniSlot[8] = 0;
        rxType = int16_t(type);
        frmSetUp *w = openActive();
        auto *c = w->findChild<QAbstractButton *>(name);
        QVERIFY2(c && c->isVisible(), qPrintable(QString::number(rxType) + (c ? c->parentWidget()->parentWidget()->objectName() : QString())));
        const QPoint onTheMark(8, c->height() / 2); // a wide button takes clicks on its mark and caption only
        QTest::mouseClick(c, Qt::LeftButton, {}, onTheMark);
        QCOMPARE(iniSlot[size_t(slot)], first);
        QTest::mouseClick(c, Qt::LeftButton, {}, onTheMark);
        QCOMPARE(iniSlot[size_t(slot)], second);
        finish(w);
        VERIFY_DIALOGS_CLEAN(env);
    }

    void rxTypeSwitchesFrameAndStartWindow_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QString>("caption");
        QTest::newRow("No RX") << 0 << "No RX";
        QTest::newRow("AR7030") << 1 << "AR7030";
        QTest::newRow("NRD535") << 2 << "NRD535";
        QTest::newRow("RX320") << 3 << "RX320";
        QTest::newRow("NRD545") << 4 << "NRD545";
    }
    void rxTypeSwitchesFrameAndStartWindow()
    {
        QFETCH(int, type);
        QFETCH(QString, caption);
        TestEnv env;
        fillSlots();
        rxType = int16_t((type + 2) % 5);
        frmWelcome welcome;
        frmSetUp *w = openActive();
        QTest::mouseClick(w->optRxtype[size_t(type)], Qt::LeftButton);
        QCOMPARE(rxType, int16_t(type));
        QCOMPARE(welcome.lblGo->text(), caption);
        for (int i = 0; i < 5; ++i)
            QCOMPARE(w->fraRx[i]->isVisible(), i == type);
        if (type == 0)
            QVERIFY(w->fraRx[0]->findChild<QLabel *>("lblNoRx")->text() == "No special set-up necessary");
        finish(w);
        VERIFY_DIALOGS_CLEAN(env);
    }

    void saveWritesTheDataDirectory()
    {
        TestEnv env;
        QTemporaryDir data;
        fillSlots();
        dirPath = data.path() + "/";
        frmSetUp *w = openActive();
        typeInto(w->txtRxlatitude, "4811N");
        env.dialogs->expectMsgBox("New INI data is now saved");
        QTest::mouseClick(w->cmdSave, Qt::LeftButton);
        VERIFY_DIALOGS_CLEAN(env);
        QCOMPARE(env.dialogs->shown.last().title, QString("Save INI"));
        QCOMPARE(env.dialogs->shown.last().prompt, QString("New INI data is now saved"));
        QVERIFY(!isOpen(Win::frmSetUp));
        const QStringList lines = textfile::splitLines(readFile(data.filePath("brelvox2.ini")));
        QCOMPARE(lines.size(), 35);
        QCOMPARE(lines[0], data.path() + "/");
        QCOMPARE(lines[1], QString("4811N"));
        QCOMPARE(lines[3], QString("1"));
        finish(w);
    }

    void closeKeepsChangesInMemoryOnly()
    {
        TestEnv env;
        QTemporaryDir data;
        QStringList file{data.path() + "/", "5205N", "0445E", "1"};
        for (int i = 1; i <= 31; ++i)
            file << "3";
        const QByteArray bytes = textfile::joinLines(file);
        writeFile(data.filePath("brelvox2.ini"), bytes);
        settings::readSettings(file);
        frmSetUp *w = openActive();
        typeInto(w->txtDimbdxc, "10");
        QTest::mouseClick(w->cmdClose, Qt::LeftButton);
        QVERIFY(!isOpen(Win::frmSetUp));
        QCOMPARE(slotDimBdxc(), 10.0f);
        QCOMPARE(readFile(data.filePath("brelvox2.ini")), bytes);
        // the next start reads the file: the change is gone
        resetSharedState();
        settings::readSettings(textfile::splitLines(readFile(data.filePath("brelvox2.ini"))));
        QCOMPARE(slotDimBdxc(), 3.0f);
        finish(w);
        VERIFY_DIALOGS_CLEAN(env);
    }

    void reloadTakesMemoryNotTheFile()
    {
        TestEnv env;
        QTemporaryDir data;
        fillSlots();
        dirPath = data.path() + "/";
        rxType = rxNRD545;
        QStringList file{dirPath, "5205N", "0445E", "4"};
        for (int i = 1; i <= 31; ++i)
            file << "5";
        writeFile(data.filePath("brelvox2.ini"), textfile::joinLines(file));
        frmSetUp *w = openActive();
        env.dialogs->expectMsgBox(kAgc);
        typeInto(w->txtAgctc[0], "12");
        w->txtAgctc[1]->setFocus();
        QCOMPARE(w->txtAgctc[0]->text(), QString("1"));
        slotLevel() = 42; // changed behind the window's back
        QTest::mouseClick(w->cmdReload, Qt::LeftButton);
        QCOMPARE(w->txtAgctc[0]->text(), QString("12")); // the bad number is what memory holds
        QCOMPARE(w->txtLevel->text(), QString("42"));
        QCOMPARE(w->txtDimbdxc->text(), QString("1"));
        QVERIFY(isOpen(Win::frmSetUp));
        finish(w);
        VERIFY_DIALOGS_CLEAN(env);
    }
};

BRELVOX_TEST(TestSetUp)
#include "tst_setup.moc"
