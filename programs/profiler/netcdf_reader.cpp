#include "programs/profiler/netcdf_reader.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <span>
#include <string>

#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/netcdf.h"
#include "tyr/base/str.h"

namespace {

constexpr int kModeLevels = 36;
constexpr int kAllLevels = 72;
constexpr int kNameLength = 6;
constexpr int kGoodQuality = 10;
constexpr float kWindLimit = 100.0F;
constexpr float kHuge = 1e30F; ///< from here on a value stands for "not recorded"
constexpr float kZeroCelsius = 273.15F;
constexpr double kLatestTime = 1e12; ///< seconds since 1970 beyond any date
static_assert(kAllLevels <= kMaxProfilerLevels);

enum Role {
    kName,
    kLat,
    kLon,
    kElev,
    kPressure,
    kTemperature,
    kDewPoint,
    kDirection,
    kSpeed,
    kRain,
    kRoles
};

/// A variable of the file with the value it holds where nothing was recorded.
struct Variable {
    int id = -1;
    float fill = kMissing;
    bool is_kelvin = false;
};

/// The level variables of one mode, or of a file that has but one.
struct Mode {
    Variable u, v, w, quality, hdev, vdev;
    std::array<float, kAllLevels> height;
    int levels = 0;
};

struct Names {
    std::array<const char *, kRoles> roles;
    const char *levels_dimension[2];
};

constexpr Names kStationNames = {
    {"id",    "lat",   "lon", "elev", "sfc_p", "sfc_t", "sfc_td", "sfc_dir", "sfc_spd", "sfc_rain"},
    {"low_level", "high_level"}
};
constexpr Names kRecNumNames = {
    {"staName",  "staLat",   "staLon", "staElev", "pressure", "temperature", "relHumidity",
     "windDirSfc", "windSpeedSfc", "rainRate"},
    {"level", nullptr}
};

struct State {
    std::array<Variable, kRoles> surface;
    std::array<Mode, 2> modes; ///< low and high; one alone in the second layout
    int mode_count = 0;
    int64_t records = 0;
    std::string absent; ///< names that the file hasn't got
};

State state;

Variable find_variable(const std::string &name)
{
    Variable var;
    var.id = CDF_var_id(name.c_str());
    if (var.id == -1) {
        state.absent += " " + name;
    }
    double fill = 0.0;
    if (CDF_get_attribute(var.id, "_FillValue", &fill) == 0) {
        var.fill = static_cast<float>(std::clamp(fill, -3e38, 3e38));
    }
    std::array<char, 16> units;
    if (CDF_get_text_attribute(var.id, "units", units.data(), units.size()) == 0) {
        var.is_kelvin =
            STR_ncasecmp(units.data(), "kelvin", 6) == 0 || std::strcmp(units.data(), "K") == 0;
    }
    return var;
}

float marked(float value, const Variable &var)
{
    return value == var.fill || !(std::fabs(value) < kHuge) ? kMissing : value;
}

float in_range(float value, float low, float high)
{
    return value >= low && value <= high ? value : kMissing;
}

float surface_value(Role role)
{
    const Variable &var = state.surface[role];
    return marked(CDF_get_float(var.id), var);
}

float celsius(Role role)
{
    const float value = surface_value(role);
    return state.surface[role].is_kelvin && !is_missing(value) ? value - kZeroCelsius : value;
}

/// Reads one row; what can't be read is Missing.
void read_row(const Variable &var, std::span<float> out)
{
    std::fill(out.begin(), out.end(), kMissing); // a variable may have fewer dimensions
    if (CDF_get_float_array(var.id, out.data()) != 0) {
        std::fill(out.begin(), out.end(), kMissing);
    }
    for (float &value : out) {
        value = marked(value, var);
    }
}

Mode find_mode(const std::string &prefix)
{
    Mode mode;
    mode.levels = kModeLevels;
    mode.u = find_variable(prefix + "_u_wind");
    mode.v = find_variable(prefix + "_v_wind");
    mode.w = find_variable(prefix + "_w_wind");
    mode.quality = find_variable(prefix + "_qual_indicator");
    mode.hdev = find_variable(prefix + "_moment2_e");
    mode.vdev = find_variable(prefix + "_moment2_v");
    return mode;
}

Mode find_only_mode()
{
    Mode mode;
    mode.levels = kAllLevels;
    mode.u = find_variable("uComponent");
    mode.v = find_variable("vComponent");
    mode.w = find_variable("wComponent");
    mode.quality = find_variable("uvQualityCode");
    mode.hdev = find_variable("windSpeedStdDev");
    mode.vdev = find_variable("wStdDev");
    return mode;
}

void read_heights(Mode &mode, const char *variable)
{
    CDF_set_range(1, 0, mode.levels);
    read_row(find_variable(variable), std::span(mode.height).first(mode.levels));
}

/// A file with another number of levels isn't what the heights below are made for.
void check_levels(const Mode &mode, const char *dimension, const char *name)
{
    const int id = CDF_dim_id(dimension);
    const int64_t levels = id == -1 ? 0 : CDF_record_count(id);
    if (levels != mode.levels) {
        MSG_out(192, "PROF_read_header: %s: %ld levels in %s where %d belong\n", name,
                static_cast<long>(levels), dimension, mode.levels);
    }
}

/// Tells of variables that are there but can't be read as numbers.
void check_types(const char *name)
{
    const auto check = [name](const Variable &var) {
        if (var.id != -1 && CDF_is_number(var.id) == 0) {
            MSG_out(192, "PROF_read_header: %s: variable %d holds characters, not numbers\n", name,
                    var.id);
        }
    };
    for (int role = kLat; role < kRoles; ++role) {
        check(state.surface[role]);
    }
    for (int m = 0; m < state.mode_count; ++m) {
        const Mode &mode = state.modes[m];
        for (const Variable &var : {mode.u, mode.v, mode.w, mode.quality, mode.hdev, mode.vdev}) {
            check(var);
        }
    }
}

/// Tells of a file without winds and what it holds instead, or of names that it hasn't got.
void tell_what_lacks(const char *name)
{
    constexpr int kNamesShown = 12;
    bool has_wind = false;
    for (int m = 0; m < state.mode_count; ++m) {
        has_wind = has_wind || state.modes[m].u.id != -1 || state.modes[m].v.id != -1;
    }
    if (!has_wind) {
        MSG_out(192, "PROF_read_header: %s: not a wind-profiler file: no winds; it holds %s\n",
                name, CDF_variable_names(kNamesShown).c_str());
    } else if (!state.absent.empty()) {
        MSG_out(192, "PROF_read_header: %s: not in the file:%s\n", name, state.absent.c_str());
    }
}

void read_station_date(PrfFileInfo *info)
{
    const auto number = [](const char *name) {
        const long value = CDF_get_long(CDF_var_id(name));
        return value >= 0 && value < 10000 ? static_cast<int>(value) : kMissingInt;
    };
    CDF_set_index(1, 0);
    info->date.year = number("year");
    info->date.month = number("month");
    info->date.day = number("day");
    info->date.hour = number("hour");
}

void read_time_date(PrfFileInfo *info)
{
    CDF_set_index(1, 0);
    const double value = CDF_get_double(CDF_var_id("timeObs"));
    if (value > 0.0 && value < kLatestTime) {
        const long seconds = static_cast<long>(value);
        TIME_from_seconds(&seconds, &info->date);
    }
}

void read_levels(const Mode &mode, int64_t index, ProfilerLevel *out)
{
    std::array<float, kAllLevels> row;
    const auto fill = [&](const Variable &var, float ProfilerLevel::*field) {
        const std::span<float> values = std::span(row).first(mode.levels);
        read_row(var, values);
        for (int i = 0; i < mode.levels; ++i) {
            out[i].*field = values[i];
        }
    };
    CDF_set_range(2, index, 1, 0, mode.levels);
    fill(mode.u, &ProfilerLevel::u);
    fill(mode.v, &ProfilerLevel::v);
    fill(mode.w, &ProfilerLevel::w);
    fill(mode.hdev, &ProfilerLevel::hdev);
    fill(mode.vdev, &ProfilerLevel::vdev);
    row.fill(-1.0F);
    if (CDF_get_float_array(mode.quality.id, row.data()) != 0) {
        row.fill(-1.0F);
    }
    for (int i = 0; i < mode.levels; ++i) {
        out[i].z = mode.height[i];
        out[i].qual = std::fabs(row[i]) < kHuge ? static_cast<int32_t>(row[i]) : kMissingInt;
    }
}

void drop_bad_values(ProfilerLevel &level, bool needs_quality)
{
    for (float *value : {&level.u, &level.v, &level.w, &level.hdev, &level.vdev}) {
        if (needs_quality && level.qual != kGoodQuality) {
            *value = kMissing;
        } else {
            *value = in_range(*value, -kWindLimit, kWindLimit);
        }
    }
}

/// Where low and high mode share a height one level remains: the earlier one, unless it has no
/// wind. The scan goes on behind the level that moves up.
void merge_equal_heights(ProfilerRecord *record)
{
    ProfilerLevel *level = record->level;
    for (int i = 0; i < record->num_level; ++i) {
        for (int j = i + 1; j < record->num_level; ++j) {
            if (level[i].z != level[j].z) {
                continue;
            }
            if (is_missing(level[i].u)) {
                level[i] = level[j];
            }
            std::copy(level + j + 1, level + record->num_level, level + j);
            --record->num_level;
        }
    }
}

/// Reads a record's name, of kNameLength characters at most; empty where it can't be read.
void read_name(int64_t index, char *name)
{
    name[0] = '\0';
    CDF_set_index(1, index);
    CDF_get_text(state.surface[kName].id, kNameLength, name);
    STR_strip_trailing(name);
}

void read_surface(int layout, ProfilerRecord *record)
{
    record->lat = surface_value(kLat);
    record->lon = surface_value(kLon);
    if (layout == kLayoutStation) {
        record->lon = is_missing(record->lon) ? kMissing : -record->lon;
        const long elevation = CDF_get_long(state.surface[kElev].id);
        record->elev = marked(static_cast<float>(elevation), state.surface[kElev]);
    } else {
        record->elev = surface_value(kElev);
    }
    record->sfc_p = in_range(surface_value(kPressure), 0.0F, 2000.0F);
    record->sfc_t = in_range(celsius(kTemperature), -100.0F, 100.0F);
    record->sfc_td = in_range(celsius(kDewPoint), -100.0F, 100.0F);
    record->sfc_dir = in_range(surface_value(kDirection), 0.0F, 360.0F);
    record->sfc_spd = in_range(surface_value(kSpeed), 0.0F, 200.0F);
    record->sfc_rain = in_range(surface_value(kRain), 0.0F, kHuge);
}

} // namespace

