// "ilgquery.ini": the choices of each box of the query window.
#include "fuzz_support.h"
#include "data/ftl_query.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::begin();
    fuzz::Input in(data, size);
    const QByteArray bytes = in.rest();
    return fuzz::run([&] {
        const auto boxes = ftlquery::readQueryFile(bytes, ftlquery::kIlgBoxes);
        if (boxes.size() != size_t(ftlquery::kIlgBoxes))
            std::abort();
    });
}
