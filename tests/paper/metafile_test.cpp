#include <algorithm>
#include <cstdint>
#include <iterator>

#include "support/kernel_plot.h"
#include "support/scoped_env.h"
#include "tyr/gks/gks.h"
#include "tyr/gks/session.h"
#include "tyr/paper/metafile.h"
#include "tyr/paper/metafile_reader.h"

namespace {

using Strings = std::vector<std::string>;

constexpr float kLine[4] = {0.0F, 0.0F, 0.5F, 0.5F};

/// A picture with every call that a metafile holds, in numbers that six digits hold.
void draw_everything()
{
    const float red[3] = {1.0F, 0.25F, 0.0F};
    const float window[4] = {-8.0F, 8.0F, -4.0F, 4.0F};
    const float viewport[4] = {0.25F, 0.75F, 0.5F, 0.75F};
    const float points[18] = {-8, -4, -6, 2,     -4, 1.5F, -2, -1.5F, 0,
                              3,  2,  1,  4.25F, -3, 6,    0,  8,     4};
    const float pos[2] = {-4.0F, 0.5F};
    const float up[2] = {3.0F, 4.0F};
    gset_colr_rep(1, 2, red);
    gset_window(2, window);
    gset_viewport(2, viewport);
    gsel_norm_tran(2);
    gset_linetype(3);
    gset_linewidth(2.5F);
    gset_line_colr_ind(2);
    for (const int n : {2, 4, 5, 8, 9}) {
        gpolyline(n, points);
    }
    gset_fill_colr_ind(2);
    gfill_area(4, points);
    gfill_area(5, points);
    gset_fill_int_style(2);
    gset_fill_style_ind(7);
    gfill_area(3, points);
    gset_marker_type(4);
    gset_marker_size(0.75F);
    gset_marker_width(2.0F);
    gset_marker_colr_ind(2);
    gpolymarker(4, points);
    gpolymarker(9, points);
    gset_text_colr_ind(2);
    gset_char_ht(0.5F);
    gset_expan(0.75F);
    gset_text_width(1.5F);
    gset_text_spacing(0.5F);
    GPH_set_text_align(2, 3);
    gset_char_up(up);
    GPH_set_font("5");
    gtext(pos, "Text, with 2 commas, and blanks ");
    gset_char_space(0.75F);
    gmessage(1, "a message PL 2 0,0 1,1");
    gtext(pos, "fixed pitch");
    gsel_norm_tran(0);
    gpolyline(2, kLine);
}

TEST(Metafile, TextFormIsOneLineACall)
{
    const ScopedEnv env_1("SOURCE_DATE_EPOCH", "920723400");
    const ScopedEnv env_2("TZ", "UTC");
    KernelPlot plot(kDeviceMetafile, "tyr");
    gset_linewidth(2.0F);
    gset_linewidth(2.0F);                         // unchanged: no line
    gsel_norm_tran(0);                            // current: no line
    for (const float up : {1.0F, -1.0F, -1.0F}) { // upright at first, then once upside down
        const float vector[2] = {0.0F, up};
        gset_char_up(vector);
    }
    std::vector<float> points(10, 0.5F);
    EXPECT_EQ(gpolyline(4, points.data()), 1);
    EXPECT_EQ(gpolyline(5, points.data()), 1);
    EXPECT_EQ(gfill_area(4, points.data()), 1);
    EXPECT_EQ(gpolymarker(1, points.data()), 0);
    const float outside[4] = {-2, -2, -1, -1};
    gpolyline(2, outside); // nothing
    const std::string p = "0.500000,0.500000 ";
    EXPECT_EQ(plot.finish(), "TYRMETA\n"
                             "#Title: TYR Graphics Display: X11_Graph\n"
                             "#Creator: TYR Metafile Processor-1.0\n"
                             "#CreationDate: Sat Mar  6 12:30:00 1999\n"
                             "PL_LW 2.000000\n"
                             "TE_UP 0.000000,-1.000000\n"
                             "PL 4 " +
                                 p + p + p + p +
                                 "\n"
                                 "PL 5 " +
                                 p + p + p + p + "\n   " + p +
                                 "\n"
                                 "FA 4 " +
                                 p + p + p + p +
                                 "\n   "
                                 "PM 1 " +
                                 p + "\n");
}

TEST(Metafile, PlayedBackItGivesTheSameDrawing)
{
    Strings direct;
    Strings played;
    {
        KernelPlot plot(kDevicePostScript, "color");
        draw_everything();
        direct = describe(plot.page().strokes);
    }
    {
        KernelPlot meta(kDeviceMetafile, "tyr");
        draw_everything();
        meta.finish();
        KernelPlot plot(kDevicePostScript, "color");
        EXPECT_EQ(gread_metafile(meta.path().c_str()), 0);
        const PsPage page = plot.page();
        EXPECT_EQ(page.error, "");
        played = describe(page.strokes);
    }
    EXPECT_GT(direct.size(), 50U);
    EXPECT_EQ(played, direct);
}

TEST(Metafile, PlayedOnAMetafileItIsTheSameMetafile)
{
    KernelPlot first(kDeviceMetafile, "tyr");
    draw_everything();
    const std::string text = first.finish();
    KernelPlot second(kDeviceMetafile, "tyr");
    EXPECT_EQ(gread_metafile(first.path().c_str()), 0);
    const auto records = [](std::string file) {
        file = file.substr(file.find("CLR "));
        for (const char *gone : {"ME a message PL 2 0,0 1,1\n"}) {
            if (const size_t at = file.find(gone); at != std::string::npos) {
                file.erase(at, std::string(gone).size());
            }
        }
        return file;
    };
    EXPECT_EQ(records(second.finish()), records(text));
}

TEST(Metafile, LongTextsAreCut)
{
    const TempDir dir;
    const std::string path =
        dir.write("long.meta", "TYRMETA\nTE 0.1,0.5 " + std::string(150, 'x') + "\n");
    KernelPlot plot(kDevicePostScript);
    gread_metafile(path.c_str());
    const PsPage page = plot.page();
    ASSERT_EQ(page.texts.size(), 1U);
    EXPECT_EQ(page.texts[0].text, std::string(100, 'x'));
}

TEST(Metafile, DamagedRecordsAreToldAndTheRestIsPlayed)
{
    struct Case {
        const char *name, *record, *message;
    };
    const char *const damaged = "gread_metafile: 1 damaged records, the first in line 2: ";
    const Case cases[] = {
        {"count beyond the file", "PL 2000000000 0,0 1,1", damaged},
        {"count below 0", "FA -3 0,0 1,1 1,0", damaged},
        {"count of 0", "PM 0 ", damaged},
        {"no count", "PL x", damaged},
        {"point cut short", "PL 2 0.5,0.5 0.5,x", damaged},
        {"one point", "PL 1 0.5,0.5 ", "gpolyline: invalid number of points: 1\n"},
        {"window of transformation 6", "WIN 6 0 0 1 1",
         "gset_window: invalid transformation number: 6\n"},
        {"viewport of transformation -1", "VP -1 0 0 1 1",
         "gset_viewport: invalid transformation number: -1\n"},
        {"transformation 77", "TR 77", "gsel_norm_tran: invalid transformation number: 77\n"},
        {"colour 9999", "CLR 1 9999 0 0 0", "gset_colr_rep: invalid color index: 9999\n"},
        {"line type", "PL_TYPE -4", "gset_linetype: invalid line type: -4\n"},
        {"no number", "PL_LW wide", damaged},
        {"unknown word", "NOSUCH 1 2 3", ""},
        {"window on the workstation", "WS_WIN 1 5 5 6 6", ""},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        const TempDir dir;
        const std::string path = dir.write("damaged.meta", std::string("TYRMETA\n") + c.record +
                                                               "\nPL 2 0,0 0.5,0.5 \n");
        KernelPlot plot(kDevicePostScript);
        testing::internal::CaptureStderr();
        const int result = gread_metafile(path.c_str());
        const std::string said = testing::internal::GetCapturedStderr();
        EXPECT_EQ(said.substr(0, std::string(c.message).size()), c.message);
        EXPECT_EQ(result, c.message == damaged ? -1 : 0);
        const Strings strokes = describe(plot.page().strokes);
        ASSERT_FALSE(strokes.empty());
        EXPECT_EQ(strokes.back(), "line 0.00,0.00,0.00 w0.33 [] 0.00,0.00 287.50,287.50");
    }
}

TEST(Metafile, AnyDamageEndsInAPageThatCanBeRead)
{
    KernelPlot meta(kDeviceMetafile, "tyr");
    draw_everything();
    const std::string whole = meta.finish();
    const TempDir dir;
    testing::internal::CaptureStderr();
    for (size_t i = 0; i < whole.size(); i += 7) {
        std::string changed = whole;
        changed[i] = static_cast<char>(~changed[i]);
        for (const std::string &text : {whole.substr(0, i), changed}) {
            const std::string path = dir.write("damaged.meta", text);
            KernelPlot plot(kDevicePostScript);
            gread_metafile(path.c_str());
            constexpr float kPanel[4] = {0.5F, 1.0F, 0.0F, 0.4F};
            gread_metafile_panel(path.c_str(), kPanel, 1);
            ASSERT_EQ(plot.page().error, "") << i;
        }
    }
    testing::internal::GetCapturedStderr();
}

TEST(Metafile, MissingFilesAreTold)
{
    const KernelPlot plot(kDevicePostScript);
    testing::internal::CaptureStderr();
    EXPECT_EQ(gread_metafile("/dev/null/none"), 0);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "gread_metafile: Unable to open image file: /dev/null/none\n");
}

