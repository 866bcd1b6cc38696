// The RX-320's replies: its signal level and its version text, from the input.
#include "fuzz_support.h"
#include "core/shared_state.h"
#include "drivers/clsRX320.h"
#include "drivers/model_tables.h"
#include "serial/comm_line.h"

#include <memory>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::begin();
    fuzz::Input in(data, size);
    return fuzz::run([&] {
        rxType = rxRX320;
        labelRoutineRX320();
        CommLine line;
        line.openWith(std::make_unique<fuzz::ReplyBackend>(in));
        clsRX320 rx(line);
        fuzz::runReads(in, {
            [&] { rx.Smeter(); },
            [&] { rx.Smeter(); },
            [&] { rx.Smeter(); },
            [&] { rx.Firmware(); },
        });
    });
}
