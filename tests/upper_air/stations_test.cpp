#include <string>

#include <gtest/gtest.h>

#include "base/msg.h"
#include "base/prm.h"
#include "base/res.h"
#include "support/capture.h"
#include "support/temp_dir.h"
#include "tyr/upper_air/listing.h"
#include "tyr/upper_air/stations.h"
#include "upper_air/sample_report.h"

namespace {

class Stations : public testing::Test {
  protected:
    void SetUp() override
    {
        PRM_clear(kMissingInt);
        MSG_set_mask(0, kMsgMess);
        ASSERT_EQ(write_sample(folder_.file("upa"), kUpaPlaced, 17), 0);
        const std::string shown =
            shown_by([&] { ASSERT_EQ(UPA_open_file(folder_.file("upa").c_str()), 1); });
        EXPECT_EQ(shown, "Date: 12Z 06 MAR 99\n");
    }

    TempDir folder_;
};

TEST_F(Stations, AreWalkedAndFound)
{
    UpaReport report;
    ASSERT_EQ(UPA_next_station(&report), 0);
    ASSERT_EQ(UPA_next_station(&report), 0);
    EXPECT_STREQ(report.id, "ST1");
    UPA_rewind();
    for (int i = 0; i < 17; ++i)
        EXPECT_EQ(UPA_next_station(&report), 0);
    EXPECT_EQ(UPA_next_station(&report), -1);
    EXPECT_EQ(shown_by([&] { EXPECT_EQ(UPA_get_station("st12", &report), 1); }),
              "Searching for st12...\n");
    EXPECT_EQ(report.num_sig, 9);
    EXPECT_EQ(UPA_get_station("72005", &report), 1);
    EXPECT_STREQ(report.id, "ST5");
    EXPECT_EQ(told_by([&] { EXPECT_EQ(UPA_get_station("ABC", &report), 0); }),
              "UPA_get_station: No such station:ABC\n");
    UPA_close_file();
}

TEST_F(Stations, AreListedFifteenToALine)
{
    std::string expected = "Possible stations\n";
    for (int i = 0; i < 17; ++i)
        expected += (i == 15 ? "\n" : "") + STR_print("%4s ", sample_report(i).id);
    EXPECT_EQ(shown_by(UPA_list_stations), expected + "\n\n");
}

TEST_F(Stations, AreAskedForOnce)
{
    UpaReport report;
    MSG_set_mask(0, kMsgError);
    type_in("nowhere\nst3\n");
    const std::string shown = shown_by([&] { EXPECT_EQ(UPA_select_station(&report), 1); });
    EXPECT_EQ(shown.find("Possible stations\n"), 0U);
    EXPECT_NE(shown.find("Enter station to be used in the analysis: "), std::string::npos);
    EXPECT_STREQ(report.id, "ST3");
    EXPECT_EQ(UPA_select_station(&report), 0);
}

TEST_F(Stations, OfTheResourceIsTriedOnce)
{
    UpaReport report;
    RES_put("identifier", "ST7");
    EXPECT_EQ(UPA_select_station(&report), 1);
    EXPECT_STREQ(report.id, "ST7");
    UPA_ask_station(1);
    RES_put("identifier", "none");
    EXPECT_EXIT(UPA_select_station(&report), testing::ExitedWithCode(31),
                "No such station:none\nUnable to find a station");
    RES_put("identifier", "list");
    EXPECT_EXIT(UPA_select_station(&report), testing::ExitedWithCode(0), "");
}

TEST(StationFiles, ThatCantBeOpenedAreTold)
{
    EXPECT_EQ(told_by([] { EXPECT_EQ(UPA_open_file("/no/such/file"), 0); }),
              "UPA_open_file: Unable to open file:/no/such/file\n");
}

TEST(Listing, HasItsTablesToTheLetter)
{
    UpaReport report;
    UPA_clear_report(&report);
    STR_copy(report.id, sizeof report.id, "OUN");
    report.wmo = 3952;
    report.lat = 35.18F;
    report.lon = -97.44F;
    report.mand[0] = {966, 345, 3.6F, -1.2F, 55, 2};
    report.mand[kUpa925] = {925, 701, 7.2F, -2.8F, 170, 13};
    report.mand[kUpaMaxWind] = {212.5F, 11500, kMissing, kMissing, 245, 111};
    for (const float p : {966.0F, 900.0F, 850.5F, 700.0F, 650.0F})
        report.sig[report.num_sig++] = {p, 10, 5};
    for (const float z : {1000.0F, 2000.0F})
        report.wnd[report.num_wnd++] = {z, 180, 10};
    const std::string station = "STA:   OUN WMO: 03952 LAT:   35.18 LON:  -97.44\n";
    EXPECT_EQ(shown_by([&] { UPA_print_mand(kMsgPrint, &report); }),
              station + "     Press    Height   Temp    Dewpt     Dir    Spd\n"
                        "SFC   966.0      345      3.6    -1.2      55      2\n"
                        "      925.0      701      7.2    -2.8     170     13\n"
                        "MWND  212.5    11500  -9999.0 -9999.0     245    111\n");
    EXPECT_EQ(shown_by([&] { UPA_print_sig(kMsgPrint, &report); }),
              station + "Press    Temp    Dewpt     Press    Temp    Dewpt\n"
                        " 966.0     10.0     5.0     850.5     10.0     5.0\n"
                        " 900.0     10.0     5.0     700.0     10.0     5.0\n"
                        " 650.0     10.0     5.0\n");
    EXPECT_EQ(shown_by([&] { UPA_print_wind(kMsgPrint, &report); }),
              station + "Height    Dir    Spd     Height    Dir    Spd\n"
                        "  1000     180     10      2000     180     10\n");
    const std::string text = shown_by([&] { UPA_print_station(kMsgPrint, &report); });
    EXPECT_NE(text.find("Station: OUN\nWMO ident:   3952\nLatitude:   35.18\nLongitude: -97.44\n"),
              std::string::npos)
        << text;
}

} // namespace
