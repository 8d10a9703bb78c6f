#include "support/kernel_plot.h"
#include "tyr/base/res.h"
#include "tyr/gks/font_private.h"
#include "tyr/gks/gks.h"
#include "tyr/gks/session.h"

using namespace tyr;

namespace {

using Strings = std::vector<std::string>;

constexpr float kMiddle[2] = {0.5F, 0.5F};
/// A character height that makes a font unit one point on the unit square of letter paper.
constexpr float kPointHeight = 105.0F / 575.0F;

/// 256 offsets of a font file, with A at 1 and B at 6 (and C at 11 when it is there).
std::string offsets(bool with_c = false)
{
    std::string text;
    for (int code = 0; code < 256; code++) {
        text += code == 'A' ? "1 " : code == 'B' ? "6 " : code == 'C' && with_c ? "11 " : "-1 ";
    }
    return text;
}

/// A is a line from (0, 35) to (50, 140), B one from (10, 0) to (20, 160).
const std::string kStrokes = "255 128 35 50 140 255 138 0 20 160 ";

/// A workstation on PostScript with the small font loaded, one font unit a point.
class SmallFontPlot : public KernelPlot {
  public:
    explicit SmallFontPlot(const std::string &font = kStrokes + "254 " + offsets())
        : KernelPlot(kDevicePostScript)
    {
        const std::string path = files_.write("small.fnt", font);
        loaded_ = read_font(path.c_str()) == 0;
        gset_char_ht(kPointHeight);
    }
    bool loaded() const { return loaded_; }

