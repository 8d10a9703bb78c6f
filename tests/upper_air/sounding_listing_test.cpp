#include <algorithm>
#include <cmath>
#include <random>

#include "support/capture.h"
#include "support/warm_sounding.h"
#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/upper_air/analysis.h"
#include "tyr/upper_air/parcel_choice.h"
#include "tyr/upper_air/sounding_listing.h"
#include "tyr/upper_air/sounding_store.h"

namespace {

constexpr float M = kMissing;

// A sounding in force for the time of a test.
struct InForce {
    std::vector<SoundLevel> temps, winds;

    explicit InForce(std::vector<SoundLevel> levels) : temps(levels), winds(levels)
    {
        MSG_set_paging(0);
        MSG_set_mask(0, kMsgPrint);
        const float p = temps.empty() ? M : temps[0].p;
        const int n = static_cast<int>(temps.size());
        THERM_setup(temps.data(), n, winds.data(), n, p);
        THERM_compute();
    }
};

bool has_line(const std::string &text, const std::string &line)
{
    return ("\n" + text).find("\n" + line + "\n") != std::string::npos;
}

// Three levels that give wanted indices: t(850), td(850), t(700) = td(700) + spread, t(500).
std::vector<SoundLevel> column(float t850, float td850, float spread, float t500)
{
    return {{1000, 100, t850 + 10, td850, 180, 10},
            {850, 1500, t850, td850, 180, 10},
            {700, 3100, (t850 + t500) / 2, (t850 + t500) / 2 - spread, 180, 10},
            {500, 5700, t500, t500 - 20, 180, 10},
            {400, 7300, t500 - 12, t500 - 32, 180, 10}};
}

} // namespace

TEST(SoundingListing, WarmSoundingToTheLetter)
{
    const InForce sounding(warm_sounding());
    const std::string text = shown_by(THERM_print_indices);
    SCOPED_TRACE(text);
    EXPECT_EQ(
        text.rfind("\nSounding variables and indices\n1000-500 mb thick:      5659.07 m\n", 0), 0U);
    // 0 C between 3000 m and 4000 m: 4.76 / 6.84 of the way; 701.1 - 82.0 * 0.6959 = 644.04
    EXPECT_TRUE(has_line(text, "Freezing level:          644.04 mb =  3695.91 m = 12125.53 ft"));
    EXPECT_TRUE(
        has_line(text, "Total Totals Index:       57.16 C Risk: Severe Thunderstorms probable"));
    EXPECT_TRUE(
        has_line(text, "K Index:                  41.86   Risk: > 80 % chance of thunderstorms"));
    EXPECT_TRUE(has_line(text, "  Cross Totals Index:     27.80 C"));
    EXPECT_TRUE(has_line(text, "Parcel: using 100 mb layer"));
    EXPECT_NE(text.find("\nSfc-Lift cond lev (LCL): 89"), std::string::npos);
    EXPECT_NE(text.find("\nCAPE (B+):              "), std::string::npos);
}

