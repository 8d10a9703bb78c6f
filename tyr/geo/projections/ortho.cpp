#include "tyr/geo/projections/form_private.h"

using namespace tyr;

namespace tyr {

namespace {

void set_up(CurrentDomain &d)
{
    if (is_missing(d.rec.plat)) {
        d.rec.plat = 0.0F;
    }
}

MapPoint forward(const CurrentDomain &d, double lat, double lon)
{
    const double turn = lon - d.rec.plon;
    const double sl = sind(lat);
    const double cl = cosd(lat);
    const double cd = cosd(turn);
    if (d.sin_pole * sl + d.cos_pole * cl * cd < 0.0) {
        return kNowhere;
    }
    return {kEarthRadius * cl * sind(turn),
            kEarthRadius * (d.cos_pole * sl - d.sin_pole * cl * cd)};
}

MapPoint inverse(const CurrentDomain &d, double x, double y)
{
    const double w = kEarthRadius * kEarthRadius - x * x - y * y;
    if (w < 0.0) {
        return kNowhere;
    }
    const double z = std::sqrt(w);
    return {asin_degrees((d.cos_pole * y + d.sin_pole * z) / kEarthRadius),
            d.rec.plon + std::atan2(x, d.cos_pole * z - d.sin_pole * y) * kDegreesPerRadian};
}

} // namespace

extern const ProjectionForm kOrthoForm;
const ProjectionForm kOrthoForm = {
    .code = kProjOrtho,
    .name = "ortho",
    .words = {"or"},
    .window = WindowForm::map,
    .set_up = set_up,
    .forward = forward,
    .inverse = inverse,
    .rotate = nullptr,
    .scale = nullptr,
    .wrap_width = nullptr,
    .skew = nullptr,
};

} // namespace tyr
