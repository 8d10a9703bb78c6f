#include <string>

#include <gtest/gtest.h>

#include "tyr/base/missing.h"
#include "tyr/base/str.h"
#include "tyr/upper_air/groups.h"

using namespace tyr;

namespace {

struct HeightCase {
    const char *group;
    float p, z;
};
// heights worked out by hand from the Manual on Codes and soundings of the standard atmosphere
constexpr HeightCase kHeights[] = {
    {"85123", 850, 1123},      {"70999", 700, 2999},          {"70123", 700, 3123},
    {"00510", 1000, -10},      {"00123", 1000, 123},          {"92123", 925, 123},
    {"-5123", 5, 31230},       {"11234", 110, 234},           {"50571", 500, 5710},
    {"40733", 400, 7330},      {"30928", 300, 9280},          {"30012", 300, 10120},
    {"25047", 250, 10470},     {"20189", 200, 11890},         {"10618", 100, 16180},
    {"07864", 70, 18640},      {"05078", 50, 20780},          {"05960", 50, 19600},
    {"03407", 30, 24070},      {"02675", 20, 26750},          {"01145", 10, 31450},
    {"01980", 10, 29800},      {"-7345", 7, 33450},           {"-3920", 3, 39200},
    {"-2420", 2, 44200},       {"-1780", 1, 47800},           {"88221", 880, 221},
    {"85///", 850, kMissing},  {"00///", 1000, kMissing},     {"99999", kMissing, kMissing},
    {"X", kMissing, kMissing}, {"/////", kMissing, kMissing}, {"", kMissing, kMissing},
};

TEST(Groups, DecodePressureAndHeight)
{
    for (const HeightCase &c : kHeights) {
        SCOPED_TRACE(c.group);
        float p = 1;
        float z = 1;
        EXPECT_EQ(UPA_decode_pz(c.group, &p, &z), is_missing(c.z) ? -1 : 0);
        EXPECT_FLOAT_EQ(p, c.p);
        EXPECT_FLOAT_EQ(z, c.z);
    }
}

struct PairCase {
    const char *group;
    int result;
    float first, second;
};
constexpr PairCase kTemps[] = {
    {"12315", 0, -12.3F, -13.8F},      {"12460", 0, 12.4F, 2.4F},
    {"611//", 0, -61.1F, kMissing},    {"20499", 0, 20.4F, kMissing},
    {"99999", -1, kMissing, kMissing}, {"/////", -1, kMissing, kMissing},
    {"X", -1, kMissing, kMissing},
};
constexpr PairCase kWinds[] = {
    {"23515", 0, 235, 15},
    {"23617", 0, 235, 117},
    {"00000", 0, 0, 0},
    {"36050", 0, 360, 50},
    {"27260", 0, kMissing, kMissing}, // 260 knots
    {"36500", 0, kMissing, kMissing}, // 365 degrees
    {"99999", 0, kMissing, kMissing},
    {"/////", -1, kMissing, kMissing},
    {"X", -1, kMissing, kMissing},
};

TEST(Groups, DecodeTemperatureAndWind)
{
    for (const PairCase &c : kTemps) {
        SCOPED_TRACE(c.group);
        float t = 1;
        float td = 1;
        EXPECT_EQ(UPA_decode_td(c.group, &t, &td), c.result);
        EXPECT_NEAR(t, c.first, 1e-4);
        EXPECT_NEAR(td, c.second, 1e-4);
    }
    for (const PairCase &c : kWinds) {
        SCOPED_TRACE(c.group);
        float dir = 1;
        float spd = 1;
        EXPECT_EQ(UPA_decode_wind(c.group, &dir, &spd), c.result);
        EXPECT_FLOAT_EQ(dir, c.first);
        EXPECT_FLOAT_EQ(spd, c.second);
    }
}

struct EncodeCase {
    const char *name;
    int (*encode)(float, float);
    float first, second;
    const char *group; // empty: -1
};
constexpr EncodeCase kEncodes[] = {
    {"depression 5.4", UPA_encode_td, 10, 4.6F, "10050"},
    {"depression 6.3", UPA_encode_td, 10, 3.7F, "10056"},
    {"-0.2", UPA_encode_td, -0.2F, kMissing, "00199"},
    {"-0.1 is 0", UPA_encode_td, -0.1F, kMissing, "00099"},
    {"dew point above", UPA_encode_td, 10, 10.5F, "10000"},
    {"no temperature", UPA_encode_td, kMissing, 3, ""},
    {"height unknown", UPA_encode_pz, 850, kMissing, "85/"},
    {"no pressure", UPA_encode_pz, kMissing, kMissing, ""},
    {"below sea level", UPA_encode_pz, 1000, -10, "00510"},
    {"above 10 hPa", UPA_encode_pz, 5, 31230, "-5123"},
    {"direction to the five", UPA_encode_wind, 233, 15, "23515"},
    {"a hundred knots", UPA_encode_wind, 235, 117, "23617"},
    {"no wind", UPA_encode_wind, kMissing, kMissing, ""},
    {"huge", UPA_encode_wind, 1e30F, 1e30F, "99499"},
};

TEST(Groups, Encode)
{
    for (const EncodeCase &c : kEncodes) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(c.encode(c.first, c.second), *c.group == '\0' ? -1 : 0);
        EXPECT_STREQ(UPA_group(), c.group);
    }
}

TEST(Groups, EveryPressureGroupComesBack)
{
    int groups = 0;
    for (const char *pp : {"00", "92", "85", "70", "50", "40", "30", "25", "20", "15", "10",
                           "07", "05", "03", "02", "01", "-7", "-5", "-3", "-2", "-1"}) {
        for (int hhh = 0; hhh < 1000; ++hhh) {
            const std::string group = STR_print("%s%03d", pp, hhh);
            float p = 0;
            float z = 0;
            ASSERT_EQ(UPA_decode_pz(group.c_str(), &p, &z), 0) << group;
            ASSERT_EQ(UPA_encode_pz(p, z), 0) << group;
            // "00500" is the height 0, whose own group is "00000"
            const std::string expected = group == "00500" ? "00000" : group;
            ASSERT_EQ(UPA_group(), expected);
            ++groups;
        }
    }
    EXPECT_EQ(groups, 21000);
}

TEST(Groups, EveryTemperatureGroupComesBack)
{
    for (int ttt = 0; ttt < 999; ++ttt) {
        for (int dd = 0; dd < 100; ++dd) {
            if (dd > 50 && dd < 56) {
                continue; // stand for nothing
            }
            const std::string group = STR_print("%03d%02d", ttt, dd);
            float t = 0;
            float td = 0;
            ASSERT_EQ(UPA_decode_td(group.c_str(), &t, &td), 0) << group;
            ASSERT_EQ(UPA_encode_td(t, td), 0) << group;
            // -0.1 has the code of 0.0
            ASSERT_EQ(UPA_group(), ttt == 1 ? "000" + group.substr(3) : group);
        }
    }
}

TEST(Groups, EveryWindGroupComesBack)
{
    for (int dir = 0; dir <= 360; dir += 5) {
        for (int spd = 0; spd <= 250; ++spd) {
            const std::string group = STR_print("%03d%02d", dir + spd / 100, spd % 100);
            float d = 0;
            float s = 0;
            ASSERT_EQ(UPA_decode_wind(group.c_str(), &d, &s), 0) << group;
            ASSERT_EQ(d, static_cast<float>(dir));
            ASSERT_EQ(s, static_cast<float>(spd));
            ASSERT_EQ(UPA_encode_wind(d, s), 0) << group;
            ASSERT_EQ(UPA_group(), group);
        }
    }
}

} // namespace
