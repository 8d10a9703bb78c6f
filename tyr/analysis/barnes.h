#pragma once

#include "tyr/analysis/barnes_params.h"
#include "tyr/grid/grid.h"

// Barnes analysis: scattered values to a grid. A first pass of Gaussian-weighted means at each grid
// point, then up to three passes that spread what the grid still gets wrong at the stations, each
// with a narrower filter. After S. L. Barnes, J. Appl. Meteor. 3 (1964) 396-409.

/// Analyses values at stations to grids. Points without enough stations in reach are Missing.
///
/// @param[in,out] x, y  plot coordinates of the grids' domain, or Missing; grid coordinates (column
///                from the left, row from the top) afterwards
/// @param values  `fields` arrays of `stations` values; null for a field that isn't used. A Missing
///                value within reach of a point is replaced in place where a replacement is set
/// @param grids   `fields` records of one domain with their values allocated; grid_id becomes 2,
///                source, version and model 1
/// @return 0; -1 when no field is given, a used grid has no values, or memory runs out. A run of
///         several passes leaves the narrowed filter behind. A station whose place isn't finite
///         counts for nothing
int OBJ_analyze(float *x, float *y, float **values, int stations, int fields, GridRec *grids);
