#include "core/session_clock.h"
#include "core/shared_state.h"
#include "testmain.h"
#include "testutil.h"

#include <QElapsedTimer>
#include <QTest>
#include <QTimer>

class TestClock : public QObject {
    Q_OBJECT
private slots:
    void texts_data()
    {
        QTest::addColumn<QDateTime>("local");
        QTest::addColumn<double>("offset");
        QTest::addColumn<QString>("lt");
        QTest::addColumn<QString>("utc");
        QTest::addColumn<QString>("stamp");
        QTest::newRow("month boundary back")
            << QDateTime(QDate(2026, 3, 1), QTime(0, 30, 59)) << 1.0 << "1 Mar 2026  00:30" << "28 Feb 2026  23:30"
            << "20260228 2330";
        QTest::newRow("minus five and a half")
            << QDateTime(QDate(2026, 11, 22), QTime(20, 45)) << -5.5 << "22 Nov 2026  20:45" << "23 Nov 2026  02:15"
            << "20261123 0215";
        QTest::newRow("year boundary forward")
            << QDateTime(QDate(2026, 12, 31), QTime(22, 0)) << -3.0 << "31 Dec 2026  22:00" << "1 Jan 2027  01:00"
            << "20270101 0100";
        QTest::newRow("leap day") << QDateTime(QDate(2028, 3, 1), QTime(1, 15)) << 2.0 << "1 Mar 2028  01:15"
                                  << "29 Feb 2028  23:15" << "20280229 2315";
        QTest::newRow("seconds fall away") << QDateTime(QDate(2026, 6, 5), QTime(9, 7, 59)) << 0.0
                                           << "5 Jun 2026  09:07" << "5 Jun 2026  09:07" << "20260605 0907";
    }
    void texts()
    {
        QFETCH(QDateTime, local);
        QFETCH(double, offset);
        QFETCH(QString, lt);
        QFETCH(QString, utc);
        QFETCH(QString, stamp);
        const TimeTexts t = timeTexts(local, offset);
        QCOMPARE(t.lt, lt);
        QCOMPARE(t.utc, utc);
        QCOMPARE(t.stamp, stamp);
    }

    void titles()
    {
        QCOMPARE(panelTitle(3, "a", "b"), QString("LT : a     RX320     UTC : b"));
        QCOMPARE(panelTitle(0, "a", "b"), QString("LT : a     No RX     UTC : b"));
        QCOMPARE(panelTitle(1, "a", "b"), QString("LT : a     AR7030     UTC : b"));
        QCOMPARE(listTitle("BDXC     LT : ", "a", "b"), QString("BDXC     LT : a     UTC : b"));
    }

    void tickWritesSharedTextsAndTitles()
    {
        TestEnv env;
        env.clock->set(QDateTime(QDate(2026, 3, 1), QTime(0, 30)));
        slotLt2Utc() = 1;
        SessionTimers timers;
        int titleCalls = 0;
        timers.onTitles = [&] { ++titleCalls; };
        QVERIFY(ltText.isEmpty());
        timers.Showtime_Timer();
        QCOMPARE(utcText, QString("28 Feb 2026  23:30"));
        QCOMPARE(utcStamp, QString("20260228 2330"));
        QCOMPARE(titleCalls, 1);
        QCOMPARE(timers.Showtime.interval(), 5000);
        QCOMPARE(timers.tmrLoopguard.interval(), 300);
    }

    void nestedWaitsEndOnOneTick()
    {
        TestEnv env;
        SessionTimers timers;
        bool innerDone = false, outerDone = false, innerRan = false;
        // While the outer wait of 5 s pumps, a handler starts a wait of 50 ms: both end at its tick.
        QTimer::singleShot(10, [&] {
            innerRan = true;
            timers.delayMs(50);
            innerDone = true;
        });
        QElapsedTimer clock;
        clock.start();
        timers.delayMs(5000);
        outerDone = true;
        QVERIFY(innerRan);
        QVERIFY(innerDone);
        QVERIFY(outerDone);
        QVERIFY(!delayBusy);
        QVERIFY(!timers.tmrDelay.isActive());
        QVERIFY2(clock.elapsed() < 4000, "the outer wait ran its own 5 s instead of ending with the inner one");
    }

    // A wait lasts at least what it asked for, by a monotonic clock, even when a tick comes early.
    void waitsNeverShort_data()
    {
        QTest::addColumn<int>("ms");
        QTest::addColumn<int>("earlyTickMs"); // -1: no early tick
        QTest::newRow("25 ms") << 25 << -1;
        QTest::newRow("50 ms") << 50 << -1;
        QTest::newRow("100 ms") << 100 << -1;
        QTest::newRow("tick at 10 of 50 ms") << 50 << 10;
        QTest::newRow("tick at 48 of 50 ms") << 50 << 48;
    }
    void waitsNeverShort()
    {
        QFETCH(int, ms);
        QFETCH(int, earlyTickMs);
        TestEnv env;
        SessionTimers timers;
        for (int i = 0; i < 8; ++i) {
            if (earlyTickMs >= 0)
                QTimer::singleShot(earlyTickMs, Qt::PreciseTimer, &timers, &SessionTimers::tmrDelay_Timer);
            QElapsedTimer clock;
            clock.start();
            timers.delayMs(ms);
            const qint64 ns = clock.nsecsElapsed();
            QVERIFY2(ns >= qint64(ms) * 1000000, qPrintable(QStringLiteral("%1 ns").arg(ns)));
            QVERIFY(!delayBusy);
        }
    }

    void waitLetsOtherTimersRun()
    {
        TestEnv env;
        SessionTimers timers;
        timers.Showtime.setInterval(20);
        timers.Showtime.start();
        env.clock->set(QDateTime(QDate(2026, 1, 1), QTime(12, 0)));
        timers.delayMs(200);
        QCOMPARE(ltText, QString("1 Jan 2026  12:00")); // Showtime ticked inside the wait
    }

    void loopguardStopsItself()
    {
        SessionTimers timers;
        timers.tmrLoopguard.start();
        QTRY_VERIFY_WITH_TIMEOUT(!timers.tmrLoopguard.isActive(), 3000);
    }
};

BRELVOX_TEST(TestClock)
#include "tst_clock.moc"
