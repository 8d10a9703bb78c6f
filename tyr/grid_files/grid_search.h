#pragma once

#include "tyr/grid_files/grid_file.h"

/// The grid that is looked for; kMissingInt stands for any.
struct GridWanted {
    int var, ltype, level, time;
};

/// Looks for a grid by headers alone, from a place on, and reads it. A place without a grid is
/// passed over.
/// @param[in,out] index   place to begin at; on return the grid's
/// @return 0; -1 where none is found
int GRD_search_file(int handle, const GridWanted *wanted, GridRec *grid, int *index);

/// Opens a file, looks for a grid and closes it. @return 0; -1 where it doesn't open or has none
int GRD_read_file(const char *path, const GridWanted *wanted, GridRec *grid);
