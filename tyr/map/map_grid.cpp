#include "tyr/map/map_grid.h"

#include <array>
#include <cmath>

#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/str.h"
#include "tyr/geo/domain.h"
#include "tyr/geo/projection.h"
#include "tyr/gks/gks.h"
#include "tyr/gks/session.h"
#include "tyr/map/map_lines_private.h"
#include "tyr/plot/area.h"
#include "tyr/plot/attributes.h"
#include "tyr/plot/grid_interval.h"

using namespace tyr;

namespace {

constexpr float kMostLines = 2000.0F; ///< more than a page resolves
constexpr float kLabelGap = 0.01F;    ///< between viewport and labels
constexpr float kOnEdge = 1e-4F;      ///< of an interval: rounding of the last line

struct State {
    float refused_lat = kMissing, refused_lon = kMissing; ///< intervals last told of
    int refused_count = 0;                                ///< DOM_count_offsets at that time
};

State state;

struct Span {
    float first, last, step;

    /// Number of values from first to last; 0 where they would never end.
    int count(bool with_last) const
    {
        const float steps = (last - first) / step;
        if (!(steps >= 0.0F) || steps > kMostLines) {
            return 0;
        }
        const float whole = std::floor(steps + kOnEdge);
        return static_cast<int>(whole) + (with_last || whole < steps - kOnEdge ? 1 : 0);
    }
    float value(int i) const { return first + static_cast<float>(i) * step; }
};

/// A negative interval puts the first line on a multiple of it, toward zero.
Span make_span(float first, float last, float interval)
{
    if (interval < 0.0F) {
        interval = -interval;
        first = std::trunc(first / interval) * interval;
    }
    return {first, last, interval};
}

void draw_segment(float a0, float b0, float a1, float b1)
{
    std::array<float, 4> points;
    if (MAP_ll_to_xy(&points[0], &points[1], a0, b0) == 1 &&
        MAP_ll_to_xy(&points[2], &points[3], a1, b1) == 1) {
        gpolyline(2, points.data());
    }
}

/// +1 where y rises upward, -1 where the second coordinate falls (pressure).
float direction_of_y(int proj)
{
    return proj == kProjXLogP || proj == kProjStuve ? -1.0F : 1.0F;
}

void draw_value(float x, float y, float value)
{
    std::array<char, kRealTextRoom> text;
    STR_format_real(text.data(), "2.2.0", value);
    const std::array<float, 2> at = {x, y};
    gtext(at.data(), text.data());
}

/// Labels below the lines of constant x. A section writes its own.
void label_x(const Span &xs, const Span &ys, const std::array<float, 4> &viewport)
{
    GPH_set_text_align(kAlignCentre, kAlignCap);
    for (int i = 0; i < xs.count(true); ++i) {
        float x = 0.0F;
        float y = 0.0F;
        MAP_ll_to_xy(&x, &y, xs.value(i), ys.first);
        const float px = gtran_x(2, 1, x);
        if (px >= viewport[0] && px <= viewport[1]) {
            draw_value(px, viewport[2] - kLabelGap, xs.value(i));
        }
    }
}

void label_y(const Span &xs, const Span &ys, const std::array<float, 4> &viewport)
{
    GPH_set_text_align(kAlignRight, kAlignHalf);
    for (int i = 0; i < ys.count(true); ++i) {
        float x = 0.0F;
        float y = 0.0F;
        MAP_ll_to_xy(&x, &y, xs.first, ys.value(i));
        const float py = gtran_y(2, 1, y);
        if (py >= viewport[2] && py <= viewport[3]) {
            draw_value(viewport[0] - kLabelGap, py, ys.value(i));
        }
    }
}

/// Once for the layers under and over the data.
void report_intervals(float dlat, float dlon)
{
    if (dlat == state.refused_lat && dlon == state.refused_lon &&
        state.refused_count == DOM_count_offsets()) {
        return;
    }
    state.refused_lat = dlat;
    state.refused_lon = dlon;
    state.refused_count = DOM_count_offsets();
    MSG_out(192, "MAP_draw_lalo: no lines at intervals %g, %g\n", static_cast<double>(dlat),
            static_cast<double>(dlon));
}

void end_lines()
{
    GPH_set_line_attr(nullptr);
    GPH_set_text_attr(nullptr, 1.0F);
}

int draw_map(float dlat, float dlon)
{
    PLT_message("Map-lalo: %.1f,%.1f", static_cast<double>(dlat), static_cast<double>(dlon));
    const GridInterval asked = DOM_get_grid_interval();
    if (!draw_map_lines({dlat, dlon, asked.crosses, asked.repeat})) {
        report_intervals(dlat, dlon);
    }
    end_lines();
    return 0;
}

int draw_plot_space(const DomainRec &d, float dlat, float dlon)
{
    const Span xs = make_span(d.clat, d.clat + d.dx, dlat);
    Span ys = make_span(d.clon, d.clon + d.dy, dlon);
    ys.step *= direction_of_y(d.proj);
    if (xs.count(true) == 0 || ys.count(true) == 0) {
        report_intervals(dlat, dlon);
        GPH_sel_tran(1);
        return -1;
    }
    for (int i = 0; i < xs.count(true); ++i) {
        draw_segment(xs.value(i), ys.first, xs.value(i), ys.last);
    }
    for (int i = 0; i < ys.count(false); ++i) {
        draw_segment(xs.first, ys.value(i), xs.last, ys.value(i));
    }
    std::array<float, 4> viewport;
    PLT_get_viewport(viewport.data());
    GPH_sel_tran(1);
    if (d.proj != kProjTimeHeight) {
        label_x(xs, ys, viewport);
    }
    label_y(xs, ys, viewport);
    end_lines();
    return -1;
}

} // namespace

int MAP_draw_lalo(float dlat, float dlon)
{
    const DomainRec domain = *DOM_get(nullptr);
    return is_map_projection(domain.proj) ? draw_map(dlat, dlon)
                                          : draw_plot_space(domain, dlat, dlon);
}
