#pragma once

// Labels and units of a grid.

#include "tyr/grid/grid.h"

/// Builds the label in `info` from the level, `var` and `units`.
void GRD_make_label(GridRec *grid);

/// The same with the source's variable text, a blank and a word as the name.
void GRD_label(GridRec *grid, const GridRec *source, const char *word);

/// Converts every point from the grid's unit text. If `unit` isn't empty it becomes that text, and
/// the label is made anew.
/// @return 0; -1 without values
int GRD_units(GridRec *grid, const char *unit);

/// Multiplies each point that isn't Missing. A product that no float can hold is Missing.
void GRD_scale(GridRec *grid, float factor);

/// Adds to each point that isn't Missing. A sum that no float can hold is Missing.
void GRD_offset(GridRec *grid, float term);
