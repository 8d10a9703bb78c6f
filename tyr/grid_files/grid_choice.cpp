#include "tyr/grid_files/grid_choice.h"

#include <cstdio>
#include <utility>

#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/prm.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/grid_math/remap.h"
#include "tyr/place/domain_text.h"
#include "tyr/var/expression.h"

namespace tyr {

GridChoice::~GridChoice()
{
    for (ChosenGrid &grid : grids) {
        GRD_free(&grid.made);
    }
}

bool GridChoice::gather()
{
    if (const char *expression = RES_get("variable")) {
        return gather_variables(expression);
    }
    if (const char *numbers = RES_get("grid_num")) {
        return gather_numbers(numbers);
    }
    gather_all();
    if (grids.empty()) {
        MSG_out(kMsgWarn, "%s: no grid at this level and time\n", shelf_->where().c_str());
    }
    return !grids.empty();
}

bool GridChoice::gather_variables(const char *expression)
{
    const GridFinder find = [this](const VarRec &wanted, GridRec *out) {
        return shelf_->find(wanted, out);
    };
    if (VAR_decode(nullptr, expression) == 0) {
        MSG_out(kMsgWarn, "%s: no variable in the expression\n", expression);
        return false;
    }
    for (int next = 0; next < VAR_count();) {
        GridRec out[2];
        const int count = GRD_evaluate_item(&next, find, shelf_->where(), out);
        if (count == 0) {
            return false;
        }
        for (int i = 0; i < count; ++i) {
            ChosenGrid grid;
            grid.made = out[i];
            grids.push_back(grid);
        }
    }
    return !grids.empty();
}

bool GridChoice::gather_numbers(const std::string &numbers)
{
    const int count = static_cast<int>(shelf_->grids().size());
    for (const std::string &word : STR_fields(numbers, ',')) {
        int first = 0;
        int last = 0;
        const int found = std::sscanf(word.c_str(), "%9d-%9d", &first, &last);
        last = found == 2 ? last : first;
        if (found < 1 || first < 1 || last > count || first > last) {
            MSG_out(kMsgWarn, "%s: no grid %s among %d\n", shelf_->where().c_str(), word.c_str(),
                    count);
            return false;
        }
        for (int i = first; i <= last; ++i) {
            grids.push_back({&shelf_->grids()[static_cast<size_t>(i - 1)]});
        }
    }
    return !grids.empty();
}

void GridChoice::gather_all()
{
    const auto fits = [](int slot, int value) {
        return PRM_get(slot) == kMissingInt || PRM_get(slot) == value;
    };
    const bool has_time = RES_get("time") != nullptr;
    for (const ShelfGrid &grid : shelf_->grids()) {
        if (fits(kPrmLevelKind, grid.head.ltype) && fits(kPrmLevelValue, grid.head.level) &&
            (!has_time || fits(kPrmTime, grid.head.time))) {
            grids.push_back({&grid});
        }
    }
}

size_t GridChoice::number(size_t i) const
{
    const ShelfGrid *grid = grids[i].on_shelf;
    return grid == nullptr ? i + 1 : static_cast<size_t>(grid - shelf_->grids().data()) + 1;
}

bool GridChoice::take(ChosenGrid *grid, GridRec *out)
{
    GridRec whole;
    GRD_init(&whole);
    GRD_init(out);
    if (grid->on_shelf == nullptr) {
        std::swap(whole, grid->made);
    } else if (!shelf_->read(*grid->on_shelf, &whole)) {
        return false;
    }
    const char *domain = RES_get("grid_domain");
    if (domain == nullptr) {
        *out = whole;
        return true;
    }
    DomainRec where;
    DOM_decode(domain, &where);
    GRD_close_circle(&whole);
    const bool is_done = DOM_is_usable(&where) && GRD_remap(out, &where, &whole) == 1;
    GRD_free(&whole);
    return is_done;
}

} // namespace tyr
