#pragma once

/// Latitude and longitude lines of a map, and the plain grid of a plot space, with their labels.

/// Draws the lines. Intervals too small for the window to show are told and left out.
/// @return 0; -1 in a plot space, with transformation 1 then selected
int MAP_draw_lalo(float dlat, float dlon);
