// SAN files: read, drawn as an overlay, written back from the sweep state and read again; the
// file's numbers also typed into the Start boxes.
#include "fuzz_support.h"
#include "scan/scan_band.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::begin();
    fuzz::Input in(data, size);
    const QByteArray bytes = in.rest();
    return fuzz::run([&] {
        using namespace scanband;
        const SanFile f = readSan(bytes);
        if (f.values.size() != size_t(std::max(0, f.lastCount + 1)))
            std::abort();
        const QStringList lines = QString::fromLatin1(bytes).split(QLatin1Char('\n'));
        readInput(lines.value(1), lines.value(2), lines.value(3), lines.value(4), 10, 30000);
        overlaySegments(f);
        resetState();
        ScanBandStart = f.start;
        ScanBandEnd = f.end;
        ScanBandStep = f.step;
        ScanBandIndex = f.lastCount;
        std::copy(f.values.begin(), f.values.end(), ScanBandLatest.begin());
        const SanFile again = readSan(sanBytes(QStringLiteral("1 Jan 2026  00:00 Z")));
        if (again.lastCount != f.lastCount || again.values.size() != f.values.size())
            std::abort();
    });
}
