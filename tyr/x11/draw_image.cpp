#include "tyr/x11/draw_image.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include <X11/Xutil.h>

#include "tyr/gks/colour_table.h"
#include "tyr/gks/gks.h"
#include "tyr/image/image.h"
#include "tyr/image/palette_private.h"
#include "tyr/x11/x11_colormap.h"
#include "tyr/x11/x11_colour.h"
#include "tyr/x11/x11_state_private.h"

using namespace tyr;

namespace {

constexpr float kFull = 65535.0F;

using Rgb = std::array<float, 3>;

/// Colour of the pixels that stay off: that of a word, or the background's.
Rgb transparent_colour(const char *word)
{
    Rgb rgb{};
    const int index = word != nullptr && word[0] != '\0' ? CLR_find(word) : -1;
    if (index >= 0) {
        CLR_get_rgb(index, &rgb[0], &rgb[1], &rgb[2]);
        return rgb;
    }
    XColor colour{};
    if (word != nullptr && word[0] != '\0' &&
        XParseColor(x11().display, ginq_colormap(), word, &colour) != 0) {
        return {static_cast<float>(colour.red) / kFull, static_cast<float>(colour.green) / kFull,
                static_cast<float>(colour.blue) / kFull};
    }
    ginq_color(-1, &rgb[0], &rgb[1], &rgb[2]);
    return rgb;
}

/// Colour of a pixel value of a file: from its table, a value beyond it black, or by its masks, or
/// as a grey.
Rgb colour_of(const ImageRec &image, std::uint32_t value)
{
    if (image.color_type == kImageTable && image.ncolors > 0) {
        const bool is_there = value < static_cast<std::uint32_t>(image.ncolors);
        const float *rgb = is_there ? image.colors[value] : nullptr;
        return rgb != nullptr ? Rgb{rgb[0], rgb[1], rgb[2]} : Rgb{};
    }
    const auto part = [value](unsigned mask) {
        const int shift = mask != 0 ? std::countr_zero(mask) : 0;
        const unsigned most = mask >> shift;
        return most != 0 ? static_cast<float>((value & mask) >> shift) / static_cast<float>(most)
                         : 0.0F;
    };
    if ((image.red_mask | image.green_mask | image.blue_mask) != 0) {
        return {part(image.red_mask), part(image.green_mask), part(image.blue_mask)};
    }
    const float grey = part(image.depth < 32 ? (1U << image.depth) - 1 : ~0U);
    return {grey, grey, grey};
}

/// A part of a colour in the place of its mask.
unsigned long in_mask(float part, unsigned long mask)
{
    if (mask == 0) {
        return 0;
    }
    const int shift = std::countr_zero(mask);
    const auto most = static_cast<float>(mask >> shift);
    return (static_cast<unsigned long>(std::lround(part * most)) << shift) & mask;
}

/// The screen's pixel of a colour: made of its parts where the visual tells them, else of an index
/// of the colour table.
unsigned long screen_pixel(const Rgb &rgb)
{
    const Visual &visual = *x11().visual;
    if (visual.c_class == TrueColor || visual.c_class == DirectColor) {
        return in_mask(rgb[0], visual.red_mask) | in_mask(rgb[1], visual.green_mask) |
               in_mask(rgb[2], visual.blue_mask);
    }
    const int pixel = gset_color(-1, rgb[0], rgb[1], rgb[2]);
    return pixel == kNoPixel ? x11().background : static_cast<unsigned>(pixel);
}

/// An image in the form of the screen, and the mask of what is drawn.
struct Screened {
    XImage *image = nullptr;
    std::vector<char> pixels;
    std::vector<char> mask; ///< a bit a pixel, lowest first, rows of whole bytes

