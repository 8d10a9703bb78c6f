#pragma once

// What a Barnes analysis (barnes.h) goes by.

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
