#include "tyr/image/xwd.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "tyr/base/msg.h"
#include "tyr/base/str.h"
#include "tyr/image/image_rec_private.h"
#include "tyr/image/palette_private.h"

using namespace tyr;

namespace {

/// The 32-bit fields of the header, in the file's order.
enum Field {
    kHeaderSize,
    kVersion,
    kFormat,
    kDepth,
    kWidth,
    kHeight,
    kXOffset,
    kByteOrder,
    kBitmapUnit,
    kBitOrder,
    kBitmapPad,
    kBitsPerPixel,
    kBytesPerLine,
    kVisualClass,
    kRedMask,
    kGreenMask,
    kBlueMask,
    kBitsPerRgb,
    kMapEntries,
    kColorCount,
    kWindowWidth,
    kWindowHeight,
    kWindowX,
    kWindowY,
    kBorderWidth,
    kFieldCount
};

constexpr size_t kHeaderBytes = 4 * kFieldCount;
constexpr std::uint32_t kXwdVersion = 7;
constexpr std::uint32_t kZPixmap = 2;
constexpr std::uint32_t kUnit = 32;
constexpr std::uint32_t kPseudoColor = 3;
constexpr std::uint32_t kTrueColor = 4;
constexpr std::uint32_t kDirectColor = 5;
constexpr std::uint32_t kRgbBits = 8;
constexpr unsigned kAllParts = 7;        ///< flags of a colour: red, green and blue count
constexpr size_t kColorBytes = 12;       ///< pixel, three parts, flags, pad
constexpr size_t kPaddedColorBytes = 16; ///< the same as a 64-bit host's memory has it
constexpr std::uint32_t kMaxColors = 65536;
constexpr unsigned kFullColor = 65535;
constexpr int kMostDepth = 32;
constexpr const char *kDefaultName = "xwdump";

using Header = std::array<std::uint32_t, kFieldCount>;

bool complain(const char *text)
{
    std::fputs(text, stderr);
    return false;
}

std::uint32_t number_at(const unsigned char *bytes, int count)
{
    std::uint32_t value = 0;
    for (int i = 0; i < count; ++i) {
        value = value << 8 | bytes[i];
    }
    return value;
}

void put_number(std::string &out, std::uint32_t value, int count)
{
    for (int shift = 8 * (count - 1); shift >= 0; shift -= 8) {
        out += static_cast<char>(value >> shift & 0xFFU);
    }
}

/// A number of the file as an int; what is beyond any size becomes -1.
int size_of(std::uint32_t value)
{
    return value <= INT32_MAX ? static_cast<int>(value) : -1;
}

bool read_header(std::FILE *file, int most_depth, Header &header)
{
    std::array<unsigned char, kHeaderBytes> bytes;
    if (std::fread(bytes.data(), 1, bytes.size(), file) != bytes.size()) {
        return complain("Unable to read dump file header\n");
    }
    for (size_t i = 0; i < header.size(); ++i) {
        header[i] = number_at(&bytes[4 * i], 4);
    }
    if (header[kVersion] != kXwdVersion) {
        return complain("XWD file format version mismatch\n");
    }
    if (header[kHeaderSize] < kHeaderBytes) {
        return complain("XWD header size is too small.\n");
    }
    if (header[kDepth] > static_cast<std::uint32_t>(most_depth)) {
        return complain(
            STR_print("Incorrect depth: %u > %d\n", header[kDepth], most_depth).c_str());
    }
    if (header[kFormat] != kZPixmap && header[kDepth] != 1) {
        return complain("XWD pixmap format isn't supported\n"); // planes, one behind the other
    }
    return true;
}

/// The name fills the rest of the header; what the record has no room for is passed over.
bool read_name(std::FILE *file, size_t size, ImageRec *image)
{
    std::string name;
    for (size_t i = 0; i < size; ++i) {
        const int c = std::getc(file);
        if (c == EOF) {
            return complain("Unable to read window name from dump file.\n");
        }
        if (name.size() < kImageInfoRoom) {
            name += static_cast<char>(c);
        }
    }
    STR_copy(image->info, kImageInfoRoom, name.c_str());
    return true;
}

void take_header(const Header &header, ImageRec *image)
{
    image->width = size_of(header[kWidth]);
    image->height = size_of(header[kHeight]);
    image->byte_order = header[kByteOrder] != 0 ? kHighByteFirst : kLowByteFirst;
    image->depth = size_of(header[kDepth]);
    image->bytes_per_line = size_of(header[kBytesPerLine]);
    image->bits_per_pixel = size_of(header[kBitsPerPixel]);
    image->red_mask = header[kRedMask];
    image->green_mask = header[kGreenMask];
    image->blue_mask = header[kBlueMask];
    // some writers tell of a table and give none: the masks are what counts then
    const bool has_masks = (image->red_mask | image->green_mask | image->blue_mask) != 0;
    image->color_type =
        header[kVisualClass] == kTrueColor || (header[kColorCount] == 0 && has_masks) ? kImageMasks
                                                                                      : kImageTable;
}

/// Some writers put a colour into the file as their memory has it, with four bytes more: the file's
/// length tells.
size_t color_size(const char *path, const Header &header, size_t data_size)
{
    const size_t padded = header[kHeaderSize] + kPaddedColorBytes * header[kColorCount] + data_size;
    return FILE_size(path) == static_cast<long>(padded) ? kPaddedColorBytes : kColorBytes;
}

bool read_colors(std::FILE *file, std::uint32_t count, size_t size, ImageRec *image)
{
    constexpr const char *kFailure = "Unable to read color map from dump file.\n";
    if (count == 0) {
        return true;
    }
    const bool wanted = image->color_type == kImageTable;
    if (count > kMaxColors || (wanted && !image_allocate_colors(image, static_cast<int>(count)))) {
        return complain(kFailure);
    }
    std::array<unsigned char, kPaddedColorBytes> entry;
    for (std::uint32_t i = 0; i < count; ++i) {
        if (std::fread(entry.data(), 1, size, file) != size) {
            return complain(kFailure);
        }
        const std::uint32_t pixel = number_at(entry.data(), 4);
        for (size_t part = 0; wanted && pixel < count && part < 3; ++part) {
            image->colors[pixel][part] =
                static_cast<float>(number_at(&entry[4 + 2 * part], 2)) / kFullColor;
        }
    }
    return true;
}

bool read_data(std::FILE *file, ImageRec *image, size_t size)
{
    if (!image_allocate(image)) {
        return complain("Unable to allocate data buffer.\n");
    }
    return std::fread(image->data, 1, size, file) == size ||
           complain("Unable to read pixmap from dump file.\n");
}

bool read_dump(const char *path, ImageRec *image, bool header_only)
{
    const FilePtr file = image_open(path);
    if (!file) {
        return complain("Unable to open dump file\n");
    }
    Header header;
    const int most_depth = image->depth > 0 ? image->depth : kMostDepth;
    if (!read_header(file.get(), most_depth, header) ||
        !read_name(file.get(), header[kHeaderSize] - kHeaderBytes, image)) {
        return false;
    }
    take_header(header, image);
    if (!image_fits("IMG_read_xwd", *image)) {
        return false;
    }
    if (header_only) {
        return true;
    }
    const size_t size =
        static_cast<size_t>(image->height) * static_cast<size_t>(image->bytes_per_line);
    return read_colors(file.get(), header[kColorCount], color_size(path, header, size), image) &&
           read_data(file.get(), image, size);
}

const char *name_of(const ImageRec &image)
{
    return image.info[0] ? image.info : kDefaultName;
}

std::string header_bytes(const ImageRec &image)
{
    const auto number = [](int value) { return static_cast<std::uint32_t>(value); };
    const bool has_table = image.color_type == kImageTable && image.colors;
    Header header = {};
    header[kHeaderSize] =
        static_cast<std::uint32_t>(kHeaderBytes + std::string_view(name_of(image)).size() + 1);
    header[kVersion] = kXwdVersion;
    header[kFormat] = kZPixmap;
    header[kDepth] = number(image.depth);
    header[kWidth] = header[kWindowWidth] = number(image.width);
    header[kHeight] = header[kWindowHeight] = number(image.height);
    header[kByteOrder] = header[kBitOrder] = number(image.byte_order);
    header[kBitmapUnit] = header[kBitmapPad] = kUnit;
    header[kBitsPerPixel] = number(image.bits_per_pixel);
    header[kBytesPerLine] = number(image.bytes_per_line);
    header[kVisualClass] = image_is_direct(image) ? kDirectColor
                           : has_table            ? kPseudoColor
                                                  : kTrueColor;
    header[kRedMask] = image.red_mask;
    header[kGreenMask] = image.green_mask;
    header[kBlueMask] = image.blue_mask;
    header[kBitsPerRgb] = kRgbBits;
    header[kMapEntries] = header[kColorCount] = has_table ? number(image.ncolors) : 0;
    std::string out;
    for (const std::uint32_t field : header) {
        put_number(out, field, 4);
    }
    return out;
}

std::string color_bytes(const ImageRec &image)
{
    std::string out;
    const int count = image.color_type == kImageTable && image.colors ? image.ncolors : 0;
    for (int i = 0; i < count; ++i) {
        put_number(out, static_cast<std::uint32_t>(i), 4);
        for (const float part : image.colors[i]) {
            put_number(out, image_color_level(part, kFullColor), 2);
        }
        put_number(out, kAllParts << 8, 2);
    }
    return out;
}

bool write_bytes(std::FILE *file, const void *bytes, size_t size, const char *failure)
{
    return std::fwrite(bytes, 1, size, file) == size || complain(failure);
}

bool write_dump(std::FILE *file, const ImageRec &image)
{
    const std::string header = header_bytes(image);
    const std::string name = name_of(image);
    const std::string colors = color_bytes(image);
    const size_t size =
        static_cast<size_t>(image.height) * static_cast<size_t>(image.bytes_per_line);
    return write_bytes(file, header.data(), header.size(), "Unable to write dump file header\n") &&
           write_bytes(file, name.c_str(), name.size() + 1,
                       "Unable to write window name to dump file.\n") &&
           write_bytes(file, colors.data(), colors.size(),
                       "Unable to write color map to dump file.\n") &&
           write_bytes(file, image.data, size, "Unable to write to XWD file.\n");
}

} // namespace

int IMG_read_xwd(const char *path, ImageRec *image, int header_only)
{
    if (read_dump(path, image, header_only != 0)) {
        return 1;
    }
    IMG_free(image);
    return 0;
}

int IMG_write_xwd(const char *path, ImageRec *image)
{
    if (!image_fits("IMG_write_xwd", *image)) {
        return 0;
    }
    WholeFile file;
    if (!file.open(path)) {
        complain("Unable to open dump file\n");
        return 0;
    }
    MSG_out(kMsgDebug, "Width: %d\n", image->width);
    MSG_out(kMsgDebug, "Height: %d\n", image->height);
    MSG_out(kMsgDebug, "Byte order: %d\n", image->byte_order);
    MSG_out(kMsgDebug, "Bits per pixel: %d\n", image->bits_per_pixel);
    MSG_out(kMsgDebug, "Depth: %d\n", image->depth);
    MSG_out(kMsgDebug, "Bytes per line: %d\n", image->bytes_per_line);
    MSG_out(kMsgDebug, "Number of colors: %d\n", image->ncolors);
    if (!write_dump(file.stream(), *image)) {
        return 0;
    }
    if (file.keep() != 0) {
        complain("Unable to write to XWD file.\n");
        return 0;
    }
    return 1;
}
