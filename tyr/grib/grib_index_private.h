#pragma once

#include <optional>
#include <string_view>

#include "tyr/base/file.h"
#include "tyr/base/missing.h"

// The index beside a GRIB file: a line of text for each field.

namespace tyr {

/// One line: where the product stands, and what it is told to hold.
struct IndexLine {
    long offset = 0;
    int field = 0; ///< lines in front of this one with the same offset: fields of one message
    bool is_described = false; ///< the numbers below were given
    int source = kMissingInt;
    int model = 0, grid_id = 0, time = 0, ltype = 0, level = 0, var = 0;
};

/// Parses a line "offset text"; nothing for a line without an offset.
std::optional<IndexLine> parse_index_line(std::string_view line);

/// Walks an index file. Lines that can't be read are passed over.
class GribIndex {
  public:
    /// @return false for a file that doesn't open
    bool open(const char *path);
    bool is_open() const { return file_ != nullptr; }
    void rewind();
    /// Line `place`, counted from 0; nothing behind the last.
    std::optional<IndexLine> line(int place);

  private:
    std::optional<IndexLine> next();

    FilePtr file_;
    int place_ = -1; ///< of `last_`
    std::optional<IndexLine> last_;
};

} // namespace tyr
