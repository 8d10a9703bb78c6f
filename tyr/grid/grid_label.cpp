#include <array>

#include "tyr/base/str.h"
#include "tyr/grid/grid_label_private.h"
#include "tyr/grid/param_tables_private.h"
#include "tyr/met/level_kind.h"
#include "tyr/var/label.h"

namespace tyr {

int level_of_old_code(int ltype)
{
    constexpr int kOldPressure = 10, kOldSea = 12, kOldHeight = 13;
    switch (ltype) {
    case kOldPressure:
        return kLevelPressure;
    case kOldSea:
        return kLevelSea;
    case kOldHeight:
        return kLevelHeight;
    default:
        return ltype;
    }
}

int variable_of_old_code(int var)
{
    for (const ParamRow &row : kOldParams) {
        if (row.number == var) {
            return row.var;
        }
    }
    return var;
}

void label_old_code(GridRec *grid, const DateRec &run)
{
    VarRec record;
    VAR_init(&record);
    record.var_number = variable_of_old_code(grid->var);
    record.time = grid->time;
    record.level_kind = level_of_old_code(grid->ltype);
    record.level_value = grid->level;
    STR_copy(record.units, sizeof record.units, grid->units);
    std::array<char, kVarLabelSize> label{};
    STR_copy(grid->info, sizeof grid->info, VAR_record_label(&record, label.data()));
    std::array<char, kDateTextRoom> date{};
    TIME_format_valid(grid->time, &run, date.data());
    STR_copy(grid->date, sizeof grid->date, date.data());
}

} // namespace tyr
