#include <algorithm>
#include <cmath>

#include "base/missing.h"
#include "tyr/upper_air/assembly.h"
#include "var/thermo.h"

namespace {

constexpr double kGasConstant = 287.05; // of dry air, J/(kg K)
constexpr double kGravity = 9.8;        // m/s^2
constexpr double kLapse = 0.0065;       // K/m
constexpr double kStandardTemp = 288.15;
constexpr int kPressureKind = 100;

/// The hypsometric step from p to a lower pressure at a mean temperature in kelvin, metres.
double step(double p_low, double p_high, double t)
{
    return std::log(p_low / p_high) * t * kGasConstant / kGravity;
}

/// Mean temperature of two levels in kelvin: that of both, of the one that has it, else `other`.
double mean_temp(const SoundLevel &a, const SoundLevel &b, double other)
{
    if (is_missing(a.t) && is_missing(b.t)) {
        return other;
    }
    if (is_missing(a.t) || is_missing(b.t)) {
        return (is_missing(a.t) ? b.t : a.t) + kZeroCelsius;
    }
    return (double{a.t} + b.t) / 2 + kZeroCelsius;
}

/// Temperature of the known level nearest to level i, kelvin; 0 degrees Celsius without any.
double nearest_temp(const SoundLevel *levels, int count, int i)
{
    for (int away = 1; away < count; ++away) {
        for (const int k : {i - away, i + away}) {
            if (k >= 0 && k < count && !is_missing(levels[k].t)) {
                return levels[k].t + kZeroCelsius;
            }
        }
    }
    return kZeroCelsius;
}

bool known_pressures(const SoundLevel &a, const SoundLevel &b)
{
    return a.p > 0 && b.p > 0;
}

/// Heights of the levels above a, up to b where there is one, from that of a.
void climb(SoundLevel *levels, int count, int a, int b)
{
    for (int k = a + 1; k <= b && k < count; ++k) {
        const SoundLevel &low = levels[k - 1];
        SoundLevel &level = levels[k];
        if (!known_pressures(low, level) || is_missing(low.z)) {
            level.z = levels[a].z;
            continue;
        }
        const double t = mean_temp(low, level, nearest_temp(levels, count, k));
        level.z = static_cast<float>(low.z + step(low.p, level.p, t));
    }
}

/// Spreads the misfit at b, whose height was known, over the levels between, by pressure.
void spread_misfit(SoundLevel *levels, int a, int b, float known)
{
    const double depth = double{levels[b].p} - levels[a].p;
    const double misfit = double{levels[b].z} - known;
    const bool climbed = !is_missing(levels[b].z);
    levels[b].z = known;
    if (!climbed || depth == 0 || !known_pressures(levels[a], levels[b])) {
        return;
    }
    for (int k = a + 1; k < b; ++k) {
        if (levels[k].p > 0) {
            levels[k].z -= static_cast<float>((double{levels[k].p} - levels[a].p) * misfit / depth);
        }
    }
}

/// Temperature of a height in the atmosphere that the first level tells, kelvin.
double reference_temp(const SoundLevel &first, float z)
{
    if (is_missing(z)) {
        return kZeroCelsius;
    }
    const double ground = is_missing(first.t) ? kStandardTemp : first.t + kZeroCelsius;
    return std::max(ground - kLapse * z, 1.0);
}

/// Pressure at a height above (or below) one where it is known.
float pressure_at(float p, float z_known, float z, double t)
{
    if (is_missing(p) || is_missing(z_known) || is_missing(z)) {
        return kMissing;
    }
    const double value = p * std::exp((double{z_known} - z) * kGravity / (t * kGasConstant));
    return std::isfinite(value) ? static_cast<float>(std::min(value, 1e5)) : kMissing;
}

/// Height and pressure of level a, from b.
void settle_first(const SoundLevel *levels, SoundLevel &a, const SoundLevel &b)
{
    if (is_missing(a.z)) {
        const bool no_step =
            is_missing(b.p) || is_missing(a.p) || is_missing(b.z) || !known_pressures(a, b);
        const bool temps = !is_missing(a.t) && !is_missing(b.t);
        const double t = temps ? mean_temp(a, b, kZeroCelsius) : kZeroCelsius;
        a.z = no_step ? 0.0F : static_cast<float>(b.z + step(b.p, a.p, t));
    }
    if (is_missing(a.p)) {
        a.p = pressure_at(b.p, b.z, a.z, reference_temp(levels[0], b.z));
    }
}

/// Pressures between a and b (or the end of the list).
void fill_between(SoundLevel *levels, int a, int b, const SoundLevel &upper)
{
    const SoundLevel lower = levels[a];
    double mean = 0;
    if (known_pressures(lower, upper) && !is_missing(lower.z) && !is_missing(upper.z) &&
        lower.p != upper.p) {
        mean = (double{upper.z} - lower.z) * (kGravity / kGasConstant) /
               std::log(double{lower.p} / upper.p);
    }
    for (int k = a + 1; k < b; ++k) {
        if (!(mean > 0)) {
            mean = reference_temp(levels[0], levels[k].z);
        }
        levels[k].p = pressure_at(lower.p, lower.z, levels[k].z, mean);
    }
}

} // namespace

int MET_fill_heights(SoundLevel *levels, int count)
{
    for (int a = 0; a < count;) {
        int b = a + 1;
        while (b < count && is_missing(levels[b].z)) {
            ++b;
        }
        if (b == count && a == 0) {
            return -1;
        }
        if (is_missing(levels[a].z) && b < count && known_pressures(levels[a], levels[b])) {
            const double t = mean_temp(levels[a], levels[b], nearest_temp(levels, count, a));
            levels[a].z = static_cast<float>(levels[b].z - step(levels[a].p, levels[b].p, t));
        }
        if (b > a + 1) {
            const float known = b < count ? levels[b].z : kMissing;
            climb(levels, count, a, b);
            if (b < count) {
                spread_misfit(levels, a, b, known);
            }
        }
        a = b;
    }
    return 0;
}

int MET_fill_pressures(SoundLevel *levels, int count)
{
    SoundLevel end;
    MET_clear_level(&end);
    for (int a = 0; a < count;) {
        int b = a + 1;
        while (b < count && is_missing(levels[b].p)) {
            ++b;
        }
        const SoundLevel upper = b < count ? levels[b] : end;
        settle_first(levels, levels[a], upper);
        fill_between(levels, a, b, upper);
        a = b;
    }
    return 0;
}

void THERM_fill_winds(SoundLevel *temps, int n, const SoundLevel *winds, int m)
{
    for (int i = 0; i < n; ++i) {
        if (!is_missing(temps[i].dir)) {
            continue;
        }
        SoundLevel level;
        MET_clear_level(&level);
        if (!is_missing(temps[i].p)) {
            MET_sound_at(winds, m, kPressureKind, &level, temps[i].p);
        }
        temps[i].dir = level.dir;
        temps[i].spd = level.spd;
    }
}
