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

/// Parses the text of a level: "500", "850-700mb", "3000ft_ag", "h500", "a0-3000", "frz", ...
///
/// A layer packs two numbers as high * 1000 + low, scaled by its kind (see VAR_decode_layer).
///
/// @param[in,out] kind, value  LevelKind and value; left as they stand by a text that fits nothing
/// @return 2 for a level that the text gave (or that fits nothing), 1 when the default of the
///         settings was taken; for an empty text inside a parse the class of its base
int VAR_level(const char *text, int *kind, int *value);
