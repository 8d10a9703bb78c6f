#pragma once

#include "tyr/upper_air/foreign.h"

// Type 61: the WMO's upper-air bulletins as they arrive, codes FM 32 PILOT and FM 35 TEMP of the
// Manual on Codes (WMO-No. 306, volume I.1), behind any headings. The parts of a station's ascent
// become one report, wherever in the file they stand:
//
//     TTAA, TTCC  mandatory levels, tropopause, maximum wind
//     TTBB, TTDD  significant levels; winds by pressure (21212), which get the height of the
//                 mandatory levels around them, or that of the standard atmosphere
//     PPBB, PPDD  winds by height: in thousands of feet in WMO blocks 70 to 78, else in units of
//                 300 m (or 500 m)
//
// Day and hour of the message tell ascents apart, year and month come from a date in the file's
// name (8 digits, "20191029"). Speeds in m/s, as the day says, become knots. Of several tropopauses
// the lowest stays, of several maxima of wind the strongest. The identifier is that of a line
// "MANxxx" or "SGLxxx" ahead of the part, else the station's number. Reports of ships, mobile
// stations and dropsondes are told and passed over, as is the rest of a part from a group on that
// can't be read.

namespace tyr {

/// True for a text that has the first word of a part.
bool is_bulletin(std::string_view head);

ForeignFile read_bulletins(std::string_view text, Refusals &refusals);

} // namespace tyr
