#pragma once

// Contours of a field as geometry: lines joined across cells, bands merged into areas. Pure: it
// draws nothing and knows no settings.
//
// A value on a level counts as above it, so that a band holds its lower level and not its upper
// one, in every cell alike. A cell whose four sides a level crosses is a saddle: with the crossings
// t0 (bottom), t1 (left), t2 (top), t3 (right) as fractions of the sides, from west and south, the
// level cuts off the corners lower left and upper right where 2 - t2 - t3 + t0 + t1 is below 2,
// else the two others.

#include <functional>
#include <limits>
#include <span>
#include <vector>

namespace tyr {

struct FieldPoint {
    float x = 0.0F, y = 0.0F;
    bool operator==(const FieldPoint &other) const = default;
};

/// What a field looks like on a map that is cut open at its sides: places of neighbouring points
/// half a world apart are neighbours all the same.
struct WorldSides {
    int proj = 0;               ///< Projection; others than 2, 3 and 7 have no sides that join
    float width(float y) const; ///< of the world at a plot y; 0 without such sides
    /// `p` moved by whole worlds next to `near`.
    FieldPoint beside(FieldPoint p, FieldPoint near) const;
};

/// The least and greatest value of one or several cells; none where nothing is drawn.
struct CellBounds {
    float low = std::numeric_limits<float>::infinity();
    float high = -std::numeric_limits<float>::infinity();
    bool exists() const { return low <= high; }
};

/// Neighbouring cells of a row, so that a tracer passes them at once.
struct CellBlock {
    static constexpr int kCells = 16;
    CellBounds bounds;
    bool has_gap = false; ///< not all its cells are drawn
};

/// Values, places and what of them is drawn.
class TracedField {
  public:
    /// @param values, x, y  nx * ny each, the northern row first; null x: columns and rows, y from
    ///                      the bottom. They must outlive the record
    TracedField(int nx, int ny, const float *values, const float *x, const float *y,
                WorldSides sides);

    /// Leaves out cells that more than `most` lines of an interval would cross, and those that lie
    /// wholly below `lowest` (unless Missing).
    void drop_steep_cells(float interval, float most);

    int columns() const { return nx_; }
    int rows() const { return ny_; }
    float value(int corner) const { return values_[corner]; }
    FieldPoint place(int corner) const;
    const WorldSides &sides() const { return sides_; }
    /// Of a cell, by its upper left corner.
    const CellBounds &cell(int column, int row) const { return cells_[index(column, row)]; }
    /// Of the block that a cell begins.
    const CellBlock &block(int column, int row) const
    {
        return blocks_[static_cast<size_t>(row) * static_cast<size_t>(blocks_of_row_) +
                       static_cast<size_t>(column / CellBlock::kCells)];
    }
    /// Where a level lies between two grid points.
    FieldPoint crossing(int a, int b, float level) const;

  private:
    size_t index(int column, int row) const
    {
        return static_cast<size_t>(row) * static_cast<size_t>(nx_ - 1) +
               static_cast<size_t>(column);
    }
    int nx_, ny_;
    const float *values_, *x_, *y_;
    WorldSides sides_;
    void set_row(int row, const std::vector<char> &upper, const std::vector<char> &lower);
    void mark_usable(int row, std::vector<char> &usable) const;
    void set_blocks();

    int blocks_of_row_ = 0;
    std::vector<CellBounds> cells_;
    std::vector<CellBlock> blocks_;
};

using PointSink = std::function<void(std::span<const FieldPoint>)>;

/// Traces the lines of a level, each once; a closed line ends on its first point. The outline of a
/// plateau on the level is drawn on all its sides inside the field.
void trace_lines(const TracedField &field, float level, const PointSink &sink);

/// Traces the areas where lower <= value < upper. Neighbouring cells make one area; where it has
/// holes, they are reached by a cut along sides of cells that it walks both ways.
void trace_band(const TracedField &field, float lower, float upper, const PointSink &sink);

} // namespace tyr
