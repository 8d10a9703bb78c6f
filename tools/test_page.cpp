// Draws a page that shows what the kernel can draw: line types and widths, print colours, markers,
// fills, text alignments and rotations, and every font with its whole character set.
//
//   test_page [device text [folder of the fonts]]     e.g.  test_page p,page.ps,color data
//
// The device text is the value of the resource `device`: letter, target, words of the device.

#include <cmath>
#include <iterator>
#include <string>

#include "tyr/base/res.h"
#include "tyr/gks/gks.h"
#include "tyr/gks/session.h"

namespace {

constexpr int kBlack = 1;
constexpr int kGrey = 7;
constexpr int kNumFonts = 11;

struct Rgb {
    float red, green, blue;
};

constexpr Rgb kColours[] = {
    {1.0F, 1.0F, 1.0F}, // 0 white
    {0.0F, 0.0F, 0.0F}, // 1 black
    {0.8F, 0.1F, 0.1F}, // 2 red
    {0.0F, 0.5F, 0.1F}, // 3 green
    {0.1F, 0.2F, 0.8F}, // 4 blue
    {0.9F, 0.7F, 0.0F}, // 5 yellow
    {0.6F, 0.0F, 0.6F}, // 6 magenta
    {0.6F, 0.6F, 0.6F}, // 7 grey
};

void label(float x, float y, const std::string &text, float height = 0.008F)
{
    gset_char_ht(height);
    GPH_set_text_align(kAlignLeft, kAlignHalf);
    GPH_text_at("%s", x, y, text.c_str());
}

void heading(float x, float y, const char *text)
{
    gset_text_width(2.0F);
    label(x, y, text, 0.010F);
    gset_text_width(1.0F);
}

void line(float x1, float y1, float x2, float y2)
{
    const float points[4] = {x1, y1, x2, y2};
    gpolyline(2, points);
}

void line_types(float x, float y)
{
    heading(x, y, "Line types 1 to 5, widths 0.5 to 4");
    for (int i = 0; i < 5; i++) {
        const float row = y - 0.020F - 0.012F * static_cast<float>(i);
        label(x, row, std::to_string(i + 1));
        gset_linetype(i + 1);
        line(x + 0.015F, row, x + 0.115F, row);
        gset_linetype(1);
        gset_linewidth(i == 0 ? 0.5F : static_cast<float>(i));
        gset_line_colr_ind(2 + i);
        line(x + 0.135F, row, x + 0.235F, row);
        gset_linewidth(1.0F);
        gset_line_colr_ind(kBlack);
    }
}

void print_colours(float x, float y)
{
    heading(x, y, "Print colours 500 to 508 on grey");
    gset_fill_colr_ind(kGrey);
    const float back[8] = {x,          y - 0.012F, x + 0.235F, y - 0.012F,
                           x + 0.235F, y - 0.050F, x,          y - 0.050F};
    gfill_area(4, back);
    for (int i = 0; i < 9; i++) {
        const float at = x + 0.012F + 0.025F * static_cast<float>(i);
        gset_line_colr_ind(kFirstPrintColour + i);
        line(at, y - 0.018F, at + 0.015F, y - 0.026F);
        gset_fill_colr_ind(kFirstPrintColour + i);
        const float box[8] = {at,          y - 0.030F, at + 0.015F, y - 0.030F,
                              at + 0.015F, y - 0.046F, at,          y - 0.046F};
        gfill_area(4, box);
    }
    gset_line_colr_ind(kBlack);
}

void markers(float x, float y)
{
    heading(x, y, "Markers 1 to 9, sizes 0.5 to 2");
    for (int type = 1; type <= 9; type++) {
        const float at = x + 0.012F + 0.026F * static_cast<float>(type - 1);
        label(at - 0.004F, y - 0.018F, std::to_string(type));
        gset_marker_type(type);
        gset_marker_colr_ind(1 + type % 7);
        for (int i = 0; i < 3; i++) {
            gset_marker_size(0.5F * static_cast<float>(1 << i));
            GPH_mark(at, y - 0.032F - 0.020F * static_cast<float>(i));
        }
    }
}

void fills(float x, float y)
{
    heading(x, y, "Fills: -1 to 7, pattern (empty on PostScript)");
    for (int i = -1; i <= 8; i++) {
        const float at = x + 0.024F * static_cast<float>(i + 1);
        gset_fill_colr_ind(i == 8 ? 4 : i);
        gset_fill_int_style(i == 8 ? 2 : 1);
        const float star[10] = {at,         y - 0.015F,  at + 0.020F, y - 0.015F,  at + 0.016F,
                                y - 0.035F, at + 0.010F, y - 0.045F,  at + 0.004F, y - 0.035F};
        gfill_area(5, star);
        gpolyline(5, star);
    }
    gset_fill_int_style(1);
}

void alignments(float x, float y)
{
    heading(x, y, "Alignments 1 to 3 by 1 to 5");
    gset_char_ht(0.012F);
    for (int v = 1; v <= 5; v++) {
        for (int h = 1; h <= 3; h++) {
            const float px = x + 0.04F + 0.085F * static_cast<float>(h - 1);
            const float py = y - 0.025F - 0.026F * static_cast<float>(v - 1);
            gset_line_colr_ind(2);
            line(px - 0.03F, py, px + 0.03F, py);
            line(px, py - 0.009F, px, py + 0.009F);
            gset_line_colr_ind(kBlack);
            GPH_set_text_align(h, v);
            GPH_text_at("Ag%d%d", px, py, h, v);
        }
    }
}

void rotations(float x, float y)
{
    heading(x, y, "Up vectors, expansion, spacing, fixed pitch");
    gset_char_ht(0.010F);
    GPH_set_text_align(kAlignLeft, kAlignHalf);
    for (int degrees = 0; degrees < 360; degrees += 45) {
        const float angle = static_cast<float>(degrees) * 3.14159265F / 180.0F;
        const float up[2] = {std::sin(angle), std::cos(angle)};
        gset_char_up(up);
        GPH_text_at("   up %d", x + 0.06F, y - 0.075F, degrees);
    }
    const float upright[2] = {0.0F, 1.0F};
    gset_char_up(upright);
    gset_expan(0.6F);
    GPH_text_at("expansion 0.6", x + 0.13F, y - 0.03F);
    gset_expan(1.5F);
    GPH_text_at("1.5", x + 0.13F, y - 0.05F);
    gset_expan(1.0F);
    gset_text_spacing(1.0F);
    GPH_text_at("spaced", x + 0.13F, y - 0.07F);
    gset_text_spacing(0.25F);
    gset_char_space(0.8F);
    GPH_text_at("1 i W pitch", x + 0.13F, y - 0.09F);
    gset_char_space(0.0F);
    gset_text_width(3.0F);
    gset_text_colr_ind(4);
    GPH_text_at("width 3", x + 0.13F, y - 0.11F);
    gset_text_width(1.0F);
    gset_text_colr_ind(kBlack);
}

void fonts(float x, float y)
{
    constexpr int kHalves = 2;
    for (int font = 1; font <= kNumFonts; font++) {
        const float top = y - 0.062F * static_cast<float>(font - 1);
        GPH_set_font("1");
        heading(x, top, ("Font " + std::to_string(font)).c_str());
        GPH_set_font(std::to_string(font).c_str());
        gset_char_ht(0.0115F);
        GPH_set_text_align(kAlignLeft, kAlignHalf);
        for (int half = 0; half < kHalves; half++) {
            std::string characters;
            for (int c = half == 0 ? 33 : 80; c <= (half == 0 ? 79 : 127); c++) {
                characters += static_cast<char>(c);
            }
            GPH_text_at("%s", x, top - 0.018F - 0.022F * static_cast<float>(half),
                        characters.c_str());
        }
    }
    GPH_set_font("1");
}

} // namespace

int main(int argc, char **argv)
{
    RES_put("device", argc > 1 ? argv[1] : "p,test_page.ps,color");
    RES_put("file_path", argc > 2 ? argv[2] : "data");
    RES_put("title", "Test page");
    int ws = 0;
    int device = 0;
    float margins[4] = {0.0F, 0.0F, 0.0F, 0.0F};
    GPH_open(&ws, &device, margins, 0.0F);
    for (int i = 0; i < static_cast<int>(std::size(kColours)); i++) {
        GPH_set_colour(i, kColours[i].red, kColours[i].green, kColours[i].blue);
    }
    gsel_norm_tran(1);
    float frame[4];
    GPH_get_window(1, frame);
    GPH_rect(frame);
    line_types(0.02F, 0.74F);
    print_colours(0.02F, 0.645F);
    markers(0.02F, 0.575F);
    fills(0.02F, 0.475F);
    alignments(0.02F, 0.405F);
    rotations(0.02F, 0.24F);
    fonts(0.36F, 0.74F);
    return GPH_end(ws) == 0 ? 0 : 1;
}
