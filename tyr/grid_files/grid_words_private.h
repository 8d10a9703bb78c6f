#pragma once

#include <string>

namespace tyr {

/// Reads the words of `plot_param` that concern grid files, each time that one is opened: "nohdr"
/// (no index of GRIB files) and "max_bad" with a number (below 1: 5) are applied. A setting without
/// its word stays as a program made it.
/// @return the format of a text number, from "grdfmt"; empty for none
std::string grid_read_words();

} // namespace tyr
