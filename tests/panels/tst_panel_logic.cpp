// The panels' arithmetic and tables on their own: register conversions, the step, the keypad's
// checks, the keyboard table, the RX-320's filter groups and settings file.
#include "core/runtime_error.h"
#include "panels/panel_keys.h"
#include "panels/panel_logic.h"
#include "panels/rx320_panel_logic.h"
#include "drivers/model_tables.h"
#include "testmain.h"
#include "testutil.h"

#include <QtTest>
#include <set>

using namespace panel;

class TestPanelLogic : public QObject {
    Q_OBJECT
private slots:
    // Each conversion by name, its input and its result as text: the shift, BFO and squelch
    // registers, the rounding buttons, the RX-320's shift and volume keys at their ends, the
    // frequency's text (AR7030 limits), and the keypad's checks ("ok" or the message).
    void conversions_data()
    {
        QTest::addColumn<QString>("fn");
        QTest::addColumn<QString>("in");
        QTest::addColumn<QString>("out");
        // "fn in=out", one row each
        for (const char *r : {"b2fs 0= 0.0k", "b2fs 128=-4.2k", "b2fs 127=+4.2k", "b2fs 3=+0.1k", "b2fs 256=",
                              "fs2b +4.2k=127", "fs2b -4.2k=129", "fs2b -0.0k=255", "fs2b  0.0k=0", "vsb2b -1=253",
                              "vsb2b 42=126", "vsb2b 43=0", "b2vsb 253=-1", "b2vsb 127=42", "b2vsb 128=-43",
                              "b2vsb 300=0", "sql2b 99=150", "sql2b 100=150", "sql2b 0=0", "b2sql 150=99",
                              "b2sql 99=65.34", "round5 9412.49=9410", "round5 9412.5=9415", "round1 9412.49=9412",
                              "round1 9412.5=9413", "shiftUp 1951=2000", "shiftDown -1960=-2000", "volumeUp 95=99",
                              "volumeDown 4=0", "text2 999.999=1000.00", "text2 32016=32016.00", "text2 32016.001=?",
                              "text2 0=?", "text3 7100.5=7100.500", "keypadF 10=ok", "keypadF 32016=ok",
                              "keypadF 32016.001=\nFrequency\noutside range", "keypadF =\nFrequency\noutside range",
                              "keypadM 99=ok", "keypadM 100=\nMemory cell\noutside range", "keypadS 0.01=ok",
                              "keypadS 100=ok", "keypadS 0.009=\nFrequency Stepsize\noutside range",
                              "keypadS 100.5=\nFrequency Stepsize\noutside range"}) {
            const QString t = QString::fromLatin1(r);
            QTest::newRow(t.simplified().toLatin1().constData()) << t.section(u' ', 0, 0) << t.section(u' ', 1).section(u'=', 0, 0) << t.section(u'=', 1);
        }
    }
    void conversions()
    {
        QFETCH(QString, fn);
        QFETCH(QString, in);
        QFETCH(QString, out);
        auto num = [](double v) { return QString::number(v); };
        auto check = [](const KeypadResult &r) { return r.ok && r.error.isEmpty() ? QString("ok") : r.error; };
        const int n = in.toInt();
        const double x = in.toDouble();
        const QMap<QString, std::function<QString()>> fns{
            {"b2fs", [&] { return b2fs(n); }},
            {"fs2b", [&] { return num(fs2b(in)); }},
            {"vsb2b", [&] { return num(vsb2b(n)); }},
            {"b2vsb", [&] { return num(b2vsb(n)); }},
            {"sql2b", [&] { return num(sql2b(x)); }},
            {"b2sql", [&] { return b2sql(n); }},
            {"round5", [&] { return num(roundToFiveKhz(x)); }},
            {"round1", [&] { return num(roundToKhz(x)); }},
            {"shiftUp", [&] { return num(rx320panel::shiftUp(n)); }},
            {"shiftDown", [&] { return num(rx320panel::shiftDown(n)); }},
            {"volumeUp", [&] { return num(rx320panel::volumeUp(n)); }},
            {"volumeDown", [&] { return num(rx320panel::volumeDown(n)); }},
            {"text2", [&] { return frequencyText(x, 10.0, 32016.0, "####0.00"); }},
            {"text3", [&] { return frequencyText(x, 10.0, 32016.0, "####0.000"); }},
            {"keypadF", [&] { return check(keypadFrequency(in, 10, 32016)); }},
            {"keypadM", [&] { return check(keypadMemoryCell(in, 99)); }},
            {"keypadS", [&] { return check(keypadStep(in)); }}};
        QCOMPARE(fns[fn](), out);
    }

