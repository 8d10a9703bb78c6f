#pragma once

#include "tyr/grid_files/grid_shelf.h"

namespace tyr {

/// Draws the variables of the resource `variable`, or the grids of `grid_num`, over each other, on
/// the domain of `plot_domain` or `region` or, without either, on that of the first grid. The first
/// field of no told type is filled and the others are lines; winds are arrows. A window stays for
/// zooming.
/// @return ExitCode
int draw_grids(GridShelf *shelf);

} // namespace tyr
