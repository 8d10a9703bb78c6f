#pragma once

#include <memory>
#include <string>
#include <vector>

#include "tyr/picture/cairo_library_private.h"

// Pages of the picture device and the files made of them.

namespace tyr {

struct CairoEnd {
    void operator()(cairo_surface_t *surface) const { cairo().surface_destroy(surface); }
    void operator()(cairo_t *context) const { cairo().destroy(context); }
};
using CairoSurface = std::unique_ptr<cairo_surface_t, CairoEnd>;
using CairoContext = std::unique_ptr<cairo_t, CairoEnd>;

enum class PictureForm { png, svg, pdf };

/// A text that isn't seen: its lower left corner in points from the page's top left, its turn
/// (radians, clockwise), width and height.
struct HiddenText {
    std::string text;
    double x, y, turn, width, height;
};

struct Page {
    double width = 0.0, height = 0.0; ///< points
    CairoSurface surface;             ///< an image for PNG, else a recording
    std::vector<HiddenText> texts;
};

/// Writes the pages (PNG and SVG: the last) to a file that is whole or isn't there.
/// @return an empty text, or why not
std::string write_pages(PictureForm form, const std::vector<Page> &pages, const std::string &path);

} // namespace tyr
