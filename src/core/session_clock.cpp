#include "session_clock.h"
#include "numtext.h"
#include "shared_state.h"
#include "ui/facades.h"

#include <QCoreApplication>
#include <QLocale>

namespace {
SessionTimers *current = nullptr;
const QString kTextForm = QStringLiteral("d MMM yyyy  hh:mm");
} // namespace

TimeTexts timeTexts(const QDateTime &local, double lt2utc)
{
    const QLocale c = QLocale::c();
    // The local text is read back to a date, so the seconds fall away before the offset.
    const QDateTime lt(local.date(), QTime(local.time().hour(), local.time().minute()), Qt::UTC);
    const qint64 minutes = numtext::clng(-lt2utc * 60.0);
    const QDateTime u = lt.addSecs(minutes * 60);
    return {c.toString(lt, kTextForm), c.toString(u, kTextForm), c.toString(u, QStringLiteral("yyyyMMdd hhmm"))};
}

QString panelTitle(int type, const QString &lt, const QString &utc)
{
    static const char *const middle[] = {"     No RX     ", "     AR7030     ", "     NRD535     ",
                                         "     RX320     ", "     NRD545     "};
    if (type < 0 || type > 4)
        return {};
    return QStringLiteral("LT : ") + lt + QLatin1String(middle[type]) + QStringLiteral("UTC : ") + utc;
}

QString listTitle(const QString &prefix, const QString &lt, const QString &utc)
{
    return prefix + lt + QStringLiteral("     ") + QStringLiteral("UTC : ") + utc;
}

SessionTimers::SessionTimers(QObject *parent) : QObject(parent)
{
    Showtime.setInterval(5000);
    // The receivers need their pauses in full: a coarse timer may end a wait a few ms early.
    tmrDelay.setTimerType(Qt::PreciseTimer);
    tmrLoopguard.setInterval(300);
    connect(&Showtime, &QTimer::timeout, this, &SessionTimers::Showtime_Timer);
    connect(&tmrDelay, &QTimer::timeout, this, &SessionTimers::tmrDelay_Timer);
    connect(&tmrLoopguard, &QTimer::timeout, this, &SessionTimers::tmrLoopguard_Timer);
    current = this;
}

SessionTimers::~SessionTimers()
{
    if (current == this)
        current = nullptr;
}

SessionTimers &SessionTimers::instance()
{
    if (!current)
        new SessionTimers(QCoreApplication::instance()); // sets current
    return *current;
}

void SessionTimers::Showtime_Timer()
{
    const TimeTexts t = timeTexts(ui::now(), slotLt2Utc());
    ltText = t.lt;
    utcText = t.utc;
    utcStamp = t.stamp;
    if (onTitles)
        onTitles();
}

void SessionTimers::tmrDelay_Timer()
{
    // A tick that comes before the wait's time is up is not its end: wait for the rest.
    const qint64 leftNs = waitBegan_.isValid() ? waitNs_ - waitBegan_.nsecsElapsed() : 0;
    if (leftNs > 0) {
        tmrDelay.start(int((leftNs + 999999) / 1000000));
        return;
    }
    delayBusy = false;
}

void SessionTimers::tmrLoopguard_Timer() { tmrLoopguard.stop(); }

void SessionTimers::delayMs(int n)
{
    delayBusy = true;
    waitNs_ = qint64(n) * 1000000;
    waitBegan_.start();
    tmrDelay.setInterval(n);
    tmrDelay.start();
    // Pumping may run a handler that waits in turn: it restarts the one timer, and both
    // waits end on its tick.
    while (delayBusy)
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    tmrDelay.stop();
}

void delayMs(int n) { SessionTimers::instance().delayMs(n); }
