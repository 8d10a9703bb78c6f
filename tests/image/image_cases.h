#pragma once

/// Pictures of every storage, and what other programs make of files of theirs.

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <functional>
#include <thread>

#include <zlib.h>

#include "support/run.h"
#include "support/scoped_env.h"
#include "support/temp_dir.h"
#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/str.h"
#include "tyr/gks/gks.h"
#include "tyr/image/gif.h"
#include "tyr/image/image.h"
#include "tyr/image/image_rec_private.h"
#include "tyr/image/png.h"
#include "tyr/image/tyrimg_private.h"
#include "tyr/image/xwd.h"

using namespace tyr;

inline constexpr int kWidth = 47;
inline constexpr int kHeight = 33;

/// A record that frees itself.
struct Image : ImageRec {
    Image() { IMG_init(this); }
    ~Image() { IMG_free(this); }
    Image(const Image &) = delete;
    Image &operator=(const Image &) = delete;
};

inline std::string bytes_of(std::initializer_list<int> values)
{
    return {values.begin(), values.end()};
}

inline std::string big(std::initializer_list<std::uint32_t> values)
{
    std::string out;
    for (const std::uint32_t v : values) {
        out += bytes_of({int(v >> 24), int(v >> 16 & 255), int(v >> 8 & 255), int(v & 255)});
    }
    return out;
}

/// Which of so many colours stands at a pixel; all occur, in runs and alone.
inline unsigned place_at(int x, int y, unsigned colors)
{
    const unsigned n = unsigned(x / 3 + y * kWidth + x * y / 7);
    return n % colors;
}

/// The colour of a place, as a 24-bit number; no two are alike below 256.
inline unsigned color_at(unsigned place)
{
    return (place * 37 & 255U) << 16 | (place * 91 & 255U) << 8 | ((place * 53 + 7) & 255U);
}

inline std::string ppm_head()
{
    return "P6\n" + std::to_string(kWidth) + " " + std::to_string(kHeight) + "\n255\n";
}

/// The picture in somebody else's format, after `change` of each colour.
inline std::string ppm(unsigned colors, const std::function<unsigned(unsigned)> &change)
{
    std::string out = ppm_head();
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x) {
            const unsigned c = change(color_at(place_at(x, y, colors)));
            out += bytes_of({int(c >> 16 & 255), int(c >> 8 & 255), int(c & 255)});
        }
    }
    return out;
}

/// What a record shows, worked out anew from its description.
inline std::string shown(const ImageRec &image)
{
    std::string out = ppm_head();
    for (int y = 0; y < image.height; ++y) {
        const unsigned char *row = image.data + y * image.bytes_per_line;
        for (int x = 0; x < image.width; ++x) {
            unsigned pixel = 0;
            for (int i = 0; i < image.bits_per_pixel; ++i) { // high bit first
                const int bit = x * image.bits_per_pixel + i;
                pixel = pixel << 1 | (row[bit / 8] >> (7 - bit % 8) & 1U);
            }
            if (image.colors) {
                for (const float part : image.colors[pixel]) {
                    out += char(std::lround(part * 255.0F));
                }
            } else if (image.red_mask != 0) {
                out += bytes_of({int(pixel >> 16 & 255), int(pixel >> 8 & 255), int(pixel & 255)});
            } else {
                out += std::string(3, char(pixel * 255 / ((1U << image.depth) - 1)));
            }
        }
    }
    return out;
}

/// A way of storing pixels.
struct Storage {
    const char *name;
    int bits, depth, order;
    unsigned masks[3]; ///< 0: a table
    unsigned colors;
};

inline constexpr Storage kStorages[] = {
    {"1 bit, high first", 1, 1, 1, {}, 2},
    {"1 bit, low first", 1, 1, 0, {}, 2},
    {"4 bits", 4, 4, 1, {}, 16},
    {"a single colour", 8, 8, 0, {}, 1},
    {"three colours", 8, 8, 1, {}, 3},
    {"256 colours", 8, 8, 0, {}, 256},
    {"16 bits, high byte first", 16, 16, 1, {0xf800, 0x07e0, 0x1f}, 50},
    {"16 bits, low byte first", 16, 15, 0, {0x7c00, 0x03e0, 0x1f}, 50},
    {"24 bits, high byte first", 24, 24, 1, {0xff0000, 0xff00, 0xff}, 200},
    {"24 bits, low byte first", 24, 24, 0, {0xff, 0xff00, 0xff0000}, 200},
    {"32 bits, high byte first", 32, 24, 1, {0xff, 0xff00, 0xff0000}, 200},
    {"32 bits, low byte first", 32, 24, 0, {0xff0000, 0xff00, 0xff}, 200},
    {"32 bits, 10 a part", 32, 30, 0, {0x3ff00000, 0xffc00, 0x3ff}, 200},
};

inline unsigned width_of(unsigned mask)
{
    return unsigned(__builtin_popcount(mask));
}

