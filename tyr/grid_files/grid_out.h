#pragma once

#include "tyr/grid_files/grid_file.h"

// Grid files to write, in the folder of the resource grid_path, by the rule for files that exist.

/// The kind of a file that is to be written: what the resource `output` tells (netcdf, binary,
/// text, old) or, without it, the ending of the name (.nc, .cdf; .bin, .tyb; .old); else text.
/// @return the kind; kGridUnknown for a word of `output` that is none
int GRD_output_kind(const char *path);

/// Writes one grid into a file of its own, the header first. `info` may be null: then the grid's
/// date stands for it. Answering to append adds to a text file; a netCDF file can't be appended to.
/// @return 1; 0 for failure, told (nothing for a kind of 0)
int GRD_save_file(const char *name, GridRec *grid, GridFileInfo *info, int kind);

/// Opens a file for grids to come; the caller writes its header. The handle is never 0, which
/// means failure.
/// @return the handle, from 1; 0 for failure
int GRD_open_out_file(char *name, int kind);
