#pragma once

#include <cstddef>

namespace tyr {

/// MAP_ll_to_xy of many places, by vector instructions where the projection has them, within the
/// accuracy of a float; Missing in both where a place isn't shown. Every latitude and longitude is
/// a finite number. The arrays of the results may be those of the places.
void project_places(const float *lat, const float *lon, std::size_t count, float *x, float *y);

} // namespace tyr
