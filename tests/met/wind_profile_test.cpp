#include <cmath>
#include <functional>

#include "tyr/base/missing.h"
#include "tyr/met/wind_profile.h"

namespace {

constexpr float M = kMissing;
constexpr double kKnot = 0.5144;

// A sounding every 500 m from 0 to 6000 m, with pressures of a scale height of 8 km.
std::vector<SoundLevel> profile(const std::function<float(float)> &dir,
                                const std::function<float(float)> &spd)
{
    std::vector<SoundLevel> sound;
    for (int i = 0; i <= 12; ++i) {
        const auto z = static_cast<float>(i * 500);
        const float d = dir(z);
        const auto p = static_cast<float>(1000.0 * std::exp(-double{z} / 8000.0));
        sound.push_back({p, z, M, M, d < 0 ? d + 360 : d, spd(z)});
    }
    return sound;
}

auto constant(float value)
{
    return [value](float) { return value; };
}

int count(const std::vector<SoundLevel> &sound)
{
    return static_cast<int>(sound.size());
}

struct Helicity {
    float x[kHelicityResults];
    int status;
};

Helicity helicity(const std::vector<SoundLevel> &sound, int kind, float storm_dir, float storm_spd,
                  float bottom, float top)
{
    Helicity result{};
    const float storm[2]{storm_dir, storm_spd};
    result.status = MET_helicity(sound.data(), count(sound), kind, storm, result.x, bottom, top);
    return result;
}

} // namespace

TEST(MeanWind, OfHandWorkedSoundings)
{
    const auto steady = profile(constant(240), constant(20));
    const auto calm = profile(constant(M), constant(M));
    auto gap = profile(constant(270), [](float z) { return z / 100; });
    gap[3].dir = gap[3].spd = M; // it is stepped over; linear in z, and ln p is linear in z here
    // weighted by mass: (ln(1000/800) * 15 + ln(800/400) * 25) / ln(1000/400) = 22.565; up to 600
    // hPa, where the speed is 20 + 10 * ln(800/600) / ln 2 = 24.150,
    // (0.223144 * 15 + 0.287682 * 22.0752) / 0.510826 = 18.985; from 900 to 850 hPa, within one
    // layer, (14.722 + 17.283) / 2
    const std::vector<SoundLevel> mass{
        {1000, 0, M, M, 270, 10},
        {800, 1900, M, M, 270, 20},
        {400, 7200, M, M, 270, 30},
    };
    // half of the mass from the south, half from the west: the vectors' mean is from the southwest,
    // the speed stays the mean of the speeds
    const std::vector<SoundLevel> halves{{1000, 0, M, M, 180, 20}, {500, 5500, M, M, 270, 20}};
    // at 940 hPa it has turned by 90 * ln(1000/940) / ln(1000/300) = 4.6
    const std::vector<SoundLevel> sparse{{1000, 0, M, M, 180, 10}, {300, 9000, M, M, 270, 30}};
    // clang-format off
    const struct {
        const char *name;
        std::vector<SoundLevel> sound;
        int kind;
        float bottom, top;
        int status;
        double dir, dir_off, spd, spd_off;
    } cases[] = {
        {"constant",                steady,      103, 0,    6000, 1,  240,   1e-3, 20,     1e-4},
        {"between its levels",      steady,      103, 250,  3333, 1,  240,   1e-3, 20,     1e-4},
        {"of pressure",             steady,      100, 950,  600,  1,  240,   1e-3, 20,     1e-4},
        {"above ground",            steady,      105, 700,  900,  1,  240,   1e-3, 20,     1e-4},
        {"weighted by mass",        mass,        100, 1000, 400,  1,  270,   1e-3, 22.565, 0.002},
        {"part of a layer",         mass,        100, 1000, 600,  1,  270,   1e-3, 18.985, 0.003},
        {"within one layer",        mass,        100, 900,  850,  1,  270,   1e-3, 16.002, 0.003},
        {"halves",                  halves,      100, 1000, 500,  1,  225,   1e-3, 20,     1e-4},
        {"sparse above the top",    sparse,      100, 1000, 940,  1,  182.5, 2.5,  10.51,  0.02},
        {"a missing level",         gap,         103, 0,    3000, 1,  270,   1e-3, 15,     0.05},
        {"bottom is top",           steady,      103, 700,  700,  1,  240,   1e-3, 20,     1e-3},
        {"no top",                  steady,      103, 700,  M,    1,  240,   1e-3, 20,     1e-3},
        {"upside down in height",   steady,      103, 2000, 1000, -1, M,     0,    M,      0},
        {"upside down in pressure", steady,      100, 700,  850,  -1, M,     0,    M,      0},
        {"pressure above ground",   steady,      115, 700,  850,  -1, M,     0,    M,      0},
        {"empty",                   {},          103, 0,    1000, -1, M,     0,    M,      0},
        {"one level",               {steady[0]}, 103, 0,    1000, 0,  240,   1e-3, 20,     1e-3},
        {"no wind",                 calm,        103, 0,    6000, 0,  M,     0,    M,      0},
        {"top above the data",      steady,      103, 0,    9000, 0,  240,   1e-3, 20,     1e-3},
    };
    // clang-format on
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        float result[2]{};
        EXPECT_EQ(MET_mean_wind(c.sound.data(), count(c.sound), c.kind, result, c.bottom, c.top),
                  c.status);
        EXPECT_NEAR(result[0], c.dir, c.dir_off);
        EXPECT_NEAR(result[1], c.spd, c.spd_off);
    }
}

