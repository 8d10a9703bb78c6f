// Image files: what others write is read right, what is written is read right by others.

#include "image/image_cases.h"

namespace {

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
        {"GIF", 200, color, "gif", "", 8, 8},
        {"interlaced GIF", 256, color, "gif", "-interlace GIF", 8, 8},
        {"GIF of 2", 2, color, "gif", "", 8, 8},
        {"old GIF", 3, color, "gif87", "", 8, 8},
        {"PNG, palette of 1 bit", 2, color, "png8", "-define png:bit-depth=1", 1, 1},
        {"PNG, palette of 2 bits", 3, color, "png8", "-define png:bit-depth=2", 8, 8},
        {"PNG, palette of 4 bits", 16, color, "png8", "-define png:bit-depth=4", 4, 4},
        {"PNG, palette", 200, color, "png8", "", 8, 8},
        {"PNG, RGB", 200, color, "png24", "", 24, 24},
        {"PNG, RGB of 16 bits", 200, color, "png48", "", 24, 24},
        {"PNG, RGBA", 200, color, "png32", "", 24, 32},
        {"PNG, RGBA of 16 bits", 200, color, "png64", "", 24, 32},
        {"PNG, interlaced", 200, color, "png32", "-interlace PNG", 24, 32},
        {"PNG, bits", 200, bit, "png", "-define png:bit-depth=1 -define png:color-type=0", 1, 1},
        {"PNG, grey of 2 bits", 200, grey, "png",
         "-define png:bit-depth=2 -define png:color-type=0", 8, 8},
        {"PNG, grey of 4 bits", 200, grey, "png",
         "-define png:bit-depth=4 -define png:color-type=0", 4, 4},
        {"PNG, grey of 16 bits", 200, grey, "png",
         "-define png:bit-depth=16 -define png:color-type=0", 8, 8},
        {"PNG, grey and alpha", 200, grey, "png", "-define png:color-type=4", 24, 32},
        {"XWD, palette", 256, color, "xwd", "-type Palette", 8, 8},
        {"XWD", 256, color, "xwd", "", 24, 24},
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
        {"a colour without a slot", 1, 7, all, kAll, ""},
        {"padded colours", 1, 7, padded, kAll, ""},
        {"version", 1, 6, all, kAll, "XWD file format version mismatch\n"},
        {"header", 0, 99, all, kAll, "XWD header size is too small.\n"},
        {"depth", 3, 33, all, kAll, "Incorrect depth: 33 > 32\n"},
        {"planes", 2, 1, all, kAll, "XWD pixmap format isn't supported\n"},
        {"cut header", 1, 7, all, 99, "Unable to read dump file header\n"},
        {"cut name", 1, 7, all, 101, "Unable to read window name from dump file.\n"},
        {"cut colours", 1, 7, all, 122, no_map},
        {"too many colours", 19, 0x7FFFFFFF, all, kAll, no_map},
        {"cut data", 1, 7, all, 129, "Unable to read pixmap from dump file.\n"},
        {"short rows", 12, 1, all, kAll, odd + "2x1 of 8 bits, rows of 1 bytes\n"},
        {"too large", 5, 0x80000000, all, kAll, odd + "2x-1 of 8 bits, rows of 4 bytes\n"},
        {"storage", 11, 7, all, kAll, odd + "2x1 of 7 bits, rows of 4 bytes\n"},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        Image image;
        const std::string head = std::string(file).replace(4 * c.field, 4, big({c.value}));
        const std::string name = dir_.write("a.xwd", (head + c.rest).substr(0, c.length));
        int result = -1;
        const std::string told = said([&] { result = IMG_read_file(name.c_str(), &image); });
        const std::string named = "IMG_read: " + name + ": not an image, or a damaged one\n";
        EXPECT_EQ(told, c.said.empty() ? "" : c.said + named);
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
        {"too large", huge, read, 0,
         "GIF_read: Invalid picture: 65535x65535 of 8 bits, rows of 65535 bytes\n"},
        {"no GIF", "PNG", gif, 0, "GIF_read: Not a GIF file\n"},
        {"cut GIF", "GIF89a", read, 0, "GIF_read: Not a GIF file\n"},
        {"cut PNG", "\x89PNG\r\n\x1a\n\0", read, 0, "IMG_read_png: Not a PNG file: @ Read Error\n"},
        {"empty", "", read, 0, "Unable to read dump file header\n"},
        {"TYR alone", "TYRANT\n", read, -1, "IMG_read_tyr: Invalid image type\n"},
        {"no size", "TYRIMG\n\n\nLL 1 2 3\n", read, -1,
         "IMG_read_tyr: Invalid place or size: LL 1 2 3\n"},
        {"no command", "TYRIMG4\n\n\nfi:|echo\n", read, -1,
         "IMG_read_tyr: Invalid place or size: fi:|echo\n"},
        {"no command", "TYRIMG*\n\n\n2 2\n|echo", read, -1, "Unable to open: |echo\n"},
        {"negative size", "TYRIMG\n\n\n-2 2\n    ", read, -1,
         "IMG_read_tyr: Invalid picture: -2x2 of 8 bits, rows of -2 bytes\n"},
        {"nothing can be written", "", nowhere, 0,
         "Unable to open GIF file\nUnable to open PNG file\nUnable to open dump file\n"
         "Unable to open: /proc/none/a\n"},
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
        const std::string told = said([&] { EXPECT_EQ(c.call(name.c_str(), record), c.result); });
        const std::string named = "IMG_read: " + name + ": not an image, or a damaged one\n";
        EXPECT_TRUE(told == text || told == text + named) << told << text;
        EXPECT_EQ(fresh.data, nullptr);
    }
    EXPECT_EQ(said([] {
                  Image image;
                  EXPECT_EQ(IMG_read("/none/x.gif", &image, 0), 0);
              }),
              "IMG_read: Unable to open image file: /none/x.gif\n");
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

TEST_F(ImageFile, AFileThatIsNoImageIsNamed)
{
    const std::string cases[] = {"",
                                 "plain text that goes on for a while, longer than any magic",
                                 "GIF8",
                                 "\x89PNG but no more of it",
                                 "TYRIMG\n\n\nnowhere\n",
                                 std::string(300, '\xff')};
    for (const std::string &bytes : cases) {
        SCOPED_TRACE(bytes.substr(0, 20));
        const std::string name = dir_.write("no_image", bytes);
        Image image;
        int result = 1;
        const std::string told = said([&] { result = IMG_read_file(name.c_str(), &image); });
        EXPECT_NE(result, 1);
        EXPECT_NE(told.find(name + ": not an image"), std::string::npos) << told;
    }
}

} // namespace
