#include "tyr/x11/x11_draw.h"

#include <array>
#include <cmath>
#include <cstring>
#include <span>
#include <vector>

#include "tyr/gks/state_private.h"
#include "tyr/x11/x11_colour.h"
#include "tyr/x11/x11_primitives.h"
#include "tyr/x11/x11_state_private.h"

using namespace tyr;

namespace {

constexpr std::size_t kOnStack = 10; ///< points that need no allocation
constexpr unsigned kPatternSide = 8;
constexpr float kWidestLine = 1000.0F; ///< pixels

/// Dashes of the line types 2 to 5: on, off, ... in pixels.
constexpr char kLong[] = {6, 6};
constexpr char kShort[] = {3, 6};
constexpr char kMixed[] = {6, 6, 3, 6};
constexpr char kDots[] = {2, 2};

struct State {
    XFontStruct *font = nullptr; ///< of the text family
    int function = GXcopy;       ///< of the line family
};

State state;

GC &gc_of(Family family)
{
    return x11().gc[static_cast<std::size_t>(family)];
}

short pixel_of(float device)
{
    return static_cast<short>(
        std::trunc(device + 0.5F)); // the transformations keep it within +-30000
}

XPoint point_of(float x, float y)
{
    return {pixel_of(x), pixel_of(y)};
}

/// The points of a primitive in pixels; few of them take no allocation.
class Pixels {
  public:
    Pixels(int n, const float *points) : count_(n)
    {
        if (static_cast<std::size_t>(n) > kOnStack) {
            heap_.resize(static_cast<std::size_t>(n));
        }
        XPoint *point = data();
        for (std::ptrdiff_t i = 0; i < n; i++) {
            point[i] = point_of(points[2 * i], points[2 * i + 1]);
        }
    }
    XPoint *data() { return heap_.empty() ? stack_.data() : heap_.data(); }
    int count() const { return count_; }

  private:
    int count_;
    std::array<XPoint, kOnStack> stack_{};
    std::vector<XPoint> heap_;
};

/// Points that the server takes in a request.
int most_points()
{
    Display *display = x11().display;
    constexpr long kHead = 5; ///< words of a request before its points
    const long extended = XExtendedMaxRequestSize(display);
    return static_cast<int>((extended != 0 ? extended : XMaxRequestSize(display)) - kHead);
}

/// A line that is too long for a request goes out in pieces that share a point.
void draw_lines(GC gc, XPoint *points, int n)
{
    const X11State &x = x11();
    const int most = most_points();
    for (int first = 0; first < n - 1; first += most - 1) {
        XDrawLines(x.display, x.target, gc, points + first, std::min(most, n - first),
                   CoordModeOrigin);
    }
}

/// A connected run of a marker or a character; one point is a dot.
void draw_run(GC gc, XPoint *points, int n)
{
    const X11State &x = x11();
    if (gc == nullptr) {
        return;
    }
    if (n == 1) {
        XDrawPoint(x.display, x.target, gc, points[0].x, points[0].y);
    } else {
        XDrawLines(x.display, x.target, gc, points, n, CoordModeOrigin);
    }
}

void create_patterns()
{
    X11State &x = x11();
    for (int i = 0; i < kNumStipples; i++) {
        Pixmap &stipple = x.stipples[static_cast<std::size_t>(i)];
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
        XSetStipple(x.display, gc, x.stipples[static_cast<std::size_t>(style_index)]);
    }
    XSetFillStyle(x.display, gc, int_style == 2 ? FillStippled : FillSolid);
}

} // namespace

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
    if (state.font != nullptr) {
        XFreeFont(x.display, state.font);
        state.font = nullptr;
    }
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

void gx_polyline(int n, const float *points)
{
    const GC gc = gc_of(Family::line);
    if (!x11_can_draw() || gc == nullptr) {
        return;
    }
    Pixels pixels(n, points);
    draw_lines(gc, pixels.data(), n);
}

