#pragma once

// What the HPGL device draws for the kernel (gks/device_private.h).

#include <span>

#include "tyr/gks/device_private.h"
#include "tyr/paper/hpgl.h"

namespace tyr {

/// The primitives, of points in device coordinates, with the attributes of the kernel's state.
void ghp_polyline(int n, const float *points);
void ghp_area(int n, const float *points);
void ghp_begin_markers();
void ghp_stroke(int n, const float *points);
void ghp_begin_text();
void ghp_glyph(std::span<const GlyphPoint> points);

} // namespace tyr
