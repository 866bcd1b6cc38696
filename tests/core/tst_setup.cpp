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

    // Leaving a box: what is stored, what the box shows, and any failure as title|focus|message.
    void rules_data()
    {
        QTest::addColumn<int>("box");
        QTest::addColumn<int>("index");
        QTest::addColumn<bool>("slash");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("where");
        QTest::addColumn<QString>("storedValue");
        QTest::addColumn<QString>("boxAfter");
        QTest::addColumn<QString>("verdict"); // empty: passes
        const auto fail = [](const QString &title, bool focusBack, const QString &message) {
            return title + (focusBack ? "|back|" : "|stays|") + message;
        };
        const int P = int(Box::Dirpath), La = int(Box::Rxlatitude), Lo = int(Box::Rxlongitude), Lt = int(Box::Lt2utc);
        const QString win = "Invalid path\nExample C:\\Dorvane\\";
        const QString nix = "Invalid path\nExample /home/tester/brelvox/";
        const QString lat = "Invalid Latitude\nExample: 5205N", lon = "Invalid Longitude\nExample: 0445E";
        QTest::newRow("win D:\\data gets its backslash") << P << 0 << false << "D:\\data" << "dirPath" << "D:\\data\\" << "D:\\data\\" << "";
        QTest::newRow("win drive root") << P << 0 << false << "C:" << "dirPath" << "C:\\" << "C:\\" << "";
        QTest::newRow("win data\\ fails") << P << 0 << false << "data\\" << "dirPath" << "data\\" << "C:\\Dorvane\\" << fail("Default", true, win);
        QTest::newRow("nix gets its slash") << P << 0 << true << "/srv/radio" << "dirPath" << "/srv/radio/" << "/srv/radio/" << "";
        QTest::newRow("nix backslash ends too") << P << 0 << true << "/srv/radio\\" << "dirPath" << "/srv/radio\\" << "/srv/radio\\" << "";
        QTest::newRow("nix relative fails") << P << 0 << true << "data/" << "dirPath" << "data/" << "/home/tester/brelvox/" << fail("Default", true, nix);
        QTest::newRow("nix empty is not the root") << P << 0 << true << "" << "dirPath" << "/" << "/home/tester/brelvox/" << fail("Default", true, nix);
        QTest::newRow("lat 8959S") << La << 0 << true << "8959S" << "rxLatitude" << "8959S" << "8959S" << "";
        QTest::newRow("lat 0000N") << La << 0 << true << "0000N" << "rxLatitude" << "0000N" << "5205N" << fail("Default", true, lat);
        QTest::newRow("lat 9000N") << La << 0 << true << "9000N" << "rxLatitude" << "9000N" << "5205N" << fail("Default", true, lat);
        QTest::newRow("lat small letter") << La << 0 << true << "5205n" << "rxLatitude" << "5205n" << "5205N" << fail("Default", true, lat);
        QTest::newRow("lat east") << La << 0 << true << "5205E" << "rxLatitude" << "5205E" << "5205N" << fail("Default", true, lat);
        QTest::newRow("lon 17959W") << Lo << 0 << true << "17959W" << "rxLongitude" << "17959W" << "17959W" << "";
        QTest::newRow("lon 18000E") << Lo << 0 << true << "18000E" << "rxLongitude" << "18000E" << "0445E" << fail("Default", true, lon);
        QTest::newRow("lon 00000W") << Lo << 0 << true << "00000W" << "rxLongitude" << "00000W" << "0445E" << fail("Default", true, lon);
        QTest::newRow("lt 1.3 half up") << Lt << 0 << true << "1.3" << "slot3" << "1.5" << "1.3" << "";
        QTest::newRow("lt -1.3 half down") << Lt << 0 << true << "-1.3" << "slot3" << "-1.5" << "-1.3" << "";
        QTest::newRow("lt 1:30 is 1") << Lt << 0 << true << "1:30" << "slot3" << "1" << "1:30" << "";
        QTest::newRow("lt +13") << Lt << 0 << true << "+13" << "slot3" << "13" << "+13" << "";
        QTest::newRow("lt 13.2 rounds beyond") << Lt << 0 << true << "13.2" << "slot3" << "13.5" << "0" << fail("Default 1", true, kLt);
        QTest::newRow("lt empty") << Lt << 0 << true << "" << "slot3" << "0" << "0" << fail("Default 1", true, kLt);
        QTest::newRow("dim bdxc 45 passes") << int(Box::Dimbdxc) << 0 << true << "45" << "slot4" << "45" << "45" << "";
        QTest::newRow("dim bdxc 50") << int(Box::Dimbdxc) << 0 << true << "50" << "slot4" << "50" << "2" << fail("Default", true, kDim);
        QTest::newRow("dim log 0.5") << int(Box::Dimlog) << 0 << true << "0.5" << "slot6" << "0.5" << "1" << fail("Default", true, kDim);
        QTest::newRow("filter FM 6") << int(Box::ARoptions) << 3 << true << "6" << "slot17" << "6" << "6" << "";
        QTest::newRow("filter CW 7") << int(Box::ARoptions) << 2 << true << "7" << "slot16" << "7" << "1" << fail("Default", false, kFilter);
        QTest::newRow("agc med 0") << int(Box::Agctc) << 1 << true << "0" << "slot24" << "0" << "3" << fail("Default", false, kAgc);
        QTest::newRow("nr 256") << int(Box::Nrbc) << 0 << true << "256" << "slot26" << "256" << "50" << fail("Default", false, kNrbc);
        QTest::newRow("bc 255") << int(Box::Nrbc) << 1 << true << "255" << "slot27" << "255" << "255" << "";
        QTest::newRow("corr 15 MHz 1001") << int(Box::Freqcorr) << 1 << true << "1001" << "slot21" << "1001" << "0" << fail("Default", true, kCorr);
        QTest::newRow("level L 100") << int(Box::LevelL) << 0 << true << "100" << "slot28" << "100" << "0" << fail("Default", true, kLevel);
        QTest::newRow("level R 99") << int(Box::LevelR) << 0 << true << "99" << "slot29" << "99" << "99" << "";
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
        QFETCH(QString, verdict);
        TestEnv env;
        fillSlots();
        const setup::Verdict v = setup::leaveBox(Box(box), index, text, slash ? PathStyle::Slash : PathStyle::Backslash,
                                                 "/home/tester");
        QCOMPARE(stored(where), storedValue);
        QCOMPARE(v.boxText, boxAfter);
        QCOMPARE(v.passed, verdict.isEmpty());
        QCOMPARE(v.passed ? QString() : v.title + (v.focusBack ? "|back|" : "|stays|") + v.message, verdict);
    }

    void loadShowsWhatIsInMemory()
    {
        TestEnv env;
        fillSlots();
        dirPath = "/data/radio/";
        rxType = rxRX320;
        slotCommPort() = 2;
        slotLt2Utc() = -1.5f;
        slotLevelL() = 7;
        slotNrdOption(2) = 1;
        slotNrdOption(1) = 0;
        formLeft[28] = 1500; // twips
        frmSetUp *w = openActive();
        QCOMPARE(w->windowTitle(), QString("Set Up"));
        QCOMPARE(w->pos(), QPoint(100, 0));
        QCOMPARE(w->txtDirpath->text() + "|" + w->txtLt2utc->text() + "|" + w->txtLevelL->text(), QString("/data/radio/|-1.5|07"));
        QVERIFY(w->optRxtype[3]->isChecked() && w->optCom[1]->isChecked());
        QVERIFY(w->chkNRDoptions[2]->isChecked() && !w->chkNRDoptions[1]->isChecked());
        // Controls go by their names, and tools find them by the same names.
        for (const char *n : {"optRxtype_4", "txtARoptions_3", "txtFreqcorr_1", "chkDisableLLLR", "fraRx_2"}) {
            QWidget *c = w->findChild<QWidget *>(n);
            QVERIFY2(c && c->accessibleDescription() == QString(n), n);
        }
        QCOMPARE(QStringList({w->optRxtype[1]->text(), w->optCom[4]->text(), w->optRxtargetarea[8]->text(),
                              w->lblfreqcorr[0]->text(), w->chkDisableLL->text()}).join('|'),
                 QString("AR 7030|COM 5|PA| at 5 MHz| Disabled"));
        QCOMPARE(frmSetUp::open(), w); // one window at a time
        finish(w);
        QVERIFY(!isOpen(Win::frmSetUp) && !frmSetUp::instance());
    }

    // Through the window: a box that passes keeps its text; one that fails shows its message, takes
    // the focus back (the filter boxes let it go) and stores its default when it is left again.
    void leavingBoxes()
    {
        TestEnv env;
        fillSlots(); // an AR7030, so its filter boxes show
        frmSetUp *w = openActive();
        const auto leave = [&](QLineEdit *box, const QString &text, const QString &message) {
            if (!message.isEmpty())
                env.dialogs->expectMsgBox(message);
            typeInto(box, text);
            w->optStartstep[0]->setFocus();
            VERIFY_DIALOGS_CLEAN(env);
        };
        leave(w->txtLt2utc, "1.3", "");
        QVERIFY(!w->txtLt2utc->hasFocus());
        QCOMPARE(w->txtLt2utc->text() + "|" + stored("slot3"), QString("1.3|1.5"));
        const QString home = QDir::homePath() + "/brelvox/";
        leave(w->txtDirpath, "data\\", "Invalid path\nExample " + home);
        QVERIFY(w->txtDirpath->hasFocus());
        QCOMPARE(w->txtDirpath->text() + "|" + dirPath, home + "|data\\");
        w->optStartstep[1]->setFocus(); // left again, now with the default
        QCOMPARE(dirPath, home);
        leave(w->txtARoptions[1], "0", kFilter);
        QVERIFY(!w->txtARoptions[1]->hasFocus());
        QCOMPARE(w->txtARoptions[1]->text() + "|" + stored("slot15"), QString("1|0"));
        QStringList shown;
        for (const auto &d : env.dialogs->shown)
            shown << QString::number(d.style) + "|" + d.title + "|" + d.prompt;
        const QString excl = QString::number(ui::vbExclamation) + "|Default|";
        QCOMPARE(shown, QStringList({excl + "Invalid path\nExample " + home, excl + kFilter}));
        finish(w);
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
        QVERIFY(isOpen(Win::frmSetUp) && w->txtRxlatitude->hasFocus());
        QCOMPARE(rxLatitude, QString("52N"));
        // the next click leaves the box with its default, which passes, and closes
        QTest::mouseClick(w->cmdClose, Qt::LeftButton);
        QCOMPARE(rxLatitude, QString("5205N"));
        QVERIFY(!isOpen(Win::frmSetUp));
        finish(w);
    }

    // Options and check boxes write their slot on a click; check boxes toggle.
    void optionsAndChecks_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("slot");
        QTest::addColumn<float>("first");  // after one click
        QTest::addColumn<float>("second"); // after a second click
        QTest::newRow("COM 4") << 0 << "optCom_3" << 1 << 4.0f << 4.0f;
        QTest::newRow("step 9") << 0 << "optStartstep_1" << 8 << 1.0f << 1.0f;
        QTest::newRow("RTTY") << 2 << "chkNRDoptions_3" << 13 << 0.0f << 1.0f;
        QTest::newRow("LL+LR disabled") << 1 << "chkDisableLLLR" << 22 << 0.0f << 1.0f;
    }
    void optionsAndChecks()
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
        QVERIFY(c && c->isVisible());
        const QPoint onTheMark(8, c->height() / 2); // a wide button takes clicks on its mark and caption only
        QTest::mouseClick(c, Qt::LeftButton, {}, onTheMark);
        QCOMPARE(iniSlot[size_t(slot)], first);
        QTest::mouseClick(c, Qt::LeftButton, {}, onTheMark);
        QCOMPARE(iniSlot[size_t(slot)], second);
        finish(w);
    }

    // Each receiver option shows its frame and names the receiver on the start window.
    void rxTypeSwitchesFrameAndStartWindow()
    {
        TestEnv env;
        fillSlots();
        frmWelcome welcome;
        frmSetUp *w = openActive();
        const QStringList captions{"No RX", "AR7030", "NRD535", "RX320", "NRD545"};
        for (int type : {2, 0, 4, 1, 3}) {
            QTest::mouseClick(w->optRxtype[size_t(type)], Qt::LeftButton);
            QCOMPARE(rxType, int16_t(type));
            QCOMPARE(welcome.lblGo->text(), captions[type]);
            for (int i = 0; i < 5; ++i)
                QCOMPARE(w->fraRx[i]->isVisible(), i == type);
        }
        finish(w);
    }

    // A data directory with letters outside ASCII is shown by its name, and saved back with the
    // bytes it came with, however they were typed; typed anew in the box it takes UTF-8 bytes.
    void nonAsciiDirPath_data()
    {
        QTest::addColumn<QByteArray>("before"); // the folder's name in the settings
        QTest::addColumn<QString>("typed");     // into the box, empty: left as shown
        QTest::addColumn<QByteArray>("saved");
        QTest::newRow("UTF-8 bytes") << QByteArray("Empf\xc3\xa4nger/") << "" << QByteArray("Empf\xc3\xa4nger/");
        QTest::newRow("Latin-1 byte") << QByteArray("Empf\xe4nger/") << "" << QByteArray("Empf\xe4nger/");
        QTest::newRow("typed in the box") << QByteArray("Empf\xe4nger/") << "Empfänger" << QByteArray("Empf\xc3\xa4nger/");
    }
    void nonAsciiDirPath()
    {
        QFETCH(QByteArray, before);
        QFETCH(QString, typed);
        QFETCH(QByteArray, saved);
        TestEnv env;
        QTemporaryDir data;
        fillSlots();
        const QString real = data.path() + "/Empfänger/";
        QVERIFY(QDir().mkpath(real));
        const QByteArray root = QFile::encodeName(data.path()) + "/";
        dirPath = QString::fromLatin1(root + before);
        frmSetUp *w = openActive();
        QCOMPARE(w->txtDirpath->text(), real);
        w->txtDirpath->setFocus();
        if (!typed.isEmpty()) // typed through an input method: the keyboard tester takes ASCII only
            w->txtDirpath->setText(data.path() + "/" + typed);
        w->txtLt2utc->setFocus(); // the box is left
        env.dialogs->expectMsgBox("New INI data is now saved");
        QTest::mouseClick(w->cmdSave, Qt::LeftButton);
        VERIFY_DIALOGS_CLEAN(env);
        QCOMPARE(env.dialogs->shown.last().title, QString("Save INI"));
        QVERIFY(!isOpen(Win::frmSetUp));
        QCOMPARE(readFile(real + "brelvox2.ini").left(root.size() + saved.size() + 2), root + saved + "\r\n");
        finish(w);
    }

    // Close keeps a change in memory only: the next start reads the file without it. Reload
    // shows what memory holds, even a number that failed its check.
    void closeAndReload()
    {
        TestEnv env;
        QTemporaryDir data;
        QStringList file{data.path() + "/", "5205N", "0445E", "4"};
        for (int i = 1; i <= 31; ++i)
            file << "3";
        const QByteArray bytes = textfile::joinLines(file);
        writeFile(data.filePath("brelvox2.ini"), bytes);
        settings::readSettings(file);
        frmSetUp *w = openActive();
        env.dialogs->expectMsgBox(kAgc);
        typeInto(w->txtAgctc[0], "12");
        w->txtAgctc[1]->setFocus();
        QCOMPARE(w->txtAgctc[0]->text(), QString("1"));
        slotLevel() = 42; // changed behind the window's back
        QTest::mouseClick(w->cmdReload, Qt::LeftButton);
        QCOMPARE(w->txtAgctc[0]->text() + "|" + w->txtLevel->text() + "|" + w->txtDimbdxc->text(), QString("12|42|3"));
        typeInto(w->txtDimbdxc, "10");
        QTest::mouseClick(w->cmdClose, Qt::LeftButton);
        QVERIFY(!isOpen(Win::frmSetUp));
        QCOMPARE(slotDimBdxc(), 10.0f);
        QCOMPARE(readFile(data.filePath("brelvox2.ini")), bytes);
        resetSharedState();
        settings::readSettings(textfile::splitLines(readFile(data.filePath("brelvox2.ini"))));
        QCOMPARE(slotDimBdxc(), 3.0f);
        finish(w);
    }
};

BRELVOX_TEST(TestSetUp)
#include "tst_setup.moc"
