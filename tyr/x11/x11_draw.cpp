#include <array>
#include <cmath>
#include <cstring>
#include <span>
#include <vector>

#include "tyr/gks/state_private.h"
#include "tyr/x11/x11_colour.h"
#include "tyr/x11/x11_context_private.h"
#include "tyr/x11/x11_draw_private.h"
#include "tyr/x11/x11_primitives.h"
#include "tyr/x11/x11_state_private.h"

using namespace tyr;

namespace {

constexpr size_t kOnStack = 10; ///< points that need no allocation

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
        if (static_cast<size_t>(n) > kOnStack) {
            heap_.resize(static_cast<size_t>(n));
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

} // namespace

void gx_polyline(int n, const float *points)
{
    const GC gc = gx_context(Family::line);
    if (!x11_can_draw() || gc == nullptr) {
        return;
    }
    Pixels pixels(n, points);
    draw_lines(gc, pixels.data(), n);
}

void gx_area(int n, const float *points)
{
    const X11State &x = x11();
    const GC gc = gx_context(Family::fill);
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
    draw_run(gx_context(Family::marker), pixels.data(), n);
}

void gx_glyph(std::span<const GlyphPoint> points)
{
    if (!x11_can_draw()) {
        return;
    }
    const GC gc = gx_context(Family::text);
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
        run[static_cast<size_t>(count++)] = point_of(point.x, point.y);
        if (count == kMaxRun) {
            const XPoint last = run.back();
            send();
            run[0] = last;
            count = 1;
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
