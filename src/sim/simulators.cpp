#include "simulators.h"

std::unique_ptr<SimDevice> makeSimulator(int rxType)
{
    switch (rxType) {
    default:
        return nullptr;
    }
}
