#include <cmath>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "grid_math/math_grids.h"
#include "support/capture.h"
#include "tyr/base/res.h"
#include "tyr/grid_math/derivative.h"
#include "tyr/grid_math/grid_math.h"
#include "tyr/grid_math/grid_units.h"
#include "tyr/grid_math/row_bands.h"
#include "tyr/met/thermo.h"
#include "tyr/var/units.h"

using namespace tyr;

namespace {

TEST(GridMath, AgreesWithTheTableOfAnotherHand)
{
    RES_put("file_path", TYR_SOURCE_DIR "/data");
    std::ifstream table(std::string(TYR_SOURCE_DIR) + "/tests/data/grid_math.txt");
    std::string line;
    int operations = 0;
    while (std::getline(table, line)) {
        std::istringstream words(line);
        std::string name;
        int count = 0;
        words >> name >> count;
        SCOPED_TRACE(name);
        std::array<MathGrid, 4> operands;
        MathGrid out;
        MathArguments call{&out.rec};
        for (int k = 0; k < count; ++k) {
            GridRec &grid = operands.at(static_cast<size_t>(k)).rec;
            grid.source = 1;
            grid.domain.proj = kProjMercator;
            grid.domain.clat = grid.domain.clon = 0.0F;
            grid.domain.dx = 0.5F;
            grid.domain.dy = 0.25F;
            grid.domain.nx = 6;
            grid.domain.ny = 5;
            ASSERT_EQ(GRD_alloc(&grid), 1);
            for (int i = 0; i < 30; ++i)
                words >> grid.values[i];
            call.grids.at(static_cast<size_t>(k) + 1) = &grid;
        }
        ASSERT_EQ(GRD_math(name.c_str(), call.grids.data(), call.constants.data()), 1);
        for (int i = 0; i < 30; ++i) {
            double expected = 0.0;
            ASSERT_TRUE(words >> expected);
            ASSERT_NEAR(out.rec.values[i], expected, 2e-5 * (std::fabs(expected) + 20.0)) << i;
        }
        ++operations;
    }
    EXPECT_EQ(operations, 39);
}

struct MissingCase {
    const char *name;
    std::vector<float> a, b;
    std::vector<float> expected;
};

TEST(GridMath, MissingAndUndefinedPointsComeOutMissing)
{
    const float m = kMissing;
    const MissingCase cases[] = {
        {"add", {1, m, 3, m}, {10, 20, m, m}, {11, m, m, m}},
        {"div", {1, 4, m, 0}, {0, 2, 1, 0}, {m, 2, m, m}},
        {"sum", {1, m, m, -1}, {m, 5, m, 1}, {1, 5, 0, 0}},
        {"max", {1, m, m, -1}, {m, 5, m, 1}, {1, 5, m, 1}},
        {"min", {1, m, m, -1}, {m, 5, m, 1}, {1, 5, m, -1}},
        {"avg", {1, m, m, -1}, {m, 5, m, 2}, {m, m, m, 0.5F}},
        {"log", {0, m, -1, 1}, {}, {m, m, m, 0}},
    };
    for (const MissingCase &c : cases) {
        SCOPED_TRACE(c.name);
        MathGrid a(2, 2);
        MathGrid b(2, 2);
        MathGrid out;
        a.set(c.a);
        b.set(c.b);
        MathArguments call{&out.rec, &a.rec, c.b.empty() ? nullptr : &b.rec};
        ASSERT_EQ(GRD_math(c.name, call.grids.data(), call.constants.data()), 1);
        EXPECT_EQ(out.values(), c.expected);
    }
}

TEST(GridMath, RefusesWhatDoesNotFitInOneLine)
{
    RES_put("file_path", TYR_SOURCE_DIR "/data");
    MathGrid a(3, 3);
    MathGrid other(4, 3);
    MathGrid empty;
    const std::string invalid = "GRD_math: Invalid grids\n";
    struct {
        const char *name;
        GridRec *first, *second;
    } const cases[] = {
        {"add", &a.rec, &other.rec}, // other sides
        {"add", &a.rec, nullptr},    // a constant that is Missing
        {"add", &empty.rec, &a.rec}, // no values
        {"dx", nullptr, nullptr},      {"wchill", &a.rec, nullptr},
        {"rvort", &a.rec, &other.rec}, {"max", nullptr, nullptr},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        MathGrid out;
        MathArguments call{&out.rec, c.first, c.second};
        int result = 1;
        EXPECT_EQ(
            told_by([&] { result = GRD_math(c.name, call.grids.data(), call.constants.data()); }),
            invalid);
        EXPECT_EQ(result, 0);
    }
    MathGrid out;
    MathArguments call{&out.rec, &a.rec};
    EXPECT_EQ(told_by([&] { GRD_math("Wind", call.grids.data(), call.constants.data()); }),
              "GRD_math: Math function not available: Wind\n");
    const std::string longest(10000, 'x');
    EXPECT_EQ(GRD_math(longest.c_str(), call.grids.data(), call.constants.data()), 0);
    EXPECT_EQ(GRD_math(("copy-" + longest).c_str(), call.grids.data(), call.constants.data()), 1);
    EXPECT_EQ(GRD_math("wind-x", call.grids.data(), call.constants.data()), 1);
}

TEST(GridMath, ResultMayBeAnOperand)
{
    for (const char *name : {"add", "rvort", "adv", "smooth", "lapl"}) {
        SCOPED_TRACE(name);
        MathGrid u(7, 6);
        MathGrid v(7, 6);
        for (size_t i = 0; i < u.count(); ++i) {
            u.rec.values[i] = static_cast<float>((i * 37) % 17);
            v.rec.values[i] = static_cast<float>((i * 23) % 13);
        }
        const bool is_smooth = std::string(name) == "smooth";
        MathGrid apart;
        MathArguments call{&apart.rec, &u.rec, is_smooth ? nullptr : &v.rec, &u.rec};
        call.constants[2] = -4.0F;
        ASSERT_EQ(GRD_math(name, call.grids.data(), call.constants.data()), 1);
        call.grids[0] = &u.rec;
        const float *values = u.rec.values;
        ASSERT_EQ(GRD_math(name, call.grids.data(), call.constants.data()), 1);
        EXPECT_EQ(u.rec.values, values);
        EXPECT_EQ(u.values(), apart.values());
        EXPECT_EQ(call.grids[0], &u.rec);
    }
}

TEST(GridMath, ThermoConvertsItsOperandsAndLabelsTheResult)
{
    RES_put("file_path", TYR_SOURCE_DIR "/data");
    MathGrid t(2, 1);
    MathGrid h(2, 1);
    t.set({20.0F, kMissing});
    h.set({50.0F, 50.0F});
    std::strcpy(t.rec.units, "C");
    std::strcpy(h.rec.units, "%");
    MathGrid out;
    out.rec.ltype = 100;
    out.rec.level = 850;
    MathArguments call{&out.rec, &t.rec, &h.rec};
    ASSERT_EQ(GRD_math("thetae", call.grids.data(), call.constants.data()), 1);
    const float td = MET_dew_from_rh(293.15F, 50.0F);
    EXPECT_NEAR(out.rec.values[0], MET_theta_e(293.15F, td, 850.0F), 1e-3);
    // Bolton (1980), equation 43, for 20 C, 50 percent and 850 hPa
    EXPECT_NEAR(out.rec.values[0], 334.4F, 1.5);
    EXPECT_EQ(out.rec.values[1], kMissing);
    EXPECT_STREQ(out.rec.units, "K");
    EXPECT_STREQ(t.rec.units, "K");
    EXPECT_NE(std::string(out.rec.info).find("850 mb"), std::string::npos) << out.rec.info;
    MathGrid flat(5, 5);
    std::strcpy(flat.rec.units, "K");
    for (const auto &[name, word] : {std::pair{"lapl", true}, std::pair{"lapl-temp", false}}) {
        MathGrid second;
        MathArguments lapl{&second.rec, &flat.rec};
        ASSERT_EQ(GRD_math(name, lapl.grids.data(), lapl.constants.data()), 1);
        EXPECT_STREQ(second.rec.units, "1e-10 K/m^2");
        EXPECT_EQ(std::string(second.rec.info).find("Laplacian") != std::string::npos, word);
    }
}

TEST(GridMath, ScalesUnitTexts)
{
    struct {
        const char *unit, *suffix;
        float factor;
        const char *expected;
    } const cases[] = {
        {"K", "/m", 1e-5F, "1e-05 K/m"},
        {"10^-3/s", "/m", 1e-5F, "1e-08 /s/m"},
        {"100 mb", "/m", 1e-5F, "1e-03 mb/m"},
        {"-deg", "", 2.0F, "-2e+00 deg"},
    };
    for (const auto &c : cases) {
        char out[kUnitTextRoom];
        UNIT_scale_text(c.unit, c.suffix, out, c.factor);
        EXPECT_STREQ(out, c.expected);
    }
}

TEST(GridMath, TwoThreadsGiveTheSameBytes)
{
    MathGrid t(1001, 700, kProjLambert, 0.2F);
    MathGrid h(1001, 700, kProjLambert, 0.2F);
    for (size_t i = 0; i < t.count(); ++i) {
        t.rec.values[i] = i % 97 == 0 ? kMissing : 250.0F + static_cast<float>(i % 50);
        h.rec.values[i] = static_cast<float>(i % 100);
    }
    for (const char *name : {"add", "thetae", "adv", "lapl", "avort", "ewdir", "lat", "avg"}) {
        SCOPED_TRACE(name);
        std::vector<float> results[2];
        for (int threads : {1, 2}) {
            GRD_set_threads(threads);
            MathGrid out;
            MathArguments call{&out.rec, &t.rec, &h.rec, &t.rec};
            ASSERT_EQ(GRD_math(name, call.grids.data(), call.constants.data()), 1);
            results[threads - 1] = out.values();
        }
        GRD_set_threads(0);
        EXPECT_TRUE(results[0] == results[1]);
    }
}

} // namespace
