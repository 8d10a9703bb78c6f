#include <algorithm>
#include <cmath>
#include <limits>

#include "tyr/base/missing.h"
#include "tyr/field/contour_trace_private.h"
#include "tyr/geo/domain_rec.h"
#include "tyr/geo/projection.h"

namespace tyr {

namespace {

constexpr float kLambertJump = 50.0F; ///< neighbours farther apart lie beyond the map's cut

bool usable(float value)
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
    low_.assign(static_cast<size_t>(nx - 1) * static_cast<size_t>(ny - 1), 1.0F);
    high_.assign(low_.size(), 0.0F);
    for (int row = 0; row + 1 < ny; ++row) {
        for (int column = 0; column + 1 < nx; ++column) {
            const int a = row * nx + column;
            const int corners[] = {a, a + 1, a + nx, a + nx + 1};
            bool whole = true;
            float least = std::numeric_limits<float>::max();
            float most = std::numeric_limits<float>::lowest();
            for (const int c : corners) {
                whole = whole && usable(values[c]) && (!x || (usable(x[c]) && usable(y[c])));
                whole = whole &&
                        !(x && sides.proj == kProjLambert && std::fabs(x[c] - x[a]) > kLambertJump);
                least = std::min(least, values[c]);
                most = std::max(most, values[c]);
            }
            if (whole) {
                low_[index(column, row)] = least;
                high_[index(column, row)] = most;
            }
        }
    }
}

void TracedField::drop_steep_cells(float interval, float most)
{
    for (size_t i = 0; i < low_.size(); ++i) {
        if (low_[i] <= high_[i] && !((high_[i] - low_[i]) / interval <= most)) {
            low_[i] = 1.0F;
            high_[i] = 0.0F;
        }
    }
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
