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
    // Each conversion by name, with its input as text and its result as text.
    void conversions_data()
    {
        QTest::addColumn<QString>("fn");
        QTest::addColumn<QString>("in");
        QTest::addColumn<QString>("out");
        QTest::newRow("b2fs 0") << "b2fs" << "0" << " 0.0k";
        QTest::newRow("b2fs 128") << "b2fs" << "128" << "-4.2k";
        QTest::newRow("b2fs 127") << "b2fs" << "127" << "+4.2k";
        QTest::newRow("b2fs 1") << "b2fs" << "1" << "+0.0k";
        QTest::newRow("b2fs 3") << "b2fs" << "3" << "+0.1k";
        QTest::newRow("b2fs 253") << "b2fs" << "253" << "-0.1k";
        QTest::newRow("b2fs 256") << "b2fs" << "256" << "";
        QTest::newRow("b2fs -1") << "b2fs" << "-1" << "";
        QTest::newRow("fs2b +4.2k") << "fs2b" << "+4.2k" << "127";
        QTest::newRow("fs2b -4.2k") << "fs2b" << "-4.2k" << "129";
        QTest::newRow("fs2b -0.0k") << "fs2b" << "-0.0k" << "255";
        QTest::newRow("fs2b blank zero") << "fs2b" << " 0.0k" << "0";
        QTest::newRow("vsb2b -1") << "vsb2b" << "-1" << "253";
        QTest::newRow("vsb2b 42") << "vsb2b" << "42" << "126";
        QTest::newRow("vsb2b -42") << "vsb2b" << "-42" << "130";
        QTest::newRow("vsb2b 43") << "vsb2b" << "43" << "0";
        QTest::newRow("b2vsb 253") << "b2vsb" << "253" << "-1";
        QTest::newRow("b2vsb 254") << "b2vsb" << "254" << "-1";
        QTest::newRow("b2vsb 126") << "b2vsb" << "126" << "42";
        QTest::newRow("b2vsb 127") << "b2vsb" << "127" << "42";
        QTest::newRow("b2vsb 128") << "b2vsb" << "128" << "-43";
        QTest::newRow("b2vsb 300") << "b2vsb" << "300" << "0";
        QTest::newRow("sql2b 99") << "sql2b" << "99" << "150";
        QTest::newRow("sql2b 100 capped") << "sql2b" << "100" << "150";
        QTest::newRow("sql2b 33") << "sql2b" << "33" << "50";
        QTest::newRow("sql2b 0") << "sql2b" << "0" << "0";
        QTest::newRow("b2sql 150") << "b2sql" << "150" << "99";
        QTest::newRow("b2sql 99") << "b2sql" << "99" << "65.34";
    }
    void conversions()
    {
        QFETCH(QString, fn);
        QFETCH(QString, in);
        QFETCH(QString, out);
        QString got;
        const int n = in.toInt();
        if (fn == "b2fs")
            got = b2fs(n);
        else if (fn == "fs2b")
            got = QString::number(fs2b(in));
        else if (fn == "vsb2b")
            got = QString::number(vsb2b(n));
        else if (fn == "b2vsb")
            got = QString::number(b2vsb(n));
        else if (fn == "sql2b")
            got = QString::number(sql2b(in.toDouble()));
        else if (fn == "b2sql")
            got = b2sql(n);
        QCOMPARE(got, out);
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
        QTest::newRow("plain step up") << "9410.00" << "5" << true << 10.0 << 32016.0 << 9415.0;
        QTest::newRow("12.5 down") << "9410.00" << "12.5" << false << 10.0 << 32016.0 << 9397.5;
        QTest::newRow("half a Hz rounds down") << "100.0005" << "1" << true << 100.0 << 30000.0 << 101.0;
        QTest::newRow("nine tenths of a Hz round up") << "7100.0009" << "1" << true << 100.0 << 30000.0 << 7101.001;
        QTest::newRow("unreadable box starts at 0") << "?" << "5" << true << 100.0 << 30000.0 << 5.0;
        QTest::newRow("unreadable box down goes to the limit") << "?" << "5" << false << 100.0 << 30000.0 << 100.0;
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

    void frequencyTexts_data()
    {
        QTest::addColumn<double>("khz");
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<QString>("text");
        QTest::newRow("999.999 shows 1000.00") << 999.999 << "####0.00" << "1000.00";
        QTest::newRow("upper limit") << 32016.0 << "####0.00" << "32016.00";
        QTest::newRow("above") << 32016.001 << "####0.00" << "?";
        QTest::newRow("zero from a dead receiver") << 0.0 << "####0.00" << "?";
        QTest::newRow("three decimals") << 7100.5 << "####0.000" << "7100.500";
    }
    void frequencyTexts()
    {
        QFETCH(double, khz);
        QFETCH(QString, pattern);
        QFETCH(QString, text);
        QCOMPARE(frequencyText(khz, 10.0, 32016.0, pattern), text);
    }

    void rounding_data()
    {
        QTest::addColumn<double>("khz");
        QTest::addColumn<double>("five");
        QTest::addColumn<double>("one");
        QTest::newRow("below the half") << 9412.49 << 9410.0 << 9412.0;
        QTest::newRow("at the half") << 9412.5 << 9415.0 << 9413.0;
        QTest::newRow("whole") << 9410.0 << 9410.0 << 9410.0;
    }
    void rounding()
    {
        QFETCH(double, khz);
        QFETCH(double, five);
        QFETCH(double, one);
        QCOMPARE(roundToFiveKhz(khz), five);
        QCOMPARE(roundToKhz(khz), one);
    }

    void keypad_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("error"); // empty: accepted
        QTest::newRow("freq at the lower limit") << "F" << "10" << "";
        QTest::newRow("freq at the upper limit") << "F" << "32016" << "";
        QTest::newRow("freq above") << "F" << "32016.001" << "\nFrequency\noutside range";
        QTest::newRow("freq empty") << "F" << "" << "\nFrequency\noutside range";
        QTest::newRow("cell 0") << "M" << "0" << "";
        QTest::newRow("cell 99") << "M" << "99" << "";
        QTest::newRow("cell 100") << "M" << "100" << "\nMemory cell\noutside range";
        QTest::newRow("cell huge") << "M" << "99999999" << "\nMemory cell\noutside range";
        QTest::newRow("step 0.01") << "S" << "0.01" << "";
        QTest::newRow("step 100") << "S" << "100" << "";
        QTest::newRow("step 0.009") << "S" << "0.009" << "\nFrequency Stepsize\noutside range";
        QTest::newRow("step 100.5") << "S" << "100.5" << "\nFrequency Stepsize\noutside range";
    }
    void keypad()
    {
        QFETCH(QString, kind);
        QFETCH(QString, typed);
        QFETCH(QString, error);
        const KeypadResult r = kind == "F" ? keypadFrequency(typed, 10, 32016)
            : kind == "M"                  ? keypadMemoryCell(typed, 99)
                                           : keypadStep(typed);
        QCOMPARE(r.ok, error.isEmpty());
        QCOMPARE(r.error, error);
    }

    void keyTable_data()
    {
        QTest::addColumn<bool>("rx320");
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("mods");
        QTest::addColumn<int>("action");
        QTest::addColumn<int>("arg");
        const int S = Qt::ShiftModifier, C = Qt::ControlModifier, A = Qt::AltModifier, N = 0;
        QTest::newRow("arrow up") << false << int(Qt::Key_Up) << N << int(KeyAction::StepUp) << 0;
        QTest::newRow("ctrl arrow left") << false << int(Qt::Key_Left) << C << int(KeyAction::StepDown) << 0;
        QTest::newRow("shift arrow is nothing") << false << int(Qt::Key_Up) << S << int(KeyAction::None) << 0;
        QTest::newRow("shift F3") << false << int(Qt::Key_F3) << S << int(KeyAction::Bandwidth) << 2;
        QTest::newRow("shift D is data") << false << int(Qt::Key_D) << S << int(KeyAction::Mode) << 3;
        QTest::newRow("shift U is USB") << false << int(Qt::Key_U) << S << int(KeyAction::Mode) << 6;
        QTest::newRow("shift plus") << false << int(Qt::Key_Plus) << S << int(KeyAction::ShiftUp) << 0;
        QTest::newRow("shift underscore") << false << int(Qt::Key_Underscore) << S << int(KeyAction::ShiftDown) << 0;
        QTest::newRow("shift 0") << false << int(Qt::Key_0) << S << int(KeyAction::ShiftZero) << 0;
        QTest::newRow("ctrl 7") << false << int(Qt::Key_7) << C << int(KeyAction::Digit) << 7;
        QTest::newRow("ctrl keypad 7") << false << int(Qt::Key_7) << int(C | Qt::KeypadModifier) << int(KeyAction::Digit) << 7;
        QTest::newRow("ctrl G") << false << int(Qt::Key_G) << C << int(KeyAction::MoveFreq) << 0;
        QTest::newRow("ctrl shift F") << false << int(Qt::Key_F) << (C | S) << int(KeyAction::None) << 0;
        QTest::newRow("alt equal") << false << int(Qt::Key_Equal) << A << int(KeyAction::VolumeUp) << 0;
        QTest::newRow("alt 0") << false << int(Qt::Key_0) << A << int(KeyAction::VolumeZero) << 0;
        QTest::newRow("plain digit is the box's") << false << int(Qt::Key_5) << N << int(KeyAction::None) << 0;
        QTest::newRow("320 shift F1 is range 3") << true << int(Qt::Key_F1) << S << int(KeyAction::BwRange) << 3;
        QTest::newRow("320 shift F4 is range 0") << true << int(Qt::Key_F4) << S << int(KeyAction::BwRange) << 0;
        QTest::newRow("320 shift F5 is button 6") << true << int(Qt::Key_F5) << S << int(KeyAction::BwGroup) << 6;
        QTest::newRow("320 shift F8 is button 0") << true << int(Qt::Key_F8) << S << int(KeyAction::BwGroup) << 0;
        QTest::newRow("320 shift C is CW") << true << int(Qt::Key_C) << S << int(KeyAction::Mode) << 3;
        QTest::newRow("320 shift U is USB") << true << int(Qt::Key_U) << S << int(KeyAction::Mode) << 1;
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

    void rx320Keyboard_data()
    {
        QTest::addColumn<QString>("fn");
        QTest::addColumn<int>("in");
        QTest::addColumn<int>("out");
        QTest::newRow("shift up") << "shiftUp" << 1900 << 1950;
        QTest::newRow("shift up at 1950") << "shiftUp" << 1950 << 2000;
        QTest::newRow("shift up at 1951") << "shiftUp" << 1951 << 2000;
        QTest::newRow("shift down at -1950") << "shiftDown" << -1950 << -2000;
        QTest::newRow("shift down at -1960") << "shiftDown" << -1960 << -2000;
        QTest::newRow("volume up at 94") << "volumeUp" << 94 << 99;
        QTest::newRow("volume up at 95") << "volumeUp" << 95 << 99;
        QTest::newRow("volume down at 5") << "volumeDown" << 5 << 0;
        QTest::newRow("volume down at 4") << "volumeDown" << 4 << 0;
    }
    void rx320Keyboard()
    {
        QFETCH(QString, fn);
        QFETCH(int, in);
        QFETCH(int, out);
        const int got = fn == "shiftUp" ? rx320panel::shiftUp(in)
            : fn == "shiftDown"        ? rx320panel::shiftDown(in)
            : fn == "volumeUp"         ? rx320panel::volumeUp(in)
                                       : rx320panel::volumeDown(in);
        QCOMPARE(got, out);
    }

    void rx320SettingsFile()
    {
        const QByteArray text = "7100.5\r\n10\r\n-150\r\n1\r\n400\r\n1\r\n40\r\n20\r\n";
        const rx320panel::Settings s = rx320panel::readSettings(text);
        QCOMPARE(s.freq, 7100.5);
        QCOMPARE(s.bandwidth, int16_t(10));
        QCOMPARE(s.pbs, int16_t(-150));
        QCOMPARE(s.agc, int16_t(1));
        QCOMPARE(s.bfo, int16_t(400));
        QCOMPARE(s.mode, int16_t(1));
        QCOMPARE(s.volume, int16_t(40));
        QCOMPARE(s.line, int16_t(20));
        QCOMPARE(rx320panel::settingsText(s), text);
        // lenient numbers, as the users' files have them
        QCOMPARE(rx320panel::readSettings("9410 kHz\r\n33\r\n0\r\n3\r\n0\r\n0\r\n99\r\n0\r\n").freq, 9410.0);
        int number = 0;
        try {
            rx320panel::readSettings("9410\r\n33\r\n0\r\n3\r\n0\r\n0\r\n99\r\n");
        } catch (const RuntimeError &e) {
            number = e.number();
        }
        QCOMPARE(number, 62);
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
