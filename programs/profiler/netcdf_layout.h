#pragma once

#include "programs/profiler/layout.h"
#include "programs/profiler/netcdf_reader.h"

/// The two netCDF layouts of profiler files, in any format of the library: classic (1, 2, 5) and
/// netCDF-4.

namespace tyr {

bool probe_station(const ProfilerInput &input);
bool probe_recnum(const ProfilerInput &input);
int open_netcdf(const ProfilerInput &input);
void read_station_header(const ProfilerInput &input, PrfFileInfo *info);
void read_recnum_header(const ProfilerInput &input, PrfFileInfo *info);
int read_station_record(const ProfilerInput &input, int64_t index, ProfilerRecord *record);
int read_recnum_record(const ProfilerInput &input, int64_t index, ProfilerRecord *record);
void close_netcdf();

inline constexpr LayoutRow kStationLayout = {
    kLayoutStation,     probe_station, open_netcdf, read_station_header, read_station_record,
    netcdf_find_record, nullptr,       nullptr,     close_netcdf,
};
inline constexpr LayoutRow kRecNumLayout = {
    kLayoutRecNum,      probe_recnum, open_netcdf, read_recnum_header, read_recnum_record,
    netcdf_find_record, nullptr,      nullptr,     close_netcdf,
};

} // namespace tyr
