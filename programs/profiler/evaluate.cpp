#include "programs/profiler/evaluate.h"

#include <array>
#include <cmath>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/nearest.h"
#include "tyr/base/str.h"
#include "tyr/met/sounding.h"
#include "tyr/met/thermo.h"
#include "tyr/met/wind.h"
#include "tyr/met/wind_profile.h"
#include "tyr/var/layer.h"
#include "tyr/var/level.h"
#include "tyr/var/units.h"

namespace {

constexpr float kKnotsPerMs = 1.944F;
constexpr int kSoundLevels = 20;
constexpr int kSoundStep = 500; ///< m between levels of the sounding
constexpr float kLayerTop = 3000.0F;
constexpr float kSteeringTop = 6000.0F;
constexpr float kStormTurn = 30.0F; ///< degrees to the right of the mean wind
constexpr float kStormSlow = 0.75F; ///< share of its speed
constexpr float kPerThousand = 1000.0F;

enum class Answer {
    kNone,
    kCity,
    kTemperature,
    kDewPoint,
    kDepression,
    kDirection,
    kSpeed,
    kWind,
    kU,
    kV,
    kW,
    kShear,
    kHelicity
};

struct NameRow {
    const char *name;
    Answer answer;
    const char *units;         ///< of the value as evaluated
    const char *display_units; ///< what PRF_var_units gives
};

constexpr NameRow kNames[] = {
    {"city",  Answer::kCity,        "",        ""   },
    {"temp",  Answer::kTemperature, "C",       "C"  },
    {"dewp",  Answer::kDewPoint,    "C",       "C"  },
    {"dewd",  Answer::kDepression,  "dC",      "dC" },
    {"wdir",  Answer::kDirection,   "deg",     "deg"},
    {"wspd",  Answer::kSpeed,       "knt",     "knt"},
    {"wbrbc", Answer::kWind,        "m/s",     "knt"},
    {"wbrb",  Answer::kWind,        "m/s",     "knt"},
    {"wind",  Answer::kWind,        "m/s",     "knt"},
    {"uwnd",  Answer::kU,           "m/s",     "m/s"},
    {"vwnd",  Answer::kV,           "m/s",     "m/s"},
    {"vvel",  Answer::kW,           "m/s",     ""   },
    {"shear", Answer::kShear,       "10^-3/s", ""   },
    {"hel",   Answer::kHelicity,    "m^2/s^2", ""   },
};
constexpr NameRow kUnknown = {"", Answer::kNone, "", ""};

/// The row of a variable's name up to the first '-'.
const NameRow &row_of(const VarRec &variable)
{
    const std::string_view name(variable.name);
    const std::string base(name.substr(0, name.find('-')));
    for (const NameRow &row : kNames) {
        if (STR_casecmp(row.name, base.c_str()) == 0) {
            return row;
        }
    }
    return kUnknown;
}

float between(float t, const ProfilerLevel &low, const ProfilerLevel &high,
              float ProfilerLevel::*field)
{
    if (is_missing(low.*field) || is_missing(high.*field) || is_missing(low.z)) {
        return kMissing;
    }
    return low.*field + (t - low.z) * (high.*field - low.*field) / (high.z - low.z);
}

/// Height above the station that a level stands for, m.
float target_height(const ProfilerRecord &record, int kind, long value)
{
    switch (kind) {
    case kLevelHeight:
        return std::trunc(static_cast<float>(value) - record.elev);
    case kLevelPressure:
        return std::trunc(MET_std_height(static_cast<float>(value)));
    default:
        return static_cast<float>(value);
    }
}

struct Wind {
    float u = kMissing;
    float v = kMissing;
    float w = kMissing;
    float direction = kMissing;
    float speed = kMissing;
};

Wind wind_at(const ProfilerRecord &record, int kind, long value)
{
    Wind wind;
    PRF_interpolate(&record, kind, value, &wind.u, &wind.v, &wind.w);
    MET_wind_dirspd(&wind.direction, &wind.speed, wind.u, wind.v);
    return wind;
}

/// The profile as a sounding every 500 m, with the pressure of the standard atmosphere.
std::array<SoundLevel, kSoundLevels> make_sounding(const ProfilerRecord &record)
{
    std::array<SoundLevel, kSoundLevels> sounding;
    const double elevation = is_missing(record.elev) ? 0.0 : record.elev;
    for (int i = 0; i < kSoundLevels; ++i) {
        const int height = kSoundStep * i;
        SoundLevel &level = sounding[static_cast<size_t>(i)];
        Wind wind;
        PRF_interpolate(&record, kLevelHeightAg, height, &wind.u, &wind.v, &wind.w);
        if (i == 0 && is_missing(wind.u)) {
            wind.u = wind.v = 0.0F;
        }
        level.z = static_cast<float>(height);
        level.p = static_cast<float>(
            1013.25 * std::pow((288.15 - 0.0065 * (height + elevation)) / 288.15, 5.25588));
        level.t = level.td = kMissing;
        MET_wind_dirspd(&level.dir, &level.spd, wind.u, wind.v);
    }
    return sounding;
}

struct Layer {
    int kind = kLevelHeight;
    float bottom = 0.0F;
    float top = kLayerTop;
};

bool counts_down(int kind)
{
    return kind == kLevelPressureLayer || kind == kLevelPressureAgLayer || kind == kLevelPressure;
}

/// The layer of a variable; one without gets 0 to 3000 m written in.
Layer layer_of(VarRec *variable)
{
    Layer layer;
    float extra = kMissing;
    if (VAR_layer_limits(variable, &layer.kind, &layer.bottom, &layer.top, &extra) < 2) {
        layer = {};
        VAR_encode_layer(kLevelHeightAg, &variable->level_kind, &variable->level_value,
                         layer.bottom, layer.top);
    }
    if (!counts_down(layer.kind) && !is_missing(layer.top) && layer.bottom > layer.top) {
        std::swap(layer.bottom, layer.top); // levels give the larger number first
    }
    return layer;
}

float total_shear(const ProfilerRecord &record, VarRec *variable)
{
    const auto sounding = make_sounding(record);
    const Layer layer = layer_of(variable);
    std::array<float, kShearResults> result;
    result.fill(kMissing);
    MET_shear(sounding.data(), kSoundLevels, layer.kind, nullptr, result.data(), layer.bottom,
              layer.top);
    return is_missing(result[0]) ? kMissing : (result[0] + result[1]) * kPerThousand;
}

float total_helicity(const ProfilerRecord &record, VarRec *variable)
{
    const auto sounding = make_sounding(record);
    const Layer layer = layer_of(variable);
    std::array<float, 2> storm = {kMissing, kMissing};
    MET_mean_wind(sounding.data(), kSoundLevels, kLevelHeight, storm.data(), 0.0F, kSteeringTop);
    if (!is_missing(storm[0])) {
        storm[0] += kStormTurn;
        storm[0] -= storm[0] > 360.0F ? 360.0F : 0.0F;
        storm[1] *= kStormSlow;
    }
    std::array<float, kHelicityResults> result;
    result.fill(kMissing);
    MET_helicity(sounding.data(), kSoundLevels, layer.kind, storm.data(), result.data(),
                 layer.bottom, layer.top);
    return result[kHelTotal];
}

void answer_surface(Answer answer, const ProfilerRecord &record, PlotValue *value)
{
    switch (answer) {
    case Answer::kTemperature:
        value->value1 = record.sfc_t;
        break;
    case Answer::kDewPoint:
        value->value1 = record.sfc_td;
        break;
    case Answer::kDepression:
        value->value1 = is_missing(record.sfc_t) || is_missing(record.sfc_td)
                            ? kMissing
                            : record.sfc_t - record.sfc_td;
        break;
    default:
        break;
    }
}

void answer_wind(Answer answer, const Wind &wind, PlotValue *value)
{
    switch (answer) {
    case Answer::kDirection:
        value->value1 = wind.direction;
        break;
    case Answer::kSpeed:
        value->value1 = is_missing(wind.speed) ? kMissing : wind.speed * kKnotsPerMs;
        break;
    case Answer::kWind:
        value->value1 = wind.direction;
        value->value2 = wind.speed;
        break;
    case Answer::kU:
        value->value1 = wind.u;
        break;
    case Answer::kV:
        value->value1 = wind.v;
        break;
    case Answer::kW:
        value->value1 = wind.w;
        break;
    default:
        break;
    }
}

void answer(Answer what, const ProfilerRecord &record, VarRec *variable, PlotValue *value)
{
    switch (what) {
    case Answer::kNone:
        break;
    case Answer::kCity:
        STR_copy(value->text, sizeof value->text, record.id);
        break;
    case Answer::kTemperature:
    case Answer::kDewPoint:
    case Answer::kDepression:
        if (variable->level_kind == kLevelSurface) {
            answer_surface(what, record, value);
        }
        break;
    case Answer::kDirection:
    case Answer::kSpeed:
    case Answer::kWind:
    case Answer::kU:
    case Answer::kV:
    case Answer::kW:
        answer_wind(what, wind_at(record, variable->level_kind, variable->level_value), value);
        break;
    case Answer::kShear:
        value->value1 = total_shear(record, variable);
        break;
    case Answer::kHelicity:
        value->value1 = total_helicity(record, variable);
        break;
    }
}

} // namespace

