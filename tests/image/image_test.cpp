// Image files: what others write is read right, what is written is read right by others.

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

namespace {

constexpr int kWidth = 47;
constexpr int kHeight = 33;

/// A record that frees itself.
struct Image : ImageRec {
    Image() { IMG_init(this); }
    ~Image() { IMG_free(this); }
    Image(const Image &) = delete;
    Image &operator=(const Image &) = delete;
};

std::string bytes_of(std::initializer_list<int> values)
{
    return {values.begin(), values.end()};
}

std::string big(std::initializer_list<std::uint32_t> values)
{
    std::string out;
    for (const std::uint32_t v : values) {
        out += bytes_of({int(v >> 24), int(v >> 16 & 255), int(v >> 8 & 255), int(v & 255)});
    }
    return out;
}

/// Which of so many colours stands at a pixel; all occur, in runs and alone.
unsigned place_at(int x, int y, unsigned colors)
{
    const unsigned n = unsigned(x / 3 + y * kWidth + x * y / 7);
    return n % colors;
}

/// The colour of a place, as a 24-bit number; no two are alike below 256.
unsigned color_at(unsigned place)
{
    return (place * 37 & 255U) << 16 | (place * 91 & 255U) << 8 | ((place * 53 + 7) & 255U);
}

std::string ppm_head()
{
    return "P6\n" + std::to_string(kWidth) + " " + std::to_string(kHeight) + "\n255\n";
}

/// The picture in somebody else's format, after `change` of each colour.
std::string ppm(unsigned colors, const std::function<unsigned(unsigned)> &change)
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
std::string shown(const ImageRec &image)
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

constexpr Storage kStorages[] = {
    {"1 bit, high first",        1,  1,  1, {},                           2  },
    {"1 bit, low first",         1,  1,  0, {},                           2  },
    {"4 bits",                   4,  4,  1, {},                           16 },
    {"a single colour",          8,  8,  0, {},                           1  },
    {"three colours",            8,  8,  1, {},                           3  },
    {"256 colours",              8,  8,  0, {},                           256},
    {"16 bits, high byte first", 16, 16, 1, {0xf800, 0x07e0, 0x1f},       50 },
    {"16 bits, low byte first",  16, 15, 0, {0x7c00, 0x03e0, 0x1f},       50 },
    {"24 bits, high byte first", 24, 24, 1, {0xff0000, 0xff00, 0xff},     200},
    {"24 bits, low byte first",  24, 24, 0, {0xff, 0xff00, 0xff0000},     200},
    {"32 bits, high byte first", 32, 24, 1, {0xff, 0xff00, 0xff0000},     200},
    {"32 bits, low byte first",  32, 24, 0, {0xff0000, 0xff00, 0xff},     200},
    {"32 bits, 10 a part",       32, 30, 0, {0x3ff00000, 0xffc00, 0x3ff}, 200},
};

unsigned width_of(unsigned mask)
{
    return unsigned(__builtin_popcount(mask));
}

/// A part of which so many low bits are lost: the most that is left is 255 again.
unsigned scaled(unsigned part, unsigned lost)
{
    const double most = 255U >> lost;
    return static_cast<unsigned>(std::lround((part >> lost) * 255.0 / most));
}

/// What is left of a colour with so many bits a part.
unsigned reduced(unsigned color, const Storage &s)
{
    unsigned out = 0;
    for (int i = 0; i < 3; ++i) {
        const unsigned lost = 8 - std::min(8U, width_of(s.masks[i]));
        out = out << 8 | scaled(color >> (16 - 8 * i) & 255U, lost);
    }
    return out;
}

unsigned pixel_of(unsigned place, const Storage &s)
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

void put_pixel(unsigned char *row, int x, unsigned pixel, const Storage &s)
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
void fill(ImageRec *image, const Storage &s)
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

std::string expected(const Storage &s)
{
    return ppm(s.colors, [&s](unsigned c) { return s.masks[0] == 0 ? c : reduced(c, s); });
}

bool have_magick()
{
    return have_program("identify") && have_program("convert");
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

TEST_F(ImageFile, WhatIsWrittenOthersRead)
{
    if (!have_magick()) {
        GTEST_SKIP() << "ImageMagick isn't installed";
    }
    std::vector<std::string> files;
    std::vector<std::string> pictures;
    std::vector<std::string> gifs = {"identify", "-format", "%[interlace] "};
    std::string interlaced;
    for (const Storage &s : kStorages) {
        SCOPED_TRACE(s.name);
        Image image;
        fill(&image, s);
        const std::string name = path(std::to_string(files.size()));
        ASSERT_EQ(IMG_write_png((name + ".png").c_str(), &image), 1);
        files.push_back(name + ".png");
        if (s.bits >= 8 && s.bits != 16 && s.depth <= 24) { // the others it shows in its own way
            ASSERT_EQ(IMG_write_xwd((name + ".xwd").c_str(), &image), 1);
            files.push_back(name + ".xwd");
        }
        gset_gif_interlace(s.order);
        ASSERT_EQ(GIF_write((name + ".gif").c_str(), &image), 1);
        files.push_back(name + ".gif");
        gifs.push_back(files.back());
        interlaced += s.order == 1 ? "GIF " : "None ";
        pictures.resize(files.size(), expected(s));
    }
    const std::string all = decoded(files);
    const size_t size = pictures[0].size();
    ASSERT_EQ(all.size(), size * files.size());
    for (size_t i = 0; i < files.size(); ++i) {
        EXPECT_TRUE(all.compare(i * size, size, pictures[i]) == 0) << files[i];
    }
    EXPECT_EQ(run(gifs).out, interlaced);
}

TEST_F(ImageFile, WhatIsWrittenIsReadBack)
{
    for (const Storage &s : kStorages) {
        SCOPED_TRACE(s.name);
        Image image;
        fill(&image, s);
        STR_copy(image.info, kImageInfoRoom, "A window");
        const std::string pixels(reinterpret_cast<char *>(image.data),
                                 size_t(kHeight * image.bytes_per_line));
        ASSERT_EQ(IMG_write_xwd(path("a.xwd").c_str(), &image), 1);
        Image dump;
        ASSERT_EQ(IMG_read_file(path("a.xwd").c_str(), &dump), 1);
        EXPECT_TRUE(std::memcmp(dump.data, pixels.data(), pixels.size()) == 0);
        EXPECT_STREQ(dump.info, "A window");
        EXPECT_EQ(dump.byte_order, s.order);
        EXPECT_EQ(dump.color_type, s.masks[0] == 0 ? 1 : 0);
        EXPECT_EQ(dump.red_mask, s.masks[0]);
        ASSERT_EQ(dump.ncolors, image.ncolors);
        for (int i = 0; i < dump.ncolors; ++i) {
            EXPECT_NEAR(dump.colors[i][1], image.colors[i][1], 2.0F / 65535.0F);
        }
        gset_gif_interlace(1 - s.order);
        ASSERT_EQ(IMG_write_png(path("a.gif").c_str(), &image), 1); // the name means nothing
        ASSERT_EQ(GIF_write(path("a.png").c_str(), &image), 1);
        for (const char *name : {"a.gif", "a.png"}) {
            Image back;
            ASSERT_EQ(IMG_read_file(path(name).c_str(), &back), 1);
            EXPECT_STREQ(back.info, std::string(name) == "a.gif" ? "PNG" : "GIF");
            EXPECT_TRUE(shown(back) == expected(s)) << name;
        }
    }
}

TEST_F(ImageFile, WhatOthersWriteIsRead)
{
    if (!have_magick()) {
        GTEST_SKIP() << "ImageMagick isn't installed";
    }
    const auto color = [](unsigned c) { return c; };
    const auto grey = [](unsigned c) { return (c >> 16 & 3U) * 0x555555U; };
    const auto bit = [](unsigned c) { return (c >> 16 & 1U) * 0xFFFFFFU; };
    struct Case {
        const char *name;
        unsigned colors;
        std::function<unsigned(unsigned)> change;
        const char *form;
        const char *words;
        int depth, bits;
    };
    const Case cases[] = {
        {"GIF",                    200, color, "gif",   "",                                                 8,  8 },
        {"interlaced GIF",         256, color, "gif",   "-interlace GIF",                                   8,  8 },
        {"GIF of 2",               2,   color, "gif",   "",                                                 8,  8 },
        {"old GIF",                3,   color, "gif87", "",                                                 8,  8 },
        {"PNG, palette of 1 bit",  2,   color, "png8",  "-define png:bit-depth=1",                          1,  1 },
        {"PNG, palette of 2 bits", 3,   color, "png8",  "-define png:bit-depth=2",                          8,  8 },
        {"PNG, palette of 4 bits", 16,  color, "png8",  "-define png:bit-depth=4",                          4,  4 },
        {"PNG, palette",           200, color, "png8",  "",                                                 8,  8 },
        {"PNG, RGB",               200, color, "png24", "",                                                 24, 24},
        {"PNG, RGB of 16 bits",    200, color, "png48", "",                                                 24, 24},
        {"PNG, RGBA",              200, color, "png32", "",                                                 24, 32},
        {"PNG, RGBA of 16 bits",   200, color, "png64", "",                                                 24, 32},
        {"PNG, interlaced",        200, color, "png32", "-interlace PNG",                                   24, 32},
        {"PNG, bits",              200, bit,   "png",   "-define png:bit-depth=1 -define png:color-type=0", 1,  1 },
        {"PNG, grey of 2 bits",    200, grey,  "png",
         "-define png:bit-depth=2 -define png:color-type=0",                                                8,  8 },
        {"PNG, grey of 4 bits",    200, grey,  "png",
         "-define png:bit-depth=4 -define png:color-type=0",                                                4,  4 },
        {"PNG, grey of 16 bits",   200, grey,  "png",
         "-define png:bit-depth=16 -define png:color-type=0",                                               8,  8 },
        {"PNG, grey and alpha",    200, grey,  "png",   "-define png:color-type=4",                         24, 32},
        {"XWD, palette",           256, color, "xwd",   "-type Palette",                                    8,  8 },
        {"XWD",                    256, color, "xwd",   "",                                                 24, 24},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        const std::string picture = ppm(c.colors, c.change);
        const std::string file = path("made");
        std::vector<std::string> command = {"convert", dir_.write("in.ppm", picture)};
        for (const std::string &word : STR_fields(c.words, ' ')) {
            command.push_back(word);
        }
        command.push_back(std::string(c.form) + ":" + file);
        ASSERT_EQ(run(command).err, "");
        Image image;
        ASSERT_EQ(IMG_read_file(file.c_str(), &image), 1);
        EXPECT_EQ(image.depth, c.depth);
        EXPECT_EQ(image.bits_per_pixel, c.bits);
        EXPECT_TRUE(shown(image) == picture);

        const std::string marked = dir_.write("marked", "** a line ahead\n" + read_file(file));
        Image again;
        ASSERT_EQ(IMG_read_file(marked.c_str(), &again), 1);
        EXPECT_TRUE(shown(again) == picture);
        Image head;
        ASSERT_EQ(IMG_read_header(marked.c_str(), &head), 1);
        EXPECT_EQ(head.width, kWidth);
        EXPECT_EQ(head.height, kHeight);
        EXPECT_EQ(head.bytes_per_line, image.bytes_per_line);
        EXPECT_EQ(head.data, nullptr);
        EXPECT_EQ(head.colors, nullptr);
    }
}

TEST_F(ImageFile, PngCarriesItsTexts)
{
    if (!have_magick()) {
        GTEST_SKIP() << "ImageMagick isn't installed";
    }
    const ScopedEnv time("SOURCE_DATE_EPOCH", "920723400");
    gset_title("Wind Profile");
    Image image;
    fill(&image, kStorages[3]);
    ASSERT_EQ(IMG_write_png(path("a.png").c_str(), &image), 1);
    const RunResult told = run({"identify", "-format",
                                "%[png:IHDR.color_type]|%[png:IHDR.bit_depth]|%[Title]|%[Software]|"
                                "%[Creation Time]",
                                path("a.png")});
    EXPECT_EQ(told.out, "3 (Indexed)|8|Wind Profile|TYR - Gale Bench v5.0|"
                        "06 Mar 1999 12:30:00 GMT");
}

/// A picture of one row with 32-bit pixels of 8 bits a part.
void fill_row(ImageRec *image, const std::vector<unsigned> &pixels)
{
    const Storage s = {
        "", 32, 24, 0, {0xff0000, 0xff00, 0xff},
            1
    };
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

TEST_F(ImageFile, GifBytes)
{
    // the codes are packed by hand: clear 4, 0, the string (0, 0) 6, end 5, three bits each
    const std::string head =
        "GIF89a" + bytes_of({3, 0, 1, 0, 0x80, 0, 0, 0x12, 0x34, 0x56, 0, 0, 0});
    const std::string tail = bytes_of({0x2C, 0, 0, 0, 0, 3, 0, 1, 0, 0, 2, 2, 0x84, 0x0B, 0, 0x3B});
    struct Case {
        const char *name;
        int transparent, pixel;
        std::string control;
    };
    const Case cases[] = {
        {"plain",                    0, 0x123456, ""                                       },
        {"transparent",              1, 0x123456, bytes_of({0x21, 0xF9, 4, 1, 10, 0, 0, 0})},
        {"background doesn't occur", 1, 0x000000, bytes_of({0x21, 0xF9, 4, 1, 10, 0, 1, 0})},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        Image image;
        fill_row(&image, {0x123456, 0x123456, 0x123456});
        image.transparent = c.pixel;
        gset_gif_transparent(c.transparent);
        ASSERT_EQ(GIF_write(path("a.gif").c_str(), &image), 1);
        EXPECT_EQ(read_file(path("a.gif")), head + c.control + tail);
    }
}

TEST_F(ImageFile, TheColourAfter256TakesPlace0)
{
    std::vector<unsigned> pixels;
    for (unsigned i = 0; i < 258; ++i) {
        pixels.push_back(0x010000U + i);
    }
    pixels.push_back(0x010001U);
    Image image;
    fill_row(&image, pixels);
    ASSERT_EQ(IMG_write_png(path("a.png").c_str(), &image), 1);
    ASSERT_EQ(GIF_write(path("a.gif").c_str(), &image), 1);
    for (const char *name : {"a.png", "a.gif"}) {
        Image back;
        ASSERT_EQ(IMG_read_file(path(name).c_str(), &back), 1);
        EXPECT_EQ(back.ncolors, 256);
        for (size_t x = 0; x < pixels.size(); ++x) {
            EXPECT_EQ(back.data[x], x < 256 ? x : x < 258 ? 0U : 1U) << x;
        }
    }
}

TEST_F(ImageFile, GifOfAPartOfItsScreen)
{
    const std::string head = "GIF89a" + bytes_of({5, 0, 3, 0, 0x80, 0, 0, 1, 2, 3, 255, 0, 0}) +
                             bytes_of({0x21, 0xFE, 2, 'h', 0x2C, 0, 0x21, 0xF9, 4, 1, 0, 0, 1, 0});
    const std::string frame = bytes_of({0x2C, 3, 0, 1, 0, 3, 0, 1, 0, 0x80}) + std::string(6, '\0');
    // clear, 1, (1, 1), end
    const std::string data = bytes_of({2, 2, 0x8C, 0x0B, 0, 0x3B});
    const std::string none(15, '\0');
    const std::string row = none.substr(0, 8) + bytes_of({1, 1}) + none.substr(0, 5);
    const std::string start = none.substr(0, 8) + bytes_of({1}) + none.substr(0, 6);
    struct Case {
        const char *name;
        std::string data, pixels;
    };
    const Case cases[] = {
        {"at its place, cut at the edge", data,                             row  },
        {"no data",                       bytes_of({2, 0}),                 none },
        {"a code before any",             bytes_of({2, 2, 0xBC, 0x0B, 0}),  none },
        {"no such code size",             bytes_of({12, 2, 0x8C, 0x0B, 0}), none },
        {"cut in the codes",              bytes_of({2, 2, 0x8C}),           start},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        Image image;
        ASSERT_EQ(GIF_read(dir_.write("a.gif", head + frame + c.data).c_str(), &image, 0), 1);
        EXPECT_EQ(std::string(reinterpret_cast<char *>(image.data), 15), c.pixels);
        EXPECT_EQ(image.transparent, 1);
        EXPECT_EQ(image.ncolors, 2);
        EXPECT_EQ(image.colors[1][0], 1.0F);
    }
}

TEST_F(ImageFile, GifTableMayStayFull)
{
    // each pixel a code of its own, and never a clear: strings are made until all codes are taken
    constexpr int kPixels = 6000;
    std::string bytes = "GIF89a" + bytes_of({0x70, 0x17, 1, 0, 0, 0, 0}) +
                        bytes_of({0x2C, 0, 0, 0, 0, 0x70, 0x17, 1, 0, 0, 8});
    std::string codes;
    unsigned long bits = 0;
    int count = 0;
    for (int i = 0; i < kPixels; ++i) {
        const int strings = 257 + i; // and codes for clear and end
        const int width = strings < 512 ? 9 : strings < 1024 ? 10 : strings < 2048 ? 11 : 12;
        bits |= static_cast<unsigned long>(i * i % 251) << count;
        for (count += width; count >= 8; count -= 8, bits >>= 8) {
            codes += char(bits);
        }
    }
    for (size_t at = 0; at < codes.size(); at += 200) {
        const std::string block = codes.substr(at, 200);
        bytes += char(block.size()) + block;
    }
    Image image;
    ASSERT_EQ(GIF_read(dir_.write("a.gif", bytes).c_str(), &image, 0), 1);
    for (int i = 0; i < kPixels - 1; ++i) {
        ASSERT_EQ(image.data[i], i * i % 251) << i;
    }
}

TEST_F(ImageFile, XwdBytes)
{
    const std::string file = big({102, 7, 2, 8, 2, 1, 0, 1, 32, 1, 32, 8, 4}) +
                             big({3, 0, 0, 0, 8, 2, 2, 2, 1, 0, 0, 0}) + std::string("w\0", 2);
    const std::string colors = big({1, 0xFFFF0000, 0x00000700, 9, 0xFFFFFFFF, 0xFFFF0700});
    const std::string wide = big({1, 0xFFFF0000, 0x00000700, 0, 0, 0, 0x00000700, 0});
    const std::string data = bytes_of({1, 0, 9, 9});
    const std::string all = colors + data;
    const std::string padded = wide + data;
    const std::string no_map = "Unable to read color map from dump file.\n";
    const std::string odd = "IMG_read_xwd: Invalid picture: ";
    constexpr size_t kAll = 1000;
    struct Case {
        const char *name;
        size_t field; ///< of the header
        std::uint32_t value;
        std::string rest;
        size_t length; ///< the file is cut there
        std::string said;
    };
    const Case cases[] = {
        {"a colour without a slot", 1,  7,          all,    kAll, ""                                            },
        {"padded colours",          1,  7,          padded, kAll, ""                                            },
        {"version",                 1,  6,          all,    kAll, "XWD file format version mismatch\n"          },
        {"header",                  0,  99,         all,    kAll, "XWD header size is too small.\n"             },
        {"depth",                   3,  33,         all,    kAll, "Incorrect depth: 33 > 32\n"                  },
        {"planes",                  2,  1,          all,    kAll, "XWD pixmap format isn't supported\n"         },
        {"cut header",              1,  7,          all,    99,   "Unable to read dump file header\n"           },
        {"cut name",                1,  7,          all,    101,  "Unable to read window name from dump file.\n"},
        {"cut colours",             1,  7,          all,    122,  no_map                                        },
        {"too many colours",        19, 0x7FFFFFFF, all,    kAll, no_map                                        },
        {"cut data",                1,  7,          all,    129,  "Unable to read pixmap from dump file.\n"     },
        {"short rows",              12, 1,          all,    kAll, odd + "2x1 of 8 bits, rows of 1 bytes\n"      },
        {"too large",               5,  0x80000000, all,    kAll, odd + "2x-1 of 8 bits, rows of 4 bytes\n"     },
        {"storage",                 11, 7,          all,    kAll, odd + "2x1 of 7 bits, rows of 4 bytes\n"      },
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        Image image;
        const std::string head = std::string(file).replace(4 * c.field, 4, big({c.value}));
        const std::string name = dir_.write("a.xwd", (head + c.rest).substr(0, c.length));
        int result = -1;
        EXPECT_EQ(said([&] { result = IMG_read_file(name.c_str(), &image); }), c.said);
        ASSERT_EQ(result, c.said.empty() ? 1 : 0);
        if (result == 1) {
            EXPECT_STREQ(image.info, "w");
            EXPECT_EQ(image.ncolors, 2);
            EXPECT_EQ(image.colors[0][1], 0.0F);
            EXPECT_EQ(image.colors[1][0], 1.0F);
            EXPECT_EQ(image.data[0], 1);
        } else {
            EXPECT_EQ(image.data, nullptr);
            EXPECT_EQ(image.colors, nullptr);
        }
    }
}

TEST_F(ImageFile, RefusalsAreOneLine)
{
    using Call = std::function<int(const char *path, ImageRec *image)>;
    const std::string huge = "GIF89a" + bytes_of({255, 255, 255, 255, 0, 0, 0});
    struct Case {
        const char *name;
        std::string bytes;
        Call call;
        int result;
        std::string said; ///< @ is the path
    };
    const Call read = [](const char *p, ImageRec *i) { return IMG_read(p, i, 0); };
    const Call gif = [](const char *p, ImageRec *i) { return GIF_read(p, i, 0); };
    const Call nowhere = [](const char *, ImageRec *i) {
        return GIF_write("/proc/none/a.gif", i) + IMG_write_png("/proc/none/a.png", i) +
               IMG_write_xwd("/proc/none/a.xwd", i) + IMG_write_tyr("/proc/none/a", i, 0);
    };
    const Case cases[] = {
        {"too large",              huge,                      read,    0,
         "GIF_read: Invalid picture: 65535x65535 of 8 bits, rows of 65535 bytes\n"                                       },
        {"no GIF",                 "PNG",                     gif,     0,  "GIF_read: Not a GIF file\n"                  },
        {"cut GIF",                "GIF89a",                  read,    0,  "GIF_read: Not a GIF file\n"                  },
        {"cut PNG",                "\x89PNG\r\n\x1a\n\0",     read,    0,  "IMG_read_png: Not a PNG file: @ Read Error\n"},
        {"empty",                  "",                        read,    0,  "Unable to read dump file header\n"           },
        {"TYR alone",              "TYRANT\n",                read,    -1, "IMG_read_tyr: Invalid image type\n"          },
        {"no size",                "TYRIMG\n\n\nLL 1 2 3\n",  read,    -1,
         "IMG_read_tyr: Invalid place or size: LL 1 2 3\n"                                                               },
        {"no command",             "TYRIMG4\n\n\nfi:|echo\n", read,    -1,
         "IMG_read_tyr: Invalid place or size: fi:|echo\n"                                                               },
        {"no command",             "TYRIMG*\n\n\n2 2\n|echo", read,    -1, "Unable to open: |echo\n"                     },
        {"negative size",          "TYRIMG\n\n\n-2 2\n    ",  read,    -1,
         "IMG_read_tyr: Invalid picture: -2x2 of 8 bits, rows of -2 bytes\n"                                             },
        {"nothing can be written", "",                        nowhere, 0,
         "Unable to open GIF file\nUnable to open PNG file\nUnable to open dump file\n"
         "Unable to open: /proc/none/a\n"                                                                                },
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        Image image;
        fill_row(&image, {1, 2});
        const std::string name = dir_.write("a", c.bytes);
        std::string text = c.said;
        if (const size_t at = text.find('@'); at != std::string::npos) {
            text.replace(at, 1, name);
        }
        Image fresh;
        ImageRec *record = text.find("/proc") == std::string::npos ? &fresh : &image;
        EXPECT_EQ(said([&] { EXPECT_EQ(c.call(name.c_str(), record), c.result); }), text);
        EXPECT_EQ(fresh.data, nullptr);
    }
    EXPECT_EQ(said([] {
                  Image image;
                  EXPECT_EQ(IMG_read("/none/x.gif", &image, 0), 0);
              }),
              "IMG_read: Unable to open image file: /none/x.gif\n");
}

std::string deflated(const std::string &bytes)
{
    uLongf size = compressBound(uLong(bytes.size()));
    std::string out(size, '\0');
    compress(reinterpret_cast<Bytef *>(out.data()), &size,
             reinterpret_cast<const Bytef *>(bytes.data()), uLong(bytes.size()));
    return out.substr(0, size);
}

TEST_F(ImageFile, TyrimgForms)
{
    const float none = kMissing;
    const std::string lines = "\n12Z 06 MAR 99\nSatellite\n";
    const std::string data = "abcdef";
    const std::string old = "TYRIMG" + lines;
    const std::string streams = "3 2\n" + deflated("abcd") + deflated("efgh");
    const std::string elsewhere = "3 2\n" + dir_.write("other", data) + "\n";
    const std::string extras = "3 2\n" + std::string(1026, 'x') + bytes_of({2, 0}) + "wxyz" + data;
    struct Case {
        const char *name;
        std::string bytes;
        int proj;
        std::vector<float> place; ///< plat, plon, parm1, parm3, clat, dy
    };
    const std::vector<float> nowhere(6, none);
    const Case cases[] = {
        {"plain",       old + "3 2\n" + data,                          kMissingInt, nowhere                         },
        {"lat-lon",     old + "LL 4 -9 .5 .2 3 2\n" + data,            2,           {none, none, none, none, 4, .2F}},
        {"Mercator",    old + "ME 4 -9 1 2 3 2\n" + data,              3,           {none, none, none, none, 4, 2}  },
        {"polar",       old + "PS 4 -9 1 2 3 2\n" + data,              1,           {none, none, none, none, 4, 2}  },
        {"polar at 60", old + "PS:60 4 -9 1 2 3 2\n" + data,           1,           {none, none, 60, none, 4, 2}    },
        {"Lambert",     old + "LC:5:-5:30:60:2 4 -9 1 2 3 2\n" + data, 4,           {5, -5, 30, 2, 4, 2}            },
        {"satellite",   old + "SAT:0:-7 4 -9 1 2 3 2\n" + data,        9,           {0, -7, none, none, 4, 2}       },
        {"domain",
         "TYRIMG4" + lines + "ps,4,-9,3,2,1,2\n" + data,
         1,                                                                         {none, none, none, none, 4, 2}  },
        {"two streams", "TYRIMGZ" + lines + streams,                   kMissingInt, nowhere                         },
        {"elsewhere",   "TYRIMG*" + lines + elsewhere,                 kMissingInt, nowhere                         },
        {"extras",      "TYRIMGCV" + lines + extras,                   kMissingInt, nowhere                         },
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        Image image;
        ASSERT_EQ(IMG_read_file(dir_.write("a.tyr", c.bytes).c_str(), &image), 1);
        EXPECT_EQ(image.source, 50);
        EXPECT_EQ(image.date.day * 100 + image.date.hour, 612);
        EXPECT_STREQ(image.info, "Satellite");
        ASSERT_EQ(image.width * 10 + image.height, 32);
        EXPECT_EQ(std::string(reinterpret_cast<char *>(image.data), 6), data);
        const DomainRec &d = image.domain;
        EXPECT_EQ(d.proj, c.proj);
        const std::vector<float> place = {d.plat, d.plon, d.parm1, d.parm3, d.clat, d.dy};
        EXPECT_EQ(place, c.place);
        // written and read again, whichever way, it is the same
        for (const int compress : {0, 1}) {
            ASSERT_EQ(IMG_write_tyr(path("b.tyr").c_str(), &image, compress), 1);
            Image back;
            ASSERT_EQ(IMG_read_file(path("b.tyr").c_str(), &back), 1);
            EXPECT_EQ(std::string(reinterpret_cast<char *>(back.data), 6), data);
            EXPECT_STREQ(back.date_text, image.date_text);
            EXPECT_TRUE(DOM_equal(&back.domain, &d) || d.proj == kMissingInt);
        }
    }
}

TEST_F(ImageFile, TyrimgMayBeShortOrStillBeWritten)
{
    const std::string whole = "TYRIMGZ\n\n\n3 2\n" + deflated("abcd") + deflated("ef");
    const std::string cut = whole.substr(0, whole.size() - 10);
    const std::string rest(2, '\0');
    const auto data = [](const ImageRec &image) {
        return std::string(reinterpret_cast<char *>(image.data), 6);
    };
    const std::string name = dir_.write("a", "TYRIMG\n\n\n3 2\nabcd");
    Image plain;
    ASSERT_EQ(IMG_read_tyr(name.c_str(), &plain, 0), 1);
    EXPECT_EQ(data(plain), "abcd" + rest);
    dir_.write("a", cut);
    Image given_up;
    ASSERT_EQ(tyr_read(name.c_str(), &given_up, 0, 1), 1);
    EXPECT_EQ(data(given_up), "abcd" + rest);
    std::thread writer([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        std::ofstream(name, std::ios::app | std::ios::binary) << whole.substr(cut.size());
    });
    Image waited;
    ASSERT_EQ(IMG_read_tyr(name.c_str(), &waited, 0), 1);
    writer.join();
    EXPECT_EQ(data(waited), "abcdef");
}

TEST_F(ImageFile, TyrimgIsOneByteAPixel)
{
    const Storage cases[] = {
        {"32 bits: the mean",  32, 24, 0, {0xff0000, 0xff00, 0xff}, 200},
        {"32 bits, other way", 32, 24, 1, {0xff0000, 0xff00, 0xff}, 200},
        {"24 bits: low byte",  24, 24, 1, {0xff0000, 0xff00, 0xff}, 200},
        {"8 bits: the byte",   8,  8,  0, {},                       256},
    };
    for (const Storage &s : cases) {
        SCOPED_TRACE(s.name);
        Image image;
        fill(&image, s);
        image.domain.proj = kProjLatLon;
        image.domain.clat = image.domain.clon = 10;
        image.domain.dx = image.domain.dy = 4;
        image.domain.nx = 24;
        image.domain.ny = 9;
        ASSERT_EQ(IMG_write_tyr(path("a").c_str(), &image, 0), 1);
        std::string out = "TYRIMG\n\n\nLL 10.000000 10.000000 2.000000 1.000000 47 33\n";
        for (int y = 0; y < kHeight; ++y) {
            for (int x = 0; x < kWidth; ++x) {
                const unsigned place = place_at(x, y, s.colors);
                const unsigned c = color_at(place);
                const unsigned mean = ((c >> 16) + (c >> 8 & 255U) + (c & 255U)) / 3;
                out += char(s.bits == 32 ? mean : s.bits == 24 ? c & 255U : place);
            }
        }
        EXPECT_TRUE(read_file(path("a")) == out);
        if (s.bits == 8) { // several pieces, in streams of their own
            Image large;
            large.width = large.height = large.bytes_per_line = 300;
            large.depth = large.bits_per_pixel = 8;
            ASSERT_TRUE(image_allocate(&large));
            for (unsigned i = 0; i < 90000; ++i) {
                large.data[i] = static_cast<unsigned char>(i * i >> 7);
            }
            ASSERT_EQ(IMG_write_tyr(path("z").c_str(), &large, 1), 1);
            EXPECT_LT(read_file(path("z")).size(), 90000U);
            Image back;
            ASSERT_EQ(IMG_read_file(path("z").c_str(), &back), 1);
            EXPECT_EQ(std::memcmp(back.data, large.data, 90000), 0);
        }
    }
}

TEST_F(ImageFile, WideGifIsRead)
{
    Image image;
    image.width = image.bytes_per_line = 20000;
    image.height = 3;
    image.depth = image.bits_per_pixel = 8;
    ASSERT_TRUE(image_allocate(&image));
    image.data[2 * 20000 + 19999] = 7;
    ASSERT_EQ(GIF_write(path("wide").c_str(), &image), 1);
    Image back;
    ASSERT_EQ(IMG_read_file(path("wide").c_str(), &back), 1);
    EXPECT_EQ(back.width, 20000);
    EXPECT_EQ(back.data[2 * 20000 + 19999], 1); // the second colour found
}

TEST_F(ImageFile, PrintsItsHead)
{
    Image image;
    fill_row(&image, {1, 2});
    STR_copy(image.info, kImageInfoRoom, "PNG");
    image.res_x = 1.5F;
    testing::internal::CaptureStdout();
    MSG_set_mask(0, kMsgPrint);
    IMG_print(1, &image);
    EXPECT_EQ(testing::internal::GetCapturedStdout().rfind(
                  "Source: 0\nVersion: 0\nDate: \nInfo: PNG\nType: 0\nSize: 2x1\n"
                  "Resolution: 1.50x0.00\nOffset: 0.00x0.00\nDepth: 24\nBits per pixel: 32\n"
                  "Bytes per line: 8\nBytes order: 0\nNumber of colors: 0\n"
                  "Tranparent colors: -1\n",
                  0),
              0U);
}

} // namespace
