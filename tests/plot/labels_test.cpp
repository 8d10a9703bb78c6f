#include <algorithm>
#include <cmath>

#include "support/world_plot.h"
#include "tyr/base/prm.h"
#include "tyr/base/res.h"
#include "tyr/plot/area.h"
#include "tyr/plot/colour_bar.h"
#include "tyr/plot/labels.h"

namespace {

struct Labels : ::testing::Test {
    Labels()
    {
        PRM_clear(kMissingInt);
        PRM_set_draw(kDrawAll, 1);
        for (const char *name : {"label", "plot_param", "draw", "color_text"}) {
            RES_put(name, nullptr);
        }
        PLT_set_label_offset(0);
        PLT_clear_labels();
        PLT_set_label_mode(kLabelsNormal);
        PLT_set_label_line(0);
        PLT_set_bar_mode(0);
        PLT_set_labels_inside(0);
        PLT_set_margins(0.05F, 0.05F, 0.04F, 0.04F);
    }
};

const PsText *find_text(const PsPage &page, const std::string &text)
{
    const auto found = std::find_if(page.texts.begin(), page.texts.end(),
                                    [&](const PsText &t) { return t.text == text; });
    return found == page.texts.end() ? nullptr : &*found;
}

} // namespace

TEST_F(Labels, LinesFollowTheMode)
{
    const struct {
        const char *name;
        int mode;
        std::vector<std::pair<int, std::string>> given; ///< line and text
        std::string line0, line1;
        int count;
    } cases[] = {
        {"normal", kLabelsNormal, {{0, "a"}, {1, "b"}}, "a", "b", 1},
        {"complete", kLabelsComplete, {{0, "a"}, {1, "b"}}, "a", "b", 1},
        {"simple joins", kLabelsSimple, {{0, "a"}, {1, "b"}}, "a b", "", 1},
        {"minimal joins", kLabelsMinimal, {{0, "a"}, {3, "b"}, {1, "c"}}, "a b c", "", 3},
        {"later replaces", kLabelsNormal, {{0, "a"}, {0, "b"}}, "b", "", 0},
        {"line below 0", kLabelsNormal, {{-1, "a"}}, "", "", 0},
        {"line beyond 5", kLabelsNormal, {{9, "a"}}, "", "", 5},
        {"joined too long",
         kLabelsSimple,
         {{0, std::string(50, 'a')}, {1, "0123456789"}},
         std::string(50, 'a'),
         "",
         1},
        {"joined just fits",
         kLabelsSimple,
         {{0, std::string(50, 'a')}, {1, "123456789"}},
         std::string(50, 'a') + " 123456789",
         "",
         1},
        {"cut", kLabelsNormal, {{0, std::string(10000, 'x')}}, std::string(69, 'x'), "", 0},
        {"full isn't replaced",
         kLabelsNormal,
         {{0, std::string(69, 'x')}, {0, "b"}},
         std::string(69, 'x'),
         "",
         0},
        {"directives", kLabelsNormal, {{0, "%s%n%d"}}, "%s%n%d", "", 0},
    };
    void (*const slots[])(const char *) = {PLT_label_ul, PLT_label_uc, PLT_label_ur,
                                           PLT_label_ll, PLT_label_lc, PLT_label_lr};
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        for (int slot = 0; slot < kLabelSlots; ++slot) {
            PLT_clear_labels();
            PLT_set_label_mode(c.mode);
            for (const auto &[line, text] : c.given) {
                PLT_set_label_line(line);
                slots[slot](text.c_str());
            }
            EXPECT_EQ(PLT_get_label(slot, 0), c.line0);
            EXPECT_EQ(PLT_get_label(slot, 1), c.line1);
            EXPECT_STREQ(PLT_get_label((slot + 1) % kLabelSlots, 0), "");
            EXPECT_EQ(PLT_get_label_count(), c.count);
        }
    }
    EXPECT_STREQ(PLT_get_label(-1, 0), "");
    EXPECT_STREQ(PLT_get_label(6, 0), "");
    EXPECT_STREQ(PLT_get_label(0, 6), "");
}

TEST_F(Labels, CountsAndOffsetsAreBounded)
{
    PLT_set_label_count(3);
    PLT_set_label_count(2);
    EXPECT_EQ(PLT_get_label_count(), 3);
    PLT_set_label_count(-8);
    EXPECT_EQ(PLT_get_label_count(), 8);
    PLT_set_label_count(-2);
    EXPECT_EQ(PLT_get_label_count(), 2);
    PLT_set_label_offset(99);
    EXPECT_EQ(PLT_get_label_offset(), 5);
    EXPECT_EQ(PLT_get_label_count(), 5);
}

TEST_F(Labels, AnOpenPlotIsEndedThoughNothingIsToBeDrawnByThen)
{
    PlotSession session;
    ASSERT_EQ(session.begun(), 0);
    PRM_set_draw(kDrawAll, 0);
    EXPECT_TRUE(session.finish().shown);
}

