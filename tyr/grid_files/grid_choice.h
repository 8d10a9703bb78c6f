#pragma once

#include <string>
#include <vector>

#include "tyr/grid_files/grid_shelf.h"

namespace tyr {

/// A grid that the user asked for: one of the files, read when it is needed, or one worked out.
struct ChosenGrid {
    const ShelfGrid *on_shelf = nullptr;
    GridRec made = {};

    const GridRec &head() const { return on_shelf != nullptr ? on_shelf->head : made; }
};

/// The grids that the resources ask for: those of `variable`, worked out; else those of `grid_num`
/// ("3,5-7", from 1); else all of the files that fit `level` and `time`.
class GridChoice {
  public:
    explicit GridChoice(GridShelf *shelf) : shelf_(shelf) {}
    ~GridChoice();
    GridChoice(const GridChoice &) = delete;
    GridChoice &operator=(const GridChoice &) = delete;

    /// @return false after a message
    bool gather();

    std::vector<ChosenGrid> grids;

    /// Number of grid i in the files, or among those worked out; from 1.
    size_t number(size_t i) const;

    /// A grid with its values, on the domain of the resource `grid_domain` where that is set; once
    /// a grid. The caller frees it. @return success, told
    bool take(ChosenGrid *grid, GridRec *out);

  private:
    bool gather_variables(const char *expression);
    bool gather_numbers(const std::string &numbers);
    void gather_all();

    GridShelf *shelf_;
};

} // namespace tyr
