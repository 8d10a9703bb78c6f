#include "tyr/var/layer.h"

#include <utility>

#include "tyr/base/missing.h"
#include "tyr/base/number.h"
#include "tyr/met/sounding.h"
#include "tyr/met/thermo.h"
#include "tyr/var/level.h"

namespace {

constexpr float kSoundingTop = 500.0F; // hPa, of the layer of no level

struct Limits {
    float bottom = kMissing;
    float top = kMissing;
    float extra = kMissing;
};

/// a + b, Missing if either is.
float sum(float a, float b)
{
    return is_missing(a) || is_missing(b) ? kMissing : a + b;
}

/// a - b, Missing if either is.
float difference(float a, float b)
{
    return is_missing(a) || is_missing(b) ? kMissing : a - b;
}

float surface_lcl(const SoundLevel &surface)
{
    if (is_missing(surface.t) || is_missing(surface.td)) {
        return kMissing;
    }
    return MET_lcl_pressure(static_cast<float>(surface.t + kZeroCelsius),
                            static_cast<float>(surface.td + kZeroCelsius), surface.p);
}

Limits pressure_limits(float bottom, float top)
{
    const float surface = MET_special_level(kSpecialSurface)->p;
    if (bottom == kFromSurface || bottom == kFromMaxTemp) {
        return {surface, top, kMissing};
    }
    if (bottom == kFromTropopause) {
        const float tropopause = MET_special_level(kSpecialTropopause)->p;
        const float above = difference(tropopause, top);
        return above < 0.0F ? Limits{} : Limits{tropopause, above, kMissing};
    }
    if (bottom >= kFromSurfaceIndex) {
        return {surface, top, bottom - kFromSurfaceIndex};
    }
    return {bottom, top, kMissing};
}

Limits height_limits(float bottom, float top)
{
    const float tropopause = MET_special_level(kSpecialTropopause)->z;
    Limits limits{bottom, top, kMissing};
    if (bottom == kAboveTropopause) {
        limits = {tropopause, sum(tropopause, top), kMissing};
    } else if (bottom == kBelowTropopause) {
        limits = {difference(tropopause, top), tropopause, kMissing};
    } else {
        return limits;
    }
    return limits.bottom < 0.0F || limits.top < 0.0F ? Limits{} : limits;
}

/// Limits of a level that has a kind of its own in a sounding.
Limits coordinate_limits(int kind, int value)
{
    const SoundLevel &surface = *MET_special_level(kSpecialSurface);
    const float ground = is_missing(surface.z) ? 0.0F : surface.z;
    float bottom = kMissing;
    float top = kMissing;
    VAR_decode_layer(kind, value, &bottom, &top);
    switch (kind) {
    case kLevelPressureLayer:
        return pressure_limits(bottom, top);
    case kLevelHeightLayer:
        return height_limits(bottom, top);
    case kLevelPressureAg:
    case kLevelPressureAgLayer:
        return {difference(bottom, surface.p), difference(top, surface.p), kMissing};
    case kLevelHeightAg:
    case kLevelHeightAgLayer:
        return {sum(bottom, ground), sum(top, ground), kMissing};
    default:
        return {bottom, top, kMissing};
    }
}

bool is_layer(int kind)
{
    return kind == kLevelPressureLayer || kind == kLevelHeightLayer ||
           kind == kLevelHeightAgLayer || kind == kLevelThetaLayer || kind == kLevelPressureAgLayer;
}

/// Pressure of a named level.
float named_pressure(int kind)
{
    if (kind == kLevelMaxWind) {
        return MET_special_level(kSpecialMaxWind)->p;
    }
    if (kind == kLevelTropopause) {
        return MET_special_level(kSpecialTropopause)->p;
    }
    if (kind == kLevelLcl) {
        return surface_lcl(*MET_special_level(kSpecialSurface));
    }
    int count = 0;
    const SoundLevel *sounding = MET_get_sounding(&count);
    return MET_freezing_level(sounding, count);
}

} // namespace

void VAR_decode_layer(int kind, int value, float *first, float *second)
{
    const int high = value / 1000;
    const int low = value % 1000;
    float scale = 1.0F;
    switch (kind) {
    case kLevelPressureLayer:
        scale = 10.0F;
        break;
    case kLevelHeightLayer:
    case kLevelHeightAgLayer:
        scale = 100.0F;
        break;
    case kLevelThetaLayer:
    case kLevelPressureAgLayer:
        break;
    default:
        *first = static_cast<float>(value);
        *second = kMissing;
        return;
    }
    *first = static_cast<float>(low) * scale;
    *second = static_cast<float>(high) * scale;
    if (*second > *first) {
        std::swap(*first, *second);
    }
}

void VAR_encode_layer(int kind, int *out_kind, int *out_value, float bottom, float top)
{
    const int b = VAR_whole(bottom);
    const int t = VAR_whole(top);
    const auto pack = [&](int layer, int scale) {
        *out_kind = layer;
        const long long high = t / scale;
        const long long packed = high * 1000 + b / scale;
        *out_value = VAR_whole(static_cast<double>(packed));
    };
    *out_kind = kind;
    *out_value = b;
    const bool has_top = !is_missing(top);
    if (kind == kLevelPressureLayer || (kind == kLevelPressure && has_top)) {
        pack(kLevelPressureLayer, 10);
    } else if (kind == kLevelHeightLayer || (kind == kLevelHeight && has_top)) {
        pack(kLevelHeightLayer, 100);
    } else if (kind == kLevelHeightAgLayer || (kind == kLevelHeightAg && has_top)) {
        pack(kLevelHeightAgLayer, 100);
    } else if (kind == kLevelThetaLayer || (kind == kLevelTheta && has_top)) {
        pack(kLevelThetaLayer, 1);
    } else if (kind == kLevelSigmaLayer || (kind == kLevelSigma && has_top)) {
        pack(kLevelSigmaLayer, 1);
    }
}

int VAR_layer_limits(const VarRec *record, int *kind, float *bottom, float *top, float *extra)
{
    *kind = kLevelPressure;
    *bottom = *top = *extra = kMissing;
    const SoundLevel &surface = *MET_special_level(kSpecialSurface);
    switch (record->level_kind) {
    case kMissingInt:
        return 0;
    case kLevelNone:
        *bottom = surface.p;
        *top = kSoundingTop;
        return 2;
    case kLevelSurface:
        *bottom = surface.p;
        if (record->level_value > 0) {
            *extra = static_cast<float>(record->level_value);
        }
        return 1;
    case kLevelFreezing:
    case kLevelLcl:
    case kLevelMaxWind:
    case kLevelTropopause:
        *bottom = named_pressure(record->level_kind);
        return 1;
    default:
        break;
    }
    const Limits limits = coordinate_limits(record->level_kind, record->level_value);
    *kind = record->level_kind;
    *bottom = limits.bottom;
    *top = limits.top;
    *extra = limits.extra;
    return is_layer(record->level_kind) ? 2 : 1;
}
