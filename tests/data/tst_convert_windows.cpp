// The converter windows: the source found through frmILGfinddbf, the connection and its
// failures, a conversion clicked to "Conversion ready" with the file it leaves, Stop, and the
// labels at each hundredth record.
#include "datadir.h"
#include "testmain.h"
#include "core/textfile.h"
#include "data/frmConvertAero.h"
#include "data/frmConvertILG.h"
#include "data/frmILGfinddbf.h"
#include "data/ilg_tables.h"

#include <QApplication>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTimer>
#include <shapefil.h>

namespace {
const QString kDemo = QStringLiteral("../../demo/");

// The finder, once it shows: dir entered, file picked, OK clicked.
void pickWhenShown(const QString &dir, const QString &file)
{
    auto *t = new QTimer;
    QObject::connect(t, &QTimer::timeout, [t, dir, file] {
        if (auto *w = qobject_cast<frmILGfinddbf *>(QApplication::activeModalWidget())) {
            t->stop();
            t->deleteLater();
            w->setDirectory(dir);
            const auto found = w->flbILG->findItems(file, Qt::MatchExactly);
            if (!found.isEmpty())
                w->flbILG->setCurrentItem(found.first());
            QTest::mouseClick(w->cmdOK, Qt::LeftButton);
        }
    });
    t->start(5);
}

void settle()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

struct ConvertRig {
    TestEnv env;
    DataDir data;
    ConvertRig()
    {
        data.mkdir(QStringLiteral("RX2DB"));
        data.mkdir(QStringLiteral("source"));
    }
    QString source() const { return data.path(QStringLiteral("source")); }
    void copyDemo(const QString &name) const
    {
        data.put(QStringLiteral("source/") + name, readFile(QFINDTESTDATA(kDemo + QStringLiteral("ILGDB/") + name)));
    }
};
struct DemoCase { QString file; int option; QString ftl, connected; };
} // namespace
Q_DECLARE_METATYPE(DemoCase)

class TestConvertWindows : public QObject {
    Q_OBJECT
private slots:
    void cleanup()
    {
        for (QWidget *w : QApplication::topLevelWidgets())
            if (qobject_cast<frmConvertILG *>(w) || qobject_cast<frmConvertAero *>(w))
                delete w;
    }

