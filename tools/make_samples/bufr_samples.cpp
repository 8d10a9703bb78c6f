#include "tools/make_samples/bufr_samples.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <iterator>
#include <optional>
#include <stdexcept>
#include <vector>

#include "tools/make_samples/weather.h"

namespace {

constexpr int kSitesPerMessage = 5;
constexpr int kLowRounds = 37;  ///< 36 levels, and one without data that closes the group
constexpr int kHighRounds = 29; ///< 28 levels above the low mode, and one without data

/// Big-endian bits.
class BitWriter {
  public:
    void put(uint64_t value, int bits)
    {
        for (int i = bits - 1; i >= 0; --i) {
            if (used_ % 8 == 0) {
                bytes_.push_back('\0');
            }
            if ((value >> i & 1U) != 0) {
                bytes_.back() = static_cast<char>(bytes_.back() | 1 << (7 - used_ % 8));
            }
            ++used_;
        }
    }
    void missing(int bits) { put((uint64_t{1} << bits) - 1, bits); }
    /// A value in units of its scale, from its reference on.
    void number(double value, double scale, int reference, int bits)
    {
        put(static_cast<uint64_t>(std::llround(value / scale) - reference), bits);
    }
    /// Pads to an even number of bytes.
    std::string bytes() const { return bytes_.size() % 2 == 0 ? bytes_ : bytes_ + '\0'; }

