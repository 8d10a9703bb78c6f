#include <cmath>
#include <cstring>
#include <functional>

#include "programs/profiler/evaluate.h"
#include "tyr/base/missing.h"
#include "tyr/base/res.h"
#include "tyr/var/layer.h"
#include "tyr/var/level.h"

namespace {

constexpr float kM = kMissing;

/// Levels at 500, 1000, 1500 and 2000 m; u is Missing at 1500 m, v at 1000 m.
ProfilerRecord small_profile()
{
    ProfilerRecord r;
    PRF_init_record(&r);
    std::strcpy(r.id, "PLTC2");
    r.elev = 300.5F;
    r.sfc_dir = 270.0F;
    r.sfc_spd = 4.0F;
    r.sfc_t = 20.0F;
    r.sfc_td = 12.5F;
    const ProfilerLevel levels[] = {
        {500.0F, 10.0F, 2.0F, 0.1F, kM, kM, 0},
        {1000.0F, 20.0F, kM, 0.2F, kM, kM, 0},
        {1500.0F, kM, 6.0F, 0.3F, kM, kM, 0},
        {2000.0F, 40.0F, 8.0F, kM, kM, kM, 0},
    };
    for (const ProfilerLevel &level : levels) {
        r.level[r.num_level++] = level;
    }
    return r;
}

struct Wind {
    float direction, speed;
};

/// Levels every 500 m up to 9500 m, with the wind of each and, level 0, of the surface.
ProfilerRecord profile_of(const std::function<Wind(float)> &wind_at)
{
    ProfilerRecord r;
    PRF_init_record(&r);
    r.elev = 0.0F;
    r.sfc_dir = wind_at(0.0F).direction;
    r.sfc_spd = wind_at(0.0F).speed;
    for (int k = 1; k < 20; ++k) {
        const Wind wind = wind_at(static_cast<float>(k));
        const float angle = wind.direction * 0.0174532925F;
        ProfilerLevel &level = r.level[r.num_level++];
        level.z = 500.0F * static_cast<float>(k);
        level.u = -wind.speed * std::sin(angle);
        level.v = -wind.speed * std::cos(angle);
    }
    return r;
}

VarRec variable(const char *name, int kind, int value, const char *units = "")
{
    VarRec v;
    VAR_init(&v);
    std::strcpy(v.name, name);
    std::strcpy(v.units, units);
    v.level_kind = kind;
    v.level_value = value;
    return v;
}

/// What a name answers; values 1 beforehand.
PlotValue evaluate(const ProfilerRecord &r, VarRec *v)
{
    PlotValue value;
    PLT_init_value(&value);
    value.value1 = value.value2 = 1.0F;
    EXPECT_EQ(PRF_evaluate(&r, v, &value), 1);
    return value;
}

struct Interpolated {
    int result;
    float u = 1.0F, v = 1.0F, w = 1.0F;
};

Interpolated interpolate(const ProfilerRecord &r, int kind, long value)
{
    Interpolated at{};
    at.result = PRF_interpolate(&r, kind, value, &at.u, &at.v, &at.w);
    return at;
}

class Evaluate : public testing::Test {
  protected:
    void SetUp() override { RES_put("file_path", TYR_SOURCE_DIR "/data"); }
};

} // namespace

TEST_F(Evaluate, InterpolatesBetweenLevels)
{
    const struct {
        const char *name;
        int kind;
        long value;
        int result;
        float u, v, w;
    } cases[] = {
        {"surface", 1, 0, 1, 4.0F, 0.0F, 0.0F},
        {"surface whatever the value", 1, 850, 1, 4.0F, 0.0F, 0.0F},
        {"0 above ground is the surface", 105, 0, 1, 4.0F, 0.0F, 0.0F},
        {"below the first level", 105, 499, 1, kM, kM, kM},
        {"at the first level", 105, 500, 1, 10.0F, 2.0F, 0.1F},
        {"at a level with a component missing", 105, 1000, 1, 20.0F, kM, 0.2F},
        {"half way, one end without v", 105, 750, 1, 15.0F, kM, 0.15F},
        {"a fifth of the way", 105, 600, 1, 12.0F, kM, 0.12F},
        {"either end without u or v", 105, 1250, 1, kM, kM, 0.25F},
        {"one end without u and w", 105, 1750, 1, kM, 7.0F, kM},
        {"at the top", 105, 2000, 1, 40.0F, 8.0F, kM},
        {"above the top", 105, 2001, 0, kM, kM, kM},
        {"above sea: 799 - 300.5 is 498", 103, 799, 1, kM, kM, kM},
        {"above sea: 801 - 300.5 is 500", 103, 801, 1, 10.0F, 2.0F, 0.1F},
        {"above sea: 300 - 300.5 is 0", 103, 300, 1, kM, kM, kM},
        // the standard atmosphere has 850 hPa at 1457 m: 914/1000 of the way from 1000 to 1500 m
        {"850 hPa, no elevation taken off", 100, 850, 1, kM, kM, 0.2914F},
        {"954.6 hPa lies at 500 m", 100, 955, 1, kM, kM, kM},
        {"100 hPa lies above", 100, 100, 0, kM, kM, kM},
        {"another kind is above ground", 107, 600, 1, 12.0F, kM, 0.12F},
    };
    const ProfilerRecord r = small_profile();
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        const Interpolated at = interpolate(r, c.kind, c.value);
        EXPECT_EQ(at.result, c.result);
        EXPECT_NEAR(at.u, c.u, 1e-4);
        EXPECT_NEAR(at.v, c.v, 1e-4);
        EXPECT_NEAR(at.w, c.w, 1e-4);
    }
}

