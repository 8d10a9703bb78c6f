#include <algorithm>
#include <utility>
#include <vector>

#include "tyr/field/contour_cell_private.h"
#include "tyr/field/contour_rim_private.h"

// Rows are swept from the north. Cells that lie whole in the band are taken as runs of a row,
// others give the polygons of their part of the band. Polygons of neighbours are joined along their
// common sides, but for those that would close a ring around a hole: there the common side stays as
// a cut, so that an area is simply connected and its rim one walk.

namespace tyr {

namespace {

constexpr int kNone = -1;
constexpr int kMostEdges = 200000; ///< of one area; keeps the path that a printer must hold

/// An edge of a polygon: from a place of its own to the start of the next one, or along `count`
/// sides of a row of grid points, to the west where it is negative.
struct Edge {
    FieldPoint start;
    int corner = kNone; ///< where an edge along a row starts
    int count = 1;
    int piece = 0;
    int next = kNone;
    int twin = kNone; ///< the same side in the neighbour's polygon, where the two are joined
};

/// The lower side of a polygon: what the next row joins.
struct Floor {
    int begin, end; ///< columns; what lies left of them has been joined
    int edge;
    bool joins_left; ///< to the floor before it, which ends where it begins
};

/// What two polygons have in common of a row.
struct Overlap {
    int begin = kNone, end = kNone;
    int floor = kNone; ///< that it was joined to
};

class BandTracer {
  public:
    BandTracer(const TracedField &field, float lower, float upper)
        : field_(field), lower_(lower), upper_(upper), rim_(field.sides())
    {
    }

    void run(const PointSink &sink)
    {
        for (int row = 0; row + 1 < field_.rows(); ++row) {
            sweep(row);
            std::swap(above_, below_);
        }
        walk(sink);
    }

  private:
    bool is_in(float value) const { return value >= lower_ && value < upper_; }
    bool is_in(const CellBounds &b) const { return is_in(b.low) && is_in(b.high); }
    bool is_whole(const CellBlock &b) const { return !b.has_gap && is_in(b.bounds); }
    bool touches(const CellBounds &b) const { return b.high >= lower_ && b.low < upper_; }

    void sweep(int row)
    {
        below_.clear();
        first_above_ = 0;
        right_side_ = kNone;
        last_ = {};
        const int columns = field_.columns() - 1;
        for (int column = 0; column < columns;) {
            const int end = end_of_run(column, row);
            if (end > column) {
                add_run(column, end, row);
                attach(column, end, row);
                column = end;
            } else if (touches(field_.cell(column, row))) {
                add_cell(column, row);
                attach(column, column + 1, row);
                ++column;
            } else {
                right_side_ = kNone;
                const bool skips =
                    column % CellBlock::kCells == 0 && !touches(field_.block(column, row).bounds);
                column += skips ? CellBlock::kCells : 1;
            }
        }
    }

    /// The column after the cells from `column` that lie whole in the band.
    int end_of_run(int column, int row) const
    {
        const int columns = field_.columns() - 1;
        while (column < columns) {
            if (column % CellBlock::kCells == 0 && is_whole(field_.block(column, row))) {
                column = std::min(column + CellBlock::kCells, columns);
            } else if (is_in(field_.cell(column, row))) {
                ++column;
            } else {
                break;
            }
        }
        return column;
    }

    int add_edge(const Edge &edge)
    {
        edges_.push_back(edge);
        return static_cast<int>(edges_.size()) - 1;
    }
    Edge &edge(int i) { return edges_[static_cast<size_t>(i)]; }

    /// The edges since `first` are the polygon of a piece.
    void close_piece(int first, int piece)
    {
        for (int e = first; e < static_cast<int>(edges_.size()); ++e) {
            edge(e).next = e + 1;
        }
        edges_.back().next = first;
        size_[static_cast<size_t>(piece)] = static_cast<int>(edges_.size()) - first;
    }

    void add_run(int begin, int end, int row)
    {
        const int piece = new_piece();
        const int n = end - begin;
        const int upper = row * field_.columns() + begin;
        const int lower = upper + field_.columns();
        const int first = add_edge({{}, lower, n, piece});
        add_edge({field_.place(lower + n), kNone, 1, piece});
        add_edge({{}, upper + n, -n, piece});
        add_edge({field_.place(upper), kNone, 1, piece});
        close_piece(first, piece);
        for (int side = 0; side < 4; ++side) {
            side_[side] = first + side;
        }
    }

