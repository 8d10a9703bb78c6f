#include "tyr/x11/x11_colour.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdlib>
#include <vector>

#include "tyr/base/msg.h"
#include "tyr/gks/state_private.h"
#include "tyr/x11/x11_colormap.h"
#include "tyr/x11/x11_state_private.h"

using namespace tyr;

namespace {

constexpr float kFull = 65535.0F;
constexpr char kParts = DoRed | DoGreen | DoBlue;

unsigned short part(float fraction)
{
    return static_cast<unsigned short>(kFull * std::fmin(std::fmax(fraction, 0.0F), 1.0F));
}

XColor colour_of(const float rgb[3])
{
    XColor colour{};
    colour.red = part(rgb[0]);
    colour.green = part(rgb[1]);
    colour.blue = part(rgb[2]);
    colour.flags = kParts;
    return colour;
}

void trace(const char *what, int index, const float rgb[3], XColor colour)
{
    if (MSG_test(kMsgDebugC) == 0) {
        return;
    }
    XQueryColor(x11().display, ginq_colormap(), &colour);
    MSG_out(kMsgDebugC, "%s RW Cells: %d %d (%.2f %.2f %.2f) (%5d %5d %5d)\n", what, index,
            static_cast<int>(colour.pixel), double{rgb[0]}, double{rgb[1]}, double{rgb[2]},
            colour.red, colour.green, colour.blue);
}

/// The cell of the map that comes nearest to a colour, where there is no free one any more.
int nearest_cell(const float rgb[3])
{
    const X11State &x = x11();
    std::vector<XColor> cells(static_cast<size_t>(std::clamp(x.visual->map_entries, 0, 4096)));
    for (size_t i = 0; i < cells.size(); i++) {
        cells[i].pixel = i;
        cells[i].flags = kParts;
    }
    XQueryColors(x.display, ginq_colormap(), cells.data(), static_cast<int>(cells.size()));
    const auto distance = [rgb](const XColor &cell) {
        const float red = static_cast<float>(cell.red) / kFull - rgb[0];
        const float green = static_cast<float>(cell.green) / kFull - rgb[1];
        const float blue = static_cast<float>(cell.blue) / kFull - rgb[2];
        return red * red + green * green + blue * blue;
    };
    const auto nearest =
        std::min_element(cells.begin(), cells.end(), [&](const XColor &a, const XColor &b) {
            return distance(a) < distance(b);
        });
    if (nearest == cells.end()) {
        return kNoPixel;
    }
    // shared, so that its owner can't give it away
    XColor shared = *nearest;
    return XAllocColor(x.display, ginq_colormap(), &shared) != 0 ? static_cast<int>(shared.pixel)
                                                                 : static_cast<int>(nearest->pixel);
}

/// A cell that can be changed in place; the flag goes off where the screen has none.
bool get_cell(unsigned long *pixel, bool *read_write)
{
    const X11State &x = x11();
    if (!*read_write) {
        return false;
    }
    const int status = XAllocColorCells(x.display, ginq_colormap(), 0, nullptr, 0, pixel, 1);
    MSG_out(kMsgDebugC, "Allocated RW Cells: %d\n", status);
    *read_write = status != 0;
    return *read_write;
}

/// Where the eight bits of a part of a colour stand in a pixel; -1 where they are others.
int shift_of(unsigned long mask)
{
    constexpr unsigned long kByte = 0xFF;
    const int shift = mask == 0 ? 0 : std::countr_zero(mask);
    return mask != 0 && mask >> shift == kByte ? shift : -1;
}

/// Makes the pixel of a colour from the masks of a true-colour screen of eight bits a part, as the
/// server does: asking it takes a round trip for each colour.
/// @return false on other screens
bool compose_pixel(XColor *colour)
{
    constexpr int kDroppedBits = 8;
    constexpr int kPlainDepth = 24; // a deeper one has bits that the server alone knows
    const X11State &x = x11();
    const Visual *visual = x.visual;
    const int red = shift_of(visual->red_mask);
    const int green = shift_of(visual->green_mask);
    const int blue = shift_of(visual->blue_mask);
    if (visual->c_class != TrueColor || visual->bits_per_rgb != 8 || red < 0 || green < 0 ||
        blue < 0 || kernel().ws.depth != kPlainDepth) {
        return false;
    }
    const auto bits = [](unsigned short part, int shift) {
        return static_cast<unsigned long>(part >> kDroppedBits) << shift;
    };
    colour->pixel = bits(colour->red, red) | bits(colour->green, green) | bits(colour->blue, blue);
    return true;
}

/// A cell for a colour that won't change. @return whether there is one
bool share_cell(XColor *colour)
{
    return compose_pixel(colour) || XAllocColor(x11().display, ginq_colormap(), colour) != 0;
}

} // namespace

