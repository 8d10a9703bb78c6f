#include "tyr/geo/domain.h"

#include <algorithm>
#include <cmath>

#include "tyr/base/angle.h"
#include "tyr/base/missing.h"
#include "tyr/geo/domain_state.h"
#include "tyr/geo/projection.h"

namespace {

constexpr float kNearCells = 3.0F; ///< grid cells that count as near the window

CurrentDomain state;

void set_polar()
{
    const bool is_south = state.rec.plat < 0.0F;
    state.std1 = is_missing(state.rec.parm1) ? (is_south ? -60.0 : 60.0)
                                             : static_cast<double>(state.rec.parm1);
    state.sign = is_south ? 1.0 : -1.0;
    state.radius = kEarthRadius * (1.0 - state.sign * sind(state.std1));
}

/// The cone's formulas want latitudes counted toward the pole that it opens to: standard latitudes
/// south of the equator turn their sign on a southern cone.
void set_lambert()
{
    state.std1 = 30.0;
    state.std2 = 60.0;
    if (!is_missing(state.rec.parm1)) {
        state.std1 = state.rec.parm1;
        state.std2 =
            is_missing(state.rec.parm2) ? state.std1 : static_cast<double>(state.rec.parm2);
    }
    state.sign = state.rec.plat < 0.0F ? -1.0 : 1.0;
    const bool is_turned = state.sign < 0.0 && state.std1 <= 0.0 && state.std2 <= 0.0;
    const double std1 = is_turned ? -state.std1 : state.std1;
    const double std2 = is_turned ? -state.std2 : state.std2;
    const double tan1 = tand(45.0 - std1 / 2.0);
    const double tan2 = tand(45.0 - std2 / 2.0);
    state.cone = std1 == std2 ? cosd(90.0 - std1)
                              : (std::log(cosd(std1)) - std::log(cosd(std2))) /
                                    (std::log(tan1) - std::log(tan2));
    state.radius = kEarthRadius * cosd(std1) / (std::pow(tan1, state.cone) * state.cone);
}

void set_constants()
{
    switch (state.rec.proj) {
    case kProjPolar:
        set_polar();
        break;
    case kProjLambert:
        set_lambert();
        break;
    case kProjOrtho:
        if (is_missing(state.rec.plat)) {
            state.rec.plat = 0.0F;
        }
        break;
    case kProjSatellite:
        state.distance =
            is_missing(state.rec.parm1) ? kSatelliteDistance : static_cast<double>(state.rec.parm1);
        break;
    default:
        break;
    }
    state.sin_pole = sind(state.rec.plat);
    state.cos_pole = cosd(state.rec.plat);
}

void set_corners(float x0, float y0, float x1, float y1)
{
    state.window[0] = x0;
    state.window[1] = x1;
    state.window[2] = y0;
    state.window[3] = y1;
}

void set_map_window()
{
    float x = 0.0F;
    float y = 0.0F;
    MAP_center_xy(&x, &y);
    const float half_width = state.rec.dx * static_cast<float>(state.rec.nx - 1) / 2.0F;
    const float half_height = state.rec.dy * static_cast<float>(state.rec.ny - 1) / 2.0F;
    set_corners(x - half_width, y - half_height, x + half_width, y + half_height);
}

void set_linear_window()
{
    const DomainRec &d = state.rec;
    const float bottom = d.proj == kProjXP ? -d.clon : d.clon;
    set_corners(d.clat, bottom, d.clat + static_cast<float>(d.nx),
                bottom + static_cast<float>(d.ny));
    state.fx = static_cast<double>(d.nx) / static_cast<double>(d.dx);
    state.fy = static_cast<double>(d.ny) / static_cast<double>(d.dy);
}

/// Corners of a plot space that is skewed or turned: those it has without.
void set_skewed_window()
{
    const DomainRec &d = state.rec;
    float x0 = 0.0F;
    float y0 = 0.0F;
    float x1 = 0.0F;
    float y1 = 0.0F;
    float unused = 0.0F;
    state.skew = 0.0;
    MAP_ll_to_xy(&x0, &y0, d.clat, d.clon);
    MAP_ll_to_xy(&x1, &unused, d.clat + d.dx, d.clon);
    MAP_ll_to_xy(&unused, &y1, d.clat, d.clon + d.dy);
    set_corners(x0, y0, x1, y1);
}

void set_projected_window()
{
    const DomainRec &d = state.rec;
    float x0 = 0.0F;
    float y0 = 0.0F;
    float x1 = 0.0F;
    float y1 = 0.0F;
    MAP_ll_to_xy(&x0, &y0, d.clat, d.clon);
    MAP_ll_to_xy(&x1, &y1, d.clat + d.dx, d.clon + d.dy);
    set_corners(x0, y0, x1, y1);
}

/// Needs window and viewport; 0 until the viewport is known.
void set_skew()
{
    const float *w = state.window;
    const float *v = state.viewport;
    state.skew = 0.0;
    if (v[1] <= v[0] || v[3] <= v[2] || w[3] == w[2]) {
        return;
    }
    if (state.rec.proj == kProjSkewT) {
        state.skew = static_cast<double>((w[1] - w[0]) * ((v[3] - v[2]) / (v[1] - v[0]))) /
                     static_cast<double>(w[3] - w[2]);
    } else if (state.rec.proj == kProjTephigram) {
        state.skew = 1.0;
    }
}

void set_window()
{
    const DomainRec &d = state.rec;
    switch (d.proj) {
    case kProjXY:
    case kProjTimeHeight:
    case kProjXP:
        set_linear_window();
        break;
    case kProjPolarPlot:
        set_corners(d.clat, d.clon, d.clat + d.dx, d.clon + d.dy);
        break;
    case kProjSkewT:
    case kProjTephigram:
    case kProjRotatedTephigram:
        set_skewed_window();
        break;
    default:
        if (is_map_projection(d.proj)) {
            set_map_window();
            return;
        }
        set_projected_window();
        break;
    }
    float *w = state.window;
    if (w[0] > w[1]) {
        std::swap(w[0], w[1]);
    }
    if (w[2] > w[3]) {
        std::swap(w[2], w[3]);
    }
    set_skew();
}

bool same_pole(float a, float b, float centre_a, float centre_b)
{
    return a == b || (is_missing(a) && b == centre_a) || (is_missing(b) && a == centre_b);
}

} // namespace

