#pragma once

// A page of a sounding: what a forecaster looks at, drawn in one plot.

namespace tyr {

enum class SoundingPage {
    kSkewT,
    kTephigram,
    kUpright,  ///< the tephigram with upright axes
    kHodograph ///< alone
};

/// Opens a plot, draws the sounding in force (tyr/upper_air/sounding_store.h) with what
/// THERM_compute found of it, and ends the plot: the diagram with the parcel's path, barbs,
/// hodograph and indices; or a hodograph alone. A window that takes another size is drawn anew.
/// @return an exit code (tyr/base/sys.h)
int draw_sounding_page(SoundingPage kind);

} // namespace tyr
