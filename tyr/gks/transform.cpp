#include <cmath>
#include <vector>

#include "tyr/gks/attribute_private.h"
#include "tyr/gks/clip_private.h"
#include "tyr/gks/device_private.h"
#include "tyr/gks/state_private.h"

using namespace tyr;

namespace {

constexpr float kX11Limit = 30000.0F;
constexpr float kPaperLimit = 100000.0F;

/// Into +-limit. What isn't a number (a window without extent) goes to the limit too, off the page.
float clamp_to(float value, float limit)
{
    if (value < -limit) {
        return -limit;
    }
    return value < limit ? value : limit;
}

bool is_transformation(int n)
{
    return n >= 0 && n < kNumTransformations;
}

/// Ratio of two sides; a side of 0 gives an infinite scale, which the clamps hold in range.
float ratio(float over, float under)
{
    return under == 0.0F ? std::copysign(INFINITY, over) : over / under;
}

void update_scale()
{
    TransformationState &t = kernel().tran;
    t.sx = ratio(t.cur_viewport.dx, t.cur_window.dx);
    t.sy = ratio(t.cur_viewport.dy, t.cur_window.dy);
}

/// Fits the workstation window to the device and keeps its shape; it starts at the device's corner.
void fit_to_device()
{
    TransformationState &t = kernel().tran;
    const WorkstationState &ws = kernel().ws;
    const TranRect &window = t.ws_window;
    const TranRect &viewport = t.ws_viewport;
    if (ratio(viewport.dx, window.dx) > ratio(viewport.dy, window.dy)) {
        t.dev_w = window.dx * ratio(viewport.dy, window.dy);
        t.dev_h = viewport.dy;
    } else {
        t.dev_w = viewport.dx;
        t.dev_h = window.dy * ratio(viewport.dx, window.dx);
    }
    t.dev_x0 = static_cast<float>(ws.x_offset) + viewport.xmin;
    t.dev_y0 = static_cast<float>(ws.y_offset) + viewport.ymin;
    t.kx = ratio(t.dev_w, window.dx);
    t.ky = ratio(t.dev_h, window.dy);
}

void make_current(int n)
{
    TransformationState &t = kernel().tran;
    t.current = n;
    t.cur_window = t.window[n];
    t.cur_viewport = t.viewport[n];
    update_scale();
}

void after_ws_change()
{
    fit_to_device();
    update_scale();
    clip_apply();
}

} // namespace

int gset_window(int n, const float rect[4])
{
    if (!is_transformation(n)) {
        gerror("gset_window", "invalid transformation number: %d\n", n);
        return -1;
    }
    pass_on(kObjWindow, n, rect);
    TransformationState &t = kernel().tran;
    t.window[n] = TranRect::from(rect);
    if (n == t.current) {
        t.cur_window = t.window[n];
        update_scale();
    }
    return 0;
}

int gset_viewport(int n, const float rect[4])
{
    if (!is_transformation(n)) {
        gerror("gset_viewport", "invalid transformation number: %d\n", n);
        return -1;
    }
    pass_on(kObjViewport, n, rect);
    TransformationState &t = kernel().tran;
    t.viewport[n] = TranRect::from(rect);
    if (n == t.current) {
        t.cur_viewport = t.viewport[n];
        update_scale();
        clip_apply();
    }
    return 0;
}

int gsel_norm_tran(int n)
{
    if (!is_transformation(n)) {
        gerror("gsel_norm_tran", "invalid transformation number: %d\n", n);
        return -1;
    }
    if (n == kernel().tran.current) {
        return 0;
    }
    pass_on(kObjSelectTran, n);
    make_current(n);
    clip_apply();
    return 0;
}

int gset_ws_window(int ws, const float rect[4])
{
    pass_on(kObjWsWindow, ws, rect);
    kernel().tran.ws_window = TranRect::from(rect);
    after_ws_change();
    return 0;
}

int gset_ws_viewport(int ws, const float rect[4])
{
    pass_on(kObjWsViewport, ws, rect);
    kernel().tran.ws_viewport = TranRect::from(rect);
    after_ws_change();
    return 0;
}

void gset_tran_defaults(int mode)
{
    TransformationState &t = kernel().tran;
    const WorkstationState &ws = kernel().ws;
    const float device[4] = {0.0F, static_cast<float>(ws.width - 1), 0.0F,
                             static_cast<float>(ws.height - 1)};
    if (mode != kTranResize) {
        t = TransformationState{};
    }
    t.ws_viewport = TranRect::from(device);
    fit_to_device();
    update_scale();
    if (mode == kTranPostScript || mode == kTranHpgl || mode == kTranMetafile) {
        clip_apply(); // a redraw or a resize only works the clip out
    }
}

void gset_ws_size(int width, int height)
{
    kernel().ws.width = width;
    kernel().ws.height = height;
    gset_tran_defaults(kTranResize);
}

