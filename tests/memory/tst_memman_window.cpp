// The memory window driven as a listener drives it, on a panel over the in-process simulators:
// fetch, fill, tuning a cell, the scan, the buttons per model, jobs cut short, input errors.
#include "panel_rig.h"
#include "data/frmSavefile.h"
#include "memory/frmMemcell.h"
#include "memory/frmMemman.h"
#include "memory/mem_file.h"
#include "memory/mem_record.h"
#include "testmain.h"

#include <QComboBox>
#include <QDir>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>
#include <QtTest>

namespace {
using Setting = NrdSim::Setting;

// A panel of the model on its simulator and the memory window opened over it.
struct MemRig : PanelRig {
    QPointer<frmMemman> mm;
    explicit MemRig(int type) : PanelRig(type)
    {
        if (type == rxRX320)
            writeFile(dir.filePath("rx320settings.ini"), "7100.5\r\n33\r\n0\r\n2\r\n0\r\n0\r\n40\r\n20\r\n");
        open<frmPanelBase>();
        mm = frmMemman::open();
    }
    ~MemRig()
    {
        if (mm)
            mm->close();
    }
    NrdSim &nrd() { return *nrds.back(); }
    SimOnLoan *loan() const { return line() ? dynamic_cast<SimOnLoan *>(line()->device()) : nullptr; }
    QByteArray wire() const { return line() ? line()->written : QByteArray(); }
    // The JRC commands sent since from, reduced to the frames, the RTTY switch and the memory reads.
    QString jrcShape(qsizetype from) const
    {
        QStringList out;
        for (const QByteArray &c : wire().mid(from).split('\r'))
            if (c == "H1" || c == "H0" || c == "X0" || c == "U230" || (c.startsWith("L00") && c.size() == 7))
                out << QString::fromLatin1(c);
        return out.join(u' ');
    }
    // Row r of the grid, its cells trimmed and joined by "|".
    QString row(int r) const
    {
        QStringList cells;
        for (int c = 0; c < 5; ++c)
            cells << mm->grdMemman->model()->index(r, c).data().toString().trimmed();
        return cells.join(u'|');
    }
    void image(const QStringList &records)
    {
        for (int i = 0; i < records.size(); ++i) {
            memRecord[i] = records[i];
            mm->showRow(i);
        }
        mm->memcmdenabler(true);
    }
    void range(const QString &from, const QString &to, const QString &delay = QStringLiteral("1"))
    {
        mm->txtFrom->setText(from);
        mm->txtTo->setText(to);
        mm->txtDelay->setText(delay);
    }
    void clickRow(int r)
    {
        QTableView *g = mm->grdMemman;
        QTest::mouseClick(g->viewport(), Qt::LeftButton, {}, g->visualRect(g->model()->index(r, 1)).center());
    }
};

// AR7030 memory n as the receiver keeps it: frequency word, flags, shift and squelch/BFO bytes.
void arCell(Ar7030Sim &s, int n, double khz, int mode, int filter, int pbs, int sqlBfo)
{
    const quint32 w = quint32(std::lround(khz * Ar7030Sim::kStepsPerKhz));
    for (int k = 0; k < 3; ++k)
        s.poke(2, 4 * n + k, quint8(w >> (16 - 8 * k)));
    s.poke(2, 4 * n + 3, quint8(mode | filter << 4));
    s.poke(2, Ar7030Sim::kMemoryPbs + n, quint8(pbs));
    s.poke(1, Ar7030Sim::Reg1MemorySqlBfo + n, quint8(sqlBfo));
}
void arVacant(Ar7030Sim &s, int n) { arCell(s, n, 32016.666, 0, 0, 0, 0); }

QString vacant(int n) { return vacantMemRecord(n); }

struct FetchCase { int type; bool userLock; QStringList rows; QString shape; };
struct FillCase { int type; QStringList image; QString cell1After; };
struct TuneCase { int type; QString record; double khz; int mode; QString panelMode; };
struct ScanCase { QString from, to; QList<int> rows; int top; }; // top -1: scrolled to the end
struct RefusalCase { QString button; bool loaded; QString from, to, title, boxesAfter; };
struct EditorCase { QString button; int action; QString caption, question; };

} // namespace
Q_DECLARE_METATYPE(FetchCase)
Q_DECLARE_METATYPE(FillCase)
Q_DECLARE_METATYPE(TuneCase)
Q_DECLARE_METATYPE(ScanCase)
Q_DECLARE_METATYPE(RefusalCase)
Q_DECLARE_METATYPE(EditorCase)

