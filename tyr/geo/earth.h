#pragma once

// The earth that projections stand on.

inline constexpr double kEarthRadius = 63.7122;      ///< mean, in plot units of 100 km
inline constexpr double kEquatorRadius = 63.78137;   ///< of the spheroid
inline constexpr double kPolarRadius = 63.56752;     ///< of the spheroid
inline constexpr double kSatelliteDistance = 421.61; ///< default, from the earth's centre
