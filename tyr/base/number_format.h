#pragma once

#include <string>

/// Numbers by the printf formats that users and files give, which are looked at before they are
/// used: one conversion of a real (e, f, g) or of an integer (d, i), with widths and precisions of
/// at most two digits. Everything else counts as no format.

namespace tyr {

enum class Conversion { kNone, kReal, kInteger };

/// What a format converts: one real, one integer, or neither.
Conversion conversion_of(const char *format);

/// A real by a format of either kind (an integer is rounded), by `otherwise` where it has none.
std::string print_real(const char *format, const char *otherwise, double value);

/// An integer by a format of either kind, by `otherwise` where it has none.
std::string print_integer(const char *format, const char *otherwise, int value);

} // namespace tyr
