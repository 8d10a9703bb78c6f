#include <algorithm>
#include <cmath>
#include <filesystem>
#include <map>
#include <set>

#include <gtest/gtest.h>
#include <netcdf.h>

#include "support/program.h"
#include "support/section_reader.h"
#include "support/shared_data.h"
#include "support/temp_dir.h"

namespace {

constexpr double kKnots = 3600.0 / 1852.0;
constexpr double kDegree = 57.29577951308232;

struct Wind {
    double direction, knots;
};

/// The winds of a station in a file of layout recNum by height, read through the netCDF library
/// alone; 0 m is the surface.
std::map<int, Wind> winds_in_file(const std::string &path, const std::string &station)
{
    int id = -1;
    std::map<int, Wind> winds;
    if (nc_open(path.c_str(), NC_NOWRITE, &id) != NC_NOERR) {
        return winds;
    }
    const auto var = [id](const char *name) {
        int v = -1;
        nc_inq_varid(id, name, &v);
        return v;
    };
    size_t records = 0;
    nc_inq_dimlen(id, 0, &records);
    for (size_t r = 0; r < records; ++r) {
        const size_t start[] = {r, 0};
        const size_t six[] = {1, 6};
        const size_t row[] = {1, 72};
        char name[7] = "";
        nc_get_vara_text(id, var("staName"), start, six, name);
        if (std::string(name).compare(0, station.size(), station) != 0) {
            continue;
        }
        float u[72];
        float v[72];
        float z[72];
        nc_get_vara_float(id, var("uComponent"), start, row, u);
        nc_get_vara_float(id, var("vComponent"), start, row, v);
        nc_get_var_float(id, var("levels"), z);
        for (int i = 0; i < 72; ++i) {
            const int height = static_cast<int>(z[i]);
            if (std::fabs(u[i]) <= 100.0F && std::fabs(v[i]) <= 100.0F && !winds.contains(height)) {
                const double d = std::atan2(-u[i], -v[i]) * kDegree;
                winds[height] = {d < 0.0 ? d + 360.0 : d, std::hypot(u[i], v[i]) * kKnots};
            }
        }
        float speed = 0.0F;
        float direction = 0.0F;
        nc_get_var1_float(id, var("windSpeedSfc"), start, &speed);
        nc_get_var1_float(id, var("windDirSfc"), start, &direction);
        if (speed >= 0.0F && speed <= 200.0F && direction >= 0.0F && direction <= 360.0F) {
            winds[0] = {direction, speed * kKnots};
        }
    }
    nc_close(id);
    return winds;
}

/// To the nearest 5 knots, the half up: 3 is 5, 8 is 10.
int rounded(double knots)
{
    return 5 * static_cast<int>(std::floor((knots + 2.01) / 5.0));
}

double angle_between(double a, double b)
{
    const double d = std::fabs(std::fmod(a - b + 540.0, 360.0) - 180.0);
    return d;
}

void expect_winds(const DrawnSection &section, const std::vector<std::string> &files,
                  const std::string &station, double step, double top)
{
    std::map<std::pair<int, int>, const DrawnBarb *> drawn;
    for (const DrawnBarb &b : section.barbs) {
        EXPECT_TRUE(drawn.try_emplace({b.column, static_cast<int>(b.height)}, &b).second)
            << "two barbs at column " << b.column << ", " << b.height << " m";
        EXPECT_TRUE(b.oddities.empty()) << b.column << ", " << b.height << ": " << b.oddities[0];
    }
    for (size_t column = 0; column < files.size(); ++column) {
        const std::map<int, Wind> winds = winds_in_file(files[column], station);
        for (int z = 0; z < static_cast<int>(top); z += static_cast<int>(step)) {
            SCOPED_TRACE("column " + std::to_string(column) + ", " + std::to_string(z) + " m");
            const auto at = drawn.find({static_cast<int>(column), z});
            const auto wind = winds.find(z);
            ASSERT_EQ(at != drawn.end(), wind != winds.end());
            if (wind != winds.end()) {
                EXPECT_LT(angle_between(at->second->direction, wind->second.direction), 0.5);
                EXPECT_EQ(at->second->knots, rounded(wind->second.knots)) << wind->second.knots;
                drawn.erase(at);
            }
        }
    }
    EXPECT_TRUE(drawn.empty()) << drawn.size() << " barbs that no file has";
}

bool has_text(const DrawnSection &section, const std::string &text)
{
    return std::find(section.texts.begin(), section.texts.end(), text) != section.texts.end();
}

TEST(Section, ShowsEveryWindOfItsFiles)
{
    const TempDir dir;
    const std::vector<std::string> files = make_samples(dir.file("data"));
    ASSERT_EQ(files.size(), 13U);
    std::vector<std::string> words = {"-id",  "PLTC2", "-va",
                                      "wbrb", "-de",   "p," + dir.file("s.ps")};
    words.insert(words.end(), files.begin(), files.end());
    const RunResult result = run_profiler(words);
    ASSERT_EQ(result.code, 0) << result.err;
    const DrawnSection section = read_section(read_file(dir.file("s.ps")));
    ASSERT_EQ(section.error, "");
    expect_winds(section, files, "PLTC2", 500.0, 17000.0);
    EXPECT_GT(section.barbs.size(), 300U);
    EXPECT_EQ(section.levels.size(), 9U) << "lines from 0 to 16000 m";
    for (const char *text : {"0", "2000", "16000", "12", "18", "23", "00", "0000Z 22 NOV 26"}) {
        EXPECT_TRUE(has_text(section, text)) << text;
    }
    EXPECT_TRUE(std::any_of(section.texts.begin(), section.texts.end(),
                            [](const std::string &t) { return t.rfind("ID: PLTC2 - ", 0) == 0; }));
}

TEST(Section, LowerSettingStretchesTheLowLevels)
{
    const TempDir dir;
    const std::vector<std::string> files = make_samples(dir.file("data"));
    std::vector<std::string> words = {"-id",   "pltc2", "-pp",
                                      "LOWER", "-de",   "p," + dir.file("s.ps")};
    words.insert(words.end(), files.begin(), files.end());
    words.insert(words.begin(), {"-va", "wbrb"});
    ASSERT_EQ(run_profiler(words).code, 0);
    DrawnSection section =
        read_section(read_file(dir.file("s.ps")), {.bottom = -400.0, .top = 7600.0});
    ASSERT_EQ(section.error, "");
    // barbs near the top of the picture are cut
    std::erase_if(section.barbs, [](const DrawnBarb &b) { return b.height >= 6500.0; });
    expect_winds(section, files, "PLTC2", 250.0, 6500.0);
    EXPECT_EQ(section.levels.size(), 8U) << "lines from 0 to 7000 m";
}

TEST(Section, TopBottomAndStepAreTheUsers)
{
    const TempDir dir;
    const std::vector<std::string> files = make_samples(dir.file("data"), "12", 3);
    const struct {
        const char *name, *words;
        double bottom, top, step;
        size_t lines;
        const char *told;
    } cases[] = {
        {"all", "top=4100,bottom=-300,step=500", -300.0, 4100.0, 500.0, 9, ""},
        {"bottom aloft", "bottom=4900,top=13900,step=1000", 4900.0, 13900.0, 1000.0, 9, ""},
        {"top with lower", "lower,top=3600", -400.0, 3600.0, 250.0, 8, ""},
        {"step alone", "step=1500", -1000.0, 17000.0, 1500.0, 9, ""},
        {"upside down", "top=100,bottom=4000", -1000.0, 17000.0, 500.0, 9,
         "A section's top must lie above its bottom: 100 and 4000 m"},
        {"a word for a number", "top=high,step=nan", -1000.0, 17000.0, 500.0, 9,
         "plot_param: top=high is not known"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        std::vector<std::string> words = {"-va", "wbrb",  "-id", "PLTC2",
                                          "-pp", c.words, "-de", "p," + dir.file("s.ps")};
        words.insert(words.end(), files.begin(), files.end());
        const RunResult result = run_profiler(words);
        ASSERT_EQ(result.code, 0) << result.err;
        EXPECT_NE(result.err.find(c.told), std::string::npos) << result.err;
        EXPECT_EQ(result.err.empty(), c.told[0] == '\0') << result.err;
        DrawnSection section = read_section(read_file(dir.file("s.ps")),
                                            {.bottom = c.bottom, .top = c.top, .step = c.step});
        ASSERT_EQ(section.error, "");
        EXPECT_EQ(section.levels.size(), c.lines);
        // barbs near the edges of the picture are cut
        const double edge = 0.15 * (c.top - c.bottom);
        std::set<int> heights;
        for (const DrawnBarb &b : section.barbs) {
            heights.insert(static_cast<int>(b.height));
        }
        for (double z = 2.0 * c.step; z < std::min(c.top - edge, 15000.0); z += c.step) {
            EXPECT_TRUE(z < c.bottom + edge || heights.count(static_cast<int>(z)) == 1) << z;
        }
        EXPECT_GE(*heights.begin(), c.bottom);
        EXPECT_LE(*heights.rbegin(), c.top + c.step);
    }
}

/// A file of consensus winds: a profile of one speed (m/s) at each minute of 15 UTC.
std::string consensus_file(const std::vector<std::pair<int, int>> &profiles)
{
    std::string text;
    for (const auto &[minute, speed] : profiles) {
        text += "\n CTD\n WINDS    rev 5.1\n  34.66  -87.35    187\n  21 05 05 15 " +
                std::to_string(minute) + " 01   0\n  24  3  49\n    HT  SPD  DIR  MET_QC\n";
        for (const char *height : {"0.200", "0.700", "1.200", "1.700"}) {
            text += std::string(" ") + height + " " + std::to_string(speed) + ".0 270 0\n";
        }
        text += "$\n";
    }
    return text;
}

TEST(Section, TimesOfATextFileAreChosenOrAllColumns)
{
    const TempDir dir;
    dir.write("ctd21125.15w", consensus_file({{28, 10}, {2, 5}, {47, 15}}));
    const struct {
        const char *word;
        std::vector<int> knots; ///< of the columns
        std::vector<std::string> ticks;
    } cases[] = {
        {"noredraw", {10}, {"15"}}, // the name's hour
        {"time=15:25", {20}, {"15"}},
        {"time=:59", {30}, {"15"}},
        {"time=all", {10, 20, 30}, {"1502", "1528", "1547"}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.word);
        const RunResult result =
            run_profiler({"-va", "wbrb", "-if", "prf_cns", "-dp", dir.file(""), "-nh", "0", "-id",
                          "ctd", "-pp", std::string("bottom=0,top=2000,step=500,") + c.word, "-de",
                          "p," + dir.file("s.ps"), "ctd21125.15w"});
        ASSERT_EQ(result.code, 0) << result.err;
        const double columns = c.knots.size() == 1 ? 2.0 : 4.0;
        const DrawnSection section =
            read_section(read_file(dir.file("s.ps")),
                         {.columns = columns, .bottom = 0.0, .top = 2000.0, .step = 500.0});
        ASSERT_EQ(section.error, "");
        std::map<int, std::set<int>> knots;
        for (const DrawnBarb &b : section.barbs) {
            knots[b.column].insert(b.knots);
        }
        ASSERT_EQ(knots.size(), c.knots.size());
        for (size_t i = 0; i < c.knots.size(); ++i) {
            EXPECT_EQ(knots[static_cast<int>(i)], std::set<int>{c.knots[i]}) << i;
        }
        for (const std::string &tick : c.ticks) {
            EXPECT_TRUE(has_text(section, tick)) << tick;
        }
    }
}

TEST(Section, LayoutsDrawTheSame)
{
    const TempDir dir;
    std::vector<DrawnSection> sections;
    for (const char *layout : {"12", "11", "bufr"}) {
        const std::vector<std::string> files = make_samples(dir.file(layout), layout);
        const std::string id = std::string(layout) == "bufr" ? "74533" : "PLTC2";
        std::vector<std::string> words = {"-va", "wbrb", "-id", id, "-de", "p," + dir.file("s.ps")};
        words.insert(words.end(), files.begin(), files.end());
        ASSERT_EQ(run_profiler(words).code, 0);
        DrawnSection section = read_section(read_file(dir.file("s.ps")));
        // BUFR reports have no surface wind
        std::erase_if(section.barbs, [](const DrawnBarb &b) { return b.height == 0.0; });
        sections.push_back(section);
    }
    for (size_t i : {1U, 2U}) {
        SCOPED_TRACE(i == 1 ? "layout 11" : "BUFR");
        ASSERT_EQ(sections[i].barbs.size(), sections[0].barbs.size());
        int unequal = 0;
        for (size_t k = 0; k < sections[0].barbs.size(); ++k) {
            const DrawnBarb &a = sections[0].barbs[k];
            const DrawnBarb &b = sections[i].barbs[k];
            EXPECT_EQ(a.column, b.column);
            EXPECT_EQ(a.height, b.height);
            // a tenth of a m/s may turn a weak wind by a degree and lift a speed over a half
            EXPECT_LT(angle_between(a.direction, b.direction), i == 1 ? 0.1 : 3.0);
            unequal += a.knots != b.knots ? 1 : 0;
            EXPECT_LE(std::abs(a.knots - b.knots), i == 1 ? 0 : 5);
        }
        for (const char *text : {"12", "23", "00", "22 NOV 26"}) {
            const auto ends_so = [&](const std::string &t) { return t.ends_with(text); };
            EXPECT_TRUE(std::ranges::any_of(sections[i].texts, ends_so)) << text;
        }
        EXPECT_LE(unequal, i == 1 ? 0 : 15);
    }
}

TEST(Section, WalksADirectoryByTheNameConvention)
{
    const TempDir dir;
    std::vector<std::string> files = make_samples(dir.file("data"));
    std::filesystem::remove(files[9]); // 21Z
    const RunResult result =
        run_profiler({"-va", "wbrb", "-id", "PLTC2", "-nh", "-6", "-cu", "#20261122la", "-dp",
                      dir.file("data"), "-de", "p," + dir.file("s.ps")});
    ASSERT_EQ(result.code, 0) << result.err << result.out;
    EXPECT_EQ(result.err,
              "PROF_open: " + files[9] + ": No such file or directory\nPLTC2 not found\n");
    const DrawnSection section = read_section(read_file(dir.file("s.ps")), {.columns = 8.0});
    ASSERT_EQ(section.error, "");
    std::vector<std::string> expected(files.end() - 7, files.end());
    expect_winds(section, expected, "PLTC2", 500.0, 17000.0);
    EXPECT_TRUE(has_text(section, "20"));
    EXPECT_FALSE(has_text(section, "21"));
}

TEST(Section, SameCommandGivesTheSameBytes)
{
    const TempDir dir;
    const std::vector<std::string> files = make_samples(dir.file("data"), "12", 3);
    std::vector<std::string> pages;
    for (int i = 0; i < 2; ++i) {
        std::vector<std::string> words = {"-va",   "wbrb", "-id",
                                          "PLTC2", "-de",  "p," + dir.file("s.ps")};
        words.insert(words.end(), files.begin(), files.end());
        ASSERT_EQ(run_profiler(words, {.env = {"SOURCE_DATE_EPOCH=1700000000"}}).code, 0);
        pages.push_back(read_file(dir.file("s.ps")));
        std::filesystem::remove(dir.file("s.ps"));
    }
    EXPECT_FALSE(pages[0].empty());
    EXPECT_EQ(pages[0], pages[1]);
}

TEST(Section, DrawsTheRestAroundBadFiles)
{
    const TempDir dir;
    const std::vector<std::string> good = make_samples(dir.file("data"), "12", 2);
    const std::string bytes = read_file(good[0]);
    const std::vector<std::string> files = {
        good[0],
        dir.file("missing.nc"),
        dir.write("empty.nc", ""),
        dir.write("text.nc", "Clearly no netCDF file\n"),
        dir.write("cut.nc", bytes.substr(0, 3000)),
        dir.path(),
        good[1],
    };
    std::vector<std::string> words = {"-va",   "wbrb", "-id",
                                      "PLTC2", "-de",  "p," + dir.file("s.ps")};
    words.insert(words.end(), files.begin(), files.end());
    const RunResult result = run_profiler(words);
    ASSERT_EQ(result.code, 0) << result.err;
    const DrawnSection section = read_section(read_file(dir.file("s.ps")));
    ASSERT_EQ(section.error, "");
    expect_winds(section, files, "PLTC2", 500.0, 17000.0);
    for (size_t i = 1; i + 1 < files.size(); ++i) {
        EXPECT_NE((result.out + result.err).find(files[i]), std::string::npos) << files[i];
    }
}

TEST(Section, DrawsRealFiles)
{
    struct Case {
        const char *file;
        const char *id;
        bool is_recnum; ///< whose winds this test reads by itself
        int code = 0;
    };
    const Case cases[] = {
        {"profiler/99303_0300_npn_hourly.nc", "RWDN1", false},
        {"profiler/2009-11-19_1500_npn_hourly.nc", "LMNO2", true},
        {"profiler_other/2005279_2000_rass_6min.nc", "PLTC2", false},
        {"profiler_other/Profiler-ncss_station-dim.nc", "PLTC2", false, 11},
        {"profiler_other/madis-raob.nc", "PLTC2", false, 11},
        {"bufr/iupt01.bufr", "74753", false},
        {"bufr/profiler_european.bufr", "74533", false, 11},
    };
    const TempDir dir;
    std::map<std::string, size_t> barbs;
    for (const Case &c : cases) {
        SCOPED_TRACE(c.file);
        const std::string path = shared_data(c.file);
        if (path.empty()) {
            GTEST_SKIP() << "no shared data beside the checkout";
        }
        const RunResult result =
            run_profiler({"-va", "wbrb", "-id", c.id, "-de", "p," + dir.file("s.ps"), path});
        EXPECT_EQ(result.code, c.code) << result.err;
        const DrawnSection section = read_section(read_file(dir.file("s.ps")));
        EXPECT_EQ(section.error, "");
        if (c.is_recnum) {
            expect_winds(section, {path}, c.id, 500.0, 17000.0);
        }
        barbs[c.file] = section.barbs.size();
    }
    EXPECT_GT(barbs["profiler/99303_0300_npn_hourly.nc"], 15U);
    EXPECT_GT(barbs["profiler/2009-11-19_1500_npn_hourly.nc"], 15U);
    EXPECT_EQ(barbs["profiler_other/2005279_2000_rass_6min.nc"], 0U);
    EXPECT_GT(barbs["bufr/iupt01.bufr"], 15U);
}

} // namespace
