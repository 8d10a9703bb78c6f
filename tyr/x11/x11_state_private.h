#pragma once

#include <array>

#include <X11/Xlib.h>

#include "tyr/gks/gks.h"

namespace tyr {

/// What the X11 rooms of the devices share with the kernel's frames and zoom. Nobody else includes
/// this header.

/// The families of primitives, each with a graphics context of its own.
enum GcFamily { kGcLine, kGcText, kGcMarker, kGcFill, kNumGcs };

inline constexpr int kNumCursors = 9;
inline constexpr int kNumStipples = 20;
inline constexpr int kNoPixel = -1; ///< of a colour that hasn't been given yet

struct X11State {
    Display *display = nullptr;
    int screen = 0;
    Visual *visual = nullptr;
    Window window = 0;
    Pixmap pixmap = 0;   ///< backing pixmap: the picture that an update shows
    Pixmap icon = 0;     ///< of the window
    Drawable target = 0; ///< what primitives draw on: the backing pixmap or a frame's
    GC common = nullptr; ///< for clearing, copying and frames
    std::array<GC, kNumGcs> gc{};
    std::array<Pixmap, kNumStipples> stipples{};
    std::array<Cursor, kNumCursors> cursors{};
    int cursor = 0;
    unsigned long foreground = 0, background = 0;
    unsigned red_mask = 0, green_mask = 0, blue_mask = 0;
    Colormap default_map = 0, private_map = 0;
    std::array<int, kMaxColour + 1> pixels{};
    bool report_errors = true;
    bool error_seen = false;
    int errors = 0; ///< shown so far
};

X11State &x11();

/// True with a display and a draw target.
bool x11_can_draw();

} // namespace tyr