class TestMemmanWindow : public QObject {
    Q_OBJECT
private slots:
    // Cells 0 and 2 filled, 1 and 3 vacant; the fetch reads 0..txtTo, with the lock taken only
    // when the listener has not locked the set himself.
    void fetch_data()
    {
        QTest::addColumn<FetchCase>("c");
        const QStringList ar = {"000|07020.400|CW|3.0|", "001|No data|||", "002|15070.000|USB|5.5|", "003|No data|||"};
        const QStringList nrd = {"000|07100.000|USB|Int|", "001|No data|||", "002|09650.000|AM|Wid|", "003|No data|||"};
        const QString reads = "L000000 L001001 L002002 L003003";
        QTest::newRow("AR7030") << FetchCase{rxAR7030, false, ar, {}};
        QTest::newRow("NRD-535 lock off") << FetchCase{rxNRD535, false, nrd, "H1 H1 X0 H0 H0 H1 H1 " + reads + " H0 H0"};
        QTest::newRow("NRD-535 user's lock") << FetchCase{rxNRD535, true, nrd, "X0 " + reads};
        QTest::newRow("NRD-545 lock off") << FetchCase{rxNRD545, false, nrd, "H1 H1 U230 H0 H0 H1 H1 " + reads + " H0 H0"};
    }
    void fetch()
    {
        QFETCH(FetchCase, c);
        const auto [type, userLock, rows, shape] = c;
        MemRig rig(type);
        if (type == rxAR7030) {
            arCell(rig.ar(), 0, 7020.4, 5, 2, 0, 0);
            arVacant(rig.ar(), 1);
            arCell(rig.ar(), 2, 15070, 7, 3, 0, 20);
            arVacant(rig.ar(), 3);
        } else {
            for (int n = 0; n < 4; ++n)
                rig.nrd().setMemory(n, std::nullopt);
            rig.nrd().setMemory(0, Setting{0, 1, 2, 7100000, type == rxNRD545 ? 40 : 1});
            rig.nrd().setMemory(2, Setting{1, 0, 4, 9650000, type == rxNRD545 ? 40 : 1});
        }
        if (userLock)
            rig.click("cmdLock_1");
        rig.range("0", "3");
        rig.env.dialogs->expectMsgBox("Do you want to capture the receiver", ui::vbYes);
        rig.env.dialogs->expectMsgBox("Rx memory is now loaded");
        const qsizetype from = rig.wire().size();
        QTest::mouseClick(rig.mm->cmdFetch, Qt::LeftButton);
        VERIFY_DIALOGS_CLEAN(rig.env);
        for (int r = 0; r < rows.size(); ++r)
            QCOMPARE(rig.row(r), rows[r]);
        QCOMPARE(rig.mm->grdMemman->model()->rowCount(), rows.size() + 1);
        QVERIFY(memRecord[4].isEmpty());
        QVERIFY(rig.mm->cmdSort->isEnabled() && rig.mm->cmdFill->isEnabled());
        QCOMPARE(rig.mm->lblAgc->text(), QString());
        if (type != rxAR7030) {
            QCOMPARE(rig.jrcShape(from), shape);
            QCOMPARE(rig.panel->findChild<QLabel *>("lblLock")->text(), QString(userLock ? "On" : "Off"));
        }
    }

