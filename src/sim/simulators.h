#pragma once
// The built-in simulator of a receiver model (rxType 1..4), or none.
#include "sim_device.h"

#include <QString>
#include <QStringList>
#include <memory>

std::unique_ptr<SimDevice> makeSimulator(int rxType);
// The simulator named as on brelvox-sim's command line ("rx320", ...), or nullptr.
std::unique_ptr<SimDevice> makeSimulatorByName(const QString &name);
// The names makeSimulatorByName knows.
QStringList simulatorNames();
