#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

#include "tyr/base/missing.h"
#include "tyr/grid_math/grid_places.h"
#include "tyr/grid_math/thermo_rows_private.h"
#include "tyr/grid_math/vector_math_private.h"
#include "tyr/met/thermo.h"

namespace tyr {

namespace {

// Ordinary air is worked out in blocks, without branches; what lies outside of it goes through
// met/thermo.h point by point.
constexpr size_t kBlock = 64;
constexpr float kColdest = 150.0F;
constexpr float kHottest = 340.0F;
constexpr float kThinnest = 10.0F;
constexpr float kThickest = 1100.0F;

constexpr double kKappa = 0.286;
constexpr double kEpsilon = 622.0;
constexpr double kMoist = -2.6518986;

using Block = std::array<double, kBlock>;
using Flags = std::array<bool, kBlock>;

/// The formulas hand floats to one another.
inline double as_float(double x)
{
    return static_cast<double>(static_cast<float>(x));
}

inline double vapor(double t)
{
    const double power = 23.832241 - 5.02808 * quick_log10(t) -
                         1.3816e-7 * quick_exp10(11.344 - 0.0303998 * t) +
                         0.008132801 * quick_exp10(3.49149 - 1302.8844 / t) - 2949.076 / t;
    return as_float(quick_exp10(power));
}

inline double dew_point(double e)
{
    const double log_e = quick_log(e);
    const double part = quick_exp(0.0915 * log_e) - 1.2035;
    return as_float(quick_exp10(0.0498646455 / kLn10 * log_e + 2.4082965) - 7.08475 +
                    38.9114 * (part * part));
}

inline double dry_power(double ratio)
{
    return quick_exp(kKappa * quick_log(ratio));
}

/// Values of a row, with ordinary ones in the place of those that aren't.
inline void load(const float *from, size_t count, float low, float high, double usual, Block *to,
                 Flags *is_ordinary)
{
    for (size_t i = 0; i < kBlock; ++i) {
        const float value = i < count ? from[i] : kMissing;
        const bool is_in = value >= low && value <= high;
        (*to)[i] = is_in ? static_cast<double>(value) : usual;
        (*is_ordinary)[i] = (*is_ordinary)[i] && is_in;
    }
}

inline void load_temperature(const float *from, size_t count, Block *to, Flags *is_ordinary)
{
    load(from, count, kColdest, kHottest, 280.0, to, is_ordinary);
}

inline void load_pressure(const float *from, size_t count, Block *to, Flags *is_ordinary)
{
    load(from, count, kThinnest, kThickest, 1000.0, to, is_ordinary);
}

float checked(float value)
{
    return std::fabs(value) <= kLargest ? value : kMissing;
}

/// Ordinary points from the block, the others by `formula(point)`.
template <class F>
void store(const Block &block, const Flags &is_ordinary, size_t count, float *out, F formula)
{
    for (size_t i = 0; i < count; ++i) {
        out[i] = checked(is_ordinary[i] ? static_cast<float>(block[i]) : formula(i));
    }
}

/// Calls work(first point, count) on blocks of a row.
template <class Work> void over_blocks(size_t count, Work work)
{
    for (size_t at = 0; at < count; at += kBlock) {
        work(at, std::min(kBlock, count - at));
    }
}

TYR_WIDE void dew_from_rh_block(Block *t, const Block &rh)
{
    for (size_t i = 0; i < kBlock; ++i) {
        const double humidity = rh[i] < 2.0 ? 2.0 : rh[i] > 100.0 ? 100.0 : rh[i];
        (*t)[i] = dew_point(as_float(vapor((*t)[i]) * humidity / 100.0));
    }
}

TYR_WIDE void vapor_block(Block *t)
{
    for (size_t i = 0; i < kBlock; ++i) {
        (*t)[i] = vapor((*t)[i]);
    }
}

TYR_WIDE void theta_block(Block *t, const Block &p)
{
    for (size_t i = 0; i < kBlock; ++i) {
        (*t)[i] = as_float((*t)[i] * dry_power(1000.0 / p[i]));
    }
}

/// Mixing ratio of saturated air (g/kg); below 0 where the vapour alone reaches the pressure.
TYR_WIDE void mix_ratio_block(const Block &td, const Block &p, Block *w)
{
    for (size_t i = 0; i < kBlock; ++i) {
        const double e = vapor(td[i]);
        const double ratio = as_float(kEpsilon * e / (p[i] - e));
        (*w)[i] = e < p[i] ? ratio : -1.0;
    }
}

/// The vapour's share of the pressure, of a mixing ratio.
TYR_WIDE void vapor_share_block(const Block &w, Block *share)
{
    for (size_t i = 0; i < kBlock; ++i) {
        const double ratio = w[i] > 0.0 ? w[i] : 1.0;
        (*share)[i] = ratio / (ratio + kEpsilon);
    }
}

/// One step to the condensation level, where it isn't reached; the number of points left.
TYR_WIDE std::int64_t lcl_step(const Block &theta, const Block &share, Block *pl)
{
    constexpr double kClose = 0.0001;
    std::int64_t left = 0;
    for (size_t i = 0; i < kBlock; ++i) {
        const double level = as_float((*pl)[i]);
        const double dew = dew_point(as_float(share[i] * level));
        const double difference = dew - as_float(theta[i] * dry_power(level * 0.001));
        const bool is_far = difference * difference > kClose;
        const double limited = difference > 300.0    ? 300.0
                               : difference < -300.0 ? -300.0
                                                     : difference;
        const double next = (*pl)[i] * quick_exp(0.02 * (kLn2High + kLn2Low) * limited);
        (*pl)[i] = is_far ? next : (*pl)[i];
        left += is_far ? 1 : 0;
    }
    return left;
}

/// Temperature at the condensation level.
TYR_WIDE void lcl_temperature(const Block &theta, Block *pl, Block *t)
{
    for (size_t i = 0; i < kBlock; ++i) {
        (*pl)[i] = as_float((*pl)[i]);
        (*t)[i] = as_float(theta[i] * dry_power((*pl)[i] / 1000.0));
    }
}

TYR_WIDE void saturated_theta_e(const Block &t, const Block &p, const Block &w, Block *theta_e)
{
    for (size_t i = 0; i < kBlock; ++i) {
        (*theta_e)[i] = t[i] * dry_power(1000.0 / p[i]) * quick_exp(-kMoist * w[i] / t[i]);
    }
}

/// theta_e of a block of air, into `t`.
void theta_e_block(Block *t, const Block &td, const Block &p, Flags *is_ordinary)
{
    constexpr int kSteps = 8;
    Block w;
    Block share;
    Block theta = *t;
    Block pl = p;
    mix_ratio_block(td, p, &w);
    vapor_share_block(w, &share);
    theta_block(&theta, p);
    for (size_t i = 0; i < kBlock; ++i) {
        (*is_ordinary)[i] = (*is_ordinary)[i] && w[i] > 0.0;
    }
    for (int step = 0; step < kSteps && lcl_step(theta, share, &pl) > 0; ++step) {
    }
    lcl_temperature(theta, &pl, t);
    for (size_t i = 0; i < kBlock; ++i) {
        const bool is_in = (*t)[i] >= kColdest && (*t)[i] <= kHottest && pl[i] >= 1.0;
        (*is_ordinary)[i] = (*is_ordinary)[i] && is_in;
        (*t)[i] = is_in ? (*t)[i] : 280.0;
        pl[i] = is_in ? pl[i] : 1000.0;
    }
    mix_ratio_block(*t, pl, &w);
    for (size_t i = 0; i < kBlock; ++i) {
        (*is_ordinary)[i] = (*is_ordinary)[i] && w[i] > 0.0;
    }
    saturated_theta_e(*t, pl, w, t);
}

/// One halving of MET_moist_temp, where the temperature isn't found. @param power  (1000 / p)^kappa
TYR_WIDE std::int64_t moist_step(const Block &theta_e, const Block &p, const Block &power,
                                 double step, Block *t)
{
    constexpr double kClose = 2e-5;
    std::int64_t left = 0;
    for (size_t i = 0; i < kBlock; ++i) {
        const double air = as_float((*t)[i]);
        const double e = vapor(air);
        const double w = as_float(kEpsilon * e / (p[i] - e));
        const double lifted = theta_e[i] * quick_exp(kMoist * (e < p[i] ? w : 0.0) / (*t)[i]);
        // where the vapour alone would reach the pressure it is too warm
        const double difference = e < p[i] ? lifted - as_float(air * power[i]) : -1.0;
        const bool is_far = difference * difference >= kClose;
        const double next = (*t)[i] + (difference > 0.0 ? step : -step);
        (*t)[i] = is_far ? next : (*t)[i];
        left += is_far ? 1 : 0;
    }
    return left;
}

TYR_WIDE void power_block(const Block &p, Block *power)
{
    for (size_t i = 0; i < kBlock; ++i) {
        (*power)[i] = dry_power(1000.0 / p[i]);
    }
}

/// Temperature on moist adiabats at pressures, into `theta_e`.
void moist_temp_block(Block *theta_e, const Block &p)
{
    constexpr int kSteps = 12;
    constexpr double kStart = 253.16;
    constexpr double kFirstStep = 120.0;
    Block power;
    Block t;
    for (size_t i = 0; i < kBlock; ++i) {
        (*theta_e)[i] = as_float((*theta_e)[i]);
    }
    power_block(p, &power);
    t.fill(kStart);
    double step = kFirstStep / 2.0;
    for (int i = 0; i < kSteps && moist_step(*theta_e, p, power, step, &t) > 0; ++i) {
        step /= 2.0;
    }
    *theta_e = t;
}

Flags all_true()
{
    Flags flags;
    flags.fill(true);
    return flags;
}

} // namespace

void dew_from_rh_row(const float *t, const float *rh, float *td, size_t count)
{
    over_blocks(count, [&](size_t at, size_t n) {
        Flags is_ordinary = all_true();
        Block air;
        Block humidity;
        load_temperature(t + at, n, &air, &is_ordinary);
        load(rh + at, n, -1000.0F, 1000.0F, 50.0, &humidity, &is_ordinary);
        dew_from_rh_block(&air, humidity);
        store(air, is_ordinary, n, td + at, [&](size_t i) {
            return is_missing(t[at + i]) ? kMissing : MET_dew_from_rh(t[at + i], rh[at + i]);
        });
    });
}

void sat_vapor_row(const float *t, float *e, size_t count)
{
    over_blocks(count, [&](size_t at, size_t n) {
        Flags is_ordinary = all_true();
        Block air;
        load_temperature(t + at, n, &air, &is_ordinary);
        vapor_block(&air);
        store(air, is_ordinary, n, e + at, [&](size_t i) { return MET_sat_vapor(t[at + i]); });
    });
}

void theta_row(const float *t, const float *p, float *theta, size_t count)
{
    over_blocks(count, [&](size_t at, size_t n) {
        Flags is_ordinary = all_true();
        Block air;
        Block pressure;
        load_temperature(t + at, n, &air, &is_ordinary);
        load_pressure(p + at, n, &pressure, &is_ordinary);
        theta_block(&air, pressure);
        store(air, is_ordinary, n, theta + at,
              [&](size_t i) { return MET_theta(t[at + i], p[at + i]); });
    });
}

void theta_e_row(const float *t, const float *td, const float *p, float *theta_e, size_t count)
{
    over_blocks(count, [&](size_t at, size_t n) {
        Flags is_ordinary = all_true();
        Block air;
        Block dew;
        Block pressure;
        load_temperature(t + at, n, &air, &is_ordinary);
        load_temperature(td + at, n, &dew, &is_ordinary);
        load_pressure(p + at, n, &pressure, &is_ordinary);
        theta_e_block(&air, dew, pressure, &is_ordinary);
        store(air, is_ordinary, n, theta_e + at,
              [&](size_t i) { return MET_theta_e(t[at + i], td[at + i], p[at + i]); });
    });
}

void wet_bulb_row(const float *t, const float *td, const float *p, float *wet_bulb, size_t count)
{
    over_blocks(count, [&](size_t at, size_t n) {
        Flags is_ordinary = all_true();
        Block air;
        Block dew;
        Block pressure;
        load_temperature(t + at, n, &air, &is_ordinary);
        load_temperature(td + at, n, &dew, &is_ordinary);
        load_pressure(p + at, n, &pressure, &is_ordinary);
        theta_e_block(&air, dew, pressure, &is_ordinary);
        moist_temp_block(&air, pressure);
        store(air, is_ordinary, n, wet_bulb + at,
              [&](size_t i) { return MET_wet_bulb(t[at + i], td[at + i], p[at + i]); });
    });
}

} // namespace tyr
