#include <fstream>
#include <random>
#include <set>

#include "support/world_plot.h"
#include "tyr/base/res.h"
#include "tyr/gks/gks.h"
#include "tyr/plot/symbol.h"

namespace {

using Strokes = std::vector<std::string>;

constexpr const char *kFile = "BOX 0,0 1,0 1,1 0,1 0,0 L ignored $\n"
                              "RA 0,0 1,1 L\n 0,1 1,1 1,0 F trailing $\n"
                              "RASN 0,0 1,0 L $\n"
                              "TSRA 0,0 0,1 L $\n"
                              "ts 0,0 0.5,1 Line $\n";

struct SymbolTest : ::testing::Test {
    TempDir folder;
    SymbolTest() { WX_symb_file(folder.write("none.smb", "").c_str()); }
    /// Draws a code of size 2 with its lower left corner at the origin.
    Strokes draw(const std::string &code, int h_align = kAlignLeft, int v_align = kAlignBase)
    {
        WorldPlot plot(8);
        WX_symb_file(path_.c_str());
        const int align[2] = {h_align, v_align};
        gset_text_align(align);
        result_ = WX_symbol(0.0F, 0.0F, 2.0F, code.c_str());
        return show_strokes(plot.finish());
    }
    void use(const std::string &text)
    {
        path_ = folder.write("f" + std::to_string(count_++) + ".smb", text);
    }
    std::string path_;
    int count_ = 0;
    int result_ = 0;
};

} // namespace

