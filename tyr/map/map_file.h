#pragma once

#include <cstdio>

/// Map files: outlines as a row of segments, each a header and its points.
///
/// Text: "count f f f f n" and "latitude longitude" for each point. Binary, big-endian: a 16-bit
/// count, four floats, a 32-bit number, and two floats for each point. The header's other numbers
/// aren't read. A count of 0 ends the file, and so does its end.

/// How a map file ended.
enum class MapFileEnd {
    kClosed,  ///< by a count of 0
    kOpen,    ///< behind a whole segment
    kDamaged, ///< within a segment, or with what can't be a place on earth
    kNoMap    ///< nothing read: the current domain is no map projection
};

/// Draws a map file. @return 0; -1 where the end came without a count of 0; 1 where the current
/// domain isn't a map projection
int MAP_read_file(FILE *stream);
