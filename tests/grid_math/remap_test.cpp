#include <cmath>
#include <cstdlib>
#include <string>

#include <gtest/gtest.h>

#include "grid_math/math_grids.h"
#include "tyr/geo/projection.h"
#include "tyr/grid_math/remap.h"
#include "tyr/grid_math/sample.h"

using namespace tyr;

namespace {

/// A field of the earth's surface that no map distorts.
float smooth_field(float lat, float lon)
{
    const double rad = M_PI / 180.0;
    return static_cast<float>(10.0 * std::sin(2.0 * lat * rad) + 5.0 * std::cos(3.0 * lon * rad));
}

void fill_smooth(GridRec *grid)
{
    float *x = nullptr;
    float *y = nullptr;
    DomainRec earth;
    DOM_init(&earth);
    DOM_set(&grid->domain);
    float window[4];
    DOM_get_window(window);
    ASSERT_EQ(GRD_proj_XY(grid, &grid->domain, &x, &y), 0);
    const int count = grid->domain.nx * grid->domain.ny;
    for (int i = 0; i < count; ++i) {
        float lat = kMissing;
        float lon = kMissing;
        grid->values[i] =
            MAP_xy_to_ll(&lat, &lon, x[i], y[i]) == 1 ? smooth_field(lat, lon) : kMissing;
    }
    std::free(x);
    std::free(y);
}

constexpr int kMaps[] = {kProjPolar, kProjLatLon,    kProjMercator,         kProjLambert,
                         kProjOrtho, kProjMollweide, kProjLambertAzimuthal, kProjSatellite};

TEST(Remap, SmoothFieldComesBackBetweenAllPairsOfMaps)
{
    for (int from : kMaps)
        for (int to : kMaps) {
            SCOPED_TRACE(std::to_string(from) + " to " + std::to_string(to));
            MathGrid in(61, 61, from, from == kProjLatLon ? 0.5F : 0.5F);
            in.rec.domain.clat = 45.0F;
            fill_smooth(&in.rec);
            MathGrid target(21, 21, to, 0.3F);
            target.rec.domain.clat = 45.0F;
            fill_smooth(&target.rec);
            GridRec out;
            GRD_init(&out);
            ASSERT_EQ(GRD_remap(&out, &target.rec.domain, &in.rec), 1);
            EXPECT_EQ(DOM_equal(DOM_get(nullptr), &in.rec.domain), 1);
            int seen = 0;
            for (int i = 0; i < 21 * 21; ++i)
                if (out.values[i] != kMissing) {
                    ++seen;
                    EXPECT_NEAR(out.values[i], target.rec.values[i], 0.02F) << i;
                }
            EXPECT_GT(seen, 350);
            GRD_free(&out);
        }
}

TEST(Remap, DomainOutsideIsMissingAndItsOwnIsACopy)
{
    MathGrid in(11, 11, kProjLatLon, 0.5F);
    for (size_t i = 0; i < in.count(); ++i)
        in.rec.values[i] = static_cast<float>(i);
    MathGrid away(5, 5, kProjLatLon, 0.5F);
    away.rec.domain.clat = -40.0F;
    GridRec out;
    ASSERT_EQ(GRD_remap(&out, &away.rec.domain, &in.rec), 1);
    for (int i = 0; i < 25; ++i)
        EXPECT_EQ(out.values[i], kMissing);
    GRD_free(&out);
    ASSERT_EQ(GRD_remap(&out, &in.rec.domain, &in.rec), 1);
    for (size_t i = 0; i < in.count(); ++i)
        EXPECT_NEAR(out.values[i], in.rec.values[i], 1e-3);
    GRD_free(&out);
}

TEST(Sample, InterpolatesBetweenPointsAndKnowsTheEdges)
{
    MathGrid g(3, 2);
    g.set({0, 1, 2, 10, 11, 12});
    struct {
        float column, row, expected;
    } const cases[] = {
        {0.0F, 0.0F, 0.0F},     {0.5F, 0.5F, 5.5F},       {2.0F, 1.0F, 12.0F},
        {2.00005F, 0.0F, 2.0F}, {2.01F, 0.0F, kMissing},  {-0.01F, 0.0F, kMissing},
        {NAN, 0.0F, kMissing},  {1e30F, 1e30F, kMissing},
    };
    for (const auto &c : cases)
        EXPECT_FLOAT_EQ(GRD_interp(&g.rec, c.column, c.row), c.expected) << c.column;
    g.at(1, 1) = kMissing;
    EXPECT_EQ(GRD_interp(&g.rec, 0.5F, 0.5F), kMissing);
    EXPECT_EQ(GRD_interp(&g.rec, 0.0F, 0.0F), kMissing);
    MathGrid none;
    EXPECT_EQ(GRD_interp(&none.rec, 0.0F, 0.0F), kMissing);
}

TEST(Sample, StatisticsPassMissingOver)
{
    MathGrid g(2, 2);
    g.set({kMissing, 3, -1, 4});
    struct {
        const char *word;
        int result;
        float first, second;
    } const cases[] = {
        {"MAX", 1, 4, kMissing}, {"min", 1, -1, kMissing}, {"maxmin", 1, 4, -1},
        {"avg", 1, 2, kMissing}, {"avgnum", 1, 2, 3},      {"median", 0, kMissing, kMissing},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.word);
        float out[2];
        EXPECT_EQ(GRD_stat(c.word, &g.rec, out), c.result);
        EXPECT_EQ(out[0], c.first);
        EXPECT_EQ(out[1], c.second);
    }
    MathGrid none;
    float out[2];
    EXPECT_EQ(GRD_stat("avg", &none.rec, out), 0);
    EXPECT_EQ(GRD_stat("max", &none.rec, out), 1);
    g.fill(kMissing);
    EXPECT_EQ(GRD_stat("avgnum", &g.rec, out), 1);
    EXPECT_EQ(out[0], kMissing);
    EXPECT_EQ(out[1], 0.0F);
}

