#pragma once

#include <string>
#include <vector>

#include "tyr/base/missing.h"
#include "tyr/field/vector.h"
#include "tyr/plot/attributes.h"

namespace tyr {

struct VectorState {
    int kind = kMissingInt;
    std::string options;
    int type = kMissingInt;
    bool locked = false;
    float interval = kMissing, scale = 1.0F, spacing = 1.0F, base = kMissing;
    float max = kMissing, lowest = kMissing, highest = kMissing;
    int skip_x = 1, skip_y = 1;
    bool grid_relative = true;
    bool legend = false;
    float size = 0.0F, height = 0.0F;
    float *x = nullptr, *y = nullptr;
    GridRec *u = nullptr, *v = nullptr;
    VectorCallback callback = nullptr;
    AttrRec attr = {};
    std::vector<int> boxes; ///< crossings of each box by streamlines
};
VectorState &vectors();

/// Reads option words and the words of `plot_param`.
void read_vector_words();
/// The limits and the base of `con_base`.
void read_vector_base();
/// Draws all streamlines of components in plot orientation.
int draw_streamlines(GridRec *u, GridRec *v);
/// Plot position of a grid point.
void vector_place(const GridRec &grid, int column, int row, float *x, float *y);
/// Attributes of a sign of a speed.
AttrRec speed_attr(float speed);
/// Draws lines and fills with attributes from here on.
void set_sign_attr(const AttrRec &attr);

} // namespace tyr
