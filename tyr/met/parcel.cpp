#include "tyr/met/parcel.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "tyr/base/msg.h"
#include "tyr/met/sounding_private.h"

namespace {

using namespace tyr;

constexpr double kGravity = 9.8; // m/s^2
constexpr float kStep = 10.0F;   // hPa, above the condensation level

constexpr ParcelRec kStart = {kMissing, kMissing, kMissing, 0.0F, -1.0F, kMissing,
                              kMissing, kMissing, kMissing, 0.0F, 0.0F,  0.0F};
constexpr ParcelRec kNoData = {kMissing, kMissing, kMissing, kMissing, kMissing, kMissing,
                               kMissing, kMissing, kMissing, kMissing, kMissing, kMissing};

// The parcel at a place of its path.
SoundLevel parcel_level(float p, float t_kelvin)
{
    SoundLevel level;
    MET_clear_level(&level);
    level.p = p;
    level.t = celsius(t_kelvin);
    return level;
}

// The walk up: where parcel and environment are, and what has been gained on the way.
class Ascent {
  public:
    Ascent(ParcelRec *result, const SoundLevel &parcel, const SoundLevel &environment)
        : rec_(*result), parcel_(parcel), environment_(environment)
    {
        rec_.cap = is_missing(environment.t) ? 0.0F : std::max(0.0F, environment.t - parcel.t);
    }
    /// A step below the condensation level.
    void rise_dry(const SoundLevel &parcel, const SoundLevel &environment)
    {
        const float energy = step_to(parcel, environment);
        if (energy > 0.0F) {
            rec_.cape += energy;
        } else {
            rec_.cin -= energy;
        }
    }
    /// A step above it.
    void rise_moist(const SoundLevel &parcel, const SoundLevel &environment)
    {
        const float middle = (parcel_.p + parcel.p) / 2.0F;
        const float energy = step_to(parcel, environment);
        if (reach_ == Reach::kHeld && energy >= 0.0F) {
            rec_.lfc_p = middle;
            reach_ = Reach::kFree;
        } else if (reach_ == Reach::kHeld) {
            rec_.cin -= energy;
        }
        if (energy > 0.0F) {
            rec_.cape += energy;
            has_risen_ = true;
        }
        if (reach_ != Reach::kHeld && energy < 0.0F) {
            slow_down(energy, middle);
        }
    }

  private:
    enum class Reach { kHeld, kFree, kPast }; // below free convection, above it, above equilibrium

    // Takes a step's cap and makes its end the next one's start. @return its energy, 0 if unknown
    float step_to(const SoundLevel &parcel, const SoundLevel &environment)
    {
        if (parcel.p > kHighestStart && !is_missing(environment.t) && !is_missing(parcel.t)) {
            rec_.cap = std::max(rec_.cap, environment.t - parcel.t);
        }
        const float energy = MET_layer_energy(&parcel_, &parcel, &environment_, &environment);
        MSG_out(kMsgDebugB, "lift %6.1f-%6.1f  env %5.1f par %5.1f  %8.2f J/kg\n",
                double{parcel_.p}, double{parcel.p}, double{environment.t}, double{parcel.t},
                double{energy});
        parcel_ = parcel;
        environment_ = environment;
        return is_missing(energy) ? 0.0F : energy;
    }
    void slow_down(float energy, float middle)
    {
        spent_ -= energy;
        if (has_risen_ && reach_ == Reach::kFree) {
            rec_.el_p = middle;
            rec_.mpl_p = kMissing;
            rec_.b_el = rec_.cape - spent_;
            reach_ = Reach::kPast;
        }
        has_risen_ = false;
        if (spent_ >= rec_.cape && reach_ == Reach::kPast && is_missing(rec_.mpl_p)) {
            rec_.mpl_p = middle;
            rec_.b_mpl = rec_.cape - spent_;
        }
    }

