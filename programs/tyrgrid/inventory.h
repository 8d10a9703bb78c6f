#pragma once

#include "tyr/grid_files/grid_choice.h"

namespace tyr {

/// Prints one line a grid on standard output: number, level, time, variable, units, size, and the
/// range of the values. With the word "heads" of `plot_param` no values are read.
/// @return number of grids that could be read
int list_grids(GridChoice *choice);

} // namespace tyr
