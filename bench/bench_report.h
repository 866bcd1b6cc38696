#pragma once
// The one line each benchmark prints per operation: median and worst of its runs against the
// limit, in milliseconds, and median / limit; what was measured on (rows) where it matters.
#include <algorithm>
#include <cstdio>
#include <vector>

inline void reportRuns(const char *op, std::vector<double> ms, double limitMs, int rows = -1)
{
    std::sort(ms.begin(), ms.end());
    const double median = ms[ms.size() / 2];
    std::printf("%-44s median %9.3f ms  worst %9.3f  limit %9.3f  ratio %.3f", op, median, ms.back(), limitMs,
                median / limitMs);
    if (rows >= 0)
        std::printf("  (%d rows)", rows);
    std::printf("\n");
}
