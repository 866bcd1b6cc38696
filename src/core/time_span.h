#pragma once
// The one time rule of every schedule, on hhmm texts compared as text (by character code):
// start before end is the span start..end, bounds included; start after end runs over midnight;
// start equal to end never matches.
#include <QStringView>

inline bool inTimeSpan(QStringView time, QStringView start, QStringView end)
{
    const int order = start.compare(end);
    if (order < 0)
        return start.compare(time) <= 0 && time.compare(end) <= 0;
    if (order > 0)
        return time.compare(start) >= 0 || time.compare(end) <= 0;
    return false;
}