/// An element of a CGM in the binary encoding (ISO/IEC 8632-3, clause 5): class, id, parameters.
struct CgmElement {
    int element_class, id;
    std::vector<int> bytes;
    bool operator==(const CgmElement &) const = default;
};

/// Walks a CGM from element to element; a header that runs beyond the file ends it with class -1.
std::vector<CgmElement> walk_cgm(const std::string &file)
{
    std::vector<CgmElement> out;
    size_t at = 0;
    const auto byte = [&](size_t i) { return static_cast<unsigned char>(file[i]); };
    while (at + 2 <= file.size()) {
        const int head = byte(at) << 8 | byte(at + 1);
        at += 2;
        int length = head & 31;
        if (length == 31) {
            if (at + 2 > file.size() || (byte(at) & 0x80) != 0) {
                out.push_back({-1, 0, {}});
                return out;
            }
            length = byte(at) << 8 | byte(at + 1);
            at += 2;
        }
        const size_t padded = static_cast<size_t>(length + length % 2);
        if (at + padded > file.size()) {
            out.push_back({-1, 0, {}});
            return out;
        }
        CgmElement element{head >> 12, head >> 5 & 127, {}};
        for (size_t i = 0; i < static_cast<size_t>(length); i++) {
            element.bytes.push_back(byte(at + i));
        }
        out.push_back(element);
        at += padded;
    }
    if (at != file.size()) {
        out.push_back({-1, 0, {}});
    }
    return out;
}

