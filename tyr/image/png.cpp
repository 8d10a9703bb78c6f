#include "tyr/image/png.h"

#include <array>
#include <csetjmp>
#include <string>
#include <vector>

#include <png.h>

#include "tyr/base/date.h"
#include "tyr/base/msg.h"
#include "tyr/base/str.h"
#include "tyr/gks/gks.h"
#include "tyr/image/palette_private.h"

using namespace tyr;

// libpng leaves by longjmp: whatever calls it stands in a plain function that owns nothing and is
// run by attempt().

namespace {

constexpr size_t kSignatureSize = 8;
constexpr int kPngDepth = 8;
constexpr float kFullColor = 255.0F;
constexpr const char *kSoftware = "TYR - Gale Bench v5.0";

/// Where libpng's reason is kept until the jump is over.
struct Reason {
    std::array<char, 128> text = {};
};

void keep_reason(png_structp png, png_const_charp text)
{
    auto *reason = static_cast<Reason *>(png_get_error_ptr(png));
    STR_copy(reason->text.data(), reason->text.size(), text);
    png_longjmp(png, 1);
}

void pass_over(png_structp /*png*/, png_const_charp text)
{
    MSG_out(kMsgDebug, "png: %s\n", text);
}

/// libpng's handles for one file that is read.
struct Reading {
    Reason reason;
    png_structp png =
        png_create_read_struct(PNG_LIBPNG_VER_STRING, &reason, keep_reason, pass_over);
    png_infop info = png ? png_create_info_struct(png) : nullptr;
    std::FILE *file = nullptr;
    ImageRec *image = nullptr;
    int passes = 1;

    Reading() = default;
    Reading(const Reading &) = delete;
    Reading &operator=(const Reading &) = delete;
    ~Reading() { png_destroy_read_struct(&png, &info, nullptr); }
};

/// The same for one that is written.
struct Writing {
    Reason reason;
    png_structp png =
        png_create_write_struct(PNG_LIBPNG_VER_STRING, &reason, keep_reason, pass_over);
    png_infop info = png ? png_create_info_struct(png) : nullptr;
    std::FILE *file = nullptr;
    int width = 0, height = 0;
    std::array<png_color, kPaletteSize> palette = {};
    std::array<png_text, 3> texts = {};
    png_bytepp rows = nullptr;

