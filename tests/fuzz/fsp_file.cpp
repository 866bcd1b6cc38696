// FSP files: read over a scratchpad that holds notes already, written back (always ten lines),
// read again, and each row scanned as the scratchpad's row scan takes it.
#include "fuzz_support.h"
#include "core/textfile.h"
#include "log/small_lists.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::begin();
    fuzz::Input in(data, size);
    const QByteArray bytes = in.rest();
    return fuzz::run([&] {
        smalllists::Scratchpad pad;
        pad.notes.fill(QStringLiteral("old"));
        smalllists::readFsp(bytes, pad);
        const QByteArray written = smalllists::fspBytes(pad);
        if (textfile::splitLines(written).size() != smalllists::kPadRows)
            std::abort();
        smalllists::readFsp(written, pad);
        for (const auto &row : pad.cells) {
            const std::vector<double> table =
                smalllists::scanTable(QStringList(row.begin(), row.end()), 10.0, 30000.0);
            smalllists::FrequencyList list;
            for (size_t i = 0; i < row.size(); ++i)
                smalllists::shiftIn(list, row[i]);
            smalllists::nextScanEntry(list, int(table.size()) - 1, 10.0, 30000.0);
        }
    });
}
