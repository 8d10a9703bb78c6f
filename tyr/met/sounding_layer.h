#pragma once

#include "tyr/met/sounding.h"

// Means over layers of a sounding, and what a layer's two ends tell. Soundings are ordered from the
// ground up, temperatures in degrees Celsius (var/sounding.h). `kind` is the kind of level that
// `bottom` and `top` are given in, 100 for pressures in hPa. What can't be had is Missing: an empty
// sounding, a layer outside the data, more than kMaxSoundLevels levels.

/// Mean of a named quantity over a layer, weighted by the logarithm of pressure, so by mass.
///
/// | name                              | quantity                                  | unit |
/// |-----------------------------------|-------------------------------------------|------|
/// | temp dewp wetblb vtemp            | temperature, dew point, wet bulb, virtual | K    |
/// | theta thetaw thetae thetav        | potential temperatures: dry, wet bulb,    | K    |
/// |                                   | equivalent, virtual                       |      |
/// | dewd                              | dew-point depression                      | K    |
/// | rhum                              | relative humidity                         | %    |
/// | mrat shum                         | mixing ratio, specific humidity           | g/kg |
/// | vpres pres                        | vapour pressure, pressure                 | hPa  |
/// | hght hag                          | height, height above the first level      | m    |
///
/// Names are compared with case ignored. The layer's ends are the sounding at `bottom` and `top`;
/// levels that lack the quantity are stepped over.
///
/// @return the mean; with a top that is Missing or equals the bottom, the value at the bottom.
///         Missing for a name that isn't known
float MET_layer_mean(const char *name, const SoundLevel *sound, int n, int kind, float bottom,
                     float top);

/// Means of mixing ratio (g/kg) and potential temperature (K) over a layer, as MET_layer_mean.
/// @return 1; 0 if one of them is Missing
int MET_layer_mix_theta(const SoundLevel *sound, int n, int kind, float *mix, float *theta,
                        float bottom, float top);

/// Thickness |z(b) - z(a)|, m.
float MET_thickness(const SoundLevel *sound, int n, int kind, float a, float b);

/// Lapse rate -(t(b) - t(a)) / (z(b) - z(a)), K/m; Missing when the heights are equal.
float MET_lapse_rate(const SoundLevel *sound, int n, int kind, float a, float b);

/// Precipitable water of the whole sounding, inches. Missing for 2 levels and fewer, a first
/// pressure below 500 hPa, or no dew point on the first three levels.
float MET_precip_water(const SoundLevel *sound, int n);

/// Pressure where the wet-bulb temperature goes through 0 degrees Celsius, linear between levels,
/// from below; -1.0 if the first level is colder than that; Missing if there is no such place.
float MET_wetbulb_zero(const SoundLevel *sound, int n);

/// Surface temperature that a layer of `depth` above `p` has when it is mixed, K: the potential
/// temperature at its top, brought down to p. The afternoon's maximum, with a depth of 150 hPa.
float MET_max_temp(const SoundLevel *sound, int n, int kind, float p, float depth);
