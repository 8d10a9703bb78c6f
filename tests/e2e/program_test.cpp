#include <filesystem>

#include <gtest/gtest.h>

#include "support/program.h"
#include "support/section_reader.h"
#include "support/temp_dir.h"

namespace {

bool contains(const std::string &text, const std::string &part)
{
    return text.find(part) != std::string::npos;
}

TEST(Program, HelpPrintsEveryOption)
{
    const RunResult result = run_profiler({"-h"});
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.err, "");
    for (const char *part :
         {"profiler: This program plots profiler data\n",
          "profiler syntax (version:5.59-LINUX-X11)", "Keyed options...\n", "-id ident",
          "-nh hour[,step]", "Positional options...\n", "file [file...]"}) {
        EXPECT_TRUE(contains(result.out, part)) << part;
    }
    EXPECT_FALSE(contains(result.out, "-gt ")) << "no option of other programs";
}

TEST(Program, ExitCodesTellTheReason)
{
    const TempDir dir;
    const std::vector<std::string> files = make_samples(dir.file("data"), "12", 1);
    struct Case {
        const char *name;
        std::vector<std::string> words;
        std::string input;
        int code;
        const char *told;
    };
    const Case cases[] = {
        {"no station in batch mode", {"-ba", files[0]}, "", 31, "No station specified!"},
        {"no file by current",
         {"-cu", "la#2", "-dp", dir.file("none"), "-id", "X"},
         "",
         10,
         "File not found: "},
        {"no file in batch mode",
         {"-ba", "-dp", dir.file("none"), "-id", "X"},
         "",
         10,
         "File not found: "},
        {"wrong names at the prompt",
         {"-dp", dir.file("data"), "-id", "X"},
         "a\nb\nc\nd\n",
         10,
         "File not found: "},
        {"exit at the prompt", {"-dp", dir.file("data")}, "exit\n", 0, ""},
        {"end of input at the prompt", {"-dp", dir.file("data")}, "", 0, ""},
        {"a list of files", {"-dp", dir.file("data"), "list"}, "", 0, "20261121_1200_prf.nc"},
        {"output that can't be opened",
         {"-id", "PLTC2", "-va", "wbrb", "-de", "p,/proc/no/x.ps", files[0]},
         "",
         4,
         "GPH_begin: Error opening workstation"},
        {"a full disk",
         {"-id", "PLTC2", "-va", "wbrb", "-de", "p,/dev/full", files[0]},
         "",
         4,
         "/dev/full"},
        {"a section of nothing",
         {"-id", "XXXX", "-va", "wbrb", "-de", "p," + dir.file("x.ps"), files[0]},
         "",
         11,
         "XXXX not found"},
        {"a section of a missing file",
         {"-id", "PLTC2", "-va", "wbrb", "-de", "p," + dir.file("y.ps"), dir.file("no.nc")},
         "",
         11,
         "no.nc: No such file"},
        {"a map of an empty file",
         {"-le", "3000", "-va", "wbrb", "-de", "p," + dir.file("z.ps"), dir.write("2001.nc", "")},
         "",
         11,
         "2001.nc: the file is empty"},
        {"nobody to ask for a device",
         {"-id", "PLTC2", "-va", "wbrb", files[0]},
         "",
         13,
         "No device to draw on"},
        {"a paper by its word",
         {"-id", "PLTC2", "-va", "wbrb", "-de", "p," + dir.file("w.ps") + ",sz=a4", files[0]},
         "",
         0,
         ""},
        {"a mistyped variable",
         {"-id", "PLTC2", "-va", "wbrbb", "-de", "p," + dir.file("v.ps"), files[0]},
         "",
         0,
         "wbrbb is none that a profiler file has; near it: wbrb"},
        {"no plot wanted",
         {"-id", "PLTC2", "-va", "wbrb", "-pl", "none", "-de", "p," + dir.file("n.ps"), files[0]},
         "",
         0,
         ""},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        const RunResult result = run_profiler(c.words, {.input = c.input});
        EXPECT_EQ(result.code, c.code) << result.out << result.err;
        EXPECT_TRUE(contains(result.out + result.err, c.told)) << result.out << result.err;
    }
    EXPECT_FALSE(std::filesystem::exists(dir.file("n.ps")));
}

