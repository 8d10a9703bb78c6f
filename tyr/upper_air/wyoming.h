#pragma once

#include "tyr/upper_air/foreign.h"

// Type 62: the sounding tables of the University of Wyoming, one or more in a file, as plain text
// or in the html that the server sends.
//
//     72357 OUN Norman Observations at 12Z 22 Dec 2018
//        PRES   HGHT   TEMP   DWPT   RELH   MIXR   DRCT   SKNT   THTA   THTE   THTV
//      1000.0     65
//       966.0    345    3.6   -1.2     71   3.64     55      2  279.5  289.8  280.1
//
// Columns are seven characters wide; a blank one is Missing. Speeds are knots, or m/s where the
// line of units says so. Place and elevation come from the lines behind the table.

namespace tyr {

ForeignFile read_wyoming(std::string_view text, Refusals &refusals);

} // namespace tyr
