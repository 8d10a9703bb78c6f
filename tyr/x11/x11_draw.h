#pragma once

/// Drawing on the X11 devices: the graphics contexts of the four families and what the primitives
/// send. Nothing here needs the X11 headers. Everything does nothing without a draw target.

/// The families of primitives that have a context of their own.
enum class GxFamily { line, text, marker, fill };

/// Makes the contexts and the fill patterns where `create` is set, and puts them to their start:
/// clip rectangle, white on black, hairline, solid, bevel joins.
void gx_init_gcs(bool create);
void gx_free_gcs();

/// Sets the clip rectangle of all families: x, y, width, height in pixels.
void gx_clip(const short rect[4]);

/// Colour of a family by its index, and by whether it is the screen's black (for shadows).
void gx_set_colour(GxFamily family, int index);
void gx_set_black(GxFamily family);
/// Width in pixels, truncated.
void gx_set_width(GxFamily family, float width);
/// Dashes of the line family, by line type.
void gx_set_dash(int type);
/// Interior of the fill family: 1 solid, 2 the pattern of that index.
void gx_set_fill(int int_style, int style_index);

/// A polyline, and an area with its outline, of n points in world coordinates.
void gx_polyline(GxFamily family, int n, const float *points);
void gx_area(int n, const float *points);
/// A stroke of n points in device coordinates, a single one a dot.
void gx_stroke(GxFamily family, int n, const float *points);
/// A rectangle in device pixels, filled with the background.
void gx_clear_region(int left, int top, int width, int height);

/// Loads a font of the server for the text family. False if it hasn't got one of that name.
bool gx_load_font(const char *name);
/// A text of that font, upright, at a position in device pixels; the alignments are the kernel's.
void gx_text(int left, int top, const char *text, int horizontal, int vertical);

/// Creates the context and the patterns of the fill family (mode 0), and sets it up (0 and 1).
void gfill_init(int mode);
/// Frees the patterns.
void gfill_free();
