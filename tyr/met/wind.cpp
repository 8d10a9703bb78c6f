#include "tyr/met/wind.h"

#include <cmath>

#include "tyr/base/angle.h"
#include "tyr/base/missing.h"

namespace {

constexpr double kCalm = 0.01; // speed below which a wind has no direction

} // namespace

int MET_wind_uv(float *u, float *v, float direction, float speed)
{
    *u = kMissing;
    *v = kMissing;
    if (is_missing(direction) || is_missing(speed)) {
        return -1;
    }
    const double angle = direction * kRadiansPerDegree;
    *u = static_cast<float>(-speed * std::sin(angle));
    *v = static_cast<float>(-speed * std::cos(angle));
    return 0;
}

int MET_wind_dirspd(float *direction, float *speed, float u, float v)
{
    *direction = kMissing;
    *speed = kMissing;
    if (is_missing(u) || is_missing(v)) {
        return -1;
    }
    const double length = std::hypot(double{u}, double{v});
    *speed = static_cast<float>(length);
    *direction = 0.0F;
    if (length < kCalm) {
        return 0;
    }
    const double angle = std::atan2(-double{u}, -double{v}) * kDegreesPerRadian;
    *direction = static_cast<float>(angle < 0.0 ? angle + 360.0 : angle);
    if (*direction >= 360.0F) { // a hair west of north, rounded up
        *direction = 0.0F;
    }
    return 0;
}
