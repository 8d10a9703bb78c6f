#include "tyr/place/wmo_ids.h"

#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "tyr/base/str.h"
#include "tyr/place/wmo_ranges_private.h"

using namespace tyr;

namespace {

constexpr int kLargestWmo = 99999;
constexpr size_t kIdLength = 5;

/// Numbers that share a prefix of one letter, or of two.
int block_of(size_t prefix_length)
{
    return prefix_length == 1 ? 10000 : 1000;
}

const WmoRange *range_of(int wmo)
{
    for (const WmoRange &range : kWmoRanges) {
        if (wmo >= range.first && wmo <= range.last) {
            return &range;
        }
    }
    return nullptr;
}

bool all_digits(std::string_view text)
{
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

/// Number of a prefix and the digits behind it; kNoWmo if no range has the prefix.
int number_of(std::string_view prefix, int digits)
{
    const int block = block_of(prefix.size());
    int first_fit = kNoWmo;
    for (const WmoRange &range : kWmoRanges) {
        if (prefix != range.prefix) {
            continue;
        }
        const int wmo = range.first / block * block + digits;
        if (wmo >= range.first && wmo <= range.last) {
            return wmo;
        }
        first_fit = first_fit == kNoWmo ? wmo : first_fit;
    }
    return first_fit;
}

} // namespace

int CTY_wmo_to_id(char *out, int wmo)
{
    const WmoRange *range = wmo >= 0 && wmo <= kLargestWmo ? range_of(wmo) : nullptr;
    if (!range) {
        std::snprintf(out, kWmoIdRoom, "%5.5d", wmo);
        return 0;
    }
    const size_t length = std::strlen(range->prefix);
    std::snprintf(out, kWmoIdRoom, "%s%0*d", range->prefix, static_cast<int>(kIdLength - length),
                  wmo % block_of(length));
    return 0;
}

int CTY_id_to_wmo(const char *id, int *wmo)
{
    *wmo = kNoWmo;
    const std::string_view text = id;
    if (text.size() != kIdLength) {
        return -1;
    }
    if (all_digits(text)) {
        *wmo = std::atoi(id);
        return 0;
    }
    if (std::isalpha(static_cast<unsigned char>(id[0])) == 0) {
        return -1;
    }
    for (const size_t length : {size_t{2}, size_t{1}}) {
        if (all_digits(text.substr(length))) {
            *wmo = number_of(text.substr(0, length), std::atoi(id + length));
            if (*wmo != kNoWmo) {
                return 0;
            }
        }
    }
    return -1;
}