/// A part of which so many low bits are lost: the most that is left is 255 again.
inline unsigned scaled(unsigned part, unsigned lost)
{
    const double most = 255U >> lost;
    return static_cast<unsigned>(std::lround((part >> lost) * 255.0 / most));
}

/// What is left of a colour with so many bits a part.
inline unsigned reduced(unsigned color, const Storage &s)
{
    unsigned out = 0;
    for (int i = 0; i < 3; ++i) {
        const unsigned lost = 8 - std::min(8U, width_of(s.masks[i]));
        out = out << 8 | scaled(color >> (16 - 8 * i) & 255U, lost);
    }
    return out;
}

inline unsigned pixel_of(unsigned place, const Storage &s)
{
    if (s.masks[0] == 0) {
        return place;
    }
    unsigned pixel = 0;
    for (int i = 0; i < 3; ++i) {
        const unsigned width = width_of(s.masks[i]);
        const unsigned part = color_at(place) >> (16 - 8 * i) & 255U;
        pixel |= (width < 8 ? part >> (8 - width) : part << (width - 8))
                 << __builtin_ctz(s.masks[i]);
    }
    return pixel;
}

inline void put_pixel(unsigned char *row, int x, unsigned pixel, const Storage &s)
{
    if (s.bits < 8) {
        const int shift = s.bits == 4 ? (x % 2 == 0 ? 4 : 0) : s.order == 1 ? 7 - x % 8 : x % 8;
        unsigned char &byte = row[x * s.bits / 8];
        const unsigned most = (1U << s.bits) - 1U;
        byte = static_cast<unsigned char>((byte & ~(most << shift)) | pixel << shift);
        return;
    }
    for (int i = 0; i < s.bits / 8; ++i) {
        const int place = s.order == 1 ? s.bits / 8 - 1 - i : i;
        row[x * s.bits / 8 + place] = static_cast<unsigned char>(pixel >> 8 * i);
    }
}

/// The picture as a record; rows are padded to 32 bits and more with bytes that mean nothing.
inline void fill(ImageRec *image, const Storage &s)
{
    image->width = kWidth;
    image->height = kHeight;
    image->depth = s.depth;
    image->bits_per_pixel = s.bits;
    image->bytes_per_line = (kWidth * s.bits + 31) / 32 * 4 + 4;
    image->byte_order = s.order;
    ASSERT_TRUE(image_allocate(image));
    std::memset(image->data, 0xA5, size_t(kHeight * image->bytes_per_line));
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x) {
            put_pixel(image->data + y * image->bytes_per_line, x,
                      pixel_of(place_at(x, y, s.colors), s), s);
        }
    }
    image->red_mask = s.masks[0];
    image->green_mask = s.masks[1];
    image->blue_mask = s.masks[2];
    if (s.masks[0] == 0) {
        image->color_type = kImageTable;
        ASSERT_TRUE(image_allocate_colors(image, 1 << s.depth));
        for (int i = 0; i < image->ncolors; ++i) {
            for (int part = 0; part < 3; ++part) {
                image->colors[i][part] =
                    float(color_at(unsigned(i)) >> (16 - 8 * part) & 255U) / 255.0F;
            }
        }
    }
}

inline std::string expected(const Storage &s)
{
    return ppm(s.colors, [&s](unsigned c) { return s.masks[0] == 0 ? c : reduced(c, s); });
}

inline bool have_magick()
{
    return have_program("identify") && have_program("convert");
}

/// A picture of one row with 32-bit pixels of 8 bits a part.
inline void fill_row(ImageRec *image, const std::vector<unsigned> &pixels)
{
    const Storage s = {"", 32, 24, 0, {0xff0000, 0xff00, 0xff}, 1};
    image->width = int(pixels.size());
    image->height = 1;
    image->depth = s.depth;
    image->bits_per_pixel = s.bits;
    image->bytes_per_line = 4 * image->width;
    image->byte_order = s.order;
    image->red_mask = s.masks[0];
    image->green_mask = s.masks[1];
    image->blue_mask = s.masks[2];
    ASSERT_TRUE(image_allocate(image));
    for (int x = 0; x < image->width; ++x) {
        put_pixel(image->data, x, pixels[size_t(x)], s);
    }
}

class ImageFile : public testing::Test {
  protected:
    void SetUp() override
    {
        MSG_set_mask(0, 0);
        gset_gif_interlace(0);
        gset_gif_transparent(0);
    }

    std::string path(const std::string &name) const { return dir_.file(name); }

    /// Files as ImageMagick shows them, one behind the other.
    static std::string decoded(const std::vector<std::string> &files)
    {
        std::vector<std::string> command = {"convert"};
        command.insert(command.end(), files.begin(), files.end());
        command.insert(command.end(), {"-strip", "+set", "comment", "-depth", "8", "ppm:-"});
        return run(command).out;
    }

    /// What a call says on the standard error stream.
    static std::string said(const std::function<void()> &call)
    {
        MSG_set_mask(0, kMsgWarn);
        testing::internal::CaptureStderr();
        call();
        MSG_set_mask(0, 0);
        return testing::internal::GetCapturedStderr();
    }

    TempDir dir_;
};
