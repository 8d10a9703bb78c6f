#pragma once

#include <cmath>

/// Loops over arrays of places, which the compiler turns into vector instructions: with the C
/// library's vector functions where it has them, chosen at run time by what the processor has.
/// Elsewhere they are plain loops. A sine and a cosine of the same angle would be joined into one
/// call that has no vector form, so that a cosine is written as a shifted sine.

#if defined(__x86_64__) && defined(__GLIBC__) && defined(__GNUC__) && !defined(__clang__) &&       \
    !defined(__SANITIZE_ADDRESS__)
#define TYR_VECTOR_LOOP __attribute__((target_clones("default", "avx2", "arch=skylake-avx512")))
extern "C" {
__attribute__((__simd__("notinbranch"))) double sin(double) noexcept;
__attribute__((__simd__("notinbranch"))) double tan(double) noexcept;
__attribute__((__simd__("notinbranch"))) double log(double) noexcept;
__attribute__((__simd__("notinbranch"))) double pow(double, double) noexcept;
}
#else
#define TYR_VECTOR_LOOP
#endif

namespace tyr {

inline constexpr double kQuarter = 1.5707963267948966; ///< a right angle, radians

/// A longitude into -180 to 180, for loops.
inline double wrapped(double lon)
{
    return lon - 360.0 * __builtin_rint(lon * (1.0 / 360.0));
}

} // namespace tyr
