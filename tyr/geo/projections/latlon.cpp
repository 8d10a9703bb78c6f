#include "tyr/geo/projections/form_private.h"

using namespace tyr;

namespace tyr {

namespace {

MapPoint forward(const CurrentDomain &d, double lat, double lon)
{
    return {wrap_longitude(lon - d.rec.plon), lat};
}

MapPoint inverse(const CurrentDomain &d, double x, double y)
{
    return {y, wrap_longitude(d.rec.plon + x)};
}

float wrap_width(float)
{
    return static_cast<float>(kTurn);
}

} // namespace

extern const ProjectionForm kLatLonForm;
const ProjectionForm kLatLonForm = {
    .code = kProjLatLon,
    .name = "latlon",
    .words = {"ll", "lat"},
    .window = WindowForm::map,
    .set_up = nullptr,
    .forward = forward,
    .forward_all = nullptr,
    .inverse = inverse,
    .rotate = nullptr,
    .scale = nullptr,
    .wrap_width = wrap_width,
    .skew = nullptr,
};

} // namespace tyr
