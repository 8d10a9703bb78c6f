// The primitives in PostScript.

#include <cstddef>

#include "tyr/gks/state_private.h"
#include "tyr/paper/output_private.h"
#include "tyr/paper/postscript_private.h"

using namespace tyr;

namespace {

constexpr int kSolid = 1;

/// A path of n points in device coordinates.
void write_path(int n, const float *points)
{
    gps_move_dc(points[0], points[1]);
    for (std::ptrdiff_t i = 1; i < n; i++) {
        gps_draw_dc(points[2 * i], points[2 * i + 1]);
    }
}

} // namespace

void tyr::gps_polyline(int n, const float *points)
{
    const LineState &line = kernel().line;
    gps_put_count("%%PL:", n);
    gps_width(line.colour, line.width);
    gps_line_color(line.colour);
    gps_dash(line.type);
    gps_put("np\n");
    write_path(n, points);
    gps_put("stroke\n");
}

void tyr::gps_area(int n, const float *points)
{
    if (kernel().fill.int_style != kSolid) {
        return;
    }
    gps_put_count("%%FA:", n);
    gps_put("np\n");
    write_path(n, points);
    gps_put("cp\n");
    gps_fill_color(kernel().fill.colour);
    gps_put("fill\n");
}

void tyr::gps_begin_markers(int n)
{
    const MarkerState &marker = kernel().marker;
    gps_put_count("%%PM:", n);
    gps_width(marker.colour, marker.width);
    gps_line_color(marker.colour);
    gps_dash(1);
}

void tyr::gps_stroke(int n, const float *points)
{
    gps_put("np\n");
    write_path(n, points);
    if (n == 1) {
        gps_draw_dc(points[0] + 1.0F, points[1]);
    }
    gps_put("stroke\n");
}

void tyr::gps_begin_text(const float pos[2], const char *text)
{
    const TextState &attributes = kernel().text;
    gps_put_place("%%TE:", pos, comment_text(text));
    gps_width(attributes.colour, attributes.width);
    gps_line_color(attributes.colour);
    gps_dash(1);
}

void tyr::gps_glyph(std::span<const GlyphPoint> points)
{
    int run = 0;
    gps_put("np\n");
    for (const GlyphPoint &point : points) {
        if (!point.begins) {
            gps_draw_dc(point.x, point.y);
            run++;
        }
        if (point.begins || run == kMaxRun) {
            gps_put((run > 1 ? "stroke\nnp\n" : ""));
            gps_move_dc(point.x, point.y);
            run = 1;
        }
    }
    gps_put((run > 1 ? "stroke\n" : ""));
}

void tyr::gps_clear_region(const float rect[4])
{
    const float corners[] = {rect[0], rect[2], rect[1], rect[2],
                             rect[1], rect[3], rect[0], rect[3]};
    gps_put("%%CLR\nnp\n");
    write_path(4, corners);
    gps_put("cp\n");
    gps_fill_color(-1);
    gps_put("fill\n");
}
