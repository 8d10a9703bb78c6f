#include "tyr/gks/session.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <string>

#include <unistd.h>

#include "tyr/base/ask.h"
#include "tyr/base/file.h"
#include "tyr/base/msg.h"
#include "tyr/base/prm.h"
#include "tyr/base/res.h"
#include "tyr/base/sys.h"
#include "tyr/gks/colour_table.h"
#include "tyr/gks/device_private.h"
#include "tyr/gks/state_private.h"
#include "tyr/start/convert.h"

using namespace tyr;

namespace {

constexpr unsigned kErrorBufferSize = 10000;
constexpr int kAnswerRoom = 11;
constexpr int kFontPrecision = 2;

struct State {
    bool open = false;
    int asked = kDeviceNone; ///< device kind as asked for; 0 if the user is to be asked
    int device = kDeviceNone;
    float aspect_x = 1.0F, aspect_y = 1.0F;
    float view_w = 1.0F, view_h = 1.0F, view_x = 0.0F, view_y = 0.0F;
    std::string default_font;
};

State state;

std::string program_name()
{
    char name[kProgramNameRoom];
    RES_program_name(name);
    return name;
}

/// Application name and title from the resources `name` and `title`.
void set_names()
{
    const std::string program = program_name();
    const char *name = RES_get("name");
    const char *title = RES_get("title");
    gset_app_name(name != nullptr ? name : program.c_str());
    if (title == nullptr && name != nullptr) {
        title = name[0] == '+' ? name + 1 : name;
    }
    gset_title(title != nullptr ? title : program.c_str());
}

/// Ends the program where nobody can answer which device is meant.
void require_input()
{
    if (isatty(STDIN_FILENO) != 0) {
        return;
    }
    const int next = std::getchar();
    if (next == EOF) {
        MSG_out(kMsgError, "GPH_begin: No device to draw on: no DISPLAY, and no answer\n");
        SYS_exit(kExitNoAnswer);
    }
    std::ungetc(next, stdin);
}

void open_or_exit(bool failed, const char *what)
{
    if (failed) {
        MSG_out(kMsgError, "GPH_begin: Error opening %s\n", what);
        SYS_exit(kExitNoGraphics);
    }
}

/// Window and viewport of a transformation, viewport first.
void set_both(int n, const float rect[4])
{
    gset_viewport(n, rect);
    gset_window(n, rect);
}

void reset_attributes()
{
    gset_linetype(1);
    gset_linewidth(0.0F);
    gset_fill_int_style(1);
    gset_marker_width(0.0F);
    gset_text_width(0.0F);
    gset_expan(1.0F);
}

std::string format_text(const char *format, std::va_list args)
{
    char text[kTextLineRoom];
    const int length = std::vsnprintf(text, sizeof text, format, args);
    return length > 0 ? text : "";
}

} // namespace

int GPH_device_code(const char *word)
{
    return device_of_letter(word != nullptr ? word[0] : '\0');
}

void GPH_open(int *ws, int *device, float *margins, float aspect)
{
    const char *params = nullptr;
    RES_get_value("device", &params, kResDevice);
    const auto asked = static_cast<int>(PRM_get(kPrmDevice));
    *device = asked >= 1 ? asked : PRM_is_batch() ? kDeviceDisplay : kDeviceNone;
    set_names();
    CLR_read_table(nullptr);
    int local = 0;
    RES_get_value("draw", &local, kResDraw);
    GPH_begin(ws, params, device);
    GPH_setup(ws, device, margins, aspect);
}

void GPH_begin(int *ws, const char *params, int *device)
{
    FILE_remove("tyrgks.err");
    *ws = 1;
    state.asked = *device;
    if (*device == kDeviceNone) {
        require_input();
        char answer[kAnswerRoom];
        *device = GPH_device_code(ASK_text("Display (D) or Postscript (P): ", answer, kAnswerRoom));
        PRM_set(kPrmDevice, *device);
    }
    state.device = *device;
    if (!state.open) {
        open_or_exit(gopen_gks(nullptr, kErrorBufferSize) != 0, "Kernel System");
        open_or_exit(gopen_ws(*ws, params, *device) != 0, "workstation");
    }
    state.open = true;
    gactivate_ws(*ws);
}

void GPH_setup(int *ws, int *device, float *margins, float aspect)
{
    gclear_ws(*ws, 1);
    GPH_get_aspect(*device, &state.aspect_x, &state.aspect_y);
    const float surface[4] = {0.0F, state.aspect_x, 0.0F, state.aspect_y};
    gset_ws_window(*ws, surface);
    set_both(1, surface);
    GPH_set_plot_area(ws, device, margins, aspect);
    for (int i = 0; i < CLR_count(); i++) {
        float rgb[3];
        CLR_get_rgb(i, &rgb[0], &rgb[1], &rgb[2]);
        gset_colr_rep(*ws, i, rgb);
    }
    GPH_set_font(nullptr);
}

