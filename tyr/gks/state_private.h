#pragma once

#include <array>
#include <string>

#include "tyr/gks/gks.h"

namespace tyr {

/// What the files of the kernel and the devices share. Nobody else includes this header.

/// A rectangle with its sides worked out.
struct TranRect {
    float xmin = 0.0F, ymin = 0.0F, xmax = 1.0F, ymax = 1.0F;
    float dx = 1.0F, dy = 1.0F;

    /// From the order that callers use: x minimum, x maximum, y minimum, y maximum.
    static TranRect from(const float rect[4])
    {
        return {rect[0], rect[2], rect[1], rect[3], rect[1] - rect[0], rect[3] - rect[2]};
    }
};

struct WorkstationState {
    bool gks_open = false; ///< reports are wanted
    bool open = false;
    int device = kDeviceNone;
    int width = 640, height = 512;             ///< view surface, device units
    int first_width = 640, first_height = 512; ///< backing pixmap
    int x_offset = 0, y_offset = 0;            ///< place of the view surface, device units
    int depth = 0;
    int wish = 0; ///< of an external window
    std::string app_name = "X11_Graph";
    std::string title = "X11_Graph";
    bool recording = true; ///< a display keeps what is drawn, so that it can be printed
    bool events = true;
    bool inverse = false; ///< black on white
    bool read_write_cells = true;
    bool local_map = false;
};

struct TransformationState {
    std::array<TranRect, kNumTransformations> window, viewport;
    int current = 0;
    TranRect cur_window, cur_viewport; ///< copies of the selected entries
    float sx = 1.0F, sy = 1.0F;        ///< world to normalised
    TranRect ws_window, ws_viewport;
    float dev_x0 = 0.0F, dev_y0 = 0.0F; ///< device origin
    float dev_w = 1.0F, dev_h = 1.0F;   ///< extent of the device rectangle in use
    float kx = 1.0F, ky = 1.0F;         ///< normalised to device
};

struct LineState {
    int colour = 1;
    int type = 1;
    float width = 1.0F;
};

struct MarkerState {
    int colour = 1;
    int type = 1;
    float width = 1.0F;
    float size = 10.0F;
};

struct FillState {
    int int_style = 1; ///< 1 solid, 2 pattern
    int style_index = 1;
    int colour = 1;
};

struct TextState {
    int colour = 1;
    float width = 1.0F;
    float height = 0.01F;
    float expansion = 1.0F;
    float spacing = 0.25F;
    float pitch = 0.0F; ///< fixed pitch; 0 proportional
    int horizontal = kAlignNormal;
    int vertical = kAlignVNormal;
    float up_x = 0.0F, up_y = 1.0F;
    int font = 1;
};

struct KernelState {
    WorkstationState ws;
    TransformationState tran;
    LineState line;
    MarkerState marker;
    FillState fill;
    TextState text;
    bool fill_black = false; ///< outlives ginit_ws
    int shadow = 0;          ///< depth in pixels
};

KernelState &kernel();

/// Puts the attributes of all primitives to their start.
void attributes_reset();

/// Reports "GKS not opened" for the routine and returns false when no workstation is open.
bool kernel_is_open(const char *routine);

/// A stroke width as the attribute setters keep it: 0 counts as the device's hairline.
float width_on_device(float width);

/// A point in device units: y down on screens, up on paper.
struct DevicePoint {
    float x, y;
};
DevicePoint device_point(const float world[2]);
/// n points in device units, x, y; they stand until the next call.
const float *device_points(int n, const float *world);

} // namespace tyr
