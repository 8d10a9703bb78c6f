#pragma once

#include "tyr/met/sounding.h"

// The lift of a parcel through a sounding: its condensation level, where it floats and how far it
// rises, and the energies on the way, by the parcel's temperature (no correction for its vapour).

/// Result of a lift. Pressures in hPa, energies in J/kg.
struct ParcelRec {
    float theta_e; ///< the moist adiabat of the lift, K
    float lcl_p;   ///< lifting condensation level
    float lcl_t;   ///< temperature there, K
    float cap;     ///< most by which the environment is warmer below 500 hPa, K; at least 0
    float lfc_p;   ///< level of free convection; -1.0: none
    float el_p;    ///< equilibrium level, the first above it where the parcel is colder again
    float mpl_p;   ///< maximum parcel level, where the energy is used up
    float b_el;    ///< energy left at the equilibrium level
    float b_mpl;   ///< and at the maximum parcel level
    float cape;    ///< positive energy (B+)
    float cin;     ///< what holds the parcel below the level of free convection (B-), 0 or above
    float w_max;   ///< speed that all of `cape` gives, sqrt(2 cape), m/s
};

/// Energy of the step between two levels, J/kg: g (Tp - Te) / Te dz with the means of the parcel's
/// and the environment's temperatures and the environment's heights. Missing if one is Missing.
float MET_layer_energy(const SoundLevel *parcel_low, const SoundLevel *parcel_high,
                       const SoundLevel *env_low, const SoundLevel *env_high);

/// Lifts a parcel: along the levels up to its condensation level, above it in steps of 10 hPa to
/// the sounding's top.
///
/// @param parcel   in: with a pressure, the parcel of its p, t and td; else, and for a null, the
///                 level at p or, with a depth above 0, the mean of the layer from p to p - depth.
///                 Out: the parcel that was used
/// @param[out] result  without data `cape`, `cin`, `w_max`, `cap` and `lfc_p` are Missing too
/// @return 1; 0 on no data: an empty sounding, p Missing, or a parcel without temperature or dew
///         point
int MET_parcel(const SoundLevel *sound, int n, SoundLevel *parcel, int kind, ParcelRec *result,
               float p, float depth);
