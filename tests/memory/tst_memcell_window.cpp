// The memory cell editor on simulated receivers: what "To MMW" leaves in the image and "To RxM"
// in the receiver's cell for every action, the lists by model, and what the boxes refuse.
#include "panel_rig.h"
#include "drivers/ar7030_tables.h"
#include "drivers/clsAR7030.h"
#include "drivers/model_tables.h"
#include "drivers/nrd_tables.h"
#include "memory/frmMemcell.h"
#include "memory/mem_record.h"
#include "testmain.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

namespace {

// Cells 5 (where the editor opens) and 9 (a copy's target) as each model writes them.
QStringList cellsOf(int rx)
{
    switch (rx) {
    case rxAR7030: return {"MEM005 06070000 1 02 @ @ 000 030 0 ", "MEM009 15070000 5 03 @ @ 000 250 1 "};
    case rxNRD535: return {"MEM005 06070000 4 01 0 1 @@@ @@@ @ ", "MEM009 15070000 1 02 1 0 @@@ @@@ @ "};
    case rxNRD545: return {"MEM005 06070000 4 01 0 5 @@@ @@@ @ ", "MEM009 15070000 2 02 1 3 @@@ @@@ @ "};
    default: return {"MEM005 06070000 0 10 @ 2 @@@ @@@ @ ", "MEM009 15070000 1 20 @ 3 @@@ @@@ @ "};
    }
}

// The image, the label tables and the memory window's own driver on a simulated receiver.
struct CellRig {
    TestEnv env;
    CommLine comm;
    SimBackend *line = nullptr;
    std::unique_ptr<RxDriver> drv;
    QList<int> rows; // what rowChanged was told

    explicit CellRig(int rx)
    {
        rxType = int16_t(rx);
        remoteLock = remoteCommand = lockState = 0;
        std::unique_ptr<SimDevice> sim;
        switch (rx) {
        case rxAR7030:
            labelRoutineAR7030();
            filterTable = QStringList{"", "0.5", "2.1", "3.5", "5.5", "7.0", "10.0"}; // as the panel reads them
            sim = std::make_unique<Ar7030Sim>();
            break;
        case rxNRD535: labelRoutineNRD535(); sim = std::make_unique<Nrd535Sim>(); break;
        case rxNRD545: labelRoutineNRD545(); sim = std::make_unique<Nrd545Sim>(); break;
        case rxRX320: labelRoutineRX320(); sim = std::make_unique<Rx320Sim>(); break;
        default: labelRoutineNoRx(); break;
        }
        if (sim)
            line = openOnSim(comm, std::move(sim), QLatin1String(serialFor(rx).settings));
        drv = makeDriver(rx, comm);
        allocateMemImage();
        memRecord[5] = cellsOf(rx)[0];
        memTag[5] = QStringLiteral("Alpha");
        memRecord[9] = cellsOf(rx)[1];
        memTag[9] = QStringLiteral("Bravo");
        memRow = 5;
    }
    ~CellRig() { remoteLock = remoteCommand = lockState = 0; }

    std::unique_ptr<frmMemcell> open(int action)
    {
        auto w = std::make_unique<frmMemcell>(action, QStringLiteral("Change selected Mem Cell"), drv.get(),
                                              [this](int r) { rows << r; });
        w->show();
        return w;
    }
    // Answers Yes to the question and takes the message after.
    void click(frmMemcell &w, int target)
    {
        env.dialogs->expectMsgBox(QString(), ui::vbYes);
        env.dialogs->expectMsgBox(QStringLiteral("is now updated"));
        QTest::mouseClick(w.cmdToMMWorRM[size_t(target)], Qt::LeftButton);
    }

    // What the receiver holds in cell n, in its own terms.
    QString rxCell(int n) const
    {
        if (auto *ar = dynamic_cast<Ar7030Sim *>(line->device())) {
            const Ar7030Sim::MemoryCell c = ar->memoryCell(n);
            return QStringLiteral("%1 kHz mode %2 filter %3%4 pbs %5 sql/bfo %6")
                .arg(c.khz, 0, 'f', 2).arg(c.mode).arg(c.filter).arg(c.scanSkip ? " skip" : "").arg(c.pbs).arg(c.squelchBfo);
        }
        const auto c = static_cast<NrdSim *>(line->device())->memory(n);
        return c ? QStringLiteral("%1 Hz mode %2 bw %3 att %4 agc %5").arg(c->hz).arg(c->mode).arg(c->bandwidth)
                       .arg(c->attenuator).arg(c->agc)
                 : QStringLiteral("vacant");
    }
};

// A combo's list as "count first..last", "off" when it cannot be used.
QString listOf(const QComboBox *c)
{
    if (!c->isEnabled())
        return QStringLiteral("off");
    return c->count() == 0 ? QStringLiteral("0")
                           : QStringLiteral("%1 %2..%3").arg(c->count()).arg(c->itemText(0), c->itemText(c->count() - 1));
}

} // namespace

