#pragma once

#include <cstddef>

namespace tyr {

/// A number with that many digits behind the point.
struct Fixed {
    double value;
    int digits;
};

inline constexpr std::size_t kFixedRoom = 352; ///< the greatest double in full, sign and digits

/// Writes a number as printf's "%.nf" does in the C locale, ties to even; not ended by a NUL.
/// @param out  of kFixedRoom bytes
/// @return     behind the last character
char *write_fixed(Fixed number, char *out);

} // namespace tyr
