#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <span>

#include "tyr/base/msg.h"
#include "tyr/base/str.h"
#include "tyr/image/gif.h"
#include "tyr/image/gif_format_private.h"
#include "tyr/image/image_rec_private.h"

using namespace tyr;

namespace {

constexpr float kFullColor = 255.0F;
constexpr int kMaxCodeSize = 8; ///< a pixel is a byte
constexpr size_t kMaxBlock = 255;
constexpr size_t kApplicationSize = 11;
constexpr size_t kControlSize = 4;

/// The head of a file, or of a picture in it.
struct Frame {
    int left = 0, top = 0, width = 0, height = 0;
    unsigned flags = 0;
};

/// A byte of the file, 0 behind its end.
unsigned get_byte(std::FILE *file)
{
    const int c = std::getc(file);
    return c == EOF ? 0U : static_cast<unsigned>(c);
}

int get_word(std::FILE *file)
{
    const unsigned low = get_byte(file);
    return static_cast<int>(low + (get_byte(file) << 8));
}

int table_size(unsigned flags)
{
    return 2 << (flags & kGifTableBits);
}

/// Reads one sub-block; 0 for the end of blocks or of the file.
size_t get_block(std::FILE *file, std::array<unsigned char, kMaxBlock> &block)
{
    const size_t size = get_byte(file);
    return std::fread(block.data(), 1, size, file);
}

bool read_screen(std::FILE *file, Frame &screen)
{
    std::array<char, 6> signature = {};
    if (std::fread(signature.data(), 1, signature.size(), file) != signature.size() ||
        std::memcmp(signature.data(), "GIF", 3) != 0) {
        return false;
    }
    screen.width = get_word(file);
    screen.height = get_word(file);
    screen.flags = get_byte(file);
    get_byte(file); // background
    get_byte(file); // aspect
    return std::feof(file) == 0;
}

void take_screen(const Frame &screen, ImageRec *image)
{
    STR_copy(image->info, kImageInfoRoom, "GIF");
    image->width = screen.width;
    image->height = screen.height;
    image->depth = 8;
    image->bits_per_pixel = 8;
    image->bytes_per_line = screen.width;
    image->color_type = kImageTable;
    image->ncolors = table_size(screen.flags);
    MSG_out(kMsgDebug, "Width: %d\n", image->width);
    MSG_out(kMsgDebug, "Height: %d\n", image->height);
    MSG_out(kMsgDebug, "Number of colors: %d\n", image->ncolors);
}

/// The colours of the file; a file without them has none.
bool read_colors(std::FILE *file, unsigned flags, ImageRec *image)
{
    const int count = image->ncolors;
    image->ncolors = 0;
    if ((flags & kGifTableFlag) == 0) {
        return true;
    }
    MSG_out(kMsgDebug, "color table size: %d\n", count);
    if (!image_allocate_colors(image, count)) {
        return false;
    }
    for (int i = 0; i < count; ++i) {
        for (float &part : image->colors[i]) {
            part = static_cast<float>(get_byte(file)) / kFullColor;
        }
    }
    return true;
}

void skip_blocks(std::FILE *file)
{
    std::array<unsigned char, kMaxBlock> block;
    while (get_block(file, block) > 0) {
    }
}

void read_control(std::FILE *file, ImageRec *image)
{
    constexpr std::array kDisposals = {
        "No disposal specified\n", "Do not dispose. graphic left in tact\n",
        "Restore to background color\n", "Restore to previous image\n"};
    std::array<unsigned char, kMaxBlock> block = {};
    MSG_out(kMsgDebug, "Graphics Control Extension\n");
    const size_t size = get_block(file, block);
    MSG_out(kMsgDebug, "Block size: %d\n", static_cast<int>(size));
    if (size < kControlSize) {
        return;
    }
    const size_t disposal = block[0] >> 2 & 7U;
    const bool wants_input = (block[0] & 2U) != 0;
    const bool is_transparent = (block[0] & kGifTransparentFlag) != 0;
    const int delay = block[1] + (block[2] << 8);
    if (disposal < kDisposals.size()) {
        MSG_out(kMsgDebug, "%s", kDisposals[disposal]);
    }
    MSG_out(kMsgDebug, wants_input ? "User input expected\n" : "User input not expected\n");
    MSG_out(kMsgDebug,
            is_transparent ? "Transparent index given\n" : "Transparent index not given\n");
    MSG_out(kMsgDebug, "Delay time: %d %.2f\n", delay, delay / 100.0);
    MSG_out(kMsgDebug, "Transparent color index: %d\n", block[3]);
    image->transparent = is_transparent ? block[3] : -1;
    skip_blocks(file);
}

void read_application(std::FILE *file)
{
    std::array<unsigned char, kMaxBlock> block = {};
    MSG_out(kMsgDebug, "Application Extension\n");
    const size_t size = get_block(file, block);
    MSG_out(kMsgDebug, "Block size: %d\n", static_cast<int>(size));
    if (size == 0) {
        return;
    }
    if (size >= kApplicationSize) {
        const auto *text = reinterpret_cast<const char *>(block.data());
        MSG_out(kMsgDebug, "Application identifier: %8.8s\n", text);
        MSG_out(kMsgDebug, "Application authentication: %3.3s\n", text + 8);
    }
    skip_blocks(file);
}

void read_extension(std::FILE *file, ImageRec *image)
{
    const unsigned label = get_byte(file);
    MSG_out(kMsgDebug, "Control Extension\n");
    MSG_out(kMsgDebug, "Extension Label: %2X\n", label);
    if (label == kGifControl) {
        read_control(file, image);
    } else if (label == kGifApplication) {
        read_application(file);
    } else {
        if (label == kGifComment) {
            MSG_out(kMsgDebug, "Comment Data\n");
        }
        skip_blocks(file);
    }
}

/// The colours of this picture alone, which serve a file that has no others.
bool take_own_colors(std::FILE *file, unsigned flags, ImageRec *image)
{
    if (image->ncolors == 0) {
        image->ncolors = table_size(flags);
        return read_colors(file, flags, image);
    }
    for (int i = 0; (flags & kGifTableFlag) != 0 && i < 3 * table_size(flags); ++i) {
        get_byte(file);
    }
    return true;
}

/// Goes to the first picture of the file. False when there is none.
bool find_frame(std::FILE *file, ImageRec *image, Frame &frame)
{
    int c = std::getc(file);
    for (; c != EOF && c != kGifImage; c = std::getc(file)) {
        if (c == kGifExtension) {
            read_extension(file, image);
        }
    }
    if (c == EOF) {
        return false;
    }
    frame.left = get_word(file);
    frame.top = get_word(file);
    frame.width = get_word(file);
    frame.height = get_word(file);
    frame.flags = get_byte(file);
    MSG_out(kMsgDebug, "X: %3d Y: %3d W: %3d H: %3d\n", frame.left, frame.top, frame.width,
            frame.height);
    if (!take_own_colors(file, frame.flags, image)) {
        return false;
    }
    return std::feof(file) == 0;
}

/// Codes of changing width out of blocks.
class CodeReader {
  public:
    explicit CodeReader(std::FILE *file) : file_(file) {}

