// LOG files: read, shown under a mask from the input, sorted by one of the keys, written back;
// what was written must read back to the same rows.
#include "fuzz_support.h"
#include "log/log_book.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::begin();
    fuzz::Input in(data, size);
    const int option = in.byte() % 5;
    const QByteArray maskLine = in.piece(20);
    const QByteArray bytes = in.rest();
    return fuzz::run([&] {
        const QString mask = logbook::readMask(maskLine);
        std::vector<logbook::Record> rows = logbook::readLog(bytes, 2000);
        for (size_t r = 0; r < rows.size(); ++r)
            logbook::gridRow(rows[r], int32_t(r), mask);
        logbook::buildColumns(mask);
        logbook::formatLength(mask);
        logbook::sortLog(rows, int32_t(rows.size()) - 1, option);
        const QByteArray out = logbook::logBytes(rows, int32_t(rows.size()));
        // Fields of a line cut at the columns come back as they were, but for a short line's
        // missing blanks; the second writing is the first one's bytes.
        const std::vector<logbook::Record> again = logbook::readLog(out, 2000);
        if (logbook::logBytes(again, int32_t(again.size())) != out)
            std::abort();
    });
}