    ParcelRec &rec_;
    SoundLevel parcel_;
    SoundLevel environment_;
    Reach reach_ = Reach::kHeld;
    bool has_risen_ = false;
    float spent_ = 0.0F;
};

// Levels up to the condensation level, and the step to that itself.
void rise_to_lcl(Ascent *ascent, const SoundLevel *sound, int n, int kind, int first,
                 const LiftedParcel &parcel)
{
    const float theta = MET_theta(parcel.lcl_t, parcel.lcl_p);
    float last = parcel.p;
    for (int i = first; i < n && !(sound[i].p < parcel.lcl_p); ++i) {
        if (is_missing(sound[i].t) || !(sound[i].p < parcel.p)) {
            continue;
        }
        last = sound[i].p;
        ascent->rise_dry(parcel_level(last, MET_temp_from_theta(theta, last)), sound[i]);
    }
    if (last > parcel.lcl_p) {
        ascent->rise_dry(parcel_level(parcel.lcl_p, parcel.lcl_t),
                         level_at(sound, n, kind, parcel.lcl_p));
    }
}

// In steps through the environment, which is read at all of them at once.
void rise_above_lcl(Ascent *ascent, const SoundLevel *sound, int n, int kind, float lcl_p,
                    float theta_e)
{
    const float top = std::max(sound[n - 1].p, 0.0F);
    std::vector<float> steps;
    for (float p = lcl_p - kStep; p > top; p -= kStep) {
        steps.push_back(p);
    }
    std::vector<SoundLevel> environment(steps.size());
    const int count = static_cast<int>(steps.size());
    if (MET_sound_interp(sound, n, kind, steps.data(), environment.data(), count) < 0) {
        return;
    }
    for (size_t i = 0; i < steps.size() && !is_missing(environment[i].t); ++i) {
        ascent->rise_moist(parcel_level(steps[i], MET_moist_temp(theta_e, steps[i])),
                           environment[i]);
    }
}

LiftedParcel chosen_parcel(const SoundLevel *sound, int n, const SoundLevel *given, int kind,
                           float p, float depth)
{
    if (given != nullptr && !is_missing(given->p)) {
        return lifted_parcel(given->p, kelvin(given->t), kelvin(given->td));
    }
    return pick_parcel(sound, n, kind, p, depth);
}

void hand_back(const LiftedParcel &lift, SoundLevel environment, SoundLevel *parcel)
{
    environment.p = lift.p;
    environment.t = celsius(lift.t);
    environment.td = celsius(lift.td);
    *parcel = environment;
}

} // namespace

float MET_layer_energy(const SoundLevel *parcel_low, const SoundLevel *parcel_high,
                       const SoundLevel *env_low, const SoundLevel *env_high)
{
    for (const float x :
         {parcel_low->t, parcel_high->t, env_low->t, env_high->t, env_low->z, env_high->z}) {
        if (is_missing(x)) {
            return kMissing;
        }
    }
    const double parcel = (double{parcel_low->t} + parcel_high->t) / 2.0;
    const double environment = (double{env_low->t} + env_high->t) / 2.0;
    if (environment + kZeroCelsius <= 0.0) {
        return kMissing;
    }
    return static_cast<float>(kGravity * (parcel - environment) / (environment + kZeroCelsius) *
                              (double{env_high->z} - env_low->z));
}

int MET_parcel(const SoundLevel *sound, int n, SoundLevel *parcel, int kind, ParcelRec *result,
               float p, float depth)
{
    *result = kNoData;
    if (n <= 0 || is_missing(p)) {
        return 0;
    }
    const LiftedParcel lift = chosen_parcel(sound, n, parcel, kind, p, depth);
    if (!lift.has_lcl()) {
        return 0;
    }
    int first = 0;
    const SoundLevel start = level_at(sound, n, kind, lift.p, &first);
    if (parcel != nullptr) {
        hand_back(lift, start, parcel);
    }
    *result = kStart;
    result->lcl_p = lift.lcl_p;
    result->lcl_t = lift.lcl_t;
    result->theta_e = MET_theta_e_sat(lift.lcl_t, lift.lcl_p);
    Ascent ascent(result, parcel_level(lift.p, lift.t), start);
    rise_to_lcl(&ascent, sound, n, kind, first, lift);
    rise_above_lcl(&ascent, sound, n, kind, lift.lcl_p, result->theta_e);
    if (result->cape > 0.0F) {
        result->w_max = static_cast<float>(std::sqrt(2.0 * result->cape));
    }
    return 1;
}
