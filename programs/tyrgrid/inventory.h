#pragma once

#include "programs/tyrgrid/source.h"

namespace tyr {

/// Prints one line a grid on standard output: number, level, time, variable, units, size, and the
/// range of the values. With the word "heads" of `plot_param` no values are read.
/// @return number of grids that could be read
int list_grids(Sources *sources);

} // namespace tyr
