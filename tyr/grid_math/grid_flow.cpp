#include <array>

#include "tyr/base/str.h"
#include "tyr/grid_math/coriolis.h"
#include "tyr/grid_math/derivative.h"
#include "tyr/grid_math/grid_units.h"
#include "tyr/grid_math/pointwise.h"

using namespace tyr;

namespace {

using tyr::GridOp;
using tyr::MathCall;
using tyr::Operand;
using tyr::OwnGrid;

constexpr float kGravity = 9.8F;        // m/s^2
constexpr double kGasConstant = 287.05; // of dry air, J/(kg K)

/// The operands as grids: a constant becomes a grid of the result's layout.
class Fields {
  public:
    explicit Fields(const MathCall &call) : call_(call) {}

    /// Null where there is no memory.
    const GridRec *field(int i)
    {
        if (tyr::is_grid_operand(call_.grids[i]))
            return call_.grids[i];
        GridRec &grid = own_[static_cast<size_t>(i)].rec;
        GRD_copy_layout(&grid, call_.out);
        if (GRD_alloc(&grid) == 0)
            return nullptr;
        std::fill_n(grid.values, tyr::point_count(grid.domain), call_.constants[i]);
        return &grid;
    }

  private:
    const MathCall &call_;
    std::array<OwnGrid, tyr::kMaxConverted> own_;
};

bool vector_difference(const MathCall &c)
{
    const auto difference = [](float a, float, float b, float) { return a - b; };
    using Four = tyr::Operands<4>;
    const Four first{c.operand(0), c.operand(1), c.operand(2), c.operand(3)};
    const Four second{c.operand(1), c.operand(0), c.operand(3), c.operand(2)};
    tyr::quick_points(*c.out, first, difference);
    tyr::quick_points(*c.second, second, difference);
    return true;
}

/// A component of the geostrophic wind: factor / f times a derivative of the height.
bool geostrophic(int derive(const GridRec *, GridRec *), float factor, const GridRec *z,
                 GridRec *out)
{
    if (derive(z, out) != 0)
        return false;
    GRD_coriolis(out, "div");
    GRD_scale(out, factor);
    return true;
}

bool q_vector(const MathCall &c, const GridRec *z, const GridRec *t,
              int derive(const GridRec *, GridRec *))
{
    OwnGrid ug;
    OwnGrid vg;
    std::array<OwnGrid, 4> parts;
    GRD_copy_layout(&ug.rec, z);
    GRD_copy_layout(&vg.rec, z);
    for (OwnGrid &part : parts)
        GRD_copy_layout(&part.rec, z);
    if (!geostrophic(GRD_dy, -kGravity, z, &ug.rec) || !geostrophic(GRD_dx, kGravity, z, &vg.rec))
        return false;
    if (derive(&ug.rec, &parts[0].rec) != 0 || derive(&vg.rec, &parts[1].rec) != 0 ||
        GRD_dx(t, &parts[2].rec) != 0 || GRD_dy(t, &parts[3].rec) != 0)
        return false;
    const auto factor = static_cast<float>(-kGasConstant / (c.out->level * 100.0));
    tyr::Operands<4> operands;
    for (size_t k = 0; k < operands.size(); ++k)
        operands[k].values = parts[k].rec.values;
    tyr::quick_points(*c.out, operands, [factor](float ax, float bx, float tx, float ty) {
        return (ax * tx + bx * ty) * factor;
    });
    return true;
}

bool run_wind_flow(const MathCall &c, const GridRec *u, const GridRec *v, const GridRec *s)
{
    GridRec *out = c.out;
    switch (c.function->op) {
    case GridOp::convergence:
        return GRD_converge(u, v, s, out) == 0;
    case GridOp::divergence:
        if (GRD_converge(u, v, s, out) != 0)
            return false;
        GRD_scale(out, -1.0F);
        return true;
    case GridOp::deformation1:
        return GRD_deformation1(u, v, out) == 0;
    case GridOp::deformation2:
        return GRD_deformation2(u, v, out) == 0;
    case GridOp::relative_vorticity:
        return GRD_vorticity(u, v, out) == 0;
    case GridOp::absolute_vorticity:
        return GRD_vorticity(u, v, out) == 0 && GRD_coriolis(out, "add") == 0;
    case GridOp::advection:
        return GRD_advection(u, v, s, out) == 0;
    case GridOp::q_vector_u:
        return q_vector(c, u, v, GRD_dx);
    case GridOp::q_vector_v:
        return q_vector(c, u, v, GRD_dy);
    default:
        return false;
    }
}

} // namespace

bool tyr::run_flow(const MathCall &c)
{
    if (c.function->op == GridOp::vector_difference)
        return vector_difference(c);
    Fields fields(c);
    const GridRec *first = fields.field(0);
    if (first == nullptr)
        return false;
    switch (c.function->op) {
    case GridOp::dx:
        return GRD_dx(first, c.out) == 0;
    case GridOp::dy:
        return GRD_dy(first, c.out) == 0;
    case GridOp::gradient:
        return GRD_dx(first, c.out) == 0 && GRD_dy(first, c.second) == 0;
    case GridOp::laplacian:
        return GRD_laplacian(first, c.out) == 0;
    case GridOp::geostrophic_u:
        return geostrophic(GRD_dy, -kGravity, first, c.out);
    case GridOp::geostrophic_v:
        return geostrophic(GRD_dx, kGravity, first, c.out);
    default:
        break;
    }
    const GridRec *second = fields.field(1);
    const GridRec *third = c.count > 2 ? fields.field(2) : nullptr;
    if (second == nullptr || (c.count > 2 && third == nullptr))
        return false;
    return run_wind_flow(c, first, second, third);
}
