// "formpositions.ini": every window's position, read, stored back by the unload rule, written.
#include "fuzz_support.h"
#include "core/settings_files.h"
#include "core/shared_state.h"
#include "core/textfile.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::begin();
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    return fuzz::run([&] {
        settings::readPositions(textfile::splitLines(bytes));
        for (int n = 1; n <= kWindowCount; ++n)
            settings::positionToStore(formLeft[size_t(n)], formTop[size_t(n)], 4800);
        settings::readPositions(textfile::splitLines(settings::positionsText()));
    });
}
