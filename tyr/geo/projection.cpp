#include "tyr/geo/projection.h"

#include <cmath>

#include "tyr/geo/projections/form_private.h"

using namespace tyr;

namespace {

/// Codes with a name and no formula leave both outputs as they are.
bool is_name_only(const ProjectionForm *form)
{
    return form != nullptr && form->forward == nullptr;
}

} // namespace

int MAP_ll_to_xy(float *x, float *y, float lat, float lon)
{
    const ProjectionForm *f = current_domain().form;
    if (is_name_only(f)) {
        return 1;
    }
    const CurrentDomain &d = current_domain();
    MapPoint p = kNowhere;
    if (f != nullptr && f->window == WindowForm::map) {
        p = f->forward(d, lat, wrap_longitude(lon));
        p = std::isfinite(p.a) && std::isfinite(p.b) ? p : kNowhere;
    } else if (f != nullptr) {
        p = f->forward(d, lat, lon);
    }
    *x = static_cast<float>(p.a);
    *y = static_cast<float>(p.b);
    return p.shown ? 1 : 0;
}

int MAP_xy_to_ll(float *lat, float *lon, float x, float y)
{
    const ProjectionForm *f = current_domain().form;
    if (is_name_only(f) || f == &kNoneForm) {
        return 1;
    }
    const MapPoint p = f != nullptr ? f->inverse(current_domain(), x, y) : kNowhere;
    *lat = static_cast<float>(p.a);
    *lon = static_cast<float>(p.b);
    return p.shown ? 1 : 0;
}

void MAP_center_xy(float *x, float *y)
{
    MAP_ll_to_xy(x, y, current_domain().rec.clat, current_domain().rec.clon);
}

float MAP_rotate_dir(float direction, float x, float y)
{
    const ProjectionForm *f = current_domain().form;
    return f != nullptr && f->rotate != nullptr ? f->rotate(current_domain(), direction, x, y)
                                                : direction;
}

float MAP_scale_factor(float lat, float /*lon*/)
{
    const ProjectionForm *f = current_domain().form;
    return f != nullptr && f->scale != nullptr ? f->scale(current_domain(), lat) : 1.0F;
}

namespace tyr {

float projection_wrap_width(int code, float y)
{
    const ProjectionForm *f = projection_form(code);
    return f != nullptr && f->wrap_width != nullptr ? f->wrap_width(y) : 0.0F;
}

} // namespace tyr
