#include "tyr/grid_files/grid_shelf.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "tyr/base/file.h"
#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/grid/grid_label_private.h"

using namespace tyr;

namespace tyr {

namespace {

constexpr int kMostOpen = 12;
constexpr int kDefaultTime = 1; ///< VarRec::time_class of a time that wasn't told

bool fits_level(const VarRec &wanted, const GridRec &head, bool is_old)
{
    const int ltype = is_old ? level_of_old_code(head.ltype) : head.ltype;
    return wanted.level_kind == kMissingInt ||
           (wanted.level_kind == ltype && wanted.level_value == head.level);
}

} // namespace

GridShelf::~GridShelf()
{
    for (ShelfGrid &grid : grids_) {
        GRD_free(&grid.head);
    }
    for (const File &file : files_) {
        if (file.handle != -1) {
            GRD_close(file.handle);
        }
    }
}

bool GridShelf::open(File *file)
{
    if (file->handle != -1) {
        return true;
    }
    const auto is_open = [](const File &other) { return other.handle != -1; };
    if (std::count_if(files_.begin(), files_.end(), is_open) >= kMostOpen) {
        const auto oldest = std::find_if(files_.begin(), files_.end(), is_open);
        GRD_close(oldest->handle);
        oldest->handle = -1;
    }
    GridFileInfo info;
    file->handle = GRD_open(file->path.c_str(), 0, &file->kind);
    if (file->handle != -1 && GRD_read_header(file->handle, &info) != 0) {
        GRD_close(file->handle);
        file->handle = -1;
    }
    return file->handle != -1;
}

int GridShelf::add(const std::string &path, int kind)
{
    const bool is_stream = FILE_is_std(path.c_str()) != 0;
    if (!is_stream && (FILE_exists(path.c_str()) == 0 || FILE_is_dir(path.c_str()) != 0)) {
        const bool is_folder = FILE_exists(path.c_str()) != 0;
        MSG_out(kMsgWarn, "%s: %s\n", path.c_str(),
                is_folder ? "it is a folder" : "there is no such file");
        return -1;
    }
    File file{path, kind};
    if (!open(&file)) {
        MSG_out(kMsgWarn, "%s: not a grid file that can be read\n", path.c_str());
        return -1;
    }
    files_.push_back(file);
    const int number = static_cast<int>(files_.size()) - 1;
    int found = 0;
    for (int place = 0;; ++place) {
        ShelfGrid grid{number, place};
        GRD_init(&grid.head);
        const int result = GRD_read(file.handle, &grid.head, is_stream ? 0 : 2, &place);
        if (result < 0) {
            break;
        }
        if (result == 0) {
            grid.place = place;
            grids_.push_back(grid);
            ++found;
        }
    }
    return found;
}

bool GridShelf::read(const ShelfGrid &grid, GridRec *out)
{
    if (grid.head.values != nullptr) {
        const size_t count =
            static_cast<size_t>(grid.head.domain.nx) * static_cast<size_t>(grid.head.domain.ny);
        GRD_free(out);
        GRD_copy(out, &grid.head);
        out->values = nullptr;
        if (GRD_alloc(out) == 0) {
            return false;
        }
        std::copy_n(grid.head.values, count, out->values);
        return true;
    }
    File &file = files_[static_cast<size_t>(grid.file)];
    int place = grid.place;
    if (open(&file) && GRD_read(file.handle, out, 0, &place) == 0) {
        return true;
    }
    MSG_out(kMsgWarn, "%s: grid %d can't be read\n", file.path.c_str(), grid.place + 1);
    return false;
}

const ShelfGrid *GridShelf::look(const VarRec &wanted, bool is_any_time, bool is_old) const
{
    const auto fits = [&](const ShelfGrid &grid) {
        const int var = is_old ? variable_of_old_code(grid.head.var) : grid.head.var;
        const bool fits_time =
            is_any_time || wanted.time == kMissingInt || wanted.time == grid.head.time;
        return var == wanted.var_number && fits_time && fits_level(wanted, grid.head, is_old);
    };
    const auto found = std::find_if(grids_.begin(), grids_.end(), fits);
    return found == grids_.end() ? nullptr : &*found;
}

bool GridShelf::find(const VarRec &wanted, GridRec *out)
{
    if (wanted.var_number == kMissingInt) {
        return false;
    }
    const bool may_vary = may_vary_ && wanted.time_class == kDefaultTime;
    for (const bool is_any_time : {false, true}) {
        for (const bool is_old : {false, true}) {
            if (is_any_time && !may_vary) {
                continue;
            }
            if (const ShelfGrid *grid = look(wanted, is_any_time, is_old)) {
                return read(*grid, out);
            }
        }
    }
    return false;
}

std::string GridShelf::where() const
{
    if (files_.empty()) {
        return "no file";
    }
    const size_t others = files_.size() - 1;
    return others == 0 ? files_[0].path
                       : files_[0].path + " and " + std::to_string(others) +
                             (others == 1 ? " other file" : " other files");
}

} // namespace tyr

int GRD_evaluate_files(const char *expression, GridShelf *shelf, GridRec out[2])
{
    const GridFinder find = [shelf](const VarRec &wanted, GridRec *grid) {
        return shelf->find(wanted, grid);
    };
    return GRD_evaluate(expression, find, shelf->where(), out);
}
