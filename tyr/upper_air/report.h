#pragma once

#include <cstdint>

#include "tyr/base/date.h"
#include "tyr/met/sounding.h"

// The record of one upper-air report, whatever form it was stored in.

inline constexpr int kUpaMandatory = 25;    ///< slots of mandatory levels
inline constexpr int kUpaSignificant = 200; ///< significant levels for temperature
inline constexpr int kUpaWinds = 100;       ///< significant levels for wind
inline constexpr int kUpaIdRoom = 11;       ///< bytes of UpaReport::id, with the end
inline constexpr int kUpaRegionRoom = 13;   ///< of UpaReport::region

/// Slots of the mandatory levels. 1 to 21 are 1000, 925, 850, 700, 500, 400, 300, 250, 200, 150,
/// 100, 70, 50, 30, 20, 10, 7, 5, 3, 2 and 1 hPa; 24 isn't used.
enum UpaSlot : int {
    kUpaSurface = 0,
    kUpa1000 = 1,
    kUpa925 = 2,
    kUpa850 = 3,
    kUpa10 = 16,         ///< the highest that UPA_mand_index knows
    kUpa7 = 17,          ///< the first above
    kUpa1 = 21,          ///< the highest
    kUpaTropopause = 22, ///< its pressure stands in p
    kUpaMaxWind = 23     ///< level of maximum wind; t and td stay Missing
};

/// A significant level for temperature: hPa and degrees Celsius.
struct UpaSigLevel {
    float p, t, td;
};

/// A significant level for wind: feet (not metres, as everywhere else), degrees, knots.
struct UpaWindLevel {
    float z, dir, spd;
};

/// One station's report. Pressures in hPa, heights of `mand` in metres, temperatures in degrees
/// Celsius, speeds in knots, heights of `wnd` in feet; what isn't known is Missing.
struct UpaReport {
    char id[kUpaIdRoom];         ///< station identifier
    char region[kUpaRegionRoom]; ///< "UN" if a netCDF file has none
    std::int32_t wmo;            ///< WMO station number
    float lat, lon, elev;        ///< degrees north, degrees east, metres
    std::int32_t extra;          ///< a number that only the binary digest writes and nothing reads
    SoundLevel mand[kUpaMandatory]; ///< by UpaSlot
    std::int32_t num_mand;          ///< what the form read can hold, or the file tells; 0 for none
    UpaSigLevel sig[kUpaSignificant];
    std::int32_t num_sig;
    UpaWindLevel wnd[kUpaWinds];
    std::int32_t num_wnd;
};

/// Texts empty, numbers kMissingInt or Missing, counts 0.
void UPA_clear_report(UpaReport *report);

/// Slot of a pressure: 1 to 16 for 1000 down to 10 hPa by exact equality; 0 for anything else, so
/// that 7 hPa and the higher levels count as no mandatory level.
int UPA_mand_index(float p);

/// Pressure of a slot from 1 to 21, hPa; Missing for others.
float UPA_mand_pressure(int slot);
