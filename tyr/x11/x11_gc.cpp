// The graphics contexts of the families of primitives.

#include <array>
#include <cmath>
#include <cstring>
#include <span>
#include <vector>

#include "tyr/gks/state_private.h"
#include "tyr/x11/x11_colour.h"
#include "tyr/x11/x11_context_private.h"
#include "tyr/x11/x11_gc_private.h"
#include "tyr/x11/x11_primitives.h"
#include "tyr/x11/x11_state_private.h"

using namespace tyr;

namespace {

constexpr unsigned kPatternSide = 8;
constexpr float kWidestLine = 1000.0F; ///< pixels

/// Dashes of the line types 2 to 5: on, off, ... in pixels.
constexpr char kLong[] = {6, 6};
constexpr char kShort[] = {3, 6};
constexpr char kMixed[] = {6, 6, 3, 6};
constexpr char kDots[] = {2, 2};

struct State {
    int function = GXcopy; ///< of the line family
};

State state;

GC &gc_of(Family family)
{
    return x11().gc[static_cast<size_t>(family)];
}

void create_patterns()
{
    X11State &x = x11();
    for (int i = 0; i < kNumStipples; i++) {
        Pixmap &stipple = x.stipples[static_cast<size_t>(i)];
        if (stipple == 0) {
            stipple = XCreateBitmapFromData(x.display, x.target,
                                            reinterpret_cast<const char *>(gfill_pattern(i)),
                                            kPatternSide, kPatternSide);
        }
    }
}

/// White on black, at the clip rectangle.
void set_up(GC gc)
{
    const X11State &x = x11();
    XSetForeground(x.display, gc, WhitePixel(x.display, x.screen));
    XSetBackground(x.display, gc, BlackPixel(x.display, x.screen));
    XGCValues plain{};
    plain.line_width = 0;
    plain.line_style = LineSolid;
    plain.join_style = JoinBevel;
    XChangeGC(x.display, gc, GCLineWidth | GCLineStyle | GCJoinStyle, &plain);
}

void create(GC &gc)
{
    const X11State &x = x11();
    if (gc == nullptr) {
        gc = XCreateGC(x.display, x.target, 0, nullptr);
    }
}

void set_colour(Family family, int index)
{
    const int pixel = ginq_pixel(index);
    if (gc_of(family) != nullptr && pixel != kNoPixel) {
        XSetForeground(x11().display, gc_of(family), static_cast<unsigned>(pixel));
    }
}

void set_width(Family family, float width)
{
    if (gc_of(family) == nullptr) {
        return;
    }
    XGCValues values{};
    values.line_width = static_cast<int>(std::fmin(width, kWidestLine));
    XChangeGC(x11().display, gc_of(family), GCLineWidth, &values);
}

void set_dash(int type)
{
    const GC gc = gc_of(Family::line);
    if (gc == nullptr) {
        return;
    }
    XGCValues values{};
    values.line_style = type == 1 ? LineSolid : LineOnOffDash;
    XChangeGC(x11().display, gc, GCLineStyle, &values);
    const auto dash = [gc](std::span<const char> list) {
        XSetDashes(x11().display, gc, 0, list.data(), static_cast<int>(list.size()));
    };
    switch (type) {
    case 2:
        return dash(kLong);
    case 3:
        return dash(kShort);
    case 4:
        return dash(kMixed);
    case 5:
        return dash(kDots);
    default:
        return;
    }
}

void set_fill(int int_style, int style_index)
{
    const X11State &x = x11();
    const GC gc = gc_of(Family::fill);
    if (gc == nullptr) {
        return;
    }
    if (gfill_pattern(style_index) != nullptr) {
        XSetStipple(x.display, gc, x.stipples[static_cast<size_t>(style_index)]);
    }
    XSetFillStyle(x.display, gc, int_style == 2 ? FillStippled : FillSolid);
}

} // namespace

GC &tyr::gx_context(Family family)
{
    return gc_of(family);
}

