#pragma once

#include <string>

#include "timefile/date.h"
#include "tyr/upper_air/report.h"

// Type 51, XML, which is written only: an element `obs` a report, with its levels in the elements
// mand_level, sig_level and wnd_level. Region, elevation (but as the surface's height) and `extra`
// aren't held. Heights of `wnd_level` are in feet, as the record's.

namespace tyr {

/// The file's opening and its end.
std::string xml_opening(const std::string &date_text);
std::string xml_end();

std::string xml_report(const UpaReport &report);

} // namespace tyr
