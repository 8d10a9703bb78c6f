#pragma once

#include <vector>

#include "tyr/upper_air/sounding_store.h"

// The store of the sounding in force, for the files of this room that fill it.

namespace tyr {

SoundingStore &sounding_store();

/// The arrays of kMaxSounding levels, allocated at first use.
std::vector<SoundLevel> &stored_temps();
std::vector<SoundLevel> &stored_winds();

} // namespace tyr
