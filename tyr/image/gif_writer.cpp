#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <optional>
#include <span>

#include "tyr/base/msg.h"
#include "tyr/image/gif.h"
#include "tyr/image/gif_format_private.h"
#include "tyr/image/palette_private.h"

using namespace tyr;

namespace {

constexpr size_t kMaxBlock = 254;
constexpr int kDelay = 10; ///< hundredths of a second
constexpr int kMaxDelay = 65535;
constexpr int kLeastCodeSize = 2;

struct State {
    bool interlace = false;
    bool transparent = false;
};

State state;

void put_byte(std::FILE *file, unsigned value)
{
    std::putc(static_cast<int>(value & 0xFFU), file);
}

void put_word(std::FILE *file, int value)
{
    put_byte(file, static_cast<unsigned>(value));
    put_byte(file, static_cast<unsigned>(value) >> 8);
}

/// Codes of changing width, packed into blocks.
class CodeWriter {
  public:
    explicit CodeWriter(std::FILE *file) : file_(file) {}

    void put(unsigned code, int width)
    {
        bits_ |= code << count_;
        count_ += width;
        while (count_ >= 8) {
            take_byte();
        }
    }

    void finish()
    {
        while (count_ > 0) {
            take_byte();
        }
        write_block();
        put_byte(file_, 0);
    }

  private:
    void take_byte()
    {
        block_[size_++] = static_cast<unsigned char>(bits_);
        bits_ >>= 8;
        count_ -= 8;
        if (size_ == block_.size()) {
            write_block();
        }
    }

    void write_block()
    {
        if (size_ > 0) {
            put_byte(file_, static_cast<unsigned>(size_));
            std::fwrite(block_.data(), 1, size_, file_);
            size_ = 0;
        }
    }

    std::FILE *file_;
    std::uint32_t bits_ = 0;
    int count_ = 0; ///< bits on hand
    std::array<unsigned char, kMaxBlock> block_;
    size_t size_ = 0;
};

/// The strings seen since the last clear, by prefix and pixel: a hash table with open places.
class StringTable {
  public:
    void clear() { keys_.fill(kFree); }

    /// The place of a string: holds its code, or is free for it.
    size_t find(std::uint32_t key) const
    {
        size_t place = (key >> kGifMaxWidth << 5 ^ key) % kPlaces;
        while (keys_[place] != kFree && keys_[place] != key) {
            place = (place + 1) % kPlaces;
        }
        return place;
    }
    bool has(size_t place) const { return keys_[place] != kFree; }
    unsigned code(size_t place) const { return codes_[place]; }
    void put(size_t place, std::uint32_t key, unsigned code)
    {
        keys_[place] = key;
        codes_[place] = static_cast<std::uint16_t>(code);
    }

  private:
    static constexpr size_t kPlaces = 4 * kGifCodes; ///< never more than a quarter full
    static constexpr std::uint32_t kFree = ~std::uint32_t{0};

    std::array<std::uint32_t, kPlaces> keys_;
    std::array<std::uint16_t, kPlaces> codes_;
};

class Compressor {
  public:
    Compressor(std::FILE *file, int code_size)
        : out_(file), code_size_(code_size), clear_(1U << code_size)
    {
        reset();
        emit(clear_);
    }

    void put(unsigned pixel)
    {
        if (!prefix_) {
            prefix_ = last_ = pixel;
            return;
        }
        if (pixel == last_) {
            put_same(pixel);
            return;
        }
        last_ = pixel;
        const std::uint32_t key = *prefix_ + (pixel << kGifMaxWidth);
        const size_t place = table_.find(key);
        if (table_.has(place)) {
            prefix_ = table_.code(place);
            return;
        }
        emit(*prefix_);
        prefix_ = pixel;
        if (free_ >= kGifCodes) {
            emit(clear_);
            reset();
        } else {
            table_.put(place, key, free_++);
        }
    }

    void finish()
    {
        emit(prefix_.value_or(0));
        emit(clear_ + 1);
        out_.finish();
    }

