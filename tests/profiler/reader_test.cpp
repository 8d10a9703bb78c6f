#include <cmath>
#include <fstream>
#include <map>
#include <sstream>

#include "programs/profiler/reader.h"
#include "programs/profiler/walk.h"
#include "support/capture.h"
#include "support/netcdf_file.h"
#include "support/shared_data.h"
#include "tyr/base/missing.h"
#include "tyr/base/netcdf.h"

namespace {

std::vector<ProfilerRecord> read_all(const std::string &path)
{
    std::vector<ProfilerRecord> records;
    if (PRF_open_file(path.c_str()) == 1) {
        ProfilerRecord record;
        while (PRF_next_station(&record) == 1) {
            records.push_back(record);
        }
        PRF_close_file();
    }
    return records;
}

/// The same, whatever is told on standard error.
std::vector<ProfilerRecord> read_quietly(const std::string &path)
{
    std::vector<ProfilerRecord> records;
    told_by([&] { records = read_all(path); });
    return records;
}

/// Texts of a variable in a CDL dump: what stands between "name =" and ";".
std::vector<std::string> cdl_values(const std::string &path, const std::string &name)
{
    const std::string all = read_file(path);
    const size_t from = all.find("\n " + name + " =") + name.size() + 4;
    std::string text = all.substr(from, all.find(';', from) - from);
    std::vector<std::string> values;
    std::stringstream in(text);
    for (std::string word; std::getline(in, word, ',');) {
        const size_t first = word.find_first_not_of(" \n\"");
        const size_t last = word.find_last_not_of(" \n\"");
        values.push_back(first == std::string::npos ? "" : word.substr(first, last - first + 1));
    }
    return values;
}

TEST(FileType, IsToldByTheFirstCharacterAndTheDimensions)
{
    const TempDir dir;
    write_station_file(dir.file("station.nc"), 95.0F, 10, 1.0F, 2.0F);
    write_recnum_file(dir.file("recnum.nc"), {});
    // clang-format off
    const struct {
        const char *name;
        std::string path;
        int type;
    } cases[] = {
        {"dimension station",    dir.file("station.nc"),                    11},
        {"no dimension station", dir.file("recnum.nc"),                     12},
        {"star line",            dir.write("star", "*** IUPT01 ***\nBUFR"), 31},
        {"newline first",        dir.write("newline", "\nabc"),             31},
        {"G line",               dir.write("g", "GPS\n"),                   31},
        {"start of heading",     dir.write("soh","\001\r\r\n865"),          31},
        {"C but no netCDF",      dir.write("c", "CDX and more"),            -1},
        {"another letter",       dir.write("x", "hello"),                   -1},
        {"empty",                dir.write("empty", ""),                    -1},
        {"missing",              dir.file("nowhere"),                       -1},
        {"a folder",             dir.path(),                                -1},
    };
    // clang-format on
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(PROF_file_type(c.path.c_str()), c.type);
    }
}

TEST(RecNumLayout, FillsTheRecord)
{
    const TempDir dir;
    write_recnum_file(dir.file("a.nc"), {.names = {"AAAA1", "BBB2"}});
    ASSERT_EQ(PRF_open_file(dir.file("a.nc").c_str()), 1);
    EXPECT_STREQ(PRF_file_info().date_label, "1500Z 19 NOV 09");
    EXPECT_EQ(PRF_file_info().num_station, 2);
    ProfilerRecord r;
    ASSERT_EQ(PRF_next_station(&r), 1);
    EXPECT_STREQ(r.id, "AAAA1");
    EXPECT_FLOAT_EQ(r.lon, -95.0F);
    EXPECT_FLOAT_EQ(r.elev, 300.5F);
    EXPECT_NEAR(r.sfc_t, 16.85F, 1e-3); // 290 K
    EXPECT_FLOAT_EQ(r.sfc_p, kMissing); // no such variable
    EXPECT_FLOAT_EQ(r.level[0].u, 10.0F);
    EXPECT_FLOAT_EQ(r.level[0].w, kMissing);
    ASSERT_EQ(PRF_next_station(&r), 1);
    EXPECT_STREQ(r.id, "BBB2");
    EXPECT_EQ(PRF_next_station(&r), -1);
}

TEST(RecNumLayout, DropsValuesOutOfRange)
{
    const TempDir dir;
    NetcdfSample sample;
    sample.u.assign(72, 1.0F);
    sample.u[0] = 100.0F;
    sample.u[1] = 100.1F;
    sample.u[2] = -100.0F;
    sample.u[3] = 1e38F;
    sample.u[4] = NAN;
    sample.temperature = 400.0F;
    write_recnum_file(dir.file("a.nc"), sample);
    const std::vector<ProfilerRecord> all = read_all(dir.file("a.nc"));
    ASSERT_EQ(all.size(), 1U);
    const float expected[] = {100.0F, kMissing, -100.0F, kMissing, kMissing, 1.0F};
    for (int i = 0; i < 6; ++i) {
        EXPECT_FLOAT_EQ(all[0].level[i].u, expected[i]) << i;
        EXPECT_FLOAT_EQ(all[0].level[i].v, 5.0F) << i;
    }
    EXPECT_FLOAT_EQ(all[0].sfc_t, kMissing);
}

