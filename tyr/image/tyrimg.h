#pragma once

#include "tyr/image/image_rec.h"

/// TYRIMG, the system's own format: lines of text, with the picture's place on the map, and one
/// byte a pixel behind them, plain, deflated or in a second file.

/// Reads a picture as 8-bit greys without a table. A short file gives a short picture, the rest 0;
/// a deflated one that ends early is looked at ten times, a second apart, as it may still be
/// written. The record is made anew (IMG_init). Names in the file are names of plain files: no
/// command is run and no stream opened.
/// @return 1; -1 on failure, 0 for no memory, told by a message, with nothing to free
int IMG_read_tyr(const char *path, ImageRec *image, int header_only);

/// Writes a picture, reduced to one byte a pixel: the mean of a 32-bit pixel's colours, else the
/// low byte. Its domain is written where the format has a word for it, with spacing and size fitted
/// to the picture's (image_fit_domain). @return 1 or 0
int IMG_write_tyr(const char *path, ImageRec *image, int compress);
