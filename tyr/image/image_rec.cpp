#include "tyr/image/image_rec.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string_view>

#include "tyr/base/msg.h"
#include "tyr/base/str.h"
#include "tyr/image/image_rec_private.h"
#include "tyr/place/domain_text.h"

using namespace tyr;

namespace {

constexpr std::array kStorageBits = {1, 4, 8, 16, 24, 32};
constexpr int kBitsPerByte = 8;
constexpr std::string_view kCommentMark = "** ";

bool is_side(int pixels)
{
    return pixels >= 1 && pixels <= kMaxImageSide;
}

bool is_sound(const ImageRec &image)
{
    if (!is_side(image.width) || !is_side(image.height) || image.bytes_per_line < 1 ||
        std::find(kStorageBits.begin(), kStorageBits.end(), image.bits_per_pixel) ==
            kStorageBits.end()) {
        return false;
    }
    const int least = (image.width * image.bits_per_pixel + kBitsPerByte - 1) / kBitsPerByte;
    return image.bytes_per_line >= least && static_cast<size_t>(image.bytes_per_line) <=
                                                kMaxImageBytes / static_cast<size_t>(image.height);
}

} // namespace

void IMG_init(ImageRec *image)
{
    *image = ImageRec{};
    image->byte_order = kHighByteFirst;
    image->transparent = -1;
    DOM_init(&image->domain);
}

void IMG_free(ImageRec *image)
{
    std::free(image->data);
    std::free(image->colors);
    image->data = nullptr;
    image->colors = nullptr;
    image->ncolors = 0;
}

void IMG_print(unsigned mask, const ImageRec *image)
{
    const auto real = [](float value) { return static_cast<double>(value); };
    MSG_out(mask, "Source: %d\n", image->source);
    MSG_out(mask, "Version: %d\n", image->version);
    MSG_out(mask, "Date: %s\n", image->date_text);
    MSG_out(mask, "Info: %s\n", image->info);
    MSG_out(mask, "Type: %d\n", image->type);
    MSG_out(mask, "Size: %dx%d\n", image->width, image->height);
    MSG_out(mask, "Resolution: %.2fx%.2f\n", real(image->res_x), real(image->res_y));
    MSG_out(mask, "Offset: %.2fx%.2f\n", real(image->off_x), real(image->off_y));
    MSG_out(mask, "Depth: %d\n", image->depth);
    MSG_out(mask, "Bits per pixel: %d\n", image->bits_per_pixel);
    MSG_out(mask, "Bytes per line: %d\n", image->bytes_per_line);
    MSG_out(mask, "Bytes order: %d\n", image->byte_order);
    MSG_out(mask, "Number of colors: %d\n", image->ncolors);
    MSG_out(mask, "Tranparent colors: %d\n", image->transparent);
    DOM_print(static_cast<int>(mask), &image->domain);
}

bool tyr::image_fits(const char *routine, const ImageRec &image)
{
    if (is_sound(image)) {
        return true;
    }
    MSG_out(kMsgWarn, "%s: Invalid picture: %dx%d of %d bits, rows of %d bytes\n", routine,
            image.width, image.height, image.bits_per_pixel, image.bytes_per_line);
    return false;
}

bool tyr::image_allocate(ImageRec *image)
{
    image->data = static_cast<unsigned char *>(std::calloc(
        static_cast<size_t>(image->height), static_cast<size_t>(image->bytes_per_line)));
    return image->data != nullptr;
}

bool tyr::image_allocate_colors(ImageRec *image, int count)
{
    image->colors =
        static_cast<float(*)[3]>(std::calloc(static_cast<size_t>(count), sizeof *image->colors));
    image->ncolors = image->colors ? count : 0;
    return image->colors != nullptr;
}

FilePtr tyr::image_open(const char *path)
{
    FilePtr file(FILE_open(path, "rb"));
    if (!file) {
        return file;
    }
    std::array<char, kCommentMark.size()> start = {};
    const size_t count = std::fread(start.data(), 1, start.size(), file.get());
    if (std::string_view(start.data(), count) == kCommentMark) {
        STR_skip_line(file.get());
        return file;
    }
    // put back what was read: a pipe can't be sought
    for (size_t i = count; i > 0; --i) {
        std::ungetc(static_cast<unsigned char>(start[i - 1]), file.get());
    }
    return file;
}

unsigned tyr::image_color_level(float part, unsigned full)
{
    return part > 0.0F ? static_cast<unsigned>(std::min(part, 1.0F) * static_cast<float>(full)) : 0;
}

bool tyr::image_close(const char *routine, const char *path, WholeFile &file)
{
    if (file.keep() == 0) {
        return true;
    }
    MSG_out(kMsgWarn, "%s: Unable to write: %s\n", routine, path);
    return false;
}
