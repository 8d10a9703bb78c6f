#include <cmath>

#include "support/temp_dir.h"
#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/prm.h"
#include "tyr/base/res.h"
#include "tyr/names/name_conv.h"
#include "tyr/place/domain_text.h"
#include "tyr/place/region.h"

using namespace tyr;

namespace {

constexpr float M = kMissing;

struct DomainCase {
    const char *name;
    const char *text;
    int result;
    int proj;
    float plat, plon, clat, clon;
    int nx, ny;
    float dx, dy;
};

DomainRec decode(const char *text, int expected)
{
    DomainRec d;
    EXPECT_EQ(DOM_decode(text, &d), expected) << text;
    return d;
}

void expect_domain(const DomainCase &c)
{
    SCOPED_TRACE(std::string(c.name) + ": " + c.text);
    const DomainRec d = decode(c.text, c.result);
    EXPECT_EQ(d.proj, c.proj);
    EXPECT_EQ(d.plat, c.plat);
    EXPECT_EQ(d.plon, c.plon);
    EXPECT_EQ(d.clat, c.clat);
    EXPECT_EQ(d.clon, c.clon);
    EXPECT_EQ(d.nx, c.nx);
    EXPECT_EQ(d.ny, c.ny);
    EXPECT_EQ(d.dx, c.dx);
    EXPECT_EQ(d.dy, c.dy);
    EXPECT_EQ(PRM_get(kPrmDomainForm), c.result);
}

/// A folder with a city database of two stations and a region file.
class DomainText : public testing::Test {
  protected:
    DomainText()
    {
        MSG_set_mask(0, 0);
        folder_.write("sao.cty", "Denver CO US KDEN 1 39.87 -104.67 1656 72565\n");
        folder_.write("my.cty", "Elsewhere CO US ABC 1 10.5 20.25 16 12345\n");
        folder_.write("tyr.reg", "# regions\n"
                                 "us Contiguous_States 1 10,20,3\n"
                                 "sky The_sky 0 ll:0:7,1,2,30,40,0.5,0.25\n"
                                 "bad Bad_one 1 1,2,x\n"
                                 "loop Loop 1 loop\n"
                                 "alias Other_name 1 sky\n");
        folder_.write("bare.reg", "40,-100,0.5\n");
        RES_put("file_path", folder_.path().c_str());
    }
    TempDir folder_;
};

TEST_F(DomainText, FormsFitInTheirOrder)
{
    const DomainCase cases[] = {
        {"size", "size,30,20", 1, kProjSize, M, M, M, M, 30, 20, M, M},
        {"all eight", "lc,-97,40,-100,31,21,1.5,1.25", 1, 4, M, -97, 40, -100, 31, 21, 1.5, 1.25},
        {"seven", "merc,40,-100,31,21,1.5,1.25", 1, 3, M, M, 40, -100, 31, 21, 1.5, 1.25},
        {"six with a projection have its longitude", "ps,-90,40,-100,2,3", 1, 1, M, -90, 40, -100,
         25, 17, 2, 3},
        {"five numbers behind a station", "ps,id:KDEN,31,21,2", 1, 1, M, M, 39.87F, -104.67F, 31,
         21, 2, 2},
        {"six numbers", "40,-100,31,21,1.5,1.25", 1, 1, M, M, 40, -100, 31, 21, 1.5, 1.25},
        {"latitude and longitude with spacings", "latlon,40,-100,2,3", 1, 2, M, M, 40, -100, 25, 17,
         2, 3},
        {"five numbers", "40,-100,31,21,1.5", 1, 1, M, M, 40, -100, 31, 21, 1.5, 1.5},
        {"a projection with its pole", "ps:90:-90,40,-100,2", 1, 1, 90, -90, 40, -100, 25, 17, 2,
         2},
        {"four numbers", "40,-100,31,21", 1, 1, M, M, 40, -100, 31, 21, 1.2F, 1.2F},
        {"three numbers", "40,-100,2.5", 1, 1, M, M, 40, -100, 25, 17, 2.5, 2.5},
        {"a projection and a centre", "or,40,-100", 1, 5, M, M, 40, -100, 25, 17, 1.2F, 1.2F},
        {"zoom", "zoom,40,-100", 1, kProjZoom, M, M, 40, -100, 25, 17, 1, 1},
        {"two numbers", "40,-100", 1, 1, M, M, 40, -100, 25, 17, 1.2F, 1.2F},
        {"a station", "id:kden", 1, 1, M, M, 39.87F, -104.67F, 25, 17, 1.2F, 1.2F},
        {"a station of another file", "id:my.cty:abc,0.5", 1, 1, M, M, 10.5F, 20.25F, 25, 17, 0.5,
         0.5},
        {"one part is the longitude", "ps:-90,40,-100,2", 1, 1, M, -90, 40, -100, 25, 17, 2, 2},
        {"an empty part is left alone", "ps::-90,40,-100,2", 1, 1, M, -90, 40, -100, 25, 17, 2, 2},
        {"none", "none", 1, 1, M, M, M, M, 25, 17, 1.2F, 1.2F},
        {"none and numbers", "none,1,2", 1, 1, M, M, M, M, 25, 17, M, M},
        {"a region of the file", "US", 2, 1, M, M, 10, 20, 25, 17, 3, 3},
        {"one that isn't listed", "sky", 2, 2, 0, 7, 1, 2, 30, 40, 0.5, 0.25},
        {"a region by another name", "alias", 2, 2, 0, 7, 1, 2, 30, 40, 0.5, 0.25},
        {"a built-in region", "ne", 2, 1, M, -76, 42, -76, 25, 17, 0.9F, 0.9F},
        {"a region of a named file", "tyr.reg:sky", 2, 2, 0, 7, 1, 2, 30, 40, 0.5, 0.25},
        {"the first of a file", "fi:tyr.reg", 2, 1, M, M, 10, 20, 25, 17, 3, 3},
        {"a bare text", "bare.reg:any", 2, 1, M, M, 40, -100, 25, 17, 0.5, 0.5},
        {"no region", "nowhere", 2, -1, M, M, M, M, kMissingInt, kMissingInt, M, M},
    };
    for (const DomainCase &c : cases) {
        expect_domain(c);
    }
}

TEST_F(DomainText, BadTextsAreToldOnce)
{
    MSG_set_mask(0, 0xFFU);
    const char *texts[] = {"1,2,3,4,5,6,7,8,9",
                           "1,x",
                           "xx,1,2,3",
                           "ps:a:b,1,2,3",
                           "id:NOSUCH",
                           "id:",
                           "nan,inf",
                           "1,1e99",
                           "bad",
                           "fi:none.it",
                           "no.reg:word",
                           "tyr.reg:word",
                           ",",
                           "1,2,3.5,x",
                           "size,a,b"};
    for (const char *text : texts) {
        SCOPED_TRACE(text);
        testing::internal::CaptureStderr();
        decode(text, -1);
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "DOM_decode: Invalid plot domain\n");
        EXPECT_EQ(PRM_get(kPrmDomainForm), -1);
    }
    testing::internal::CaptureStderr();
    decode("loop", -1);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "DOM_decode: Regions name each other: loop\n");
    for (const char *text : {"", "miss", "MISS"}) {
        const DomainRec d = decode(text, kMissingInt);
        EXPECT_EQ(d.proj, kProjNone);
    }
    DomainRec d;
    EXPECT_EQ(DOM_decode(nullptr, &d), kMissingInt);
}

