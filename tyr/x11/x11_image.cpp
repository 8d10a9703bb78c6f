#include "tyr/x11/x11_image.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <vector>

#include <X11/Xutil.h>

#include "tyr/base/msg.h"
#include "tyr/base/str.h"
#include "tyr/gks/gks.h"
#include "tyr/image/image_rec_private.h"
#include "tyr/x11/x11_colour.h"
#include "tyr/x11/x11_state_private.h"

using namespace tyr;

namespace {

constexpr float kFull = 65535.0F;
constexpr float kNearlyFull = 0.99F; ///< counts as full

struct ImageCloser {
    void operator()(XImage *image) const { XDestroyImage(image); }
};
using XImagePtr = std::unique_ptr<XImage, ImageCloser>;

void name_image(ImageRec *image)
{
    char *name = nullptr;
    const bool has_name = XFetchName(x11().display, x11().window, &name) != 0 && name != nullptr;
    STR_copy(image->info, sizeof image->info, has_name ? name : "xwdump");
    if (name != nullptr) {
        XFree(name);
    }
}

void print_layout(const XImage &grabbed, int ncolors)
{
    const auto show = [](const char *what, unsigned long value) {
        MSG_out(kMsgDebug, "%s: %lu\n", what, value);
    };
    const auto number = [](int n) { return static_cast<unsigned long>(n); };
    show("width", number(grabbed.width));
    show("height", number(grabbed.height));
    show("offset", number(grabbed.xoffset));
    show("format", number(grabbed.format));
    show("byte order", number(grabbed.byte_order));
    show("bitmap unit", number(grabbed.bitmap_unit));
    show("bit order", number(grabbed.bitmap_bit_order));
    show("pad", number(grabbed.bitmap_pad));
    show("depth", number(grabbed.depth));
    show("bits per pixel", number(grabbed.bits_per_pixel));
    show("bytes per line", number(grabbed.bytes_per_line));
    show("red mask", grabbed.red_mask);
    show("green mask", grabbed.green_mask);
    show("blue mask", grabbed.blue_mask);
    show("colors", number(ncolors));
}

/// Pixel values of a colour map's entries: of a direct visual they step by the lowest bit of each
/// mask, of the others they are the places.
std::vector<XColor> map_entries(const Visual &visual)
{
    std::vector<XColor> entries(static_cast<size_t>(std::clamp(visual.map_entries, 0, 4096)));
    const auto lowest = [](unsigned long mask) { return mask & (~mask + 1); };
    const bool is_direct = visual.c_class == DirectColor;
    unsigned long red = 0;
    unsigned long green = 0;
    unsigned long blue = 0;
    for (size_t i = 0; i < entries.size(); i++) {
        entries[i].pixel = is_direct ? (red | green | blue) : i;
        entries[i].flags = DoRed | DoGreen | DoBlue;
        red = (red + lowest(visual.red_mask)) & visual.red_mask;
        green = (green + lowest(visual.green_mask)) & visual.green_mask;
        blue = (blue + lowest(visual.blue_mask)) & visual.blue_mask;
    }
    return entries;
}

float fraction(unsigned short part)
{
    const float value = static_cast<float>(part) / kFull;
    return value > kNearlyFull ? 1.0F : value;
}

/// The table of colours of a window's map; none for a visual whose pixels tell their colour.
bool take_colours(const XWindowAttributes &window, ImageRec *image)
{
    if (window.colormap == 0 || window.visual->c_class == TrueColor) {
        image->color_type = kImageMasks;
        return true;
    }
    std::vector<XColor> entries = map_entries(*window.visual);
    XQueryColors(x11().display, window.colormap, entries.data(), static_cast<int>(entries.size()));
    if (!image_allocate_colors(image, static_cast<int>(entries.size()))) {
        MSG_out(kMsgWarn, "gget_image: Unable to allocate memory for colors\n");
        return false;
    }
    image->color_type = kImageTable;
    for (size_t i = 0; i < entries.size(); i++) {
        image->colors[i][0] = fraction(entries[i].red);
        image->colors[i][1] = fraction(entries[i].green);
        image->colors[i][2] = fraction(entries[i].blue);
    }
    return true;
}

bool take_pixels(const XImage &grabbed, const Visual &visual, ImageRec *image)
{
    image->width = grabbed.width;
    image->height = grabbed.height;
    image->depth = grabbed.depth;
    image->bits_per_pixel = grabbed.bits_per_pixel;
    image->bytes_per_line = grabbed.bytes_per_line;
    image->byte_order = grabbed.byte_order == MSBFirst ? kHighByteFirst : kLowByteFirst;
    const auto mask = [](unsigned long of_image, unsigned long of_visual) {
        return static_cast<unsigned>(of_image != 0 ? of_image : of_visual);
    };
    image->red_mask = mask(grabbed.red_mask, visual.red_mask);
    image->green_mask = mask(grabbed.green_mask, visual.green_mask);
    image->blue_mask = mask(grabbed.blue_mask, visual.blue_mask);
    if (!image_fits("gget_image", *image) || !image_allocate(image)) {
        MSG_out(kMsgWarn, "gget_image: Unable to allocate data buffer.\n");
        return false;
    }
    std::memcpy(image->data, grabbed.data,
                static_cast<size_t>(grabbed.height) * static_cast<size_t>(grabbed.bytes_per_line));
    return true;
}

} // namespace

int gget_image(ImageRec *image)
{
    const X11State &x = x11();
    IMG_init(image);
    if (!gis_x11() || !x11_can_draw()) {
        return 0;
    }
    int width = 0;
    int height = 0;
    ginq_first_size(&width, &height);
    XWindowAttributes window{};
    if (XGetWindowAttributes(x.display, x.window, &window) == 0) {
        MSG_out(kMsgWarn, "gget_image: Can't get target window attributes\n");
        return 0;
    }
    name_image(image);
    image->transparent = ginq_bg_pixel(); // for writers that are asked for it
    const XImagePtr grabbed(XGetImage(x.display, x.target, 0, 0, static_cast<unsigned>(width),
                                      static_cast<unsigned>(height), AllPlanes, ZPixmap));
    if (!grabbed) {
        MSG_out(kMsgWarn, "gget_image: Unable to get image at %dx%d+%d+%d\n", width, height, 0, 0);
        return 0;
    }
    if (!take_pixels(*grabbed, *window.visual, image) || !take_colours(window, image)) {
        IMG_free(image);
        return 0;
    }
    print_layout(*grabbed, image->ncolors);
    XFlush(x.display);
    return 1;
}
