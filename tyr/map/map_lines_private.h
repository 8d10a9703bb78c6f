#pragma once

namespace tyr {

/// Latitude and longitude lines of a map projection.

struct MapLines {
    float dlat, dlon; ///< intervals, degrees
    int crosses;      ///< spacing of small crosses, degrees; 0 for none
    int repeat;       ///< spacing of labels along the lines, degrees; 0 for none
};

/// Draws the lines with labels where they cross the left and the lower edge of the window, along
/// the lines, and the crosses, by the line and text attributes that stand. Selects
/// transformation 2.
/// @return false with nothing drawn where the lines would be more than a page can show
bool draw_map_lines(const MapLines &lines);

} // namespace tyr
