#pragma once

#include <string>

/// Write the reports of an hour. @param seconds  time of the file, since 1970. Throw on failure.
/// The layout with the dimension recNum: 72 levels in one row.
void write_recnum(const std::string &path, long seconds, int hour);
/// The layout with the dimension station: low and high mode apart, longitude positive west.
void write_station(const std::string &path, long seconds, int hour);
