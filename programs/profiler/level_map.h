#pragma once

#include "programs/profiler/setup.h"

/// The level map: every station of one file at a level.

namespace tyr {

/// Draws the map's data and labels. @return stations in the file; -1 if it can't be opened
int plot_level_map(const DriverSetup &setup);

} // namespace tyr
