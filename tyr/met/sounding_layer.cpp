#include "tyr/met/sounding_layer.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "tyr/base/str.h"
#include "tyr/met/sounding_private.h"

namespace {

using namespace tyr;

float mix_ratio(const SoundLevel &level)
{
    return MET_mix_ratio(kelvin(level.td), level.p);
}

float theta(const SoundLevel &level)
{
    return MET_theta(kelvin(level.t), level.p);
}

float pressure(const SoundLevel &level)
{
    return level.p;
}

struct Quantity {
    const char *name;
    bool needs_t, needs_td;
    float (*of)(const SoundLevel &level);
};

float temp(const SoundLevel &s)
{
    return kelvin(s.t);
}
float dewp(const SoundLevel &s)
{
    return kelvin(s.td);
}
float rhum(const SoundLevel &s)
{
    return MET_rel_hum(temp(s), dewp(s));
}
float depression(const SoundLevel &s)
{
    return s.t - s.td;
}
float spec_hum(const SoundLevel &s)
{
    return MET_spec_hum(dewp(s), s.p);
}
float vapor(const SoundLevel &s)
{
    return MET_sat_vapor(dewp(s));
}
float wet_bulb(const SoundLevel &s)
{
    return MET_wet_bulb(temp(s), dewp(s), s.p);
}
float theta_w(const SoundLevel &s)
{
    return MET_wet_bulb_theta(temp(s), dewp(s), s.p);
}
float theta_e(const SoundLevel &s)
{
    return MET_theta_e(temp(s), dewp(s), s.p);
}
float theta_v(const SoundLevel &s)
{
    return MET_virtual_theta(temp(s), dewp(s), s.p);
}
float virtual_temp(const SoundLevel &s)
{
    return MET_virtual_temp(temp(s), dewp(s), s.p);
}
float height(const SoundLevel &s)
{
    return s.z;
}

constexpr const char *kAboveGround = "hag"; // the height, less that of the first level

constexpr Quantity kQuantities[] = {
    {"temp",       true,  false, temp        },
    {"dewp",       false, true,  dewp        },
    {"rhum",       true,  true,  rhum        },
    {"theta",      true,  false, theta       },
    {"dewd",       true,  true,  depression  },
    {"mrat",       false, true,  mix_ratio   },
    {"shum",       false, true,  spec_hum    },
    {"vpres",      false, true,  vapor       },
    {"wetblb",     true,  true,  wet_bulb    },
    {"thetaw",     true,  true,  theta_w     },
    {"thetae",     true,  true,  theta_e     },
    {"thetav",     true,  true,  theta_v     },
    {"vtemp",      true,  true,  virtual_temp},
    {"hght",       false, false, height      },
    {kAboveGround, false, false, height      },
    {"pres",       false, false, pressure    },
};

const Quantity *find_quantity(const char *name)
{
    for (const Quantity &q : kQuantities) {
        if (name != nullptr && STR_casecmp(name, q.name) == 0) {
            return &q;
        }
    }
    return nullptr;
}

float value_at(const Quantity &q, const SoundLevel &level)
{
    const bool is_there = !(q.needs_t && is_missing(level.t)) &&
                          !(q.needs_td && is_missing(level.td)) && level.p > 0.0F;
    return is_there ? q.of(level) : kMissing;
}

// The points of a layer: the sounding at its ends, and the levels between.
std::vector<SoundLevel> layer_points(const SoundLevel *sound, int n, int kind, float bottom,
                                     float top)
{
    int first = 0;
    int end = 0;
    std::vector<SoundLevel> points{level_at(sound, n, kind, bottom, &first)};
    if (is_missing(top) || top == bottom) {
        return points;
    }
    const SoundLevel last = level_at(sound, n, kind, top, &end);
    for (int i = first; i < end; ++i) {
        points.push_back(sound[i]);
    }
    points.push_back(last);
    return points;
}

float mean_of(const std::vector<SoundLevel> &points, const Quantity &q)
{
    if (points.size() == 1) {
        return value_at(q, points[0]);
    }
    double sum = 0.0;
    double weight = 0.0;
    float below = kMissing;
    float p_below = kMissing;
    for (const SoundLevel &point : points) {
        const float x = value_at(q, point);
        if (is_missing(x)) {
            continue;
        }
        if (!is_missing(below)) {
            const double w = std::log(double{p_below} / point.p);
            sum += w * (double{below} + x);
            weight += w;
        }
        below = x;
        p_below = point.p;
    }
    return weight > 0.0 ? static_cast<float>(sum / (2.0 * weight)) : kMissing;
}

} // namespace