void netcdf_read_header(int layout, const char *name, int64_t whole_records, PrfFileInfo *info)
{
    const bool has_modes = layout == kLayoutStation;
    const Names &names = has_modes ? kStationNames : kRecNumNames;
    state = {};
    state.records = CDF_record_count(-1);
    // the library's complaint about a name doesn't say which, nor where: we do
    CDF_set_quiet(0);
    if (whole_records < state.records) {
        MSG_out(192, "PROF_read_header: %s: cut short, %ld of %ld reports are whole\n", name,
                static_cast<long>(whole_records), static_cast<long>(state.records));
        state.records = whole_records;
    }
    info->num_station = static_cast<int32_t>(state.records);
    for (int role = 0; role < kRoles; ++role) {
        state.surface[role] = find_variable(names.roles[role]);
    }
    if (has_modes) {
        state.mode_count = 2;
        state.modes = {find_mode("low"), find_mode("high")};
        if (state.records > 0) {
            read_station_date(info);
        }
        read_heights(state.modes[0], "low_level");
        read_heights(state.modes[1], "high_level");
    } else {
        state.mode_count = 1;
        state.modes[0] = find_only_mode();
        if (state.records > 0) {
            read_time_date(info);
        }
        read_heights(state.modes[0], "levels");
    }
    for (int m = 0; m < state.mode_count; ++m) {
        check_levels(state.modes[m], names.levels_dimension[m], name);
    }
    check_types(name);
    CDF_set_quiet(1);
    tell_what_lacks(name);
    TIME_format(&info->date, info->date_label);
}

int netcdf_read_record(int layout, int64_t index, ProfilerRecord *record)
{
    if (index < 0 || index >= state.records) {
        return -1;
    }
    PRF_init_record(record);
    read_name(index, record->id);
    if (record->id[0] == '\0') {
        return -1;
    }
    read_surface(layout, record);
    for (int m = 0; m < state.mode_count; ++m) {
        read_levels(state.modes[m], index, &record->level[m * kModeLevels]);
    }
    record->num_level = kAllLevels;
    for (int i = 0; i < kAllLevels; ++i) {
        drop_bad_values(record->level[i], layout == kLayoutStation);
    }
    merge_equal_heights(record);
    return 1;
}

int64_t netcdf_find_record(const char *id)
{
    std::array<char, kNameLength + 1> name;
    for (int64_t i = 0; i < state.records; ++i) {
        read_name(i, name.data());
        if (name[0] == '\0') {
            return -1;
        }
        if (STR_casecmp(id, name.data()) == 0) {
            return i;
        }
    }
    return -1;
}