    /// One side's part in the band: its ends, and the level at which it leaves the band.
    struct Part {
        bool exists = false, ends_in_corner = false, begins_in_corner = false;
        float enters_at = 0.0F, leaves_at = 0.0F;
        FieldPoint begin, end;
    };

    Part part_of(const Cell &cell, int side) const
    {
        const float a = cell.value[side];
        const float b = cell.value[(side + 1) % 4];
        Part part;
        part.begins_in_corner = is_in(a);
        part.ends_in_corner = is_in(b);
        const bool spans = (a < lower_ && b >= upper_) || (b < lower_ && a >= upper_);
        part.exists = part.begins_in_corner || part.ends_in_corner || spans;
        if (!part.exists) {
            return part;
        }
        part.enters_at = a < lower_ ? lower_ : upper_;
        part.leaves_at = b < lower_ ? lower_ : upper_;
        part.begin = part.begins_in_corner
                         ? field_.place(cell.from(side))
                         : field_.crossing(cell.from(side), cell.to(side), part.enters_at);
        part.end = part.ends_in_corner
                       ? field_.place(cell.to(side))
                       : field_.crossing(cell.from(side), cell.to(side), part.leaves_at);
        return part;
    }

    /// The polygons of a cell; side_ gets the edge of each side.
    void add_cell(int column, int row)
    {
        const Cell cell(field_, column, row);
        Part parts[4];
        bool done[4];
        for (int i = 0; i < 4; ++i) {
            parts[i] = part_of(cell, i);
            side_[i] = kNone;
            done[i] = !parts[i].exists;
        }
        for (int first = 0; first < 4; ++first) {
            if (done[first]) {
                continue;
            }
            const int piece = new_piece();
            const int start = static_cast<int>(edges_.size());
            for (int side = first; !done[side];) {
                done[side] = true;
                side_[side] = add_edge({parts[side].begin, kNone, 1, piece});
                if (parts[side].ends_in_corner) {
                    side = (side + 1) % 4;
                } else {
                    add_edge({parts[side].end, kNone, 1, piece}); // along the level
                    side = cell.partner(side, parts[side].leaves_at);
                }
            }
            close_piece(start, piece);
        }
    }

    int new_piece()
    {
        parent_.push_back(static_cast<int>(parent_.size()));
        size_.push_back(0);
        return parent_.back();
    }

    int root(int piece)
    {
        while (parent_[static_cast<size_t>(piece)] != piece) {
            int &up = parent_[static_cast<size_t>(piece)];
            up = parent_[static_cast<size_t>(up)];
            piece = up;
        }
        return piece;
    }

    /// Cuts an edge along a row after so many of its sides; the rest is an edge of its own.
    int split(int e, int sides)
    {
        Edge rest = edge(e);
        const int sign = rest.count < 0 ? -1 : 1;
        rest.corner += sign * sides;
        rest.count -= sign * sides;
        edge(e).count = sign * sides;
        edge(e).next = add_edge(rest);
        return edge(e).next;
    }

    /// Whether two edges' polygons may be joined: they are of two areas, and not of two vast ones.
    bool merges(int a, int b)
    {
        int ra = root(edge(a).piece);
        int rb = root(edge(b).piece);
        if (ra == rb ||
            size_[static_cast<size_t>(ra)] + size_[static_cast<size_t>(rb)] > kMostEdges) {
            return false;
        }
        if (size_[static_cast<size_t>(ra)] < size_[static_cast<size_t>(rb)]) {
            std::swap(ra, rb);
        }
        parent_[static_cast<size_t>(rb)] = ra;
        size_[static_cast<size_t>(ra)] += size_[static_cast<size_t>(rb)];
        return true;
    }

    void pair(int a, int b)
    {
        edge(a).twin = b;
        edge(b).twin = a;
    }

