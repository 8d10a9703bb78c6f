#pragma once

#include "tyr/met/sounding.h"

// Measures of a storm that join the wind with the energy of a lifted parcel. `winds` are m levels
// with pressures, heights and winds in knots (var/wind_profile.h), `p` is the surface pressure,
// hPa, `cape` the parcel's positive energy, J/kg.

/// Bulk Richardson number, cape over half the square of the shear between the mean winds of the
/// lowest 500 m and the lowest 6000 m (Weisman and Klemp 1982, Mon. Wea. Rev. 110).
///
/// @param[out] number  Missing for a Missing or negative `cape`, or no shear
/// @param[out] shear   m/s; Missing if a mean can't be had
/// @return 0; -1 if neither mean wind could be had
int MET_bulk_richardson(const SoundLevel *winds, int m, int kind, float *number, float *shear,
                        float p, float cape);

/// Energy-helicity index: the positive storm-relative helicity of the lowest 2000 m times cape
/// over 160000 (Hart and Korotky 1991). Missing without one of them.
/// @param storm  direction and speed (knots) of the storm
float MET_energy_helicity(const SoundLevel *winds, int m, int kind, const float *storm, float p,
                          float cape);
