#pragma once

#include "tyr/upper_air/report.h"

// From a report's three lists of levels to two ordered soundings.

/// A slot map says where each of the report's slots 0 to 23 went: the index of its level in the
/// sounding, or kMissingInt.
inline constexpr int kSlotMap = 24;

/// The temperature sounding, by falling pressure: mandatory and significant levels merged, each
/// pressure once (the mandatory level stands for both), tropopause and level of maximum wind put in
/// between their neighbours, and levels left out where the potential temperature falls by more than
/// 3 K from the level below. A mandatory level below the surface stands ahead of it. A level
/// without a temperature has no potential temperature to fall, and stays. The level of maximum
/// wind, be it found or put in, gets the temperatures between those of its neighbours.
///
/// A report without mandatory levels gives its significant list alone, its first level with the
/// surface's height if its pressure is above 500 hPa. Heights of significant levels stay Missing
/// (MET_fill_heights).
///
/// @param[out] out  room for kMaxSounding levels
/// @param[out] map  kSlotMap entries
/// @return the level count
int THERM_make_temps(const UpaReport *report, SoundLevel *out, int *map);

/// The wind sounding, by rising height, in metres: mandatory and wind levels merged, with
/// tropopause and maximum wind where their slots have a height. A mandatory level without a height
/// stands at that of the standard atmosphere. Pressures of wind levels stay Missing
/// (MET_fill_pressures). The arguments are those of THERM_make_temps.
int THERM_make_winds(const UpaReport *report, SoundLevel *out, int *map);

/// The merge alone: no tropopause, no maximum wind, and no level without a height.
int THERM_make_winds_simple(const UpaReport *report, SoundLevel *out, int *map);

/// Heights of the levels that have none, by the hypsometric equation from the next known height;
/// between two known heights the misfit is spread in proportion to pressure.
///
/// A step without any temperature takes that of the nearest level that has one, or 273.15 K where
/// none has: a lapse from the first level's temperature would need the height that is sought.
///
/// @param levels  `count` levels by falling pressure
/// @return 0, or -1 when the list has no known height beyond the first
int MET_fill_heights(SoundLevel *levels, int count);

/// Pressures of the levels that have none, between known pressures by the mean temperature that
/// their heights tell, beyond them by a lapse of 6.5 K/km from the first level's temperature (or
/// from 288.15 K). @return 0
int MET_fill_pressures(SoundLevel *levels, int count);

/// Gives each temperature level without a direction the wind of the wind sounding at its pressure.
void THERM_fill_winds(SoundLevel *temps, int n, const SoundLevel *winds, int m);

/// The pressure of slot 0 in a sounding; 1000 if the map has no surface.
float THERM_sfc_pressure(const SoundLevel *temps, const int *map);

/// The whole road from a report to the sounding in force (tyr/upper_air/sounding_store.h). A
/// station without an elevation is looked up in the city file "upa.cty", which then also gives its
/// WMO number and place. Heights and values found on the way are set in the report's slots 0, 22
/// and 23. The date is that of the current file (tyr/upper_air/stations.h), where it has one.
/// @return 1; 0 if no temperature level came out
int THERM_process_report(UpaReport *report);
