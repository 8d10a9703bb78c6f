#include "gks/colour.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

#include "base/msg.h"
#include "device/grey.h"
#include "device/metafile.h"
#include "gks/state.h"

namespace {

constexpr unsigned kTrace = 0x40000000U;
constexpr float kSameColour = 0.01F; // sum of the three differences

struct Colour {
    float red = 0.0F, green = 0.0F, blue = 0.0F;
};

struct State {
    std::array<Colour, kMaxColour + 1> table;
    int highest = 0;
    bool inverse = false;
    bool read_write_cells = true;
    bool local_map = false;
};

State state;

/// Entry of an index; null for one without an entry.
const Colour *entry(int index)
{
    const int place = index == -1 ? kBackgroundEntry : index;
    return place >= 0 && place <= kMaxColour ? &state.table[place] : nullptr;
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
            MSG_out(kTrace, "Used existing ind: %d (%.2f %.2f %.2f)\n", i, red, green, blue);
            return i;
        }
    }
    if (state.highest + 1 >= kBackgroundEntry) {
        return -1;
    }
    ++state.highest;
    MSG_out(kTrace, "Allocated new ind: %d (%.2f %.2f %.2f)\n", state.highest, red, green, blue);
    return state.highest;
}

int of_255(float fraction)
{
    return static_cast<int>(255.0F * std::fmin(std::fmax(fraction, 0.0F), 1.0F));
}

} // namespace

bool colour_usable(const char *routine, int index)
{
    if (!gcolor_valid(index)) {
        gerror(routine, "invalid color index: %d\n", index);
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
    if (gis_metafile()) {
        gmeta_printf("CLR %d %d %f %f %f\n", ws, index, rgb[0], rgb[1], rgb[2]);
        return 0;
    }
    if (index == -1) { // the background; a negative index has another meaning below
        index = kBackgroundEntry;
    }
    gset_color(index, rgb[0], rgb[1], rgb[2]);
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
    gps_set_gray(index, red, green, blue);
    return 1;
}

int gcolor_same(int index, int, float red, float green, float blue)
{
    const Colour *colour = index >= 0 ? entry(index) : nullptr;
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

void gcolor_background()
{
    if (gis_postscript()) {
        state.table[kBackgroundEntry] = {1.0F, 1.0F, 1.0F};
    }
}

void gset_invert(int flag)
{
    state.inverse = flag != 0;
}

int ginq_invert()
{
    return state.inverse ? 1 : 0;
}

void gset_rw_colors(int flag)
{
    state.read_write_cells = flag != 0;
}

void gset_local_cmap(int flag)
{
    state.local_map = flag != 0;
}
