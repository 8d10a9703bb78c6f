#include <cstdint>
#include <string>

#include "base/str.h"
#include "tyr/grib/edition_private.h"
#include "var/catalogue.h"
#include "var/label.h"
#include "var/var_name.h"

namespace tyr {
namespace {

enum ProductClass { kMember = 1, kMean = 2, kDeviation = 11, kDeviationToo = 12 };

constexpr int kProbability = 191;
constexpr int kNormalProbability = 192;
constexpr int kFirstPlainProbability = 4; ///< kind; those below come from an ensemble

std::string level_and_time(const GridRec &grid)
{
    char text[kDatatypeSize];
    return std::string(VAR_make_datatype(grid.time, grid.ltype, grid.level, text)) + " ";
}

std::string variable_text(int var, const char *units)
{
    char text[kVarTextSize];
    return VAR_str(text, var, units);
}

std::string member_text(const Ensemble &e)
{
    switch (e.kind) {
    case 2:
        return STR_print("Ens[-%d] ", e.member);
    case 3:
        return STR_print("Ens[+%d] ", e.member);
    case 4:
        return STR_print("Ens[c%d] ", e.member);
    case 5:
        return STR_print("Ens[w%d] ", e.member);
    default:
        return STR_print("Ens[%d] ", e.member);
    }
}

std::string record_text(const GridRec &grid)
{
    VarRec record;
    VAR_init(&record);
    record.var_number = grid.var;
    record.time = grid.time;
    record.level_kind = grid.ltype;
    record.level_value = grid.level;
    STR_copy(record.units, sizeof record.units, grid.units);
    char text[kVarLabelSize];
    return VAR_record_label(&record, text);
}

std::string threshold_text(const Ensemble &e)
{
    switch (e.probability_kind) {
    case 1:
    case 4:
        return STR_print(" below %.2f", static_cast<double>(e.low));
    case 2:
    case 5:
        return STR_print(" above %.2f", static_cast<double>(e.low));
    case 3:
    case 6:
        return STR_print(" in %.2f-%.2f", static_cast<double>(e.low), static_cast<double>(e.high));
    default:
        return {};
    }
}

std::string probability_text(const Ensemble &e, const GridRec &grid)
{
    std::string text = level_and_time(grid);
    if (e.probability_kind >= kFirstPlainProbability) {
        text += "Prob (%) ";
    } else {
        text += grid.var == kProbability ? "Ens prob (%) " : "Ens norm prob (%) ";
    }
    text += variable_text(e.variable, nullptr) + threshold_text(e);
    if (grid.units[0] != '\0') {
        text += STR_print(" %s", grid.units);
    }
    return text;
}

/// Variable, kind and threshold of a probability in one number.
int probability_code(const Ensemble &e, int var)
{
    const std::int64_t code = std::int64_t{10000000} * var + 10000 * (e.variable % 1000) +
                              1000 * e.probability_kind + VAR_pack_value(e.low);
    return static_cast<int>(code);
}

} // namespace

void set_date_text(const DateRec &date, GridRec *grid)
{
    char text[kDateTextRoom];
    if (TIME_format_valid(grid->time, &date, text) == 0) {
        STR_copy(grid->date, sizeof grid->date, text);
    }
}

void make_info(const Ensemble &e, GridRec *grid)
{
    std::string text;
    if (e.product_class == kMember) {
        text = level_and_time(*grid) + member_text(e) + variable_text(grid->var, grid->units);
    } else if (e.product_class == kMean) {
        text = level_and_time(*grid) + "Ens mean " + variable_text(grid->var, grid->units);
    } else if (e.product_class == kDeviation || e.product_class == kDeviationToo) {
        text = level_and_time(*grid) + "Ens std dev " + variable_text(grid->var, grid->units);
    } else if (grid->var != kProbability && grid->var != kNormalProbability) {
        text = record_text(*grid);
    } else {
        text = probability_text(e, *grid);
        grid->var = probability_code(e, grid->var);
    }
    STR_copy(grid->info, sizeof grid->info, text);
}

} // namespace tyr