TEST(Sample, ValueAtAPlaceOfAnotherMap)
{
    MathGrid g(41, 41, kProjLambert, 0.5F);
    fill_smooth(&g.rec);
    MathGrid map(3, 3, kProjLatLon, 1.0F);
    float x = -93.0F;
    float y = 41.0F;
    DOM_set(&map.rec.domain);
    MAP_ll_to_xy(&x, &y, 41.0F, -93.0F);
    EXPECT_NEAR(GRD_value_at(&g.rec, &map.rec.domain, &x, &y), smooth_field(41.0F, -93.0F), 0.01);
    EXPECT_GT(x, 20.0F);
    EXPECT_LT(y, 20.0F);
    EXPECT_EQ(DOM_equal(DOM_get(nullptr), &map.rec.domain), 1);
}

TEST(Pieces, KeepTheNorthWestCornerAndRefuseWhatDoesNotFit)
{
    for (int proj : {kProjLatLon, kProjPolar, kProjLambert}) {
        SCOPED_TRACE(proj);
        MathGrid piece(4, 3, proj, 0.5F);
        for (size_t i = 0; i < piece.count(); ++i)
            piece.rec.values[i] = static_cast<float>(i);
        GridRec out;
        ASSERT_EQ(GRD_piece_layout(&out, 3, 2, &piece.rec), 1);
        EXPECT_EQ(out.domain.nx, 10);
        EXPECT_EQ(out.domain.ny, 5);
        float before[4];
        float after[4];
        DOM_set(&piece.rec.domain);
        DOM_get_window(before);
        DOM_set(&out.domain);
        DOM_get_window(after);
        EXPECT_NEAR(before[0], after[0], 1e-4);
        EXPECT_NEAR(before[3], after[3], 1e-4);
        EXPECT_EQ(out.values[0], kMissing);
        EXPECT_EQ(GRD_paste(&out, 2, 1, &piece.rec), 0);
        EXPECT_EQ(out.values[2 * 10 + 6], 0.0F);
        EXPECT_EQ(out.values[4 * 10 + 9], 11.0F);
        EXPECT_EQ(GRD_paste(&out, 3, 0, &piece.rec), -1);
        EXPECT_EQ(GRD_paste(&out, -1, 0, &piece.rec), -1);
        GRD_free(&out);
    }
    MathGrid piece(4, 3);
    GridRec out;
    EXPECT_EQ(GRD_piece_layout(&out, 2000000000, 2000000000, &piece.rec), 0);
}

TEST(Cutoff, CutsOneSideAndKeepsMissing)
{
    MathGrid g(2, 2);
    g.set({1, 5, kMissing, 9});
    GridRec out;
    ASSERT_EQ(GRD_cutoff(&out, "Lower", &g.rec, 5.0F, 0.0F), 1);
    EXPECT_EQ((std::vector<float>{out.values, out.values + 4}),
              (std::vector<float>{0, 5, kMissing, 9}));
    GRD_free(&out);
    ASSERT_EQ(GRD_cutoff(&out, "higher", &g.rec, 5.0F, 5.0F), 1);
    EXPECT_EQ((std::vector<float>{out.values, out.values + 4}),
              (std::vector<float>{1, 5, kMissing, 5}));
    GRD_free(&out);
}

} // namespace

TEST(CloseCircle, OnlyColumnsAllRoundTheEarthAreClosed)
{
    const struct {
        const char *name;
        int proj, nx;
        float dx;
        int added;
    } cases[] = {
        {"round", kProjLatLon, 36, 10.0F, 1},
        {"rounded spacing", kProjLatLon, 7, 51.429F, 1},
        {"closed already", kProjLatLon, 37, 10.0F, 0},
        {"a part", kProjLatLon, 30, 10.0F, 0},
        {"other projection", kProjMercator, 36, 10.0F, 0},
        {"nearly", kProjLatLon, 359, 1.0F, 0},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        MathGrid grid(c.nx, 2, c.proj, c.dx);
        for (int i = 0; i < c.nx; ++i) {
            grid.at(i, 0) = static_cast<float>(i);
            grid.at(i, 1) = static_cast<float>(100 + i);
        }
        const float west = grid.rec.domain.clon - c.dx * static_cast<float>(c.nx - 1) / 2.0F;
        EXPECT_EQ(GRD_close_circle(&grid.rec), c.added);
        const DomainRec &domain = grid.rec.domain;
        ASSERT_EQ(domain.nx, c.nx + c.added);
        EXPECT_NEAR(domain.clon - c.dx * static_cast<float>(domain.nx - 1) / 2.0F, west, 1e-3F);
        EXPECT_EQ(grid.at(1, 1), 101.0F);
        if (c.added == 1) {
            EXPECT_EQ(grid.at(c.nx, 0), 0.0F);
            EXPECT_EQ(grid.at(c.nx, 1), 100.0F);
        }
    }
}
