#include "tyr/upper_air/assembly.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <vector>

#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/met/thermo.h"
#include "tyr/upper_air/sounding_store.h"

namespace {

constexpr float kMetresOfFoot = 0.3048F;
constexpr int kLastTempSlot = kUpa1;
constexpr float kLargestFall = -3.0F;     // of potential temperature between neighbours, K
constexpr float kSurfaceAlone = 500.0F;   // a first pressure above is the surface's, without slots
constexpr float kSurfaceBelow = 700.0F;   // with a mandatory level above it
constexpr float kSurfaceRest = 600.0F;    // behind the mandatory levels
constexpr float kLowFirstHeight = 300.0F; // feet: a first wind below is the surface's
constexpr float kHighStart = 500.0F; // a list that begins above this says nothing of the ground
constexpr float kNoSurface = 1000.0F;

/// A sounding that grows in a caller's array of kMaxSounding levels, with its slot map.
struct Merge {
    Merge(const UpaReport &r, SoundLevel *levels, int *slots) : report(r), out(levels), map(slots)
    {
        std::copy_if(r.sig, r.sig + std::clamp(r.num_sig, 0, kUpaSignificant),
                     std::back_inserter(sig), [](const UpaSigLevel &l) { return l.p > 0; });
        std::fill(map, map + kSlotMap, kMissingInt);
    }

    const UpaReport &report;
    SoundLevel *out;
    int *map;
    std::vector<UpaSigLevel> sig; // those with a pressure
    int n = 0;
    int j = 0; // in the list of significant or wind levels

