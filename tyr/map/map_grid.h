#pragma once

/// Latitude and longitude lines of a map, and the plain grid of a plot space, with their labels.

/// Intervals of the lines and the spacing of small crosses and of repeated labels (degrees; 0
/// none). A `dlat` above 0 means that lines are drawn. In a plot space a negative interval snaps
/// the lines to its multiples.
void DOM_set_offset(int crosses, int repeat, float dlat, float dlon);
void DOM_get_offset(float *dlat, float *dlon);

/// Draws the lines. Intervals too small for the window to show are told and left out.
/// @return 0; -1 in a plot space, with transformation 1 then selected
int MAP_draw_lalo(float dlat, float dlon);
