// The one file that tells devices apart.

#include "tyr/gks/device_private.h"
#include "tyr/gks/recorder.h"
#include "tyr/gks/state_private.h"
#include "tyr/paper/grey.h"
#include "tyr/paper/hpgl_private.h"
#include "tyr/paper/metafile.h"
#include "tyr/paper/output_private.h"
#include "tyr/paper/postscript_private.h"
#include "tyr/picture/picture_private.h"
#include "tyr/x11/frames.h"
#include "tyr/x11/x11_colour.h"
#include "tyr/x11/x11_default.h"
#include "tyr/x11/x11_draw_private.h"
#include "tyr/x11/x11_events.h"
#include "tyr/x11/x11_gc_private.h"
#include "tyr/x11/x11_text_private.h"
#include "tyr/x11/x11_window.h"

using namespace tyr;

namespace tyr {

namespace {

constexpr int kWishClear = 1;

const float *white_paper()
{
    static constexpr float kWhite[] = {1.0F, 1.0F, 1.0F};
    return kWhite;
}

constexpr DeviceTraits kNone = {false, false, false, 0.0F, 10.0F, kTranX11, nullptr, nullptr};
constexpr DeviceTraits kDisplay = {true, true, false, 0.0F, 10.0F, kTranX11, nullptr, nullptr};
constexpr DeviceTraits kExtern = {true, false, false, 0.0F, 10.0F, kTranX11, nullptr, nullptr};
constexpr DeviceTraits kMetafile = {false, false,         true,       0.0F,
                                    10.0F, kTranMetafile, "metafile", nullptr};
constexpr DeviceTraits kPostScript = {
    false, false, false, 1.0F, 10.0F * 0.72F, kTranPostScript, "postscript file", white_paper};
constexpr DeviceTraits kPicture = {false,         false,           false,   1.0F,
                                   10.0F * 0.72F, kTranPostScript, nullptr, gpic_paper};
constexpr DeviceTraits kHpgl = {false,          false,     false,   0.0F,
                                10.0F * 10.15F, kTranHpgl, nullptr, nullptr};

DeviceKind kind()
{
    return static_cast<DeviceKind>(kernel().ws.device);
}

} // namespace

const DeviceTraits &device_traits()
{
    switch (kind()) {
    case kDeviceDisplay:
        return kDisplay;
    case kDeviceExtern:
        return kExtern;
    case kDeviceMetafile:
        return kMetafile;
    case kDevicePostScript:
        return kPostScript;
    case kDeviceHpgl:
        return kHpgl;
    case kDevicePicture:
        return kPicture;
    case kDeviceNone:
        break;
    }
    return kNone;
}

int device_open(const std::vector<std::string> &words, int device)
{
    switch (static_cast<DeviceKind>(device)) {
    case kDeviceDisplay:
        return gx_open_display(words);
    case kDeviceExtern:
        return gx_open_window(words);
    case kDeviceMetafile:
        return gmeta_open_ws(words);
    case kDevicePostScript:
        return gps_open_ws(words);
    case kDeviceHpgl:
        return ghp_open_ws(words);
    case kDevicePicture:
        return gpic_open_ws(words);
    case kDeviceNone:
        break;
    }
    gerror("gopen_ws", "device not available: %d\n", device);
    return -1;
}

void device_ready()
{
    if (!device_traits().is_screen) {
        return;
    }
    if (kind() == kDeviceExtern && kernel().ws.wish == kWishClear) {
        gx_clear();
    }
    gsync();
    gobj_set_pump([] { gpump_events(); });
    gpump_events();
    gset_cursor_sync(kCursorBusy);
}

void device_start(int mode)
{
    gx_init_gcs(mode == kTranX11);
    if (mode == kTranX11 && kind() == kDeviceExtern) {
        gset_rw_colors(0); // the colour map belongs to the other program
    }
    gevents_reset(mode);
}

int device_close()
{
    switch (kind()) {
    case kDeviceDisplay:
    case kDeviceExtern:
        gx_close();
        gobj_set_pump(nullptr);
        return 0;
    case kDeviceMetafile:
        return gmeta_close();
    case kDevicePostScript:
        return gps_close();
    case kDeviceHpgl:
        return ghp_close();
    case kDevicePicture:
        return gpic_close();
    case kDeviceNone:
        break;
    }
    return 0;
}

bool device_open_print()
{
    bool is_open = false;
    switch (kind()) {
    case kDeviceMetafile:
        is_open = gmeta_open_print();
        break;
    case kDevicePostScript:
        is_open = gps_open_print();
        break;
    case kDevicePicture:
    case kDeviceHpgl:
    case kDeviceDisplay:
    case kDeviceExtern:
    case kDeviceNone:
        break;
    }
    if (is_open) {
        ginit_ws(device_traits().first_mode);
    }
    return is_open;
}

void device_polyline(int n, const float *points)
{
    switch (kind()) {
    case kDeviceDisplay:
    case kDeviceExtern:
        gx_polyline(n, points);
        break;
    case kDevicePostScript:
        gps_polyline(n, points);
        break;
    case kDeviceHpgl:
        ghp_polyline(n, points);
        break;
    case kDevicePicture:
        gpic_polyline(n, points);
        break;
    case kDeviceMetafile: // keeps the call
    case kDeviceNone:
        break;
    }
}

void device_area(int n, const float *points)
{
    switch (kind()) {
    case kDeviceDisplay:
    case kDeviceExtern:
        gx_area(n, points);
        break;
    case kDevicePostScript:
        gps_area(n, points);
        break;
    case kDeviceHpgl:
        ghp_area(n, points);
        break;
    case kDevicePicture:
        gpic_area(n, points);
        break;
    case kDeviceMetafile:
    case kDeviceNone:
        break;
    }
}

void device_stroke(int n, const float *points)
{
    switch (kind()) {
    case kDeviceDisplay:
    case kDeviceExtern:
        gx_stroke(n, points);
        break;
    case kDevicePostScript:
        gps_stroke(n, points);
        break;
    case kDeviceHpgl:
        ghp_stroke(n, points);
        break;
    case kDevicePicture:
        gpic_stroke(n, points);
        break;
    case kDeviceMetafile:
    case kDeviceNone:
        break;
    }
}

void device_glyph(std::span<const GlyphPoint> points)
{
    switch (kind()) {
    case kDeviceDisplay:
    case kDeviceExtern:
        gx_glyph(points);
        break;
    case kDevicePostScript:
        gps_glyph(points);
        break;
    case kDeviceHpgl:
        ghp_glyph(points);
        break;
    case kDevicePicture:
        gpic_glyph(points);
        break;
    case kDeviceMetafile:
    case kDeviceNone:
        break;
    }
}

void device_server_text(float x, float y, int aside, const char *text)
{
    gx_text(x, y, aside, text, kernel().text.horizontal, kernel().text.vertical);
}

void device_begin_markers(int n)
{
    switch (kind()) {
    case kDevicePostScript:
        gps_begin_markers(n);
        break;
    case kDeviceHpgl:
        ghp_begin_markers();
        break;
    case kDevicePicture:
        gpic_begin_markers();
        break;
    case kDeviceDisplay:
    case kDeviceExtern:
    case kDeviceMetafile:
    case kDeviceNone:
        break;
    }
}

void device_begin_text(const float pos[2], const char *text)
{
    switch (kind()) {
    case kDevicePostScript:
        gps_begin_text(pos, text);
        break;
    case kDeviceHpgl:
        ghp_begin_text();
        break;
    case kDevicePicture:
        gpic_begin_text(text);
        break;
    case kDeviceDisplay:
    case kDeviceExtern:
    case kDeviceMetafile:
    case kDeviceNone:
        break;
    }
}

void device_clear_region(const float rect[4])
{
    switch (kind()) {
    case kDeviceDisplay:
    case kDeviceExtern:
        gx_clear_region(rect);
        break;
    case kDevicePostScript:
        gps_clear_region(rect);
        break;
    case kDevicePicture:
        gpic_clear_region(rect);
        break;
    case kDeviceHpgl: // paper can't be cleared by a pen
    case kDeviceMetafile:
    case kDeviceNone:
        break;
    }
}

void device_message(const char *text)
{
    switch (kind()) {
    case kDevicePostScript:
        gps_printf("%%%%Message: %s\n", comment_text(text).c_str());
        break;
    case kDeviceMetafile:
        gmeta_printf("ME %s\n", comment_text(text).c_str());
        break;
    case kDevicePicture:
    case kDeviceHpgl:
    case kDeviceDisplay:
    case kDeviceExtern:
    case kDeviceNone:
        break;
    }
}

void device_clip(float x0, float y0, float x1, float y1)
{
    switch (kind()) {
    case kDeviceDisplay:
    case kDeviceExtern:
        gx_clip();
        break;
    case kDevicePostScript:
        gps_clip(x0, y0, x1, y1);
        break;
    case kDeviceHpgl:
        ghp_clip(x0, y0, x1, y1);
        break;
    case kDevicePicture:
        gpic_clip(x0, y0, x1, y1);
        break;
    case kDeviceMetafile:
        gcgm_clip(x0, y0, x1, y1);
        break;
    case kDeviceNone:
        break;
    }
}

void device_clear()
{
    gx_clear();
}

void device_attribute(ObjectKind attribute)
{
    if (device_traits().is_screen) {
        gx_attribute(attribute);
    }
}

void device_black(Family family)
{
    if (device_traits().is_screen) {
        gx_set_black(family);
    }
}

int device_store_colour(int index, float red, float green, float blue)
{
    gps_set_gray(index, red, green, blue);
    if (device_traits().is_screen) {
        return gx_store_colour(index, red, green, blue, &kernel().ws.read_write_cells);
    }
    return 1;
}

int device_pixel(int index)
{
    return ginq_pixel(index);
}

bool device_load_font(const char *name)
{
    return gx_load_font(name);
}

std::string device_default(const char *option)
{
    return gx_default(option);
}

void device_forget_frames()
{
    ginit_frames();
}

void device_adopt_size()
{
    gresize_ws(0, 0);
}

void device_hold()
{
    gwait();
}

} // namespace tyr