class TestMemcellWindow : public QObject {
    Q_OBJECT
private slots:
    void init() { resetSharedState(); }

    // Every action into both targets. "To MMW" rewrites the image and the grid's row; "To RxM"
    // writes the receiver's cell and the image but not the row, and a copy's "To RxM" sends what
    // the target cell holds, not what is shown.
    void actions_data()
    {
        QTest::addColumn<int>("rx");
        QTest::addColumn<int>("action");
        QTest::addColumn<int>("target"); // 0 To MMW, 1 To RxM
        QTest::addColumn<int>("pick");   // the cell chosen in cmbCellnr
        QTest::addColumn<QString>("freq"); // typed over the frequency, when given
        QTest::addColumn<QString>("after"); // memRecord(pick) | memTag(pick)
        QTest::addColumn<QString>("rxCell"); // the receiver's cell after "To RxM"
        QTest::addColumn<QByteArray>("wire"); // all bytes on the line, when given
        auto add = [](const char *name, int rx, int action, int target, int pick, const char *freq, const QString &after,
                      const char *rxCell = "", const QByteArray &wire = {}) {
            QTest::newRow(name) << rx << action << target << pick << QString(freq) << after << QString(rxCell) << wire;
        };
        const QString vacant = "XXX005 No data  @ @@ @ @ @@@ @@@ @ |";
        add("AR7030 change, MMW, comma", 1, 1, 0, 5, "9410,5", "MEM005 09410500 1 02 @ @ 000 030 0 |Alpha");
        add("AR7030 change, RxM", 1, 1, 1, 5, "9410,5", "MEM005 09410500 1 02 @ @ 000 030 0 |Alpha",
            "9410.50 kHz mode 1 filter 2 pbs 0 sql/bfo 30");
        add("AR7030 copy, MMW", 1, 3, 0, 9, "", "MEM009 06070000 1 02 @ @ 000 030 0 |Alpha");
        add("AR7030 copy, RxM", 1, 3, 1, 9, "", cellsOf(1)[1] + "|Bravo", "15070.00 kHz mode 5 filter 3 skip pbs 0 sql/bfo 250");
        add("AR7030 delete, MMW", 1, 4, 0, 5, "", vacant);
        add("AR7030 delete, RxM", 1, 4, 1, 5, "", vacant, "32016.67 kHz mode 0 filter 0 skip pbs 0 sql/bfo 0");
        add("NRD-535 change, MMW", 2, 1, 0, 5, "9410.5", "MEM005 09410500 4 01 0 1 @@@ @@@ @ |Alpha");
        add("NRD-535 change, RxM", 2, 1, 1, 5, "9410.5", "MEM005 09410500 4 01 0 1 @@@ @@@ @ |Alpha",
            "9410500 Hz mode 4 bw 1 att 0 agc 1", "H1\rH1\rK005014094105001\rH0\rH0\r");
        add("NRD-535 copy, RxM", 2, 3, 1, 9, "", cellsOf(2)[1] + "|Bravo", "15070000 Hz mode 1 bw 2 att 1 agc 0");
        add("NRD-535 delete, RxM sends U5", 2, 4, 1, 5, "", vacant, "vacant", "H1\rH1\rU5005\rH0\rH0\r");
        add("NRD-535 copy to the last cell", 2, 3, 0, 199, "", "MEM199 06070000 4 01 0 1 @@@ @@@ @ |Alpha");
        add("NRD-545 change, MMW", 4, 1, 0, 5, "9410.5", "MEM005 09410500 4 01 0 5 @@@ @@@ @ |Alpha");
        add("NRD-545 change, RxM", 4, 1, 1, 5, "9410.5", "MEM005 09410500 4 01 0 5 @@@ @@@ @ |Alpha",
            "9410500 Hz mode 4 bw 1 att 0 agc 50");
        add("NRD-545 copy, RxM", 4, 3, 1, 9, "", cellsOf(4)[1] + "|Bravo", "15070000 Hz mode 2 bw 2 att 1 agc 30");
        add("NRD-545 delete, RxM is a bare CR", 4, 4, 1, 5, "", vacant, "vacant", "H1\rH1\r\rH0\rH0\r");
        add("RX-320 change, MMW", 3, 1, 0, 5, "9410,5", "MEM005 09410500 0 10 @ 2 @@@ @@@ @ |Alpha");
    }
    void actions()
    {
        QFETCH(int, rx);
        QFETCH(int, target);
        QFETCH(int, pick);
        QFETCH(QString, freq);
        CellRig rig(rx);
        QFETCH(int, action);
        auto w = rig.open(action);
        QCOMPARE(w->cmbCellnr->currentText() + w->txtMemtag->text(), QString("005Alpha"));
        if (!freq.isEmpty())
            w->txtFrequency->setText(freq);
        w->cmbCellnr->setCurrentIndex(pick);
        rig.line->written.clear();
        rig.click(*w, target);
        VERIFY_DIALOGS_CLEAN(rig.env);

        QCOMPARE(memRow, pick);
        QTEST(memRecord[pick].str() + u'|' + memTag[pick].str().trimmed(), "after");
        QCOMPARE(rig.rows, target == 0 ? QList<int>{pick} : QList<int>{});
        if (pick != 5)
            QCOMPARE(memRecord[5].str(), cellsOf(rx)[0]);
        if (target == 0)
            QCOMPARE(rig.line->written, QByteArray());
        else
            QTEST(rig.rxCell(pick), "rxCell");
        QFETCH(QByteArray, wire);
        if (!wire.isEmpty())
            QCOMPARE(rig.line->written, wire);
    }