    Writing() = default;
    Writing(const Writing &) = delete;
    Writing &operator=(const Writing &) = delete;
    ~Writing() { png_destroy_write_struct(&png, &info); }
};

/// Runs a step. False when libpng left it.
template <class Work> bool attempt(void (*step)(Work &), Work &work)
{
    if (!work.info || setjmp(png_jmpbuf(work.png)) != 0) {
        return false;
    }
    step(work);
    return true;
}

/// Brings the forms that the record can't hold to those that it can.
void ask_for_plain_form(png_structp png, png_infop info)
{
    const int color_type = png_get_color_type(png, info);
    if (png_get_bit_depth(png, info) == 16) {
        png_set_scale_16(png);
    }
    if (png_get_bit_depth(png, info) == 2) {
        if (color_type == PNG_COLOR_TYPE_PALETTE) {
            png_set_packing(png);
        } else {
            png_set_expand_gray_1_2_4_to_8(png);
        }
    }
    if (color_type == PNG_COLOR_TYPE_GRAY_ALPHA) {
        png_set_gray_to_rgb(png);
    }
    if ((color_type & PNG_COLOR_MASK_ALPHA) != 0) {
        png_set_strip_alpha(png);
        png_set_filler(png, 0, PNG_FILLER_BEFORE);
    }
}

void read_header(Reading &work)
{
    png_init_io(work.png, work.file);
    png_set_sig_bytes(work.png, kSignatureSize);
    png_read_info(work.png, work.info);
    ask_for_plain_form(work.png, work.info);
    work.passes = png_set_interlace_handling(work.png);
    png_uint_32 width = 0;
    png_uint_32 height = 0;
    int depth = 0;
    int color_type = 0;
    int interlace = 0;
    int compression = 0;
    int filter = 0;
    png_get_IHDR(work.png, work.info, &width, &height, &depth, &color_type, &interlace,
                 &compression, &filter);
    MSG_out(kMsgDebug, "%d %d %d - %d %d - %d %d\n", static_cast<int>(width),
            static_cast<int>(height), depth, color_type, interlace, compression, filter);
    png_read_update_info(work.png, work.info);
    work.image->width = static_cast<int>(width);
    work.image->height = static_cast<int>(height);
    work.image->bytes_per_line = static_cast<int>(png_get_rowbytes(work.png, work.info));
}

void take_depth(const Reading &work)
{
    ImageRec *image = work.image;
    const int depth = png_get_bit_depth(work.png, work.info);
    const bool is_color = (png_get_color_type(work.png, work.info) & PNG_COLOR_MASK_COLOR) != 0;
    const bool is_palette = png_get_color_type(work.png, work.info) == PNG_COLOR_TYPE_PALETTE;
    const bool is_rgb = is_color && !is_palette;
    image->depth = is_rgb ? 3 * depth : depth;
    image->bits_per_pixel = is_rgb ? image->bytes_per_line / image->width * 8 : depth;
    image->byte_order = kHighByteFirst;
    image->color_type = is_palette ? kImageTable : kImageMasks;
    if (is_rgb) {
        image->red_mask = 0xff0000;
        image->green_mask = 0xff00;
        image->blue_mask = 0xff;
    }
}

bool take_palette(const Reading &work)
{
    png_colorp palette = nullptr;
    int count = 0;
    if (png_get_PLTE(work.png, work.info, &palette, &count) == 0 ||
        work.image->color_type != kImageTable) {
        return true;
    }
    MSG_out(kMsgDebug, "color table size: %d\n", count);
    if (!image_allocate_colors(work.image, count)) {
        return false;
    }
    for (int i = 0; i < count; ++i) {
        work.image->colors[i][0] = static_cast<float>(palette[i].red) / kFullColor;
        work.image->colors[i][1] = static_cast<float>(palette[i].green) / kFullColor;
        work.image->colors[i][2] = static_cast<float>(palette[i].blue) / kFullColor;
    }
    return true;
}

void read_rows(Reading &work)
{
    const auto stride = static_cast<size_t>(work.image->bytes_per_line);
    for (int pass = 0; pass < work.passes; ++pass) {
        for (int y = 0; y < work.image->height; ++y) {
            png_read_row(work.png, work.image->data + static_cast<size_t>(y) * stride, nullptr);
        }
    }
}

bool read_picture(Reading &work)
{
    if (!take_palette(work) || !image_allocate(work.image)) {
        MSG_out(kMsgWarn, "Unable to allocate data buffer.\n");
        return false;
    }
    return attempt(read_rows, work);
}

bool has_signature(std::FILE *file)
{
    std::array<png_byte, kSignatureSize> signature = {};
    return std::fread(signature.data(), 1, signature.size(), file) == signature.size() &&
           png_sig_cmp(signature.data(), 0, signature.size()) == 0;
}

/// "06 Mar 1999 12:30:00 GMT"
std::string creation_time()
{
    DateRec now;
    TIME_header_now(&now);
    return STR_print("%02d %.3s %04d %02d:%02d:%02d GMT", now.day, TIME_month_name(now.month),
                     now.year, now.hour, now.minute, now.second);
}

void write_file(Writing &work)
{
    png_init_io(work.png, work.file);
    png_set_IHDR(work.png, work.info, static_cast<png_uint_32>(work.width),
                 static_cast<png_uint_32>(work.height), kPngDepth, PNG_COLOR_TYPE_PALETTE,
                 PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_set_PLTE(work.png, work.info, work.palette.data(), static_cast<int>(work.palette.size()));
    png_set_text(work.png, work.info, work.texts.data(), static_cast<int>(work.texts.size()));
    png_write_info(work.png, work.info);
    png_write_image(work.png, work.rows);
    png_write_end(work.png, nullptr);
}

bool write_indexed(std::FILE *file, IndexedImage &indexed, const ImageRec &image)
{
    Writing work;
    std::array<std::string, 3> keys = {"Title", "Software", "Creation Time"};
    std::array<std::string, 3> texts = {ginq_title(), kSoftware, creation_time()};
    std::vector<png_bytep> rows;
    rows.reserve(static_cast<size_t>(image.height));
    for (int y = 0; y < image.height; ++y) {
        rows.push_back(&indexed.places[static_cast<size_t>(y) * static_cast<size_t>(image.width)]);
    }
    for (size_t i = 0; i < kPaletteSize; ++i) {
        const auto &color = indexed.colors[i];
        work.palette[i] = {color[0], color[1], color[2]};
    }
    for (size_t i = 0; i < texts.size(); ++i) {
        work.texts[i].compression = PNG_TEXT_COMPRESSION_NONE;
        work.texts[i].key = keys[i].data();
        work.texts[i].text = texts[i].data();
        work.texts[i].text_length = texts[i].size();
    }
    work.file = file;
    work.width = image.width;
    work.height = image.height;
    work.rows = rows.data();
    if (!attempt(write_file, work)) {
        MSG_out(kMsgWarn, "IMG_write_png: %s\n", work.reason.text.data());
        return false;
    }
    return true;
}

} // namespace

int IMG_read_png(const char *path, ImageRec *image, int header_only)
{
    const FilePtr file = image_open(path);
    Reading work;
    work.file = file.get();
    work.image = image;
    if (!file || !has_signature(file.get()) || !attempt(read_header, work)) {
        MSG_out(kMsgWarn, "IMG_read_png: Not a PNG file: %s %s\n", path, work.reason.text.data());
        return 0;
    }
    STR_copy(image->info, kImageInfoRoom, "PNG");
    take_depth(work);
    if (!image_fits("IMG_read_png", *image)) {
        return 0;
    }
    if (header_only) {
        return 1;
    }
    if (!read_picture(work)) {
        MSG_out(kMsgWarn, "IMG_read_png: Damaged PNG file: %s %s\n", path, work.reason.text.data());
        IMG_free(image);
        return 0;
    }
    return 1;
}

int IMG_write_png(const char *path, ImageRec *image)
{
    if (!image_fits("IMG_write_png", *image)) {
        return 0;
    }
    WholeFile file;
    if (!file.open(path)) {
        MSG_out(kMsgWarn, "Unable to open PNG file\n");
        return 0;
    }
    IndexedImage indexed = image_index(*image);
    MSG_out(kMsgDebug, "num_color: %d\n", static_cast<int>(indexed.values.size()));
    return write_indexed(file.stream(), indexed, *image) && image_close("IMG_write_png", path, file)
               ? 1
               : 0;
}
