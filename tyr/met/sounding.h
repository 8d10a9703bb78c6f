#pragma once

/// One level of a sounding; any field may be Missing. Soundings are ordered from the ground up.
struct SoundLevel {
    float p;   ///< pressure, hPa
    float z;   ///< height, m
    float t;   ///< temperature, degrees Celsius
    float td;  ///< dew point, degrees Celsius
    float dir; ///< direction the wind comes from, degrees
    float spd; ///< wind speed, knots
};

inline constexpr int kMaxSoundLevels = 308; ///< levels that the routines take; more are refused

/// Levels of a sounding that stand beside its list.
enum SpecialLevel : int { kSpecialSurface = 0, kSpecialTropopause = 1, kSpecialMaxWind = 2 };

/// Sets all six fields to Missing.
void MET_clear_level(SoundLevel *level);

/// Puts a sounding in force for VAR_layer_limits; a copy is kept. Returns 0, or -1 with a message
/// for a count outside 0 to kMaxSoundLevels. It is empty at start.
int MET_set_sounding(const SoundLevel *sound, int count);
/// The sounding in force and its count; null when it is empty.
const SoundLevel *MET_get_sounding(int *count);
/// The surface, tropopause or maximum wind level in force, to read or to set; Missing at start.
SoundLevel *MET_special_level(SpecialLevel which);

/// Coordinate of a level for a kind of level: -ln(p) for pressure kinds, z for height kinds,
/// potential temperature for 113 and 114; Missing if it can't be had.
float MET_level_coord(int kind, const SoundLevel *level);

/// Fills gaps of temperature between good levels, linear in pressure.
void MET_fill_temps(SoundLevel *sound, int count);

/// A sounding at n values of a coordinate, each field interpolated across its own gaps.
///
/// Heights (kinds 103 to 106) in metres, potential temperatures (113, 114) in kelvin, else
/// pressures in hPa; kind 1 gives the surface level in force. A value within 3 m, 1 K or 0.01 of
/// ln p below the first level gives that level. Directions go the short way round.
///
/// @param[out] out  n levels; what can't be found is Missing
/// @return index of the first level at or above the last value, `count` if it lies above all; -1
///         with a message for a count outside 0 to kMaxSoundLevels
int MET_sound_interp(const SoundLevel *sound, int count, int kind, const float *values,
                     SoundLevel *out, int n);

/// The same for one value.
int MET_sound_at(const SoundLevel *sound, int count, int kind, SoundLevel *out, float value);

/// Pressure where the temperature of a sounding goes through 0 degrees Celsius. Missing for an
/// empty sounding, one whose first pressure is below 500 hPa, or no crossing; -1 if it begins
/// colder than that at more than 500 hPa.
float MET_freezing_level(const SoundLevel *sound, int count);

/// Codes of MET_print_level that show a word in place of a level's number.
enum LevelTag : int {
    kTagSurface = -1,
    kTagTropopause = -2,
    kTagMaxWind = -3,
    kTagParcel = -4,
    kTagLcl = -5,
    kTagLfc = -6,
    kTagEquilibrium = -7,
    kTagMaxParcel = -8,
    kTagWetBulbZero = -9,
    kTagFreezing = -10
};

/// Prints one line for a level: tag or number, p, z, t, td, relative humidity, mixing ratio, theta,
/// theta-e, wet bulb, direction and speed; blanks for what is Missing.
///
/// @param mask      level of the message
/// @param sub_mask  bits of the mask to print at; 0 for all of the mask
/// @param code      a LevelTag, or the number of the level
void MET_print_level(unsigned mask, unsigned sub_mask, int code, const SoundLevel *level);
