// "loggridformat.ini": the mask line, the columns it gives and the format length.
#include "fuzz_support.h"
#include "log/log_book.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::begin();
    fuzz::Input in(data, size);
    const QByteArray bytes = in.rest();
    return fuzz::run([&] {
        const QString mask = logbook::readMask(bytes);
        const logbook::Columns c = logbook::buildColumns(mask);
        if (c.titles.size() != qsizetype(c.twips.size()))
            std::abort();
        logbook::formatLength(mask);
        logbook::readMask(logbook::maskBytes(mask));
    });
}
