#pragma once

#include "tyr/base/date.h"

inline constexpr int kGridInfoDateRoom = 49; ///< bytes of GridFileInfo::date_text, with the end

/// What the head of a grid file tells.
struct GridFileInfo {
    char date_text[kGridInfoDateRoom];
    int grid_type; ///< 0 grids with a projection, 1 with coordinates of their points
    DateRec date;
};
