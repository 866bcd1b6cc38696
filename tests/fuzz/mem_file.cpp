// MEM files of any model: read into the memory image, every cell shown as the memory window
// shows it, sorted by its key, and the image written back.
#include "fuzz_support.h"
#include "core/shared_state.h"
#include "memory/mem_file.h"
#include "memory/mem_record.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::begin();
    fuzz::Input in(data, size);
    static const int types[] = {rxAR7030, rxNRD535, rxRX320, rxNRD545};
    const int type = types[in.byte() % 4];
    const QByteArray bytes = in.rest();
    return fuzz::run([&] {
        applyLimits(type);
        allocateMemImage();
        readMemFile(bytes);
        for (int i = 0; i <= lastMemoryIndex; ++i) {
            const QString &rec = memRecord[i].str();
            memSortKey(rec);
            memFrequencyDisplay(rec);
            isVacantMemRecord(rec);
        }
        const QByteArray again = memFileBytes();
        allocateMemImage();
        readMemFile(again);
    });
}
