#include "tyr/base/res.h"
#include "tyr/gks/colour_table.h"
#include "tyr/gks/gks.h"
#include "tyr/plot/style.h"
#include "tyr/var/type_words.h"

namespace {

PlotStyle fresh()
{
    PlotStyle style;
    ATTR_init(&style.attr);
    return style;
}

std::string number(const std::string &format, float value)
{
    char out[64];
    PLT_format_number(out, sizeof out, format.c_str(), value);
    return out;
}

} // namespace

TEST(Style, TokensSetTypeAndFields)
{
    const struct {
        const char *name, *tokens;
        int type;
        std::string (*field)(const PlotStyle &);
        const char *value;
    } cases[] = {
        {"format", "%1.1f", 2, [](const PlotStyle &s) { return std::string(s.format); }, "%1.1f"},
        {"format key", "FM=%1.2f", 2, [](const PlotStyle &s) { return std::string(s.format); },
         "%1.2f"},
        {"type word", "wbarb", 32, [](const PlotStyle &s) { return std::string(s.format); }, ""},
        {"type, other case", "CLOUD", 31,
         [](const PlotStyle &s) { return std::to_string(s.h_align); }, "2"},
        {"last type wins", "%1.0f:symb", 36,
         [](const PlotStyle &s) { return std::string(s.format); }, "%1.0f"},
        {"place and format", "%1.1f:ul", 2,
         [](const PlotStyle &s) { return std::to_string(s.x_offset); }, "-0.012000"},
        {"offsets", "xy=2 3", 0, [](const PlotStyle &s) { return std::to_string(s.y_offset); },
         "0.060000"},
        {"offset to the left", "xy=-1 0", 0,
         [](const PlotStyle &s) { return std::to_string(s.h_align); }, "3"},
        {"height", "hi=2", 0, [](const PlotStyle &s) { return std::to_string(s.attr.height); },
         "2.000000"},
        {"scale", "sc=2", 0, [](const PlotStyle &s) { return std::to_string(s.scale); },
         "2.000000"},
        {"scale 0", "sc=0", 0, [](const PlotStyle &s) { return std::to_string(s.scale); },
         "1.000000"},
        {"scale 5000", "sc=5000", 0, [](const PlotStyle &s) { return std::to_string(s.scale); },
         "1.000000"},
        {"scale -2", "sc=-2", 0, [](const PlotStyle &s) { return std::to_string(s.scale); },
         "1.000000"},
        {"width", "wi=1.5", 0, [](const PlotStyle &s) { return std::to_string(s.attr.width); },
         "1.500000"},
        {"font", "fo=3", 0, [](const PlotStyle &s) { return std::to_string(s.attr.font); }, "3"},
        {"expansion", "te=0.5", 0,
         [](const PlotStyle &s) { return std::to_string(s.attr.expansion); }, "0.500000"},
        {"text", "tx=ab c", 0, [](const PlotStyle &s) { return std::string(s.fixed_text); },
         "ab c"},
        {"text cut", "tx=0123456789", 0,
         [](const PlotStyle &s) { return std::string(s.fixed_text); }, "012345678"},
        {"alignment", "ta=Rb", 0,
         [](const PlotStyle &s) { return std::to_string(s.h_align * 10 + s.v_align); }, "35"},
        {"alignment, top", "ta=lT", 0,
         [](const PlotStyle &s) { return std::to_string(s.h_align * 10 + s.v_align); }, "11"},
        {"alignment, cap", "ta=cc", 0,
         [](const PlotStyle &s) { return std::to_string(s.h_align * 10 + s.v_align); }, "22"},
        {"alignment, base", "ta=xs", 0,
         [](const PlotStyle &s) { return std::to_string(s.h_align * 10 + s.v_align); }, "24"},
        {"alignment, short", "ta=", 0,
         [](const PlotStyle &s) { return std::to_string(s.h_align * 10 + s.v_align); }, "23"},
        {"mark word", "mk=circle", 0, [](const PlotStyle &s) { return std::to_string(s.mark); },
         "4"},
        {"mark dot", "mk=dot", 0, [](const PlotStyle &s) { return std::to_string(s.mark); }, "8"},
        {"mark itri", "mk=itri", 0, [](const PlotStyle &s) { return std::to_string(s.mark); }, "9"},
        {"mark number", "mk=6", 0, [](const PlotStyle &s) { return std::to_string(s.mark); }, "6"},
        {"symbol file", "sf=a.smb", 0,
         [](const PlotStyle &s) { return std::string(s.symbol_file); }, "a.smb"},
        {"symbol file, wf", "WF=b.smb", 0,
         [](const PlotStyle &s) { return std::string(s.symbol_file); }, "b.smb"},
        {"least", "mn=-5", 0, [](const PlotStyle &s) { return std::to_string(s.min); },
         "-5.000000"},
        {"most", "mx=5", 0, [](const PlotStyle &s) { return std::to_string(s.max); }, "5.000000"},
        {"skip", "sk=3", 0, [](const PlotStyle &s) { return std::to_string(s.skip); }, "3"},
        {"unknown", "zz=3:what:::", 0, [](const PlotStyle &s) { return std::to_string(s.skip); },
         "1"},
        {"empty", "", 0, [](const PlotStyle &s) { return std::to_string(s.scale); }, "1.000000"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        PlotStyle style = fresh();
        EXPECT_EQ(PLT_parse_format(&style, c.tokens), c.type);
        EXPECT_EQ(c.field(style), c.value);
    }
    PlotStyle style = fresh();
    EXPECT_EQ(PLT_parse_format(&style, nullptr), 0);
    PLT_parse_format(&style, std::string(10000, 'x').c_str());
    PLT_parse_format(&style, ("%" + std::string(10000, '9') + "f").c_str());
    EXPECT_EQ(std::string(style.format).size(), sizeof style.format - 1);
    EXPECT_EQ(number(style.format, 4.4F), "4") << "counts as no format";
}

TEST(Style, PlacesOfFormatsAndOptions)
{
    // A format's places sit at 0.012 to the side; those of plot_param at 0.015 in the middle row.
    const struct {
        const char *word;
        float x, y;
        int h_align;
        float option_x;
    } cases[] = {
        {"ul", -0.012F, 0.02F, 3, -0.012F},  {"uc", 0.0F, 0.02F, 2, 0.0F},
        {"ur", 0.012F, 0.02F, 1, 0.012F},    {"tl", -0.012F, 0.012F, 3, -0.012F},
        {"TC", 0.0F, 0.012F, 2, 0.0F},       {"tr", 0.012F, 0.012F, 1, 0.012F},
        {"cl", -0.012F, 0.0F, 3, -0.015F},   {"cc", 0.0F, 0.0F, 2, 0.0F},
        {"cr", 0.012F, 0.0F, 1, 0.015F},     {"bl", -0.012F, -0.012F, 3, -0.012F},
        {"bc", 0.0F, -0.012F, 2, 0.0F},      {"Br", 0.012F, -0.012F, 1, 0.012F},
        {"ll", -0.012F, -0.02F, 3, -0.012F}, {"lc", 0.0F, -0.02F, 2, 0.0F},
        {"lr", 0.012F, -0.02F, 1, 0.012F},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.word);
        PlotStyle style = fresh();
        style.x_offset = style.y_offset = 9.0F;
        EXPECT_EQ(PLT_parse_format(&style, c.word), 0);
        EXPECT_FLOAT_EQ(style.x_offset, c.x);
        EXPECT_FLOAT_EQ(style.y_offset, c.y);
        EXPECT_EQ(style.h_align, c.h_align);
        EXPECT_EQ(style.v_align, kAlignHalf);
        PlotStyle option = fresh();
        PLT_apply_option(&option, c.word);
        EXPECT_FLOAT_EQ(option.x_offset, c.option_x);
        EXPECT_FLOAT_EQ(option.y_offset, c.y);
    }
}

