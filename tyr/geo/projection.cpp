#include "tyr/geo/projection.h"

#include <algorithm>
#include <cmath>

#include "tyr/base/angle.h"
#include "tyr/base/missing.h"
#include "tyr/geo/domain_state.h"
#include "tyr/met/thermo.h"

namespace {

constexpr double kPi = 3.1415926535898;
constexpr double kHalfTurn = 180.0;
constexpr double kTurn = 360.0;
constexpr double kFarLimit = 75.0;   ///< polar stereographic: latitude held in the far hemisphere
constexpr double kPolarCut = 89.9;   ///< Mercator: latitude held
constexpr double kConeCut = 89.0;    ///< Lambert conic: latitude held at the far pole
constexpr double kPolePoint = 89.99; ///< Mollweide: the pole has no width
constexpr double kTiny = 1e-10;
constexpr double kRounding = 1e-6; ///< of a coordinate held as float
constexpr double kStuvePower = 0.285714;
constexpr double kStepKm = 111.195;           ///< km of a degree, for the direction of a small step
constexpr double kReferencePressure = 1000.0; ///< hPa
constexpr double kZeroCelsius = 273.16;
constexpr double kPoisson = 0.286; ///< exponent of Poisson's equation, as MET_theta has it
constexpr double kRootHalf = 0.70710678118654752;

struct Point {
    double a = kMissing; ///< x or latitude
    double b = kMissing; ///< y or longitude
    bool shown = true;
};

constexpr Point kNowhere = {kMissing, kMissing, false};

const CurrentDomain &dom()
{
    return current_domain();
}

/// Into -180 to 180, both ends kept.
double wrap(double lon)
{
    if (lon >= -kHalfTurn && lon <= kHalfTurn) {
        return lon;
    }
    lon = std::fmod(lon, kTurn);
    if (lon > kHalfTurn) {
        return lon - kTurn;
    }
    return lon < -kHalfTurn ? lon + kTurn : lon;
}

double asin_degrees(double value)
{
    return std::asin(std::clamp(value, -1.0, 1.0)) * kDegreesPerRadian;
}

// ---- polar stereographic ----

Point polar_forward(double lat, double lon)
{
    const double s = dom().sign;
    const double held = s * lat > kFarLimit ? kFarLimit : s * lat;
    const double r = dom().radius * tand((held + 90.0) / 2.0);
    const double t = (lon - dom().rec.plon) * kRadiansPerDegree;
    return {r * std::sin(t), s * r * std::cos(t)};
}

Point polar_inverse(double x, double y)
{
    const double s = dom().sign;
    const double r = std::hypot(x, y);
    const double a = r == 0.0 ? 0.0 : std::atan2(x, s * y) * kDegreesPerRadian;
    return {(2.0 * std::atan(r / dom().radius) * kDegreesPerRadian - 90.0) * s, dom().rec.plon + a};
}

// ---- latitude and longitude ----

Point latlon_forward(double lat, double lon)
{
    return {wrap(lon - dom().rec.plon), lat};
}

Point latlon_inverse(double x, double y)
{
    return {y, wrap(dom().rec.plon + x)};
}

// ---- Mercator ----

Point mercator_forward(double lat, double lon)
{
    const double x = wrap(lon - dom().rec.plon) * kEarthRadius * kRadiansPerDegree;
    const double held = std::clamp(lat, -kPolarCut, kPolarCut);
    return {x, -kEarthRadius * std::log(tand(45.0 - held / 2.0))};
}

Point mercator_inverse(double x, double y)
{
    const double lat = 90.0 - std::atan(1.0 / std::exp(y / kEarthRadius)) * 2.0 * kDegreesPerRadian;
    return {lat, wrap(dom().rec.plon + x / (kEarthRadius * kRadiansPerDegree))};
}

// ---- Lambert conformal conic ----

Point lambert_forward(double lat, double lon)
{
    const double s = dom().sign;
    lat = s > 0.0 ? std::max(lat, -kConeCut) : std::min(lat, kConeCut);
    const double r = dom().radius * std::pow(tand(45.0 - s * lat / 2.0), dom().cone);
    const double t = wrap(lon - dom().rec.plon) * dom().cone * kRadiansPerDegree;
    return {r * std::sin(t), -s * r * std::cos(t)};
}

Point lambert_inverse(double x, double y)
{
    const double s = dom().sign;
    const double r = std::hypot(x, y);
    const double a = r == 0.0 ? 0.0 : std::atan2(x, -s * y) * kDegreesPerRadian;
    const double lat = s * 90.0 - 2.0 * s *
                                      std::atan(std::pow(r / dom().radius, 1.0 / dom().cone)) *
                                      kDegreesPerRadian;
    return {lat, a / dom().cone + dom().rec.plon};
}

// ---- orthographic ----

Point ortho_forward(double lat, double lon)
{
    const double d = lon - dom().rec.plon;
    const double sl = sind(lat);
    const double cl = cosd(lat);
    const double cd = cosd(d);
    if (dom().sin_pole * sl + dom().cos_pole * cl * cd < 0.0) {
        return kNowhere;
    }
    return {kEarthRadius * cl * sind(d),
            kEarthRadius * (dom().cos_pole * sl - dom().sin_pole * cl * cd)};
}

Point ortho_inverse(double x, double y)
{
    const double w = kEarthRadius * kEarthRadius - x * x - y * y;
    if (w < 0.0) {
        return kNowhere;
    }
    const double z = std::sqrt(w);
    return {asin_degrees((dom().cos_pole * y + dom().sin_pole * z) / kEarthRadius),
            dom().rec.plon +
                std::atan2(x, dom().cos_pole * z - dom().sin_pole * y) * kDegreesPerRadian};
}

// ---- Mollweide ----

Point mollweide_forward(double lat, double lon)
{
    constexpr int kMostSteps = 15;
    double t = lat * kRadiansPerDegree;
    const double target = kPi * sind(lat);
    for (int i = 0; i < kMostSteps && std::fabs(lat) <= kPolePoint; ++i) {
        const double step = -(std::sin(t) + t - target) / (std::cos(t) + 1.0);
        t += step;
        if (std::fabs(step) < kTiny) {
            break;
        }
    }
    if (std::fabs(lat) > kPolePoint) {
        return {0.0, std::copysign(kEarthRadius, lat)};
    }
    const double d = wrap(lon - dom().rec.plon);
    return {d * kEarthRadius / 90.0 * std::cos(t / 2.0), kEarthRadius * std::sin(t / 2.0)};
}

Point mollweide_inverse(double x, double y)
{
    double v = y / kEarthRadius;
    if (!(std::fabs(v) <= 1.0 + kRounding)) {
        return kNowhere;
    }
    v = std::clamp(v, -1.0, 1.0);
    const double u = std::asin(v);
    const double w = (std::sin(2.0 * u) + 2.0 * u) / kPi;
    if (!(w >= -1.0 && w <= 1.0)) {
        return kNowhere;
    }
    const double width = std::cos(u) * kEarthRadius;
    const double lon = width < kTiny ? 0.0 : x * 90.0 / width;
    return {std::asin(w) * kDegreesPerRadian, dom().rec.plon + lon};
}

// ---- Lambert azimuthal equal area ----

Point azimuthal_forward(double lat, double lon)
{
    const double d = lon - dom().rec.plon;
    const double sl = sind(lat);
    const double cl = cosd(lat);
    const double cd = cosd(d);
    const double c = dom().sin_pole * sl + dom().cos_pole * cl * cd;
    if (c <= -1.0) {
        return kNowhere;
    }
    const double k = kEarthRadius * std::sqrt(2.0 / (c + 1.0));
    return {k * cl * sind(d), k * (dom().cos_pole * sl - cd * dom().sin_pole * cl)};
}

Point azimuthal_inverse(double x, double y)
{
    const double plat = dom().rec.plat;
    const double plon = dom().rec.plon;
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
    const double lat = asin_degrees(y * dom().cos_pole * sc / rho + dom().sin_pole * cc);
    if (std::fabs(std::fabs(plat) - 90.0) <= kTiny) {
        const double turn = plat >= 0.0 ? std::atan2(x, -y) : -std::atan2(-x, y);
        return {lat, plon + turn * kDegreesPerRadian};
    }
    const double d = cc - dom().sin_pole * sind(lat);
    if (d == 0.0) {
        return {lat, plon};
    }
    return {lat, plon + std::atan2(dom().cos_pole * x * sc, d * rho) * kDegreesPerRadian};
}

// ---- geostationary satellite view ----

/// Ratio of the axes squared.
constexpr double kAxes = kPolarRadius * kPolarRadius / (kEquatorRadius * kEquatorRadius);

bool has_scan_angles()
{
    return dom().rec.parm2 == 1.0F;
}

Point satellite_forward(double lat, double lon)
{
    const double h = dom().distance;
    const double angle =
        dom().rec.ellipsoid != 0 ? std::atan(kAxes * tand(lat)) : lat * kRadiansPerDegree;
    const double cp = std::cos(angle);
    const double sp = std::sin(angle);
    const double t = (lon - dom().rec.plon) * kRadiansPerDegree;
    const double ct = std::cos(t);
    const double st = std::sin(t);
    if (cp * ct < kEarthRadius / h) {
        return kNowhere;
    }
    const double re = dom().rec.ellipsoid != 0
                          ? kPolarRadius / std::sqrt(1.0 - (1.0 - kAxes) * cp * cp)
                          : kEarthRadius;
    const double f = h - re * cp * ct;
    double x = re * st * cp / f;
    double y = re * sp / std::hypot(re * st * cp, f);
    if (has_scan_angles()) {
        x = std::atan(x);
        y = std::atan(y);
    }
    return {x * h, y * h};
}

Point sphere_inverse(double x, double y)
{
    const double h = dom().distance;
    if (has_scan_angles()) {
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
            dom().rec.plon + asin_degrees(k * x / (std::cos(lat) * kEarthRadius))};
}

Point spheroid_inverse(double x, double y)
{
    const double h = dom().distance;
    const double ax = has_scan_angles() ? x / h : std::atan(x / h);
    const double ay = has_scan_angles() ? y / h : std::atan(y / h);
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
            dom().rec.plon + std::atan(q / p) * kDegreesPerRadian};
}

