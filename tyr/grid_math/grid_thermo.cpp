#include <cmath>

#include "tyr/grid_math/pointwise.h"
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

/// Dew point of a humidity operand: itself, or from relative humidity and temperature.
struct DewPoint {
    bool is_given;
    float operator()(float t, float h) const { return is_given ? h : MET_dew_from_rh(t, h); }
};

template <class F> bool with_dew_point(const MathCall &c, F formula)
{
    const DewPoint dew_point{c.is_variable(1, "dewp")};
    return with_pressure(c, [=](float t, float h, float p) {
        const float td = dew_point(t, h);
        return is_missing(td) ? kMissing : formula(t, td, p);
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

/// formula(dew point, pressure): of a dew point, or of a temperature and a relative humidity.
template <class F> bool moisture(const MathCall &c, F formula)
{
    if (c.is_variable(0, "dewp")) {
        tyr::costly_points(*c.out, Operands<2>{c.operand(0), pressure(c, 1)}, formula);
        return true;
    }
    if (c.count < 2)
        return false;
    return with_pressure(c, [=](float t, float rh, float p) {
        const float td = MET_dew_from_rh(t, rh);
        return is_missing(td) ? kMissing : formula(td, p);
    });
}

} // namespace

bool tyr::run_thermo(const MathCall &c)
{
    switch (c.function->op) {
    case GridOp::dew_point:
        return pair(c, MET_dew_from_rh);
    case GridOp::humidity:
        return pair(c, MET_rel_hum);
    case GridOp::wet_bulb:
        return with_dew_point(c, MET_wet_bulb);
    case GridOp::showalter:
        return run_showalter(c);
    case GridOp::chill:
        return run_chill(c, MET_wind_chill);
    case GridOp::chill2:
        return run_chill(c, MET_wind_chill2);
    case GridOp::heat:
        return with_dew_point(c, [](float t, float td, float) { return MET_heat_index(t, td); });
    case GridOp::theta:
        costly_points(*c.out, Operands<2>{c.operand(0), pressure(c, 1)}, MET_theta);
        return true;
    case GridOp::theta_e:
        return with_dew_point(c, MET_theta_e);
    case GridOp::virtual_temperature:
        return with_dew_point(c, MET_virtual_temp);
    case GridOp::virtual_theta:
        return with_dew_point(c, MET_virtual_theta);
    case GridOp::vapor:
        return moisture(c, [](float td, float) { return MET_sat_vapor(td); });
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
