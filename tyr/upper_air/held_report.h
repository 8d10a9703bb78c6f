#pragma once

#include <string>
#include <vector>

#include "tyr/base/date.h"
#include "tyr/upper_air/report.h"

// The reports of all files that were named, as the program works on them.

namespace tyr {

struct HeldReport {
    UpaReport report;
    DateRec date; ///< of its file
};

/// What the user calls a station: the identifier, or the WMO number in five digits.
std::string station_of(const UpaReport &report);

/// Adds the reports of a file of any form that can be read, or (told) none. Where a file tells the
/// day of the month alone, as bulletins do, month and year are those of the last such day up to the
/// resource "current", which is now where it isn't set.
/// @return success
bool hold_reports(const std::string &path, std::vector<HeldReport> *held);

/// The reports of the stations that were named, by identifier (without case) or number, in the
/// order of the names; all for no names. A name that isn't there is told.
std::vector<HeldReport> chosen_reports(const std::vector<HeldReport> &held,
                                       const std::vector<std::string> &names);

/// A file of one raw sounding.
bool is_raw_sounding(const std::string &path);

/// Puts a report's sounding in force and works out all of it. @return success; told where not
bool analyse(const HeldReport &held);

} // namespace tyr