TEST_F(Evaluate, SurfaceStandsAheadOfALevelAtZero)
{
    ProfilerRecord r = small_profile();
    r.level[0].z = 0.0F;
    const Interpolated at = interpolate(r, 105, 0);
    EXPECT_EQ(at.result, 1);
    EXPECT_NEAR(at.u, 4.0F, 1e-4); // not the level's 10
    EXPECT_EQ(at.w, 0.0F);
    r.num_level = 0;
    EXPECT_EQ(interpolate(r, 105, 500).result, 0);
}

TEST_F(Evaluate, SearchesInTheOrderOfTheRecord)
{
    ProfilerRecord r = small_profile();
    r.level[1].z = 3000.0F; // low mode reaches above the first level of the high mode
    EXPECT_NEAR(interpolate(r, 105, 2000).u, 10.0F + 1500.0F * 10.0F / 2500.0F,
                1e-4); // not the 40 of the level there
}

TEST_F(Evaluate, AnswersEachName)
{
    // at 500 m: u 10, v 2: from atan2(-10, -2) = 258.690 degrees with 10.19804 m/s
    const struct {
        const char *name;
        int kind, value;
        const char *units_wanted;
        float value1, value2;
        const char *units;
    } cases[] = {
        {"temp", 1, 0, "", 20.0F, kM, "C"},
        {"TEMP", 1, 0, "F", 68.0F, kM, "F"},
        {"temp", 105, 500, "", kM, kM, "C"},
        {"dewp", 1, 0, "", 12.5F, kM, "C"},
        {"dewd", 1, 0, "", 7.5F, kM, "dC"},
        {"wdir", 105, 500, "", 258.6901F, kM, "deg"},
        {"WDIR-850", 105, 500, "", 258.6901F, kM, "deg"},
        {"wspd", 105, 500, "", 19.82499F, kM, "knt"},    // 10.19804 * 1.944
        {"wspd", 105, 500, "m/s", 10.19886F, kM, "m/s"}, // 19.82499 * 0.5144444
        {"wspd", 105, 1000, "", kM, kM, "knt"},
        {"wind", 105, 500, "", 258.6901F, 10.19804F, "m/s"},
        {"wbrb", 105, 500, "knt", 258.6901F, 19.82340F, "knt"}, // 10.19804 * 1.943844492
        {"wbrbc-x", 105, 500, "knt", 258.6901F, 19.82340F, "knt"},
        {"wbrb", 105, 2500, "knt", kM, kM, "knt"},
        {"uwnd", 105, 500, "", 10.0F, kM, "m/s"},
        {"uwnd", 105, 500, "knt", 19.43845F, kM, "knt"},
        {"vwnd", 105, 1500, "", 6.0F, kM, "m/s"},
        {"vvel", 105, 500, "", 0.1F, kM, "m/s"},
        {"nonsense", 105, 500, "", kM, kM, ""},
        {"win", 105, 500, "", kM, kM, ""},
        {"wdirs", 105, 500, "", kM, kM, ""},
    };
    const ProfilerRecord r = small_profile();
    for (const auto &c : cases) {
        SCOPED_TRACE(std::string(c.name) + " " + c.units_wanted);
        VarRec v = variable(c.name, c.kind, c.value, c.units_wanted);
        const PlotValue value = evaluate(r, &v);
        EXPECT_NEAR(value.value1, c.value1, 2e-4);
        EXPECT_NEAR(value.value2, c.value2, 2e-4);
        EXPECT_STREQ(v.units, c.units);
    }
}

TEST_F(Evaluate, CityIsAText)
{
    const ProfilerRecord r = small_profile();
    VarRec v = variable("city", 105, 500);
    PlotValue value;
    PLT_init_value(&value);
    PRF_evaluate(&r, &v, &value);
    EXPECT_STREQ(value.text, "PLTC2");
    EXPECT_EQ(value.value1, kM);
    v = variable("uwnd", 105, 500);
    PRF_evaluate(&r, &v, &value);
    EXPECT_STREQ(value.text, ""); // the next answer clears it
}

