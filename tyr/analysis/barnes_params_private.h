#pragma once

#include "tyr/base/missing.h"

namespace tyr {

inline constexpr float kBarnesFilter = 1.0F;
inline constexpr float kBarnesRadius = 1000.0F;
inline constexpr float kBarnesConvergence = 0.2F;

/// What an analysis goes by; barnes.h tells each.
struct BarnesParams {
    float filter = kBarnesFilter;
    float radius = kBarnesRadius;
    int passes = 1;
    float convergence = kBarnesConvergence;
    float replacement = kMissing;
    int minimum = 1;
    int refinement = 1;
};

/// Those of this process.
BarnesParams &barnes_params();

} // namespace tyr
