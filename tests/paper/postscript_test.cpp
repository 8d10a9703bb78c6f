
#include "support/kernel_plot.h"
#include "support/run.h"
#include "support/scoped_env.h"
#include "tyr/base/res.h"
#include "tyr/gks/gks.h"
#include "tyr/gks/session.h"
#include "tyr/paper/grey.h"
#include "tyr/paper/postscript.h"

namespace {

using Strings = std::vector<std::string>;

constexpr float kLine[4] = {0.0F, 0.0F, 0.5F, 0.5F};
constexpr float kArea[6] = {0.0F, 0.0F, 0.5F, 0.0F, 0.5F, 0.5F};

/// The text from the first occurrence of a mark on.
std::string from(const std::string &text, const std::string &mark)
{
    const size_t at = text.find(mark);
    return at == std::string::npos ? "" : text.substr(at);
}

std::string before(const std::string &text, const std::string &mark)
{
    return text.substr(0, text.find(mark));
}

TEST(PostScript, HeadOfAPlainPage)
{
    const ScopedEnv env_1("SOURCE_DATE_EPOCH", "920723400");
    const ScopedEnv env_2("TZ", "UTC");
    KernelPlot plot(kDevicePostScript, "gray,land,noeps");
    const std::string head = before(plot.finish(), "initclip");
    EXPECT_EQ(head, "%!PS-Adobe-1.0\n"
                    "%%Title: TYR Graphics Display: X11_Graph\n"
                    "%%Creator: TYR Postscript Processor-2.0\n"
                    "%%CreationDate: Sat Mar  6 12:30:00 1999\n"
                    "%%EndComments\n"
                    "%%Postscript initialization\n"
                    "30 dict begin\n"
                    "/saveobj save def\n"
                    "/inch {72 mul} def\n"
                    "/dot {.33 mul} def\n"
                    "/mv {moveto} def\n"
                    "/ln {lineto} def\n"
                    "/lw {setlinewidth} def\n"
                    "/np {newpath} def\n"
                    "/cp {closepath} def\n"
                    "90 rotate\n"
                    ".25 inch -8.25 inch translate\n"
                    "0 setgray\n"
                    "2 setlinejoin\n"
                    "1 dot lw\n"
                    "[] 0 setdash\n"
                    "%%Begin plot\n"
                    "%%TYR Plot: X11_Graph\n");
}

TEST(PostScript, WordsChangeTheHead)
{
    struct Case {
        const char *words;
        const char *has, *lacks;
    };
    const Case cases[] = {
        {"", "saveobj restore\nshowpage\nend\n%%EOF\n", " scale\n"},
        {"port", ".25 inch .25 inch translate\n", "rotate"},
        {"port,land", "90 rotate\n", "scale"},
        {"EPS", "%!PS-Adobe-3.0 EPSF-3.0\n%%BoundingBox: 0 0 576 756\n", "30 dict begin"},
        {"eps", "90 rotate\n0. inch -8.50 inch translate\n", "saveobj"},
        {"eps,port", "%%BoundingBox: 0 0 756 576\n", "translate"},
        {"eps", "%%End of plot\nshowpage\n%%EOF\n", "end\n%%EOF"},
        {"eps,noeps", "%!PS-Adobe-1.0\n", "EPSF"},
        {"color", "0 0 0 setrgbcolor\n2 setlinejoin", "setgray"},
        {"color,gray", "0 setgray\n2 setlinejoin", "setrgbcolor"},
        {"scale=0.5", "0.50 0.50 scale\n%%Begin plot", "1.00 scale"},
        {"scale=1", "%%Begin plot", " scale\n"},
        {"scale=0", "%%Begin plot", " scale\n"}, // a page of no size isn't one
        {"a4", ".25 inch -8.01 inch translate\n", "8.25"},
        {"nonsense,SZ=20x10", ".25 inch -9.75 inch translate\n", "8.25"},
        {"sz=0x-3", ".25 inch -8.25 inch translate\n", "nan"},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.words);
        gps_set_eps(0);
        gps_set_portrait(0);
        gps_set_color(0);
        gps_set_scale(1.0F);
        KernelPlot plot(kDevicePostScript, c.words);
        const std::string text = plot.finish();
        EXPECT_NE(text.find(c.has), std::string::npos) << text.substr(0, 800);
        EXPECT_EQ(text.find(c.lacks), std::string::npos) << text.substr(0, 800);
    }
}

