// Bands of rough fields: every place inside the field lies in one area of one band.

#include <cmath>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "tyr/base/missing.h"
#include "tyr/field/contour_trace_private.h"

namespace {

using tyr::FieldPoint;
using Areas = std::vector<std::vector<FieldPoint>>;

constexpr int kSide = 48;

/// Values of a field that is rough, partly missing, with plateaus and values on the levels.
std::vector<float> rough(unsigned seed, float step, double missing)
{
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> value(0.0F, 10.0F);
    std::bernoulli_distribution is_gap(missing);
    std::vector<float> values;
    for (int i = 0; i < kSide * kSide; ++i) {
        const float v = value(random);
        values.push_back(is_gap(random) ? kMissing : step > 0.0F ? std::round(v / step) * step : v);
    }
    return values;
}

/// A slow wave with islands of noise: long runs with holes in them.
std::vector<float> islands(unsigned seed)
{
    std::vector<float> values = rough(seed, 0.0F, 0.0);
    for (int i = 0; i < kSide * kSide; ++i) {
        const bool is_noisy = (i / kSide / 5 + i % kSide / 7) % 4 == 0;
        values[static_cast<size_t>(i)] =
            is_noisy ? values[static_cast<size_t>(i)]
                     : static_cast<float>(5.0 + 3.0 * std::sin(0.1 * (i % kSide)));
    }
    return values;
}

/// How often an area goes round a place: once is inside.
int turns(const std::vector<FieldPoint> &rim, double x, double y)
{
    int n = 0;
    for (size_t i = 0; i < rim.size(); ++i) {
        const FieldPoint a = rim[i];
        const FieldPoint b = rim[(i + 1) % rim.size()];
        const double side = (b.x - a.x) * (y - a.y) - (x - a.x) * (b.y - a.y);
        n += a.y <= y && b.y > y && side > 0.0 ? 1 : 0;
        n -= a.y > y && b.y <= y && side < 0.0 ? 1 : 0;
    }
    return n;
}

bool is_drawn(const std::vector<float> &values, double x, double y)
{
    const auto column = static_cast<size_t>(x);
    const auto row = static_cast<size_t>(kSide - 2 - static_cast<int>(y));
    for (const size_t at : {row * kSide + column, (row + 1) * kSide + column}) {
        if (is_missing(values[at]) || is_missing(values[at + 1])) {
            return false;
        }
    }
    return true;
}

TEST(ContourBands, EveryPlaceLiesInOneAreaOfOneBand)
{
    struct Case {
        const char *name;
        std::vector<float> values;
    };
    const Case kCases[] = {
        {"noise", rough(1, 0.0F, 0.0)},
        {"with gaps", rough(2, 0.0F, 0.1)},
        {"on the levels", rough(3, 2.5F, 0.02)},
        {"halves of levels", rough(4, 1.25F, 0.0)},
        {"islands", islands(5)},
        {"most of it missing", rough(6, 0.0F, 0.6)},
    };
    for (const Case &c : kCases) {
        SCOPED_TRACE(c.name);
        const tyr::TracedField field(kSide, kSide, c.values.data(), nullptr, nullptr, {});
        Areas areas;
        for (const float level : {-100.0F, 2.5F, 5.0F, 7.5F}) {
            const float upper = level < 0.0F ? 2.5F : level + 2.5F;
            trace_band(field, level, level == 7.5F ? 100.0F : upper,
                       [&areas](std::span<const FieldPoint> p) {
                           areas.emplace_back(p.begin(), p.end());
                       });
        }
        std::mt19937 random(9);
        std::uniform_real_distribution<double> place(0.0, kSide - 1.0001);
        for (int i = 0; i < 1500; ++i) {
            const double x = place(random);
            const double y = place(random);
            int inside = 0;
            int other = 0;
            for (const auto &area : areas) {
                const int n = turns(area, x, y);
                inside += n == 1 ? 1 : 0;
                other += n != 0 && n != 1 ? 1 : 0;
            }
            ASSERT_EQ(inside, is_drawn(c.values, x, y) ? 1 : 0) << x << " " << y;
            ASSERT_EQ(other, 0) << x << " " << y;
        }
    }
}

} // namespace