    // What the fill writes, fetched back, is the image; the range typed backwards is turned round.
    void fillReadsBack_data()
    {
        QTest::addColumn<FillCase>("c");
        QTest::newRow("AR7030") << FillCase{rxAR7030, {"MEM000 07020400 5 02 @ @ 000 010 0 ", vacant(1),
                                                       "MEM002 15070000 4 03 @ @ 012 245 1 ", vacant(3)}, vacant(1)};
        QTest::newRow("NRD-535") << FillCase{rxNRD535, {"MEM000 07100000 2 01 0 1 @@@ @@@ @ ", vacant(1),
                                                        "MEM002 09650000 4 00 1 0 @@@ @@@ @ ", vacant(3)}, vacant(1)};
        // The NRD-545 empties no cell: its delete is a bare CR.
        QTest::newRow("NRD-545") << FillCase{rxNRD545, {"MEM000 07100000 2 01 0 4 @@@ @@@ @ ", vacant(1),
                                                        "MEM002 09650000 4 00 1 8 @@@ @@@ @ ", vacant(3)},
                                             "MEM001 06000000 4 00 0 1 @@@ @@@ @ "};
    }
    void fillReadsBack()
    {
        QFETCH(FillCase, c);
        auto [type, image, cell1After] = c;
        MemRig rig(type);
        if (type != rxAR7030)
            rig.nrd().setMemory(1, Setting{0, 0, 4, 6000000, 0}); // to be emptied
        rig.image(image);
        rig.range("3", "0");
        rig.env.dialogs->expectMsgBox("Are sure you want to overwrite the Receiver\nmemorycells   0  to   3\n", ui::vbYes);
        rig.env.dialogs->expectMsgBox("MemMan data is now \nloaded in the Rx memory");
        // At the line's own rate: "ready" only once the receiver has every byte.
        rig.line()->setPaced(true);
        QTest::mouseClick(rig.mm->cmdFill, Qt::LeftButton);
        QCOMPARE(rig.welcome->Comm1.OutBufferCount(), 0);
        rig.line()->setPaced(false);
        QCOMPARE(rig.mm->lblAgc->text(), QString());
        rig.range("0", "3");
        rig.env.dialogs->expectMsgBox("Do you want to capture", ui::vbYes);
        rig.env.dialogs->expectMsgBox("Rx memory is now loaded");
        QTest::mouseClick(rig.mm->cmdFetch, Qt::LeftButton);
        VERIFY_DIALOGS_CLEAN(rig.env);
        image[1] = cell1After;
        for (int i = 0; i < image.size(); ++i)
            QCOMPARE(memRecord[i].str(), image[i]);
    }

    // A selected cell tunes the receiver through the window's driver, then the panel shows it.
    void setR2M_data()
    {
        QTest::addColumn<TuneCase>("c");
        QTest::newRow("AR7030") << TuneCase{rxAR7030, "MEM002 06070000 4 02 @ @ 000 010 0 ", 6070, 4, "Data"};
        QTest::newRow("NRD-535") << TuneCase{rxNRD535, "MEM002 09650000 3 01 1 0 @@@ @@@ @ ", 9650, 3, "LSB"};
        QTest::newRow("NRD-545") << TuneCase{rxNRD545, "MEM002 11815000 2 02 0 5 @@@ @@@ @ ", 11815, 2, "USB"};
        QTest::newRow("RX-320") << TuneCase{rxRX320, "MEM002 05975000 3 12 @ 2 @@@ @@@ @ ", 5975, 3, "CW"};
    }
    void setR2M()
    {
        QFETCH(TuneCase, c);
        const auto [type, record, khz, mode, panelMode] = c;
        MemRig rig(type);
        rig.image({vacant(0), vacant(1), record});
        rig.clickRow(2);
        QCOMPARE(rig.mm->lblCellnr->text(), QString("002"));
        QTest::mouseClick(rig.mm->cmdSetrx2mem, Qt::LeftButton);
        QCOMPARE(rig.panel->lblMode->text(), panelMode);
        if (type == rxAR7030) {
            QCOMPARE(std::round(rig.ar().frequencyKhz()), khz);
            QCOMPARE(rig.ar().mode(), mode);
            QCOMPARE(rig.ar().state().bfo, 10);
        } else if (type == rxRX320) {
            QCOMPARE(rx320Freq, khz);
            QCOMPARE(rig.panel->lblAgcspeed->text(), QString("Med")); // wire value 2
            QCOMPARE(rx320Bandwidth, int16_t(12));
        } else {
            QCOMPARE(rig.nrd().frequencyKhz(), khz);
            QCOMPARE(rig.nrd().mode(), mode);
        }
        QVERIFY(rig.panel->txtFrequencyA->text().startsWith(QString::number(khz, 'f', 2)));
        // A vacant cell tunes nothing.
        const qsizetype before = rig.wire().size();
        rig.clickRow(1);
        QTest::mouseClick(rig.mm->cmdSetrx2mem, Qt::LeftButton);
        QCOMPARE(rig.wire().size(), before);
        VERIFY_DIALOGS_CLEAN(rig.env);
    }

