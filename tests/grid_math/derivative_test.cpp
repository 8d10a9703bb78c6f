#include <cmath>

#include <gtest/gtest.h>

#include "grid_math/math_grids.h"
#include "tyr/grid_math/coriolis.h"
#include "tyr/grid_math/derivative.h"

namespace {

/// What a first difference at c, with its two neighbours, must be; Missing neighbours are passed
/// over one by one, as told in the header.
double hand_difference(float c, float back, float next)
{
    if (back != kMissing && next != kMissing)
        return (double{next} - back) / 2.0;
    if (next != kMissing)
        return double{next} - c;
    return back != kMissing ? double{c} - back : 0.0;
}

double hand_second(float f, float p2, float p1, float n1, float n2)
{
    if (p1 != kMissing && n1 != kMissing)
        return double{p1} + n1 - 2.0 * f;
    if (n1 == kMissing)
        return p1 == kMissing || p2 == kMissing ? double{kMissing} : f + p2 - 2.0 * p1;
    return n2 == kMissing ? double{kMissing} : f + n2 - 2.0 * n1;
}

TEST(Derivative, MissingAtEachPlaceOfANeighbourhoodReachesExactlyItsFrame)
{
    for (int hole = -1; hole < 25; ++hole) {
        SCOPED_TRACE(hole);
        MathGrid f(5, 5);
        for (int i = 0; i < 25; ++i)
            f.rec.values[i] = static_cast<float>((i * i * 7) % 31);
        if (hole >= 0)
            f.rec.values[hole] = kMissing;
        MathGrid dx, dy, lapl;
        ASSERT_EQ(GRD_dx(&f.rec, &dx.rec), 0);
        ASSERT_EQ(GRD_dy(&f.rec, &dy.rec), 0);
        ASSERT_EQ(GRD_laplacian(&f.rec, &lapl.rec), 0);
        const auto at = [&](int c, int r) {
            return c < 0 || r < 0 || c > 4 || r > 4 ? kMissing : f.at(c, r);
        };
        for (int r = 0; r < 5; ++r)
            for (int c = 0; c < 5; ++c) {
                const float here = at(c, r);
                const int i = r * 5 + c;
                if (here == kMissing) {
                    EXPECT_EQ(dx.rec.values[i], kMissing);
                    EXPECT_EQ(lapl.rec.values[i], kMissing);
                    continue;
                }
                EXPECT_NEAR(dx.rec.values[i], hand_difference(here, at(c - 1, r), at(c + 1, r)),
                            1e-4);
                EXPECT_NEAR(dy.rec.values[i], hand_difference(here, at(c, r + 1), at(c, r - 1)),
                            1e-4);
                const double x =
                    hand_second(here, at(c - 2, r), at(c - 1, r), at(c + 1, r), at(c + 2, r));
                const double y =
                    hand_second(here, at(c, r - 2), at(c, r - 1), at(c, r + 1), at(c, r + 2));
                const bool is_out = x == kMissing || y == kMissing;
                EXPECT_NEAR(lapl.rec.values[i], is_out ? double{kMissing} : x + y, 1e-4);
            }
    }
}

TEST(Derivative, AnalyticFieldsComeOutExactlyOnMapsInPlotUnits)
{
    for (int proj : {kProjPolar, kProjMercator, kProjLambert, kProjOrtho, kProjMollweide,
                     kProjLambertAzimuthal, kProjSatellite}) {
        SCOPED_TRACE(proj);
        MathGrid u(9, 9, proj, 0.5F), v(9, 9, proj, 0.5F), square(9, 9, proj, 0.5F);
        for (int r = 0; r < 9; ++r)
            for (int c = 0; c < 9; ++c) {
                const float x = static_cast<float>(c - 4) * 0.5F;
                const float y = static_cast<float>(4 - r) * 0.5F;
                u.at(c, r) = -3.0F * y;
                v.at(c, r) = 3.0F * x;
                square.at(c, r) = x * x + y * y;
            }
        MathGrid vorticity, divergence, lapl;
        GRD_vorticity(&u.rec, &v.rec, &vorticity.rec);
        GRD_converge(&v.rec, &u.rec, nullptr, &divergence.rec); // of (3x, -3y)
        GRD_laplacian(&square.rec, &lapl.rec);
        for (int i = 0; i < 81; ++i) {
            EXPECT_NEAR(vorticity.rec.values[i], 6.0F, 1e-5);
            EXPECT_NEAR(divergence.rec.values[i], 0.0F, 1e-5);
            EXPECT_NEAR(lapl.rec.values[i], 4.0F, 1e-4);
        }
    }
}

/// Largest error of d(sin lon cos lat)/dx, 1 / (a cos lat) d/dlon, inside the grid.
double latlon_error(float spacing)
{
    const int n = static_cast<int>(40.0F / spacing) + 1;
    MathGrid f(n, n, kProjLatLon, spacing);
    const double rad = M_PI / 180.0;
    const double length = 1.11195 / rad; // 100 km of a radian
    const auto lat = [&](int r) { return 40.0 + ((n - 1) / 2.0 - r) * spacing; };
    const auto lon = [&](int c) { return (c - (n - 1) / 2.0) * spacing; };
    for (int r = 0; r < n; ++r)
        for (int c = 0; c < n; ++c)
            f.at(c, r) = static_cast<float>(std::sin(3.0 * lon(c) * rad) * std::cos(lat(r) * rad));
    MathGrid dx, dy;
    GRD_dx(&f.rec, &dx.rec);
    GRD_dy(&f.rec, &dy.rec);
    double worst = 0.0;
    for (int r = 1; r < n - 1; ++r)
        for (int c = 1; c < n - 1; ++c) {
            const double x = 3.0 * std::cos(3.0 * lon(c) * rad) / length;
            const double y = -std::sin(3.0 * lon(c) * rad) * std::sin(lat(r) * rad) / length;
            worst = std::max({worst, std::fabs(dx.at(c, r) - x), std::fabs(dy.at(c, r) - y)});
        }
    return worst;
}

TEST(Derivative, ErrorOnLatitudeAndLongitudeIsOfSecondOrder)
{
    const double coarse = latlon_error(4.0F);
    const double fine = latlon_error(2.0F);
    EXPECT_LT(coarse, 1e-3);
    EXPECT_NEAR(coarse / fine, 4.0, 0.4);
}

TEST(Derivative, PoleRowsAreMissingAndSmallGridsHaveNoReach)
{
    MathGrid world(5, 5, kProjLatLon, 45.0F);
    world.rec.domain.clat = 0.0F;
    MathGrid out;
    ASSERT_EQ(GRD_dy(&world.rec, &out.rec), 0);
    EXPECT_EQ(out.at(2, 0), kMissing);
    EXPECT_EQ(out.at(2, 4), kMissing);
    EXPECT_EQ(out.at(2, 1), 0.0F);
    for (const auto &[nx, ny] : {std::pair{1, 4}, std::pair{1, 1}, std::pair{2, 2}}) {
        MathGrid small(nx, ny);
        MathGrid dx, lapl;
        ASSERT_EQ(GRD_dx(&small.rec, &dx.rec), 0);
        ASSERT_EQ(GRD_laplacian(&small.rec, &lapl.rec), 0);
        for (size_t i = 0; i < small.count(); ++i) {
            EXPECT_EQ(dx.rec.values[i], 0.0F);
            EXPECT_EQ(lapl.rec.values[i], kMissing);
        }
    }
    MathGrid none;
    EXPECT_EQ(GRD_dx(&none.rec, &out.rec), -1);
    MathGrid other(3, 3);
    EXPECT_EQ(GRD_vorticity(&world.rec, &other.rec, &out.rec), -1);
}

TEST(Derivative, CoriolisParameterOfEachMode)
{
    struct {
        const char *mode;
        float expected;
    } const cases[] = {
        {"add", 9.292F},        {"SUB", -5.292F}, {"sub-", 5.292F}, {"mul", 14.584F},
        {"div", 2.0F / 7.292F}, {"div-", 3.646F}, {"none", 2.0F},
    };
    for (int proj : {kProjLatLon, kProjMercator, kProjLambert}) // at 30 degrees f is 7.292
        for (const auto &c : cases) {
            SCOPED_TRACE(c.mode);
            MathGrid g(1, 1, proj);
            g.rec.domain.clat = 30.0F;
            g.fill(2.0F);
            GRD_coriolis(&g.rec, c.mode);
            EXPECT_NEAR(g.rec.values[0], c.expected, 1e-4);
        }
}

} // namespace
