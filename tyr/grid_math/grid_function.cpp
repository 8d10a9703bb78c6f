#include "tyr/grid_math/grid_function.h"

namespace {

using tyr::GridFunction;
using tyr::GridOp;
using tyr::kIfDewPoint;
using tyr::kMaxOperands;
using tyr::ResultUnit;

constexpr ResultUnit kOfFirst{"", 0, "", 0.0F};
constexpr ResultUnit kPerMetre{"", 0, "/m", 1e-5F};
constexpr ResultUnit kPerSquare{"", 0, "/m^2", 1e-10F};
constexpr ResultUnit kThirdPerSecond{"", 2, "/s", 1e-5F};
constexpr ResultUnit kNoUnit{};
constexpr ResultUnit kKelvin{"K"};
constexpr ResultUnit kSpeed{"m/s"};
constexpr ResultUnit kDegrees{"deg"};
constexpr ResultUnit kGrams{"gm/kg"};

constexpr int kAny = kMaxOperands;

// clang-format off
constexpr GridFunction kFunctions[] = {
    // name, operation, operands at least and at most, unit, converted first, label, variable
    {"copy",    GridOp::copy,                1, 1,    kNoUnit,  {}, "", ""},
    {"smooth",  GridOp::smooth,              2, 2,    kNoUnit,  {}, "", ""},
    {"lat",     GridOp::latitude,            1, 1,    kNoUnit,  {}, "", ""},
    {"lon",     GridOp::longitude,           1, 1,    kNoUnit,  {}, "", ""},
    {"projx",   GridOp::plot_x,              1, 1,    kNoUnit,  {}, "", ""},
    {"projy",   GridOp::plot_y,              1, 1,    kNoUnit,  {}, "", ""},
    {"max",     GridOp::largest,             1, kAny, kNoUnit,  {}, "", ""},
    {"min",     GridOp::smallest,            1, kAny, kNoUnit,  {}, "", ""},
    {"add",     GridOp::add,                 2, 2,    kNoUnit,  {}, "", ""},
    {"sum",     GridOp::sum,                 1, kAny, kOfFirst, {}, "", ""},
    {"avg",     GridOp::average,             1, kAny, kOfFirst, {}, "", ""},
    {"interp",  GridOp::interpolate,         3, 3,    kOfFirst, {}, "", ""},
    {"sub",     GridOp::subtract,            2, 2,    kOfFirst, {}, "", ""},
    {"thick",   GridOp::subtract,            2, 2,    kOfFirst, {}, "", ""},
    {"mul",     GridOp::multiply,            2, 2,    kNoUnit,  {}, "", ""},
    {"div",     GridOp::divide,              2, 2,    kNoUnit,  {}, "", ""},
    {"mod",     GridOp::modulo,              2, 2,    kNoUnit,  {}, "", ""},
    {"pow",     GridOp::power,               2, 2,    kNoUnit,  {}, "", ""},
    {"sqrt",    GridOp::square_root,         1, 1,    kNoUnit,  {}, "", ""},
    {"exp",     GridOp::exponential,         1, 1,    kNoUnit,  {}, "", ""},
    {"abs",     GridOp::absolute,            1, 1,    kNoUnit,  {}, "", ""},
    {"log",     GridOp::logarithm,           1, 1,    kNoUnit,  {}, "", ""},
    {"log10",   GridOp::logarithm10,         1, 1,    kNoUnit,  {}, "", ""},
    {"sin",     GridOp::sine,                1, 1,    kNoUnit,  {}, "", ""},
    {"cos",     GridOp::cosine,              1, 1,    kNoUnit,  {}, "", ""},
    {"tan",     GridOp::tangent,             1, 1,    kNoUnit,  {}, "", ""},
    {"asin",    GridOp::arc_sine,            1, 1,    kNoUnit,  {}, "", ""},
    {"acos",    GridOp::arc_cosine,          1, 1,    kNoUnit,  {}, "", ""},
    {"atan",    GridOp::arc_tangent,         1, 1,    kNoUnit,  {}, "", ""},
    {"atan2",   GridOp::arc_tangent2,        2, 2,    kNoUnit,  {}, "", ""},

    {"dx",      GridOp::dx,                  1, 1,    kPerMetre, {}, "", ""},
    {"dy",      GridOp::dy,                  1, 1,    kPerMetre, {}, "", ""},
    {"grad",    GridOp::gradient,            1, 1,    kPerMetre, {}, "Gradient", ""},
    {"vdiff",   GridOp::vector_difference,   4, 4,    kNoUnit,   {}, "Vector Diff", ""},
    {"lapl",    GridOp::laplacian,           1, 1,    kPerSquare, {}, "Laplacian", ""},
    {"conv",    GridOp::convergence,         2, 3,    kPerMetre, {}, "Convergence", ""},
    {"diverg",  GridOp::divergence,          2, 3,    kPerMetre, {}, "Divergence", ""},
    {"vconv",   GridOp::convergence,         3, 3,    kPerMetre, {}, "", ""},
    {"def1",    GridOp::deformation1,        2, 2,    kPerMetre, {}, "", ""},
    {"def2",    GridOp::deformation2,        2, 2,    kPerMetre, {}, "", ""},
    {"rvort",   GridOp::relative_vorticity,  2, 2,    kPerMetre, {}, "", ""},
    {"avort",   GridOp::absolute_vorticity,  2, 2,    kPerMetre, {}, "", ""},
    {"adv",     GridOp::advection,           3, 3,    kThirdPerSecond, {}, "Advection", ""},

    {"dewp",    GridOp::dew_point,           2, 2,    kKelvin,  {"K"}, "", ""},
    {"rhum",    GridOp::humidity,            2, 2,    {"%"},    {"K", "K"}, "", ""},
    {"wetblb",  GridOp::wet_bulb,            2, 3,    kKelvin,  {"K", kIfDewPoint, "mb"}, "", ""},
    {"show",    GridOp::showalter,           3, 3,    {"dC"},   {"K", kIfDewPoint, "K"}, "", ""},
    {"wchill",  GridOp::chill,               2, 3,    kKelvin,  {"K", "m/s", "m/s"}, "", ""},
    {"wchill2", GridOp::chill2,              2, 3,    kKelvin,  {"K", "m/s", "m/s"}, "", ""},
    {"heat",    GridOp::heat,                2, 2,    kKelvin,  {"K", kIfDewPoint}, "", ""},
    {"theta",   GridOp::theta,               1, 2,    kKelvin,  {"K", "mb"}, "", ""},
    {"thetae",  GridOp::theta_e,             2, 3,    kKelvin,  {"K", kIfDewPoint, "mb"}, "", ""},
    {"vtemp",   GridOp::virtual_temperature, 2, 3,    kKelvin,  {"K", kIfDewPoint, "mb"}, "", ""},
    {"thetav",  GridOp::virtual_theta,       2, 3,    kKelvin,  {"K", kIfDewPoint, "mb"}, "", ""},
    {"vapor",   GridOp::vapor,               1, 2,    {"mb"},   {"K"}, "", ""},
    {"pr_alt",  GridOp::standard_height,     1, 1,    {"m"},    {"mb"}, "", ""},
    {"shum",    GridOp::specific_humidity,   1, 3,    kGrams,   {"K"}, "", ""},
    {"mixrat",  GridOp::mixing_ratio,        1, 3,    kGrams,   {"K"}, "", ""},

    {"wspd",    GridOp::speed,               2, 2,    kSpeed,   {"m/s", "m/s"}, "", ""},
    {"spd",     GridOp::speed,               2, 2,    kSpeed,   {"m/s", "m/s"}, "Speed", ""},
    {"mag",     GridOp::speed,               2, 2,    kSpeed,   {"m/s", "m/s"}, "", ""},
    {"wdir",    GridOp::direction,           2, 2,    kDegrees, {}, "", "wdir"},
    {"dir",     GridOp::direction,           2, 2,    kDegrees, {}, "", "wdir"},
    {"ewdir",   GridOp::true_direction,      2, 2,    kDegrees, {}, "", "wdir"},
    {"uwnd",    GridOp::east_wind,           2, 2,    kSpeed,   {nullptr, "m/s"}, "", ""},
    {"vwnd",    GridOp::north_wind,          2, 2,    kSpeed,   {nullptr, "m/s"}, "", ""},
    {"uwndg",   GridOp::grid_east_wind,      2, 2,    kSpeed,   {nullptr, "m/s"}, "", ""},
    {"vwndg",   GridOp::grid_north_wind,     2, 2,    kSpeed,   {nullptr, "m/s"}, "", ""},
    {"dot",     GridOp::dot,                 4, 4,    kSpeed,   {}, "", ""},
    {"cross",   GridOp::cross,               4, 4,    kSpeed,   {}, "", ""},
    {"ugeos",   GridOp::geostrophic_u,       1, 1,    kSpeed,   {"m"}, "", ""},
    {"vgeos",   GridOp::geostrophic_v,       1, 1,    kSpeed,   {"m"}, "", ""},
    {"uq",      GridOp::q_vector_u,          2, 2,    kNoUnit,  {"m", "K"}, "", ""},
    {"vq",      GridOp::q_vector_v,          2, 2,    kNoUnit,  {"m", "K"}, "", ""},
};
// clang-format on

} // namespace

const GridFunction *tyr::find_grid_function(std::string_view name)
{
    for (const GridFunction &function : kFunctions)
        if (name == function.name)
            return &function;
    return nullptr;
}
