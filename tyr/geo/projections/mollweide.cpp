#include <algorithm>
#include <array>

#include "tyr/geo/projections/form_private.h"
#include "tyr/geo/projections/vector_math_private.h"

using namespace tyr;

namespace tyr {

namespace {

constexpr double kPi = 3.1415926535898;
constexpr double kPolePoint = 89.99; ///< the pole has no width
constexpr double kTiny = 1e-10;
constexpr int kMostSteps = 15;         ///< toward the angle of a latitude
constexpr double kRounding = 1e-6;     ///< of a coordinate held as float
constexpr float kSideRadius = 63.713F; ///< half the height of the world, plot units
constexpr float kWidth = 254.852F;     ///< of the world at the equator

MapPoint forward(const CurrentDomain &d, double lat, double lon)
{
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
    const double turn = wrap_longitude(lon - d.rec.plon);
    return {turn * kEarthRadius / 90.0 * std::cos(t / 2.0), kEarthRadius * std::sin(t / 2.0)};
}

/// One step toward the angle of every place. @return in `steps` how far each went
TYR_VECTOR_LOOP void step_all(int count, const double *target, double *angle, double *steps)
{
    for (int i = 0; i < count; ++i) {
        const double t = angle[i];
        const double step = -(sin(t) + t - target[i]) / (sin(t + kQuarter) + 1.0);
        angle[i] = t + step;
        steps[i] = step;
    }
}

TYR_VECTOR_LOOP void aim_all(Places p, double *target, double *angle)
{
    for (int i = 0; i < p.count; ++i) {
        const double most = p.lat[i] > kPolePoint ? kPolePoint : p.lat[i];
        angle[i] = (most < -kPolePoint ? -kPolePoint : most) * kRadiansPerDegree;
        target[i] = kPi * sin(angle[i]);
    }
}

TYR_VECTOR_LOOP void place_all(double plon, Places p, const double *angle)
{
    for (int i = 0; i < p.count; ++i) {
        const double half = angle[i] / 2.0;
        const bool is_pole = p.lat[i] > kPolePoint || p.lat[i] < -kPolePoint;
        const double x = wrapped(p.lon[i] - plon) * kEarthRadius / 90.0 * sin(half + kQuarter);
        p.x[i] = is_pole ? 0.0 : x;
        p.y[i] =
            is_pole ? (p.lat[i] < 0.0 ? -kEarthRadius : kEarthRadius) : kEarthRadius * sin(half);
    }
}

void forward_all(const CurrentDomain &d, Places p)
{
    std::array<double, kMostPlaces> target;
    std::array<double, kMostPlaces> angle;
    std::array<double, kMostPlaces> steps;
    aim_all(p, target.data(), angle.data());
    const auto is_far = [](double step) { return std::fabs(step) >= kTiny; };
    for (int i = 0; i < kMostSteps; ++i) {
        step_all(p.count, target.data(), angle.data(), steps.data());
        if (std::none_of(steps.begin(), steps.begin() + p.count, is_far)) {
            break;
        }
    }
    place_all(d.rec.plon, p, angle.data());
}

MapPoint inverse(const CurrentDomain &d, double x, double y)
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
    return {std::asin(w) * kDegreesPerRadian, d.rec.plon + lon};
}

float wrap_width(float y)
{
    const float part = y / kSideRadius;
    return std::sqrt(std::fmax(1.0F - part * part, 0.0F)) * kWidth;
}

} // namespace

extern const ProjectionForm kMollweideForm;
const ProjectionForm kMollweideForm = {
    .code = kProjMollweide,
    .name = "moll",
    .words = {"mo"},
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
