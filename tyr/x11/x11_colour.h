#pragma once

#include <string>

/// Colours of the X11 devices: pixels by index, the colour map, the background.

/// Pixel of a colour index, -1 for the background; -1 for one that hasn't been given.
int ginq_pixel(int index);
int ginq_bg_pixel();

/// Chooses the colour map when the window stands: a private one where asked for (the local map
/// flag, `LOCAL_CMAP`, `tyrlocal_cmap`), else the screen's. No index has a pixel then.
void gcolor_init();
/// Frees a private colour map.
void gx_free_colormap();

/// Gets a pixel for a colour: a cell of its own where the screen has such (`*read_write`, which
/// goes off for good where it hasn't), else a shared one. @return the pixel
int gx_store_colour(int index, float red, float green, float blue, bool *read_write);

/// The colour that the background comes to: the one given, else a name that the server knows, else
/// the screen's black (white where inverse). It becomes the background pixel.
/// @param[in,out] rgb  in: the colour where `given`; out: what the server made of it
void gx_set_background(bool given, const std::string &name, bool inverse, float rgb[3]);
