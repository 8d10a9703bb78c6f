#pragma once

#include "tyr/image/image_format_private.h"
#include "tyr/x11/window_image.h"

namespace tyr {

/// The picture on the screen in any format: as the routines of window_image.h.
int write_window_image(const ImageFormat &format, const char *path);

} // namespace tyr
