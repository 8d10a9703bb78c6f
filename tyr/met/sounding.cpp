#include "tyr/met/sounding.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/met/level_kind.h"
#include "tyr/met/thermo.h"

namespace {

constexpr SoundLevel kClear{kMissing, kMissing, kMissing, kMissing, kMissing, kMissing};

using Field = float SoundLevel::*;
constexpr Field kFields[] = {&SoundLevel::p,  &SoundLevel::z,   &SoundLevel::t,
                             &SoundLevel::td, &SoundLevel::dir, &SoundLevel::spd};

struct State {
    std::vector<SoundLevel> sounding; // the one in force
    std::array<SoundLevel, 3> special{kClear, kClear, kClear};
};
State state;

// A coordinate that soundings are searched in.
struct Axis {
    int kind;        // kLevelHeight, kLevelTheta or kLevelPressure
    float tolerance; // how far below the first level still counts as that level
};

Axis axis_of(int kind)
{
    if (kind >= kLevelHeight && kind <= kLevelHeightAgLayer) {
        return {kLevelHeight, 3.0F};
    }
    if (kind == kLevelTheta || kind == kLevelThetaLayer) {
        return {kLevelTheta, 1.0F};
    }
    return {kLevelPressure, 0.01F};
}

// A sounding along an axis: its levels and their coordinates.
struct Track {
    Axis axis;
    std::vector<SoundLevel> levels;
    std::vector<float> at;

    int size() const { return static_cast<int>(at.size()); }
};

Track make_track(const SoundLevel *sound, int count, int kind)
{
    Track track{axis_of(kind), std::vector<SoundLevel>(sound, sound + count), {}};
    const bool by_theta = track.axis.kind == kLevelTheta;
    if (by_theta) {
        MET_fill_temps(track.levels.data(), count);
    }
    bool begun = false;
    for (const SoundLevel &level : track.levels) {
        const float at = MET_level_coord(track.axis.kind, &level);
        if (by_theta && begun && is_missing(at)) { // a gap at the top ends the sounding
            break;
        }
        begun = begun || !is_missing(at);
        track.at.push_back(at);
    }
    return track;
}

// Steps the short way round the circle from one direction to another.
float turn(float from, float to, double fraction)
{
    const double difference = double{to} - from;
    double short_way = difference;
    if (difference > 180.0) {
        short_way -= 360.0;
    } else if (difference < -180.0) {
        short_way += 360.0;
    }
    double direction = from + short_way * fraction;
    if (difference > 180.0 && direction < 0.0) {
        direction += 360.0;
    } else if (difference < -180.0 && direction > 360.0) {
        direction -= 360.0;
    }
    return static_cast<float>(direction);
}

// Pressure between two levels more than 300 hPa apart: only that of a level close by.
enum class Gap { none, lower, upper, open };
Gap pressure_gap(const Track &track, int i, int m, float x)
{
    constexpr float kFarApart = 300.0F;
    const auto low = static_cast<size_t>(i);
    const auto high = static_cast<size_t>(m);
    if (track.axis.kind == kLevelPressure ||
        !(track.levels[low].p - track.levels[high].p > kFarApart)) {
        return Gap::none;
    }
    if (x - track.at[low] <= track.axis.tolerance) {
        return Gap::lower;
    }
    if (track.at[high] - x <= track.axis.tolerance) {
        return Gap::upper;
    }
    return Gap::open;
}

bool is_coordinate(const Axis &axis, Field field)
{
    return (axis.kind == kLevelPressure && field == &SoundLevel::p) ||
           (axis.kind == kLevelHeight && field == &SoundLevel::z);
}

// One field at x, where level j is the first at or above it. False: no level can be given at all.
bool field_at(const Track &track, Field field, int j, float x, float *out)
{
    const auto value = [&](int k) { return track.levels[static_cast<size_t>(k)].*field; };
    const auto at = [&](int k) { return track.at[static_cast<size_t>(k)]; };
    int i = j - 1;
    while (i >= 0 && is_missing(value(i))) {
        --i;
    }
    int m = j;
    while (m < track.size() && is_missing(value(m))) {
        ++m;
    }
    *out = kMissing;
    if (i < 0) {
        if (m < track.size() && at(m) == x) {
            *out = value(m);
        }
        return true;
    }
    if (m == track.size() || is_missing(at(i)) || is_missing(at(m))) {
        return true;
    }
    if (at(i) == x || at(m) == at(i)) {
        *out = value(i);
    } else if (at(m) == x) {
        *out = value(m);
    } else {
        const Gap gap = field == &SoundLevel::p ? pressure_gap(track, i, m, x) : Gap::none;
        if (gap == Gap::open) {
            return false;
        }
        const double fraction = (double{x} - at(i)) / (double{at(m)} - at(i));
        if (gap != Gap::none) {
            *out = value(gap == Gap::lower ? i : m);
        } else if (field == &SoundLevel::dir) {
            *out = turn(value(i), value(m), fraction);
        } else {
            *out = static_cast<float>(value(i) + (double{value(m)} - value(i)) * fraction);
        }
    }
    return true;
}

// The sounding at one value of its axis; returns the index of the first level at or above it.
int level_at(const Track &track, float value, SoundLevel *out)
{
    *out = kClear;
    const bool by_pressure = track.axis.kind == kLevelPressure;
    if (is_missing(value) || (by_pressure && value <= 0.0F)) {
        return 0;
    }
    const float x = by_pressure ? static_cast<float>(-std::log(double{value})) : value;
    if (track.at.empty() || track.at[0] - track.axis.tolerance > x) {
        return 0;
    }
    if (track.at[0] > x) {
        *out = track.levels[0];
        return 0;
    }
    int j = 1;
    while (j < track.size() && x > track.at[static_cast<size_t>(j)]) {
        ++j;
    }
    for (const Field field : kFields) {
        if (is_coordinate(track.axis, field)) {
            out->*field = value;
        } else if (!field_at(track, field, j, x, &(out->*field))) {
            *out = kClear;
            break;
        }
    }
    return j;
}

int surface_level(const SoundLevel *sound, int count, SoundLevel *out, int n)
{
    const SoundLevel &surface = state.special[kSpecialSurface];
    std::fill(out, out + n, surface);
    for (int i = 0; i < count; ++i) {
        if (!is_missing(surface.p) && sound[i].p == surface.p) {
            return i;
        }
    }
    return 0;
}

bool is_sounding(const char *routine, const SoundLevel *sound, int count)
{
    if (count >= 0 && count <= kMaxSoundLevels && (sound != nullptr || count == 0)) {
        return true;
    }
    MSG_out(kMsgWarnA, "%s: Sounding of %d levels, room is for %d\n", routine, count,
            kMaxSoundLevels);
    return false;
}

std::string tag_of(int code, const SoundLevel &level)
{
    static constexpr const char *const kTags[] = {"SFC ", "TRP ", "WND ", "PAR ", "LCL ",
                                                  "LFC ", " EL ", "MPL ", "WBZ ", "FRZ "};
    const bool is_tag = code < 0 && code >= kTagFreezing;
    if (is_tag && (code != kTagSurface || level.p > 500.0F)) {
        return kTags[static_cast<size_t>(-code - 1)];
    }
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "%3d ", code);
    return text.data();
}

