#include <cmath>

#include "tyr/base/missing.h"
#include "tyr/met/comfort.h"
#include "tyr/met/thermo.h"

namespace {

constexpr float kC0 = 273.15F;

float celsius(double t)
{
    return static_cast<float>(t + 273.15);
}

float fahrenheit(double f)
{
    return celsius((f - 32.0) / 1.8);
}

double to_fahrenheit(float t)
{
    return (double{t} - 273.15) * 1.8 + 32.0;
}

// Dew point of a temperature (degrees C) and relative humidity, by the Magnus form of Alduchov and
// Eskridge (1996).
float magnus_dew_point(double t, double rh)
{
    const double g = std::log(rh / 100.0) + 17.625 * t / (243.04 + t);
    return celsius(243.04 * g / (17.625 - g));
}

} // namespace

TEST(Thermo, SaturationVapourPressureIsThatOfTheSmithsonianTables)
{
    const struct {
        double t, e;
    } cases[] = {{-20.0, 1.2540}, {-10.0, 2.8627}, {0.0, 6.1078}, {10.0, 12.272},
                 {20.0, 23.373},  {30.0, 42.430},  {40.0, 73.777}};
    for (const auto &c : cases) {
        SCOPED_TRACE(c.t);
        EXPECT_NEAR(MET_sat_vapor(celsius(c.t)), c.e, 0.001 * c.e);
        EXPECT_NEAR(MET_dew_from_vapor(static_cast<float>(c.e)), c.t + 273.15, 0.08);
    }
}

// e(20 C) = 23.373 hPa, e(30 C) = 42.430 hPa
TEST(Thermo, MoistureFormulasGiveTheValuesWorkedByHand)
{
    EXPECT_NEAR(MET_mix_ratio(celsius(20), 1000), 14.886, 0.02); // 622 * 23.373 / 976.627
    EXPECT_NEAR(MET_mix_ratio(23.373F, 1000), 14.886, 0.001);
    EXPECT_NEAR(MET_spec_hum(celsius(20), 1000), 14.538, 0.02); // 0.622 * 23.373
    EXPECT_NEAR(MET_rel_hum(celsius(30), celsius(20)), 55.09, 0.06);
    EXPECT_NEAR(MET_rel_hum(40.0F, 10.0F), 25.0, 1e-4); // two vapour pressures
    EXPECT_NEAR(MET_dew_from_rh(celsius(15), 100), 288.15, 0.05);
    EXPECT_NEAR(MET_dew_from_rh(celsius(15), 120), 288.15, 0.05);
    EXPECT_NEAR(MET_dew_from_rh(celsius(30), 55.09F), 293.15, 0.05);
    EXPECT_EQ(MET_dew_from_rh(celsius(30), 1), MET_dew_from_rh(celsius(30), 2));
    EXPECT_NEAR(MET_dew_from_mix(14.886F, 1000), 293.15, 0.05);
    EXPECT_NEAR(MET_theta(kC0, 500), 333.04, 0.02); // 273.15 * 2 ^ 0.286
    EXPECT_NEAR(MET_temp_from_theta(333.04F, 500), 273.15, 0.02);
    EXPECT_NEAR(MET_dry_adiabat(300, 1000, 500), 246.05, 0.02); // 300 / 2 ^ 0.286
    EXPECT_NEAR(MET_virtual_temp(celsius(30), celsius(20), 1000), 305.898, 0.005);
    EXPECT_NEAR(MET_virtual_temp(300, 10, 1000), 301.827, 1e-3); // a mixing ratio
    EXPECT_NEAR(MET_virtual_theta(kC0, 0, 500), 333.04, 0.02);
}

