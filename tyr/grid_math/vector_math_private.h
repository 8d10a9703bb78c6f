#pragma once

// Functions without branches and calls, so that a loop over many points is vectorised, and with
// the same bytes for a point wherever it stands. Errors are below 1e-13 of the value: results that
// become floats hardly ever differ from the library's.

#include <bit>
#include <cmath>
#include <cstdint>

/// Compiles a routine a second time for processors with wider vectors; which one runs is settled at
/// start. The bytes of the result are the same: nothing is fused.
#if defined(__x86_64__) && defined(__GLIBC__) && !defined(__clang__) &&                            \
    !defined(__SANITIZE_ADDRESS__)
#define TYR_WIDE __attribute__((target_clones("avx512f", "avx2", "default")))
#else
#define TYR_WIDE
#endif

namespace tyr {

inline constexpr double kLn2High = 0x1.62e42feep-1; ///< ln 2 to 32 bits, and what is left
inline constexpr double kLn2Low = 0x1.a39ef35793c76p-33;
inline constexpr double kLn10 = 2.302585092994045684;
inline constexpr std::uint64_t kExponentShift = 52;

/// e^x for x of -700 to 700: 2^k times the series of the rest, which lies within half of ln 2.
inline double quick_exp(double x)
{
    constexpr double kLog2E = 1.442695040888963407;
    constexpr double kRounder = 0x1.8p52; // added and taken off it rounds to a whole number
    constexpr std::uint64_t kBias = 1023;
    const double shifted = x * kLog2E + kRounder;
    const double k = shifted - kRounder;
    const double r = (x - k * kLn2High) - k * kLn2Low;
    double series = 1.0 / 39916800.0; // 1 / 11!
    series = series * r + 1.0 / 3628800.0;
    series = series * r + 1.0 / 362880.0;
    series = series * r + 1.0 / 40320.0;
    series = series * r + 1.0 / 5040.0;
    series = series * r + 1.0 / 720.0;
    series = series * r + 1.0 / 120.0;
    series = series * r + 1.0 / 24.0;
    series = series * r + 1.0 / 6.0;
    series = series * r + 0.5;
    series = series * r + 1.0;
    series = series * r + 1.0;
    // the whole number stands in the lowest bits
    const std::uint64_t scale = (std::bit_cast<std::uint64_t>(shifted) + kBias) << kExponentShift;
    return series * std::bit_cast<double>(scale);
}

/// ln x for a positive normal x: k ln 2 and twice the series of artanh((m - 1) / (m + 1)), with m
/// from the root of one half to that of two.
inline double quick_log(double x)
{
    constexpr std::uint64_t kRootOfHalf = 0x3fe6a09e667f3bcd;
    constexpr std::uint64_t kOffset = 1024; // keeps k above 0
    constexpr std::uint64_t kWhole = 0x4330000000000000;
    const auto bits = std::bit_cast<std::uint64_t>(x);
    const std::uint64_t lifted =
        (bits - kRootOfHalf + (kOffset << kExponentShift)) >> kExponentShift;
    const double k = std::bit_cast<double>(lifted | kWhole) - (0x1p52 + 1024.0);
    const double m = std::bit_cast<double>(bits - ((lifted - kOffset) << kExponentShift));
    const double s = (m - 1.0) / (m + 1.0);
    const double z = s * s;
    double series = 1.0 / 15.0;
    series = series * z + 1.0 / 13.0;
    series = series * z + 1.0 / 11.0;
    series = series * z + 1.0 / 9.0;
    series = series * z + 1.0 / 7.0;
    series = series * z + 1.0 / 5.0;
    series = series * z + 1.0 / 3.0;
    series = series * z + 1.0;
    return k * kLn2High + (2.0 * s * series + k * kLn2Low);
}

inline double quick_exp10(double x)
{
    return quick_exp(x * kLn10);
}

inline double quick_log10(double x)
{
    return quick_log(x) * (1.0 / kLn10);
}

/// atan2(y, x) in degrees, to 1e-9; 0 where both are 0.
inline double quick_atan2d(double y, double x)
{
    constexpr double kDegrees = 57.29577951308232088;
    constexpr double kTanEighth = 0.4142135623730950488; // of pi / 8
    const double a = std::fabs(x);
    const double b = std::fabs(y);
    const double large = a > b ? a : b;
    const double small = a > b ? b : a;
    const double ratio = small / (large > 0.0 ? large : 1.0);
    const bool is_steep = ratio > kTanEighth;
    const double r = is_steep ? (ratio - 1.0) / (ratio + 1.0) : ratio;
    const double z = r * r;
    double series = 1.0 / 23.0;
    series = 1.0 / 21.0 - series * z;
    series = 1.0 / 19.0 - series * z;
    series = 1.0 / 17.0 - series * z;
    series = 1.0 / 15.0 - series * z;
    series = 1.0 / 13.0 - series * z;
    series = 1.0 / 11.0 - series * z;
    series = 1.0 / 9.0 - series * z;
    series = 1.0 / 7.0 - series * z;
    series = 1.0 / 5.0 - series * z;
    series = 1.0 / 3.0 - series * z;
    series = 1.0 - series * z;
    double angle = r * series * kDegrees + (is_steep ? 45.0 : 0.0);
    angle = b > a ? 90.0 - angle : angle;
    angle = x < 0.0 ? 180.0 - angle : angle;
    return y < 0.0 ? -angle : angle;
}

/// Sine (turned = 0) or cosine (1) of an angle in degrees below 1e9, to 1e-14; exact at whole
/// quarters of the circle.
inline double quick_sind(double degrees, std::uint64_t turned)
{
    constexpr double kRadians = 0.01745329251994329577;
    constexpr double kRounder = 0x1.8p52;
    const double shifted = degrees * (1.0 / 90.0) + kRounder;
    const double r = (degrees - 90.0 * (shifted - kRounder)) * kRadians;
    const double z = r * r;
    double sine = -1.0 / 1307674368000.0; // 1 / 15!
    sine = sine * z + 1.0 / 6227020800.0;
    sine = sine * z - 1.0 / 39916800.0;
    sine = sine * z + 1.0 / 362880.0;
    sine = sine * z - 1.0 / 5040.0;
    sine = sine * z + 1.0 / 120.0;
    sine = sine * z - 1.0 / 6.0;
    sine = r + r * z * sine;
    double cosine = 1.0 / 87178291200.0; // 1 / 14!
    cosine = 1.0 / 479001600.0 - cosine * z;
    cosine = 1.0 / 3628800.0 - cosine * z;
    cosine = 1.0 / 40320.0 - cosine * z;
    cosine = 1.0 / 720.0 - cosine * z;
    cosine = 1.0 / 24.0 - cosine * z;
    cosine = 0.5 - cosine * z;
    cosine = 1.0 - cosine * z;
    const std::uint64_t quarter = std::bit_cast<std::uint64_t>(shifted) + turned;
    const double value = (quarter & 1U) != 0 ? cosine : sine;
    return (quarter & 2U) != 0 ? -value : value;
}

} // namespace tyr
