// Club schedule lists: read with their marks, then every record shown under a selection answer
// taken from the input (a time, "all" or anything else).
#include "fuzz_support.h"
#include "core/shared_state.h"
#include "data/schedule_lists.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::begin();
    fuzz::Input in(data, size);
    const QString answer = QString::fromLatin1(in.piece(8));
    const QByteArray bytes = in.rest();
    return fuzz::run([&] {
        slotDimBdxc() = 1;
        const int32_t n = lists::readBdxc(bytes);
        lists::bdxcRows(answer, n);
        lists::bdxcRows(QStringLiteral("all"), n);
        for (int32_t i = 1; i <= n; ++i)
            lists::bdxcClick(1, 3 + i % 8, lists::bdxcRow(bdxcRecords[size_t(i)]).value(3 + i % 7), n);
    });
}
