#include <algorithm>
#include <array>
#include <cmath>

#include "tyr/geo/projection.h"
#include "tyr/geo/projection_rows_private.h"
#include "tyr/geo/projections/form_private.h"

namespace {

using namespace tyr;

/// At most kMostPlaces.
void project_row(const ProjectionForm &form, const float *lat, const float *lon, int count,
                 float *x, float *y)
{
    std::array<double, kMostPlaces> lats;
    std::array<double, kMostPlaces> lons;
    std::array<double, kMostPlaces> xs;
    std::array<double, kMostPlaces> ys;
    std::copy_n(lat, count, lats.begin());
    std::transform(lon, lon + count, lons.begin(), [](float v) { return wrap_longitude(v); });
    form.forward_all(current_domain(), {count, lats.data(), lons.data(), xs.data(), ys.data()});
    for (int i = 0; i < count; ++i) {
        const bool is_number = std::isfinite(xs[i]) && std::isfinite(ys[i]);
        x[i] = is_number ? static_cast<float>(xs[i]) : kMissing;
        y[i] = is_number ? static_cast<float>(ys[i]) : kMissing;
    }
}

} // namespace

void tyr::project_places(const float *lat, const float *lon, size_t count, float *x, float *y)
{
    const ProjectionForm *form = current_domain().form;
    const bool has_rows = form != nullptr && form->forward_all != nullptr;
    for (size_t i = 0; has_rows && i < count; i += kMostPlaces) {
        const auto n = static_cast<int>(std::min(count - i, size_t{kMostPlaces}));
        project_row(*form, lat + i, lon + i, n, x + i, y + i);
    }
    for (size_t i = 0; !has_rows && i < count; ++i) {
        float to_x = kMissing;
        float to_y = kMissing;
        if (MAP_ll_to_xy(&to_x, &to_y, lat[i], lon[i]) == 0) {
            to_x = to_y = kMissing;
        }
        x[i] = to_x;
        y[i] = to_y;
    }
}
