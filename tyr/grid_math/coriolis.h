#pragma once

#include "tyr/grid/grid.h"

/// Combines each point g that isn't Missing with the Coriolis parameter f = 14.584 sin(latitude),
/// in units of 1e-5 per second.
///
/// @param mode  case ignored: "add" g + f; "sub" g - f; "sub-" f - g; "mul" g f; "div" g / f;
///              "div-" f / g. Any other word changes nothing. Missing where the divisor is 0 or the
///              point lies off the earth
/// @return 0; -1 without values
int GRD_coriolis(GridRec *grid, const char *mode);
