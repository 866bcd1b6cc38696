// "comports.ini" in the data directory: the device or the simulator behind COMn.
#include "fuzz_support.h"
#include "serial/port_map.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::begin();
    fuzz::Input in(data, size);
    const int last = in.byte() % 40;
    const QString dir = fuzz::writeScratch(QStringLiteral("comports.ini"), in.rest());
    return fuzz::run([&] {
        for (int n = 0; n <= last; ++n)
            resolvePort(n, dir);
    });
}