    // The questions and the messages after; only Yes acts.
    void questions_data()
    {
        QTest::addColumn<int>("action");
        QTest::addColumn<int>("target");
        QTest::addColumn<int>("answer");
        QTest::addColumn<QString>("question");
        const char *fillMmw = "You want to fill the MemMan\nWindow row 005 with the\nsettings shown";
        const char *fillRxm = "You want to fill the receiver\nmemory cell 005 with the\nsettings shown";
        QTest::newRow("store, MMW") << 2 << 0 << int(ui::vbYes) << fillMmw;
        QTest::newRow("delete, MMW") << 4 << 0 << int(ui::vbYes) << "You want to empty the MemMan\nWindow cell 005";
        QTest::newRow("copy, RxM") << 3 << 1 << int(ui::vbYes) << fillRxm;
        QTest::newRow("delete, RxM") << 4 << 1 << int(ui::vbYes) << "You want to empty the receiver\nmemory cell 005";
        QTest::newRow("delete, MMW, No") << 4 << 0 << int(ui::vbNo) << "You want to empty the MemMan\nWindow cell 005";
        QTest::newRow("change, RxM, Cancel") << 1 << 1 << int(ui::vbCancel) << fillRxm;
    }
    void questions()
    {
        QFETCH(int, action);
        QFETCH(int, target);
        QFETCH(int, answer);
        CellRig rig(rxNRD535);
        auto w = rig.open(action);
        rig.line->written.clear();
        rig.env.dialogs->expectMsgBox(QString(), answer);
        if (answer == ui::vbYes)
            rig.env.dialogs->expectMsgBox(QString());
        w->cmdToMMWorRM_Click(target);
        VERIFY_DIALOGS_CLEAN(rig.env);
        const auto &shown = rig.env.dialogs->shown;
        QTEST(shown[0].prompt, "question");
        QCOMPARE(shown[0].title, QString(target == 0 ? "Adapt MemMan Window" : "Adapt Receiver Memory"));
        QCOMPARE(shown[0].style, ui::vbYesNoCancel + ui::vbQuestion);
        if (answer != ui::vbYes) {
            QCOMPARE(memRecord[5].str() + memTag[5].str().trimmed(), cellsOf(rxNRD535)[0] + "Alpha");
            QVERIFY(rig.rows.isEmpty() && rig.line->written.isEmpty());
            return;
        }
        QCOMPARE(shown[1].prompt, QString(target == 0 ? "MemMan Window row\n005\n is now updated"
                                                      : "Receiver memory cell\n005\n is now updated"));
        QCOMPARE(shown[1].title, QString(target == 0 ? "MemMan Window changed" : "Receiver memory is changed"));
        QCOMPARE(shown[1].style, int(ui::vbInformation));
    }

