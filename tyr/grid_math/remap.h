#pragma once

// Grids made of other grids' points: on another domain, cut off, and pieced together.

#include "tyr/grid/grid.h"

/// The whole record of `in` on another domain, with values of its own: each point takes the value
/// of GRD_interp at its place in `in`, Missing outside of it. What `out->values` pointed at isn't
/// freed. `in`'s domain is current afterwards.
/// @return 1; 0 with a message where there is no memory or `in` has no values
int GRD_remap(GridRec *out, const DomainRec *domain, const GridRec *in);

/// A copy with values of its own in which each point below ("lower") or above ("higher", case
/// ignored) the limit is `value`. Missing stays. Any other word fills nothing: all points are
/// Missing. What `out->values` pointed at isn't freed.
/// @return 1; 0 with a message where there is no memory or `in` has no values
int GRD_cutoff(GridRec *out, const char *word, const GridRec *in, float limit, float value);

/// Makes a grid that holds columns by rows pieces that share their edges, with the north-west
/// corner where it was. With a piece, `out` takes its record and gets an array full of Missing;
/// without one (null) `out` itself is the piece, and `values` is left alone.
/// @return 1; 0 with a message where a number is below 1, the grid would be too large or there is
///         no memory
int GRD_piece_layout(GridRec *out, int columns, int rows, const GridRec *piece);

/// Copies a piece into a grid, with its first point at column (nx - 1) * column and row
/// (ny - 1) * row, sides of the piece; a later piece overwrites the shared edge.
/// @return 0; -1 with nothing copied where it doesn't fit or has no values
int GRD_paste(GridRec *out, int column, int row, const GridRec *piece);

/// Gives a latitude-longitude grid whose columns go all round the earth, the last one spacing short
/// of the first, a last column that is the first again, so that no gap is left where they meet.
/// Others stay as they are. @return 1 where a column was added; 0
int GRD_close_circle(GridRec *grid);
