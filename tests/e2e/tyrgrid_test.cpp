// The companion tyrgrid as a user runs it.

#include <cmath>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/program.h"
#include "support/ps_reader.h"
#include "support/screen.h"
#include "support/shared_data.h"
#include "support/temp_dir.h"
#include "support/window_user.h"
#include "tyr/base/str.h"

namespace {

RunResult tyrgrid(const std::vector<std::string> &words, const RunOptions &options = {})
{
    std::vector<std::string> all = {TYR_BINARY_DIR "/bin/tyrgrid", "-df", "/nonexistent", "-fp",
                                    TYR_SOURCE_DIR "/data"};
    all.insert(all.end(), words.begin(), words.end());
    return run(all, options);
}

/// One grid of 5 by 4 points of a degree, whose value is a + b * column + c * row.
std::string plane(int level, int var, const char *units, double a, double b, double c)
{
    std::string text =
        STR_print("00:00 GMT 04 MAR 2020\n2-a plane\n7 2 1 0 100 %d 6 %d:%s\n", level, var, units);
    text += "LL 40 -95 1 1 5 4\n";
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 5; ++column) {
            text += STR_print("%g\n", a + b * column + c * row);
        }
    }
    return text;
}

/// A file of temperature, height and the two components of the wind at 500 hPa.
std::string sample()
{
    return "TYRGRID\n" + plane(500, 11, "K", 250, 10, 0) + plane(500, 7, "m", 5500, 0, 30) +
           plane(500, 33, "m/s", 3, 0, 0) + plane(500, 34, "m/s", -4, 0, 0);
}

/// The lines of a listing below its head, with single blanks.
std::vector<std::string> listing(const std::string &text)
{
    std::vector<std::string> lines;
    for (const std::string &line : STR_fields(text, '\n')) {
        std::string plain;
        for (const char c : line) {
            if (c != ' ' || (!plain.empty() && plain.back() != ' ')) {
                plain += c;
            }
        }
        lines.push_back(plain);
    }
    lines.erase(lines.begin());
    return lines;
}

class Tyrgrid : public testing::Test {
  protected:
    PsPage draw(const std::string &file, std::vector<std::string> words)
    {
        const std::string page = dir_.file("page.ps");
        words.insert(words.end(), {"-de", "p," + page + ",color,port", file});
        const RunResult result = tyrgrid(words);
        EXPECT_EQ(result.code, 0) << result.err;
        EXPECT_EQ(result.err, "");
        PsPage read = read_ps(read_file(page));
        EXPECT_EQ(read.error, "");
        return read;
    }
    TempDir dir_;
};

TEST_F(Tyrgrid, ListsOneLineAGrid)
{
    const std::string file = dir_.write("a.grd", sample());
    EXPECT_EQ(listing(tyrgrid({file}).out),
              (std::vector<std::string>{
                  "1 500 mb 6 temp K 5 x 4 250 to 290", "2 500 mb 6 hght m 5 x 4 5500 to 5590",
                  "3 500 mb 6 uwnd m/s 5 x 4 3 to 3", "4 500 mb 6 vwnd m/s 5 x 4 -4 to -4"}));
    EXPECT_EQ(listing(tyrgrid({"-ta", "-gn", "2-3", file}).out).size(), 2U);
    EXPECT_EQ(listing(tyrgrid({"-pp", "heads", file}).out)[0], "1 500 mb 6 temp K 5 x 4 -");
}

TEST_F(Tyrgrid, WorksOutExpressions)
{
    const std::string file = dir_.write("a.grd", sample());
    const struct {
        const char *expression, *line;
    } cases[] = {
        {"wspd(:500:uwnd,:500:vwnd)[knt]", "1 500 mb 6 wspd knt 5 x 4 9.71922 to 9.71922"},
        {":500:temp:C", "1 500 mb 6 temp C 5 x 4 -23.15 to 16.85"},
        {"sub(500:temp,#250)", "1 500 mb 6 - K 5 x 4 0 to 40"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.expression);
        const RunResult result = tyrgrid({"-ta", "-va", c.expression, file});
        EXPECT_EQ(result.code, 0);
        EXPECT_EQ(result.err, "");
        ASSERT_EQ(listing(result.out).size(), 1U);
        EXPECT_EQ(listing(result.out)[0], c.line);
    }
}

