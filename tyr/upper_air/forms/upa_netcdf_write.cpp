#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/netcdf_library_private.h"
#include "tyr/base/str.h"
#include "tyr/upper_air/forms/upa_netcdf.h"
#include "tyr/upper_air/forms/upa_netcdf_private.h"

namespace tyr {

namespace {

constexpr size_t kStringSize = 11;
constexpr int kMostMandatory = 25; // num_mant of a report that has any
constexpr int64_t kMostGap = 1000; // records that may be left out ahead of one
constexpr const char *kHistory = "Upper air converted file from TYR decoders";

/// Calls of the netCDF library, where the first that fails is kept.
class Calls {
  public:
    void operator()(int status)
    {
        if (status_ == NC_NOERR) {
            status_ = status;
        }
    }
    /// 0; -1 with a message.
    int result(const char *routine) const
    {
        if (status_ == NC_NOERR) {
            return 0;
        }
        MSG_out(kMsgWarn, "%s: %s\n", routine, nc().strerror(status_));
        return -1;
    }

  private:
    int status_ = NC_NOERR;
};

/// The dimensions of a file in definition.
struct Dimensions {
    int record = -1;
    int text = -1;
    int mandatory = -1;
    int significant = -1;
    int wind = -1;

    int of(UpaShape shape) const
    {
        switch (shape) {
        case UpaShape::text:
            return text;
        case UpaShape::mandatory:
            return mandatory;
        case UpaShape::significant:
            return significant;
        case UpaShape::wind:
            return wind;
        case UpaShape::one:
            break;
        }
        return -1;
    }
};

void put_text(Calls &call, int file, int variable, const char *name, const std::string &text)
{
    call(nc().put_att_text(file, variable, name, text.size(), text.c_str()));
}

void put_numbers(Calls &call, int file, int variable, const UpaVariableRow &row)
{
    const std::array<float, 2> range = {row.low, row.high};
    const std::array<int, 2> whole = {static_cast<int>(row.low), static_cast<int>(row.high)};
    const int none = 0;
    if (row.type == NC_FLOAT) {
        call(nc().put_att_float(file, variable, "_FillValue", NC_FLOAT, 1, &kMissing));
        call(nc().put_att_float(file, variable, "valid_range", NC_FLOAT, range.size(),
                                range.data()));
    } else if (row.low < row.high) {
        call(nc().put_att_int(file, variable, "_FillValue", NC_INT, 1, &none));
        call(nc().put_att_int(file, variable, "valid_range", NC_INT, whole.size(), whole.data()));
    }
}

int define_variable(Calls &call, const UpaNetcdf &file, const Dimensions &dimensions,
                    const UpaVariableRow &row)
{
    const bool first = file.type == kUpaNetcdf1;
    const std::array<int, 2> shape = {dimensions.record, dimensions.of(row.shape)};
    int id = -1;
    call(nc().def_var(file.id, first ? row.name1 : row.name2, row.type,
                      row.shape == UpaShape::one ? 1 : 2, shape.data(), &id));
    put_text(call, file.id, id, "long_name", row.long_name);
    if (row.units1 != nullptr) {
        put_text(call, file.id, id, "units", first ? row.units1 : row.units2);
    }
    put_numbers(call, file.id, id, row);
    return id;
}

/// Writes the values of one record of a variable, in the file's units.
class RecordWriter {
  public:
    RecordWriter(const UpaNetcdf &file, int index) : file_(file), index_(static_cast<size_t>(index))
    {
    }

    void text(UpaVariable which, const std::string &text)
    {
        std::string padded = text.substr(0, kStringSize - 1);
        padded.resize(kStringSize, '\0');
        const std::array<size_t, 2> start = {index_, 0};
        const std::array<size_t, 2> count = {1, kStringSize};
        call_(nc().put_vara_text(file_.id, id(which), start.data(), count.data(), padded.c_str()));
    }
    void number(UpaVariable which, int value)
    {
        call_(nc().put_var1_int(file_.id, id(which), &index_, &value));
    }
    void real(UpaVariable which, float value)
    {
        call_(nc().put_var1_float(file_.id, id(which), &index_, &value));
    }
    /// One field of so many levels.
    template <class Level>
    void levels(UpaVariable which, const Level *levels, int count, float Level::*field)
    {
        std::vector<float> values;
        values.reserve(static_cast<size_t>(count));
        for (int i = 0; i < count; ++i) {
            values.push_back(in_units(which, levels[i].*field));
        }
        const std::array<size_t, 2> start = {index_, 0};
        const std::array<size_t, 2> counts = {1, values.size()};
        if (!values.empty()) {
            call_(nc().put_vara_float(file_.id, id(which), start.data(), counts.data(),
                                      values.data()));
        }
    }
    int result(const char *routine) const { return call_.result(routine); }