Point satellite_inverse(double x, double y)
{
    return dom().rec.ellipsoid != 0 ? spheroid_inverse(x, y) : sphere_inverse(x, y);
}

// ---- thermodynamic plot spaces ----

/// Turns a tephigram's point by 45 degrees in units of the viewport; to = 1 forward, -1 back.
/// Without a viewport it stays as it is.
Point turn_in_viewport(double x, double y, double to)
{
    const float *w = dom().window;
    const float *v = dom().viewport;
    const double width = static_cast<double>(w[1]) - w[0];
    const double height = static_cast<double>(w[3]) - w[2];
    if (v[1] <= v[0] || v[3] <= v[2] || width == 0.0 || height == 0.0) {
        return {x, y};
    }
    const double sx = (static_cast<double>(v[1]) - v[0]) / width;
    const double sy = (static_cast<double>(v[3]) - v[2]) / height;
    const double xv = (x - w[0]) * sx;
    const double yv = (y - w[2]) * sy;
    return {w[0] + (xv + to * yv) * kRootHalf / sx, w[2] + (yv - to * xv) * kRootHalf / sy};
}

Point theta_forward(double t, double p)
{
    const float theta = MET_theta(static_cast<float>(t + kZeroCelsius), static_cast<float>(p));
    return theta > 0.0F ? Point{t, std::log(static_cast<double>(theta))} : kNowhere;
}

