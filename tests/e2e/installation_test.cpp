// The installed tree is enough: a program is built against it by both ways, and draws.

#include <gtest/gtest.h>

#include "support/run.h"
#include "support/temp_dir.h"

namespace {

/// Whether both pictures hold barbs: a stroke for each of the 312 winds at least.
void expect_picture(const std::string &program, const std::string &prefix, const TempDir &dir)
{
    const std::string picture = dir.file("jet.ps");
    const RunResult drawn =
        run({program, "-fp", prefix + "/etc", "-de", "p," + picture + ",eps,port,color"},
            {.folder = dir.path()});
    ASSERT_EQ(drawn.code, 0) << drawn.out << drawn.err;
    const std::string text = read_file(picture);
    size_t strokes = 0;
    for (size_t at = text.find("stroke"); at != std::string::npos;
         at = text.find("stroke", at + 1)) {
        strokes++;
    }
    EXPECT_GT(strokes, 312U);
    EXPECT_NE(text.find("A jet of our own"), std::string::npos);
    EXPECT_NE(text.find("%%EOF"), std::string::npos);
}

TEST(Installation, ProgramIsBuiltAgainstItByBothWays)
{
#ifdef TYR_SANITIZED
    GTEST_SKIP() << "the library is instrumented: others can't link it plainly";
#endif
    if (!have_program("pkg-config")) {
        GTEST_SKIP() << "pkg-config isn't installed";
    }
    const TempDir dir;
    const std::string prefix = dir.file("a tree");
    const RunResult installed = run({"cmake", "--install", TYR_BINARY_DIR, "--prefix", prefix});
    ASSERT_EQ(installed.code, 0) << installed.err;

    const std::string build = dir.file("by package");
    const RunResult made = run({"cmake", "-S", TYR_SOURCE_DIR "/examples", "-B", build,
                                "-DCMAKE_BUILD_TYPE=Debug", "-DCMAKE_PREFIX_PATH=" + prefix});
    ASSERT_EQ(made.code, 0) << made.out << made.err;
    const RunResult built = run({"cmake", "--build", build});
    ASSERT_EQ(built.code, 0) << built.out << built.err;
    expect_picture(build + "/section", prefix, dir);

    const RunResult compiled =
        run({"sh", "-c",
             "eval g++ -std=c++20 -o by_words '\"$1\"' "
             "$(PKG_CONFIG_PATH=\"$2/lib/pkgconfig\" pkg-config --cflags --libs tyr)",
             "sh", TYR_SOURCE_DIR "/examples/section.cpp", prefix},
            {.folder = dir.path()});
    ASSERT_EQ(compiled.code, 0) << compiled.out << compiled.err;
    expect_picture(dir.file("by_words"), prefix, dir);
}

} // namespace
