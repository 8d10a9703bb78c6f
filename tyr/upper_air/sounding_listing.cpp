#include "tyr/upper_air/sounding_listing.h"

#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/met/sounding_private.h"
#include "tyr/upper_air/analysis.h"
#include "tyr/upper_air/parcel_choice.h"
#include "tyr/upper_air/sounding_listing_private.h"

namespace {

using namespace tyr;

constexpr double kFeet = 3.2808; // in a metre

double fahrenheit(float t)
{
    return 9.0 * t / 5.0 + 32.0;
}

// A pressure with its height in the sounding; `width` is that of the pressure, and the heading
// brings its own blanks.
bool place_line(unsigned bit, const char *heading, int width, float p, const char *end)
{
    const SoundingStore &s = THERM_store();
    if (is_missing(p))
        return false;
    const float z = level_at(s.temps, s.num_temps, kPressureKind, p).z;
    if (is_missing(z))
        return false;
    MSG_out(bit, "%s%*.2f mb = %8.2f m = %8.2f ft%s", heading, width, double{p}, double{z},
            z * kFeet, end);
    return true;
}

void print_freezing_levels(const SoundingStore &s)
{
    const SoundLevel ground = level_at(s.temps, s.num_temps, kPressureKind, s.surface_pressure);
    if (!is_missing(ground.t) && ground.t < 0.0F)
        MSG_out(kListVariable, "Freezing level:      Surface below freezing\n");
    const SoundLevel *low = nullptr;
    for (const SoundLevel *high = s.temps; high != s.temps + s.num_temps; ++high) {
        if (is_missing(high->t) || is_missing(high->p))
            continue;
        const bool crosses = low != nullptr && (low->t >= 0.0F) != (high->t >= 0.0F);
        if (crosses && !is_missing(low->z) && !is_missing(high->z)) {
            const float z = MET_lin_interp(0.0F, low->t, high->t, low->z, high->z);
            MSG_out(kListVariable, "Freezing level:         %7.2f mb = %8.2f m = %8.2f ft\n",
                    double{MET_lin_interp(0.0F, low->t, high->t, low->p, high->p)}, double{z},
                    z * kFeet);
        }
        low = high;
    }
}

void print_moisture(const SoundingResults &r)
{
    if (r.wetbulb_zero == -1.0F)
        MSG_out(kListVariable, "Wetbulb zero:        Below ground\n");
    else
        place_line(kListVariable, "Wetbulb zero:           ", 7, r.wetbulb_zero, "\n");
    if (!is_missing(r.precip_water))
        MSG_out(kListMain, "Precipitable water:     %7.2f inches\n", double{r.precip_water});
    if (!is_missing(r.mean_rh))
        MSG_out(kListVariable, "Sfc-500 mean rel hum:   %7.2f %%\n", double{r.mean_rh});
    if (!is_missing(r.max_temp))
        MSG_out(kListVariable, "Est. max temperature:   %7.2f C = %7.2f F\n", double{r.max_temp},
                fahrenheit(r.max_temp));
    if (r.lcl_p > 0.0F && place_line(kListVariable, "Sfc-Lift cond lev (LCL): ", 6, r.lcl_p, ""))
        MSG_out(kListVariable, " T: %7.2f C\n", double{r.lcl_t});
}

void print_convection(const SoundingResults &r)
{
    if (!is_missing(r.lapse_rate))
        MSG_out(kListVariable, "700-500 lapse rate:      %6.2f C/km\n", double{r.lapse_rate});
    if (!is_missing(r.theta_e.fall))
        MSG_out(kListVariable, "ThetaE index:            %6.2f C Layer %6.1f-%6.1f mb\n",
                double{r.theta_e.fall}, double{r.theta_e.bottom}, double{r.theta_e.top});
    if (r.ccl == -1.0F)
        MSG_out(kListVariable, "Conv cond level (CCL): None\n");
    if (!(r.ccl > 0.0F))
        return;
    place_line(kListVariable, "Conv cond level (CCL):  ", 7, r.ccl, "\n");
    MSG_out(kListDetail, "  Mean mixing ratio:    %7.2f g/kg\n", double{r.ccl_mix});
    if (!is_missing(r.ccl_temp))
        MSG_out(kListVariable, "  Conv temperature:     %7.2f C = %7.2f F\n", double{r.ccl_temp},
                fahrenheit(r.ccl_temp));
}

void print_parcel_choice(const ParcelChoice &choice)
{
    switch (choice.mode) {
    case kParcelSurface:
        MSG_out(kListMain, "Parcel: using surface\n");
        break;
    case kParcelLayer:
        MSG_out(kListMain, "Parcel: using %1.0f mb layer\n", double{choice.depth});
        break;
    case kParcelMaxTemp:
        MSG_out(kListMain, "Parcel: using max temp\n");
        break;
    case kParcelGiven:
        if (is_missing(choice.parcel.p) || is_missing(choice.parcel.t) ||
            is_missing(choice.parcel.td))
            break;
        MSG_out(kListMain, "Parcel: using P: %1.0f T: %2.1f TD: %2.1f\n", double{choice.parcel.p},
                double{choice.parcel.t}, double{choice.parcel.td});
        break;
    default:
        break;
    }
}

void print_energy(unsigned bit, const char *heading, float value, const char *unit)
{
    if (!is_missing(value))
        MSG_out(bit, "%s%8.2f %s\n", heading, double{value}, unit);
}

void print_parcel(const ParcelRec &parcel)
{
    MSG_out(kListMain, "\nParcel Indices\n");
    print_parcel_choice(THERM_parcel_choice());
    print_energy(kListMain, "CAPE (B+):             ", parcel.cape, "J/kg");
    print_energy(kListVariable, "Max Up Vert Vel:       ", parcel.w_max, "m/s");
    print_energy(kListMain, "Conv Inhibition (B-):  ", parcel.cin, "J/kg");
    print_energy(kListVariable, "Cap Strength:          ", parcel.cap, "C");
    place_line(kListVariable, "Lift Cond Lev (LCL):   ", 8, parcel.lcl_p, "\n");
    if (parcel.lfc_p == -1.0F)
        MSG_out(kListVariable, "Lev Free Conv (LFC):     none\n");
    else
        place_line(kListVariable, "Lev Free Conv (LFC):   ", 8, parcel.lfc_p, "\n");
    place_line(kListVariable, "Equ Level (EL):        ", 8, parcel.el_p, "\n");
    print_energy(kListDetail, "B at Equ Level:        ", parcel.b_el, "J/kg");
    place_line(kListDetail, "Max Parcel Lev (MPL):  ", 8, parcel.mpl_p, "\n");
}

} // namespace

void THERM_print_indices()
{
    const SoundingResults &r = THERM_results();
    MSG_out(kListMain, "\nSounding variables and indices\n");
    if (!is_missing(r.thickness))
        MSG_out(kListVariable, "1000-500 mb thick:      %7.2f m\n", double{r.thickness});
    print_freezing_levels(THERM_store());
    print_moisture(r);
    print_convection(r);
    list_pause(kListMain);
    if (!is_missing(r.cap))
        MSG_out(kListMain, "Cap Strength:            %6.2f C\n", double{r.cap});
    print_risks(r);
    list_pause(kListMain);
    print_parcel(r.parcel);
    list_pause(kListMain);
}
