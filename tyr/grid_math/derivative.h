#pragma once

// Finite differences on the grid's own projection.
//
// Spacings count in units of 100 km, so that a derivative stands in units of 1e-5 per metre. On
// latitude-longitude grids a degree is 1.11195 such units, and the column spacing narrows with the
// cosine of the row's latitude; a row at a pole is Missing. On other projections the spacings are
// dx and dy, times parm3 where that is set.
//
// A point that is Missing in any input is Missing. A first difference uses the two neighbours; at
// the grid's edge, and beside a Missing neighbour, the point itself stands in for it, with half
// the divisor. So a Missing value doesn't spread, and a point with no neighbour has difference 0.
// x runs to the east, y to the north. A spacing of 0, or one that isn't set, gives Missing.
//
// All sizes come from the first grid. An output without values gets its array here, an output that
// has some must be of that size; it may be one of the inputs.
//
// All return 0; -1 with a message where there is no memory, where an input has no values, or where
// the inputs' sides differ.

#include "tyr/grid/grid.h"

int GRD_dx(const GridRec *in, GridRec *out);
int GRD_dy(const GridRec *in, GridRec *out);

/// d2f/dx2 + d2f/dy2. In each direction from the two neighbours; where one is Missing or off the
/// grid, from the point and two points on the other side, Missing if they aren't there.
int GRD_laplacian(const GridRec *in, GridRec *out);

/// -du/dx - dv/dy, times `factor` where one is given (may be null).
int GRD_converge(const GridRec *u, const GridRec *v, const GridRec *factor, GridRec *out);

int GRD_vorticity(const GridRec *u, const GridRec *v, GridRec *out);    ///< dv/dx - du/dy
int GRD_deformation1(const GridRec *u, const GridRec *v, GridRec *out); ///< du/dx - dv/dy
int GRD_deformation2(const GridRec *u, const GridRec *v, GridRec *out); ///< -du/dy - dv/dx

/// -u ds/dx - v ds/dy
int GRD_advection(const GridRec *u, const GridRec *v, const GridRec *s, GridRec *out);
