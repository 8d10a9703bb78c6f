#pragma once

/// Intervals of the lines and the spacing of small crosses and of repeated labels (degrees; 0
/// none). A `dlat` above 0 means that lines are drawn. In a plot space a negative interval snaps
/// the lines to its multiples.
void DOM_set_offset(int crosses, int repeat, float dlat, float dlon);
void DOM_get_offset(float *dlat, float *dlon);
/// All four, as set.
struct GridInterval {
    int crosses, repeat;
    float dlat, dlon;
};
GridInterval DOM_get_grid_interval();
/// How often the intervals have been set: what was said of one pair needn't hold for the next.
int DOM_count_offsets();
