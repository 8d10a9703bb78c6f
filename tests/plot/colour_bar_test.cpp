#include <algorithm>
#include <cmath>

#include "support/world_plot.h"
#include "tyr/base/missing.h"
#include "tyr/base/prm.h"
#include "tyr/base/res.h"
#include "tyr/gks/colour_table.h"
#include "tyr/gks/gks.h"
#include "tyr/plot/area.h"
#include "tyr/plot/colour_bar.h"
#include "tyr/plot/levels.h"

namespace {

struct Bar {
    int result = -1;
    std::vector<std::array<double, 3>> colours;    ///< of the boxes, left to right
    std::vector<std::string> labels;               ///< left to right
    std::vector<std::array<double, 2>> label_ends; ///< least and greatest x of each label's strokes
    std::vector<std::array<double, 3>> expected;   ///< of the values in the middle of the bands
    std::vector<PsPoint> box;                      ///< corners of the first box
    float plot[4] = {};
};

struct Given {
    const char *fill;
    float interval, base;
    const char *con_base;
    float low, high;
};

Bar draw(const Given &g, const std::vector<float> &middles = {}, const char *title = "")
{
    PRM_clear(kMissingInt);
    for (const char *name : {"plot_param", "color_fill", "color_text", "color_cont"}) {
        RES_put(name, nullptr);
    }
    RES_put("con_base", g.con_base);
    PLT_set_labels_inside(0);
    PLT_set_margins(0.05F, 0.05F, 0.08F, 0.04F);
    PlotSession session;
    CONT_reset();
    CONT_set_fill_colors(g.fill, 1);
    CONT_set_interval(g.interval);
    CONT_set_base(g.base);
    PLT_set_bar_range(g.low, g.high);
    gsel_norm_tran(1);
    Bar bar;
    PLT_get_viewport(bar.plot);
    for (const float value : middles) {
        AttrRec a;
        CONT_value_attr(value, &a);
        float rgb[3] = {-1, -1, -1};
        if (a.color >= 0) {
            CLR_get_rgb(a.color, &rgb[0], &rgb[1], &rgb[2]);
        }
        bar.expected.push_back({rgb[0], rgb[1], rgb[2]});
    }
    bar.result = PLT_color_bar(1, title);
    PsPage page = session.finish();
    EXPECT_EQ(page.error, "");
    for (const PsStroke &stroke : page.strokes) {
        if (stroke.filled && stroke.text < 0) {
            bar.colours.push_back(stroke.rgb);
            bar.box = bar.box.empty() ? stroke.points : bar.box;
        }
    }
    for (size_t i = 0; i < page.texts.size(); ++i) {
        bar.label_ends.push_back({1.0, 0.0});
        for (const PsStroke &stroke : strokes_of(page, static_cast<int>(i))) {
            for (const PsPoint &p : stroke.points) {
                bar.label_ends[i][0] = std::min(bar.label_ends[i][0], p[0]);
                bar.label_ends[i][1] = std::max(bar.label_ends[i][1], p[0]);
            }
        }
    }
    std::sort(page.texts.begin(), page.texts.end(),
              [](const PsText &a, const PsText &b) { return a.x < b.x; });
    for (const PsText &t : page.texts) {
        bar.labels.push_back(t.text);
    }
    std::sort(bar.label_ends.begin(), bar.label_ends.end());
    return bar;
}

constexpr const char *kThree = "#FF0000,#00FF00,#0000FF";

} // namespace

