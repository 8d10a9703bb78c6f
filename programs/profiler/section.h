#pragma once

#include <string>

#include "programs/profiler/setup.h"

/// The time-height section: a column a file (or, where the setup tells a number of columns, one for
/// every time in the files), the oldest at the left, up to a height of 17000 m.

namespace tyr {

/// Draws the section's data and labels. The setup's date is afterwards that of the last file.
/// @return columns drawn
int plot_section(DriverSetup *setup);

/// Columns of a section of every time that a station has in the files from a date on.
int count_columns(const std::string &station, DateRec date);

} // namespace tyr
