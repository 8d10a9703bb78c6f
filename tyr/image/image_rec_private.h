#pragma once

#include "tyr/base/whole_file.h"
#include "tyr/image/image_rec.h"

namespace tyr {

/// Whether size, storage and row length agree and stay within the limits; tells in the name of
/// `routine` if not.
bool image_fits(const char *routine, const ImageRec &image);
/// Zeroed data of a record that fits, or a zeroed table of `count` colours. False for no memory.
bool image_allocate(ImageRec *image);
bool image_allocate_colors(ImageRec *image, int count);
/// Opens an image file for reading and passes over a first line that begins with "** ". Null when
/// it can't be opened, silently.
FilePtr image_open(const char *path);
/// A part of a colour, 0 to 1, as a whole number up to `full`, truncated.
unsigned image_color_level(float part, unsigned full);
/// Closes a file that was written, which then has its name. False with a message in the name of
/// `routine` when not all of it went out.
bool image_close(const char *routine, const char *path, WholeFile &file);

} // namespace tyr
