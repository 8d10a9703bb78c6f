#pragma once

#include "tyr/met/parcel.h"
#include "tyr/met/stability.h"
#include "tyr/met/wind_profile.h"

// The analysis of the sounding in force (tyr/upper_air/sounding_store.h): all indices, the lift of
// the chosen parcel (tyr/upper_air/parcel_choice.h) and the measures of the wind.

/// What the analysis found, Missing where it can't be had. Pressures in hPa, temperatures and
/// differences of them in degrees Celsius.
struct SoundingResults {
    float thickness;                      ///< 1000 to 500 hPa, m
    float wetbulb_zero;                   ///< -1.0: below the ground
    float precip_water;                   ///< inches
    float mean_rh;                        ///< surface to 500 hPa, %
    float max_temp;                       ///< estimated from the layer of 150 hPa
    float lcl_p, lcl_t;                   ///< condensation level of the surface's air
    float lapse_rate;                     ///< 700 to 500 hPa, C/km
    ThetaEIndex theta_e;                  ///
    float ccl, ccl_mix, ccl_temp;         ///< of the lowest 100 hPa: g/kg; convective temperature
    float cap;                            ///< of the mixed lowest 100 hPa, as the lifted indices
    float lifted, lifted_300, lifted_700; ///
    float showalter;                      ///
    float totals, vertical, cross;        ///
    float k, sweat, energy;               ///
    ParcelRec parcel;                     ///< lift of the chosen parcel
    float shear[kShearResults];           ///< surface to 3000 m above it, 1/s
    float helicity[kHelicityResults];     ///< the same layer, by HelicityResult
    float energy_helicity;                ///< of the lowest 2000 m
    float richardson, bulk_shear;         ///< bulk Richardson number, and its shear in m/s
};

/// Works all out for the sounding in force. The parcel that was lifted is kept in the parcel
/// choice: the surface's (mode 1), the mean of the layer (2), the surface's at its estimated
/// maximum temperature (3), or the sounding at the given pressure with the given temperature and
/// dew point where they aren't Missing (5).
void THERM_compute();

/// What THERM_compute found last; all Missing before.
const SoundingResults &THERM_results();
