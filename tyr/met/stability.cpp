#include "tyr/met/stability.h"

#include <algorithm>
#include <cmath>

#include "tyr/base/angle.h"
#include "tyr/met/sounding_layer.h"
#include "tyr/met/sounding_private.h"

namespace tyr {

LiftedParcel lifted_parcel(float p, float t, float td)
{
    LiftedParcel parcel{p, t, td, kMissing, kMissing};
    if (is_missing(p) || is_missing(t) || is_missing(td)) {
        return parcel;
    }
    parcel.lcl_p = MET_lcl_pressure(t, td, p);
    if (!is_missing(parcel.lcl_p)) {
        parcel.lcl_t = MET_dry_adiabat(t, p, parcel.lcl_p);
    }
    return parcel;
}

LiftedParcel pick_parcel(const SoundLevel *sound, int n, int kind, float p, float depth)
{
    if (is_missing(p)) {
        return {};
    }
    const SoundLevel level = level_at(sound, n, kind, p);
    if (!(depth > 0.0F)) {
        return lifted_parcel(level.p, kelvin(level.t), kelvin(level.td));
    }
    float mix = kMissing;
    float theta = kMissing;
    if (is_missing(level.p) ||
        MET_layer_mix_theta(sound, n, kind, &mix, &theta, p, p - depth) == 0) {
        return {};
    }
    return lifted_parcel(level.p, MET_temp_from_theta(theta, level.p),
                         MET_dew_from_mix(mix, level.p));
}

} // namespace tyr

namespace {

using namespace tyr;

SoundLevel at(const SoundLevel *sound, int n, float p)
{
    return level_at(sound, n, kPressureKind, p);
}

template <typename... Floats> bool any_missing(Floats... values)
{
    return (... || is_missing(values));
}

bool is_within(float x, float low, float high)
{
    return x >= low && x <= high;
}

// The term of the SWEAT index for winds that veer.
double veering_term(const SoundLevel &low, const SoundLevel &high)
{
    constexpr float kLeastSpeed = 15.0F; // knots
    const float turn = high.dir - low.dir;
    if (!is_within(low.dir, 135.0F, 250.0F) || !is_within(high.dir, 210.0F, 310.0F) ||
        turn <= 0.0F || low.spd < kLeastSpeed || high.spd < kLeastSpeed) {
        return 0.0;
    }
    return 125.0 * (std::sin(turn * kRadiansPerDegree) + 0.2);
}

float static_energy(const SoundLevel &level)
{
    const float w = MET_mix_ratio(kelvin(level.td), level.p);
    if (any_missing(level.t, level.td, level.z, w)) {
        return kMissing;
    }
    return static_cast<float>(0.24 * kelvin(level.t) + 980.0 * level.z * 100.0 / 4.2e7 + 0.6 * w);
}

float moist_temp(const LiftedParcel &parcel, float p)
{
    return MET_moist_temp(MET_theta_e_sat(parcel.lcl_t, parcel.lcl_p), p);
}

// Where the dew point of a mixing ratio equals the temperature between two levels.
float crossing(const SoundLevel &low, const SoundLevel &high, float mixing_ratio)
{
    constexpr int kHalvings = 12;
    constexpr double kCloseEnough = 2e-5; // K
    float p = (low.p + high.p) / 2.0F;
    float step = (low.p - high.p) / 2.0F;
    for (int i = 0; i < kHalvings; ++i) {
        const float t = MET_log_interp(kelvin(low.t), kelvin(high.t), low.p, high.p, p);
        const double d = double{MET_dew_from_mix(mixing_ratio, p)} - t;
        if (std::fabs(d) < kCloseEnough) {
            break;
        }
        p += d > 0.0 ? step : -step;
        step /= 2.0F;
    }
    return p;
}

// The walk of the theta-e index: layers of falling theta-e, one after the other.
struct FallingLayers {
    static constexpr int kMost = 5;
    static constexpr float kHighestBottom = 700.0F; // hPa

    ThetaEIndex best{};
    int layers = 0;
    bool is_falling = false;
    float start = 0.0F;
    float start_p = 0.0F;

    explicit FallingLayers(float theta_e, float p)
        : best{kMissing, kMissing, kMissing, theta_e, p, theta_e, p}, start(theta_e), start_p(p)
    {
    }
    // @return false at the end of the walk
    bool step(float below, float p_below, float theta_e, float p)
    {
        if (theta_e < below && !is_falling) {
            if (layers == kMost) {
                return false;
            }
            ++layers;
            is_falling = true;
            start = below;
            start_p = p_below;
        }
        is_falling = theta_e < below;
        if ((is_falling ? start_p : p_below) < kHighestBottom) {
            return false;
        }
        if (is_falling && (is_missing(best.fall) || start - theta_e > best.fall)) {
            best.fall = start - theta_e;
            best.bottom = start_p;
            best.top = p;
        }
        note(theta_e, p);
        return true;
    }
    void note(float theta_e, float p)
    {
        if (theta_e > best.highest) {
            best.highest = theta_e;
            best.high_p = p;
        }
        if (theta_e < best.lowest) {
            best.lowest = theta_e;
            best.low_p = p;
        }
    }
};

} // namespace

float MET_vertical_totals(const SoundLevel *sound, int n)
{
    const float t850 = at(sound, n, 850.0F).t;
    const float t500 = at(sound, n, 500.0F).t;
    return any_missing(t850, t500) ? kMissing : t850 - t500;
}

