#pragma once

#include <cairo-pdf.h>
#include <cairo-svg.h>
#include <cairo.h>

// The library cairo, loaded when a picture is drawn: it brings some twenty others along, which
// every start of every program would wait for.

// clang-format off
#define TYR_CAIRO_CALLS(X) \
    X(clip) X(close_path) X(create) X(destroy) X(fill) X(image_surface_create) X(image_surface_get_data) X(line_to)        \
    X(move_to) X(new_path) X(paint) X(pdf_surface_create_for_stream)                             \
    X(pdf_surface_set_metadata) X(pdf_surface_set_size) X(recording_surface_create)              \
    X(rectangle) X(rel_line_to) X(reset_clip) X(restore) X(rotate) X(save) X(scale)              \
    X(set_dash) X(set_font_size) X(set_line_join) X(set_line_width) X(set_source_rgb)            \
    X(set_source_rgba) X(set_source_surface) X(show_page) X(show_text) X(status)                 \
    X(status_to_string) X(stroke) X(surface_destroy) X(surface_finish) X(surface_status) X(surface_flush) X(surface_get_content) \
    X(image_surface_get_height) X(image_surface_get_stride) X(image_surface_get_width)         \
    X(surface_write_to_png_stream) X(svg_surface_create_for_stream) X(text_extents)              \
    X(translate) X(user_to_device)
// clang-format on

namespace tyr {

/// Its functions, by their names without the prefix.
struct CairoLibrary {
// NOLINTNEXTLINE(bugprone-macro-parentheses): the name of a member takes none
#define TYR_CAIRO_MEMBER(name) decltype(&cairo_##name) name = nullptr;
    TYR_CAIRO_CALLS(TYR_CAIRO_MEMBER)
#undef TYR_CAIRO_MEMBER
};

/// Loads the library at the first call. @return false where it isn't there, told
bool has_cairo();

/// The functions; null until has_cairo() was true.
const CairoLibrary &cairo();

} // namespace tyr
