#include <algorithm>
#include <cmath>
#include <cstddef>

#include "tyr/gks/clip_private.h"
#include "tyr/gks/device_private.h"
#include "tyr/gks/state_private.h"

using namespace tyr;

void tyr::clip_apply()
{
    const TranRect &v = kernel().tran.cur_viewport;
    device_clip(gndc_to_pc_x(v.xmin), gndc_to_pc_y(v.ymin), gndc_to_pc_x(v.xmax),
                gndc_to_pc_y(v.ymax));
}

void gclip_rect(short out[4])
{
    const TranRect &v = kernel().tran.cur_viewport;
    const auto x = static_cast<short>(std::trunc(gndc_to_dc_x(v.xmin) + 0.5F));
    const auto y = static_cast<short>(std::trunc(gndc_to_dc_y(v.ymax) + 0.5F));
    // width and height are unsigned 16-bit numbers to X11; within a short for any real screen
    const float width = gndc_to_dc_x(v.xmax) - static_cast<float>(x) + 1.5F;
    const float height = gndc_to_dc_y(v.ymin) - static_cast<float>(y) + 1.5F;
    out[0] = x;
    out[1] = y;
    out[2] = static_cast<short>(std::clamp(width, 0.0F, 32767.0F));
    out[3] = static_cast<short>(std::clamp(height, 0.0F, 32767.0F));
}

int gextent_visible(int n, const float *points)
{
    if (n < 1) {
        return 0;
    }
    float xmin = points[0];
    float xmax = points[0];
    float ymin = points[1];
    float ymax = points[1];
    for (std::ptrdiff_t i = 1; i < n; i++) {
        xmin = std::min(xmin, points[2 * i]);
        xmax = std::max(xmax, points[2 * i]);
        ymin = std::min(ymin, points[2 * i + 1]);
        ymax = std::max(ymax, points[2 * i + 1]);
    }
    const TranRect &w = kernel().tran.cur_window;
    return !(w.xmin > xmax || xmin > w.xmax || w.ymin > ymax || ymin > w.ymax);
}
