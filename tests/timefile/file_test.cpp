#include <cstdlib>

#include "base/missing.h"
#include "base/prm.h"
#include "support/temp_dir.h"
#include "timefile/file.h"
#include "timefile/out_file.h"

namespace {

struct StdCase {
    const char *name;
    int is_std;
    int is_path;
};

TEST(File, KnowsStandardStreamsAndPaths)
{
    const std::vector<StdCase> cases = {
        {"",      1, 0},
        {"-",     1, 0},
        {"STD",   1, 0},
        {"stdN",  1, 0},
        {"stdin", 0, 0},
        {"--",    0, 0},
        {"/a",    0, 1},
        {"./a",   0, 1},
        {".a",    0, 1},
        {"~a",    0, 1},
        {"a/b",   0, 0},
    };
    for (const StdCase &c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(FILE_is_std(c.name), c.is_std);
        EXPECT_EQ(FILE_is_path(c.name), c.is_path);
    }
    EXPECT_EQ(FILE_open("", "r"), stdin);
    EXPECT_EQ(FILE_open("STD", "w"), stdout);
    EXPECT_EQ(FILE_exists("-"), 1);
    EXPECT_EQ(FILE_close(stdout), 0);
}

struct JoinCase {
    const char *directory;
    const char *name;
    const char *joined;
};

TEST(File, JoinsDirectoriesAndNames)
{
    const std::vector<JoinCase> cases = {
        {"/a",    "b",   "/a/b"  },
        {"/a/",   "b",   "/a/b"  },
        {"",      "b",   "b"     },
        {nullptr, "b",   "b"     },
        {"/a",    "~/b", "~/b"   },
        {"/a",    "/b",  "/b"    },
        {"/a",    "./b", "./b"   },
        {"/a",    "-",   "-"     },
        {"/a",    "b/c", "/a/b/c"},
    };
    char out[kFileNameRoom];
    for (const JoinCase &c : cases) {
        EXPECT_EQ(FILE_join(c.directory, c.name, out), out);
        EXPECT_STREQ(out, c.joined);
    }
    const std::string long_name(10000, 'x');
    FILE_join("/a", long_name.c_str(), out);
    EXPECT_EQ(std::string(out).size(), kFileNameRoom - 1);
}

TEST(File, ExpandsHomes)
{
    setenv("HOME", "/home/me", 1);
    char out[kFileNameRoom];
    FILE_expand("~", out);
    EXPECT_STREQ(out, "/home/me");
    FILE_expand("~/x", out);
    EXPECT_STREQ(out, "/home/me/x");
    FILE_expand("~root/x", out);
    EXPECT_STREQ(out, "/root/x");
    FILE_expand("~nobody_of_that_name/x", out);
    EXPECT_STREQ(out, "~nobody_of_that_name/x");
    FILE_expand("a~", out);
    EXPECT_STREQ(out, "a~");
}

TEST(File, MakesDirectoriesForWriting)
{
    const TempDir folder;
    const std::string path = folder.file("one/two/file");
    {
        const FilePtr file(FILE_open(path.c_str(), "w"));
        ASSERT_TRUE(file);
        std::fputs("text", file.get());
    }
    EXPECT_EQ(read_file(path), "text");
    EXPECT_EQ(FILE_size(path.c_str()), 4);
    EXPECT_GT(FILE_mtime(path.c_str()), 1000000000L);
    EXPECT_EQ(FILE_is_regular(path.c_str()), 1);
    EXPECT_EQ(FILE_is_dir(folder.path().c_str()), 1);
    EXPECT_EQ(FILE_is_device("/dev/null"), 1);
    EXPECT_EQ(FILE_is_fifo(path.c_str()), 0);
    EXPECT_EQ(FILE_open(folder.file("no/such").c_str(), "r"), nullptr);
    EXPECT_EQ(FILE_is_dir(folder.file("no").c_str()), 0) << "reading makes no directories";
    EXPECT_EQ(FILE_remove(path.c_str()), 0);
    EXPECT_EQ(FILE_remove(path.c_str()), -1);
    EXPECT_EQ(FILE_size(path.c_str()), -1);
    EXPECT_EQ(FILE_mtime(path.c_str()), -1);
    std::string tree = folder.file("a\\b/c");
    EXPECT_EQ(FILE_make_dirs(tree.data(), 0), 1);
    EXPECT_EQ(FILE_is_dir(folder.file("a/b/c").c_str()), 1);
    std::string impossible = "/proc/no/dir/file";
    EXPECT_EQ(FILE_make_dirs(impossible.data(), 1), 0);
}

TEST(File, PipesToACommand)
{
    const TempDir folder;
    const std::string out = folder.file("out");
    FILE *pipe = FILE_open(("|cat > " + out).c_str(), "w");
    ASSERT_TRUE(pipe);
    std::fputs("through the pipe", pipe);
    EXPECT_EQ(FILE_close(pipe), 0);
    EXPECT_EQ(read_file(out), "through the pipe");
    FILE *failing = FILE_open("|exit 3", "w");
    ASSERT_TRUE(failing);
    EXPECT_EQ(FILE_close(failing), -1);
    FILE *early = FILE_open("|exec 0<&-; exit 0", "w");
    ASSERT_TRUE(early);
    const std::string much(1000000, 'x');
    std::fputs(much.c_str(), early);
    EXPECT_EQ(FILE_close(early), -1);
    FILE *full = FILE_open("/dev/full", "w");
    ASSERT_TRUE(full);
    std::fputs("lost", full);
    EXPECT_EQ(FILE_close(full), -1);
}

struct TypeCase {
    const char *bytes;
    int type;
};

TEST(File, KnowsItsOwnKinds)
{
    const std::vector<TypeCase> cases = {
        {"TYRSFC",              kFileSurface },
        {"TYRUPA 1",            kFileUpperAir},
        {"TYRRAW\nx",           kFileRaw     },
        {"TYRGRID",             kFileGrid    },
        {"TYRMETA\n\n\n\n\n\n", kFileMeta    },
        {"TYRIMG2",             kFileImage   },
        {"TYRGRI",              -1           },
        {"TYRMET",              -1           },
        {"tyrraw",              -1           },
        {"",                    -1           },
    };
    const TempDir folder;
    for (const TypeCase &c : cases) {
        SCOPED_TRACE(c.bytes);
        const std::string path = folder.write("file", c.bytes);
        EXPECT_EQ(FILE_type(path.c_str()), c.type);
    }
    folder.write("raw", "TYRRAW\n");
    EXPECT_EQ(FILE_type(folder.file("raw-3:%5.1f").c_str()), kFileRaw) << "cut at the first dash";
    EXPECT_EQ(FILE_type(folder.file("absent").c_str()), -1);
    EXPECT_EQ(FILE_type(folder.path().c_str()), -1);
    EXPECT_EQ(FILE_type("-"), -1);
}

struct CheckCase {
    const char *name;
    int param, batch, kind;
    const char *answer; ///< null where nothing may be asked
    int result;
};

TEST(File, DecidesOnAnOutputFileThatExists)
{
    const std::vector<CheckCase> cases = {
        {"use by parameter",       3,     0, 1, nullptr,  3},
        {"append by parameter",    2,     0, 1, nullptr,  2},
        {"batch",                  -9999, 1, 1, nullptr,  3},
        {"parameter before batch", 1,     1, 1, nullptr,  1},
        {"kind without question",  -9999, 0, 0, nullptr,  0},
        {"yes",                    -9999, 0, 1, "Yes\n",  1},
        {"over",                   -9999, 0, 2, "o\n",    1},
        {"append",                 -9999, 0, 2, "app\n",  2},
        {"append isn't offered",   -9999, 0, 1, "app\n",  3},
        {"no",                     -9999, 0, 2, "n\n",    3},
        {"anything else",          -9999, 0, 2, "what\n", 3},
    };
    const TempDir folder;
    const std::string path = folder.write("file", "x");
    for (const CheckCase &c : cases) {
        SCOPED_TRACE(c.name);
        PRM_set(kPrmFileParam, c.param);
        PRM_set(kPrmBatch, c.batch);
        const std::string answer = folder.write("answer", c.answer ? c.answer : "");
        ASSERT_TRUE(std::freopen(answer.c_str(), "r", stdin));
        testing::internal::CaptureStdout();
        EXPECT_EQ(FILE_check_out(path.c_str(), c.kind), c.result);
        const std::string asked = testing::internal::GetCapturedStdout();
        const std::string choices = c.kind == 2 ? "Y,N,Use,Over,App" : "Y,N,Use,Over";
        EXPECT_EQ(asked,
                  c.answer ? path + ": exists overwrite (" + choices + "): " : std::string());
        EXPECT_EQ(FILE_check_out(folder.file("absent").c_str(), c.kind), 1);
        EXPECT_EQ(FILE_check_out("-", c.kind), 1);
    }
    PRM_clear(kMissingInt);
}

} // namespace
