#pragma once

#include "tyr/image/image_rec.h"

/// Reads an image of any format: only its content counts, not its name. A first line that begins
/// with "** " is passed over. With `header_only` the size and kind are read and nothing is
/// allocated. The record is made anew (IMG_init); what it held isn't freed.
/// @return 1; 0 or -1 on failure, told by a message, with nothing to free
int IMG_read(const char *path, ImageRec *image, int header_only);
int IMG_read_file(const char *path, ImageRec *image);   ///< all of it
int IMG_read_header(const char *path, ImageRec *image); ///< the header only
