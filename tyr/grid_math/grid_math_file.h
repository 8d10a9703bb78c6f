#pragma once

// Extremes, sums and means over the grids of many files.

#include <functional>
#include <string>
#include <vector>

#include "tyr/grid/grid.h"

namespace tyr {

/// Reads the grid that an operation over files wants from one of them, as tyr::GridFinder does.
using GridReader = std::function<bool(const std::string &path, GridRec *out)>;

} // namespace tyr

/// "max", "min", "sum" or "avg" over the grids of a list of files, of any number: one file's values
/// are held at a time. A file without the grid, or with one of other sides, is told and passed
/// over. For "avg", a point that is Missing in one of the files read is Missing.
///
/// @param[out] out  initialised here; the caller frees it with GRD_free
/// @return number of files that count; 0 with "GRD_math_file: Invalid grids\n" where there is none,
///         and for any other operation
int GRD_math_file(const char *name, const std::vector<std::string> &paths,
                  const tyr::GridReader &read, GridRec *out);