TEST(PostScript, PaperAndGeometryGiveTheSurface)
{
    struct Case {
        const char *name, *words, *geometry;
        int width, height, x, y;
    };
    const Case cases[] = {
        {"letter", "", nullptr, 756, 576, 0, 0},
        {"a4", "a4", nullptr, 805, 558, 0, 0}, // 11.19 and 7.76 inches of 72 points
        {"legal", "LEGAL", nullptr, 972, 576, 0, 0},
        {"tabloid", "11x17", nullptr, 1188, 756, 0, 0},
        {"own size", "sz=8.5x11", nullptr, 576, 756, 0, 0},
        {"panel", "", "P2x2+1+0", 378, 288, 378, 288}, // top right quarter
        {"ninth", "", "p3x3+1+1", 252, 192, 252, 192},
        {"ninth, below", "", "P3x3+0+2", 252, 192, 0, 0},
        {"sixths, whole", "", "P6x6+4+4", 126, 96, 504, 96},
        {"too many panels", "", "P20x1+0+0", 94, 576, 0, 0},
        {"fractions", "", "P0.5x0.25+0.25+0.5", 378, 144, 189, 288},
        {"measures", "", "1000x500+100+50", 720, 360, 72, 36},
        {"negative offset", "", "1000x500-100+50", 720, 360, -72, 36},
        {"size only", "", "1000x500", 720, 360, 0, 0},
        {"offset only", "", "+100+50", 756, 576, 72, 36},
        {"nonsense", "", "wide", 756, 576, 0, 0},
        {"no size", "", "0x0+10+10", 756, 576, 0, 0},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        const ScopedEnv geometry("PSGEOMETRY", c.geometry);
        testing::internal::CaptureStderr();
        const KernelPlot plot(kDevicePostScript, c.words);
        const std::string said = testing::internal::GetCapturedStderr();
        int size[4];
        ginq_ws_size(&size[0], &size[1]);
        ginq_ws_offset(&size[2], &size[3]);
        EXPECT_EQ(size[0], c.width);
        EXPECT_EQ(size[1], c.height);
        EXPECT_EQ(size[2], c.x);
        EXPECT_EQ(size[3], c.y);
        const bool bad = std::string(c.name) == "nonsense" || std::string(c.name) == "no size";
        EXPECT_EQ(said,
                  bad ? "gopen_ws: invalid geometry: " + std::string(c.geometry) + "\n\n" : "");
    }
    EXPECT_EQ(ginq_depth(), 10);
}

TEST(PostScript, GeometryIsLookedForInOrder)
{
    const ScopedEnv env_3("PSGEOMETRY", "100x100");
    const ScopedEnv env_4("tyrps_geometry", "200x200");
    int width = 0;
    int height = 0;
    {
        const KernelPlot plot(kDevicePostScript);
        ginq_ws_size(&width, &height);
        EXPECT_EQ(width, 144);
    }
    RES_put("geometry", "300x300");
    const KernelPlot plot(kDevicePostScript);
    ginq_ws_size(&width, &height);
    EXPECT_EQ(width, 216);
    RES_put("geometry", "");
}

TEST(PostScript, EnvironmentWordsComeFirst)
{
    const ScopedEnv env_5("tyrps_param", "port,a4,color");
    KernelPlot plot(kDevicePostScript, "letter");
    int width = 0;
    int height = 0;
    ginq_ws_size(&width, &height);
    EXPECT_EQ(width, 756);
    EXPECT_EQ(ginq_invert(), 1); // by the word color
    EXPECT_EQ(plot.page().rotation, 0.0);
}

TEST(PostScript, ColoursInGreyAndInColour)
{
    struct Case {
        const char *name, *words;
        int colour;
        const char *line, *fill;
    };
    // grey of (1, 0.5, 0): (0.9 + 0.5) / 2.7 = 0.519
    const Case cases[] = {
        {"grey mode", "gray", 3, "line 0.00,0.00,0.00", "fill 0.52,0.52,0.52"},
        {"colour mode", "color", 3, "line 1.00,0.50,0.00", "fill 1.00,0.50,0.00"},
        {"background, grey", "gray", -1, "line 0.00,0.00,0.00", "fill 1.00,1.00,1.00"},
        {"background, colour", "color", -1, "line 1.00,1.00,1.00", "fill 1.00,1.00,1.00"},
        {"print black", "color", 500, "line 0.00,0.00,0.00", "fill 0.00,0.00,0.00"},
        {"print white", "color", 504, "line 1.00,1.00,1.00", "fill 1.00,1.00,1.00"},
        {"print grey", "gray", 508, "line 0.70,0.70,0.70", "fill 0.70,0.70,0.70"},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        KernelPlot plot(kDevicePostScript, c.words);
        GPH_set_colour(3, 1.0F, 0.5F, 0.0F);
        gset_line_colr_ind(c.colour);
        gset_fill_colr_ind(c.colour);
        gpolyline(2, kLine);
        gfill_area(3, kArea);
        const Strings strokes = describe(plot.page().strokes);
        ASSERT_EQ(strokes.size(), 2U);
        EXPECT_EQ(strokes[0].substr(0, 19), c.line);
        EXPECT_EQ(strokes[1].substr(0, 19), c.fill);
    }
}