/// Signed 16-bit numbers of an element.
std::vector<int> numbers(const CgmElement &element)
{
    std::vector<int> out;
    for (size_t i = 0; i + 1 < element.bytes.size(); i += 2) {
        out.push_back(static_cast<std::int16_t>(element.bytes[i] << 8 | element.bytes[i + 1]));
    }
    return out;
}

TEST(Cgm, ElementsInTheirOrder)
{
    KernelPlot plot(kDeviceMetafile, "cgm");
    draw_everything();
    const std::vector<CgmElement> elements = walk_cgm(plot.finish());
    gset_meta_binary(0);
    const CgmElement head[] = {
        {0, 1, {}},
        {1, 1, {0, 1}},
        {1, 2, {10, 'T', 'Y', 'R', 'C', 'G', 'M', '-', '1', '.', '0'}},
        {1, 11, {0, 1, 255, 255, 0, 1}},
        {1, 9, {255}},
        {2, 6, {0, 0, 0, 0, 10000 >> 8, 10000 & 255, 8000 >> 8, 8000 & 255}},
        {0, 3, {}},
        {0, 4, {}},
    };
    ASSERT_GT(elements.size(), std::size(head) + 2);
    for (size_t i = 0; i < std::size(head); i++) {
        EXPECT_EQ(elements[i], head[i]) << i;
    }
    EXPECT_EQ(elements.back(), (CgmElement{0, 5, {}}));
    int lines = 0;
    for (size_t i = std::size(head); i + 1 < elements.size(); i++) {
        const bool line = elements[i].element_class == 4 && elements[i].id == 1;
        const bool clip = elements[i].element_class == 3 && elements[i].id == 5;
        EXPECT_TRUE(line || clip) << i;
        lines += line ? 1 : 0;
    }
    EXPECT_EQ(lines, 6);
    // the whole square is clipped at 799 units, and the last line goes to its middle
    EXPECT_EQ(numbers(elements[std::size(head)]), (std::vector<int>{0, 0, 799, 799}));
    EXPECT_EQ(numbers(elements[elements.size() - 2]), (std::vector<int>{0, 0, 399, 399}));
}

