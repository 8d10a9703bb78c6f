#include <cstddef>

#include "tyr/gks/colour.h"
#include "tyr/gks/recorder.h"
#include "tyr/gks/state.h"
#include "tyr/paper/hpgl.h"
#include "tyr/paper/metafile.h"
#include "tyr/paper/postscript.h"
#include "tyr/x11/x11_draw.h"

namespace {

void line_postscript(int n, const float *points)
{
    const LineState &line = kernel().line;
    gps_printf("%%%%PL:%d\n", n);
    gps_width(line.colour, line.width);
    gps_line_color(line.colour);
    gps_dash(line.type);
    gps_printf("np\n");
    gps_move(points[0], points[1]);
    for (std::ptrdiff_t i = 1; i < n; i++) {
        gps_draw(points[2 * i], points[2 * i + 1]);
    }
    gps_printf("stroke\n");
}

void line_hpgl(int n, const float *points)
{
    constexpr int kPointsPerLine = 10;
    const LineState &line = kernel().line;
    ghp_width(line.colour, line.width);
    ghp_line_color(line.colour);
    ghp_dash(line.type);
    ghp_move(points[0], points[1]);
    for (std::ptrdiff_t i = 1; i < n; i++) {
        ghp_draw(points[2 * i], points[2 * i + 1]);
        if ((i + 1) % kPointsPerLine == 0) {
            ghp_printf("\n");
        }
    }
    ghp_printf("\n");
}

} // namespace

int gpolyline(int n, const float *points)
{
    if (!kernel_is_open("gpolyline")) {
        return -1;
    }
    if (n < 2) {
        gerror("gpolyline", "invalid number of points: %d\n", n);
        return -1;
    }
    if (!gextent_visible(n, points)) {
        return 0;
    }
    switch (kernel().ws.device) {
    case kDeviceMetafile:
        if (ginq_meta_binary()) {
            gcgm_polyline(n, points);
        } else {
            gmeta_points("PL", n, points, false);
        }
        return 1;
    case kDevicePostScript:
        line_postscript(n, points);
        break;
    case kDeviceHpgl:
        line_hpgl(n, points);
        break;
    case kDeviceDisplay:
    case kDeviceExtern:
        record(kObjPolyline, n, 2 * n, points);
        gx_polyline(GxFamily::line, n, points);
        break;
    default:
        break;
    }
    return 0;
}

int gset_line_colr_ind(int index)
{
    if (!kernel_is_open("gset_line_colr_ind") || !colour_usable("gset_line_colr_ind", &index)) {
        return -1;
    }
    if (index == kernel().line.colour) {
        return 0;
    }
    kernel().line.colour = index;
    if (gis_metafile()) {
        gmeta_printf("PL_CLR %d\n", index);
        return 0;
    }
    record(kObjLineColour, index);
    if (gis_x11()) {
        gx_set_colour(GxFamily::line, index);
    }
    return 0;
}

int gset_linetype(int type)
{
    if (!kernel_is_open("gset_linetype")) {
        return -1;
    }
    if (type < 0) {
        gerror("gset_linetype", "invalid line type: %d\n", type);
        return -1;
    }
    if (type == kernel().line.type) {
        return 0;
    }
    kernel().line.type = type;
    if (gis_metafile()) {
        gmeta_printf("PL_TYPE %d\n", type);
        return 0;
    }
    record(kObjLineType, type);
    if (gis_x11()) {
        gx_set_dash(type);
    }
    return 0;
}

int gset_linewidth(float width)
{
    if (!kernel_is_open("gset_linewidth")) {
        return -1;
    }
    if (!(width >= 0.0F)) {
        gerror("gset_linewidth", "invalid line width: %f\n", width);
        return -1;
    }
    width = width_on_device(width);
    if (width == kernel().line.width) {
        return 0;
    }
    kernel().line.width = width;
    if (gis_metafile()) {
        gmeta_printf("PL_LW %f\n", width);
        return 0;
    }
    record(kObjLineWidth, 1, 1, &width);
    if (gis_x11()) {
        gx_set_width(GxFamily::line, width);
    }
    return 0;
}

int ginq_line_colr()
{
    return kernel().line.colour;
}
