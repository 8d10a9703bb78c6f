// The manual says what the code does: its tables, its commands, the pages made from it.

#include <filesystem>

#include <gtest/gtest.h>

#include "support/run.h"
#include "support/temp_dir.h"

namespace {

TEST(Manual, TablesAreThoseOfTheCode)
{
    const RunResult checked = run({"python3", TYR_SOURCE_DIR "/tools/manual_tables.py", "--check"});
    EXPECT_EQ(checked.code, 0);
    EXPECT_EQ(checked.out + checked.err, "");
}

TEST(Manual, OptionsOfEachProgramAreInTheTable)
{
    const std::string text = read_file(TYR_SOURCE_DIR "/docs/manual/options.md");
    for (const auto &folder : std::filesystem::directory_iterator(TYR_SOURCE_DIR "/programs")) {
        const std::string program = folder.path().filename().string();
        SCOPED_TRACE(program);
        const RunResult table = run({TYR_BINARY_DIR "/bin/" + program, "--option-table"});
        ASSERT_EQ(table.code, 0);
        int count = 0;
        for (size_t at = 0; at < table.out.size(); at = table.out.find('\n', at) + 1) {
            const std::string key = table.out.substr(at, table.out.find('\t', at) - at);
            EXPECT_NE(text.find("| `-" + key + "` |"), std::string::npos) << key;
            count++;
        }
        EXPECT_GT(count, 10);
    }
}

TEST(Manual, CommandsDraw)
{
    const RunResult drawn =
        run({"bash", TYR_SOURCE_DIR "/scripts/manual.sh", TYR_BINARY_DIR "/bin"}, {.seconds = 240});
    EXPECT_EQ(drawn.code, 0);
    EXPECT_EQ(drawn.err, "");
}

/// A page without its first lines, which name the version of the tool that made it.
std::string page_body(const std::string &path)
{
    const std::string text = read_file(path);
    return text.substr(std::min(text.find(".SH"), text.size()));
}

TEST(Manual, PagesAreMadeFromIt)
{
    if (!have_program("pandoc")) {
        GTEST_SKIP() << "pandoc isn't installed";
    }
    const RunResult version = run({"pandoc", "--version"});
    if (version.out.rfind("pandoc 2.17", 0) != 0) {
        GTEST_SKIP() << "the pages in docs/man come from pandoc 2.17, others write them otherwise";
    }
    const TempDir dir;
    ASSERT_EQ(run({"bash", TYR_SOURCE_DIR "/scripts/man.sh", dir.path()}).code, 0);
    int compared = 0;
    for (const auto &entry : std::filesystem::recursive_directory_iterator(dir.path())) {
        if (entry.is_regular_file()) {
            const std::string name = std::filesystem::relative(entry.path(), dir.path()).string();
            EXPECT_EQ(page_body(entry.path().string()),
                      page_body(TYR_SOURCE_DIR "/docs/man/" + name))
                << name << ": run scripts/man.sh";
            compared++;
        }
    }
    EXPECT_GE(compared, 12);
}

} // namespace
