#include <algorithm>
#include <array>
#include <cmath>

#include "tyr/base/missing.h"
#include "tyr/grid_math/direction_rows_private.h"
#include "tyr/grid_math/grid_places.h"
#include "tyr/grid_math/vector_math_private.h"

namespace tyr {

namespace {

constexpr float kMostDegrees = 1e8F; ///< up to here a float tells an angle at all

inline float checked(double value, float a, float b)
{
    const auto result = static_cast<float>(value);
    const bool is_bad = (a == kMissing) | (b == kMissing) | !(std::fabs(result) <= kLargest);
    return is_bad ? kMissing : result;
}

/// -speed times the sine of the direction turned by so many quarters.
inline float part(float direction, float speed, std::uint64_t turned)
{
    const bool is_angle = std::fabs(direction) <= kMostDegrees;
    const double sine = quick_sind(is_angle ? static_cast<double>(direction) : 0.0, turned);
    return is_angle ? checked(-static_cast<double>(speed) * sine, direction, speed) : kMissing;
}

/// Where a wind comes from, of the angle that it goes to; 0 for a calm.
inline float turned(float angle, float u, float v)
{
    const float half = angle + 180.0F;
    const float inside = half >= 360.0F ? 0.0F : half;
    const float direction = ((u == 0.0F) & (v == 0.0F)) ? 0.0F : inside;
    return angle == kMissing ? kMissing : direction;
}

} // namespace

TYR_WIDE void atan2d_row(const float *y, const float *x, float *angle, size_t count)
{
#pragma GCC ivdep
    for (size_t i = 0; i < count; ++i) {
        angle[i] = checked(quick_atan2d(y[i], x[i]), y[i], x[i]);
    }
}

void direction_row(const float *u, const float *v, float *direction, size_t count)
{
    constexpr size_t kBlock = 256;
    std::array<float, kBlock> angle;
    for (size_t at = 0; at < count; at += kBlock) {
        const size_t n = std::min(kBlock, count - at);
        atan2d_row(u + at, v + at, angle.data(), n);
        for (size_t i = 0; i < n; ++i) {
            direction[at + i] = turned(angle[i], u[at + i], v[at + i]);
        }
    }
}

TYR_WIDE void east_part_row(const float *direction, const float *speed, float *u, size_t count)
{
#pragma GCC ivdep
    for (size_t i = 0; i < count; ++i) {
        u[i] = part(direction[i], speed[i], 0);
    }
}

TYR_WIDE void north_part_row(const float *direction, const float *speed, float *v, size_t count)
{
#pragma GCC ivdep
    for (size_t i = 0; i < count; ++i) {
        v[i] = part(direction[i], speed[i], 1);
    }
}

} // namespace tyr
