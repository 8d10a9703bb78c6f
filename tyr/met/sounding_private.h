#pragma once

#include "tyr/base/missing.h"
#include "tyr/met/sounding.h"
#include "tyr/met/thermo.h"

// What the routines of the sounding's analysis share.

namespace tyr {

/// Level kind of the analysis: pressures in hPa.
inline constexpr int kPressureKind = 100;

/// No sounding above this pressure (hPa) has a lower troposphere to be analysed.
inline constexpr float kHighestStart = 500.0F;

/// Degrees Celsius to kelvin and back; Missing stays.
inline float kelvin(float celsius)
{
    return is_missing(celsius) ? kMissing : static_cast<float>(celsius + kZeroCelsius);
}
inline float celsius(float kelvin)
{
    return is_missing(kelvin) ? kMissing : static_cast<float>(kelvin - kZeroCelsius);
}

inline bool has_air(const SoundLevel &level)
{
    return !is_missing(level.t) && !is_missing(level.td) && level.p > 0.0F;
}

/// The sounding at one value; all fields Missing where the routine refuses the sounding.
inline SoundLevel level_at(const SoundLevel *sound, int n, int kind, float value, int *index)
{
    SoundLevel level;
    MET_clear_level(&level);
    const int at = n > 0 ? MET_sound_at(sound, n, kind, &level, value) : 0;
    if (index != nullptr)
        *index = at < 0 ? n : at;
    return level;
}
inline SoundLevel level_at(const SoundLevel *sound, int n, int kind, float value)
{
    return level_at(sound, n, kind, value, nullptr);
}

/// True if a sounding begins in the lower troposphere.
inline bool begins_low(const SoundLevel *sound, int n)
{
    return sound != nullptr && n > 0 && sound[0].p >= kHighestStart;
}

/// A parcel of air and its condensation level; temperatures in kelvin.
struct LiftedParcel {
    float p = kMissing, t = kMissing, td = kMissing;
    float lcl_p = kMissing, lcl_t = kMissing;

    bool has_lcl() const { return !is_missing(lcl_p) && lcl_p > 0.0F && lcl_t > 0.0F; }
};

/// A parcel of given pressure, temperature and dew point, with its condensation level.
LiftedParcel lifted_parcel(float p, float t, float td);

/// The parcel at p, or the mixed one of the layer from p to p - depth with a depth above 0.
LiftedParcel pick_parcel(const SoundLevel *sound, int n, int kind, float p, float depth);

} // namespace tyr