TEST(Style, OptionsOfPlotParam)
{
    const struct {
        const char *name, *word;
        int skip, mark, line, ybar;
        const char *text;
        float x, y;
    } cases[] = {
        {"skip", "skip=3", 3, 0, 0, kMissingInt, "", 0.0F, 0.0F},
        {"text", "TEXT=ab", 1, 0, 0, kMissingInt, "ab", 0.0F, 0.0F},
        {"text, long", "text=0123456789012", 1, 0, 0, kMissingInt, "012345678", 0.0F, 0.0F},
        {"mark number", "mark=5", 1, 5, 0, kMissingInt, "", 0.0F, 0.0F},
        {"mark word", "mark=star", 1, 3, 0, kMissingInt, "", 0.0F, 0.0F},
        {"mark cloud", "mark=CLD", 1, 1001, 0, kMissingInt, "", 0.0F, 0.0F},
        {"line", "Line", 1, 0, 1, kMissingInt, "", 0.0F, 0.0F},
        {"line, longer", "lines", 1, 0, 0, kMissingInt, "", 0.0F, 0.0F},
        {"bar", "ybar=-3", 1, 0, 0, -3, "", 0.0F, 0.0F},
        {"bar, bare", "ybar", 1, 0, 0, 0, "", 0.0F, 0.0F},
        {"offset", "xy=1:-2", 1, 0, 0, kMissingInt, "", 0.012F, -0.04F},
        {"unknown", "%s%n%d", 1, 0, 0, kMissingInt, "", 0.0F, 0.0F},
        {"empty", "", 1, 0, 0, kMissingInt, "", 0.0F, 0.0F},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        PlotStyle style = fresh();
        PLT_apply_option(&style, c.word);
        EXPECT_EQ(style.skip, c.skip);
        EXPECT_EQ(style.mark, c.mark);
        EXPECT_EQ(style.line, c.line);
        EXPECT_EQ(style.ybar, c.ybar);
        EXPECT_STREQ(style.fixed_text, c.text);
        EXPECT_FLOAT_EQ(style.x_offset, c.x);
        EXPECT_FLOAT_EQ(style.y_offset, c.y);
    }
    PlotStyle style = fresh();
    PLT_apply_option(&style, std::string(10000, 'm').c_str());
}

