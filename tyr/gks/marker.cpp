#include <array>
#include <cmath>
#include <cstddef>
#include <span>

#include "tyr/gks/colour.h"
#include "tyr/gks/recorder.h"
#include "tyr/gks/state.h"
#include "tyr/paper/hpgl.h"
#include "tyr/paper/metafile.h"
#include "tyr/paper/postscript.h"
#include "tyr/x11/x11_draw.h"

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

constexpr std::size_t kMaxShape = 13;
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

/// One stroke in device coordinates. A single point is a dot as long as it is wide: paper shows no
/// line without length.
void draw_stroke(std::size_t n, const float *points)
{
    switch (kernel().ws.device) {
    case kDevicePostScript:
        gps_printf("np\n");
        gps_move_dc(points[0], points[1]);
        for (std::size_t i = 1; i < n; i++) {
            gps_draw_dc(points[2 * i], points[2 * i + 1]);
        }
        if (n == 1) {
            gps_draw_dc(points[0] + 1.0F, points[1]);
        }
        gps_printf("stroke\n");
        break;
    case kDeviceHpgl:
        ghp_move_dc(points[0], points[1]);
        for (std::size_t i = 1; i < n; i++) {
            ghp_draw_dc(points[2 * i], points[2 * i + 1]);
        }
        if (n == 1) {
            ghp_draw_dc(points[0], points[1]);
        }
        ghp_printf("\n");
        break;
    case kDeviceDisplay:
    case kDeviceExtern:
        gx_stroke(GxFamily::marker, static_cast<int>(n), points);
        break;
    default:
        break;
    }
}

/// The marker of the current type at a device position, `size` device units wide.
void draw_marker(float x, float y, float size)
{
    const float half = std::trunc(std::fmin(size / 2.0F, kMostHalf));
    const Shape shape = shape_of(kernel().marker.type);
    const float scale = shape.scaled ? half : 1.0F;
    std::array<float, 2 * kMaxShape> stroke{};
    std::size_t n = 0;
    for (const ShapePoint &p : shape.points) {
        if (p.begins && n > 0) {
            draw_stroke(n, stroke.data());
            n = 0;
        }
        stroke[2 * n] = x + p.x * scale;
        stroke[2 * n + 1] = y + p.y * scale;
        n++;
    }
    if (n > 0) {
        draw_stroke(n, stroke.data());
    }
}

/// A marker over its shadow: black copies, each a pixel further to the lower right.
void draw_on_screen(float x, float y, float size)
{
    const int depth = kernel().shadow;
    if (depth > 0) {
        gx_set_black(GxFamily::marker);
        for (int k = 0; k < depth; k++) {
            draw_marker(x + static_cast<float>(k), y + static_cast<float>(k), size);
        }
        gx_set_colour(GxFamily::marker, kernel().marker.colour);
    }
    draw_marker(x, y, size);
}

/// Size of a marker in device units for the factor 1.
float marker_unit()
{
    switch (kernel().ws.device) {
    case kDevicePostScript:
        return 10.0F * 0.72F;
    case kDeviceHpgl:
        return 10.0F * 10.15F;
    default:
        return 10.0F;
    }
}

void start_markers(int n)
{
    const MarkerState &marker = kernel().marker;
    switch (kernel().ws.device) {
    case kDevicePostScript:
        gps_printf("%%%%PM:%d\n", n);
        gps_width(marker.colour, marker.width);
        gps_line_color(marker.colour);
        gps_dash(1);
        break;
    case kDeviceHpgl:
        ghp_width(marker.colour, marker.width);
        ghp_line_color(marker.colour);
        ghp_dash(1);
        break;
    default:
        break;
    }
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
    if (gis_metafile()) {
        gmeta_points("PM", n, points, true);
        return 0;
    }
    record(kObjPolymarker, n, 2 * n, points);
    const float size = marker_unit() * kernel().marker.size;
    start_markers(n);
    for (std::ptrdiff_t i = 0; i < n; i++) {
        const float *point = points + 2 * i;
        if (gis_x11()) {
            draw_on_screen(gwc_to_dc_x(point[0]) + 0.5F, gwc_to_dc_y(point[1]) + 0.5F, size);
        } else {
            draw_marker(gwc_to_pc_x(point[0]), gwc_to_pc_y(point[1]), size);
        }
    }
    return 0;
}

int gset_marker_colr_ind(int index)
{
    if (!kernel_is_open("gset_marker_colr_ind") || !colour_usable("gset_marker_colr_ind", &index)) {
        return -1;
    }
    if (index == kernel().marker.colour) {
        return 0;
    }
    kernel().marker.colour = index;
    if (gis_metafile()) {
        gmeta_printf("PM_CLR %d\n", index);
        return 0;
    }
    record(kObjMarkerColour, index);
    if (gis_x11()) {
        gx_set_colour(GxFamily::marker, index);
    }
    return 0;
}

int gset_marker_type(int type)
{
    if (!kernel_is_open("gset_marker_type")) {
        return -1;
    }
    if (type == kernel().marker.type) {
        return 0;
    }
    kernel().marker.type = type;
    if (gis_metafile()) {
        gmeta_printf("PM_TYPE %d\n", type);
        return 0;
    }
    record(kObjMarkerType, type);
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
    if (size == kernel().marker.size) {
        return 0;
    }
    kernel().marker.size = size;
    if (gis_metafile()) {
        gmeta_printf("PM_SIZE %f\n", size);
        return 0;
    }
    record(kObjMarkerSize, 1, 1, &size);
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
    width = width_on_device(width);
    if (width == kernel().marker.width) {
        return 0;
    }
    kernel().marker.width = width;
    if (gis_metafile()) {
        gmeta_printf("PM_WDTH %f\n", width);
        return 0;
    }
    record(kObjMarkerWidth, 1, 1, &width);
    if (gis_x11()) {
        gx_set_width(GxFamily::marker, width);
    }
    return 0;
}

int ginq_marker_colr()
{
    return kernel().marker.colour;
}
