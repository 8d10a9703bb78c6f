#pragma once

#include "tyr/met/sounding.h"

/// Measures of the wind in a layer of a sounding. A layer is a level kind with a bottom and a top,
/// in hPa for the pressure kinds (1, 100, 101, 102, 115, 116; the bottom is the larger number), in
/// metres or kelvin for the others. `storm` is a motion's direction (degrees) and speed (knots).
/// Speeds of the sounding count as knots, except in MET_mean_wind, which keeps their unit.

inline constexpr int kHelicityResults = 8;
inline constexpr int kShearResults = 2;

/// Places of the results of MET_helicity.
enum HelicityResult : int {
    kHelTurning = 0,   ///< turning of the relative wind through the layer, -180 to 180 degrees
    kHelPositive = 1,  ///< sum of the positive terms, m^2/s^2
    kHelNegative = 2,  ///< sum of the negative terms, m^2/s^2
    kHelTotal = 3,     ///< the sum of the two
    kHelMean = 4,      ///< total divided by the depth, m/s^2
    kHelRelative = 5,  ///< streamwise part of the horizontal vorticity
    kHelVorticity = 6, ///< mean horizontal vorticity, 1/s
    kHelStreamwise = 7 ///< mean streamwise vorticity, 1/s
};

/// Mean wind of a layer, weighted by the logarithm of pressure. The direction is that of the mean
/// vector, the speed the mean of the speeds. With top Missing or equal to bottom it is the wind at
/// the bottom.
///
/// @param[out] result  direction and speed; Missing if there is no wind in the layer
/// @return 1; 0 if no weight or no wind at the top was found, or the sounding has one level; -1
///         for a layer upside down or an empty sounding
int MET_mean_wind(const SoundLevel *sound, int count, int kind, float *result, float bottom,
                  float top);

/// Vertical shear along the hodograph in steps of 500 m.
///
/// @param storm        may be null; it doesn't change the result
/// @param[out] result  kShearResults floats, 1/s: shear where the wind veers, and where it backs
/// @return 1; 0 if the top lay above the data (the layer's depth is then kept, for kind 103), or
///         for a sounding that is empty or begins above 5000 m; -1 for a layer that can't be placed
int MET_shear(const SoundLevel *sound, int count, int kind, const float *storm, float *result,
              float bottom, float top);

/// Storm-relative helicity in steps of 100 m (Davies-Jones, Burgess and Foster 1990, 16th Conf.
/// Severe Local Storms).
///
/// @param storm        storm motion; without a direction there is no result
/// @param[out] result  kHelicityResults floats, by HelicityResult
/// @return as MET_shear; 0 also for fewer than two levels
int MET_helicity(const SoundLevel *sound, int count, int kind, const float *storm, float *result,
                 float bottom, float top);
