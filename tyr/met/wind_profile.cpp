#include "tyr/met/wind_profile.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "tyr/base/angle.h"
#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/met/constants.h"
#include "tyr/met/level_kind.h"
#include "tyr/met/wind.h"

namespace {

constexpr float kTopStart = 5000.0F;  // a sounding that begins higher has no low winds
constexpr float kMargin = 10.0F;      // m, so that the last step reaches the top
constexpr float kDeepest = 100000.0F; // m, deeper than any layer of the atmosphere

struct Wind {
    float u = kMissing;
    float v = kMissing;

    bool is_there() const { return !is_missing(u) && !is_missing(v); }
};

Wind wind_of(float direction, float speed, double factor)
{
    Wind wind;
    if (!is_missing(speed)) {
        MET_wind_uv(&wind.u, &wind.v, direction, static_cast<float>(speed * factor));
    }
    return wind;
}

Wind wind_of(const SoundLevel &level)
{
    return wind_of(level.dir, level.spd, kKnot);
}

// A wind seen from a moving storm.
struct Relative : Wind {
    float direction = kMissing;
    float speed = kMissing;
};

Relative relative_to(const Wind &storm, const Wind &wind)
{
    Relative seen;
    if (wind.is_there() && storm.is_there()) {
        seen.u = wind.u - storm.u;
        seen.v = wind.v - storm.v;
        MET_wind_dirspd(&seen.direction, &seen.speed, seen.u, seen.v);
    }
    return seen;
}

// A difference of directions within -180 to 180.
float turning(float from, float to)
{
    if (is_missing(from) || is_missing(to)) {
        return kMissing;
    }
    const float difference = to - from;
    if (difference > 180.0F) {
        return difference - 360.0F;
    }
    return difference < -180.0F ? difference + 360.0F : difference;
}

bool is_pressure_kind(int kind)
{
    switch (kind) {
    case kLevelSurface:
    case kLevelPressure:
    case kLevelPressureLayer:
    case kLevelSea:
    case kLevelPressureAg:
    case kLevelPressureAgLayer:
        return true;
    default:
        return false;
    }
}

bool is_upside_down(int kind, float bottom, float top)
{
    if (is_missing(top)) {
        return false;
    }
    return is_pressure_kind(kind) ? top > bottom : bottom > top;
}

// One end of a step of the mean: a level, and its index in the sounding, or kLayerEnd.
constexpr int kLayerEnd = -1;
struct End {
    int index;
    SoundLevel level;
};

void trace_step(const End &lower, const End &upper, const Wind &below, const Wind &above, double su,
                double sv)
{
    if (MSG_test(kMsgDebugC) == 0) {
        return;
    }
    const std::array<double, 8> x{lower.level.p, upper.level.p, below.u, below.v,
                                  above.u,       above.v,       su,      sv};
    if (lower.index == kLayerEnd) {
        MSG_out(kMsgDebugC, "LB,%2d  %5.1f,%5.1f %5.1f,%5.1f %5.1f,%5.1f %5.1f,%5.1f\n",
                upper.index, x[0], x[1], x[2], x[3], x[4], x[5], x[6], x[7]);
    } else if (upper.index == kLayerEnd) {
        MSG_out(kMsgDebugC, "%2d,LT  %5.1f,%5.1f %5.1f,%5.1f %5.1f,%5.1f %5.1f,%5.1f\n",
                lower.index, x[0], x[1], x[2], x[3], x[4], x[5], x[6], x[7]);
    } else {
        MSG_out(kMsgDebugC, "%2d,%2d  %5.1f,%5.1f %5.1f,%5.1f %5.1f,%5.1f %5.1f,%5.1f\n",
                lower.index, upper.index, x[0], x[1], x[2], x[3], x[4], x[5], x[6], x[7]);
    }
}

// Sums of a mean that is weighted by the logarithm of pressure.
struct Mean {
    double u = 0.0;
    double v = 0.0;
    double speed = 0.0;
    double weight = 0.0;

