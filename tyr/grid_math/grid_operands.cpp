#include "tyr/grid_math/grid_operands.h"

#include "tyr/base/str.h"
#include "tyr/grid_math/grid_places.h"
#include "tyr/grid_math/grid_units.h"
#include "tyr/var/catalogue.h"
#include "tyr/var/type_words.h"

namespace {

bool has_values(const GridRec *grid)
{
    return grid != nullptr && grid->values != nullptr;
}

bool same_sides(const GridRec &a, const GridRec &b)
{
    return a.domain.nx == b.domain.nx && a.domain.ny == b.domain.ny;
}

bool operands_do(int first, int count, GridRec *const *grids, const float *constants)
{
    for (int i = first; i < first + count; ++i)
        if (!tyr::is_grid_operand(grids[i]) && is_missing(constants[i]))
            return false;
    return true;
}

/// Layout and memory of a result.
bool make_room(GridRec *out, const GridRec *first)
{
    if (out->values != nullptr)
        return tyr::point_count(out->domain) > 0;
    if (out->domain.nx < 1) {
        if (!tyr::is_grid_operand(first))
            return false;
        GRD_copy_layout(out, first);
    }
    return GRD_alloc(out) == 1;
}

} // namespace

namespace tyr {

bool is_grid_operand(const GridRec *grid)
{
    return has_values(grid) && grid->source != 0 && point_count(grid->domain) > 0;
}

int variable_number(const char *abbreviation)
{
    const CatalogueEntry *entry = VAR_find_abbr(abbreviation);
    return entry == nullptr ? 0 : entry->numbers[0];
}

Operand MathCall::operand(int i) const
{
    return is_grid_operand(grids[i]) ? Operand{grids[i]->values, kMissing}
                                     : Operand{nullptr, constants[i]};
}

bool MathCall::is_variable(int i, const char *abbreviation) const
{
    const int number = variable_number(abbreviation);
    return number != 0 && is_grid_operand(grids[i]) && grids[i]->var == number;
}

} // namespace tyr

int GRD_count_operands(GridRec *const *grids, const float *constants)
{
    int count = 0;
    while (count < tyr::kMaxOperands &&
           (has_values(grids[count + 1]) || !is_missing(constants[count + 1])))
        ++count;
    return count;
}

float GRD_operand(int i, GridRec *const *grids, const float *constants, size_t point)
{
    return tyr::is_grid_operand(grids[i]) ? grids[i]->values[point] : constants[i];
}

int GRD_check(int count, GridRec **grids, const float *constants, const char *own_name,
              const char *variable, const char *unit)
{
    const int results = GRD_is_vector_func(own_name) == 1 ? 2 : 1;
    if (!operands_do(results, count, grids, constants))
        return 0;
    const int number = tyr::variable_number(*variable == '\0' ? own_name : variable);
    for (int i = 0; i < results; ++i) {
        GridRec *out = grids[i];
        if (out == nullptr || !make_room(out, count > 0 ? grids[results] : nullptr))
            return 0;
        for (int k = results; k < results + count; ++k)
            if (tyr::is_grid_operand(grids[k]) && !same_sides(*out, *grids[k]))
                return 0;
        out->var = number;
        if (*unit == '\0')
            continue;
        STR_copy(out->units, sizeof out->units, unit);
        GRD_make_label(out);
    }
    return 1;
}