CurrentDomain &current_domain()
{
    return state;
}

void DOM_init(DomainRec *domain)
{
    *domain = CurrentDomain().rec;
}

int DOM_set(const DomainRec *domain)
{
    if (!domain) {
        state.rec.proj = kProjNone;
        return -1;
    }
    state.rec = *domain;
    if (is_missing(state.rec.plat)) {
        state.rec.plat = state.rec.clat;
    }
    if (is_missing(state.rec.plon)) {
        state.rec.plon = state.rec.clon;
    }
    set_constants();
    set_window();
    return 0;
}

DomainRec *DOM_get(DomainRec *out)
{
    if (!out) {
        return &state.rec;
    }
    *out = state.rec;
    return out;
}

void DOM_get_window(float out[4])
{
    std::copy_n(state.window, 4, out);
}

int DOM_get_proj()
{
    return state.rec.proj;
}

float DOM_get_clat()
{
    return state.rec.clat;
}

float DOM_get_clon()
{
    return state.rec.clon;
}

float DOM_aspect(const DomainRec *domain)
{
    if (domain->nx <= 1 || domain->ny <= 1) {
        return 1.0F;
    }
    return static_cast<float>(domain->nx - 1) / static_cast<float>(domain->ny - 1);
}

int DOM_near_window(float x, float y)
{
    if (state.rec.proj == kProjNone) {
        return 1;
    }
    const float *w = state.window;
    const float mx = kNearCells * state.rec.dx;
    const float my = kNearCells * state.rec.dy;
    return x >= w[0] - mx && x <= w[1] + mx && y >= w[2] - my && y <= w[3] + my ? 1 : 0;
}

int DOM_equal(const DomainRec *a, const DomainRec *b)
{
    return a->proj == b->proj && same_pole(a->plat, b->plat, a->clat, b->clat) &&
                   same_pole(a->plon, b->plon, a->clon, b->clon) && a->clat == b->clat &&
                   a->clon == b->clon && a->dx == b->dx && a->dy == b->dy && a->nx == b->nx &&
                   a->ny == b->ny && a->parm1 == b->parm1 && a->parm2 == b->parm2 &&
                   a->ellipsoid == b->ellipsoid
               ? 1
               : 0;
}

void DOM_set_viewport(const float in[4])
{
    std::copy_n(in, 4, state.viewport);
    set_skew();
}
