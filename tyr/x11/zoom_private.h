#pragma once

#include "tyr/x11/zoom.h"

namespace tyr {

/// false where the frame on show has to be shown anew.
bool zoom_undo();

} // namespace tyr
