#pragma once
// The shell sort of the lists and the log book, in place over indices 0..last: the gap starts at
// last and is halved, halves to the even neighbour, while it is above 1; at each gap, passes run
// until one makes no exchange; two entries are exchanged only when the first is strictly greater,
// so entries with equal keys stay where the passes leave them. Where the gaps never come to a
// pass at 1 (exactly two entries), that pass runs all the same, so the result is always in order.
#include "core/numtext.h"

template <class Greater, class Swap>
void shellSort(int last, Greater greater, Swap swap)
{
    const auto passes = [&](int gap) {
        bool exchanged = true;
        while (exchanged) {
            exchanged = false;
            for (int i = 0; i + gap <= last; ++i)
                if (greater(i, i + gap)) {
                    swap(i, i + gap);
                    exchanged = true;
                }
        }
    };
    int gap = last;
    bool atOne = false;
    while (gap > 1) {
        gap = int(numtext::roundHalfEven(gap / 2.0));
        passes(gap);
        atOne = gap == 1;
    }
    if (!atOne && last >= 1)
        passes(1);
}
