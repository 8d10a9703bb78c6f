#include <functional>

#include "support/kernel_plot.h"
#include "tyr/gks/gks.h"
#include "tyr/gks/session.h"

namespace {

using Strings = std::vector<std::string>;

constexpr float kDiagonal[4] = {0.0F, 0.0F, 0.5F, 0.5F};
constexpr const char *kDiagonalPoints = "0.00,0.00 287.50,287.50";

std::string said(const std::function<void()> &work)
{
    testing::internal::CaptureStderr();
    work();
    return testing::internal::GetCapturedStderr();
}

TEST(Attributes, BadValuesAreReportedAndChangeNothing)
{
    struct Case {
        const char *message;
        std::function<int()> call;
    };
    const Case cases[] = {
        {"gset_linetype: invalid line type: -1\n\n", [] { return gset_linetype(-1); }},
        {"gset_linewidth: invalid line width: -0.500000\n\n", [] { return gset_linewidth(-0.5F); }},
        {"gset_line_colr_ind: invalid color index: 257\n\n",
         [] { return gset_line_colr_ind(257); }},
        {"gset_line_colr_ind: invalid color index: -2\n\n", [] { return gset_line_colr_ind(-2); }},
        {"gset_marker_colr_ind: invalid color index: 499\n\n",
         [] { return gset_marker_colr_ind(499); }},
        {"gset_marker_size: invalid marker size: -1.000000\n\n",
         [] { return gset_marker_size(-1); }},
        {"gset_marker_width: invalid marker width: -1.000000\n\n",
         [] { return gset_marker_width(-1); }},
        {"gset_fill_colr_ind: invalid color index: 509\n\n",
         [] { return gset_fill_colr_ind(509); }},
        {"gset_fill_style_ind: invalid style index: 20\n\n",
         [] { return gset_fill_style_ind(20); }},
        {"gset_fill_style_ind: invalid style index: -1\n\n",
         [] { return gset_fill_style_ind(-1); }},
        {"gset_text_colr_ind: invalid color index: 300\n\n",
         [] { return gset_text_colr_ind(300); }},
        {"gset_expan: invalid expansion factor: -1.000000\n\n", [] { return gset_expan(-1); }},
        {"gset_text_width: invalid text width: -1.000000\n\n", [] { return gset_text_width(-1); }},
        {"gset_char_ht: invalid character height: -1.000000\n\n", [] { return gset_char_ht(-1); }},
        {"gpolyline: invalid number of points: 1\n\n", [] { return gpolyline(1, kDiagonal); }},
        {"gset_fontprec: invalid font id: 99\n",
         [] {
             const int font[2] = {99, 2};
             return gset_fontprec(font);
         }},
        {"gset_colr_rep: invalid color index: 257\n\n",
         [] {
             const float rgb[3] = {1, 0, 0};
             return gset_colr_rep(1, 257, rgb);
         }},
    };
    KernelPlot plot(kDevicePostScript, "color");
    for (const Case &c : cases) {
        SCOPED_TRACE(c.message);
        EXPECT_EQ(said([&] { EXPECT_EQ(c.call(), -1); }), c.message);
    }
    gpolyline(2, kDiagonal);
    EXPECT_EQ(describe(plot.page().strokes),
              Strings{std::string("line 0.00,0.00,0.00 w0.33 [] ") + kDiagonalPoints});
}

TEST(Attributes, NothingWorksBeforeOpening)
{
    EXPECT_EQ(said([] { EXPECT_EQ(gpolyline(2, kDiagonal), -1); }), ""); // nobody listens yet
    gopen_gks(nullptr, 0);
    const std::function<int()> calls[] = {
        [] { return gpolyline(2, kDiagonal); },        [] { return gpolymarker(2, kDiagonal); },
        [] { return gtext(kDiagonal, "x"); },          [] { return gset_linetype(2); },
        [] { return gset_line_colr_ind(2); },          [] { return gset_marker_type(2); },
        [] { return gset_fill_int_style(2); },         [] { return gset_text_colr_ind(2); },
        [] { return gset_colr_rep(1, 2, kDiagonal); },
    };
    for (const auto &call : calls) {
        const std::string text = said([&] { EXPECT_EQ(call(), -1); });
        EXPECT_NE(text.find(": GKS not opened\n"), std::string::npos) << text;
    }
    EXPECT_EQ(gfill_area(2, kDiagonal), 0);
    EXPECT_EQ(gclose_ws(1), -1);
    gclose_gks();
}

TEST(Line, TypesAndWidthsStandAheadOfThePath)
{
    struct Case {
        int type;
        float width;
        const char *expected;
    };
    const Case cases[] = {
        {1, 1.0F, "line 0.00,0.00,0.00 w0.33 [] "},
        {2, 2.0F, "line 0.00,0.00,0.00 w0.66 [6] "},
        {3, 0.5F, "line 0.00,0.00,0.00 w0.17 [3 6] "}, // 0.165, and 0.5 dots are sent
        {4, 0.0F, "line 0.00,0.00,0.00 w0.33 [6 6 3 6] "},
        {5, 3.0F, "line 0.00,0.00,0.00 w0.99 [2] "},
        {9, 3.0F, "line 0.00,0.00,0.00 w0.99 [2] "}, // unknown types keep the pattern
        {1, 1.0F, "line 0.00,0.00,0.00 w0.33 [] "},
    };
    KernelPlot plot(kDevicePostScript);
    Strings expected;
    for (const Case &c : cases) {
        gset_linetype(c.type);
        gset_linewidth(c.width);
        gpolyline(2, kDiagonal);
        expected.push_back(c.expected + std::string(kDiagonalPoints));
    }
    EXPECT_EQ(describe(plot.page().strokes), expected);
}

TEST(Line, OutsideIsDroppedAndCrossingGoesOutWhole)
{
    KernelPlot plot(kDevicePostScript);
    const float outside[4] = {-0.5F, 0.2F, -0.1F, 0.4F};
    const float crossing[4] = {-1.0F, 0.5F, 2.0F, 0.5F};
    EXPECT_EQ(gpolyline(2, outside), 0);
    EXPECT_EQ(gpolyline(2, crossing), 0);
    EXPECT_EQ(describe(plot.page().strokes),
              Strings{"line 0.00,0.00,0.00 w0.33 [] -575.00,287.50 1150.00,287.50"});
}

TEST(Line, ManyPointsComeOutInOrder)
{
    KernelPlot plot(kDevicePostScript);
    std::vector<float> points;
    for (int i = 0; i < 1000; i++) {
        points.push_back(static_cast<float>(i) / 1000.0F);
        points.push_back(i % 2 == 0 ? 0.25F : 0.75F);
    }
    gpolyline(1000, points.data());
    const PsPage page = plot.page();
    ASSERT_EQ(page.strokes.size(), 1U);
    ASSERT_EQ(page.strokes[0].points.size(), 1000U);
    EXPECT_NEAR(page.strokes[0].points[999][0], 574.425, 0.006);
    EXPECT_NEAR(page.strokes[0].points[999][1], 431.25, 0.006);
}

TEST(Marker, ShapesOfAllTypes)
{
    // at (287.5, 287.5) with size 1: 7.2 points wide, half of it cut to 3
    struct Case {
        int type;
        Strings strokes;
    };
    const Case cases[] = {
        {1, {"287.50,287.50 288.50,287.50 288.50,288.50 287.50,288.50 287.50,287.50"}},
        {2, {"284.50,287.50 290.50,287.50", "287.50,290.50 287.50,284.50"}},
        {3,
         {"284.50,287.50 290.50,287.50", "284.50,284.50 290.50,290.50",
          "287.50,290.50 287.50,284.50", "290.50,284.50 284.50,290.50"}},
        {4,
         {"284.50,287.50 284.90,289.00 286.00,290.10 287.50,290.50 289.00,290.10 290.10,289.00 "
          "290.50,287.50 290.10,286.00 289.00,284.90 287.50,284.50 286.00,284.90 284.90,286.00 "
          "284.50,287.50"}},
        {5, {"284.50,284.50 290.50,290.50", "290.50,284.50 284.50,290.50"}},
        {6, {"284.50,290.50 290.50,290.50 290.50,284.50 284.50,284.50 284.50,290.50"}},
        {7, {"284.50,290.50 290.50,290.50 287.50,284.50 284.50,290.50"}},
        {8, {"287.50,287.50 288.50,287.50"}},
        {9, {"284.50,284.50 290.50,284.50 287.50,290.50 284.50,284.50"}},
        {10, {}},
        {0, {}},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.type);
        KernelPlot plot(kDevicePostScript);
        gset_marker_size(1.0F);
        gset_marker_type(c.type);
        GPH_mark(0.5F, 0.5F);
        Strings expected;
        for (const std::string &points : c.strokes) {
            expected.push_back("line 0.00,0.00,0.00 w0.33 [] " + points);
        }
        const PsPage page = plot.page();
        EXPECT_EQ(page.error, "");
        EXPECT_EQ(describe(page.strokes), expected);
    }
}

