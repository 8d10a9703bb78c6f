#pragma once

#include <X11/Xlib.h>

/// Handles of the connection and the window; null or 0 without them.
Display *ginq_display();
int ginq_screen();
Window ginq_window();
Pixmap ginq_pixmap();
Drawable ginq_target();
GC ginq_gc();
Visual *ginq_visual();
unsigned ginq_red_mask();
unsigned ginq_green_mask();
unsigned ginq_blue_mask();
/// Replaces the backing pixmap; sets the draw target, 0 for the backing pixmap.
void gset_pixmap(Pixmap id);
void gset_target(Drawable id);
