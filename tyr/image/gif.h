#pragma once

#include "tyr/image/image_rec.h"

/// GIF89a.

/// Reads the first picture of a file as 8-bit pixels with the file's colour table; colour tables of
/// single pictures aren't used. A picture smaller than the file's screen stands at its place, the
/// rest is 0; `transparent` takes the index that the file names. Damaged data ends the picture: the
/// rest stays 0, and the result is 1.
/// @param image  made by IMG_init
/// @return 1; 0 on failure, told by a message, with nothing to free
int GIF_read(const char *path, ImageRec *image, int header_only);

/// Writes a picture of any depth with the colours that occur (image_index), and leaves the palette
/// places in the image's pixels. With the transparent flag the pixel value `transparent` is
/// transparent: a window's writer puts the background's pixel there.
/// @return 1; 0 on failure, told by a message
int GIF_write(const char *path, ImageRec *image);

/// Makes picture number `i` of a loop (from 0). 1; 0, told, when it can't be had, with nothing to
/// free.
using GifSource = int (*)(int i, ImageRec *image);

/// Writes pictures of one size as a loop without end, each with its own colours. They are asked for
/// one by one and freed. `delays`: how long each stays, hundredths of a second.
/// @return 1; 0 on failure, told by a message, and no file then
int GIF_write_loop(const char *path, int count, const int *delays, GifSource next);

/// Rows in four passes; a transparent background. Both last for the process and start at 0.
void gset_gif_interlace(int on);
void gset_gif_transparent(int on);
