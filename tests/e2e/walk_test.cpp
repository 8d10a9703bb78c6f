#include <algorithm>
#include <filesystem>
#include <sstream>

#include <gtest/gtest.h>

#include "support/program.h"
#include "support/section_reader.h"
#include "support/temp_dir.h"

namespace {

/// The files a run searched: day and time of each, "21_12" for 20261121_1200.
std::string searched(const RunResult &result)
{
    std::stringstream lines(result.out);
    std::string all;
    for (std::string line; std::getline(lines, line);) {
        const size_t at = line.rfind("202611");
        if (line.rfind("Searching file", 0) == 0 && at != std::string::npos) {
            all += (all.empty() ? "" : " ") + line.substr(at + 6, 2) + line.substr(at + 8, 3);
        }
    }
    return all;
}

/// Hourly sample files from 21 November 2026 12Z to 22 November 00Z.
class Walk : public testing::Test {
  protected:
    Walk() : files_(make_samples(dir_.file("data"))) {}

    RunResult walk(const std::vector<std::string> &words, const std::vector<std::string> &env = {})
    {
        std::vector<std::string> all = {"-va", "wbrb",
                                        "-id", "PLTC2",
                                        "-dp", dir_.file("data"),
                                        "-de", "p," + dir_.file("s.ps")};
        all.insert(all.end(), words.begin(), words.end());
        return run_profiler(all, {.env = env});
    }

    TempDir dir_;
    std::vector<std::string> files_;
};

TEST_F(Walk, HoursComeByTheWordsOfTheUser)
{
    struct Case {
        const char *name;
        std::vector<std::string> words;
        std::vector<std::string> env;
        const char *files;
    };
    const Case cases[] = {
        {"newest, from a date", {"-nh", "-3", "-cu", "#20261122la"}, {}, "21_21 21_22 21_23 22_00"},
        {"newest, from later", {"-nh", "-1", "-cu", "#2026112206la"}, {}, "21_23 22_00"},
        {"before the newest", {"-nh", "-1", "-cu", "#20261122la-6"}, {}, "21_17 21_18"},
        {"an offset from a date", {"-nh", "-1", "-cu", "#20261122-5"}, {}, "21_18 21_19"},
        {"case doesn't count", {"-nh", "-1", "-cu", "#20261122LA"}, {}, "21_23 22_00"},
        {"a time by the environment",
         {"-nh", "-1", "-cu", "la"},
         {"tyrcurtime=2026112120"},
         "21_19 21_20"},
        {"a step of three hours",
         {"-nh", "-9,3", "-cu", "#20261122la"},
         {},
         "21_15 21_18 21_21 22_00"},
        {"hours and minutes", {"-nh", "-2:00", "-cu", "#20261122la"}, {}, "21_22 21_23 22_00"},
        {"the hour asked for", {"-nh", "0", "-ho", "18", "-cu", "#2026112123"}, {}, "21_18"},
        {"a day and an hour", {"-nh", "0", "-ho", "2114", "-cu", "#20261122"}, {}, "21_14"},
        {"a span ahead", {"-nh", "2", "-cu", "#2026112114"}, {}, "21_14 21_15 21_16"},
        {"no span: the file alone", {"-nh", "0", "-cu", "#2026112114"}, {}, "21_14"},
        {"the span by the environment",
         {"-cu", "#20261122la"},
         {"tyrnumhour=-2"},
         "21_22 21_23 22_00"},
        {"the command line wins",
         {"-nh", "-1", "-cu", "#20261122la"},
         {"tyrnumhour=-2"},
         "21_23 22_00"},
        {"the second of two wins",
         {"-nh", "-5", "-nh", "-1", "-cu", "#20261122la"},
         {},
         "21_23 22_00"},
        {"a part of a name", {"-nh", "-1", "20261121_15"}, {}, "21_14 21_15"},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        const RunResult result = walk(c.words, c.env);
        EXPECT_EQ(result.code, 0) << result.out << result.err;
        EXPECT_EQ(searched(result), c.files) << result.out << result.err;
    }
}

TEST_F(Walk, ANewestFileThatIsntThereEndsWithTen)
{
    const RunResult result = walk({"-cu", "#20261201la#3"});
    EXPECT_EQ(result.code, 10);
    EXPECT_NE(result.err.find("File not found: "), std::string::npos) << result.err;
}

TEST_F(Walk, FilesCloserThanAnHourAreLabelledWithMinutes)
{
    namespace fs = std::filesystem;
    fs::create_directory(dir_.file("half"));
    for (size_t i = 0; i < 3; ++i) {
        const std::string minutes = i == 1 ? "1230" : i == 0 ? "1200" : "1300";
        fs::copy_file(files_[i], dir_.file("half/20261121_" + minutes + "_prf.nc"));
    }
    const RunResult result =
        run_profiler({"-va", "wbrb", "-id", "PLTC2", "-if", "prf_30min", "-dp", dir_.file("half"),
                      "-nh", "-1", "-cu", "#2026112113", "-de", "p," + dir_.file("s.ps")});
    ASSERT_EQ(result.code, 0) << result.err;
    const DrawnSection section = read_section(read_file(dir_.file("s.ps")), {.columns = 4.0});
    for (const char *label : {"1200", "1230", "1300"}) {
        EXPECT_EQ(std::count(section.texts.begin(), section.texts.end(), label), 1) << label;
    }
}

TEST_F(Walk, ConventionFileThatIsMissingIsTold)
{
    const RunResult result = run_profiler({"-nc", "/nonexistent/conv", "-va", "wbrb", "-id",
                                           "PLTC2", "-de", "p," + dir_.file("s.ps"), files_[0]});
    EXPECT_EQ(result.code, 0);
    EXPECT_NE(result.err.find("/nonexistent/conv"), std::string::npos) << result.err;
    EXPECT_GT(read_section(read_file(dir_.file("s.ps"))).barbs.size(), 20U);
}

} // namespace
