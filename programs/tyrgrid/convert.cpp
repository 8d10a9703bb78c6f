#include "programs/tyrgrid/convert.h"

#include <algorithm>
#include <string>

#include "tyr/base/msg.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/grid_files/grid_out.h"

namespace tyr {

namespace {

/// The largest grid: a netCDF file has the room of the one that is written first.
size_t largest(const std::vector<ChosenGrid> &grids)
{
    const auto points = [](const ChosenGrid &grid) {
        return static_cast<double>(grid.head().domain.nx) * grid.head().domain.ny;
    };
    const auto found =
        std::max_element(grids.begin(), grids.end(), [&](const ChosenGrid &a, const ChosenGrid &b) {
            return points(a) < points(b);
        });
    return static_cast<size_t>(found - grids.begin());
}

GridFileInfo file_info(const GridRec &grid)
{
    GridFileInfo info = {};
    STR_copy(info.date_text, sizeof info.date_text, grid.date);
    TIME_parse(grid.date, &info.date);
    return info;
}

bool write_one(int handle, GridChoice *choice, size_t place)
{
    GridRec grid;
    bool is_good = choice->take(&choice->grids[place], &grid);
    int index = static_cast<int>(place);
    if (is_good && GRD_write(handle, &grid, 0, &index) != 0) {
        is_good = false;
    }
    GRD_free(&grid);
    return is_good;
}

} // namespace

bool write_grids(GridChoice *choice)
{
    std::string name = RES_get("out_file");
    const int kind = GRD_output_kind(name.c_str());
    if (kind == kGridUnknown) {
        MSG_out(kMsgError, "%s: not a kind of grid file that can be written\n", RES_get("output"));
        return false;
    }
    const int handle = GRD_open_out_file(name.data(), kind);
    if (handle == 0) {
        return false;
    }
    const size_t first = kind == kGridNetcdf ? largest(choice->grids) : 0;
    const GridFileInfo info = file_info(choice->grids[first].head());
    bool is_good = GRD_write_header(handle, &info) == 0 && write_one(handle, choice, first);
    for (size_t i = 0; is_good && i < choice->grids.size(); ++i) {
        is_good = i == first || write_one(handle, choice, i);
    }
    if (!is_good) {
        MSG_out(kMsgWarn, "%s: not written\n", name.c_str());
        grid_give_up(handle);
    }
    return GRD_close(handle) == 0 && is_good;
}

} // namespace tyr