    // Every bar position goes to a byte and back unchanged.
    void shiftBarRoundTrip()
    {
        for (int v = -kShiftBarLimit; v <= kShiftBarLimit; ++v)
            QCOMPARE(b2vsb(vsb2b(v)), v);
    }

    void step_data()
    {
        QTest::addColumn<QString>("shown");
        QTest::addColumn<QString>("stepText");
        QTest::addColumn<bool>("up");
        QTest::addColumn<double>("lower");
        QTest::addColumn<double>("upper");
        QTest::addColumn<double>("expected");
        QTest::newRow("down from the lower limit stays") << "10.00" << "5" << false << 10.0 << 32016.0 << 10.0;
        QTest::newRow("0.001 from 1000.00") << "1000.00" << "0.001" << false << 10.0 << 32016.0 << 999.999;
        QTest::newRow("up to the upper limit") << "32014.00" << "5" << true << 10.0 << 32016.0 << 32016.0;
        QTest::newRow("half a Hz rounds down") << "100.0005" << "1" << true << 100.0 << 30000.0 << 101.0;
        QTest::newRow("nine tenths of a Hz round up") << "7100.0009" << "1" << true << 100.0 << 30000.0 << 7101.001;
        QTest::newRow("unreadable box starts at 0") << "?" << "5" << true << 100.0 << 30000.0 << 5.0;
    }
    void step()
    {
        QFETCH(QString, shown);
        QFETCH(QString, stepText);
        QFETCH(bool, up);
        QFETCH(double, lower);
        QFETCH(double, upper);
        QFETCH(double, expected);
        const double got = steppedFrequency(shown, stepText, up ? StepDir::Up : StepDir::Down, lower, upper);
        QVERIFY2(qAbs(got - expected) < 1e-9, qPrintable(QString::number(got, 'f', 6)));
    }

    void keyTable_data()
    {
        QTest::addColumn<bool>("rx320");
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("mods");
        QTest::addColumn<int>("action");
        QTest::addColumn<int>("arg");
        const int S = Qt::ShiftModifier, C = Qt::ControlModifier, N = 0;
        // What the panels' key rows (in the panel tests) do not reach: other spellings of a key,
        // modifiers that must not match, keys with no row.
        QTest::newRow("shift F3") << false << int(Qt::Key_F3) << S << int(KeyAction::Bandwidth) << 2;
        QTest::newRow("shift plus") << false << int(Qt::Key_Plus) << S << int(KeyAction::ShiftUp) << 0;
        QTest::newRow("shift underscore") << false << int(Qt::Key_Underscore) << S << int(KeyAction::ShiftDown) << 0;
        QTest::newRow("shift 0") << false << int(Qt::Key_0) << S << int(KeyAction::ShiftZero) << 0;
        QTest::newRow("ctrl 7") << false << int(Qt::Key_7) << C << int(KeyAction::Digit) << 7;
        QTest::newRow("ctrl keypad 7") << false << int(Qt::Key_7) << int(C | Qt::KeypadModifier) << int(KeyAction::Digit) << 7;
        QTest::newRow("ctrl G") << false << int(Qt::Key_G) << C << int(KeyAction::MoveFreq) << 0;
        QTest::newRow("ctrl shift F") << false << int(Qt::Key_F) << (C | S) << int(KeyAction::None) << 0;
        QTest::newRow("plain digit is the box's") << false << int(Qt::Key_5) << N << int(KeyAction::None) << 0;
        QTest::newRow("320 shift F5 is button 6") << true << int(Qt::Key_F5) << S << int(KeyAction::BwGroup) << 6;
        QTest::newRow("320 has no sync") << true << int(Qt::Key_S) << S << int(KeyAction::None) << 0;
        QTest::newRow("320 ctrl S") << true << int(Qt::Key_S) << C << int(KeyAction::EnterStep) << 0;
    }
    void keyTable()
    {
        QFETCH(bool, rx320);
        QFETCH(int, key);
        QFETCH(int, mods);
        QFETCH(int, action);
        QFETCH(int, arg);
        const KeyRow r = lookupKey(rx320 ? rx320Keys() : ar7030Keys(), key, Qt::KeyboardModifiers(mods));
        QCOMPARE(int(r.action), action);
        QCOMPARE(r.arg, arg);
    }

