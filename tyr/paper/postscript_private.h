#pragma once

// What the PostScript device draws for the kernel (gks/device_private.h).

#include <span>
#include <string_view>

#include "tyr/gks/device_private.h"
#include "tyr/paper/postscript.h"

namespace tyr {

/// The primitives, of points in device coordinates, with the attributes of the kernel's state. A
/// marker's stroke of one point is a dot as long as it is wide: paper shows no line without length.
void gps_polyline(int n, const float *points);
void gps_area(int n, const float *points);
void gps_begin_markers(int n);
void gps_stroke(int n, const float *points);
/// A text's position in world coordinates; then its characters one by one.
void gps_begin_text(const float pos[2], const char *text);
void gps_glyph(std::span<const GlyphPoint> points);
/// x minimum, x maximum, y minimum, y maximum.
void gps_clear_region(const float rect[4]);

/// Writes a text as it stands.
void gps_put(std::string_view text);
/// A line with a count behind `what`.
void gps_put_count(std::string_view what, int n);
/// A line with a place and a text behind `what`.
void gps_put_place(std::string_view what, const float pos[2], std::string_view text);

/// Opens for a redraw of a window's picture: `tyrps_print`, `PSPRINT` or "tyr.ps". False when that
/// fails.
bool gps_open_print();

} // namespace tyr
