#pragma once

namespace tyr {

/// Where a map of the whole earth is cut open: lines leave it at one side and come in at the other.

/// Whether the way between two longitudes leads over the cut of the current conic map (4). Its
/// sides meet at an angle, so that a line can't go on beyond them; false on other projections.
bool crosses_cone_cut(float from_lon, float to_lon);

} // namespace tyr