    void add(const End &lower, const End &upper)
    {
        const Wind below = wind_of(lower.level.dir, lower.level.spd, 1.0);
        const Wind above = wind_of(upper.level.dir, upper.level.spd, 1.0);
        const bool has_weight = lower.level.p > 0.0F && upper.level.p > 0.0F;
        if (!below.is_there() || !above.is_there() || !has_weight) {
            return;
        }
        const double w = std::log(double{lower.level.p} / upper.level.p);
        u += w * (double{below.u} + above.u);
        v += w * (double{below.v} + above.v);
        speed += w * (double{lower.level.spd} + upper.level.spd);
        weight += w;
        trace_step(lower, upper, below, above, u, v);
    }
};

// The ends of the steps from bottom to top: the layer's own ends, and the levels with a wind
// between them. Level ib is at or above the top, so it is no step's end.
std::vector<End> step_ends(const SoundLevel *sound, const End &bottom, int ia, const End &top,
                           int ib)
{
    std::vector<End> ends;
    if (bottom.level.p != sound[ia].p) {
        ends.push_back(bottom);
    }
    for (int i = ia; i < ib; ++i) {
        if (!is_missing(sound[i].dir)) {
            ends.push_back({i, sound[i]});
        }
    }
    ends.push_back(top);
    return ends;
}

// Shear along the hodograph, summed where the wind veers and where it backs.
struct Shear {
    double u = 0.0;
    double v = 0.0;

    void add(const Wind &lower, const Wind &upper)
    {
        u += double{upper.u} - lower.u;
        v += double{upper.v} - lower.v;
    }
    float over(double depth) const { return static_cast<float>(std::hypot(u, v) / depth); }
};

// Top of the walk in heights; a negative status ends the routine, 0 says that data end below.
struct Walk {
    float from;
    float to;
    int status;

    int steps(float step) const { return static_cast<int>((to - from) / step); }
};

Walk walk_of(int kind, const SoundLevel &low, const SoundLevel &high, float bottom, float top)
{
    const bool keeps_depth = kind == kLevelHeight && !is_missing(top);
    if (is_missing(low.z) || (is_missing(high.z) && !keeps_depth)) {
        return {kMissing, kMissing, -1};
    }
    const float end = is_missing(high.z) ? low.z + top - bottom : high.z + kMargin;
    return {low.z, std::clamp(end, low.z, low.z + kDeepest), is_missing(high.z) ? 0 : 1};
}

// Sums of the storm-relative winds, from step to step.
struct Helicity {
    static constexpr float kStep = 100.0F; // m

    Relative previous;
    double positive = 0.0;
    double negative = 0.0;
    double vorticity = 0.0;
    double streamwise = 0.0;
    double depth = 0.0;
    int steps = 0;

    void add(const Relative &next, float z)
    {
        ++steps;
        if (!previous.is_there() || !next.is_there()) {
            return;
        }
        const double term = double{previous.v} * next.u - double{next.v} * previous.u;
        (term > 0.0 ? positive : negative) += term;
        const double angle =
            turning(previous.direction, next.direction) * kRadiansPerDegree / kStep;
        const double along = (double{next.speed} + previous.speed) * angle / 2.0;
        const double across = (double{next.speed} - previous.speed) / kStep;
        streamwise += along;
        vorticity += std::hypot(along, across);
        MSG_out(kMsgDebugC,
                "%5.1f %5.1f-%5.1f  %5.1f,%5.1f %5.1f,%5.1f = %5.1f,%5.1f %5.1f,%5.1f\n", depth,
                z - kStep, double{z}, double{previous.u}, double{previous.v}, double{next.u},
                double{next.v}, term, angle, along, across);
        depth += kStep;
        previous = next;
    }

    void results(float *result) const
    {
        const auto put = [result](int place, double x) { result[place] = static_cast<float>(x); };
        put(kHelPositive, positive);
        put(kHelNegative, negative);
        put(kHelTotal, positive + negative);
        put(kHelMean, depth > 0.0 ? (positive + negative) / depth : 0.0);
        put(kHelRelative, vorticity > 0.0 ? streamwise / vorticity : 0.0);
        put(kHelVorticity, steps > 0 ? vorticity / steps : 0.0);
        put(kHelStreamwise, steps > 0 ? streamwise / steps : 0.0);
    }
};

} // namespace

int MET_mean_wind(const SoundLevel *sound, int count, int kind, float *result, float bottom,
                  float top)
{
    result[0] = result[1] = kMissing;
    if (is_upside_down(kind, bottom, top) || count <= 0) {
        return -1;
    }
    if (count == 1) {
        result[0] = sound->dir;
        result[1] = sound->spd;
        return 0;
    }
    End low{kLayerEnd, {}};
    End high{kLayerEnd, {}};
    const int ia = MET_sound_at(sound, count, kind, &low.level, bottom);
    if (ia < 0) {
        return -1;
    }
    MET_print_level(kMsgDebugC, 0, ia, &low.level);
    if (is_missing(top) || top == bottom) {
        result[0] = low.level.dir;
        result[1] = low.level.spd;
        return 1;
    }
    const int ib = MET_sound_at(sound, count, kind, &high.level, top);
    MET_print_level(kMsgDebugC, 0, ib, &high.level);
    MSG_out(kMsgDebugC, "%2d-%2d  %5.1f %5.1f  %5.1f %5.1f\n", ia, ib, double{low.level.dir},
            double{low.level.spd}, double{high.level.dir}, double{high.level.spd});
    Mean mean;
    const std::vector<End> ends = step_ends(sound, low, std::min(ia, count - 1), high, ib);
    for (size_t i = 1; i < ends.size(); ++i) {
        mean.add(ends[i - 1], ends[i]);
    }
    MSG_out(kMsgDebugC, "%f %f\n", mean.weight, mean.speed);
    if (mean.weight == 0.0) {
        return 0;
    }
    float vector_speed = 0.0F;
    MET_wind_dirspd(result, &vector_speed, static_cast<float>(mean.u / (2.0 * mean.weight)),
                    static_cast<float>(mean.v / (2.0 * mean.weight)));
    result[1] = static_cast<float>(mean.speed / (2.0 * mean.weight));
    return is_missing(high.level.dir) ? 0 : 1;
}

