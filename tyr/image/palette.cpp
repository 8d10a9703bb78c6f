#include <algorithm>
#include <bit>
#include <cstring>
#include <unordered_map>
#include <utility>

#include "tyr/base/msg.h"
#include "tyr/image/palette_private.h"

using namespace tyr;

namespace {

constexpr unsigned kFullColor = 255;
constexpr int kColorBits = 8;

using Color = std::array<std::uint8_t, 3>;

const unsigned char *row_of(const ImageRec &image, int y)
{
    return image.data + static_cast<size_t>(y) * static_cast<size_t>(image.bytes_per_line);
}

/// Shift of a pixel of less than a byte: nibbles high one first, bits as the byte order.
int shift_of(const ImageRec &image, int x)
{
    if (image.bits_per_pixel == 4) {
        return x % 2 == 0 ? 4 : 0;
    }
    return image.byte_order == kHighByteFirst ? 7 - x % 8 : x % 8;
}

/// Where one colour part stands in a pixel.
struct MaskPart {
    std::uint32_t mask;
    int shift; ///< of the lowest bit
    int width; ///< bits

    explicit MaskPart(std::uint32_t m)
        : mask(m), shift(m == 0 ? 0 : std::countr_zero(m)), width(std::bit_width(m >> shift))
    {
    }

    std::uint8_t of(std::uint32_t pixel) const
    {
        const std::uint32_t part = (pixel & mask) >> shift;
        if (width >= kColorBits) {
            return static_cast<std::uint8_t>(part >> (width - kColorBits));
        }
        // scaled, so that the most of five bits is the most of eight: white stays white
        const std::uint32_t most = std::max((1U << width) - 1U, 1U);
        return static_cast<std::uint8_t>((part * kFullColor + most / 2) / most);
    }
};

std::uint8_t color_byte(float part)
{
    return static_cast<std::uint8_t>(image_color_level(part, kFullColor));
}

std::uint8_t grey_byte(std::uint32_t pixel, int depth)
{
    const std::uint64_t most = (std::uint64_t{1} << std::clamp(depth, 1, 32)) - 1;
    return static_cast<std::uint8_t>(std::min<std::uint64_t>(pixel, most) * kFullColor / most);
}

/// Colours of an image's pixel values.
class Colors {
  public:
    explicit Colors(const ImageRec &image)
        : image_(image), red_(image.red_mask), green_(image.green_mask), blue_(image.blue_mask)
    {
        if (!has_table()) {
            MSG_out(kMsgDebugC, "mask: %d-%d %d-%d %d-%d\n", red_.shift, red_.width, green_.shift,
                    green_.width, blue_.shift, blue_.width);
        }
    }

    Color of(std::uint32_t pixel) const
    {
        if (image_is_direct(image_)) { // a ramp for each part
            return {ramp(red_, pixel, 0), ramp(green_, pixel, 1), ramp(blue_, pixel, 2)};
        }
        if (has_table()) {
            if (pixel >= static_cast<std::uint32_t>(image_.ncolors)) {
                return {};
            }
            const float *c = image_.colors[pixel];
            return {color_byte(c[0]), color_byte(c[1]), color_byte(c[2])};
        }
        if ((red_.mask | green_.mask | blue_.mask) == 0) {
            const std::uint8_t grey = grey_byte(pixel, image_.depth);
            return {grey, grey, grey};
        }
        return {red_.of(pixel), green_.of(pixel), blue_.of(pixel)};
    }

  private:
    std::uint8_t ramp(const MaskPart &mask, std::uint32_t pixel, int part) const
    {
        const std::uint32_t place = (pixel & mask.mask) >> mask.shift;
        return place < static_cast<std::uint32_t>(image_.ncolors)
                   ? color_byte(image_.colors[place][part])
                   : std::uint8_t{0};
    }
    bool has_table() const { return image_.color_type == kImageTable && image_.colors; }

    const ImageRec &image_;
    MaskPart red_, green_, blue_;
};

/// Pixels of whole bytes out of a row; the loop over them knows their width.
template <int Count, bool IsHighFirst> struct PixelBytes {
    /// Pixels from `x` on that are the same, of so many.
    static int run(const unsigned char *row, int x, int width)
    {
        const unsigned char *first = row + static_cast<std::ptrdiff_t>(x) * Count;
        if (x + 1 >= width || std::memcmp(first, first + Count, Count) != 0) {
            return 1;
        }
        const auto bytes = static_cast<size_t>(width - x - 1) * Count;
        return 1 + static_cast<int>(image_equal_bytes(first, first + Count, bytes) / Count);
    }
    std::uint32_t operator()(const unsigned char *row, int x) const
    {
        const unsigned char *bytes = row + static_cast<std::ptrdiff_t>(x) * Count;
        std::uint32_t value = 0;
        for (int i = 0; i < Count; ++i) {
            value = value << 8 | bytes[IsHighFirst ? i : Count - 1 - i];
        }
        return value;
    }
};

/// Pixels of less than a byte.
struct PixelBits {
    const ImageRec &image;

    static int run(const unsigned char * /*row*/, int /*x*/, int /*width*/) { return 1; }
    std::uint32_t operator()(const unsigned char *row, int x) const
    {
        const int bits = image.bits_per_pixel;
        return (row[x * bits / 8] >> shift_of(image, x)) & ((1U << bits) - 1U);
    }
};

/// Gives the pixel values of a picture their places, run by run.
class PlaceFinder {
  public:
    explicit PlaceFinder(const ImageRec &image) : image_(image), colors_(image)
    {
        result_.places.resize(static_cast<size_t>(image.width) * static_cast<size_t>(image.height));
    }