TEST(Shear, VeeringAndBackingGoIntoTheirSums)
{
    // speed that grows by 10 knots a kilometre
    const auto linear = profile(constant(270), [](float z) { return z / 100; });
    const double slope = 10 * kKnot / 1000;
    auto high = linear;
    for (SoundLevel &level : high)
        level.z += 5001;
    // a quarter circle of 20 knots in 3000 m; the chord is 20 sqrt 2 knots long
    const double chord = 20 * std::sqrt(2.0) * kKnot / 3000;
    const auto turning = [](float start, float rate) { // degrees a metre
        return profile([=](float z) { return start + rate * z; }, constant(20));
    };
    // clang-format off
    const struct {
        const char *name;
        std::vector<SoundLevel> sound;
        int kind;
        float bottom, top;
        int status;
        double veering, backing;
    } cases[] = {
        {"speed alone",                 linear,               103, 0,    3000, 1,  slope, 0},
        {"veering",                     turning(180, 0.03F),  103, 0,    3000, 1,  chord, 0},
        {"backing",                     turning(180, -0.03F), 103, 0,    3000, 1,  0,     chord},
        {"veering across north",        turning(-45, 0.03F),  103, 0,    3000, 1,  chord, 0},
        {"constant",                    turning(60, 0),       103, 0,    3000, 1,  0,     0},
        {"empty",                       {},                   103, 0,    3000, 0,  M,     M},
        {"begins above 5000 m",         high,                 103, 5001, 8000, 0,  M,     M},
        {"bottom below the data",       linear,               103, -100, 3000, -1, M,     M},
        {"top above the data",          linear,               103, 0,    9000, 0,  slope, 0},
        {"a top beyond all bounds",     linear,               103, 0,    3e9F, 0,  slope, 0},
        {"pressure layer",              linear,               100, 1000, 700,  1,  slope, 0},
        {"pressure top above the data", linear,               100, 1000, 100,  -1, M,     M},
        {"less than a step",            linear,               103, 0,    400,  1,  M,     M},
    };
    // clang-format on
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        const float storm[2]{200, 30};
        for (const float *moving : {static_cast<const float *>(nullptr), storm}) { // alike
            float result[2]{};
            EXPECT_EQ(
                MET_shear(c.sound.data(), count(c.sound), c.kind, moving, result, c.bottom, c.top),
                c.status);
            EXPECT_NEAR(result[0], c.veering, 1e-6);
            EXPECT_NEAR(result[1], c.backing, 1e-6);
        }
    }
}

