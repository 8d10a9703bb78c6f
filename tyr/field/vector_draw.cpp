#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <memory>

#include "tyr/base/angle.h"
#include "tyr/base/msg.h"
#include "tyr/base/prm.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/field/contour_trace_private.h"
#include "tyr/field/vector_private.h"
#include "tyr/field/world_private.h"
#include "tyr/geo/domain.h"
#include "tyr/geo/projection.h"
#include "tyr/gks/colour_table.h"
#include "tyr/gks/gks.h"
#include "tyr/grid_math/sample.h"
#include "tyr/met/wind.h"
#include "tyr/plot/area.h"
#include "tyr/plot/barb.h"
#include "tyr/plot/levels.h"
#include "tyr/plot/view.h"
#include "tyr/start/convert.h"

using namespace tyr;

namespace tyr {

void vector_place(const GridRec &grid, int column, int row, float *x, float *y)
{
    const VectorState &s = vectors();
    const int at = row * grid.domain.nx + column;
    *x = s.x != nullptr ? s.x[at] : static_cast<float>(column);
    *y = s.y != nullptr ? s.y[at] : static_cast<float>(grid.domain.ny - 1 - row);
}

AttrRec speed_attr(float speed)
{
    AttrRec a = vectors().attr;
    if (CONT_get_levels(nullptr) > 0 || !is_missing(vectors().interval)) {
        CONT_value_attr(speed, &a);
    }
    return a;
}

void set_sign_attr(const AttrRec &attr)
{
    GPH_set_line_attr(&attr);
    GPH_set_fill_attr(&attr);
}

namespace {

constexpr float kApart = 0.0005F; ///< of the drawing's height: signs closer than this are one

using Values = std::vector<float>;

bool is_set(float u, float v)
{
    return !is_missing(u) && !is_missing(v) && std::isfinite(u) && std::isfinite(v);
}

/// Plot position of a grid point in the grid's own domain.
void own_place(const GridRec &grid, int column, int row, const float window[4], float *x, float *y)
{
    *x = window[0] + static_cast<float>(column) * grid.domain.dx;
    *y = window[3] - static_cast<float>(row) * grid.domain.dy;
}

/// Components relative to the grid become relative to true north.
void turn_north(GridRec *u, GridRec *v)
{
    DomainRec here;
    DOM_get(&here);
    DOM_set(&u->domain);
    float window[4];
    DOM_get_window(window);
    for (int row = 0; row < u->domain.ny; ++row) {
        for (int column = 0; column < u->domain.nx; ++column) {
            float &a = u->values[row * u->domain.nx + column];
            float &b = v->values[row * u->domain.nx + column];
            float direction = 0.0F;
            float speed = 0.0F;
            if (!is_set(a, b) || (a == 0.0F && b == 0.0F)) {
                continue;
            }
            float x = 0.0F;
            float y = 0.0F;
            own_place(*u, column, row, window, &x, &y);
            MET_wind_dirspd(&direction, &speed, a, b);
            MET_wind_uv(&a, &b, MAP_unrotate_dir(direction, x, y), speed);
        }
    }
    DOM_set(&here);
}

/// A direction at a plot point relative to the plot's up direction. Maps on which the meridians
/// lean and MAP_rotate_dir doesn't: by a short way in that direction.
float turned(float direction, float x, float y)
{
    constexpr double kWay = 0.1;        // degrees of the earth
    constexpr double kMostNorth = 89.8; // there each way is north or south
    const int proj = DOM_get_proj();
    if (proj != kProjOrtho && proj != kProjMollweide && proj != kProjLambertAzimuthal) {
        return MAP_rotate_dir(direction, x, y);
    }
    float lat = 0.0F;
    float lon = 0.0F;
    if (MAP_xy_to_ll(&lat, &lon, x, y) == 0 || std::fabs(lat) > kMostNorth) {
        return direction;
    }
    const double s = std::sin(direction * kRadiansPerDegree);
    const double c = std::cos(direction * kRadiansPerDegree);
    for (const double way : {kWay, -kWay}) { // the other way where the first leaves the map
        FieldPoint p;
        const double east = way * s / std::cos(lat * kRadiansPerDegree);
        if (MAP_ll_to_xy(&p.x, &p.y, static_cast<float>(lat + way * c),
                         static_cast<float>(lon + east)) != 0) {
            p = WorldSides{proj}.beside(p, {x, y});
            return static_cast<float>(std::atan2((p.x - x) * way, (p.y - y) * way) *
                                      kDegreesPerRadian);
        }
    }
    return kMissing;
}

/// Direction of a wind at a grid point relative to the plot's up direction.
float plot_direction(const GridRec &grid, int column, int row, float direction)
{
    float x = 0.0F;
    float y = 0.0F;
    if (vectors().x != nullptr) {
        vector_place(grid, column, row, &x, &y);
        return is_missing(x) || is_missing(y) ? kMissing : turned(direction, x, y);
    }
    float window[4];
    DOM_get_window(window);
    own_place(grid, column, row, window, &x, &y);
    return turned(direction, x, y);
}

void draw_sign(float x, float y, float direction, float speed)
{
    const VectorState &s = vectors();
    if (s.type == kVectBarbs) {
        WX_barb_raw(x, y, direction, speed, s.size, 0.0F);
    } else if (s.max > 0.0F) {
        WX_vector_raw(x, y, direction, speed / s.max, s.size, 1.0F);
    }
}

void draw_signs(const GridRec &u, const GridRec &v)
{
    const VectorState &s = vectors();
    TakenPlaces taken(s.height * kApart); // at the pole and the seam points lie on one another
    for (int row = 0; row < u.domain.ny; row += s.skip_y) {
        for (int column = 0; column < u.domain.nx; column += s.skip_x) {
            const int at = row * u.domain.nx + column;
            float x = 0.0F;
            float y = 0.0F;
            vector_place(u, column, row, &x, &y);
            if (!is_set(u.values[at], v.values[at]) || is_missing(x) || is_missing(y)) {
                continue;
            }
            float direction = 0.0F;
            float speed = 0.0F;
            MET_wind_dirspd(&direction, &speed, u.values[at], v.values[at]);
            const bool shown = (is_missing(s.lowest) || speed > s.lowest) &&
                               (is_missing(s.highest) || speed < s.highest);
            direction = plot_direction(u, column, row, direction);
            const AttrRec attr = speed_attr(speed);
            if (shown && !is_missing(direction) && attr.color != kColourNone &&
                taken.take({x, y})) {
                set_sign_attr(attr);
                draw_sign(x, y, direction, speed);
            }
        }
    }
}

void turn_to_plot(GridRec *u, GridRec *v)
{
    for (int row = 0; row < u->domain.ny; ++row) {
        for (int column = 0; column < u->domain.nx; ++column) {
            float &a = u->values[row * u->domain.nx + column];
            float &b = v->values[row * u->domain.nx + column];
            float direction = 0.0F;
            float speed = 0.0F;
            if (is_set(a, b) && (a != 0.0F || b != 0.0F)) {
                MET_wind_dirspd(&direction, &speed, a, b);
                const float turned_to = plot_direction(*u, column, row, direction);
                a = b = kMissing;
                if (!is_missing(turned_to)) {
                    MET_wind_uv(&a, &b, turned_to, speed);
                }
            }
        }
    }
}

void read_scale()
{
    const char *text = RES_get("plot_scale");
    if (text != nullptr && *text != '\0') {
        float scale = 1.0F;
        RES_get_value("plot_scale", &scale, kResReal);
        VECT_set_scale(scale);
    }
}

void set_space(const GridRec &grid)
{
    VectorState &s = vectors();
    s.size = s.scale;
    if (!is_missing(s.base) && s.base > 0.0F && !is_missing(s.max)) {
        s.size *= s.max / s.base;
    }
    if (s.x != nullptr) {
        gsel_norm_tran(2);
        s.height = DOM_window_height();
        s.size *= grid.domain.dx;
        return;
    }
    std::array<float, 4> view;
    PLT_get_viewport(view.data());
    gset_viewport(3, view.data());
    const std::array<float, 4> window = {0.0F, static_cast<float>(grid.domain.nx - 1), 0.0F,
                                         static_cast<float>(grid.domain.ny - 1)};
    gset_window(3, window.data());
    gsel_norm_tran(3);
    s.height = window[3];
}

void draw(GridRec u, GridRec v)
{
    VectorState &s = vectors();
    const size_t n = static_cast<size_t>(u.domain.nx) * static_cast<size_t>(u.domain.ny);
    Values a(u.values, u.values + n);
    Values b(v.values, v.values + n);
    u.values = a.data();
    v.values = b.data();
    if (s.grid_relative) {
        turn_north(&u, &v);
    }
    if (s.type == kVectStreamlines) {
        turn_to_plot(&u, &v);
        draw_streamlines(&u, &v);
    } else {
        draw_signs(u, v);
    }
}

AttrRec sign_attr()
{
    AttrRec a;
    ATTR_init(&a);
    ATTR_from_resource("color_cont", PLT_is_light() != 0 ? "black" : "white", &a);
    for (const std::string &word : STR_fields(vectors().options, ':')) {
        if (STR_has_prefix(word, "co=") || STR_has_prefix(word, "wi=") ||
            STR_has_prefix(word, "st=")) {
            ATTR_parse(word.c_str(), &a);
        }
    }
    return a;
}

struct FreeDeleter {
    void operator()(float *p) const { std::free(p); }
};

} // namespace

} // namespace tyr

