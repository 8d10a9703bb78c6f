#pragma once

// Grids of one or more open files, found by level, time and variable.

#include <string>
#include <vector>

#include "tyr/grid_files/grid_file.h"
#include "tyr/grid_math/evaluate.h"

namespace tyr {

/// Where a grid stands and what its head tells.
struct ShelfGrid {
    int file = 0;      ///< number of the file, in the order of add()
    int place = 0;     ///< of GRD_read
    GridRec head = {}; ///< values only where the file was a standard stream
};

/// The heads of all grids of the files that were added, read once; the values are read when a grid
/// is asked for. Any number of files: of the table of open files it takes twelve places at most.
class GridShelf {
  public:
    GridShelf() = default;
    ~GridShelf();
    GridShelf(const GridShelf &) = delete;
    GridShelf &operator=(const GridShelf &) = delete;

    /// Reads the heads of a file, told where that fails. A standard stream is read whole.
    /// @param kind  a GridKind; the usual one is found out, which a standard stream, then taken for
    ///              text, doesn't allow
    /// @return number of grids found; -1 where the file doesn't open
    int add(const std::string &path, int kind = kGridUnknown);

    const std::vector<ShelfGrid> &grids() const { return grids_; }
    const std::string &path(const ShelfGrid &grid) const
    {
        return files_[static_cast<size_t>(grid.file)].path;
    }
    /// Kind of storage of a grid's file, a GridKind.
    int kind(const ShelfGrid &grid) const { return files_[static_cast<size_t>(grid.file)].kind; }

    /// Reads a grid whole, into a record as GRD_init or GRD_read left it. @return success, told
    bool read(const ShelfGrid &grid, GridRec *out);

    /// Looks for the grid of a variable record, as tyr::GridFinder does: first by the numbers of
    /// variable, level and time as they stand, then with those of the old grid code. A level that
    /// the record hasn't got fits any.
    bool find(const VarRec &wanted, GridRec *out);

    /// Lets a time that a record took from the defaults (its class is 1) fit any where none fits
    /// exactly: for a caller whose default nobody asked for.
    void let_default_time_vary() { may_vary_ = true; }

    /// What is searched, for a message: the path, or the first one and the number of the others.
    std::string where() const;

  private:
    struct File {
        std::string path;
        int kind = kGridUnknown;
        int handle = -1;
    };

    bool open(File *file);
    const ShelfGrid *look(const VarRec &wanted, bool is_any_time, bool is_old) const;

    std::vector<File> files_;
    std::vector<ShelfGrid> grids_;
    bool may_vary_ = false;
};

} // namespace tyr

/// GRD_evaluate on the grids of a shelf.
int GRD_evaluate_files(const char *expression, tyr::GridShelf *shelf, GridRec out[2]);
