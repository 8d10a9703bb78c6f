#pragma once

/// Draws an image file on a window: a background of a map. Its colours are found or made in the
/// colour table, where the screen has one.
/// @param transparent  colour word of the pixels that aren't drawn; null or empty: the background
/// @param x, y         pixels from the upper left of the clip rectangle; a negative one from its
///                     right or lower edge
/// @return 1; 0 where there is no window or the file can't be read
int gdraw_image_file(const char *file, const char *transparent, int x, int y);