    template <class Pixel> void index(const Pixel &pixel)
    {
        std::uint8_t *out = result_.places.data();
        for (int y = 0; y < image_.height; ++y) {
            const unsigned char *row = row_of(image_, y);
            for (int x = 0; x < image_.width;) {
                const int run = pixel.run(row, x, image_.width);
                out = std::fill_n(out, run, place_of(pixel(row, x)));
                x += run;
            }
        }
    }

    IndexedImage take() { return std::move(result_); }

  private:
    static constexpr int kRecentBits = 10;
    struct Recent {
        std::uint32_t value;
        std::uint8_t place;
        bool is_set;
    };

    std::uint8_t place_of(std::uint32_t value)
    {
        constexpr std::uint32_t kSpread = 0x9E3779B1U; // of the golden section
        Recent &recent = recent_[value * kSpread >> (32 - kRecentBits)];
        if (!recent.is_set || recent.value != value) {
            recent = {value, find_place(value), true};
        }
        return recent.place;
    }

    std::uint8_t find_place(std::uint32_t value)
    {
        const auto known = places_.find(value);
        if (known != places_.end()) {
            return known->second;
        }
        if (result_.values.size() == kPaletteSize) {
            return 0;
        }
        const auto place = static_cast<std::uint8_t>(result_.values.size());
        places_.emplace(value, place);
        result_.colors[place] = colors_.of(value);
        result_.values.push_back(value);
        return place;
    }

    const ImageRec &image_;
    Colors colors_;
    IndexedImage result_ = {};
    std::unordered_map<std::uint32_t, std::uint8_t> places_;
    std::array<Recent, size_t{1} << kRecentBits> recent_{}; ///< of values found lately
};

} // namespace

std::uint32_t tyr::image_pixel(const ImageRec &image, int x, int y)
{
    const unsigned char *row = row_of(image, y);
    const int bits = image.bits_per_pixel;
    if (bits < 8) {
        const unsigned most = (1U << bits) - 1U;
        return (row[x * bits / 8] >> shift_of(image, x)) & most;
    }
    const int count = bits / 8;
    const unsigned char *bytes = row + static_cast<std::ptrdiff_t>(x) * count;
    std::uint32_t value = 0;
    for (int i = 0; i < count; ++i) {
        value = value << 8 | bytes[image.byte_order == kHighByteFirst ? i : count - 1 - i];
    }
    return value;
}

IndexedImage tyr::image_index(const ImageRec &image)
{
    PlaceFinder finder(image);
    const bool high = image.byte_order == kHighByteFirst;
    switch (image.bits_per_pixel) {
    case 8:
        finder.index(PixelBytes<1, true>{});
        break;
    case 16:
        high ? finder.index(PixelBytes<2, true>{}) : finder.index(PixelBytes<2, false>{});
        break;
    case 24:
        high ? finder.index(PixelBytes<3, true>{}) : finder.index(PixelBytes<3, false>{});
        break;
    case 32:
        high ? finder.index(PixelBytes<4, true>{}) : finder.index(PixelBytes<4, false>{});
        break;
    default:
        finder.index(PixelBits{image});
    }
    return finder.take();
}

size_t tyr::image_equal_bytes(const unsigned char *a, const unsigned char *b, size_t count)
{
    constexpr size_t kWord = sizeof(std::uint64_t);
    constexpr size_t kBlock = 4 * kWord;
    const auto differ = [&](size_t i) {
        std::uint64_t x = 0;
        std::uint64_t y = 0;
        std::memcpy(&x, a + i, kWord);
        std::memcpy(&y, b + i, kWord);
        return x ^ y;
    };
    size_t i = 0;
    while (i + kBlock <= count &&
           (differ(i) | differ(i + kWord) | differ(i + 2 * kWord) | differ(i + 3 * kWord)) == 0) {
        i += kBlock;
    }
    while (i + kWord <= count && differ(i) == 0) {
        i += kWord;
    }
    while (i < count && a[i] == b[i]) {
        ++i;
    }
    return i;
}

namespace {

/// One place a pixel of so many bytes, each in the byte at `low`.
template <int Count> void store_row(const std::uint8_t *places, int width, unsigned char *low)
{
    for (int x = 0; x < width; ++x) {
        low[static_cast<std::ptrdiff_t>(x) * Count] = places[x];
    }
}

void store_bits(const ImageRec &image, const std::uint8_t *places, unsigned char *row)
{
    const int bits = image.bits_per_pixel;
    const unsigned most = (1U << bits) - 1U;
    for (int x = 0; x < image.width; ++x) {
        const int shift = shift_of(image, x);
        unsigned char &byte = row[x * bits / 8];
        byte = static_cast<unsigned char>((byte & ~(most << shift)) | (places[x] & most) << shift);
    }
}

} // namespace

void tyr::image_store_places(const IndexedImage &indexed, ImageRec *image)
{
    const int count = image->bits_per_pixel / 8;
    const int low = image->byte_order == kHighByteFirst ? count - 1 : 0;
    const std::uint8_t *places = indexed.places.data();
    for (int y = 0; y < image->height; ++y, places += image->width) {
        unsigned char *row = image->data + (row_of(*image, y) - image->data);
        switch (count) {
        case 0:
            store_bits(*image, places, row);
            break;
        case 1:
            store_row<1>(places, image->width, row);
            break;
        case 2:
            store_row<2>(places, image->width, row + low);
            break;
        case 3:
            store_row<3>(places, image->width, row + low);
            break;
        default:
            store_row<4>(places, image->width, row + low);
        }
    }
}
