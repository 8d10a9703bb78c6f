#include "tyr/base/number_format.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <cstring>

using namespace tyr;

namespace {

constexpr size_t kNumberRoom = 128;

/// Prints by a format that conversion_of has passed.
template <class Number> std::string print(const char *format, Number value)
{
    std::array<char, kNumberRoom> text;
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
    std::snprintf(text.data(), text.size(), format, value);
#pragma GCC diagnostic pop
    return text.data();
}

} // namespace

Conversion tyr::conversion_of(const char *format)
{
    Conversion found = Conversion::kNone;
    for (const char *p = format; *p; ++p) {
        if (*p != '%') {
            continue;
        }
        if (p[1] == '%') {
            ++p;
            continue;
        }
        p += 1 + std::strspn(p + 1, "-+ #0");
        for (int part = 0; part < 2; ++part) {
            const size_t digits = std::strspn(p, "0123456789");
            if (digits > 2) {
                return Conversion::kNone;
            }
            p += digits;
            if (part == 0 && *p == '.') {
                ++p;
            } else {
                break;
            }
        }
        p += *p == 'l' && p[1] != '\0' && std::strchr("eEfFgG", p[1]) ? 1 : 0;
        if (found != Conversion::kNone || *p == '\0' || !std::strchr("eEfFgGdi", *p)) {
            return Conversion::kNone;
        }
        found = *p == 'd' || *p == 'i' ? Conversion::kInteger : Conversion::kReal;
    }
    return found;
}

std::string tyr::print_real(const char *format, const char *otherwise, double value)
{
    switch (conversion_of(format)) {
    case Conversion::kReal:
        return print(format, value);
    case Conversion::kInteger:
        return print(format, static_cast<int>(std::lround(std::fmin(std::fmax(value, -2e9), 2e9))));
    case Conversion::kNone:
        break;
    }
    return print(otherwise, value);
}

std::string tyr::print_integer(const char *format, const char *otherwise, int value)
{
    switch (conversion_of(format)) {
    case Conversion::kReal:
        return print(format, static_cast<double>(value));
    case Conversion::kInteger:
        return print(format, value);
    case Conversion::kNone:
        break;
    }
    return print(otherwise, value);
}
