#pragma once

#include "programs/profiler/records.h"
#include "tyr/plot/value.h"
#include "tyr/var/variable.h"

/// Answers a variable from one station's report.

/// Wind of a profile at a level.
///
/// @param      kind    level kind: 1 surface, 100 pressure (hPa, taken as a height of the standard
///                     atmosphere), 103 height above sea level (m); any other, height above the
///                     station (m)
/// @param      value   level value; 0 of kind 105 is the surface
/// @param[out] u, v, w m/s; Missing where the profile has no value, also when the result is 1
/// @return 1; 0 for a level above the top of the profile
int PRF_interpolate(const ProfilerRecord *record, int kind, long value, float *u, float *v,
                    float *w);

/// Works out a variable: the names are city, temp, dewp, dewd (surface), wdir, wspd, wbrb, wbrbc,
/// wind, uwnd, vwnd, vvel at the variable's level, and shear and hel of its layer (0 to 3000 m
/// where it has none). What can't be had is Missing.
///
/// @param[in,out] variable  its units are filled where empty; its level, for shear and hel
/// @param[out]    value     value1 (direction of a wind), value2 (speed of a wind), text
/// @return 1
int PRF_evaluate(const ProfilerRecord *record, VarRec *variable, PlotValue *value);

/// Fills the units of a variable that has none with the usual ones of its name. @return 1
int PRF_var_units(VarRec *variable);

/// Tells of a variable whose name isn't one of those above, with the nearest that are.
void PRF_check_variable(const VarRec *variable);
