#include <algorithm>
#include <cstdint>

#include "tyr/field/contour_cell_private.h"

namespace tyr {

namespace {

/// A place that lines pass through: a grid point, or a side between two of them.
struct Node {
    int a, b; ///< grid points, a <= b; the same for a point of the grid on the level
    bool operator==(const Node &other) const = default;
    bool operator<(const Node &o) const { return a != o.a ? a < o.a : b < o.b; }
};

struct End {
    Node node;
    uint32_t segment;
    bool operator<(const End &o) const
    {
        return node == o.node ? segment < o.segment : node < o.node;
    }
};

class LineTracer {
  public:
    LineTracer(const TracedField &field, float level) : field_(field), level_(level) {}

    void run(const PointSink &sink)
    {
        for (int row = 0; row + 1 < field_.rows(); ++row) {
            for (int column = 0; column + 1 < field_.columns(); ++column) {
                if (column % CellBlock::kCells == 0 && !touches(field_.block(column, row).bounds)) {
                    column += CellBlock::kCells - 1;
                } else if (touches(field_.cell(column, row))) {
                    add_cell(column, row);
                }
            }
        }
        join(sink);
    }

  private:
    bool touches(const CellBounds &b) const { return b.low <= level_ && b.high >= level_; }

    Node node(int a, int b) const
    {
        if (field_.value(a) == level_ || field_.value(b) == level_) {
            const int at = field_.value(a) == level_ ? a : b;
            return {at, at};
        }
        return {std::min(a, b), std::max(a, b)};
    }

    void add_segment(Node from, Node to)
    {
        const auto i = static_cast<uint32_t>(segments_);
        ends_.push_back({from, i});
        ends_.push_back({to, i});
        ++segments_;
    }

    bool is_flat(int column, int row) const
    {
        const CellBounds &cell = field_.cell(column, row);
        return cell.low == level_ && cell.high == level_;
    }
    bool exists(int column, int row) const
    {
        return column >= 0 && row >= 0 && column + 1 < field_.columns() &&
               row + 1 < field_.rows() && field_.cell(column, row).exists();
    }

    /// A side that lies on the level, told by the one of its cells that comes later, or by the only
    /// one; inside a plateau, and where the plateau ends with the field, it's no line.
    void add_level_side(const Cell &cell, int column, int row, int side)
    {
        if (field_.value(cell.from(side)) != level_ || field_.value(cell.to(side)) != level_) {
            return;
        }
        constexpr int kAcross[4][2] = {
            {0,  1 },
            {1,  0 },
            {0,  -1},
            {-1, 0 }
        };
        const int column2 = column + kAcross[side][0];
        const int row2 = row + kAcross[side][1];
        const bool has_other = exists(column2, row2);
        if (has_other && side < 2) {
            return;
        }
        if (is_flat(column, row) && (!has_other || is_flat(column2, row2))) {
            return;
        }
        add_segment({cell.from(side), cell.from(side)}, {cell.to(side), cell.to(side)});
    }

    void add_cell(int column, int row)
    {
        const Cell cell(field_, column, row);
        for (int side = 0; side < 4; ++side) {
            add_level_side(cell, column, row, side);
            if (!cell.is_crossed(side, level_)) {
                continue;
            }
            const int other = cell.partner(side, level_);
            if (other < side) {
                continue;
            }
            const Node from = node(cell.from(side), cell.to(side));
            const Node to = node(cell.from(other), cell.to(other));
            if (from == to || lies_on_side(cell, from, to)) {
                continue;
            }
            add_segment(from, to);
        }
    }

    /// Whether a segment runs along a side: such sides are told once, by add_level_side.
    static bool lies_on_side(const Cell &cell, Node from, Node to)
    {
        if (from.a != from.b || to.a != to.b) {
            return false;
        }
        for (int side = 0; side < 4; ++side) {
            if ((cell.from(side) == from.a && cell.to(side) == to.a) ||
                (cell.from(side) == to.a && cell.to(side) == from.a)) {
                return true;
            }
        }
        return false;
    }

    FieldPoint point(Node n) const
    {
        return n.a == n.b ? field_.place(n.a) : field_.crossing(n.a, n.b, level_);
    }

    /// Follows the segments from an end until no unused one is left.
    void follow(uint32_t end, const PointSink &sink)
    {
        line_.clear();
        line_.push_back(point(node_[end]));
        while (true) {
            used_[end / 2] = true;
            const uint32_t far = end ^ 1U;
            line_.push_back(field_.sides().beside(point(node_[far]), line_.back()));
            const auto [first, last] = range_of(node_[far]);
            const auto next =
                std::find_if(first, last, [this](const End &e) { return !used_[e.segment]; });
            if (next == last) {
                break;
            }
            end = end_of(*next);
        }
        sink(line_);
    }

    std::pair<std::vector<End>::const_iterator, std::vector<End>::const_iterator>
    range_of(Node n) const
    {
        const auto first = std::lower_bound(ends_.begin(), ends_.end(), End{n, 0});
        auto last = first;
        while (last != ends_.end() && last->node == n) {
            ++last;
        }
        return {first, last};
    }

    uint32_t end_of(const End &e) const
    {
        return node_[2 * e.segment] == e.node ? 2 * e.segment : 2 * e.segment + 1;
    }

    void join(const PointSink &sink)
    {
        node_.reserve(ends_.size());
        for (const End &e : ends_) {
            node_.push_back(e.node);
        }
        std::sort(ends_.begin(), ends_.end());
        used_.assign(segments_, false);
        for (auto e = ends_.cbegin(); e != ends_.cend();) { // open lines from their ends
            auto last = e;
            while (last != ends_.cend() && last->node == e->node) {
                ++last;
            }
            if ((last - e) % 2 == 1) {
                const auto free =
                    std::find_if(e, last, [this](const End &x) { return !used_[x.segment]; });
                if (free != last) {
                    follow(end_of(*free), sink);
                }
            }
            e = last;
        }
        for (uint32_t i = 0; i < segments_; ++i) {
            if (!used_[i]) {
                follow(2 * i, sink);
            }
        }
    }

    const TracedField &field_;
    float level_;
    uint32_t segments_ = 0;
    std::vector<End> ends_;
    std::vector<Node> node_; ///< of end 2 * segment and 2 * segment + 1
    std::vector<bool> used_;
    std::vector<FieldPoint> line_;
};

} // namespace

void trace_lines(const TracedField &field, float level, const PointSink &sink)
{
    LineTracer(field, level).run(sink);
}

} // namespace tyr
