#include <algorithm>
#include <cmath>
#include <limits>

#include "support/shared_data.h"
#include "support/sounding_rows.h"
#include "support/warm_sounding.h"
#include "tyr/base/missing.h"
#include "tyr/met/parcel.h"
#include "tyr/met/sounding_layer.h"
#include "tyr/met/stability.h"
#include "tyr/met/storm.h"

namespace {

constexpr float M = kMissing;
constexpr int kP = 100;

using Sound = std::vector<SoundLevel>;
using Index = float (*)(const SoundLevel *, int);

float layer(const char *name, const SoundLevel *s, int n)
{
    return MET_layer_mean(name, s, n, kP, 1000.0F, 900.0F);
}

float showalter(const SoundLevel *s, int n)
{
    return MET_lifted_index(s, n, kP, 850.0F, 0.0F, 500.0F);
}

float lifted_500(const SoundLevel *s, int n)
{
    return MET_lifted_index(s, n, kP, 1000.0F, 100.0F, 500.0F);
}

float lifted_300(const SoundLevel *s, int n)
{
    return MET_lifted_index(s, n, kP, 1000.0F, 100.0F, 300.0F);
}

float lifted_950(const SoundLevel *s, int n)
{
    return MET_lifted_index(s, n, kP, 1000.0F, 100.0F, 950.0F);
}

float thickness(const SoundLevel *s, int n)
{
    return MET_thickness(s, n, kP, 1000.0F, 500.0F);
}

float lapse_rate(const SoundLevel *s, int n)
{
    return MET_lapse_rate(s, n, kP, 700.0F, 500.0F);
}

float mix_ratio(const SoundLevel *s, int n)
{
    return layer("mrat", s, n);
}

float theta(const SoundLevel *s, int n)
{
    return layer("theta", s, n);
}

float height(const SoundLevel *s, int n)
{
    return layer("hght", s, n);
}

float theta_e(const SoundLevel *s, int n)
{
    return MET_layer_mean("ThetaE", s, n, kP, 1000.0F, kMissing);
}

float max_temp(const SoundLevel *s, int n)
{
    return MET_max_temp(s, n, kP, 1000.0F, 150.0F);
}

float ccl(const SoundLevel *s, int n)
{
    float mix = 0.0F;
    return MET_ccl(s, n, kP, &mix, 1000.0F, 0.0F);
}

float water_mm(const SoundLevel *s, int n)
{
    const float inches = MET_precip_water(s, n);
    return is_missing(inches) ? M : 25.4F * inches;
}

struct Case {
    const char *name;
    Index index;
    double expected, within;
};

// Expected values come from an integration in steps of 0.1 hPa with the formulas of Bolton (1980,
// Mon. Wea. Rev. 108), written for this purpose in another language; tolerances are the steps of
// our moist adiabat and the difference of the vapour pressure formulas.
const Case kWarm[] = {
    {"total totals", MET_total_totals, 57.163, 0.02}, // 16.097 + 14.528 + 2 * 13.269
    {"vertical totals", MET_vertical_totals, 29.366, 0.02},
    {"cross totals", MET_cross_totals, 27.797, 0.02},
    {"K", MET_k_index, 41.864, 0.02},
    {"SWEAT", MET_sweat, 519.5, 1.0}, // 125 (sin(42.607) + 0.2) of it by the winds
    {"Showalter", showalter, -6.30, 0.25},
    {"lifted, 500", lifted_500, -7.29, 0.25},
    {"lifted, 300", lifted_300, -5.36, 0.4},
    {"lifted, dry", lifted_950, -0.014, 0.05}, // below the condensation level
    {"precipitable water", water_mm, 44.84, 0.5},
    {"thickness", thickness, 5659.07, 0.5},
    {"lapse rate", lapse_rate, 0.0067803, 1e-5},
    {"wet-bulb zero", MET_wetbulb_zero, 658.5, 1.5},
    {"mixing ratio", mix_ratio, 14.002, 0.06},
    {"theta", theta, 300.896, 0.03},
    {"height", height, 456.5, 1.0},
    {"theta-e of the ground", theta_e, 341.19, 1.5},
    {"maximum temperature", max_temp, 302.99, 0.1},
    {"convective condensation level", ccl, 856.8, 1.5},
};

void expect_near_or_missing(const Case &c, const Sound &s)
{
    SCOPED_TRACE(c.name);
    EXPECT_NEAR(c.index(s.data(), static_cast<int>(s.size())), c.expected, c.within);
}

} // namespace

