#include "tyr/geo/projections/form_private.h"
#include "tyr/geo/projections/vector_math_private.h"

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

TYR_VECTOR_LOOP void forward_all(const CurrentDomain &d, Places p)
{
    const double sin_pole = d.sin_pole;
    const double cos_pole = d.cos_pole;
    const double plon = d.rec.plon;
    for (int i = 0; i < p.count; ++i) {
        const double lat = p.lat[i] * kRadiansPerDegree;
        const double turn = (p.lon[i] - plon) * kRadiansPerDegree;
        const double sl = sin(lat);
        const double cl = sin(lat + kQuarter);
        const double cd = sin(turn + kQuarter);
        const bool is_shown = sin_pole * sl + cos_pole * cl * cd >= 0.0;
        p.x[i] = is_shown ? kEarthRadius * cl * sin(turn) : kMissing;
        p.y[i] = is_shown ? kEarthRadius * (cos_pole * sl - sin_pole * cl * cd) : kMissing;
    }
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
    .forward_all = forward_all,
    .inverse = inverse,
    .rotate = nullptr,
    .scale = nullptr,
    .wrap_width = nullptr,
    .skew = nullptr,
};

} // namespace tyr
