// The image container: its forms, its encodings, what is short.

#include <filesystem>

#include "image/image_cases.h"

namespace {

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
        {"plain", old + "3 2\n" + data, kMissingInt, nowhere},
        {"lat-lon", old + "LL 4 -9 .5 .2 3 2\n" + data, 2, {none, none, none, none, 4, .2F}},
        {"Mercator", old + "ME 4 -9 1 2 3 2\n" + data, 3, {none, none, none, none, 4, 2}},
        {"polar", old + "PS 4 -9 1 2 3 2\n" + data, 1, {none, none, none, none, 4, 2}},
        {"polar at 60", old + "PS:60 4 -9 1 2 3 2\n" + data, 1, {none, none, 60, none, 4, 2}},
        {"Lambert", old + "LC:5:-5:30:60:2 4 -9 1 2 3 2\n" + data, 4, {5, -5, 30, 2, 4, 2}},
        {"satellite", old + "SAT:0:-7 4 -9 1 2 3 2\n" + data, 9, {0, -7, none, none, 4, 2}},
        {"domain",
         "TYRIMG4" + lines + "ps,4,-9,3,2,1,2\n" + data,
         1,
         {none, none, none, none, 4, 2}},
        {"two streams", "TYRIMGZ" + lines + streams, kMissingInt, nowhere},
        {"elsewhere", "TYRIMG*" + lines + elsewhere, kMissingInt, nowhere},
        {"extras", "TYRIMGCV" + lines + extras, kMissingInt, nowhere},
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
    const auto write_rest = [&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        std::ofstream(name, std::ios::app | std::ios::binary) << whole.substr(cut.size());
    };
    namespace fs = std::filesystem;
    fs::last_write_time(name, fs::file_time_type::clock::now() - std::chrono::hours(1));
    std::thread late(write_rest);
    Image old;
    ASSERT_EQ(IMG_read_tyr(name.c_str(), &old, 0), 1);
    late.join();
    EXPECT_EQ(data(old), "abcd" + rest) << "nobody writes to a file of an hour ago";
    dir_.write("a", cut);
    std::thread writer(write_rest);
    Image waited;
    ASSERT_EQ(IMG_read_tyr(name.c_str(), &waited, 0), 1);
    writer.join();
    EXPECT_EQ(data(waited), "abcdef");
}

TEST_F(ImageFile, TyrimgIsOneByteAPixel)
{
    const Storage cases[] = {
        {"32 bits: the mean", 32, 24, 0, {0xff0000, 0xff00, 0xff}, 200},
        {"32 bits, other way", 32, 24, 1, {0xff0000, 0xff00, 0xff}, 200},
        {"24 bits: low byte", 24, 24, 1, {0xff0000, 0xff00, 0xff}, 200},
        {"8 bits: the byte", 8, 8, 0, {}, 256},
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

} // namespace
