#include "testmain.h"
#include "testutil.h"
#include "core/shared_state.h"
#include "drivers/ar7030_tables.h"
#include "drivers/model_tables.h"
#include "drivers/nrd_tables.h"
#include "memory/mem_file.h"
#include "memory/mem_record.h"

#include <QTest>

// The demo's memory files are what the program itself writes, with settings each model knows.
class TestDemoMem : public QObject {
    Q_OBJECT
private slots:
    void files_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("model");
        QTest::newRow("AR7030") << "MEM_1demo.TXT" << int(rxAR7030);
        QTest::newRow("NRD-535") << "MEM_2demo.TXT" << int(rxNRD535);
        QTest::newRow("RX-320") << "MEM_3demo.TXT" << int(rxRX320);
        QTest::newRow("NRD-545") << "MEM_4demo.TXT" << int(rxNRD545);
    }
    void files()
    {
        QFETCH(QString, name);
        QFETCH(int, model);
        TestEnv env;
        switch (model) {
        case rxAR7030: labelRoutineAR7030(); break;
        case rxNRD535: labelRoutineNRD535(); break;
        case rxRX320: labelRoutineRX320(); break;
        default: labelRoutineNRD545(); break;
        }
        const QByteArray bytes = readFile(QFINDTESTDATA("../../demo/MEM/" + name));
        QCOMPARE(readMemFile(bytes), lastMemoryIndex + 1);
        QCOMPARE(memFileBytes(), bytes);
        int filled = 0;
        for (int i = 0; i <= lastMemoryIndex; ++i) {
            const QString r = memRecord[i].str();
            if (isVacantMemRecord(r)) {
                QCOMPARE(r, vacantMemRecord(i));
                continue;
            }
            ++filled;
            QCOMPARE(memField(r, memfield::number).toInt(), i);
            QVERIFY2(memKhz(r) >= freqLowerLimit && memKhz(r) < freqUpperLimit, qPrintable(r));
            const int mode = memField(r, memfield::mode).toInt();
            const int bw = memField(r, memfield::bandwidth).toInt();
            QVERIFY2(!modeTable.value(mode).isEmpty(), qPrintable(r));
            // The AR7030's filter labels come from the filters fitted; its numbers run 1 to 6.
            QVERIFY2(model == rxAR7030 ? bw >= 1 && bw <= 6 : !filterTable.value(bw).isEmpty(), qPrintable(r));
            const QString att = memField(r, memfield::attenuator), agc = memField(r, memfield::agc);
            const bool jrc = model == rxNRD535 || model == rxNRD545;
            QVERIFY2(jrc ? !attTable.value(att.toInt()).isEmpty() && att != u"@" : att == u"@", qPrintable(r));
            const int agcIndex = model == rxRX320 ? agc.toInt() - 1 : agc.toInt(); // the RX-320 counts from 1
            QVERIFY2(model == rxAR7030 ? agc == u"@" : !agcTable.value(agcIndex).isEmpty() && agc != u"@", qPrintable(r));
            if (model == rxAR7030) {
                const int sqlBfo = memField(r, memfield::sqlBfo).toInt();
                QVERIFY2(memField(r, memfield::pbs).toInt() <= 255 && sqlBfo <= (mode == 4 || mode == 5 ? 255 : 150),
                         qPrintable(r));
            } else {
                QCOMPARE(r.mid(25), QString("@@@ @@@ @ "));
            }
        }
        QVERIFY(filled > 20 && filled < lastMemoryIndex + 1);
    }
};

BRELVOX_TEST(TestDemoMem)
#include "tst_demomem.moc"
