#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>

#include "tyr/paper/fixed_private.h"

namespace {

/// Powers of ten by which a float is multiplied in a double without rounding: 24 bits of its own
/// and at most 14 of the odd part of the factor.
constexpr std::array<double, 7> kScales = {1.0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6};
constexpr double kMost = 1e15; ///< below it every whole number is a double

/// Writes a whole number with a point ahead of its last digits.
char *write_scaled(uint64_t number, int digits, char *out)
{
    std::array<char, 24> text;
    char *at = text.data() + text.size();
    for (int i = 0; i < digits; ++i) {
        *--at = static_cast<char>('0' + number % 10);
        number /= 10;
    }
    if (digits > 0) {
        *--at = '.';
    }
    do {
        *--at = static_cast<char>('0' + number % 10);
        number /= 10;
    } while (number != 0);
    while (at != text.data() + text.size()) {
        *out++ = *at++;
    }
    return out;
}

} // namespace

char *tyr::write_fixed(Fixed number, char *out)
{
    const double size = std::fabs(number.value);
    if (number.digits >= 0 && number.digits < static_cast<int>(kScales.size()) &&
        size < kMost / kScales[static_cast<size_t>(number.digits)] &&
        static_cast<double>(static_cast<float>(number.value)) == number.value) {
        if (std::signbit(number.value)) {
            *out++ = '-';
        }
        // the product is exact: what rint rounds is the number itself
        const double scaled = std::rint(size * kScales[static_cast<size_t>(number.digits)]);
        return write_scaled(static_cast<uint64_t>(scaled), number.digits, out);
    }
    return std::to_chars(out, out + kFixedRoom, number.value, std::chars_format::fixed,
                         number.digits)
        .ptr;
}
