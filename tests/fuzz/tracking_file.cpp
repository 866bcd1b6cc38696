// Tracking's database: the lines read, a search at a frequency the input gives, both fillers,
// every page of rows under every alternate, and the distance to positions of any text.
#include "fuzz_support.h"
#include "core/numtext.h"
#include "core/shared_state.h"
#include "data/tracking.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::begin();
    fuzz::Input in(data, size);
    const uint8_t flags = in.byte();
    const QString freq = QString::fromLatin1(in.piece(12));
    const QString range = QString::fromLatin1(in.piece(8));
    const QString utc = QString::fromLatin1(in.piece(17));
    const QString lat = QString::fromLatin1(in.piece(6));
    const QString lon = QString::fromLatin1(in.piece(7));
    const QByteArray bytes = in.rest();
    return fuzz::run([&] {
        slotDimIlg() = 1;
        tracking::readTracking(bytes);
        const double f = numtext::Val(freq);
        if (!tracking::searchIndex(f))
            return;
        tracking::View v;
        v.hitsOnly = flags & 1;
        v.alternates = (flags >> 1) % 4;
        v.area = (flags >> 3) % 9;
        v.now = tracking::presentTime(utc);
        v.rxLatitude = lat;
        v.rxLongitude = lon;
        const int32_t count = tracking::ListTracking(f, numtext::valc(range), v.hitsOnly, v.now);
        for (int p = 0; p < tracking::enabledPages(count); ++p)
            tracking::ShowTracking(p, v);
    });
}