    void filterGroups()
    {
        const rx320panel::FilterGroups g = rx320panel::makeFilterGroups();
        QCOMPARE(g.used, (std::array<int, 4>{8, 10, 7, 9}));
        std::multiset<int> seen;
        for (int group = 0; group < 4; ++group)
            for (int b = 0; b < 10; ++b) {
                const int idx = g.filter[size_t(group)][size_t(b)];
                QCOMPARE(idx >= 0, b < g.used[size_t(group)]);
                if (idx >= 0)
                    seen.insert(idx);
            }
        QCOMPARE(int(seen.size()), 34);
        QCOMPARE(int(std::set<int>(seen.begin(), seen.end()).size()), 34); // each filter once
        QCOMPARE(kRx320FilterWidths[g.filter[0][0]], QString("8000"));
        QCOMPARE(rx320panel::groupOf(g, 33), 0);
        QCOMPARE(rx320panel::groupOf(g, 16), 1);
        QCOMPARE(rx320panel::groupOf(g, 23), 2);
        QCOMPARE(rx320panel::groupOf(g, 24), 3);
    }

    void rx320SettingsFile()
    {
        const QByteArray text = "7100.5\r\n10\r\n-150\r\n1\r\n400\r\n1\r\n40\r\n20\r\n";
        const rx320panel::Settings s = rx320panel::readSettings(text);
        QCOMPARE(QList<int>({s.bandwidth, s.pbs, s.agc, s.bfo, s.mode, s.volume, s.line}),
                 QList<int>({10, -150, 1, 400, 1, 40, 20}));
        QCOMPARE(s.freq, 7100.5);
        QCOMPARE(rx320panel::settingsText(s), text);
        // lenient numbers, as the users' files have them
        QCOMPARE(rx320panel::readSettings("9410 kHz\r\n33\r\n0\r\n3\r\n0\r\n0\r\n99\r\n0\r\n").freq, 9410.0);
        QCOMPARE(errorOf([] { rx320panel::readSettings("9410\r\n33\r\n0\r\n3\r\n0\r\n0\r\n99\r\n"); }), 62);
    }

    void externalPrograms()
    {
        QStringList asked;
        auto only = [&](const QString &present) {
            return [&asked, present](const QString &p) {
                asked << p;
                return p == present;
            };
        };
        const ExternalCommand kde = clockSettingsCommand(false, only("kcmshell5"));
        QCOMPARE(kde.program, QString("kcmshell5"));
        QCOMPARE(kde.args, QStringList{"clock"});
        QCOMPARE(asked.first(), QString("gnome-control-center")); // the most common desktop first
        QVERIFY(clockSettingsCommand(false, only("nothing")).program.isEmpty());
        const ExternalCommand win = clockSettingsCommand(true, only("nothing"));
        QCOMPARE(win.program + ' ' + win.args.join(' '), QString("control.exe timedate.cpl"));
        QCOMPARE(helpCommand("/data/brelvox2.chm", false).args, QStringList{"/data/brelvox2.chm"});
        QCOMPARE(helpCommand("C:\\B\\brelvox2.chm", true).program, QString("hh.exe"));
    }
};

BRELVOX_TEST(TestPanelLogic)
#include "tst_panel_logic.moc"
