#include <algorithm>
#include <cmath>

#include "support/shared_data.h"
#include "support/sounding_rows.h"
#include "support/warm_sounding.h"
#include "tyr/base/missing.h"
#include "tyr/met/parcel.h"
#include "tyr/met/storm.h"
#include "tyr/met/wind_profile.h"

namespace {

constexpr float M = kMissing;
constexpr int kP = 100;

ParcelRec lift(const std::vector<SoundLevel> &s, float p, float depth = 0.0F)
{
    ParcelRec result{};
    MET_parcel(s.data(), static_cast<int>(s.size()), nullptr, kP, &result, p, depth);
    return result;
}

} // namespace

TEST(Parcel, EnergyOfALayerByHand)
{
    // 9.8 * (12 - 10) / 283.15 * 1000
    const SoundLevel low = {1000, 0, 14, M, M, M};
    const SoundLevel high = {900, 1000, 6, M, M, M};
    const SoundLevel parcel_low = {1000, M, 15, M, M, M};
    const SoundLevel parcel_high = {900, M, 9, M, M, M};
    EXPECT_NEAR(MET_layer_energy(&parcel_low, &parcel_high, &low, &high), 69.22, 0.01);
    EXPECT_NEAR(MET_layer_energy(&low, &high, &low, &high), 0.0, 1e-6);
    const SoundLevel nowhere = {900, M, 6, M, M, M};
    EXPECT_EQ(MET_layer_energy(&parcel_low, &parcel_high, &low, &nowhere), kMissing);
}

// The same sounding in steps of 0.5 hPa with the formulas of Bolton (1980), worked by a program
// written for this purpose in another language: 1800.2 and 50.6 J/kg, condensation at 891.9 hPa.
TEST(Parcel, SurfaceParcelOfAnAnalyticSounding)
{
    const ParcelRec r = lift(warm_sounding(), 1000.0F);
    EXPECT_NEAR(r.cape, 1800.2, 0.05 * 1800.2);
    EXPECT_NEAR(r.cin, 50.6, 0.1 * 50.6);
    EXPECT_NEAR(r.lcl_p, 891.9, 1.0);
    EXPECT_NEAR(r.w_max, std::sqrt(2.0 * r.cape), 1e-3);
    EXPECT_GT(r.lcl_p, r.lfc_p);
    EXPECT_GT(r.lfc_p, r.el_p);
    EXPECT_TRUE(is_missing(r.mpl_p) || r.mpl_p < r.el_p);
    EXPECT_NEAR(r.b_el, r.cape, 0.1 * r.cape);
}

TEST(Parcel, OneThatIsNeverWarmerHasNoFreeConvection)
{
    // isothermal air: a rising parcel is colder all the way
    std::vector<SoundLevel> s;
    for (int i = 0; i < 10; ++i)
        s.push_back(
            {1000.0F - 80.0F * static_cast<float>(i), 700.0F * static_cast<float>(i), 5, -5, M, M});
    const ParcelRec r = lift(s, 1000.0F);
    EXPECT_EQ(r.cape, 0.0F);
    EXPECT_EQ(r.w_max, 0.0F);
    EXPECT_EQ(r.lfc_p, -1.0F);
    EXPECT_EQ(r.el_p, kMissing);
    EXPECT_GT(r.cin, 1000.0F);
    EXPECT_GT(r.cap, 20.0F);
}

TEST(Parcel, IsHandedBackAsItWasLifted)
{
    const std::vector<SoundLevel> s = warm_sounding();
    const int n = static_cast<int>(s.size());
    ParcelRec r{};
    SoundLevel parcel = {M, M, M, M, M, M};
    EXPECT_EQ(MET_parcel(s.data(), n, &parcel, kP, &r, 1000.0F, 100.0F), 1);
    EXPECT_NEAR(parcel.t, 300.896 - 273.15, 0.05); // mixed: theta of the layer at 1000 hPa
    EXPECT_NEAR(parcel.td, 19.04, 0.1);
    parcel = {900.0F, M, 25.0F, 15.0F, M, M}; // given: it stays, whatever p and depth
    EXPECT_EQ(MET_parcel(s.data(), n, &parcel, kP, &r, 1000.0F, 100.0F), 1);
    EXPECT_FLOAT_EQ(parcel.p, 900.0F);
    EXPECT_NEAR(parcel.t, 25.0, 1e-3);
    EXPECT_LT(r.lcl_p, 800.0F);
}

