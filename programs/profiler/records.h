#pragma once

#include <cstdint>

#include "tyr/base/date.h"

/// Room of the texts below, with the closing NUL.
inline constexpr int kProfilerIdSize = 16;
inline constexpr int kDateLabelSize = 72;
/// Room for levels in a record: the limit for every reader.
inline constexpr int kMaxProfilerLevels = 100;

/// The code of no layout; each layout's own stands in its header.
inline constexpr int kLayoutNone = 0;

/// One level of a wind profile. A value that isn't there is Missing.
struct ProfilerLevel {
    float z;      ///< height above the station, m
    float u;      ///< eastward wind, m/s
    float v;      ///< northward wind, m/s
    float w;      ///< upward wind, m/s
    float hdev;   ///< deviation of the horizontal wind
    float vdev;   ///< deviation of the vertical wind
    int32_t qual; ///< quality indicator as read
};

/// One station's report at one time, the same from every file layout.
struct ProfilerRecord {
    char id[kProfilerIdSize]; ///< station identifier
    float lat;                ///< degrees, north positive
    float lon;                ///< degrees, east positive
    float elev;               ///< station elevation, m
    float sfc_p;              ///< surface pressure, hPa
    float sfc_t;              ///< surface temperature, degrees Celsius
    float sfc_td;             ///< surface dew point; relative humidity where the file has that
    float sfc_dir;            ///< surface wind direction, degrees
    float sfc_spd;            ///< surface wind speed, m/s
    float sfc_rain;           ///< rain
    ProfilerLevel level[kMaxProfilerLevels];
    int32_t num_level; ///< levels in use
};

/// What a file says of itself.
struct PrfFileInfo {
    char date_label[kDateLabelSize]; ///< text of the date; empty until a file gives one
    DateRec date;
    int32_t num_station;
};

/// Empties a record: no id, no levels, every value Missing.
void PRF_init_record(ProfilerRecord *record);

/// Prints a record at a message level: place, elevation and a line a level.
void PRF_print_record(unsigned level, const ProfilerRecord *record);
