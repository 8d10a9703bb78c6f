#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "tyr/base/angle.h"
#include "tyr/field/vector_private.h"
#include "tyr/geo/domain.h"
#include "tyr/geo/projection.h"
#include "tyr/grid_math/sample.h"
#include "tyr/plot/barb.h"

using namespace tyr;

namespace {

constexpr float kStep = 0.25F;
constexpr float kCalm = 0.001F;
constexpr int kFreeSteps = 6; ///< a line's first steps, which a full box doesn't end
constexpr float kHead = 4.0F;

struct Place {
    float x, y;
};

/// A quarter of a grid length in the drawing's units, by the middle of the grid where it can be
/// shown: lines cross a box in as many steps on every map.
float step_length(const GridRec &grid)
{
    if (vectors().x == nullptr || grid.domain.nx < 2) {
        return kStep;
    }
    const int at = grid.domain.ny / 2 * grid.domain.nx + (grid.domain.nx - 1) / 2;
    const float *x = vectors().x;
    const float *y = vectors().y;
    if (is_missing(x[at]) || is_missing(x[at + 1])) {
        return kStep;
    }
    const float length = std::hypot(x[at + 1] - x[at], y[at + 1] - y[at]);
    return length > 0.0F ? kStep * std::min(length, grid.domain.dx * 2.0F) : kStep;
}

/// Grid column and row of a place of the drawing.
class GridPlaces {
  public:
    explicit GridPlaces(const GridRec &grid) : grid_(grid)
    {
        DOM_get(&plot_);
        if (vectors().x != nullptr) {
            DOM_set(&grid.domain);
            DOM_get_window(window_);
            DOM_set(&plot_);
            same_ = DOM_equal(&plot_, &grid.domain) != 0;
        }
    }

    bool find(Place p, Place *g) const
    {
        if (vectors().x == nullptr) {
            *g = {p.x, static_cast<float>(grid_.domain.ny - 1) - p.y};
            return true;
        }
        float x = p.x;
        float y = p.y;
        if (!same_) {
            float lat = 0.0F;
            float lon = 0.0F;
            const int known = MAP_xy_to_ll(&lat, &lon, p.x, p.y);
            DOM_set(&grid_.domain);
            const int shown = known != 0 ? MAP_ll_to_xy(&x, &y, lat, lon) : 0;
            DOM_set(&plot_);
            if (shown == 0) {
                return false;
            }
        }
        *g = {(x - window_[0]) / grid_.domain.dx, (window_[3] - y) / grid_.domain.dy};
        return std::isfinite(g->x) && std::isfinite(g->y);
    }

  private:
    const GridRec &grid_;
    DomainRec plot_;
    float window_[4] = {};
    bool same_ = false;
};

struct Wind {
    float u = kMissing, v = kMissing;
    bool is_set() const { return !is_missing(u) && !is_missing(v); }
    float speed() const { return std::hypot(u, v); }
};

/// One line: where it is, and the field under it.
class Tracer {
  public:
    Tracer(const GridRec &u, const GridRec &v) : u_(u), v_(v), places_(u), length_(step_length(u))
    {
    }

    Wind wind_at(Place p) const
    {
        Place g;
        if (!places_.find(p, &g)) {
            return {};
        }
        return {GRD_interp(&u_, g.x, g.y), GRD_interp(&v_, g.x, g.y)};
    }

    bool grid_place(Place p, Place *g) const { return places_.find(p, g); }

    /// The place a quarter unit on: fourth order Runge-Kutta on the direction of the wind, straight
    /// on where the field ends.
    Place step(Place p, Wind w) const
    {
        Place slopes[4];
        slopes[0] = unit(w);
        for (int i = 1; i < 4; ++i) {
            const float part = i < 3 ? length_ / 2.0F : length_;
            const Wind next = wind_at({p.x + slopes[i - 1].x * part, p.y + slopes[i - 1].y * part});
            if (!next.is_set() || next.speed() < kCalm) {
                return {p.x + slopes[0].x * length_, p.y + slopes[0].y * length_};
            }
            slopes[i] = unit(next);
        }
        const auto mean = [&slopes](float Place::*c) {
            return (slopes[0].*c + 2.0F * slopes[1].*c + 2.0F * slopes[2].*c + slopes[3].*c) / 6.0F;
        };
        return {p.x + mean(&Place::x) * length_, p.y + mean(&Place::y) * length_};
    }

    float length() const { return length_; }

  private:
    static Place unit(Wind w) { return {w.u / w.speed(), w.v / w.speed()}; }