// A value in a column so wide, with so many decimals; blanks for Missing.
std::string column(float value, int width, int decimals)
{
    std::array<char, 64> text{};
    if (is_missing(value)) {
        return std::string(static_cast<size_t>(width) + 1, ' ');
    }
    std::snprintf(text.data(), text.size(), "%*.*f ", width, decimals, double{value});
    return text.data();
}

float celsius(float kelvin)
{
    return is_missing(kelvin) ? kMissing : static_cast<float>(kelvin - kZeroCelsius);
}

// The moisture columns: td, relative humidity, mixing ratio, theta, theta-e, wet bulb.
std::string moist_columns(const SoundLevel &level)
{
    const bool has_t = !is_missing(level.t);
    const bool has_td = has_t && !is_missing(level.td);
    const bool has_p = level.p > 0.0F;
    const float t = has_t ? static_cast<float>(level.t + kZeroCelsius) : kMissing;
    const float td = has_td ? static_cast<float>(level.td + kZeroCelsius) : kMissing;
    const bool moist = has_td && has_p;
    return column(has_td ? MET_rel_hum(t, td) : kMissing, 3, 0) +
           column(moist ? MET_mix_ratio(td, level.p) : kMissing, 5, 2) +
           column(has_t && has_p ? MET_theta(t, level.p) : kMissing, 5, 1) +
           column(moist ? MET_theta_e(t, td, level.p) : kMissing, 5, 1) +
           column(moist ? celsius(MET_wet_bulb(t, td, level.p)) : kMissing, 5, 1);
}

} // namespace

