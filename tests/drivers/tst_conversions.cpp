// Numbers from the listener's files and from the wire that no integer can hold end in the
// run-time error "Overflow" (6), never in a wrong byte.
#include "core/session_clock.h"
#include "core/settings_files.h"
#include "core/shared_state.h"
#include "drivers/clsAR7030.h"
#include "drivers/clsNRD545.h"
#include "drivers/clsRX320.h"
#include "panels/rx320_panel_logic.h"
#include "serial/comm_line.h"
#include "sim/ar7030_sim.h"
#include "sim/nrd_sim.h"
#include "testmain.h"
#include "testutil.h"

#include <QTest>
#include <functional>

namespace {
struct Line {
    CommLine comm;
    Line(std::unique_ptr<SimDevice> device, const char *settings) { openOnSim(comm, std::move(device), settings); }
};

// An NRD-545 that answers its AGC query with the given bytes.
std::unique_ptr<SimDevice> agcReply(const QByteArray &reply) { return std::make_unique<FixedReplyDevice>("NN", reply, 4800); }

// brelvox2.ini with every slot 0 but the one given.
void loadSettingsWith(int slot, const QString &value)
{
    QStringList lines(25, QStringLiteral("0"));
    lines[0] = QStringLiteral("C:\\Data\\");
    lines[3] = QStringLiteral("3");
    if (slot > 0)
        lines[slot + 3] = value;
    settings::readSettings(lines);
}

void tuneFromSettingsFile(const QString &freq)
{
    loadSettingsWith(0, {});
    // AM, filter 33, no shift: only the frequency line matters.
    rx320panel::setSharedSettings(rx320panel::readSettings(freq.toLatin1() + "\r\n33\r\n0\r\n1\r\n0\r\n0\r\n50\r\n50\r\n"));
}
} // namespace

class TestConversions : public QObject {
    Q_OBJECT
private slots:
    void outsideData_data()
    {
        QTest::addColumn<QString>("source");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("error");
        QTest::newRow("rx320settings frequency") << "rx320settings.ini frequency" << "9410" << 0;
        QTest::newRow("rx320settings frequency huge") << "rx320settings.ini frequency" << "1E30" << 6;
        QTest::newRow("rx320settings frequency huge negative") << "rx320settings.ini frequency" << "-1E30" << 6;
        QTest::newRow("correction") << "brelvox2.ini correction at 15 MHz" << "150" << 0;
        QTest::newRow("correction huge") << "brelvox2.ini correction at 15 MHz" << "3E38" << 6;
        QTest::newRow("correction past single") << "brelvox2.ini correction at 15 MHz" << "1E39" << 6;
        QTest::newRow("LT to UTC") << "brelvox2.ini LT to UTC" << "-5.5" << 0;
        QTest::newRow("LT to UTC huge") << "brelvox2.ini LT to UTC" << "3E38" << 6;
        QTest::newRow("MEM record") << "AR7030 MEM record" << "MEM007 09410000 1 02 @ @ 128 064 0 " << 0;
        QTest::newRow("MEM frequency huge") << "AR7030 MEM record" << "MEM007 9E99     1 02 @ @ 128 064 0 " << 6;
        QTest::newRow("MEM frequency past 32 bits") << "AR7030 MEM record" << "MEM007 -6E12    1 02 @ @ 128 064 0 " << 6;
        QTest::newRow("MEM pass band shift huge") << "AR7030 MEM record" << "MEM007 09410000 1 02 @ @ 9E9 064 0 " << 6;
        QTest::newRow("MEM squelch huge") << "AR7030 MEM record" << "MEM007 09410000 1 02 @ @ 128 9E9 0 " << 6;
        QTest::newRow("NRD-545 AGC reply") << "NRD-545 AGC reply" << "NN080\r" << 0;
        QTest::newRow("NRD-545 AGC reply huge") << "NRD-545 AGC reply" << "NN9E99\r" << 6;
        QTest::newRow("NRD-545 AGC reply past 16 bits") << "NRD-545 AGC reply" << "NN327680\r" << 6;
    }
    void outsideData()
    {
        QFETCH(QString, source);
        QFETCH(QString, text);
        QFETCH(int, error);
        TestEnv env;
        const QHash<QString, std::function<void()>> use = {
            {"rx320settings.ini frequency",
             [&] {
                 tuneFromSettingsFile(text);
                 rx320Tuning(rx320Freq);
             }},
            {"brelvox2.ini correction at 15 MHz",
             [&] {
                 loadSettingsWith(21, text);
                 rx320Tuning(29000.0);
             }},
            {"brelvox2.ini LT to UTC",
             [&] {
                 loadSettingsWith(3, text);
                 timeTexts(QDateTime(QDate(2024, 3, 1), QTime(12, 0)), slotLt2Utc());
             }},
            {"AR7030 MEM record",
             [&] {
                 Line line(std::make_unique<Ar7030Sim>(), "1200,N,8,1");
                 clsAR7030(line.comm).setMemory(7, text);
             }},
            {"NRD-545 AGC reply",
             [&] {
                 Line line(agcReply(text.toLatin1()), "4800,N,8,1");
                 clsNRD545(line.comm).Agcspeed();
             }},
        };
        QVERIFY(use.contains(source));
        QCOMPARE(errorOf(use.value(source)), error);
    }
};

BRELVOX_TEST(TestConversions)
#include "tst_conversions.moc"
