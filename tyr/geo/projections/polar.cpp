#include "tyr/geo/projections/form_private.h"
#include "tyr/geo/projections/vector_math_private.h"

using namespace tyr;

namespace tyr {

namespace {

constexpr double kFarLimit = 75.0; ///< latitude held in the far hemisphere

void set_up(CurrentDomain &d)
{
    const bool is_south = d.rec.plat < 0.0F;
    d.std1 = is_missing(d.rec.parm1) ? (is_south ? -60.0 : 60.0) : static_cast<double>(d.rec.parm1);
    d.sign = is_south ? 1.0 : -1.0;
    d.radius = kEarthRadius * (1.0 - d.sign * sind(d.std1));
}

MapPoint forward(const CurrentDomain &d, double lat, double lon)
{
    const double s = d.sign;
    const double held = s * lat > kFarLimit ? kFarLimit : s * lat;
    const double r = d.radius * tand((held + 90.0) / 2.0);
    const double t = (lon - d.rec.plon) * kRadiansPerDegree;
    return {r * std::sin(t), s * r * std::cos(t)};
}

TYR_VECTOR_LOOP void forward_all(const CurrentDomain &d, Places p)
{
    const double s = d.sign;
    const double radius = d.radius;
    const double plon = d.rec.plon;
    for (int i = 0; i < p.count; ++i) {
        const double held = s * p.lat[i] > kFarLimit ? kFarLimit : s * p.lat[i];
        const double r = radius * tan((held + 90.0) / 2.0 * kRadiansPerDegree);
        const double t = (p.lon[i] - plon) * kRadiansPerDegree;
        p.x[i] = r * sin(t);
        p.y[i] = s * r * sin(t + kQuarter);
    }
}

MapPoint inverse(const CurrentDomain &d, double x, double y)
{
    const double s = d.sign;
    const double r = std::hypot(x, y);
    const double a = r == 0.0 ? 0.0 : std::atan2(x, s * y) * kDegreesPerRadian;
    return {(2.0 * std::atan(r / d.radius) * kDegreesPerRadian - 90.0) * s, d.rec.plon + a};
}

float rotate(const CurrentDomain &d, float direction, float x, float y)
{
    const bool is_south = d.rec.plat < 0.0F;
    if (x == 0.0F && y == 0.0F) {
        return is_south ? direction + d.rec.plon : direction - d.rec.plon;
    }
    return static_cast<float>(is_south ? direction + std::atan2(x, y) * kDegreesPerRadian
                                       : direction - std::atan2(x, -y) * kDegreesPerRadian);
}

float scale(const CurrentDomain &, float lat)
{
    return static_cast<float>(1.866 / (sind(lat) + 1.0));
}

} // namespace

extern const ProjectionForm kPolarForm;
const ProjectionForm kPolarForm = {
    .code = kProjPolar,
    .name = "pstereo",
    .words = {"polar", "ps"},
    .window = WindowForm::map,
    .set_up = set_up,
    .forward = forward,
    .forward_all = forward_all,
    .inverse = inverse,
    .rotate = rotate,
    .scale = scale,
    .wrap_width = nullptr,
    .skew = nullptr,
};

} // namespace tyr