  private:
    int id(UpaVariable which) const { return file_.variables[static_cast<size_t>(which)]; }
    float in_units(UpaVariable which, float value) const
    {
        if (file_.type == kUpaNetcdf1 || is_missing(value)) {
            return value;
        }
        const bool speed = which == kVarMandSpd || which == kVarWndSpd;
        return speed ? value * kMetresOfKnots : which == kVarWndZ ? value * kMetresOfFeet : value;
    }

    const UpaNetcdf &file_;
    size_t index_;
    Calls call_;
};

/// The elevation stands as the height of slot 0, where the report has none.
void write_mandatory(RecordWriter &out, const UpaReport &report)
{
    SoundLevel surface = report.mand[kUpaSurface];
    surface.z = is_missing(surface.z) ? report.elev : surface.z;
    out.levels(kVarMandP, report.mand, kUpaMandatory, &SoundLevel::p);
    out.levels(kVarMandZ, report.mand, kUpaMandatory, &SoundLevel::z);
    out.levels(kVarMandZ, &surface, 1, &SoundLevel::z);
    out.levels(kVarMandT, report.mand, kUpaMandatory, &SoundLevel::t);
    out.levels(kVarMandTd, report.mand, kUpaMandatory, &SoundLevel::td);
    out.levels(kVarMandDir, report.mand, kUpaMandatory, &SoundLevel::dir);
    out.levels(kVarMandSpd, report.mand, kUpaMandatory, &SoundLevel::spd);
    out.number(kVarNumMand, report.num_mand != 0 ? kMostMandatory : 0);
}

void write_lists(RecordWriter &out, const UpaReport &report)
{
    const int sig = std::clamp(report.num_sig, 0, kUpaSignificant);
    out.number(kVarNumSig, sig);
    out.levels(kVarSigP, report.sig, sig, &UpaSigLevel::p);
    out.levels(kVarSigT, report.sig, sig, &UpaSigLevel::t);
    out.levels(kVarSigTd, report.sig, sig, &UpaSigLevel::td);
    const int winds = std::clamp(report.num_wnd, 0, kUpaWinds);
    out.number(kVarNumWnd, winds);
    out.levels(kVarWndZ, report.wnd, winds, &UpaWindLevel::z);
    out.levels(kVarWndDir, report.wnd, winds, &UpaWindLevel::dir);
    out.levels(kVarWndSpd, report.wnd, winds, &UpaWindLevel::spd);
}

} // namespace

int write_netcdf_header(UpaNetcdf *file, const UpaFileHeader &header)
{
    Calls call;
    Dimensions dimensions;
    const bool first = file->type == kUpaNetcdf1;
    const int id = file->id;
    call(nc().def_dim(id, first ? kRecord1 : kRecord2, NC_UNLIMITED, &dimensions.record));
    call(nc().def_dim(id, kMandLevel, kUpaMandatory, &dimensions.mandatory));
    call(nc().def_dim(id, kSigLevel, kUpaSignificant, &dimensions.significant));
    call(nc().def_dim(id, kWindLevel, kUpaWinds, &dimensions.wind));
    call(nc().def_dim(id, kStringLength, kStringSize, &dimensions.text));
    for (size_t i = 0; i < file->variables.size(); ++i) {
        file->variables[i] = define_variable(call, *file, dimensions, kUpaVariableRows[i]);
    }
    put_text(call, id, NC_GLOBAL, "title", "Upper Air Observations");
    put_text(call, id, NC_GLOBAL, "version", "2.0");
    put_text(call, id, NC_GLOBAL, "history", header.history ? header.history : kHistory);
    put_text(call, id, NC_GLOBAL, "filetime", header.date_text);
    put_text(call, id, NC_GLOBAL, "yymmddhh", header.short_date);
    call(nc().enddef(id));
    const int result = call.result("UPA_write_header");
    file->defined = result == 0;
    return result;
}

int write_netcdf_report(UpaNetcdf *file, const UpaReport &report, int index)
{
    if (!file->defined || index < 0 || index > file->records + kMostGap) {
        MSG_out(kMsgWarn, "UPA_write: no place for report %d in the netCDF file\n", index);
        return -1;
    }
    RecordWriter out(*file, index);
    out.text(kVarId, report.id);
    out.text(kVarRegion, report.region);
    out.text(kVarType, "LAND");
    out.number(kVarWmo, report.wmo);
    out.real(kVarLat, report.lat);
    out.real(kVarLon, report.lon);
    write_mandatory(out, report);
    write_lists(out, report);
    file->records = std::max<int64_t>(file->records, index + 1);
    return out.result("UPA_write");
}

} // namespace tyr