void MET_clear_level(SoundLevel *level)
{
    *level = kClear;
}

int MET_set_sounding(const SoundLevel *sound, int count)
{
    if (!is_sounding("MET_set_sounding", sound, count)) {
        return -1;
    }
    state.sounding.assign(sound, sound + count);
    return 0;
}

const SoundLevel *MET_get_sounding(int *count)
{
    *count = static_cast<int>(state.sounding.size());
    return state.sounding.empty() ? nullptr : state.sounding.data();
}

SoundLevel *MET_special_level(SpecialLevel which)
{
    return &state.special.at(static_cast<size_t>(which));
}

float MET_level_coord(int kind, const SoundLevel *level)
{
    switch (kind) {
    case kLevelSurface:
    case kLevelPressure:
    case kLevelPressureLayer:
    case kLevelSea:
    case kLevelPressureAg:
    case kLevelPressureAgLayer:
        return level->p > 0.0F ? static_cast<float>(-std::log(double{level->p})) : kMissing;
    case kLevelHeight:
    case kLevelHeightLayer:
    case kLevelHeightAg:
    case kLevelHeightAgLayer:
        return level->z;
    case kLevelTheta:
    case kLevelThetaLayer:
        if (is_missing(level->t)) {
            return kMissing;
        }
        return MET_theta(static_cast<float>(level->t + kZeroCelsius), level->p);
    default:
        return kMissing;
    }
}

void MET_fill_temps(SoundLevel *sound, int count)
{
    const auto is_good = [&](int k) { return !is_missing(sound[k].t) && sound[k].p > 0.0F; };
    for (int i = 0; i < count; ++i) {
        if (!is_missing(sound[i].t) || sound[i].p <= 0.0F) {
            continue;
        }
        int low = i - 1;
        while (low >= 0 && !is_good(low)) {
            --low;
        }
        int high = i + 1;
        while (high < count && !is_good(high)) {
            ++high;
        }
        if (low >= 0 && high < count) {
            sound[i].t = MET_lin_interp(sound[i].p, sound[low].p, sound[high].p, sound[low].t,
                                        sound[high].t);
        }
    }
}

int MET_sound_interp(const SoundLevel *sound, int count, int kind, const float *values,
                     SoundLevel *out, int n)
{
    std::fill(out, out + std::max(n, 0), kClear);
    if (!is_sounding("MET_sound_interp", sound, count)) {
        return -1;
    }
    if (kind == kLevelSurface) {
        return surface_level(sound, count, out, n);
    }
    const Track track = make_track(sound, count, kind);
    int j = 0;
    for (int k = 0; k < n; ++k) {
        j = level_at(track, values[k], out + k);
    }
    return j;
}

int MET_sound_at(const SoundLevel *sound, int count, int kind, SoundLevel *out, float value)
{
    return MET_sound_interp(sound, count, kind, &value, out, 1);
}

float MET_freezing_level(const SoundLevel *sound, int count)
{
    constexpr float kHighest = 500.0F; // hPa
    if (count <= 0 || sound[0].p < kHighest) {
        return kMissing;
    }
    const SoundLevel *last = nullptr;
    for (const SoundLevel *level = sound; level != sound + count; ++level) {
        if (is_missing(level->t) || is_missing(level->p)) {
            continue;
        }
        if (last == nullptr) {
            if (level->t < 0.0F && level->p > kHighest) {
                return -1.0F;
            }
        } else if ((last->t >= 0.0F && level->t <= 0.0F) || (last->t < 0.0F && level->t >= 0.0F)) {
            return MET_lin_interp(0.0F, last->t, level->t, last->p, level->p);
        }
        last = level;
    }
    return kMissing;
}

void MET_print_level(unsigned mask, unsigned sub_mask, int code, const SoundLevel *level)
{
    const unsigned shown = sub_mask == 0 ? mask : mask & sub_mask;
    if (shown == 0 || MSG_test(shown) == 0) {
        return;
    }
    const std::string line = tag_of(code, *level) + column(level->p, 4, level->p < 10.0F ? 1 : 0) +
                             column(level->z, 6, 0) + column(level->t, 5, 1) +
                             column(level->td, 5, 1) + moist_columns(*level) +
                             column(level->dir, 3, 0) + column(level->spd, 3, 0);
    MSG_out(shown, "%s\n", line.c_str());
}
