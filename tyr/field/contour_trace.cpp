#include <algorithm>
#include <cmath>

#include "tyr/base/missing.h"
#include "tyr/field/contour_trace_private.h"
#include "tyr/geo/domain_rec.h"
#include "tyr/geo/projection.h"

namespace tyr {

namespace {

constexpr float kLambertJump = 50.0F; ///< neighbours farther apart lie beyond the map's cut

bool is_usable(float value)
{
    return std::isfinite(value) && !is_missing(value);
}

} // namespace

float WorldSides::width(float y) const
{
    const bool joins = proj == kProjLatLon || proj == kProjMercator || proj == kProjMollweide;
    return joins ? projection_wrap_width(proj, y) : 0.0F;
}

FieldPoint WorldSides::beside(FieldPoint p, FieldPoint near) const
{
    const float w = width(p.y);
    const float near_w = width(near.y);
    if (w <= 0.0F || near_w <= 0.0F) {
        return p;
    }
    // in parts of the world's width, so that the slope of a map's side doesn't count
    const float worlds = std::round(near.x / near_w - p.x / w);
    return {p.x + worlds * w, p.y};
}

TracedField::TracedField(int nx, int ny, const float *values, const float *x, const float *y,
                         WorldSides sides)
    : nx_(nx), ny_(ny), values_(values), x_(x), y_(y), sides_(sides)
{
    if (nx < 2 || ny < 2) {
        return;
    }
    cells_.resize(static_cast<size_t>(nx - 1) * static_cast<size_t>(ny - 1));
    std::vector<char> upper(static_cast<size_t>(nx));
    std::vector<char> lower(upper);
    mark_usable(0, upper);
    for (int row = 0; row + 1 < ny; ++row) {
        mark_usable(row + 1, lower);
        set_row(row, upper, lower);
        upper.swap(lower);
    }
    set_blocks();
}

void TracedField::mark_usable(int row, std::vector<char> &usable) const
{
    const size_t first = static_cast<size_t>(row) * usable.size();
    for (size_t i = 0; i < usable.size(); ++i) {
        const bool has_value = is_usable(values_[first + i]);
        const bool has_place =
            x_ == nullptr || (is_usable(x_[first + i]) && is_usable(y_[first + i]));
        usable[i] = has_value && has_place ? 1 : 0;
    }
}

void TracedField::set_row(int row, const std::vector<char> &upper, const std::vector<char> &lower)
{
    const float *v = values_ + static_cast<size_t>(row) * upper.size();
    const float *w = v + upper.size();
    CellBounds *cells = &cells_[index(0, row)];
    for (size_t i = 0; i + 1 < upper.size(); ++i) {
        if ((upper[i] & upper[i + 1] & lower[i] & lower[i + 1]) != 0) {
            cells[i].low = std::min(std::min(v[i], v[i + 1]), std::min(w[i], w[i + 1]));
            cells[i].high = std::max(std::max(v[i], v[i + 1]), std::max(w[i], w[i + 1]));
        }
    }
    if (x_ == nullptr || sides_.proj != kProjLambert) {
        return;
    }
    const float *x = x_ + static_cast<size_t>(row) * upper.size();
    const float *z = x + upper.size();
    for (size_t i = 0; i + 1 < upper.size(); ++i) {
        for (const float other : {x[i + 1], z[i], z[i + 1]}) {
            if (std::fabs(other - x[i]) > kLambertJump) {
                cells[i] = {};
            }
        }
    }
}

void TracedField::set_blocks()
{
    const int columns = nx_ - 1;
    blocks_of_row_ = (columns + CellBlock::kCells - 1) / CellBlock::kCells;
    blocks_.assign(static_cast<size_t>(blocks_of_row_) * static_cast<size_t>(ny_ - 1), {});
    size_t at = 0;
    for (int row = 0; row + 1 < ny_; ++row) {
        for (int first = 0; first < columns; first += CellBlock::kCells) {
            CellBlock &block = blocks_[at++];
            for (int c = first; c < std::min(first + CellBlock::kCells, columns); ++c) {
                const CellBounds &one = cell(c, row);
                block.bounds.low = std::min(block.bounds.low, one.low);
                block.bounds.high = std::max(block.bounds.high, one.high);
                block.has_gap |= !one.exists();
            }
        }
    }
}

void TracedField::drop_steep_cells(float interval, float most)
{
    for (CellBounds &cell : cells_) {
        if (cell.exists() && !((cell.high - cell.low) / interval <= most)) {
            cell = {};
        }
    }
    set_blocks();
}

FieldPoint TracedField::place(int corner) const
{
    if (x_) {
        return {x_[corner], y_[corner]};
    }
    const auto row = corner / nx_;
    return {static_cast<float>(corner % nx_), static_cast<float>(ny_ - 1 - row)};
}

FieldPoint TracedField::crossing(int a, int b, float level) const
{
    if (a > b) { // the same point from both of the cells that share the side
        std::swap(a, b);
    }
    const FieldPoint p = place(a);
    const FieldPoint q = sides_.beside(place(b), p);
    const float va = values_[a];
    const float t = std::clamp(static_cast<float>((static_cast<double>(level) - va) /
                                                  (static_cast<double>(values_[b]) - va)),
                               0.0F, 1.0F);
    return {t >= 1.0F ? q.x : p.x + t * (q.x - p.x), t >= 1.0F ? q.y : p.y + t * (q.y - p.y)};
}

} // namespace tyr
