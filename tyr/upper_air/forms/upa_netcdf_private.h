#pragma once

#include <netcdf.h>

#include "tyr/upper_air/forms/upa_netcdf.h"

// The variables of the two netCDF layouts, as both the reader and the writer take them.

namespace tyr {

/// What a variable has behind the record dimension.
enum class UpaShape { text, one, mandatory, significant, wind };

struct UpaVariableRow {
    const char *name1; ///< in layout 11
    const char *name2; ///< in layout 12
    nc_type type;
    UpaShape shape;
    const char *long_name;
    const char *units1; ///< null for none
    const char *units2;
    float low, high; ///< valid_range; none where they are equal
};

// clang-format off
inline constexpr UpaVariableRow kUpaVariableRows[kUpaVariables] = {
    {"id", "id", NC_CHAR, UpaShape::text, "Station ID", nullptr, nullptr, 0, 0},
    {"region", "region", NC_CHAR, UpaShape::text, "Region ID", nullptr, nullptr, 0, 0},
    {"type", "type", NC_CHAR, UpaShape::text, "Report Origination", nullptr, nullptr, 0, 0},
    {"idn", "idn", NC_INT, UpaShape::one, "WMO Numeric Station ID", nullptr, nullptr, 0, 0},
    {"lat", "lat", NC_FLOAT, UpaShape::one, "Latitude", "degrees_N", "degrees_N", -90, 90},
    {"lon", "lon", NC_FLOAT, UpaShape::one, "Longitude", "degrees_E", "degrees_E", -180, 180},
    {"num_mant", "num_mant", NC_INT, UpaShape::one,
     "Number of Mandatory Levels", nullptr, nullptr, 0, 20},
    {"num_sigt", "num_sigt", NC_INT, UpaShape::one,
     "Number of Significant Levels wrt T", nullptr, nullptr, 0, 50},
    {"num_sigw", "num_sigw", NC_INT, UpaShape::one,
     "Number of Significant Levels wrt W", nullptr, nullptr, 0, 50},
    {"p_man", "P_man", NC_FLOAT, UpaShape::mandatory,
     "Pressure - Mandatory Levels", "hectopascals", "hectopascals", 0, 1500},
    {"z_man", "Z_man", NC_FLOAT, UpaShape::mandatory,
     "Geopotential - Mandatory Levels", "meters", "meters", -150, 100000},
    {"t_man", "T_man", NC_FLOAT, UpaShape::mandatory,
     "Temperature - Mandatory Levels", "celsius", "celsius", -100, 100},
    {"td_man", "TD_man", NC_FLOAT, UpaShape::mandatory,
     "Dew Point - Mandatory Levels", "celsius", "celsius", -100, 100},
    {"dir_man", "DIR_man", NC_FLOAT, UpaShape::mandatory,
     "Wind Direction - Mandatory Levels", "degrees", "degrees", 0, 360},
    {"spd_man", "SPD_man", NC_FLOAT, UpaShape::mandatory,
     "Wind Speed - Mandatory Levels", "knots", "meters/second", 0, 300},
    {"p_sigt", "P_sigt", NC_FLOAT, UpaShape::significant,
     "Pressure - Significant Levels wrt T", "hectopascals", "hectopascals", 0, 1500},
    {"t_sigt", "T_sigt", NC_FLOAT, UpaShape::significant,
     "Temperature - Significant Levels wrt T", "celsius", "celsius", -100, 100},
    {"td_sigt", "TD_sigt", NC_FLOAT, UpaShape::significant,
     "Dew Point - Significant Levels wrt T", "celsius", "celsius", -100, 100},
    {"z_sigw", "Z_sigw", NC_FLOAT, UpaShape::wind,
     "Altitude - Significant Levels wrt W", "feet", "meters", -150, 100000},
    {"dir_sigw", "DIR_sigw", NC_FLOAT, UpaShape::wind,
     "Wind Direction - Significant Levels wrt W", "degrees", "degrees", 0, 360},
    {"spd_sigw", "SPD_sigw", NC_FLOAT, UpaShape::wind,
     "Wind Speed - Significant Levels wrt W", "knots", "meters/second", 0, 300},
};
// clang-format on

/// Names of the dimensions.
inline constexpr const char *kRecord1 = "station"; // layout 11
inline constexpr const char *kRecord2 = "report";  // layout 12
inline constexpr const char *kMandLevel = "mant_level";
inline constexpr const char *kSigLevel = "sigt_level";
inline constexpr const char *kWindLevel = "sigw_level";
inline constexpr const char *kStringLength = "string_len";

/// Factors of layout 12.
inline constexpr float kKnotsOfMetres = 1.944F; // on reading
inline constexpr float kFeetOfMetres = 3.2808F;
inline constexpr float kMetresOfKnots = 0.5144F; // on writing
inline constexpr float kMetresOfFeet = 0.3048F;

} // namespace tyr
