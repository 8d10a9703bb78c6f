#pragma once

#include <X11/Xlib.h>

#include "tyr/gks/device_private.h"

namespace tyr {

/// The graphics context of a family; null without a window.
GC &gx_context(Family family);
/// Gives the font of the server back.
void gx_free_font();

} // namespace tyr
