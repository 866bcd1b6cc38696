#pragma once
// The AR7030's constants: its label tables and the texts of the pass band shift / BFO scale.
#include <QString>
#include <QStringList>

// Index 0..5: the RF attenuator settings the receiver knows.
extern const QStringList kAr7030Attenuators;
// Index 1..7; index 0 is empty, as the receiver numbers its modes from 1.
extern const QStringList kAr7030Modes;
extern const QStringList kAr7030Agc;
extern const QStringList kAr7030YesNo;

// The shift scale the panel and the cell editor offer: 86 slots, of which 0..84 hold
// "-4.2k" .. " 0.0k" .. "+4.2k" in steps of 0.1 kHz, and slot 85 stays empty.
constexpr int kAr7030ShiftSlots = 86;
extern QStringList ar7030ShiftTable;
QStringList makeAr7030ShiftTable();

// Fills the shared block for the AR7030: limits, memory size and the label tables.
// filterTable gets slots 0..6, left empty: the panel fills 1..6 from the filters fitted.
void labelRoutineAR7030();
