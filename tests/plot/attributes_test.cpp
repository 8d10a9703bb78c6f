#include <cmath>

#include "support/world_plot.h"
#include "tyr/base/missing.h"
#include "tyr/base/res.h"
#include "tyr/gks/colour_table.h"
#include "tyr/gks/gks.h"
#include "tyr/plot/attributes.h"

namespace {

/// A record as a text: "c4 w2 h1.5 e1 s3 f5 t2", with what is set only.
std::string show(const AttrRec &a)
{
    std::string out;
    const auto add = [&out](char key, double value, bool is_set) {
        char text[40];
        std::snprintf(text, sizeof text, "%s%c%g", out.empty() ? "" : " ", key, value);
        out += is_set ? text : "";
    };
    add('c', a.color, a.color != kMissingInt);
    add('w', a.width, !is_missing(a.width));
    add('h', a.height, !is_missing(a.height));
    add('e', a.expansion, !is_missing(a.expansion));
    add('s', a.style, a.style != kMissingInt);
    add('f', a.fill, a.fill != kMissingInt);
    add('t', a.font, a.font != kMissingInt);
    return out;
}

std::string parsed(const std::string &text, const std::string &over = "")
{
    AttrRec a;
    ATTR_init(&a);
    if (!over.empty()) {
        ATTR_parse(over.c_str(), &a);
    }
    ATTR_parse(text.c_str(), &a);
    return show(a);
}

struct Attributes : ::testing::Test {
    TempDir folder;
    Attributes()
    {
        RES_put("color_table", "");
        const std::string table = folder.write("t.clr", "black 0 0 0\nred 1 0 0\ngreen 0 1 0\n"
                                                        "magenta 1 0 1\n");
        CLR_read_table(table.c_str());
    }
};

} // namespace