// Bolton (1980, Mon. Wea. Rev. 108), equations 15 and 43, worked by hand for 30 C, 20 C, 1000 hPa:
// condensation at 290.81 K and 864.7 hPa, theta-e 347.5 K.
TEST(Thermo, LiftedParcelAgreesWithBolton)
{
    EXPECT_NEAR(MET_lcl_pressure(celsius(30), celsius(20), 1000), 864.7, 2.5);
    EXPECT_NEAR(MET_theta_e(celsius(30), celsius(20), 1000), 347.5, 1.0);
    EXPECT_NEAR(MET_lcl_pressure(celsius(20), celsius(20), 950), 950.0, 1.0);
    EXPECT_NEAR(MET_theta_e_sat(celsius(20), 1000), 293.15 * std::exp(2.6518986 * 14.886 / 293.15),
                0.1);
}

// Stull (2011, J. Appl. Meteor. Climatol. 50): 20 C and 50 % at sea level give 13.7 C.
TEST(Thermo, WetBulbAgreesWithPsychrometers)
{
    EXPECT_NEAR(MET_wet_bulb(celsius(20), magnus_dew_point(20, 50), 1013.25F), celsius(13.7), 0.3);
    EXPECT_NEAR(MET_wet_bulb(celsius(15), celsius(15), 900), celsius(15), 0.15);
    EXPECT_NEAR(MET_wet_bulb_theta(celsius(20), celsius(20), 1000), celsius(20), 0.15);
}

// The pseudo-adiabatic lapse integrated in steps of 1 hPa from 20 C at 1000 hPa, with Bolton's
// vapour pressure.
TEST(Thermo, MoistAdiabatFollowsTheIntegratedLapse)
{
    double t = 293.15;
    for (double p = 1000.0; p > 500.0; p -= 1.0) {
        const double e = 6.112 * std::exp(17.67 * (t - 273.15) / (t - 29.65));
        const double r = 0.622 * e / (p - e);
        const double latent = 2.501e6 - 2370.0 * (t - 273.15);
        const double rise = (287.04 * t + latent * r) /
                            (1005.7 + latent * latent * r * 0.622 / (287.04 * t * t)) / p;
        t -= rise;
    }
    EXPECT_NEAR(MET_moist_temp(MET_theta_e_sat(293.15F, 1000), 500), t, 0.8);
}

// ICAO Doc 7488, geopotential heights of pressures and pressures of heights.
TEST(Thermo, StandardAtmosphereIsTheIcaoTable)
{
    const struct {
        float p;
        double z;
    } cases[] = {{1013.25F, 0.0}, {850, 1457.3}, {700, 3012.2},    {500, 5574.4},
                 {300, 9163.9},   {200, 11784},  {226.32F, 11000}, {100, 16179.7}};
    for (const auto &c : cases) {
        SCOPED_TRACE(c.p);
        EXPECT_NEAR(MET_std_height(c.p), c.z, 1.0);
    }
    EXPECT_NEAR(MET_press_at_height(1013.25F, 1000), 898.74, 0.1);
    EXPECT_NEAR(MET_press_at_height(1013.25F, 5000), 540.19, 0.1);
    EXPECT_NEAR(MET_press_at_height(980, 0), 980, 1e-3);
}

TEST(Thermo, InterpolationsAndDistance)
{
    EXPECT_NEAR(MET_log_interp(10, 0, 1000, 500, 707.1068F), 5.0, 1e-4);
    EXPECT_EQ(MET_log_interp(kMissing, 7, 1000, 500, 600), 7.0F);
    EXPECT_EQ(MET_log_interp(3, kMissing, 1000, 500, 600), 3.0F);
    EXPECT_EQ(MET_log_interp(kMissing, kMissing, 1000, 500, 600), kMissing);
    EXPECT_EQ(MET_log_interp(1, 2, 0, 500, 600), kMissing);
    EXPECT_EQ(MET_log_interp(1, 2, 500, 500, 500), 1.0F);
    EXPECT_NEAR(MET_lin_interp(2.5F, 2, 4, 10, 20), 12.5, 1e-5);
    EXPECT_EQ(MET_lin_interp(2, 3, 3, 10, 20), 10.0F);
    // a quarter of 2 pi 6371.3 km; Nashville to Los Angeles is 2887.26 km on 6372.8 km
    EXPECT_NEAR(MET_great_circle(0, 0, 0, 90), 10008.02, 0.1);
    EXPECT_NEAR(MET_great_circle(36.12F, -86.67F, 33.94F, -118.40F), 2886.58, 0.5);
    EXPECT_EQ(MET_great_circle(52, 13, 52, 13), 0.0F);
    EXPECT_NEAR(MET_great_circle(90, 0, -90, 77), 20016.03, 0.1);
}

