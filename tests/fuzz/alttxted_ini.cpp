// "alttxted.ini" in the data directory: the first line is the user's editor and its arguments.
#include "fuzz_support.h"
#include "core/shared_state.h"
#include "data/file_store.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::begin();
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    dirPath = fuzz::writeScratch(QStringLiteral("alttxted.ini"), bytes);
    return fuzz::run([&] { editorCommand(dirPath + QStringLiteral("LOG/my log.txt")); });
}