    // "Store Rx setting": the receiver's present setting, with the frequency the panel shows
    // where the receiver cannot tell it (RX-320) or tells it with the synthesiser's error (AR7030).
    void storeReceiverSetting_data()
    {
        QTest::addColumn<int>("rx");
        QTest::addColumn<QString>("shown"); // frequency|mode|bandwidth|attenuator|agc|pbs|sql/bfo|scan
        QTest::addColumn<QString>("record");
        QTest::newRow("AR7030") << 1 << "7215.50|CW|3.0||| 0.0k|-0.2k|Y" << "MEM003 07215500 5 02 @ @ 000 250 0 ";
        QTest::newRow("NRD-535") << 2 << "09410.000|USB|Int|-20 dB|Fst|||" << "MEM003 09410000 2 01 1 1 @@@ @@@ @ ";
        QTest::newRow("NRD-545") << 4 << "09410.000|USB|Int|-20 dB|0600|||" << "MEM003 09410000 2 01 1 3 @@@ @@@ @ ";
        QTest::newRow("RX-320") << 3 << "7215.500|USB|3000||Slw|||" << "MEM003 07215500 1 10 @ 1 @@@ @@@ @ ";
    }
    void storeReceiverSetting()
    {
        QFETCH(int, rx);
        PanelRig rig(rx);
        writeFile(rig.dir.filePath("rx320settings.ini"), "7100.5\r\n10\r\n0\r\n1\r\n400\r\n1\r\n40\r\n20\r\n");
        QVERIFY(rig.open<frmPanelBase>());
        rig.typeFrequency("7215.5");
        auto drv = makeDriver(rx, rig.welcome->Comm1);
        if (auto *ar = dynamic_cast<clsAR7030 *>(drv.get())) {
            ar->setMode(5);
            int16_t filter = 2;
            ar->setBandwidth(filter);
            ar->setBeatfreqosc(250);
        } else if (auto *jrc = dynamic_cast<JrcDriver *>(drv.get())) {
            jrc->setRxStatus(rx == rxNRD535 ? "X112094100001" : "X112094100003");
        }
        allocateMemImage();
        memRow = 3;
        frmMemcell w(frmMemcell::StoreRxSetting, " Store Rx setting in Mem Cell", drv.get(), {});
        const QStringList shown = {w.txtFrequency->text(), w.cmbMode->currentText(), w.cmbBandwidth->currentText(),
                                   w.cmbAttenuator->currentText(), w.cmbAgcspeed->currentText(),
                                   w.cmbPBS->currentText(), w.cmbSqlBfo->currentText(), w.cmbScanyn->currentText()};
        QTEST(shown.join(u'|') + w.txtMemtag->text(), "shown");
        rig.env.dialogs->expectMsgBox("MemMan", ui::vbYes);
        rig.env.dialogs->expectMsgBox("is now updated");
        w.cmdToMMWorRM_Click(0);
        VERIFY_DIALOGS_CLEAN(rig.env);
        QTEST(memRecord[3].str(), "record");
    }

    // The lists and what can be used, by model; Exit unloads.
    void lists_data()
    {
        QTest::addColumn<int>("rx");
        QTest::addColumn<QString>("lists");
        QTest::newRow("No RX") << 0 << "100 000..099|0|0|0|0|0|0|0|off off";
        QTest::newRow("AR7030") << 1 << "100 000..099|7 AM..USB|6 0.5..10.0|off|off|85 -4.2k..+4.2k|100 00..99|2 Y..N|on on";
        QTest::newRow("NRD-535") << 2 << "200 000..199|9 RY..|4 Wid..Aux|2 0 dB..-20 dB|3 Slw..Off|off|off|off|on on";
        QTest::newRow("NRD-545") << 4 << "1000 000..999|10 RY..WFM|3 Wid..Nar|2 0 dB..-20 dB|10 Off..1800|off|off|off|on on";
        QTest::newRow("RX-320") << 3 << "100 000..099|4 AM..CW|34 6000..8000|off|3 Slw..Fst|off|off|off|on off";
    }
    void lists()
    {
        QFETCH(int, rx);
        CellRig rig(rx);
        auto w = rig.open(frmMemcell::Change);
        QStringList got;
        for (const QComboBox *c : {w->cmbCellnr, w->cmbMode, w->cmbBandwidth, w->cmbAttenuator, w->cmbAgcspeed,
                                   w->cmbPBS, w->cmbSqlBfo, w->cmbScanyn})
            got << listOf(c);
        got << QStringLiteral("%1 %2").arg(w->cmdToMMWorRM[0]->isEnabled() ? "on" : "off",
                                           w->cmdToMMWorRM[1]->isEnabled() ? "on" : "off");
        QTEST(got.join(u'|'), "lists");
        QCOMPARE(w->cmdToMMWorRM[0]->text() + w->cmdToMMWorRM[1]->text() + w->cmdCancel->text(),
                 QString("To MMWTo RxMExit"));
        QVERIFY(isOpen(Win::frmMemcell) && frmWelcome::openWindow(Win::frmMemcell) == w.get());
        QCOMPARE(w->cmdToMMWorRM[1]->accessibleDescription(), QString("cmdToMMWorRM_1"));
        QTest::mouseClick(w->cmdCancel, Qt::LeftButton);
        QVERIFY(!w->isVisible() && !isOpen(Win::frmMemcell) && !frmWelcome::openWindow(Win::frmMemcell));
    }

