#include <cstdlib>
#include <map>

#include "support/capture.h"
#include "tyr/base/date.h"
#include "tyr/base/msg.h"
#include "tyr/base/prm.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/start/convert.h"
#include "tyr/start/options.h"
#include "tyr/start/startup.h"

namespace {

using Environment = std::map<std::string, std::string>;

/// Options of the tests by code: see base/option_table.cpp.
constexpr int kKeyed[] = {57, 3, 73, 48, 41, 40, 58, 78, 60, 84, 96, 105, 71, 89, 88, 37, 59, 2, 0};
constexpr int kPositional[] = {50, 0};

/// Runs the start-up as program `prf` in a fresh store of this process: what an earlier run stored
/// under the names of a table is cleared by storing a mark.
void start(const std::vector<std::string> &words, const Environment &environment = {})
{
    for (const auto &[name, value] : environment) {
        setenv(name.c_str(), value.c_str(), 1);
    }
    std::vector<std::string> texts = {"/usr/bin/prf"};
    texts.insert(texts.end(), words.begin(), words.end());
    std::vector<char *> argv;
    for (std::string &t : texts) {
        argv.push_back(t.data());
    }
    EXPECT_EQ(OPT_init(static_cast<int>(argv.size()), argv.data(), kKeyed, kPositional), 1);
    for (const auto &[name, value] : environment) {
        unsetenv(name.c_str());
    }
}

std::string get(const char *name)
{
    const char *value = RES_get(name);
    return value ? value : "(unset)";
}

void forget(std::initializer_list<const char *> names)
{
    for (const char *name : names) {
        RES_put(name, "(cleared)");
    }
    DateRec none;
    TIME_set_hour(&none);
    MSG_set_mask(10, 0xFFFFF);
}

TEST(Startup, LaterSourceWins)
{
    const TempDir folder;
    const std::string first = folder.write("first/tyr.cfg", "*level 1\n");
    const std::string second = folder.write("second.cfg", "prf.level: 2\n");
    const std::string files = "-df=" + folder.path() + "/first:" + second;
    const struct {
        const char *name;
        std::vector<std::string> words;
        Environment environment;
        const char *level;
    } cases[] = {
        {"directory and its tyr.cfg", {"-df", folder.path() + "/first"}, {}, "1"},
        {"last file", {files}, {}, "2"},
        {"order of the list", {"-default", second + ":" + folder.path() + "/first"}, {}, "1"},
        {"list from the environment", {}, {{"tyrdefault", second}}, "2"},
        {"plain variable", {files}, {{"tyrlevel", "3"}}, "3"},
        {"program's variable", {files}, {{"tyrlevel", "3"}, {"tyrprf.level", "4"}}, "4"},
        {"command line", {files, "-le", "5"}, {{"tyrlevel", "3"}}, "5"},
        {"last option", {files, "-le", "5", "-level=6"}, {}, "6"},
        {"missing file", {"-df", folder.file("absent")}, {}, "(cleared)"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        forget({"level"});
        start(c.words, c.environment);
        EXPECT_EQ(get("level"), c.level);
        RES_put("default", folder.file("absent").c_str());
    }
}

TEST(Startup, ReadsTheCommandLine)
{
    const std::string long_key = "-" + std::string(60, 'k') + "=v";
    const std::string cut_key(49, 'k');
    const struct {
        const char *name;
        std::vector<std::string> words;
        std::string resource, value;
    } cases[] = {
        {"key and value", {"-le", "500"}, "level", "500"},
        {"key in capitals", {"-LE", "500"}, "level", "500"},
        {"negative number is a value", {"-le", "-3"}, "level", "-3"},
        {"an option is no value", {"-le", "-x"}, "level", ""},
        {"the option behind it", {"-le", "-x", "y"}, "x", "y"},
        {"equals sign", {"-pl=cf"}, "plot_type", "cf"},
        {"value with an equals sign", {"-va=a=b"}, "variable", "a=b"},
        {"empty value", {"-va="}, "variable", ""},
        {"whole name", {"-plot_type", "cf"}, "plot_type", "cf"},
        {"whole name in capitals", {"-PLOT_TYPE", "cf"}, "plot_type", "cf"},
        {"prefix", {"--plot_t", "cf"}, "plot_type", "cf"},
        {"first option of the prefix", {"--plot", "cf"}, "plot_domain", "cf"},
        {"two options: the second", {"-va", "a,b", "-va", "c"}, "variable", "c"},
        {"flag gives its word back", {"-ba", "file"}, "filename", "file"},
        {"flag has no value", {"-ic", "file"}, "icon", ""},
        {"flag with equals sign", {"-ic=off"}, "icon", "off"},
        {"positional list", {"a", "b", "c"}, "filename", "a\nb\nc"},
        {"double dash", {"a", "--", "-3"}, "filename", "a\n-3"},
        {"single dash", {"-"}, "filename", "-"},
        {"keyed filename replaces the list", {"a", "b", "-filename", "c"}, "filename", "c"},
        {"unknown option", {"-mo", "nam"}, "mo", "nam"},
        {"unknown name in capitals", {"-Mo", "nam"}, "Mo", "nam"},
        {"current without a value", {"-cu"}, "current", ""},
        {"long key", {long_key}, cut_key, "v"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);

        forget({"level", "plot_type", "plot_domain", "variable", "filename", "current", "icon"});
        RES_put("default", "/nonexistent");
        start(c.words);
        EXPECT_EQ(get(c.resource.c_str()), c.value);
    }
}

TEST(Startup, NameAndDefaultServeNoOtherOption)
{
    for (const char *key : {"-n", "-na", "-nam", "-name", "-df", "-default", "-DF", "-NA"}) {
        SCOPED_TRACE(key);
        forget({"num_hour", "draw", "filename"});
        start({key, "/nonexistent", "word"});
        EXPECT_EQ(get("num_hour"), "(cleared)");
        EXPECT_EQ(get("filename"), "word");
    }
}

TEST(Startup, NameReadsTheResourcesOfAnother)
{
    const TempDir folder;
    const std::string file =
        folder.write("cfg", "prf.level 1\nother.level 2\nprf.special.level 3\nlevel 4\n");
    forget({"level"});
    start({"-df", file, "-na", "other"});
    EXPECT_EQ(get("level"), "2");
    forget({"level"});
    start({"-df", file, "-na", "+special"});
    EXPECT_EQ(get("level"), "3");
}

TEST(Startup, WordOfTheSourceListOpensAnIf)
{
    const TempDir folder;
    const std::string file =
        folder.write("cfg", "*level 1\nIF special\n*level 2\n*free_one: \"two words\"\nEND\n");
    forget({"level", "free_one"});
    start({"-df", file});
    EXPECT_EQ(get("level"), "1");
    start({"-df", "+special:" + file});
    EXPECT_EQ(get("level"), "2");
    EXPECT_EQ(get("free_one"), "two words");
}

TEST(Startup, WindowThatDoesNotRunIsAWarning)
{
    EXPECT_EQ(told_by([] {
                  start({"-df", "#3", "-le", "7"});
              }),
              "TYRloop window: 3 not running or no message queue exists\n");
    EXPECT_EQ(get("level"), "7");
}

TEST(Startup, OptionsWithSideEffectsAct)
{
    start({"-df=/nonexistent", "-ba", "-me", "mess", "-ho", "12:30", "-pl", "skewt", "-h"});
    EXPECT_EQ(PRM_is_batch(), 1);
    EXPECT_EQ(PRM_is_help(), 1);
    EXPECT_EQ(PRM_get(kPrmPlotType), 62);
    EXPECT_EQ(MSG_get_mask(), 0xFFFU);
    DateRec hour;
    TIME_get_hour(&hour);
    EXPECT_EQ(hour.hour, 12);
    EXPECT_EQ(hour.minute, 30);
    MSG_set_mask(10, 0xFFFFF);
}

TEST(Startup, LongWordsAreKeptWhole)
{
    const std::string name(4000, 'f');
    forget({"filename", "variable"});
    start({"-df=/nonexistent", name, "-va", name});
    EXPECT_EQ(get("filename"), name);
    EXPECT_EQ(get("variable"), name);
}

TEST(Startup, UnknownCodeAndLongListsAreHeldBack)
{
    std::vector<int> many(200, 71);
    many.push_back(0);
    std::string program = "prf";
    char *argv[] = {program.data()};
    EXPECT_EQ(OPT_init(1, argv, many.data(), kPositional), 1);
    OptionRec record;
    EXPECT_EQ(shown_by([&] { OPT_lookup(&record, 61); }), "61\n");
    EXPECT_STREQ(record.name, "");
}

TEST(Startup, PagerCountsTheLinesOfTheHelp)
{
    const int keyed[] = {96, 96, 96, 0};
    PRM_clear(kMissingInt); // no batch run
    MSG_set_mask(10, 0xFFFFF);
    MSG_set_paging(2);
    const std::string shown = shown_by([&] { OPT_usage("prf", keyed, nullptr); });
    MSG_set_paging(1);
    EXPECT_NE(shown.find("Press return"), std::string::npos);
}

TEST(Startup, UsageListsTheOptions)
{
    const int keyed[] = {57, 73, 96, 0};
    const int positional[] = {50, 0};
    MSG_set_mask(10, 0xFFFFF);
    EXPECT_EQ(shown_by([&] { OPT_usage("prf", keyed, positional); }),
              "prf syntax (version:5.59-LINUX-X11)\n"
              "   prf [options...]\n"
              "Keyed options...\n"
              " -df file    Resource/defaults file name\n"
              " -na name    Program name\n"
              " -h          Print this help\n"
              " -me level   Message level to be displayed:\n"
              "               none,print,error,warn,mess,out1,*out2,out3,out4,debug\n"
              " -re region or [proj],clat,clon[,nx,ny][,dx,dy]\n"
              "             Region to be used for plotting and gridding\n"
              "               region=predefined region:\n"
              "                  us,ne,at,se,mw,sp,nw,sw,etc\n"
              "               proj=projection, clat=central latitude, clon=central longitude,\n"
              "               nx,ny=number of gridpoints and dx,dy=grid spacing\n"
              "               us,ne,at,se,mw,sp,nw,sw,var\n"
              "Positional options...\n"
              " file [file...]  Input file names\n");
}

} // namespace
