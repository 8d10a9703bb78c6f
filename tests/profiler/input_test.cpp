#include <algorithm>
#include <cmath>

#include <gtest/gtest.h>
#include <zlib.h>

#include "programs/profiler/bufr_library.h"
#include "programs/profiler/reader.h"
#include "programs/profiler/walk.h"
#include "support/capture.h"
#include "support/netcdf_file.h"
#include "support/run.h"
#include "support/shared_data.h"
#include "tyr/base/missing.h"
#include "tyr/names/name_conv.h"

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

std::string pack(const std::string &path)
{
    const std::string bytes = read_file(path);
    const std::string packed = path + ".gz";
    gzFile out = gzopen(packed.c_str(), "wb");
    gzwrite(out, bytes.data(), static_cast<unsigned>(bytes.size()));
    gzclose(out);
    return packed;
}

TEST(Input, OtherFormatsOfAFileGiveTheSameRecords)
{
    const TempDir dir;
    write_recnum_file(dir.file("recnum.nc"), {.names = {"AAAA1", "BBB2"}});
    write_station_file(dir.file("station.nc"), 95.0F, 10, 1.0F, 2.0F);
    for (const char *name : {"recnum.nc", "station.nc"}) {
        const std::vector<ProfilerRecord> plain = read_all(dir.file(name));
        ASSERT_FALSE(plain.empty());
        std::vector<std::string> others = {pack(dir.file(name))};
        for (const char *kind : {"nc4", "nc7", "cdf5"}) {
            const std::string made = dir.file(std::string(kind) + name);
            ASSERT_EQ(run({"/usr/bin/nccopy", "-k", kind, dir.file(name), made}).code, 0) << kind;
            others.push_back(made);
            others.push_back(pack(made));
        }
        for (const std::string &other : others) {
            SCOPED_TRACE(other);
            const std::vector<ProfilerRecord> records = read_all(other);
            ASSERT_EQ(records.size(), plain.size());
            for (size_t i = 0; i < plain.size(); ++i) {
                EXPECT_STREQ(records[i].id, plain[i].id);
                EXPECT_EQ(records[i].num_level, plain[i].num_level);
                EXPECT_EQ(records[i].level[5].u, plain[i].level[5].u);
                EXPECT_EQ(records[i].lon, plain[i].lon);
            }
        }
    }
}

TEST(Input, WhatCantBeReadIsToldWithNameAndReason)
{
    const TempDir dir;
    write_recnum_file(dir.file("a.nc"), {});
    const std::string packed = read_file(pack(dir.file("a.nc")));
    const std::string bomb = dir.file("bomb");
    {
        gzFile out = gzopen(bomb.c_str(), "wb");
        const std::string zeros(size_t{1} << 20, '\0');
        for (int i = 0; i < 520; ++i) {
            gzwrite(out, zeros.data(), static_cast<unsigned>(zeros.size()));
        }
        gzclose(out);
    }
    const struct {
        std::string path;
        const char *told;
    } cases[] = {
        {dir.file("nowhere"), "No such file"},
        {dir.path(), "it is a folder"},
        {dir.write("empty", ""), "the file is empty"},
        {dir.write("random", "\x7f\x02hello"), "not a profiler file"},
        {dir.write("cut.gz", packed.substr(0, packed.size() / 2)), "the gzip file is cut short"},
        {dir.write("bad.gz", packed.substr(0, 12) + std::string(99, 'x')), "damaged"},
        {dir.write("hdf", "\x89HDF\r\n\x1a\nand no more"), "cut short or damaged"},
        {dir.write("cdf", "CDF\x01"), "cut short or damaged"},
        {dir.write("text", "\n CTD\n WINDS    rev 5.1\n"), "no whole block"},
        {bomb, "unpacks to more"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.path);
        int opened = 1;
        const std::string told = told_by([&] { opened = PRF_open_file(c.path.c_str()); });
        EXPECT_EQ(opened, 0);
        EXPECT_NE(told.find(c.told), std::string::npos) << told;
        EXPECT_NE(told.find(c.path), std::string::npos) << told;
        EXPECT_EQ(std::count(told.begin(), told.end(), '\n'), 1) << told;
    }
}

TEST(Input, ASecondOpenClosesTheFirst)
{
    const TempDir dir;
    write_recnum_file(dir.file("a.nc"), {});
    const std::string bufr = dir.write("b.bufr", "*\n");
    int code = kLayoutNone;
    const int first = PROF_open(dir.file("a.nc").c_str(), 0, &code);
    ASSERT_NE(first, -1);
    int other = kLayoutNone;
    const int second = PROF_open(bufr.c_str(), 0, &other);
    ASSERT_NE(second, -1);
    ProfilerRecord record;
    const int index = 0;
    EXPECT_EQ(PROF_read(first, &record, 0, &index), -1) << "not the other file's";
    EXPECT_EQ(PROF_close(first), -1);
    EXPECT_EQ(PROF_close(second), 0);
}

TEST(Input, AFileOfAnotherKindSaysWhatItHolds)
{
    const TempDir dir;
    write_recnum_file(dir.file("a.nc"), {.levels = 3, .no_v = true});
    std::string bytes = read_file(dir.file("a.nc"));
    bytes.replace(bytes.find("uComponent"), 10, "tComponent");
    const std::string path = dir.write("rass.nc", bytes);
    const std::string told = told_by([&] { read_all(path); });
    EXPECT_NE(told.find("rass.nc: not a wind-profiler file: no winds; it holds "),
              std::string::npos)
        << told;
    EXPECT_NE(told.find("tComponent"), std::string::npos) << told;
}

