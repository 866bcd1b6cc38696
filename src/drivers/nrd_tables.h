#pragma once
// The JRC receivers' constants: label tables, limits and the ranges of the panels' bars.
#include <QStringList>

extern const QStringList kNrdAttenuators;     // both models
extern const QStringList kNrdNoiseBlankers;   // both models
extern const QStringList kNrd535Filters;
extern const QStringList kNrd535Agc;
// Codes 0..6; 7 and 8 ("AM-U", "AM-L") exist only with the ECSS option.
extern const QStringList kNrd535Modes;
extern const QStringList kNrd535EcssModes;
extern const QStringList kNrd545Filters;
extern const QStringList kNrd545Modes;
extern const QStringList kNrd545Agc;
// The DSP window's three label lists.
extern const QStringList kNrd545NrbcLabels;
extern const QStringList kNrd545NbLabels;
extern const QStringList kNrd545NotchLabels;

// A scroll bar: value at its top, at its bottom, and its steps (0: the widget's default).
struct NrdBar {
    int top;
    int bottom;
    int smallStep;
    int largeStep;
};
// NRD-535: pass band shift, and bandwidth control with the wide and the intermediate filter.
constexpr NrdBar kNrd535PassBandShiftBar{2000, -2000, 25, 200};
constexpr NrdBar kNrd535BwcWideBar{5500, 2000, 0, 0};
constexpr NrdBar kNrd535BwcIntBar{2200, 500, 0, 0};
// NRD-545.
constexpr NrdBar kNrd545BandwidthcontrolBar{999, 1, 0, 10};
constexpr NrdBar kNrd545PassBandShiftBar{230, -230, 0, 10};
constexpr NrdBar kNrd545IfgainBar{255, 0, 2, 10};
constexpr NrdBar kNrd545SquelchBar{255, 0, 2, 10};
constexpr NrdBar kNrd545ToneBar{255, 0, 13, 39};
constexpr NrdBar kNrd545VolumeBar{255, 0, 3, 10};

// Fill the shared block as each panel's load does first: limits, memory size, label tables.
// The NRD-535's mode table takes "AM-U" and "AM-L" only when the ECSS option is set, and two
// empty texts otherwise.
void labelRoutineNRD535();
void labelRoutineNRD545();
