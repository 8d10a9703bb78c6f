#pragma once

#include "tyr/grid_files/grid_choice.h"

namespace tyr {

/// Writes the grids into the file of the resource `out_file`, in the kind that `output` tells
/// (netcdf, binary, text, old) or, without it, the ending of the name (.nc, .cdf; .bin); else text.
/// @return success, told
bool write_grids(GridChoice *choice);

} // namespace tyr
