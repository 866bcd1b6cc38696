// The schedule list windows on an AR7030 panel over its simulator: loads through the load window
// and the selection box, the titles, the click orders as bytes on the line, the heights.
#include "panel_rig.h"
#include "testmain.h"
#include "data/file_store.h"
#include "data/frm320Files.h"
#include "data/frmBdxc.h"
#include "data/frmLoadfile.h"
#include "data/frmOwn.h"
#include "ui/widgets/form_position.h"

#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTimer>
#include <QtTest>

namespace {
QString bdx(const QString &c1, const QString &c18, const QString &start, const QString &end, const QString &freqs)
{
    return c1.leftJustified(17) + c18.leftJustified(18) + start.leftJustified(5) + end.leftJustified(8) + freqs;
}
QByteArray lines(const QStringList &l) { return (l.join("\r\n") + "\r\n").toLatin1(); }

// The load window, once it shows: the named file picked and OK clicked.
void pickWhenShown(const QString &name)
{
    auto *t = new QTimer;
    QObject::connect(t, &QTimer::timeout, [t, name] {
        if (auto *w = qobject_cast<frmLoadfile *>(QApplication::activeModalWidget())) {
            t->stop();
            t->deleteLater();
            const auto found = w->list->findItems(name, Qt::MatchExactly);
            if (!found.isEmpty())
                w->list->setCurrentItem(found.first());
            QTest::mouseClick(w->cmdOK, Qt::LeftButton);
        }
    });
    t->start(5);
}

QStringList column(const TextGrid *g, int col)
{
    QStringList out;
    for (int r = 0; r < g->model()->rowCount(); ++r)
        out << g->text(r, col).trimmed();
    return out;
}

struct ListRig : PanelRig {
    ListRig() : PanelRig(rxAR7030)
    {
        slotDimBdxc() = slotDimOwn() = 1;
        writeFile(dir.filePath("BDXC/BDX_A26ENGTOE.TXT"),
                  lines({bdx("Brelland", "World Service Brel", "0500", "2300", "9410,6070"),
                         bdx(".", "Night Voice", "2200", "0200", "999"),
                         bdx("Orlina", "Voice of Orlina", "0400", "0400", "7255")}));
        writeFile(dir.filePath("BDXC/BDX_B26ENGTOE.TXT"), lines({bdx("Tarnholm", "Radio Tarnholm", "1800", "2300", "5975")}));
        writeFile(dir.filePath("BDXC/ILG_A26ALLTOW.TXT"),
                  lines({bdx("Radio Jordanel", "Arabic", "0600", "1400", "11690"),
                         bdx(".", "French", "0100", "0300", "11690")}));
        writeFile(dir.filePath("OWN/OWN_MINE.TXT"),
                  lines({"Radio Tarnholm Intl TRH ENG 1800-2300      u      5975,7490,9410,11690,13570,15400,17860,21500,"}));
        writeFile(dir.filePath("F320/EUROPE.320"),
                  lines({"\"Radio Tarnholm\",5.975,LSB,,,,,Tarnholm,English,1800,2300,evening service,"}));
        open<frmPanelBase>();
    }

    // A load as the listener makes it; answer is typed into the selection box of a club list.
    void load(ScheduleListWindow *w, const QString &name, const QString &answer = QString(), bool asks = false)
    {
        if (asks)
            env.dialogs->expectInputBox("Enter time in UTC (Format: hhmm).", answer);
        pickWhenShown(name);
        QTest::mouseClick(w->cmdLoad, Qt::LeftButton);
    }

    // The bytes the hub's own calls put on the line, in the order given ("F5975 MU").
    QByteArray wireOf(const QString &steps)
    {
        const qsizetype from = wireSize();
        for (const QString &s : steps.split(' ', Qt::SkipEmptyParts)) {
            if (s[0] == 'F') {
                double f = s.mid(1).toDouble();
                welcome->Change2FreqA(f);
            } else {
                QString m = s.mid(1);
                welcome->SetRx2mfa(m);
            }
        }
        return line()->written.mid(from);
    }
};

struct LoadCase { QString file, answer, countries, label, titles; };
struct ClickCase { QString window; int row, col; QString tuned; bool outOfRange; };
} // namespace
Q_DECLARE_METATYPE(ClickCase)
Q_DECLARE_METATYPE(LoadCase)

