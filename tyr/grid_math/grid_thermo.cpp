#include <array>
#include <cmath>

#include "tyr/grid_math/pointwise.h"
#include "tyr/grid_math/thermo_rows_private.h"
#include "tyr/met/comfort.h"
#include "tyr/met/thermo.h"
#include "tyr/var/level.h"

using namespace tyr;

namespace {

using tyr::GridOp;
using tyr::MathCall;
using tyr::Operand;
using tyr::Operands;

constexpr float kStandardPressure = 1000.0F; // hPa, where nothing tells the pressure
constexpr float kLowLevel = 850.0F;          // hPa, of the Showalter index
constexpr float kHighLevel = 500.0F;

/// The pressure of an operation: that of the result's level; else operand i, where there is one.
Operand pressure(const MathCall &c, int i)
{
    if (c.out->ltype == kLevelPressure)
        return {nullptr, static_cast<float>(c.out->level)};
    return i < c.count ? c.operand(i) : Operand{nullptr, kStandardPressure};
}

/// f(a, b, p) with the pressure as third operand.
template <class F> bool with_pressure(const MathCall &c, F f)
{
    tyr::costly_points(*c.out, Operands<3>{c.operand(0), c.operand(1), pressure(c, 2)}, f);
    return true;
}

template <class F> bool pair(const MathCall &c, F f)
{
    tyr::costly_points(*c.out, Operands<2>{c.operand(0), c.operand(1)}, f);
    return true;
}

template <class RowWork> bool row_pair(const MathCall &c, const Operand &second, RowWork row)
{
    tyr::row_points(*c.out, Operands<2>{c.operand(0), second}, row);
    return true;
}

/// Dew point of a humidity operand: itself, or from relative humidity and temperature.
struct DewPoint {
    bool is_given;
    float operator()(float t, float h) const { return is_given ? h : MET_dew_from_rh(t, h); }
};

/// row(t, dew point, p, out, count) on slices of the grid.
template <class RowWork> bool with_dew_point_rows(const MathCall &c, RowWork row)
{
    const bool is_given = c.is_variable(1, "dewp");
    const Operands<3> operands{c.operand(0), c.operand(1), pressure(c, 2)};
    tyr::over_points(*c.out, operands, tyr::kCostlyPoints,
                     [&](const tyr::Lanes<3> &lanes, size_t at, size_t count) {
                         std::array<float, tyr::kPointSlice> dew;
                         if (!is_given)
                             tyr::dew_from_rh_row(lanes[0], lanes[1], dew.data(), count);
                         row(lanes[0], is_given ? lanes[1] : dew.data(), lanes[2],
                             c.out->values + at, count);
                     });
    return true;
}

template <class F> bool with_dew_point(const MathCall &c, F formula)
{
    return with_dew_point_rows(
        c, [=](const float *t, const float *td, const float *p, float *out, size_t count) {
            const tyr::Lanes<3> lanes{t, td, p};
            tyr::costly_slice(std::make_index_sequence<3>(), lanes, out, count, formula);
        });
}

float showalter(float t, float td, float t500)
{
    const float pl = MET_lcl_pressure(t, td, kLowLevel);
    if (is_missing(pl))
        return kMissing;
    const float tl = MET_dry_adiabat(t, kLowLevel, pl);
    const float parcel = pl >= kHighLevel
                             ? MET_moist_temp(MET_theta_e_sat(tl, pl), kHighLevel)
                             : MET_temp_from_theta(MET_theta(t, kLowLevel), kHighLevel);
    return is_missing(parcel) ? kMissing : t500 - parcel;
}

bool run_showalter(const MathCall &c)
{
    const DewPoint dew_point{c.is_variable(1, "dewp")};
    tyr::costly_points(*c.out, Operands<3>{c.operand(0), c.operand(1), c.operand(2)},
                       [=](float t, float h, float t500) {
                           const float td = dew_point(t, h);
                           return is_missing(td) ? kMissing : showalter(t, td, t500);
                       });
    return true;
}

bool run_chill(const MathCall &c, float formula(float, float))
{
    if (c.is_variable(1, "wspd") || c.is_variable(1, "spd"))
        return pair(c, formula);
    if (c.count < 3)
        return false;
    tyr::costly_points(
        *c.out, Operands<3>{c.operand(0), c.operand(1), c.operand(2)},
        [=](float t, float u, float v) { return formula(t, std::sqrt(u * u + v * v)); });
    return true;
}

/// row(dew point, pressure, out, count) of a dew point, or of a temperature and a relative
/// humidity, on slices of the grid.
template <class RowWork> bool moisture_rows(const MathCall &c, RowWork row)
{
    const bool is_given = c.is_variable(0, "dewp");
    if (!is_given && c.count < 2)
        return false;
    const Operand humidity = is_given ? c.operand(0) : c.operand(1);
    tyr::over_points(*c.out, Operands<3>{c.operand(0), humidity, pressure(c, is_given ? 1 : 2)},
                     tyr::kCostlyPoints, [&](const tyr::Lanes<3> &lanes, size_t at, size_t count) {
                         std::array<float, tyr::kPointSlice> dew;
                         if (!is_given)
                             tyr::dew_from_rh_row(lanes[0], lanes[1], dew.data(), count);
                         row(is_given ? lanes[0] : dew.data(), lanes[2], c.out->values + at, count);
                     });
    return true;
}

template <class F> bool moisture(const MathCall &c, F formula)
{
    return moisture_rows(c, [=](const float *td, const float *p, float *out, size_t count) {
        tyr::costly_slice(std::make_index_sequence<2>(), tyr::Lanes<2>{td, p}, out, count, formula);
    });
}

} // namespace

bool tyr::run_thermo(const MathCall &c)
{
    switch (c.function->op) {
    case GridOp::dew_point:
        return row_pair(c, c.operand(1), dew_from_rh_row);
    case GridOp::humidity:
        return pair(c, MET_rel_hum);
    case GridOp::wet_bulb:
        return with_dew_point_rows(c, wet_bulb_row);
    case GridOp::showalter:
        return run_showalter(c);
    case GridOp::chill:
        return run_chill(c, MET_wind_chill);
    case GridOp::chill2:
        return run_chill(c, MET_wind_chill2);
    case GridOp::heat:
        return with_dew_point(c, [](float t, float td, float) { return MET_heat_index(t, td); });
    case GridOp::theta:
        return row_pair(c, pressure(c, 1), theta_row);
    case GridOp::theta_e:
        return with_dew_point_rows(c, theta_e_row);
    case GridOp::virtual_temperature:
        return with_dew_point(c, MET_virtual_temp);
    case GridOp::virtual_theta:
        return with_dew_point(c, MET_virtual_theta);
    case GridOp::vapor:
        return moisture_rows(c, [](const float *td, const float *, float *out, size_t count) {
            sat_vapor_row(td, out, count);
        });
    case GridOp::standard_height:
        costly_points(*c.out, Operands<1>{c.operand(0)}, MET_std_height);
        return true;
    case GridOp::specific_humidity:
        return moisture(c, MET_spec_hum);
    case GridOp::mixing_ratio:
        return moisture(c, MET_mix_ratio);
    default:
        return false;
    }
}
