// Metafiles played by the program for them, on other devices and several on one page.

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <map>

#include <gtest/gtest.h>

#include "support/program.h"
#include "support/screen.h"
#include "support/section_reader.h"
#include "support/temp_dir.h"

namespace {

struct Play : testing::Test {
    TempDir dir;
    std::vector<std::string> files = make_samples(dir.file("obs"), "12", 4);

    /// A section on a device; its path.
    std::string draw(const std::string &device, const std::string &name,
                     const std::string &words = "") const
    {
        std::vector<std::string> all = {"-va",   "wbrb", "-id",
                                        "PLTC2", "-de",  device + "," + dir.file(name) + words};
        all.insert(all.end(), files.begin(), files.end());
        const RunResult result = run_profiler(all);
        EXPECT_EQ(result.code, 0) << result.err;
        return dir.file(name);
    }
    RunResult play(const std::vector<std::string> &words) const
    {
        return run_program("tyrplay", words, {.folder = dir.path()});
    }
};

/// How many strokes a page has in each colour.
std::map<std::array<double, 3>, int> colours(const PsPage &page)
{
    std::map<std::array<double, 3>, int> counts;
    for (const PsStroke &stroke : page.strokes) {
        counts[stroke.rgb]++;
    }
    return counts;
}

void expect_same_section(const std::string &played, const std::string &direct)
{
    const DrawnSection a = read_section(played);
    const DrawnSection b = read_section(direct);
    EXPECT_EQ(a.error, "");
    EXPECT_EQ(a.texts, b.texts);
    EXPECT_EQ(a.levels.size(), b.levels.size());
    EXPECT_EQ(a.columns.size(), b.columns.size());
    ASSERT_EQ(a.barbs.size(), b.barbs.size());
    EXPECT_GT(a.barbs.size(), 80U);
    for (size_t i = 0; i < a.barbs.size(); i++) {
        SCOPED_TRACE(i);
        EXPECT_EQ(a.barbs[i].column, b.barbs[i].column);
        EXPECT_EQ(a.barbs[i].height, b.barbs[i].height);
        EXPECT_EQ(a.barbs[i].knots, b.barbs[i].knots);
        EXPECT_NEAR(a.barbs[i].direction, b.barbs[i].direction, 0.5);
    }
}

TEST_F(Play, PageFromAMetafileIsTheProgramsOwn)
{
    const std::string direct = read_file(draw("p", "s.ps", ",color"));
    draw("m", "s.met");
    ASSERT_EQ(play({"-de", "p,played.ps,color", "s.met"}).code, 0);
    const std::string played = read_file(dir.file("played.ps"));
    expect_same_section(played, direct);
    EXPECT_EQ(colours(read_ps(played)), colours(read_ps(direct))) << "black for white, on paper";
    // a metafile of a metafile is as good
    ASSERT_EQ(play({"-de", "m,second.met", "s.met"}).code, 0);
    ASSERT_EQ(play({"-de", "p,second.ps,color", "second.met"}).code, 0);
    expect_same_section(read_file(dir.file("second.ps")), direct);
}

TEST_F(Play, PicturesStandSideBySide)
{
    const std::string first = draw("m", "s.met");
    for (const char *name : {"t.met", "u.met"}) {
        std::filesystem::copy(first, dir.file(name));
    }
    ASSERT_EQ(play({"-de", "p,one.ps,color", "s.met"}).code, 0);
    const size_t strokes = read_ps(read_file(dir.file("one.ps"))).strokes.size();
    ASSERT_EQ(play({"-pp", "cols=2", "-de", "p,three.ps,color", "s.met", "t.met", "u.met"}).code,
              0);
    const PsPage page = read_ps(read_file(dir.file("three.ps")));
    EXPECT_EQ(page.error, "");
    EXPECT_EQ(page.strokes.size(), 3 * strokes);
    // the page's middles part the pictures, which stand along rows from the top
    const double middle_x = 756.0 / 2;
    const double middle_y = 576.0 / 2;
    for (const PsStroke &stroke : page.strokes) {
        const bool is_second = stroke.message == "Metafile: t.met";
        const bool is_third = stroke.message == "Metafile: u.met";
        for (const PsPoint &point : stroke.points) {
            ASSERT_EQ(point[0] > middle_x, is_second) << stroke.message;
            ASSERT_EQ(point[1] < middle_y, is_third) << stroke.message;
        }
    }
    ASSERT_EQ(play({"-pp", "over", "-de", "p,over.ps,color", "s.met", "t.met"}).code, 0);
    const std::vector<PsStroke> both = read_ps(read_file(dir.file("over.ps"))).strokes;
    ASSERT_EQ(both.size(), 2 * strokes);
    for (size_t i = 0; i < strokes; i++) {
        ASSERT_EQ(both[i].points, both[i + strokes].points);
        ASSERT_EQ(both[i].rgb, both[i + strokes].rgb) << "the first picture's colours don't leak";
    }
}

TEST_F(Play, FilesThatArentWholeAreToldAndTheRestIsPlayed)
{
    const std::string good = read_file(draw("m", "good.met"));
    dir.write("empty", "");
    dir.write("text", "hello\nworld\n");
    dir.write("cut", good.substr(0, good.find("PL 5") + 30));
    dir.write("numbers", good + "PL 99999999 1,1 2,2\nWIN 1 x\nTE nowhere\n");
    dir.write("flat", "TYRMETA\nWS_WIN 1 0 0 0 0\nWIN 1 0 0 0 0\nTR 1\nPL 2 0,0 1,1\n");
    draw("m", "binary", ",cgm");
    const struct {
        const char *name, *told;
    } cases[] = {
        {"absent", "absent: No such file or directory\n"},
        {"empty", "empty: is empty\n"},
        {"text", "text: not a metafile"},
        {"obs", "obs: "},
        {"binary", "binary: a binary metafile"},
        {"cut", "1 damaged records, the first in line"},
        {"numbers", "3 damaged records, the first in line"},
        {"flat", "1 damaged records, the first in line 2: "},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        const RunResult run = play({"-me", "warn", "-de", "p,out.ps", c.name, "good.met"});
        EXPECT_EQ(run.code, 10);
        EXPECT_NE(run.err.find(c.told), std::string::npos) << run.err;
        EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 1) << run.err;
        const PsPage page = read_ps(read_file(dir.file("out.ps")));
        EXPECT_EQ(page.error, "");
        EXPECT_TRUE(page.shown);
        EXPECT_GT(page.strokes.size(), 500U) << "the good one";
    }
    EXPECT_EQ(play({"-me", "warn", "-de", "p,none.ps", "absent"}).code, 10);
    EXPECT_FALSE(std::filesystem::exists(dir.file("none.ps")));
}

