#pragma once

#include <span>

#include "tyr/gks/device_private.h"

/// Drawing on the X11 devices: the graphics contexts of the four families and what the primitives
/// send. Nothing here needs the X11 headers. Everything does nothing without a draw target.

/// Makes the contexts and the fill patterns where `create` is set, and puts them to their start:
/// clip rectangle, white on black, hairline, solid, bevel joins.
void gx_init_gcs(bool create);
void gx_free_gcs();

/// All families clip at the selected viewport.
void gx_clip();

/// An attribute of the kernel has a new value: the context of its family takes it over. Widths are
/// truncated to pixels.
void gx_attribute(ObjectKind kind);
/// A family draws in the screen's black (for shadows).
void gx_set_black(tyr::Family family);

/// A polyline, and an area with its outline, of n points in device coordinates.
void gx_polyline(int n, const float *points);
void gx_area(int n, const float *points);
/// A stroke of a marker of n points in device coordinates, a single one a dot.
void gx_stroke(int n, const float *points);
/// The strokes of a character.
void gx_glyph(std::span<const tyr::GlyphPoint> points);
/// A rectangle in device coordinates (x minimum, x maximum, y minimum, y maximum; y at the low side
/// is the larger), filled with the background.
void gx_clear_region(const float rect[4]);

/// Loads a font of the server for the text family. False if it hasn't got one of that name.
bool gx_load_font(const char *name);
/// A text of that font, upright, at a position in device coordinates, `aside` pixels to the lower
/// right; the alignments are the kernel's.
void gx_text(float x, float y, int aside, const char *text, int horizontal, int vertical);

/// Creates the context and the patterns of the fill family (mode 0), and sets it up (0 and 1).
void gfill_init(int mode);
/// Frees the patterns.
void gfill_free();