Point theta_inverse(double x, double y)
{
    // Poisson's equation, solved for the pressure
    return {x, kReferencePressure * std::pow((x + kZeroCelsius) / std::exp(y), 1.0 / kPoisson)};
}

// ---- the switch ----

Point forward(double a, double b)
{
    const CurrentDomain &d = dom();
    const float *w = d.window;
    switch (d.rec.proj) {
    case kProjNone:
        return {a, b};
    case kProjPolar:
        return polar_forward(a, wrap(b));
    case kProjLatLon:
        return latlon_forward(a, wrap(b));
    case kProjMercator:
        return mercator_forward(a, wrap(b));
    case kProjLambert:
        return lambert_forward(a, wrap(b));
    case kProjOrtho:
        return ortho_forward(a, wrap(b));
    case kProjMollweide:
        return mollweide_forward(a, wrap(b));
    case kProjLambertAzimuthal:
        return azimuthal_forward(a, wrap(b));
    case kProjSatellite:
        return satellite_forward(a, wrap(b));
    case kProjXY:
    case kProjTimeHeight:
        return {(a - w[0]) * d.fx + w[0], (b - w[2]) * d.fy + w[2]};
    case kProjXP:
        return {(a - w[0]) * d.fx + w[0], (w[2] - b) * d.fy + w[2]};
    case kProjXLogP:
    case kProjEmagram:
        return {a, -std::log(b)};
    case kProjPolarPlot:
        return {sind(a) * b, cosd(a) * b};
    case kProjStuve:
        return {a, -std::pow(b, kStuvePower)};
    case kProjPixel:
        return {a, -b};
    case kProjSkewT:
        return {a + (-std::log(b) - w[2]) * d.skew, -std::log(b)};
    case kProjTephigram: {
        const Point p = theta_forward(a, b);
        return p.shown ? turn_in_viewport(p.a, p.b, d.skew) : p;
    }
    case kProjRotatedTephigram:
        return theta_forward(a, b);
    default:
        return kNowhere;
    }
}

