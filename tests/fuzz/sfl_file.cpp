// SFL files: read under limits taken from the input, written back and read again (the same
// places), then scanned: every move lands on a valid place or reports that none is left.
#include "fuzz_support.h"
#include "scan/scan_list.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::begin();
    fuzz::Input in(data, size);
    const double lower = in.byte() % 2 ? 0.0 : 10.0;
    const QByteArray bytes = in.rest();
    return fuzz::run([&] {
        using namespace scanlist;
        const Places places = readSfl(bytes, lower, 30000.0);
        const QByteArray written = sflBytes(places, lower, 30000.0);
        if (readSfl(written, lower, 30000.0) != places || sflBytes(places, lower, 30000.0) != written)
            std::abort();
        ListScan s;
        s.NewRun = s.NewTrend = true;
        s.beginTick();
        for (int tick = 0; tick < 3 * kPlaces; ++tick) {
            s.record(float(tick % 22));
            const ListScan::Move m = s.moveOn(places, lower, 30000.0);
            if (m.place >= 0 ? !validPlace(places[size_t(m.place)], lower, 30000.0) : anyValidPlace(places, lower, 30000.0))
                std::abort();
            if (m.place < 0)
                break;
        }
    });
}