TEST_F(Play, WindowShowsItAsTheProgramDoes)
{
    VirtualScreen screen;
    NEED_SCREEN(screen);
    if (!have_program("convert")) {
        GTEST_SKIP() << "ImageMagick isn't installed";
    }
    draw("m", "s.met");
    const RunOptions there = {.env = {"DISPLAY=" + screen.name()}, .folder = dir.path()};
    std::vector<std::string> words = {"-va", "wbrb", "-id",     "PLTC2", "-de",
                                      "d",   "-ge",  "500x400", "-pp",   "png=direct.png"};
    words.insert(words.end(), files.begin(), files.end());
    ASSERT_EQ(run_profiler(words, there).code, 0);
    const RunResult run = run_program(
        "tyrplay", {"-de", "d", "-ge", "500x400", "-pp", "png=played.png", "s.met"}, there);
    ASSERT_EQ(run.code, 0) << run.err;
    const Picture direct = read_picture(dir.file("direct.png"));
    const Picture played = read_picture(dir.file("played.png"));
    ASSERT_EQ(played.width, 500);
    for (const unsigned colour : {0xFFFFFFU, 0xE62620U, 0x000000U}) {
        SCOPED_TRACE(colour);
        EXPECT_NEAR(played.count(colour), direct.count(colour), 0.05 * direct.count(colour));
    }
}

} // namespace
