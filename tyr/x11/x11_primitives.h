#pragma once

#include <X11/Xlib.h>

/// Graphics contexts of the families of primitives; null without a window.
GC ginq_line_gc();
GC ginq_marker_gc();
GC ginq_fill_gc();
GC ginq_text_gc();

/// Fills a rectangle of a picture with the background, in device pixels.
void gx_fill_background(Drawable where, int left, int top, int width, int height);

/// X11 function of the line context: GXcopy, or GXxor for a rubber band.
void gset_gc_function(int function);
int ginq_gc_function();
/// A line, and a rectangle by two corners, in device pixels, with the line context.
void gdraw_band_line(Drawable where, const short from[2], const short to[2]);
void gdraw_band_box(Drawable where, const short a[2], const short b[2]);
