#pragma once

#include <cmath>

/// Trigonometry in degrees.

inline constexpr double kRadiansPerDegree = 0.017453292519943334;
inline constexpr double kDegreesPerRadian = 57.295779513082195;

inline double sind(double degrees)
{
    return std::sin(degrees * kRadiansPerDegree);
}

inline double cosd(double degrees)
{
    return std::cos(degrees * kRadiansPerDegree);
}

inline double tand(double degrees)
{
    return std::tan(degrees * kRadiansPerDegree);
}
