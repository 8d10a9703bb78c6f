#include "tyr/grid_files/grid_line.h"

#include <array>

#include "tyr/base/missing.h"
#include "tyr/base/str.h"
#include "tyr/grid_math/sample.h"
#include "tyr/var/catalogue.h"
#include "tyr/var/label.h"
#include "tyr/var/time_range.h"

namespace tyr {

namespace {

/// A level as an expression names it where it is a common one; else in words.
std::string level_text(const GridRec &grid)
{
    std::array<char, kDatatypeSize> text{};
    VAR_make_datatype(0, grid.ltype, grid.level, text.data());
    return text[0] != '\0' ? text.data() : STR_print("%d:%d", grid.ltype, grid.level);
}

/// "12", or a range as an expression names it: "12-6acc".
std::string time_text(int time)
{
    constexpr std::array<const char *, 8> kWords = {"",    "",    "rng", "avg",
                                                    "acc", "dif", "max", "min"};
    if (time < kRangeUnit) {
        return std::to_string(time);
    }
    const auto code = static_cast<size_t>(time / kRangeUnit);
    const int first = time % kRangeUnit / 1000;
    const int last = time % 1000;
    return code < kWords.size() ? STR_print("%d-%d%s", last, last - first, kWords[code])
                                : std::to_string(time);
}

std::string variable_text(int var)
{
    std::array<char, kVarNameTextSize> name{};
    VAR_abbr(name.data(), var);
    return name[0] != '\0' ? name.data() : var == 0 ? "-" : std::to_string(var);
}

} // namespace

std::string grid_line_head()
{
    return STR_print("%5s  %-22s %-10s %-10s %-12s %11s  %s", "no", "level", "time", "variable",
                     "units", "size", "range");
}

std::string grid_line(size_t number, const GridRec &grid, const std::string &range)
{
    const std::string size = STR_print("%d x %d", grid.domain.nx, grid.domain.ny);
    return STR_print("%5zu  %-22s %-10s %-10s %-12s %11s  %s", number, level_text(grid).c_str(),
                     time_text(grid.time).c_str(), variable_text(grid.var).c_str(),
                     grid.units[0] != '\0' ? grid.units : "-", size.c_str(), range.c_str());
}

std::string grid_range(const GridRec &grid)
{
    float high = kMissing;
    float low = kMissing;
    GRD_max_min(&grid, &high, &low);
    return is_missing(high)
               ? "all missing"
               : STR_print("%.6g to %.6g", static_cast<double>(low), static_cast<double>(high));
}

} // namespace tyr