TEST(RecNumLayout, MergesEqualHeights)
{
    const TempDir dir;
    NetcdfSample sample;
    for (int i = 0; i < 72; ++i) {
        sample.heights.push_back(500.0F + 250.0F * static_cast<float>(i));
        sample.u.push_back(static_cast<float>(i));
    }
    sample.heights[40] = sample.heights[10]; // the first has a wind: it stays
    sample.heights[50] = sample.heights[20]; // the first has none: the second takes its place
    sample.u[20] = 1e38F;
    for (const int i : {61, 62}) { // three in a row: the third moves up and stays in this round
        sample.heights[static_cast<size_t>(i)] = sample.heights[60];
    }
    write_recnum_file(dir.file("a.nc"), sample);
    const std::vector<ProfilerRecord> all = read_all(dir.file("a.nc"));
    ASSERT_EQ(all.size(), 1U);
    EXPECT_FLOAT_EQ(all[0].level[10].u, 10.0F);
    EXPECT_FLOAT_EQ(all[0].level[20].u, 50.0F);
    // 72 less two pairs, less the second of three; the third falls in the next round of its own
    EXPECT_EQ(all[0].num_level, 69);
}

TEST(StationLayout, NegatesLongitudeAndTestsQuality)
{
    const TempDir dir;
    write_station_file(dir.file("good.nc"), 104.71F, 10, 7.0F, 9.0F);
    write_station_file(dir.file("bad.nc"), 104.71F, 9, 7.0F, 9.0F);
    const std::vector<ProfilerRecord> good = read_all(dir.file("good.nc"));
    ASSERT_EQ(good.size(), 1U);
    EXPECT_FLOAT_EQ(good[0].lon, -104.71F);
    EXPECT_FLOAT_EQ(good[0].elev, 1524.0F);
    EXPECT_EQ(good[0].num_level, 64); // 8 shared heights
    EXPECT_FLOAT_EQ(good[0].level[35].u, 7.0F);
    EXPECT_FLOAT_EQ(good[0].level[36].z, 9500.0F);
    EXPECT_FLOAT_EQ(good[0].level[36].u, 9.0F);
    // the layout tells no minute: that of a file read before would stay
    EXPECT_NE(std::string(PRF_file_info().date_label).find("30 OCT 99"), std::string::npos);
    const std::vector<ProfilerRecord> bad = read_all(dir.file("bad.nc"));
    ASSERT_EQ(bad.size(), 1U);
    EXPECT_FLOAT_EQ(bad[0].level[0].z, 500.0F);
    EXPECT_FLOAT_EQ(bad[0].level[0].u, kMissing);
    EXPECT_EQ(bad[0].level[0].qual, 9);
}

TEST(Walk, EndsAtABlankNameAndFindsWithoutCase)
{
    const TempDir dir;
    write_recnum_file(dir.file("a.nc"), {.names = {"AAAA1", "      ", "CCCC3"}});
    EXPECT_EQ(read_all(dir.file("a.nc")).size(), 1U);
    ProfilerRecord r;
    EXPECT_EQ(PRF_find_station(dir.file("a.nc").c_str(), "aaaa1", &r), 1);
    EXPECT_STREQ(r.id, "AAAA1");
    EXPECT_EQ(PRF_find_station(dir.file("a.nc").c_str(), "CCCC3", &r), 0);
    EXPECT_EQ(PRF_find_station(dir.file("nowhere").c_str(), "AAAA1", &r), 0);
}

TEST(DamagedNetcdf, IsToldWithTheFilesName)
{
    const TempDir dir;
    write_recnum_file(dir.file("text.nc"), {.text_u = true});
    write_recnum_file(dir.file("short.nc"), {.levels = 60});
    write_recnum_file(dir.file("double.nc"), {.double_u = true});
    write_recnum_file(dir.file("no_v.nc"), {.no_v = true});
    write_recnum_file(dir.file("two.nc"), {.names = {"AAAA1", "BBBB2"}});
    const std::string two = read_file(dir.file("two.nc"));
    dir.write("cut.nc", two.substr(0, two.size() - 100));
    const struct {
        const char *file;
        size_t stations;
        float u;
        const char *told; ///< empty: nothing on standard error
    } cases[] = {
        {"text.nc", 1, kMissing, "holds characters"},
        {"short.nc", 1, kMissing, "60 levels"},
        {"double.nc", 1, 10.0F, ""},
        {"no_v.nc", 1, 10.0F, "not in the file:"},
        {"cut.nc", 1, 10.0F, "1 of 2 reports"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.file);
        std::vector<ProfilerRecord> all;
        const std::string told = told_by([&] { all = read_all(dir.file(c.file)); });
        ASSERT_EQ(all.size(), c.stations);
        EXPECT_FLOAT_EQ(all[0].level[0].u, c.u);
        EXPECT_NE(told.find(c.told), std::string::npos) << told;
        EXPECT_NE(told.find(dir.file(c.file)), std::string::npos) << told;
    }
}

