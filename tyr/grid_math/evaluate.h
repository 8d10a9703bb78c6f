#pragma once

// Variable expressions evaluated on grids.

#include <functional>
#include <string>

#include "tyr/grid/grid.h"
#include "tyr/var/variable.h"

namespace tyr {

/// Finds the grid of a variable at a level and time: fills the record, with values from malloc, and
/// returns true; false where there is none.
using GridFinder = std::function<bool(const VarRec &wanted, GridRec *out)>;

} // namespace tyr

/// Evaluates a variable expression such as "avort(500:uwnd,500:vwnd)[1/s]": a variable, a function
/// of expressions and constants ("#2.5"), or two items in angle brackets, the parts of a vector.
///
/// @param expression  as VAR_decode reads it; it fills the variable list
/// @param find        asked for each variable that the expression names
/// @param where       what is searched, for the message: a path, a list of files
/// @param[out] out    two records, initialised here; the second has values only where the result
///                    is a vector. The caller frees both with GRD_free
/// @return number of grids, 1 or 2; 0 with one line that tells what wasn't found, and where, or
///         what is wrong with the expression
int GRD_evaluate(const char *expression, const tyr::GridFinder &find, const std::string &where,
                 GridRec out[2]);
