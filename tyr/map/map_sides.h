#pragma once

/// Where a map of the whole earth is cut open: lines leave it at one side and come in at the other.

/// Distance in x between a point of a cylindrical map (2, 3, 7) and itself beyond the other side,
/// at a height y of the plot; 0 on other projections.
float map_wrap_width(int proj, float y);

/// Whether the way between two longitudes leads over the cut of the current conic map (4). Its
/// sides meet at an angle, so that a line can't go on beyond them; false on other projections.
bool crosses_cone_cut(float from_lon, float to_lon);