    // On the AR7030 the Sql/BFO list follows the mode text, and what it shows goes into the record.
    void ar7030SqlBfoFollowsTheMode_data()
    {
        QTest::addColumn<QString>("mode");
        QTest::addColumn<QString>("value"); // chosen after the mode, when given
        QTest::addColumn<QString>("shown"); // caption, list, and the value then
        QTest::addColumn<QString>("record");
        QTest::newRow("CW") << "CW" << "-0.2k" << "BFO 85 -4.2k..+4.2k  0.0k" << "MEM005 06070000 5 02 @ @ 000 250 0 ";
        QTest::newRow("Data") << "Data" << "+4.2k" << "BFO 85 -4.2k..+4.2k  0.0k" << "MEM005 06070000 4 02 @ @ 000 127 0 ";
        QTest::newRow("USB") << "USB" << "45" << "Sql 100 00..99 19.8" << "MEM005 06070000 7 02 @ @ 000 068 0 ";
    }
    void ar7030SqlBfoFollowsTheMode()
    {
        QFETCH(QString, mode);
        QFETCH(QString, value);
        CellRig rig(rxAR7030);
        auto w = rig.open(frmMemcell::Change);
        QCOMPARE(w->lblSqlBfo->text(), QString("Sql"));
        w->cmbMode->setCurrentIndex(w->cmbMode->findText(mode));
        QTEST(w->lblSqlBfo->text() + u' ' + listOf(w->cmbSqlBfo) + u' ' + w->cmbSqlBfo->currentText(), "shown");
        if (!value.isEmpty())
            w->cmbSqlBfo->setCurrentIndex(w->cmbSqlBfo->findText(value));
        rig.click(*w, 0);
        VERIFY_DIALOGS_CLEAN(rig.env);
        QTEST(memRecord[5].str(), "record");
    }

    // A frequency the record cannot hold is refused with a message, and the image stays.
    void frequencyRefused()
    {
        CellRig rig(rxNRD535);
        auto w = rig.open(frmMemcell::Change);
        w->txtFrequency->clear();
        QTest::keyClicks(w->txtFrequency, "100000");
        rig.env.dialogs->expectMsgBox("Frequency outside range");
        w->cmdToMMWorRM_Click(0);
        VERIFY_DIALOGS_CLEAN(rig.env);
        QCOMPARE(rig.env.dialogs->shown.first().title, QString("Input Error"));
        QCOMPARE(memRecord[5].str(), cellsOf(rxNRD535)[0]);
        QVERIFY(rig.rows.isEmpty());
    }

    // The tag box takes what a memory file can keep: 45 Latin-1 characters on one line.
    void tagInput_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("kept");
        const QString full(45, u'x');
        QTest::newRow("46th refused") << full + "y" << full;
        QTest::newRow("outside Latin-1") << "R\u0101dio \u20ac" << "Rdio ";
    }
    void tagInput()
    {
        QFETCH(QString, typed);
        CellRig rig(rxNRD535);
        auto w = rig.open(frmMemcell::Change);
        w->txtMemtag->clear();
        for (const QChar c : typed)
            w->txtMemtag->insert(QString(c)); // as typed or pasted, a character at a time
        QTEST(w->txtMemtag->text(), "kept");
    }
};

BRELVOX_TEST(TestMemcellWindow)
#include "tst_memcell_window.moc"