  private:
    TempDir files_;
    bool loaded_ = false;
};

/// The points of all strokes relative to the middle of the square, (287.5, 287.5).
Strings drawn(KernelPlot &plot)
{
    const PsPage page = plot.page();
    EXPECT_EQ(page.error, "");
    Strings out;
    for (const PsStroke &stroke : page.strokes) {
        std::string line;
        for (const PsPoint &p : stroke.points) {
            char text[40];
            std::snprintf(text, sizeof text, "%g,%g ", p[0] - 287.5, p[1] - 287.5);
            line += text;
        }
        out.push_back(line);
    }
    return out;
}

TEST(Text, CharactersFollowEachOtherByWidthAndSpacing)
{
    SmallFontPlot plot;
    ASSERT_TRUE(plot.loaded());
    EXPECT_EQ(gtext(kMiddle, "AB"), 0);
    // B's origin is 50 + 25 to the right, and the base line (35) is on the position
    EXPECT_EQ(drawn(plot), (Strings{"0,0 50,105 ", "85,-35 95,125 "}));
}

TEST(Text, AlignmentsByHand)
{
    // total width of AB: 75 + 20 = 95, of which half, cut, is 47
    struct Case {
        const char *name;
        int h, v;
        const char *a; ///< where the line of A goes
    };
    const Case cases[] = {
        {"normal", 0, 0, "0,0 50,105 "},         {"left, base", 1, 4, "0,0 50,105 "},
        {"left, top", 1, 1, "0,-125 50,-20 "},   {"left, cap", 1, 2, "0,-105 50,0 "},
        {"left, half", 1, 3, "0,-50 50,55 "},    {"left, bottom", 1, 5, "0,35 50,140 "},
        {"centre", 2, 4, "-47,0 3,105 "},        {"right", 3, 4, "-95,0 -45,105 "},
        {"centre, half", 2, 3, "-47,-50 3,55 "},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        SmallFontPlot plot;
        GPH_set_text_align(c.h, c.v);
        gtext(kMiddle, "AB");
        EXPECT_EQ(drawn(plot).at(0), c.a);
    }
}

TEST(Text, WidthsByHand)
{
    struct Case {
        const char *name;
        const char *text;
        float expansion, spacing, pitch;
        const char *last; ///< where the line of the last character goes, right aligned
    };
    const Case cases[] = {
        // one character: its width alone, 50
        {"one character", "A", 1, 0.25F, 0, "-50,0 0,105 "},
        // total (75 + 20) * 2 = 190; B at -190 + 150
        {"expansion", "AB", 2, 0.25F, 0, "-20,-35 0,125 "},
        // 50 + 100 + 20 = 170; B at -170 + 150
        {"spacing", "AB", 1, 1, 0, "-10,-35 0,125 "},
        // (25 + 100) * 1 + 100 = 225; B at -225 + 125
        {"fixed pitch", "AB", 1, 0.25F, 1, "-90,-35 -80,125 "},
        // 75 + 65 + 20 = 160; B at -160 + 75 + 65
        {"blank", "A B", 1, 0.25F, 0, "-10,-35 0,125 "},
        // an unknown character counts its spacing but advances nothing: 75 + 25 + 20 = 120
        {"unknown character",
         "A\xFF"
         "B",
         1, 0.25F, 0, "-35,-35 -25,125 "},
        // 75 + 75 + 75 + 65 + 50 = 340; the last A at -340 + 290
        {"longer", "AAA A", 1, 0.25F, 0, "-50,0 0,105 "},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        SmallFontPlot plot;
        GPH_set_text_align(kAlignRight, kAlignBase);
        gset_expan(c.expansion);
        gset_text_spacing(c.spacing);
        gset_char_space(c.pitch);
        gtext(kMiddle, c.text);
        const Strings strokes = drawn(plot);
        ASSERT_FALSE(strokes.empty());
        EXPECT_EQ(strokes.back(), c.last);
    }
}

TEST(Text, UpVectorTurnsTheText)
{
    struct Case {
        const char *name;
        float x, y;
        const char *a;
    };
    const Case cases[] = {
        {"upright, not of length 1", 0, 5, "0,0 50,105 "},
        {"running down", 1, 0, "0,0 105,-50 "},
        {"upside down", 0, -1, "0,0 -50,-105 "},
        {"running up", -3, 0, "0,0 -105,50 "},
        // (0.6, 0.8): x 0.8 * 50 + 0.6 * 105, y -0.6 * 50 + 0.8 * 105
        {"slanted", 3, 4, "0,0 103,54 "},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        SmallFontPlot plot;
        const float up[2] = {c.x, c.y};
        EXPECT_EQ(gset_char_up(up), 0);
        gtext(kMiddle, "A");
        EXPECT_EQ(drawn(plot).at(0), c.a);
    }
    SmallFontPlot plot;
    const float nothing[2] = {0, 0};
    testing::internal::CaptureStderr();
    EXPECT_EQ(gset_char_up(nothing), -1);
    testing::internal::GetCapturedStderr();
    gtext(kMiddle, "A");
    EXPECT_EQ(drawn(plot).at(0), "0,0 50,105 ");
}

TEST(Text, LongRunsGoOnWithoutAGap)
{
    std::string c = "255 128 35 ";
    for (int i = 1; i < 70; i++) {
        c += std::to_string(i) + " 35 ";
    }
    SmallFontPlot plot(kStrokes + c + "254 " + offsets(true));
    ASSERT_TRUE(plot.loaded());
    gtext(kMiddle, "C");
    const PsPage page = plot.page();
    ASSERT_EQ(page.strokes.size(), 3U);
    double x = 287.5;
    for (size_t i = 0; i < page.strokes.size(); i++) {
        const std::vector<PsPoint> &points = page.strokes[i].points;
        EXPECT_LE(points.size(), 30U);
        EXPECT_DOUBLE_EQ(points.front()[0], x);
        x = points.back()[0];
    }
    EXPECT_DOUBLE_EQ(x, 287.5 + 69);
}

TEST(Text, ColourWidthAndCommentStandAheadOfIt)
{
    KernelPlot plot(kDevicePostScript, "color");
    GPH_set_colour(4, 0.0F, 0.0F, 1.0F);
    gset_text_colr_ind(4);
    gset_text_width(2.0F);
    GPH_text_at("%d m/s\nx", 0.25, 0.75, 12);
    const PsPage page = plot.page();
    ASSERT_EQ(page.error, "");
    ASSERT_EQ(page.texts.size(), 1U);
    EXPECT_EQ(page.texts[0].text, "12 m/s x"); // a line break can't leave the comment
    EXPECT_DOUBLE_EQ(page.texts[0].y, 0.75);
    for (const PsStroke &stroke : strokes_of(page, 0)) {
        EXPECT_EQ(stroke.rgb, (std::array<double, 3>{0, 0, 1}));
        EXPECT_NEAR(stroke.width, 0.66, 1e-9);
    }
    EXPECT_GT(strokes_of(page, 0).size(), 5U);
}

TEST(Font, BothFormsOfAFileGiveTheSameFont)
{
    const std::string labelled = "0 first 128 35 50 140 255 A 138 0 20 160 254 ";
    StrokeFont plain;
    StrokeFont with_labels;
    ASSERT_TRUE(parse_font(kStrokes + "254 " + offsets(), plain));
    ASSERT_TRUE(parse_font(labelled + offsets(), with_labels));
    EXPECT_EQ(plain.offset, with_labels.offset);
    EXPECT_EQ(plain.width, with_labels.width);
    EXPECT_EQ(plain.strokes.size(), with_labels.strokes.size());
    EXPECT_TRUE(std::equal(plain.strokes.begin() + 1, plain.strokes.end(),
                           with_labels.strokes.begin() + 1));
    EXPECT_EQ(plain.width['A'], 50);
    EXPECT_EQ(plain.width['B'], 20);
    EXPECT_EQ(plain.width[' '], 40);
    EXPECT_EQ(plain.offset['C'], -1);
    EXPECT_EQ(plain.strokes.back(), 255);
}

/// A font is whole: all offsets within the strokes, the strokes within their room.
void expect_whole(const StrokeFont &font, bool parsed)
{
    EXPECT_LE(font.strokes.size(), kMaxStrokeData);
    EXPECT_EQ(font.strokes.empty(), !parsed);
    for (const int offset : font.offset) {
        ASSERT_GE(offset, -1);
        ASSERT_LT(offset, static_cast<int>(font.strokes.size()));
    }
}

TEST(Font, DamagedFilesAreRefusedOrHarmless)
{
    const std::string whole = kStrokes + "254 " + offsets();
    StrokeFont font;
    // the last "-1 " lacks its blank or its 1: only the first still says the same
    for (size_t length = 0; length + 1 < whole.size(); length++) {
        ASSERT_FALSE(parse_font(whole.substr(0, length), font)) << length;
        expect_whole(font, false);
    }
    for (size_t i = 0; i < whole.size(); i++) {
        for (const char byte : {'\0', '\xFF', static_cast<char>(~whole[i])}) {
            std::string damaged = whole;
            damaged[i] = byte;
            expect_whole(font, parse_font(damaged, font));
        }
    }
    std::string huge = "255 ";
    for (int i = 0; i < 20000; i++) {
        huge += "1 ";
    }
    EXPECT_FALSE(parse_font(huge + "254 " + offsets(), font));
    EXPECT_FALSE(parse_font("255 300 254 " + offsets(), font));
    EXPECT_FALSE(parse_font("255 128 35 254 " + offsets(), font)); // offsets beyond the strokes
}

TEST(Font, DamagedAndMissingFilesAreNamed)
{
    const KernelPlot plot(kDevicePostScript);
    const TempDir files;
    const std::string damaged = files.write("damaged.fnt", "255 128 35");
    for (const std::string &path : {damaged, files.file("missing.fnt")}) {
        testing::internal::CaptureStderr();
        EXPECT_EQ(read_font(path.c_str()), -1);
        EXPECT_EQ(testing::internal::GetCapturedStderr(),
                  "read_font: unable to load font file: " + path + "\n");
    }
    EXPECT_EQ(gtext(kMiddle, "text with nothing to draw"), 0);
}

TEST(Font, ListsCountTheirEntries)
{
    struct Case {
        const char *name;
        const char *font_list; ///< null: the default list
        const char *word;
        int number;
    };
    const Case cases[] = {
        {"number", nullptr, "2", 2},
        {"id of the default list", nullptr, "SCRIPT", 8},
        {"unknown id", nullptr, "nosuch", 1},
        {"ids of a list of twelve", "fi:many.lst", "id10", 10},
        {"beyond the ten that are read", "fi:many.lst", "id11", 1},
        {"words have no id", "modern.fnt,greek.fnt", "greek.fnt", 1},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        const TempDir files;
        std::string many;
        for (int i = 1; i <= 12; i++) {
            many += "id" + std::to_string(i) + " modern.fnt\n";
        }
        if (c.font_list != nullptr) {
            files.write("many.lst", many);
            for (const char *font : {"modern.fnt", "greek.fnt"}) {
                files.write(font, read_file(std::string(TYR_SOURCE_DIR "/data/") + font));
            }
        }
        const KernelPlot plot(kDevicePostScript);
        if (c.font_list != nullptr) {
            RES_put("font_list", c.font_list);
            RES_put("file_path", files.path().c_str());
            EXPECT_EQ(gsetup_fonts(), 0);
        }
        EXPECT_EQ(gfont_number(c.word), c.number);
    }
}

TEST(Font, InstalledFontsHaveAllCharacters)
{
    const KernelPlot plot(kDevicePostScript);
    for (const char *name : {"modern", "simplex", "bold", "duplex", "triplex", "roman", "italic",
                             "script", "greek", "cyrillic", "gothic"}) {
        SCOPED_TRACE(name);
        ASSERT_EQ(read_font((std::string(name) + ".fnt").c_str()), 0);
        const StrokeFont &font = font_current();
        for (int code = 33; code <= 127; code++) {
            if (std::string(name) == "greek" &&
                std::string("YZyz").find(static_cast<char>(code)) != std::string::npos) {
                continue; // an alphabet of 24 letters
            }
            ASSERT_NE(font.offset[code], -1) << code;
            // every character draws at least one line and begins with a move
            const auto at = static_cast<size_t>(font.offset[code]);
            ASSERT_GE(font.strokes[at], kPenUp) << code;
            ASSERT_NE(font.strokes[at + 2], kStrokeEnd) << code;
        }
        EXPECT_EQ(font.offset[176], font.offset[127]); // the degree sign
        EXPECT_GT(font.width['W'], font.width['i']);
    }
}

} // namespace
