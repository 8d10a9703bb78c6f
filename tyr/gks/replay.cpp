#include "tyr/gks/replay.h"

#include <variant>

#include "tyr/base/msg.h"
#include "tyr/gks/attribute_private.h"
#include "tyr/gks/device_private.h"
#include "tyr/gks/recorder_private.h"

using namespace tyr;

namespace {

constexpr int kObjectsBetweenEvents = 200;
constexpr int kBellVolume = 50;

/// Sets an attribute to what an object holds.
struct Set {
    const RedrawObject &object;

    void operator()(SetInt set) const { set(object.value); }
    void operator()(SetReal set) const { set(*static_cast<const float *>(object.data)); }
    void operator()(SetIntPair set) const { set(static_cast<const int *>(object.data)); }
    void operator()(SetVector set) const { set(static_cast<const float *>(object.data)); }
    void operator()(SetRect set) const
    {
        set(object.value, static_cast<const float *>(object.data));
    }
};

struct State {
    bool stop = false; ///< a later redraw has taken over
};

State state;

/// Sets attributes and transformations as they stood when the store was emptied.
void replay_start()
{
    const ObjectStart start = gobj_start();
    const TranRect &s = start.tran.ws_window;
    const float surface[4] = {s.xmin, s.xmax, s.ymin, s.ymax};
    gset_ws_window(1, surface);
    for (int n = 0; n < kNumTransformations; n++) {
        const auto place = static_cast<size_t>(n);
        const TranRect &v = start.tran.viewport[place];
        const TranRect &w = start.tran.window[place];
        const float viewport[4] = {v.xmin, v.xmax, v.ymin, v.ymax};
        const float window[4] = {w.xmin, w.xmax, w.ymin, w.ymax};
        gset_viewport(n, viewport);
        gset_window(n, window);
    }
    gsel_norm_tran(start.tran.current);
    gset_line_colr_ind(start.line.colour);
    gset_linetype(start.line.type);
    gset_linewidth(start.line.width);
    gset_marker_colr_ind(start.marker.colour);
    gset_marker_type(start.marker.type);
    gset_marker_width(start.marker.width);
    gset_marker_size(start.marker.size);
    gset_fill_colr_ind(start.fill.colour);
    gset_fill_int_style(start.fill.int_style);
    gset_fill_style_ind(start.fill.style_index);
    const TextState &text = start.text;
    gset_text_colr_ind(text.colour);
    gset_text_width(text.width);
    gset_char_ht(text.height);
    gset_expan(text.expansion);
    gset_text_spacing(text.spacing);
    gset_char_space(text.pitch);
    const int align[2] = {text.horizontal, text.vertical};
    gset_text_align(align);
    const float up[2] = {text.up_x, text.up_y};
    gset_char_up(up);
    const int font[2] = {text.font, 2};
    gset_fontprec(font);
}

/// Writes the picture to the file of a device.
int print(int device, const char *routine, const char *empty)
{
    const int cursor = gset_cursor_sync(kCursorBusy);
    const KernelState kept = kernel();
    gset_device(device);
    if (!device_open_print()) {
        const char *kind = device_traits().print_of;
        kernel() = kept;
        gset_cursor_sync(cursor);
        gerror(routine, "unable to open %s\n", kind);
        return -1;
    }
    gset_recording(0);
    if (gobj_first() == nullptr) {
        MSG_out(kMsgWarn, "%s", empty);
    } else {
        replay_start();
    }
    for (RedrawObject *object = gobj_first(); object != nullptr; object = object->next) {
        gobj_replay_one(object);
    }
    const int result = device_close();
    kernel() = kept;
    gset_cursor_sync(cursor);
    gobj_pump();
    gbell(kBellVolume);
    state.stop = true;
    return result;
}

} // namespace

void gobj_replay_one(RedrawObject *object)
{
    const int value = object->value;
    const auto *numbers = static_cast<const float *>(object->data);
    if (const Attribute *attribute = attribute_of(object->kind)) {
        std::visit(Set{*object}, attribute->set);
        return;
    }
    switch (object->kind) {
    case kObjPolyline:
        gpolyline(value, numbers);
        break;
    case kObjPolymarker:
        gpolymarker(value, numbers);
        break;
    case kObjFillArea:
        gfill_area(value, numbers);
        break;
    case kObjText:
        gtext(numbers, static_cast<const char *>(object->data) + 2 * sizeof(float));
        break;
    case kObjColour:
        gset_colr_rep(1, value, numbers);
        break;
    case kObjClearRegion:
        gclear_region(numbers);
        break;
    case kObjMessage:
        gmessage(value, static_cast<const char *>(object->data));
        break;
    case kObjFunction: {
        const auto *call = static_cast<const ObjectFunction *>(object->data);
        call->function(call->argument);
        break;
    }
    default: // a mark of a segment
        break;
    }
}

int gobj_redraw()
{
    if (!ginq_recording()) {
        return -1;
    }
    device_adopt_size();
    const int cursor = gset_cursor_sync(kCursorBusy);
    ginit_ws(kTranX11Redraw);
    state.stop = false;
    int count = 0;
    const int events = gset_events(0);
    gset_recording(0);
    replay_start();
    for (RedrawObject *object = gobj_first(); object != nullptr && !state.stop;
         object = object->next) {
        gset_events(0);
        gset_recording(0);
        gobj_replay_one(object);
        gset_events(events);
        gset_recording(1);
        if (++count % kObjectsBetweenEvents == 0) {
            gobj_pump();
        }
    }
    gset_events(events);
    gset_recording(1);
    gset_cursor_sync(cursor);
    gobj_pump();
    state.stop = true;
    return 0;
}

int gprint_meta()
{
    return print(kDeviceMetafile, "gprint_meta",
                 "gobj_print_meta: No redraw data to make metafile from\n");
}

int gprint_plot()
{
    return print(kDevicePostScript, "gprint_plot",
                 "gobj_print_plot: No redraw data to make Postscript file from\n");
}
