#include "tyr/geo/domain.h"

#include <algorithm>
#include <cmath>

#include "tyr/base/angle.h"
#include "tyr/base/missing.h"
#include "tyr/geo/projection.h"
#include "tyr/geo/projections/form_private.h"

using namespace tyr;

namespace {

constexpr float kNearCells = 3.0F; ///< grid cells that count as near the window

void set_constants()
{
    const ProjectionForm *form = current_domain().form;
    if (form != nullptr && form->set_up != nullptr) {
        form->set_up(current_domain());
    }
    CurrentDomain &state = current_domain();
    state.sin_pole = sind(state.rec.plat);
    state.cos_pole = cosd(state.rec.plat);
}

void set_corners(float x0, float y0, float x1, float y1)
{
    current_domain().window[0] = x0;
    current_domain().window[1] = x1;
    current_domain().window[2] = y0;
    current_domain().window[3] = y1;
}

void set_map_window()
{
    float x = 0.0F;
    float y = 0.0F;
    MAP_center_xy(&x, &y);
    const float half_width =
        current_domain().rec.dx * static_cast<float>(current_domain().rec.nx - 1) / 2.0F;
    const float half_height =
        current_domain().rec.dy * static_cast<float>(current_domain().rec.ny - 1) / 2.0F;
    set_corners(x - half_width, y - half_height, x + half_width, y + half_height);
}

void set_linear_window()
{
    const DomainRec &d = current_domain().rec;
    const float bottom = d.proj == kProjXP ? -d.clon : d.clon;
    set_corners(d.clat, bottom, d.clat + static_cast<float>(d.nx),
                bottom + static_cast<float>(d.ny));
    current_domain().fx = static_cast<double>(d.nx) / static_cast<double>(d.dx);
    current_domain().fy = static_cast<double>(d.ny) / static_cast<double>(d.dy);
}

/// Corners of a plot space that is skewed or turned: those it has without.
void set_skewed_window()
{
    const DomainRec &d = current_domain().rec;
    float x0 = 0.0F;
    float y0 = 0.0F;
    float x1 = 0.0F;
    float y1 = 0.0F;
    float unused = 0.0F;
    current_domain().skew = 0.0;
    MAP_ll_to_xy(&x0, &y0, d.clat, d.clon);
    MAP_ll_to_xy(&x1, &unused, d.clat + d.dx, d.clon);
    MAP_ll_to_xy(&unused, &y1, d.clat, d.clon + d.dy);
    set_corners(x0, y0, x1, y1);
}

void set_projected_window()
{
    const DomainRec &d = current_domain().rec;
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
    CurrentDomain &state = current_domain();
    const ProjectionForm *form = state.form;
    const float *w = state.window;
    const float *v = state.viewport;
    const bool is_known = v[1] > v[0] && v[3] > v[2] && w[3] != w[2];
    state.skew = is_known && form != nullptr && form->skew != nullptr ? form->skew(state) : 0.0;
}

void set_window()
{
    CurrentDomain &state = current_domain();
    const ProjectionForm *form = state.form;
    const DomainRec &d = state.rec;
    switch (form != nullptr ? form->window : WindowForm::projected) {
    case WindowForm::map:
        set_map_window();
        return;
    case WindowForm::linear:
        set_linear_window();
        break;
    case WindowForm::plain:
        set_corners(d.clat, d.clon, d.clat + d.dx, d.clon + d.dy);
        break;
    case WindowForm::skewed:
        set_skewed_window();
        break;
    case WindowForm::projected:
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

void DOM_init(DomainRec *domain)
{
    *domain = CurrentDomain().rec;
}

int DOM_set(const DomainRec *domain)
{
    if (!domain) {
        current_domain().rec.proj = kProjNone;
        current_domain().form = &kNoneForm;
        return -1;
    }
    current_domain().rec = *domain;
    if (is_missing(current_domain().rec.plat)) {
        current_domain().rec.plat = current_domain().rec.clat;
    }
    if (is_missing(current_domain().rec.plon)) {
        current_domain().rec.plon = current_domain().rec.clon;
    }
    current_domain().form = projection_form(current_domain().rec.proj);
    set_constants();
    set_window();
    return 0;
}

DomainRec *DOM_get(DomainRec *out)
{
    if (!out) {
        return &current_domain().rec;
    }
    *out = current_domain().rec;
    return out;
}

void DOM_get_window(float out[4])
{
    std::copy_n(current_domain().window, 4, out);
}

int DOM_get_proj()
{
    return current_domain().rec.proj;
}

float DOM_get_clat()
{
    return current_domain().rec.clat;
}

float DOM_get_clon()
{
    return current_domain().rec.clon;
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
    if (current_domain().rec.proj == kProjNone) {
        return 1;
    }
    const float *w = current_domain().window;
    const float mx = kNearCells * current_domain().rec.dx;
    const float my = kNearCells * current_domain().rec.dy;
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
    std::copy_n(in, 4, current_domain().viewport);
    set_skew();
}
