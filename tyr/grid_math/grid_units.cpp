#include "tyr/grid_math/grid_units.h"

#include <array>
#include <cmath>
#include <string>

#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/str.h"
#include "tyr/grid_math/grid_places.h"
#include "tyr/grid_math/row_bands.h"
#include "tyr/var/catalogue.h"
#include "tyr/var/label.h"
#include "tyr/var/units.h"

using namespace tyr;

namespace {

constexpr size_t kSlice = 4096; // points that one step of a band takes

std::string level_text(const GridRec &grid)
{
    std::array<char, kDatatypeSize> text{};
    VAR_make_datatype(0, grid.ltype, grid.level, text.data());
    return text[0] == '\0' ? "" : std::string(text.data()) + " ";
}

/// Gives each point that isn't Missing the value change(point).
template <class Change> void change_points(GridRec *grid, Change change)
{
    const size_t count = grid->values == nullptr ? 0 : tyr::point_count(grid->domain);
    const int slices = static_cast<int>((count + kSlice - 1) / kSlice);
    float *values = grid->values;
    tyr::over_rows(slices, count, tyr::kCheapPoints, [=](int first, int last) {
        const size_t end = std::min(count, static_cast<size_t>(last) * kSlice);
        for (size_t i = static_cast<size_t>(first) * kSlice; i < end; ++i) {
            const float value = change(values[i]);
            const bool is_out = (values[i] == kMissing) | !(std::fabs(value) <= tyr::kLargest);
            values[i] = is_out ? kMissing : value;
        }
    });
}

} // namespace

void GRD_make_label(GridRec *grid)
{
    std::array<char, kVarTextSize> name{};
    VAR_str(name.data(), grid->var, grid->units);
    STR_copy(grid->info, sizeof grid->info, level_text(*grid) + name.data());
}

void GRD_label(GridRec *grid, const GridRec *source, const char *word)
{
    std::array<char, kVarTextSize> name{};
    VAR_str(name.data(), source->var, nullptr);
    std::string label = level_text(*grid) + name.data() + " " + word;
    if (grid->units[0] != '\0')
        label += std::string(" (") + grid->units + ")";
    STR_copy(grid->info, sizeof grid->info, label);
}

int GRD_units(GridRec *grid, const char *unit)
{
    if (grid->values == nullptr)
        return -1;
    MSG_out(kMsgDebug, "GRD_units: %s -> %s\n", grid->units, unit);
    const tyr::UnitConversion conversion = tyr::find_unit_conversion(grid->units, unit);
    if (!conversion.is_identity())
        change_points(grid, [conversion](float value) { return conversion.apply(value); });
    if (unit[0] != '\0') {
        STR_copy(grid->units, sizeof grid->units, unit);
        GRD_make_label(grid);
    }
    return 0;
}

void GRD_scale(GridRec *grid, float factor)
{
    change_points(grid, [factor](float value) { return value * factor; });
}

void GRD_offset(GridRec *grid, float term)
{
    change_points(grid, [term](float value) { return value + term; });
}