TEST(Marker, EachPointGetsItsMarkerSolidAndInItsColour)
{
    KernelPlot plot(kDevicePostScript, "color");
    GPH_set_colour(3, 0.0F, 0.5F, 0.25F);
    gset_linetype(2);
    gpolyline(2, kDiagonal);
    gset_marker_type(2);
    gset_marker_size(0.5F);
    gset_marker_width(2.0F);
    gset_marker_colr_ind(3);
    EXPECT_EQ(gpolymarker(2, kDiagonal), 0);
    const Strings strokes = describe(plot.page().strokes);
    ASSERT_EQ(strokes.size(), 5U);
    EXPECT_EQ(strokes[1], "line 0.00,0.50,0.25 w0.66 [] -1.00,0.00 1.00,0.00");
    EXPECT_EQ(strokes[3], "line 0.00,0.50,0.25 w0.66 [] 286.50,287.50 288.50,287.50");
}

TEST(Fill, SolidAreasAreFilledAndPatternsStayEmptyOnPostScript)
{
    KernelPlot plot(kDevicePostScript, "color");
    GPH_set_colour(2, 1.0F, 0.0F, 0.0F);
    const float triangle[6] = {0.0F, 0.0F, 0.4F, 0.0F, 0.0F, 0.4F};
    gset_fill_colr_ind(2);
    gfill_area(3, triangle);
    gset_fill_int_style(2);
    gset_fill_style_ind(5);
    gfill_area(3, triangle);
    const PsPage page = plot.page();
    ASSERT_EQ(describe(page.strokes),
              Strings{"fill 1.00,0.00,0.00 w0.33 [] 0.00,0.00 230.00,0.00 0.00,230.00"});
    EXPECT_TRUE(page.strokes[0].closed);
}

