// "rx320settings.ini" as the RX-320 panel restores it at load: read, remembered, and sent to
// the receiver (tuning, filter, mode, levels), then written back at unload.
#include "fuzz_support.h"
#include "core/shared_state.h"
#include "drivers/clsRX320.h"
#include "drivers/model_tables.h"
#include "panels/rx320_panel_logic.h"
#include "serial/comm_line.h"

#include <memory>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::begin();
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    return fuzz::run([&] {
        rxType = rxRX320;
        labelRoutineRX320();
        const rx320panel::Settings s = rx320panel::readSettings(bytes);
        rx320panel::setSharedSettings(s);
        fuzz::Input none(nullptr, 0);
        CommLine line;
        line.openWith(std::make_unique<fuzz::ReplyBackend>(none));
        clsRX320 rx(line);
        int16_t bw = s.bandwidth;
        rx.setBandwidth(bw);
        rx.setMode(s.mode);
        rx.setAgcspeed(s.agc);
        rx.setPassBandShift(s.pbs);
        rx.setBeatfreqosc(s.bfo);
        rx.setFrequencyA(s.freq);
        rx.setVolume(s.volume);
        rx.setLinelevel(s.line);
        rx320panel::readSettings(rx320panel::settingsText(rx320panel::sharedSettings()));
    });
}