TEST_F(Tyrgrid, EveryWritableKindKeepsTheGrids)
{
    std::string file = dir_.write("a.grd", sample());
    const std::vector<std::string> wanted = listing(tyrgrid({file}).out);
    const struct {
        const char *name, *kind;
    } cases[] = {
        {"b.nc", "netcdf"}, {"c.bin", "binary"}, {"d", "text"}, {"e", "netcdf"}, {"f.grd", "text"}};
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        const std::string out = dir_.file(c.name);
        EXPECT_EQ(tyrgrid({"-of", out, "-ou", c.kind, file}).code, 0);
        EXPECT_EQ(listing(tyrgrid({out}).out), wanted);
        file = out;
    }
    const RunResult piped = tyrgrid({"-of", "-", "-gn", "1", file});
    EXPECT_TRUE(STR_has_prefix(piped.out, "TYRGRID\n")) << piped.out;
    RunOptions options;
    options.input = piped.out;
    EXPECT_EQ(listing(tyrgrid({"-"}, options).out)[0], wanted[0]);
}

TEST_F(Tyrgrid, GridsAreTakenToAnotherDomain)
{
    const std::string file = dir_.write("a.grd", sample());
    const std::string out = dir_.file("b.nc");
    ASSERT_EQ(tyrgrid({"-of", out, "-gd", "latlon,40,-95,3,3,0.5,0.5", "-gn", "1,2", file}).code,
              0);
    EXPECT_EQ(listing(tyrgrid({out}).out),
              (std::vector<std::string>{"1 500 mb 6 temp K 3 x 3 265 to 275",
                                        "2 500 mb 6 hght m 3 x 3 5530 to 5560"}));
}

/// Places of the long upright strokes, as shares of the width of the clip.
std::vector<double> upright_lines(const PsPage &page)
{
    std::vector<double> places;
    for (const PsStroke &s : page.strokes) {
        const double width = s.clip[2] - s.clip[0];
        const double height = s.clip[3] - s.clip[1];
        if (s.filled || s.points.size() < 2 || s.text >= 0 || !(width > 0.0)) {
            continue;
        }
        bool is_upright = true;
        double low = s.points[0][1];
        double high = low;
        for (const PsPoint &p : s.points) {
            is_upright = is_upright && std::fabs(p[0] - s.points[0][0]) < 1.0;
            low = std::min(low, p[1]);
            high = std::max(high, p[1]);
        }
        const double place = (s.points[0][0] - s.clip[0]) / width;
        if (is_upright && high - low > 0.9 * height && place > 0.01 && place < 0.99) {
            places.push_back(place);
        }
    }
    std::sort(places.begin(), places.end());
    return places;
}

TEST_F(Tyrgrid, ContoursOfAPlaneStandWhereItHasTheirValues)
{
    const std::string file = dir_.write("a.grd", sample());
    const PsPage page =
        draw(file, {"-va", ":500:temp:K:ln:in=10:cb=5:lab=0", "-dr", "data,text", "-cocl", "-1"});
    const std::vector<double> places = upright_lines(page);
    ASSERT_EQ(places.size(), 4U);
    for (size_t i = 0; i < 4; ++i) {
        EXPECT_NEAR(places[i], (static_cast<double>(i) + 0.5) / 4.0, 0.01);
    }
}

TEST_F(Tyrgrid, FieldsLieOverEachOtherInTheirOrder)
{
    const std::string file = dir_.write("a.grd", sample());
    const PsPage page = draw(file, {"-va", ":500:temp,:500:hght:m:ln:in=30:lab=0,"
                                           ":500:<uwnd,vwnd>[knt:barb],:500:hght:m:value"});
    std::vector<std::string> texts;
    for (const PsText &text : page.texts) {
        texts.push_back(text.text);
    }
    const auto has = [&](const std::string &wanted) {
        return std::any_of(texts.begin(), texts.end(), [&](const std::string &text) {
            return text.find(wanted) != std::string::npos;
        });
    };
    EXPECT_TRUE(has("a plane"));
    EXPECT_TRUE(has("(m)  INTERVAL:  30.0"));
    EXPECT_TRUE(has("500 mb wind vectors"));
    EXPECT_EQ(std::count(texts.begin(), texts.end(), "5500"), 5);
    const auto is_filled = [](const PsStroke &s) { return s.filled && s.points.size() > 2; };
    const auto first_fill = std::find_if(page.strokes.begin(), page.strokes.end(), is_filled);
    const auto first_line = std::find_if(page.strokes.begin(), page.strokes.end(),
                                         [](const PsStroke &s) { return !s.filled; });
    EXPECT_LT(first_fill, first_line);
}

