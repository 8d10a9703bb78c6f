#include <algorithm>
#include <cmath>
#include <cstring>

#include "support/world_plot.h"
#include "tyr/base/missing.h"
#include "tyr/base/prm.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/gks/colour_table.h"
#include "tyr/plot/style.h"
#include "tyr/plot/value.h"
#include "tyr/var/type_words.h"

namespace {

using Strokes = std::vector<std::string>;
using Texts = std::vector<std::string>;

constexpr int kSize = 20; ///< of the window: signs are fractions of it

struct Given {
    float x, y;
    int type;
    const char *format;
    const char *text;
    float value1, value2;
};

struct Drawn {
    std::vector<int> results;
    PsPage page;
    Texts texts() const
    {
        Texts list;
        for (const PsText &t : page.texts) {
            list.push_back(t.text);
        }
        return list;
    }
};

struct ValueTest : ::testing::Test {
    ValueTest()
    {
        PRM_clear(kMissingInt);
        for (const char *name : {"plot_format", "plot_param", "con_base", "con_interval",
                                 "color_data", "color_fill", "color_table"}) {
            RES_put(name, nullptr);
        }
        PLT_clear_points();
    }
    static Drawn draw(const std::vector<Given> &values)
    {
        WorldPlot plot(kSize);
        AttrRec attr;
        ATTR_init(&attr);
        attr.color = CLR_lookup("#00FF00");
        PLT_setup_values(&attr, 1.0F);
        Drawn drawn;
        for (const Given &g : values) {
            PlotValue v;
            PLT_init_value(&v);
            v.x = g.x;
            v.y = g.y;
            v.type = g.type;
            STR_copy(v.format, sizeof v.format, g.format);
            STR_copy(v.text, sizeof v.text, g.text);
            v.value1 = g.value1;
            v.value2 = g.value2;
            drawn.results.push_back(PLT_plot_value(&v));
        }
        drawn.page = plot.finish();
        EXPECT_EQ(drawn.page.error, "");
        return drawn;
    }
};

} // namespace

TEST_F(ValueTest, RecordsStartEmpty)
{
    PlotValue v;
    std::memset(&v, 0x55, sizeof v);
    v.type = 7;
    PLT_init_value(&v);
    EXPECT_TRUE(is_missing(v.x) && is_missing(v.y) && is_missing(v.value1) && is_missing(v.value2));
    EXPECT_STREQ(v.format, "");
    EXPECT_STREQ(v.text, "");
    EXPECT_EQ(v.attr.color, kMissingInt);
    EXPECT_EQ(v.type, 7);
    STR_copy(v.format, sizeof v.format, "ul");
    v.x = 1.0F;
    v.value1 = 2.0F;
    PLT_clear_value(&v);
    EXPECT_TRUE(is_missing(v.value1));
    EXPECT_STREQ(v.format, "ul");
    EXPECT_EQ(v.x, 1.0F);
}

