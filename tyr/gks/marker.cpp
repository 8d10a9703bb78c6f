#include <array>
#include <cmath>
#include <cstddef>
#include <span>

#include "tyr/gks/attribute_private.h"
#include "tyr/gks/colour_private.h"
#include "tyr/gks/device_private.h"
#include "tyr/gks/recorder_private.h"
#include "tyr/gks/state_private.h"

using namespace tyr;

namespace {

/// A point of a shape: offsets in halves of the marker's size, and whether it begins a stroke.
struct ShapePoint {
    float x, y;
    bool begins;
};

constexpr ShapePoint kPlus[] = {
    {-1, 0,  true },
    {1,  0,  false},
    {0,  1,  true },
    {0,  -1, false},
};
constexpr ShapePoint kStar[] = {
    {-1, 0,  true },
    {1,  0,  false},
    {-1, -1, true },
    {1,  1,  false},
    {0,  1,  true },
    {0,  -1, false},
    {1,  -1, true },
    {-1, 1,  false},
};
constexpr ShapePoint kCircle[] = {
    {-1,      0,       true },
    {-0.866F, 0.5F,    false},
    {-0.5F,   0.866F,  false},
    {0,       1,       false},
    {0.5F,    0.866F,  false},
    {0.866F,  0.5F,    false},
    {1,       0,       false},
    {0.866F,  -0.5F,   false},
    {0.5F,    -0.866F, false},
    {0,       -1,      false},
    {-0.5F,   -0.866F, false},
    {-0.866F, -0.5F,   false},
    {-1,      0,       false},
};
constexpr ShapePoint kCross[] = {
    {-1, -1, true },
    {1,  1,  false},
    {1,  -1, true },
    {-1, 1,  false},
};
constexpr ShapePoint kSquare[] = {
    {-1, 1,  true },
    {1,  1,  false},
    {1,  -1, false},
    {-1, -1, false},
    {-1, 1,  false},
};
constexpr ShapePoint kTriangle[] = {
    {-1, 1,  true },
    {1,  1,  false},
    {0,  -1, false},
    {-1, 1,  false},
};
constexpr ShapePoint kInverted[] = {
    {-1, -1, true },
    {1,  -1, false},
    {0,  1,  false},
    {-1, -1, false},
};
/// In device units, not in halves of the size.
constexpr ShapePoint kUnitBox[] = {
    {0, 0, true },
    {1, 0, false},
    {1, 1, false},
    {0, 1, false},
    {0, 0, false},
};
constexpr ShapePoint kDot[] = {
    {0, 0, true},
};

constexpr size_t kMaxShape = 13;
constexpr float kMostHalf = 1.0e6F; ///< device units; no page is as wide

struct Shape {
    std::span<const ShapePoint> points;
    bool scaled;
};

Shape shape_of(int type)
{
    switch (type) {
    case 1:
        return {kUnitBox, false};
    case 2:
        return {kPlus, true};
    case 3:
        return {kStar, true};
    case 4:
        return {kCircle, true};
    case 5:
        return {kCross, true};
    case 6:
        return {kSquare, true};
    case 7:
        return {kTriangle, true};
    case 8:
        return {kDot, false};
    case 9:
        return {kInverted, true};
    default:
        return {{}, false};
    }
}

/// The marker of the current type at a device position, `size` device units wide.
void draw_marker(float x, float y, float size)
{
    const float half = std::trunc(std::fmin(size / 2.0F, kMostHalf));
    const Shape shape = shape_of(kernel().marker.type);
    const float scale = shape.scaled ? half : 1.0F;
    std::array<float, 2 * kMaxShape> stroke{};
    size_t n = 0;
    for (const ShapePoint &p : shape.points) {
        if (p.begins && n > 0) {
            device_stroke(static_cast<int>(n), stroke.data());
            n = 0;
        }
        stroke[2 * n] = x + p.x * scale;
        stroke[2 * n + 1] = y + p.y * scale;
        n++;
    }
    if (n > 0) {
        device_stroke(static_cast<int>(n), stroke.data());
    }
}

/// A marker over its shadow: black copies, each a pixel further to the lower right.
void draw_over_shadow(float x, float y, float size)
{
    device_black(Family::marker);
    for (int k = 0; k < kernel().shadow; k++) {
        draw_marker(x + static_cast<float>(k), y + static_cast<float>(k), size);
    }
    device_attribute(kObjMarkerColour);
    draw_marker(x, y, size);
}

} // namespace

int gpolymarker(int n, const float *points)
{
    if (!kernel_is_open("gpolymarker")) {
        return -1;
    }
    if (n < 1) {
        return 0;
    }
    const DeviceTraits &device = device_traits();
    if (device.keeps_calls) {
        device_keep_markers(n, points);
        return 0;
    }
    record(kObjPolymarker, n, 2 * n, points);
    const float size = device.marker_unit * kernel().marker.size;
    const bool has_shadow = device.is_screen && kernel().shadow > 0;
    device_begin_markers(n);
    for (std::ptrdiff_t i = 0; i < n; i++) {
        const DevicePoint at = device_point(points + 2 * i);
        if (has_shadow) {
            draw_over_shadow(at.x, at.y, size);
        } else {
            draw_marker(at.x, at.y, size);
        }
    }
    return 0;
}

int gset_marker_colr_ind(int index)
{
    if (!kernel_is_open("gset_marker_colr_ind") || !colour_usable("gset_marker_colr_ind", &index)) {
        return -1;
    }
    set_attribute(kObjMarkerColour, kernel().marker.colour, index);
    return 0;
}

int gset_marker_type(int type)
{
    if (!kernel_is_open("gset_marker_type")) {
        return -1;
    }
    set_attribute(kObjMarkerType, kernel().marker.type, type);
    return 0;
}

int gset_marker_size(float size)
{
    if (!kernel_is_open("gset_marker_size")) {
        return -1;
    }
    if (!(size >= 0.0F)) {
        gerror("gset_marker_size", "invalid marker size: %f\n", size);
        return -1;
    }
    set_attribute(kObjMarkerSize, kernel().marker.size, size);
    return 0;
}

int gset_marker_width(float width)
{
    if (!kernel_is_open("gset_marker_width")) {
        return -1;
    }
    if (!(width >= 0.0F)) {
        gerror("gset_marker_width", "invalid marker width: %f\n", width);
        return -1;
    }
    set_attribute(kObjMarkerWidth, kernel().marker.width, width_on_device(width));
    return 0;
}

int ginq_marker_colr()
{
    return kernel().marker.colour;
}