TEST(PostScript, ReversedAndBlackFills)
{
    gps_set_reverse(1);
    KernelPlot plot(kDevicePostScript, "gray");
    GPH_set_colour(3, 1.0F, 0.5F, 0.0F);
    gset_fill_colr_ind(3);
    gfill_area(3, kArea);
    gset_fill_black(1);
    gfill_area(3, kArea);
    gset_fill_colr_ind(503); // print white
    gfill_area(3, kArea);
    gset_fill_black(0);
    gps_set_reverse(0);
    const Strings strokes = describe(plot.page().strokes);
    ASSERT_EQ(strokes.size(), 3U);
    EXPECT_EQ(strokes[0].substr(0, 9), "fill 0.48");
    EXPECT_EQ(strokes[1].substr(0, 9), "fill 0.00");
    EXPECT_EQ(strokes[2].substr(0, 9), "fill 0.00");
}

TEST(PostScript, NothingIsSentTwice)
{
    KernelPlot plot(kDevicePostScript, "color");
    GPH_set_colour(2, 1.0F, 0.0F, 0.0F);
    gset_line_colr_ind(2);
    gset_linetype(3);
    gset_linewidth(2.0F);
    gpolyline(2, kLine);
    const std::string first = "%%PL:2\n2.0 dot lw\n1.00 0.00 0.00 setrgbcolor\n"
                              "[3 6] 0 setdash\nnp\n0.00 0.00 mv\n287.50 287.50 ln\nstroke\n";
    gpolyline(2, kLine);
    const std::string again = "%%PL:2\nnp\n0.00 0.00 mv\n287.50 287.50 ln\nstroke\n";
    EXPECT_EQ(before(from(plot.finish(), "%%PL"), "%%End"), first + again);
}

TEST(PostScript, WidthsMultiplyTheBase)
{
    struct Case {
        const char *words;
        int colour;
        float width;
        const char *expected;
    };
    const Case cases[] = {
        {"lwidth=3", 502, 1.0F, "12 dot lw\n"},          {"lwidth=3", 1, 1.0F, "3.0 dot lw\n"},
        {"lwidth=1", 501, 1.0F, "2 dot lw\n"},           {"lwidth=2.9", 1, 2.0F, "4.0 dot lw\n"},
        {"lwidth=1", 505, 1.6F, "6 dot lw\n"},           {"lwidth=1", 1, 0.25F, "0.2 dot lw\n"},
        {"lwidth=1", 506, 1.0F, "%%PL:2\n.7 setgray\n"},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.words);
        KernelPlot plot(kDevicePostScript, c.words);
        gset_line_colr_ind(c.colour);
        gset_linewidth(c.width);
        gpolyline(2, kLine);
        const std::string line = from(plot.finish(), "%%PL");
        EXPECT_NE(line.find(c.expected), std::string::npos) << line;
    }
}

TEST(PostScript, SecondPlotStartsAfresh)
{
    std::string first;
    std::string second;
    for (std::string *text : {&first, &second}) {
        const ScopedEnv env_6("SOURCE_DATE_EPOCH", "920723400");
        KernelPlot plot(kDevicePostScript);
        gset_linetype(4);
        gset_linewidth(3.0F);
        gset_line_colr_ind(505);
        gpolyline(2, kLine);
        *text = plot.finish();
    }
    EXPECT_EQ(first, second);
}

TEST(PostScript, AppendedPlotsHaveNeitherHeadNorTail)
{
    const TempDir dir;
    const std::string path = dir.write("plots.ps", "% before\n");
    gopen_gks(nullptr, 0);
    ASSERT_EQ(gopen_ws(1, ("+" + path + ",gray").c_str(), kDevicePostScript), 0);
    gpolyline(2, kLine);
    EXPECT_EQ(gclose_ws(1), 0);
    const std::string text = read_file(path);
    EXPECT_EQ(text.rfind("% before\n0 setgray\n1 dot lw\n[] 0 setdash\n%%TYR Plot: ", 0), 0U);
    EXPECT_EQ(from(text, "%%End"), "%%End of plot\n");
}

