#include "support/capture.h"
#include "support/scoped_env.h"
#include "tyr/base/msg.h"
#include "tyr/base/res.h"
#include "tyr/start/deffile.h"

namespace {

/// All resource lines of a file's text as "name=value;" in order.
std::string read_all(const std::string &text)
{
    const TempDir folder;
    const std::string path = folder.write("cfg", text);
    EXPECT_EQ(DEF_open(path.c_str()), 0);
    std::string result;
    char name[kDefNameRoom];
    char value[kDefValueRoom];
    while (DEF_get(name, value) >= 0) {
        result += std::string(name) + "=" + value + ";";
    }
    DEF_close();
    return result;
}

struct FileCase {
    const char *name;
    std::string text, result;
};

TEST(Deffile, ReadsResourceLines)
{
    const std::string long_name = std::string(100, 'n') + " 1\n";
    const std::string cut_name = std::string(49, 'n') + "=1;";
    const std::string long_value = "a " + std::string(240, 'v') + "\n";
    const std::string cut_value = "a=" + std::string(207, 'v') + ";";
    const std::string long_blank = "a " + std::string(10000, ' ') + "x\nb 2\n";
    const std::string long_line = "a 1 " + std::string(10000, 'x') + " y z\nb 2\n";
    const std::string binary("\0\1\xff\n\0 x\nb 2\n", 12);
    const std::vector<FileCase> cases = {
        {"plain", "a 1\n\n\n b: 2 three\n", "a=1;b=2;"},
        {"lower case name", "*File_Path: /A/b\n", "*file_path=/A/b;"},
        {"comment", "#a 1\nb 2", "b=2;"},
        {"no value", "a\nb:\nc 3\n", "c=3;"},
        {"quotes", "a \"one  two\" three\n", "a=one  two;"},
        {"empty quotes", "a \"\"\n", "a=\"\";"},
        {"open quotes", "a \"one two\n", "a=one two;"},
        {"carriage returns", "a 1\r\nb 2\r\n", "a=1;b=2;"},
        {"long name", long_name, cut_name},
        {"long value", long_value, cut_value},
        {"very long line", long_blank, "b=2;"},
        {"cut line is one line", long_line, "a=1;b=2;"},
        {"binary", binary, "b=2;"},
    };
    for (const FileCase &c : cases) {
        SCOPED_TRACE(c.name);
        DEF_clear();
        EXPECT_EQ(read_all(c.text), c.result);
    }
}

TEST(Deffile, FollowsBranches)
{
    const std::vector<FileCase> cases = {
        {"if", "DEF w\nIF W\na 1\nEND\nb 2\n", "def=w;a=1;b=2;"},
        {"if not", "IF w\na 1\nEND\nb 2\n", "b=2;"},
        {"else", "IF w\na 1\nELSE\nb 2\nEND\n", "b=2;"},
        {"elif", "IF w\na 1\nELIF v\nb 2\nELSE\nc 3\nEND\n", "b=2;"},
        {"closed", "IF v\na 1\nELIF v\nb 2\nELIF v\nc 3\nELSE\nd 4\nEND\n", "a=1;"},
        {"nested", "IF v\nIF w\na 1\nELSE\nb 2\nEND\nc 3\nEND\n", "b=2;c=3;"},
        {"under no if", "IF w\nIF v\na 1\nELSE\nb 2\nEND\nc 3\nEND\nd 4\n", "d=4;"},
        {"undef", "UNDEF V\nIF v\na 1\nEND\nUNDEF v\n", "undef=V;undef=v;"},
        {"hidden def", "IF w\nDEF u\nEND\nIF u\na 1\nEND\n", ""},
        {"bare keyword", "IF\na 1\nEND\n", "a=1;"},
        {"lower case", "if v\na 1\n", "if=v;a=1;"},
    };
    for (const FileCase &c : cases) {
        SCOPED_TRACE(c.name);
        DEF_clear();
        DEF_define("v");
        told_by([&] { EXPECT_EQ(read_all(c.text), c.result); });
    }
}

TEST(Deffile, TellsStrayBranches)
{
    DEF_clear();
    EXPECT_EQ(told_by([] { EXPECT_EQ(read_all("ELIF a\nELSE\nEND\nb 2\n"), "b=2;"); }),
              "DEF_get: elif without an if\n"
              "DEF_get: else without an if\n"
              "DEF_get: end without an if\n");
}

TEST(Deffile, BranchesAndWordsOutliveAFile)
{
    DEF_clear();
    EXPECT_EQ(read_all("DEF w\nIF other\n"), "def=w;");
    EXPECT_EQ(read_all("a 1\nEND\nIF w\nb 2\nEND\n"), "b=2;");
}

TEST(Deffile, HasRoomForTenWordsAndTwelveIfs)
{
    DEF_clear();
    for (int i = 0; i < 10; ++i) {
        EXPECT_EQ(DEF_define(("w" + std::to_string(i)).c_str()), 0);
    }
    EXPECT_EQ(told_by([] { EXPECT_EQ(DEF_define("w10"), -1); }),
              "DEF_define: more than 10 words: w10\n");
    std::string text;
    for (int i = 0; i < 13; ++i) {
        text += "IF w1\n";
    }
    text += "ELSE\nhidden 1\nEND\nseen 2\n";
    EXPECT_EQ(told_by([&] { EXPECT_EQ(read_all(text), "seen=2;"); }),
              "DEF_get: more than 12 ifs in one another: w1\n");
}

TEST(Deffile, FindsTheFileOfADirectory)
{
    const TempDir folder;
    char name[kDefNameRoom];
    char value[kDefValueRoom];
    for (const char *file : {"Tyr.res", ".tyrdef", "tyr.cfg"}) {
        folder.write(file, std::string("a ") + file + "\n");
        EXPECT_EQ(DEF_open(folder.path().c_str()), 0);
        EXPECT_EQ(DEF_get(name, value), 1);
        EXPECT_STREQ(value, file);
    }
    EXPECT_EQ(DEF_open(folder.file("absent").c_str()), -1);
    EXPECT_EQ(DEF_get(name, value), -1);
    EXPECT_EQ(DEF_open("/proc"), -1);
}

TEST(Deffile, MatchesPatterns)
{
    RES_set_program("prf");
    for (const char *fits : {"*level", "prf.level", "prf*level", "*.level", "*evel", "*f.*level"}) {
        EXPECT_EQ(DEF_match("level", fits), 1) << fits;
    }
    for (const char *unfit :
         {"level", "other.level", "*leve", "*level*", "*", "**level", "*LEVEL", ""}) {
        EXPECT_EQ(DEF_match("level", unfit), 0) << unfit;
    }
    EXPECT_EQ(DEF_match("levellevel", "*level"), 0);
    DEF_set_name("other");
    EXPECT_EQ(DEF_match("level", "other.level"), 1);
    EXPECT_EQ(DEF_match("level", "prf.level"), 0);
    DEF_set_name("+night");
    EXPECT_EQ(DEF_match("level", "prf.night.level"), 1);
    EXPECT_EQ(DEF_match("level", "*level"), 1);
    DEF_set_name("");
    EXPECT_EQ(DEF_match_other("*free"), 1);
    EXPECT_EQ(DEF_match_other("prf.free"), 1);
    EXPECT_EQ(DEF_match_other("other.free"), 0);
    EXPECT_EQ(DEF_match_other("free"), 0);
    EXPECT_STREQ(DEF_last_component("a.b*c"), "c");
}

TEST(Deffile, LooksAtThreeVariables)
{
    RES_set_program("prf");
    char value[kDefEnvRoom];
    EXPECT_EQ(DEF_env("some_res", "tyrsome", value), 0);
    const ScopedEnv plain("tyrsome_res", "plain");
    EXPECT_EQ(DEF_env("some_res", nullptr, value), 1);
    EXPECT_STREQ(value, "plain");
    const ScopedEnv own("tyrsome", "own");
    EXPECT_EQ(DEF_env("some_res", "tyrsome", value), 1);
    EXPECT_STREQ(value, "own");
    const ScopedEnv program("tyrprf.some_res", "program's");
    EXPECT_EQ(DEF_env("some_res", "tyrsome", value), 1);
    EXPECT_STREQ(value, "program's");
}

} // namespace
