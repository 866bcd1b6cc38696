// "brelvox2.ini" as the start reads it, then what the start makes of it: the file kinds'
// directories, the time texts from the LT-to-UTC slot, and the file written back.
#include "fuzz_support.h"
#include "core/session_clock.h"
#include "core/settings_files.h"
#include "core/shared_state.h"
#include "core/textfile.h"

#include <QDateTime>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::begin();
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    return fuzz::run([&] {
        settings::readSettings(textfile::splitLines(bytes));
        computeFullDirTable();
        const QDateTime at(QDate(2024, 3, 31), QTime(1, 59, 30));
        timeTexts(at, slotLt2Utc());
        panelTitle(rxType, ltText, utcText);
        settings::readSettings(textfile::splitLines(settings::settingsText()));
    });
}