TEST(Program, MistypedWordsAreNamedAndTheRunGoesOn)
{
    const TempDir dir;
    const std::vector<std::string> files = make_samples(dir.file("data"), "12", 1);
    struct Case {
        const char *name;
        std::vector<std::string> words;
        const char *told; ///< empty for nothing to say
        int code = 0;
    };
    const Case cases[] = {
        {"nothing mistyped", {"-va", "wbrb", "-pp", "lower,noredraw,top=5000,labm"}, ""},
        {"colour", {"-va", "wbrb", "-cowd", "gren"}, "colour: gren is not known; near it: green"},
        {"plot parameter",
         {"-va", "wbrb", "-pp", "noredrw"},
         "plot_param: noredrw is not known; near it: noredraw"},
        {"colour table", {"-va", "wbrb", "-ct", "no.clr"}, "no.clr: No such file"},
        {"level", {"-va", "wbrb", "-le", "frzz"}, "level: frzz is not known; near it: frz"},
        {"unit of a level",
         {"-va", "wbrb", "-le", "3000fr"},
         "level: 3000fr is not known; near it: 3000ft"},
        {"level of a variable", {"-va", "12:lcll:wbrb"}, "level: lcll is not known; near it: lcl"},
        {"what to draw",
         {"-va", "wbrb", "-dr", "data,tex"},
         "draw: tex is not known; near it: tex"},
        {"plot type", {"-va", "wbrb", "-pl", "lnn"}, "plot_type: lnn is not known; near it: ln"},
        {"file parameter",
         {"-va", "wbrb", "-pf", "ovr"},
         "file_param: ovr is not known; near it: over"},
        {"scale", {"-va", "wbrb", "-sc", "abc"}, "plot_scale: abc is not known"},
        {"digit", {"-va", "wbrb", "-sc", "1O"}, "plot_scale: 1O is not known"},
        {"hour", {"-va", "wbrb", "-ho", "noon"}, "hour: noon is not known"},
        {"hours", {"-va", "wbrb", "-nh", "six"}, "num_hour: six is not known"},
        {"message level",
         {"-va", "wbrb", "-me", "wran"},
         "message: wran is not known; near it: warn"},
        {"message levels that are",
         {"-va", "wbrb", "-me", "+debugb,-out2,+fi=" + dir.file("log"), "-nh", "-6:30,1", "-sc",
          ".5"},
         ""},
        {"device", {"-va", "wbrb", "-de", "z"}, "device: z is not known", 4},
        {"levels that are", {"-va", "wbrb", "-le", "850-700mb"}, ""},
        {"unit", {"-va", "wbrb:+wspd"}, "unit: +wspd is not known"},
        {"region",
         {"-va", "wbrb", "-le", "3000", "-re", "use"},
         "region: use is not known; near it: us, se",
         43},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        std::vector<std::string> words = {"-id", "PLTC2", "-de", "p," + dir.file("s.ps")};
        words.insert(words.end(), c.words.begin(), c.words.end());
        words.push_back(files[0]);
        const RunResult result = run_profiler(words);
        const std::string told = result.out + result.err;
        const bool is_told = contains(told, "is not known") || contains(told, "color_table: ");
        EXPECT_EQ(is_told, c.told[0] != '\0') << told;
        EXPECT_TRUE(contains(told, c.told)) << told;
        if (is_told) {
            EXPECT_EQ(told.find(c.told), told.rfind(c.told)) << "said once: " << told;
        }
        EXPECT_EQ(result.code, c.code) << told;
        EXPECT_EQ(std::filesystem::exists(dir.file("s.ps")), c.code == 0) << told;
        std::filesystem::remove(dir.file("s.ps"));
    }
}

TEST(Program, AFileNamedLikeAWordIsToldOf)
{
    const TempDir dir;
    const std::vector<std::string> files = make_samples(dir.file("data"), "12", 1);
    std::filesystem::create_directory(dir.file("here"));
    std::filesystem::copy_file(files[0], dir.file("here/current.nc"));
    const std::vector<std::string> words = {
        profiler_path(), "-id", "PLTC2", "-va", "wbrb", "-de", "p," + dir.file("s.ps")};
    for (const bool is_named : {false, true}) {
        std::vector<std::string> all = words;
        all.push_back(is_named ? "./current.nc" : "current.nc");
        const RunResult result = run(all, {.folder = dir.file("here")});
        EXPECT_EQ(contains(result.out + result.err, "the file of that name is ./current.nc"),
                  !is_named)
            << result.out << result.err;
        EXPECT_TRUE(!is_named || result.code == 0) << result.err;
    }
}

TEST(Program, AsksForWhatItNeeds)
{
    const TempDir dir;
    const std::vector<std::string> files = make_samples(dir.file("data"), "12", 2);
    const RunResult result = run_profiler({"-de", "p," + dir.file("s.ps"), files[0], files[1]},
                                          {.input = "pltc2,LMNO2\nset plot_scale=2\nwspd\n"});
    ASSERT_EQ(result.code, 0) << result.err;
    EXPECT_TRUE(contains(result.out, "Available stations:\nAZCN5 "));
    EXPECT_TRUE(contains(result.out, "Enter the stations: "));
    EXPECT_TRUE(contains(result.out, "Variable Menu"));
    const DrawnSection section = read_section(read_file(dir.file("s.ps")));
    EXPECT_EQ(section.error, "");
    EXPECT_TRUE(section.barbs.empty()) << "speeds are numbers";
    EXPECT_GT(section.texts.size(), 60U);
    EXPECT_EQ(section.texts[section.texts.size() - 2].rfind("ID: pltc2 - ", 0), 0U)
        << section.texts[section.texts.size() - 2];
}

