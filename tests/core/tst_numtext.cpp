#include "core/numtext.h"
#include "core/runtime_error.h"
#include "testmain.h"

#include <QTest>

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

    void cintOverflowIsRuntimeError6()
    {
        try {
            numtext::cint(32767.6);
            QFAIL("no error");
        } catch (const RuntimeError &e) {
            QCOMPARE(e.number(), 6);
        }
        QCOMPARE(numtext::cint(-32768.4), int16_t(-32768));
    }

    void str_data()
    {
        QTest::addColumn<float>("x");
        QTest::addColumn<QString>("text");
        QTest::newRow("whole") << 15.0f << "15";
        QTest::newRow("half") << -5.5f << "-5.5";
        QTest::newRow("tenth") << 0.1f << "0.1";
        QTest::newRow("zero") << 0.0f << "0";
    }
    void str()
    {
        QFETCH(float, x);
        QFETCH(QString, text);
        QCOMPARE(numtext::str(x), text);
    }
};

BRELVOX_TEST(TestNumText)
#include "tst_numtext.moc"