TEST(Parcel, WithoutDataAllIsMissing)
{
    const std::vector<SoundLevel> s = warm_sounding();
    ParcelRec r{};
    EXPECT_EQ(MET_parcel(s.data(), 0, nullptr, kP, &r, 1000.0F, 0.0F), 0);
    EXPECT_EQ(r.cape, kMissing);
    EXPECT_EQ(MET_parcel(s.data(), 17, nullptr, kP, &r, M, 0.0F), 0);
    EXPECT_EQ(r.lfc_p, kMissing);
    SoundLevel dry = {1000.0F, 0.0F, 20.0F, M, M, M};
    EXPECT_EQ(MET_parcel(s.data(), 17, &dry, kP, &r, 1000.0F, 0.0F), 0);
    EXPECT_EQ(r.w_max, kMissing);
}

// Most unstable parcels of soundings before large hail; the energies by the same program as above,
// without correction for vapour, as ours.
TEST(Parcel, EnergiesOfSoundingsBeforeHail)
{
    const struct {
        const char *file;
        float p;
        double cape, cin;
    } cases[] = {
        {"06040300.LZK", 988, 3332, 18}, {"91042912.BRO", 1000, 4067, 2},
        {"91052900.HON", 964, 3617, 0},  {"91081400.GTF", 887, 2248, 11},
        {"92072600.DDC", 922, 4432, 14}, {"93092200.TOP", 903, 3185, 19},
        {"95051700.DDC", 910, 4465, 19}, {"96030700.JAN", 994, 2063, 1},
        {"96062700.TFX", 876, 3545, 2},  {"99012200.LZK", 976, 1956, 0},
    };
    if (shared_data("upper_air/hail").empty())
        GTEST_SKIP() << "no shared data";
    for (const auto &c : cases) {
        SCOPED_TRACE(c.file);
        auto s = read_sounding_rows(shared_data(std::string("upper_air/hail/") + c.file));
        ASSERT_GT(s.size(), 40U);
        const ParcelRec r = lift(s, c.p);
        EXPECT_NEAR(r.cape, c.cape, 0.05 * c.cape);
        EXPECT_NEAR(r.cin, c.cin, std::max(2.0, 0.05 * c.cin));
    }
}

TEST(Storm, BulkRichardsonOfWindsInTwoLayers)
{
    // 10 m/s from the west in the lowest kilometre; the mean of 6000 m is found by the same weights
    // by hand: pressures of a scale height of 8 km, so weights are depths: (10 * 1000 + 20 * 500 +
    // 30 * 4500) / 6000 = 25.83 with the speed linear from 1000 to 1500 m
    std::vector<SoundLevel> s;
    for (int i = 0; i <= 14; ++i) {
        const auto z = static_cast<float>(500 * i);
        const float speed = i <= 2 ? 10.0F : 30.0F;
        s.push_back({static_cast<float>(1000 * std::exp(-z / 8000.0)), z, M, M, 270,
                     static_cast<float>(speed / 0.5144)});
    }
    float number = 0;
    float shear = 0;
    EXPECT_EQ(MET_bulk_richardson(s.data(), 15, kP, &number, &shear, 1000, 2000), 0);
    EXPECT_NEAR(shear, 25.833 - 10.0, 0.01);
    EXPECT_NEAR(number, 2000 / (0.5 * 15.833 * 15.833), 0.02);
    MET_bulk_richardson(s.data(), 15, kP, &number, &shear, 1000, -1);
    EXPECT_EQ(number, kMissing);
    EXPECT_NEAR(shear, 15.833, 0.01);
    for (SoundLevel &level : s)
        level.dir = level.spd = M;
    EXPECT_EQ(MET_bulk_richardson(s.data(), 15, kP, &number, &shear, 1000, 2000), -1);
    EXPECT_EQ(number, kMissing);
}

TEST(Storm, EnergyHelicityIsHelicityTimesCape)
{
    const std::vector<SoundLevel> s = warm_sounding();
    const float storm[2] = {200.0F, 8.0F};
    float helicity[kHelicityResults];
    MET_helicity(s.data(), 17, 103, storm, helicity, 0.0F, 2000.0F);
    ASSERT_GT(helicity[kHelPositive], 0.0F);
    EXPECT_NEAR(MET_energy_helicity(s.data(), 17, kP, storm, 1000, 1600),
                helicity[kHelPositive] / 100.0, 1e-4);
    const float none[2] = {M, M};
    EXPECT_EQ(MET_energy_helicity(s.data(), 17, kP, none, 1000, 1600), kMissing);
}
