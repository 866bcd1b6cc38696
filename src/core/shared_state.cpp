#include "shared_state.h"

QString dirPath;
QString rxLatitude;
QString rxLongitude;
int16_t rxType = 0;
std::array<float, 33> iniSlot{};

std::array<QString, 9> regionCodes;
std::array<QString, 19> stepTable;
std::array<int16_t, 3> startStepTable{};
std::array<QString, kFileKinds + 1> dirTable;
std::array<QString, kFileKinds + 1> prefixTable;
std::array<QString, kFileKinds + 1> patternTable;
std::array<QString, kFileKinds + 1> defaultNameTable;
std::array<QString, kFileKinds + 1> fullDirTable;

double freqUpperLimit = 0;
double freqLowerLimit = 0;
int lastMemoryIndex = 0;
QStringList attTable, agcTable, modeTable, filterTable, yesNoTable, nbTable;

double trackFreq = 0;
bool delayBusy = false;
bool last20Enabled = false;
bool trackDataLoaded = false;
bool dialActive = false;
QString ltText, utcText, utcStamp;
std::array<int32_t, kPositionCapacity> formLeft{}, formTop{};
std::array<bool, kPositionCapacity> isOpenFlags{};

double rx320Freq = 0;
int16_t rx320Bandwidth = 0, rx320Pbs = 0, rx320Agc = 0, rx320Bfo = 0, rx320Mode = 0,
        rx320Volume = 0, rx320Line = 0;

void fillFixedTables()
{
    regionCodes = {"NA", "CA", "SA", "EU", "AF", "ME", "AS", "AU", "PA"};
    stepTable = {"0.001", "0.002", "0.005", "0.01", "0.02", "0.05", "0.1", "0.2", "0.5", "1",
                 "2", "3", "5", "9", "10", "12.5", "25", "50", "100"};
    startStepTable = {5, 9, 10};
    dirTable = {"", "BDXC\\", "OWN\\", "RX2DB\\", "LOG\\", "RX2DB\\", "SAN\\", "PAN\\", "MEM\\",
                "FSP\\", "F320\\", "SFL\\", "SFP\\", "RTTY\\", "PAN\\", "TPR\\"};
    prefixTable = {"", "BDX_", "OWN_", "", "LOG_", "", "SAN_", "PAN_", "MEM_", "FSP_", "",
                   "SFL_", "SFP_", "RTY_", "PAN_", "TPR_"};
    patternTable = {"", "BDX_*TOE.TXT;ADX_*TOW.TXT;ILG_*TOW.TXT", "OWN_*.TXT", "*.FTL",
                    "LOG_*.TXT", "*.FTL", "SAN_*.TXT", "PAN_*.TXT", "MEM_#*.TXT", "FSP_*.TXT",
                    "*.320", "SFL_*.TXT", "SFP_*.TXT", "RTY_*.TXT", "PAN_*.TXT", "TPR_*.TXT"};
    defaultNameTable = {"", "", "", "", "log_xyzxyzxyzxyz.txt", "", "san_xyzxyzxyzxyz.txt",
                        "pan_xyzxyzxyzxyz.txt", "mem_#xyzxyzxyzxy.txt", "fsp_xyzxyzxyzxyz.txt",
                        "", "sfl_xyzxyzxyzxyz.txt", "sfp_xyzxyzxyzxyz.txt",
                        "rty_xyzxyzxyzxyz.txt", "", "tpr_xyzxyzxyzxyz.txt"};
}

void computeFullDirTable()
{
    for (int i = 1; i <= kFileKinds; ++i)
        fullDirTable[i] = dirPath + dirTable[i];
}

RxLimits limitsFor(int type)
{
    switch (type) {
    case rxAR7030: return {10.0, 32016.0, 99};
    case rxNRD535: return {10.0, 29999.999, 199};
    case rxRX320: return {100.0, 30000.0, 99};
    case rxNRD545: return {10.0, 29999.999, 999};
    default: return {10.0, 30000.0, 99};
    }
}

void applyLimits(int type)
{
    const RxLimits l = limitsFor(type);
    freqLowerLimit = l.lower;
    freqUpperLimit = l.upper;
    lastMemoryIndex = l.lastMemory;
}

void resetSharedState()
{
    dirPath.clear();
    rxLatitude.clear();
    rxLongitude.clear();
    rxType = 0;
    iniSlot.fill(0);
    fillFixedTables();
    for (auto &s : fullDirTable)
        s.clear();
    freqUpperLimit = freqLowerLimit = 0;
    lastMemoryIndex = 0;
    for (QStringList *t : {&attTable, &agcTable, &modeTable, &filterTable, &yesNoTable, &nbTable})
        t->clear();
    trackFreq = 0;
    delayBusy = false;
    last20Enabled = false;
    trackDataLoaded = false;
    dialActive = false;
    ltText.clear();
    utcText.clear();
    utcStamp.clear();
    formLeft.fill(0);
    formTop.fill(0);
    isOpenFlags.fill(false);
    rx320Freq = 0;
    rx320Bandwidth = rx320Pbs = rx320Agc = rx320Bfo = rx320Mode = rx320Volume = rx320Line = 0;
}