    /// False at the end of the blocks.
    bool get(int width, unsigned &code)
    {
        while (count_ < width) {
            if (place_ == size_) {
                size_ = get_block(file_, block_);
                place_ = 0;
                if (size_ == 0) {
                    return false;
                }
            }
            bits_ |= static_cast<std::uint32_t>(block_[place_++]) << count_;
            count_ += 8;
        }
        code = bits_ & ((1U << width) - 1U);
        bits_ >>= width;
        count_ -= width;
        return true;
    }

  private:
    std::FILE *file_;
    std::array<unsigned char, kMaxBlock> block_;
    size_t size_ = 0, place_ = 0;
    std::uint32_t bits_ = 0;
    int count_ = 0; ///< bits on hand
};

/// Puts a picture's pixels at their place on the screen, row by row in the order of the file.
class FrameWriter {
  public:
    FrameWriter(const Frame &frame, ImageRec *image)
        : frame_(frame), image_(image),
          passes_((frame.flags & kGifInterlaceFlag) != 0 ? std::span<const GifPass>(kGifPasses)
                                                         : std::span<const GifPass>(kGifPlain))
    {
        y_ = passes_.front().first;
        if (frame.width == 0) {
            passes_ = {};
        }
        skip_empty_passes();
    }

    /// False when the picture is full.
    bool put(std::uint8_t pixel)
    {
        if (passes_.empty()) {
            return false;
        }
        const int x = frame_.left + x_;
        const int y = frame_.top + y_;
        if (x < image_->width && y < image_->height) {
            image_->data[static_cast<size_t>(y) * static_cast<size_t>(image_->width) +
                         static_cast<size_t>(x)] = pixel;
        }
        if (++x_ == frame_.width) {
            x_ = 0;
            y_ += passes_.front().step;
            skip_empty_passes();
        }
        return true;
    }