int VECT_draw(GridRec *u, GridRec *v)
{
    if (PRM_get_draw(kDrawData) == 0) {
        return 0;
    }
    if (u == nullptr || v == nullptr) {
        MSG_out(kMsgWarn, "VECT_draw: Invalid grids\n");
        return -1;
    }
    if (u->values == nullptr || v->values == nullptr || u->domain.nx < 1 || u->domain.ny < 1 ||
        u->domain.nx != v->domain.nx || u->domain.ny != v->domain.ny) {
        MSG_out(kMsgWarn, "VECT_draw: Invalid grid arrays\n");
        return -1;
    }
    VectorState &s = vectors();
    DomainRec here;
    DOM_get(&here);
    std::unique_ptr<float, FreeDeleter> x;
    std::unique_ptr<float, FreeDeleter> y;
    const bool own_arrays =
        s.x == nullptr && here.proj != kProjNone && DOM_equal(&here, &u->domain) == 0;
    if (own_arrays) {
        float *px = nullptr;
        float *py = nullptr;
        if (GRD_proj_XY(u, &here, &px, &py) != 0) {
            MSG_out(kMsgWarn, "VECT_draw: Unable to allocate grid arrays\n");
            return -1;
        }
        x.reset(px);
        y.reset(py);
        VECT_set_arrays(px, py);
    }
    CONT_set_fill_colors(nullptr, 0);
    read_vector_base();
    read_scale();
    s.attr = sign_attr();
    if (s.attr.color != kColourNone) {
        set_space(*u);
        GPH_set_line_attr(nullptr);
        GPH_set_fill_attr(nullptr);
        GPH_set_line_attr(&s.attr);
        GPH_set_fill_attr(&s.attr);
        draw(*u, *v);
    }
    if (own_arrays) {
        VECT_set_arrays(nullptr, nullptr);
    }
    return 0;
}

