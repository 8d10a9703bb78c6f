#include "tyr/grid_files/grid_out.h"

#include <array>
#include <string_view>

#include "tyr/base/file.h"
#include "tyr/base/msg.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/names/out_file.h"

using namespace tyr;

namespace {

constexpr unsigned kTold = 64;
constexpr int kLowestHandle = 1;

struct KindWord {
    std::string_view word, ending, other_ending;
    int kind;
};
constexpr KindWord kKinds[] = {
    {"netcdf", ".nc",  ".cdf", kGridNetcdf },
    {"binary", ".bin", ".tyb", kGridBinary },
    {"text",   ".grd", ".txt", kGridText   },
    {"old",    ".old", ".old", kGridOldText},
};

bool is_writable(int kind)
{
    return (kind >= kGridOldText && kind <= kGridBinary) || kind == kGridNetcdf;
}

/// @return the handle; 0 for failure, told in the routine's name
int open_out(const char *routine, const char *name, int kind)
{
    std::array<char, kFileNameRoom> path{};
    FILE_join(RES_get("grid_path"), name, path.data());
    if (!is_writable(kind)) {
        MSG_out(kTold, "%s: Unable to create grid file: %s\n", routine, path.data());
        return 0;
    }
    const int answer = FILE_check_out(path.data(), 2);
    if (answer != kOutFresh && answer != kOutAppend) {
        MSG_out(kTold, "%s: Unable to overwrite grid file: %s\n", routine, path.data());
        return 0;
    }
    const bool append = answer == kOutAppend && FILE_exists(path.data()) == 1;
    if (FILE_is_std(path.data()) == 0) { // what is told stands there too
        MSG_out(kMsgMess, append ? "Appending to grid file: %s\n" : "Creating grid file: %s\n",
                path.data());
    }
    const int handle = tyr::grid_open_out(path.data(), kind, kLowestHandle, append);
    if (handle == -1) {
        MSG_out(kTold, "%s: Unable to %s grid file: %s\n", routine, append ? "open" : "create",
                path.data());
        return 0;
    }
    return handle;
}

} // namespace

int GRD_output_kind(const char *path)
{
    const std::string_view name = path;
    const char *wanted = RES_get("output");
    for (const KindWord &row : kKinds) {
        const bool is_wanted = wanted != nullptr && STR_casecmp(wanted, row.word.data()) == 0;
        const bool is_ending = name.ends_with(row.ending) || name.ends_with(row.other_ending);
        if (is_wanted || (wanted == nullptr && is_ending)) {
            return row.kind;
        }
    }
    return wanted != nullptr ? kGridUnknown : kGridText;
}

int GRD_save_file(const char *name, GridRec *grid, GridFileInfo *info, int kind)
{
    const int handle = kind == kGridUnknown ? 0 : open_out("GRD_save_file", name, kind);
    if (handle == 0) {
        return 0;
    }
    GridFileInfo own = {};
    STR_copy(own.date_text, sizeof own.date_text, grid->date);
    TIME_parse(grid->date, &own.date);
    int index = 0;
    const bool is_written = GRD_write_header(handle, info != nullptr ? info : &own) == 0 &&
                            GRD_write(handle, grid, 0, &index) == 0;
    if (!is_written) {
        tyr::grid_give_up(handle);
    }
    return GRD_close(handle) == 0 ? 1 : 0;
}

int GRD_open_out_file(char *name, int kind)
{
    return kind == kGridUnknown ? 0 : open_out("GRD_open_out_file", name, kind);
}
