#include <cmath>
#include <vector>

#include <gtest/gtest.h>

#include "tyr/base/missing.h"
#include "tyr/field/contour_trace_private.h"

namespace {

using tyr::FieldPoint;

struct Sample {
    int nx, ny;
    std::vector<float> values;
    tyr::TracedField field() const { return {nx, ny, values.data(), nullptr, nullptr, {}}; }
};

Sample made(int n, float (*f)(float x, float y))
{
    Sample s{n, n, {}};
    for (int row = 0; row < n; ++row) {
        for (int column = 0; column < n; ++column) {
            s.values.push_back(f(static_cast<float>(column), static_cast<float>(n - 1 - row)));
        }
    }
    return s;
}

double area_of(std::span<const FieldPoint> p)
{
    double sum = 0.0;
    for (size_t i = 0; i < p.size(); ++i) {
        const FieldPoint a = p[i];
        const FieldPoint b = p[(i + 1) % p.size()];
        sum += static_cast<double>(a.x) * b.y - static_cast<double>(b.x) * a.y;
    }
    return sum / 2.0;
}

struct Lines {
    int count = 0;
    double length = 0.0;
    double worst = 0.0; ///< distance from the circle
};

Lines lines_of(const Sample &s, float level)
{
    Lines out;
    trace_lines(s.field(), level, [&](std::span<const FieldPoint> p) {
        ++out.count;
        for (size_t i = 0; i < p.size(); ++i) {
            const double r = std::hypot(p[i].x - 20.0, p[i].y - 20.0);
            out.worst = std::max(out.worst, std::fabs(r - level));
            out.length += i > 0 ? std::hypot(p[i].x - p[i - 1].x, p[i].y - p[i - 1].y) : 0.0;
        }
    });
    return out;
}

double band_area(const Sample &s, float lower, float upper, int *count = nullptr)
{
    double sum = 0.0;
    trace_band(s.field(), lower, upper, [&](std::span<const FieldPoint> p) {
        EXPECT_GT(area_of(p), -1e-4);
        sum += area_of(p);
        if (count != nullptr) {
            ++*count;
        }
    });
    return sum;
}

float radius(float x, float y)
{
    return std::hypot(x - 20.0F, y - 20.0F);
}

TEST(ContourTrace, CircleIsOneLineOnTheCircle)
{
    const Sample s = made(41, radius);
    for (const float level : {5.5F, 10.0F, 15.3F}) {
        const Lines lines = lines_of(s, level);
        SCOPED_TRACE(level);
        EXPECT_EQ(lines.count, 1);
        EXPECT_NEAR(lines.length, 2.0 * M_PI * level, 0.01 * 2.0 * M_PI * level);
        EXPECT_LT(lines.worst, 1.0 / (8.0 * 5.0)); // h^2 / (8 R)
    }
}

TEST(ContourTrace, BandsCoverTheFieldOnce)
{
    const Sample s = made(41, radius);
    double sum = 0.0;
    for (float level = 0.0F; level < 30.0F; level += 1.0F) {
        int count = 0;
        sum += band_area(s, level, level + 1.0F, &count);
        EXPECT_LE(count, 4) << level;
    }
    EXPECT_NEAR(sum, 1600.0, 1e-2);
    int count = 0;
    EXPECT_NEAR(band_area(s, 10.0F, 15.0F, &count), M_PI * 125.0, 1.5);
    EXPECT_EQ(count, 1); // a ring is one area with a cut
}

TEST(ContourTrace, SaddleJoinsByItsSum)
{
    struct Case {
        const char *name;
        float level;
        bool cuts_lower_left;
    };
    // corners lower left and upper right 1, the others 0: the sum at a level is 4 - 4 level
    constexpr Case kCases[] = {{"above", 0.3F, false}, {"at", 0.5F, false}, {"below", 0.7F, true}};
    const Sample s{2, 2, {0.0F, 1.0F, 1.0F, 0.0F}};
    for (const Case &c : kCases) {
        SCOPED_TRACE(c.name);
        int lines = 0;
        trace_lines(s.field(), c.level, [&](std::span<const FieldPoint> p) {
            ++lines;
            ASSERT_EQ(p.size(), 2U);
            const float lower_left = std::min(p[0].x + p[0].y, p[1].x + p[1].y);
            const bool touches_left = p[0].x == 0.0F || p[1].x == 0.0F;
            const bool touches_bottom = p[0].y == 0.0F || p[1].y == 0.0F;
            EXPECT_EQ(touches_left == touches_bottom, c.cuts_lower_left) << lower_left;
        });
        EXPECT_EQ(lines, 2);
        EXPECT_NEAR(band_area(s, -1.0F, c.level) + band_area(s, c.level, 2.0F), 1.0, 1e-6);
    }
}

TEST(ContourTrace, PlateauIsOutlinedOnceWhateverLiesAround)
{
    for (const float around : {0.0F, 10.0F}) {
        Sample s{5, 5, std::vector<float>(25, around)};
        for (int row = 1; row < 4; ++row) {
            for (int column = 1; column < 4; ++column) {
                s.values[static_cast<size_t>(row * 5 + column)] = 5.0F;
            }
        }
        EXPECT_NEAR(lines_of(s, 5.0F).length, 8.0, 1e-6) << around;
        EXPECT_EQ(lines_of(s, 5.0F).count, 1) << around;
    }
}

TEST(ContourTrace, LevelThroughGridValuesIsDrawnOnce)
{
    const Sample plane = made(6, [](float x, float) { return x; });
    EXPECT_NEAR(lines_of(plane, 2.0F).length, 5.0, 1e-6);
    const Sample diagonal = made(6, [](float x, float y) { return x - y; });
    EXPECT_NEAR(lines_of(diagonal, 0.0F).length, 5.0 * std::sqrt(2.0), 1e-5);
    const Sample ridge = made(7, [](float x, float) { return -std::fabs(x - 3.0F); });
    EXPECT_NEAR(lines_of(ridge, 0.0F).length, 6.0, 1e-6);
}

TEST(ContourTrace, HolesAndOddFields)
{
    Sample s = made(6, [](float x, float y) { return x + y; });
    s.values[14] = kMissing;
    EXPECT_NEAR(band_area(s, 0.0F, 100.0F), 21.0, 1e-5);
    s.values[15] = INFINITY;
    EXPECT_NEAR(band_area(s, 0.0F, 100.0F), 19.0, 1e-5);
    const Sample row{5, 1, {1, 2, 3, 4, 5}};
    EXPECT_EQ(band_area(row, 0.0F, 9.0F), 0.0);
    EXPECT_EQ(lines_of(row, 3.0F).count, 0);
}

} // namespace