// On a circle of V the helicity is V^2 times the angle turned; in steps of 100 m it is the sum of
// V^2 sin of a step. V = 20 knots = 10.288 m/s.
TEST(Helicity, CircleHodographs)
{
    const double v2 = std::pow(20 * kKnot, 2);
    const struct {
        const char *name;
        float start, rate;
        double turning;
    } cases[] = {{"quarter circle", 180, 0.03F, 90},
                 {"half circle", 90, 0.06F, 180},
                 {"quarter circle across north", 315, 0.03F, 90},
                 {"backing", 180, -0.03F, -90},
                 {"constant wind", 200, 0, 0}};
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        const auto sound =
            profile([&](float z) { return std::fmod(c.start + c.rate * z, 360.0F); }, constant(20));
        const Helicity got = helicity(sound, 103, 0, 0, 0, 3000);
        const double step = c.turning / 30.0 * 3.14159265358979 / 180.0;
        const double want = 30 * v2 * std::sin(step);
        EXPECT_EQ(got.status, 1);
        EXPECT_NEAR(std::abs(got.x[kHelTurning]), std::abs(c.turning), 0.01);
        EXPECT_NEAR(got.x[kHelTotal], want, 0.05);
        EXPECT_NEAR(got.x[kHelPositive], want > 0 ? want : 0, 0.05);
        EXPECT_NEAR(got.x[kHelNegative], want < 0 ? want : 0, 0.05);
        EXPECT_NEAR(got.x[kHelMean], want / 3000, 1e-5);
        // all of the vorticity lies along the wind
        EXPECT_NEAR(got.x[kHelStreamwise], 20 * kKnot * step / 100, 1e-6);
        EXPECT_NEAR(got.x[kHelVorticity], std::abs(20 * kKnot * step / 100), 1e-6);
        EXPECT_NEAR(got.x[kHelRelative], c.turning > 0 ? 1 : c.turning < 0 ? -1 : 0, 1e-4);
    }
}

// A straight hodograph from 0 to 30 m/s eastward in 3 km, storm moving at (15, -5) m/s: the area
// swept is half of 30 * 5, and helicity twice that.
TEST(Helicity, StraightHodographSeenFromAStormToItsRight)
{
    const auto sound =
        profile(constant(270), [](float z) { return static_cast<float>(z / 100 / kKnot); });
    const auto storm_spd = static_cast<float>(std::hypot(15, 5) / kKnot);
    const auto storm_dir = static_cast<float>(std::atan2(-15, 5) * 57.29577951 + 360);
    const Helicity got = helicity(sound, 103, storm_dir, storm_spd, 0, 3000);
    EXPECT_NEAR(got.x[kHelTotal], 150, 0.1);
    EXPECT_NEAR(got.x[kHelPositive], 150, 0.1);
    EXPECT_NEAR(got.x[kHelTurning], 180 - 2 * std::atan2(5, 15) * 57.29577951, 0.05);
}

TEST(Helicity, GapsAndEndsOfTheRoad)
{
    auto sound = profile([](float z) { return 180 + 0.03F * z; }, constant(20));
    const double whole = helicity(sound, 103, 0, 0, 0, 3000).x[kHelTotal];
    sound[2].dir = sound[2].spd = M;
    EXPECT_NEAR(helicity(sound, 103, 0, 0, 0, 3000).x[kHelTotal], whole, 0.05);
    const Helicity above = helicity(sound, 103, 0, 0, 0, 9000);
    EXPECT_EQ(above.status, 0);
    EXPECT_NEAR(above.x[kHelTotal], 2 * whole, 0.1); // the data end at 6000 m
    EXPECT_EQ(helicity(sound, 103, M, M, 0, 3000).x[kHelTotal], M);
    EXPECT_EQ(helicity(sound, 103, M, M, 0, 3000).status, 0);
    EXPECT_EQ(helicity(sound, 103, 0, 0, -500, 3000).x[kHelTotal], M);
    float result[kHelicityResults];
    const float storm[2]{0, 0};
    EXPECT_EQ(MET_helicity(sound.data(), 1, 103, storm, result, 0, 3000), 0);
    EXPECT_EQ(result[kHelTotal], M);
    EXPECT_EQ(MET_helicity(sound.data(), 13, 103, nullptr, result, 0, 3000), 0);
}