int ginq_pixel(int index)
{
    const int place = index == -1 ? kBackgroundEntry : index;
    return place >= 0 && place <= kMaxColour ? x11().pixels[static_cast<size_t>(place)] : kNoPixel;
}

int ginq_bg_pixel()
{
    return ginq_pixel(-1);
}

Colormap ginq_colormap()
{
    return x11().private_map != 0 ? x11().private_map : x11().default_map;
}

void gset_colormap(Colormap map)
{
    x11().private_map = map;
}

void gset_default_colormap(Colormap map)
{
    x11().default_map = map;
}

void gcolor_init()
{
    X11State &x = x11();
    const bool is_wanted = kernel().ws.local_map || std::getenv("LOCAL_CMAP") != nullptr ||
                           std::getenv("tyrlocal_cmap") != nullptr;
    if (gis_display() && is_wanted) {
        x.private_map = XCreateColormap(x.display, x.window, x.visual, AllocNone);
        XSetWindowColormap(x.display, x.window, x.private_map);
    }
    x.pixels.fill(kNoPixel);
}

void gx_free_colormap()
{
    X11State &x = x11();
    if (x.private_map != 0) {
        XFreeColormap(x.display, x.private_map);
        x.private_map = 0;
    }
}

int gx_store_colour(int index, float red, float green, float blue, bool *read_write)
{
    X11State &x = x11();
    const float rgb[3] = {red, green, blue};
    int &pixel = x.pixels[static_cast<size_t>(index)];
    XColor colour = colour_of(rgb);
    const bool is_new = pixel == kNoPixel;
    if (is_new) {
        unsigned long cell = 0;
        if (get_cell(&cell, read_write)) {
            pixel = static_cast<int>(cell);
        }
    }
    if (*read_write) {
        colour.pixel = static_cast<unsigned>(pixel);
        XStoreColor(x.display, ginq_colormap(), &colour); // what is drawn in it changes as well
        XFlush(x.display);                                // at once
    } else if (share_cell(&colour)) {
        pixel = static_cast<int>(colour.pixel);
    } else {
        pixel = nearest_cell(rgb);
    }
    trace(!*read_write ? (is_new ? "Allocated new" : "Allocated")
          : is_new     ? "Stored new"
                       : "Stored",
          index, rgb, colour);
    return pixel;
}

void gx_set_background(bool given, const std::string &name, bool inverse, float rgb[3])
{
    X11State &x = x11();
    XColor colour{};
    if (given) {
        colour = colour_of(rgb);
    } else if (!name.empty()) {
        XParseColor(x.display, ginq_colormap(), name.c_str(), &colour); // black if unknown
    } else {
        colour.pixel = inverse ? WhitePixel(x.display, x.screen) : BlackPixel(x.display, x.screen);
        XQueryColor(x.display, ginq_colormap(), &colour);
    }
    colour.flags = kParts;
    XAllocColor(x.display, ginq_colormap(), &colour);
    XQueryColor(x.display, ginq_colormap(), &colour);
    x.pixels[kBackgroundEntry] = static_cast<int>(colour.pixel);
    rgb[0] = static_cast<float>(colour.red) / kFull;
    rgb[1] = static_cast<float>(colour.green) / kFull;
    rgb[2] = static_cast<float>(colour.blue) / kFull;
}
