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
/// A level and a variable ("500:uwnd") are understood where the two can't be a name and its unit.
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

/// Evaluates one item of the variable list as VAR_decode left it, so that an expression of several
/// items, such as those drawn over each other, is gone through one by one. The heads of groups
/// count as items of no grid.
///
/// @param[in,out] index  record that the item begins at; on return the record behind the item
/// @return as GRD_evaluate; -1 for a record without a grid: the head of a group, a word such as map
int GRD_evaluate_item(int *index, const tyr::GridFinder &find, const std::string &where,
                      GridRec out[2]);