/// A block of consensus winds at a minute of 15 UTC, with rows "height speed direction quality".
std::string mode_block(int minute, const std::vector<std::string> &rows)
{
    std::string text = "\r\n CTD\r\n WINDS    rev 5.1\r\n  34.66  -87.35    187\r\n  21 05 05 15 ";
    text +=
        std::to_string(minute) + " 01   0\r\n  24  3  49\r\n    HT      SPD      DIR   MET_QC\r\n";
    for (const std::string &row : rows) {
        text += " " + row + "   0.2  0.0\r\n";
    }
    return text + "$\r\n";
}

TEST(ConsensusLayout, MergesTheModesOfATime)
{
    const TempDir dir;
    const std::string path =
        dir.write("ctd", mode_block(0, {"0.200 10.0 270 0", "0.300 10.0 180 2", "0.400 5.0 90 8",
                                        "0.500 999999 999999 9"}) +
                             mode_block(0, {"0.200 99.0 90 0", "0.350 7.0 90 9", "0.500 20.0 360 0",
                                            "0.900 999999 999999 9"}));
    const std::vector<ProfilerRecord> all = read_all(path);
    ASSERT_EQ(all.size(), 1U);
    const ProfilerRecord &r = all[0];
    EXPECT_STREQ(r.id, "CTD");
    EXPECT_FLOAT_EQ(r.lat, 34.66F);
    EXPECT_FLOAT_EQ(r.lon, -87.35F);
    EXPECT_FLOAT_EQ(r.elev, 187.0F);
    const struct {
        float z, u, v;
    } expected[] = {
        {200.0F, 10.0F, 0.0F},        {300.0F, 0.0F, 10.0F},
        {350.0F, kMissing, kMissing}, // above the low mode's last wind
        {500.0F, 0.0F, -20.0F},       {900.0F, kMissing, kMissing},
    };
    ASSERT_EQ(r.num_level, 5);
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(r.level[i].z, expected[i].z) << i;
        EXPECT_NEAR(r.level[i].u, expected[i].u, 1e-4) << i;
        EXPECT_NEAR(r.level[i].v, expected[i].v, 1e-4) << i;
    }
    EXPECT_STREQ(PRF_file_info().date_label, "1500Z  5 MAY 21");
}

TEST(ConsensusLayout, TakesTheTimeNearestTheNames)
{
    const TempDir dir;
    const std::string path =
        dir.write("ctd", mode_block(2, {"0.200 1.0 270 0"}) + mode_block(28, {"0.200 2.0 270 0"}) +
                             mode_block(47, {"0.200 3.0 270 0"}));
    const struct {
        int minute;
        float u;
    } cases[] = {{0, 1.0F}, {30, 2.0F}, {59, 3.0F}};
    for (const auto &c : cases) {
        DateRec date = {};
        date.year = 2021;
        date.month = 5;
        date.day = 5;
        date.hour = 15;
        date.minute = c.minute;
        FILE_set_date(&date);
        const std::vector<ProfilerRecord> all = read_all(path);
        ASSERT_EQ(all.size(), 1U);
        EXPECT_NEAR(all[0].level[0].u, c.u, 1e-4) << c.minute;
    }
}

TEST(ConsensusLayout, ReadsARealFile)
{
    const std::string path = shared_data("profiler_text/ctd21125.15w");
    if (path.empty()) {
        GTEST_SKIP() << "no shared data";
    }
    const DateRec no_date;
    FILE_set_date(&no_date);
    const std::vector<ProfilerRecord> all = read_all(path);
    ASSERT_EQ(all.size(), 1U);
    const ProfilerRecord &r = all[0];
    // from the file's text: 2.506 km 14.0 m/s from 276 degrees, quality 2, of the low mode
    const ProfilerLevel *level =
        std::find_if(r.level, r.level + r.num_level, [](const auto &l) { return l.z == 2506.0F; });
    ASSERT_NE(level, r.level + r.num_level);
    EXPECT_NEAR(std::hypot(level->u, level->v), 14.0, 1e-3);
    EXPECT_NEAR(level->u, 14.0 * std::sin(96.0 * 3.14159265 / 180.0), 1e-3);
}

/// The winds that another decoder tells: 195 m above sea level, the station at 62 m.
TEST(BufrLibrary, ReadsARealFileOfAnotherTemplate)
{
    const std::string path = shared_data("bufr/profiler_european.bufr");
    if (path.empty() || tyr::bufr_library_version().empty()) {
        GTEST_SKIP() << "no shared data, or built without ecCodes";
    }
    const std::vector<ProfilerRecord> all = read_all(path);
    ASSERT_EQ(all.size(), 1U);
    const ProfilerRecord &r = all[0];
    EXPECT_STREQ(r.id, "08059");
    EXPECT_NEAR(r.lat, 43.38, 1e-4);
    EXPECT_EQ(r.num_level, 32);
    const struct {
        int level;
        double z, direction, speed, w;
    } expected[] = {
        {0, 133, 51, 0.9, 0.11}, {5, 434, 336, 2.6, 0.43}, {12, 856, 0, -1, -1}, // marked as bad
    };
    for (const auto &e : expected) {
        const ProfilerLevel &level = r.level[e.level];
        EXPECT_EQ(level.z, e.z);
        if (e.speed < 0.0) {
            EXPECT_EQ(level.u, kMissing) << e.z;
            continue;
        }
        const double angle = e.direction * 3.14159265 / 180.0;
        EXPECT_NEAR(level.u, -e.speed * std::sin(angle), 1e-3);
        EXPECT_NEAR(level.v, -e.speed * std::cos(angle), 1e-3);
        EXPECT_NEAR(level.w, e.w, 1e-4);
    }
    EXPECT_STREQ(PRF_file_info().date_label, "2159Z 31 DEC 14");
}

} // namespace
