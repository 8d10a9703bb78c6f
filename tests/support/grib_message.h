#pragma once

#include <cstdint>
#include <string>
#include <vector>

// Small GRIB messages made octet by octet, after the published section tables.

/// Octets in the making; numbers go in with the most significant octet first.
class GribBytes {
  public:
    GribBytes &put(std::uint64_t value, int octets)
    {
        for (int i = octets - 1; i >= 0; --i) {
            text += static_cast<char>(i < 8 ? value >> (8 * i) & 0xFFU : 0U);
        }
        return *this;
    }
    /// Sign and magnitude.
    GribBytes &put_signed(long value, int octets)
    {
        const std::uint64_t sign = value < 0 ? std::uint64_t{1} << (8 * octets - 1) : 0U;
        return put(static_cast<std::uint64_t>(value < 0 ? -value : value) | sign, octets);
    }
    GribBytes &put_all(const std::vector<int> &octets)
    {
        for (const int octet : octets) {
            put(static_cast<std::uint64_t>(octet), 1);
        }
        return *this;
    }
    std::string text;
};

/// A section of edition 2 with its length and number in front.
inline std::string grib2_section(int number, const std::string &body)
{
    return GribBytes().put(body.size() + 5, 4).put(static_cast<unsigned>(number), 1).text + body;
}

inline std::string grib2_message(const std::string &sections, int discipline = 0)
{
    const std::string body = sections + "7777";
    return "GRIB" +
           GribBytes()
               .put(0, 2)
               .put(static_cast<unsigned>(discipline), 1)
               .put(2, 1)
               .put(body.size() + 16, 8)
               .text +
           body;
}

inline std::string grib2_ident()
{
    return grib2_section(1, GribBytes()
                                .put(7, 2)
                                .put(0, 2)
                                .put_all({2, 1, 1})
                                .put(2020, 2)
                                .put_all({3, 4, 6, 30, 0, 0, 1})
                                .text);
}

/// 4 by 3 points from 50 N 10 E southward and eastward by 1 degree, in a scanning mode.
inline std::string grib2_grid(unsigned scanning = 0, int nx = 4, int ny = 3)
{
    const long micro = 1000000;
    const bool is_west = (scanning & 0x80U) != 0;
    const bool is_up = (scanning & 0x40U) != 0;
    const long width = (nx - 1) * micro;
    const long height = (ny - 1) * micro;
    const long west = 10 * micro;
    const long north = 50 * micro;
    GribBytes b;
    b.put(0, 1).put(static_cast<unsigned>(nx * ny), 4).put(0, 2).put(0, 2);
    b.put_all({6}).put(0, 15).put(static_cast<unsigned>(nx), 4).put(static_cast<unsigned>(ny), 4);
    b.put(0, 4).put(0xFFFFFFFF, 4);
    b.put_signed(is_up ? north - height : north, 4).put_signed(is_west ? west + width : west, 4);
    b.put(0x30, 1);
    b.put_signed(is_up ? north : north - height, 4).put_signed(is_west ? west : west + width, 4);
    b.put(micro, 4).put(micro, 4).put(scanning, 1);
    return grib2_section(3, b.text);
}

/// Temperature, 6 hours, at 500 hPa by the surface's value in Pa.
inline std::string grib2_product(int category = 0, int number = 0, long pascals = 50000)
{
    GribBytes b;
    b.put(0, 2).put(0, 2).put_all({category, number, 2, 0, 96}).put(0, 3).put(1, 1).put(6, 4);
    b.put_all({100, 0}).put_signed(pascals, 4).put_all({255, 0}).put(0, 4);
    return grib2_section(4, b.text);
}

/// Simple packing of 8 bits: values reference + X.
inline std::string grib2_packing(unsigned points, float reference, int decimal = 0, int bits = 8)
{
    std::uint32_t word = 0;
    static_assert(sizeof word == sizeof reference);
    __builtin_memcpy(&word, &reference, sizeof word);
    return grib2_section(5, GribBytes()
                                .put(points, 4)
                                .put(0, 2)
                                .put(word, 4)
                                .put_signed(0, 2)
                                .put_signed(decimal, 2)
                                .put(static_cast<unsigned>(bits), 1)
                                .put(0, 1)
                                .text);
}

inline std::string grib2_bitmap(int indicator, const std::string &bits = "")
{
    return grib2_section(6, GribBytes().put(static_cast<unsigned>(indicator), 1).text + bits);
}

inline std::string grib2_data(const std::string &octets)
{
    return grib2_section(7, octets);
}

/// What an edition 1 message varies in.
struct Grib1Wish {
    int variable = 11, ltype = 100, level = 500;
    int unit = 1, p1 = 6, p2 = 0, range = 0;
    int decimal = 0;
    int bits = 8;
    std::vector<int> row_lengths = {}; ///< of a thinned grid
    std::string data = std::string("\0\1\2\3\4\5\6\7\10\11\12\13", 12);
};

inline std::string grib1_message(const Grib1Wish &wish = {})
{
    constexpr unsigned kReference100 = 0x42640000; ///< 100.0 as an IBM float
    const bool is_thinned = !wish.row_lengths.empty();
    GribBytes pds;
    pds.put(28, 3).put_all({3, 7, 96, 255, 0x80, wish.variable, wish.ltype});
    pds.put(static_cast<unsigned>(wish.level), 2).put_all({20, 3, 4, 6, 0});
    pds.put_all({wish.unit, wish.p1, wish.p2, wish.range, 0, 0, 0, 21, 0})
        .put_signed(wish.decimal, 2);
    GribBytes gds;
    gds.put(32 + 2 * wish.row_lengths.size(), 3).put_all({0, is_thinned ? 33 : 255, 0});
    gds.put(is_thinned ? 0xFFFF : 4, 2).put(3, 2).put_signed(50000, 3).put_signed(10000, 3);
    gds.put(is_thinned ? 0x00 : 0x80, 1).put_signed(48000, 3).put_signed(13000, 3);
    gds.put(is_thinned ? 0xFFFF : 1000, 2).put(1000, 2).put(0, 1).put(0, 4);
    for (const int n : wish.row_lengths) {
        gds.put(static_cast<unsigned>(n), 2);
    }
    GribBytes bds;
    bds.put(11 + wish.data.size(), 3).put(0, 1).put_signed(0, 2).put(kReference100, 4);
    bds.put(static_cast<unsigned>(wish.bits), 1);
    const std::string body = pds.text + gds.text + bds.text + wish.data + "7777";
    return "GRIB" + GribBytes().put(body.size() + 8, 3).put(1, 1).text + body;
}