TEST_F(DomainText, ProjectionsTakeTheirParameters)
{
    DomainRec d = decode("sat:e:0:-75:200:1,0,-75,5", 1);
    EXPECT_EQ(d.ellipsoid, 1);
    EXPECT_EQ(d.plat, 0.0F);
    EXPECT_EQ(d.plon, -75.0F);
    EXPECT_EQ(d.parm1, 200.0F);
    EXPECT_EQ(d.parm2, 1.0F);
    d = decode("sat:e,0,-75,5", 1);
    EXPECT_EQ(d.ellipsoid, 1);
    d = decode("lamb:40:-100:30:60:0.9:7:8:9,40,-100,1", 1);
    EXPECT_EQ(d.parm3, 0.9F);
    EXPECT_EQ(d.parm4, 7.0F);
    EXPECT_EQ(d.parm5, M);
}

TEST_F(DomainText, ProjectionWords)
{
    const struct {
        const char *word;
        int code;
    } cases[] = {
        {"ll", 2},
        {"LATLON", 2},
        {"polar", 1},
        {"ps", 1},
        {"pstereo", 1},
        {"sat", 9},
        {"lambaz", 4},
        {"lc", 4},
        {"laea", 8},
        {"gnom", 6},
        {"ortho", 5},
        {"moll", 7},
        {"merc", 3},
        {"pixel", 99},
        {"xy", 20},
        {"xlogp", 22},
        {"xlogy", 22},
        {"cat", 24},
        {"skewt", 40},
        {"emagram", 42},
        {"teph", 43},
        {"rteph", 44},
        {"therm", 40},
        {"stuve", 41},
        {"hodo", 23},
        {"vert", 22},
        {"xp", 25},
        {"xpp", -1},
        {"zoom", 50},
        {"size", 51},
        {"miss", kMissingInt},
        {"missing", -1},
        {"p", -1},
        {"", -1},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(DOM_proj_code(c.word), c.code) << c.word;
    }
}

