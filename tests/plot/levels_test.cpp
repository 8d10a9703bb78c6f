#include <cmath>

#include "support/temp_dir.h"
#include "tyr/base/missing.h"
#include "tyr/base/res.h"
#include "tyr/gks/colour_table.h"
#include "tyr/plot/levels.h"

namespace {

/// No fill colours: its END stands first.
constexpr const char *kTable = "END\nblack 0 0 0\nred 1 0 0\ngreen 0 1 0\nblue 0 0 1\nwhite 1 1 1\n"
                               "five 0 0 0\nsix 0 0 0\nseven 0 0 0\neight 0 0 0\n";
enum Colours { kRed = 1, kGreen = 2, kBlue = 3, kWhite = 4 };

struct Levels : ::testing::Test {
    TempDir folder;
    Levels()
    {
        RES_put("color_fill", nullptr);
        RES_put("file_path", folder.path().c_str());
        RES_put("color_table", folder.write("t.clr", kTable).c_str());
        CLR_read_table(nullptr);
        CONT_reset();
    }
    static int colour_of(float value)
    {
        AttrRec a;
        CONT_value_attr(value, &a);
        return a.color;
    }
};

} // namespace

TEST_F(Levels, BandsAreCountedFromTheBase)
{
    const struct {
        const char *name;
        float base, interval, value;
        int colour;
    } cases[] = {
        {"first band", 0.0F, 5.0F, 2.0F, kRed},
        {"second", 0.0F, 5.0F, 7.0F, kGreen},
        {"third", 0.0F, 5.0F, 12.0F, kBlue},
        {"round again", 0.0F, 5.0F, 17.0F, kRed},
        {"below the base", 0.0F, 5.0F, -3.0F, kBlue},
        {"far below", 0.0F, 5.0F, -17.0F, kBlue},
        {"on a level", 0.0F, 5.0F, 5.0F, kGreen},
        {"just under a level", 0.0F, 0.1F, 0.29999F, kRed},
        {"another base", 3.0F, 5.0F, 2.0F, kBlue},
        {"unset base counts 0", kMissing, 5.0F, 7.0F, kGreen},
        {"missing", 0.0F, 5.0F, kMissing, kColourNone},
        {"no interval", 0.0F, kMissing, 7.0F, kColourNone},
        {"interval 0", 0.0F, 0.0F, 7.0F, kColourNone},
        {"huge", 0.0F, 5.0F, 1e38F, -5},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        CONT_reset();
        EXPECT_EQ(CONT_set_fill_colors("red,green,blue", 0), 0);
        CONT_set_base(c.base);
        CONT_set_interval(c.interval);
        const int colour = colour_of(c.value);
        if (c.colour == -5) {
            EXPECT_TRUE(colour >= kRed && colour <= kBlue);
        } else {
            EXPECT_EQ(colour, c.colour);
        }
    }
}