TEST(Stability, IndicesOfAnAnalyticSounding)
{
    for (const Case &c : kWarm)
        expect_near_or_missing(c, warm_sounding());
}

TEST(Stability, IndicesEqualThosePrintedWithASoundingOfNorman)
{
    const std::string path = shared_data("upper_air/sharppy_oun_uwyo.html");
    if (path.empty())
        GTEST_SKIP() << "no shared data";
    const Case printed[] = {
        {"Showalter", showalter, 11.19, 0.25},
        {"SWEAT", MET_sweat, 53.98, 0.05},
        {"K", MET_k_index, -4.30, 0.01},
        {"cross totals", MET_cross_totals, 9.90, 0.01},
        {"vertical totals", MET_vertical_totals, 22.90, 0.01},
        {"total totals", MET_total_totals, 32.80, 0.01},
        {"thickness", thickness, 5565.0, 0.5},
        // theirs goes through mean mixing ratios, ours through specific humidity
        {"precipitable water", water_mm, 10.64, 0.12},
    };
    for (const Case &c : printed)
        expect_near_or_missing(c, read_sounding_rows(path));
}

TEST(Stability, SweatWithoutAVeeringWindHasNoFourthTerm)
{
    struct {
        const char *name;
        float d850, s850, d500, s500;
        double fourth;
    } const cases[] = {
        {"veering", 180, 20, 240, 30, 125 * (std::sqrt(3.0) / 2 + 0.2)},
        {"bounds", 135, 15, 210, 15, 125 * (std::sin(75 * M_PI / 180) + 0.2)},
        {"backing", 240, 20, 210, 30, 0},
        {"equal", 230, 20, 230, 30, 0},
        {"too far south-east", 134, 20, 240, 30, 0},
        {"too far north", 180, 20, 311, 30, 0},
        {"too slow below", 180, 14.9F, 240, 30, 0},
        {"too slow above", 180, 20, 240, 14.9F, 0},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        const SoundLevel s[] = {{850, 1500, 10, -5, c.d850, c.s850},
                                {500, 5600, 0, -20, c.d500, c.s500}};
        EXPECT_NEAR(MET_sweat(s, 2), 2 * c.s850 + c.s500 + c.fourth, 0.01);
    }
}

TEST(Stability, EnergyIndexByHand)
{
    // E(850) = 0.24 * 283.15 + 980 * 150000 / 4.2e7 + 0.6 w(10 C, 850) with e = 12.27: 9.11 g/kg;
    // E(500) = 0.24 * 258.15 + 980 * 560000 / 4.2e7 + 0.6 w(-15 C, 500) with e = 1.912: 2.388
    const SoundLevel s[] = {{850, 1500, 10, 10, M, M}, {500, 5600, -15, -15, M, M}};
    EXPECT_NEAR(MET_energy_index(s, 2),
                (61.956 + 13.067 + 0.6 * 2.388) - (67.956 + 3.5 + 0.6 * 9.11), 0.02);
}

TEST(Stability, ThetaEIndexFindsTheLargestFallThatBeginsLow)
{
    const Sound s = warm_sounding();
    ThetaEIndex found{};
    ASSERT_EQ(MET_theta_e_index(s.data(), static_cast<int>(s.size()), &found), 0);
    // theta-e: 341.2 343.4 335.1 328.2 324.6 323.3 323.6
    EXPECT_NEAR(found.fall, 343.4 - 323.25, 1.2);
    EXPECT_FLOAT_EQ(found.bottom, 891.0F);
    EXPECT_FLOAT_EQ(found.top, 545.0F);
    EXPECT_FLOAT_EQ(found.high_p, 891.0F);
    EXPECT_FLOAT_EQ(found.low_p, 545.0F);
    EXPECT_EQ(MET_theta_e_index(s.data() + 4, 6, &found), -1); // it begins at 619 hPa
    EXPECT_EQ(found.fall, kMissing);
}

