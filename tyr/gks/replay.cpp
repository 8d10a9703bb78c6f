#include "tyr/gks/replay.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>

#include "tyr/base/msg.h"
#include "tyr/gks/recorder.h"
#include "tyr/paper/metafile.h"
#include "tyr/paper/postscript.h"
#include "tyr/x11/x11_window.h"

namespace {

constexpr int kObjectsBetweenEvents = 200;
constexpr int kPageWidth = 757;
constexpr int kPageHeight = 577;
constexpr int kBellVolume = 50;

// In the form of the tables below.

int set_fill_black(int flag)
{
    gset_fill_black(flag);
    return 0;
}

int set_colour(int index, const float *rgb)
{
    return gset_colr_rep(1, index, rgb);
}

int clear_region(int, const float *rect)
{
    return gclear_region(rect);
}

int set_char_up(int, const float *up)
{
    return gset_char_up(up);
}

struct IntSetter {
    int kind;
    int (*set)(int value);
};

constexpr IntSetter kIntSetters[] = {
    {kObjSelectTran,   gsel_norm_tran      },
    {kObjLineType,     gset_linetype       },
    {kObjLineColour,   gset_line_colr_ind  },
    {kObjMarkerType,   gset_marker_type    },
    {kObjMarkerColour, gset_marker_colr_ind},
    {kObjTextColour,   gset_text_colr_ind  },
    {kObjFillInterior, gset_fill_int_style },
    {kObjFillStyle,    gset_fill_style_ind },
    {kObjFillColour,   gset_fill_colr_ind  },
    {kObjFillBlack,    set_fill_black      },
};

struct RealSetter {
    int kind;
    int (*set)(float value);
};

constexpr RealSetter kRealSetters[] = {
    {kObjLineWidth,   gset_linewidth   },
    {kObjMarkerSize,  gset_marker_size },
    {kObjMarkerWidth, gset_marker_width},
    {kObjTextSpacing, gset_text_spacing},
    {kObjCharSpace,   gset_char_space  },
    {kObjExpansion,   gset_expan       },
    {kObjCharHeight,  gset_char_ht     },
    {kObjTextWidth,   gset_text_width  },
};

struct PairSetter {
    int kind;
    int (*set)(const int rec[2]);
};

constexpr PairSetter kPairSetters[] = {
    {kObjFont,      gset_fontprec  },
    {kObjTextAlign, gset_text_align},
};

/// A number and an array of floats: points of a primitive, sides of a rectangle.
struct ArrayCall {
    int kind;
    int (*call)(int n, const float *numbers);
};

constexpr ArrayCall kArrayCalls[] = {
    {kObjWsViewport,  gset_ws_viewport},
    {kObjWsWindow,    gset_ws_window  },
    {kObjViewport,    gset_viewport   },
    {kObjWindow,      gset_window     },
    {kObjPolyline,    gpolyline       },
    {kObjPolymarker,  gpolymarker     },
    {kObjFillArea,    gfill_area      },
    {kObjColour,      set_colour      },
    {kObjClearRegion, clear_region    },
    {kObjCharUp,      set_char_up     },
};

template <class Table> auto find(const Table &table, int kind)
{
    return std::find_if(std::begin(table), std::end(table),
                        [&](const auto &row) { return row.kind == kind; });
}

struct State {
    bool stop = false; ///< a later redraw has taken over
};

State state;

/// The first environment variable that is set, else the default.
const char *target(const char *first, const char *second, const char *fallback)
{
    for (const char *variable : {first, second}) {
        if (const char *text = variable != nullptr ? std::getenv(variable) : nullptr) {
            return text;
        }
    }
    return fallback;
}

/// Sets attributes and transformations as they stood when the store was emptied.
void replay_start()
{
    const ObjectStart &start = gobj_start();
    for (int n = 0; n < kNumTransformations; n++) {
        const auto place = static_cast<std::size_t>(n);
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

/// The device's part of writing the picture to a file.
struct Paper {
    int device;
    const char *routine;
    const char *kind;  ///< in the report of a file that can't be opened
    const char *empty; ///< message of an empty store
    bool (*open)();
    int (*close)();
};

int print(const Paper &paper)
{
    const int cursor = gset_cursor_sync(kCursorBusy);
    const KernelState kept = kernel();
    gset_device(paper.device);
    if (!paper.open()) {
        kernel() = kept;
        gset_cursor_sync(cursor);
        gerror(paper.routine, "unable to open %s file\n", paper.kind);
        return -1;
    }
    gset_recording(0);
    if (gobj_first() == nullptr) {
        MSG_out(kMsgWarn, "%s", paper.empty);
    } else {
        replay_start();
    }
    for (RedrawObject *object = gobj_first(); object != nullptr; object = object->next) {
        gobj_replay_one(object);
    }
    const int result = paper.close();
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
    if (const auto setter = find(kIntSetters, object->kind); setter != std::end(kIntSetters)) {
        setter->set(value);
    } else if (const auto real = find(kRealSetters, object->kind); real != std::end(kRealSetters)) {
        real->set(*numbers);
    } else if (const auto pair = find(kPairSetters, object->kind); pair != std::end(kPairSetters)) {
        pair->set(static_cast<const int *>(object->data));
    } else if (const auto array = find(kArrayCalls, object->kind); array != std::end(kArrayCalls)) {
        array->call(value, numbers);
    } else if (object->kind == kObjText) {
        gtext(numbers, static_cast<const char *>(object->data) + 2 * sizeof(float));
    } else if (object->kind == kObjMessage) {
        gmessage(value, static_cast<const char *>(object->data));
    } else if (object->kind == kObjFunction) {
        const auto *call = static_cast<const ObjectFunction *>(object->data);
        call->function(call->argument);
    }
}

int gobj_redraw()
{
    if (!ginq_recording()) {
        return -1;
    }
    gresize_ws(0, 0);
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
    return print({kDeviceMetafile, "gprint_meta", "meta",
                  "gobj_print_meta: No redraw data to make metafile from\n",
                  [] {
                      if (gmeta_open(target("METAOUT", nullptr, "tyr.meta")) == nullptr) {
                          return false;
                      }
                      gmeta_header();
                      attributes_reset();
                      gset_tran_defaults(kTranMetafile);
                      return true;
                  },
                  gmeta_close});
}

int gprint_plot()
{
    return print({kDevicePostScript, "gprint_plot", "postscript",
                  "gobj_print_plot: No redraw data to make Postscript file from\n",
                  [] {
                      if (gps_open(target("tyrps_print", "PSPRINT", "tyr.ps")) == nullptr) {
                          return false;
                      }
                      gps_init();
                      gps_prolog();
                      gset_ws_size(kPageWidth, kPageHeight);
                      ginit_ws(kTranPostScript);
                      return true;
                  },
                  gps_close});
}
