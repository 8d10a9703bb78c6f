#pragma once

#include <cstdint>

#include "programs/profiler/records.h"

/// The two netCDF layouts of profiler files, over the access layer. The file is open and current.

inline constexpr int kLayoutStation = 11; ///< with a dimension `station`: low and high mode apart
inline constexpr int kLayoutRecNum = 12;  ///< without it: 72 levels

/// Looks up the variables, reads heights and date, fills `info`.
/// @param whole_records  reports that lie wholly in the file; the count is cut to it
void netcdf_read_header(int layout, const char *name, int64_t whole_records, PrfFileInfo *info);

/// Reads record `index`. @return 1, or -1 at the end and for a blank station name
int netcdf_read_record(int layout, int64_t index, ProfilerRecord *record);

/// Index of the first record of a station, whatever the case of its letters, by the names alone;
/// -1 where there is none before the end or a blank name.
int64_t netcdf_find_record(const char *id);
