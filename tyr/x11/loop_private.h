#pragma once

#include "tyr/x11/loop.h"

namespace tyr {

/// Makes room for another program's next picture, which it draws into the pixmap that it knows:
/// what stood there becomes a frame, and the pixmap, cleared, the last frame.
void loop_take_frame();

} // namespace tyr
