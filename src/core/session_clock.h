#pragma once
// The start window's three timers: Showtime (time texts and titles), tmrDelay (every timed wait)
// and tmrLoopguard (the bound of one guarded byte read).
#include <QDateTime>
#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <functional>

struct TimeTexts {
    QString lt;    // "d mmm yyyy  hh:mm"
    QString utc;   // same form, UTC
    QString stamp; // "yyyymmdd hhmm", UTC
};

// The texts for a local time and an offset LT - UTC in hours (whole or half).
TimeTexts timeTexts(const QDateTime &local, double lt2utc);

// Title text of the open panel for rxType, and of a list window from its prefix.
QString panelTitle(int rxType, const QString &lt, const QString &utc);
QString listTitle(const QString &prefix, const QString &lt, const QString &utc);

class SessionTimers : public QObject {
    Q_OBJECT
public:
    explicit SessionTimers(QObject *parent = nullptr);
    ~SessionTimers() override;

    QTimer Showtime;
    QTimer tmrDelay;
    QTimer tmrLoopguard;

    // Called at every Showtime tick after the texts are new: writes the window titles.
    std::function<void()> onTitles;

    void Showtime_Timer();
    void tmrDelay_Timer();
    void tmrLoopguard_Timer();

    void delayMs(int n);

    // The instance in force (the start window's), created on first use where none exists.
    static SessionTimers &instance();

private:
    // When the latest wait began, by a monotonic clock, and how long it asked for.
    QElapsedTimer waitBegan_;
    qint64 waitNs_ = 0;
};

// The timed wait every driver and scanner uses: pumps window messages for n ms.
void delayMs(int n);
