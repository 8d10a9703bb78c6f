#pragma once

#include "tyr/base/missing.h"
#include "tyr/met/sounding.h"

// Which parcel the analysis lifts, as the user's `plot_param` says.

/// Ways of choosing the parcel.
enum ParcelMode : int {
    kParcelSurface = 1,
    kParcelLayer = 2,   ///< the mean of a layer of `depth` above the surface
    kParcelMaxTemp = 3, ///< the surface at its estimated maximum temperature
    kParcelGiven = 5    ///< `parcel`; what is Missing in it comes from the sounding
};

struct ParcelChoice {
    int mode = kParcelLayer;
    float depth = 100.0F; ///< hPa
    SoundLevel parcel = {kMissing, kMissing, kMissing, kMissing, kMissing, kMissing};
};

/// The choice in force, to read and to write back to.
ParcelChoice &THERM_parcel_choice();

/// Reads the words of `plot_param` that concern soundings, in their order:
///
///     page, nopage          paging of listings on or off
///     par=sfc               the surface; "par" alone with a separator likewise
///     par=layer:50          a layer of that depth, hPa
///     par=maxt              the estimated maximum temperature
///     par=850:21.5:14       a parcel at that pressure, with temperature and dew point in Celsius
///
/// What stands between "par" and the value is one character. "par=sfc:30:20" is the surface with
/// that temperature and dew point, a given parcel. Words of others are passed over.
///
/// @param surface  level that a given parcel takes its pressure and values from; may be null
void THERM_read_options(const SoundLevel *surface);