TEST_F(Labels, SlotsStandAroundThePlotArea)
{
    PlotSession session;
    ASSERT_EQ(session.begun(), 0);
    PLT_label_ul("UL");
    PLT_label_uc("UC");
    PLT_label_ur("UR");
    PLT_label_ll("LL");
    PLT_label_lc("LC");
    PLT_label_lr("LR");
    PLT_set_label_line(1);
    PLT_label_ul("UL1");
    PLT_label_ll("LL1");
    PLT_set_label_line(2);
    PLT_set_label_line(0);
    float plot[4];
    PLT_get_viewport(plot);
    EXPECT_EQ(PLT_draw_labels(), 0);
    const PsPage page = session.finish();
    ASSERT_EQ(page.error, "");
    // two lines share the margin below the plot
    const double width = plot[1] - plot[0];
    const double h = std::min(plot[2] / 2.0, 0.03 * (plot[3] - plot[2]));
    const struct {
        const char *text;
        double x, y;
    } cases[] = {
        {"UL", plot[0] + 0.01 * width, plot[3] + 0.2 * h},
        {"UL1", plot[0] + 0.01 * width, plot[3] + 1.2 * h},
        {"UC", plot[0] + 0.5 * width, plot[3] + 0.2 * h},
        {"UR", plot[1] - 0.01 * width, plot[3] + 0.2 * h},
        {"LL", plot[0] + 0.01 * width, plot[2] - 1.2 * h},
        {"LL1", plot[0] + 0.01 * width, plot[2] - 0.2 * h},
        {"LC", plot[0] + 0.5 * width, plot[2] - 1.2 * h},
        {"LR", plot[1] - 0.01 * width, plot[2] - 1.2 * h},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.text);
        const PsText *text = find_text(page, c.text);
        ASSERT_NE(text, nullptr);
        EXPECT_NEAR(text->x, c.x, 1e-3);
        EXPECT_NEAR(text->y, c.y, 1e-3);
        EXPECT_EQ(text->message, "Labels");
    }
}

TEST_F(Labels, ResourceLabelAddsAndReplaces)
{
    const struct {
        const char *name, *resource;
        std::vector<std::string> drawn, missing;
    } cases[] = {
        {"none", nullptr, {"UL", "UL1", "UR"}, {}},
        {"replaces a slot", "ul:mine", {"mine", "UR"}, {"UL", "UL1"}},
        {"a line", "ul1:mine", {"UL", "mine", "UR"}, {"UL1"}},
        {"a further line", "ur2:more", {"UL", "UL1", "UR", "more"}, {}},
        {"several", "ul:a b,LR:c_d", {"a b", "c d", "UR"}, {"UL", "UL1"}},
        {"date", "ul:%y", {"99", "UR"}, {"UL"}},
        {"others", "zz:x,ul,u:y,ul12:z,%s%n", {"UL", "UL1", "UR"}, {"x", "y", "z"}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        PLT_clear_labels();
        PLT_set_label_line(0);
        RES_put("label", c.resource);
        PlotSession session;
        DateRec date;
        date.year = 1999;
        date.month = 3;
        date.day = 6;
        PLT_set_label_date(&date);
        PLT_label_ul("UL");
        PLT_label_ur("UR");
        PLT_set_label_line(1);
        PLT_label_ul("UL1");
        PLT_set_label_line(0);
        PLT_draw_labels();
        const PsPage page = session.finish();
        for (const std::string &text : c.drawn) {
            EXPECT_NE(find_text(page, text), nullptr) << text;
        }
        for (const std::string &text : c.missing) {
            EXPECT_EQ(find_text(page, text), nullptr) << text;
        }
    }
    RES_put("label", ("ul:" + std::string(10000, 'x') + ",ur:" + std::string(10000, '%')).c_str());
    PlotSession session;
    PLT_draw_labels();
    EXPECT_EQ(session.finish().error, "");
}

TEST_F(Labels, DrawComponentsAndMarginsTakeLabelsAway)
{
    const struct {
        const char *name;
        int slot; ///< draw component switched off, -1 none
        const char *param;
        int bar, result;
        bool upper_left, lower_left, lower_right, border;
    } cases[] = {
        {"all", -1, nullptr, 0, 0, true, true, true, true},
        {"upper left", kDrawTextUl, nullptr, 0, 0, false, true, true, true},
        {"all texts", kDrawText, nullptr, 0, 0, false, false, false, true},
        {"border", kDrawBorder, nullptr, 0, 0, true, true, true, false},
        {"colour bar", -1, nullptr, 2, 0, true, false, true, true},
        {"full surface", -1, "full", 0, -1, false, false, false, true},
        {"inside", -1, "fullab", 0, 0, true, true, true, true},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        PRM_set_draw(kDrawAll, 1);
        PLT_set_labels_inside(0);
        PLT_set_margins(0.05F, 0.05F, 0.04F, 0.04F);
        RES_put("plot_param", c.param);
        PlotSession session;
        if (c.slot >= 0) {
            PRM_set_draw(c.slot, 0);
        }
        PLT_set_bar_mode(c.bar);
        PLT_label_ul("UL");
        PLT_label_ll("LL");
        PLT_label_lr("LR");
        float plot[4];
        PLT_get_viewport(plot);
        EXPECT_EQ(PLT_draw_labels(), c.result);
        const PsPage page = session.finish();
        EXPECT_EQ(find_text(page, "UL") != nullptr, c.upper_left);
        EXPECT_EQ(find_text(page, "LL") != nullptr, c.lower_left);
        EXPECT_EQ(find_text(page, "LR") != nullptr, c.lower_right);
        EXPECT_EQ(!strokes_of(page, -1).empty(), c.border);
        if (std::string(c.name) == "inside") {
            EXPECT_LT(find_text(page, "UL")->y, plot[3]);
            EXPECT_GT(find_text(page, "LL")->y, plot[2]);
        }
        PRM_set_draw(kDrawAll, 1);
    }
}
