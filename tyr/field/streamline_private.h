#pragma once

// Where streamlines run: places of the drawing and of the grid, and how often lines pass.

#include <vector>

#include "tyr/field/contour_trace_private.h"
#include "tyr/geo/domain.h"
#include "tyr/grid/grid.h"

namespace tyr {

/// A wind in plot orientation.
struct PlotWind {
    float u, v;
    bool is_set() const;
    float speed() const;
};

/// The drawing space of a pair of grids: their own units, or plot units where the settings hold
/// the plot places of the grid's points. On a map whose sides meet a place beyond a side is the
/// place beyond the other one.
class StreamSpace {
  public:
    explicit StreamSpace(const GridRec &grid);

    /// A typical grid length in drawing units: the median of the cells in the window.
    float cell() const { return cell_; }
    const WorldSides &sides() const { return sides_; }
    /// The same place inside the map's sides.
    FieldPoint inside(FieldPoint p) const;
    /// Column and row of a place. @return false off the map
    bool grid_place(FieldPoint p, FieldPoint *g) const;
    /// Both components at a place, across the seam of a grid that goes round the world as well.
    PlotWind wind(const GridRec &u, const GridRec &v, FieldPoint p) const;
    /// Whether lines are followed here: in the window and two grid lengths around it.
    bool is_near(FieldPoint p) const;

    /// Boxes of half a skip step, even on the picture, and the box of a place; the last one is for
    /// what lies outside.
    size_t box_count() const { return columns_ * rows_ + 1; }
    size_t box(FieldPoint p) const;

  private:
    void measure_cell();
    void lay_boxes();

    const GridRec &grid_;
    DomainRec plot_;
    WorldSides sides_;
    float plot_window_[4] = {};
    float grid_window_[4] = {};
    float cell_ = 1.0F;
    bool same_ = false;
    bool goes_round_ = false; ///< the first column follows the last one
    float box_width_ = 1.0F, box_height_ = 1.0F;
    float left_ = 0.0F, bottom_ = 0.0F; ///< of the boxes
    size_t columns_ = 1, rows_ = 1;
};

/// Traces and draws one line from a grid point, rows from the bottom. @return its steps
int trace_streamline(const StreamSpace &space, float steps, const GridRec &u, const GridRec &v,
                     int column, int row);

} // namespace tyr
