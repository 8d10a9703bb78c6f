#pragma once

#include "tyr/upper_air/report.h"
#include "tyr/upper_air/words.h"

// Types 3, 4 and 5: all mandatory levels, tropopause and maximum wind, and both lists.
//
//     OUN 00123 20456 18012 92789 ...       slots 1 to 16, three groups each
//     -7345 ...                             slots 17 to 21 where known, in a line of their own
//     88123 70145 24060 77250 24580         tropopause, maximum wind; X for none
//     965 23456 ... X                       significant levels, seven to a line
//     00 18012 01 19515 ... X               winds by thousand feet, seven to a line
//
// Type 3 leaves out slot 2 without a pressure and has 28 entries in each list, X filling up; types
// 4 and 5 end their lists with X and the report with a line "$". Type 5's heading is
// "72357:OUN:35.23:-97.46".
//
// What the forms can't hold: region, elevation and (types 3 and 4) number and place; the height of
// the surface; parts of a hPa at 10 hPa and above; the thousands of a pressure at and above 1100
// hPa; heights of winds but for whole thousands of feet below 100,000; what lies beyond 28 levels
// (type 3); significant levels at a mandatory level with a height (type 3).

namespace tyr {

/// The cursor stands behind the heading's word.
void read_row_text(WordCursor &words, int type, UpaReport *report);
void write_row_text(WordWriter &out, int type, const UpaReport &report);

/// Takes the heading's word of type 5 apart.
void read_placed_heading(std::string_view word, UpaReport *report);

/// Passes over a report of type 3: 12 lines, one more where levels above 10 hPa have a line end of
/// their own.
void skip_fixed_rows(WordCursor &words);

} // namespace tyr