    // The scan's ticks run from..to and round again; a vacant row takes its turn but tunes nothing.
    void scan_data()
    {
        QTest::addColumn<ScanCase>("c");
        QTest::newRow("1 to 3") << ScanCase{"1", "3", {1, 2, 3, 1, 2}, 0};
        QTest::newRow("far down, kept in view") << ScanCase{"50", "51", {50, 51, 50}, 50};
        QTest::newRow("the last rows, at the end") << ScanCase{"97", "99", {97, 98, 99}, -1};
    }
    void scan()
    {
        QFETCH(ScanCase, c);
        const auto [from, to, rows, top] = c;
        MemRig rig(rxAR7030);
        QStringList image;
        for (int i = 0; i <= lastMemoryIndex; ++i)
            image << (i == 2 ? vacant(i) : QString("MEM%1 0%2 1 03 @ @ 000 000 0 ").arg(i, 3, 10, QChar('0')).arg(6000000 + i * 5000));
        rig.image(image);
        rig.range(from, to, "0.5");
        QTest::mouseClick(rig.mm->cmdScanrun, Qt::LeftButton);
        QCOMPARE(rig.mm->txtDelay->text(), QString("1"));
        QVERIFY(rig.mm->tmrScan.isActive() && rig.mm->tmrScan.interval() == 100);
        QVERIFY(rig.mm->cmdScanstop->isVisible() && !rig.mm->cmdScanrun->isVisible() && !rig.mm->cmdSort->isEnabled());
        double khz = rig.ar().frequencyKhz();
        for (int r : rows) {
            rig.mm->tmrScan_Timer();
            QCOMPARE(int(memRow), r);
            QCOMPARE(rig.mm->tmrScan.interval(), 50); // the AR7030's tuning takes most of the second
            if (r != 2)
                khz = 6000 + r * 5;
            QCOMPARE(std::round(rig.ar().frequencyKhz() * 100) / 100, khz);
            QCOMPARE(rig.mm->grdMemman->selectionModel()->selectedRows().value(0).row(), r);
        }
        const QScrollBar *bar = rig.mm->grdMemman->verticalScrollBar();
        QCOMPARE(top < 0 ? bar->value() - bar->maximum() : rig.mm->grdMemman->rowAt(0), top < 0 ? 0 : top);
        QTest::mouseClick(rig.mm->cmdScanstop, Qt::LeftButton);
        QVERIFY(!rig.mm->tmrScan.isActive() && rig.mm->cmdScanrun->isVisible() && rig.mm->cmdSort->isEnabled());
        VERIFY_DIALOGS_CLEAN(rig.env);
    }

