#include "tyr/grid_math/sample.h"

#include <cmath>
#include <cstdlib>
#include <limits>

#include "tyr/base/missing.h"
#include "tyr/base/str.h"
#include "tyr/geo/projection.h"
#include "tyr/grid_math/grid_places.h"

using namespace tyr;

namespace {

size_t value_count(const GridRec *grid)
{
    return grid == nullptr || grid->values == nullptr ? 0 : tyr::point_count(grid->domain);
}

struct Mean {
    double sum = 0.0;
    size_t count = 0;
};

Mean mean_of(const GridRec &grid)
{
    Mean mean;
    const size_t count = value_count(&grid);
    for (size_t i = 0; i < count; ++i) {
        const float value = grid.values[i];
        mean.sum += is_missing(value) ? 0.0 : static_cast<double>(value);
        mean.count += is_missing(value) ? 0 : 1;
    }
    return mean;
}

} // namespace

float GRD_interp(const GridRec *grid, float column, float row)
{
    if (value_count(grid) == 0)
        return kMissing;
    return tyr::bilinear(grid->values, grid->domain.nx, grid->domain.ny, column, row);
}

int GRD_max_speed(const GridRec *u, const GridRec *v, float *out)
{
    *out = kMissing;
    const size_t count = value_count(u);
    if (count == 0 || value_count(v) != count || u->domain.nx != v->domain.nx)
        return -1;
    float largest = -1.0F; // of the squares
    for (size_t i = 0; i < count; ++i) {
        const float a = u->values[i];
        const float b = v->values[i];
        const float square = is_missing(a) || is_missing(b) ? -1.0F : a * a + b * b;
        largest = square > largest ? square : largest;
    }
    if (largest >= 0.0F)
        *out = std::sqrt(largest);
    return 0;
}

int GRD_proj_XY(const GridRec *grid, const DomainRec *domain, float **x, float **y)
{
    const DomainRec &from = grid->domain;
    const size_t count = tyr::point_count(from);
    *x = *y = nullptr;
    if (count == 0)
        return -1;
    *x = static_cast<float *>(std::malloc(count * sizeof(float)));
    *y = static_cast<float *>(std::malloc(count * sizeof(float)));
    if (*x == nullptr || *y == nullptr) {
        std::free(*x);
        std::free(*y);
        *x = *y = nullptr;
        return -1;
    }
    const tyr::DomainScope scope(from);
    tyr::places_in(from, 0, from.ny, *domain, *x, *y);
    return 0;
}

float MAP_unrotate_dir(float direction, float x, float y)
{
    const int proj = DOM_get_proj();
    if (is_missing(direction) || (proj != kProjPolar && proj != kProjLambert))
        return direction;
    return direction - MAP_rotate_dir(0.0F, x, y);
}

int GRD_max_min(const GridRec *grid, float *max, float *min)
{
    *max = *min = kMissing;
    const size_t count = value_count(grid);
    if (grid == nullptr || grid->values == nullptr)
        return -1;
    float high = -std::numeric_limits<float>::infinity();
    float low = std::numeric_limits<float>::infinity();
    for (size_t i = 0; i < count; ++i) {
        const float value = grid->values[i];
        const float if_high = is_missing(value) ? high : value;
        const float if_low = is_missing(value) ? low : value;
        high = if_high > high ? if_high : high;
        low = if_low < low ? if_low : low;
    }
    if (low <= high) {
        *max = high;
        *min = low;
    }
    return 0;
}

int GRD_stat(const char *word, const GridRec *grid, float *out)
{
    out[0] = out[1] = kMissing;
    float max = kMissing;
    float min = kMissing;
    const bool wants_max = STR_casecmp(word, "max") == 0;
    const bool wants_both = STR_casecmp(word, "maxmin") == 0;
    if (wants_max || wants_both || STR_casecmp(word, "min") == 0) {
        GRD_max_min(grid, &max, &min);
        out[0] = wants_max || wants_both ? max : min;
        out[1] = wants_both ? min : kMissing;
        return 1;
    }
    const bool wants_number = STR_casecmp(word, "avgnum") == 0;
    if (!wants_number && STR_casecmp(word, "avg") != 0)
        return 0;
    if (grid == nullptr || grid->values == nullptr)
        return 0;
    const Mean mean = mean_of(*grid);
    if (mean.count > 0)
        out[0] = static_cast<float>(mean.sum / static_cast<double>(mean.count));
    if (wants_number)
        out[1] = static_cast<float>(mean.count);
    return 1;
}

float GRD_value_at(const GridRec *grid, const DomainRec *domain, float *x, float *y)
{
    const bool is_own = domain == nullptr || domain->proj == kProjNone;
    float px = *x;
    float py = *y;
    if (is_own) {
        float window[4];
        DOM_get_window(window);
        *x = (px - window[0]) / grid->domain.dx;
        *y = (window[3] - py) / grid->domain.dy;
        return GRD_interp(grid, *x, *y);
    }
    if (DOM_equal(&grid->domain, domain) == 0) {
        DOM_set(domain);
        tyr::to_earth(&px, &py, 1);
        DOM_set(&grid->domain);
        tyr::to_plot(&px, &py, 1);
    }
    DOM_set(&grid->domain);
    float window[4];
    DOM_get_window(window);
    const bool is_shown = !is_missing(px) && !is_missing(py);
    *x = is_shown ? (px - window[0]) / grid->domain.dx : kMissing;
    *y = is_shown ? (window[3] - py) / grid->domain.dy : kMissing;
    const float value = GRD_interp(grid, *x, *y);
    DOM_set(domain);
    return value;
}
