#pragma once
// The built-in simulator of a receiver model (rxType 1..4), or none.
#include "sim_device.h"

#include <memory>

std::unique_ptr<SimDevice> makeSimulator(int rxType);