TEST_F(ValueTest, TextsAndNumbersByType)
{
    float seven;
    const int bits = 7;
    std::memcpy(&seven, &bits, sizeof seven);
    const struct {
        const char *name;
        Given given;
        Texts texts;
    } cases[] = {
        {"data", {1, 1, kTypeData, "", "abc", 5, 0}, {"abc"}},
        {"text", {1, 1, kTypeText, "", "a c", kMissing, 0}, {"a c"}},
        {"text with directives", {1, 1, kTypeText, "", "%s%n", 0, 0}, {"%s%n"}},
        {"value", {1, 1, kTypeValue, "", "abc", 5.4F, 0}, {"5"}},
        {"value, formatted", {1, 1, kTypeValue, "%1.1f", "", 5.4F, 0}, {"5.4"}},
        {"value, no zero", {1, 1, kTypeValue, "%z1.1f", "", -0.5F, 0}, {"-.5"}},
        {"value, bad format", {1, 1, kTypeValue, "%s%s%n", "", 5.4F, 0}, {"5"}},
        {"value missing", {1, 1, kTypeValue, "", "M", kMissing, 0}, {"M"}},
        {"value and text missing", {1, 1, kTypeValue, "", "", kMissing, 0}, {}},
        {"integer", {1, 1, kTypeInt, "", "", seven, 0}, {"7"}},
        {"format makes a number", {1, 1, kTypeCloud, "%1.1f", "", 2.0F, 0}, {"2.0"}},
        {"contours draw nothing", {1, 1, kTypeCont, "", "x", 2.0F, 0}, {}},
        {"unknown type", {1, 1, 77, "", "x", 2.0F, 0}, {}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        const Drawn drawn = draw({c.given});
        EXPECT_EQ(drawn.texts(), c.texts);
        EXPECT_EQ(drawn.results[0], 0);
    }
}

TEST_F(ValueTest, OffsetsAreFractionsOfTheWindow)
{
    // 20 units high: an offset of 0.012 is 0.24 units, 0.02 is 0.4
    const struct {
        const char *name, *format, *param;
        double x, y;
    } cases[] = {
        {"none", "", nullptr, 1.0, 2.0},
        {"upper left", "ul", nullptr, 0.76, 2.4},
        {"lower right", "lr", nullptr, 1.24, 1.6},
        {"doubled", "sc=2:ur", nullptr, 1.48, 2.8},
        {"given", "xy=5 -5", nullptr, 2.2, 0.0},
        {"of the series", "", "cr", 1.3, 2.0},
        {"given to all", "", "xy=-5:5", -0.2, 4.0},
        {"value overrides", "cc", "ul", 1.0, 2.0},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        RES_put("plot_param", c.param);
        const Drawn drawn = draw({{1, 2, kTypeText, c.format, "t", 0, 0}});
        ASSERT_EQ(drawn.page.texts.size(), 1U);
        EXPECT_NEAR(drawn.page.texts[0].x, c.x, 0.01);
        EXPECT_NEAR(drawn.page.texts[0].y, c.y, 0.01);
    }
}

TEST_F(ValueTest, WindRoutes)
{
    const struct {
        const char *name;
        int type;
        float direction, speed;
        size_t strokes;
        double reach; ///< of all strokes from the place, units
    } cases[] = {
        {"barb", kTypeWindBarb, 0, 10, 2, 1.12 * 1.0 + 0.0},
        {"calm barb", kTypeWindBarb, 0, 0, 1, 0.06},
        {"barb from nowhere", kTypeWindBarb, -10, 10, 0, 0},
        {"missing direction", kTypeWindBarb, kMissing, 10, 0, 0},
        {"missing speed", kTypeWindBarb, 90, kMissing, 0, 0},
        {"cloud barb, calm", kTypeCloudBarb, 90, 0, 1, 0.26},
        {"cloud barb", kTypeCloudBarb, 0, 10, 2, 1.12},
        {"cloud barb, none", kTypeCloudBarb, -1, 10, 0, 0},
        {"dot barb, calm", kTypeDotBarb, 90, 0, 2, 0.12},
        {"dot barb", kTypeDotBarb, 0, 10, 3, 1.12},
        {"dot barb, none", kTypeDotBarb, -1, 10, 1, 0.06},
        {"vector", kTypeVectorBarb, 90, 100, 3, 1.852},
        {"vector, calm", kTypeVectorBarb, 90, 0, 0, 0},
        {"track", kTypeStream, 90, 100, 7, 3.704},
        {"track, no way", kTypeStream, kMissing, 100, 0, 0},
        {"sky", kTypeCloud, 0, 0, 2, 0.2},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        const Drawn drawn =
            draw({{0, 0, c.type, "", c.type == kTypeCloud ? "8" : "", c.direction, c.speed}});
        ASSERT_EQ(drawn.page.strokes.size(), c.strokes);
        double reach = 0.0;
        for (const PsStroke &stroke : drawn.page.strokes) {
            for (const PsPoint &p : stroke.points) {
                reach = std::max(reach, std::hypot(p[0], p[1]));
            }
        }
        // a full barb's tip is 1.12 along the staff and 0.5 aside
        const double expected = c.reach == 1.12 ? std::hypot(1.12, 0.5) : c.reach;
        EXPECT_NEAR(reach, expected, 0.02);
    }
}

TEST_F(ValueTest, FixedTextAndMarksTakeEveryValue)
{
    const struct {
        const char *name, *param;
        std::vector<Given> values;
        Texts texts;
        size_t marks;
    } cases[] = {
        {"text",
         "text=*",
         {{0, 0, kTypeWindBarb, "", "", 90, 10}, {1, 1, kTypeValue, "", "", kMissing, 0}},
         {"*", "*"},
         0},
        {"mark", "mark=crcl", {{0, 0, kTypeWindBarb, "", "", 90, 10}}, {}, 1},
        {"mark for a text", "mark=crcl", {{0, 0, kTypeText, "", "x", kMissing, 0}}, {}, 1},
        {"mark without value", "mark=crcl", {{0, 0, kTypeText, "", "", kMissing, 0}}, {}, 0},
        {"cloud mark", "mark=cld", {{0, 0, kTypeValue, "", "", 5, 0}}, {}, 1},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        RES_put("plot_param", c.param);
        const Drawn drawn = draw(c.values);
        EXPECT_EQ(drawn.texts(), c.texts);
        EXPECT_EQ(show_strokes(drawn.page).empty(), c.marks == 0);
    }
}

TEST_F(ValueTest, LinesJoinPoints)
{
    const struct {
        const char *name, *param;
        std::vector<Given> values;
        Strokes strokes;
    } cases[] = {
        {"line",
         "line",
         {{0, 0, kTypeValue, "", "", 1, 0},
          {1, 1, kTypeValue, "", "", 2, 0},
          {2, 0, kTypeValue, "", "", 3, 0}},
         {"line 0.0,0.0 1.0,1.0", "line 1.0,1.0 2.0,0.0"}},
        {"bar", "ybar=-2", {{1, 3, kTypeValue, "", "", 1, 0}}, {"line 1.0,-2.0 1.0,3.0"}},
        {"before",
         nullptr,
         {{0, 0, kTypeText, "", "", 1, 0}, {3, 4, kTypePointLine, "", "pre", 2, 0}},
         {"line 0.0,0.0 3.0,4.0"}},
        {"behind",
         nullptr,
         {{1, 0, kTypePointLine, "", "post", 1, 0}, {3, 4, kTypeText, "", "", 2, 0}},
         {"line 1.0,0.0 3.0,4.0"}},
        {"to a place", nullptr, {{1, 0, kTypePointLine, "", "to", 5, 6}}, {"line 5.0,6.0 1.0,0.0"}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        PLT_clear_points();
        RES_put("plot_param", c.param);
        EXPECT_EQ(show_strokes(draw(c.values).page, 1), c.strokes);
    }
}

TEST_F(ValueTest, LevelsColourAndLimitsHide)
{
    RES_put("color_fill", "#FF0000,#00FF00,#0000FF");
    RES_put("con_interval", "5");
    const struct {
        const char *name, *base;
        int type;
        float value1, value2;
        int result;
        std::array<double, 3> rgb;
    } cases[] = {
        {"first band", "0", kTypePointLine, 2, kMissing, 0, {1, 0, 0}},
        {"second", "0", kTypePointLine, 7, kMissing, 0, {0, 1, 0}},
        {"on a level", "0", kTypePointLine, 10, kMissing, 0, {0, 0, 1}},
        {"below", "0", kTypePointLine, -3, kMissing, 0, {0, 0, 1}},
        {"another base", "2", kTypePointLine, 1, kMissing, 0, {0, 0, 1}},
        {"no base", nullptr, kTypePointLine, 7, kMissing, 0, {0, 1, 0}},
        {"wind by its speed", "0", kTypeWindBarb, 359, 12, 0, {0, 0, 1}},
        {"least", ">5", kTypePointLine, 2, kMissing, -1, {}},
        {"above the least", ">5", kTypePointLine, 6, kMissing, 0, {1, 0, 0}},
        {"most", "0,<10", kTypePointLine, 11, kMissing, -1, {}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        PLT_clear_points();
        RES_put("con_base", c.base);
        const Drawn drawn = draw(
            {{0, 0, kTypeText, "", "", 0, 0},
             {3, 3, c.type, "tx=", c.type == kTypePointLine ? "pre" : "", c.value1, c.value2}});
        EXPECT_EQ(drawn.results[1], c.result);
        ASSERT_EQ(drawn.page.strokes.empty(), c.result == -1);
        if (c.result == 0) {
            EXPECT_EQ(drawn.page.strokes[0].rgb, c.rgb);
        }
    }
}

TEST_F(ValueTest, NothingIsDrawnWhereDataAreOff)
{
    for (const int slot : {static_cast<int>(kDrawData), static_cast<int>(kDrawAll)}) {
        PRM_set_draw(slot, 0);
        const Drawn drawn = draw({{0, 0, kTypeText, "", "x", 0, 0}});
        EXPECT_EQ(drawn.results[0], -1);
        EXPECT_TRUE(drawn.page.texts.empty());
        PRM_set_draw(kDrawAll, 1);
    }
    PRM_set(kPrmPlotType, 99);
    EXPECT_EQ(draw({{0, 0, kTypeText, "", "x", 0, 0}}).results[0], -1);
    PRM_set(kPrmPlotType, kMissingInt);
}

TEST_F(ValueTest, NonsenseIsBorne)
{
    const std::string x(10000, 'x');
    RES_put("plot_param", (x + ",xy=" + x + ",mark=%s%n,skip=99999999999,ybar=1e99").c_str());
    RES_put("plot_format", ("%s%n%d:" + x + ":sc=1e999:hi=nan:wi=inf").c_str());
    RES_put("con_base", (">" + x + ",<%s," + x).c_str());
    RES_put("con_interval", "-0");
    ::testing::internal::CaptureStderr(); // the kernel tells sizes that can't be
    for (const float value : {0.0F, -1e38F, 1e38F, INFINITY, -INFINITY, NAN}) {
        for (int type = 0; type <= 41; ++type) {
            draw({{0, 0, type, "%99.99f:xy=1e30 1e30", "%n", value, value}});
        }
    }
    ::testing::internal::GetCapturedStderr();
}