TEST(Thermo, OutsideTheirDomainsFormulasAnswerMissingOrZero)
{
    // clang-format off
    const struct {
        const char *name;
        float got, want;
    } cases[] = {
        {"vapour below 0 K",             MET_sat_vapor(-1),                   kMissing},
        {"vapour below 100 K",           MET_sat_vapor(99),                   0},
        {"dew point of no vapour",       MET_dew_from_vapor(0),               0},
        {"mixing ratio of Missing",      MET_mix_ratio(kMissing, 900),        kMissing},
        {"mixing ratio at Missing",      MET_mix_ratio(280, kMissing),        kMissing},
        {"mixing ratio of 0",            MET_mix_ratio(0, 900),               0},
        {"mixing ratio at 0 hPa",        MET_mix_ratio(280, 0),               0},
        {"mixing ratio while boiling",   MET_mix_ratio(50, 50),               kMissing},
        {"specific humidity of Missing", MET_spec_hum(kMissing, 900),         kMissing},
        {"specific humidity of 0",       MET_spec_hum(0, 900),                0},
        {"dew point of rh Missing",      MET_dew_from_rh(280, kMissing),      kMissing},
        {"dew point at 0 K",             MET_dew_from_rh(0, 50),              kMissing},
        {"dew point of no mixing ratio", MET_dew_from_mix(0, 900),            0},
        {"humidity at 0 K",              MET_rel_hum(0, 280),                 kMissing},
        {"humidity of a frozen void",    MET_rel_hum(90, 280),                kMissing},
        {"theta at 0 hPa",               MET_theta(280, 0),                   kMissing},
        {"theta of Missing",             MET_theta(kMissing, 500),            kMissing},
        {"temperature of theta 0",       MET_temp_from_theta(0, 500),         0},
        {"virtual of 0 K",               MET_virtual_temp(0, 5, 900),         kMissing},
        {"virtual without vapour",       MET_virtual_temp(280, 0, 900),       280},
        {"virtual, td below 0",          MET_virtual_temp(280, -1, 900),      kMissing},
        {"virtual theta, p below 0",     MET_virtual_theta(280, 270, -1),     kMissing},
        {"theta-e saturated at 0",       MET_theta_e_sat(0, 900),             0},
        {"theta-e of td Missing",        MET_theta_e(280, kMissing, 900),     kMissing},
        {"theta-e above 1100 hPa",       MET_theta_e(280, 270, 1200),         kMissing},
        {"wet bulb without vapour",      MET_wet_bulb(280, 0, 900),           0},
        {"wet bulb, t Missing",          MET_wet_bulb(kMissing, 270, 900),    kMissing},
        {"wet-bulb theta, p below 0",    MET_wet_bulb_theta(280, 270, -5),    kMissing},
        {"moist adiabat 0",              MET_moist_temp(0, 900),              kMissing},
        {"moist adiabat above 2000 hPa", MET_moist_temp(300, 2001),           kMissing},
        {"condensation of cold vapour",  MET_lcl_pressure(280, 100, 900),     kMissing},
        {"condensation above 1100 hPa",  MET_lcl_pressure(280, 270, 1101),    kMissing},
        {"height of 0 hPa",              MET_std_height(0),                   kMissing},
        {"pressure at Missing",          MET_press_at_height(1000, kMissing), kMissing},
        {"pressure in space",            MET_press_at_height(1000, 60000),    kMissing},
    };
    // clang-format on
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(c.got, c.want);
    }
}