TEST_F(Attributes, PiecesSetTheirFields)
{
    const struct {
        const char *name, *text, *fields;
    } cases[] = {
        {"empty", "", ""},
        {"colour and style", "magenta:s4", "c3 s4"},
        {"long spelling", "co=red:st=dsh:wi=2.5", "c1 w2.5 s2"},
        {"short spelling", "red:s2:w2.5", "c1 w2.5 s2"},
        {"keys in any case", "CO=red:St=DSH:WI=2.5", "c1 w2.5 s2"},
        {"letters in their own case", "red:S2:W3", "c1"},
        {"width as a colour word", "w3", "c-1"},
        {"width behind a colon", ":w3", "w3"},
        {"unknown colour", "nocolour", "c-1"},
        {"no colour", "none", "c-1"},
        {"end of a list", "end", "c-2"},
        {"print colour", "pblk", "c500"},
        {"number", "2", "c2"},
        {"line styles", ":st=lsdsh", "s3"},
        {"solid", ":st=sol", "s1"},
        {"longest dash", ":st=llsdsh", "s4"},
        {"dots", ":st=dot", "s5"},
        {"style number", ":st=7", "s7"},
        {"unknown style", ":st=wavy", "s0"},
        {"fill word", ":fi=hat", "f9"},
        {"fill pattern", ":fp=5%", "f15"},
        {"fill unset again", ":fi=hat:fM", ""},
        {"fill unset by its second", ":fi=hat:fMore", ""},
        {"fill number", ":f3", "f3"},
        {"height, two keys", ":sc=2:hi=3", "h3"},
        {"height, short", ":h1.5", "h1.5"},
        {"expansion", ":te=0.8:e1.2", "e1.2"},
        {"font number", ":fo=4", "t4"},
        {"font, short", ":t6", "t6"},
        {"unknown font", ":fo=nofont", "t1"},
        {"later wins", ":w1:wi=2", "w2"},
        {"unknown pieces", "red:zz=4:q5::", "c1"},
        {"key cut short", ":w:s:wi=:st=", "w0 s0"},
        {"directives", "%s%n:%d:w%n", "c-1 w0"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(parsed(c.text), c.fields);
    }
    EXPECT_EQ(parsed(std::string(10000, 'x')), "c-1");
    EXPECT_EQ(parsed(std::string(10000, ':') + "w3"), "w3");
    AttrRec a;
    ATTR_init(&a);
    ATTR_parse(nullptr, &a);
    EXPECT_EQ(show(a), "");
}

TEST_F(Attributes, LaterTextsLieOverEarlierOnes)
{
    EXPECT_EQ(parsed(":w3", "red:s4"), "c1 w3 s4");
    EXPECT_EQ(parsed("nocolour", "red:s4"), "c-1 s4");
    AttrRec below;
    AttrRec above;
    ATTR_init(&below);
    ATTR_init(&above);
    ATTR_parse("red:w1:s2:h3:e4:f5:t6", &below);
    ATTR_parse("none:w9", &above);
    ATTR_merge(&below, &above);
    EXPECT_EQ(show(below), "c-1 w9 h3 e4 s2 f5 t6") << "no colour counts as set";
}

TEST_F(Attributes, ResourceLiesOverTheDefault)
{
    const struct {
        const char *name, *resource;
        int result;
        const char *fields;
    } cases[] = {
        {"unset", nullptr, 0, "c2"},        {"empty", "", 0, "c2"},
        {"width alone", ":w2", 1, "c2 w2"}, {"all", "red:w2", 1, "c1 w2"},
        {"nonsense", "%s%s%s%n", 1, "c-1"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        RES_put("color_test", c.resource);
        AttrRec a;
        ATTR_init(&a);
        EXPECT_EQ(ATTR_from_resource("color_test", "green", &a), c.result);
        EXPECT_EQ(show(a), c.fields);
    }
}

TEST_F(Attributes, FillAndMarkerWords)
{
    const struct {
        const char *word;
        int fill, marker;
    } cases[] = {
        {"sol", 0, 0},  {"st", 1, 0},     {"OST", 2, 4},    {"rst", 3, 0},    {"lst", 4, 0},
        {"vln", 5, 9},  {"||", 5, 0},     {"dlr", 6, 0},    {"\\\\", 6, 0},   {"drl", 7, 0},
        {"//", 7, 0},   {"hln", 8, 0},    {"--", 8, 0},     {"hat", 9, 0},    {"XX", 9, 5},
        {"clr", 10, 0}, {"0%", 10, 0},    {"9%", 19, 9},    {"hatch", 0, 0},  {"17", 17, 17},
        {"pnt", 0, 1},  {".", 0, 1},      {"plus", 0, 2},   {"+", 0, 2},      {"star", 0, 3},
        {"*", 0, 3},    {"crcl", 0, 4},   {"circle", 0, 4}, {"o", 0, 4},      {"x", 0, 5},
        {"sqr", 0, 6},  {"square", 0, 6}, {"#", 0, 6},      {"tri", 0, 7},    {"^", 0, 7},
        {"itri", 0, 9}, {"v", 0, 9},      {"dot", 0, 8},    {"Square", 0, 6}, {"", 0, 0},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.word);
        EXPECT_EQ(ATTR_fill_code(c.word), c.fill);
        EXPECT_EQ(ATTR_marker_code(c.word), c.marker);
    }
}

TEST_F(Attributes, RecordsReachThePaper)
{
    const struct {
        const char *name, *text;
        std::array<double, 3> rgb;
        bool is_dashed;
    } cases[] = {
        {"red", "red", {1, 0, 0}, false},
        {"green, dashed", "green:s2", {0, 1, 0}, true},
        {"no colour keeps it", "none", {1, 0, 1}, false},
        {"nothing keeps it", ":w2", {1, 0, 1}, false},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        WorldPlot plot(10);
        AttrRec before;
        AttrRec a;
        ATTR_init(&before);
        ATTR_init(&a);
        ATTR_parse("#FF00FF:s2", &before);
        ATTR_parse(c.text, &a);
        if (a.color >= 0) {
            a.color = CLR_lookup(c.text[0] == 'r' ? "#FF0000" : "#00FF00");
        }
        GPH_set_line_attr(&before);
        GPH_set_line_attr(nullptr); // the style is plain again, the colour stays
        GPH_set_line_attr(&a);
        const float points[4] = {0.0F, 0.0F, 1.0F, 1.0F};
        gpolyline(2, points);
        const PsPage page = plot.finish();
        ASSERT_EQ(page.strokes.size(), 1U);
        EXPECT_EQ(page.strokes[0].rgb, c.rgb);
        EXPECT_EQ(!page.strokes[0].dash.empty(), c.is_dashed);
    }
    EXPECT_EQ(GPH_set_text_attr(nullptr, 1.0F), -1);
}
