#pragma once

#include <string>
#include <vector>

#include "tyr/upper_air/held_report.h"

namespace tyr {

/// Writes reports to a file in the form that the word names ("short", "longer", "fixed", "free",
/// "placed", "netcdf", "netcdf2", "digest", "xml", "raw"; null or empty: by the name's ending,
/// "placed" for any other). "raw" takes one sounding. @return an exit code; a failure is told
int write_reports(const std::string &name, const char *word, const std::vector<HeldReport> &held);

/// The same for the sounding in force, of which "raw" alone can be made.
int write_sounding(const std::string &name, const char *word);

} // namespace tyr
