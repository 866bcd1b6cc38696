// What the memory window and the cell editor make of typed boxes and of records from a file:
// range and delay, the editor's frequency and record, and a record's row, labels, printed line
// and fields, for the model chosen by the first byte. The rest is texts cut at 0x00: record,
// tag, from, to, delay, then the editor's frequency, mode, bandwidth, attenuator, AGC, PBS,
// Sql/BFO, scan and a JRC status text; every text also stands as a cell of a small image that
// is sorted and printed.
#include "fuzz_support.h"
#include "core/shared_state.h"
#include "drivers/ar7030_tables.h"
#include "drivers/model_tables.h"
#include "drivers/nrd_tables.h"
#include "memory/memman_logic.h"

#include <cstdlib>

namespace {
void selectModel(int type)
{
    rxType = int16_t(type);
    switch (type) {
    case rxAR7030:
        labelRoutineAR7030();
        filterTable = QStringList{"", "0.5k", "1.4k", "2.3k", "3.3k", "5.5k", "9.5k"};
        break;
    case rxNRD535: labelRoutineNRD535(); break;
    case rxNRD545: labelRoutineNRD545(); break;
    case rxRX320: labelRoutineRX320(); break;
    default: labelRoutineNoRx();
    }
}

// A broken promise of the logic is a finding, as a crash is.
void expect(bool ok)
{
    if (!ok)
        std::abort();
}

void wholeRecord(const QString &rec, const QString &tag, int type)
{
    memman::gridRow(rec, tag);
    memman::details(rec);
    memman::printLine(rec, tag, type);
    memman::fieldsFromRecord(rec, tag, type);
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::begin();
    fuzz::Input in(data, size);
    const int type = in.byte() % 5;
    const int cell = in.byte();
    const QStringList t = in.restAsTexts();
    const auto text = [&](int i) { return i < t.size() ? t[i] : QString(); };
    selectModel(type);
    const QString rec = MemRecordText(text(0)).str();
    const QString tag = MemTagText(text(1)).str();

    fuzz::run([&] { wholeRecord(rec, tag, type); });
    fuzz::run([&] {
        const memman::Range r = memman::checkRange(text(2), text(3), lastMemoryIndex);
        expect(!r.ok || (0 <= r.from && r.from <= r.to && r.to <= lastMemoryIndex));
    });
    fuzz::run([&] {
        const memman::Delay d = memman::clampDelay(text(4));
        expect(d.seconds >= 1 && d.seconds <= 60);
        memman::scanIntervalMs(d.seconds, type);
    });
    fuzz::run([&] {
        const auto hz = memman::editorHz(text(5));
        expect(!hz || (hz->size() == 8 && !hz->startsWith(u'-')));
    });
    fuzz::run([&] {
        memman::CellFields f;
        f.cell = cell;
        f.frequency = text(5);
        f.mode = text(6);
        f.bandwidth = text(7);
        f.attenuator = text(8);
        f.agc = text(9);
        f.pbs = text(10);
        f.sqlBfo = text(11);
        f.scan = text(12);
        f.tag = text(1);
        memman::bfoMode(f.mode);
        memman::acceptableTag(f.tag);
        if (const auto made = memman::recordFromFields(f, type)) {
            expect(made->size() == kMemRecordWidth);
            wholeRecord(*made, tag, type);
        }
    });
    fuzz::run([&] { memman::fieldsFromJrcStatus(text(13)); });
    fuzz::run([&] {
        // Every text a cell, an empty one never assigned; sorted and printed whole.
        const int last = std::min<int>(int(t.size()), 16) - 1;
        FixedTextArray<kMemRecordWidth> recs;
        FixedTextArray<kMemTagWidth> tags;
        recs.redim(last);
        tags.redim(last);
        for (int i = 0; i <= last; ++i) {
            if (!t[i].isEmpty())
                recs[i] = t[i];
            tags[i] = text(last - i);
        }
        const auto empties = [&] {
            int n = 0;
            for (int i = 0; i <= last; ++i)
                n += recs[i].isEmpty() ? 1 : 0;
            return n;
        };
        const int before = empties();
        memman::sortImage(recs, tags, last);
        expect(empties() == before);
        // Every cell that holds a record carries its new number.
        for (int i = 0; i <= last; ++i)
            expect(recs[i].str().trimmed().isEmpty() || recs[i].mid(4, 3) == QString::asprintf("%03d", i));
        if (last >= 0)
            memman::printLines(recs, tags, text(1), 0, last, type);
    });
    return 0;
}