TEST_F(DomainText, WhatIsPrintedReadsBack)
{
    for (const char *text :
         {"ps:90:-97,39,-97,25,17,2.3,2.3", "sat:e:0:-75:421:1,0,-75,25,25,5.4,5.4",
          "lamb:50:-97:30:60:0.9,45,-97,31,21,1.25,1.5", "moll::10,0,10,25,17,9,9",
          "ps:-90,-80,3,25,17,1,1", "merc,15,0,25,17,16,16", "cat,-1,-1000,25,21,14,18000"}) {
        const DomainRec d = decode(text, 1);
        MSG_set_mask(0, 0xF);
        testing::internal::CaptureStdout();
        DOM_print(1, &d);
        std::string printed = testing::internal::GetCapturedStdout();
        MSG_set_mask(0, 0);
        ASSERT_FALSE(printed.empty());
        EXPECT_EQ(printed.back(), '\n');
        printed.pop_back();
        const DomainRec back = decode(printed.c_str(), 1);
        EXPECT_EQ(DOM_equal(&d, &back), 1) << text << " as " << printed;
        EXPECT_EQ(back.parm3, d.parm3);
        EXPECT_EQ(back.plat, d.plat) << printed;
    }
}

TEST_F(DomainText, ResourcesInTheirOrder)
{
    DomainRec d;
    EXPECT_EQ(DOM_from_resources(&d, 2), 0);
    EXPECT_EQ(d.proj, kProjNone);
    EXPECT_EQ(DOM_from_resources(&d, 4), 2) << "the first region of the file";
    EXPECT_EQ(d.clat, 10.0F);
    RES_put("region", "ne");
    EXPECT_EQ(DOM_from_resources(&d, 4), 2);
    EXPECT_EQ(d.clat, 42.0F);
    RES_put("plot_domain", "1,2");
    EXPECT_EQ(DOM_from_resources(&d, 3), 1);
    EXPECT_EQ(d.clat, 1.0F);
    EXPECT_EQ(DOM_from_resources(&d, 2), 2) << "mode 2 takes the region";
    char key[kFileKeyRoom];
    FILE_get_key('r', key);
    EXPECT_STREQ(key, "ne");
}

TEST_F(DomainText, PriorityFollowsHeight)
{
    const struct {
        float height;
        const char *setting;
        int priority;
    } cases[] = {{50.1F, "", 1},   {50.0F, "", 2},  {25.0F, "", 3}, {12.5F, "", 4},
                 {6.25F, "", 5},   {3.0F, "", 6},   {0.1F, "", 6},  {50.0F, "+1", 3},
                 {50.0F, "-1", 1}, {50.0F, "5", 5}, {50.0F, "x", 2}};
    for (const auto &c : cases) {
        RES_put("stat_prior", c.setting);
        DOM_set_priority(c.height);
        EXPECT_EQ(DOM_get_priority(), c.priority) << c.height << " " << c.setting;
    }
}