    // The demo's sources located, connected and converted by a click: the file in RX2DB is the
    // demo's, the old one replaced, the window gone after "Conversion ready".
    void convertDemo_data()
    {
        QTest::addColumn<DemoCase>("c");
        const QString ilg = " database connected, conversion can be started.", aero = "Aerolist db connected, conversion can be started";
        QTest::newRow("SW") << DemoCase{"ilgsdata.dbf", 2, "ILGSDATA.FTL", "ILGRadio SW" + ilg};
        QTest::newRow("LW/MW") << DemoCase{"ilgadata.dbf", 1, "ILGADATA.FTL", "ILGRadio LW/MW" + ilg};
        QTest::newRow("Aero full") << DemoCase{"aerolist.txt", 1, "aero.ftl", aero};
        QTest::newRow("Aero networks") << DemoCase{"aerolist.txt", 1, "aero2.ftl", aero};
    }
    void convertDemo()
    {
        QFETCH(DemoCase, c);
        const auto &[file, option, ftl, connected] = c;
        ConvertRig rig;
        rig.copyDemo(file);
        // An old file of the name in another case is the one replaced.
        rig.data.put(QStringLiteral("RX2DB/") + ftl.toLower(), "old\r\n");
        const bool isIlg = file.startsWith(QLatin1String("ilg"));
        QPointer<QWidget> w;
        QPushButton *convert = nullptr;
        QLabel *record = nullptr;
        QRadioButton *opt = nullptr;
        if (isIlg) {
            frmConvertILG *c = frmConvertILG::open();
            w = c;
            QVERIFY(!c->fraConnect->isEnabled());
            QVERIFY(!c->cmdConvert->isEnabled());
            for (QCheckBox *b : c->chkInclude)
                b->setChecked(true);
            pickWhenShown(rig.source(), file);
            QTest::mouseClick(c->cmdLocate, Qt::LeftButton);
            QCOMPARE(c->recordSource(), file.left(8).toUpper());
            convert = c->cmdConvert;
            record = c->lblRecord;
            opt = c->optDbconnect[size_t(option)];
        } else {
            frmConvertAero *c = frmConvertAero::open();
            w = c;
            QVERIFY(c->optDbtype[0]->isChecked());
            QVERIFY(!c->fraConnect->isEnabled());
            if (ftl == QLatin1String("aero2.ftl"))
                c->optDbtype[1]->setChecked(true);
            pickWhenShown(rig.source(), file);
            QTest::mouseClick(c->cmdLocate, Qt::LeftButton);
            convert = c->cmdConvert;
            record = c->lblShowrecord;
            opt = c->optDbconnect[size_t(option)];
        }
        QCOMPARE(fileType, int16_t(0));
        QCOMPARE(chosenFileTable[0], file);
        QVERIFY(opt->isChecked());
        QVERIFY(convert->isEnabled());
        QCOMPARE(record->text(), connected);
        rig.env.dialogs->expectMsgBox(QStringLiteral("Conversion ready"));
        QTest::mouseClick(convert, Qt::LeftButton);
        settle();
        QVERIFY(w.isNull());
        VERIFY_DIALOGS_CLEAN(rig.env);
        QCOMPARE(rig.env.dialogs->shown.last().title, isIlg ? QStringLiteral("ILGRadio database") : QStringLiteral("Aerolist database"));
        QCOMPARE(rig.data.files(QStringLiteral("RX2DB")), QStringList{ftl.toLower()});
        QCOMPARE(readFile(rig.data.path(QStringLiteral("RX2DB/") + ftl.toLower())), readFile(QFINDTESTDATA(kDemo + "RX2DB/" + ftl)));
    }