TEST_F(SymbolTest, FirstNameThatBeginsTheCodeIsDrawn)
{
    use(kFile);
    const struct {
        const char *name, *code;
        Strokes strokes;
    } cases[] = {
        {"box", "BOX", {"line 0.00,0.00 2.00,0.00 2.00,2.00 0.00,2.00 0.00,0.00"}},
        {"other case", "box", {"line 0.00,0.00 2.00,0.00 2.00,2.00 0.00,2.00 0.00,0.00"}},
        {"longer than a name", "BOXES", {"line 0.00,0.00 2.00,0.00 2.00,2.00 0.00,2.00 0.00,0.00"}},
        {"hidden by a shorter",
         "RASN",
         {"line 0.00,0.00 2.00,2.00", "fill 0.00,2.00 2.00,2.00 2.00,0.00"}},
        {"longer first", "TSRA", {"line 0.00,0.00 0.00,2.00"}},
        {"behind the longer", "TSGR", {"line 0.00,0.00 1.00,2.00"}},
        {"shorter than a name", "BO", {}},
        {"skipped text", "ignored", {}},
        {"empty", "", {}},
        {"blank", " BOX", {}},
        {"directives", "%s%n", {}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        Strokes drawn = draw(c.code);
        for (std::string &stroke : drawn) {
            if (stroke.rfind("fill", 0) == 0) {
                stroke.resize(std::min<size_t>(stroke.size(), 34)); // without the closing point
            }
        }
        EXPECT_EQ(drawn, c.strokes);
        EXPECT_EQ(result_, c.strokes.empty() ? 0 : 1);
    }
    draw(std::string(10000, 'x'));
    EXPECT_EQ(result_, 0);
}

TEST_F(SymbolTest, AlignmentOfTextPlacesTheSign)
{
    use("DOWN 0,0 1,0 L $\n");
    const struct {
        const char *name;
        int h, v;
        const char *stroke;
    } cases[] = {
        {"left, base", kAlignLeft, kAlignBase, "line 0.00,0.00 2.00,0.00"},
        {"left, bottom", kAlignLeft, kAlignBottom, "line 0.00,0.00 2.00,0.00"},
        {"centre, half", kAlignCentre, kAlignHalf, "line -1.00,-1.00 1.00,-1.00"},
        {"right, top", kAlignRight, kAlignTop, "line -2.00,-2.00 0.00,-2.00"},
        {"right, capital", kAlignRight, kAlignCap, "line -2.00,-2.00 0.00,-2.00"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(draw("DOWN", c.h, c.v), Strokes{c.stroke});
    }
}

TEST_F(SymbolTest, MissingFileIsToldOnceAnAttempt)
{
    RES_put("file_path", folder.path().c_str());
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(WX_symb_file("missing.smb"), -1);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(),
              "WX_symb_file: Unable to open file: " + folder.file("missing.smb") + "\n");
    const std::string path = folder.write("here.smb", kFile);
    EXPECT_EQ(WX_symb_file(path.c_str()), 0);
    EXPECT_EQ(WX_symb_file(path.c_str()), -1) << "it stays open";
}

TEST_F(SymbolTest, DamagedFilesDrawWhatTheyHold)
{
    const std::string whole = kFile;
    for (size_t length = 0; length <= whole.size(); length += 3) {
        use(whole.substr(0, length));
        draw("RA");
    }
    std::string many;
    for (int i = 0; i < 200; ++i) {
        many += "S" + std::to_string(1000 + i) + " 0,0 1,0 L $\n";
    }
    use(many);
    draw("S1099");
    EXPECT_EQ(result_, 1);
    draw("S1100");
    EXPECT_EQ(result_, 0) << "a hundred symbols";
    const struct {
        const char *name;
        std::string text;
    } cases[] = {
        {"no end", "RA" + std::string(10000, ' ')},
        {"long name", std::string(10000, 'R') + " 0,0 1,1 L $\n"},
        {"long word", "RA 0,0 1,1 " + std::string(10000, 'F') + "$\n"},
        {"no word", "RA 0,0 1,1"},
        {"not numbers", "RA nan,inf 1e999,1 -1e38,1 L $\n"},
        {"many pairs", "RA " +
                           [] {
                               std::string s;
                               for (int i = 0; i < 50; ++i) {
                                   s += "0.5,0.5 ";
                               }
                               return s;
                           }() +
                           "L $"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        use(c.text);
        draw("RA");
    }
}

TEST(SymbolData, EverySignIsFoundByItsOwnNameAndStaysInItsBox)
{
    RES_put("file_path", TYR_SOURCE_DIR "/data");
    std::ifstream file(TYR_SOURCE_DIR "/data/wx.smb");
    std::vector<std::string> names;
    for (std::string line; std::getline(file, line);) {
        if (!line.empty() && line[0] != ' ' && line[0] != '$') {
            names.push_back(line);
        }
    }
    ASSERT_LE(names.size(), static_cast<size_t>(kMaxSymbols));
    std::set<Strokes> numbered;
    size_t numbers = 0;
    for (const std::string &name : names) {
        SCOPED_TRACE(name);
        WorldPlot plot(4);
        WX_symb_file("wx.smb");
        const int align[2] = {kAlignLeft, kAlignBase};
        gset_text_align(align);
        ASSERT_EQ(WX_symbol(0.0F, 0.0F, 1.0F, name.c_str()), 1);
        const PsPage page = plot.finish();
        ASSERT_FALSE(page.strokes.empty());
        for (const PsStroke &stroke : page.strokes) {
            for (const PsPoint &p : stroke.points) {
                ASSERT_GE(std::min(p[0], p[1]), -0.06);
                ASSERT_LE(std::max(p[0], p[1]), 1.06);
            }
        }
        if (name[0] >= '0' && name[0] <= '9') {
            ++numbers;
            numbered.insert(show_strokes(page));
        }
    }
    EXPECT_EQ(numbered.size(), numbers) << "no two numbers look alike";
    for (const char *word :
         {"FG", "BR",   "HZ", "DU", "RA",   "-RA",  "+RA", "DZ", "SN",   "SHRA", "SHSN",
          "TS", "TSRA", "GR", "GS", "FZRA", "FZDZ", "SQ",  "FC", "RASN", "PL"}) {
        SCOPED_TRACE(word);
        EXPECT_NE(std::find(names.begin(), names.end(), word), names.end());
    }
}
