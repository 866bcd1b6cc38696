#pragma once
// The signal level as the measuring windows chart it, in S units (0 to 9, then one unit a 6 dB
// over S9): the receiver's reading with the loss of its attenuator, read once at Start, added back.
#include <cstdint>

namespace scan {

// AR7030: setting 1 is flat and each step 10 dB; NRD: 20 dB when on; RX-320 as read; no receiver 0.
float compensatedLevel(int rxType, float reading, int attenuation);

} // namespace scan