TEST(PostScript, TargetsComeFromTheTextOrTheEnvironment)
{
    const TempDir dir;
    gopen_gks(nullptr, 0);
    const ScopedEnv env_7("PSPRINT", dir.file("second.ps").c_str());
    ASSERT_EQ(gopen_ws(1, ",eps", kDevicePostScript), 0);
    gclose_ws(1);
    EXPECT_EQ(read_file(dir.file("second.ps")).rfind("%!PS-Adobe-3.0 EPSF-3.0\n", 0), 0U);
    gps_set_eps(0);
    const ScopedEnv env_8("tyrps_print", dir.file("first.ps").c_str());
    ASSERT_EQ(gopen_ws(1, "", kDevicePostScript), 0);
    gclose_ws(1);
    EXPECT_EQ(read_file(dir.file("first.ps")).rfind("%!PS-Adobe-1.0\n", 0), 0U);
    const std::string deep = dir.file("new/folder/plot.ps");
    ASSERT_EQ(gopen_ws(1, deep.c_str(), kDevicePostScript), 0);
    gclose_ws(1);
    EXPECT_FALSE(read_file(deep).empty());
}

TEST(PostScript, PipesGetThePage)
{
    const TempDir dir;
    gopen_gks(nullptr, 0);
    testing::internal::CaptureStdout();
    ASSERT_EQ(gopen_ws(1, ("|cat > " + dir.file("piped.ps")).c_str(), kDevicePostScript), 0);
    gpolyline(2, kLine);
    EXPECT_EQ(gclose_ws(1), 0);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "Spooling to: cat > " + dir.file("piped.ps") + "\nCreated Postscript file\n");
    EXPECT_EQ(read_ps(read_file(dir.file("piped.ps"))).strokes.size(), 1U);
}

TEST(PostScript, MarksCanBeFound)
{
    KernelPlot plot(kDevicePostScript);
    gmessage(1, "Labels\nshowpage");
    gpolyline(2, kLine);
    const PsPage page = plot.page();
    ASSERT_EQ(page.strokes.size(), 1U);
    EXPECT_EQ(page.strokes[0].message, "Labels showpage");
}

/// A picture with every primitive.
void draw_everything()
{
    GPH_set_colour(2, 1.0F, 0.25F, 0.0F);
    const float centre[2] = {0.5F, 0.5F};
    const float window[4] = {-10.0F, 10.0F, -10.0F, 10.0F};
    const float viewport[4] = {0.25F, 0.75F, 0.25F, 0.75F};
    gset_window(2, window);
    gset_viewport(2, viewport);
    for (int type = 1; type <= 9; type++) {
        gset_linetype(type);
        gset_linewidth(static_cast<float>(type));
        gset_line_colr_ind(type % 2 == 0 ? 2 : 500 + type - 1);
        gset_fill_colr_ind(type - 2);
        gset_marker_type(type);
        gset_marker_colr_ind(type);
        gset_text_colr_ind(type);
        gsel_norm_tran(type % 2 == 0 ? 2 : 0);
        gpolyline(2, kLine);
        gfill_area(3, kArea);
        gpolymarker(1, centre);
        gtext(centre, "All (of) it: %! \\ 100%");
    }
}

TEST(PostScript, GhostscriptHasNothingToSay)
{
    if (!have_program("gs")) {
        GTEST_SKIP() << "ghostscript isn't installed";
    }
    for (const char *words : {"", "color", "port", "eps", "eps,port,color", "scale=0.5,a4",
                              "lwidth=3,gray", "sz=8.5x11,port"}) {
        SCOPED_TRACE(words);
        gps_set_eps(0);
        gps_set_portrait(0);
        KernelPlot plot(kDevicePostScript, words);
        draw_everything();
        const PsPage page = plot.page();
        EXPECT_EQ(page.error, "");
        EXPECT_TRUE(page.shown);
        const RunResult gs =
            run({"gs", "-q", "-dNOPAUSE", "-dBATCH", "-sDEVICE=nullpage", plot.path()});
        EXPECT_EQ(gs.code, 0);
        EXPECT_EQ(gs.out + gs.err, "");
    }
}

TEST(PostScript, GhostscriptTakesAnAppendedPlotWithinAPage)
{
    if (!have_program("gs")) {
        GTEST_SKIP() << "ghostscript isn't installed";
    }
    const TempDir dir;
    KernelPlot plot(kDevicePostScript);
    gpolyline(2, kLine);
    const std::string whole = plot.finish();
    const std::string path = dir.write("overlay.ps", before(whole, "saveobj restore"));
    gopen_gks(nullptr, 0);
    ASSERT_EQ(gopen_ws(1, ("+" + path).c_str(), kDevicePostScript), 0);
    draw_everything();
    EXPECT_EQ(gclose_ws(1), 0);
    dir.write("overlay.ps", read_file(path) + from(whole, "saveobj restore"));
    const RunResult gs = run({"gs", "-q", "-dNOPAUSE", "-dBATCH", "-sDEVICE=nullpage", path});
    EXPECT_EQ(gs.code, 0);
    EXPECT_EQ(gs.out + gs.err, "");
}

} // namespace
