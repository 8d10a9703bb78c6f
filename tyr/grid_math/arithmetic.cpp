#include <cmath>
#include <limits>

#include "tyr/base/angle.h"
#include "tyr/grid_math/direction_rows_private.h"
#include "tyr/grid_math/pointwise.h"

using namespace tyr;

namespace {

using tyr::GridOp;
using tyr::MathCall;
using tyr::Operands;

template <class F> bool quick1(const MathCall &c, F f)
{
    tyr::quick_points(*c.out, Operands<1>{c.operand(0)}, f);
    return true;
}

template <class F> bool quick2(const MathCall &c, F f)
{
    tyr::quick_points(*c.out, Operands<2>{c.operand(0), c.operand(1)}, f);
    return true;
}

template <class F> bool costly1(const MathCall &c, F f)
{
    tyr::costly_points(*c.out, Operands<1>{c.operand(0)},
                       [f](float a) { return static_cast<float>(f(double{a})); });
    return true;
}

template <class F> bool costly2(const MathCall &c, F f)
{
    tyr::costly_points(*c.out, Operands<2>{c.operand(0), c.operand(1)}, [f](float a, float b) {
        return static_cast<float>(f(double{a}, double{b}));
    });
    return true;
}

/// What the operands at a slice's points come to, and how many of them aren't Missing.
struct Totals {
    std::array<float, tyr::kPointSlice> total;
    std::array<int, tyr::kPointSlice> seen;
};

/// Folds the operands that aren't Missing into each point: step(so far, next) from `start`, and
/// then finish(total, number of them).
template <class Step, class Finish>
bool fold(const MathCall &c, float start, Step step, Finish finish)
{
    const auto work = [&](const tyr::Lanes<1> &, size_t at, size_t count) {
        Totals totals;
        totals.total.fill(start);
        totals.seen.fill(0);
        std::array<float, tyr::kPointSlice> constant;
        for (int k = 0; k < c.count; ++k) {
            const tyr::Operand next = c.operand(k);
            if (next.values == nullptr)
                constant.fill(next.constant);
            const float *lane = next.values == nullptr ? constant.data() : next.values + at;
            for (size_t i = 0; i < count; ++i) {
                const float both = step(totals.total[i], lane[i]);
                totals.total[i] = lane[i] == kMissing ? totals.total[i] : both;
                totals.seen[i] += lane[i] == kMissing ? 0 : 1;
            }
        }
        float *out = c.out->values + at;
        for (size_t i = 0; i < count; ++i)
            out[i] = tyr::checked(finish(totals.total[i], totals.seen[i]), false);
    };
    tyr::over_points(*c.out, Operands<1>{c.operand(0)}, tyr::kCheapPoints, work);
    return true;
}

constexpr float kInfinity = std::numeric_limits<float>::infinity();

bool run_many(const MathCall &c)
{
    const auto add = [](float a, float b) { return a + b; };
    const auto keep = [](float total, int) { return total; }; // infinite where all are Missing
    switch (c.function->op) {
    case GridOp::largest:
        return fold(
            c, -kInfinity, [](float a, float b) { return a > b ? a : b; }, keep);
    case GridOp::smallest:
        return fold(
            c, kInfinity, [](float a, float b) { return a < b ? a : b; }, keep);
    case GridOp::sum:
        return fold(c, 0.0F, add, keep);
    case GridOp::average:
        return fold(c, 0.0F, add, [&c](float total, int seen) {
            const float mean = total / static_cast<float>(c.count);
            return seen == c.count ? mean : kMissing;
        });
    default:
        return false;
    }
}

bool run_basic(const MathCall &c)
{
    switch (c.function->op) {
    case GridOp::copy:
        return quick1(c, [](float a) { return a; });
    case GridOp::add:
        return quick2(c, [](float a, float b) { return a + b; });
    case GridOp::subtract:
        return quick2(c, [](float a, float b) { return a - b; });
    case GridOp::multiply:
        return quick2(c, [](float a, float b) { return a * b; });
    case GridOp::divide:
        return quick2(c, [](float a, float b) { return a / b; });
    case GridOp::interpolate:
        tyr::quick_points(
            *c.out, Operands<3>{c.operand(0), c.operand(1), c.operand(2)},
            [](float from, float part, float to) { return (to - from) * part + from; });
        return true;
    case GridOp::absolute:
        return quick1(c, [](float a) { return std::fabs(a); });
    case GridOp::square_root:
        return quick1(c, [](float a) { return std::sqrt(a); });
    default:
        return run_many(c);
    }
}

} // namespace

bool tyr::run_arithmetic(const MathCall &c)
{
    switch (c.function->op) {
    case GridOp::modulo:
        return costly2(c, [](double a, double b) { return std::fmod(a, b); });
    case GridOp::power:
        return costly2(c, [](double a, double b) { return std::pow(a, b); });
    case GridOp::exponential:
        return costly1(c, [](double a) { return std::exp(a); });
    case GridOp::logarithm: // 0 and below have none that is finite
        return costly1(c, [](double a) { return std::log(a); });
    case GridOp::logarithm10:
        return costly1(c, [](double a) { return std::log10(a); });
    case GridOp::sine:
        return costly1(c, [](double a) { return sind(a); });
    case GridOp::cosine:
        return costly1(c, [](double a) { return cosd(a); });
    case GridOp::tangent:
        return costly1(c, [](double a) { return tand(a); });
    case GridOp::arc_sine:
        return costly1(c, [](double a) { return std::asin(a) * kDegreesPerRadian; });
    case GridOp::arc_cosine:
        return costly1(c, [](double a) { return std::acos(a) * kDegreesPerRadian; });
    case GridOp::arc_tangent:
        return costly1(c, [](double a) { return std::atan(a) * kDegreesPerRadian; });
    case GridOp::arc_tangent2:
        row_points(*c.out, Operands<2>{c.operand(0), c.operand(1)}, atan2d_row);
        return true;
    default:
        return run_basic(c);
    }
}
