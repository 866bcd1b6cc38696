#include "core/numtext.h"
#include "core/runtime_error.h"
#include "core/shell_sort.h"
#include "core/time_span.h"
#include "testmain.h"
#include "testutil.h"

#include <QTest>
#include <functional>
#include <limits>

class TestNumText : public QObject {
    Q_OBJECT
private slots:
    void val_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("value");
        QTest::newRow("plain") << "9410" << 9410.0;
        QTest::newRow("decimals") << "9410.25kHz" << 9410.25;
        QTest::newRow("leading blanks") << "   -5.5" << -5.5;
        QTest::newRow("inner blanks") << "1 2 3" << 123.0;
        QTest::newRow("no number") << "abc" << 0.0;
        QTest::newRow("empty") << "" << 0.0;
        QTest::newRow("stops at comma") << "1500,300" << 1500.0;
        QTest::newRow("plus sign") << "+13" << 13.0;
        QTest::newRow("exponent") << "1.5E3x" << 1500.0;
        QTest::newRow("bare exponent letter") << "12E" << 12.0;
        QTest::newRow("hex") << "&H1F" << 31.0;
        QTest::newRow("hex 16-bit negative") << "&HFFFF" << -1.0;
        QTest::newRow("octal") << "&O17" << 15.0;
        QTest::newRow("point first") << ".5" << 0.5;
        QTest::newRow("lone sign") << "-" << 0.0;
        QTest::newRow("exponent past double") << "1E999" << 0.0;
    }
    void val()
    {
        QFETCH(QString, text);
        QFETCH(double, value);
        QCOMPARE(numtext::Val(text), value);
    }

    void commaTurnsIntoPoint() { QCOMPARE(numtext::valc("9410,25"), 9410.25); }

    void format_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<QString>("text");
        QTest::newRow("frequency") << 9410.0 << "00000.000" << "09410.000";
        QTest::newRow("display") << 9410.0 << "####0.00" << "9410.00";
        QTest::newRow("display small") << 0.5 << "####0.00" << "0.50";
        QTest::newRow("half away up") << 2.345 << "0.00" << "2.35";
        QTest::newRow("half away negative") << -2.345 << "0.00" << "-2.35";
        QTest::newRow("typed decimal") << 1.005 << "0.00" << "1.01";
        QTest::newRow("kilo suffix") << -4.2 << "0.0k" << "-4.2k";
        QTest::newRow("kilo zero") << 0.0 << "0.0k" << "0.0k";
        QTest::newRow("two digits") << 7.0 << "00" << "07";
        QTest::newRow("zero before hash") << 3.0 << "0#" << "03";
        QTest::newRow("hash before zero") << 3.0 << "#0" << "3";
        QTest::newRow("hash fraction") << 2.5 << "0.0#" << "2.5";
        QTest::newRow("four digits") << 1800.0 << "0000" << "1800";
        QTest::newRow("wider than pattern") << 123456.0 << "00" << "123456";
        QTest::newRow("negative rounds to zero") << -0.001 << "0.00" << "0.00";
        QTest::newRow("three decimals") << 29999.999 << "####0.000" << "29999.999";
    }
    void format()
    {
        QFETCH(double, value);
        QFETCH(QString, pattern);
        QFETCH(QString, text);
        QCOMPARE(numtext::format(value, pattern), text);
    }

    // "@" places take the text right-aligned; what does not fit is shown whole.
    void formatText_data()
    {
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<QString>("text");
        QTest::newRow("label") << "AM" << "@@@@ " << "  AM ";
        QTest::newRow("exactly full") << "0 dB" << "@@@@ " << "0 dB ";
        QTest::newRow("longer shown whole") << "-20 dB" << "@@@@ " << "-20 dB ";
        QTest::newRow("empty, two blanks after") << "" << "@@@@  " << "      ";
        QTest::newRow("six places") << "+0.1k" << "@@@@@@ " << " +0.1k ";
        QTest::newRow("literal inside") << "ab" << "@-@@" << " -ab";
        QTest::newRow("overflow at the first place") << "abcde" << "@-@@" << "abc-de";
        QTest::newRow("no places") << "x" << "abc" << "abc";
    }
    void formatText()
    {
        QFETCH(QString, value);
        QFETCH(QString, pattern);
        QFETCH(QString, text);
        QCOMPARE(numtext::formatText(value, pattern), text);
    }

    void rounding_data()
    {
        QTest::addColumn<double>("x");
        QTest::addColumn<double>("even");
        QTest::addColumn<double>("away");
        QTest::addColumn<double>("floor");
        QTest::newRow("2.5") << 2.5 << 2.0 << 3.0 << 2.0;
        QTest::newRow("3.5") << 3.5 << 4.0 << 4.0 << 3.0;
        QTest::newRow("-2.5") << -2.5 << -2.0 << -3.0 << -3.0;
        QTest::newRow("-0.4") << -0.4 << 0.0 << 0.0 << -1.0;
        QTest::newRow("1.6") << 1.6 << 2.0 << 2.0 << 1.0;
    }
    void rounding()
    {
        QFETCH(double, x);
        QFETCH(double, even);
        QFETCH(double, away);
        QFETCH(double, floor);
        QCOMPARE(numtext::roundHalfEven(x) + 0.0, even);
        QCOMPARE(numtext::roundHalfAway(x) + 0.0, away);
        QCOMPARE(numtext::floorInt(x), floor);
    }

    // Each conversion keeps its rounding; a value outside the target's range is "Overflow".
    void wholeNumbers_data()
    {
        QTest::addColumn<QString>("conv");
        QTest::addColumn<double>("x");
        QTest::addColumn<qint64>("value");
        QTest::addColumn<int>("error");
        const double inf = std::numeric_limits<double>::infinity();
        const double nan = std::numeric_limits<double>::quiet_NaN();
        QTest::newRow("cint rounds over the top") << "cint" << 32767.6 << qint64(0) << 6;
        QTest::newRow("cint half to even over") << "cint" << 32767.5 << qint64(0) << 6;
        QTest::newRow("cint lowest") << "cint" << -32768.5 << qint64(-32768) << 0;
        QTest::newRow("cint nan") << "cint" << nan << qint64(0) << 6;
        QTest::newRow("clng highest") << "clng" << 2147483647.4 << qint64(2147483647) << 0;
        QTest::newRow("clng half to even over") << "clng" << 2147483647.5 << qint64(0) << 6;
        QTest::newRow("clng lowest") << "clng" << -2147483648.5 << qint64(-2147483648LL) << 0;
        QTest::newRow("clng inf") << "clng" << inf << qint64(0) << 6;
        QTest::newRow("toInt toward zero") << "toInt" << -2.7 << qint64(-2) << 0;
        QTest::newRow("toInt highest") << "toInt" << 2147483647.9 << qint64(2147483647) << 0;
        QTest::newRow("toInt over") << "toInt" << 2147483648.0 << qint64(0) << 6;
        QTest::newRow("toInt lowest") << "toInt" << -2147483648.9 << qint64(-2147483648LL) << 0;
        QTest::newRow("toInt under") << "toInt" << -2147483649.0 << qint64(0) << 6;
        QTest::newRow("toInt huge") << "toInt" << 9e99 << qint64(0) << 6;
        QTest::newRow("toInt inf") << "toInt" << inf << qint64(0) << 6;
        QTest::newRow("toInt -inf") << "toInt" << -inf << qint64(0) << 6;
        QTest::newRow("toInt nan") << "toInt" << nan << qint64(0) << 6;
        QTest::newRow("toInt16 highest") << "toInt16" << 32767.9 << qint64(32767) << 0;
        QTest::newRow("toInt16 over") << "toInt16" << 32768.0 << qint64(0) << 6;
        QTest::newRow("toInt16 lowest") << "toInt16" << -32768.9 << qint64(-32768) << 0;
        QTest::newRow("toInt16 under") << "toInt16" << -32769.0 << qint64(0) << 6;
        QTest::newRow("toInt16 nan") << "toInt16" << nan << qint64(0) << 6;
    }
    void wholeNumbers()
    {
        QFETCH(QString, conv);
        QFETCH(double, x);
        QFETCH(qint64, value);
        QFETCH(int, error);
        const QHash<QString, std::function<qint64(double)>> convs = {
            {"cint", numtext::cint}, {"clng", numtext::clng}, {"toInt", numtext::toInt}, {"toInt16", numtext::toInt16}};
        qint64 got = 0;
        QCOMPARE(errorOf([&] { got = convs.value(conv)(x); }), error);
        QCOMPARE(got, value);
    }

    void str_data()
    {
        QTest::addColumn<float>("x");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("blank");
        QTest::newRow("whole") << 15.0f << "15" << " 15";
        QTest::newRow("half") << -5.5f << "-5.5" << "-5.5";
        QTest::newRow("quarter") << 0.25f << "0.25" << " 0.25";
        QTest::newRow("zero") << 0.0f << "0" << " 0";
    }
    void str()
    {
        QFETCH(float, x);
        QFETCH(QString, text);
        QFETCH(QString, blank);
        QCOMPARE(numtext::str(x), text);
        QCOMPARE(numtext::strBlank(double(x)), blank);
    }

    void timeSpan_data()
    {
        QTest::addColumn<QString>("time");
        QTest::addColumn<QString>("start");
        QTest::addColumn<QString>("end");
        QTest::addColumn<bool>("in");
        QTest::newRow("lower bound") << "0600" << "0600" << "0700" << true;
        QTest::newRow("upper bound") << "0700" << "0600" << "0700" << true;
        QTest::newRow("after") << "0701" << "0600" << "0700" << false;
        QTest::newRow("over midnight, after it") << "0100" << "2200" << "0200" << true;
        QTest::newRow("over midnight, at 2400") << "2400" << "2200" << "0200" << true;
        QTest::newRow("over midnight, outside") << "1200" << "2200" << "0200" << false;
        QTest::newRow("equal never") << "0600" << "0600" << "0600" << false;
        QTest::newRow("text, not number") << "930" << "0900" << "1000" << false;
    }
    void timeSpan()
    {
        QFETCH(QString, time);
        QFETCH(QString, start);
        QFETCH(QString, end);
        QTEST(inTimeSpan(time, start, end), "in");
    }

    // The shell sort on letters tagged with their first place: where equal letters end up shows
    // the gaps taken (halves to even) and the passes run.
    void shellSort_data()
    {
        QTest::addColumn<QString>("keys");
        QTest::addColumn<QString>("sorted");
        QTest::newRow("none") << "" << "";
        QTest::newRow("one") << "a" << "a0";
        QTest::newRow("two: the pass at gap 1 runs") << "ba" << "a1b0";
        QTest::newRow("reversed") << "dcba" << "a3b2c1d0";
        QTest::newRow("gap 2.5 is 2") << "bbaaab" << "a2a3a4b1b0b5";
        QTest::newRow("equals stay as passes leave them") << "ccbbaa" << "a4a5b2b3c0c1";
    }
    void shellSort()
    {
        QFETCH(QString, keys);
        QStringList items;
        for (int i = 0; i < keys.size(); ++i)
            items << keys[i] + QString::number(i);
        ::shellSort(int(items.size()) - 1, [&](int a, int b) { return items[a][0] > items[b][0]; },
                    [&](int a, int b) { items.swapItemsAt(a, b); });
        QTEST(items.join(QString()), "sorted");
    }
};

BRELVOX_TEST(TestNumText)
#include "tst_numtext.moc"
