// GRIB messages made octet by octet: what they hold, how they stand in a stream, and what damage
// does to them.

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/capture.h"
#include "support/grib_message.h"
#include "support/temp_dir.h"
#include "tyr/base/file.h"
#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/res.h"
#include "tyr/grib/coding_private.h"
#include "tyr/grib/grib.h"
#include "tyr/grib/grib_stream_private.h"

using namespace tyr;

namespace {

constexpr float M = kMissing;

std::span<const std::uint8_t> bytes_of(const std::string &text)
{
    return {reinterpret_cast<const std::uint8_t *>(text.data()), text.size()};
}

struct Field {
    int result = -1;
    GridRec grid{};
    std::vector<float> values;
    std::string told;
};

Field read_field(tyr::GribStream &stream, int index, int mode = 0)
{
    Field field;
    GRD_init(&field.grid);
    field.told = told_by([&] { field.result = stream.read_grid(&field.grid, mode, &index); });
    if (field.grid.values != nullptr) {
        const size_t n = static_cast<size_t>(field.grid.domain.nx * field.grid.domain.ny);
        field.values.assign(field.grid.values, field.grid.values + n);
    }
    GRD_free(&field.grid);
    return field;
}

Field read_first(const std::string &text, int index = 0)
{
    tyr::GribStream stream(bytes_of(text), "test.grb");
    return read_field(stream, index);
}

std::string octets(int count)
{
    std::string text;
    for (int i = 0; i < count; ++i) {
        text += static_cast<char>(i);
    }
    return text;
}

std::string simple2(unsigned scanning = 0)
{
    return grib2_message(grib2_ident() + grib2_grid(scanning) + grib2_product() +
                         grib2_packing(12, 100.0F) + grib2_bitmap(255) + grib2_data(octets(12)));
}

class Grib : public testing::Test {
  protected:
    void SetUp() override { RES_put("file_path", TYR_SOURCE_DIR "/data"); }
};

TEST_F(Grib, EveryScanningModeComesOutNorthAndWestFirst)
{
    struct Case {
        const char *name;
        unsigned scanning;
        const char *places; ///< of the file's values, in hexadecimal
    };
    const Case cases[] = {
        {"plain", 0x00, "0123456789AB"},      {"from south", 0x40, "89AB45670123"},
        {"from east", 0x80, "32107654BA98"},  {"alternating", 0x10, "0123765489AB"},
        {"by columns", 0x20, "0369147A258B"}, {"all of them", 0xF0, "9832A741B650"},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        const Field field = read_first(simple2(c.scanning));
        ASSERT_EQ(field.result, 0) << field.told;
        std::string places;
        for (const float value : field.values) {
            places += "0123456789AB"[static_cast<int>(value) - 100];
        }
        EXPECT_EQ(places, c.places);
        EXPECT_FLOAT_EQ(field.grid.domain.clat, 49.0F);
        EXPECT_FLOAT_EQ(field.grid.domain.clon, 11.5F);
        EXPECT_FLOAT_EQ(field.grid.domain.dx, 1.0F);
    }
}

TEST_F(Grib, Edition2DescribesItsField)
{
    const Field field = read_first(simple2());
    EXPECT_EQ(field.grid.ltype, 100);
    EXPECT_EQ(field.grid.level, 500);
    EXPECT_EQ(field.grid.time, 6);
    EXPECT_EQ(field.grid.var, 11);
    EXPECT_STREQ(field.grid.units, "K");
    EXPECT_EQ(field.grid.source, 7);
    EXPECT_EQ(field.grid.model, 96);
    EXPECT_EQ(field.grid.version, 2);
    EXPECT_NE(std::string(field.grid.info).find("500"), std::string::npos);
}

TEST_F(Grib, AVariableThatTheListLacksKeepsItsTriplet)
{
    GridRec grid;
    GRD_init(&grid);
    GRIB_find_param(&grid, 7, 2, 1, 203);
    EXPECT_EQ(grid.var, 2001203);
}

TEST_F(Grib, ConstantFieldsTakeTheDecimalScale)
{
    const std::string text =
        grib2_message(grib2_ident() + grib2_grid() + grib2_product() +
                      grib2_packing(12, 250.0F, 1, 0) + grib2_bitmap(255) + grib2_data(""));
    EXPECT_EQ(read_first(text).values, std::vector<float>(12, 25.0F));
    Grib1Wish wish;
    wish.bits = 0;
    wish.data = "";
    wish.decimal = 1;
    EXPECT_EQ(read_first(grib1_message(wish)).values, std::vector<float>(12, 10.0F));
}

TEST_F(Grib, GroupsUnpackByReferenceAndBothScales)
{
    GribBytes packing; // template 5.2: 1000, binary scale 1, decimal scale 1, groups of 6 and 6
    packing.put(12, 4).put(2, 2).put(0x447A0000, 4).put(1, 2).put(1, 2).put(4, 1);
    packing.put_all({0, 1, 0}).put(0, 8).put(2, 4).put_all({0, 4}).put(6, 4).put(1, 1);
    packing.put(6, 4).put(0, 1);
    // references 1 and 2, widths 4 and 0, then 0 to 5 on top of the first
    const std::string text = grib2_message(grib2_ident() + grib2_grid() + grib2_product() +
                                           grib2_section(5, packing.text) + grib2_bitmap(255) +
                                           grib2_data("\x12\x40\x01\x23\x45"));
    std::vector<float> expected; // (1000 + 2 X) / 10
    for (const int x : {1, 2, 3, 4, 5, 6, 2, 2, 2, 2, 2, 2}) {
        expected.push_back(static_cast<float>(1000 + 2 * x) / 10.0F);
    }
    const std::vector<float> values = read_first(text).values;
    ASSERT_EQ(values.size(), expected.size());
    for (size_t i = 0; i < values.size(); ++i) {
        EXPECT_NEAR(values[i], expected[i], 1e-4F) << i;
    }
}

TEST_F(Grib, SeveralFieldsOfOneMessageShareTheirBitMap)
{
    const std::string text = grib2_message(
        grib2_ident() + grib2_grid() + grib2_product() + grib2_packing(4, 100.0F) +
        grib2_bitmap(0, "\x88\x88") + grib2_data(octets(4)) + grib2_product(2, 2, 85000) +
        grib2_packing(3, 7.0F) + grib2_bitmap(254) + grib2_data(octets(3)));
    const std::string stream_text = text + text;
    tyr::GribStream stream(bytes_of(stream_text), "test.grb");
    const std::vector<float> first = {100, M, M, M, 101, M, M, M, 102, M, M, M};
    const std::vector<float> second = {7, M, M, M, 8, M, M, M, 9, M, M, M};
    for (const int index : {0, 1, 2, 3, 3, 1, 0, 2}) { // back and forth, and one twice
        SCOPED_TRACE(index);
        const Field field = read_field(stream, index);
        ASSERT_EQ(field.result, 0) << field.told;
        EXPECT_EQ(field.values, index % 2 == 0 ? first : second);
        EXPECT_EQ(field.grid.level, index % 2 == 0 ? 500 : 850);
        EXPECT_EQ(field.grid.var, index % 2 == 0 ? 11 : 33);
    }
    EXPECT_EQ(read_field(stream, 4).result, -1);

    const TempDir folder;
    const std::string command = "|cat " + folder.write("fields", stream_text);
    const FilePtr pipe(FILE_open(command.c_str(), "r"));
    tyr::GribStream forward(pipe.get(), "pipe");
    tyr::GribHeader header;
    ASSERT_EQ(forward.read_header(&header), 0);
    EXPECT_EQ(header.date.year, 2020);
    for (int index = 0; index < 4; ++index) {
        EXPECT_EQ(read_field(forward, index).values, index % 2 == 0 ? first : second) << index;
    }
}

TEST_F(Grib, ThinnedRowsFillTheirPlacesFromFirstToLast)
{
    Grib1Wish wish;
    wish.row_lengths = {2, 5, 3};
    wish.data = octets(10);
    const Field field = read_first(grib1_message(wish));
    ASSERT_EQ(field.result, 0) << field.told;
    EXPECT_EQ(field.values, (std::vector<float>{100, 100.25F, 100.5F, 100.75F, 101, 102, 103, 104,
                                                105, 106, 107, 107.5F, 108, 108.5F, 109}));
    EXPECT_FLOAT_EQ(field.grid.domain.dx, 0.75F);
}

TEST_F(Grib, RunLengthsWithLevelsUnpack)
{
    GribBytes packing; // 4 bits, levels up to 3, of which 3 are listed in tenths
    packing.put(12, 4).put(200, 2).put(4, 1).put(3, 2).put(3, 2).put(1, 1);
    packing.put(10, 2).put(20, 2).put(30, 2);
    // level 1 by 3, level 0 once, level 3 by 1 + 2 + 12 * ..., what is beyond the grid is dropped
    const std::string data = "\x15\x03\x64"; // 1 | 5: 1 more | 0 | 3 | 6: 2 more | 4: nothing more
    const std::string text =
        grib2_message(grib2_ident() + grib2_grid() + grib2_product() +
                      grib2_section(5, packing.text) + grib2_bitmap(255) + grib2_data(data));
    const Field field = read_first(text);
    ASSERT_EQ(field.result, 0) << field.told;
    EXPECT_EQ(field.values, (std::vector<float>{1, 1, M, 3, 3, 3, M, M, M, M, M, M}));
}

TEST_F(Grib, TimesOfEdition1BecomeOneNumber)
{
    struct Case {
        const char *name;
        int unit, p1, p2, range, averaged, time;
    };
    const Case cases[] = {
        {"hours", 1, 6, 0, 0, 0, 6},
        {"days", 2, 2, 0, 0, 0, 802},
        {"months", 3, 2, 0, 0, 0, 902},
        {"3 hours", 10, 2, 0, 0, 0, 6},
        {"6 hours", 11, 2, 0, 0, 0, 12},
        {"12 hours", 12, 2, 0, 0, 0, 24},
        {"initialised", 1, 6, 0, 1, 0, 0},
        {"between", 1, 0, 12, 2, 0, 2000012},
        {"average", 1, 0, 6, 3, 0, 3000006},
        {"accumulation", 1, 6, 12, 4, 0, 4006012},
        {"difference", 1, 6, 12, 5, 0, 5006012},
        {"long", 1, 1, 44, 10, 0, 300},
        {"average of N", 1, 0, 6, 113, 4, 13000024},
        {"average of N, second", 1, 1, 6, 118, 4, 18001024},
        {"average of N, its third", 1, 1, 6, 123, 4, 23000024},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(tyr::grib_time1(c.unit, c.p1, c.p2, c.range, c.averaged), c.time);
    }
    EXPECT_EQ(tyr::grib_time2(1, 6, 1, 1, 6), 4006012);
    EXPECT_EQ(tyr::grib_time2(11, 1, 2, 11, 1), 6006012);
    EXPECT_EQ(tyr::grib_time2(2, 2, -1, 0, 0), 802);
}

TEST_F(Grib, SurfacesOfEdition2BecomeLevelsOfEdition1)
{
    struct Case {
        const char *name;
        int type1;
        double value1;
        int type2;
        double value2;
        int ltype, level;
    };
    const Case cases[] = {
        {"pressure", 100, 50000, 255, 0, 100, 500},
        {"pressure layer", 100, 100000, 100, 50000, 101, 100050},
        {"sea level", 101, 0, 255, 0, 102, 0},
        {"height", 102, 1500, 255, 0, 103, 1500},
        {"height layer", 102, 3000, 102, 1500, 104, 30015},
        {"above ground", 103, 1.6, 255, 0, 105, 2},
        {"sigma", 104, 0.995, 255, 0, 107, 9950},
        {"sigma layer", 104, 0.5, 104, 1.0, 108, 50100},
        {"hybrid", 105, 32, 255, 0, 109, 32},
        {"depth", 106, 0.1, 255, 0, 111, 10},
        {"depth layer", 106, 0.1, 106, 0.4, 112, 10040},
        {"theta", 107, 320, 255, 0, 113, 320},
        {"ground layer", 108, 3000, 108, 0, 116, 30000},
        {"vorticity", 109, 2e-6, 255, 0, 117, 2},
        {"other", 220, 5, 255, 0, 220, 5},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        int ltype = 0;
        int level = 0;
        tyr::grib_level2({c.type1, c.value1}, {c.type2, c.value2}, &ltype, &level);
        EXPECT_EQ(ltype, c.ltype);
        EXPECT_EQ(level, c.level);
    }
}

TEST_F(Grib, ProductsAreFoundInEveryEnvelopeAndBetweenRubbish)
{
    const std::string one = grib1_message();
    const std::string start = "\001\r\r\n";
    const std::string lines = start + "123\r\r\nHTXX85 KWBC 040600\r\r\n";
    const std::string length = "GRIB: " + std::to_string(start.size() + 15 + one.size()) + "\n";
    const std::string trailer = "\r\r\n\003";
    const std::string bare = one + one;
    const std::string stars = "** HTXX85 KWBC 040600xyz\n" + one + trailer + one;
    const std::string bulletin = lines + one + trailer + lines + one + trailer;
    const std::string lengths = length + start + "1\r\r\nABCD\r\r\n" + one + "\n" + length + one;
    const std::string rubbish = "GRIBGRI?" + one + std::string(9000, 'G') + one + "tail";
    const std::string cut = one + one.substr(0, one.size() - 20);
    const std::string lost_end = one.substr(0, one.size() - 20) + one;
    struct Case {
        const char *name;
        std::string text;
        int messages;
        const char *heading; ///< of the first
    };
    const Case cases[] = {
        {"bare", bare, 2, "GRIB01 KXXX 010000"},         {"stars", stars, 2, "HTXX85 KWBC 040600"},
        {"bulletin", bulletin, 2, "HTXX85 KWBC 040600"}, {"length", lengths, 2, "ABCD"},
        {"rubbish", rubbish, 2, "GRIB01 KXXX 010000"},   {"cut", cut, 1, "GRIB01 KXXX 010000"},
        {"lost end", lost_end, 1, "GRIB01 KXXX 010000"},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        tyr::GribStream stream(bytes_of(c.text), "test.grb");
        int good = 0;
        for (int index = 0;; ++index) {
            const Field field = read_field(stream, index);
            if (index == 0) {
                EXPECT_EQ(stream.heading(), c.heading);
            }
            if (field.result < 0) {
                break;
            }
            good += field.result == 0 ? 1 : 0;
        }
        EXPECT_EQ(good, c.messages);
    }
}

TEST_F(Grib, DescriptionsComeFromTheIndexAlone)
{
    const std::string one = grib1_message();
    const std::string text = one + one;
    tyr::GribStream stream(bytes_of(text), "test.grb");
    const TempDir folder;
    const std::string path = folder.write("index", "0 a / GRIB S58 M3 G211 T12 L100 H850 V33\n"
                                                   "rubbish\n" +
                                                       std::to_string(one.size()) +
                                                       " b / 8:77 212 24 105 2 11\n"
                                                       "0 c / 1 2 3 100 500 7\n");
    ASSERT_EQ(stream.attach_index(path.c_str()), 0);
    const Field first = read_field(stream, 0, 2);
    EXPECT_EQ(first.grid.source, 58);
    EXPECT_EQ(first.grid.level, 850);
    EXPECT_EQ(first.grid.var, 33);
    const Field second = read_field(stream, 1, 1);
    EXPECT_EQ(second.grid.source, 8);
    EXPECT_EQ(second.grid.model, 77);
    EXPECT_EQ(second.grid.ltype, 105);
    EXPECT_STREQ(second.grid.info, "");
    EXPECT_EQ(read_field(stream, 2, 1).grid.source, 7);
    EXPECT_EQ(read_field(stream, 1, 0).values.size(), 12U);
    EXPECT_EQ(read_field(stream, 3, 1).result, -1);
    EXPECT_EQ(stream.attach_index(""), -1);
}

TEST_F(Grib, TheGuardMakesTheRestOfADamagedProductMissing)
{
    Grib1Wish wish;
    wish.data = std::string("\0\377\0\377\0\377\0\377\0\377\0\377", 12);
    EXPECT_EQ(read_first(grib1_message(wish)).values[11], 355.0F);
    GRIB_set_max_bad(2);
    wish.ltype = 1; // rows of four have three steps: one more than is borne
    const Field field = read_first(grib1_message(wish));
    GRIB_set_max_bad(-1);
    EXPECT_EQ(field.values[2], 100.0F);
    EXPECT_EQ(field.values[3], kMissing);
    EXPECT_EQ(field.values[11], kMissing);
}

TEST_F(Grib, WhatIsNotKnownIsToldInOneLine)
{
    std::string text = simple2();
    text[16 + 21 + 13] = 40; // low octet of the grid template's number
    tyr::GribStream stream(bytes_of(text), "test.grb");
    const Field field = read_field(stream, 0);
    EXPECT_EQ(field.result, 1);
    EXPECT_EQ(field.told, "GRIB: test.grb, message 1: grid template 40 (Gaussian) isn't known\n");
}

/// Reads all of a damaged stream, by values and by descriptions.
void read_all(const std::string &text)
{
    for (const int mode : {0, 1}) {
        tyr::GribStream stream(bytes_of(text), "test.grb");
        GridRec grid;
        GRD_init(&grid);
        for (int index = 0; index < 8 && stream.read_grid(&grid, mode, &index) >= 0; ++index) {
            GRD_free(&grid);
        }
        GRD_free(&grid);
    }
}

TEST_F(Grib, NoByteOfAMessageCanBringItDown)
{
    GribBytes complex; // template 5.3: two groups of 6 and order 2
    complex.put(12, 4).put(3, 2).put(0x43480000, 4).put(0, 4).put(4, 1).put_all({0, 1, 0});
    complex.put(0, 8).put(2, 4).put_all({0, 4}).put(6, 4).put(1, 1).put(6, 4).put_all({0, 2, 2});
    const std::string differenced = grib2_message(
        grib2_ident() + grib2_grid() + grib2_product() + grib2_section(5, complex.text) +
        grib2_bitmap(255) + grib2_data(octets(6) + "\x11\x44" + octets(6)));
    Grib1Wish thinned;
    thinned.row_lengths = {2, 5, 3};
    ASSERT_EQ(read_first(differenced).result, 0);
    MSG_set_mask(0, 0);
    for (const std::string &good : {simple2(), differenced, grib1_message(thinned)}) {
        for (size_t i = 0; i < good.size(); ++i) {
            for (const int change : {0x00, 0xFF, 0x7F, ~good[i]}) {
                std::string bad = good;
                bad[i] = static_cast<char>(change);
                read_all(bad);
            }
            read_all(good.substr(0, i));
        }
    }
}

} // namespace
