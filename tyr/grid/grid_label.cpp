#include <array>

#include "tyr/base/str.h"
#include "tyr/grid/grid_label_private.h"
#include "tyr/grid/param_tables_private.h"
#include "tyr/var/label.h"

namespace tyr {

void label_old_code(GridRec *grid, const DateRec &run)
{
    VarRec record;
    VAR_init(&record);
    record.var_number = grid->var;
    for (const ParamRow &row : kOldParams) {
        if (row.number == grid->var) {
            record.var_number = row.var;
        }
    }
    record.time = grid->time;
    record.level_kind = grid->ltype;
    record.level_value = grid->level;
    STR_copy(record.units, sizeof record.units, grid->units);
    std::array<char, kVarLabelSize> label{};
    STR_copy(grid->info, sizeof grid->info, VAR_record_label(&record, label.data()));
    std::array<char, kDateTextRoom> date{};
    TIME_format_valid(grid->time, &run, date.data());
    STR_copy(grid->date, sizeof grid->date, date.data());
}

} // namespace tyr