int MET_shear(const SoundLevel *sound, int count, int kind, const float *storm, float *result,
              float bottom, float top)
{
    constexpr float kStep = 500.0F; // m
    result[0] = result[1] = kMissing;
    if (count <= 0 || sound->z > kTopStart) {
        return 0;
    }
    const Wind motion = storm != nullptr ? wind_of(storm[0], storm[1], kKnot) : Wind{0.0F, 0.0F};
    MSG_out(kMsgDebugC, "%f,%f\n", double{motion.u}, double{motion.v});
    SoundLevel previous;
    SoundLevel high;
    MET_sound_at(sound, count, kind, &previous, bottom);
    const bool is_above = MET_sound_at(sound, count, kind, &high, top) == count;
    const Walk walk = walk_of(kind, previous, high, bottom, top);
    if (walk.status < 0) {
        return walk.status;
    }
    Shear veering;
    Shear backing;
    double depth = 0.0;
    for (int i = 1; i <= walk.steps(kStep); ++i) {
        const float z = walk.from + kStep * static_cast<float>(i);
        SoundLevel next;
        MET_sound_at(sound, count, kLevelHeight, &next, z);
        const Wind lower = wind_of(previous);
        const Wind upper = wind_of(next);
        if (lower.is_there() && upper.is_there()) {
            const float d = next.dir - previous.dir;
            const bool veers = (d >= 0.0F && d <= 180.0F) || d < -180.0F;
            (veers ? veering : backing).add(lower, upper);
            depth += kStep;
            MSG_out(kMsgDebugC, "%5.1f %5.1f-%5.1f  %5.1f,%5.1f %5.1f,%5.1f = %5.1f %5.1f\n", depth,
                    double{z - kStep}, double{z}, double{lower.u}, double{lower.v}, double{upper.u},
                    double{upper.v}, double{upper.u} - lower.u, double{upper.v} - lower.v);
        }
        previous = next;
    }
    if (depth > 0.0) {
        result[0] = veering.over(depth);
        result[1] = backing.over(depth);
    }
    return is_above && is_missing(high.dir) ? 0 : walk.status;
}

int MET_helicity(const SoundLevel *sound, int count, int kind, const float *storm, float *result,
                 float bottom, float top)
{
    std::fill(result, result + kHelicityResults, kMissing);
    if (count < 2 || sound->z > kTopStart || storm == nullptr || is_missing(storm[0])) {
        return 0;
    }
    const Wind motion = wind_of(storm[0], storm[1], kKnot);
    SoundLevel low;
    SoundLevel high;
    MET_sound_at(sound, count, kind, &low, bottom);
    int status = 1;
    if (MET_sound_at(sound, count, kind, &high, top) == count && is_missing(high.dir)) {
        status = 0;
        MET_sound_at(sound, count, kLevelHeight, &high, sound[count - 1].z);
    }
    Helicity sums;
    sums.previous = relative_to(motion, wind_of(low));
    result[kHelTurning] =
        turning(sums.previous.direction, relative_to(motion, wind_of(high)).direction);
    const Walk walk = walk_of(kind, low, high, bottom, top);
    if (walk.status < 0) {
        return walk.status;
    }
    for (int i = 1; i <= walk.steps(Helicity::kStep); ++i) {
        const float z = walk.from + Helicity::kStep * static_cast<float>(i);
        SoundLevel next;
        MET_sound_at(sound, count, kLevelHeight, &next, z);
        sums.add(relative_to(motion, wind_of(next)), z);
    }
    MSG_out(kMsgDebugC, "%5.1f %5.1f-%5.1f\n", sums.depth, double{walk.from}, double{walk.to});
    sums.results(result);
    return std::min(status, walk.status);
}