// National Weather Service chart of 2001, degrees Fahrenheit and miles per hour.
TEST(Comfort, WindChillIsThatOfTheChart)
{
    const struct {
        double t, v, chill;
    } cases[] = {{40, 5, 36}, {10, 20, -9}, {0, 15, -19}, {-10, 30, -39}, {-30, 60, -76}};
    for (const auto &c : cases) {
        SCOPED_TRACE(c.t);
        const auto v = static_cast<float>(c.v * 0.44704);
        EXPECT_NEAR(to_fahrenheit(MET_wind_chill2(fahrenheit(c.t), v)), c.chill, 0.8);
    }
    EXPECT_EQ(MET_wind_chill2(300, 10), 300.0F);
}

// Siple and Passel's chart: 20 F at 20 mph feels as -10 F, 0 F at 15 mph as -31 F; their heat loss
// at -10 C and 10 m/s is 32.07 * 43 kcal/m^2/h.
TEST(Comfort, SipleAndPasselAgreeWithTheirChart)
{
    EXPECT_NEAR(to_fahrenheit(MET_wind_chill(fahrenheit(20), 8.94F)), -10.0, 1.0);
    EXPECT_NEAR(to_fahrenheit(MET_wind_chill(fahrenheit(0), 6.71F)), -31.0, 1.0);
    EXPECT_NEAR(MET_heat_loss(celsius(-10), 10), 32.0728 * 43.0 * 1.1627, 1.0);
    EXPECT_EQ(MET_wind_chill(260, 1.9F), 260.0F);
    EXPECT_EQ(MET_wind_chill(307, 10), 307.0F);
    EXPECT_EQ(MET_wind_chill(260, 26), MET_wind_chill(260, 40));
    EXPECT_EQ(MET_heat_loss(260, 1), 260.0F);
}

// National Weather Service heat index chart: temperature in F, humidity in percent. The fit's
// constant is cut to 16, so it stands up to 0.9 F below the chart's own rounding.
TEST(Comfort, HeatIndexIsThatOfTheChart)
{
    const struct {
        double t, rh, index;
    } cases[] = {{80, 40, 80}, {86, 90, 105}, {90, 70, 105}, {94, 60, 110}, {100, 40, 109}};
    for (const auto &c : cases) {
        SCOPED_TRACE(c.t);
        const float td = magnus_dew_point((c.t - 32.0) / 1.8, c.rh);
        EXPECT_NEAR(to_fahrenheit(MET_heat_index(fahrenheit(c.t), td)), c.index, 2.0);
    }
    // below 77 F Steadman's simple form: 60.8 + 1.2 * (68 - 68) + 0.0936 * 50 = 65.48 F
    EXPECT_NEAR(to_fahrenheit(MET_heat_index(fahrenheit(68), magnus_dew_point(20, 50))), 65.48,
                0.05);
}

TEST(Comfort, OtherIndices)
{
    // 95 F and 23.373 hPa: 95 + 23.373 - 21
    EXPECT_NEAR(MET_humiture(fahrenheit(95), celsius(20)), 97.37, 0.03);
    EXPECT_EQ(MET_humiture(300, celsius(10)), 300.0F);
    EXPECT_NEAR(MET_discomfort(80, 60), 73.5, 1e-4);
    for (const float got : {MET_wind_chill(-1, 5), MET_wind_chill(250, -1), MET_wind_chill2(-1, 5),
                            MET_heat_loss(250, kMissing), MET_heat_index(kMissing, 280),
                            MET_heat_index(280, 290), MET_humiture(300, -1), MET_discomfort(-1, 5)})
        EXPECT_EQ(got, kMissing);
}
