// ".320" station files: every line cut into fields, shown and clicked.
#include "fuzz_support.h"
#include "core/shared_state.h"
#include "data/schedule_lists.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::begin();
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    return fuzz::run([&] {
        slotDimOwn() = 1;
        const int32_t n = lists::read320(bytes);
        for (int32_t i = 1; i <= n; ++i) {
            const QStringList row = lists::row320(file320Fields[size_t(i)]);
            lists::click320(row.value(lists::k320FrequencyColumn), row.value(lists::k320ModeColumn));
        }
    });
}
