#include <algorithm>

#include "support/kernel_plot.h"
#include "support/run.h"
#include "support/scoped_env.h"
#include "tyr/gks/gks.h"
#include "tyr/gks/session.h"

namespace {

constexpr float kLine[4] = {0.0F, 0.0F, 0.5F, 0.5F};
constexpr float kArea[6] = {0.0F, 0.0F, 0.5F, 0.0F, 0.5F, 0.5F};

/// What stands behind the first clip rectangle, without the tail.
std::string body(KernelPlot &plot)
{
    const std::string text = plot.finish();
    const size_t start = text.find('\n', text.find("IW ")) + 1;
    return text.substr(start, text.find("SP;PG;") - start);
}

TEST(Hpgl, HeadAndTailByWord)
{
    const std::string pcl = "\033E\033%1B\033&l1O\n";
    const std::string end = "\033%0A\033E";
    struct Case {
        const char *words;
        std::string head, tail;
    };
    const Case cases[] = {
        {"", pcl + "IN;SP1;PA;\nPW0.2;SV;LT;\n", "SP;PG;\n" + end},
        {"nopcl", "IN;SP1;PA;\nPW0.2;SV;LT;\n", "SP;PG;\n"},
        {"lj", pcl + "IN;SP1;PA;\nRO90;\nPW0.2;SV;LT;\n", "SP;PG;\n" + end},
        {"lj,port", pcl + "IN;SP1;PA;\nRO90;\nRO90;\nPW0.2;SV;LT;\n", "SP;PG;\n" + end},
        {"nopcl,rot=270,lwidth=0.5", "IN;SP1;PA;\nRO270;\nPW0.5;SV;LT;\n", "SP;PG;\n"},
        {"nopcl,rot=45,land,lwidth=-1", "IN;SP1;PA;\nPW0.5;SV;LT;\n", "SP;PG;\n"},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.words);
        KernelPlot plot(kDeviceHpgl, c.words);
        const std::string text = plot.finish();
        EXPECT_EQ(text.substr(0, c.head.size()), c.head);
        ASSERT_GE(text.size(), c.tail.size());
        EXPECT_EQ(text.substr(text.size() - c.tail.size()), c.tail);
        EXPECT_EQ(text.find("IW"), c.head.size()); // the clip comes next
    }
}

TEST(Hpgl, PaperAndGeometryGiveTheSurface)
{
    struct Case {
        const char *name, *words, *geometry;
        int width, height, x, y;
    };
    const Case cases[] = {
        {"default", "", nullptr, 10150, 7612, 10, 10},
        {"roll", "roll=36", nullptr, 36032, 23345, 10, 10},
        {"a3", "a3", nullptr, 16280, 11357, 10, 10},
        {"quarter", "", "P2x2+1+0", 5075, 3806, 5075, 3806},
        {"measures", "", "100x200+10+20", 1015, 2030, 111, 213},
        {"size only", "", "100x200", 1015, 2030, 10, 10},
        {"offset only", "", "+10+20", 10150, 7612, 111, 213},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        const ScopedEnv geometry("tyrhp_geometry", c.geometry);
        const KernelPlot plot(kDeviceHpgl, c.words);
        int size[4];
        ginq_ws_size(&size[0], &size[1]);
        ginq_ws_offset(&size[2], &size[3]);
        EXPECT_EQ(size[0], c.width);
        EXPECT_EQ(size[1], c.height);
        EXPECT_EQ(size[2], c.x);
        EXPECT_EQ(size[3], c.y);
    }
}

TEST(Hpgl, LinesByHand)
{
    // the unit square is 7611 units, from (10, 10)
    KernelPlot plot(kDeviceHpgl, "lwidth=0.2");
    const float unit[8] = {0.0F, 0.0F, 1.0F, 0.0F, 1.0F, 1.0F, 0.5F, 0.5F};
    gpolyline(4, unit);
    gset_linetype(2);
    gset_linewidth(2.0F);
    gset_line_colr_ind(504);
    gpolyline(2, kLine);
    gpolyline(2, kLine);
    gset_linewidth(0.0F); // counts as 1
    gset_line_colr_ind(506);
    gpolyline(2, kLine);
    gset_line_colr_ind(3);
    gpolyline(2, kLine);
    const std::string line = "PU10,10;PD3816,3816;\n";
    EXPECT_EQ(body(plot), "PU10,10;PD7621,10;PD7621,7621;PD3816,3816;\n"
                          "PW0.8;\nSV1,0;\nLT2,5,1;\n" +
                              line + line + "PW0.2;\nSV1,30;\n" + line + "SV;\n" + line);
}