int PRF_interpolate(const ProfilerRecord *record, int kind, long value, float *u, float *v,
                    float *w)
{
    *u = *v = *w = kMissing;
    if (kind == kLevelSurface || (kind == kLevelHeightAg && value == 0)) {
        MET_wind_uv(u, v, record->sfc_dir, record->sfc_spd);
        *w = 0.0F;
        return 1;
    }
    const float t = target_height(*record, kind, value);
    int i = 0;
    while (i < record->num_level && !(record->level[i].z >= t)) {
        ++i;
    }
    if (i == record->num_level) {
        return 0;
    }
    const ProfilerLevel &high = record->level[i];
    if (high.z == t) {
        *u = high.u;
        *v = high.v;
        *w = high.w;
    } else if (i > 0) {
        const ProfilerLevel &low = record->level[i - 1];
        *u = between(t, low, high, &ProfilerLevel::u);
        *v = between(t, low, high, &ProfilerLevel::v);
        *w = between(t, low, high, &ProfilerLevel::w);
    }
    return 1;
}

int PRF_evaluate(const ProfilerRecord *record, VarRec *variable, PlotValue *value)
{
    PLT_clear_value(value);
    const NameRow &row = row_of(*variable);
    answer(row.answer, *record, variable, value);
    if (variable->units[0] == '\0') {
        STR_copy(variable->units, sizeof variable->units, row.units);
    }
    if (std::strcmp(row.units, variable->units) == 0) {
        return 1;
    }
    float *converted = is_missing(value->value2) ? &value->value1 : &value->value2;
    *converted = UNIT_convert(row.units, variable->units, *converted);
    return 1;
}

int PRF_var_units(VarRec *variable)
{
    if (variable->units[0] == '\0') {
        STR_copy(variable->units, sizeof variable->units, row_of(*variable).display_units);
    }
    return 1;
}

void PRF_check_variable(const VarRec *variable)
{
    if (row_of(*variable).answer != Answer::kNone) {
        return;
    }
    std::vector<std::string_view> known;
    for (const NameRow &row : kNames) {
        known.emplace_back(row.name);
    }
    const std::string near = tyr::nearest_words(variable->name, known);
    MSG_out(kMsgWarn, "variable: %s is none that a profiler file has%s%s\n", variable->name,
            near.empty() ? "" : "; near it: ", near.c_str());
}
