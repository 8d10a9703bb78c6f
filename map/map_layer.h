#pragma once

/// The map layer: what lies under and over the data.

/// Judges from the plot type and the variables how the layers are parted. Once a plot.
void PLT_map_setup();

/// Layers under the data.
void PLT_map_under();

/// Layers over the data, then the corner labels.
void PLT_map_over();

/// 1: map outlines are drawn in `color_cmap`, over a colour fill.
void DOM_set_map_mode(int mode);

/// Draws the layers of a mode, a sum of: 1 entries marked "-", 2 entries marked "+", 4 others.
/// @return 0
int MAP_draw(int mode);
