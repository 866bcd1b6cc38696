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
        const bool ar = model == rxAR7030, jrc = model == rxNRD535 || model == rxNRD545;
        ar ? labelRoutineAR7030() : model == rxNRD535 ? labelRoutineNRD535() : model == rxRX320 ? labelRoutineRX320() : labelRoutineNRD545();
        const QByteArray bytes = readFile(QFINDTESTDATA("../../demo/MEM/" + name));
        QCOMPARE(readMemFile(bytes), lastMemoryIndex + 1);
        QCOMPARE(memFileBytes(), bytes);
        auto known = [](const QStringList &table, const QString &digit, int offset = 0) {
            return digit != u"@" && !table.value(digit.toInt() - offset).isEmpty();
        };
        for (int i = 0; i <= lastMemoryIndex; ++i) {
            const QString r = memRecord[i].str();
            const auto f = [&r](memfield::Field field) { return memField(r, field); };
            const int mode = f(memfield::mode).toInt(), bw = f(memfield::bandwidth).toInt();
            // The AR7030's filter labels come from the filters fitted, numbered 1 to 6; the RX-320
            // counts its AGC from 1; the AR7030's squelch byte goes to 150.
            const bool ok = isVacantMemRecord(r) ? r == vacantMemRecord(i)
                : f(memfield::number).toInt() == i && memKhz(r) >= freqLowerLimit && memKhz(r) < freqUpperLimit
                  && known(modeTable, f(memfield::mode))
                  && (ar ? bw >= 1 && bw <= 6 : known(filterTable, f(memfield::bandwidth)))
                  && (jrc ? known(attTable, f(memfield::attenuator)) : f(memfield::attenuator) == u"@")
                  && (ar ? f(memfield::agc) == u"@" : known(agcTable, f(memfield::agc), model == rxRX320 ? 1 : 0))
                  && (ar ? f(memfield::pbs).toInt() <= 255 && f(memfield::sqlBfo).toInt() <= (mode == 4 || mode == 5 ? 255 : 150)
                         : r.mid(25) == u"@@@ @@@ @ ");
            QVERIFY2(ok, qPrintable(r));
        }
    }
};

BRELVOX_TEST(TestDemoMem)
#include "tst_demomem.moc"
