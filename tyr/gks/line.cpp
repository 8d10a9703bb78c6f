#include "tyr/gks/attribute_private.h"
#include "tyr/gks/colour_private.h"
#include "tyr/gks/device_private.h"
#include "tyr/gks/recorder_private.h"
#include "tyr/gks/state_private.h"

using namespace tyr;

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
    if (device_traits().keeps_calls) {
        device_keep_polyline(n, points);
        return 1;
    }
    record(kObjPolyline, n, 2 * n, points);
    device_polyline(n, device_points(n, points));
    return 0;
}

int gset_line_colr_ind(int index)
{
    if (!kernel_is_open("gset_line_colr_ind") || !colour_usable("gset_line_colr_ind", &index)) {
        return -1;
    }
    set_attribute(kObjLineColour, kernel().line.colour, index);
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
    set_attribute(kObjLineType, kernel().line.type, type);
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
    set_attribute(kObjLineWidth, kernel().line.width, width_on_device(width));
    return 0;
}

int ginq_line_colr()
{
    return kernel().line.colour;
}