TEST_F(Evaluate, WhatIsMissingStaysSo)
{
    ProfilerRecord r = small_profile();
    r.sfc_td = kM;
    for (const char *name : {"dewp", "dewd"}) {
        VarRec v = variable(name, 1, 0, "F");
        EXPECT_EQ(evaluate(r, &v).value1, kM) << name;
    }
    PRF_init_record(&r); // no winds
    for (const char *name : {"hel", "shear"}) {
        VarRec v = variable(name, 105, 500);
        EXPECT_EQ(evaluate(r, &v).value1, kM) << name;
    }
}

TEST_F(Evaluate, ShearOfHandWorkedProfiles)
{
    const auto westerly = profile_of([](float) { return Wind{270.0F, 10.0F}; });
    const auto above_calm = profile_of([](float k) {
        return k == 0.0F ? Wind{kM, kM} : Wind{270.0F, 10.0F};
    });
    const auto turning = [](float step) {
        return profile_of([step](float k) { return Wind{180.0F + step * k, 10.0F}; });
    };
    // speeds count as knots: 10 stands for 5.144 m/s
    const struct {
        const char *name;
        ProfilerRecord record;
        int bottom, top; ///< m above ground; top 0: the variable holds no layer
        double shear;    ///< 10^-3/s
    } cases[] = {
        {"no shear", westerly, 0, 0, 0.0},
        {"calm at the ground: 5.144 m/s in 3000 m", above_calm, 0, 0, 5.144 / 3.0},
        {"veering 90 degrees in 3000 m: chord 5.144 * sqrt 2", turning(15.0F), 0, 0, 7.27471 / 3.0},
        {"backing alike", turning(-15.0F), 0, 0, 7.27471 / 3.0},
        {"30 degrees in 1000 m: chord 2 * 5.144 * sin 15 degrees", turning(15.0F), 0, 1000,
         2.66275},
        {"the same higher up", turning(15.0F), 1000, 2000, 2.66275},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        VarRec v = variable("shear", 105, 1500);
        if (c.top != 0) {
            VAR_encode_layer(105, &v.level_kind, &v.level_value, static_cast<float>(c.bottom),
                             static_cast<float>(c.top));
        }
        EXPECT_NEAR(evaluate(c.record, &v).value1, c.shear, 1e-4);
        EXPECT_STREQ(v.units, "10^-3/s");
        // as for the next station of a map
        EXPECT_NEAR(evaluate(c.record, &v).value1, c.shear, 1e-4);
        int kind = 0;
        float bottom = kM;
        float top = kM;
        float extra = kM;
        EXPECT_EQ(VAR_layer_limits(&v, &kind, &bottom, &top, &extra), 2); // now it holds one
        EXPECT_EQ(std::fmin(bottom, top), static_cast<float>(c.bottom));
        EXPECT_EQ(std::fmax(bottom, top), c.top != 0 ? static_cast<float>(c.top) : 3000.0F);
    }
}

TEST_F(Evaluate, HelicityOfAStraightHodograph)
{
    // From the west throughout, 10 at the ground and 2 more every 500 m. The mean speed from 0 to
    // 6000 m, weighted by ln p, is 22.2887; the storm moves from 300 degrees with 0.75 of it. Seen
    // from it the wind's northward part is always half the storm's speed, and the eastward part
    // grows by 12 up to 3000 m; the sum of v1 u2 - v2 u1 is the product of the two, in
    // (0.5144 m/s)^2.
    const auto r = profile_of([](float k) { return Wind{270.0F, 10.0F + 2.0F * k}; });
    VarRec v = variable("hel", 105, 500);
    EXPECT_NEAR(evaluate(r, &v).value1, 26.5399, 2e-3);
    EXPECT_STREQ(v.units, "m^2/s^2");
    EXPECT_NEAR(evaluate(r, &v).value1, 26.5399, 2e-3);
}

TEST_F(Evaluate, UsualUnitsOfEachName)
{
    const struct {
        const char *units;
        std::vector<const char *> names;
    } cases[] = {
        {"C", {"temp", "dewp"}},   {"dC", {"dewd"}},
        {"deg", {"wdir"}},         {"knt", {"wspd", "wind", "WBRB-5", "wbrbc"}},
        {"m/s", {"uwnd", "vwnd"}}, {"", {"city", "vvel", "hel"}},
    };
    for (const auto &c : cases) {
        for (const char *name : c.names) {
            VarRec v = variable(name, 105, 0);
            EXPECT_EQ(PRF_var_units(&v), 1);
            EXPECT_STREQ(v.units, c.units) << name;
        }
    }
    VarRec v = variable("wbrb", 105, 0, "mph");
    EXPECT_EQ(PRF_var_units(&v), 1);
    EXPECT_STREQ(v.units, "mph");
}