TEST(Batch, ParentLeavesAtOnceAndTheFileIsWrittenOnce)
{
    const TempDir dir;
    std::vector<std::string> words = {"-ba", "-id", "PLTC2", "-de", "p," + dir.file("s.ps")};
    const std::vector<std::string> files = make_samples(dir.file("data"), "12", 3);
    words.insert(words.end(), files.begin(), files.end());
    const RunResult result = run_profiler(words);
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.out + result.err, "") << "batch mode tells errors alone";
    ASSERT_TRUE(wait_for_end(dir.file("s.ps"), "%%EOF\n"));
    const std::string page = read_file(dir.file("s.ps"));
    EXPECT_EQ(page.find("%%EOF"), page.rfind("%%EOF"));
    EXPECT_EQ(page.find("%!PS"), page.rfind("%!PS"));
    const DrawnSection section = read_section(page);
    EXPECT_EQ(section.error, "");
    EXPECT_GT(section.barbs.size(), 80U);
}

TEST(Batch, ARunThatIsWaitedForReturnsWithThePlotsCode)
{
    const TempDir dir;
    const std::vector<std::string> files = make_samples(dir.file("data"), "12", 1);
    const struct {
        const char *name;
        std::string word, target;
        std::vector<std::string> env;
        bool is_drawn;
    } cases[] = {
        {"word", "-ba=wait", "p," + dir.file("s.ps"), {}, true},
        {"any case", "-ba=WAIT", "i," + dir.file("s.png"), {}, true},
        {"environment", "", "p," + dir.file("e.ps"), {"tyrbatch=wait"}, true},
        {"nowhere to go", "-ba=wait", "p,/proc/none/s.ps", {}, false},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        std::vector<std::string> words = {"-id", "PLTC2", "-de", c.target, files[0]};
        if (!c.word.empty()) {
            words.insert(words.begin(), c.word);
        }
        const RunResult result = run_profiler(words, {.env = c.env});
        EXPECT_EQ(result.code == 0, c.is_drawn) << result.err;
        EXPECT_EQ(std::filesystem::exists(c.target.substr(2)), c.is_drawn) << "at once";
        EXPECT_EQ(result.out, "") << "batch mode tells errors alone";
    }
}

TEST(Batch, ForegroundAndBackgroundWriteTheSame)
{
    const TempDir dir;
    const std::vector<std::string> files = make_samples(dir.file("data"), "12", 2);
    std::vector<std::string> words = {
        "-va", "wbrb", "-id", "PLTC2", "-de", "p," + dir.file("s.ps"), files[0], files[1]};
    const RunOptions options = {.env = {"SOURCE_DATE_EPOCH=1700000000"}};
    ASSERT_EQ(run_profiler(words, options).code, 0);
    const std::string foreground = read_file(dir.file("s.ps"));
    std::filesystem::remove(dir.file("s.ps"));
    words.insert(words.begin(), "-ba");
    ASSERT_EQ(run_profiler(words, options).code, 0);
    ASSERT_TRUE(wait_for_end(dir.file("s.ps"), "%%EOF\n"));
    EXPECT_EQ(read_file(dir.file("s.ps")), foreground);
}

TEST(Output, GoesToAPipe)
{
    const TempDir dir;
    const std::vector<std::string> files = make_samples(dir.file("data"), "12", 1);
    const RunResult result = run_profiler(
        {"-va", "wbrb", "-id", "PLTC2", "-de", "p,|cat >" + dir.file("piped.ps"), files[0]});
    EXPECT_EQ(result.code, 0) << result.err;
    EXPECT_EQ(read_section(read_file(dir.file("piped.ps"))).error, "");
}

TEST(Installation, DrawsWithAnIdAndFilesAlone)
{
    const TempDir dir;
    const std::vector<std::string> files = make_samples(dir.file("data"), "12", 1);
    dir.write("here/tyr.cfg",
              "*file_path: " TYR_SOURCE_DIR "/data\n*device: p," + dir.file("s.ps") + "\n");
    const RunResult result = run({profiler_path(), "-id", "PLTC2", files[0]},
                                 {.input = "wbrb\n", .folder = dir.file("here")});
    EXPECT_EQ(result.code, 0) << result.err;
    EXPECT_GT(read_section(read_file(dir.file("s.ps"))).barbs.size(), 20U);
}

} // namespace
