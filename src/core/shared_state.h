#pragma once
// The process-wide shared block: what every window and driver reads and writes.
#include <QString>
#include <QStringList>
#include <array>
#include <cstdint>

// Window numbers: the line of each window in "formpositions.ini".
enum class Win : int {
    frm320Files = 1, frmAbout, frmAR7030, frmBdxc, frmConvertILG, frmIlg2rx, frmILGfinddbf,
    frmIlgqsort, frmIlgquery, frmLast20, frmLoadfile, frmLog, frmLogFormat, frmLoginput,
    frmLogsort, frmMemcell, frmMemman, frmNoRx, frmNRD535, frmOwn, frmPropagation, frmRtty,
    frmRX320, frmRxClock, frmRxTimer, frmSavefile, frmScratchpad, frmSetUp, frmSmeter,
    unused30, unused31, frmTracking, frmUserdefs, frmWelcome, frmAdvancedDSP, frmAero2rx,
    frmAeroquery, frmNRD545, frmScanlist, frmScanpairs, frmUserdefs545, frmProp2prt2,
    frmScanband, frmMarkfreqs, frmProphisto
};
constexpr int kWindowCount = 45;      // lines written to the positions file
constexpr int kPositionCapacity = 47; // the positions arrays hold index 0..46: a 47th line is a subscript error

// rxType values
enum RxType : int16_t { rxNone = 0, rxAR7030 = 1, rxNRD535 = 2, rxRX320 = 3, rxNRD545 = 4 };

constexpr int kFileKinds = 15;

// --- read from "brelvox2.ini" ---
extern QString dirPath;
extern QString rxLatitude;
extern QString rxLongitude;
extern int16_t rxType;
extern std::array<float, 33> iniSlot; // index 0 never used

// Named slots
inline float &slotCommPort() { return iniSlot[1]; }
inline float &slotRxTargetArea() { return iniSlot[2]; }
inline float &slotLt2Utc() { return iniSlot[3]; }
inline float &slotDimBdxc() { return iniSlot[4]; }
inline float &slotDimOwn() { return iniSlot[5]; }
inline float &slotDimLog() { return iniSlot[6]; }
inline float &slotDimIlg() { return iniSlot[7]; }
inline float &slotStartstep() { return iniSlot[8]; }
inline float &slotNrdOption(int i) { return iniSlot[10 + i]; } // 0..3
inline float &slotArOption(int i) { return iniSlot[14 + i]; }  // 0..3
inline float &slotMute(int i) { return iniSlot[18 + i]; }      // 0..1
inline float &slotFreqcorr(int i) { return iniSlot[20 + i]; }  // 0..1
inline float &slotDisableLLLR() { return iniSlot[22]; }
inline float &slotAgctc(int i) { return iniSlot[23 + i]; }     // 0..2
inline float &slotNrbc(int i) { return iniSlot[26 + i]; }      // 0..1
inline float &slotLevelL() { return iniSlot[28]; }
inline float &slotLevelR() { return iniSlot[29]; }
inline float &slotDisableLL() { return iniSlot[30]; }
inline float &slotLevel() { return iniSlot[31]; }

// --- fixed tables ---
extern std::array<QString, 9> regionCodes;
extern std::array<QString, 19> stepTable;
extern std::array<int16_t, 3> startStepTable;
extern std::array<QString, kFileKinds + 1> dirTable;         // index 1..15
extern std::array<QString, kFileKinds + 1> prefixTable;
extern std::array<QString, kFileKinds + 1> patternTable;
extern std::array<QString, kFileKinds + 1> defaultNameTable;
extern std::array<QString, kFileKinds + 1> fullDirTable;

// --- per receiver, set by the panel's label routine ---
extern double freqUpperLimit;
extern double freqLowerLimit;
extern int lastMemoryIndex;
extern QStringList attTable, agcTable, modeTable, filterTable, yesNoTable, nbTable;

// --- other shared variables ---
extern double trackFreq;
extern bool delayBusy;
extern bool last20Enabled;
extern bool trackDataLoaded;
extern bool dialActive;
extern QString ltText, utcText, utcStamp;
extern std::array<int32_t, kPositionCapacity> formLeft, formTop;
extern std::array<bool, kPositionCapacity> isOpenFlags;
inline bool &isOpen(Win w) { return isOpenFlags[size_t(w)]; }
// The panel window of a receiver type 0..4 (rxType).
inline Win panelWin(int type)
{
    static constexpr Win panels[] = {Win::frmNoRx, Win::frmAR7030, Win::frmNRD535, Win::frmRX320, Win::frmNRD545};
    return panels[type];
}

// --- the RX-320's remembered settings (the receiver cannot report them) ---
extern double rx320Freq;
extern int16_t rx320Bandwidth, rx320Pbs, rx320Agc, rx320Bfo, rx320Mode, rx320Volume, rx320Line;

// Fill the fixed tables (start step 2).
void fillFixedTables();
// fullDirTable(i) = dirPath + dirTable(i).
void computeFullDirTable();
// Limits and memory size of a model, as the label routines set them.
struct RxLimits { double lower; double upper; int lastMemory; };
RxLimits limitsFor(int rxType);
void applyLimits(int rxType);
// Everything back to its state at process start (tests use this between cases).
void resetSharedState();
