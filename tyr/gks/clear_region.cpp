#include <cmath>

#include "tyr/gks/recorder.h"
#include "tyr/paper/metafile.h"
#include "tyr/paper/postscript.h"
#include "tyr/x11/x11_draw.h"

namespace {

void clear_on_screen(const float rect[4])
{
    const int left = static_cast<int>(std::floor(gwc_to_dc_x(rect[0]) + 0.5F));
    const int right = static_cast<int>(std::floor(gwc_to_dc_x(rect[1]) + 0.5F));
    const int bottom = static_cast<int>(std::floor(gwc_to_dc_y(rect[2]) + 0.5F));
    const int top = static_cast<int>(std::floor(gwc_to_dc_y(rect[3]) + 0.5F));
    gx_clear_region(left, top, right - left + 1, bottom - top + 1);
}

void clear_on_paper(const float rect[4])
{
    gps_printf("%%%%CLR\nnp\n");
    gps_move(rect[0], rect[2]);
    gps_draw(rect[1], rect[2]);
    gps_draw(rect[1], rect[3]);
    gps_draw(rect[0], rect[3]);
    gps_printf("cp\n");
    gps_fill_color(-1);
    gps_printf("fill\n");
}

} // namespace

int gclear_region(const float rect[4])
{
    if (gis_metafile()) {
        gmeta_printf("CLR_REG %f %f %f %f\n", rect[0], rect[2], rect[1], rect[3]);
        return 0;
    }
    record(kObjClearRegion, 1, 4, rect);
    if (gis_x11()) {
        clear_on_screen(rect);
    } else if (gis_postscript()) {
        clear_on_paper(rect);
    }
    return 0;
}
