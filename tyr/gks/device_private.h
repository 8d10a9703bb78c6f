#pragma once

// What the kernel asks of a device. The kernel knows what a device can do, not which there are:
// device/device.cpp tells them apart. Points come in device units, transformed and in the order
// drawn; a device writes them in its own form and reads the attributes of the primitive from the
// kernel's state.

#include <span>
#include <string>
#include <vector>

#include "tyr/gks/gks.h"
#include "tyr/gks/object_kind.h"

namespace tyr {

/// The families of primitives with attributes of their own.
enum class Family { line, text, marker, fill };

/// What a device is like.
struct DeviceTraits {
    bool is_screen;       ///< X11: y runs down, colours are pixels, shadows are drawn, events come
    bool holds;           ///< a window of our own: its picture is cleared, kept and held
    bool keeps_calls;     ///< calls are written as they are: nothing is transformed nor drawn
    float hairline;       ///< the stroke width that 0 stands for
    float marker_unit;    ///< size of a marker of factor 1, device units
    TranMode first_mode;  ///< of ginit_ws at opening
    const char *print_of; ///< what a redraw on this device is called; null where there is none
    const float *(*paper)(); ///< red, green and blue of what is drawn on; null where nobody knows
};
const DeviceTraits &device_traits();

/// A point of a character's strokes, device units.
struct GlyphPoint {
    float x, y;
    bool begins; ///< the pen comes down here
};

/// Strokes of characters go out in runs of at most so many connected points.
inline constexpr int kMaxRun = 30;

// ---------------------------------------------------------------------------------------------
// Opening and closing

/// Opens a device: `words` are the target and the device words. It sets kind, depth, size and
/// offset of the view surface. 0, or -1 with a report.
int device_open(const std::vector<std::string> &words, int device);
/// The open workstation is ready: a screen is synchronised and its events are looked at.
void device_ready();
/// Attributes go to their start (mode: a TranMode of screens): contexts, pointer, rubber band.
void device_start(int mode);
/// Ends the output. -1 when it didn't all go out.
int device_close();
/// Opens a file device for a redraw, on the target that the environment names, and puts the kernel
/// to its start. False when that fails.
bool device_open_print();

// ---------------------------------------------------------------------------------------------
// Primitives

/// A line, an area; a stroke of a marker, one point a dot.
void device_polyline(int n, const float *points);
void device_area(int n, const float *points);
void device_stroke(int n, const float *points);
/// The strokes of one character; the first point begins one.
void device_glyph(std::span<const GlyphPoint> points);
/// A text at a position in the font of the server (see device_load_font), `aside` pixels to the
/// lower right.
void device_server_text(float x, float y, int aside, const char *text);
/// What stands before the strokes of n markers, and of a text at a position in world coordinates.
void device_begin_markers(int n);
void device_begin_text(const float pos[2], const char *text);
/// A rectangle (x minimum, x maximum, y minimum, y maximum) filled with the background.
void device_clear_region(const float rect[4]);
void device_message(const char *text);

/// Clips at the selected viewport, whose corners these are.
void device_clip(float x0, float y0, float x1, float y1);
/// Empties the picture.
void device_clear();

// ---------------------------------------------------------------------------------------------
// Attributes and colours

/// An attribute has a new value, which stands in the kernel's state.
void device_attribute(ObjectKind kind);
/// What a family draws next is black: its shadow. Ended by device_attribute of its colour.
void device_black(Family family);
/// A colour index has a new colour. 1, or the pixel on screens.
int device_store_colour(int index, float red, float green, float blue);
/// Pixel of a colour index; -1 where it has none.
int device_pixel(int index);

/// Takes a font of the server for text. False where there is none of that name.
bool device_load_font(const char *name);
/// A wish of the user for a screen, by its name; empty where there is none.
std::string device_default(const char *option);

// ---------------------------------------------------------------------------------------------
// Calls that a device keeps (DeviceTraits::keeps_calls)

/// Attributes and settings by their word.
void device_keep(const char *word, int value);
void device_keep(const char *word, float value);
void device_keep(const char *word, const int pair[2]);
void device_keep(const char *word, const float pair[2]);
/// Number and rectangle (x minimum, x maximum, y minimum, y maximum).
void device_keep_rect(const char *word, int number, const float rect[4]);
void device_keep_region(const float rect[4]);
void device_keep_colour(int ws, int index, const float rgb[3]);
/// Primitives, in world coordinates.
void device_keep_polyline(int n, const float *points);
void device_keep_area(int n, const float *points);
void device_keep_markers(int n, const float *points);
void device_keep_text(const float pos[2], const char *text);

// ---------------------------------------------------------------------------------------------
// The screen's part

/// Forgets all frames.
void device_forget_frames();
/// Takes the window's size, and lets go what the picture holds.
void device_adopt_size();
/// Shows the picture until the user ends it.
void device_hold();

} // namespace tyr
