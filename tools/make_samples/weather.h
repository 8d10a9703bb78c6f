#pragma once

#include <optional>
#include <vector>

#include "tools/make_samples/sites.h"

/// The weather of the sample observations: a trough that passes from west to east, a low-level jet
/// over the plains at night, a jet below the tropopause, and profilers that lose their echo higher
/// up. A function of place and time alone, so that the same files come out every time.

struct SampleWind {
    float u, v, w; ///< m/s
};

struct SampleSurface {
    float pressure;    ///< hPa, at the station
    float temperature; ///< degrees Celsius
    float dew_point;   ///< degrees Celsius
    float direction;   ///< degrees
    float speed;       ///< m/s
};

/// Wind at a height above the station (m); nothing for a gate without an echo.
/// @param hour  hours since the first file
std::optional<SampleWind> sample_wind(const SampleSite &site, double hour, double height);

SampleSurface sample_surface(const SampleSite &site, double hour);

/// Whether the report came in time for its file.
bool sample_is_there(const SampleSite &site, int hour);

/// The sites whose report came in time.
std::vector<SampleSite> sample_reports(int hour);

inline constexpr int kModeLevels = 36;   ///< levels of each mode
inline constexpr int kLowBottom = 500;   ///< lowest level of the low mode, m
inline constexpr int kHighBottom = 7500; ///< lowest level of the high mode, m
inline constexpr int kGate = 250;        ///< between levels, m
