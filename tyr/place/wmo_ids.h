#pragma once

/// Station names made from WMO block and station numbers: the region's letters with the number's
/// last digits, as in K2469 for 72469.

inline constexpr int kNoWmo = 99999; ///< a station without a number
inline constexpr int kWmoIdRoom = 12;

/// Name of a WMO number, into out[kWmoIdRoom]: a prefix of two letters and three digits, or of one
/// letter and four; five digits for a number that no region has. @return 0
int CTY_wmo_to_id(char *out, int wmo);

/// WMO number of such a name, or of five digits. A prefix with several ranges takes the one that
/// holds the number, or else its first. @return 0; -1 with kNoWmo for a text that is none
int CTY_id_to_wmo(const char *id, int *wmo);