Point inverse(double x, double y)
{
    const CurrentDomain &d = dom();
    const float *w = d.window;
    switch (d.rec.proj) {
    case kProjPolar:
        return polar_inverse(x, y);
    case kProjLatLon:
        return latlon_inverse(x, y);
    case kProjMercator:
        return mercator_inverse(x, y);
    case kProjLambert:
        return lambert_inverse(x, y);
    case kProjOrtho:
        return ortho_inverse(x, y);
    case kProjMollweide:
        return mollweide_inverse(x, y);
    case kProjLambertAzimuthal:
        return azimuthal_inverse(x, y);
    case kProjSatellite:
        return satellite_inverse(x, y);
    case kProjXY:
    case kProjTimeHeight:
        return {(x - w[0]) / d.fx + w[0], (y - w[2]) / d.fy + w[2]};
    case kProjXP:
        return {(x - w[0]) / d.fx + w[0], w[2] - (y - w[2]) / d.fy};
    case kProjXLogP:
    case kProjEmagram:
        return {x, std::exp(-y)};
    case kProjPolarPlot: {
        const double a = x == 0.0 && y == 0.0 ? 0.0 : std::atan2(x, y) * kDegreesPerRadian;
        return {a < 0.0 ? a + kTurn : a, std::hypot(x, y)};
    }
    case kProjStuve:
        return {x, std::pow(-y, 1.0 / kStuvePower)};
    case kProjPixel:
        return {x, -y};
    case kProjSkewT:
        return {x - (y - w[2]) * d.skew, std::exp(-y)};
    case kProjTephigram: {
        const Point p = turn_in_viewport(x, y, -d.skew);
        return theta_inverse(p.a, p.b);
    }
    case kProjRotatedTephigram:
        return theta_inverse(x, y);
    default:
        return kNowhere;
    }
}

/// Codes with a name and no formula leave both outputs as they are.
bool has_formula(int proj)
{
    return proj != kProjGnomonic && proj != kProjXZ && proj != kProjZoom && proj != kProjSize;
}

} // namespace

int MAP_ll_to_xy(float *x, float *y, float lat, float lon)
{
    if (!has_formula(dom().rec.proj)) {
        return 1;
    }
    Point p = forward(lat, lon);
    if (is_map_projection(dom().rec.proj) && !(std::isfinite(p.a) && std::isfinite(p.b))) {
        p = kNowhere;
    }
    *x = static_cast<float>(p.a);
    *y = static_cast<float>(p.b);
    return p.shown ? 1 : 0;
}

int MAP_xy_to_ll(float *lat, float *lon, float x, float y)
{
    if (!has_formula(dom().rec.proj) || dom().rec.proj == kProjNone) {
        return 1;
    }
    const Point p = inverse(x, y);
    *lat = static_cast<float>(p.a);
    *lon = static_cast<float>(p.b);
    return p.shown ? 1 : 0;
}

void MAP_center_xy(float *x, float *y)
{
    MAP_ll_to_xy(x, y, dom().rec.clat, dom().rec.clon);
}

float MAP_rotate_dir(float direction, float x, float y)
{
    const CurrentDomain &d = dom();
    const bool is_south = d.rec.plat < 0.0F;
    switch (d.rec.proj) {
    case kProjPolar:
        if (x == 0.0F && y == 0.0F) {
            return is_south ? direction + d.rec.plon : direction - d.rec.plon;
        }
        return static_cast<float>(is_south ? direction + std::atan2(x, y) * kDegreesPerRadian
                                           : direction - std::atan2(x, -y) * kDegreesPerRadian);
    case kProjLambert:
        return static_cast<float>(direction -
                                  d.sign * std::atan2(x, -d.sign * y) * kDegreesPerRadian);
    case kProjSatellite: {
        const Point from = inverse(x, y);
        if (!from.shown) {
            return kMissing;
        }
        // not (x, y): on the sphere the inverse misses it by more than the step
        const Point here = forward(from.a, from.b);
        const Point to = forward(from.a + cosd(direction) / kStepKm,
                                 from.b + sind(direction) / (cosd(from.a) * kStepKm));
        return here.shown && to.shown
                   ? static_cast<float>(std::atan2(to.a - here.a, to.b - here.b) *
                                        kDegreesPerRadian)
                   : kMissing;
    }
    default:
        return direction;
    }
}

float MAP_scale_factor(float lat, float /*lon*/)
{
    switch (dom().rec.proj) {
    case kProjPolar:
        return static_cast<float>(1.866 / (sind(lat) + 1.0));
    case kProjLambert:
        return is_missing(dom().rec.parm3) ? 1.0F : dom().rec.parm3;
    default:
        return 1.0F;
    }
}
