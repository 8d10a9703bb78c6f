#include <cstdio>

#include "base/str.h"
#include "device/hpgl.h"
#include "device/metafile.h"
#include "device/output.h"
#include "device/postscript.h"
#include "gks/state.h"
#include "timefile/file.h"

namespace {

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
    kernel().ws.open = true;
    ginit_ws(tran_mode(device));
    gsetup_fonts();
    gcolor_background();
    return 0;
}

int ginit_ws(int mode)
{
    if (mode == -1) {
        return -1;
    }
    KernelState &k = kernel();
    k.text = TextState{};
    k.line = LineState{};
    k.marker = MarkerState{};
    k.fill = FillState{};
    gset_tran_defaults(mode);
    return 0;
}

int gclose_ws(int)
{
    WorkstationState &ws = kernel().ws;
    if (!ws.open) {
        return -1;
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
    return 0;
}

int gupdate_ws()
{
    return -1;
}

int gactivate_ws(int)
{
    return 0;
}

int gdeactivate_ws(int)
{
    return 0;
}

int gmessage(int, const char *text)
{
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
