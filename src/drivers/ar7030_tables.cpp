#include "ar7030_tables.h"
#include "core/numtext.h"
#include "core/shared_state.h"

#include <cstdlib>

const QStringList kAr7030Attenuators = {"+10 dB", "0 dB", "-10 dB", "-20 dB", "-30 dB", "-40 dB"};
const QStringList kAr7030Modes = {"", "AM", "Sync", "NFM", "Data", "CW", "LSB", "USB"};
const QStringList kAr7030Agc = {"Fst", "Med", "Slw", "Off"};
const QStringList kAr7030YesNo = {"Y", "N"};

QStringList ar7030ShiftTable;

QStringList makeAr7030ShiftTable()
{
    QStringList t;
    t.reserve(kAr7030ShiftSlots);
    // Whole tenths, so no step accumulates a rounding error.
    for (int tenths = -42; tenths <= 42; ++tenths) {
        const QChar sign = tenths < 0 ? u'-' : tenths > 0 ? u'+' : u' ';
        t << sign + numtext::commaToPoint(numtext::format(std::abs(tenths) / 10.0, QStringLiteral("0.0k")));
    }
    while (t.size() < kAr7030ShiftSlots)
        t << QString();
    return t;
}

void labelRoutineAR7030()
{
    for (QStringList *t : {&attTable, &agcTable, &modeTable, &filterTable, &yesNoTable, &nbTable})
        t->clear();
    applyLimits(rxAR7030);
    for (int i = 0; i <= 6; ++i)
        filterTable << QString();
    attTable = kAr7030Attenuators;
    modeTable = kAr7030Modes;
    agcTable = kAr7030Agc;
    yesNoTable = kAr7030YesNo;
    ar7030ShiftTable = makeAr7030ShiftTable();
}
