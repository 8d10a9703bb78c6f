#include <array>
#include <vector>

#include "tyr/base/str.h"
#include "tyr/geo/projection.h"
#include "tyr/grid_math/pointwise.h"

using namespace tyr;

namespace {

using tyr::GridOp;

struct PlaceText {
    const char *label;
    const char *units;
};

PlaceText place_text(GridOp op)
{
    switch (op) {
    case GridOp::latitude:
        return {"Latitude (deg)", "deg"};
    case GridOp::longitude:
        return {"Longitude (deg)", "deg"};
    case GridOp::plot_x:
        return {"Projection X", ""};
    default:
        return {"Projection Y", ""};
    }
}

float place_value(GridOp op, float x, float y)
{
    if (op == GridOp::plot_x)
        return x;
    if (op == GridOp::plot_y)
        return y;
    float lat = kMissing;
    float lon = kMissing;
    if (MAP_xy_to_ll(&lat, &lon, x, y) == 0)
        return kMissing;
    if (op == GridOp::latitude)
        return lat;
    return lon > 180.0F ? lon - 360.0F : lon < -180.0F ? lon + 360.0F : lon;
}

} // namespace

tyr::Corner tyr::walk_corner(const DomainRec &domain)
{
    float x = 0.0F;
    float y = 0.0F;
    MAP_center_xy(&x, &y);
    const int left = (domain.nx - 1) / 2;
    const int above = (domain.ny - 1) / 2;
    return {x - static_cast<float>(left) * domain.dx, y + static_cast<float>(above) * domain.dy};
}

bool tyr::run_places(const MathCall &call)
{
    const GridRec *in = call.grids[0];
    if (!is_grid_operand(in))
        return false;
    // all of the operand's record, with values of its own
    float *values = call.out->values;
    if (values != in->values) {
        GRD_copy(call.out, in);
        call.out->values = values;
    }
    GridRec &out = *call.out;
    const GridOp op = call.function->op;
    const PlaceText text = place_text(op);
    out.var = 0;
    STR_copy(out.units, sizeof out.units, text.units);
    STR_copy(out.info, sizeof out.info, text.label);
    const DomainScope scope(out.domain);
    walk_points(out.domain, [&](size_t i, float x, float y) {
        values[i] = is_missing(in->values[i]) ? kMissing : place_value(op, x, y);
    });
    return true;
}
