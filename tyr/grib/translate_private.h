#pragma once

#include "tyr/grid/grid.h"

#if __has_include("tyr/grid/param.h") && __has_include("tyr/grid/known_domain.h")
#include "tyr/grid/known_domain.h"
#include "tyr/grid/param.h"
#else
// Until the grid room's tables are in the tree, numbers of variables and of grids stay.
inline void GRD_convert_param(GridRec *) {}
inline int GRD_grid_domain(int, DomainRec *)
{
    return 0;
}
#endif
