#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/capture.h"
#include "support/shared_data.h"
#include "support/temp_dir.h"
#include "tyr/base/missing.h"
#include "tyr/upper_air/stations.h"
#include "tyr/upper_air/upa_file.h"

namespace {

constexpr float kKnots = 3600.0F / 1852.0F; // of a m/s

std::vector<UpaReport> read_reports(const std::string &path, UpaFileHeader *header = nullptr)
{
    std::vector<UpaReport> reports;
    UpaFileHeader own;
    int type = 0;
    const int handle = UPA_open(path.c_str(), 0, &type);
    UPA_read_header(handle, header ? header : &own);
    UpaReport report;
    for (int i = 0; UPA_read(handle, &report, kUpaWhole, &i) == 0; ++i)
        reports.push_back(report);
    UPA_close(handle);
    return reports;
}

/// A slot decoded by hand from the groups in the file.
struct LevelCase {
    int slot;
    SoundLevel level;
};

void expect_levels(const UpaReport &report, const std::vector<LevelCase> &cases, float knots)
{
    for (const LevelCase &c : cases) {
        SCOPED_TRACE(c.slot);
        const SoundLevel &level = report.mand[c.slot];
        EXPECT_FLOAT_EQ(level.p, c.level.p);
        EXPECT_FLOAT_EQ(level.z, c.level.z);
        EXPECT_NEAR(level.t, c.level.t, 0.01);
        EXPECT_NEAR(level.td, c.level.td, 0.01);
        EXPECT_FLOAT_EQ(level.dir, c.level.dir);
        EXPECT_NEAR(level.spd, is_missing(c.level.spd) ? kMissing : c.level.spd * knots, 0.01);
    }
}

constexpr float kNo = kMissing;

TEST(Bulletins, ChineseBulletinInMetresPerSecond)
{
    const std::string path =
        shared_data("upper_air/A_USCI01BABJ290000_C_RJTD_20191029010631_14.txt");
    if (path.empty())
        GTEST_SKIP() << "no shared data";
    UpaFileHeader header;
    std::vector<UpaReport> reports;
    EXPECT_EQ(told_by([&] { reports = read_reports(path, &header); }), "");
    ASSERT_EQ(reports.size(), 12U); // 13 messages, one of them NIL
    EXPECT_STREQ(header.date_text, "2300Z 28 OCT 19");
    EXPECT_EQ(reports[0].wmo, 51463);
    EXPECT_STREQ(reports[0].id, "51463");
    expect_levels(reports[0],
                  {
                      {kUpaSurface, {919, kNo, 6.6F, -7.4F, 205, 4}},
                      {kUpa1000, {kNo, kNo, kNo, kNo, kNo, kNo}},
                      {kUpa850, {850, 1576, 6.6F, -10.4F, 305, 5}},
                      {4, {700, 3139, -4.5F, -13.5F, 320, 7}},
                      {5, {500, 5710, -19.9F, -29.9F, 295, 11}},
                      {10, {150, 13690, -61.1F, kNo, 290, 16}},
                      {11, {100, 16180, -63.9F, kNo, 295, 20}},
                      {kUpaTropopause, {221, kNo, -57.1F, -66.1F, 325, 16}},
                      {kUpaMaxWind, {kNo, kNo, kNo, kNo, kNo, kNo}},
                  },
                  kKnots);
    // two tropopauses, two maxima of 32 and 31 m/s
    EXPECT_FLOAT_EQ(reports[6].mand[kUpaTropopause].p, 208);
    EXPECT_FLOAT_EQ(reports[6].mand[kUpaMaxWind].p, 269);
    EXPECT_FLOAT_EQ(reports[7].mand[kUpa1000].z, 156);
}

TEST(Bulletins, AmericanBulletinInKnots)
{
    const std::string path = shared_data("upper_air/KJAN_72235_20060922_12Z.txt");
    if (path.empty())
        GTEST_SKIP() << "no shared data";
    UpaFileHeader header;
    std::vector<UpaReport> reports;
    EXPECT_EQ(told_by([&] { reports = read_reports(path, &header); }), "");
    ASSERT_EQ(reports.size(), 1U);
    const UpaReport &r = reports[0];
    EXPECT_STREQ(header.date_text, "1200Z 22 SEP 06");
    EXPECT_STREQ(r.id, "JAN");
    EXPECT_EQ(r.wmo, 72235);
    expect_levels(r,
                  {
                      {kUpaSurface, {1000, kNo, 24.4F, 22.8F, 180, 6}},
                      {kUpa1000, {1000, 89, kNo, kNo, kNo, kNo}},
                      {kUpa925, {925, 772, 21.2F, 20.7F, 205, 40}},
                      {9, {200, 12320, -54.7F, -71.7F, 240, 69}},
                      {11, {100, 16530, -71.1F, -82.1F, 245, 43}},
                      {kUpaTropopause, {125, kNo, -71.3F, -82.3F, 250, 61}},
                      {kUpaMaxWind, {182, kNo, kNo, kNo, 250, 75}},
                  },
                  1);
    ASSERT_EQ(r.num_sig, 28);
    EXPECT_FLOAT_EQ(r.sig[1].p, 985);
    EXPECT_NEAR(r.sig[1].t, 23.6, 0.01);
    EXPECT_NEAR(r.sig[1].td, 23.1, 0.01);
    EXPECT_FLOAT_EQ(r.sig[27].p, 100);
    const float thousands[] = {0,  1,  2,  3,  4,  6,  7,  8,  9,  11, 12,
                               14, 16, 20, 25, 30, 33, 35, 42, 45, 50, 54};
    ASSERT_EQ(r.num_wnd, 22);
    for (int i = 0; i < r.num_wnd; ++i)
        EXPECT_FLOAT_EQ(r.wnd[i].z, 1000 * thousands[i]);
    EXPECT_FLOAT_EQ(r.wnd[18].dir, 245);
    EXPECT_FLOAT_EQ(r.wnd[18].spd, 74);
}

TEST(Bulletins, AllFourPartsWithoutHeadings)
{
    const std::string path = shared_data("upper_air/SLE_72694_06day_00Z.txt");
    if (path.empty())
        GTEST_SKIP() << "no shared data";
    std::vector<UpaReport> reports;
    EXPECT_EQ(told_by([&] { reports = read_reports(path); }), "");
    ASSERT_EQ(reports.size(), 1U);
    expect_levels(reports[0],
                  {
                      {kUpaSurface, {1009, kNo, 22.8F, 4.8F, 290, 6}},
                      {kUpa1000, {1000, 137, 20.6F, 3.6F, 285, 7}},
                      {12, {70, 18640, -57.1F, kNo, 200, 17}},
                      {13, {50, 20780, -54.5F, kNo, 340, 4}},
                      {14, {30, 24070, -49.7F, kNo, 20, 10}},
                      {15, {20, 26750, -47.1F, kNo, 55, 10}},
                      {16, {10, 31450, -33.9F, kNo, 70, 17}},
                  },
                  1);
    EXPECT_FLOAT_EQ(reports[0].sig[0].p, 1009);
    EXPECT_EQ(reports[0].num_sig, 52);
}

TEST(Bulletins, DecodesPublishedWithTheSources)
{
    const TempDir folder;
    // levels of the decodes: 700 hPa 3.6 C, 0.2 C, 230 degrees 13 knots; heights of a teaching page
    const std::string text =
        "TTAA 80181 72365 99837 20056 18005 70138 03634 23013=\n"
        "TTAA 51001 72518 99030 10050 18005 85585 05050 25020 70138 03634 23013"
        " 50572 15150 25030 40736 27550 25040 30935 43350 25050 25054 51350"
        " 25060=\n";
    const std::vector<UpaReport> reports = read_reports(folder.write("TTAA", text));
    ASSERT_EQ(reports.size(), 2U);
    expect_levels(reports[0], {{4, {700, 3138, 3.6F, 0.2F, 230, 13}}}, 1);
    const std::pair<int, float> heights[] = {{3, 1585}, {4, 3138}, {5, 5720},
                                             {6, 7360}, {7, 9350}, {8, 10540}};
    for (const auto &[slot, z] : heights)
        EXPECT_FLOAT_EQ(reports[1].mand[slot].z, z);
    EXPECT_FLOAT_EQ(reports[1].mand[0].p, 1030);
}

struct RefusalCase {
    const char *name;
    const char *text;
    const char *told;
    size_t reports;
};
constexpr RefusalCase kRefusals[] = {
    {"ship", "UUAA 51001 99400 70500=\n", "ascents of ships", 0},
    {"bad group", "TTAA 51001 72518 99030 1x050 18005=\n", "\"1x050\" can't", 1},
    {"no such level", "TTAA 51001 72518 99030 10050 18005 81000 10050 18005=\n",
     "TTAA of 72518: \"81000\" is no level", 1},
    {"no such hour", "TTAA 51991 72518 99030 10050 18005=\n", "heading \"51991 72518", 0},
    {"pilot mandatory", "PPAA 51001 72518 55385 18005=\n", "aren't read", 0},
    {"twice", "TTBB 51001 72518 00030 10050=TTBB 51001 72518 00030 10050=\n",
     "TTBB of 72518 stands there twice", 1},
    {"no part end", "TTBB 51001 72518 00030 10050 12345 10050=\n", "\"12345\" is no", 1},
};

TEST(Bulletins, WhatCantBeReadIsTold)
{
    const TempDir folder;
    for (const RefusalCase &c : kRefusals) {
        SCOPED_TRACE(c.name);
        const std::string path = folder.write("b", c.text);
        std::vector<UpaReport> reports;
        const std::string told = told_by([&] { reports = read_reports(path); });
        EXPECT_NE(told.find(path), std::string::npos);
        EXPECT_NE(told.find(c.told), std::string::npos) << told;
        EXPECT_EQ(reports.size(), c.reports);
    }
}

TEST(Bulletins, WindsByPressureGetHeights)
{
    const TempDir folder;
    const std::vector<UpaReport> reports = read_reports(folder.write(
        "b", "TTAA 56001 10410 99010 10050 18005 00085 09050 18005 92772 05050 19010=\n"
             "TTBB 56000 10410 00010 10050 21212 00010 18005 11962 18508=\n"
             "PPBB 56000 10410 90012 18005 18510 19015=\n"));
    ASSERT_EQ(reports.size(), 1U);
    ASSERT_EQ(reports[0].num_wnd, 5);
    // ln(1000/962) / ln(1000/925) of the way from 85 to 772 m
    EXPECT_NEAR(reports[0].wnd[3].z * 0.3048F, 426.4, 1);
    EXPECT_FLOAT_EQ(reports[0].wnd[3].spd, 8);
    // units of 300 m in Europe
    EXPECT_NEAR(reports[0].wnd[4].z * 0.3048F, 600, 0.1);
}

TEST(Tables, WyomingPage)
{
    const std::string path = shared_data("upper_air/sharppy_oun_uwyo.html");
    if (path.empty())
        GTEST_SKIP() << "no shared data";
    UpaFileHeader header;
    std::vector<UpaReport> reports;
    const std::string told = told_by([&] { reports = read_reports(path, &header); });
    EXPECT_EQ(told, "");
    ASSERT_EQ(reports.size(), 1U);
    const UpaReport &r = reports[0];
    EXPECT_STREQ(header.date_text, "1200Z 22 DEC 18");
    EXPECT_STREQ(r.id, "OUN");
    EXPECT_EQ(r.wmo, 72357);
    EXPECT_FLOAT_EQ(r.lat, 35.18F);
    EXPECT_FLOAT_EQ(r.lon, -97.44F);
    EXPECT_FLOAT_EQ(r.elev, 345);
    expect_levels(r,
                  {
                      {kUpaSurface, {966, 345, 3.6F, -1.2F, 55, 2}},
                      {kUpa1000, {1000, 65, kNo, kNo, kNo, kNo}},
                      {kUpa925, {925, 701, 7.2F, -2.8F, 170, 13}},
                      {4, {700, 2998, 4.2F, -18.8F, 260, 27}},
                      {6, {400, 7280, -27.1F, -36.1F, 270, 72}},
                      {kUpa7, {7, 33030, -48.3F, -86.3F, kNo, kNo}},
                  },
                  1);
    EXPECT_FLOAT_EQ(r.sig[1].p, 965);
    EXPECT_NEAR(r.wnd[0].z * 0.3048F, 353, 0.1);
}

TEST(Tables, WyomingTextInMetresPerSecond)
{
    const TempDir folder;
    const std::string text =
        "03743 Larkhill Observations at 12Z 02 Jan 2020\n\n----------\n"
        "   PRES   HGHT   TEMP   DWPT   RELH   MIXR   DRCT   SPED   THTA   THTE   THTV\n"
        "    hPa     m      C      C      %    g/kg    deg    m/s     K      K      K \n"
        "----------\n"
        " 1002.0    133    8.0    5.0     81   5.50    200     10  281.0  296.5  281.9\n"
        "  9x0.0    353\n"
        "  990.0    232                                205           \n";
    const std::string path = folder.write("t", text);
    std::vector<UpaReport> reports;
    const std::string told = told_by([&] { reports = read_reports(path); });
    EXPECT_NE(told.find("no level in the line \"  9x0.0"), std::string::npos) << told;
    ASSERT_EQ(reports.size(), 1U);
    EXPECT_STREQ(reports[0].id, "03743");
    EXPECT_NEAR(reports[0].mand[0].spd, 19.44, 0.01);
    EXPECT_FLOAT_EQ(reports[0].elev, 133);
}

TEST(Tables, SpcText)
{
    const std::string path = shared_data("upper_air/sharppy_14061619.OAX");
    if (path.empty())
        GTEST_SKIP() << "no shared data";
    UpaFileHeader header;
    std::vector<UpaReport> reports;
    EXPECT_EQ(told_by([&] { reports = read_reports(path, &header); }), "");
    ASSERT_EQ(reports.size(), 1U);
    EXPECT_STREQ(header.date_text, "1900Z 16 JUN 14");
    EXPECT_STREQ(reports[0].id, "OAX");
    expect_levels(reports[0],
                  {
                      {kUpaSurface, {965, 350, 27.8F, 23.8F, 150, 23}},
                      {kUpa1000, {1000, 34, kNo, kNo, kNo, kNo}},
                      {kUpa850, {850, 1460, 21.0F, 14.0F, 180, 50}},
                  },
                  1);
}

TEST(Tables, SpcFileWithoutItsEndIsTold)
{
    const TempDir folder;
    const std::string path = folder.write(
        "s", "%TITLE%\n OAX   990616/1900  41.32,-96.37\n\n%RAW%\n 965.00, 350.00, 27.80, 23.80, "
             "150.00, 23.00\n 900.00, 900.00, nan, 1.0, 180.00, 30.00\n 90x.00, 1\n");
    std::vector<UpaReport> reports;
    const std::string told = told_by([&] { reports = read_reports(path); });
    EXPECT_NE(told.find("\"90x.00, 1\""), std::string::npos) << told;
    EXPECT_NE(told.find("without %END%"), std::string::npos) << told;
    ASSERT_EQ(reports.size(), 1U);
    EXPECT_FLOAT_EQ(reports[0].lon, -96.37F);
    EXPECT_EQ(reports[0].num_sig, 1);
    EXPECT_EQ(reports[0].num_wnd, 1); // of the level whose temperature is none
}

} // namespace
