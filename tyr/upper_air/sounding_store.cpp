#include "tyr/upper_air/sounding_store.h"

#include <algorithm>

#include "tyr/base/msg.h"
#include "tyr/base/str.h"
#include "tyr/met/thermo.h"
#include "tyr/met/wind_profile.h"
#include "tyr/upper_air/parcel_choice.h"
#include "tyr/upper_air/sounding_store_private.h"

using namespace tyr;

namespace {

constexpr int kPressureKind = 100;
constexpr int kHeightKind = 103;
constexpr float kMeanDepth = 6000.0F;   // of the layer of the mean wind, m
constexpr float kStormTurn = 30.0F;     // the storm moves to the right of the mean wind
constexpr float kStormFraction = 0.75F; // at this part of its speed

struct State {
    SoundingStore store;
    std::vector<SoundLevel> temps;
    std::vector<SoundLevel> winds;
};
State state;

void set_winds()
{
    SoundingStore &store = state.store;
    float mean[2] = {kMissing, kMissing};
    if (!is_missing(store.surface_height)) {
        MET_mean_wind(store.winds, store.num_winds, kHeightKind, mean, store.surface_height,
                      store.surface_height + kMeanDepth);
    }
    store.mean_wind = {mean[0], mean[1]};
    store.storm_motion = {kMissing, kMissing};
    if (!is_missing(mean[0]) && !is_missing(mean[1])) {
        const float dir = mean[0] + kStormTurn;
        store.storm_motion = {dir > 360.0F ? dir - 360.0F : dir, mean[1] * kStormFraction};
    }
}

} // namespace

namespace tyr {

SoundingStore &sounding_store()
{
    return state.store;
}

std::vector<SoundLevel> &stored_temps()
{
    state.temps.resize(kMaxSounding);
    return state.temps;
}

std::vector<SoundLevel> &stored_winds()
{
    state.winds.resize(kMaxSounding);
    return state.winds;
}

} // namespace tyr

const SoundingStore &THERM_store()
{
    return state.store;
}

void THERM_set_station(const char *station)
{
    STR_copy(state.store.station, sizeof state.store.station, station ? station : "");
}

void THERM_set_date(const DateRec *date)
{
    state.store.date = *date;
}

void THERM_set_special(const SoundLevel *tropopause, const SoundLevel *max_wind)
{
    state.store.tropopause = *tropopause;
    state.store.max_wind = *max_wind;
}

void THERM_setup(SoundLevel *temps, int n, SoundLevel *winds, int m, float surface_pressure)
{
    SoundingStore &store = state.store;
    store.temps = temps;
    store.num_temps = n;
    store.winds = winds;
    store.num_winds = m;
    store.surface_pressure = surface_pressure;
    SoundLevel surface;
    MET_clear_level(&surface);
    if (!is_missing(surface_pressure)) {
        MET_sound_at(temps, n, kPressureKind, &surface, surface_pressure);
    }
    THERM_read_options(&surface);
    store.surface_height = surface.z;
    MSG_out(kMsgDebugD, "SFCP: %f\n", surface_pressure);
    if (MSG_test(kMsgDebugD) != 0) {
        MET_print_level(kMsgDebugD, 0, kTagSurface, &surface);
    }
    set_winds();
}
