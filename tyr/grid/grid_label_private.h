#pragma once

#include "tyr/base/date.h"
#include "tyr/grid/grid.h"

namespace tyr {

/// Gives a record with a code of the old grid code its `info` (level, time, name and `units`), and
/// its `date`, the time that the forecast is valid for.
void label_old_code(GridRec *grid, const DateRec &run);

} // namespace tyr
