#include "tyr/met/storm.h"

#include <cmath>

#include "tyr/met/sounding_private.h"
#include "tyr/met/wind.h"
#include "tyr/met/wind_profile.h"

namespace {

using namespace tyr;

constexpr int kHeightKind = 103;
constexpr double kKnots = 0.5144; // m/s in a knot

struct Wind {
    float u = kMissing, v = kMissing; // m/s

    bool is_there() const { return !is_missing(u) && !is_missing(v); }
};

Wind mean_to(const SoundLevel *winds, int m, float surface, float depth)
{
    Wind wind;
    float mean[2] = {kMissing, kMissing};
    if (is_missing(surface)) {
        return wind;
    }
    MET_mean_wind(winds, m, kHeightKind, mean, surface, surface + depth);
    if (!is_missing(mean[0]) && !is_missing(mean[1])) {
        MET_wind_uv(&wind.u, &wind.v, mean[0], static_cast<float>(mean[1] * kKnots));
    }
    return wind;
}

} // namespace

int MET_bulk_richardson(const SoundLevel *winds, int m, int kind, float *number, float *shear,
                        float p, float cape)
{
    constexpr float kLowDepth = 500.0F; // m
    constexpr float kHighDepth = 6000.0F;
    *number = *shear = kMissing;
    const float surface = level_at(winds, m, kind, p).z;
    const Wind low = mean_to(winds, m, surface, kLowDepth);
    const Wind high = mean_to(winds, m, surface, kHighDepth);
    if (!low.is_there() && !high.is_there()) {
        return -1;
    }
    if (!low.is_there() || !high.is_there()) {
        return 0;
    }
    const double s = std::hypot(double{high.u} - low.u, double{high.v} - low.v);
    *shear = static_cast<float>(s);
    if (!is_missing(cape) && cape >= 0.0F && *shear > 0.0F) {
        *number = static_cast<float>(cape / (0.5 * s * s));
    }
    return 0;
}

float MET_energy_helicity(const SoundLevel *winds, int m, int kind, const float *storm, float p,
                          float cape)
{
    constexpr float kDepth = 2000.0F;  // m
    constexpr double kUnit = 160000.0; // (J/kg)^2
    const float surface = level_at(winds, m, kind, p).z;
    if (is_missing(surface) || is_missing(cape)) {
        return kMissing;
    }
    float helicity[kHelicityResults];
    MET_helicity(winds, m, kHeightKind, storm, helicity, surface, surface + kDepth);
    if (is_missing(helicity[kHelPositive])) {
        return kMissing;
    }
    return static_cast<float>(double{helicity[kHelPositive]} * cape / kUnit);
}
