// The Aero list: the fuzzer's bytes as the lines of "aerolist.txt" through both loops.
#include "fuzz_support.h"
#include "core/textfile.h"
#include "data/aero_convert.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::begin();
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    return fuzz::run([&] {
        const QStringList lines = textfile::splitLines(bytes);
        const QStringList full = aero::fullDetails(lines);
        if (full.size() > lines.size())
            std::abort();
        const QStringList nets = aero::networkOnly(lines);
        for (int i = 1; i < nets.size(); ++i)
            if (nets[i] == nets[i - 1])
                std::abort();
    });
}
