#include <cstdio>
#include <cstring>

#include "tyr/base/file.h"
#include "tyr/base/str.h"
#include "tyr/gks/recorder.h"
#include "tyr/gks/state.h"
#include "tyr/paper/hpgl.h"
#include "tyr/paper/metafile.h"
#include "tyr/paper/output.h"
#include "tyr/paper/postscript.h"
#include "tyr/x11/frames.h"
#include "tyr/x11/x11_draw.h"
#include "tyr/x11/x11_events.h"
#include "tyr/x11/x11_window.h"

namespace {

constexpr int kWishClear = 1;

FilePtr error_file; // of gopen_gks, when it isn't the standard error stream

/// The device's own part of opening. A kind that isn't there can't be opened.
int open_device(const std::vector<std::string> &words, int device)
{
    switch (device) {
    case kDevicePostScript:
        return gps_open_ws(words);
    case kDeviceHpgl:
        return ghp_open_ws(words);
    case kDeviceMetafile:
        return gmeta_open_ws(words);
    case kDeviceExtern:
        return gx_open_window(words);
    case kDeviceDisplay:
        return gx_open_display(words);
    default:
        gerror("gopen_ws", "device not available: %d\n", device);
        return -1;
    }
}

TranMode tran_mode(int device)
{
    switch (device) {
    case kDevicePostScript:
        return kTranPostScript;
    case kDeviceHpgl:
        return kTranHpgl;
    case kDeviceMetafile:
        return kTranMetafile;
    default:
        return kTranX11;
    }
}

} // namespace

int gopen_gks(const char *error_file_name, unsigned)
{
    if (error_file_name != nullptr) {
        error_file.reset(FILE_open(error_file_name, "w"));
        if (!error_file) {
            return 1;
        }
    }
    kernel().ws.gks_open = true;
    return 0;
}

int gclose_gks()
{
    error_file.reset();
    kernel().ws.gks_open = false;
    return 0;
}

int gopen_ws(int, const char *params, int device)
{
    const std::vector<std::string> words = STR_fields(params != nullptr ? params : "", ',');
    const char *print = std::getenv("tyrprint");
    if (device == kDevicePostScript && print != nullptr && STR_casecmp(print, "hpgl") == 0) {
        device = kDeviceHpgl;
    }
    if (open_device(words, device) != 0) {
        return -1;
    }
    WorkstationState &ws = kernel().ws;
    ws.open = true;
    gobj_init();
    ginit_ws(tran_mode(device));
    gsetup_fonts();
    gcolor_background();
    if (gis_extern_window() && ws.wish == kWishClear) {
        gx_clear();
    }
    if (gis_x11()) {
        gsync();
        gobj_set_pump([] { gpump_events(); });
        gpump_events();
        gset_cursor_sync(kCursorBusy);
    }
    return 0;
}

int ginit_ws(int mode)
{
    if (mode == -1) {
        return -1;
    }
    const bool is_screen = mode == kTranX11 || mode == kTranX11Redraw;
    const int font = kernel().text.font;
    attributes_reset();
    if (is_screen) {
        ginit_frames();
    }
    gset_tran_defaults(mode);
    if (!is_screen || !gis_x11()) {
        return 0;
    }
    gx_init_gcs(mode == kTranX11);
    if (mode == kTranX11 && gis_extern_window()) {
        gset_rw_colors(0); // the colour map belongs to the other program
    }
    if (mode == kTranX11Redraw && font != kernel().text.font) {
        gsetup_fonts(); // the strokes of the other font are still loaded
    }
    gevents_reset(mode);
    return 0;
}

int gclose_ws(int)
{
    WorkstationState &ws = kernel().ws;
    if (!ws.open) {
        return -1;
    }
    if (gis_x11()) {
        gx_close();
        gobj_set_pump(nullptr);
    }
    if (gis_display()) {
        gobj_clear();
    }
    ws.width = 0;
    ws.height = 0;
    ws.open = false;
    switch (ws.device) {
    case kDevicePostScript:
        return gps_close();
    case kDeviceHpgl:
        return ghp_close();
    case kDeviceMetafile:
        return gmeta_close();
    default:
        return 0;
    }
}

int gclear_ws(int, int)
{
    if (gis_display() && ginq_open()) {
        gx_clear();
        gobj_clear();
    }
    return 0;
}

int gactivate_ws(int)
{
    return 0;
}

int gdeactivate_ws(int)
{
    return 0;
}

int gmessage(int ws, const char *text)
{
    gobj_new(kObjMessage, ws, static_cast<int>(std::strlen(text)) + 1, text);
    switch (kernel().ws.device) {
    case kDevicePostScript:
        gps_printf("%%%%Message: %s\n", comment_text(text).c_str());
        break;
    case kDeviceMetafile:
        gmeta_printf("ME %s\n", comment_text(text).c_str());
        break;
    default:
        break;
    }
    return 0;
}