class TestListWindows : public QObject {
    Q_OBJECT
private slots:
    // A first load of everything, then a second whose answer decides whether the grid and the file
    // name follow it; the titles always do.
    void bdxcLoads_data()
    {
        QTest::addColumn<LoadCase>("c");
        const QString first = ",Brelland,Brelland,Orlina";
        const QString other = "Country|Broadcast Org.|Time(UTC)|Frequencies";
        const QString ilg = "Broadcast Org.|Language|Time(UTC)|Frequencies";
        QTest::newRow("time") << LoadCase{"BDX_B26ENGTOE.TXT", "2000", ",Tarnholm", "BDX_B26ENGTOE.TXT", other};
        QTest::newRow("time finds none") << LoadCase{"BDX_B26ENGTOE.TXT", "1200", "", "BDX_B26ENGTOE.TXT", other};
        QTest::newRow("ILG, ALL") << LoadCase{"ILG_A26ALLTOW.TXT", "ALL", ",Radio Jordanel,Radio Jordanel", "ILG_A26ALLTOW.TXT", ilg};
        QTest::newRow("ILG, 0000 keeps") << LoadCase{"ILG_A26ALLTOW.TXT", "0000", first, "BDX_A26ENGTOE.TXT", ilg};
        QTest::newRow("Cancel keeps") << LoadCase{"BDX_B26ENGTOE.TXT", "", first, "BDX_A26ENGTOE.TXT", other};
    }
    void bdxcLoads()
    {
        QFETCH(LoadCase, c);
        const auto &[file, answer, countries, label, titles] = c;
        ListRig rig;
        QPointer<frmBdxc> w = frmBdxc::open();
        QCOMPARE(w->grdTitles->text(0, 1), QString(" Broadcast Org"));
        rig.load(w, "BDX_A26ENGTOE.TXT", "all", true);
        QCOMPARE(bdxcRowCount, 3);
        QCOMPARE(w->grdBdxc->text(2, 1).trimmed(), QString("Night Voice"));
        rig.load(w, file, answer, true);
        QCOMPARE(column(w->grdBdxc, 0).join(','), countries);
        QCOMPARE(bdxcRowCount, countries.count(','));
        QCOMPARE(w->lblDbname->text(), label);
        QStringList t;
        for (int c = 0; c < 4; ++c)
            t << w->grdTitles->text(0, c).mid(1);
        QCOMPARE(t.join('|'), titles);
        // The records follow the new file whatever the answer.
        QCOMPARE(bdxcRecords[1].left(8), file.startsWith("ILG") ? QString("Radio Jo") : QString("Tarnholm"));
        QCOMPARE(rig.env.dialogs->shown.last().title, QString("Selection Criterium"));
        VERIFY_DIALOGS_CLEAN(rig.env);
        w->close();
    }

    // A click tunes through the hub in the window's order: the line carries the bytes of those
    // calls made one after the other. Row -1 is below the last row.
    void clicks_data()
    {
        QTest::addColumn<ClickCase>("c");
        QTest::newRow("club frequency") << ClickCase{"bdxc", 1, 4, "F6070", false};
        QTest::newRow("club empty cell") << ClickCase{"bdxc", 1, 9, "F0", true};
        QTest::newRow("club country") << ClickCase{"bdxc", 1, 0, "", false};
        QTest::newRow("club below the rows") << ClickCase{"bdxc", -1, 3, "", false};
        QTest::newRow("own frequency then mode") << ClickCase{"own", 1, 5, "F7490 MU", false};
        QTest::newRow("own seventh frequency") << ClickCase{"own", 1, 10, "F17860 MU", false};
        QTest::newRow("own eighth does not tune") << ClickCase{"own", 1, 11, "", false};
        QTest::newRow(".320 mode then frequency") << ClickCase{".320", 1, 0, "ML F5975", false};
    }
    void clicks()
    {
        QFETCH(ClickCase, c);
        ListRig rig;
        ScheduleListWindow *w = nullptr;
        if (c.window == "bdxc") {
            w = frmBdxc::open();
            rig.load(w, "BDX_A26ENGTOE.TXT", "all", true);
        } else if (c.window == "own") {
            w = frmOwn::open();
            rig.load(w, "OWN_MINE.TXT");
        } else {
            w = frm320Files::open();
            rig.load(w, "EUROPE.320");
        }
        // Once for the hub's own call, once for the click.
        for (int i = 0; c.outOfRange && i < 2; ++i)
            rig.env.dialogs->expectMsgBox("Frequency outside range");
        const QByteArray expected = rig.wireOf(c.tuned);
        QVERIFY(c.tuned.isEmpty() || c.outOfRange || !expected.isEmpty());
        const qsizetype from = rig.wireSize();
        TextGrid *g = w->dataGrid();
        const QRect cell = g->visualRect(g->model()->index(std::max(c.row, 0), c.col));
        const QPoint at = c.row < 0 ? QPoint(cell.center().x(), g->viewport()->height() - 2) : cell.center();
        QTest::mouseClick(g->viewport(), Qt::LeftButton, {}, at);
        QCOMPARE(rig.line()->written.mid(from), expected);
        VERIFY_DIALOGS_CLEAN(rig.env);
        w->close();
    }

    // The grid's two heights; the reader of the kind goes with the window.
    void heightAndReader()
    {
        ListRig rig;
        QPointer<frmOwn> w = frmOwn::open();
        QCOMPARE(w->grdOwn->height(), twipsToPixels(3135));
        const int shortWindow = w->height();
        QTest::mouseClick(w->cmdHeigh, Qt::LeftButton);
        QCOMPARE(w->cmdHeigh->text(), QString("S"));
        QCOMPARE(w->grdOwn->height(), twipsToPixels(6270));
        QCOMPARE(w->height() - shortWindow, twipsToPixels(6270) - twipsToPixels(3135));
        QTest::mouseClick(w->cmdHeigh, Qt::LeftButton);
        QCOMPARE(w->cmdHeigh->text(), QString("L"));
        QCOMPARE(w->height(), shortWindow);
        QVERIFY(isOpen(Win::frmOwn));
        QTest::mouseClick(w->cmdExit, Qt::LeftButton);
        QTRY_VERIFY(!w);
        QVERIFY(!isOpen(Win::frmOwn));
        fileType = 2;
        QVERIFY(!runReader());
    }
};

BRELVOX_TEST(TestListWindows)
#include "tst_list_windows.moc"
