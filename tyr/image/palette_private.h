#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "tyr/image/image_rec_private.h"

namespace tyr {

/// True for pixels whose parts are places in a table: an image of a screen of direct colours.
inline bool image_is_direct(const ImageRec &image)
{
    return image.color_type == kImageTable && image.colors && image.depth > 8 &&
           (image.red_mask | image.green_mask | image.blue_mask) != 0;
}

/// Pixels of any storage, and the palette that is built from those that occur.

inline constexpr size_t kPaletteSize = 256;

/// Value of a pixel inside a picture that fits (image_fits).
std::uint32_t image_pixel(const ImageRec &image, int x, int y);

/// How many bytes from two places on are the same, of so many.
size_t image_equal_bytes(const unsigned char *a, const unsigned char *b, size_t count);

/// A picture as places in a palette.
struct IndexedImage {
    std::vector<std::uint8_t> places;  ///< one a pixel, row by row without padding
    std::vector<std::uint32_t> values; ///< pixel values by place, in order of discovery
    std::array<std::array<std::uint8_t, 3>, kPaletteSize> colors; ///< red, green, blue; rest zero
};

/// Finds the palette of a picture that fits, from the top row on. Where all places are taken,
/// further pixel values take place 0. Colours come from the table (a pixel beyond it is black),
/// from the masks, or where there is neither from the pixel as a grey of its depth.
IndexedImage image_index(const ImageRec &image);

/// Puts the places into the image's own pixels, each in the low byte.
void image_store_places(const IndexedImage &indexed, ImageRec *image);

} // namespace tyr
