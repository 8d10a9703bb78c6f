#include "programs/tyrgrid/inventory.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <string>

#include "tyr/base/missing.h"
#include "tyr/base/res.h"
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
    return name[0] != '\0' ? name.data() : std::to_string(var);
}

std::string range_text(const GridRec &grid)
{
    float high = kMissing;
    float low = kMissing;
    GRD_max_min(&grid, &high, &low);
    return is_missing(high)
               ? "all missing"
               : STR_print("%.6g to %.6g", static_cast<double>(low), static_cast<double>(high));
}

bool wants_values()
{
    const std::vector<std::string> words = RES_list("plot_param");
    return std::find(words.begin(), words.end(), "heads") == words.end();
}

} // namespace

int list_grids(Sources *sources)
{
    const bool has_values = wants_values();
    std::printf("%5s  %-22s %-10s %-10s %-12s %11s  %s\n", "no", "level", "time", "variable",
                "units", "size", "range");
    int count = 0;
    for (size_t i = 0; i < sources->grids.size(); ++i) {
        SourceGrid &source = sources->grids[i];
        GridRec grid = source.head();
        GridRec whole;
        GRD_init(&whole);
        const bool is_read = has_values && sources->take(&source, &whole);
        if (is_read) {
            grid = whole;
        }
        std::printf("%5zu  %-22s %-10s %-10s %-12s %11s  %s\n", sources->number(i),
                    level_text(grid).c_str(), time_text(grid.time).c_str(),
                    variable_text(grid.var).c_str(), grid.units[0] != '\0' ? grid.units : "-",
                    STR_print("%d x %d", grid.domain.nx, grid.domain.ny).c_str(),
                    is_read      ? range_text(grid).c_str()
                    : has_values ? "can't be read"
                                 : "-");
        count += is_read || !has_values ? 1 : 0;
        GRD_free(&whole);
    }
    return count;
}

} // namespace tyr
