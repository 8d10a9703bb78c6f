#pragma once

// The calculator over gridded fields.

#include "tyr/grid/grid.h"

/// Fills one or two result grids by an operation on grids and constants.
///
/// Operands are converted in place to the units that the operation wants, with their unit texts
/// and labels. The result gets its layout (where it has none), memory (where it has none), variable
/// number, unit text and label. It may be one of the operands. A point where an operand is Missing,
/// or the result is no finite number, is Missing, but for max, min and sum, which pass such
/// operands over.
///
/// @param name       an operation, and after a '-' perhaps the abbreviation of the result's
///                   variable; case counts. "wind", "vect", "stream" and "strm" do nothing
/// @param grids      at least 21 entries: the result, a second one for "grad" and "vdiff", and the
///                   operands, null where a constant stands
/// @param constants  at least 21 entries: in the place of an operand that is no grid; Missing: none
/// @return 1; 0 with a message for an operation that there isn't, or operands that don't do
int GRD_math(const char *name, GridRec **grids, float *constants);