  private:
    /// A pixel like the one before: its strings stand in a table of their own, without a search.
    void put_same(unsigned pixel)
    {
        std::uint16_t &same = same_[*prefix_];
        if (same != 0) {
            prefix_ = same;
            return;
        }
        emit(*prefix_);
        prefix_ = pixel;
        if (free_ >= kGifCodes) {
            emit(clear_);
            reset();
        } else {
            same = static_cast<std::uint16_t>(free_++);
        }
    }

    void reset()
    {
        table_.clear();
        same_.fill(0);
        free_ = clear_ + 2;
        width_ = code_size_ + 1;
    }

    void emit(unsigned code)
    {
        out_.put(code, width_);
        if (free_ >= 1U << width_ && width_ < kGifMaxWidth) {
            ++width_;
        }
    }

    CodeWriter out_;
    StringTable table_;                         ///< strings that end in two different pixels
    std::array<std::uint16_t, kGifCodes> same_; ///< by prefix: its last pixel once more
    unsigned last_ = 0;                         ///< the pixel put last
    int code_size_;
    unsigned clear_;
    unsigned free_ = 0;
    int width_ = 0;
    std::optional<unsigned> prefix_;
};

/// Bits of a palette place.
int place_bits(size_t colors)
{
    return std::max(1, static_cast<int>(std::bit_width(colors - 1)));
}

/// The head of a file, with a colour table of so many bits behind it, or with none.
void write_screen(std::FILE *file, const ImageRec &image, std::optional<int> bits)
{
    std::fputs("GIF89a", file);
    put_word(file, image.width);
    put_word(file, image.height);
    const unsigned size = static_cast<unsigned>(bits.value_or(1)) - 1U;
    put_byte(file, bits ? kGifTableFlag + size * 16 + size : 0U);
    put_byte(file, 0); // background
    put_byte(file, 0); // aspect
}

void write_colors(std::FILE *file, const IndexedImage &indexed, int bits)
{
    for (size_t i = 0; i < size_t{1} << bits; ++i) {
        std::fwrite(indexed.colors[i].data(), 1, indexed.colors[i].size(), file);
    }
}

/// The place of a transparent pixel value. One that doesn't occur gets a place that no pixel has;
/// without such a place there is none.
std::optional<unsigned> transparent_place(const IndexedImage &indexed, int pixel)
{
    const auto &values = indexed.values;
    const auto found = std::find(values.begin(), values.end(), static_cast<std::uint32_t>(pixel));
    if (found == values.end() && values.size() == kPaletteSize) {
        return std::nullopt;
    }
    return static_cast<unsigned>(found - values.begin());
}

void write_control(std::FILE *file, std::optional<unsigned> transparent, int delay)
{
    put_byte(file, kGifExtension);
    put_byte(file, kGifControl);
    put_byte(file, 4); // bytes that follow
    put_byte(file, transparent ? unsigned{kGifTransparentFlag} : 0U);
    put_word(file, delay);
    put_byte(file, transparent.value_or(0));
    put_byte(file, 0);
}

/// The head of a picture, which may have a colour table of its own, of so many bits.
void write_image_head(std::FILE *file, const ImageRec &image, std::optional<int> bits)
{
    put_byte(file, kGifImage);
    put_word(file, 0); // left
    put_word(file, 0); // top
    put_word(file, image.width);
    put_word(file, image.height);
    const unsigned table = bits ? kGifTableFlag + static_cast<unsigned>(*bits) - 1U : 0U;
    put_byte(file, table + (state.interlace ? kGifInterlaceFlag : 0U));
}

void write_pixels(std::FILE *file, const ImageRec &image, const IndexedImage &indexed,
                  int code_size)
{
    put_byte(file, static_cast<unsigned>(code_size));
    Compressor compressor(file, code_size);
    const std::span<const GifPass> passes = state.interlace ? std::span<const GifPass>(kGifPasses)
                                                            : std::span<const GifPass>(kGifPlain);
    const auto width = static_cast<size_t>(image.width);
    for (const GifPass &pass : passes) {
        for (int y = pass.first; y < image.height; y += pass.step) {
            const std::uint8_t *row = &indexed.places[static_cast<size_t>(y) * width];
            std::for_each(row, row + width, [&](std::uint8_t place) { compressor.put(place); });
        }
    }
    compressor.finish();
}

void write_picture(std::FILE *file, const ImageRec &image, const IndexedImage &indexed)
{
    const int bits = place_bits(indexed.values.size());
    const int code_size = std::max(bits, kLeastCodeSize);
    MSG_out(kMsgDebug, "num_color: %d\n", static_cast<int>(indexed.values.size()));
    MSG_out(kMsgDebug, "num_color+: %d\n", 1 << bits);
    MSG_out(kMsgDebug, "code_size: %d\n", code_size);
    write_screen(file, image, bits);
    write_colors(file, indexed, bits);
    if (state.transparent) {
        if (const auto place = transparent_place(indexed, image.transparent)) {
            write_control(file, place, kDelay);
        }
    }
    write_image_head(file, image, std::nullopt);
    write_pixels(file, image, indexed, code_size);
    put_byte(file, kGifTrailer);
}

/// The block by which readers know that the pictures begin anew behind the last.
void write_endless(std::FILE *file)
{
    put_byte(file, kGifExtension);
    put_byte(file, kGifApplication);
    put_byte(file, 11); // bytes that follow
    std::fputs("NETSCAPE2.0", file);
    put_byte(file, 3);
    put_byte(file, 1);
    put_word(file, 0); // rounds: no end
    put_byte(file, 0);
}

/// A picture of a loop, with its own colours.
void write_loop_picture(std::FILE *file, const ImageRec &image, int delay)
{
    const IndexedImage indexed = image_index(image);
    const int bits = place_bits(indexed.values.size());
    write_control(file, std::nullopt, std::clamp(delay, 0, kMaxDelay));
    write_image_head(file, image, bits);
    write_colors(file, indexed, bits);
    write_pixels(file, image, indexed, std::max(bits, kLeastCodeSize));
}

/// All pictures of a loop; false, told, for one that can't be had or has another size.
bool write_loop(std::FILE *file, std::span<const int> delays, GifSource next)
{
    int width = 0;
    int height = 0;
    for (size_t i = 0; i < delays.size(); i++) {
        ImageRec image;
        if (next(static_cast<int>(i), &image) == 0) {
            return false;
        }
        bool is_good = image_fits("GIF_write_loop", image);
        if (is_good && i == 0) {
            width = image.width;
            height = image.height;
            write_screen(file, image, std::nullopt);
            write_endless(file);
        } else if (is_good && (image.width != width || image.height != height)) {
            MSG_out(kMsgWarn, "GIF_write_loop: pictures of %dx%d and %dx%d\n", width, height,
                    image.width, image.height);
            is_good = false;
        }
        if (is_good) {
            write_loop_picture(file, image, delays[i]);
        }
        IMG_free(&image);
        if (!is_good) {
            return false;
        }
    }
    put_byte(file, kGifTrailer);
    return true;
}

} // namespace

