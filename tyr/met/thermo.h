#pragma once

#include "tyr/met/constants.h"

/// Scalar formulas of moist air. Temperatures and dew points in kelvin, pressures and vapour
/// pressures in hPa, mixing ratio and specific humidity in g/kg, relative humidity in percent,
/// heights in metres. Worked in double, handed back as float.
///
/// "td or e": a value above 100 is a dew point, one of 100 and below a vapour pressure.

/// Saturation vapour pressure over water: the Goff-Gratch form of Nordquist (1973, US Army
/// Electronics Command ECOM-5475). Missing below 0, 0 below 100 K.
float MET_sat_vapor(float t);

/// Dew point of a vapour pressure, a fit of the same origin. 0 at or below 0.
float MET_dew_from_vapor(float e);

/// Mixing ratio 622 e / (p - e). Missing for Missing, 0 if either is at or below 0.
float MET_mix_ratio(float td_or_e, float p);

/// Specific humidity, as 622 e / p. Missing for Missing, 0 if either is at or below 0.
float MET_spec_hum(float td_or_e, float p);

/// Dew point from relative humidity, which is kept within 2 to 100. Missing for rh Missing or t at
/// or below 0.
float MET_dew_from_rh(float t, float rh);

/// Dew point from mixing ratio and pressure. 0 if either is at or below 0.
float MET_dew_from_mix(float w, float p);

/// Relative humidity of temperature and dew point, or, if both are 100 and below, of two vapour
/// pressures (saturated first). Missing if either is at or below 0.
float MET_rel_hum(float t, float td);

/// Potential temperature, Poisson's equation with the exponent 0.286. Missing if either is at or
/// below 0.
float MET_theta(float t, float p);

/// Temperature on a dry adiabat. 0 if either is at or below 0.
float MET_temp_from_theta(float theta, float p);

/// Temperature of a parcel brought dry from p1 to p2.
float MET_dry_adiabat(float t, float p1, float p2);

/// Virtual temperature t (1 + 0.609 w). The second argument is a dew point above 100, else the
/// mixing ratio; 0 gives t. Missing for t at or below 0, or another argument below 0.
float MET_virtual_temp(float t, float td_or_w, float p);

/// Virtual potential temperature; td = 0 gives MET_theta. Missing as for MET_virtual_temp.
float MET_virtual_theta(float t, float td, float p);

/// Equivalent potential temperature of saturated air, theta exp(2.6518986 w / t) as in Stackpole
/// (1967, J. Appl. Meteor. 6). 0 if either is at or below 0.
float MET_theta_e_sat(float t, float p);

/// Equivalent potential temperature of unsaturated air, by way of its condensation level; td = 0
/// gives MET_theta. Missing for t at or below 0, or another argument below 0.
float MET_theta_e(float t, float td, float p);

/// Wet-bulb temperature, by Normand's construction; td = 0 gives 0. Missing as for MET_theta_e.
float MET_wet_bulb(float t, float td, float p);

/// Wet-bulb potential temperature: the same at 1000 hPa.
float MET_wet_bulb_theta(float t, float td, float p);

/// Temperature at p on the moist adiabat theta_e, by halving steps (Stackpole 1967), to within
/// 0.06 K. Missing if either is at or below 0 or p is above 2000.
float MET_moist_temp(float theta_e, float p);

/// Pressure of the lifting condensation level, by iteration (Stackpole 1967). Missing for t or td
/// at or below 100, or p outside 0 to 1100.
float MET_lcl_pressure(float t, float td, float p);

/// Height of a pressure in the standard atmosphere (ICAO Doc 7488, to 20 km). Missing for p at or
/// below 0.
float MET_std_height(float p);

/// Pressure at a height z above p, in the standard lapse of 6.5 K/km. Missing for p at or below 0,
/// z Missing, or above the lapse's end at 44 km.
float MET_press_at_height(float p, float z);

/// Interpolation of x1 at p1 and x2 at p2 to p, linear in the logarithm of pressure. Both x
/// Missing: Missing; one Missing: the other. Missing if p1 or p2 is at or below 0.
float MET_log_interp(float x1, float x2, float p1, float p2, float p);

/// Linear interpolation at x between (x1, y1) and (x2, y2).
float MET_lin_interp(float x, float x1, float x2, float y1, float y2);

/// Great-circle distance in km on a sphere of 6371.3 km; latitudes and longitudes in degrees.
float MET_great_circle(float lat1, float lon1, float lat2, float lon2);
