#include "tyr/met/thermo.h"

#include <algorithm>
#include <cmath>

#include "tyr/base/angle.h"
#include "tyr/base/missing.h"

namespace {

constexpr double kKappa = 0.286;                // exponent of the dry adiabat
constexpr double kEpsilon = 622.0;              // ratio of the gas constants, g/kg
constexpr double kMoist = -2.6518986;           // exponent of the moist adiabat, K kg/g
constexpr float kVaporLimit = 100.0F;           // arguments above are dew points
constexpr double kLapse = 0.0065;               // of the standard atmosphere, K/m
constexpr double kStandardTemperature = 288.15; // K, at sea level
constexpr double kPlotEarthRadius = 63.713;     // units of 100 km

float to_float(double x)
{
    return static_cast<float>(x);
}

float vapor_of(float td_or_e)
{
    return td_or_e > kVaporLimit ? MET_sat_vapor(td_or_e) : td_or_e;
}

// Arguments of the formulas that take temperature, dew point and pressure.
bool is_air(float t, float td, float p)
{
    return t > 0.0F && td >= 0.0F && p >= 0.0F;
}

// theta_e at the condensation level of a parcel, Missing without one.
float theta_e_at_lcl(float t, float td, float p)
{
    const float pl = MET_lcl_pressure(t, td, p);
    if (is_missing(pl)) {
        return kMissing;
    }
    return MET_theta_e_sat(MET_dry_adiabat(t, p, pl), pl);
}

float wet_bulb_at(float t, float td, float p, float level)
{
    if (!is_air(t, td, p)) {
        return kMissing;
    }
    if (td == 0.0F) {
        return 0.0F;
    }
    return MET_moist_temp(theta_e_at_lcl(t, td, p), level);
}

} // namespace

float MET_sat_vapor(float t)
{
    if (t < 0.0F) {
        return kMissing;
    }
    if (t < 100.0F) {
        return 0.0F;
    }
    const double T = t;
    return to_float(std::pow(10.0, 23.832241 - 5.02808 * std::log10(T) -
                                       1.3816e-7 * std::pow(10.0, 11.344 - 0.0303998 * T) +
                                       0.008132801 * std::pow(10.0, 3.49149 - 1302.8844 / T) -
                                       2949.076 / T));
}

float MET_dew_from_vapor(float e)
{
    if (e <= 0.0F) {
        return 0.0F;
    }
    const double x = e;
    return to_float(std::pow(10.0, 0.0498646455 * std::log10(x) + 2.4082965) - 7.08475 +
                    38.9114 * std::pow(std::pow(x, 0.0915) - 1.2035, 2.0));
}

float MET_mix_ratio(float td_or_e, float p)
{
    if (is_missing(td_or_e) || is_missing(p)) {
        return kMissing;
    }
    if (td_or_e <= 0.0F || p <= 0.0F) {
        return 0.0F;
    }
    const double e = vapor_of(td_or_e);
    if (e >= p) { // boiling: no air is left
        return kMissing;
    }
    return to_float(kEpsilon * e / (p - e));
}

float MET_spec_hum(float td_or_e, float p)
{
    if (is_missing(td_or_e) || is_missing(p)) {
        return kMissing;
    }
    if (td_or_e <= 0.0F || p <= 0.0F) {
        return 0.0F;
    }
    return to_float(kEpsilon * vapor_of(td_or_e) / p);
}

float MET_dew_from_rh(float t, float rh)
{
    if (is_missing(rh) || t <= 0.0F) {
        return kMissing;
    }
    const double humidity = std::clamp(rh, 2.0F, 100.0F);
    return MET_dew_from_vapor(to_float(MET_sat_vapor(t) * humidity / 100.0));
}

float MET_dew_from_mix(float w, float p)
{
    if (w <= 0.0F || p <= 0.0F) {
        return 0.0F;
    }
    return MET_dew_from_vapor(to_float(double{w} * p / (w + kEpsilon)));
}

float MET_rel_hum(float t, float td)
{
    if (t <= 0.0F || td <= 0.0F) {
        return kMissing;
    }
    if (t <= kVaporLimit && td <= kVaporLimit) {
        return to_float(100.0 * td / t);
    }
    const double saturated = MET_sat_vapor(t);
    return saturated > 0.0 ? to_float(100.0 * MET_sat_vapor(td) / saturated) : kMissing;
}

float MET_theta(float t, float p)
{
    if (t <= 0.0F || p <= 0.0F) {
        return kMissing;
    }
    return to_float(t * std::pow(1000.0 / p, kKappa));
}

float MET_temp_from_theta(float theta, float p)
{
    if (theta <= 0.0F || p <= 0.0F) {
        return 0.0F;
    }
    return to_float(theta * std::pow(p / 1000.0, kKappa));
}

float MET_dry_adiabat(float t, float p1, float p2)
{
    return MET_temp_from_theta(MET_theta(t, p1), p2);
}