TEST(ColourBar, ShowsTheColoursThatValuesHave)
{
    const struct {
        const char *name;
        Given given;
        std::vector<float> middles;
        std::vector<std::string> labels;
    } cases[] = {
        {"from 0",
         {kThree, 5, 0, nullptr, 0, 15},
         {2.5F, 7.5F, 12.5F, 17.5F},
         {"0", "5.0", "10", "15", "20"}},
        {"without a base",
         {kThree, 5, kMissing, nullptr, 5, 14},
         {7.5F, 12.5F},
         {"5.0", "10", "15"}},
        {"below 0",
         {kThree, 5, kMissing, nullptr, -20, -11},
         {-17.5F, -12.5F},
         {"-20", "-15", "-10"}},
        {"another base", {kThree, 10, 3, nullptr, 0, 20}, {-2, 8, 18}, {"-7.0", "3.0", "13", "23"}},
        {"levels",
         {"0:#FF0000,10:#00FF00,25:#0000FF", kMissing, kMissing, nullptr, kMissing, kMissing},
         {5, 15, 30},
         {"0", "10", "25"}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        const Bar bar = draw(c.given, c.middles);
        EXPECT_EQ(bar.result, 0);
        EXPECT_EQ(bar.colours, bar.expected);
        EXPECT_EQ(bar.labels, c.labels);
    }
}

TEST(ColourBar, NoughtAsIntervalGivesANiceOne)
{
    // 15 rows: 100 / 14 rounded up is 8; bands from 0 to 104
    const Bar bar = draw({"1-15", 0, 0, nullptr, 0, 100});
    EXPECT_EQ(bar.result, 0);
    EXPECT_EQ(bar.colours.size(), 13U);
    ASSERT_EQ(bar.labels.size(), 14U);
    EXPECT_EQ(bar.labels[1], "8.0");
    EXPECT_EQ(bar.labels.back(), "104");
}

TEST(ColourBar, LongLabelsStandClearOfOneAnother)
{
    // 13 bands in half the width; the ends of the range stay
    const Bar bar = draw({"1-15", 50, 0, nullptr, 4950, 5599});
    ASSERT_GE(bar.labels.size(), 5U);
    EXPECT_EQ(bar.labels.front(), "4950");
    EXPECT_EQ(bar.labels.back(), "5600");
    for (size_t i = 1; i < bar.label_ends.size(); ++i) {
        EXPECT_GT(bar.label_ends[i][0], bar.label_ends[i - 1][1]) << bar.labels[i];
    }
}

TEST(ColourBar, LiesInTheLeftHalfOfTheMargin)
{
    const Bar bar = draw({kThree, 5, 0, nullptr, 0, 10}, {}, "title");
    ASSERT_EQ(bar.result, 0);
    ASSERT_GE(bar.box.size(), 4U);
    const double width = bar.plot[1] - bar.plot[0];
    const double room = 0.035;
    double low = 1.0;
    double high = 0.0;
    double left = 1.0;
    for (const PsPoint &p : bar.box) {
        low = std::min(low, p[1]);
        high = std::max(high, p[1]);
        left = std::min(left, p[0]);
    }
    const double top = bar.plot[2] - 0.15 * room;
    const double bottom = bar.plot[2] - room;
    EXPECT_NEAR(left, bar.plot[0] + 0.03 * width, 2e-3);
    EXPECT_NEAR(high, top, 2e-3);
    EXPECT_NEAR(low, (top + bottom) / 2.0, 2e-3);
    EXPECT_EQ(bar.labels.back(), "title");
}

TEST(ColourBar, WithoutARangeOrTooManyBandsThereIsNone)
{
    const struct {
        const char *name;
        Given given;
    } cases[] = {
        {"no range", {kThree, 5, 0, nullptr, kMissing, kMissing}},
        {"no interval", {kThree, kMissing, 0, nullptr, 0, 10}},
        {"too many", {kThree, 0.001F, 0, nullptr, 0, 100}},
        {"endless", {kThree, 5, 0, nullptr, -1e38F, 1e38F}},
        {"no number", {kThree, 5, 0, nullptr, NAN, 10}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        const Bar bar = draw(c.given);
        EXPECT_EQ(bar.result, -1);
        EXPECT_TRUE(bar.colours.empty());
    }
}

TEST(ColourBar, ConBaseGivesTheRange)
{
    const Bar bar = draw({kThree, 5, kMissing, ">10,<24", kMissing, kMissing});
    EXPECT_EQ(bar.result, 0);
    EXPECT_EQ(bar.labels, (std::vector<std::string>{"10", "15", "20", "25"}));
    EXPECT_EQ(draw({kThree, 5, kMissing, ">x,<,%s%n", kMissing, kMissing}).labels.size(), 2U);
}

TEST(ColourBar, IsDueOnceInARun)
{
    PLT_set_bar_mode(-2);
    EXPECT_EQ(PLT_bar_due(), 0);
    PLT_set_bar_mode(2);
    EXPECT_EQ(PLT_bar_due(), 1);
    EXPECT_EQ(PLT_bar_due(), 0);
    PLT_set_bar_mode(0);
}
