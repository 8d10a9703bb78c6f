#include <algorithm>

#include "tyr/geo/projections/form_private.h"
#include "tyr/geo/projections/vector_math_private.h"

using namespace tyr;

namespace tyr {

namespace {

constexpr double kConeCut = 89.0; ///< latitude held at the far pole

/// The cone's formulas want latitudes counted toward the pole that it opens to: standard latitudes
/// south of the equator turn their sign on a southern cone.
void set_up(CurrentDomain &d)
{
    d.std1 = 30.0;
    d.std2 = 60.0;
    if (!is_missing(d.rec.parm1)) {
        d.std1 = d.rec.parm1;
        d.std2 = is_missing(d.rec.parm2) ? d.std1 : static_cast<double>(d.rec.parm2);
    }
    d.sign = d.rec.plat < 0.0F ? -1.0 : 1.0;
    const bool is_turned = d.sign < 0.0 && d.std1 <= 0.0 && d.std2 <= 0.0;
    const double std1 = is_turned ? -d.std1 : d.std1;
    const double std2 = is_turned ? -d.std2 : d.std2;
    const double tan1 = tand(45.0 - std1 / 2.0);
    const double tan2 = tand(45.0 - std2 / 2.0);
    d.cone = std1 == std2 ? cosd(90.0 - std1)
                          : (std::log(cosd(std1)) - std::log(cosd(std2))) /
                                (std::log(tan1) - std::log(tan2));
    d.radius = kEarthRadius * cosd(std1) / (std::pow(tan1, d.cone) * d.cone);
}

MapPoint forward(const CurrentDomain &d, double lat, double lon)
{
    const double s = d.sign;
    lat = s > 0.0 ? std::max(lat, -kConeCut) : std::min(lat, kConeCut);
    const double r = d.radius * std::pow(tand(45.0 - s * lat / 2.0), d.cone);
    const double t = wrap_longitude(lon - d.rec.plon) * d.cone * kRadiansPerDegree;
    return {r * std::sin(t), -s * r * std::cos(t)};
}

TYR_VECTOR_LOOP void forward_all(const CurrentDomain &d, Places p)
{
    const double s = d.sign;
    const double radius = d.radius;
    const double cone = d.cone;
    const double plon = d.rec.plon;
    for (int i = 0; i < p.count; ++i) {
        const double toward = s * p.lat[i] < -kConeCut ? -kConeCut : s * p.lat[i];
        const double r = radius * pow(tan((45.0 - toward / 2.0) * kRadiansPerDegree), cone);
        const double t = wrapped(p.lon[i] - plon) * cone * kRadiansPerDegree;
        p.x[i] = r * sin(t);
        p.y[i] = -s * r * sin(t + kQuarter);
    }
}

MapPoint inverse(const CurrentDomain &d, double x, double y)
{
    const double s = d.sign;
    const double r = std::hypot(x, y);
    const double a = r == 0.0 ? 0.0 : std::atan2(x, -s * y) * kDegreesPerRadian;
    const double lat =
        s * 90.0 - 2.0 * s * std::atan(std::pow(r / d.radius, 1.0 / d.cone)) * kDegreesPerRadian;
    return {lat, a / d.cone + d.rec.plon};
}

float rotate(const CurrentDomain &d, float direction, float x, float y)
{
    return static_cast<float>(direction - d.sign * std::atan2(x, -d.sign * y) * kDegreesPerRadian);
}

float scale(const CurrentDomain &d, float)
{
    return is_missing(d.rec.parm3) ? 1.0F : d.rec.parm3;
}

} // namespace

extern const ProjectionForm kLambertForm;
const ProjectionForm kLambertForm = {
    .code = kProjLambert,
    .name = "lamb",
    .words = {"lamb", "lc"},
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
