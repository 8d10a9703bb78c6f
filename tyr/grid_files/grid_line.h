#pragma once

// A grid's description in one line, for lists.

#include <cstddef>
#include <string>

#include "tyr/grid/grid.h"

namespace tyr {

/// The head over such lines.
std::string grid_line_head();

/// Number, level, time ("12", or a range as an expression names it: "12-6acc"), variable (its
/// number where the catalogue hasn't got it, "-" for none), units ("-" for none), columns and rows.
/// @param range  text for the last column
std::string grid_line(size_t number, const GridRec &grid, const std::string &range);

/// Smallest and largest value, "all missing" where there is none.
std::string grid_range(const GridRec &grid);

} // namespace tyr
