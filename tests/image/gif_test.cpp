// GIF files: codes, tables, parts, widths.

#include <random>

#include "image/image_cases.h"

namespace {

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
        {"plain", 0, 0x123456, ""},
        {"transparent", 1, 0x123456, bytes_of({0x21, 0xF9, 4, 1, 10, 0, 0, 0})},
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

TEST_F(ImageFile, GifsOfRunsComeBack)
{
    struct Case {
        const char *name;
        unsigned colours, longest; ///< of a run of one colour
        size_t pixels;
    };
    const Case cases[] = {
        {"one colour", 1, 60000, 60000},   {"long runs", 5, 900, 60000},
        {"short runs", 200, 4, 40000},     {"no runs", 256, 1, 30000},
        {"runs and clears", 3, 40, 60000}, {"runs of two colours", 2, 7, 50000},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        std::mt19937 random(13);
        std::vector<unsigned> pixels;
        while (pixels.size() < c.pixels) {
            const unsigned colour = 0x112233U * static_cast<unsigned>(random() % c.colours);
            const size_t run = 1 + random() % c.longest;
            pixels.resize(std::min(pixels.size() + run, c.pixels), colour & 0xFFFFFFU);
        }
        for (const int interlace : {0, 1}) {
            Image image;
            fill_row(&image, pixels);
            image.width /= 100; // of a hundred rows
            image.height = 100;
            image.bytes_per_line = 4 * image.width;
            gset_gif_interlace(interlace);
            ASSERT_EQ(GIF_write(path("a.gif").c_str(), &image), 1);
            Image back;
            ASSERT_EQ(GIF_read(path("a.gif").c_str(), &back, 0), 1);
            ASSERT_EQ(back.width * back.height, int(c.pixels));
            int wrong = 0;
            for (size_t i = 0; i < c.pixels; ++i) {
                const float *colour = back.colors[back.data[i]];
                const auto byte = [](float part) { return unsigned(part * 255.0F + 0.5F); };
                wrong +=
                    (byte(colour[0]) << 16 | byte(colour[1]) << 8 | byte(colour[2])) != pixels[i];
            }
            EXPECT_EQ(wrong, 0);
            if (have_magick()) { // another reader
                const std::string seen = decoded({path("a.gif")});
                const std::string tail = seen.substr(seen.size() - 3 * c.pixels);
                int differ = 0;
                for (size_t i = 0; i < c.pixels; ++i) {
                    for (size_t part = 0; part < 3; ++part) {
                        differ += (pixels[i] >> (16 - 8 * part) & 255U) !=
                                  static_cast<unsigned char>(tail[3 * i + part]);
                    }
                }
                EXPECT_EQ(differ, 0);
            }
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
        {"at its place, cut at the edge", data, row},
        {"no data", bytes_of({2, 0}), none},
        {"a code before any", bytes_of({2, 2, 0xBC, 0x0B, 0}), none},
        {"no such code size", bytes_of({12, 2, 0x8C, 0x0B, 0}), none},
        {"cut in the codes", bytes_of({2, 2, 0x8C}), start},
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

TEST_F(ImageFile, GifOfLocalColoursAlone)
{
    // clear, 1, (1, 1), end, with three bits each
    const std::string frame = bytes_of({0x2C, 0, 0, 0, 0, 3, 0, 1, 0, 0x80, 0, 0, 0, 255, 0, 51});
    const std::string data = bytes_of({2, 2, 0x8C, 0x0B, 0, 0x3B});
    const std::string with = bytes_of({1, 2, 3, 4, 5, 6});
    const auto head = [](int flags) { return "GIF89a" + bytes_of({3, 0, 1, 0, flags, 0, 0}); };
    Image local;
    ASSERT_EQ(GIF_read(dir_.write("l.gif", head(0) + frame + data).c_str(), &local, 0), 1);
    ASSERT_EQ(local.ncolors, 2);
    EXPECT_EQ(local.colors[1][0], 1.0F);
    EXPECT_EQ(local.colors[1][2], 0.2F);
    EXPECT_EQ(local.data[0], 1);
    Image both;
    ASSERT_EQ(GIF_read(dir_.write("b.gif", head(0x80) + with + frame + data).c_str(), &both, 0), 1);
    ASSERT_EQ(both.ncolors, 2);
    EXPECT_FLOAT_EQ(both.colors[1][0], 4.0F / 255.0F);
    EXPECT_EQ(both.data[0], 1);
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

} // namespace
