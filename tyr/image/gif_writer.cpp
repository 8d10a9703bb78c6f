#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

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

/// The codes of strings that end in two different pixels, by the code of what stands before the
/// last pixel and that pixel: a hash table with open places.
class StringTable {
  public:
    void clear() { entries_.fill(0); }

    /// The entry of a string: holds its code, or is free for it.
    std::uint32_t &find(unsigned prefix, unsigned pixel)
    {
        const std::uint32_t key = prefix << kPixelBits | pixel;
        size_t place = key * kSpread >> (32 - kPlaceBits);
        while (entries_[place] != 0 && entries_[place] >> kGifMaxWidth != key) {
            place = (place + 1) % entries_.size();
        }
        return entries_[place];
    }
    static unsigned code(std::uint32_t entry) { return entry & (kGifCodes - 1); }
    static std::uint32_t entry(unsigned prefix, unsigned pixel, unsigned code)
    {
        return (prefix << kPixelBits | pixel) << kGifMaxWidth | code;
    }

  private:
    static constexpr int kPixelBits = 8;
    static constexpr int kPlaceBits = 14;                 ///< never more than a quarter full
    static constexpr std::uint32_t kSpread = 0x9E3779B1U; ///< of the golden section

    std::array<std::uint32_t, size_t{1} << kPlaceBits> entries_; ///< key and code; 0: free
};

/// Makes codes of pixels: the longest string that has a code, then that string and the pixel behind
/// it get the next one. Strings that differ only in how often their last pixel stands there make a
/// chain, by length: a run of pixels is passed in steps of whole strings.
class Compressor {
  public:
    Compressor(std::FILE *file, int code_size)
        : out_(file), code_size_(code_size), clear_(1U << code_size), chains_(kGifCodes)
    {
        reset();
        emit(clear_);
    }

    void put(std::span<const std::uint8_t> pixels)
    {
        const std::uint8_t *at = pixels.data();
        const std::uint8_t *const end = at + pixels.size();
        if (!is_begun_ && at != end) {
            is_begun_ = true;
            begin_string(*at++);
        }
        while (at != end) {
            if (*at != last_) {
                put_other(*at++);
                continue;
            }
            const auto behind = static_cast<size_t>(end - at) - 1;
            const size_t run = 1 + image_equal_bytes(at, at + 1, behind);
            put_run(run);
            at += run;
        }
    }

    void finish()
    {
        emit(code_);
        emit(clear_ + 1);
        out_.finish();
    }

  private:
    void begin_string(std::uint8_t pixel)
    {
        code_ = chain_ = last_ = pixel;
        length_ = 0;
    }

    /// The next code; 0, with all codes anew, where none is left.
    unsigned give_code()
    {
        if (free_ >= kGifCodes) {
            emit(clear_);
            reset();
            return 0;
        }
        return free_++;
    }

    /// A pixel that isn't like the one before.
    void put_other(std::uint8_t pixel)
    {
        std::uint32_t &entry = table_.find(code_, pixel);
        if (entry != 0) {
            code_ = chain_ = StringTable::code(entry);
            length_ = 0;
            last_ = pixel;
            return;
        }
        emit(code_);
        if (const unsigned code = give_code(); code != 0) {
            entry = StringTable::entry(code_, pixel, code);
            chains_[code].clear();
        }
        begin_string(pixel);
    }

    /// More pixels like the one before.
    void put_run(size_t count)
    {
        for (;;) {
            std::vector<std::uint16_t> &codes = chains_[chain_];
            const size_t known = codes.size() - length_;
            if (count <= known) {
                length_ += count;
                code_ = length_ > 0 ? codes[length_ - 1] : chain_;
                return;
            }
            count -= known + 1;
            emit(codes.empty() ? chain_ : codes.back());
            if (const unsigned code = give_code(); code != 0) {
                codes.push_back(static_cast<std::uint16_t>(code));
            }
            begin_string(last_);
        }
    }

    void reset()
    {
        table_.clear();
        for (unsigned root = 0; root < clear_; ++root) {
            chains_[root].clear();
        }
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
    StringTable table_;
    int code_size_;
    unsigned clear_;
    unsigned free_ = 0;
    int width_ = 0;
    std::vector<std::vector<std::uint16_t>> chains_; ///< by the first code: those behind it
    bool is_begun_ = false;
    unsigned code_ = 0;     ///< the string so far
    unsigned chain_ = 0;    ///< the first code of its chain
    size_t length_ = 0;     ///< its place behind that
    std::uint8_t last_ = 0; ///< its last pixel
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
            compressor.put({row, width});
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
