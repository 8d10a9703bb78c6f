#pragma once

#include "tyr/base/date.h"
#include "tyr/base/missing.h"
#include "tyr/met/sounding.h"

// The sounding in force: what assembly or a raw file made, and what the analysis walks.

inline constexpr int kMaxSounding = 300; ///< levels of each of the two soundings
inline constexpr int kStationRoom = 21;  ///< bytes of the station text

/// A direction (degrees) and a speed (knots); Missing where there is none.
struct StoredWind {
    float dir, spd;
};

/// The two soundings, with what belongs to neither list.
struct SoundingStore {
    const SoundLevel *temps = nullptr; ///< by falling pressure, a height at every level
    int num_temps = 0;
    const SoundLevel *winds = nullptr; ///< by rising height, a pressure at every level
    int num_winds = 0;
    float surface_pressure = kMissing; ///< hPa
    float surface_height = kMissing;   ///< m
    SoundLevel tropopause = {kMissing, kMissing, kMissing, kMissing, kMissing, kMissing};
    SoundLevel max_wind = {kMissing, kMissing, kMissing, kMissing, kMissing, kMissing};
    char station[kStationRoom] = {}; ///< the station's name in raw files and headings
    DateRec date;
    StoredWind mean_wind = {kMissing, kMissing};    ///< surface to 6000 m above it
    StoredWind storm_motion = {kMissing, kMissing}; ///< 30 degrees right of it at 3/4 of its speed
};

/// The sounding in force, to read.
const SoundingStore &THERM_store();

/// Puts a sounding in force and prepares its analysis: reads the options of `plot_param`
/// (tyr/upper_air/parcel_choice.h), finds the surface height, the mean wind of the layer from
/// there to 6000 m above, and the storm motion, which is from 30 degrees to the right of the mean
/// wind with 0.75 of its speed. The arrays aren't copied: they must stay until the next call.
void THERM_setup(SoundLevel *temps, int n, SoundLevel *winds, int m, float surface_pressure);

/// What THERM_setup doesn't take: the station's name, the date, and the two special levels.
void THERM_set_station(const char *station);
void THERM_set_date(const DateRec *date);
void THERM_set_special(const SoundLevel *tropopause, const SoundLevel *max_wind);
