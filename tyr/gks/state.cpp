#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <utility>

#include "tyr/base/msg.h"
#include "tyr/gks/device_private.h"
#include "tyr/gks/state_private.h"

using namespace tyr;

namespace {

constexpr int kReportRoom = 80;

} // namespace

KernelState &tyr::kernel()
{
    static KernelState state;
    return state;
}

void tyr::attributes_reset()
{
    KernelState &k = kernel();
    k.text = TextState{};
    k.line = LineState{};
    k.marker = MarkerState{};
    k.fill = FillState{};
}

bool tyr::kernel_is_open(const char *routine)
{
    if (!kernel().ws.open) {
        gerror(routine, "GKS not opened\n");
    }
    return kernel().ws.open;
}

float tyr::width_on_device(float width)
{
    return width == 0.0F ? device_traits().hairline : width;
}

void gerror(const char *routine, const char *format, ...)
{
    if (!kernel().ws.gks_open) {
        return;
    }
    char text[kReportRoom];
    va_list args;
    va_start(args, format);
    std::vsnprintf(text, sizeof text, format, args);
    va_end(args);
    MSG_out(kMsgWarn, "%s: %s\n", routine, text);
}

int ginq_open()
{
    return kernel().ws.open ? 1 : 0;
}

int ginq_device()
{
    return kernel().ws.device;
}

int gset_device(int kind)
{
    kernel().ws.device = kind;
    return 0;
}

int gis_display()
{
    return kernel().ws.device == kDeviceDisplay;
}

int gis_extern_window()
{
    return kernel().ws.device == kDeviceExtern;
}

int gis_x11()
{
    return gis_display() || gis_extern_window();
}

int gis_postscript()
{
    return kernel().ws.device == kDevicePostScript;
}

int gis_hpgl()
{
    return kernel().ws.device == kDeviceHpgl;
}

int gis_metafile()
{
    return kernel().ws.device == kDeviceMetafile;
}

int ginq_depth()
{
    return kernel().ws.depth;
}

void ginq_ws_size(int *width, int *height)
{
    *width = kernel().ws.width;
    *height = kernel().ws.height;
}

void ginq_first_size(int *width, int *height)
{
    *width = kernel().ws.first_width;
    *height = kernel().ws.first_height;
}

void ginq_ws_offset(int *x, int *y)
{
    *x = kernel().ws.x_offset;
    *y = kernel().ws.y_offset;
}

int gset_app_name(const char *text)
{
    kernel().ws.app_name = std::string(text).substr(0, kAppNameRoom - 1);
    return 0;
}

const char *ginq_app_name()
{
    return kernel().ws.app_name.c_str();
}

const char *ginq_title()
{
    return kernel().ws.title.c_str();
}

void gset_wish(int value)
{
    kernel().ws.wish = value;
}

int gset_recording(int on)
{
    return std::exchange(kernel().ws.recording, on != 0) ? 1 : 0;
}

int ginq_recording()
{
    return kernel().ws.recording ? 1 : 0;
}

int gset_events(int on)
{
    return std::exchange(kernel().ws.events, on != 0) ? 1 : 0;
}

int ginq_events()
{
    return kernel().ws.events ? 1 : 0;
}
