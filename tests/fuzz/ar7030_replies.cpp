// The AR7030's replies: every read of the driver, the receiver's bytes coming from the input.
#include "fuzz_support.h"
#include "core/shared_state.h"
#include "drivers/ar7030_tables.h"
#include "drivers/clsAR7030.h"
#include "serial/comm_line.h"

#include <memory>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::begin();
    fuzz::Input in(data, size);
    return fuzz::run([&] {
        rxType = rxAR7030;
        labelRoutineAR7030();
        CommLine line;
        line.openWith(std::make_unique<fuzz::ReplyBackend>(in));
        clsAR7030 rx(line);
        fuzz::runReads(in, {
            [&] { ar7030FirmwareNumber(rx.Firmware()); },
            [&] { rx.PowerOnOff(); },
            [&] { rx.Attenuator(); },
            [&] { rx.Bandwidth(); },
            [&] { rx.Mode(); },
            [&] { rx.Agcspeed(); },
            [&] { rx.FrequencyA(); },
            [&] { int16_t n = int16_t(in.byte() % 8); QString t; rx.Installedfilter(n, t); },
            [&] { rx.Volume(); },
            [&] { rx.Leftauxlevel(); },
            [&] { rx.Rightauxlevel(); },
            [&] { rx.Bass(); },
            [&] { rx.Treble(); },
            [&] { rx.PassBandShift(); },
            [&] { rx.Ifgain(); },
            [&] { rx.Squelch(); },
            [&] { rx.Beatfreqosc(); },
            [&] { rx.Smeter(); },
            [&] { rx.Memory(int16_t(in.byte() % 100)); },
            [&] { rx.RxClock(); },
            [&] { rx.setVolume(int16_t(in.byte() % 64)); },
            [&] { rx.setBass(int16_t(in.byte() % 16)); },
        });
    });
}
