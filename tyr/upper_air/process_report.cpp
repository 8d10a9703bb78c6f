#include <string>

#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/str.h"
#include "tyr/place/city.h"
#include "tyr/upper_air/assembly.h"
#include "tyr/upper_air/listing.h"
#include "tyr/upper_air/sounding_store.h"
#include "tyr/upper_air/sounding_store_private.h"
#include "tyr/upper_air/stations.h"

using namespace tyr;

namespace {

constexpr const char *kCityFile = "upa.cty";

struct State {
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

} // namespace

float THERM_sfc_pressure(const SoundLevel *temps, const int *map)
{
    constexpr float kNoSurface = 1000.0F;
    return map[kUpaSurface] == kMissingInt ? kNoSurface : temps[map[kUpaSurface]].p;
}

int THERM_process_report(UpaReport *report)
{
    SoundLevel *temps = stored_temps().data();
    SoundLevel *winds = stored_winds().data();
    if (is_missing(report->elev)) {
        look_up_station(report);
    }
    if (MSG_test(kMsgDebugD) != 0) {
        UPA_print_station(kMsgDebugD, report);
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
    if (MSG_test(kMsgDebugD) != 0) {
        UPA_print_report(kMsgDebugD, report);
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
