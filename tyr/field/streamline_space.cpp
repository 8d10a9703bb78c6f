#include <algorithm>
#include <cmath>

#include "tyr/field/streamline_private.h"
#include "tyr/field/vector_private.h"
#include "tyr/field/world_private.h"
#include "tyr/geo/projection.h"
#include "tyr/grid_math/sample.h"

namespace tyr {

namespace {

constexpr int kSamples = 48;    ///< cells looked at in each direction
constexpr float kMargin = 2.0F; ///< grid lengths around the window
constexpr float kMostBoxes = 4000000.0F;
constexpr float kRounding = 0.0001F; ///< of a grid place

} // namespace

bool PlotWind::is_set() const
{
    return !is_missing(u) && !is_missing(v) && std::isfinite(u) && std::isfinite(v);
}

float PlotWind::speed() const
{
    return std::hypot(u, v);
}

StreamSpace::StreamSpace(const GridRec &grid) : grid_(grid)
{
    const DomainRec &d = grid.domain;
    DOM_get(&plot_);
    if (vectors().x != nullptr) {
        DOM_get_window(plot_window_);
        same_ = DOM_equal(&plot_, &d) != 0;
        DOM_set(&d);
        DOM_get_window(grid_window_);
        DOM_set(&plot_);
        sides_ = {plot_.proj};
        goes_round_ = columns_round(d) == d.nx;
        measure_cell();
    }
    lay_boxes();
}

void StreamSpace::measure_cell()
{
    const DomainRec &d = grid_.domain;
    std::vector<float> sizes;
    const auto place = [this](int column, int row) {
        FieldPoint p;
        vector_place(grid_, column, row, &p.x, &p.y);
        return p;
    };
    const int across = std::max((d.nx - 1) / kSamples, 1);
    const int down = std::max((d.ny - 1) / kSamples, 1);
    for (int row = 0; row + 1 < d.ny; row += down) {
        for (int column = 0; column + 1 < d.nx; column += across) {
            const FieldPoint p = place(column, row);
            const FieldPoint east = sides_.beside(place(column + 1, row), p);
            const FieldPoint south = sides_.beside(place(column, row + 1), p);
            if (is_missing(p.x) || is_missing(east.x) || is_missing(south.x) ||
                DOM_near_window(p.x, p.y) == 0) {
                continue;
            }
            const float area = (east.x - p.x) * (south.y - p.y) - (east.y - p.y) * (south.x - p.x);
            sizes.push_back(std::sqrt(std::fabs(area)));
        }
    }
    if (!sizes.empty()) {
        const auto middle = sizes.begin() + static_cast<std::ptrdiff_t>(sizes.size() / 2);
        std::nth_element(sizes.begin(), middle, sizes.end());
        cell_ = *middle > 0.0F ? *middle : 1.0F;
    }
}

void StreamSpace::lay_boxes()
{
    const VectorState &s = vectors();
    float width = static_cast<float>(grid_.domain.nx);
    float height = static_cast<float>(grid_.domain.ny);
    box_width_ = 0.5F * static_cast<float>(s.skip_x);
    box_height_ = 0.5F * static_cast<float>(s.skip_y);
    if (s.x != nullptr) {
        // even on the picture, where the grid's own boxes crowd at a pole
        box_width_ = box_height_ = cell_ * std::sqrt(box_width_ * box_height_);
        left_ = plot_window_[0] - kMargin * cell_;
        bottom_ = plot_window_[2] - kMargin * cell_;
        width = plot_window_[1] - left_ + kMargin * cell_;
        height = plot_window_[3] - bottom_ + kMargin * cell_;
    }
    const float many = width / box_width_ * (height / box_height_) / kMostBoxes;
    if (many > 1.0F) {
        box_width_ *= std::sqrt(many);
        box_height_ *= std::sqrt(many);
    }
    columns_ = static_cast<size_t>(std::max(std::ceil(width / box_width_), 1.0F));
    rows_ = static_cast<size_t>(std::max(std::ceil(height / box_height_), 1.0F));
}

FieldPoint StreamSpace::inside(FieldPoint p) const
{
    const float width = sides_.width(p.y);
    if (width <= 0.0F) {
        return p;
    }
    const bool is_round = sides_.proj == kProjMollweide;
    const float left = is_round ? -width / 2.0F : plot_window_[0];
    const float right = is_round ? width / 2.0F : plot_window_[1];
    if (p.x > right && p.x - width >= left) {
        p.x -= width;
    } else if (p.x < left && p.x + width <= right) {
        p.x += width;
    }
    return p;
}

bool StreamSpace::grid_place(FieldPoint p, FieldPoint *g) const
{
    if (vectors().x == nullptr) {
        *g = {p.x, static_cast<float>(grid_.domain.ny - 1) - p.y};
        return true;
    }
    p = inside(p);
    if (!same_) {
        float lat = 0.0F;
        float lon = 0.0F;
        const int known = MAP_xy_to_ll(&lat, &lon, p.x, p.y);
        DOM_set(&grid_.domain);
        const int shown = known != 0 ? MAP_ll_to_xy(&p.x, &p.y, lat, lon) : 0;
        DOM_set(&plot_);
        if (shown == 0) {
            return false;
        }
    }
    *g = {(p.x - grid_window_[0]) / grid_.domain.dx, (grid_window_[3] - p.y) / grid_.domain.dy};
    return std::isfinite(g->x) && std::isfinite(g->y);
}

PlotWind StreamSpace::wind(const GridRec &u, const GridRec &v, FieldPoint p) const
{
    FieldPoint g;
    if (!grid_place(p, &g)) {
        return {kMissing, kMissing};
    }
    const float last = static_cast<float>(grid_.domain.nx - 1);
    if (goes_round_) {
        g.x -= std::floor(g.x / (last + 1.0F)) * (last + 1.0F);
    }
    if (!goes_round_ || g.x <= last) {
        return {GRD_interp(&u, g.x, g.y), GRD_interp(&v, g.x, g.y)};
    }
    const PlotWind west = {GRD_interp(&u, last, g.y), GRD_interp(&v, last, g.y)};
    const PlotWind east = {GRD_interp(&u, 0.0F, g.y), GRD_interp(&v, 0.0F, g.y)};
    if (!west.is_set() || !east.is_set()) {
        return {kMissing, kMissing};
    }
    const float t = g.x - last;
    return {west.u + t * (east.u - west.u), west.v + t * (east.v - west.v)};
}

bool StreamSpace::is_near(FieldPoint p) const
{
    const float margin = kMargin * cell_;
    return vectors().x == nullptr ||
           (p.x >= plot_window_[0] - margin && p.x <= plot_window_[1] + margin &&
            p.y >= plot_window_[2] - margin && p.y <= plot_window_[3] + margin);
}

size_t StreamSpace::box(FieldPoint p) const
{
    if (vectors().x == nullptr) { // rows from the top
        p.y = static_cast<float>(grid_.domain.ny - 1) - p.y;
    }
    const float column = (p.x - left_) / box_width_ + kRounding;
    const float row = (p.y - bottom_) / box_height_ + kRounding;
    if (!(column >= 0.0F && row >= 0.0F && column < static_cast<float>(columns_) &&
          row < static_cast<float>(rows_))) {
        return columns_ * rows_;
    }
    return static_cast<size_t>(row) * columns_ + static_cast<size_t>(column);
}

} // namespace tyr