TEST(Cgm, LongLinesGoOutInPieces)
{
    KernelPlot plot(kDeviceMetafile, "cgm");
    std::vector<float> points;
    for (int i = 0; i < 20000; i++) {
        points.push_back(static_cast<float>(i) / 20000.0F);
        points.push_back(i % 2 == 0 ? 0.0F : 1.0F);
    }
    gpolyline(20000, points.data());
    const std::vector<CgmElement> elements = walk_cgm(plot.finish());
    gset_meta_binary(0);
    ASSERT_EQ(elements.back(), (CgmElement{0, 5, {}}));
    size_t count = 1;
    std::vector<int> last;
    for (const CgmElement &element : elements) {
        if (element.element_class != 4) {
            continue;
        }
        const std::vector<int> line = numbers(element);
        if (!last.empty()) { // a piece goes on where the last one ended
            EXPECT_EQ(std::vector<int>(line.begin(), line.begin() + 2), last);
        }
        last.assign(line.end() - 2, line.end());
        count += line.size() / 2 - 1;
    }
    EXPECT_EQ(count, 20000U);
}

TEST(Cgm, AppendedPicturesHaveNoEnd)
{
    const TempDir dir;
    const std::string path = dir.file("plot.cgm");
    gopen_gks(nullptr, 0);
    ASSERT_EQ(gopen_ws(1, ("+" + path + ",CGM").c_str(), kDeviceMetafile), 0);
    gpolyline(2, kLine);
    EXPECT_EQ(gclose_ws(1), 0);
    gset_meta_binary(0);
    EXPECT_EQ(walk_cgm(read_file(path)).back().element_class, 4);
}

TEST(Metafile, GeometryIsInInches)
{
    const ScopedEnv env_3("tyrmeta_out", "/dev/null");
    gopen_gks(nullptr, 0);
    ASSERT_EQ(gopen_ws(1, "", kDeviceMetafile), 0);
    int width = 0;
    int height = 0;
    ginq_ws_size(&width, &height);
    EXPECT_EQ(width, 1000);
    EXPECT_EQ(height, 800);
    gclose_ws(1);
}

} // namespace
