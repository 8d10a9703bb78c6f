#pragma once

// The picture device: PNG, SVG and PDF by cairo, without a server (gks/device_private.h). Unit: the
// point, y upward, as on PostScript, whose rules for colours, widths, dashes and fills it follows.
//
// Its words, behind the target: `sz=WxH` in inches or a name of paper, `port` (upright), `land`;
// `dpi=N` of a PNG file (110); `color` (at the start), `gray`; `scale`, `lwidth` as on PostScript;
// `bg=COLOUR` (white) and `bg=none`.

#include <span>
#include <string>
#include <vector>

#include "tyr/gks/device_private.h"

namespace tyr {

/// Whether a file's ending is one of a picture: .png, .svg, .pdf.
bool is_picture_name(const std::string &name);

/// Begins a page. `words` are the target and the device words; "%d" (also "%02d") in the target is
/// the number of the picture, from 1. Pictures of one PDF name are the pages of one file.
/// 0, or -1 with a report.
int gpic_open_ws(const std::vector<std::string> &words);
/// Red, green and blue of the paper.
const float *gpic_paper();
/// Ends the page and writes the file. -1 if it didn't all go out, told.
int gpic_close();

/// The primitives, with the attributes of the kernel's state.
void gpic_polyline(int n, const float *points);
void gpic_area(int n, const float *points);
void gpic_begin_markers();
void gpic_stroke(int n, const float *points);
/// A text; its characters follow one by one. In SVG and PDF it also stands as text that isn't seen,
/// so that it can be searched and selected.
void gpic_begin_text(const char *text);
void gpic_glyph(std::span<const GlyphPoint> points);
void gpic_clip(float x0, float y0, float x1, float y1);
/// x minimum, x maximum, y minimum, y maximum.
void gpic_clear_region(const float rect[4]);

} // namespace tyr