    /// Joins the polygon that was added last to those of the row above and to the one at its left.
    /// Sides that meet in a point where the three others around it are joined close no ring.
    void attach(int begin, int end, int row)
    {
        Overlap first;
        Overlap last;
        if (side_[2] != kNone) {
            join_above(begin, end, row, first, last);
        }
        bool joins_left = false;
        if (right_side_ != kNone && side_[3] != kNone) {
            joins_left = (first.begin == begin && meet_in_a_point(last_, first, row)) ||
                         merges(side_[3], right_side_);
            if (joins_left) {
                pair(side_[3], right_side_);
            }
        }
        if (side_[0] != kNone) {
            below_.push_back({begin, end, side_[0], joins_left});
        }
        right_side_ = side_[1];
        last_ = last;
    }

    /// Whether two overlaps with the row above meet in a point of the band above which their
    /// polygons are one, or joined to one another: then what is below closes no ring either.
    bool meet_in_a_point(const Overlap &left, const Overlap &right, int row) const
    {
        if (left.floor == kNone || right.floor == kNone || left.end != right.begin ||
            !is_in(field_.value(row * field_.columns() + right.begin))) {
            return false;
        }
        return left.floor == right.floor || (left.floor + 1 == right.floor &&
                                             above_[static_cast<size_t>(right.floor)].joins_left);
    }

    void join_above(int begin, int end, int row, Overlap &first, Overlap &last)
    {
        const int top = side_[2]; // to the west; its first part isn't joined yet
        int joined_to = begin;    // where that part ends
        for (int f = first_above_; f < static_cast<int>(above_.size()); ++f) {
            Floor &floor = above_[static_cast<size_t>(f)];
            if (floor.begin >= end) {
                break;
            }
            first_above_ = f;
            Overlap now{std::max(begin, floor.begin), std::min(end, floor.end), f};
            if (now.begin >= now.end) {
                continue;
            }
            if (meet_in_a_point(last, now, row) || merges(top, floor.edge)) {
                const int lower = now.end < end ? split(top, end - now.end) : top;
                if (now.begin > joined_to) {
                    split(lower, now.end - now.begin);
                }
                joined_to = now.end;
                pair(lower, take(floor, now));
            } else {
                now.floor = kNone;
            }
            last = now;
            if (first.begin == kNone) {
                first = now;
            }
        }
    }

    /// The part of a floor's edge that an overlap covers.
    int take(Floor &floor, const Overlap &overlap)
    {
        int e = floor.edge;
        if (overlap.begin > floor.begin) {
            e = split(e, overlap.begin - floor.begin);
        }
        if (overlap.end < floor.end) {
            floor.edge = split(e, overlap.end - overlap.begin);
        }
        floor.begin = overlap.end;
        return e;
    }

    void add_points(const Edge &e)
    {
        if (e.corner == kNone) {
            rim_.add(e.start);
            return;
        }
        const int step = e.count < 0 ? -1 : 1;
        for (int i = 0; i != e.count; i += step) {
            rim_.add(field_.place(e.corner + i));
        }
    }

    void walk(const PointSink &sink)
    {
        std::vector<bool> seen(edges_.size(), false);
        for (size_t first = 0; first < edges_.size(); ++first) {
            if (seen[first] || edges_[first].twin != kNone) {
                continue;
            }
            rim_.clear();
            for (size_t e = first; !seen[e];) {
                seen[e] = true;
                add_points(edges_[e]);
                e = static_cast<size_t>(edges_[e].next);
                while (edges_[e].twin != kNone) {
                    e = static_cast<size_t>(edges_[static_cast<size_t>(edges_[e].twin)].next);
                }
            }
            if (const auto points = rim_.finish(); points.size() >= 3) {
                sink(points);
            }
        }
    }

    const TracedField &field_;
    float lower_, upper_;
    std::vector<Floor> above_, below_; ///< of the row before and of this one, from the west
    int first_above_ = 0;              ///< the first floor that may still be overlapped
    int side_[4] = {};                 ///< the edges on the sides of the last polygon
    int right_side_ = kNone;           ///< of the polygon at its left
    Overlap last_;                     ///< of the polygon at its left
    std::vector<Edge> edges_;
    std::vector<int> parent_, size_; ///< of the pieces; edges of an area stand at its root
    Rim rim_;
};

} // namespace

void trace_band(const TracedField &field, float lower, float upper, const PointSink &sink)
{
    BandTracer(field, lower, upper).run(sink);
}

} // namespace tyr
