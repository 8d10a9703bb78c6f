#pragma once

#include "tyr/map/map_entry.h"

namespace tyr {

/// Begins a list of entries: the sum of marks that are drawn, no open block.
void start_map_entries(int mode);

} // namespace tyr