    Screened() = default;
    Screened(const Screened &) = delete;
    Screened &operator=(const Screened &) = delete;
    ~Screened()
    {
        if (image != nullptr) {
            image->data = nullptr; // ours
            XDestroyImage(image);
        }
    }
};

bool same(const Rgb &a, const Rgb &b)
{
    constexpr float kSame = 0.01F;
    return std::abs(a[0] - b[0]) + std::abs(a[1] - b[1]) + std::abs(a[2] - b[2]) < kSame;
}

/// What becomes of a pixel value of the file.
struct Shown {
    unsigned long pixel;
    bool is_drawn;
};

/// The pixels of an image that fall into the window.
struct Part {
    int left, top, width, height;
};

Part shown_part(const ImageRec &image, int left, int top)
{
    Window root = 0;
    int x = 0;
    int y = 0;
    unsigned width = 0;
    unsigned height = 0;
    unsigned border = 0;
    unsigned depth = 0;
    XGetGeometry(x11().display, x11().target, &root, &x, &y, &width, &height, &border, &depth);
    const auto cut = [](int start, int size, unsigned room, int *from, int *count) {
        const std::int64_t end = std::min<std::int64_t>(std::int64_t{start} + size, room);
        *from = start < 0 ? -start : 0;
        *count = static_cast<int>(std::max<std::int64_t>(end - start - *from, 0));
    };
    Part part{};
    cut(left, image.width, width, &part.left, &part.width);
    cut(top, image.height, height, &part.top, &part.height);
    return part;
}

/// Converts a part of a picture: what lies outside of the window costs nothing.
bool convert(const ImageRec &source, const Part &part, const Rgb &hidden, Screened *out)
{
    const X11State &x = x11();
    out->image =
        XCreateImage(x.display, x.visual, static_cast<unsigned>(ginq_depth()), ZPixmap, 0, nullptr,
                     static_cast<unsigned>(part.width), static_cast<unsigned>(part.height), 32, 0);
    if (out->image == nullptr) {
        return false;
    }
    const auto height = static_cast<size_t>(part.height);
    const size_t mask_line = (static_cast<size_t>(part.width) + 7) / 8;
    out->pixels.resize(static_cast<size_t>(out->image->bytes_per_line) * height);
    out->mask.resize(mask_line * height);
    out->image->data = out->pixels.data();
    std::unordered_map<std::uint32_t, Shown> known;
    for (int row = 0; row < part.height; row++) {
        char *mask = out->mask.data() + mask_line * static_cast<size_t>(row);
        for (int column = 0; column < part.width; column++) {
            const std::uint32_t value = image_pixel(source, part.left + column, part.top + row);
            auto found = known.find(value);
            if (found == known.end()) {
                const Rgb rgb = colour_of(source, value);
                found = known.emplace(value, Shown{screen_pixel(rgb), !same(rgb, hidden)}).first;
            }
            XPutPixel(out->image, column, row, found->second.pixel);
            if (found->second.is_drawn) {
                mask[column / 8] = static_cast<char>(mask[column / 8] | 1 << column % 8);
            }
        }
    }
    return true;
}

void put(const Screened &shown, int left, int top)
{
    const X11State &x = x11();
    const auto width = static_cast<unsigned>(shown.image->width);
    const auto height = static_cast<unsigned>(shown.image->height);
    const Pixmap mask =
        XCreateBitmapFromData(x.display, x.target, shown.mask.data(), width, height);
    XSetClipMask(x.display, x.common, mask);
    XSetClipOrigin(x.display, x.common, left, top);
    XPutImage(x.display, x.target, x.common, shown.image, 0, 0, left, top, width, height);
    XSetClipMask(x.display, x.common, 0);
    XFreePixmap(x.display, mask);
}

} // namespace

int gdraw_image_file(const char *file, const char *transparent, int x, int y)
{
    if (!gis_x11() || !x11_can_draw()) {
        return 0;
    }
    ImageRec image;
    if (IMG_read_file(file, &image) != 1) {
        return 0;
    }
    short clip[4];
    gclip_rect(clip);
    const int left = x < 0 ? clip[0] + clip[2] - image.width + x : clip[0] + x;
    const int top = y < 0 ? clip[1] + clip[3] - image.height + y : clip[1] + y;
    const Part part = shown_part(image, left, top);
    const bool is_seen = part.width > 0 && part.height > 0;
    Screened shown;
    const bool is_converted =
        is_seen && convert(image, part, transparent_colour(transparent), &shown);
    IMG_free(&image);
    if (is_converted) {
        put(shown, left + part.left, top + part.top);
    }
    return is_converted || !is_seen ? 1 : 0;
}
