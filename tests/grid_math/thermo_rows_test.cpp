// Rows of formulas against the formulas point by point.

#include <cmath>
#include <limits>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "tyr/base/missing.h"
#include "tyr/grid_math/thermo_rows_private.h"
#include "tyr/grid_math/vector_math_private.h"
#include "tyr/met/thermo.h"

using namespace tyr;

namespace {

/// Ordinary air with a share of what files hold besides: nothing, zeros, vapour pressures in the
/// place of dew points, temperatures in degrees Celsius, high pressures.
struct Air {
    std::vector<float> t, td, rh, p;

    explicit Air(size_t count)
    {
        std::mt19937 random(20260103);
        const float odd[] = {kMissing, 0.0F, -5.0F, 20.0F, 99.0F, 120.0F, 345.0F, 5000.0F};
        const auto pick = [&](float low, float high) {
            return random() % 20 == 0
                       ? odd[random() % 8]
                       : low + (high - low) * static_cast<float>(random() % 10000) / 10000.0F;
        };
        for (size_t i = 0; i < count; ++i) {
            t.push_back(pick(210.0F, 318.0F));
            td.push_back(std::fmin(t.back(), pick(200.0F, 318.0F)));
            rh.push_back(pick(0.0F, 110.0F));
            p.push_back(pick(20.0F, 1050.0F));
        }
    }
};

float or_missing(float value)
{
    return std::isfinite(value) ? value : kMissing;
}

void expect_same(const std::vector<float> &got, const std::vector<float> &wanted)
{
    for (size_t i = 0; i < wanted.size(); ++i) {
        ASSERT_NEAR(got[i], wanted[i], 1e-6F * std::fabs(wanted[i])) << i;
    }
}

TEST(ThermoRows, AgreeWithTheFormulasAtEveryPoint)
{
    for (const size_t count : {1U, 63U, 64U, 65U, 4000U}) {
        SCOPED_TRACE(count);
        const Air air(count);
        std::vector<float> out(count);
        std::vector<float> wanted(count);
        const auto expect = [&](auto formula) {
            for (size_t i = 0; i < count; ++i) {
                wanted[i] = or_missing(formula(i));
            }
            expect_same(out, wanted);
        };
        dew_from_rh_row(air.t.data(), air.rh.data(), out.data(), count);
        expect([&](size_t i) {
            return is_missing(air.t[i]) ? kMissing : MET_dew_from_rh(air.t[i], air.rh[i]);
        });
        sat_vapor_row(air.t.data(), out.data(), count);
        expect([&](size_t i) { return MET_sat_vapor(air.t[i]); });
        theta_row(air.t.data(), air.p.data(), out.data(), count);
        expect([&](size_t i) { return MET_theta(air.t[i], air.p[i]); });
        theta_e_row(air.t.data(), air.td.data(), air.p.data(), out.data(), count);
        expect([&](size_t i) { return MET_theta_e(air.t[i], air.td[i], air.p[i]); });
        wet_bulb_row(air.t.data(), air.td.data(), air.p.data(), out.data(), count);
        expect([&](size_t i) { return MET_wet_bulb(air.t[i], air.td[i], air.p[i]); });
        out = air.t; // the result in the place of an operand
        theta_e_row(out.data(), air.td.data(), air.p.data(), out.data(), count);
        expect([&](size_t i) { return MET_theta_e(air.t[i], air.td[i], air.p[i]); });
    }
}

TEST(VectorMath, IsAsGoodAsTheLibrary)
{
    for (double x = -700.0; x < 700.0; x += 0.137) {
        ASSERT_NEAR(quick_exp(x) / std::exp(x), 1.0, 1e-13) << x;
        const double y = std::exp(x);
        ASSERT_NEAR(quick_log(y), std::log(y), 1e-13 * std::fabs(x) + 1e-15) << y;
    }
    for (double angle = -179.9; angle < 180.0; angle += 0.37) {
        for (const double size : {1e-30, 1.0, 1e20}) {
            const double y = size * std::sin(angle * M_PI / 180.0);
            const double x = size * std::cos(angle * M_PI / 180.0);
            ASSERT_NEAR(quick_atan2d(y, x), angle, 1e-8) << angle;
        }
    }
    for (double angle = -1000.0; angle < 1000.0; angle += 0.73) {
        ASSERT_NEAR(quick_sind(angle, 0), std::sin(angle * M_PI / 180.0), 2e-14) << angle;
        ASSERT_NEAR(quick_sind(angle, 1), std::cos(angle * M_PI / 180.0), 2e-14) << angle;
    }
    EXPECT_EQ(quick_sind(180.0, 0), 0.0);
    EXPECT_EQ(quick_sind(-270.0, 0), 1.0);
    EXPECT_EQ(quick_atan2d(0.0, 0.0), 0.0);
    EXPECT_EQ(quick_atan2d(0.0, -1.0), 180.0);
    EXPECT_EQ(quick_atan2d(-1.0, 0.0), -90.0);
}

} // namespace
