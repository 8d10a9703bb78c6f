#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <netcdf.h>

#include "support/capture.h"
#include "support/temp_dir.h"
#include "tyr/base/str.h"
#include "tyr/upper_air/upa_file.h"
#include "upper_air/sample_report.h"

using namespace tyr;

namespace {

constexpr int kReadable[] = {1, 2, 3, 4, 5, 11, 12};

std::vector<UpaReport> read_reports(const std::string &path, int *type)
{
    std::vector<UpaReport> reports;
    const int handle = UPA_open(path.c_str(), 0, type);
    UpaFileHeader header;
    UPA_read_header(handle, &header);
    UpaReport report;
    for (int i = 0; UPA_read(handle, &report, kUpaWhole, &i) == 0; ++i)
        reports.push_back(report);
    UPA_close(handle);
    return reports;
}

void expect_level(const SoundLevel &a, const SoundLevel &b, float tolerance)
{
    EXPECT_NEAR(a.p, b.p, tolerance);
    EXPECT_NEAR(a.z, b.z, tolerance);
    EXPECT_NEAR(a.t, b.t, tolerance);
    EXPECT_NEAR(a.td, b.td, tolerance);
    EXPECT_NEAR(a.dir, b.dir, tolerance);
    EXPECT_NEAR(a.spd, b.spd, tolerance);
}

/// What a form keeps of the sample: slots, and how many levels of the lists.
struct FormCase {
    int type;
    std::string slots; // a letter each from 'a' for slot 0; empty for all
    int num_sig, num_wnd;
    bool place, special;
};
const FormCase kForms[] = {
    {1, "bdef", 4, 16, false, false}, {2, "bdefghjl", 6, 21, false, false},
    {3, "", 9, 8, false, true},       {4, "", 9, 8, false, true},
    {5, "", 9, 8, true, true},        {11, "", 9, 8, true, true},
    {12, "", 9, 8, true, true},
};

TEST(UpaFile, WrittenFilesReadTheSame)
{
    const TempDir folder;
    for (const FormCase &c : kForms) {
        SCOPED_TRACE(c.type);
        const std::string path = folder.file("upa" + std::to_string(c.type));
        ASSERT_EQ(write_sample(path, c.type, 5), 0);
        EXPECT_EQ(UPA_file_type(path.c_str()), c.type);
        int type = 0;
        const std::vector<UpaReport> reports = read_reports(path, &type);
        EXPECT_EQ(type, c.type);
        ASSERT_EQ(reports.size(), 5U);
        // odd tenths stand for below zero; m/s and metres come back rounded
        const float tolerance = c.type == 12 ? 0.5F : c.type == 11 ? 0.01F : 0.11F;
        for (int i = 0; i < 5; ++i) {
            const UpaReport expected = sample_report(i);
            const UpaReport &r = reports[static_cast<size_t>(i)];
            EXPECT_STREQ(r.id, expected.id);
            EXPECT_EQ(r.wmo, c.place ? expected.wmo : kMissingInt);
            EXPECT_FLOAT_EQ(r.lon, c.place ? expected.lon : kMissing);
            for (int slot = kUpa1000; slot <= kUpa1; ++slot) {
                if (!c.slots.empty() &&
                    c.slots.find(static_cast<char>('a' + slot)) == std::string::npos)
                    continue;
                SCOPED_TRACE(slot);
                expect_level(r.mand[slot], expected.mand[slot], tolerance);
            }
            EXPECT_FLOAT_EQ(r.mand[0].p, 1013);
            EXPECT_NEAR(r.mand[0].t, 24.6, tolerance);
            EXPECT_NEAR(r.mand[0].spd, 8, tolerance);
            EXPECT_FLOAT_EQ(r.mand[kUpaTropopause].p, c.special ? 186 : kMissing);
            EXPECT_NEAR(r.mand[kUpaMaxWind].spd, c.special ? 111 : kMissing, tolerance);
            ASSERT_EQ(r.num_sig, c.num_sig);
            for (int k = 0; k < r.num_sig; ++k) {
                EXPECT_NEAR(r.sig[k].p, expected.sig[k].p, 0.01);
                EXPECT_NEAR(r.sig[k].t, expected.sig[k].t, 0.11); // even tenths above 0
                EXPECT_NEAR(r.sig[k].td, expected.sig[k].td, 0.11);
            }
            ASSERT_EQ(r.num_wnd, c.num_wnd);
            EXPECT_NEAR(r.wnd[c.num_wnd > 8 ? 9 : 4].spd, 56, tolerance); // 9,000 feet
            EXPECT_NEAR(r.wnd[c.num_wnd > 8 ? 9 : 4].z, 9000, 1);
        }
    }
}

TEST(UpaFile, ReportsAreReadInAnyOrderAndAgain)
{
    const TempDir folder;
    for (const int type : kReadable) {
        SCOPED_TRACE(type);
        const std::string path = folder.file("upa");
        ASSERT_EQ(write_sample(path, type, 4), 0);
        int code = type;
        const int handle = UPA_open(path.c_str(), 0, &code);
        UpaFileHeader header;
        UPA_read_header(handle, &header);
        EXPECT_STREQ(header.date_text, "12Z 06 MAR 99");
        EXPECT_EQ(header.date.hour, 12);
        EXPECT_STREQ(header.short_date, "99030612");
        for (int i : {2, 2, 0, 3, 1, 0}) {
            for (const int what : {30, 31}) {
                UpaReport report;
                ASSERT_EQ(UPA_read(handle, &report, what, &i), 0);
                EXPECT_STREQ(report.id, sample_report(i).id);
            }
        }
        for (int i : {4, 5, 400, -1}) {
            UpaReport report;
            EXPECT_EQ(UPA_read(handle, &report, kUpaWhole, &i), -1) << i;
        }
        UPA_close(handle);
    }
}

TEST(UpaFile, OneLevelIsThatOfTheWholeReport)
{
    const TempDir folder;
    for (const int type : kReadable) {
        const std::string path = folder.file("upa");
        ASSERT_EQ(write_sample(path, type, 2), 0);
        int code = 0;
        const int handle = UPA_open(path.c_str(), 0, &code);
        UpaFileHeader header;
        UPA_read_header(handle, &header);
        int index = 1;
        UpaReport whole;
        ASSERT_EQ(UPA_read(handle, &whole, kUpaWhole, &index), 0);
        for (const int what : {0, 1, 2, 3, 5, 11, 16, 22, 23}) {
            SCOPED_TRACE(std::to_string(type) + " level " + std::to_string(what));
            UpaReport one;
            ASSERT_EQ(UPA_read(handle, &one, what, &index), 0);
            EXPECT_EQ(one.num_mand, 1);
            EXPECT_STREQ(one.id, whole.id);
            expect_level(one.mand[0], whole.mand[what], 0);
        }
        UPA_close(handle);
    }
}

TEST(UpaFile, OlderFilesHaveNo925)
{
    const TempDir folder;
    UpaReport report = sample_report();
    MET_clear_level(&report.mand[kUpa925]);
    ASSERT_EQ(write_sample(folder.file("a"), kUpaFixed, 2, &report), 0);
    EXPECT_EQ(read_file(folder.file("a")).find(" 92"), std::string::npos);
    int type = 0;
    const std::vector<UpaReport> reports = read_reports(folder.file("a"), &type);
    ASSERT_EQ(reports.size(), 2U);
    EXPECT_FLOAT_EQ(reports[1].mand[kUpa925].p, kMissing);
    EXPECT_FLOAT_EQ(reports[1].mand[kUpa850].z, 1457);
    EXPECT_FLOAT_EQ(reports[1].mand[kUpa1].z, 47820);
}

TEST(UpaFile, ReportWithoutListsGetsItsSurface)
{
    const TempDir folder;
    UpaReport report = sample_report();
    report.num_sig = report.num_wnd = 0;
    for (const int type : {1, 2, 3, 4, 5}) {
        SCOPED_TRACE(type);
        ASSERT_EQ(write_sample(folder.file("a"), type, 1, &report), 0);
        int code = 0;
        const std::vector<UpaReport> reports = read_reports(folder.file("a"), &code);
        ASSERT_EQ(reports.size(), 1U);
        EXPECT_EQ(reports[0].num_sig, 1);
        EXPECT_FLOAT_EQ(reports[0].sig[0].p, 1013);
        EXPECT_FLOAT_EQ(reports[0].wnd[0].z, 0);
        EXPECT_FLOAT_EQ(reports[0].wnd[0].dir, 170);
    }
}

TEST(UpaFile, LevelsBeyondTheListsArePassedOver)
{
    const TempDir folder;
    std::string text = "TYRUPA+\n12Z 06 MAR 99\nMANY";
    for (int i = 0; i < 16; ++i)
        text += " X X X";
    text += "\nX X X X X\n";
    for (int i = 0; i < 500; ++i)
        text += std::to_string(999 - i) + " 10250 ";
    text += "X\n";
    for (int i = 0; i < 300; ++i)
        text += STR_print("%02d 18010 ", i % 100);
    text += "\n$\nNEXT";
    for (int i = 0; i < 16; ++i)
        text += " X X X";
    text += "\nX X X X X\nX\n$\n";
    int type = 0;
    const std::vector<UpaReport> reports = read_reports(folder.write("many", text), &type);
    ASSERT_EQ(reports.size(), 2U);
    EXPECT_EQ(reports[0].num_sig, 200);
    EXPECT_FLOAT_EQ(reports[0].sig[199].p, 800);
    EXPECT_EQ(reports[0].num_wnd, 100);
    EXPECT_STREQ(reports[1].id, "NEXT");
}

TEST(UpaFile, NetcdfWithoutItsVariablesGivesMissing)
{
    const TempDir folder;
    const std::string path = folder.file("bare.nc");
    int id = -1;
    int dim = -1;
    int var = -1;
    nc_create(path.c_str(), NC_CLOBBER, &id);
    nc_def_dim(id, "station", NC_UNLIMITED, &dim);
    nc_def_var(id, "lat", NC_FLOAT, 1, &dim, &var);
    nc_enddef(id);
    const size_t place = 1;
    const float value = 40;
    nc_put_var1_float(id, var, &place, &value);
    nc_close(id);
    int type = 0;
    std::vector<UpaReport> reports;
    const std::string told = told_by([&] { reports = read_reports(path, &type); });
    EXPECT_NE(told.find("bare.nc: no variables of upper-air reports"), std::string::npos) << told;
    EXPECT_EQ(type, kUpaNetcdf1);
    ASSERT_EQ(reports.size(), 2U);
    EXPECT_STREQ(reports[1].region, "UN");
    EXPECT_FLOAT_EQ(reports[1].lat, 40);
    EXPECT_EQ(reports[1].wmo, kMissingInt);
    EXPECT_EQ(reports[1].num_sig + reports[1].num_wnd + reports[1].num_mand, 0);
}

struct RefusedCase {
    const char *name;
    const char *bytes; // null: no such file
    int mode, type;
    const char *message;
};
constexpr RefusedCase kRefused[] = {
    {"missing", nullptr, 0, 0, ""},
    {"unknown letter", "hello\nworld\n", 0, 0, "not a file of upper-air reports"},
    {"empty", "", 0, 0, "an empty file"},
    {"digest by its head", "12:00Z XXX MAR 06 1999", 0, 0, "can't be read"},
    {"xml by its head", "<tyrupa date=\"\">", 0, 0, "can't be read"},
    {"digest", "12:00Z XXX MAR", 0, 41, "can't be read"},
    {"xml", "<tyrupa>", 0, 51, "can't be read"},
    {"damaged netCDF", "CDF\0019999", 0, 0, "cut short"},
    {"write untyped", "", 1, 0, ""},
    {"write bulletins", "", 1, 61, ""},
    {"no such type", "TYRUPA\n", 0, 7, ""},
};

TEST(UpaFile, WhatCantBeOpened)
{
    const TempDir folder;
    for (const RefusedCase &c : kRefused) {
        SCOPED_TRACE(c.name);
        const std::string path = c.bytes ? folder.write("x", c.bytes) : folder.file("none");
        int type = c.type;
        const std::string told =
            told_by([&] { EXPECT_EQ(UPA_open(path.c_str(), c.mode, &type), -1); });
        EXPECT_NE(told.find(c.message), std::string::npos) << told;
        EXPECT_EQ(std::count(told.begin(), told.end(), '\n'), *c.message == '\0' ? 0 : 1) << told;
    }
    EXPECT_EQ(UPA_close(1), -1);
    EXPECT_EQ(UPA_file_type(folder.file("none").c_str()), -1);
}

TEST(UpaFile, OthersReadTheNetcdfAndTheXml)
{
    const TempDir folder;
    if (std::system("which ncdump xmllint > /dev/null") != 0)
        GTEST_SKIP() << "ncdump and xmllint aren't installed";
    UpaReport report = sample_report();
    STR_copy(report.id, sizeof report.id, "A<&\"B");
    ASSERT_EQ(write_sample(folder.file("a.xml"), kUpaXml, 3, &report), 0);
    EXPECT_EQ(std::system(("xmllint --noout " + folder.file("a.xml")).c_str()), 0);
    for (const int type : {11, 12}) {
        SCOPED_TRACE(type);
        ASSERT_EQ(write_sample(folder.file("a.nc"), type, 3), 0);
        const std::string out = folder.file("dump");
        ASSERT_EQ(std::system(("ncdump " + folder.file("a.nc") + " > " + out).c_str()), 0);
        const std::string dump = read_file(out);
        for (const char *text :
             {"mant_level = 25", "sigt_level = 200", "sigw_level = 100", "string_len = 11",
              "// (3 currently)", "filetime = \"12Z 06 MAR 99\"", "yymmddhh = \"99030612\"",
              "idn = 72000, 72001, 72002", "lat:valid_range = -90.f, 90.f",
              "num_sigt:_FillValue = 0"})
            EXPECT_NE(dump.find(text), std::string::npos) << text;
        const char *own = type == 11 ? "station = UNLIMITED" : "SPD_man:units = \"meters/second\"";
        EXPECT_NE(dump.find(own), std::string::npos);
    }
}

TEST(UpaFile, XmlTellsWhatIsKnown)
{
    const TempDir folder;
    UpaReport report;
    UPA_clear_report(&report);
    STR_copy(report.id, sizeof report.id, "OUN");
    report.wmo = 72357;
    report.mand[0] = {965, 345, 3.6F, kMissing, 55, 2};
    report.mand[kUpa7] = {7, 33030, -48.3F, -86.3F, kMissing, kMissing};
    write_sample(folder.file("x"), kUpaXml, 1, &report);
    EXPECT_EQ(read_file(folder.file("x")),
              "<tyrupa date=\"12Z 06 MAR 99\">\n<obs wmo=\"72357\" id=\"OUN\">\n  <mand_level>\n"
              "    <level type=\"sfc\" pres.mb=\"965\" hght.m=\"345\" temp.C=\"3.6\""
              " wdir.deg=\"55\" wspd.knt=\"2\"/>\n"
              "    <level pres.mb=\"7.0\" hght.m=\"33030\" temp.C=\"-48.3\" dewp.C=\"-86.3\"/>\n"
              "  </mand_level>\n  <sig_level>\n    <level pres.mb=\"965\" temp.C=\"3.6\"/>\n"
              "  </sig_level>\n  <wnd_level>\n"
              "    <level hght.m=\"0\" wdir.deg=\"55\" wspd.knt=\"2\"/>\n"
              "  </wnd_level>\n</obs>\n</tyrupa>\n");
}

TEST(UpaFile, DigestIsTextAndLittleEndianNumbers)
{
    const TempDir folder;
    UpaReport report = sample_report();
    report.extra = 258;
    UpaFileHeader header = sample_header();
    int type = kUpaDigest;
    int index = 0;
    const int handle = UPA_open(folder.file("d").c_str(), 1, &type);
    UPA_write_header(handle, &header);
    EXPECT_EQ(UPA_write(handle, &report, nullptr, &index), -1);
    EXPECT_EQ(index, 0);
    UPA_close(handle);
    const std::string bytes = read_file(folder.file("d"));
    const std::string heading = "12:00Z XXX MAR  6 1999";
    ASSERT_EQ(bytes.size(), heading.size() + 12 + 66);
    EXPECT_EQ(bytes.substr(0, heading.size()), heading);
    EXPECT_EQ(bytes.substr(heading.size(), 12), std::string("ST0\0\00072000\0\0", 12));
    const auto number = [&](size_t i) {
        const size_t at = heading.size() + 12 + 2 * (i - 1);
        const int low = static_cast<unsigned char>(bytes[at]);
        return low + 256 * static_cast<signed char>(bytes[at + 1]);
    };
    // 850 hPa: 7.4 and 4.4 degrees, 1457 m, 195 degrees at 25 knots; no tropopause height
    const std::pair<size_t, int> numbers[] = {{1, 3518},  {2, -9743}, {3, 7},    {8, 1457},
                                              {10, 5570}, {16, 19},   {20, 25},  {24, 3},
                                              {27, 9999}, {28, 5459}, {29, 258}, {33, 0}};
    for (const auto &[place, value] : numbers)
        EXPECT_EQ(number(place), value) << place;
}

} // namespace
