#include <cstring>

#include "tyr/base/scan.h"

namespace {

/// One scan that stores a number.
struct NumberCase {
    const char *name, *text, *format;
    int fields;
    double value; ///< -1 where nothing is stored
    int consumed;
};

TEST(Scan, ReadsIntegers)
{
    const std::vector<NumberCase> cases = {
        {"plain", "12 x", "%d", 1, 12, 2},
        {"negative", "-12", "%d", 1, -12, 3},
        {"lone minus", "- 3", "%d", 0, -1, 0},
        {"letter", "x", "%d", 0, -1, 0},
        {"exact width", "12345", "%3d", 1, 123, 3},
        {"exact width not met", "12 ", "%3d", 0, -1, 0},
        {"at most", "12 ", "%<3d", 1, 12, 2},
        {"blanks around", "  12 ", "%5D", 1, 12, 5},
        {"blanks in front", "   12", "%5D", 1, 12, 5},
        {"blanks only", "     ", "%5D", 0, -1, 0},
        {"literal in front", "T12", "T%d", 1, 12, 3},
        {"literal in the wrong case", "t12", "T%d", 0, -1, 0},
        {"blank takes a run", "\t\n 7", " %d", 1, 7, 4},
        {"blank needs one", "7", " %d", 0, -1, 0},
        {"discarded", "12 34", "%*d %d", 2, 34, 5},
        {"missing marker", "M 1", "%!M!d", 1, -9999, 1},
        {"marker of two", "//x", "%2!//!d", 1, -9999, 2},
        {"neither", "x", "%!M!d", 0, -1, 0},
        {"characters so far", "abc", "ab%n", 1, 2, 2},
        {"too long for an int", "99999999999999999999", "%d", 1, 2147483647, 20},
        {"a hundred digits are cut", nullptr, "%d", 1, 0, 79},
        {"no conversion", "q5", "%q%d", 1, 5, 2},
        {"format ends in a percent", "5", "%d%", 1, 5, 1},
    };
    const std::string zeros(100, '0');
    for (const NumberCase &c : cases) {
        SCOPED_TRACE(c.name);
        ScanRec scan;
        SCAN_init(&scan, c.text ? c.text : zeros.c_str());
        int value = -1;
        EXPECT_EQ(scanp(&scan, c.format, &value), c.fields);
        EXPECT_EQ(value, static_cast<int>(c.value));
        EXPECT_EQ(scan.consumed, c.consumed);
        EXPECT_EQ(scan.position, 0);
    }
}

TEST(Scan, ReadsReals)
{
    const std::vector<NumberCase> cases = {
        {"plain", "3.25x", "%f", 1, 3.25, 4},
        {"marker and value", "-3.5", "%!-!f", 1, -3.5, 4},
        {"marker", "-", "%!-!f", 1, -9999.0, 1},
        {"neither", "x", "%!-!f", 0, -1, 0},
        {"exponent", "1.5E-2", "%f", 1, 0.015, 6},
        {"e without digits", "12e", "%f", 1, 12, 2},
        {"second point", "1.2.3", "%f", 1, 1.2, 3},
        {"only a point", ".", "%f", 0, -1, 0},
        {"point first", ".5", "%f", 1, 0.5, 2},
        {"blanks around", "  1.5  2", "%F", 1, 1.5, 7},
        {"blanks within a width", " 12.5 ", "%6F", 1, 12.5, 6},
        {"width cuts", "123.456", "%4f", 1, 123, 4},
    };
    for (const NumberCase &c : cases) {
        SCOPED_TRACE(c.name);
        ScanRec scan;
        SCAN_init(&scan, c.text);
        float value = -1.0F;
        EXPECT_EQ(scanp(&scan, c.format, &value), c.fields);
        EXPECT_FLOAT_EQ(value, static_cast<float>(c.value));
        EXPECT_EQ(scan.consumed, c.consumed);
    }
}

TEST(Scan, ReadsTexts)
{
    const std::string long_text(200, 'x');
    const std::string cut_text(79, 'x');
    const struct {
        const char *name;
        std::string text;
        const char *format;
        int fields;
        std::string value; ///< "?" where nothing is stored
    } cases[] = {
        {"word", "abc def", "%s", 1, "abc"},
        {"rest", "abc def", "%S", 1, "abc def"},
        {"rest within a width", "abc def", "%<5S", 1, "abc d"},
        {"at most 79", long_text, "%<79s", 1, cut_text},
        {"cut at the room", long_text, "%s", 1, cut_text},
        {"digits", "12ab", "%N", 1, "12"},
        {"letters", "ab12", "%A", 1, "ab"},
        {"white space", " \n\tx", "%w", 1, " \n\t"},
        {"within a line", " \t\nx", "%W", 1, " \t"},
        {"set", "12.5km", "%[0123456789.]", 1, "12.5"},
        {"classes of a set", "a1/b-", "%[/A/N//]", 1, "a1/b"},
        {"not in a set", "abc;d", "%[^;]", 1, "abc"},
        {"alternative", "S12", "%(N|E|S|W)", 1, "S"},
        {"first alternative", "NNE", "%(N|NNE)", 1, "N"},
        {"alternative of a width", "S12", "%2(N|S)", 0, "?"},
        {"no alternative", "X12", "%(N|E|S|W)", 0, "?"},
        {"optional alternative", "X12", "%<(N|E)", 1, "?"},
        {"missing alternative", "X12", "%!X!(N|E)", 1, ""},
        {"unclosed set", "abc", "%[ab", 1, "ab"},
        {"nothing there", " x", "%s", 0, "?"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        ScanRec scan;
        SCAN_init(&scan, c.text.c_str());
        char value[kScanFieldRoom] = "?";
        EXPECT_EQ(scanp(&scan, c.format, value), c.fields);
        EXPECT_EQ(value, c.value);
    }
}

TEST(Scan, TakesCharactersWithoutAnEnd)
{
    ScanRec scan;
    SCAN_init(&scan, "abcd");
    char value[4] = "???";
    EXPECT_EQ(scanp(&scan, "%2c", value), 1);
    EXPECT_STREQ(value, "ab?");
    EXPECT_EQ(scanp(&scan, "%c", value), 1);
    EXPECT_STREQ(value, "ab?");
    SCAN_init(&scan, "ab");
    EXPECT_EQ(scanp(&scan, "%3c", value), 0);
}

TEST(Scan, ReadsAPositionWithMissingMarkers)
{
    ScanRec scan;
    SCAN_init(&scan, "41.5    - 7");
    float latitude = 0.0F;
    float longitude = 0.0F;
    int offset = 0;
    EXPECT_EQ(scanp(&scan, "%!-!f %n%!-!f ", &latitude, &offset, &longitude), 3);
    EXPECT_FLOAT_EQ(latitude, 41.5F);
    EXPECT_EQ(offset, 8);
    EXPECT_EQ(longitude, -9999.0F);
    EXPECT_EQ(scan.complete, 1);
    EXPECT_EQ(scan.stored, 3);
    SCAN_advance(&scan);
    EXPECT_STREQ(SCAN_here(&scan), "7");
    // a field that is neither a number nor its marker keeps no place
    SCAN_init(&scan, "x12");
    latitude = -1.0F;
    EXPECT_EQ(scanp(&scan, "%!-!fx%d", &latitude, &offset), 1);
    EXPECT_EQ(offset, 12);
    EXPECT_EQ(latitude, -1.0F);
}

TEST(Scan, MovesInTheLineAndNowhereElse)
{
    char text[] = "one two";
    ScanRec scan;
    SCAN_init(&scan, text);
    EXPECT_EQ(SCAN_find(&scan, "two"), 1);
    EXPECT_EQ(SCAN_get_pos(&scan), 4);
    EXPECT_EQ(SCAN_peek(&scan, -4), 'o');
    EXPECT_EQ(SCAN_peek(&scan, 3), '\0');
    EXPECT_EQ(SCAN_peek(&scan, -5), '\0');
    SCAN_poke(&scan, 0, 'T');
    SCAN_poke(&scan, 99, 'T');
    EXPECT_STREQ(text, "one Two");
    EXPECT_EQ(SCAN_find(&scan, "one"), 0);
    SCAN_skip(&scan, 1000000);
    int value = 0;
    EXPECT_EQ(scanp(&scan, "%d", &value), -1);
    SCAN_set_pos(&scan, -5);
    EXPECT_EQ(SCAN_get_pos(&scan), 0);
    EXPECT_EQ(scanp(&scan, "", &value), -1);
}

} // namespace
