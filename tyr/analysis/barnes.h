#pragma once

#include "tyr/grid/grid.h"

// Barnes analysis: scattered values to a grid. A first pass of Gaussian-weighted means at each grid
// point, then up to three passes that spread what the grid still gets wrong at the stations, each
// with a narrower filter. After S. L. Barnes, J. Appl. Meteor. 3 (1964) 396-409.

/// The parameters to their start: filter 1.0, radius 1000, 1 pass, convergence 0.2, no replacement,
/// at least 1 station, refinement 1.
void OBJ_reset();

/// Reads `plot_param` ("miss=9.9": a value that stands in for Missing ones; "gridx2": the radius
/// times 2, at every call) and `object_param` (filter, radius, passes, convergence, least number of
/// stations; a word that isn't there or is empty leaves its parameter). Values beyond the limits
/// give the start value: filter and radius above 0, passes 1 to 4, convergence 0.01 to below 1,
/// stations 1 and above. "miss" without a number gives 0.
void OBJ_read_params();

/// Single parameters, not tested for their limits: the divisor of the squared distance in the
/// weight, squared plot units; the radius of influence, grid lengths in x; number of passes; factor
/// on the filter from pass to pass; least number of stations at a point; replacement.
void OBJ_set_filter(float filter);
void OBJ_set_radius(float radius);
void OBJ_set_passes(int passes);
void OBJ_set_convergence(float convergence);
void OBJ_set_min_stations(int count);
void OBJ_set_missing(float value);

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
