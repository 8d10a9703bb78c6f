#pragma once

#include "tyr/geo/earth.h"

/// The one pair of routines between earth or data coordinates and plot coordinates. Both act on
/// the current domain.

/// Plot coordinates of a point of the earth, or of a pair of data.
///
/// @param[out] x, y   plot units (100 km; degrees on latitude-longitude maps)
/// @param lat, lon    degrees; in a plot space its first and second coordinate
/// @return 1; 0 with Missing coordinates for a point that can't be shown
int MAP_ll_to_xy(float *x, float *y, float lat, float lon);

/// The reverse. @return 1; 0 with Missing coordinates for a plot point off the map. At the centre
/// of a Lambert azimuthal map the result is 0 with the centre's coordinates
int MAP_xy_to_ll(float *lat, float *lon, float x, float y);

/// Plot coordinates of the domain's centre.
void MAP_center_xy(float *x, float *y);

/// Turns a direction (degrees) relative to true north at a plot point into one relative to the
/// plot's up direction. Missing where a satellite view can't show the point.
float MAP_rotate_dir(float direction, float x, float y);

/// Length factor of the map at a point: 1.866 / (1 + sin lat) on polar stereographic maps, `parm3`
/// on Lambert maps (1.0 where it is Missing), else 1.0.
float MAP_scale_factor(float lat, float lon);

namespace tyr {

/// Width of the world at a plot y, where its sides meet; 0 on a projection without sides.
float projection_wrap_width(int code, float y);

} // namespace tyr
