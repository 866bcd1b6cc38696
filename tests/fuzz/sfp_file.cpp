// SFP files: read over pairs already there (a refused file must leave them whole), written back
// and read again to the same bytes, then the scan's walk and rows over every start and end.
#include "fuzz_support.h"
#include "scan/scan_pairs.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::begin();
    fuzz::Input in(data, size);
    const int first = in.byte() % 40;
    const int last = in.byte() % 40;
    const QByteArray bytes = in.rest();
    return fuzz::run([&] {
        using namespace scanpairs;
        resetPairs();
        readSfp("1,2, 1,old\r\n");
        const QByteArray before = sfpBytes();
        if (!readSfp(bytes).isEmpty()) {
            if (sfpBytes() != before)
                std::abort();
            return;
        }
        const QByteArray written = sfpBytes();
        if (!readSfp(written).isEmpty() || sfpBytes() != written)
            std::abort();
        const int pos = nextTicked(first, first, last);
        if (pos >= 0 && (pos > PairLast || PairChecked[pos] == 0))
            std::abort();
        for (const int i : rowPairs(first, first, last, PairLast))
            if (i > PairLast)
                std::abort();
    });
}
