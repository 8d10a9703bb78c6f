#pragma once

#include "tyr/x11/frames.h"

namespace tyr {

/// For the rooms above: sets the frame on show; takes a frame out of the table and frees its
/// pixmap.
void frames_set_current(int n);
void frames_remove(int n);

} // namespace tyr
