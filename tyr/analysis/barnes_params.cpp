#include "tyr/analysis/barnes_params.h"

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

#include "tyr/analysis/barnes_params_private.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"

using namespace tyr;

namespace {

constexpr float kLeastConvergence = 0.01F;
constexpr int kMostPasses = 4;

struct State {
    BarnesParams params;
};

State state;

void apply_limits(BarnesParams &p)
{
    p.radius = p.radius > 0.0F ? p.radius : kBarnesRadius;
    p.passes = p.passes >= 1 && p.passes <= kMostPasses ? p.passes : 1;
    p.convergence = p.convergence >= kLeastConvergence && p.convergence < 1.0F ? p.convergence
                                                                               : kBarnesConvergence;
    p.minimum = std::max(p.minimum, 1);
}

} // namespace

BarnesParams &tyr::barnes_params()
{
    return state.params;
}

void OBJ_reset()
{
    state.params = {};
}

void OBJ_read_params()
{
    BarnesParams &p = state.params;
    for (const std::string &word : RES_list("plot_param")) {
        if (STR_ncasecmp(word.c_str(), "miss", 4) == 0) {
            const size_t number = word.find_first_of("=:");
            p.replacement = number == std::string::npos
                                ? 0.0F
                                : static_cast<float>(std::atof(word.c_str() + number + 1));
        } else if (STR_ncasecmp(word.c_str(), "gridx", 5) == 0) {
            p.refinement = word.size() > 5 ? std::atoi(word.c_str() + 5) : p.refinement;
            p.radius *= static_cast<float>(p.refinement);
        }
    }
    if (RES_get("object_param") != nullptr) {
        const std::vector<std::string> words = RES_list("object_param");
        const auto word = [&](size_t i) { return i < words.size() ? words[i] : std::string(); };
        p.filter = word(0).empty() ? p.filter : static_cast<float>(std::atof(word(0).c_str()));
        p.radius = word(1).empty() ? p.radius : static_cast<float>(std::atof(word(1).c_str()));
        p.passes = words.size() > 2 ? std::atoi(word(2).c_str()) : p.passes;
        p.convergence =
            words.size() > 3 ? static_cast<float>(std::atof(word(3).c_str())) : p.convergence;
        p.minimum = words.size() > 4 ? std::atoi(word(4).c_str()) : p.minimum;
        apply_limits(p);
    }
    p.filter = p.filter > 0.0F ? p.filter : kBarnesFilter;
}

void OBJ_set_filter(float filter)
{
    state.params.filter = filter;
}

void OBJ_set_radius(float radius)
{
    state.params.radius = radius;
}

void OBJ_set_passes(int passes)
{
    state.params.passes = passes;
}

void OBJ_set_convergence(float convergence)
{
    state.params.convergence = convergence;
}

void OBJ_set_min_stations(int count)
{
    state.params.minimum = count;
}

void OBJ_set_missing(float value)
{
    state.params.replacement = value;
}