TEST(Hpgl, LongLinesBreakBehindEveryTenthPoint)
{
    KernelPlot plot(kDeviceHpgl);
    std::vector<float> points(2 * 25, 0.0F);
    gpolyline(25, points.data());
    gpolyline(10, points.data()); // a break behind the tenth, and the line's own end
    const std::string text = body(plot);
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 3 + 2);
    EXPECT_EQ(text.find('\n'), std::string("PU10,10;").size() * 10);
}

TEST(Hpgl, FillsAreShadesSentOnce)
{
    KernelPlot plot(kDeviceHpgl);
    GPH_set_colour(3, 1.0F, 0.5F, 0.0F); // grey 0.519
    const std::string area = "PU10,10;PM0;PD3816,10;PD3816,3816;PM1;PM2;FP;\n";
    gset_fill_int_style(2); // every style is filled
    gset_fill_colr_ind(3);
    gfill_area(3, kArea);
    gset_fill_colr_ind(-1);
    gfill_area(3, kArea);
    gfill_area(3, kArea);
    gset_fill_colr_ind(507);
    gfill_area(3, kArea);
    gset_fill_black(1);
    gfill_area(3, kArea);
    gset_fill_black(0);
    EXPECT_EQ(body(plot), "FT10,48;\n" + area + "FT10,0;\n" + area + area + "FT10,30;\n" + area +
                              "FT1;\n" + area);
}

TEST(Hpgl, MarkersAreInPlotterUnits)
{
    KernelPlot plot(kDeviceHpgl);
    gset_marker_type(2);
    gset_marker_size(1.0F); // 101.5 units, half of it cut to 50
    GPH_mark(0.0F, 0.0F);
    EXPECT_EQ(body(plot), "PU-40,10;PD60,10;\nPU10,60;PD10,-40;\n");
}

TEST(Hpgl, AppendedPlotsHaveNeitherHeadNorTail)
{
    const TempDir dir;
    const std::string path = dir.write("out.plt", "");
    gopen_gks(nullptr, 0);
    ASSERT_EQ(gopen_ws(1, ("+" + path + ",lwidth=0.2").c_str(), kDeviceHpgl), 0);
    gpolyline(2, kLine);
    EXPECT_EQ(gclose_ws(1), 0);
    const std::string text = read_file(path);
    EXPECT_EQ(text.rfind("PW0.2;SV;LT;\n", 0), 0U);
    EXPECT_EQ(text.find("SP;PG;"), std::string::npos);
}

TEST(Hpgl, EnvironmentTurnsPostScriptIntoIt)
{
    const ScopedEnv env_1("tyrprint", "HPGL");
    KernelPlot plot(kDevicePostScript, "nopcl");
    EXPECT_EQ(ginq_device(), kDeviceHpgl);
    EXPECT_EQ(plot.finish().rfind("IN;SP1;PA;\n", 0), 0U);
}

TEST(Hpgl, PlotterProgramDrawsIt)
{
    if (!have_program("hp2xx")) {
        GTEST_SKIP() << "hp2xx isn't installed";
    }
    const TempDir dir;
    KernelPlot plot(kDeviceHpgl, "nopcl");
    const float middle[2] = {0.1F, 0.5F};
    gset_char_ht(0.1F);
    gtext(middle, "HPGL plot");
    for (int type = 1; type <= 5; type++) {
        gset_linetype(type);
        gpolyline(2, kLine);
    }
    gfill_area(3, kArea);
    plot.finish();
    const std::string picture = dir.file("plot.pbm");
    const RunResult result = run({"hp2xx", "-q", "-m", "pbm", "-f", picture, plot.path()});
    EXPECT_EQ(result.code, 0) << result.err;
    EXPECT_GT(read_file(picture).size(), 1000U);
}

} // namespace
