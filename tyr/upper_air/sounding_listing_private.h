#pragma once

#include "tyr/base/missing.h"
#include "tyr/upper_air/analysis.h"
#include "tyr/upper_air/sounding_store.h"

// What the files of the listings share.

namespace tyr {

/// Bits of `print` that lines go to (tyr/upper_air/sounding_listing.h).
inline constexpr unsigned kListMain = 0x1;
inline constexpr unsigned kListVariable = 0x2;
inline constexpr unsigned kListDetail = 0x4;
inline constexpr unsigned kListLevel = 0x8;

/// A wind with its components, all in one unit of speed.
struct ListedWind {
    float u = kMissing, v = kMissing, dir = kMissing, spd = kMissing;

    bool is_there() const { return !is_missing(dir) && !is_missing(spd); }
};

ListedWind listed_wind(float dir, float spd);

/// A wind as a moving storm meets it; none without one of them.
ListedWind relative_wind(const ListedWind &wind, const ListedWind &storm);

/// The pause between two pages.
void list_pause(unsigned bit);

/// The indices that tell a risk in words.
void print_risks(const SoundingResults &results);

} // namespace tyr