  private:
    void skip_empty_passes()
    {
        while (!passes_.empty() && y_ >= frame_.height) {
            passes_ = passes_.subspan(1);
            y_ = passes_.empty() ? 0 : passes_.front().first;
        }
    }

    Frame frame_;
    ImageRec *image_;
    std::span<const GifPass> passes_;
    int x_ = 0, y_ = 0;
};

/// The strings of the code table: each is another one and a pixel behind it.
class Decompressor {
  public:
    Decompressor(std::FILE *file, int code_size, FrameWriter &out)
        : codes_(file), out_(out), code_size_(code_size), clear_(1U << code_size)
    {
        for (unsigned i = 0; i < clear_; ++i) {
            suffix_[i] = static_cast<std::uint8_t>(i);
        }
        reset();
    }

    /// Decodes to the end code, the end of the data, damage, or the end of the picture.
    void run()
    {
        unsigned code = 0;
        while (codes_.get(width_, code) && code != clear_ + 1) {
            if (code == clear_) {
                reset();
            } else if (!take(code)) {
                return;
            }
        }
    }

  private:
    void reset()
    {
        free_ = clear_ + 2;
        width_ = code_size_ + 1;
        has_old_ = false;
    }

    bool take(unsigned code)
    {
        if (!has_old_) {
            has_old_ = true;
            old_ = code;
            first_ = static_cast<std::uint8_t>(code);
            return code < clear_ && out_.put(first_);
        }
        size_t height = 0;
        unsigned part = code;
        if (code >= free_) { // the string that this code is about to make
            stack_[height++] = first_;
            part = old_;
        }
        for (; part >= clear_; part = prefix_[part]) {
            stack_[height++] = suffix_[part];
        }
        first_ = suffix_[part];
        stack_[height++] = first_;
        add();
        old_ = code < free_ ? code : old_;
        while (height > 0) {
            if (!out_.put(stack_[--height])) {
                return false;
            }
        }
        return true;
    }

    /// A full table stays as it is until it is cleared.
    void add()
    {
        if (free_ >= kGifCodes) {
            return;
        }
        prefix_[free_] = static_cast<std::uint16_t>(old_);
        suffix_[free_] = first_;
        ++free_;
        if (free_ == 1U << width_ && width_ < kGifMaxWidth) {
            ++width_;
        }
    }

    CodeReader codes_;
    FrameWriter &out_;
    int code_size_;
    unsigned clear_;
    unsigned free_ = 0;
    int width_ = 0;
    bool has_old_ = false;
    unsigned old_ = 0;
    std::uint8_t first_ = 0;
    std::array<std::uint16_t, kGifCodes> prefix_ = {};
    std::array<std::uint8_t, kGifCodes> suffix_ = {};
    std::array<std::uint8_t, kGifCodes + 1> stack_;
};

void read_pixels(std::FILE *file, const Frame &frame, ImageRec *image)
{
    const int code_size = static_cast<int>(get_byte(file));
    if (code_size < 1 || code_size > kMaxCodeSize) {
        return;
    }
    FrameWriter out(frame, image);
    Decompressor(file, code_size, out).run();
}

} // namespace

int GIF_read(const char *path, ImageRec *image, int header_only)
{
    const FilePtr file = image_open(path);
    if (!file) {
        MSG_out(kMsgWarn, "GIF_read: Unable to open file\n");
        return 0;
    }
    Frame screen;
    if (!read_screen(file.get(), screen)) {
        MSG_out(kMsgWarn, "GIF_read: Not a GIF file\n");
        return 0;
    }
    take_screen(screen, image);
    if (!image_fits("GIF_read", *image)) {
        return 0;
    }
    if (header_only) {
        return 1;
    }
    if (!read_colors(file.get(), screen.flags, image) || !image_allocate(image)) {
        MSG_out(kMsgWarn, "Unable to allocate data buffer.\n");
        IMG_free(image);
        return 0;
    }
    Frame frame;
    if (find_frame(file.get(), image, frame)) {
        read_pixels(file.get(), frame, image);
    }
    return 1;
}
