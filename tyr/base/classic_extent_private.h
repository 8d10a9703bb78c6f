#pragma once

#include <cstdint>
#include <string_view>

namespace tyr {

struct ClassicHeader;

/// How much of a netCDF classic file is really there. The library reads what lies beyond the end
/// of a file as zeros, and a wind of zero is a calm: so a file that was cut in transfer has to be
/// told from its header.
struct ClassicExtent {
    bool is_classic = false;   ///< the file begins with the magic
    bool is_whole = false;     ///< the header can be read to its end
    int64_t whole_records = 0; ///< records that lie in the file from end to end
    bool fixed_part = false;   ///< all variables without the record dimension are there
};

/// Reads the header of a classic file (formats 1, 2 and 5).
ClassicExtent classic_extent(std::string_view bytes);
/// The same from a header that was read.
ClassicExtent classic_extent(const ClassicHeader &header, int64_t file_size);
/// The same of a file on disk, which isn't read but where its header stands.
ClassicExtent classic_file_extent(const char *path);

} // namespace tyr
