#include "tyr/upper_air/analysis.h"

#include <algorithm>
#include <iterator>

#include "tyr/met/sounding_layer.h"
#include "tyr/met/sounding_private.h"
#include "tyr/met/storm.h"
#include "tyr/upper_air/parcel_choice.h"
#include "tyr/upper_air/sounding_store.h"

namespace {

using namespace tyr;

constexpr int kHeightKind = 103;
constexpr float kMixedDepth = 100.0F;  // hPa, of the lifted indices and the cap
constexpr float kHeatedDepth = 150.0F; // hPa, mixed by the day's heating
constexpr float kShearDepth = 3000.0F; // m

SoundingResults nothing()
{
    SoundingResults r;
    constexpr float M = kMissing;
    r.thickness = r.wetbulb_zero = r.precip_water = r.mean_rh = r.max_temp = M;
    r.lcl_p = r.lcl_t = r.lapse_rate = r.ccl = r.ccl_mix = r.ccl_temp = M;
    r.theta_e = {M, M, M, M, M, M, M};
    r.cap = r.lifted = r.lifted_300 = r.lifted_700 = r.showalter = M;
    r.totals = r.vertical = r.cross = r.k = r.sweat = r.energy = M;
    r.parcel = {M, M, M, M, M, M, M, M, M, M, M, M};
    std::fill(std::begin(r.shear), std::end(r.shear), M);
    std::fill(std::begin(r.helicity), std::end(r.helicity), M);
    r.energy_helicity = r.richardson = r.bulk_shear = M;
    return r;
}

struct State {
    SoundingResults results = nothing();
};
State state;

// The sounding that is analysed: its levels and the pressure of the ground.
struct Column {
    const SoundLevel *s;
    int n;
    float ground;

    float lifted(float top) const
    {
        return MET_lifted_index(s, n, kPressureKind, ground, kMixedDepth, top);
    }
};

void variables(const Column &c, SoundingResults *r)
{
    r->thickness = MET_thickness(c.s, c.n, kPressureKind, 1000.0F, 500.0F);
    r->wetbulb_zero = MET_wetbulb_zero(c.s, c.n);
    r->precip_water = MET_precip_water(c.s, c.n);
    r->mean_rh = MET_layer_mean("rhum", c.s, c.n, kPressureKind, c.ground, 500.0F);
    r->max_temp = celsius(MET_max_temp(c.s, c.n, kPressureKind, c.ground, kHeatedDepth));
    const LiftedParcel surface = pick_parcel(c.s, c.n, kPressureKind, c.ground, 0.0F);
    r->lcl_p = surface.lcl_p;
    r->lcl_t = celsius(surface.lcl_t);
    const float lapse = MET_lapse_rate(c.s, c.n, kPressureKind, 700.0F, 500.0F);
    r->lapse_rate = is_missing(lapse) ? kMissing : 1000.0F * lapse;
    MET_theta_e_index(c.s, c.n, &r->theta_e);
    r->ccl = MET_ccl(c.s, c.n, kPressureKind, &r->ccl_mix, c.ground, kMixedDepth);
    if (r->ccl > 0.0F)
        r->ccl_temp =
            celsius(MET_dry_adiabat(MET_dew_from_mix(r->ccl_mix, r->ccl), r->ccl, c.ground));
}

void indices(const Column &c, SoundingResults *r)
{
    r->cap = MET_cap_strength(c.s, c.n, kPressureKind, c.ground, kMixedDepth);
    r->lifted = c.lifted(500.0F);
    r->lifted_300 = c.lifted(300.0F);
    r->lifted_700 = c.lifted(700.0F);
    r->showalter = MET_lifted_index(c.s, c.n, kPressureKind, 850.0F, 0.0F, 500.0F);
    r->totals = MET_total_totals(c.s, c.n);
    r->vertical = MET_vertical_totals(c.s, c.n);
    r->cross = MET_cross_totals(c.s, c.n);
    r->k = MET_k_index(c.s, c.n);
    r->sweat = MET_sweat(c.s, c.n);
    r->energy = MET_energy_index(c.s, c.n);
}

SoundLevel no_level()
{
    SoundLevel level;
    MET_clear_level(&level);
    return level;
}

// The parcel that the choice gives; one without a pressure is for the lift to pick.
SoundLevel given_parcel(const Column &c, const ParcelChoice &choice, float max_temp)
{
    if (choice.mode == kParcelMaxTemp) {
        SoundLevel parcel = level_at(c.s, c.n, kPressureKind, c.ground);
        parcel.t = max_temp;
        return parcel;
    }
    if (choice.mode != kParcelGiven)
        return no_level();
    const float p = is_missing(choice.parcel.p) ? c.ground : choice.parcel.p;
    SoundLevel parcel = level_at(c.s, c.n, kPressureKind, p);
    if (!is_missing(choice.parcel.t))
        parcel.t = choice.parcel.t;
    if (!is_missing(choice.parcel.td))
        parcel.td = choice.parcel.td;
    return parcel;
}

void lift(const Column &c, SoundingResults *r)
{
    ParcelChoice &choice = THERM_parcel_choice();
    SoundLevel parcel = given_parcel(c, choice, r->max_temp);
    const bool is_mixed = choice.mode == kParcelLayer || choice.mode == kParcelMaxTemp;
    const bool must_be_given = choice.mode == kParcelMaxTemp || choice.mode == kParcelGiven;
    if (must_be_given && is_missing(parcel.p))
        return; // the sounding doesn't reach down to it
    MET_parcel(c.s, c.n, &parcel, kPressureKind, &r->parcel, c.ground,
               is_mixed ? choice.depth : 0.0F);
    choice.parcel = parcel;
}

void wind(const SoundingStore &store, SoundingResults *r)
{
    if (is_missing(store.surface_height))
        return;
    const float bottom = store.surface_height;
    const float top = bottom + kShearDepth;
    const float storm[2] = {store.storm_motion.dir, store.storm_motion.spd};
    MET_shear(store.winds, store.num_winds, kHeightKind, nullptr, r->shear, bottom, top);
    MET_helicity(store.winds, store.num_winds, kHeightKind, storm, r->helicity, bottom, top);
    r->energy_helicity = MET_energy_helicity(store.winds, store.num_winds, kPressureKind, storm,
                                             store.surface_pressure, r->parcel.cape);
    MET_bulk_richardson(store.winds, store.num_winds, kPressureKind, &r->richardson, &r->bulk_shear,
                        store.surface_pressure, r->parcel.cape);
}

} // namespace

void THERM_compute()
{
    state.results = nothing();
    const SoundingStore &store = THERM_store();
    const Column column{store.temps, store.num_temps, store.surface_pressure};
    if (column.n <= 0 || is_missing(column.ground))
        return;
    variables(column, &state.results);
    indices(column, &state.results);
    lift(column, &state.results);
    wind(store, &state.results);
}

const SoundingResults &THERM_results()
{
    return state.results;
}
