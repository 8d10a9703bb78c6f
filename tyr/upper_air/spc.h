#pragma once

#include "tyr/upper_air/foreign.h"

// Type 63: soundings as the Storm Prediction Center's programs keep them, one or more in a file.
//
//     %TITLE%
//      OAX   140616/1900  41.32,-96.37
//        LEVEL       HGHT       TEMP       DWPT       WDIR       WSPD
//     %RAW%
//      1000.00,    34.00,  -9999.00,  -9999.00,  -9999.00,  -9999.00
//     %END%
//
// Missing is -9999 or "nan". The place behind the time may be left out.

namespace tyr {

ForeignFile read_spc(std::string_view text, Refusals &refusals);

} // namespace tyr
