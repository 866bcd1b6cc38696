#include "model_tables.h"
#include "core/shared_state.h"

const QStringList kRx320FilterWidths = {
    "6000", "5700", "5400", "5100", "4800", "4500", "4200", "3900", "3600", "3300", "3000", "2850",
    "2700", "2550", "2400", "2250", "2100", "1950", "1800", "1650", "1500", "1350", "1200", "1050",
    "900",  "750",  "675",  "600",  "525",  "450",  "375",  "330",  "300",  "8000"};
const QStringList kRx320Modes = {"AM", "USB", "LSB", "CW"};
const QStringList kRx320Agc = {"Slw", "Med", "Fst"};

ModelSerial serialFor(int type)
{
    switch (type) {
    case rxAR7030:
    case rxRX320: return {"1200,N,8,1"};
    case rxNRD535:
    case rxNRD545: return {"4800,N,8,1"};
    default: return {""};
    }
}

static void clearLabelTables()
{
    for (QStringList *t : {&attTable, &agcTable, &modeTable, &filterTable, &yesNoTable, &nbTable})
        t->clear();
}

void labelRoutineRX320()
{
    clearLabelTables();
    applyLimits(rxRX320);
    filterTable = kRx320FilterWidths;
    modeTable = kRx320Modes;
    agcTable = kRx320Agc;
}

void labelRoutineNoRx()
{
    clearLabelTables();
    applyLimits(rxNone);
}
