#pragma once

/// Kinds of level: the WMO GRIB level type codes, and the system's own from 200 up.
enum LevelKind : int {
    kLevelNone = 0,
    kLevelSurface = 1,
    kLevelCloudBase = 2,
    kLevelCloudTop = 3,
    kLevelFreezing = 4,
    kLevelLcl = 5,
    kLevelMaxWind = 6,
    kLevelTropopause = 7,
    kLevelTop = 8,
    kLevelDash = 9, ///< the text "-"
    kLevelPressure = 100,
    kLevelPressureLayer = 101,
    kLevelSea = 102,
    kLevelHeight = 103, ///< metres above sea level
    kLevelHeightLayer = 104,
    kLevelHeightAg = 105, ///< metres above ground
    kLevelHeightAgLayer = 106,
    kLevelSigma = 107, ///< sigma * 10000
    kLevelSigmaLayer = 108,
    kLevelHybrid = 109,
    kLevelDepth = 111, ///< centimetres below ground
    kLevelDepthLayer = 112,
    kLevelTheta = 113, ///< kelvin
    kLevelThetaLayer = 114,
    kLevelPressureAg = 115, ///< hPa above ground
    kLevelPressureAgLayer = 116,
    kLevelVorticity = 117,
    kLevelEta = 119, ///< eta * 10000
    kLevelEtaLayer = 120,
    kLevelWhole = 200
};

/// Bounds of a layer that stand for more than a number: hPa of pressure layers, metres (times 100)
/// of height layers.
inline constexpr int kFromSurface = 1900;
inline constexpr int kFromMaxTemp = 1910;
inline constexpr int kFromTropopause = 1950;
inline constexpr int kFromSurfaceIndex = 2000; ///< and above: that much below the surface
inline constexpr int kAboveTropopause = 99500;
inline constexpr int kBelowTropopause = 99600;
