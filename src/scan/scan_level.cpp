#include "scan_level.h"
#include "core/shared_state.h"

namespace scan {

float compensatedLevel(int rxType, float reading, int attenuation)
{
    switch (rxType) {
    case rxAR7030: return float(double(reading) + 10.0 / 6.0 * (attenuation - 1));
    case rxNRD535:
    case rxNRD545: return float(double(reading) + 20.0 / 6.0 * attenuation);
    case rxRX320: return reading;
    default: return 0;
    }
}

} // namespace scan
