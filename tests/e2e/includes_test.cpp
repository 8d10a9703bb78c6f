// The script that holds the order of the house finds what breaks it.

#include <filesystem>

#include <gtest/gtest.h>

#include "support/run.h"
#include "support/temp_dir.h"

namespace {

TEST(CheckIncludes, FindsArrowsUpwardAndCircles)
{
    const struct {
        const char *name;
        const char *file, *text;
        const char *fault;
    } cases[] = {
        {"clean", "tyr/gks/b.cpp", "#include \"tyr/base/a.h\"\n", ""},
        {"upward", "tyr/base/a.cpp", "#include \"tyr/gks/b.h\"\n",
         "arrow upward: tyr/base/a.cpp includes tyr/gks/b.h\n"},
        {"circle", "tyr/base/c.cpp", "#include \"tyr/base/a.h\"\n",
         "circle: tyr/base/a tyr/base/c\n"},
        {"stranger", "tyr/attic/b.cpp", "", "tyr/attic/b.cpp: the room attic has no place"},
        {"twin", "tyr/gks/twin.cpp", "", "one name in two rooms: tyr/base/twin.cpp"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        const TempDir dir;
        for (const char *room : {"tyr/base", "tyr/gks", "tyr/attic", "programs"}) {
            std::filesystem::create_directories(dir.file(room));
        }
        dir.write("tyr/base/a.h", "#include \"tyr/base/c.h\"\n");
        dir.write("tyr/base/c.h", "");
        dir.write("tyr/base/twin.cpp", "");
        dir.write("tyr/gks/b.h", "");
        dir.write(c.file, std::string("#include \"tyr/base/c.h\"\n") + c.text);
        const RunResult result = run({TYR_SOURCE_DIR "/scripts/check-includes", dir.path()});
        EXPECT_EQ(result.code, c.fault[0] == '\0' ? 0 : 1) << result.out << result.err;
        EXPECT_NE(result.out.find(c.fault), std::string::npos) << result.out;
    }
}

TEST(CheckIncludes, HouseIsInOrder)
{
    const RunResult result = run({TYR_SOURCE_DIR "/scripts/check-includes"});
    EXPECT_EQ(result.code, 0) << result.out;
}

} // namespace
