#pragma once
// Invented ILG tables of our own, written with shapelib's writer: the demo's tables, and tables
// of any size in frequency order for tests and benchmarks.
#include "data/ilg_convert.h"

#include <QString>
#include <QVector>

namespace ilgtables {

// Writes records as a dBASE table at path (Null fields as dBASE Nulls); false on failure.
bool write(const QString &path, const QVector<ilg::Record> &records);

// A record from plain texts in field order; an empty text is a Null.
ilg::Record record(const QStringList &fields);

// The demo's short-wave and long/medium-wave stations: on the simulated band's frequencies, in
// frequency order, with Nulls, every status and every area.
QVector<ilg::Record> shortWave();
QVector<ilg::Record> longMediumWave();

// count invented stations in ascending frequency from 2300 kHz, statuses and areas in turn.
QVector<ilg::Record> many(int count);

// The invented Aero list of the demo: text before the list, continuations, values of 1000,
// networks on adjacent lines.
QStringList aeroList();

} // namespace ilgtables