int GIF_write_loop(const char *path, int count, const int *delays, GifSource next)
{
    WholeFile file;
    if (count < 1 || !file.open(path)) {
        MSG_out(kMsgWarn, "Unable to open GIF file\n");
        return 0;
    }
    if (!write_loop(file.stream(), {delays, static_cast<size_t>(count)}, next)) {
        return 0;
    }
    return image_close("GIF_write_loop", path, file) ? 1 : 0;
}

int GIF_write(const char *path, ImageRec *image)
{
    MSG_out(kMsgDebug, "Width: %d\n", image->width);
    MSG_out(kMsgDebug, "Height: %d\n", image->height);
    MSG_out(kMsgDebug, "Depth: %d\n", image->depth);
    MSG_out(kMsgDebug, "Bytes per line: %d\n", image->bytes_per_line);
    if (!image_fits("GIF_write", *image)) {
        return 0;
    }
    WholeFile file;
    if (!file.open(path)) {
        MSG_out(kMsgWarn, "Unable to open GIF file\n");
        return 0;
    }
    const IndexedImage indexed = image_index(*image);
    image_store_places(indexed, image);
    write_picture(file.stream(), *image, indexed);
    return image_close("GIF_write", path, file) ? 1 : 0;
}

void gset_gif_interlace(int on)
{
    state.interlace = on != 0;
}

void gset_gif_transparent(int on)
{
    state.transparent = on != 0;
}