TEST_F(Levels, ExplicitLevelsChooseTheBand)
{
    const struct {
        const char *name, *fill;
        std::vector<float> levels;
        std::vector<std::pair<float, int>> values;
    } cases[] = {
        {"given",
         "0:blue,10:green,20:red",
         {0, 10, 20},
         {{5, kBlue},
          {10, kGreen},
          {19.9F, kGreen},
          {25, kRed},
          {-1, kColourNone},
          {kMissing, kColourNone}}},
        {"interpolated",
         "0:blue,green,20:red",
         {0, 10, 20},
         {{9, kBlue}, {11, kGreen}, {20, kRed}}},
        {"two between", "0:blue,green,white,30:red", {0, 10, 20, 30}, {{15, kGreen}, {25, kWhite}}},
        {"numbers", "1,3,4", {1, 3, 4}, {{0, kColourNone}, {2, 1}, {3.5F, 3}, {99, 4}}},
        {"negative", "-5:blue,0:red", {-5, 0}, {{-5, kBlue}, {-6, kColourNone}, {3, kRed}}},
        {"ended", "0:blue,10:green,20:end,30:red", {0, 10}, {{50, kGreen}}},
        {"with units", "0dBZ:blue,10-20:green", {0, 10}, {{5, kBlue}, {15, kGreen}}},
        {"of attributes", "0:co=blue:w2,10:green:la=warm", {0, 10}, {{5, kBlue}, {15, kGreen}}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        CONT_reset();
        RES_put("color_fill", c.fill);
        EXPECT_EQ(CONT_set_fill_colors(nullptr, 0), 0);
        float levels[kMaxBands];
        ASSERT_EQ(CONT_get_levels(nullptr), static_cast<int>(c.levels.size()));
        CONT_get_levels(levels);
        EXPECT_EQ(std::vector<float>(levels, levels + c.levels.size()), c.levels);
        for (const auto &[value, colour] : c.values) {
            EXPECT_EQ(colour_of(value), colour) << value;
        }
    }
    EXPECT_STREQ(CONT_label(1), "warm");
    EXPECT_STREQ(CONT_label(0), "0");
}

TEST_F(Levels, RangesGiveARowAColour)
{
    const struct {
        const char *name, *fill;
        std::vector<int> colours;
    } cases[] = {
        {"up", "2-5", {2, 3, 4, 5}},
        {"down", "5-2", {5, 4, 3, 2}},
        {"names", "red-blue", {1, 2, 3}},
        {"with others", "white,1-2", {4, 1, 2}},
        {"one", "3-3", {3}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        CONT_reset();
        CONT_set_fill_colors(c.fill, 1);
        ASSERT_EQ(CONT_view().rows, static_cast<int>(c.colours.size()));
        for (size_t i = 0; i < c.colours.size(); ++i) {
            EXPECT_EQ(CONT_row(static_cast<int>(i)).color, c.colours[i]);
        }
        EXPECT_EQ(CONT_get_levels(nullptr), 0);
    }
    CONT_reset();
    CONT_set_fill_colors("0-100000,5-0", 1);
    EXPECT_LE(CONT_view().rows, kMaxBands);
}

TEST_F(Levels, SourcesOfTheRows)
{
    folder.write("bands", "# comment\n@ another\n0:red\n10:green:la=ten\n\n20:blue\n");
    const struct {
        const char *name, *resource, *text;
        int force, result, rows;
    } cases[] = {
        {"default list", nullptr, nullptr, 0, 0, 15},
        {"word def", "default", nullptr, 0, 0, 15},
        {"word miss", "Miss", "red,blue", 0, 0, 2},
        {"text", nullptr, "red,blue", 0, 0, 2},
        {"resource over text", "red,green,blue", "red,blue", 0, 0, 3},
        {"forced text", "red,green,blue", "red,blue", 1, 0, 2},
        {"file", "bands", nullptr, 0, 0, 3},
        {"nonsense", "%s%n,,,:::,%d", nullptr, 0, 0, 3},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        CONT_reset();
        RES_put("color_fill", c.resource);
        EXPECT_EQ(CONT_set_fill_colors(c.text, c.force), c.result);
        EXPECT_EQ(CONT_view().rows, c.rows);
        EXPECT_EQ(CONT_set_fill_colors(c.text, c.force), -1) << "it stands";
    }
    CONT_reset();
    RES_put("color_fill", "missing_file");
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(CONT_set_fill_colors(nullptr, 0), 0);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(),
              "CONT_set_fill_colors: Unable to read contour level file: " +
                  folder.file("missing_file") + "\n");
    CONT_set_interval(5.0F);
    EXPECT_EQ(colour_of(3.0F), kColourNone) << "no rows";
}

TEST_F(Levels, FillColoursOfTheTableStandWithoutAList)
{
    RES_put(
        "color_table",
        folder.write("end.clr", "black 0 0 0\nred 1 0 0\ngreen 0 1 0\nEND\nblue 0 0 1\n").c_str());
    CLR_read_table(nullptr);
    EXPECT_EQ(CONT_set_fill_colors(nullptr, 0), -1);
    EXPECT_EQ(CONT_view().rows, 3);
    CONT_set_interval(1.0F);
    EXPECT_EQ(colour_of(2.5F), 2);
    EXPECT_EQ(colour_of(3.5F), 0);
}

TEST_F(Levels, LimitsTakeTheColourAway)
{
    CONT_set_fill_colors("red,green,blue", 1);
    CONT_set_interval(5.0F);
    CONT_set_limits(10.0F, 0.0F);
    CONT_set_limits(kMissing, kMissing);
    EXPECT_EQ(colour_of(-0.1F), kColourNone);
    EXPECT_EQ(colour_of(0.0F), kRed);
    EXPECT_EQ(colour_of(10.0F), kBlue);
    EXPECT_EQ(colour_of(10.1F), kColourNone);
}

TEST_F(Levels, DamagedListsAreBounded)
{
    std::string list;
    for (int i = 0; i < 1000; ++i) {
        list += std::to_string(i) + ":red,";
    }
    const std::string x(10000, 'x');
    for (const std::string &text :
         {list, x + "," + x, x + ":" + x + ":la=" + x + ",", std::string("1e999:red,nan:blue"),
          std::string("-,--,-1-,1-,:la=,la="), std::string("2147483648,-2147483649,5")}) {
        CONT_reset();
        ::testing::internal::CaptureStderr(); // a single word is a file that isn't there
        CONT_set_fill_colors(text.c_str(), 1);
        ::testing::internal::GetCapturedStderr();
        CONT_set_interval(1.0F);
        EXPECT_LE(CONT_view().rows, kMaxBands);
        colour_of(3.0F);
    }
    folder.write("long", x + "\n5:red\n" + x);
    CONT_reset();
    CONT_set_fill_colors("long", 1);
    EXPECT_EQ(CONT_view().rows, 3);
}

TEST(NiceInterval, HasFewDigitsAndDividesTheRange)
{
    const struct {
        const char *name;
        int count;
        float high, low, interval;
    } cases[] = {
        {"whole", 14, 100.0F, 0.0F, 8.0F},          {"exact", 10, 100.0F, 0.0F, 10.0F},
        {"tenths", 10, 2.5F, 0.0F, 0.3F},           {"hundredths", 10, 0.25F, 0.0F, 0.03F},
        {"thousandths", 10, 0.025F, 0.0F, 0.003F},  {"smaller still", 10, 0.0025F, 0.0F, 0.0003F},
        {"too small", 10, 0.0001F, 0.0F, 0.00001F}, {"no range", 10, 5.0F, 5.0F, 1.0F},
        {"no count", 0, 7.5F, 0.0F, 8.0F},          {"below 0", 5, 10.0F, -10.0F, 4.0F},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_NEAR(CONT_nice_interval(c.count, c.high, c.low), c.interval, 1e-3 * c.interval);
    }
}
