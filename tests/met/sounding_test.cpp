#include <cmath>

#include "support/capture.h"
#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/met/sounding.h"
#include "tyr/met/wind.h"

namespace {

constexpr float M = kMissing;

// p, z, t, td, dir, spd
const std::vector<SoundLevel> kSounding{{1000, 100, 20, 15, 350, 10},
                                        {900, 1000, 12, M, 10, 20},
                                        {800, M, 6, 2, M, M},
                                        {700, 3000, -2, -8, 30, 40}};

SoundLevel at(const std::vector<SoundLevel> &sound, int kind, float value, int *index = nullptr)
{
    SoundLevel level{};
    const int j = MET_sound_at(sound.data(), static_cast<int>(sound.size()), kind, &level, value);
    if (index != nullptr)
        *index = j;
    return level;
}

} // namespace

TEST(Wind, ComponentsAndBack)
{
    const struct {
        const char *name;
        float dir, u, v;
    } cases[] = {{"north", 0, 0, -10},
                 {"east", 90, -10, 0},
                 {"south", 180, 0, 10},
                 {"west", 270, 10, 0},
                 {"southwest", 225, 7.07107F, 7.07107F}};
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        float u = 0;
        float v = 0;
        float dir = 0;
        float spd = 0;
        EXPECT_EQ(MET_wind_uv(&u, &v, c.dir, 10), 0);
        EXPECT_NEAR(u, c.u, 1e-5);
        EXPECT_NEAR(v, c.v, 1e-5);
        EXPECT_EQ(MET_wind_dirspd(&dir, &spd, c.u, c.v), 0);
        EXPECT_NEAR(dir, c.dir, 1e-4);
        EXPECT_NEAR(spd, 10, 1e-4);
    }
}

TEST(Wind, CalmMissingAndAHairWestOfNorth)
{
    float dir = 1;
    float spd = 1;
    EXPECT_EQ(MET_wind_dirspd(&dir, &spd, 0.006F, 0.007F), 0);
    EXPECT_EQ(dir, 0.0F);
    EXPECT_EQ(MET_wind_dirspd(&dir, &spd, M, 1), -1);
    EXPECT_EQ(dir, M);
    EXPECT_EQ(spd, M);
    EXPECT_EQ(MET_wind_uv(&dir, &spd, 10, M), -1);
    EXPECT_EQ(MET_wind_uv(&dir, &spd, M, 10), -1);
    EXPECT_EQ(dir, M);
    EXPECT_EQ(MET_wind_dirspd(&dir, &spd, 1e-7F, -10), 0);
    EXPECT_EQ(dir, 0.0F); // never 360
}

TEST(Sounding, HeightsInterpolateEachFieldAcrossItsGaps)
{
    int j = -1;
    SoundLevel level = at(kSounding, 103, 550, &j); // half way from 100 to 1000 m
    EXPECT_EQ(j, 1);
    EXPECT_EQ(level.z, 550.0F);
    EXPECT_NEAR(level.p, 950, 1e-3);
    EXPECT_NEAR(level.t, 16, 1e-4);
    EXPECT_NEAR(std::fmod(level.dir, 360.0), 0.0, 1e-3); // 350 to 10 by north
    EXPECT_NEAR(level.spd, 15, 1e-4);
    level = at(kSounding, 105, 2000, &j); // a level without height stands between
    EXPECT_EQ(j, 3);
    EXPECT_NEAR(level.spd, 30, 1e-4);
    EXPECT_EQ(level.t, M); // its temperature has no height to stand at
    level = at(kSounding, 104, 1000, &j);
    EXPECT_EQ(j, 1);
    EXPECT_EQ(level.dir, 10.0F);
    EXPECT_EQ(level.td, M);
}

TEST(Sounding, PressuresInterpolateInTheLogarithm)
{
    int j = -1;
    const auto mid = static_cast<float>(std::sqrt(1000.0 * 900.0));
    const SoundLevel level = at(kSounding, 100, mid, &j);
    EXPECT_EQ(j, 1);
    EXPECT_EQ(level.p, mid);
    EXPECT_NEAR(level.z, 550, 0.01);
    EXPECT_NEAR(level.t, 16, 1e-3);
    // z from 900 to 700 hPa jumps over the level at 800 hPa
    EXPECT_NEAR(at(kSounding, 101, 800).z,
                1000 + 2000 * std::log(900.0 / 800.0) / std::log(900.0 / 700.0), 0.05);
    EXPECT_EQ(at(kSounding, 100, 800).t, 6.0F);
}

TEST(Sounding, EndsAndTolerances)
{
    MET_clear_level(MET_special_level(kSpecialSurface));
    const struct {
        const char *name;
        int kind;
        float value;
        int index;
        float p, t;
    } cases[] = {{"a metre below", 103, 99, 0, 1000, 20},
                 {"5 m below", 103, 95, 0, M, M},
                 {"the first level", 103, 100, 1, 1000, 20},
                 {"above all", 103, 4000, 4, M, M},
                 {"0.5 % below", 100, 1005, 0, 1000, 20},
                 {"50 hPa below", 100, 1050, 0, M, M},
                 {"above in pressure", 100, 600, 4, 600, M},
                 {"no pressure", 100, 0, 0, M, M},
                 {"Missing", 103, M, 0, M, M},
                 {"no surface loaded", 1, 5, 0, M, M}};
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        int j = -1;
        const SoundLevel level = at(kSounding, c.kind, c.value, &j);
        EXPECT_EQ(j, c.index);
        EXPECT_EQ(level.p, c.p);
        EXPECT_EQ(level.t, c.t);
    }
    EXPECT_EQ(at(kSounding, 103, 4000).z, 4000.0F);
}

