// Expressions on the grids of open files.

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/capture.h"
#include "support/shared_data.h"
#include "support/temp_dir.h"
#include "tyr/base/missing.h"
#include "tyr/base/prm.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/grid_files/grid_shelf.h"

using namespace tyr;

namespace {

struct Grid {
    int ltype, level, time, var;
    float value;
};

/// A text grid file of grids of 2 by 2 points, each of one value.
std::string text_of(const std::vector<Grid> &grids)
{
    std::string text = "TYRGRID\n";
    for (const Grid &g : grids) {
        const double v = g.value;
        text += STR_print("00:00 GMT 04 MAR 2020\n2-made\n7 2 1 0 %d %d %d %d:%s\n", g.ltype,
                          g.level, g.time, g.var, g.var == 11 ? "K" : "m/s");
        text += STR_print("LL 40 -95 1 1 2 2\n%g %g %g %g\n", v, v, v, v);
    }
    return text;
}

constexpr int kTemp = 11;
constexpr int kHeight = 7;
constexpr int kU = 33;
constexpr int kV = 34;

class GridShelfTest : public testing::Test {
  protected:
    void SetUp() override
    {
        PRM_clear(kMissingInt);
        RES_put("file_path", TYR_SOURCE_DIR "/data");
    }
    TempDir dir;
};

TEST_F(GridShelfTest, OperandsAreFoundByTimeLevelAndVariable)
{
    GridShelf shelf;
    const std::string first = dir.write("a.grd", text_of({
                                                     {100, 500, 0, kU, 3},
                                                     {100, 500, 0, kV, 4},
                                                     {100, 500, 12, kU, 6},
                                                     {100, 500, 12, kV, 8},
                                                     {100, 850, 12, kTemp, 280},
                                                     {102, 0, 6, 2, 990},
                                                     {1, 0, 4006012, 61, 5},
                                                     {10, 700, 12, 4, 270},
                                                 }));
    const std::string second = dir.write("b.grd", text_of({{100, 300, 12, kHeight, 9000}}));
    ASSERT_EQ(shelf.add(first), 8);
    ASSERT_EQ(shelf.add(second), 1);
    GridRec none[2];
    PRM_set(kPrmTime, 0);
    EXPECT_EQ(GRD_evaluate_files("pmsl", &shelf, none), 0) << "its time is 6";
    shelf.let_default_time_vary();
    const struct {
        const char *expression;
        int default_time; ///< of the settings
        int grids;
        float first, second;
    } cases[] = {
        {"12:500:<uwnd,vwnd>", kMissingInt, 2, 6, 8},
        {"0:500:<uwnd,vwnd>", kMissingInt, 2, 3, 4},
        {"12:500:wspd(uwnd,vwnd)", kMissingInt, 1, 10, 0},
        {"wspd(500:uwnd,500:vwnd)", 12, 1, 10, 0},
        {"wspd(500:uwnd,500:vwnd)", kMissingInt, 1, 5, 0},
        {"500:uwnd", 0, 1, 3, 0},
        {"12:850:temp:C", kMissingInt, 1, 6.85F, 0},
        {"sub(12:500:uwnd,0:500:uwnd)", kMissingInt, 1, 3, 0},
        {"pmsl", 0, 1, 990, 0},
        {"12-6acc:sfc:precip", kMissingInt, 1, 5, 0},
        {"12:300:hght", kMissingInt, 1, 9000, 0},
        {"12:700:temp", kMissingInt, 1, 270, 0}, // in the old code
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.expression);
        PRM_set(kPrmTime, c.default_time);
        GridRec out[2];
        EXPECT_EQ(GRD_evaluate_files(c.expression, &shelf, out), c.grids);
        for (int i = 0; i < c.grids && out[i].values != nullptr; ++i) {
            EXPECT_NEAR(out[i].values[3], i == 0 ? c.first : c.second, 1e-4F);
        }
        GRD_free(&out[0]);
        GRD_free(&out[1]);
    }
}

