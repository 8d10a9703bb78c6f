#include "tyr/upper_air/forms/upa_netcdf.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <string>
#include <vector>

#include "tyr/base/classic_extent_private.h"
#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/netcdf.h"
#include "tyr/base/netcdf_library_private.h"
#include "tyr/base/str.h"
#include "tyr/upper_air/forms/upa_netcdf_private.h"

namespace tyr {

namespace {

constexpr float kFileVersion = 1.1F;    // at start
constexpr float kOldFileVersion = 1.0F; // of files whose longitudes count to the west
constexpr int kTextRead = 10;           // characters of identifier and region
constexpr int kLevel2 = 2;              // the place of 925 hPa, or of 850 in older files
constexpr float kLevel3Pressure = 850.0F;
constexpr size_t kLongestAttribute = 4096;

struct State {
    float version = kFileVersion;
};
State state;

float known(float value)
{
    return std::isfinite(value) ? value : kMissing;
}

float scaled(float value, float factor)
{
    return is_missing(value) ? value : value * factor;
}

/// The dimension's size, held within the record's array.
int dimension_size(const char *name, int most)
{
    const int dimension = CDF_dim_id(name);
    return dimension == -1
               ? 0
               : static_cast<int>(std::clamp<int64_t>(CDF_record_count(dimension), 0, most));
}

bool global_text(int file, const char *name, std::string *text)
{
    size_t length = 0;
    nc_type type = NC_NAT;
    if (nc().inq_att(file, NC_GLOBAL, name, &type, &length) != NC_NOERR || type != NC_CHAR ||
        length > kLongestAttribute) {
        return false;
    }
    text->assign(length, '\0');
    return nc().get_att_text(file, NC_GLOBAL, name, text->data()) == NC_NOERR;
}

bool has_global(int file, const char *name)
{
    size_t length = 0;
    return nc().inq_attlen(file, NC_GLOBAL, name, &length) == NC_NOERR;
}

int variable(const UpaNetcdf &file, UpaVariable which)
{
    return file.variables[static_cast<size_t>(which)];
}

void read_text(const UpaNetcdf &file, UpaVariable which, int index, char *out, size_t room)
{
    char text[kTextRead + 1] = {};
    CDF_set_index(1, index);
    CDF_get_text(variable(file, which), std::min(kTextRead, file.text), text);
    STR_strip_trailing(text);
    STR_copy(out, room, text);
}

float read_place(const UpaNetcdf &file, UpaVariable which, int index)
{
    CDF_set_index(1, index);
    return known(CDF_get_float(variable(file, which)));
}

int read_number(const UpaNetcdf &file, UpaVariable which, int index)
{
    CDF_set_index(1, index);
    constexpr long kMost = 2147483647L;
    return static_cast<int>(std::clamp(CDF_get_long(variable(file, which)), -kMost, kMost));
}

/// So many values of one report from a variable of levels; Missing where it has none.
std::vector<float> read_levels(const UpaNetcdf &file, UpaVariable which, int index, int count)
{
    std::vector<float> values(static_cast<size_t>(count), kMissing);
    if (count == 0) {
        return values;
    }
    CDF_set_range(2, index, 1, 0, count);
    if (CDF_get_float_array(variable(file, which), values.data()) == -1) {
        std::fill(values.begin(), values.end(), kMissing);
    }
    const bool metric = file.type == kUpaNetcdf2;
    for (float &value : values) {
        value = known(value);
        if (metric && (which == kVarMandSpd || which == kVarWndSpd)) {
            value = scaled(value, kKnotsOfMetres);
        } else if (metric && which == kVarWndZ) {
            value = scaled(value, kFeetOfMetres);
        }
    }
    return values;
}

float read_level(const UpaNetcdf &file, UpaVariable which, int index, int level)
{
    return level < file.mandatory ? read_levels(file, which, index, level + 1).back() : kMissing;
}

struct MandField {
    UpaVariable variable;
    float SoundLevel::*field;
};
constexpr MandField kMandFields[] = {
    {kVarMandP,   &SoundLevel::p  },
    {kVarMandZ,   &SoundLevel::z  },
    {kVarMandT,   &SoundLevel::t  },
    {kVarMandTd,  &SoundLevel::td },
    {kVarMandDir, &SoundLevel::dir},
    {kVarMandSpd, &SoundLevel::spd}
};

struct SigField {
    UpaVariable variable;
    float UpaSigLevel::*field;
};
constexpr SigField kSigFields[] = {
    {kVarSigP,  &UpaSigLevel::p },
    {kVarSigT,  &UpaSigLevel::t },
    {kVarSigTd, &UpaSigLevel::td}
};

struct WindField {
    UpaVariable variable;
    float UpaWindLevel::*field;
};
constexpr WindField kWindFields[] = {
    {kVarWndZ,   &UpaWindLevel::z  },
    {kVarWndDir, &UpaWindLevel::dir},
    {kVarWndSpd, &UpaWindLevel::spd}
};

void read_head(const UpaNetcdf &file, int index, UpaReport *report)
{
    read_text(file, kVarId, index, report->id, sizeof report->id);
    read_text(file, kVarRegion, index, report->region, sizeof report->region);
    if (report->region[0] == '\0') {
        STR_copy(report->region, sizeof report->region, "UN");
    }
    report->wmo = read_number(file, kVarWmo, index);
    report->lat = read_place(file, kVarLat, index);
    report->lon = read_place(file, kVarLon, index);
    if (state.version == kOldFileVersion) {
        report->lon = scaled(report->lon, -1.0F);
    }
    report->elev = read_level(file, kVarMandZ, index, 0);
}

/// One mandatory slot into mand[0].
void read_one_level(const UpaNetcdf &file, int index, int what, UpaReport *report)
{
    report->num_mand = 1;
    int level = what;
    if (what > 1 && read_level(file, kVarMandP, index, kLevel2) == kLevel3Pressure) {
        if (what == kUpa925) {
            return;
        }
        level = what - 1;
    }
    for (const MandField &row : kMandFields) {
        report->mand[0].*row.field = read_level(file, row.variable, index, level);
    }
}

void read_mandatory(const UpaNetcdf &file, int index, UpaReport *report)
{
    const int told = read_number(file, kVarNumMand, index);
    const int count = std::clamp(told, 0, file.mandatory);
    report->num_mand = count;
    const std::vector<float> pressures = read_levels(file, kVarMandP, index, count);
    const bool no_925 = count > kLevel2 && pressures[kLevel2] == kLevel3Pressure;
    for (const MandField &row : kMandFields) {
        const std::vector<float> values = read_levels(file, row.variable, index, count);
        for (int level = 0; level < count; ++level) {
            const int slot = no_925 && level >= kLevel2 ? level + 1 : level;
            if (slot < kUpaMandatory) {
                report->mand[slot].*row.field = values[static_cast<size_t>(level)];
            }
        }
    }
}

void read_lists(const UpaNetcdf &file, int index, UpaReport *report)
{
    report->num_sig = std::clamp(read_number(file, kVarNumSig, index), 0, file.significant);
    for (const SigField &row : kSigFields) {
        const std::vector<float> values = read_levels(file, row.variable, index, report->num_sig);
        for (size_t i = 0; i < values.size(); ++i) {
            report->sig[i].*row.field = values[i];
        }
    }
    report->num_wnd = std::clamp(read_number(file, kVarNumWnd, index), 0, file.winds);
    for (const WindField &row : kWindFields) {
        const std::vector<float> values = read_levels(file, row.variable, index, report->num_wnd);
        for (size_t i = 0; i < values.size(); ++i) {
            report->wnd[i].*row.field = values[i];
        }
    }
}

} // namespace

bool is_sound_netcdf(const char *routine, const char *path, int64_t *records)
{
    const ClassicExtent extent = classic_file_extent(path);
    const bool sound = extent.is_whole && extent.fixed_part;
    if (extent.is_classic && !sound) {
        MSG_out(kMsgWarn, "%s: %s: the file is cut short or damaged\n", routine, path);
    }
    *records = extent.whole_records;
    return sound;
}

int netcdf_layout(const char *path)
{
    CDF_set_quiet(0);
    if (CDF_open(path, 0) == -1) {
        return -1;
    }
    const int dimension = CDF_dim_id(kRecord1);
    CDF_close();
    CDF_set_quiet(1);
    return dimension != -1 ? kUpaNetcdf1 : kUpaNetcdf2;
}

void read_netcdf_header(UpaNetcdf *file, int64_t whole_records, UpaFileHeader *header)
{
    CDF_set_current(file->id);
    CDF_set_quiet(0);
    file->records = std::min(CDF_record_count(-1), whole_records);
    for (size_t i = 0; i < file->variables.size(); ++i) {
        const UpaVariableRow &row = kUpaVariableRows[i];
        file->variables[i] = CDF_var_id(file->type == kUpaNetcdf1 ? row.name1 : row.name2);
    }
    file->mandatory = dimension_size(kMandLevel, kUpaMandatory);
    file->significant = dimension_size(kSigLevel, kUpaSignificant);
    file->winds = dimension_size(kWindLevel, kUpaWinds);
    file->text = dimension_size(kStringLength, kTextRead);
    CDF_set_quiet(1);
    std::string text;
    if (global_text(file->id, "filetime", &text) || global_text(file->id, "datetime", &text)) {
        STR_copy(header->date_text, sizeof header->date_text, text.c_str());
    }
    if (global_text(file->id, "yymmddhh", &text)) {
        STR_copy(header->short_date, sizeof header->short_date, text.c_str());
    }
    if (!has_global(file->id, "version")) {
        state.version = kOldFileVersion;
    }
}

bool has_reports(const UpaNetcdf &file)
{
    const std::initializer_list<UpaVariable> levels = {kVarMandP, kVarSigP, kVarWndZ};
    return std::any_of(levels.begin(), levels.end(),
                       [&](UpaVariable which) { return variable(file, which) != -1; });
}

int read_netcdf_report(const UpaNetcdf &file, UpaReport *report, int what, int index)
{
    if (index < 0 || index >= file.records) {
        return -1;
    }
    if (what > kUpaPlace) {
        return 0;
    }
    CDF_set_current(file.id);
    UPA_clear_report(report);
    if (what == kUpaHeading) {
        read_text(file, kVarId, index, report->id, sizeof report->id);
        report->wmo = read_number(file, kVarWmo, index);
        return 0;
    }
    read_head(file, index, report);
    if (what == kUpaWhole) {
        read_mandatory(file, index, report);
        read_lists(file, index, report);
    } else if (what >= kUpaSurface && what <= kUpaMaxWind) {
        read_one_level(file, index, what, report);
    }
    return 0;
}

} // namespace tyr
