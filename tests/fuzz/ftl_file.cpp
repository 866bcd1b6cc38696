// ILG and Aero .FTL files: every line read, searched with the criteria the input gives, sorted,
// shown as rows and scanned.
#include "fuzz_support.h"
#include "core/shared_state.h"
#include "data/ftl_query.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::begin();
    fuzz::Input in(data, size);
    const uint8_t flags = in.byte();
    ftlquery::Criteria c;
    c.aero = flags & 0x80;
    for (int i = 0; i < ftlquery::kIlgChecks; ++i)
        c.checked[i] = flags & (1 << i);
    for (auto &t : c.text)
        t = QString::fromLatin1(in.piece(16));
    c.utc = QString::fromLatin1(in.piece(4));
    const QByteArray bytes = in.rest();
    return fuzz::run([&] {
        slotDimIlg() = 1;
        ftlquery::readFtl(bytes);
        ftlquery::search(c);
        ftlquery::SortIlgList(flags % ftlquery::kSortOptions);
        const auto rows = ftlquery::listRows(c.aero ? ftlquery::loadedRow : ftlquery::queriedRow);
        int32_t position = 0;
        double last = 0;
        for (int tick = 0; tick < 3; ++tick) {
            const auto s = ftlquery::scanStep(
                [&](int32_t r) { return ftlquery::rowFrequency(rows.at(size_t(r)).at(0)); }, int32_t(rows.size()),
                position, last);
            position = s.next;
            last = s.khz;
        }
    });
}
