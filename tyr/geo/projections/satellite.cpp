#include <algorithm>

#include "tyr/geo/projections/form_private.h"

using namespace tyr;

namespace tyr {

namespace {

constexpr double kStepKm = 111.195; ///< km of a degree, for the direction of a small step

void set_up(CurrentDomain &d)
{
    d.distance = is_missing(d.rec.parm1) ? kSatelliteDistance : static_cast<double>(d.rec.parm1);
}

/// Ratio of the axes squared.
constexpr double kAxes = kPolarRadius * kPolarRadius / (kEquatorRadius * kEquatorRadius);

bool has_scan_angles(const CurrentDomain &d)
{
    return d.rec.parm2 == 1.0F;
}

MapPoint forward(const CurrentDomain &d, double lat, double lon)
{
    const double h = d.distance;
    const double angle =
        d.rec.ellipsoid != 0 ? std::atan(kAxes * tand(lat)) : lat * kRadiansPerDegree;
    const double cp = std::cos(angle);
    const double sp = std::sin(angle);
    const double t = (lon - d.rec.plon) * kRadiansPerDegree;
    const double ct = std::cos(t);
    const double st = std::sin(t);
    if (cp * ct < kEarthRadius / h) {
        return kNowhere;
    }
    const double re = d.rec.ellipsoid != 0 ? kPolarRadius / std::sqrt(1.0 - (1.0 - kAxes) * cp * cp)
                                           : kEarthRadius;
    const double f = h - re * cp * ct;
    double x = re * st * cp / f;
    double y = re * sp / std::hypot(re * st * cp, f);
    if (has_scan_angles(d)) {
        x = std::atan(x);
        y = std::atan(y);
    }
    return {x * h, y * h};
}

MapPoint sphere_inverse(const CurrentDomain &d, double x, double y)
{
    const double h = d.distance;
    if (has_scan_angles(d)) {
        x = std::tan(x / h) * h;
        y = std::tan(y / h) * h;
    }
    const double q = h * h + x * x + y * y;
    const double root = h * h * h * h - (h * h - kEquatorRadius * kEquatorRadius) * q;
    if (!(root >= 0.0)) {
        return kNowhere;
    }
    const double k = (h * h - std::sqrt(root)) / q;
    const double lat = std::asin(std::clamp(k * y / kEarthRadius, -1.0, 1.0));
    return {lat * kDegreesPerRadian,
            d.rec.plon + asin_degrees(k * x / (std::cos(lat) * kEarthRadius))};
}

MapPoint spheroid_inverse(const CurrentDomain &d, double x, double y)
{
    const double h = d.distance;
    const double ax = has_scan_angles(d) ? x / h : std::atan(x / h);
    const double ay = has_scan_angles(d) ? y / h : std::atan(y / h);
    const double cx = std::cos(ax);
    const double cy = std::cos(ay);
    const double sy = std::sin(ay);
    const double m = sy * sy / kAxes + cy * cy;
    const double root = h * cx * cy * h * cx * cy - m * (h * h - kEquatorRadius * kEquatorRadius);
    if (!(root >= 0.0)) {
        return kNowhere;
    }
    const double k = (h * cx * cy - std::sqrt(root)) / m;
    const double p = h - k * cx * cy;
    const double q = k * std::sin(ax) * cy;
    return {std::atan(k * sy / (kAxes * std::hypot(q, p))) * kDegreesPerRadian,
            d.rec.plon + std::atan(q / p) * kDegreesPerRadian};
}

MapPoint inverse(const CurrentDomain &d, double x, double y)
{
    return d.rec.ellipsoid != 0 ? spheroid_inverse(d, x, y) : sphere_inverse(d, x, y);
}

float rotate(const CurrentDomain &d, float direction, float x, float y)
{
    const MapPoint from = inverse(d, x, y);
    if (!from.shown) {
        return kMissing;
    }
    // not (x, y): on the sphere the inverse misses it by more than the step
    const MapPoint here = forward(d, from.a, wrap_longitude(from.b));
    const MapPoint to =
        forward(d, from.a + cosd(direction) / kStepKm,
                wrap_longitude(from.b + sind(direction) / (cosd(from.a) * kStepKm)));
    return here.shown && to.shown
               ? static_cast<float>(std::atan2(to.a - here.a, to.b - here.b) * kDegreesPerRadian)
               : kMissing;
}

} // namespace

extern const ProjectionForm kSatelliteForm;
const ProjectionForm kSatelliteForm = {
    .code = kProjSatellite,
    .name = "sat",
    .words = {"sat"},
    .window = WindowForm::map,
    .set_up = set_up,
    .forward = forward,
    .forward_all = nullptr,
    .inverse = inverse,
    .rotate = rotate,
    .scale = nullptr,
    .wrap_width = nullptr,
    .skew = nullptr,
};

} // namespace tyr
