#include "tyr/upper_air/sounding_store.h"

#include <algorithm>

#include "base/msg.h"
#include "base/str.h"
#include "map/city.h"
#include "tyr/upper_air/assembly.h"
#include "tyr/upper_air/listing.h"
#include "tyr/upper_air/parcel_choice.h"
#include "tyr/upper_air/stations.h"
#include "tyr/upper_air/store_private.h"
#include "var/thermo.h"
#include "var/wind_profile.h"

using namespace tyr;

namespace {

constexpr unsigned kTrace = 0x80000000U;
constexpr int kPressureKind = 100;
constexpr int kHeightKind = 103;
constexpr float kMeanDepth = 6000.0F;   // of the layer of the mean wind, m
constexpr float kStormTurn = 30.0F;     // the storm moves to the right of the mean wind
constexpr float kStormFraction = 0.75F; // at this part of its speed
constexpr const char *kCityFile = "upa.cty";

struct State {
    SoundingStore store;
    std::vector<SoundLevel> temps;
    std::vector<SoundLevel> winds;
    bool no_city_file = false; // it was told once
};
State state;

/// Whether stations can be looked up.
bool has_city_file()
{
    if (!state.no_city_file) {
        const int handle = CTY_open_file(kCityFile, nullptr);
        state.no_city_file = handle <= 0;
        if (handle > 0) {
            CTY_close_file(handle);
        }
    }
    return !state.no_city_file;
}

/// Elevation, number and place of a station that doesn't tell its elevation.
void look_up_station(UpaReport *report)
{
    CityRec city;
    std::string name = report->id;
    if (name.empty() && report->wmo != kMissingInt) {
        name = STR_print("%05d", report->wmo);
    }
    if (name.empty() || !has_city_file() || CTY_search(name.c_str(), kCityFile, &city) != 1) {
        return;
    }
    report->elev = city.elev;
    report->wmo = city.wmo;
    report->lat = city.lat;
    report->lon = city.lon;
}

/// What the temperature sounding tells of the report's special slots.
void set_slots(UpaReport *report, const SoundLevel *temps, const int *map)
{
    if (map[kUpaSurface] >= 0) {
        report->mand[kUpaSurface].z = temps[map[kUpaSurface]].z;
    }
    if (map[kUpaTropopause] >= 0) {
        report->mand[kUpaTropopause].z = temps[map[kUpaTropopause]].z;
    }
    if (map[kUpaMaxWind] >= 0) {
        const SoundLevel &level = temps[map[kUpaMaxWind]];
        report->mand[kUpaMaxWind].z = level.z;
        report->mand[kUpaMaxWind].t = level.t;
        report->mand[kUpaMaxWind].td = level.td;
    }
}

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

float THERM_sfc_pressure(const SoundLevel *temps, const int *map)
{
    constexpr float kNoSurface = 1000.0F;
    return map[kUpaSurface] == kMissingInt ? kNoSurface : temps[map[kUpaSurface]].p;
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
    MSG_out(kTrace, "SFCP: %f\n", surface_pressure);
    if (MSG_test(kTrace) != 0) {
        MET_print_level(kTrace, 0, kTagSurface, &surface);
    }
    set_winds();
}

int THERM_process_report(UpaReport *report)
{
    SoundLevel *temps = stored_temps().data();
    SoundLevel *winds = stored_winds().data();
    if (is_missing(report->elev)) {
        look_up_station(report);
    }
    if (MSG_test(kTrace) != 0) {
        UPA_print_station(kTrace, report);
    }
    report->mand[kUpaSurface].z = report->elev;
    int temp_map[kSlotMap];
    const int n = THERM_make_temps(report, temps, temp_map);
    if (n == 0) {
        return 0;
    }
    MET_fill_heights(temps, n);
    set_slots(report, temps, temp_map);
    int wind_map[kSlotMap];
    const int m = THERM_make_winds(report, winds, wind_map);
    MET_fill_pressures(winds, m);
    THERM_fill_winds(temps, n, winds, m);
    if (MSG_test(kTrace) != 0) {
        UPA_print_report(kTrace, report);
    }
    THERM_set_special(&report->mand[kUpaTropopause], &report->mand[kUpaMaxWind]);
    THERM_set_station(report->id);
    DateRec date;
    UPA_get_date(&date);
    if (date.month > 0) {
        THERM_set_date(&date);
    }
    THERM_setup(temps, n, winds, m, THERM_sfc_pressure(temps, temp_map));
    return 1;
}
