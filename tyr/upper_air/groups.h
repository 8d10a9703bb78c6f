#pragma once

// The coded groups of upper-air reports, five characters each, in the manner of WMO code FM 35
// (Manual on Codes, WMO-No. 306, volume I.1): PPhhh pressure and height, TTTDD temperature and
// dew-point depression, dddff wind. "X" and groups of nines say nothing.
//
// What a code can't tell: heights above 500 hPa go in tens of metres, temperatures in tenths with
// even digits at and above zero and odd ones below, depressions of 5 degrees and more in whole
// degrees, directions in fives.

/// Room of a group with its end. A value out of a group's range is cut to fit.
inline constexpr int kUpaGroupRoom = 16;

/// PPhhh: PP tens of hPa, 00 for 1000 and 92 for 925, or the hPa behind a minus below 10 ("-5" is
/// 5 hPa); hhh metres, or tens of metres from 500 hPa up, with what is missing in front filled in
/// by the pressure. "88" and "77" give 880 and 770 hPa with hhh as it stands.
/// @param[out] p, z  hPa and metres; Missing for what isn't told
/// @return 0; -1 where the height isn't told (p is then kept) or nothing is
int UPA_decode_pz(const char *group, float *p, float *z);

/// TTTDD: degrees Celsius. @return 0; -1 for a group without a temperature (both Missing)
int UPA_decode_td(const char *group, float *t, float *td);

/// dddff: ddd in fives of degrees, its last digit taking the hundreds of knots. Both are Missing
/// for a speed above 250 knots or a direction above 360. @return 0; -1 for "X" or no group
int UPA_decode_wind(const char *group, float *dir, float *spd);

/// The reverse; the group stands in UPA_group() until the next call. @return 0; -1 with an empty
/// group for nothing to tell: no pressure, no temperature, no direction or speed
int UPA_encode_pz(float p, float z);
int UPA_encode_td(float t, float td);
int UPA_encode_wind(float dir, float spd);

/// The group encoded last.
const char *UPA_group();