TEST(Fill, PatternsAreTheTwentyDensitiesAndHatchings)
{
    // of the ten densities the count of set bits rises from none to all
    int before = -1;
    for (int i = 10; i < 20; i++) {
        int bits = 0;
        for (int row = 0; row < 8; row++) {
            bits += __builtin_popcount(gfill_pattern(i)[row]);
        }
        EXPECT_GT(bits, before) << i;
        before = bits;
    }
    EXPECT_EQ(before, 64);
    EXPECT_EQ(gfill_pattern(6)[3], 0x18);
    EXPECT_EQ(gfill_pattern(20), nullptr);
    EXPECT_EQ(gfill_pattern(-1), nullptr);
}

TEST(Session, RectanglesGoRoundTheirCorners)
{
    KernelPlot plot(kDevicePostScript);
    const float r[4] = {0.2F, 0.4F, 0.6F, 0.8F};
    GPH_rect(r);
    GPH_box(0.2F, 0.6F, 0.4F, 0.8F);
    const Strings strokes = describe(plot.page().strokes);
    ASSERT_EQ(strokes.size(), 2U);
    EXPECT_EQ(strokes[0], "line 0.00,0.00,0.00 w0.33 [] 115.00,345.00 230.00,345.00 230.00,460.00 "
                          "115.00,460.00 115.00,345.00");
    EXPECT_EQ(strokes[1], strokes[0]);
}

} // namespace
