#pragma once

#include "tyr/met/sounding.h"

// Stability indices of a sounding, each a number by which thunderstorms are told. Temperatures of
// the sounding in degrees Celsius, its speeds in knots; "t(850)" is the sounding at 850 hPa.
// Missing where a value that an index needs is Missing, as below the ground.

/// t(850) + td(850) - 2 t(500) (Miller 1972, AWS TR 200), and its two parts.
float MET_total_totals(const SoundLevel *sound, int n);
/// t(850) - t(500).
float MET_vertical_totals(const SoundLevel *sound, int n);
/// td(850) - t(500).
float MET_cross_totals(const SoundLevel *sound, int n);

/// t(850) - t(500) + td(850) - (t(700) - td(700)) (George 1960, Weather Forecasting for
/// Aeronautics).
float MET_k_index(const SoundLevel *sound, int n);

/// Severe weather threat (Miller 1972): 12 td(850) + 20 (TT - 49) + 2 v(850) + v(500) + 125 (sin(d
/// (500) - d(850)) + 0.2), the first two terms where they are positive, the last where the wind
/// veers from 135 to 250 degrees at 850 hPa to 210 to 310 at 500 hPa, at 15 knots and more at both.
///
/// Missing without t and td at 850 hPa, t at 500 hPa and both winds' directions and speeds.
float MET_sweat(const SoundLevel *sound, int n);

/// Energy index E(500) - E(850) (Darkow 1968), cal/g: E = 0.24 T + g z / 4.2e7 + 0.6 w, with T in
/// kelvin, g z in cm^2/s^2 and w in g/kg.
float MET_energy_index(const SoundLevel *sound, int n);

/// Temperature at the pressure `top` less that of a parcel lifted to there, K: dry to its
/// condensation level, on the moist adiabat above. The lifted index with 500 hPa and a depth of
/// 100, Showalter's from 850 hPa with depth 0.
///
/// @param p      pressure that the parcel starts from, hPa
/// @param depth  above 0 the parcel is the mean of the layer from p to p - depth
/// @return Missing also for a sounding that is empty or begins above 500 hPa
float MET_lifted_index(const SoundLevel *sound, int n, int kind, float p, float depth, float top);

/// Cap strength, K: the most by which the environment is warmer than that parcel between its
/// condensation level and 500 hPa; Missing as MET_lifted_index.
float MET_cap_strength(const SoundLevel *sound, int n, int kind, float p, float depth);

/// Convective condensation level, hPa: where the sounding cuts the line of the mixing ratio of the
/// layer from p to p - depth, or, with depth 0, of the dew point at p.
///
/// @param[out] mixing_ratio  g/kg
/// @return -1.0 if the sounding never cuts it; 0 for a sounding of one level; Missing for an empty
///         sounding, one that begins above 500 hPa, or no mixing ratio
float MET_ccl(const SoundLevel *sound, int n, int kind, float *mixing_ratio, float p, float depth);

/// The layer through which equivalent potential temperature falls most; pressures in hPa.
struct ThetaEIndex {
    float fall;            ///< K; Missing if theta-e rises all the way
    float bottom, top;     ///< of the layer
    float highest, high_p; ///< largest theta-e on the way, K
    float lowest, low_p;   ///< least
};

/// Looks at up to 5 layers of falling theta-e that begin at 700 hPa or more.
/// @return 0; -1 with all Missing if the lowest level with a dew point lies above 700 hPa, or none
///         has one
int MET_theta_e_index(const SoundLevel *sound, int n, ThetaEIndex *result);
