#pragma once

// The operations of the grid calculator as data.

#include <array>
#include <string_view>

namespace tyr {

enum class GridOp {
    copy,
    smooth,
    latitude,
    longitude,
    plot_x,
    plot_y,
    largest,
    smallest,
    add,
    sum,
    average,
    interpolate,
    subtract,
    multiply,
    divide,
    modulo,
    power,
    square_root,
    exponential,
    absolute,
    logarithm,
    logarithm10,
    sine,
    cosine,
    tangent,
    arc_sine,
    arc_cosine,
    arc_tangent,
    arc_tangent2,
    dx,
    dy,
    gradient,
    vector_difference,
    laplacian,
    convergence,
    divergence,
    deformation1,
    deformation2,
    relative_vorticity,
    absolute_vorticity,
    advection,
    dew_point,
    humidity,
    wet_bulb,
    showalter,
    chill,
    chill2,
    heat,
    theta,
    theta_e,
    virtual_temperature,
    virtual_theta,
    vapor,
    standard_height,
    specific_humidity,
    mixing_ratio,
    speed,
    direction,
    true_direction,
    east_wind,
    north_wind,
    grid_east_wind,
    grid_north_wind,
    dot,
    cross,
    geostrophic_u,
    geostrophic_v,
    q_vector_u,
    q_vector_v
};

/// The unit of a result: a text; or that of an operand, scaled where there is a factor.
struct ResultUnit {
    const char *text = "";
    int operand = -1; ///< 0 for the first
    const char *suffix = "";
    float factor = 0.0F; ///< 0: the operand's text as it is
};

/// Unit that an operand must have a dew point in; a relative humidity is left alone.
inline constexpr const char *kIfDewPoint = "K?";

inline constexpr int kMaxConverted = 4;

struct GridFunction {
    const char *name;
    GridOp op;
    int least, most; ///< operands
    ResultUnit unit;
    std::array<const char *, kMaxConverted> convert; ///< unit of each operand, null: as it is
    const char *label;                               ///< word of the label; empty: plain label
    const char *variable;                            ///< of the result; empty: as `name`
};

inline constexpr int kMaxOperands = 20;

/// The operation of a name, case counting; null for none.
const GridFunction *find_grid_function(std::string_view name);

} // namespace tyr
