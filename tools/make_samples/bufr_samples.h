#pragma once

#include <string>

/// Writes the reports of an hour as BUFR messages (WMO FM 94, edition 3), five a message, each
/// behind a bulletin heading. Each group of levels ends with one level without data.
/// @param seconds  time of the file, since 1970. Throws on failure.
void write_bufr(const std::string &path, long seconds, int hour);