TEST(SoundingListing, RisksChangeAtTheirLimits)
{
    const struct {
        const char *name;
        float t850, td850, spread, t500;
        const char *line;
    } cases[] = {
        {"K 15", 10, 0, 5, -10,
         "K Index:                  15.00   Risk: < 20 % chance of thunderstorms"},
        {"K 14.9", 9.9F, 0, 5, -10, "K Index:                  14.90   Risk: None"},
        {"K 35", 20, 10, 5, -10,
         "K Index:                  35.00   Risk: > 80 % chance of thunderstorms"},
        {"TT 55", 20, 11, 5, -12,
         "Total Totals Index:       55.00 C Risk: Severe Thunderstorms probable"},
        {"TT 49", 20, 9, 5, -10,
         "Total Totals Index:       49.00 C Risk: Scattered heavy thunderstorms"},
        {"TT 43.9", 20, 3.9F, 5, -10, "Total Totals Index:       43.90 C Risk: None"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        const InForce sounding(column(c.t850, c.td850, c.spread, c.t500));
        const std::string text = shown_by(THERM_print_indices);
        EXPECT_TRUE(has_line(text, c.line)) << text;
    }
}

TEST(SoundingListing, WhatIsMissingHasNoLine)
{
    const InForce sounding({});
    EXPECT_EQ(shown_by(THERM_print_indices), "\nSounding variables and indices\n\nParcel Indices\n"
                                             "Parcel: using 100 mb layer\n");
    EXPECT_EQ(shown_by(THERM_print_winds), "\nWind Parameters\n");
    EXPECT_EQ(shown_by(THERM_print_levels), "");
}

TEST(SoundingListing, ParcelWithoutFreeConvectionSaysNone)
{
    std::vector<SoundLevel> stable;
    for (int i = 0; i < 10; ++i)
        stable.push_back({1000.0F - 80.0F * static_cast<float>(i), 700.0F * static_cast<float>(i),
                          -5, -15, M, M});
    const InForce sounding(stable);
    const std::string text = shown_by(THERM_print_indices);
    EXPECT_TRUE(has_line(text, "Lev Free Conv (LFC):     none")) << text;
    EXPECT_TRUE(has_line(text, "Freezing level:      Surface below freezing")) << text;
    EXPECT_TRUE(has_line(text, "Wetbulb zero:        Below ground")) << text;
}

TEST(SoundingListing, TheMaskChoosesTheLines)
{
    const InForce sounding(warm_sounding());
    MSG_set_mask(0, 0x1);
    const std::string text = shown_by(THERM_print_indices);
    EXPECT_EQ(text.find("thick"), std::string::npos);
    EXPECT_NE(text.find("Lifted Index:"), std::string::npos);
    EXPECT_EQ(shown_by(THERM_print_storm), "");
}

TEST(SoundingListing, WindsOfATurningProfile)
{
    const InForce sounding(warm_sounding());
    const std::string text = shown_by(THERM_print_winds);
    // sums of ln(p1 / p2) (u1 + u2) / 2 over the levels from 0 to 6 km, in another language
    EXPECT_EQ(
        text.rfind("\nWind Parameters\nMean winds (0-6000m):            217.1 at   25.4 knts\n"
                   "Storm direction:                 247.1 at   19.0 knts\n",
                   0),
        0U)
        << text;
    EXPECT_NE(text.find("\nEnergy-Hel index:       "), std::string::npos) << text;
    EXPECT_NE(text.find("\nBulk Rich Number:       "), std::string::npos) << text;
}

TEST(SoundingListing, StormTableHasARowForEachDepth)
{
    const InForce sounding(warm_sounding());
    const std::string text = shown_by(THERM_print_storm);
    const char *const depths[] = {" 500  ", "1000  ", "1500  ", "2000  ", "2500  ",
                                  "3000  ", "4000  ", "5000  ", "6000  "};
    size_t at = text.find(
        "Depth  Mean    Inflow|    Shear      |           Helicity           | Vorticity\n");
    ASSERT_NE(at, std::string::npos) << text;
    for (const char *depth : depths) {
        at = text.find(std::string("\n") + depth, at);
        ASSERT_NE(at, std::string::npos) << depth << text;
        const std::string row = text.substr(at + 1, text.find('\n', at + 1) - at - 1);
        EXPECT_EQ(row.find('|'), 21U) << row;
        EXPECT_EQ(std::count(row.begin(), row.end(), '|'), 3) << row;
    }
}

TEST(SoundingListing, WithoutAStormRowsHaveNoInflow)
{
    std::vector<SoundLevel> calm = warm_sounding();
    for (SoundLevel &level : calm)
        level.dir = level.spd = M;
    const InForce sounding(calm);
    const std::string text = shown_by(THERM_print_storm);
    EXPECT_NE(
        text.find("\n 500   NO DATA       |               |                              |\n"),
        std::string::npos)
        << text;
}

TEST(SoundingListing, WindLevelsRelativeToTheStorm)
{
    const InForce sounding(warm_sounding());
    const std::string text = shown_by(THERM_print_wind_levels);
    EXPECT_NE(text.find("\n   Storm motion: 247 at  19 knt\n"), std::string::npos) << text;
    EXPECT_NE(text.find(" LEV   P    H    DIR SPD   U     V   | DIR SPD   U     V\n"),
              std::string::npos);
    // from 180 at 10: u 0, v 10; less the storm's u 17.5, v 7.4: from 98 at 18
    EXPECT_NE(text.find("\n  0  1000     0 180  10   0.0  10.0  |  98  18 -17.5   2.6"),
              std::string::npos)
        << text;
}

TEST(Analysis, ParcelsByTheirChoice)
{
    const struct {
        const char *name;
        int mode;
        SoundLevel given;
        float p, t, td; // of the parcel lifted
    } cases[] = {
        {"surface", kParcelSurface, {M, M, M, M, M, M}, 1000, 26.85F, 19.04F},
        {"layer", kParcelLayer, {M, M, M, M, M, M}, 1000, 27.75F, 19.04F},
        {"maximum", kParcelMaxTemp, {M, M, M, M, M, M}, 1000, 29.84F, 19.04F},
        {"given", kParcelGiven, {891, M, 25, 12, M, M}, 891, 25, 12},
        {"given without t", kParcelGiven, {891, M, M, 12, M, M}, 891, 18.98F, 12},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        THERM_parcel_choice().mode = c.mode;
        THERM_parcel_choice().parcel = c.given;
        const InForce sounding(warm_sounding());
        const SoundLevel &used = THERM_parcel_choice().parcel;
        EXPECT_NEAR(used.p, c.p, 0.01);
        EXPECT_NEAR(used.t, c.t, 0.1);
        EXPECT_NEAR(used.td, c.td, 0.1);
        EXPECT_FALSE(is_missing(THERM_results().parcel.cape));
    }
}

TEST(Analysis, AnySoundingIsBorne)
{
    constexpr unsigned kSeed = 20140616;
    constexpr float kOdd[] = {M, 0.0F, -1.0F, 1e30F, -1e30F, 1e-30F, 500.0F, 1000.0F};
    std::mt19937 random(kSeed);
    const auto pick = [&random](int n) { return static_cast<int>(random() % unsigned(n)); };
    for (int round = 0; round < 300; ++round) {
        SCOPED_TRACE(round);
        std::vector<SoundLevel> levels = warm_sounding();
        levels.resize(static_cast<size_t>(pick(18)));
        std::shuffle(levels.begin(), levels.end(), random); // unsorted
        if (pick(2) == 0)
            std::sort(levels.begin(), levels.end(),
                      [](const SoundLevel &a, const SoundLevel &b) { return a.p > b.p; });
        constexpr float SoundLevel::*kFields[] = {&SoundLevel::p,   &SoundLevel::z,
                                                  &SoundLevel::t,   &SoundLevel::td,
                                                  &SoundLevel::dir, &SoundLevel::spd};
        for (int i = pick(40); i > 0 && !levels.empty(); --i)
            levels[static_cast<size_t>(pick(static_cast<int>(levels.size())))].*kFields[pick(6)] =
                kOdd[pick(8)];
        THERM_parcel_choice() = ParcelChoice{1 + pick(5), 100.0F, {M, M, M, M, M, M}};
        const InForce sounding(levels);
        const std::string text = shown_by([] {
            THERM_print_indices();
            THERM_print_winds();
            THERM_print_storm();
            THERM_print_levels();
            THERM_print_wind_levels();
        });
        for (const char *missing : {"-9999.", "-9999 "})
            EXPECT_EQ(text.find(missing), std::string::npos) << text;
        EXPECT_TRUE(is_missing(THERM_results().parcel.cape) || THERM_results().parcel.cape >= 0.0F);
    }
}
