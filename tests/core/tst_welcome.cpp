#include "core/fatal.h"
#include "core/frmWelcome.h"
#include "core/shared_state.h"
#include "core/textfile.h"
#include "testmain.h"
#include "testutil.h"

#include <QDir>
#include <QLabel>
#include <QTest>

namespace {
// Runs f in dir as the current directory.
struct InDir {
    QString old;
    explicit InDir(const QString &d) : old(QDir::currentPath()) { QDir::setCurrent(d); }
    ~InDir() { QDir::setCurrent(old); }
};

QByteArray settingsFile(const QString &dataDir, int type)
{
    QStringList l{dataDir, "5205N", "0445E", QString::number(type)};
    for (int i = 1; i <= 31; ++i)
        l << "0";
    return textfile::joinLines(l);
}
} // namespace

class TestWelcome : public QObject {
    Q_OBJECT
private slots:
    void missingFilesEndTheStartWithError53_data()
    {
        QTest::addColumn<bool>("positions");
        QTest::addColumn<bool>("settings");
        QTest::newRow("no positions") << false << true;
        QTest::newRow("no settings") << true << false;
    }
    void missingFilesEndTheStartWithError53()
    {
        QFETCH(bool, positions);
        QFETCH(bool, settings);
        TestEnv env;
        QTemporaryDir dir;
        if (positions)
            writeFile(dir.filePath("formpositions.ini"), "1,1\r\n");
        if (settings)
            writeFile(dir.filePath("brelvox2.ini"), settingsFile(dir.path() + "/", 1));
        InDir in(dir.path());
        frmWelcome w;
        int number = 0;
        try {
            w.Form_Load();
        } catch (const RuntimeError &e) {
            number = e.number();
        }
        QCOMPARE(number, 53);
        QVERIFY(!w.isVisible());
        QVERIFY(!isOpen(Win::frmWelcome));
    }

    void fatalErrorIsShownAndEndsWithNonZeroExit()
    {
        TestEnv env;
        int code = 0;
        auto old = setFatalExit([&](int c) { code = c; });
        env.dialogs->expectMsgBox("Run-time error '53':\n\nFile not found");
        fatalRuntimeError(RuntimeError::fileNotFound());
        setFatalExit(old);
        VERIFY_DIALOGS_CLEAN(env);
        QVERIFY(code != 0);
    }

    void lblGoFollowsRxType_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QString>("caption");
        QTest::addColumn<QColor>("colour");
        QTest::newRow("No RX") << 0 << "No RX" << QColor(0xAA, 0xAA, 0xAA);
        QTest::newRow("AR7030") << 1 << "AR7030" << QColor(0x90, 0x90, 0xFF);
        QTest::newRow("NRD535") << 2 << "NRD535" << QColor(0xFF, 0x80, 0x80);
        QTest::newRow("RX320") << 3 << "RX320" << QColor(0x80, 0xCC, 0x80);
        QTest::newRow("NRD545") << 4 << "NRD545" << QColor(0xFF, 0x00, 0x00);
        QTest::newRow("outside keeps the design caption") << 7 << "NRD535" << QColor(0xFF, 0x80, 0x80);
    }
    void lblGoFollowsRxType()
    {
        QFETCH(int, type);
        QFETCH(QString, caption);
        QFETCH(QColor, colour);
        TestEnv env;
        QTemporaryDir dir;
        writeFile(dir.filePath("formpositions.ini"), "0,0\r\n");
        writeFile(dir.filePath("brelvox2.ini"), settingsFile(dir.path() + "/", type));
        InDir in(dir.path());
        frmWelcome w;
        w.Form_Load();
        QCOMPARE(w.lblGo->text(), caption);
        QCOMPARE(w.lblGo->palette().color(QPalette::WindowText), colour);
        QVERIFY(isOpen(Win::frmWelcome));
        // go with a type outside 0..4 opens nothing and the start window stays
        if (type > 4) {
            w.imgGo_Click();
            QVERIFY(w.isVisible());
        }
        w.close();
    }

    void imagesCanBeReachedByName()
    {
        TestEnv env;
        frmWelcome w;
        for (const char *n : {"imgGo", "imgSetup", "imgAbout", "imgExit"}) {
            auto *b = w.findChild<QToolButton *>(n);
            QVERIFY2(b, n);
            QVERIFY(!b->accessibleName().isEmpty());
            QCOMPARE(b->toolTip(), b->accessibleName());
            QCOMPARE(b->accessibleDescription(), QString(n));
            QVERIFY(b->focusPolicy() & Qt::TabFocus);
        }
        QCOMPARE(w.findChild<QToolButton *>("imgGo")->accessibleName(), QString("Go"));
    }

    void endingWritesPositionsToTheDataDirectory()
    {
        TestEnv env;
        QTemporaryDir cwd, data;
        QStringList pos;
        for (int n = 1; n <= 45; ++n)
            pos << QString("%1,%2").arg(n == 34 ? 3000 : 99999).arg(n == 34 ? 1500 : 60);
        writeFile(cwd.filePath("formpositions.ini"), textfile::joinLines(pos));
        writeFile(cwd.filePath("brelvox2.ini"), settingsFile(data.path() + "/", 0));
        InDir in(cwd.path());
        {
            frmWelcome w;
            w.Form_Load();
            QCOMPARE(w.pos(), QPoint(200, 100));
            w.Form_Unload();
            QVERIFY(!isOpen(Win::frmWelcome));
        }
        const QStringList out = textfile::splitLines(readFile(data.filePath("formpositions.ini")));
        QCOMPARE(out.size(), 45);
        QCOMPARE(out[0], QString("0,60")); // beyond 40000: written as 0
        QVERIFY(out[33].endsWith(",1500"));
        QCOMPARE(readFile(cwd.filePath("formpositions.ini")), textfile::joinLines(pos));
    }
};

BRELVOX_TEST(TestWelcome)
#include "tst_welcome.moc"
