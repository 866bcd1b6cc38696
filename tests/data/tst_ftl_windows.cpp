// The ILG and Aero list windows on an AR7030 panel over its simulator: the load through the load
// window, the query window filled from its file, the sort, a click and the scan as bytes on the line.
#include "panel_rig.h"
#include "testmain.h"
#include "data/file_store.h"
#include "data/frmAero2rx.h"
#include "data/frmIlg2rx.h"
#include "data/frmIlgqsort.h"
#include "data/frmLoadfile.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <QtTest>

namespace {
QByteArray lines(const QStringList &l) { return (l.join("\r\n") + "\r\n").toLatin1(); }

QString ilg(const QString &freq, const QString &station, const QString &language, const QString &country)
{
    return freq + ' ' + QString("0000-2400") + ' ' + station.leftJustified(22) + ' ' + QString("EU").leftJustified(8) +
           ' ' + language.leftJustified(17) + ' ' + QString("100").leftJustified(7) + ' ' + "5130N 00012E 000100000 " +
           country.leftJustified(12) + ' ' + QString("Lorvik");
}

// The modal window that shows next: f runs on it.
template <class W>
void whenShown(std::function<void(W *)> f)
{
    auto *t = new QTimer;
    QObject::connect(t, &QTimer::timeout, [t, f] {
        if (auto *w = qobject_cast<W *>(QApplication::activeModalWidget())) {
            t->stop();
            t->deleteLater();
            f(w);
        }
    });
    t->start(5);
}

QStringList listed(const FtlListWindow *w)
{
    QStringList out;
    for (int r = 0; r < w->shownRows(); ++r)
        out << w->list->text(r, 0).mid(19, 22).trimmed();
    return out;
}

struct FtlRig : PanelRig {
    FtlRig() : PanelRig(rxAR7030)
    {
        slotDimIlg() = 1;
        writeFile(dir.filePath("ilgquery.ini"),
                  lines({"=== languages", "***", "Arabic", "English", "***", "Radio", "***", "Velmaria", "***",
                         "EU", "***", "5", "***", "10"}));
        writeFile(dir.filePath("aeroquery.ini"), lines({"***", "SHANWICK", "***", "***"}));
        writeFile(dir.filePath("RX2DB/ILGSDATA.FTL"),
                  lines({ilg("05975.00", "Radio Tarnholm", "English", "Tarnholm"),
                         ilg("09410.00", "Velmar Overseas", "Spanish", "Velmaria"),
                         ilg("11690.00", "Radio Jordanel", "english", "Jordanel"),
                         ilg("15400.00", "Brelland Radio", "Arabic", "Brelland")}));
        writeFile(dir.filePath("RX2DB/AERO.FTL"), lines({"    5598          SHANWICK     Ballyvel"}));
        open<frmPanelBase>();
    }

    void load(FtlListWindow *w, const QString &name)
    {
        whenShown<frmLoadfile>([name](frmLoadfile *lf) {
            const auto found = lf->list->findItems(name, Qt::MatchExactly);
            if (!found.isEmpty())
                lf->list->setCurrentItem(found.first());
            QTest::mouseClick(lf->cmdOK, Qt::LeftButton);
        });
        QTest::mouseClick(w->cmdLoad, Qt::LeftButton);
    }

    QByteArray wireOf(double f)
    {
        const qsizetype from = wireSize();
        welcome->Change2FreqA(f);
        return line()->written.mid(from);
    }
};
} // namespace

