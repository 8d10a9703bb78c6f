#pragma once

#include "tyr/image/image_rec.h"

/// XWD, the dump format of X11 windows, version 7: all numbers big-endian, pixels as they are.
/// Failures are told on the standard error stream.

/// @param image  made by IMG_init; its depth is the most that the picture may have (0: 32)
/// @return 1; 0 on failure, with nothing to free
int IMG_read_xwd(const char *path, ImageRec *image, int header_only);

/// Writes the pixels as they stand, with `info` as the window's name. @return 1 or 0
int IMG_write_xwd(const char *path, ImageRec *image);