TEST(Sounding, LevelsFarApartGiveNoPressureBetweenThem)
{
    const std::vector<SoundLevel> sparse{{1000, 0, 20, 10, 200, 10},
                                         {500, 5500, -20, -30, 240, 50}};
    EXPECT_EQ(at(sparse, 103, 2).p, 1000.0F);   // within 3 m
    EXPECT_EQ(at(sparse, 103, 5498).p, 500.0F); // within 3 m
    EXPECT_EQ(at(sparse, 103, 2500).spd, M);    // nothing at all between
    EXPECT_NEAR(at(sparse, 100, 700).spd, 10 + 40 * std::log(1000.0 / 700) / std::log(2.0), 1e-3);
}

TEST(Sounding, PotentialTemperatureFillsGapsAndEndsAtTheLastGap)
{
    const std::vector<SoundLevel> sound{{1000, 0, 20, M, M, M},
                                        {900, 1000, M, M, M, M},
                                        {800, 2000, 10, M, M, M},
                                        {700, 3000, M, M, M, M}};
    // theta 293.15 and 283.15 * (1000 / 800) ^ 0.286 = 301.81; the gap at 900 hPa gets 15 C, theta
    // 288.15 * (1000 / 900) ^ 0.286 = 296.97
    int j = -1;
    const SoundLevel level = at(sound, 113, 296.97F, &j);
    EXPECT_NEAR(level.z, 1000, 3.0);
    EXPECT_NEAR(level.t, 15, 0.02);
    at(sound, 114, 310, &j);
    EXPECT_EQ(j, 3); // the sounding counts three levels
    std::vector<SoundLevel> filled = sound;
    MET_fill_temps(filled.data(), 4);
    EXPECT_FLOAT_EQ(filled[1].t, 15.0F);
    EXPECT_EQ(filled[3].t, M);
}

TEST(Sounding, ManyValuesEmptySoundingsAndTooLongOnes)
{
    const float values[]{100, 5000, 1000};
    SoundLevel out[3];
    EXPECT_EQ(MET_sound_interp(kSounding.data(), 4, 103, values, out, 3), 1);
    EXPECT_EQ(out[0].t, 20.0F);
    EXPECT_EQ(out[1].t, M);
    EXPECT_EQ(out[2].t, 12.0F);
    EXPECT_EQ(MET_sound_interp(nullptr, 0, 103, values, out, 3), 0);
    EXPECT_EQ(out[0].t, M);
    const std::vector<SoundLevel> tall(kMaxSoundLevels + 1, kSounding[0]);
    const std::string told = told_by([&] {
        EXPECT_EQ(MET_sound_interp(tall.data(), kMaxSoundLevels + 1, 103, values, out, 1), -1);
        EXPECT_EQ(MET_set_sounding(tall.data(), kMaxSoundLevels + 1), -1);
    });
    EXPECT_NE(told.find("MET_sound_interp: Sounding of 309 levels, room is for 308"),
              std::string::npos);
}

TEST(Sounding, SurfaceLevelInForceAnswersKindOne)
{
    *MET_special_level(kSpecialSurface) = {900, 950, 14, 9, 20, 5};
    int j = -1;
    EXPECT_EQ(at(kSounding, 1, 0, &j).t, 14.0F);
    EXPECT_EQ(j, 1); // the level of the same pressure
    MET_clear_level(MET_special_level(kSpecialSurface));
    EXPECT_EQ(MET_special_level(kSpecialSurface)->p, M);
}

TEST(Sounding, FreezingLevel)
{
    const struct {
        const char *name;
        std::vector<SoundLevel> sound;
        float want;
    } cases[] = {
        {"falls through 0", {{900, M, 4, M, M, M}, {800, M, -4, M, M, M}}, 850},
        {"a gap between", {{900, M, 4, M, M, M}, {850, M, M, M, M, M}, {800, M, -4, M, M, M}}, 850},
        {"falls to 0", {{900, M, 4, M, M, M}, {800, M, 0, M, M, M}}, 800},
        {"cold ground", {{900, M, -1, M, M, M}, {800, M, 2, M, M, M}}, -1},
        {"never", {{900, M, 4, M, M, M}, {800, M, 2, M, M, M}}, M},
        {"begins too high", {{499, M, 4, M, M, M}, {400, M, -4, M, M, M}}, M},
        {"rises from below at the top", {{500, M, -4, M, M, M}, {400, M, 4, M, M, M}}, 450},
        {"empty", {}, M}};
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_FLOAT_EQ(MET_freezing_level(c.sound.data(), static_cast<int>(c.sound.size())),
                        c.want);
    }
}

TEST(Sounding, LevelsPrintWithTagsAndBlanks)
{
    const SoundLevel level{9, M, M, M, 270, 15};
    const std::string text = shown_by([&] {
        MET_print_level(kMsgPrint, 0, kTagWetBulbZero, &kSounding[0]);
        MET_print_level(kMsgPrint, 1, 7, &level);
        MET_print_level(kMsgPrint, 0xF0, 7, &level);
    });
    EXPECT_EQ(text.substr(0, 11), "WBZ 1000   ");
    EXPECT_NE(text.find("\n  7  9.0 "), std::string::npos);
    EXPECT_NE(text.find("270  15 \n"), std::string::npos);
    EXPECT_EQ(text.find("-9999"), std::string::npos);
}
