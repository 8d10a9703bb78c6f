#include <cmath>

#include "tyr/base/angle.h"
#include "tyr/geo/projection.h"
#include "tyr/grid_math/direction_rows_private.h"
#include "tyr/grid_math/pointwise.h"
#include "tyr/grid_math/sample.h"

using namespace tyr;

namespace {

using tyr::GridOp;
using tyr::MathCall;
using tyr::Operands;

constexpr double kTurn = 360.0;

float wrapped(double direction)
{
    const double inside = direction - kTurn * std::floor(direction / kTurn);
    const auto value = static_cast<float>(inside);
    return value >= 360.0F ? 0.0F : value;
}

float direction_of(float u, float v)
{
    float direction = 0.0F;
    tyr::direction_row(&u, &v, &direction, 1);
    return direction;
}

float east_part(float direction, float speed)
{
    return static_cast<float>(-speed * sind(direction));
}

float north_part(float direction, float speed)
{
    return static_cast<float>(-speed * cosd(direction));
}

template <class RowWork> bool rows2(const MathCall &c, RowWork row)
{
    tyr::row_points(*c.out, Operands<2>{c.operand(0), c.operand(1)}, row);
    return true;
}

/// f(a, b, plot x, plot y) at each point, on the result's own projection.
template <class F> bool walk2(const MathCall &c, F f)
{
    const tyr::DomainScope scope(c.out->domain);
    float *out = c.out->values;
    const tyr::Operand a = c.operand(0);
    const tyr::Operand b = c.operand(1);
    tyr::walk_points(c.out->domain, [&](size_t i, float x, float y) {
        const float p = a.values == nullptr ? a.constant : a.values[i];
        const float q = b.values == nullptr ? b.constant : b.values[i];
        const bool is_out = is_missing(p) || is_missing(q);
        out[i] = is_out ? kMissing : tyr::checked(f(p, q, x, y), false);
    });
    return true;
}

/// f(a, b, c, d), of which only a and b are tested for Missing.
template <class F> bool product(const MathCall &c, F f)
{
    constexpr size_t kTested = 2;
    tyr::quick_points(*c.out, Operands<4>{c.operand(0), c.operand(1), c.operand(2), c.operand(3)},
                      f, kTested);
    return true;
}

} // namespace

bool tyr::run_wind(const MathCall &c)
{
    switch (c.function->op) {
    case GridOp::speed:
        quick_points(*c.out, Operands<2>{c.operand(0), c.operand(1)},
                     [](float u, float v) { return std::sqrt(u * u + v * v); });
        return true;
    case GridOp::direction:
        return rows2(c, direction_row);
    case GridOp::true_direction:
        return walk2(c, [](float u, float v, float x, float y) {
            return wrapped(MAP_unrotate_dir(direction_of(u, v), x, y));
        });
    case GridOp::east_wind:
        return rows2(c, east_part_row);
    case GridOp::north_wind:
        return rows2(c, north_part_row);
    case GridOp::grid_east_wind:
        return walk2(c, [](float direction, float speed, float x, float y) {
            const float to_grid = MAP_rotate_dir(direction, x, y);
            return is_missing(to_grid) ? kMissing : east_part(to_grid, speed);
        });
    case GridOp::grid_north_wind:
        return walk2(c, [](float direction, float speed, float x, float y) {
            const float to_grid = MAP_rotate_dir(direction, x, y);
            return is_missing(to_grid) ? kMissing : north_part(to_grid, speed);
        });
    case GridOp::dot:
        return product(c, [](float a, float b, float p, float q) { return a * p + b * q; });
    case GridOp::cross:
        return product(c, [](float a, float b, float p, float q) { return a * q - b * p; });
    default:
        return false;
    }
}