TEST_F(GridShelfTest, WhatIsNotFoundIsToldInOneLine)
{
    GridShelf shelf;
    GridRec out[2];
    const std::string path = dir.write("a.grd", text_of({{100, 500, 0, kU, 3}}));
    EXPECT_EQ(told_by([&] { shelf.add(dir.file("none.grd")); }),
              dir.file("none.grd") + ": there is no such file\n");
    EXPECT_EQ(told_by([&] { shelf.add(dir.write("x", "\1\2")); }),
              dir.file("x") + ": not a grid file that can be read\n");
    ASSERT_EQ(shelf.add(path), 1);
    EXPECT_EQ(told_by([&] { GRD_evaluate_files("0:500:avort(uwnd,vwnd)", &shelf, out); }),
              "GRD_evaluate: No grid of vwnd at 0 h 500 mb in " + path + "\n");
    EXPECT_EQ(told_by([&] { GRD_evaluate_files("0:850:uwnd", &shelf, out); }),
              "GRD_evaluate: No grid of uwnd at 0 h 850 mb in " + path + "\n");
    shelf.add(path);
    EXPECT_EQ(told_by([&] { GRD_evaluate_files("6:500:nonsense", &shelf, out); }),
              "GRD_evaluate: No grid of nonsense at 6 h 500 mb in " + path + " and 1 other file\n");
}

TEST_F(GridShelfTest, MoreFilesThanTheTableHasRoomFor)
{
    GridShelf shelf;
    for (int i = 0; i < 20; ++i) {
        const Grid grid = {100, 1000 - 10 * i, 0, kTemp, static_cast<float>(i)};
        ASSERT_EQ(shelf.add(dir.write("f" + std::to_string(i), text_of({grid}))), 1);
    }
    for (const int i : {0, 19, 7, 0}) {
        GridRec out[2];
        const std::string expression = STR_print("0:%d:temp", 1000 - 10 * i);
        ASSERT_EQ(GRD_evaluate_files(expression.c_str(), &shelf, out), 1) << expression;
        EXPECT_EQ(out[0].values[0], static_cast<float>(i));
        GRD_free(&out[0]);
    }
}

TEST_F(GridShelfTest, GridsOfAStreamAreKept)
{
    type_in(text_of({{100, 500, 0, kU, 3}, {100, 500, 0, kV, 4}}));
    GridShelf shelf;
    ASSERT_EQ(shelf.add("-"), 2);
    GridRec out[2];
    ASSERT_EQ(GRD_evaluate_files("0:500:<vwnd,uwnd>", &shelf, out), 2);
    EXPECT_EQ(out[0].values[0], 4.0F);
    EXPECT_EQ(out[1].values[0], 3.0F);
    GRD_free(&out[0]);
    GRD_free(&out[1]);
}

TEST_F(GridShelfTest, VorticityOfARealModel)
{
    const std::string path = shared_data("grib/eta.grb");
    if (path.empty()) {
        GTEST_SKIP() << "no folder of shared data";
    }
    GridShelf shelf;
    ASSERT_EQ(shelf.add(path), 181);
    PRM_set(kPrmTime, shelf.grids()[0].head.time);
    GridRec out[2];
    ASSERT_EQ(GRD_evaluate_files("avort(500:uwnd,500:vwnd)", &shelf, out), 1);
    float sum = 0.0F;
    int count = 0;
    for (int i = 0; i < out[0].domain.nx * out[0].domain.ny; ++i) {
        if (!is_missing(out[0].values[i])) {
            sum += out[0].values[i];
            ++count;
        }
    }
    EXPECT_STREQ(out[0].units, "1e-05 m/s/m");
    // about the Coriolis parameter of the middle latitudes, in 1e-5 per second
    EXPECT_NEAR(sum / static_cast<float>(count), 9.0F, 2.0F);
    GRD_free(&out[0]);
}

} // namespace
