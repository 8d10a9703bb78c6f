#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

#include "tyr/field/contour_private.h"
#include "tyr/field/world_private.h"
#include "tyr/geo/domain.h"
#include "tyr/geo/projection.h"
#include "tyr/gks/gks.h"
#include "tyr/grid_math/sample.h"
#include "tyr/plot/area.h"
#include "tyr/plot/view.h"

using namespace tyr;

namespace tyr {

namespace {

constexpr int kHalvings = 12; ///< toward the limb, of a grid length

/// Finds places between grid points on a map.
class LimbFinder {
  public:
    LimbFinder(const DomainRec &grid, const DomainRec &map) : grid_(grid), map_(map)
    {
        DOM_set(&grid);
        DOM_get_window(window_);
        DOM_set(&map);
    }

    /// Plot place of a column and row. @return false where the map doesn't show it
    bool place(FieldPoint g, FieldPoint *p) const
    {
        float lat = 0.0F;
        float lon = 0.0F;
        DOM_set(&grid_);
        const int known =
            MAP_xy_to_ll(&lat, &lon, window_[0] + g.x * grid_.dx, window_[3] - g.y * grid_.dy);
        DOM_set(&map_);
        return known != 0 && MAP_ll_to_xy(&p->x, &p->y, lat, lon) != 0;
    }

    /// The last place in sight on the way from one that is to one that isn't.
    bool limb(FieldPoint seen, FieldPoint hidden, FieldPoint *g, FieldPoint *p) const
    {
        if (!place(seen, p)) {
            return false;
        }
        *g = seen;
        for (int i = 0; i < kHalvings; ++i) {
            const FieldPoint middle = {(seen.x + hidden.x) / 2.0F, (seen.y + hidden.y) / 2.0F};
            FieldPoint at;
            if (place(middle, &at)) {
                *g = seen = middle;
                *p = at;
            } else {
                hidden = middle;
            }
        }
        return true;
    }

  private:
    const DomainRec &grid_;
    const DomainRec &map_;
    float window_[4] = {};
};

/// The middle of a point's neighbours in sight, as column and row. @return false without any
bool middle_in_sight(const DomainRec &d, const float *x, int column, int row, FieldPoint *g)
{
    int seen = 0;
    FieldPoint sum;
    for (int j = std::max(row - 1, 0); j <= std::min(row + 1, d.ny - 1); ++j) {
        for (int i = std::max(column - 1, 0); i <= std::min(column + 1, d.nx - 1); ++i) {
            if (!is_missing(x[j * d.nx + i])) {
                sum = {sum.x + static_cast<float>(i), sum.y + static_cast<float>(j)};
                ++seen;
            }
        }
    }
    const float n = static_cast<float>(std::max(seen, 1));
    *g = {sum.x / n, sum.y / n};
    return seen > 0;
}

} // namespace

FieldSpace::FieldSpace(const GridRec &grid, bool to_limb) : grid_(grid)
{
    DomainRec here;
    DOM_get(&here);
    if (here.proj == kProjNone || DOM_equal(&here, &grid.domain) != 0) {
        std::array<float, 4> view;
        PLT_get_viewport(view.data());
        gset_viewport(3, view.data());
        const std::array<float, 4> window = {0.0F, static_cast<float>(grid.domain.nx - 1), 0.0F,
                                             static_cast<float>(grid.domain.ny - 1)};
        gset_window(3, window.data());
        gsel_norm_tran(3);
        height_ = window[3];
        return;
    }
    is_good_ = GRD_proj_XY(&grid, &here, &x_, &y_) == 0;
    DOM_set(&here);
    gsel_norm_tran(2);
    height_ = DOM_window_height();
    sides_ = {here.proj};
    if (is_good_ && columns_round(grid.domain) == grid.domain.nx) {
        close_world();
    }
    const bool has_limb = here.proj == kProjOrtho || here.proj == kProjSatellite;
    if (is_good_ && to_limb && has_limb) {
        reach_limb(grid.domain, here);
    }
}

/// Repeats the first column behind the last one.
void FieldSpace::close_world()
{
    const size_t nx = static_cast<size_t>(grid_.domain.nx);
    const size_t ny = static_cast<size_t>(grid_.domain.ny);
    const size_t count = (nx + 1) * ny;
    auto *x = static_cast<float *>(std::malloc(count * sizeof(float)));
    auto *y = static_cast<float *>(std::malloc(count * sizeof(float)));
    if (x == nullptr || y == nullptr) { // drawn with its gap
        std::free(x);
        std::free(y);
        return;
    }
    values_.resize(count);
    const auto widen = [nx, ny](const float *from, float *to) {
        for (size_t row = 0; row < ny; ++row) {
            std::copy_n(from + row * nx, nx, to + row * (nx + 1));
            to[row * (nx + 1) + nx] = from[row * nx];
        }
    };
    widen(grid_.values, values_.data());
    widen(x_, x);
    widen(y_, y);
    std::free(x_);
    std::free(y_);
    x_ = x;
    y_ = y;
    grid_.values = values_.data();
    ++grid_.domain.nx;
}

FieldSpace::~FieldSpace()
{
    std::free(x_);
    std::free(y_);
    gsel_norm_tran(2);
}

/// Brings the points behind the limb that have neighbours in sight onto it, with the field's value
/// there: the picture ends on the limb and not in steps.
void FieldSpace::reach_limb(const DomainRec &own, const DomainRec &map)
{
    const DomainRec &d = grid_.domain;
    const size_t count = static_cast<size_t>(d.nx) * static_cast<size_t>(d.ny);
    const std::vector<float> seen(x_, x_ + count);
    std::vector<float> values(grid_.values, grid_.values + count);
    const LimbFinder finder(own, map);
    for (int row = 0; row < d.ny; ++row) {
        for (int column = 0; column < d.nx; ++column) {
            const size_t at =
                static_cast<size_t>(row) * static_cast<size_t>(d.nx) + static_cast<size_t>(column);
            const FieldPoint here = {static_cast<float>(column), static_cast<float>(row)};
            FieldPoint from;
            FieldPoint g;
            FieldPoint p;
            if (is_missing(seen[at]) && middle_in_sight(d, seen.data(), column, row, &from) &&
                finder.limb(from, here, &g, &p)) {
                x_[at] = p.x;
                y_[at] = p.y;
                values[at] = GRD_interp(&grid_, g.x, g.y);
            }
        }
    }
    values_ = std::move(values);
    grid_.values = values_.data();
}

} // namespace tyr
