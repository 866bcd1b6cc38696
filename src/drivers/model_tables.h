#pragma once
// Per-model constants: serial settings, limits and label tables, read by drivers, panels and
// windows alike. The label routines fill the shared block as the panel's load does first.
#include <QString>
#include <QStringList>

struct ModelSerial {
    const char *settings; // "1200,N,8,1"
};
ModelSerial serialFor(int rxType);

// Filter widths of the RX-320 in Hz, index 0..33; index 33 is the widest.
extern const QStringList kRx320FilterWidths;
extern const QStringList kRx320Modes;
extern const QStringList kRx320Agc;

void labelRoutineRX320();
void labelRoutineNoRx();