float MET_layer_mean(const char *name, const SoundLevel *sound, int n, int kind, float bottom,
                     float top)
{
    const Quantity *q = find_quantity(name);
    if (q == nullptr || n <= 0) {
        return kMissing;
    }
    const float mean = mean_of(layer_points(sound, n, kind, bottom, top), *q);
    if (q->name != kAboveGround || is_missing(mean)) {
        return mean;
    }
    return is_missing(sound[0].z) ? kMissing : mean - sound[0].z;
}

int MET_layer_mix_theta(const SoundLevel *sound, int n, int kind, float *mix, float *theta_mean,
                        float bottom, float top)
{
    *mix = *theta_mean = kMissing;
    if (n <= 0) {
        return 0;
    }
    const std::vector<SoundLevel> points = layer_points(sound, n, kind, bottom, top);
    *mix = mean_of(points, *find_quantity("mrat"));
    *theta_mean = mean_of(points, *find_quantity("theta"));
    return is_missing(*mix) || is_missing(*theta_mean) ? 0 : 1;
}

float MET_thickness(const SoundLevel *sound, int n, int kind, float a, float b)
{
    const float za = level_at(sound, n, kind, a).z;
    const float zb = level_at(sound, n, kind, b).z;
    return is_missing(za) || is_missing(zb) ? kMissing : std::fabs(zb - za);
}

float MET_lapse_rate(const SoundLevel *sound, int n, int kind, float a, float b)
{
    const SoundLevel low = level_at(sound, n, kind, a);
    const SoundLevel high = level_at(sound, n, kind, b);
    if (is_missing(low.z) || is_missing(high.z) || is_missing(low.t) || is_missing(high.t) ||
        low.z == high.z) {
        return kMissing;
    }
    return -(high.t - low.t) / (high.z - low.z);
}

float MET_precip_water(const SoundLevel *sound, int n)
{
    constexpr int kDewPointBy = 3;         // one of the first levels needs a dew point
    constexpr double kGramsTwice = 2000.0; // the mean of two, and g/kg to kg/kg
    constexpr double kPerInch = 2.4892;    // hPa of water over gravity in an inch
    if (!begins_low(sound, n) || n < kDewPointBy ||
        std::none_of(sound, sound + kDewPointBy, has_air)) {
        return kMissing;
    }
    const SoundLevel *below = nullptr;
    double inches = 0.0;
    for (const SoundLevel *s = sound; s != sound + n; ++s) {
        if (is_missing(s->td) || !(s->p > 0.0F)) {
            continue;
        }
        if (below != nullptr) {
            inches += (double{spec_hum(*below)} + spec_hum(*s)) / kGramsTwice / kPerInch *
                      (double{below->p} - s->p);
        }
        below = s;
    }
    return static_cast<float>(inches);
}

float MET_wetbulb_zero(const SoundLevel *sound, int n)
{
    // above a dew point of 0 the wet bulb needn't be worked out, which is most of the time spent
    const auto wet_of = [](const SoundLevel &s) {
        return s.td > 0.0F && s.t >= s.td ? s.td : celsius(wet_bulb(s));
    };
    const SoundLevel *below = nullptr;
    for (const SoundLevel *s = sound; s != sound + std::max(n, 0); ++s) {
        const float wet = has_air(*s) ? wet_of(*s) : kMissing;
        if (is_missing(wet)) {
            continue;
        }
        if (below == nullptr && wet < 0.0F) {
            return -1.0F;
        }
        if (below != nullptr && wet <= 0.0F) {
            return MET_lin_interp(0.0F, celsius(wet_bulb(*below)), wet, below->p, s->p);
        }
        below = s;
    }
    return kMissing;
}

float MET_max_temp(const SoundLevel *sound, int n, int kind, float p, float depth)
{
    if (is_missing(p) || is_missing(depth)) {
        return kMissing;
    }
    const SoundLevel top = level_at(sound, n, kind, p - depth);
    if (is_missing(top.t) || !(top.p > 0.0F) || !(p > 0.0F)) {
        return kMissing;
    }
    return MET_temp_from_theta(theta(top), p);
}
