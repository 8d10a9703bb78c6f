#pragma once

#include "tyr/image/image_rec.h"

/// PNG, through libpng. Both routines tell of a failure by a message with libpng's reason.

/// Reads a PNG. Palettes and greys keep their bits (2-bit ones become 8-bit), the rest has masks
/// and 24 bits, or 32 with an alpha channel, which isn't kept; 16-bit parts become 8-bit.
/// @param image  made by IMG_init
/// @return 1; 0 on failure, with nothing to free
int IMG_read_png(const char *path, ImageRec *image, int header_only);

/// Writes a picture of any depth with a palette of 256 colours (image_index) and texts for title
/// (the plot's), program and time. @return 1 or 0
int IMG_write_png(const char *path, ImageRec *image);
