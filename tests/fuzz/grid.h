#pragma once

#include <string>

#include "fuzz/input.h"
#include "tyr/grid_files/grid_file.h"

/// Reads bytes as a grid file of one kind: its head, its first grids forward by description and
/// value, and some of them once more.
inline void fuzz_grid(const std::string &bytes, int kind)
{
    constexpr int kMostGrids = 6;
    const std::string path = fuzz_file(bytes, "grid");
    const int handle = GRD_open(path.c_str(), 0, &kind);
    GridFileInfo info;
    GRD_read_header(handle, &info);
    GridRec grid;
    GRD_init(&grid);
    int index = 0;
    while (index < kMostGrids && GRD_read(handle, &grid, 2, &index) == 0 &&
           GRD_read(handle, &grid, 0, &index) == 0) {
        ++index;
    }
    for (const int place : {0, 2, 1}) {
        GRD_read(handle, &grid, 0, &(index = place));
    }
    GRD_rewind(handle);
    GRD_read(handle, &grid, 0, &(index = 0));
    GRD_free(&grid);
    GRD_close(handle);
}