void GPH_set_plot_area(int *, int *, float *margins, float aspect)
{
    const State &s = state;
    float area[4] = {
        (s.view_w * margins[0] + s.view_x) * s.aspect_x,
        ((s.view_w + s.view_x) - s.view_w * margins[1]) * s.aspect_x,
        (s.view_h * margins[2] + s.view_y) * s.aspect_y,
        ((s.view_h + s.view_y) - s.view_h * margins[3]) * s.aspect_y,
    };
    if (aspect != 0.0F) {
        GPH_fit_aspect(area, aspect, 1.0F);
    } else {
        GPH_fit_aspect(area, s.view_w * s.aspect_x, s.view_h * s.aspect_y);
    }
    set_both(2, area);
    set_both(3, area);
    reset_attributes();
    for (int i = 0; i < 4; i++) {
        margins[i] = area[i];
    }
}

void GPH_get_aspect(int, float *ax, float *ay)
{
    int width = 0;
    int height = 0;
    ginq_ws_size(&width, &height);
    const auto wmax = static_cast<float>(width - 1);
    const auto hmax = static_cast<float>(height - 1);
    *ax = wmax > hmax ? 1.0F : wmax / hmax;
    *ay = wmax > hmax ? hmax / wmax : 1.0F;
}

void GPH_fit_aspect(float rect[4], float aw, float ah)
{
    const float w = rect[1] - rect[0];
    const float h = rect[3] - rect[2];
    if (ah / h <= aw / w) {
        const float spare = (h - ah * w / aw) / 2.0F;
        rect[2] += spare;
        rect[3] -= spare;
    } else {
        const float spare = (w - aw * h / ah) / 2.0F;
        rect[0] += spare;
        rect[1] -= spare;
    }
}

void GPH_set_view_frac(float w, float h, float x, float y)
{
    state.view_w = w;
    state.view_h = h;
    state.view_x = x;
    state.view_y = y;
}

void GPH_get_view_frac(float out[4])
{
    out[0] = state.view_x * state.aspect_x;
    out[1] = (state.view_w + state.view_x) * state.aspect_x;
    out[2] = state.view_y * state.aspect_y;
    out[3] = (state.view_h + state.view_y) * state.aspect_y;
}

float GPH_get_aspect_y()
{
    return state.aspect_y;
}

void GPH_set_shadow(int depth)
{
    kernel().shadow = depth;
}

int GPH_get_shadow()
{
    return kernel().shadow;
}

void GPH_hold()
{
    gupdate_ws();
    if (device_traits().holds) {
        device_hold();
    }
}

int GPH_end(int ws)
{
    gdeactivate_ws(ws);
    const int result = gclose_ws(ws);
    gclose_gks();
    state.open = false;
    PRM_set(kPrmDevice, state.asked);
    return result;
}

int GPH_sel_tran(int n)
{
    return gsel_norm_tran(n);
}

int GPH_set_viewport(int n, const float rect[4])
{
    return gset_viewport(n, rect);
}

int GPH_set_window(int n, const float rect[4])
{
    return gset_window(n, rect);
}

int GPH_get_viewport(int n, float out[4])
{
    int err = 0;
    float both[8];
    if (ginq_norm_tran(n, &err, both) != 0) {
        return -1;
    }
    std::copy(both + 4, both + 8, out);
    return 0;
}

int GPH_get_window(int n, float out[4])
{
    int err = 0;
    float both[8];
    if (ginq_norm_tran(n, &err, both) != 0) {
        return -1;
    }
    std::copy(both, both + 4, out);
    return 0;
}

int GPH_mark(float x, float y)
{
    const float point[2] = {x, y};
    return gpolymarker(1, point);
}

int GPH_rect(const float r[4])
{
    return GPH_box(r[0], r[2], r[1], r[3]);
}

int GPH_box(float x1, float y1, float x2, float y2)
{
    const float points[10] = {x1, y1, x2, y1, x2, y2, x1, y2, x1, y1};
    return gpolyline(5, points);
}

int GPH_set_font(const char *name)
{
    const int rec[2] = {gfont_number(name != nullptr ? name : state.default_font.c_str()),
                        kFontPrecision};
    return gset_fontprec(rec);
}

void GPH_set_default_font(const char *name)
{
    state.default_font = name != nullptr ? name : "";
}

int GPH_set_text_align(int h, int v)
{
    const int rec[2] = {h, v};
    return gset_text_align(rec);
}

int GPH_get_text_align(int *h, int *v)
{
    int err = 0;
    int rec[2];
    ginq_text_align(&err, rec);
    *h = rec[0];
    *v = rec[1];
    return 0;
}

int GPH_text(const float pos[2], const char *text)
{
    return gtext(pos, text);
}

int GPH_textf(const float pos[2], const char *format, ...)
{
    std::va_list args;
    va_start(args, format);
    const std::string text = format_text(format, args);
    va_end(args);
    return gtext(pos, text.c_str());
}

int GPH_text_at(const char *format, double x, double y, ...)
{
    std::va_list args;
    va_start(args, y);
    const std::string text = format_text(format, args);
    va_end(args);
    const float pos[2] = {static_cast<float>(x), static_cast<float>(y)};
    return gtext(pos, text.c_str());
}

int GPH_set_colour(int index, float r, float g, float b)
{
    const float rgb[3] = {r, g, b};
    return gset_colr_rep(1, index, rgb);
}
