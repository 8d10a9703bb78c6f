#pragma once

#include "tyr/met/sounding.h"

// The hodograph: the ends of the wind vectors of a sounding, joined from the ground up, in a polar
// plot space (kProjPolarPlot). Rings stand every 10 or 20 knots, with numbers on the
// side that has less of the curve; the curve changes its look at 3, 6 and 9 km above the first
// level, and dots with the height in km stand at 0, 1, 2, 3, 6 and 9.
//
// | resource       | default             | what                                          |
// |----------------|---------------------|-----------------------------------------------|
// | color_ring     | "#B8B8B8"           | rings and axes                                |
// | color_hodo     | "#D02020:w3, ..."   | list of four attribute texts, by height       |
// | color_storm    | ":w2"               | cross at the storm's motion                   |
// | color_text     | ""                  | numbers                                       |

/// Draws it into a viewport in normalised coordinates, x0, x1, y0, y1; the part that is squared is
/// used. Transformation 3 takes its window, transformation 1 is selected afterwards.
///
/// @param winds  m levels by rising height, with heights; without any wind only the rings appear
/// @param storm  direction and speed (knots) of the storm; may be null or Missing
/// @param top    height above the first level where the curve ends, m
/// @return count of points joined; -1 with a message for an empty viewport
int THERM_plot_hodograph(const float viewport[4], const SoundLevel *winds, int m,
                         const float *storm, float top);