TEST_F(Tyrgrid, TellsInOneLineWhatIsWrong)
{
    const std::string file = dir_.write("a.grd", sample());
    const std::string damaged = dir_.write("b.grd", "\1\2\3");
    const std::string absent = dir_.file("absent.grd");
    const struct {
        std::vector<std::string> words;
        int code;
        std::string told;
    } cases[] = {
        {{absent}, 10, absent + ": there is no such file\n"},
        {{damaged}, 10, damaged + ": not a grid file that can be read\n"},
        {{"-ba"}, 10, "No grid file was named\n"},
        {{"-va", ":850:temp", file},
         11,
         "GRD_evaluate: No grid of temp at 6 h 850 mb in " + file + "\n"},
        {{"-va", "nofunc(:500:temp)", file}, 11, "GRD_math: Math function not available: nofunc\n"},
        {{"-gn", "5", file}, 11, file + ": no grid 5 among 4\n"},
        {{"-le", "850", file}, 11, file + ": no grid at this level and time\n"},
        {{"-va", ":500:temp", "-pd", "latlon,0,0,0,0,1,1", file}, 43, "Invalid domain\n"},
        {{"-ou", "grib", "-of", "x", file},
         12,
         "grib: not a kind of grid file that can be written\n"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.told);
        const RunResult result = tyrgrid(c.words);
        EXPECT_EQ(result.code, c.code);
        EXPECT_EQ(result.err, c.told);
    }
    const RunResult help = tyrgrid({"-h"});
    EXPECT_EQ(help.code, 0);
    EXPECT_NE(help.out.find("-gn number"), std::string::npos);
}

TEST_F(Tyrgrid, RealModelsAreConvertedAndDrawn)
{
    const std::string file = shared_data("grib/eta.grb");
    if (file.empty()) {
        GTEST_SKIP() << "no folder of shared data";
    }
    const std::string out = dir_.file("eta.nc");
    ASSERT_EQ(tyrgrid({"-of", out, "-le", "500", file}).code, 0);
    const std::vector<std::string> lines = listing(tyrgrid({out}).out);
    ASSERT_EQ(lines.size(), 7U);
    EXPECT_EQ(lines[2], "3 500 mb 24 hght gpm 93 x 65 5017 to 5915");
    EXPECT_EQ(lines[5], "6 500 mb 24 uwnd m/s 93 x 65 -12 to 51");
    const std::vector<std::string> fields = {"-va", ":500:hght:m:ln,:500:wind"};
    const PsPage of_grib = draw(file, fields);
    const PsPage of_netcdf = draw(out, fields);
    EXPECT_EQ(describe(of_grib.strokes), describe(of_netcdf.strokes)) << "dates among them";
    RunOptions piped;
    piped.input = read_file(file);
    const std::vector<std::string> streamed =
        listing(tyrgrid({"-inp", "grib", "-le", "500", "-"}, piped).out);
    ASSERT_EQ(streamed.size(), 7U);
    EXPECT_EQ(streamed[6], "109 500 mb 24 vwnd m/s 93 x 65 -33 to 24");
    for (const char *domain : {"", "ps,45,-100,30,20,1.5", "latlon,40,-100,60,30,1,1"}) {
        SCOPED_TRACE(domain);
        std::vector<std::string> words = {"-va", ":500:avor,:500:wind"};
        if (*domain != '\0') {
            words.insert(words.end(), {"-pd", domain});
        }
        const PsPage page = draw(file, words);
        EXPECT_GT(page.strokes.size(), 500U);
    }
}

TEST_F(Tyrgrid, AWindowIsZoomedAndGoesBack)
{
    const VirtualScreen screen;
    NEED_SCREEN(screen);
    const std::string file = dir_.write("a.grd", sample());
    WindowUser user(screen,
                    {"-de", "d", "-ti", "Grid", "-me", "mess", "-va",
                     ":500:temp,:500:hght:m:ln:in=30,:500:<uwnd,vwnd>[knt:barb]", file},
                    dir_.file("log"), "tyrgrid");
    ASSERT_TRUE(user.sees_window("Grid")) << read_file(dir_.file("log"));
    const Picture first = user.look();
    user.drag(200, 150, 400, 300);
    const Picture near = user.look();
    EXPECT_GT(near.differences(first), 5000);
    user.press_key("u", true);
    EXPECT_EQ(user.look().differences(first), 0);
    user.resize(500, 400);
    EXPECT_EQ(user.look().width, 500);
    user.press_key("Return");
    EXPECT_EQ(user.wait_for_exit(), 0) << read_file(dir_.file("log"));
}

} // namespace