int ginq_norm_tran(int n, int *err, float out[8])
{
    *err = 0;
    if (!is_transformation(n)) {
        return -1;
    }
    const TranRect &w = kernel().tran.window[n];
    const TranRect &v = kernel().tran.viewport[n];
    const float values[8] = {w.xmin, w.xmax, w.ymin, w.ymax, v.xmin, v.xmax, v.ymin, v.ymax};
    for (int i = 0; i < 8; i++) {
        out[i] = values[i];
    }
    return 0;
}

int ginq_max_ds(int, int *err, void *rec)
{
    const WorkstationState &ws = kernel().ws;
    *err = 0;
    *static_cast<MaxDisplaySize *>(rec) = {1, static_cast<float>(ws.width - 1),
                                           static_cast<float>(ws.height - 1), ws.width, ws.height};
    return 0;
}

float gndc_to_dc_x(float x)
{
    const TransformationState &t = kernel().tran;
    return clamp_to((x - t.ws_window.xmin) * t.kx + t.dev_x0, kX11Limit);
}

float gndc_to_dc_y(float y)
{
    const TransformationState &t = kernel().tran;
    return clamp_to((t.ws_window.ymax - y) * t.ky + t.dev_y0, kX11Limit);
}

float gndc_to_pc_x(float x)
{
    const TransformationState &t = kernel().tran;
    return clamp_to((x - t.ws_window.xmin) * t.kx + t.dev_x0, kPaperLimit);
}

float gndc_to_pc_y(float y)
{
    const TransformationState &t = kernel().tran;
    return clamp_to((y - t.ws_window.ymin) * t.ky + t.dev_y0, kPaperLimit);
}

float gwc_to_dc_x(float x)
{
    const TransformationState &t = kernel().tran;
    return gndc_to_dc_x((x - t.cur_window.xmin) * t.sx + t.cur_viewport.xmin);
}

float gwc_to_dc_y(float y)
{
    const TransformationState &t = kernel().tran;
    return gndc_to_dc_y((y - t.cur_window.ymin) * t.sy + t.cur_viewport.ymin);
}

float gwc_to_pc_x(float x)
{
    const TransformationState &t = kernel().tran;
    return gndc_to_pc_x((x - t.cur_window.xmin) * t.sx + t.cur_viewport.xmin);
}

float gwc_to_pc_y(float y)
{
    const TransformationState &t = kernel().tran;
    return gndc_to_pc_y((y - t.cur_window.ymin) * t.sy + t.cur_viewport.ymin);
}

DevicePoint tyr::device_point(const float world[2])
{
    if (device_traits().is_screen) {
        return {gwc_to_dc_x(world[0]), gwc_to_dc_y(world[1])};
    }
    return {gwc_to_pc_x(world[0]), gwc_to_pc_y(world[1])};
}

const float *tyr::device_points(int n, const float *world)
{
    static std::vector<float> points;
    points.resize(2 * static_cast<size_t>(n));
    for (size_t i = 0; i < points.size(); i += 2) {
        const DevicePoint point = device_point(world + i);
        points[i] = point.x;
        points[i + 1] = point.y;
    }
    return points.data();
}

float gdc_to_wc_x(float x)
{
    const TransformationState &t = kernel().tran;
    const float normalised = ratio(x - t.dev_x0, t.kx) + t.ws_window.xmin;
    return ratio(normalised - t.cur_viewport.xmin, t.sx) + t.cur_window.xmin;
}

float gdc_to_wc_y(float y)
{
    const TransformationState &t = kernel().tran;
    const float normalised = t.ws_window.ymax - ratio(y - t.dev_y0, t.ky);
    return ratio(normalised - t.cur_viewport.ymin, t.sy) + t.cur_window.ymin;
}

float gtran_x(int from, int to, float x)
{
    if (!is_transformation(from) || !is_transformation(to)) {
        return x;
    }
    const TransformationState &t = kernel().tran;
    const TranRect &wa = t.window[from];
    const TranRect &va = t.viewport[from];
    const TranRect &wb = t.window[to];
    const TranRect &vb = t.viewport[to];
    const float v = ratio((x - wa.xmin) * va.dx, wa.dx) + va.xmin;
    return ratio((v - vb.xmin), vb.dx) * wb.dx + wb.xmin;
}

float gtran_y(int from, int to, float y)
{
    if (!is_transformation(from) || !is_transformation(to)) {
        return y;
    }
    const TransformationState &t = kernel().tran;
    const TranRect &wa = t.window[from];
    const TranRect &va = t.viewport[from];
    const TranRect &wb = t.window[to];
    const TranRect &vb = t.viewport[to];
    const float v = ratio((y - wa.ymin) * va.dy, wa.dy) + va.ymin;
    return ratio((v - vb.ymin), vb.dy) * wb.dy + wb.ymin;
}
