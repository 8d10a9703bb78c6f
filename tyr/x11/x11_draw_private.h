#pragma once

#include <span>

#include "tyr/gks/device_private.h"

/// Drawing on the X11 devices: the graphics contexts of the four families and what the primitives
/// send. Nothing here needs the X11 headers. Everything does nothing without a draw target.

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