TEST(Style, NumbersFollowTheirFormat)
{
    const struct {
        const char *format;
        float value;
        const char *text;
    } cases[] = {
        {"", 12.6F, "13"},
        {"%1.0f", -3.4F, "-3"},
        {"%1.1f", 0.5F, "0.5"},
        {"%z1.1f", 0.5F, ".5"},
        {"%z1.1f", -0.5F, "-.5"},
        {"%z1.1f", 10.5F, "10.5"},
        {"%z1.0f", 0.0F, "0"},
        {"%z5.1f", 0.5F, "  .5"},
        {"%1.1f", -0.04F, "0.0"},
        {"%5.0f", -0.4F, "    0"},
        {"%1.1f", -0.06F, "-0.1"},
        {"%5.1f", 2.0F, "  2.0"},
        {"%-5.1f|", 2.0F, "2.0  |"},
        {"%+.2e", 1234.0F, "+1.23e+03"},
        {"%g kt", 7.0F, "7 kt"},
        {"%4.1lf", 2.25F, " 2.2"},
        {"%d", 7.6F, "8"},
        {"%03d", 7.0F, "007"},
        {"100%%", 7.0F, "7"},
        {"%1.0f%%", 7.0F, "7%"},
        {"%s", 7.0F, "7"},
        {"%n", 7.0F, "7"},
        {"%1.0f %1.0f", 7.0F, "7"},
        {"%*f", 7.0F, "7"},
        {"%9999f", 7.0F, "7"},
        {"%.999f", 7.0F, "7"},
        {"%", 7.0F, "7"},
        {"%z", 7.0F, "7"},
        {"%5", 7.0F, "7"},
        {"%zn", 7.0F, "7"},
        {"%p%f", 7.0F, "7"},
        {"%lld", 7.0F, "7"},
        {"%1$f", 7.0F, "7"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.format);
        EXPECT_EQ(number(c.format, c.value), c.text);
    }
    char small[4];
    PLT_format_number(small, sizeof small, "%9.3f", 123456.0F);
    EXPECT_EQ(std::string(small).size(), 3U);
    EXPECT_EQ(number("%99.99f", 3.4e38F).size(), 63U) << "cut to its room";
    EXPECT_EQ(number(std::string(10000, '%'), 7.0F), "7");
}

TEST(Style, IntegersFollowTheirFormat)
{
    const struct {
        const char *format;
        int value;
        const char *text;
    } cases[] = {
        {"", -12, "-12"},      {"%d", 2147483647, "2147483647"},
        {"%05d", 42, "00042"}, {"%i kt", 42, "42 kt"},
        {"%1.1f", 42, "42.0"}, {"%s", 42, "42"},
        {"%n%d", 42, "42"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.format);
        char out[64];
        PLT_format_integer(out, sizeof out, c.format, c.value);
        EXPECT_STREQ(out, c.text);
    }
}