  private:
    std::string bytes_;
    int used_ = 0;
};

struct Descriptor {
    int f, x, y;
};

/// The group of one level.
constexpr Descriptor kGroup[] = {
    {0, 25, 32 },
    {0, 25, 34 },
    {2, 1,  116},
    {0, 8,  22 },
    {2, 1,  0  },
    {0, 11, 3  },
    {0, 11, 4  },
    {2, 1,  127},
    {0, 11, 50 },
    {2, 1,  0  },
    {2, 1,  116},
    {0, 8,  22 },
    {2, 1,  0  },
    {2, 1,  129},
    {2, 6,  8  },
    {0, 21, 192},
    {2, 1,  0  },
    {0, 11, 6  },
    {0, 11, 51 },
};
constexpr Descriptor kHead[] = {
    {0, 1,  1  },
    {0, 1,  2  },
    {0, 5,  2  },
    {0, 6,  2  },
    {0, 7,  1  },
    {0, 4,  1  },
    {0, 4,  2  },
    {0, 4,  3  },
    {0, 4,  4  },
    {0, 4,  5  },
    {0, 8,  21 },
    {0, 4,  25 },
    {0, 11, 2  },
    {0, 11, 1  },
    {0, 10, 51 },
    {0, 12, 1  },
    {0, 13, 14 },
    {0, 13, 3  },
    {2, 1,  127},
    {0, 7,  5  },
    {2, 1,  0  },
    {0, 25, 33 },
    {2, 1,  132},
    {0, 7,  5  },
    {2, 1,  0  },
};
constexpr Descriptor kStep[] = {
    {2, 1, 132},
    {0, 7, 5  },
    {2, 1, 0  }
};

std::vector<Descriptor> descriptors()
{
    constexpr int kGroupLength = static_cast<int>(std::size(kGroup));
    std::vector<Descriptor> all(std::begin(kHead), std::end(kHead));
    all.push_back({1, kGroupLength, kLowRounds});
    all.insert(all.end(), std::begin(kGroup), std::end(kGroup));
    all.insert(all.end(), std::begin(kStep), std::end(kStep));
    all.push_back({1, kGroupLength, kHighRounds});
    all.insert(all.end(), std::begin(kGroup), std::end(kGroup));
    return all;
}

void put_level(BitWriter &bits, bool is_high, const std::optional<SampleWind> &wind)
{
    bits.put(is_high ? 1 : 0, 2);
    bits.put(wind ? 0 : 15, 4);
    wind ? bits.put(5, 4) : bits.missing(4);
    const auto component = [&](float value) {
        wind ? bits.number(value, 0.1, -4096, 13) : bits.missing(13);
    };
    component(wind ? wind->u : 0.0F);
    component(wind ? wind->v : 0.0F);
    wind ? bits.put(1, 11) : bits.missing(11);
    wind ? bits.put(5, 4) : bits.missing(4);
    wind ? bits.put(60, 8) : bits.missing(8);
    component(wind ? wind->w : 0.0F);
    wind ? bits.put(0, 8) : bits.missing(8);
}

void put_report(BitWriter &bits, const SampleSite &site, const tm &date, int hour)
{
    const SampleSurface s = sample_surface(site, hour);
    bits.put(static_cast<uint64_t>(site.wmo / 1000), 7);
    bits.put(static_cast<uint64_t>(site.wmo % 1000), 10);
    bits.number(site.lat, 0.01, -9000, 15);
    bits.number(site.lon, 0.01, -18000, 16);
    bits.number(site.elev, 1.0, -400, 15);
    bits.put(static_cast<uint64_t>(date.tm_year + 1900), 12);
    bits.put(static_cast<uint64_t>(date.tm_mon + 1), 4);
    bits.put(static_cast<uint64_t>(date.tm_mday), 6);
    bits.put(static_cast<uint64_t>(date.tm_hour), 5);
    bits.put(static_cast<uint64_t>(date.tm_min), 6);
    bits.put(2, 5);
    bits.number(-60.0, 1.0, -2048, 12);
    bits.number(s.speed, 0.1, 0, 12);
    bits.number(s.direction, 1.0, 0, 9);
    bits.number(s.pressure * 100.0, 10.0, 0, 14);
    bits.number(s.temperature + 273.15, 0.1, 0, 12);
    bits.missing(12);
    bits.number(100.0 - 5.0 * (s.temperature - s.dew_point), 1.0, 0, 7);
    bits.number(kLowBottom - kGate, 1.0, -400, 11);
    bits.put(0, 2);
    bits.number(kGate, 1.0, -400, 16);
    for (int i = 0; i < kLowRounds; ++i) {
        put_level(bits, false,
                  i < kModeLevels ? sample_wind(site, hour, kLowBottom + kGate * i) : std::nullopt);
    }
    bits.number(kGate, 1.0, -400, 16);
    for (int i = 0; i < kHighRounds; ++i) {
        const int height = kLowBottom + kGate * (kModeLevels + i);
        put_level(bits, true, i < kHighRounds - 1 ? sample_wind(site, hour, height) : std::nullopt);
    }
}

std::string octets(size_t value, int count)
{
    std::string text;
    for (int i = count - 1; i >= 0; --i) {
        text += static_cast<char>(value >> (8 * i) & 0xFF);
    }
    return text;
}

std::string bufr_message(const std::vector<SampleSite> &sites, const tm &date, int hour)
{
    const std::string section1 = octets(18, 3) + octets(0, 1) + octets(59, 2) + octets(0, 2) +
                                 octets(2, 1) + octets(7, 1) + octets(4, 1) + octets(1, 1) +
                                 octets(static_cast<size_t>(date.tm_year % 100), 1) +
                                 octets(static_cast<size_t>(date.tm_mon + 1), 1) +
                                 octets(static_cast<size_t>(date.tm_mday), 1) +
                                 octets(static_cast<size_t>(date.tm_hour), 1) +
                                 octets(static_cast<size_t>(date.tm_min), 1) + octets(0, 1);
    std::string list;
    for (const Descriptor &d : descriptors()) {
        list +=
            octets(static_cast<size_t>(d.f << 6 | d.x), 1) + octets(static_cast<size_t>(d.y), 1);
    }
    list += '\0';
    const std::string section3 = octets(7 + list.size(), 3) + octets(0, 1) +
                                 octets(sites.size(), 2) + octets(0x80, 1) + list;
    BitWriter bits;
    for (const SampleSite &site : sites) {
        put_report(bits, site, date, hour);
    }
    const std::string data = bits.bytes();
    const std::string section4 = octets(4 + data.size(), 3) + octets(0, 1) + data;
    const std::string body = section1 + section3 + section4 + "7777";
    return "BUFR" + octets(8 + body.size(), 3) + octets(3, 1) + body;
}

} // namespace

void write_bufr(const std::string &path, long seconds, int hour)
{
    const time_t stamp = seconds;
    const tm date = *gmtime(&stamp);
    std::ofstream out(path, std::ios::binary);
    const std::vector<SampleSite> all = sample_reports(hour);
    for (size_t first = 0; first < all.size(); first += kSitesPerMessage) {
        const size_t last = std::min(all.size(), first + kSitesPerMessage);
        std::array<char, 64> heading;
        std::snprintf(heading.data(), heading.size(), "*** IUPT%02zu KBOU %02d%02d00 ***\n",
                      first / kSitesPerMessage + 1, date.tm_mday, date.tm_hour);
        out << heading.data()
            << bufr_message(
                   {all.begin() + static_cast<long>(first), all.begin() + static_cast<long>(last)},
                   date, hour)
            << "\r\r\n";
    }
    if (!out.flush()) {
        throw std::runtime_error("cannot write " + path);
    }
}
