// What a JRC receiver sends by itself while the dial is on: pieces of text collected by the hub
// until a CR, then read as the tuned frequency.
#include "fuzz_support.h"
#include "core/hub.h"
#include "core/shared_state.h"

namespace {
struct Panel : RxPanel {
    void hubFrequencyAChanged(double) override {}
    void hubModeChanged(int16_t) override {}
    void hubBandwidthChanged(int16_t) override {}
    void hubAgcspeedChanged(int16_t) override {}
    QString frequencyText() const override { return {}; }
};
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::begin();
    fuzz::Input in(data, size);
    static const int types[] = {rxNRD535, rxNRD545, rxAR7030, rxRX320};
    rxType = int16_t(types[in.byte() % 4]);
    return fuzz::run([&] {
        Panel panel;
        FrequencyHub hub;
        hub.setPanel(&panel);
        int tracked = 0;
        hub.searchTracking = [&] { ++tracked; };
        while (!in.atEnd())
            hub.getfreq(hub.term, QString::fromLatin1(in.piece(64)));
    });
}