    /// Level n, cleared; the last place once the array is full.
    SoundLevel &next()
    {
        n = std::min(n, kMaxSounding - 1);
        MET_clear_level(&out[n]);
        return out[n];
    }
    const SoundLevel &slot(int m) const { return report.mand[m]; }
    int num_sig() const { return static_cast<int>(sig.size()); }
    const UpaSigLevel &sig_at(int i) const { return sig[static_cast<size_t>(i)]; }
    int num_wnd() const { return std::clamp(report.num_wnd, 0, kUpaWinds); }
};

float kelvin(float t)
{
    return is_missing(t) ? kMissing : static_cast<float>(t + kZeroCelsius);
}

/// Makes room at an index; the map goes along. False where the array is full.
bool insert_level(SoundLevel *levels, int *n, int *map, int at)
{
    if (*n >= kMaxSounding) {
        return false;
    }
    std::move_backward(levels + at, levels + *n, levels + *n + 1);
    ++*n;
    for (int m = 0; m < kSlotMap; ++m) {
        map[m] += map[m] >= at ? 1 : 0;
    }
    return true;
}

void remove_level(SoundLevel *levels, int *n, int *map, int at)
{
    std::move(levels + at + 1, levels + *n, levels + at);
    --*n;
    for (int m = 0; m < kSlotMap; ++m) {
        if (map[m] == at) {
            map[m] = kMissingInt;
        } else if (map[m] > at) {
            --map[m];
        }
    }
}

// ---- temperatures

int sig_alone(Merge &merge)
{
    for (; merge.j < merge.num_sig(); ++merge.j, ++merge.n) {
        const UpaSigLevel &sig = merge.sig_at(merge.j);
        merge.next() = {sig.p, kMissing, sig.t, sig.td, kMissing, kMissing};
    }
    if (merge.n > 0 && merge.out[0].p > kSurfaceAlone && !is_missing(merge.slot(0).z)) {
        merge.out[0].z = merge.slot(0).z;
    }
    return merge.n;
}

/// Significant level j becomes level n.
void add_sig(Merge &merge)
{
    const UpaSigLevel &sig = merge.sig_at(merge.j);
    merge.next() = {sig.p, kMissing, sig.t, sig.td, kMissing, kMissing};
    MSG_out(kMsgDebugD, "PS: %d = %1.0f\n", merge.n, sig.p);
}

/// The surface, before the first mandatory level at or above it.
void add_surface(Merge &merge, float p)
{
    const float surface = merge.slot(0).p;
    const bool listed = merge.num_sig() > 0 && merge.sig_at(0).p == surface;
    if (merge.j == 0 && !is_missing(surface) && surface >= p && merge.map[0] == kMissingInt) {
        merge.next() = merge.slot(0);
        MSG_out(kMsgDebugD, "P-: %d = %1.0f\n", merge.n, surface);
        merge.map[0] = merge.n;
        merge.j = listed ? 1 : 0;
        merge.n += surface > p ? 1 : 0;
    }
}

void add_mandatory_temp(Merge &merge, int m)
{
    const float p = merge.slot(m).p;
    if (is_missing(p)) {
        merge.map[m] = kMissingInt;
        MSG_out(kMsgDebugD, "bad mand: %d = %1.0f\n", m, p);
        return;
    }
    const float surface = merge.slot(0).p;
    merge.next();
    add_surface(merge, p);
    for (; merge.j < merge.num_sig() && merge.sig_at(merge.j).p > p; ++merge.j, ++merge.n) {
        add_sig(merge);
        if (merge.j == 0 && merge.sig_at(0).p > kSurfaceBelow && !is_missing(merge.slot(0).z)) {
            merge.out[0].z = merge.slot(0).z;
        }
    }
    if (merge.j < merge.num_sig() && merge.sig_at(merge.j).p == p) {
        ++merge.j;
    }
    merge.next() = surface == p ? merge.slot(0) : merge.slot(m);
    if (surface == p) {
        SoundLevel &level = merge.out[merge.n];
        level.z = is_missing(level.z) ? merge.slot(m).z : level.z;
        merge.map[0] = merge.n;
    }
    MSG_out(kMsgDebugD, "PM: %d = %1.0f\n", merge.n, p);
    merge.map[m] = merge.n++;
}

void add_rest_of_sig(Merge &merge)
{
    for (; merge.j < merge.num_sig(); ++merge.j, ++merge.n) {
        add_sig(merge);
        if (merge.j == 0 && merge.sig_at(0).p > kSurfaceRest) {
            merge.out[merge.n].z = merge.slot(0).z;
            merge.map[0] = merge.n;
        }
    }
}

/// Where a level of that pressure is or belongs; -1 above all levels.
int place_of_pressure(const SoundLevel *levels, int n, float p)
{
    const SoundLevel *found =
        std::find_if(levels, levels + n, [=](const SoundLevel &l) { return l.p <= p; });
    return found == levels + n ? -1 : static_cast<int>(found - levels);
}

/// The level of a slot's pressure, found or put in; -1 for none.
int find_or_insert(Merge &merge, int slot)
{
    const SoundLevel &special = merge.slot(slot);
    if (is_missing(special.p)) {
        return -1;
    }
    const int i = place_of_pressure(merge.out, merge.n, special.p);
    if (i < 0) {
        return -1;
    }
    if (merge.out[i].p != special.p) {
        if (!insert_level(merge.out, &merge.n, merge.map, i)) {
            return -1;
        }
        MET_clear_level(&merge.out[i]);
        merge.out[i].p = special.p;
    }
    merge.map[slot] = i;
    return i;
}

void add_tropopause_temp(Merge &merge)
{
    const int i = find_or_insert(merge, kUpaTropopause);
    if (i >= 0) {
        const float z = merge.out[i].z;
        merge.out[i] = merge.slot(kUpaTropopause);
        merge.out[i].z = z;
    }
}

void add_max_wind_temp(Merge &merge)
{
    const int i = find_or_insert(merge, kUpaMaxWind);
    if (i < 0) {
        return;
    }
    SoundLevel &level = merge.out[i];
    level.dir = merge.slot(kUpaMaxWind).dir;
    level.spd = merge.slot(kUpaMaxWind).spd;
    if (i > 0 && i + 1 < merge.n) {
        const SoundLevel &a = merge.out[i - 1];
        const SoundLevel &b = merge.out[i + 1];
        const float t = MET_log_interp(a.t, b.t, a.p, b.p, level.p);
        const float td = MET_log_interp(a.td, b.td, a.p, b.p, level.p);
        level.t = is_missing(t) ? level.t : t;
        level.td = is_missing(td) ? level.td : td;
    }
}

void remove_superadiabatic(Merge &merge)
{
    if (merge.n == 0) {
        return;
    }
    float previous = MET_theta(kelvin(merge.out[0].t), merge.out[0].p);
    for (int i = 0; i < merge.n;) {
        const float theta = MET_theta(kelvin(merge.out[i].t), merge.out[i].p);
        const bool known = !is_missing(theta) && !is_missing(previous);
        if (known && theta - previous < kLargestFall) {
            MSG_out(kMsgDebugD, "BAD: %d = %1.0f\n", i, merge.out[i].p);
            remove_level(merge.out, &merge.n, merge.map, i);
            continue;
        }
        previous = is_missing(theta) ? previous : theta;
        ++i;
    }
}

// ---- winds

float metres_of(const UpaWindLevel &wind)
{
    return is_missing(wind.z) ? kMissing : wind.z * kMetresOfFoot;
}

int winds_alone(Merge &merge)
{
    for (; merge.j < merge.num_wnd(); ++merge.j, ++merge.n) {
        const UpaWindLevel &wind = merge.report.wnd[merge.j];
        merge.next() = {kMissing, metres_of(wind), kMissing, kMissing, wind.dir, wind.spd};
    }
    const bool low = merge.n > 0 && merge.report.wnd[0].z < kLowFirstHeight;
    if (low && !is_missing(merge.slot(0).z)) {
        merge.out[0].z = merge.slot(0).z;
    }
    return merge.n;
}

/// Pressure of the ground: mandatory levels below it have no wind.
float ground_pressure(const UpaReport &report)
{
    if (report.num_sig > 0 && report.sig[0].p < kHighStart && !is_missing(report.sig[0].p)) {
        for (int m = kUpaSurface; m <= kUpa10; ++m) {
            if (!is_missing(report.mand[m].t)) {
                return report.mand[m].p;
            }
        }
    }
    return is_missing(report.mand[0].p) ? kNoSurface : report.mand[0].p;
}

enum class WindTrace { below, rest, mandatory, simple, simple_mandatory };

void trace_wind(WindTrace trace, int n, const SoundLevel &level)
{
    switch (trace) {
    case WindTrace::below:
        MSG_out(kMsgDebugD, "HW: %d = %.0f %.0f %.0f\n", n, level.z, level.dir, level.spd);
        return;
    case WindTrace::rest:
        MSG_out(kMsgDebugD, "HW+ %d = %1.0f %.0f %.0f\n", n, level.z, level.dir, level.spd);
        return;
    case WindTrace::mandatory:
        MSG_out(kMsgDebugD, "HM: %d = %1.0f %.0f %.0f\n", n, level.z, level.dir, level.spd);
        return;
    case WindTrace::simple:
        MSG_out(kMsgDebugD, "HW: %d = %1.0f\n", n, level.z);
        return;
    case WindTrace::simple_mandatory:
        MSG_out(kMsgDebugD, "HM: %d = %1.0f\n", n, level.z);
        return;
    }
}

/// Height of a pressure by the lapse of the standard atmosphere's lowest layer, which is carried on
/// above it: the mandatory levels that stand there are those whose height wasn't told.
float standard_height(float p)
{
    constexpr double kGround = 288.15; // K
    constexpr double kLapse = 0.0065;  // K/m
    const double t = kGround * std::pow(p / 1013.25, 0.190263);
    return static_cast<float>((kGround - t) / kLapse);
}

/// Wind level j goes into the sounding if it has a direction and stands above the ground.
void add_wind(Merge &merge, WindTrace trace)
{
    const UpaWindLevel &wind = merge.report.wnd[merge.j++];
    const float height = metres_of(wind);
    SoundLevel &level = merge.next();
    level = {kMissing, height, kMissing, kMissing, wind.dir, wind.spd};
    trace_wind(trace, merge.n, level);
    if (!is_missing(wind.dir) && height > merge.slot(0).z) {
        ++merge.n;
    }
}

/// The merge by height. `with_standard`: a level without a height stands at that of its pressure.
void merge_winds(Merge &merge, bool with_standard)
{
    const float ground = ground_pressure(merge.report);
    if (with_standard) {
        MSG_out(kMsgDebugD, "SFC: %1.0f\n", ground);
    }
    for (int m = kUpaSurface; m <= kUpa1; ++m) {
        const SoundLevel &level = merge.slot(m);
        const bool no_height = !with_standard && is_missing(level.z);
        if (is_missing(level.p) || is_missing(level.dir) || level.p > ground || no_height) {
            merge.map[m] = kMissingInt;
            MSG_out(kMsgDebugD, "bad mand: %d = %1.0f\n", m, level.p);
            continue;
        }
        const float h = is_missing(level.z) ? standard_height(level.p) : level.z;
        while (merge.j < merge.num_wnd() && h > metres_of(merge.report.wnd[merge.j])) {
            add_wind(merge, with_standard ? WindTrace::below : WindTrace::simple);
        }
        if (merge.j == 0 && merge.num_wnd() > 0 && merge.report.wnd[0].z == 0 &&
            !is_missing(merge.slot(0).p)) {
            merge.j = 1; // the surface slot stands for it
        }
        if (merge.j < merge.num_wnd() && merge.report.wnd[merge.j].z == level.z) {
            ++merge.j;
        }
        merge.next() = level;
        merge.out[merge.n].z = h;
        trace_wind(with_standard ? WindTrace::mandatory : WindTrace::simple_mandatory, merge.n,
                   merge.out[merge.n]);
        merge.map[m] = merge.n++;
    }
    while (merge.j < merge.num_wnd()) {
        add_wind(merge, with_standard ? WindTrace::rest : WindTrace::simple);
    }
}

/// Tropopause or maximum wind, by height; not above all levels.
void add_special_wind(Merge &merge, int slot)
{
    const SoundLevel &special = merge.slot(slot);
    if (is_missing(special.p) || is_missing(special.z)) {
        return;
    }
    const SoundLevel *end = merge.out + merge.n;
    const SoundLevel *found = std::find_if(static_cast<const SoundLevel *>(merge.out), end,
                                           [&](const SoundLevel &l) { return l.z >= special.z; });
    if (found == end) {
        return;
    }
    const int i = static_cast<int>(found - merge.out);
    if (found->z != special.z && !insert_level(merge.out, &merge.n, merge.map, i)) {
        return;
    }
    merge.out[i] = special;
    merge.map[slot] = i;
}

} // namespace

int THERM_make_temps(const UpaReport *report, SoundLevel *out, int *map)
{
    Merge merge(*report, out, map);
    if (report->num_mand == 0) {
        return sig_alone(merge);
    }
    for (int m = kUpa1000; m <= kLastTempSlot; ++m) {
        add_mandatory_temp(merge, m);
    }
    add_rest_of_sig(merge);
    add_tropopause_temp(merge);
    add_max_wind_temp(merge);
    remove_superadiabatic(merge);
    return merge.n;
}

int THERM_make_winds(const UpaReport *report, SoundLevel *out, int *map)
{
    Merge merge(*report, out, map);
    if (report->num_mand == 0) {
        return winds_alone(merge);
    }
    merge_winds(merge, true);
    add_special_wind(merge, kUpaTropopause);
    add_special_wind(merge, kUpaMaxWind);
    return merge.n;
}

int THERM_make_winds_simple(const UpaReport *report, SoundLevel *out, int *map)
{
    Merge merge(*report, out, map);
    if (report->num_mand == 0) {
        return winds_alone(merge);
    }
    merge_winds(merge, false);
    return merge.n;
}
