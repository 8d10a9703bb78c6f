#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

#include "tyr/base/msg.h"
#include "tyr/gks/colour_private.h"
#include "tyr/gks/device_private.h"
#include "tyr/gks/recorder_private.h"
#include "tyr/gks/state_private.h"

using namespace tyr;

namespace {

constexpr float kSameColour = 0.01F; // sum of the three differences

struct Colour {
    float red = 0.0F, green = 0.0F, blue = 0.0F;
};

struct State {
    std::array<Colour, kMaxColour + 1> table;
    int highest = 0;
};

State state;

/// Entry of an index; null for one without an entry.
const Colour *entry(int index)
{
    const int place = index == -1 ? kBackgroundEntry : index;
    return place >= 0 && place <= kMaxColour ? &state.table[place] : nullptr;
}

/// The last entry that holds a pixel; -1 for none.
int entry_of_pixel(int pixel)
{
    for (int i = kMaxColour; i >= 0; i--) {
        if (device_pixel(i) == pixel) {
            return i;
        }
    }
    return -1;
}

bool is_print_colour(int index)
{
    return index >= kFirstPrintColour && index <= kLastPrintColour;
}

/// An entry for a colour without an index: the last equal one, or the next free; -1 when full.
int find_or_add(float red, float green, float blue)
{
    for (int i = state.highest - 1; i >= 0; i--) {
        if (gcolor_same(i, 0, red, green, blue)) {
            MSG_out(kMsgDebugC, "Used existing ind: %d (%.2f %.2f %.2f)\n", i, red, green, blue);
            return i;
        }
    }
    if (state.highest + 1 >= kBackgroundEntry) {
        return -1;
    }
    ++state.highest;
    MSG_out(kMsgDebugC, "Allocated new ind: %d (%.2f %.2f %.2f)\n", state.highest, red, green,
            blue);
    return state.highest;
}

/// A colour that a family draws with changes for what comes next.
void show_at_once(int index)
{
    const KernelState &k = kernel();
    const std::pair<ObjectKind, int> families[] = {
        {kObjLineColour,   k.line.colour  },
        {kObjTextColour,   k.text.colour  },
        {kObjMarkerColour, k.marker.colour},
        {kObjFillColour,   k.fill.colour  },
    };
    for (const auto &[kind, colour] : families) {
        if (colour == index) {
            device_attribute(kind);
        }
    }
}

int of_255(float fraction)
{
    return static_cast<int>(255.0F * std::fmin(std::fmax(fraction, 0.0F), 1.0F));
}

} // namespace

bool tyr::colour_usable(const char *routine, int *index)
{
    if (!gcolor_valid(*index)) {
        gerror(routine, "invalid color index: %d\n", *index);
        return false;
    }
    if (!device_traits().is_screen) {
        return true;
    }
    if (is_print_colour(*index)) {
        *index = 1;
    }
    if (device_pixel(*index) == -1) {
        gerror(routine, "color index not initialized\n");
        return false;
    }
    return true;
}

int gcolor_valid(int index)
{
    return (index >= -1 && index <= kMaxColour) || is_print_colour(index);
}

int gset_colr_rep(int ws, int index, const float rgb[3])
{
    if (!kernel_is_open("gset_colr_rep")) {
        return -1;
    }
    if (is_print_colour(index)) {
        return 0;
    }
    if (!gcolor_valid(index)) {
        gerror("gset_colr_rep", "invalid color index: %d\n", index);
        return -1;
    }
    if (device_traits().keeps_calls) {
        device_keep_colour(ws, index, rgb);
        return 0;
    }
    record(kObjColour, index, 3, rgb);
    // the background: a negative index has another meaning to the storing step
    gset_color(index == -1 ? kBackgroundEntry : index, rgb[0], rgb[1], rgb[2]);
    show_at_once(index);
    return 0;
}

int gset_color(int index, float red, float green, float blue)
{
    if (index < 0) {
        index = find_or_add(red, green, blue);
    }
    if (index < 0 || index > kMaxColour) {
        return -1;
    }
    if (index < kBackgroundEntry) {
        state.highest = std::max(state.highest, index);
    }
    state.table[index] = {red, green, blue};
    return device_store_colour(index, red, green, blue);
}

int gcolor_same(int index, int by_pixel, float red, float green, float blue)
{
    const int place = by_pixel != 0 ? entry_of_pixel(index) : index;
    const Colour *colour = index >= 0 && place >= 0 ? entry(place) : nullptr;
    if (colour == nullptr) {
        return 0;
    }
    return std::fabs(colour->red - red) + std::fabs(colour->green - green) +
               std::fabs(colour->blue - blue) <
           kSameColour;
}

void ginq_color(int index, float *red, float *green, float *blue)
{
    const Colour *colour = entry(index);
    *red = colour != nullptr ? colour->red : 0.0F;
    *green = colour != nullptr ? colour->green : 0.0F;
    *blue = colour != nullptr ? colour->blue : 0.0F;
}

void ginq_color255(int index, int *red, int *green, int *blue)
{
    float r = 0.0F;
    float g = 0.0F;
    float b = 0.0F;
    ginq_color(index, &r, &g, &b);
    *red = of_255(r);
    *green = of_255(g);
    *blue = of_255(b);
}

void tyr::colour_set_background(float red, float green, float blue)
{
    state.table[kBackgroundEntry] = {red, green, blue};
}

void gset_invert(int flag)
{
    kernel().ws.inverse = flag != 0;
}

int ginq_invert()
{
    return kernel().ws.inverse ? 1 : 0;
}

void gset_rw_colors(int flag)
{
    kernel().ws.read_write_cells = flag != 0;
}

void gset_local_cmap(int flag)
{
    kernel().ws.local_map = flag != 0;
}
