#pragma once

// Values out of a grid: extremes, means, the value at a place, the plot places of its points.

#include "tyr/grid/grid.h"

/// The value at a place between grid points, columns from the west and rows from the north:
/// bilinear on the four points around it. Missing without values, outside the grid (below 0, or
/// above nx - 0.9999 or ny - 0.9999), and where any of the four points is Missing.
float GRD_interp(const GridRec *grid, float column, float row);

/// The largest speed over the points where both components are set.
/// @param[out] out  Missing where there is no grid, no values, or no such point, or the sides of
///                  the two grids differ
/// @return 0; -1 where there is no grid or no values, or the sides differ
int GRD_max_speed(const GridRec *u, const GridRec *v, float *out);

/// Allocates two arrays of nx * ny floats and fills them with the plot position of each grid point
/// in `domain`, Missing where it can't be shown. The caller frees them with free(). The current
/// domain stays as it was.
/// @return 0; -1 with null arrays where there is no memory or a side is below 1
int GRD_proj_XY(const GridRec *grid, const DomainRec *domain, float **x, float **y);

/// The reverse of MAP_rotate_dir on polar stereographic and Lambert maps: a direction (degrees)
/// relative to the plot's up direction at a plot point into one relative to true north. On other
/// maps the direction stays. A Missing direction stays Missing.
float MAP_unrotate_dir(float direction, float x, float y);

/// Largest and smallest value; Missing where there is none. @return 0; -1 without values
int GRD_max_min(const GridRec *grid, float *max, float *min);

/// A statistic of the values that aren't Missing.
///
/// @param word       case ignored. "max", "min", "avg": into out[0]. "maxmin": the largest into
///                   out[0], the smallest into out[1]. "avgnum": the mean and the number of values
/// @param[out] out   two floats, Missing where there is nothing to tell
/// @return 1; 0 for any other word, or for "avg" and "avgnum" without values
int GRD_stat(const char *word, const GridRec *grid, float *out);

/// The value of a grid at a plot point.
///
/// @param domain         what x and y are plot coordinates of. It is current afterwards. Null, or
///                       one without a projection: the current domain, which is then the grid's
/// @param[in,out] x, y   become the column and row in the grid; Missing where the point can't be
///                       shown
float GRD_value_at(const GridRec *grid, const DomainRec *domain, float *x, float *y);