    // A source that cannot be connected: the message, then no connection.
    void connectFails_data()
    {
        QTest::addColumn<QByteArray>("bytes"); // empty: no table at all
        QTest::addColumn<bool>("lacksField");
        QTest::newRow("no table") << QByteArray() << false;
        QTest::newRow("not a table") << QByteArray("FREQ,UTC\r\n9410,0500-2300\r\n") << false;
        QTest::newRow("a field missing") << QByteArray() << true;
    }
    void connectFails()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(bool, lacksField);
        ConvertRig rig;
        const QString path = rig.data.path(QStringLiteral("source/ILGSDATA.DBF"));
        if (!bytes.isEmpty())
            rig.data.put(QStringLiteral("source/ILGSDATA.DBF"), bytes);
        if (lacksField) {
            DBFHandle h = DBFCreate(QFile::encodeName(path).constData());
            DBFAddField(h, "FREQ", FTDouble, 9, 2);
            DBFAddField(h, "UTC", FTString, 9, 0);
            DBFWriteDoubleAttribute(h, 0, 0, 9410);
            DBFWriteStringAttribute(h, 0, 1, "0500-2300");
            DBFClose(h);
        }
        fullDirTable[0] = rig.source();
        frmConvertILG *c = frmConvertILG::open();
        settle();
        c->fraConnect->setEnabled(true);
        rig.env.dialogs->expectMsgBox(QStringLiteral("Could not connect to database"));
        c->optDbconnect[2]->click();
        VERIFY_DIALOGS_CLEAN(rig.env);
        QVERIFY(c->optDbconnect[0]->isChecked());
        QVERIFY(!c->cmdConvert->isEnabled());
        QVERIFY(!c->datILG->isEnabled());
        QCOMPARE(c->lblRecord->text(), QString());
    }

    // The finder by kind: its caption and the files it lists without regard to case.
    void finder_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("caption");
        QTest::addColumn<QStringList>("listed");
        QTest::newRow("ILG") << 1 << "Find ILG*.dbf" << QStringList{"ILGADATA.DBF", "ilgsdata.dbf"};
        QTest::newRow("Aero") << 2 << "Find Aero*.txt" << QStringList{"AeroList.TXT"};
    }
    void finder()
    {
        QFETCH(int, kind);
        QFETCH(QString, caption);
        QFETCH(QStringList, listed);
        ConvertRig rig;
        for (const char *n : {"ILGADATA.DBF", "ilgsdata.dbf", "ilgxdata.dbf", "AeroList.TXT", "aerolist.txt.bak"})
            rig.data.put(QStringLiteral("source/") + QLatin1String(n));
        fileConvertKind = int16_t(kind);
        frmILGfinddbf f;
        f.Form_Load();
        QCOMPARE(f.windowTitle(), caption);
        f.setDirectory(rig.data.path(QStringLiteral("RX2DB")));
        QVERIFY(!f.cmdOK->isEnabled());
        f.setDirectory(rig.source());
        QStringList shown;
        for (int i = 0; i < f.flbILG->count(); ++i)
            shown << f.flbILG->item(i)->text();
        QCOMPARE(shown, listed);
        QVERIFY(f.cmdOK->isEnabled());
        f.cmdCancel_Click();
    }

    // Stop at once: one record, the old file replaced all the same, "Conversion ready". Without
    // Stop: the labels change only at each hundredth record, and the last count stays.
    void progress_data()
    {
        QTest::addColumn<bool>("stop");
        QTest::addColumn<QStringList>("counts");
        QTest::newRow("stop at once") << true << QStringList{"1"};
        QTest::newRow("labels at hundreds") << false << QStringList{"100", "200", "250"};
    }
    void progress()
    {
        QFETCH(bool, stop);
        QFETCH(QStringList, counts);
        ConvertRig rig;
        const QVector<ilg::Record> records = ilgtables::many(250);
        QVERIFY(ilgtables::write(rig.data.path(QStringLiteral("source/ilgsdata.dbf")), records));
        rig.data.put(QStringLiteral("RX2DB/ILGSDATA.FTL"), "old\r\n");
        fullDirTable[0] = rig.source();
        frmConvertILG *c = frmConvertILG::open();
        settle();
        c->fraConnect->setEnabled(true);
        c->optDbconnect[2]->click();
        for (QCheckBox *b : c->chkInclude)
            b->setChecked(true);
        QStringList seen;
        QStringList shownRecords;
        QTimer watch;
        QObject::connect(&watch, &QTimer::timeout, [&] {
            if (stop)
                QTest::mouseClick(c->cmdStop, Qt::LeftButton);
            if (seen.isEmpty() || seen.last() != c->lblRecnum->text()) {
                seen << c->lblRecnum->text();
                shownRecords << c->lblRecord->text();
            }
        });
        watch.start(0);
        rig.env.dialogs->expectMsgBox(QStringLiteral("Conversion ready"));
        QObject::connect(c, &QObject::destroyed, &watch, &QTimer::stop);
        QTest::mouseClick(c->cmdConvert, Qt::LeftButton);
        const QString last = c->lblRecnum->text();
        watch.stop();
        VERIFY_DIALOGS_CLEAN(rig.env);
        seen.removeAll(QString());
        seen << last;
        seen.removeDuplicates();
        QCOMPARE(seen, counts);
        if (!stop)
            QCOMPARE(shownRecords.at(1), ilg::ftlLine(records[99]).left(77));
        const QStringList lines = textfile::splitLines(readFile(rig.data.path(QStringLiteral("RX2DB/ILGSDATA.FTL"))));
        QCOMPARE(lines.size(), counts.last().toInt());
        QCOMPARE(lines.first(), ilg::ftlLine(records[0]));
        settle();
    }
};

BRELVOX_TEST(TestConvertWindows)
#include "tst_convert_windows.moc"
