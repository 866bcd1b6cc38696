// The NRD-535's replies: every read of the driver, the receiver's bytes coming from the input.
// The user's lock is on, as during a scan: the reads then go without the remote frame's pauses.
#include "fuzz_support.h"
#include "core/shared_state.h"
#include "drivers/clsNRD535.h"
#include "drivers/nrd_tables.h"
#include "serial/comm_line.h"

#include <memory>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::begin();
    fuzz::Input in(data, size);
    return fuzz::run([&] {
        rxType = rxNRD535;
        labelRoutineNRD535();
        remoteLock = 1;
        remoteCommand = 0;
        CommLine line;
        line.openWith(std::make_unique<fuzz::ReplyBackend>(in));
        clsNRD535 rx(line);
        fuzz::runReads(in, {
            [&] { rx.Bandwidth(); },
            [&] { rx.Agcspeed(); },
            [&] { rx.FrequencyA(); },
            [&] { rx.RxStatus(); },
            [&] { rx.Attenuator(); },
            [&] { rx.Mode(); },
            [&] { rx.Smeter(); },
            [&] { rx.Memory(int16_t(in.byte() % 200)); },
            [&] { rx.RxClock(); },
        });
    });
}
