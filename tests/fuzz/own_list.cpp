// The listener's own lists: every line read, shown and clicked.
#include "fuzz_support.h"
#include "core/shared_state.h"
#include "data/schedule_lists.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::begin();
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    return fuzz::run([&] {
        slotDimOwn() = 1;
        const int32_t n = lists::readOwn(bytes);
        for (int32_t i = 1; i <= n; ++i) {
            const QStringList row = lists::ownRow(ownRecords[size_t(i)]);
            lists::ownClick(4 + i % 8, row.value(4 + i % 8), row.value(lists::kOwnModeColumn));
        }
    });
}
