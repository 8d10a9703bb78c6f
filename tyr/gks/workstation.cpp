#include <cstdio>
#include <cstring>

#include "tyr/base/file.h"
#include "tyr/base/str.h"
#include "tyr/gks/device_private.h"
#include "tyr/gks/recorder.h"
#include "tyr/gks/state_private.h"

using namespace tyr;

namespace {

FilePtr error_file; // of gopen_gks, when it isn't the standard error stream

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
    if (device_open(words, device) != 0) {
        return -1;
    }
    WorkstationState &ws = kernel().ws;
    ws.open = true;
    gobj_init();
    ginit_ws(device_traits().first_mode);
    gsetup_fonts();
    gcolor_background();
    device_ready();
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
        device_forget_frames();
    }
    gset_tran_defaults(mode);
    if (!is_screen || !device_traits().is_screen) {
        return 0;
    }
    device_start(mode);
    if (mode == kTranX11Redraw && font != kernel().text.font) {
        gsetup_fonts(); // the strokes of the other font are still loaded
    }
    return 0;
}

int gclose_ws(int)
{
    WorkstationState &ws = kernel().ws;
    if (!ws.open) {
        return -1;
    }
    const int result = device_close();
    if (device_traits().holds) {
        gobj_clear();
    }
    ws.width = 0;
    ws.height = 0;
    ws.open = false;
    return result;
}

int gclear_ws(int, int)
{
    if (device_traits().holds && ginq_open()) {
        device_clear();
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
    device_message(text);
    return 0;
}
