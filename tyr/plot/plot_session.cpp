#include "tyr/plot/plot_session.h"

#include <array>
#include <cstdlib>
#include <string>

#include "tyr/base/device_kind.h"
#include "tyr/base/prm.h"
#include "tyr/base/res.h"
#include "tyr/base/sys.h"
#include "tyr/base/whole_file.h"
#include "tyr/gks/gks.h"
#include "tyr/gks/session.h"
#include "tyr/plot/area.h"
#include "tyr/plot/dump.h"
#include "tyr/plot/labels.h"
#include "tyr/plot/params.h"
#include "tyr/x11/x11_events.h"

namespace {

constexpr int kPlotTypeNone = 99;

struct State {
    int ws = 0;
    int device = 0;
};

State state;

bool is_type_none()
{
    return PRM_get(kPrmPlotType) == kPlotTypeNone;
}

using Opener = void (*)(int *ws, int *device, float *margins, float aspect);

/// A dump that no display is there for is drawn by the picture device.
void dump_without_display()
{
    const char *device = RES_get("device");
    const bool is_display = device == nullptr || device_of_letter(device[0]) == kDeviceDisplay;
    const char *display = std::getenv("DISPLAY");
    const std::string path = PLT_dump_path();
    if (is_display && (display == nullptr || *display == '\0') && path.ends_with(".png")) {
        RES_put("device", ("i," + path).c_str());
        PLT_set_dump(kDumpNone, nullptr);
    }
}

int open_plot(Opener open, float aspect)
{
    if (PRM_get_draw(kDrawAll) == 0 || is_type_none()) {
        return -1;
    }
    std::array<float, 4> area;
    PLT_get_margins(area.data());
    open(&state.ws, &state.device, area.data(), aspect);
    PLT_set_viewport(area.data());
    return 0;
}

} // namespace

int PLT_begin(float aspect)
{
    PLT_read_params();
    dump_without_display();
    return open_plot(GPH_open, aspect);
}

int PLT_restart(float aspect)
{
    const int mode = PLT_get_label_mode();
    PLT_set_label_mode(mode < 0 ? kLabelsSimple : mode > 0 ? kLabelsComplete : kLabelsNormal);
    return open_plot(GPH_setup, aspect);
}

int PLT_end()
{
    const bool detaches = PRM_is_batch() != 0 && PRM_get(kPrmBatch) != kBatchWaited;
    if (detaches && SYS_detach() == 0) {
        SYS_exit(kExitNoDetach);
    }
    if (ginq_open() == 0 || is_type_none()) {
        return -1;
    }
    gsel_norm_tran(2);
    if (PLT_get_dump() == kDumpNone) { // else the picture is a file, and nobody waits
        GPH_hold();
    }
    gclear_ws(state.ws, 1);
    if (GPH_end(state.ws) != 0) {
        SYS_exit(kExitNoGraphics); // told where it happened: the output didn't all go out
    }
    PLT_clear_labels();
    return 0;
}

void PLT_set_callback(void (*function)(int kind, const char *event, float x, float y))
{
    if (function != nullptr) {
        gset_event_callback(function);
    }
}

void PLT_abort(int code)
{
    if (code != kExitNormal) {
        tyr::abandon_whole_files();
    }
    GPH_end(state.ws);
    SYS_exit(code);
}