    const GridRec &u_, &v_;
    GridPlaces places_;
    float length_;
};

size_t box_of(const GridRec &grid, Place g)
{
    const VectorState &s = vectors();
    const float row = 2.0F * g.y / static_cast<float>(s.skip_y) + 0.0001F;
    const float column = 2.0F * g.x / static_cast<float>(s.skip_x) + 0.0001F;
    const float last = static_cast<float>(s.boxes.size() - 1);
    const float box = static_cast<float>(grid.domain.nx) * std::floor(row) * 2.0F;
    if (!(row >= 0.0F && column >= 0.0F && row < last && column < last && box + column < last)) {
        return s.boxes.size() - 1;
    }
    return static_cast<size_t>(row) * 2 * static_cast<size_t>(grid.domain.nx) +
           static_cast<size_t>(column);
}

float direction_of(Wind w)
{
    return w.speed() < 0.01F ? 0.0F
                             : static_cast<float>(std::atan2(-w.u, -w.v) * kDegreesPerRadian);
}

bool in_limits(float speed)
{
    const VectorState &s = vectors();
    return (is_missing(s.lowest) || speed >= s.lowest) &&
           (is_missing(s.highest) || speed <= s.highest);
}

/// What ends a line before its next step.
bool turns_back(float before, float now)
{
    const float change = std::fabs(now - before);
    return !is_missing(before) && change > 120.0F && change < 240.0F;
}

bool starts(int sweep, float u, float v)
{
    // a wind along an axis belongs to the sweep that begins where it comes in
    switch (sweep) {
    case 0:
        return u > 0.0F && v >= 0.0F;
    case 1:
        return u >= 0.0F && v < 0.0F;
    case 2:
        return u <= 0.0F && v > 0.0F;
    default:
        return u < 0.0F && v <= 0.0F;
    }
}

} // namespace

void VECT_trace(float steps, GridRec *u, GridRec *v, int column, int row)
{
    VectorState &s = vectors();
    if (u == nullptr || v == nullptr || u->values == nullptr || v->values == nullptr) {
        return;
    }
    if (s.boxes.empty()) {
        s.boxes.assign(
            static_cast<size_t>(u->domain.nx) * static_cast<size_t>(u->domain.ny) * 4 + 1, 0);
    }
    const Tracer tracer(*u, *v);
    const float most = is_missing(s.base) || s.base <= 0.0F ? 1.0F : s.base;
    const int period = std::max(static_cast<int>(s.spacing * 10.0F), 1);
    Place p;
    vector_place(*u, column, u->domain.ny - 1 - row, &p.x, &p.y);
    Place before = p;
    size_t last_box = s.boxes.size();
    int stay = 0;
    int n = 0;
    bool drawn = false;
    float direction = kMissing;
    float previous = kMissing;
    int colour = s.attr.color;
    while (static_cast<float>(n) < steps) {
        Place g;
        if (!tracer.grid_place(p, &g)) {
            break;
        }
        const size_t box = box_of(*u, g);
        stay = box == last_box ? stay + 1 : 0;
        s.boxes[box] += box == last_box ? 0 : 1;
        last_box = box;
        const bool is_full = static_cast<float>(s.boxes[box]) > most && (n < 1 || n >= kFreeSteps);
        const Wind w = tracer.wind_at(p);
        previous = direction;
        if (!w.is_set() || w.speed() < kCalm) {
            break;
        }
        direction = direction_of(w);
        if (is_full || stay > 6 * s.skip_x || (n > 0 && turns_back(previous, direction))) {
            break;
        }
        drawn = in_limits(w.speed());
        colour = set_speed_attr(w.speed());
        const Place next = tracer.step(p, w);
        if (colour != -1 && drawn) {
            // the chord of the step, so that steps join
            const float dx = next.x - p.x;
            const float dy = next.y - p.y;
            const float along = static_cast<float>(std::atan2(-dx, -dy) * kDegreesPerRadian);
            const float head = n % period == period - 1 ? s.spacing * kHead : 0.0F;
            WX_vector_raw(p.x, p.y, along, std::hypot(dx, dy), 1.0F, head);
        }
        before = p;
        p = next;
        ++n;
    }
    if (n > 0 && static_cast<float>(n) < steps && colour != -1 && drawn && !is_missing(previous)) {
        WX_vector_raw(before.x, before.y, previous, tracer.length(), 1.0F, s.spacing * kHead);
    }
}

namespace tyr {

int draw_streamlines(GridRec *u, GridRec *v)
{
    VectorState &s = vectors();
    const int nx = u->domain.nx;
    const int ny = u->domain.ny;
    s.boxes.assign(static_cast<size_t>(nx) * static_cast<size_t>(ny) * 4 + 1, 0);
    const float steps = 4.0F * static_cast<float>(nx) * s.scale;
    for (int sweep = 0; sweep < 4; ++sweep) {
        const bool from_left = sweep < 2;
        const bool from_bottom = sweep % 2 == 0;
        for (int c = 0; c < nx; c += s.skip_x) {
            for (int r = 0; r < ny; r += s.skip_y) {
                const int column = from_left ? c : nx - 1 - c;
                const int row = from_bottom ? r : ny - 1 - r;
                const int at = (ny - 1 - row) * nx + column;
                const Wind w = {u->values[at], v->values[at]};
                if (w.is_set() && starts(sweep, w.u, w.v)) {
                    VECT_trace(steps, u, v, column, row);
                }
            }
        }
    }
    s.boxes.clear();
    return 0;
}

} // namespace tyr