void VECT_legend()
{
    const VectorState &s = vectors();
    gsel_norm_tran(1);
    std::array<float, 4> view;
    PLT_get_viewport(view.data());
    const float w = view[1] - view[0];
    const float h = view[3] - view[2];
    AttrRec a;
    ATTR_init(&a);
    ATTR_from_resource("color_text", PLT_is_light() != 0 ? "black" : "white", &a);
    GPH_set_text_attr(nullptr, 0.0F);
    GPH_set_text_attr(&a, h * 0.015F);
    GPH_set_line_attr(&a);
    GPH_set_fill_attr(&a);
    const std::array<int, 2> align = {kAlignRight, kAlignHalf};
    gset_text_align(align.data());
    if ((PRM_get_draw(kDrawText) == 0 && !s.legend) || a.color == kColourNone ||
        !(s.height > 0.0F)) {
        return;
    }
    const float length = s.size * h / s.height;
    const float y = view[2] - h * 0.025F;
    WX_vector_raw(view[1] - w * 0.01F - length, y, 270.0F, 1.0F, length, 1.0F);
    std::array<char, kRealTextRoom> text;
    STR_format_real(text.data(), "5.3.1", s.max);
    const std::array<float, 2> at = {view[1] - w * 0.02F - length, y};
    gtext(at.data(), ("MAX VECTOR: " + std::string(text.data()) + " m/s").c_str());
}
