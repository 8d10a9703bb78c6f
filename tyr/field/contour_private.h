#pragma once

// What the files of the contours share: settings and the drawing space.

#include <string>
#include <vector>

#include "tyr/base/missing.h"
#include "tyr/field/contour.h"
#include "tyr/field/contour_trace_private.h"
#include "tyr/plot/attributes.h"

namespace tyr {

struct ContourSettings {
    int kind = kMissingInt;
    int dash = 0; ///< 1: all lines dashed; -1: those below the base or below 0
    int label_step = 2;
    int extreme_radius = 2;
    int label_columns = kMissingInt, label_rows = kMissingInt;
    bool turn_labels = false;
    int most_lines = -2; ///< a cell: -n fill rows times n, 0 no bound, else itself
    float lowest = kMissing, highest = kMissing;
    float scale = 1.0F;
    int skip_x = 1, skip_y = 1;
    float offset_x = 0.0F, offset_y = 0.0F; ///< fractions of the window's height
    std::string format;
    int pattern = kMissingInt;
    bool boxes = false;
    bool map_first = false;
    std::string options; ///< all option texts, for the attributes in them
};

/// Levels of the plot: a list, or first + i * interval.
struct LevelPlan {
    float first = kMissing, last = kMissing, interval = kMissing, base = kMissing;
    int count = 0;
    bool is_list = false;
    float level(int i) const;
    int row(int i) const; ///< of the fill table
};

struct ContourState {
    ContourSettings set;
    LevelPlan plan;
    float high = kMissing, low = kMissing; ///< of the field
    GridRec *grid = nullptr;
    ContourCallback callback = nullptr;
};
ContourState &contours();

/// Reads the words of `plot_param` that concern contours.
void read_contour_params();

/// Where a grid is drawn: in its own units, or at plot positions where the plot's domain isn't the
/// grid's. Selects the transformation.
class FieldSpace {
  public:
    /// @param to_limb  what a round map half hides is drawn up to its limb
    explicit FieldSpace(const GridRec &grid, bool to_limb = false);
    ~FieldSpace();
    FieldSpace(const FieldSpace &) = delete;
    FieldSpace &operator=(const FieldSpace &) = delete;

    bool is_good() const { return is_good_; }
    /// The grid as it is drawn: one that goes round the world has its first column at the end once
    /// more on a map.
    const GridRec &grid() const { return grid_; }
    const float *x() const { return x_; }
    const float *y() const { return y_; }
    float height() const { return height_; } ///< what sizes are fractions of
    WorldSides sides() const { return sides_; }

  private:
    void close_world();
    void reach_limb(const DomainRec &own, const DomainRec &map);

    GridRec grid_;
    std::vector<float> values_; ///< of a grid that has been closed
    float *x_ = nullptr, *y_ = nullptr;
    float height_ = 0.0F;
    bool is_good_ = true;
    WorldSides sides_;
};

/// Attributes of a resource, by default black or white, the pieces co= wi= st= fp= over it.
AttrRec field_attr(const char *resource, const char *plain, const std::string &options);
const char *plain_colour();

TracedField traced_field(const FieldSpace &space);
/// The most lines through a cell of which each `step`-th is wanted.
float most_lines();

void draw_piece(int kind, std::span<const FieldPoint> points, const WorldSides &sides);

} // namespace tyr
