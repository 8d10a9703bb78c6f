#pragma once

#include "programs/profiler/setup.h"

/// The time-height section: a column a file, the oldest at the left, up to a height of 17000 m.

namespace tyr {

/// Draws the section's data and labels. The setup's date is afterwards that of the last file.
/// @return columns drawn
int plot_section(DriverSetup *setup);

} // namespace tyr
