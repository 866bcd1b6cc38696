// dBASE tables through shapelib: the fuzzer's bytes as "ilgsdata.dbf", opened as an ILG table
// and converted with every box set and with none; also read field by field as a plain table.
#include "fuzz_support.h"
#include "data/dbf_table.h"
#include "data/ilg_convert.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::begin();
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    return fuzz::run([&] {
        const QString path = fuzz::writeScratch(QStringLiteral("ilgsdata.dbf"), bytes) + QStringLiteral("ilgsdata.dbf");
        DbfTable plain;
        if (plain.open(path)) {
            const int fields = int(plain.fieldNames().size());
            for (int r = 0; r < plain.recordCount() && r < 64; ++r)
                for (int f = -1; f <= fields; ++f)
                    plain.value(r, f);
        }
        ilg::Table table;
        if (!table.open(path))
            return;
        for (const QString &line : ilg::convert(table, {true, true, true, true}))
            if (line.size() < ilg::kLineWidth)
                std::abort();
        ilg::convert(table, {false, false, false, false});
    });
}
