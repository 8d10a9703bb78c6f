#include <cmath>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/capture.h"
#include "support/shared_data.h"
#include "support/temp_dir.h"
#include "tyr/base/missing.h"
#include "tyr/base/res.h"
#include "tyr/met/thermo.h"
#include "tyr/upper_air/assembly.h"
#include "tyr/upper_air/parcel_choice.h"
#include "tyr/upper_air/raw_sounding.h"
#include "tyr/upper_air/sounding_store.h"
#include "tyr/upper_air/upa_file.h"
#include "upper_air/sample_report.h"

namespace {

/// A report of a few levels: surface 990 hPa at 150 m, 1000 hPa below the ground, 850 and 700.
UpaReport small_report()
{
    UpaReport r;
    UPA_clear_report(&r);
    r.num_mand = 24;
    r.elev = 150;
    r.mand[0] = {990, 150, 20, 15, 180, 10};
    r.mand[kUpa1000] = {1000, 65, kMissing, kMissing, kMissing, kMissing};
    r.mand[kUpa850] = {850, 1500, 12, 5, 200, 20};
    r.mand[4] = {700, 3100, 4, -6, 220, 30};
    return r;
}

void add_sig(UpaReport *r, float p, float t)
{
    r->sig[r->num_sig++] = {p, t, t - 5};
}

void add_wind(UpaReport *r, float feet, float dir, float spd)
{
    r->wnd[r->num_wnd++] = {feet, dir, spd};
}

struct Sounding {
    std::vector<SoundLevel> levels;
    int map[kSlotMap] = {};
    std::vector<float> column(float SoundLevel::*field) const
    {
        std::vector<float> values;
        for (const SoundLevel &level : levels)
            values.push_back(level.*field);
        return values;
    }
};

template <class Make> Sounding make(Make routine, const UpaReport &report)
{
    Sounding s;
    s.levels.resize(kMaxSounding);
    s.levels.resize(static_cast<size_t>(routine(&report, s.levels.data(), s.map)));
    return s;
}

TEST(Temps, MergesByPressureEachOnce)
{
    UpaReport r = small_report();
    for (const float p : {990.0F, 900.0F, 850.0F, 750.0F, 650.0F})
        add_sig(&r, p, p == 990 ? 20 : 16 - (900 - p) / 20);
    const Sounding s = make(THERM_make_temps, r);
    EXPECT_EQ(s.column(&SoundLevel::p), (std::vector<float>{1000, 990, 900, 850, 750, 700, 650}));
    EXPECT_EQ(s.map[0], 1); // the level below the ground stands ahead
    EXPECT_EQ(s.map[kUpa1000], 0);
    EXPECT_EQ(s.map[kUpa925], kMissingInt);
    EXPECT_EQ(s.map[kUpa850], 3);
    EXPECT_EQ(s.map[kUpaTropopause], kMissingInt);
    EXPECT_FLOAT_EQ(s.levels[3].z, 1500); // the mandatory level stands for both
    EXPECT_FLOAT_EQ(s.levels[2].dir, kMissing);
    EXPECT_FLOAT_EQ(THERM_sfc_pressure(s.levels.data(), s.map), 990);
}

TEST(Temps, MandatoryLevelAtTheSurfaceHasItsValues)
{
    for (const bool listed : {true, false}) {
        UpaReport r = small_report();
        r.mand[0].p = 1000;
        if (listed)
            add_sig(&r, 1000, 20);
        add_sig(&r, 800, 9);
        const Sounding s = make(THERM_make_temps, r);
        EXPECT_EQ(s.column(&SoundLevel::p), (std::vector<float>{1000, 850, 800, 700}));
        EXPECT_FLOAT_EQ(s.levels[0].t, 20);
        EXPECT_FLOAT_EQ(s.levels[0].z, 150);
        r.mand[0].z = kMissing;
        EXPECT_FLOAT_EQ(make(THERM_make_temps, r).levels[0].z, 65); // better than none
        EXPECT_EQ(s.map[0], 0);
        EXPECT_EQ(s.map[kUpa1000], 0);
    }
}

TEST(Temps, WithoutMandatoryLevelsTheListStandsAlone)
{
    UpaReport r = small_report();
    r.num_mand = 0;
    add_sig(&r, 980, 18);
    add_sig(&r, 600, -8);
    const Sounding s = make(THERM_make_temps, r);
    ASSERT_EQ(s.levels.size(), 2U);
    EXPECT_FLOAT_EQ(s.levels[0].z, 150);
    EXPECT_FLOAT_EQ(s.levels[1].z, kMissing);
}

TEST(Temps, TropopauseAndMaximumWindComeBetween)
{
    UpaReport r = small_report();
    r.mand[kUpaTropopause] = {800, kMissing, 9, 2, 210, 25};
    r.mand[kUpaMaxWind] = {750, kMissing, kMissing, kMissing, 215, 60};
    const Sounding s = make(THERM_make_temps, r);
    EXPECT_EQ(s.column(&SoundLevel::p), (std::vector<float>{1000, 990, 850, 800, 750, 700}));
    EXPECT_EQ(s.map[kUpaTropopause], 3);
    EXPECT_EQ(s.map[kUpaMaxWind], 4);
    EXPECT_EQ(s.map[4], 5);
    // between 9 at 800 and 4 at 700 hPa, in ln p
    EXPECT_NEAR(s.levels[4].t, 9 - 5 * std::log(800.0 / 750) / std::log(800.0 / 700), 0.01);
    EXPECT_FLOAT_EQ(s.levels[4].spd, 60);
    r.mand[kUpaTropopause].p = 100;
    EXPECT_EQ(make(THERM_make_temps, r).map[kUpaTropopause], kMissingInt); // above all levels
}

TEST(Temps, FallOfThetaOfMoreThanThreeTakesTheLevelOut)
{
    UpaReport r = small_report();
    const double theta = (20 + 273.15) * std::pow(1000.0 / 990, 0.286);
    for (const double fall : {2.9, 3.1}) {
        const double kelvin = (theta - fall) / std::pow(1000.0 / 850, 0.286);
        r.mand[kUpa850].t = static_cast<float>(kelvin - 273.15);
        const Sounding s = make(THERM_make_temps, r);
        EXPECT_EQ(s.levels.size(), fall < 3 ? 4U : 3U);
        EXPECT_EQ(s.map[kUpa850], fall < 3 ? 2 : kMissingInt);
        EXPECT_EQ(s.map[4], fall < 3 ? 3 : 2);
    }
}

TEST(Winds, MergeByHeight)
{
    UpaReport r = small_report();
    add_wind(&r, 0, 180, 10);    // the surface slot stands for it
    add_wind(&r, 300, 185, 12);  // below the ground
    add_wind(&r, 2000, 190, 14); // 610 m
    add_wind(&r, 3000, kMissing, kMissing);
    add_wind(&r, 6000, 210, 24); // 1829 m
    add_wind(&r, 20000, 230, 40);
    r.mand[kUpaMaxWind] = {650, 4000, kMissing, kMissing, 225, 50};
    const Sounding s = make(THERM_make_winds, r);
    EXPECT_EQ(s.column(&SoundLevel::spd), (std::vector<float>{10, 14, 20, 24, 30, 50, 40}));
    EXPECT_NEAR(s.levels[1].z, 609.6, 0.1);
    EXPECT_EQ(s.map[0], 0);
    EXPECT_EQ(s.map[kUpa1000], kMissingInt);
    EXPECT_EQ(s.map[kUpa850], 2);
    EXPECT_EQ(s.map[kUpaMaxWind], 5);
    EXPECT_EQ(make(THERM_make_winds_simple, r).levels.size(), 6U);
}

TEST(Winds, LevelWithoutAHeightStandsInTheStandardAtmosphere)
{
    UpaReport r = small_report();
    r.mand[5] = {500, kMissing, -15, -25, 240, 50};
    EXPECT_NEAR(make(THERM_make_winds, r).levels.back().z, 5574, 2); // ICAO Doc 7488
    EXPECT_EQ(make(THERM_make_winds_simple, r).levels.size(), 3U);
}

TEST(Fill, HeightsByTheHypsometricEquation)
{
    std::vector<SoundLevel> levels(4);
    for (SoundLevel &level : levels)
        MET_clear_level(&level);
    levels[0] = {1000, 100, 15, 0, 0, 0};
    levels[1].p = 900;
    levels[1].t = 9;
    levels[2].p = 800;
    levels[2].t = 3;
    EXPECT_EQ(MET_fill_heights(levels.data(), 3), -1); // no height beyond the first
    const double step1 = std::log(1000.0 / 900) * 285.15 * 287.05 / 9.8;
    const double step2 = std::log(900.0 / 800) * 279.15 * 287.05 / 9.8;
    levels[2].z = static_cast<float>(100 + step1 + step2 - 10);
    ASSERT_EQ(MET_fill_heights(levels.data(), 3), 0);
    EXPECT_NEAR(levels[1].z, 100 + step1 - 5, 0.01); // half the misfit of 10 m at half the depth
    EXPECT_NEAR(levels[2].z, 100 + step1 + step2 - 10, 0.01);
    levels[3].p = 700; // above the last known height, and without a temperature
    ASSERT_EQ(MET_fill_heights(levels.data(), 4), 0);
    EXPECT_NEAR(levels[3].z, levels[2].z + std::log(800.0 / 700) * 276.15 * 287.05 / 9.8, 0.01);
}

TEST(Fill, PressuresBetweenAndBeyondKnownOnes)
{
    std::vector<SoundLevel> levels(4);
    for (SoundLevel &level : levels)
        MET_clear_level(&level);
    levels[0] = {1000, 100, 15, 0, 0, 0};
    levels[1].z = 1000;
    levels[2] = {800, 1950, 3, 0, 0, 0};
    levels[3].z = 2500;
    MET_fill_pressures(levels.data(), 4);
    EXPECT_NEAR(levels[1].p, 1000 * std::pow(0.8, 900.0 / 1850), 0.01);
    const double t = 288.15 - 0.0065 * 2500;
    EXPECT_NEAR(levels[3].p, 800 * std::exp(-550 * 9.8 / (t * 287.05)), 0.01);
}

TEST(Assembly, RealSoundingKeepsItsOwnHeights)
{
    const std::string path = shared_data("upper_air/sharppy_oun_uwyo.html");
    if (path.empty())
        GTEST_SKIP() << "no shared data";
    int type = 0;
    int index = 0;
    UpaReport r;
    const int handle = UPA_open(path.c_str(), 0, &type);
    ASSERT_EQ(UPA_read(handle, &r, kUpaWhole, &index), 0);
    UPA_close(handle);
    ASSERT_EQ(THERM_process_report(&r), 1);
    const SoundingStore &store = THERM_store();
    EXPECT_FLOAT_EQ(store.surface_pressure, 966);
    EXPECT_NEAR(store.surface_height, 345, 0.1);
    // the page has two rows at 44 hPa, the higher one first; significant levels of the page with
    // the heights that it prints
    const std::pair<float, float> heights[] = {{943, 542}, {814, 1756}, {594, 4304}, {445, 6502}};
    for (const auto &[p, z] : heights) {
        SoundLevel level;
        MET_sound_at(store.temps, store.num_temps, 100, &level, p);
        EXPECT_NEAR(level.z, z, 8) << p;
    }
    for (int i = 1; i < store.num_winds; ++i) {
        EXPECT_LT(store.winds[i].p, store.winds[i - 1].p);
        EXPECT_GT(store.winds[i].z, store.winds[i - 1].z);
    }
    for (int i = 1; i < store.num_temps; ++i)
        EXPECT_LT(store.temps[i].p, store.temps[i - 1].p);
}

TEST(Assembly, StormMovesToTheRightOfTheMeanWind)
{
    UpaReport r = small_report();
    for (SoundLevel &level : r.mand)
        level.dir = is_missing(level.dir) ? kMissing : 350;
    r.mand[5] = {400, 7200, -30, -40, 350, 30};
    ASSERT_EQ(THERM_process_report(&r), 1);
    EXPECT_NEAR(THERM_store().mean_wind.dir, 350, 0.1);
    EXPECT_NEAR(THERM_store().storm_motion.dir, 20, 0.1);
    EXPECT_NEAR(THERM_store().storm_motion.spd, 0.75 * THERM_store().mean_wind.spd, 0.01);
}

TEST(Assembly, ReportWithoutLevelsGivesNone)
{
    UpaReport r;
    UPA_clear_report(&r);
    r.elev = 10;
    EXPECT_EQ(THERM_process_report(&r), 0);
}

TEST(Assembly, StationWithoutElevationIsLookedUp)
{
    const TempDir folder;
    folder.write("upa.cty", "NORMAN OK US OUN 1 35.18 -97.44 345 72357\n");
    RES_put("file_path", folder.path().c_str());
    for (const char *id : {"OUN", "XYZ"}) {
        UpaReport r = small_report();
        r.elev = kMissing;
        STR_copy(r.id, sizeof r.id, id);
        ASSERT_EQ(THERM_process_report(&r), 1);
        const bool known = std::string(id) == "OUN";
        EXPECT_FLOAT_EQ(r.elev, known ? 345 : kMissing);
        EXPECT_EQ(r.wmo, known ? 72357 : kMissingInt);
        EXPECT_FLOAT_EQ(r.lon, known ? -97.44F : kMissing);
    }
}

TEST(Assembly, ParcelWords)
{
    const SoundLevel surface = {990, 150, 20, 15, 180, 10};
    struct {
        const char *words;
        int mode;
        float depth, p, t;
    } const cases[] = {
        {"par=sfc", kParcelSurface, 100, kMissing, kMissing},
        {"grid,par=layer:50", kParcelLayer, 50, kMissing, kMissing},
        {"par=maxt", kParcelMaxTemp, 100, kMissing, kMissing},
        {"par=850:21.5:14", kParcelGiven, 100, 850, 21.5F},
        {"par=sfc:30:20", kParcelGiven, 100, 990, 30},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.words);
        THERM_parcel_choice() = ParcelChoice();
        RES_put("plot_param", c.words);
        THERM_read_options(&surface);
        EXPECT_EQ(THERM_parcel_choice().mode, c.mode);
        EXPECT_FLOAT_EQ(THERM_parcel_choice().depth, c.depth);
        EXPECT_FLOAT_EQ(THERM_parcel_choice().parcel.p, c.p);
        EXPECT_FLOAT_EQ(THERM_parcel_choice().parcel.t, c.t);
    }
}

