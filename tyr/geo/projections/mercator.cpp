#include <algorithm>

#include "tyr/geo/projections/form_private.h"
#include "tyr/geo/projections/vector_math_private.h"

using namespace tyr;

namespace tyr {

namespace {

constexpr double kPolarCut = 89.9;   ///< latitude held
constexpr float kWidth = 400.31555F; ///< of the world, plot units

MapPoint forward(const CurrentDomain &d, double lat, double lon)
{
    const double x = wrap_longitude(lon - d.rec.plon) * kEarthRadius * kRadiansPerDegree;
    const double held = std::clamp(lat, -kPolarCut, kPolarCut);
    return {x, -kEarthRadius * std::log(tand(45.0 - held / 2.0))};
}

TYR_VECTOR_LOOP void forward_all(const CurrentDomain &d, Places p)
{
    const double plon = d.rec.plon;
    for (int i = 0; i < p.count; ++i) {
        const double most = p.lat[i] > kPolarCut ? kPolarCut : p.lat[i];
        const double held = most < -kPolarCut ? -kPolarCut : most;
        p.x[i] = wrapped(p.lon[i] - plon) * kEarthRadius * kRadiansPerDegree;
        p.y[i] = -kEarthRadius * log(tan((45.0 - held / 2.0) * kRadiansPerDegree));
    }
}

MapPoint inverse(const CurrentDomain &d, double x, double y)
{
    const double lat = 90.0 - std::atan(1.0 / std::exp(y / kEarthRadius)) * 2.0 * kDegreesPerRadian;
    return {lat, wrap_longitude(d.rec.plon + x / (kEarthRadius * kRadiansPerDegree))};
}

float wrap_width(float)
{
    return kWidth;
}

} // namespace

extern const ProjectionForm kMercatorForm;
const ProjectionForm kMercatorForm = {
    .code = kProjMercator,
    .name = "merc",
    .words = {"me"},
    .window = WindowForm::map,
    .set_up = nullptr,
    .forward = forward,
    .forward_all = forward_all,
    .inverse = inverse,
    .rotate = nullptr,
    .scale = nullptr,
    .wrap_width = wrap_width,
    .skew = nullptr,
};

} // namespace tyr