void gx_area(int n, const float *points)
{
    const X11State &x = x11();
    const GC gc = gc_of(Family::fill);
    if (!x11_can_draw() || gc == nullptr) {
        return;
    }
    Pixels pixels(n, points);
    if (n <= most_points()) { // an area can't be sent in pieces
        XFillPolygon(x.display, x.target, gc, pixels.data(), n, Nonconvex, CoordModeOrigin);
    }
    draw_lines(gc, pixels.data(), n);
}

void gx_stroke(int n, const float *points)
{
    if (!x11_can_draw() || n < 1) {
        return;
    }
    Pixels pixels(n, points);
    draw_run(gc_of(Family::marker), pixels.data(), n);
}

void gx_glyph(std::span<const GlyphPoint> points)
{
    if (!x11_can_draw()) {
        return;
    }
    const GC gc = gc_of(Family::text);
    std::array<XPoint, kMaxRun> run;
    int count = 0;
    const auto send = [&] {
        if (count > 1) {
            draw_run(gc, run.data(), count);
        }
        count = 0;
    };
    for (const GlyphPoint &point : points) {
        if (point.begins) {
            send();
        }
        run[static_cast<std::size_t>(count++)] = point_of(point.x, point.y);
        if (count == kMaxRun) {
            const XPoint last = run.back();
            send();
            run[static_cast<std::size_t>(count++)] = last;
        }
    }
    send();
}

void gx_clear_region(const float rect[4])
{
    const auto pixel = [](float device) { return static_cast<int>(std::floor(device + 0.5F)); };
    const int left = pixel(rect[0]);
    const int top = pixel(rect[3]);
    if (x11_can_draw()) {
        gx_fill_background(x11().target, left, top, pixel(rect[1]) - left + 1,
                           pixel(rect[2]) - top + 1);
    }
}

void gx_fill_background(Drawable where, int left, int top, int width, int height)
{
    const X11State &x = x11();
    if (width < 1 || height < 1) {
        return;
    }
    const int pixel = ginq_pixel(-1);
    XSetForeground(x.display, x.common,
                   pixel == kNoPixel ? x.background : static_cast<unsigned>(pixel));
    XFillRectangle(x.display, where, x.common, left, top, static_cast<unsigned>(width),
                   static_cast<unsigned>(height));
    XSetForeground(x.display, x.common, x.foreground);
}

bool gx_load_font(const char *name)
{
    const X11State &x = x11();
    XFontStruct *font = x.display != nullptr ? XLoadQueryFont(x.display, name) : nullptr;
    if (font == nullptr) {
        return false;
    }
    if (state.font != nullptr) {
        XFreeFont(x.display, state.font);
    }
    state.font = font;
    if (gc_of(Family::text) != nullptr) {
        XSetFont(x.display, gc_of(Family::text), font->fid);
    }
    return true;
}

void gx_text(float x, float y, int aside, const char *text, int horizontal, int vertical)
{
    int left = static_cast<int>(std::trunc(x + 0.5F)) + aside;
    int top = static_cast<int>(std::trunc(y + 0.5F)) + aside;
    const X11State &server = x11();
    const GC gc = gc_of(Family::text);
    if (!x11_can_draw() || gc == nullptr || state.font == nullptr) {
        return;
    }
    const int length = static_cast<int>(std::strlen(text));
    const int width = XTextWidth(state.font, text, length);
    switch (horizontal) {
    case kAlignCentre:
        left -= width / 2;
        break;
    case kAlignRight:
        left -= width;
        break;
    default:
        break;
    }
    switch (vertical) {
    case kAlignTop:
    case kAlignCap:
        top += state.font->ascent;
        break;
    case kAlignHalf:
        top += state.font->ascent / 2;
        break;
    case kAlignBottom:
        top -= state.font->descent;
        break;
    default:
        break;
    }
    XDrawString(server.display, server.target, gc, left, top, text, length);
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