TEST(RawSounding, ComesBack)
{
    const TempDir folder;
    UpaReport r = sample_report();
    r.elev = 20;
    DateRec date;
    TIME_parse("12Z 06 MAR 99", &date);
    THERM_set_date(&date);
    ASSERT_EQ(THERM_process_report(&r), 1);
    const SoundingStore written = THERM_store();
    const std::vector<SoundLevel> temps(written.temps, written.temps + written.num_temps);
    const std::vector<SoundLevel> winds(written.winds, written.winds + written.num_winds);
    const std::string path = folder.file("snd.raw");
    RES_put("out_file", ("gif=x," + path).c_str());
    THERM_out_raw();
    const std::string text = read_file(path);
    ASSERT_NE(text.find("!ST0 Sounding\n Lev   P     H     T     Td    Dir Spd $\n"),
              std::string::npos)
        << text;
    EXPECT_NE(text.find("\n SFC 1013    20   24.6  21.4  170   8\n"), std::string::npos) << text;
    THERM_read_raw(path.c_str());
    const SoundingStore &store = THERM_store();
    EXPECT_STREQ(store.station, "ST0");
    EXPECT_EQ(store.date.day, 6);
    EXPECT_FLOAT_EQ(store.surface_pressure, 1013);
    EXPECT_FLOAT_EQ(store.tropopause.p, 186);
    EXPECT_FLOAT_EQ(store.max_wind.spd, 111);
    ASSERT_EQ(store.num_temps, written.num_temps);
    ASSERT_EQ(store.num_winds, written.num_winds);
    for (size_t i = 0; i < temps.size(); ++i) {
        EXPECT_NEAR(store.temps[i].p, temps[i].p, 0.5);
        EXPECT_NEAR(store.temps[i].z, temps[i].z, 0.5);
        EXPECT_NEAR(store.temps[i].t, temps[i].t, 0.06);
    }
    for (size_t i = 0; i < winds.size(); ++i) {
        EXPECT_NEAR(store.winds[i].z, winds[i].z, 0.5);
        EXPECT_NEAR(store.winds[i].spd, winds[i].spd, 0.5);
    }
}

TEST(RawSounding, FileThatIsntThereEndsTheProgram)
{
    EXPECT_EXIT(THERM_read_raw("/nowhere/at/all"), testing::ExitedWithCode(10),
                "Unable to open file:/nowhere/at/all");
}

} // namespace