void gx_init_gcs(bool fresh)
{
    if (!x11_can_draw()) {
        return;
    }
    for (const Family family : {Family::text, Family::line, Family::marker}) {
        if (fresh) {
            create(gc_of(family));
        }
        set_up(gc_of(family));
    }
    gset_gc_function(GXcopy);
    gfill_init(fresh ? 0 : 1);
    gx_clip();
    gsync();
}

void gfill_init(int mode)
{
    GC &gc = gc_of(Family::fill);
    if (!x11_can_draw() || (mode != 0 && mode != 1)) {
        return;
    }
    if (mode == 0) {
        create(gc);
        create_patterns();
    }
    set_up(gc);
    XSetFillStyle(x11().display, gc, FillSolid);
}

void gfill_free()
{
    X11State &x = x11();
    for (Pixmap &stipple : x.stipples) {
        if (stipple != 0) {
            XFreePixmap(x.display, stipple);
            stipple = 0;
        }
    }
}

void gx_free_gcs()
{
    X11State &x = x11();
    for (GC &gc : x.gc) {
        if (gc != nullptr) {
            XFreeGC(x.display, gc);
            gc = nullptr;
        }
    }
    gx_free_font();
    gfill_free();
}

void gx_clip()
{
    const X11State &x = x11();
    short rect[4];
    gclip_rect(rect);
    XRectangle clip{rect[0], rect[1], static_cast<unsigned short>(rect[2]),
                    static_cast<unsigned short>(rect[3])};
    for (GC gc : x.gc) {
        if (gc != nullptr) {
            XSetClipRectangles(x.display, gc, 0, 0, &clip, 1, Unsorted);
        }
    }
}

void gx_attribute(ObjectKind kind)
{
    const KernelState &k = kernel();
    switch (kind) {
    case kObjLineColour:
        return set_colour(Family::line, k.line.colour);
    case kObjMarkerColour:
        return set_colour(Family::marker, k.marker.colour);
    case kObjTextColour:
        return set_colour(Family::text, k.text.colour);
    case kObjFillColour:
        return set_colour(Family::fill, k.fill.colour);
    case kObjLineWidth:
        return set_width(Family::line, k.line.width);
    case kObjMarkerWidth:
        return set_width(Family::marker, k.marker.width);
    case kObjTextWidth:
        return set_width(Family::text, k.text.width);
    case kObjLineType:
        return set_dash(k.line.type);
    case kObjFillInterior:
    case kObjFillStyle:
        return set_fill(k.fill.int_style, k.fill.style_index);
    default: // what no context holds
        return;
    }
}

void gx_set_black(Family family)
{
    const X11State &x = x11();
    if (gc_of(family) != nullptr) {
        XSetForeground(x.display, gc_of(family), BlackPixel(x.display, x.screen));
    }
}

GC ginq_line_gc()
{
    return gc_of(Family::line);
}

GC ginq_marker_gc()
{
    return gc_of(Family::marker);
}

GC ginq_fill_gc()
{
    return gc_of(Family::fill);
}

GC ginq_text_gc()
{
    return gc_of(Family::text);
}

void gset_gc_function(int function)
{
    state.function = function;
    if (ginq_line_gc() != nullptr) {
        XSetFunction(x11().display, ginq_line_gc(), function);
    }
}

int ginq_gc_function()
{
    return state.function;
}

void gdraw_band_line(Drawable where, const short from[2], const short to[2])
{
    XDrawLine(x11().display, where, ginq_line_gc(), from[0], from[1], to[0], to[1]);
}

void gdraw_band_box(Drawable where, const short a[2], const short b[2])
{
    const int left = std::min(a[0], b[0]);
    const int top = std::min(a[1], b[1]);
    XDrawRectangle(x11().display, where, ginq_line_gc(), left, top,
                   static_cast<unsigned>(std::max(a[0], b[0]) - left),
                   static_cast<unsigned>(std::max(a[1], b[1]) - top));
}
