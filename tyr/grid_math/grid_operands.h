#pragma once

// The operands of a grid operation: grids, or constants in their place.

#include <cstddef>

#include "tyr/base/missing.h"
#include "tyr/grid/grid.h"
#include "tyr/grid_math/grid_function.h"

/// How many leading entries behind entry 0, up to 20, are a grid with values or a constant other
/// than Missing. Both arrays have at least 21 entries.
int GRD_count_operands(GridRec *const *grids, const float *constants);

/// Operand i at a point: the grid's value, or the constant. The point must lie in the grid.
float GRD_operand(int i, GridRec *const *grids, const float *constants, size_t point);

/// The check that every operation runs first, and the result's layout, memory, variable, unit and
/// label.
///
/// A grid with a source other than 0 and with values is a grid operand, anything else a constant,
/// which must not be Missing. A result without values takes its layout from the first operand where
/// it has none of its own, and is allocated. All grids must have the result's sides.
///
/// @param own_name  of the operation; `grad` and `vdiff` have two results, entries 0 and 1
/// @param variable  abbreviation of the result's variable; empty: own_name
/// @param unit      the results' unit text; empty: as it was
/// @return 1; 0 where the operands don't do, or there is no memory
int GRD_check(int count, GridRec **grids, const float *constants, const char *own_name,
              const char *variable, const char *unit);

namespace tyr {

/// A grid's values, or one number everywhere.
struct Operand {
    const float *values = nullptr;
    float constant = kMissing;
};

/// True of a grid that can be an operand.
bool is_grid_operand(const GridRec *grid);

/// Number of the variable with an abbreviation; 0 for none.
int variable_number(const char *abbreviation);

/// One call of an operation whose operands have been checked and converted.
struct MathCall {
    const GridFunction *function;
    GridRec *out;
    GridRec *second;        ///< second result, or null
    GridRec *const *grids;  ///< the first operand
    const float *constants; ///< of the first operand
    int count;              ///< of operands

    Operand operand(int i) const;
    /// True of a grid with this variable.
    bool is_variable(int i, const char *abbreviation) const;
};

/// A grid of its own, freed with it.
struct OwnGrid {
    GridRec rec{};
    OwnGrid() { GRD_init(&rec); }
    ~OwnGrid() { GRD_free(&rec); }
    OwnGrid(const OwnGrid &) = delete;
    OwnGrid &operator=(const OwnGrid &) = delete;
};

/// The families of operations. All return false where the operands don't do.
bool run_arithmetic(const MathCall &call);
bool run_places(const MathCall &call);
bool run_smooth(const MathCall &call);
bool run_flow(const MathCall &call);
bool run_thermo(const MathCall &call);
bool run_wind(const MathCall &call);

} // namespace tyr