float MET_virtual_temp(float t, float td_or_w, float p)
{
    if (!is_air(t, td_or_w, p)) {
        return kMissing;
    }
    const float w = td_or_w > kVaporLimit ? MET_mix_ratio(td_or_w, p) : td_or_w;
    return is_missing(w) ? kMissing : to_float(t * (1.0 + 0.609 * w / 1000.0));
}

float MET_virtual_theta(float t, float td, float p)
{
    if (!is_air(t, td, p)) {
        return kMissing;
    }
    return td == 0.0F ? MET_theta(t, p) : MET_theta(MET_virtual_temp(t, td, p), p);
}

float MET_theta_e_sat(float t, float p)
{
    if (t <= 0.0F || p <= 0.0F) {
        return 0.0F;
    }
    const float w = MET_mix_ratio(t, p);
    if (is_missing(w)) {
        return kMissing;
    }
    return to_float(t * std::pow(1000.0 / p, kKappa) / std::exp(kMoist * w / t));
}

float MET_theta_e(float t, float td, float p)
{
    if (!is_air(t, td, p)) {
        return kMissing;
    }
    return td == 0.0F ? MET_theta(t, p) : theta_e_at_lcl(t, td, p);
}

float MET_wet_bulb(float t, float td, float p)
{
    return wet_bulb_at(t, td, p, p);
}

float MET_wet_bulb_theta(float t, float td, float p)
{
    return wet_bulb_at(t, td, p, 1000.0F);
}

float MET_moist_temp(float theta_e, float p)
{
    constexpr double kStart = 253.16;
    constexpr double kFirstStep = 120.0;
    constexpr int kSteps = 12;
    constexpr double kClose = 2e-5; // square of the difference, K^2
    if (theta_e <= 0.0F || p <= 0.0F || p > 2000.0F) {
        return kMissing;
    }
    double t = kStart;
    double step = kFirstStep;
    for (int i = 0; i < kSteps; ++i) {
        const float w = MET_mix_ratio(to_float(t), p);
        // where the vapour alone would reach the pressure it is too warm
        double difference = -1.0;
        if (!is_missing(w)) {
            difference = theta_e * std::exp(kMoist * w / t) - MET_theta(to_float(t), p);
        }
        if (difference * difference < kClose) {
            break;
        }
        step /= 2.0;
        t += difference > 0.0 ? step : -step;
    }
    return to_float(t);
}

float MET_lcl_pressure(float t, float td, float p)
{
    constexpr int kSteps = 8;
    constexpr double kClose = 0.0001; // square of the difference, K^2
    if (t <= 100.0F || td <= 100.0F || p <= 0.0F || p > 1100.0F) {
        return kMissing;
    }
    const float w = MET_mix_ratio(td, p);
    const float theta = MET_theta(t, p);
    if (is_missing(w)) {
        return kMissing;
    }
    double pl = p;
    for (int i = 0; i <= kSteps; ++i) {
        const float level = to_float(pl);
        const double difference =
            double{MET_dew_from_mix(w, level)} - MET_temp_from_theta(theta, level);
        if (i == kSteps || difference * difference <= kClose) {
            break;
        }
        pl *= std::pow(2.0, 0.02 * difference);
    }
    return to_float(pl);
}

float MET_std_height(float p)
{
    constexpr float kTropopause = 226.32F; // hPa, at 11 km
    if (p <= 0.0F) {
        return kMissing;
    }
    if (p < kTropopause) {
        return to_float(std::log(226.32 / p) * 6341.62 + 11000.0);
    }
    const float t = to_float(kStandardTemperature * std::pow(p / 1013.25, 0.190263));
    return to_float((kStandardTemperature - t) / kLapse);
}

float MET_press_at_height(float p, float z)
{
    const double t = kStandardTemperature - kLapse * z;
    if (p <= 0.0F || is_missing(z) || t <= 0.0) {
        return kMissing;
    }
    return to_float(p * std::pow(t / kStandardTemperature, 5.2558));
}

float MET_log_interp(float x1, float x2, float p1, float p2, float p)
{
    if (is_missing(x1)) {
        return x2;
    }
    if (is_missing(x2)) {
        return x1;
    }
    if (p1 <= 0.0F || p2 <= 0.0F || p <= 0.0F) {
        return kMissing;
    }
    if (p1 == p2) {
        return x1;
    }
    return to_float(x1 - (double{x2} - x1) * std::log(double{p} / p1) / std::log(double{p1} / p2));
}

float MET_lin_interp(float x, float x1, float x2, float y1, float y2)
{
    if (x1 == x2) {
        return y1;
    }
    return to_float((double{x} - x1) * (double{y2} - y1) / (double{x2} - x1) + y1);
}

float MET_great_circle(float lat1, float lon1, float lat2, float lon2)
{
    const double phi1 = lat1 * kRadiansPerDegree;
    const double phi2 = lat2 * kRadiansPerDegree;
    const double lambda = (double{lon2} - lon1) * kRadiansPerDegree;
    const double product =
        std::sin(phi1) * std::sin(phi2) + std::cos(phi1) * std::cos(phi2) * std::cos(lambda);
    return to_float(std::acos(std::clamp(product, -1.0, 1.0)) * 100.0 * kPlotEarthRadius);
}