class TestFtlWindows : public QObject {
    Q_OBJECT
private slots:
    // Load, query by language, sort by organisation, click: what the list shows and what is tuned.
    void ilgList()
    {
        FtlRig rig;
        QPointer<frmIlg2rx> w = frmIlg2rx::open();
        QVERIFY(!w->cmdQuery->isEnabled() && !w->cmdScan->isEnabled());
        rig.load(w, "ILGSDATA.FTL");
        QCOMPARE(w->lblDbtype->text(), QString("ILG Radio"));
        QCOMPARE(w->lblDbname->text(), QString("ILGSDATA.FTL"));
        QCOMPARE(listed(w).join(','), QString("Radio Tarnholm,Velmar Overseas,Radio Jordanel,Brelland Radio"));
        QCOMPARE(w->list->text(0, 0).size(), 126);
        QVERIFY(w->cmdQuery->isEnabled() && w->cmdSort->isEnabled() && w->txtScandelay->isEnabled());

        FtlQueryWindow *q = w->queryWindow();
        QCOMPARE(q->cmbQuery[0]->count(), 2);
        QCOMPARE(q->cmbQuery[3]->itemText(0), QString("EU"));
        QCOMPARE(q->cmbQuery[5]->itemText(0), QString("10"));
        QTest::mouseClick(w->cmdQuery, Qt::LeftButton);
        QVERIFY(q->isVisible());
        q->chkQuery[0]->setChecked(true);
        q->cmbQuery[0]->setEditText("ENGL");
        QTest::mouseClick(q->cmdSearchilg, Qt::LeftButton);
        QVERIFY(!q->isVisible());
        QCOMPARE(q->cmbQuery[4]->currentText(), QString("0"));
        QCOMPARE(q->cmbQuery[5]->currentText(), QString("32"));
        QCOMPARE(listed(w).join(','), QString("Radio Tarnholm,Radio Jordanel"));
        QCOMPARE(w->list->text(1, 0), ilg("11690.00", "Radio Jordanel", "english", "Jordanel").left(77) + QString("Jordanel     Lorvik").leftJustified(26));

        whenShown<frmIlgqsort>([](frmIlgqsort *s) {
            QTest::mouseClick(s->optSort[2], Qt::LeftButton);
            QTest::mouseClick(s->cmdOK, Qt::LeftButton);
        });
        QTest::mouseClick(w->cmdSort, Qt::LeftButton);
        QCOMPARE(listed(w).join(','), QString("Radio Jordanel,Radio Tarnholm"));
        QCOMPARE(frmIlgqsort::sortOption, 2);
        QCOMPARE(w->list->text(0, 0).size(), 77 + 26);

        const QByteArray expected = rig.wireOf(11690);
        QVERIFY(!expected.isEmpty());
        const qsizetype from = rig.wireSize();
        QTest::mouseClick(w->list->viewport(), Qt::LeftButton, {}, w->list->visualRect(w->list->model()->index(0, 0)).center());
        QCOMPARE(rig.line()->written.mid(from), expected);
        QCOMPARE(w->txtFrequencyA->text().trimmed(), QString("11690.00"));
        VERIFY_DIALOGS_CLEAN(rig.env);

        QTest::mouseClick(w->cmdExit, Qt::LeftButton);
        QTRY_VERIFY(!w);
        QVERIFY(!isOpen(Win::frmIlg2rx) && !isOpen(Win::frmIlgquery));
        fileType = kFtlFileKind;
        fileSubtype = 1;
        QVERIFY(!runReader());
    }

    // The scan delay: out of range is the stop-icon message; in range starts the timer, and a tick
    // tunes the row at the scan's position.
    void scanDelay_data()
    {
        QTest::addColumn<bool>("aero");
        QTest::addColumn<QString>("delay");
        QTest::addColumn<int>("interval");
        QTest::newRow("ILG 0") << false << "0" << 0;
        QTest::newRow("ILG 11") << false << "11" << 0;
        QTest::newRow("ILG 10") << false << "10" << 10000;
        QTest::newRow("ILG 1,5") << false << "1,5" << 1500;
        QTest::newRow("Aero 60") << true << "60" << 60000;
        QTest::newRow("Aero 61") << true << "61" << 0;
    }
    void scanDelay()
    {
        QFETCH(bool, aero);
        QFETCH(QString, delay);
        QFETCH(int, interval);
        FtlRig rig;
        FtlListWindow *w = aero ? static_cast<FtlListWindow *>(frmAero2rx::open()) : frmIlg2rx::open();
        rig.load(w, aero ? "AERO.FTL" : "ILGSDATA.FTL");
        w->txtScandelay->setText(delay);
        if (!interval)
            rig.env.dialogs->expectMsgBox(QString("Scan delay outside range.\nSelect value between 1 and %1 sec.")
                                              .arg(aero ? 60 : 10));
        QTest::mouseClick(w->cmdScan, Qt::LeftButton);
        VERIFY_DIALOGS_CLEAN(rig.env);
        if (!interval) {
            QCOMPARE(rig.env.dialogs->shown.last().style, int(ui::vbCritical));
            QCOMPARE(rig.env.dialogs->shown.last().title, QString("Error"));
            QVERIFY(!w->scanning());
            QCOMPARE(w->cmdScan->text(), QString("Start Scan"));
            w->close();
            return;
        }
        QVERIFY(w->scanning());
        QCOMPARE(w->tmrScan.interval(), interval);
        QCOMPARE(w->cmdScan->text(), QString("Stop Scan"));
        QVERIFY(!w->cmdLoad->isEnabled() && !w->cmdExit->isEnabled() && !w->cmdQuery->isEnabled());
        const QByteArray expected = rig.wireOf(aero ? 5598 : 5975);
        const qsizetype from = rig.wireSize();
        w->tmrScan_Timer();
        QCOMPARE(rig.line()->written.mid(from), expected);
        QCOMPARE(w->scanPosition(), aero ? 0 : 1);
        QTest::mouseClick(w->cmdScan, Qt::LeftButton);
        QVERIFY(!w->scanning() && w->cmdLoad->isEnabled() && w->cmdExit->isEnabled());
        QCOMPARE(w->cmdScan->text(), QString("Start Scan"));
        w->close();
    }

    // The query file is part of the installation: without it the window does not open.
    void missingQueryFile()
    {
        FtlRig rig;
        QFile::remove(rig.dir.filePath("aeroquery.ini"));
        QCOMPARE(errorOf([] { frmAero2rx::open(); }), 53);
        QVERIFY(!isOpen(Win::frmAero2rx));
        QVERIFY(!isOpen(Win::frmAeroquery));
    }
};

BRELVOX_TEST(TestFtlWindows)
#include "tst_ftl_windows.moc"
