// One record of a MEM file as it goes on: its fields as the memory window and the cell editor
// read them, and the cell sent to each receiver that has memories.
#include "fuzz_support.h"
#include "core/shared_state.h"
#include "drivers/ar7030_tables.h"
#include "drivers/clsAR7030.h"
#include "drivers/clsNRD535.h"
#include "drivers/clsNRD545.h"
#include "drivers/nrd_tables.h"
#include "memory/mem_record.h"
#include "serial/comm_line.h"

#include <memory>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::begin();
    fuzz::Input in(data, size);
    const int model = in.byte() % 3;
    const int16_t cell = int16_t(in.byte());
    // The record as the file reader keeps it: 35 characters, padded or cut.
    const QString rec = MemRecordText(QString::fromLatin1(in.rest())).str();
    return fuzz::run([&] {
        for (const auto f : {memfield::state, memfield::number, memfield::frequency, memfield::mode,
                             memfield::bandwidth, memfield::attenuator, memfield::agc, memfield::pbs,
                             memfield::sqlBfo, memfield::scan})
            memField(rec, f);
        memKhz(rec);
        memSortKey(rec);
        memFrequencyDisplay(rec);
        isVacantMemRecord(rec);
        fuzz::Input none(nullptr, 0);
        CommLine line;
        line.openWith(std::make_unique<fuzz::ReplyBackend>(none));
        remoteLock = 1;
        switch (model) {
        case 0: {
            rxType = rxAR7030;
            labelRoutineAR7030();
            clsAR7030(line).setMemory(int16_t(cell % 100), rec);
            break;
        }
        case 1:
            rxType = rxNRD535;
            labelRoutineNRD535();
            clsNRD535(line).setMemory(int16_t(cell % 200), rec);
            break;
        default:
            rxType = rxNRD545;
            labelRoutineNRD545();
            clsNRD545(line).setMemory(int16_t(cell * 4 % 1000), rec);
        }
    });
}
