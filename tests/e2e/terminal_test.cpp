#include <gtest/gtest.h>

#include "support/program.h"
#include "support/section_reader.h"
#include "support/temp_dir.h"
#include "support/terminal.h"

namespace {

/// The program at a terminal, over two sample files found by the name convention.
class AtTerminal : public testing::Test {
  protected:
    AtTerminal() : files_(make_samples(dir_.file("data"), "12", 2)) {}

    std::vector<std::string> command(std::vector<std::string> more = {}) const
    {
        std::vector<std::string> words = {profiler_path(),         "-df", "/nonexistent",    "-fp",
                                          TYR_SOURCE_DIR "/data",  "-dp", dir_.file("data"), "-de",
                                          "p," + dir_.file("s.ps")};
        words.insert(words.end(), more.begin(), more.end());
        return words;
    }

    TempDir dir_;
    std::vector<std::string> files_;
};

TEST_F(AtTerminal, EveryQuestionIsAskedAndAnswered)
{
    Terminal t(command());
    ASSERT_TRUE(t.wait_for("List of available files:"));
    ASSERT_TRUE(t.wait_for("20261121_1300_prf.nc"));
    ASSERT_TRUE(t.wait_for("Enter the profiler filename: "));
    t.type("set label=lr:from_the_prompt");
    ASSERT_TRUE(t.wait_for("Enter the profiler filename: "));
    t.type("20261121_12");
    ASSERT_TRUE(t.wait_for("Available stations:"));
    ASSERT_TRUE(t.wait_for("PLTC2"));
    ASSERT_TRUE(t.wait_for("Enter the stations: "));
    t.type("pltc2");
    ASSERT_TRUE(t.wait_for("Variable Menu"));
    ASSERT_TRUE(t.wait_for("Enter the variable: "));
    t.type("?");
    ASSERT_TRUE(t.wait_for("wbrb,"));
    ASSERT_TRUE(t.wait_for("Enter the variable: "));
    t.type("1");
    EXPECT_EQ(t.finish(), 0) << t.screen();
    const DrawnSection section = read_section(read_file(dir_.file("s.ps")));
    EXPECT_EQ(section.error, "");
    EXPECT_GT(section.barbs.size(), 20U);
    EXPECT_EQ(section.texts.back(), "from the prompt");
}

TEST_F(AtTerminal, AKeywordChoosesAVariable)
{
    Terminal t(command({"-id", "PLTC2", files_[0]}));
    ASSERT_TRUE(t.wait_for("Enter the variable: "));
    t.type("wspd");
    EXPECT_EQ(t.finish(), 0) << t.screen();
    const DrawnSection section = read_section(read_file(dir_.file("s.ps")));
    EXPECT_TRUE(section.barbs.empty());
    EXPECT_GT(section.texts.size(), 30U);
}

TEST_F(AtTerminal, FourWrongNamesEndWithTen)
{
    Terminal t(command());
    for (const char *name : {"a", "b", "c", "d"}) {
        ASSERT_TRUE(t.wait_for("Enter the profiler filename: ")) << t.screen();
        t.type(name);
        ASSERT_TRUE(t.wait_for("File not found: ")) << t.screen();
    }
    EXPECT_EQ(t.finish(), 10) << t.screen();
}

TEST_F(AtTerminal, ExitEndsAtAnyPrompt)
{
    struct Case {
        const char *prompt;
        std::vector<std::string> words;
    };
    const Case cases[] = {
        {"Enter the profiler filename: ", {}},
        {"Enter the stations: ", {files_[0]}},
        {"Enter the variable: ", {"-id", "PLTC2", files_[0]}},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.prompt);
        Terminal t(command(c.words));
        ASSERT_TRUE(t.wait_for(c.prompt)) << t.screen();
        t.type("Exit");
        EXPECT_EQ(t.finish(), 0) << t.screen();
    }
}

} // namespace
