#pragma once

#include <cstdio>
#include <memory>
#include <string>

#include "tyr/grib/grib_stream_private.h"
#include "tyr/grid/grid_info.h"

namespace tyr {

/// A GRIB stream in the table of open files.
class GridGrib {
  public:
    GridGrib(int handle, std::FILE *stream, std::string name)
        : handle_(handle), stream_(stream, std::move(name))
    {
        grib_bind(handle_, &stream_);
    }
    ~GridGrib() { grib_bind(handle_, nullptr); }
    GridGrib(const GridGrib &) = delete;
    GridGrib &operator=(const GridGrib &) = delete;

    /// @param[out] file_type  edition, or 10 for 0 of centre 98
    int read_header(GridFileInfo *info, int *file_type);
    int read(GridRec *grid, int mode, int *index) { return stream_.read_grid(grid, mode, index); }
    void rewind() { stream_.rewind(); }

  private:
    int handle_;
    GribStream stream_;
};

} // namespace tyr
