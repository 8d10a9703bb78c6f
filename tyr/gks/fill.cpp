#include <cstddef>

#include "tyr/gks/colour.h"
#include "tyr/gks/recorder.h"
#include "tyr/gks/state.h"
#include "tyr/paper/hpgl.h"
#include "tyr/paper/metafile.h"
#include "tyr/paper/postscript.h"
#include "tyr/x11/x11_draw.h"

namespace {

constexpr int kSolid = 1;
constexpr int kNumPatterns = 20;

constexpr unsigned char kPatterns[kNumPatterns][8] = {
    {0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff},
    {0xaa, 0x55, 0xaa, 0x55, 0xaa, 0x55, 0xaa, 0x55},
    {0x55, 0x00, 0x55, 0x00, 0x55, 0x00, 0x55, 0x00},
    {0x24, 0x11, 0x82, 0x48, 0x42, 0x11, 0x28, 0x84},
    {0x33, 0x33, 0x00, 0x00, 0xcc, 0xcc, 0x00, 0x00},
    {0x33, 0x33, 0x33, 0x33, 0x33, 0x33, 0x33, 0x33},
    {0x03, 0x06, 0x0c, 0x18, 0x30, 0x60, 0xc0, 0x81},
    {0x81, 0xc0, 0x60, 0x30, 0x18, 0x0c, 0x06, 0x03},
    {0xff, 0xff, 0x00, 0x00, 0xff, 0xff, 0x00, 0x00},
    {0xc3, 0x66, 0x3c, 0x18, 0x3c, 0x66, 0xc3, 0x81},
 // densities in tenths
    {0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00},
    {0x40, 0x10, 0x20, 0x01, 0x00, 0x04, 0x08, 0x02},
    {0x08, 0xa0, 0x44, 0x11, 0x22, 0x10, 0x81, 0x44},
    {0x45, 0x28, 0x94, 0x43, 0x50, 0x09, 0x52, 0xa8},
    {0x19, 0xca, 0x34, 0x1a, 0xe1, 0x32, 0xa5, 0xcc},
    {0x55, 0xdc, 0x3b, 0xe2, 0x97, 0xaa, 0x65, 0x3e},
    {0x7a, 0xe5, 0x5f, 0xab, 0xf5, 0xeb, 0x5e, 0xb5},
    {0xfe, 0xbb, 0xf5, 0x6f, 0xfe, 0xd7, 0xbd, 0xeb},
    {0xfd, 0xff, 0xef, 0x7f, 0xdf, 0xfe, 0xf7, 0xaf},
    {0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff},
};

void fill_postscript(int n, const float *points)
{
    gps_printf("%%%%FA:%d\nnp\n", n);
    gps_move(points[0], points[1]);
    for (std::ptrdiff_t i = 1; i < n; i++) {
        gps_draw(points[2 * i], points[2 * i + 1]);
    }
    gps_printf("cp\n");
    gps_fill_color(kernel().fill.colour);
    gps_printf("fill\n");
}

void fill_hpgl(int n, const float *points)
{
    ghp_fill_color(kernel().fill.colour);
    ghp_move(points[0], points[1]);
    ghp_printf("PM0;");
    for (std::ptrdiff_t i = 1; i < n; i++) {
        ghp_draw(points[2 * i], points[2 * i + 1]);
    }
    ghp_printf("PM1;PM2;FP;\n");
}

} // namespace

const unsigned char *gfill_pattern(int index)
{
    return index >= 0 && index < kNumPatterns ? kPatterns[index] : nullptr;
}

int gfill_area(int n, const float *points)
{
    if (!gextent_visible(n, points)) {
        return 0;
    }
    if (gis_metafile()) {
        gmeta_points("FA", n, points, true);
        return 1;
    }
    record(kObjFillArea, n, 2 * n, points);
    switch (kernel().ws.device) {
    case kDevicePostScript:
        if (kernel().fill.int_style == kSolid) {
            fill_postscript(n, points);
        }
        break;
    case kDeviceHpgl:
        fill_hpgl(n, points);
        break;
    case kDeviceDisplay:
    case kDeviceExtern:
        gx_area(n, points);
        break;
    default:
        break;
    }
    return 0;
}

int gset_fill_colr_ind(int index)
{
    if (index == kernel().fill.colour) {
        return 0;
    }
    if (!kernel_is_open("gset_fill_colr_ind") || !colour_usable("gset_fill_colr_ind", &index)) {
        return -1;
    }
    kernel().fill.colour = index;
    if (gis_metafile()) {
        gmeta_printf("FA_CLR %d\n", index);
        return 0;
    }
    record(kObjFillColour, index);
    if (gis_x11()) {
        gx_set_colour(GxFamily::fill, index);
    }
    return 0;
}

int gset_fill_int_style(int style)
{
    if (style == kernel().fill.int_style) {
        return 0;
    }
    if (!kernel_is_open("gset_fill_int_style")) {
        return -1;
    }
    kernel().fill.int_style = style;
    if (gis_metafile()) {
        gmeta_printf("FA_INT %d\n", style);
        return 0;
    }
    record(kObjFillInterior, style);
    if (gis_x11()) {
        gx_set_fill(style, kernel().fill.style_index);
    }
    return 0;
}

int gset_fill_style_ind(int index)
{
    if (index == kernel().fill.style_index) {
        return 0;
    }
    if (!kernel_is_open("gset_fill_style_ind")) {
        return -1;
    }
    if (gfill_pattern(index) == nullptr) {
        gerror("gset_fill_style_ind", "invalid style index: %d\n", index);
        return -1;
    }
    kernel().fill.style_index = index;
    if (gis_metafile()) {
        gmeta_printf("FA_ST %d\n", index);
        return 0;
    }
    record(kObjFillStyle, index);
    if (gis_x11()) {
        gx_set_fill(kernel().fill.int_style, index);
    }
    return 0;
}

void gset_fill_black(int flag)
{
    kernel().fill_black = flag != 0;
    record(kObjFillBlack, flag != 0 ? 1 : 0);
}

int ginq_fill_black()
{
    return kernel().fill_black ? 1 : 0;
}

int ginq_fill_colr()
{
    return kernel().fill.colour;
}
