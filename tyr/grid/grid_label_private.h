#pragma once

#include "tyr/base/date.h"
#include "tyr/grid/grid.h"

namespace tyr {

/// Level type (LevelKind) of one of the old grid code; others stay.
int level_of_old_code(int ltype);
/// Variable number of one of the old grid code; others stay.
int variable_of_old_code(int var);

/// Gives a record with a code of the old grid code its `info` (level, time, name and `units`), and
/// its `date`, the time that the forecast is valid for.
void label_old_code(GridRec *grid, const DateRec &run);

} // namespace tyr