TEST(Stability, OddSoundingsGiveTheirOwnAnswers)
{
    const Sound s = warm_sounding();
    const int n = static_cast<int>(s.size());
    float mix = 0;
    EXPECT_EQ(MET_lifted_index(s.data() + 6, n - 6, kP, 478.2F, 0, 300), kMissing);
    EXPECT_EQ(MET_ccl(s.data() + 6, n - 6, kP, &mix, 478.2F, 0), kMissing);
    EXPECT_EQ(MET_precip_water(s.data() + 6, n - 6), kMissing);
    EXPECT_EQ(MET_ccl(s.data(), 1, kP, &mix, 1000, 0), 0.0F);
    const SoundLevel cold[] = {{1000, 100, -1, -2, M, M}, {900, 1000, -5, -9, M, M}};
    EXPECT_EQ(MET_wetbulb_zero(cold, 2), -1.0F);
    const SoundLevel fog[] = {{1000, 100, 10, 10.5F, M, M}, {900, 1000, 8, 8, M, M}};
    EXPECT_EQ(MET_ccl(fog, 2, kP, &mix, 1000, 0), 1000.0F); // cut at the first level
    const SoundLevel hot[] = {{1000, 100, 40, -20, M, M}, {900, 1000, 39, -25, M, M}};
    EXPECT_EQ(MET_ccl(hot, 2, kP, &mix, 1000, 0), -1.0F);
    EXPECT_EQ(MET_layer_mean("nothing", s.data(), n, kP, 1000, 900), kMissing);
}

TEST(Stability, BadSoundingsGiveMissingAndNothingWorse)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    Sound upside = warm_sounding();
    std::reverse(upside.begin(), upside.end());
    const Sound same(20, SoundLevel{850, 1500, 10, 5, 200, 20});
    const Sound missing(30, SoundLevel{M, M, M, M, M, M});
    const Sound not_numbers(5, SoundLevel{nan, nan, nan, nan, nan, nan});
    const Sound too_long(kMaxSoundLevels + 1, SoundLevel{850, 1500, 10, 5, 200, 20});
    Sound wild(2, SoundLevel{3e38F, -3e38F, 3e38F, -3e38F, 1e9F, 1e9F});
    wild[1].p = 1e-30F;
    Sound bare = warm_sounding();
    for (SoundLevel &level : bare)
        level.z = level.t = level.td = level.dir = level.spd = M;
    struct Bad {
        const char *name;
        const Sound &sound;
        bool must_miss;
    };
    const Sound none;
    const Sound one(1, SoundLevel{1000, 0, 20, 15, 200, 20});
    const Bad cases[] = {
        {"empty", none, true},           {"Missing everywhere", missing, true},
        {"pressures alone", bare, true}, {"not numbers", not_numbers, false},
        {"upside down", upside, false},  {"one level over and over", same, false},
        {"one level", one, false},       {"wild numbers", wild, false},
        {"too long", too_long, false},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        const int n = static_cast<int>(c.sound.size());
        for (const Case &index : kWarm) {
            const float x = index.index(c.sound.data(), n);
            EXPECT_TRUE(!c.must_miss || is_missing(x)) << index.name << ' ' << x;
        }
        ThetaEIndex theta_e{};
        EXPECT_TRUE(!c.must_miss || MET_theta_e_index(c.sound.data(), n, &theta_e) == -1);
        ParcelRec parcel{};
        const int lifted = MET_parcel(c.sound.data(), n, nullptr, kP, &parcel, 1000, 100);
        EXPECT_TRUE(!c.must_miss || (lifted == 0 && is_missing(parcel.cape)));
        float number = 0;
        float shear = 0;
        MET_bulk_richardson(c.sound.data(), n, kP, &number, &shear, 1000, 1000);
        EXPECT_TRUE(!c.must_miss || is_missing(number));
    }
}