TEST_F(DomainText, RegionTable)
{
    RES_put("file_path", "/nonexistent");
    EXPECT_EQ(DOM_read_regions("tyr.reg"), 0);
    EXPECT_STREQ(DOM_region_table()[0].word, "back");
    if (!DOM_has_regions()) {
        EXPECT_STREQ(DOM_region_table()[1].word, "us");
        EXPECT_STREQ(DOM_region_table()[9].text, "Variable");
        EXPECT_EQ(DOM_region_table()[10].text, nullptr);
    }
    RES_put("file_path", folder_.path().c_str());
    std::string many;
    for (int i = 0; i < 40; ++i) {
        many += "region" + std::to_string(i) + " A_description_that_is_too_long 1 1,2\n";
    }
    folder_.write("many.reg", many);
    EXPECT_EQ(DOM_read_regions("many.reg"), 1);
    EXPECT_STREQ(DOM_region_table()[19].word, "regio");
    EXPECT_STREQ(DOM_region_table()[19].text, "A description that i");
    EXPECT_EQ(DOM_region_table()[20].text, nullptr);
    EXPECT_EQ(DOM_read_regions("tyr.reg"), 1);
    EXPECT_STREQ(DOM_region_table()[2].word, "bad") << "one that isn't listed is passed over";
    EXPECT_EQ(DOM_region_table()[5].text, nullptr);
}

TEST_F(DomainText, DamagedRegionFilesEnd)
{
    std::string noise;
    unsigned seed = 12345;
    for (int i = 0; i < 20000; ++i) {
        seed = seed * 1103515245U + 12345U;
        noise += static_cast<char>(seed >> 16);
    }
    folder_.write("noise.reg", noise);
    folder_.write("long.reg", "us A 1 " + std::string(100000, '1') + "\n");
    folder_.write("empty.reg", "");
    char out[kDomainTextRoom];
    for (const char *file : {"noise.reg", "long.reg", "empty.reg", ".", ""}) {
        SCOPED_TRACE(file);
        DOM_read_regions(file);
        out[0] = '\0';
        DOM_region_lookup(file, "us", out);
        EXPECT_LT(std::string(out).size(), kDomainTextRoom);
    }
}

TEST(InstalledRegions, AllDecodeAndHoldTheBuiltInOnes)
{
    RES_put("file_path", TYR_SOURCE_DIR "/data");
    ASSERT_EQ(DOM_read_regions("tyr.reg"), 1);
    int count = 0;
    for (const MenuRow *row = DOM_region_table() + 1; row->text; ++row, ++count) {
        DomainRec d;
        EXPECT_EQ(DOM_decode(row->word, &d), 2) << row->word;
        EXPECT_TRUE(DOM_is_usable(&d)) << row->word;
        DomainRec built_in;
        if (DOM_builtin_region(row->word, &built_in) == 1) {
            EXPECT_EQ(DOM_equal(&d, &built_in), 1) << row->word;
        }
    }
    EXPECT_EQ(count, 19);
}

TEST(UsableDomain, NeedsPlaceAndSize)
{
    const struct {
        const char *text;
        bool is_usable;
    } cases[] = {
        {"39,-97,2", true},
        {"39,-97,0", false},
        {"39,-97,-2", false},
        {"39,-97,1,17", false},
        {"39,-97,25,0", false},
        {"none", false},
        {"size,25,17", false},
        {"zoom,39,-97", false},
        {"miss", false},
        {"cat,-1,0,25,21,14,18000", true},
        {"39,-97,-25,17", false},
        {"gn,39,-97,1", false},
        {"lamb:50:10:30:-30,50,10,1", false},
        {"lamb:50:10:30:60,50,10,1", true},
    };
    for (const auto &c : cases) {
        DomainRec d;
        DOM_decode(c.text, &d);
        EXPECT_EQ(DOM_is_usable(&d), c.is_usable) << c.text;
    }
}

} // namespace
