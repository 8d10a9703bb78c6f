#pragma once

#include <X11/Xlib.h>

/// The colour map in use: the private one if there is one, else the screen's.
Colormap ginq_colormap();
void gset_colormap(Colormap map);
void gset_default_colormap(Colormap map);
