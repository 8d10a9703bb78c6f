#pragma once

// One cell of a field and a level: which sides the level crosses, and which of them it joins.

#include "tyr/field/contour_trace_private.h"

namespace tyr {

/// Corners and sides of a cell in the order of a walk round it: side i goes from corner i to
/// corner i + 1. Corner 0 is the lower left one, side 0 the bottom, 1 the right side, 2 the top.
struct Cell {
    int corner[4]; ///< indices of grid points
    float value[4];

    Cell(const TracedField &field, int column, int row);
    int from(int side) const { return corner[side]; }
    int to(int side) const { return corner[(side + 1) % 4]; }
    bool is_crossed(int side, float level) const
    {
        return (value[side] < level) != (value[(side + 1) % 4] < level);
    }
    /// The side that a level's segment from a crossed side leads to.
    int partner(int side, float level) const;

  private:
    bool cuts_lower_left(float level) const;
};

} // namespace tyr
