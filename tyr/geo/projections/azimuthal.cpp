#include "tyr/geo/projections/form_private.h"

using namespace tyr;

namespace tyr {

namespace {

constexpr double kTiny = 1e-10;

MapPoint forward(const CurrentDomain &d, double lat, double lon)
{
    const double turn = lon - d.rec.plon;
    const double sl = sind(lat);
    const double cl = cosd(lat);
    const double cd = cosd(turn);
    const double c = d.sin_pole * sl + d.cos_pole * cl * cd;
    if (c <= -1.0) {
        return kNowhere;
    }
    const double k = kEarthRadius * std::sqrt(2.0 / (c + 1.0));
    return {k * cl * sind(turn), k * (d.cos_pole * sl - cd * d.sin_pole * cl)};
}

MapPoint inverse(const CurrentDomain &d, double x, double y)
{
    const double plat = d.rec.plat;
    const double plon = d.rec.plon;
    const double rho = std::hypot(x, y);
    const double q = rho / (2.0 * kEarthRadius);
    if (!(q <= 1.0)) {
        return kNowhere;
    }
    if (rho < kTiny) {
        return {plat, plon, false};
    }
    const double c = 2.0 * std::asin(q);
    const double sc = std::sin(c);
    const double cc = std::cos(c);
    const double lat = asin_degrees(y * d.cos_pole * sc / rho + d.sin_pole * cc);
    if (std::fabs(std::fabs(plat) - 90.0) <= kTiny) {
        const double turn = plat >= 0.0 ? std::atan2(x, -y) : -std::atan2(-x, y);
        return {lat, plon + turn * kDegreesPerRadian};
    }
    const double base = cc - d.sin_pole * sind(lat);
    if (base == 0.0) {
        return {lat, plon};
    }
    return {lat, plon + std::atan2(d.cos_pole * x * sc, base * rho) * kDegreesPerRadian};
}

} // namespace

extern const ProjectionForm kAzimuthalForm;
const ProjectionForm kAzimuthalForm = {
    .code = kProjLambertAzimuthal,
    .name = "lambaz",
    .words = {"la"},
    .window = WindowForm::map,
    .set_up = nullptr,
    .forward = forward,
    .forward_all = nullptr,
    .inverse = inverse,
    .rotate = nullptr,
    .scale = nullptr,
    .wrap_width = nullptr,
    .skew = nullptr,
};

} // namespace tyr
