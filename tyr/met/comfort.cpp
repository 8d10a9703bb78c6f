#include "tyr/met/comfort.h"

#include <algorithm>
#include <cmath>

#include "tyr/base/missing.h"
#include "tyr/met/thermo.h"

namespace {

constexpr double kSkin = 306.15;  // temperature of the skin, K
constexpr double kLowWind = 2.0;  // m/s, below it the wind takes no heat
constexpr double kTopWind = 26.0; // m/s, beyond it takes no more

double fahrenheit(double kelvin)
{
    return (kelvin - kZeroCelsius) * 1.8 + 32.0;
}

double kelvin(double degrees_f)
{
    return (degrees_f - 32.0) * 5.0 / 9.0 + kZeroCelsius;
}

float to_float(double x)
{
    return static_cast<float>(x);
}

// The sixteen-term fit; F in degrees Fahrenheit, H in percent.
double heat_fit(double F, double H)
{
    const double F2 = F * F;
    const double F3 = F2 * F;
    const double H2 = H * H;
    const double H3 = H2 * H;
    return 16.0 + 0.185212 * F + 5.37941 * H - 0.100254 * F * H + 0.00941695 * F2 +
           0.00728898 * H2 + 0.000345372 * F2 * H - 0.000814971 * F * H2 + 1.02102e-5 * F2 * H2 -
           3.8646e-5 * F3 + 2.91583e-5 * H3 + 1.42721e-6 * F3 * H + 1.97483e-7 * F * H3 -
           2.18429e-8 * F3 * H2 + 8.43296e-10 * F2 * H3 - 4.81975e-11 * F3 * H3;
}

} // namespace

float MET_wind_chill(float t, float v)
{
    if (t < 0.0F || v < 0.0F) {
        return kMissing;
    }
    if (v < kLowWind || t > kSkin) {
        return t;
    }
    const double wind = std::min(double{v}, kTopWind);
    return to_float(kSkin -
                    (kSkin - t) * (0.453843 * std::sqrt(wind) + 0.474266 - 0.0453843 * wind));
}

float MET_wind_chill2(float t, float v)
{
    if (t < 0.0F || v < 0.0F) {
        return kMissing;
    }
    const double chill = std::pow(double{v}, 0.16) * (0.4863 * t - 146.774) + 0.6215 * t + 116.514;
    return std::min(to_float(chill), t);
}

float MET_heat_loss(float t, float v)
{
    if (t < 0.0F || v < 0.0F) {
        return kMissing;
    }
    if (v < kLowWind || t > kSkin) {
        return t;
    }
    const double wind = std::min(double{v}, kTopWind);
    return to_float((kSkin - t) * 1.1627 * (10.0 * std::sqrt(wind) + 10.45 - wind));
}

float MET_heat_index(float t, float td)
{
    constexpr double kSimpleLimit = 77.0; // degrees Fahrenheit
    if (t < 0.0F || td < 0.0F || td > t) {
        return kMissing;
    }
    const double saturated = MET_sat_vapor(t);
    if (saturated <= 0.0) {
        return kMissing;
    }
    const double F = fahrenheit(t);
    const double H = 100.0 * MET_sat_vapor(td) / saturated;
    const double simple = 60.8 + 1.2 * (F - 68.0) + 0.0936 * H;
    return to_float(kelvin(simple < kSimpleLimit ? simple : heat_fit(F, H)));
}

float MET_humiture(float t, float td)
{
    constexpr double kComfortable = 21.0; // hPa
    if (t < 0.0F || td < 0.0F) {
        return kMissing;
    }
    const double e = MET_sat_vapor(td);
    return e < kComfortable ? t : to_float(fahrenheit(t) + e - kComfortable);
}

float MET_discomfort(float a, float b)
{
    if (a < 0.0F || b < 0.0F) {
        return kMissing;
    }
    return to_float(0.55 * a + 0.2 * b + 17.5);
}
