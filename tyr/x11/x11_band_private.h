#pragma once

#include "tyr/x11/x11_band.h"

namespace tyr {

/// Takes the band back to none; the limits too.
void band_reset();
/// The pointer went down, moved, went up there (window pixels).
void band_press(int x, int y);
void band_move(int x, int y);
void band_release(int x, int y);

} // namespace tyr
