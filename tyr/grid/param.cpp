#include "tyr/grid/param.h"

#include <span>

#include "tyr/base/msg.h"
#include "tyr/base/str.h"
#include "tyr/grid/param_tables_private.h"

using namespace tyr;

namespace {

constexpr int kTableCentre = 98;
constexpr int kFirstOfCentre = 129;
constexpr int kNumberRange = 1000;
constexpr unsigned kTold = 64;

void convert(GridRec *grid, std::span<const tyr::ParamRow> table)
{
    for (const tyr::ParamRow &row : table) {
        if (row.number != grid->var) {
            continue;
        }
        grid->var = row.var;
        STR_copy(grid->units, sizeof grid->units, row.units);
        if (row.ltype != kMissingInt) {
            grid->ltype = row.ltype;
            grid->level = row.level;
        }
        return;
    }
    MSG_out(kTold, "Invalid GRIB variable: %d\n", grid->var);
}

} // namespace

void GRD_convert_param(GridRec *grid)
{
    if (grid->source == kTableCentre && grid->var >= kFirstOfCentre) {
        convert(grid, tyr::kCentreParams);
    } else if (grid->version == 0) {
        convert(grid, tyr::kOldParams);
    } else {
        const int number = grid->var % kNumberRange;
        for (const tyr::UnitRow &row : tyr::kParamUnits) {
            if (number >= row.first && number <= row.last) {
                STR_copy(grid->units, sizeof grid->units, row.units);
            }
        }
    }
}

const char *GRD_unit_text(int code)
{
    for (const tyr::CodeUnits &row : tyr::kCodeUnits) {
        if (row.code == code) {
            return row.units;
        }
    }
    return nullptr;
}
