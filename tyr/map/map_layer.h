#pragma once

/// The map layer: what lies under and over the data.

/// Judges from the plot type and the variables how the layers are parted. Once a plot.
void PLT_map_setup();

/// Layers under the data.
void PLT_map_under();

/// Layers over the data, then the corner labels.
void PLT_map_over();

/// Draws the entries of the map list (resource `map_file`, by default the maps of the region that
/// the first domain shows) and the lines that DOM_set_offset asks for.
/// @param mode  sum of MapMark. @return 0
int MAP_draw(int mode);
