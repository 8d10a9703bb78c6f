#include <cstdlib>

#include "support/capture.h"
#include "tyr/base/file.h"
#include "tyr/base/missing.h"
#include "tyr/base/prm.h"
#include "tyr/names/out_file.h"

namespace {

TEST(File, KnowsStandardStreamsAndPaths)
{
    for (const char *name : {"", "-", "STD", "stdN"}) {
        EXPECT_EQ(FILE_is_std(name), 1) << name;
        EXPECT_EQ(FILE_is_path(name), 0) << name;
    }
    for (const char *name : {"/a", "./a", ".a", "~a"}) {
        EXPECT_EQ(FILE_is_std(name), 0) << name;
        EXPECT_EQ(FILE_is_path(name), 1) << name;
    }
    for (const char *name : {"stdin", "--", "a/b"}) {
        EXPECT_EQ(FILE_is_std(name), 0) << name;
        EXPECT_EQ(FILE_is_path(name), 0) << name;
    }
    EXPECT_EQ(FILE_open("", "r"), stdin);
    EXPECT_EQ(FILE_open("STD", "w"), stdout);
    EXPECT_EQ(FILE_exists("-"), 1);
    EXPECT_EQ(FILE_close(stdout), 0);
}

TEST(File, JoinsDirectoriesAndNames)
{
    const struct {
        const char *directory, *name, *joined;
    } cases[] = {
        {"/a", "b", "/a/b"},     {"/a/", "b", "/a/b"}, {"", "b", "b"}, {nullptr, "b", "b"},

        {"/a", "b/c", "/a/b/c"},
    };
    char out[kFileNameRoom];
    for (const auto &c : cases) {
        EXPECT_EQ(FILE_join(c.directory, c.name, out), out);
        EXPECT_STREQ(out, c.joined);
    }
    for (const char *whole : {"~/b", "/b", "./b", "-"}) {
        EXPECT_STREQ(FILE_join("/a", whole, out), whole);
    }
    const std::string long_name(10000, 'x');
    FILE_join("/a", long_name.c_str(), out);
    EXPECT_EQ(std::string(out).size(), kFileNameRoom - 1);
}

TEST(File, ExpandsHomes)
{
    setenv("HOME", "/home/me", 1);
    const struct {
        const char *name, *expanded;
    } cases[] = {
        {"~", "/home/me"},      {"~/x", "/home/me/x"},
        {"~root/x", "/root/x"}, {"~nobody_of_that_name/x", "~nobody_of_that_name/x"},
        {"a~", "a~"},
    };
    for (const auto &c : cases) {
        char out[kFileNameRoom];
        FILE_expand(c.name, out);
        EXPECT_STREQ(out, c.expanded);
    }
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
    const std::string much(1000000, 'x');
    const struct {
        std::string name, text;
        int closed;
    } cases[] = {
        {"|cat > " + out, "through the pipe", 0},
        {"|exit 3", "", -1},
        {"|exec 0<&-; exit 0", much, -1},
        {"/dev/full", "lost", -1},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        FILE *file = FILE_open(c.name.c_str(), "w");
        ASSERT_TRUE(file);
        std::fputs(c.text.c_str(), file);
        EXPECT_EQ(FILE_close(file), c.closed);
    }
    EXPECT_EQ(read_file(out), "through the pipe");
}

TEST(File, KnowsItsOwnKinds)
{
    const struct {
        const char *bytes;
        int type;
    } cases[] = {
        {"TYRSFC", kFileSurface}, {"TYRUPA 1", kFileUpperAir},        {"TYRRAW\nx", kFileRaw},
        {"TYRGRID", kFileGrid},   {"TYRMETA\n\n\n\n\n\n", kFileMeta}, {"TYRIMG2", kFileImage},
    };
    const TempDir folder;
    for (const auto &c : cases) {
        const std::string path = folder.write("file", c.bytes);
        EXPECT_EQ(FILE_type(path.c_str()), c.type) << c.bytes;
        EXPECT_EQ(FILE_type((path + "-3:%5.1f").c_str()), c.type) << "cut at the first dash";
    }
    for (const char *bytes : {"TYRGRI", "TYRMET", "tyrraw", ""}) {
        EXPECT_EQ(FILE_type(folder.write("file", bytes).c_str()), -1) << bytes;
    }
    for (const std::string &name : {folder.file("absent"), folder.path(), std::string("-")}) {
        EXPECT_EQ(FILE_type(name.c_str()), -1) << name;
    }
}

TEST(File, DecidesOnAnOutputFileThatExists)
{
    const struct {
        const char *name;
        int param, batch, kind;
        const char *answer; ///< null where nothing may be asked
        int result;
    } cases[] = {
        {"use by parameter", 3, 0, 1, nullptr, 3},
        {"append by parameter", 2, 0, 1, nullptr, 2},
        {"batch", -9999, 1, 1, nullptr, 3},
        {"parameter before batch", 1, 1, 1, nullptr, 1},
        {"kind without question", -9999, 0, 0, nullptr, 0},
        {"yes", -9999, 0, 1, "Yes\n", 1},
        {"over", -9999, 0, 2, "o\n", 1},
        {"append", -9999, 0, 2, "app\n", 2},
        {"append isn't offered", -9999, 0, 1, "app\n", 3},
        {"no", -9999, 0, 2, "n\n", 3},
        {"anything else", -9999, 0, 2, "what\n", 3},
    };
    const TempDir folder;
    const std::string path = folder.write("file", "x");
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        PRM_set(kPrmFileParam, c.param);
        PRM_set(kPrmBatch, c.batch);
        type_in(c.answer ? c.answer : "");
        const std::string asked =
            shown_by([&] { EXPECT_EQ(FILE_check_out(path.c_str(), c.kind), c.result); });
        const std::string choices = c.kind == 2 ? "Y,N,Use,Over,App" : "Y,N,Use,Over";
        EXPECT_EQ(asked, c.answer ? path + ": exists overwrite (" + choices + "): " : "");
        EXPECT_EQ(FILE_check_out(folder.file("absent").c_str(), c.kind), 1);
        EXPECT_EQ(FILE_check_out("-", c.kind), 1);
    }
    PRM_clear(kMissingInt);
}

} // namespace
