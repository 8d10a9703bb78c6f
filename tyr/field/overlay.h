#pragma once

// Several fields over each other in one picture.

#include <deque>

#include "tyr/grid_math/grid_operands.h"

namespace tyr {

/// One layer of the picture: a grid, or the two of a wind, and its record in the variable list,
/// whose type and format tell how it is drawn. The record of the word "map" is the map.
struct FieldLayer {
    OwnGrid first, second;
    int record = 0;
    bool is_wind = false;
    bool is_map() const { return first.rec.values == nullptr; }
};

/// Gives each layer's record a type that it can be drawn in, where the expression tells none: the
/// plot type; else arrows for a wind, filled bands for the picture's first field, and lines. The
/// type "value" becomes numbers at the grid points. Fields without an interval take a nice one.
void settle_layer_types(std::deque<FieldLayer> *layers);

/// The whole plot of layers in a domain, the first at the bottom, each with a line of labels. The
/// map lies where the expression names it, else over the fields if one of them is filled. The first
/// filled field has its colour bar, unless the word "nobar" of `plot_param` forbids. A window stays
/// and is zoomed; the layers must outlive its hold.
/// @return 0; -1 where no plot is wanted
int plot_layers(std::deque<FieldLayer> *layers, DomainRec *domain);

} // namespace tyr