float MET_cross_totals(const SoundLevel *sound, int n)
{
    const float td850 = at(sound, n, 850.0F).td;
    const float t500 = at(sound, n, 500.0F).t;
    return any_missing(td850, t500) ? kMissing : td850 - t500;
}

float MET_total_totals(const SoundLevel *sound, int n)
{
    const SoundLevel low = at(sound, n, 850.0F);
    const float t500 = at(sound, n, 500.0F).t;
    return any_missing(low.t, low.td, t500) ? kMissing : low.t + low.td - 2.0F * t500;
}

float MET_k_index(const SoundLevel *sound, int n)
{
    const SoundLevel low = at(sound, n, 850.0F);
    const SoundLevel middle = at(sound, n, 700.0F);
    const float t500 = at(sound, n, 500.0F).t;
    if (any_missing(low.t, low.td, middle.t, middle.td, t500)) {
        return kMissing;
    }
    return low.t + low.td - t500 - (middle.t - middle.td);
}

float MET_sweat(const SoundLevel *sound, int n)
{
    const SoundLevel low = at(sound, n, 850.0F);
    const SoundLevel high = at(sound, n, 500.0F);
    if (any_missing(low.t, low.td, high.t, low.dir, low.spd, high.dir, high.spd)) {
        return kMissing;
    }
    const double totals = double{low.t} + low.td - 2.0 * high.t;
    return static_cast<float>(12.0 * std::max(low.td, 0.0F) + 20.0 * std::max(totals - 49.0, 0.0) +
                              2.0 * low.spd + high.spd + veering_term(low, high));
}

float MET_energy_index(const SoundLevel *sound, int n)
{
    const float low = static_energy(at(sound, n, 850.0F));
    const float high = static_energy(at(sound, n, 500.0F));
    return any_missing(low, high) ? kMissing : high - low;
}

float MET_lifted_index(const SoundLevel *sound, int n, int kind, float p, float depth, float top)
{
    if (!begins_low(sound, n)) {
        return kMissing;
    }
    const LiftedParcel parcel = pick_parcel(sound, n, kind, p, depth);
    const float t = level_at(sound, n, kind, top).t;
    if (!parcel.has_lcl() || is_missing(t)) {
        return kMissing;
    }
    const float lifted = top > parcel.lcl_p
                             ? MET_temp_from_theta(MET_theta(parcel.t, parcel.p), top)
                             : moist_temp(parcel, top);
    return any_missing(lifted) ? kMissing : t - celsius(lifted);
}

float MET_cap_strength(const SoundLevel *sound, int n, int kind, float p, float depth)
{
    if (!begins_low(sound, n)) {
        return kMissing;
    }
    const LiftedParcel parcel = pick_parcel(sound, n, kind, p, depth);
    if (!parcel.has_lcl()) {
        return kMissing;
    }
    int i = 0;
    const float t = level_at(sound, n, kind, parcel.lcl_p, &i).t;
    if (is_missing(t)) {
        return kMissing;
    }
    float cap = t - celsius(parcel.lcl_t);
    for (; i < n && sound[i].p > kHighestStart && !is_missing(sound[i].t); ++i) {
        cap = std::max(cap, sound[i].t - celsius(moist_temp(parcel, sound[i].p)));
    }
    return cap;
}

float MET_ccl(const SoundLevel *sound, int n, int kind, float *mixing_ratio, float p, float depth)
{
    *mixing_ratio = kMissing;
    if (!begins_low(sound, n)) {
        return kMissing;
    }
    if (n == 1) {
        return 0.0F;
    }
    if (depth > 0.0F && !is_missing(p)) {
        *mixing_ratio = MET_layer_mean("mrat", sound, n, kind, p, p - depth);
    } else if (const SoundLevel level = level_at(sound, n, kind, p); !is_missing(level.td)) {
        *mixing_ratio = MET_mix_ratio(kelvin(level.td), level.p);
    }
    if (is_missing(*mixing_ratio)) {
        return kMissing;
    }
    const SoundLevel *below = nullptr;
    for (const SoundLevel *s = sound; s != sound + n; ++s) {
        if (is_missing(s->t) || !(s->p > 0.0F)) {
            continue;
        }
        if (MET_dew_from_mix(*mixing_ratio, s->p) > kelvin(s->t)) {
            return below == nullptr ? s->p : crossing(*below, *s, *mixing_ratio);
        }
        below = s;
    }
    return -1.0F;
}

int MET_theta_e_index(const SoundLevel *sound, int n, ThetaEIndex *result)
{
    *result = {kMissing, kMissing, kMissing, kMissing, kMissing, kMissing, kMissing};
    const SoundLevel *end = sound + std::max(n, 0);
    const SoundLevel *s = std::find_if(sound, end, has_air);
    if (s == end || s->p < FallingLayers::kHighestBottom) {
        return -1;
    }
    const auto theta_e = [](const SoundLevel &level) {
        return MET_theta_e(kelvin(level.t), kelvin(level.td), level.p);
    };
    float below = theta_e(*s);
    float p_below = s->p;
    if (is_missing(below)) {
        return -1;
    }
    FallingLayers walk(below, p_below);
    for (++s; s != end; ++s) {
        const float now = has_air(*s) ? theta_e(*s) : kMissing;
        if (is_missing(now)) {
            continue;
        }
        if (!walk.step(below, p_below, now, s->p)) {
            break;
        }
        below = now;
        p_below = s->p;
    }
    *result = walk.best;
    return 0;
}
