#pragma once
#include <QString>
#include <cstdint>

// Number text as our files and displays have always had it: a lenient reader,
// the classic format patterns, and the rounding rules, each named for what it does.
namespace numtext {

// The leading number of s, else 0. Blanks and tabs inside the number are skipped,
// "&H"/"&O" give hexadecimal and octal, an exponent "E"/"D" is honoured.
double Val(const QString &s);

// A "," from a locale's number format turned into "." before the text goes on.
QString commaToPoint(QString s);

// Val after turning "," into ".".
inline double valc(const QString &s) { return Val(commaToPoint(s)); }

// Greatest whole number not above x.
double floorInt(double x);
// To nearest, halves to even (the rounding of integer conversion and Round).
double roundHalfEven(double x);
// To nearest, halves away from zero (the rounding of the format patterns).
double roundHalfAway(double x);
// Halves to even, then held in 16 or 32 bits; outside them is an overflow run-time error.
int16_t cint(double x);
int32_t clng(double x);
// Toward zero, as a cast does, then held in 32 or 16 bits; outside them (or not a number) is an
// overflow run-time error. For values a caller has already made whole by its own rule (floorInt).
int32_t toInt(double x);
int16_t toInt16(double x);

// Format x by a numeric pattern of "0", "#", "." and literal characters, e.g. "00000.000",
// "####0.00", "0.0k", "00". The decimal sign is always ".".
QString format(double x, const QString &pattern);

// Format text by a pattern of "@" placeholders and literal characters, e.g. "@@@@ ": the text
// stands right-aligned in the placeholders; a text longer than they are is shown whole, its
// extra characters where the first "@" stands. A pattern without "@" is returned as it is.
QString formatText(const QString &s, const QString &pattern);

// The plain text of a number as the program writes it to its files: shortest form,
// at most 7 significant digits for singles and 15 for doubles, "." as decimal sign.
QString str(float x);
QString str(double x);
// The number text of the lists and messages: str with a leading blank where a sign would stand,
// so " 15", " 0" and "-5.5".
QString strBlank(double x);

} // namespace numtext
