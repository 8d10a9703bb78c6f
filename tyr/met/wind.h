#pragma once

/// Components of a wind from the direction it comes from.
///
/// @param[out] u, v   eastward and northward component, in the unit of speed
/// @param direction   degrees clockwise from north
/// @return 0; -1 with both outputs Missing when an input is Missing
int MET_wind_uv(float *u, float *v, float direction, float speed);

/// Direction and speed of a wind from its components.
///
/// @param[out] direction  where the wind comes from, degrees clockwise from north, 0 up to and not
///                        including 360; 0 for a speed below 0.01
/// @param[out] speed      in the unit of u and v
/// @return 0; -1 with both outputs Missing when an input is Missing
int MET_wind_dirspd(float *direction, float *speed, float u, float v);
