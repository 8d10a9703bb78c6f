#pragma once

// Physical constants and units, with their sources.

/// 0 degrees Celsius in kelvin (BIPM).
inline constexpr double kZeroCelsius = 273.15;

/// Metres a second in a knot: 1852 m in an hour, to four digits.
inline constexpr double kKnot = 0.5144;
