#include "mem_record.h"
#include "core/numtext.h"
#include "core/shared_state.h"

FixedTextArray<kMemRecordWidth> memRecord;
FixedTextArray<kMemTagWidth> memTag;
int16_t memRow = 0;

void allocateMemImage()
{
    memRecord.redim(lastMemoryIndex);
    memTag.redim(lastMemoryIndex);
}

QString memField(const QString &rec, memfield::Field f) { return rec.mid(f.pos - 1, f.len); }

namespace {
QString threeDigits(int n) { return numtext::format(n, QStringLiteral("000")); }
} // namespace

QString filledMemRecord(const MemFields &f)
{
    QString r = QStringLiteral("MEM") + threeDigits(f.number) + u' ' + f.hz + u' ' + f.mode + u' '
                + f.bandwidth + u' ' + f.attenuator + u' ' + f.agc + u' ' + f.pbs + u' ' + f.sqlBfo
                + u' ' + f.scan + u' ';
    return r.left(kMemRecordWidth).leftJustified(kMemRecordWidth, u' ');
}

QString vacantMemRecord(int number)
{
    return QStringLiteral("XXX") + threeDigits(number) + QStringLiteral(" No data  @ @@ @ @ @@@ @@@ @ ");
}

bool isVacantMemRecord(const QString &rec) { return rec.startsWith(QLatin1String("XXX")); }

QString memHzText(double khz)
{
    return numtext::format(numtext::roundHalfAway(khz * 1000.0), QStringLiteral("00000000"));
}

double memKhz(const QString &rec) { return numtext::Val(memField(rec, memfield::frequency)) / 1000.0; }

QString memSortKey(const QString &rec)
{
    if (rec.trimmed().isEmpty() || isVacantMemRecord(rec))
        return QString::fromLatin1(kMemLastKey);
    return memField(rec, memfield::frequency);
}

QString memFrequencyDisplay(const QString &rec)
{
    const QString d = memField(rec, memfield::frequency);
    if (numtext::Val(d) > 1)
        return d.left(5) + u'.' + d.mid(5, 3);
    return d;
}
