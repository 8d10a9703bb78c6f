#include <cstring>

#include "support/temp_dir.h"
#include "tyr/base/bytes.h"
#include "tyr/base/file.h"
#include "tyr/base/str.h"

namespace {

TEST(Str, SplitsAsTold)
{
    const struct {
        const char *name, *text;
        std::vector<std::string> pieces;
    } cases[] = {
        {"plain", "a,b,c", {"a", "b", "c"}},
        {"one", "abc", {"abc"}},
        {"empty in the middle", "a,,b", {"a", "", "b"}},
        {"leading", ",a", {"", "a"}},
        {"trailing run", "a,b,,,", {"a", "b"}},
        {"only separators", ",,,", {""}},
        {"blanks stay", " a , b", {" a ", " b"}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        int count = 0;
        char **array = nullptr;
        EXPECT_EQ(STR_split(c.text, ',', &count, &array), 0);
        EXPECT_EQ(std::vector<std::string>(array, array + count), c.pieces);
        STR_free_list(count, array);
        EXPECT_EQ(STR_fields(c.text, ','), c.pieces);
    }
}

TEST(Str, SplitsNothingIntoAnEmptyList)
{
    for (const char *text : {static_cast<const char *>(nullptr), ""}) {
        int count = 7;
        char **array = nullptr;
        EXPECT_EQ(STR_split(text, ',', &count, &array), -1);
        EXPECT_EQ(count, 0);
        EXPECT_EQ(array, nullptr);
        STR_free_list(count, array);
    }
}

TEST(Str, ComparesWithoutCase)
{
    EXPECT_EQ(STR_casecmp("WarN", "wARn"), 0);
    EXPECT_EQ(STR_casecmp("a", "C"), 'a' - 'c');
    EXPECT_GT(STR_casecmp("abc", "AB"), 0);
    EXPECT_EQ(STR_casecmp(nullptr, "a"), 1);
    EXPECT_EQ(STR_casecmp("a", nullptr), 1);
    EXPECT_EQ(STR_ncasecmp("exit now", "EXIT", 4), 0);
    EXPECT_NE(STR_ncasecmp("exi", "EXIT", 4), 0);
    EXPECT_EQ(STR_ncasecmp("ab", "AB", 99), 0);
}

TEST(Str, EditsInPlace)
{
    const struct {
        const char *name;
        void (*edit)(char *);
        const char *before, *after;
    } cases[] = {
        {"clean line", STR_clean_line, "a\r b  \r\n", "a b"},
        {"clean nothing", STR_clean_line, "  \n", ""},
        {"trailing blanks", STR_strip_trailing, " a b   ", " a b"},
        {"carriage return", STR_strip_cr, "a\rb\r\r", "a\rb"},
        {"unescape", STR_unescape, "a\\,b\\\\c\\", "a,b\\c"},
        {"lower", [](char *t) { STR_lower(t); }, "AbZ-19", "abz-19"},
        {"replace", [](char *t) { STR_replace_char(t, '_', ' '); }, "_a_b", " a b"},
        {"remove", [](char *t) { STR_remove_char(t, 'a'); }, "banana", "bnn"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        std::string text = c.before;
        c.edit(text.data());
        EXPECT_STREQ(text.c_str(), c.after);
    }
}

TEST(Str, KnowsIntegers)
{
    for (const char *text : {"0", "-12", "0099"}) {
        EXPECT_EQ(STR_is_int(text), 1) << text;
    }
    for (const char *text : {"", "-", "+1", "1.0", "1a", " 1"}) {
        EXPECT_EQ(STR_is_int(text), 0) << text;
    }
}

TEST(Str, PrintsRealsWithTheDigitsOfTheirSize)
{
    // decimals - e - 1 digits behind the point, e the power of ten of the value
    const struct {
        const char *spec;
        float value;
        const char *text;
    } cases[] = {
        {"2.2.0", 5.0F, "5.0"},     {"2.2.0", 10.0F, "10"},     {"2.2.0", 0.5F, "0.50"},
        {"2.2.0", -40.0F, "-40"},   {"2.2.0", 0.0F, " 0"},      {"2.2.0", 1e-6F, " 0"},
        {"5.3.1", 12.34F, " 12.3"}, {"1.2.0", 1500.0F, "1500"}, {"0.4.2", 3.14159F, "3.142"},
    };
    for (const auto &c : cases) {
        char out[kRealTextRoom];
        EXPECT_EQ(STR_format_real(out, c.spec, c.value), static_cast<int>(std::strlen(c.text)));
        EXPECT_STREQ(out, c.text) << c.spec << ' ' << c.value;
    }
    char out[kRealTextRoom];
    EXPECT_LT(STR_format_real(out, "9.999.999", 3e38F), static_cast<int>(kRealTextRoom));
}

TEST(Str, ReadsLinesWithinTheirRoom)
{
    const TempDir folder;
    const std::string path =
        folder.write("lines", "first\n\n\nsecond\r\n" + std::string(10000, 'x') + "\nlast");
    const FilePtr file(FILE_open(path.c_str(), "r"));
    ASSERT_TRUE(file);
    char line[11];
    EXPECT_EQ(STR_read_line(file.get(), line, 10), 1);
    EXPECT_STREQ(line, "first");
    EXPECT_EQ(STR_read_line_len(file.get(), line, 10), 0);
    EXPECT_EQ(STR_read_line_len(file.get(), line, 10), 0);
    EXPECT_STREQ(line, "");
    EXPECT_EQ(STR_read_line_len(file.get(), line, 10), 7);
    EXPECT_STREQ(line, "second\r");
    EXPECT_EQ(STR_read_line_len(file.get(), line, 10), 10);
    EXPECT_EQ(STR_read_line_len(file.get(), line, 10), 10); // still the long line
    EXPECT_EQ(STR_skip_line(file.get()), 1);
    EXPECT_EQ(STR_read_line(file.get(), line, 10), 1);
    EXPECT_STREQ(line, "last");
    EXPECT_EQ(STR_read_line(file.get(), line, 10), -1);
    EXPECT_STREQ(line, "");
    EXPECT_EQ(STR_skip_line(file.get()), -1);
}

TEST(Str, CutLineDropsWhatIsTooLong)
{
    const TempDir folder;
    const std::string path = folder.write("lines", std::string(10000, 'x') + "\nnext\n");
    const FilePtr file(FILE_open(path.c_str(), "r"));
    char line[11];
    EXPECT_EQ(STR_read_cut_line(file.get(), line, 10), 1);
    EXPECT_EQ(STR_read_cut_line(file.get(), line, 10), 1);
    EXPECT_STREQ(line, "next");
}

TEST(Bytes, SwapsByTheOrderOfTheData)
{
    const struct {
        const char *name;
        int order;
        bool swaps; ///< on a little-endian host
    } cases[] = {
        {"big-endian data", 1, true},
        {"little-endian data", 2, false},
        {"never", -1, false},
        {"any other", 7, true},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        BYTE_set_order(c.order);
        unsigned words[2] = {0x01020304U, 0xA0B0C0D0U};
        EXPECT_EQ(BYTE_swap4n(words, 2), c.swaps ? 0 : -1);
        EXPECT_EQ(words[0], c.swaps ? 0x04030201U : 0x01020304U);
        EXPECT_EQ(words[1], c.swaps ? 0xD0C0B0A0U : 0xA0B0C0D0U);
        unsigned long word = 0x0102030405060708UL;
        EXPECT_EQ(BYTE_swap8(&word), c.swaps ? 0 : -1);
        EXPECT_EQ(word, c.swaps ? 0x0807060504030201UL : 0x0102030405060708UL);
    }
}

TEST(Num, Interpolates)
{
    EXPECT_FLOAT_EQ(NUM_interp(1.5F, 1.0F, 2.0F, 10.0F, 20.0F), 15.0F);
    EXPECT_FLOAT_EQ(NUM_interp(3.0F, 1.0F, 2.0F, 10.0F, 20.0F), 30.0F);
}

} // namespace
