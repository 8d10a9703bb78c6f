#include "tyr/grid_math/grid_places.h"

#include <algorithm>
#include <array>

#include "tyr/base/missing.h"
#include "tyr/geo/projection.h"
#include "tyr/geo/projection_rows_private.h"
#include "tyr/grid_math/row_bands.h"

namespace {

constexpr float kBeyond = 0.9999F; // of a grid width beyond the last point counts as outside
constexpr int kSlice = 4096;       // points that one step of a band takes
constexpr size_t kBatch = 256;     // points projected together

/// Runs `turn(first, last)` over pieces of so many pairs, side by side.
template <class Turn> void over_pairs(size_t count, Turn turn)
{
    const int slices = static_cast<int>((count + kSlice - 1) / kSlice);
    tyr::over_rows(slices, count, tyr::kCostlyPoints, [=](int first, int last) {
        turn(static_cast<size_t>(first) * kSlice,
             std::min(count, static_cast<size_t>(last) * kSlice));
    });
}

} // namespace

namespace tyr {

DomainScope::DomainScope(const DomainRec &domain)
{
    DOM_get(&before_);
    DOM_set(&domain);
}

DomainScope::~DomainScope()
{
    DOM_set(&before_);
}

size_t point_count(const DomainRec &domain)
{
    if (domain.nx < 1 || domain.ny < 1)
        return 0;
    return static_cast<size_t>(domain.nx) * static_cast<size_t>(domain.ny);
}

Corner north_west(const DomainRec &domain)
{
    float x = 0.0F;
    float y = 0.0F;
    MAP_center_xy(&x, &y);
    return {x - static_cast<float>(domain.nx - 1) / 2.0F * domain.dx,
            y + static_cast<float>(domain.ny - 1) / 2.0F * domain.dy};
}

double row_latitude(const DomainRec &domain, int row)
{
    const double dy = domain.dy;
    return domain.clat - dy * (domain.ny - 1) / 2.0 + (domain.ny - 1 - row) * dy;
}

void to_earth(float *x, float *y, size_t count)
{
    over_pairs(count, [=](size_t first, size_t last) {
        for (size_t i = first; i < last; ++i) {
            float lat = kMissing;
            float lon = kMissing;
            if (is_missing(x[i]) || is_missing(y[i]) || MAP_xy_to_ll(&lat, &lon, x[i], y[i]) == 0)
                lat = lon = kMissing;
            x[i] = lat;
            y[i] = lon;
        }
    });
}

void to_plot(float *lat, float *lon, size_t count)
{
    over_pairs(count, [=](size_t first, size_t last) {
        std::array<bool, kBatch> is_there;
        for (size_t at = first; at < last; at += kBatch) {
            const size_t n = std::min(kBatch, last - at);
            for (size_t i = 0; i < n; ++i)
                is_there[i] = !is_missing(lat[at + i]) && !is_missing(lon[at + i]);
            project_places(lat + at, lon + at, n, lat + at, lon + at);
            for (size_t i = 0; i < n; ++i) {
                if (!is_there[i])
                    lat[at + i] = lon[at + i] = kMissing;
            }
        }
    });
}

void row_places(const DomainRec &domain, Corner corner, int row, float *lat, float *lon)
{
    const float y = corner.y - static_cast<float>(row) * domain.dy;
    for (int i = 0; i < domain.nx; ++i) {
        const float x = corner.x + static_cast<float>(i) * domain.dx;
        if (MAP_xy_to_ll(&lat[i], &lon[i], x, y) == 0)
            lat[i] = lon[i] = kMissing;
    }
}

void places_in(const DomainRec &from, int first, int last, const DomainRec &to, float *x, float *y)
{
    DOM_set(&from);
    const Corner corner = north_west(from);
    size_t n = 0;
    for (int row = first; row < last; ++row)
        for (int i = 0; i < from.nx; ++i, ++n) {
            x[n] = corner.x + static_cast<float>(i) * from.dx;
            y[n] = corner.y - static_cast<float>(row) * from.dy;
        }
    if (DOM_equal(&from, &to) != 0) {
        DOM_set(&to);
        return;
    }
    to_earth(x, y, n);
    DOM_set(&to);
    to_plot(x, y, n);
}

float bilinear(const float *values, int nx, int ny, float column, float row)
{
    // written so that a place that is no number is outside
    if (!(column >= 0.0F && row >= 0.0F && column <= static_cast<float>(nx) - kBeyond &&
          row <= static_cast<float>(ny) - kBeyond))
        return kMissing;
    const int i = std::min(static_cast<int>(column), nx - 1);
    const int j = std::min(static_cast<int>(row), ny - 1);
    const size_t base = static_cast<size_t>(j) * static_cast<size_t>(nx) + static_cast<size_t>(i);
    const size_t east = i + 1 < nx ? 1 : 0;
    const size_t south = j + 1 < ny ? static_cast<size_t>(nx) : 0;
    // beyond the last row or column the base point stands in for what isn't there
    const float a = values[base];
    const float b = east != 0 ? values[base + 1] : a;
    const float c = south != 0 ? values[base + south] : a;
    const float d = east != 0 && south != 0 ? values[base + south + 1] : a;
    if (is_missing(a) || is_missing(b) || is_missing(c) || is_missing(d))
        return kMissing;
    const float p = column - static_cast<float>(i);
    const float q = row - static_cast<float>(j);
    return (a * (1.0F - p) + b * p) * (1.0F - q) + (c * (1.0F - p) + d * p) * q;
}

} // namespace tyr
