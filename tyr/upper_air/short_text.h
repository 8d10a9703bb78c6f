#pragma once

#include <string>

#include "tyr/upper_air/report.h"
#include "tyr/upper_air/words.h"

// Types 1 and 2: reports of 5 lines to 500 hPa, and of 7 lines to 100 hPa.
//
//     72451 85456 10234 24015 70067 ...     slots 850, 700, 500 hPa behind 1000; type 2 goes on
//     03  975 20456 888 15400 ...           count, and 14 or 21 entries; "000 00000" fills up
//     20012 20515 ... 99999                 winds at 16 or 21 fixed heights from 0 to 50,000 ft
//
// A report read from these forms has: slots 1, 3, 4, 5 (type 2: and 6, 7, 9, 11) and the surface;
// at most 14 or 21 significant levels, at or above 500 or 100 hPa; winds at the fixed heights
// alone, those that aren't known among them as Missing. No number, place, tropopause or maximum
// wind.

namespace tyr {

/// Sets type 1 or 2's heights, counts and levels. The cursor stands behind the heading's word.
void read_short_text(WordCursor &words, int type, UpaReport *report);

/// Appends a report. Significant levels that a mandatory level stands for get a Missing pressure.
void write_short_text(WordWriter &out, int type, UpaReport *report);

} // namespace tyr
