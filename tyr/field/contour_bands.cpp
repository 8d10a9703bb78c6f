#include <numeric>

#include "tyr/field/contour_cell_private.h"

// Each cell gives the polygons of its part of the band. Polygons of neighbours are joined along
// their common side wherever that links two areas that weren't one yet, so an area stays simply
// connected: its rim is one walk. What is left of common sides are spikes, which are cut off, and
// the cuts to holes.

namespace tyr {

namespace {

constexpr int kNone = -1;
constexpr int kMostPieces = 200000; ///< cells of one area; keeps the path that a printer must hold

struct Edge {
    FieldPoint start;
    int next = kNone;
    int twin = kNone; ///< the same side in the neighbour's polygon, where the two are joined
};

class BandTracer {
  public:
    BandTracer(const TracedField &field, float lower, float upper)
        : field_(field), lower_(lower), upper_(upper),
          above_(static_cast<size_t>(field.columns()), kNone)
    {
    }

    void run(const PointSink &sink)
    {
        for (int row = 0; row + 1 < field_.rows(); ++row) {
            int left = kNone;
            for (int column = 0; column + 1 < field_.columns(); ++column) {
                int &above = above_[static_cast<size_t>(column)];
                if (!field_.has_cell(column, row) || field_.high(column, row) < lower_ ||
                    field_.low(column, row) >= upper_) {
                    above = left = kNone;
                    continue;
                }
                add_cell(column, row);
                join(side_[2], above);
                join(side_[3], left);
                above = side_[0];
                left = side_[1];
            }
        }
        walk(sink);
    }

  private:
    bool is_in(float value) const { return value >= lower_ && value < upper_; }

    int add_edge(FieldPoint start, int piece)
    {
        edges_.push_back({start, kNone, kNone});
        piece_.push_back(piece);
        return static_cast<int>(edges_.size()) - 1;
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
                side_[side] = add_edge(parts[side].begin, piece);
                if (parts[side].ends_in_corner) {
                    side = (side + 1) % 4;
                } else {
                    add_edge(parts[side].end, piece); // along the level
                    side = cell.partner(side, parts[side].leaves_at);
                }
            }
            for (int e = start; e < static_cast<int>(edges_.size()); ++e) {
                edges_[static_cast<size_t>(e)].next = e + 1;
            }
            edges_.back().next = start;
        }
    }

    int new_piece()
    {
        parent_.push_back(static_cast<int>(parent_.size()));
        size_.push_back(1);
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

    void join(int a, int b)
    {
        if (a == kNone || b == kNone) {
            return;
        }
        int ra = root(piece_[static_cast<size_t>(a)]);
        int rb = root(piece_[static_cast<size_t>(b)]);
        if (ra == rb ||
            size_[static_cast<size_t>(ra)] + size_[static_cast<size_t>(rb)] > kMostPieces) {
            return;
        }
        if (size_[static_cast<size_t>(ra)] < size_[static_cast<size_t>(rb)]) {
            std::swap(ra, rb);
        }
        parent_[static_cast<size_t>(rb)] = ra;
        size_[static_cast<size_t>(ra)] += size_[static_cast<size_t>(rb)];
        edges_[static_cast<size_t>(a)].twin = b;
        edges_[static_cast<size_t>(b)].twin = a;
    }

    /// Adds a point to the rim; a step straight back takes the spike off.
    void add_point(FieldPoint p)
    {
        if (!rim_.empty()) {
            p = field_.sides().beside(p, rim_.back());
        }
        if (!rim_.empty() && rim_.back() == p) {
            return;
        }
        if (rim_.size() >= 2 && rim_[rim_.size() - 2] == p) {
            rim_.pop_back();
            return;
        }
        if (rim_.size() >= 2 && is_straight(rim_[rim_.size() - 2], rim_.back(), p)) {
            rim_.back() = p;
            return;
        }
        rim_.push_back(p);
    }

    /// Points on a row or column of a grid drawn in its own units; others are kept as they are.
    static bool is_straight(FieldPoint a, FieldPoint b, FieldPoint c)
    {
        return (a.x == b.x && b.x == c.x && (b.y - a.y) * (c.y - b.y) > 0.0F) ||
               (a.y == b.y && b.y == c.y && (b.x - a.x) * (c.x - b.x) > 0.0F);
    }

    void trim_ends()
    {
        size_t first = 0;
        size_t last = rim_.size();
        while (last - first > 2) {
            if (rim_[first] == rim_[last - 1]) {
                --last;
            } else if (rim_[first + 1] == rim_[last - 1]) {
                ++first;
                --last;
            } else if (rim_[first] == rim_[last - 2]) {
                last -= 2;
            } else {
                break;
            }
        }
        rim_.erase(rim_.begin() + static_cast<std::ptrdiff_t>(last), rim_.end());
        rim_.erase(rim_.begin(), rim_.begin() + static_cast<std::ptrdiff_t>(first));
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
                add_point(edges_[e].start);
                e = static_cast<size_t>(edges_[e].next);
                while (edges_[e].twin != kNone) {
                    e = static_cast<size_t>(edges_[static_cast<size_t>(edges_[e].twin)].next);
                }
            }
            trim_ends();
            if (rim_.size() >= 3) {
                sink(rim_);
            }
        }
    }

    const TracedField &field_;
    float lower_, upper_;
    std::vector<int> above_; ///< the bottom edge of the cell above, for each column
    int side_[4] = {};
    std::vector<Edge> edges_;
    std::vector<int> piece_; ///< of each edge
    std::vector<int> parent_, size_;
    std::vector<FieldPoint> rim_;
};

} // namespace

void trace_band(const TracedField &field, float lower, float upper, const PointSink &sink)
{
    BandTracer(field, lower, upper).run(sink);
}

} // namespace tyr