TEST(DamagedNetcdf, NeverYieldsWindsThatTheFileHasNot)
{
    const TempDir dir;
    write_recnum_file(dir.file("a.nc"), {.names = {"AAAA1", "BBBB2"}});
    const std::string whole = read_file(dir.file("a.nc"));
    for (size_t length = 0; length < whole.size(); length += 37) {
        SCOPED_TRACE(length);
        const std::string path = dir.write("cut.nc", whole.substr(0, length));
        for (const ProfilerRecord &r : read_quietly(path)) {
            for (int i = 0; i < r.num_level; ++i) {
                EXPECT_TRUE(is_missing(r.level[i].u) || r.level[i].u == 10.0F);
            }
        }
    }
}

TEST(DamagedNetcdf, SurvivesAnyByteOfTheHeader)
{
    const TempDir dir;
    write_recnum_file(dir.file("a.nc"), {});
    const std::string whole = read_file(dir.file("a.nc"));
    const auto read_damaged = [&](size_t at, int value) {
        std::string damaged = whole;
        damaged[at] = static_cast<char>(value);
        for (const ProfilerRecord &r : read_all(dir.write("damaged.nc", damaged))) {
            ASSERT_LE(r.num_level, kMaxProfilerLevels);
        }
    };
    told_by([&] {
        for (size_t at = 0; at < 1200; ++at) {
            for (const int value : {0, 255, ~whole[at] & 0xFF}) {
                read_damaged(at, value);
            }
        }
    });
}

TEST(RealFiles, AgreeWithAnIndependentDecode)
{
    const std::string path = shared_data("profiler/2009-11-19_1500_npn_hourly.nc");
    const std::string cdl = shared_data("profiler/2009-11-19_1500_npn_hourly.cdl");
    if (path.empty() || cdl.empty()) {
        GTEST_SKIP() << "no shared data beside the checkout";
    }
    const std::vector<ProfilerRecord> older =
        read_all(shared_data("profiler/99303_0300_npn_hourly.nc"));
    EXPECT_EQ(older.size(), 36U);
    EXPECT_NE(std::string(PRF_file_info().date_label).find("30 OCT 99"), std::string::npos);
    for (const ProfilerRecord &r : older) {
        EXPECT_TRUE(r.lat > 25.0F && r.lon < -70.0F) << r.id;
    }
    const std::vector<std::string> u = cdl_values(cdl, "uComponent");
    const std::vector<std::string> z = cdl_values(cdl, "levels");
    const std::vector<std::string> t = cdl_values(cdl, "temperature");
    const std::vector<ProfilerRecord> all = read_all(path);
    ASSERT_EQ(all.size(), 32U);
    EXPECT_NE(std::string(PRF_file_info().date_label).find("1500Z 19 NOV 09"), std::string::npos);
    ASSERT_EQ(u.size(), 32U * 72U);
    int winds = 0;
    for (size_t s = 0; s < all.size(); ++s) {
        SCOPED_TRACE(all[s].id);
        EXPECT_TRUE(all[s].lat > 25.0F && all[s].lon < -70.0F);
        std::map<float, float> expected; // a height of both modes: the low one's, unless missing
        for (size_t k = 0; k < 72; ++k) {
            const std::string &text = u[s * 72 + k];
            const float value = text == "_" ? kMissing : std::stof(text);
            const float usable = std::fabs(value) > 100.0F ? kMissing : value;
            const auto [at, is_new] = expected.try_emplace(std::stof(z[k]), usable);
            if (!is_new && is_missing(at->second)) {
                at->second = usable;
            }
        }
        ASSERT_EQ(static_cast<size_t>(all[s].num_level), expected.size());
        for (int i = 0; i < all[s].num_level; ++i) {
            const float wanted = expected.at(all[s].level[i].z);
            EXPECT_NEAR(all[s].level[i].u, wanted, 1e-5 * (1.0 + std::fabs(wanted)));
            winds += is_missing(all[s].level[i].u) ? 0 : 1;
        }
        const float kelvin = t[s] == "_" ? kMissing : std::stof(t[s]);
        const bool has_t = kelvin > 173.0F && kelvin < 373.0F;
        EXPECT_NEAR(all[s].sfc_t, has_t ? kelvin - 273.15F : kMissing, 1e-3);
    }
    EXPECT_GT(winds, 1000);
}

TEST(OtherNetcdf, HoldsNoWinds)
{
    for (const char *name :
         {"2005279_2000_rass_6min.nc", "Profiler-ncss_station-dim.nc", "madis-raob.nc"}) {
        const std::string path = shared_data(std::string("profiler_other/") + name);
        if (path.empty()) {
            GTEST_SKIP() << "no shared data beside the checkout";
        }
        SCOPED_TRACE(name);
        for (const ProfilerRecord &r : read_quietly(path)) {
            for (int i = 0; i < r.num_level; ++i) {
                EXPECT_FLOAT_EQ(r.level[i].u, kMissing);
            }
        }
    }
}

} // namespace
