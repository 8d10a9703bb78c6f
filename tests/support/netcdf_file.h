#pragma once

#include <string>
#include <vector>

/// A small profiler file for a test, written through the netCDF library alone.
struct NetcdfSample {
    std::vector<std::string> names = {"AAAA1"}; ///< a station each
    int levels = 72;                            ///< of the layout recNum
    std::vector<float> heights;                 ///< default: 500, 750, ...
    std::vector<float> u, v;                    ///< of every station; default: 10 and 5 m/s
    float lon = -95.0F;
    float temperature = 290.0F; ///< kelvin
    bool text_u = false;        ///< uComponent as characters
    bool double_u = false;      ///< uComponent as doubles
    bool no_v = false;          ///< without vComponent
};

/// Writes the layout with dimension recNum.
void write_recnum_file(const std::string &path, const NetcdfSample &spec);

/// Writes the layout with dimension station, one station: `lon` as it is stored, one quality for
/// all levels, and a u wind for each mode (v is 1 m/s).
void write_station_file(const std::string &path, float lon, int quality, float low_u, float high_u);
