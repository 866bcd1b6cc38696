#include "nrd_tables.h"
#include "core/shared_state.h"

const QStringList kNrdAttenuators = {"0 dB", "-20 dB"};
const QStringList kNrdNoiseBlankers = {"Off", "NB1", "NB2"};
const QStringList kNrd535Filters = {"Wid", "Int", "Nar", "Aux"};
const QStringList kNrd535Agc = {"Slw", "Fst", "Off"};
const QStringList kNrd535Modes = {"RY", "CW", "USB", "LSB", "AM", "NFM", "Fax"};
const QStringList kNrd535EcssModes = {"AM-U", "AM-L"};
const QStringList kNrd545Filters = {"Wid", "Int", "Nar"};
const QStringList kNrd545Modes = {"RY", "CW", "USB", "LSB", "AM", "NFM", "AMS", "AM-U", "AM-L", "WFM"};
const QStringList kNrd545Agc = {"Off",  "0200", "0400", "0600", "0800",
                                "1000", "1200", "1400", "1600", "1800"};
const QStringList kNrd545NrbcLabels = {"Off", "NR", "BC"};
const QStringList kNrd545NbLabels = {"Off", "NB1", "NB2"};
const QStringList kNrd545NotchLabels = {"Off", "N", "NT"};

static void clearLabelTables()
{
    for (QStringList *t : {&attTable, &agcTable, &modeTable, &filterTable, &yesNoTable, &nbTable})
        t->clear();
}

void labelRoutineNRD535()
{
    clearLabelTables();
    applyLimits(rxNRD535);
    attTable = kNrdAttenuators;
    filterTable = kNrd535Filters;
    modeTable = kNrd535Modes;
    // The ECSS option is the third of the set-up window's check boxes.
    if (slotNrdOption(2) == 1)
        modeTable << kNrd535EcssModes;
    else
        modeTable << QString() << QString();
    agcTable = kNrd535Agc;
    nbTable = kNrdNoiseBlankers;
}

void labelRoutineNRD545()
{
    clearLabelTables();
    applyLimits(rxNRD545);
    attTable = kNrdAttenuators;
    filterTable = kNrd545Filters;
    modeTable = kNrd545Modes;
    agcTable = kNrd545Agc;
    nbTable = kNrdNoiseBlankers;
}
