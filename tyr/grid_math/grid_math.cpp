#include "tyr/grid_math/grid_math.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "tyr/base/msg.h"
#include "tyr/base/str.h"
#include "tyr/grid_math/grid_operands.h"
#include "tyr/grid_math/grid_places.h"
#include "tyr/grid_math/grid_units.h"
#include "tyr/var/level.h"
#include "tyr/var/type_words.h"
#include "tyr/var/units.h"

using namespace tyr;

namespace {

using tyr::GridFunction;
using tyr::GridOp;
using tyr::MathCall;

constexpr unsigned kWarn = 0x00000040U;
constexpr size_t kMaxVariableWord = 23;
constexpr int kMaxShown = 80; // characters of a name in a message

struct MathName {
    std::string operation;
    std::string variable;
};

MathName split_name(const char *name)
{
    const std::string_view text(name);
    const size_t dash = text.find('-');
    if (dash == std::string_view::npos)
        return {std::string(text), ""};
    std::string_view word = text.substr(dash + 1);
    word = word.substr(0, word.find(' '));
    return {std::string(text.substr(0, dash)), std::string(word.substr(0, kMaxVariableWord))};
}

std::string unit_text(const GridFunction &function, const GridRec *const *operands)
{
    const tyr::ResultUnit &unit = function.unit;
    if (unit.operand < 0)
        return unit.text;
    const GridRec *grid = operands[unit.operand];
    const char *own = tyr::is_grid_operand(grid) ? grid->units : "";
    if (unit.factor == 0.0F)
        return own;
    std::array<char, kUnitTextRoom> text{};
    UNIT_scale_text(own, unit.suffix, text.data(), unit.factor);
    return text.data();
}

/// Operands that stand for something else where the operation's row has one unit for a place.
bool is_pressure_place(const MathCall &call, int i)
{
    const GridOp op = call.function->op;
    if (op != GridOp::specific_humidity && op != GridOp::mixing_ratio)
        return false;
    return i == (call.is_variable(0, "dewp") ? 1 : 2);
}

void convert_operands(const MathCall &call, GridRec *const *operands)
{
    for (int i = 0; i < call.count && i < tyr::kMaxConverted; ++i) {
        const char *unit = call.function->convert[static_cast<size_t>(i)];
        if (is_pressure_place(call, i))
            unit = "mb";
        if (unit == nullptr || !tyr::is_grid_operand(operands[i]))
            continue;
        if (unit == tyr::kIfDewPoint) {
            if (!call.is_variable(i, "dewp"))
                continue;
            unit = "K";
        }
        GRD_units(operands[i], unit);
    }
}

void set_label(const MathCall &call, bool has_variable)
{
    const GridFunction &function = *call.function;
    if (function.label[0] == '\0' || has_variable)
        return;
    const bool is_third =
        function.op == GridOp::advection ||
        ((function.op == GridOp::convergence || function.op == GridOp::divergence) &&
         call.count > 2);
    const GridRec *source = call.grids[is_third ? 2 : 0];
    if (tyr::is_grid_operand(source))
        GRD_label(call.out, source, function.label);
}

bool run(const MathCall &call)
{
    const GridOp op = call.function->op;
    if (op == GridOp::smooth)
        return tyr::run_smooth(call);
    if (op >= GridOp::latitude && op <= GridOp::plot_y)
        return tyr::run_places(call);
    if ((op >= GridOp::dx && op <= GridOp::advection) || op >= GridOp::geostrophic_u)
        return tyr::run_flow(call);
    if (op >= GridOp::dew_point && op <= GridOp::mixing_ratio)
        return tyr::run_thermo(call);
    if (op >= GridOp::speed)
        return tyr::run_wind(call);
    return tyr::run_arithmetic(call);
}

/// Results that share their values with an operand are made apart, so that nothing is changed
/// before it is read.
class ApartResults {
  public:
    ApartResults(GridRec **grids, int results, int count) : grids_(grids), results_(results)
    {
        for (int i = 0; i < results; ++i) {
            targets_[static_cast<size_t>(i)] = grids[i];
            for (int k = results; k < results + count; ++k)
                if (grids[i] != nullptr && grids[k] != nullptr && grids[i]->values != nullptr &&
                    grids[k]->values == grids[i]->values)
                    set_apart(i);
        }
    }
    ~ApartResults()
    {
        for (int i = 0; i < results_; ++i)
            grids_[i] = targets_[static_cast<size_t>(i)];
    }
    ApartResults(const ApartResults &) = delete;
    ApartResults &operator=(const ApartResults &) = delete;

    /// Hands what was made over to the caller's records, which keep their arrays.
    void hand_over()
    {
        for (int i = 0; i < results_; ++i) {
            GridRec *target = targets_[static_cast<size_t>(i)];
            if (grids_[i] == target)
                continue;
            float *values = target->values;
            *target = *grids_[i];
            target->values = values;
            std::copy_n(grids_[i]->values, tyr::point_count(target->domain), values);
        }
    }

  private:
    void set_apart(int i)
    {
        GridRec &own = own_[static_cast<size_t>(i)].rec;
        own = *grids_[i];
        own.values = nullptr;
        grids_[i] = &own;
    }

    GridRec **grids_;
    int results_;
    std::array<GridRec *, 2> targets_{};
    std::array<tyr::OwnGrid, 2> own_;
};

bool calculate(const GridFunction &function, const std::string &variable, GridRec **grids,
               const float *constants)
{
    const int results = GRD_is_vector_func(function.name) == 1 ? 2 : 1;
    const int count = function.least == function.most
                          ? function.least
                          : std::min(GRD_count_operands(grids, constants), function.most);
    if (count < function.least)
        return false;
    ApartResults apart(grids, results, count);
    const char *own_name = function.variable[0] == '\0' ? function.name : function.variable;
    const std::string unit = unit_text(function, grids + results);
    if (GRD_check(count, grids, constants, own_name, variable.c_str(), unit.c_str()) == 0)
        return false;
    const MathCall call{
        &function,           grids[0], results == 2 ? grids[1] : nullptr, grids + results,
        constants + results, count};
    convert_operands(call, grids + results);
    set_label(call, !variable.empty());
    if (!run(call))
        return false;
    apart.hand_over();
    return true;
}

} // namespace

int GRD_math(const char *name, GridRec **grids, float *constants)
{
    const MathName parts = split_name(name);
    const int type = GRD_func_type(parts.operation.c_str());
    if (type == kTypeWind || type == kTypeVector || type == kTypeStream)
        return 1;
    const GridFunction *function = tyr::find_grid_function(parts.operation);
    if (function == nullptr) {
        MSG_out(kWarn, "GRD_math: Math function not available: %.*s\n", kMaxShown,
                parts.operation.c_str());
        return 0;
    }
    if (!calculate(*function, parts.variable, grids, constants)) {
        MSG_out(kWarn, "GRD_math: Invalid grids\n");
        return 0;
    }
    return 1;
}
