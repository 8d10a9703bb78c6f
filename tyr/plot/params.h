#pragma once

#include <string>

/// The words of `plot_param`, by which the user adjusts a plot.

/// Reads `plot_param`, and "gif" and "png" of `out_file`, and applies each word. A word that is
/// none is passed over: other readers know it.
void PLT_read_params();

/// What words ask of parts of the library that this program doesn't run.
struct PlotWishes {
    int grid_refinement = 0;
    int contour_skip[2] = {0, 0};
    float contour_offset[2] = {0.0F, 0.0F};
    int value_thinning = 0;
    int location_precision = 4;
    int grib_index = 1; ///< 0: no index file beside a GRIB file
    int max_bad = 5;    ///< bad records that the grid reader bears
    std::string grid_format;
};
const PlotWishes &PLT_wishes();
