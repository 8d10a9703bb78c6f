#pragma once

namespace tyr {

/// What the user asked of GRIB reading.
struct GribSettings {
    bool is_index_on = true;
    int max_bad = -1;
};
const GribSettings &grib_settings();

} // namespace tyr