    // Fetch and fill exist only for receivers with memories of their own.
    void buttonsByModel_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<bool>("fetchAtLoad");
        QTest::addColumn<bool>("fillLoaded");
        QTest::newRow("AR7030") << int(rxAR7030) << true << true;
        QTest::newRow("RX-320") << int(rxRX320) << false << false;
        QTest::newRow("No RX") << int(rxNone) << false << false;
    }
    void buttonsByModel()
    {
        QFETCH(int, type);
        QFETCH(bool, fetchAtLoad);
        QFETCH(bool, fillLoaded);
        MemRig rig(type);
        frmMemman *m = rig.mm;
        QCOMPARE(m->cmdFetch->isEnabled(), fetchAtLoad);
        QVERIFY(!m->cmdFill->isEnabled() && !m->cmdSort->isEnabled() && !m->cmdDump->isEnabled());
        QVERIFY(m->cmdLoad->isEnabled() && m->cmdExit->isEnabled() && m->cmdPanel->isEnabled());
        QCOMPARE(m->txtTo->text(), QString::number(lastMemoryIndex));
        // A file loaded: everything on but what the model cannot do.
        writeFile(rig.dir.filePath("MEM/MEM_x.TXT"), "MEM000 06070000 1 02 @ 1 @@@ @@@ @ tag\r\n");
        loadMemFile(fullDirTable[8], "MEM_x.TXT");
        QVERIFY(rig.row(0).startsWith("000|06070.000|") && rig.row(0).endsWith("|tag"));
        QCOMPARE(m->grdTitles->text(0, 5), QString("MEM_x.TXT"));
        QCOMPARE(m->cmdFill->isEnabled(), fillLoaded);
        QCOMPARE(m->cmdFetch->isEnabled(), fillLoaded);
        QVERIFY(m->cmdSort->isEnabled() && m->cmdDump->isEnabled() && m->cmdScanrun->isEnabled());
        // A scan runs on every model, with or without a receiver.
        QTest::mouseClick(m->cmdScanrun, Qt::LeftButton);
        m->tmrScan_Timer();
        QVERIFY(memRow == 0 && m->scanning());
        QTest::mouseClick(m->cmdScanstop, Qt::LeftButton);
        // Cls without saving: back to the state of the load, the name gone.
        rig.env.dialogs->expectMsgBox("before clearing the Window", ui::vbNo);
        QTest::mouseClick(m->cmdCls, Qt::LeftButton);
        QCOMPARE(m->grdMemman->model()->rowCount(), 1);
        QCOMPARE(m->grdTitles->text(0, 5), QString());
        QVERIFY(!m->memarrayloaded() && !m->cmdSort->isEnabled() && m->cmdLoad->isEnabled());
        VERIFY_DIALOGS_CLEAN(rig.env);
    }

    // A job cut short: the panel or the window closed, or the line gone, during a fetch. The
    // job stops after the cell under way and gives the lock back; what came stays.
    void fetchCutShort_data()
    {
        QTest::addColumn<QString>("what");
        QTest::newRow("panel closed") << "panel";
        QTest::newRow("window closed") << "window";
        QTest::newRow("line gone") << "line";
    }
    void fetchCutShort()
    {
        QFETCH(QString, what);
        MemRig rig(rxNRD535);
        rig.range("0", "9");
        QByteArray sent; // the line goes with the panel
        rig.loan()->heard = [&](const QByteArray &b) {
            sent += b;
            if (!b.startsWith("L002"))
                return;
            if (what == "panel")
                rig.panel->close();
            else if (what == "window")
                rig.mm->close();
            else
                rig.welcome->Comm1.cutWaits();
        };
        rig.env.dialogs->expectMsgBox("Do you want to capture", ui::vbYes);
        if (what == "line")
            rig.env.dialogs->expectMsgBox("The line to the receiver has gone:\nthe fetch stopped before cell 002.");
        QTest::mouseClick(rig.mm->cmdFetch, Qt::LeftButton);
        if (SimOnLoan *l = rig.loan())
            l->heard = nullptr;
        VERIFY_DIALOGS_CLEAN(rig.env);
        QVERIFY(sent.contains("L002002\rH0\rH0\r") && !sent.contains("L003"));
        QCOMPARE(remoteLock, int16_t(0));
        QCOMPARE(isOpen(Win::frmNRD535), what != "panel");
        QCOMPARE(isOpen(Win::frmMemman), what == "line");
        if (isOpen(Win::frmMemman)) {
            QCOMPARE(rig.mm->grdMemman->model()->rowCount(), 3);
            QVERIFY(memRecord[2].isEmpty() && !memRecord[1].isEmpty() && rig.mm->cmdFetch->isEnabled());
        }
    }

    // Typed ranges and delays the window refuses, and commands that need data.
    void refusals_data()
    {
        QTest::addColumn<RefusalCase>("c");
        QTest::newRow("fill from the last cell") << RefusalCase{"cmdFill", true, "99", "99", " Ërror", "0 99 2"};
        QTest::newRow("print from -1") << RefusalCase{"cmdPrint", true, "-1", "5", "Ërror", "0 99 7"};
        QTest::newRow("scan to 100") << RefusalCase{"cmdScanrun", true, "1e3", "100", " Ërror", "0 99 2"};
        QTest::newRow("sort, no data") << RefusalCase{"cmdSort", false, "0", "5", "No memory data to sort", "0 5 7"};
        QTest::newRow("print, no data") << RefusalCase{"cmdPrint", false, "0", "5", "Nothing to Print", "0 5 7"};
        QTest::newRow("change, no data") << RefusalCase{"cmdChange", false, "0", "5", "Change Mem error", "0 5 7"};
        QTest::newRow("save, no data") << RefusalCase{"cmdSaveas", false, "0", "5", "Save file error", "0 5 7"};
    }
    void refusals()
    {
        QFETCH(RefusalCase, c);
        const auto [button, loaded, from, to, title, boxesAfter] = c;
        MemRig rig(rxAR7030);
        if (loaded)
            rig.image({"MEM000 07100000 1 03 @ @ 000 000 0 "});
        rig.mm->memcmdenabler(true);
        rig.range(from, to, "7");
        const qsizetype before = rig.wire().size();
        rig.env.dialogs->expectMsgBox(QString());
        QTest::mouseClick(rig.mm->findChild<QPushButton *>(button), Qt::LeftButton);
        VERIFY_DIALOGS_CLEAN(rig.env);
        QCOMPARE(rig.env.dialogs->shown.value(0).title, title);
        QCOMPARE(rig.mm->txtFrom->text() + ' ' + rig.mm->txtTo->text() + ' ' + rig.mm->txtDelay->text(), boxesAfter);
        QCOMPARE(rig.wire().size(), before);
        QVERIFY(!rig.mm->tmrScan.isActive());
    }

    // Sort and print on a loaded file; the printout goes to the printer in force.
    void sortAndPrint()
    {
        MemRig rig(rxNRD535);
        writeFile(rig.dir.filePath("MEM/MEM_2b.TXT"), "MEM000 09650000 4 00 0 0 @@@ @@@ @ high\r\n" + vacant(1).toLatin1()
                                                     + "\r\nMEM002 06070000 4 00 0 0 @@@ @@@ @ low\r\n");
        loadMemFile(fullDirTable[8], "MEM_2b.TXT");
        rig.env.dialogs->expectMsgBox("window on frequency ?", ui::vbYes);
        rig.env.dialogs->expectMsgBox("Memory data is now sorted");
        QTest::mouseClick(rig.mm->cmdSort, Qt::LeftButton);
        QCOMPARE(rig.env.dialogs->shown.value(1).style, int(ui::vbExclamation));
        QCOMPARE(rig.row(0), QString("000|06070.000|AM|Wid|low"));
        QCOMPARE(rig.row(1), QString("001|09650.000|AM|Wid|high"));
        QCOMPARE(rig.row(2), QString("002|No data|||"));
        QCOMPARE(rig.mm->grdMemman->model()->rowCount(), lastMemoryIndex + 2);
        rig.range("0", "3");
        rig.env.dialogs->expectMsgBox("of memorycells   0  to   3\nincluding", ui::vbYes);
        QTest::mouseClick(rig.mm->cmdPrint, Qt::LeftButton);
        VERIFY_DIALOGS_CLEAN(rig.env);
        QCOMPARE(rig.env.printer->printed.size(), 1);
        const ui::PrintJob &job = rig.env.printer->printed[0];
        QCOMPARE(job.fontFamily + ' ' + QString::number(job.pointSize), QString("Courier New 10"));
        QCOMPARE(job.lines.value(2), QString("     MEM_2B.TXT"));
        QCOMPARE(job.lines.size(), 6 + 3); // cell 3 never assigned
        QVERIFY(job.lines[6].contains("low") && job.lines[7].contains("high"));
    }

    // Each editor button opens the editor for its action; a cell written beyond the grid's last
    // row adds the rows up to it.
    void editorButtons_data()
    {
        QTest::addColumn<EditorCase>("c");
        const QString fill = "fill the MemMan\nWindow row 010";
        QTest::newRow("Change") << EditorCase{"cmdChange", 1, "Change selected Mem Cell", fill};
        QTest::newRow("Store R2M") << EditorCase{"cmdDump", 2, " Store Rx setting in Mem Cell", fill};
        QTest::newRow("Copy") << EditorCase{"cmdCopy", 3, "Copy to other Mem Cell", fill};
        QTest::newRow("Delete") << EditorCase{"cmdDelete", 4, "Delete selected Mem Cell", "empty the MemMan\nWindow cell 010"};
    }
    void editorButtons()
    {
        QFETCH(EditorCase, c);
        const auto [button, action, caption, question] = c;
        MemRig rig(rxAR7030);
        rig.image({vacantMemRecord(0), "MEM001 07100000 1 03 @ @ 000 000 0 ", vacantMemRecord(2)});
        rig.clickRow(1);
        QString seen;
        whenModal<frmMemcell>([&](frmMemcell *cell) {
            seen = QString::number(cell->action()) + cell->windowTitle();
            cell->cmbCellnr->setCurrentIndex(10);
            cell->cmdToMMWorRM_Click(0);
            cell->cmdCancel_Click();
        });
        rig.env.dialogs->expectMsgBox(question, ui::vbYes);
        rig.env.dialogs->expectMsgBox("is now updated");
        QTest::mouseClick(rig.mm->findChild<QPushButton *>(button), Qt::LeftButton);
        VERIFY_DIALOGS_CLEAN(rig.env);
        QCOMPARE(seen, QString::number(action) + caption);
        QCOMPARE(rig.mm->grdMemman->model()->rowCount(), 11);
        QVERIFY(rig.row(10).startsWith("010|"));
        QCOMPARE(rig.row(1), QString("001|07100.000|AM|5.5|"));
    }

    // Exit's Yes saves and stays, its No unloads.
    void exitSavesThenLeaves()
    {
        MemRig rig(rxAR7030);
        rig.image({"MEM000 07100000 1 03 @ @ 000 000 0 "});
        QDir(rig.dir.path()).mkdir("MEM");
        whenModal<frmSavefile>([](frmSavefile *save) {
            save->cmbSavefile->setEditText("MEM_1kept.TXT");
            QTest::mouseClick(save->cmdOK, Qt::LeftButton);
        });
        rig.env.dialogs->expectMsgBox("of the Memory Management window", ui::vbYes);
        rig.env.dialogs->expectMsgBox("The data is now saved");
        QTest::mouseClick(rig.mm->cmdExit, Qt::LeftButton);
        QVERIFY(isOpen(Win::frmMemman));
        QCOMPARE(rig.mm->grdTitles->text(0, 5), QString("MEM_1kept.TXT"));
        QVERIFY(readFile(rig.dir.filePath("MEM/MEM_1kept.TXT")).startsWith("MEM000 07100000"));
        QCOMPARE(rig.mm->cursor().shape(), Qt::ArrowCursor);
        rig.env.dialogs->expectMsgBox("of the Memory Management window", ui::vbNo);
        QTest::mouseClick(rig.mm->cmdExit, Qt::LeftButton);
        QVERIFY(!isOpen(Win::frmMemman) && memFileView() != rig.mm.data());
        VERIFY_DIALOGS_CLEAN(rig.env);
    }
};

BRELVOX_TEST(TestMemmanWindow)
#include "tst_memman_window.moc"
