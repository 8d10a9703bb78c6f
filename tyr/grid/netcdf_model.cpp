#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>

#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/netcdf_library_private.h"
#include "tyr/base/str.h"
#include "tyr/grid/grid_label_private.h"
#include "tyr/grid/netcdf_grids_private.h"
#include "tyr/grid/netcdf_model_table_private.h"
#include "tyr/grid/param.h"

namespace tyr {

namespace {

constexpr size_t kMostVariables = 32;
constexpr int kNoRecords = 100; ///< added to the form of a file without rtime
constexpr float kHuge = 1e30F;  ///< from here on nothing was recorded
constexpr int kPressureLevel = 10, kGround = 12;

int either_dim(const NcFile &file, const char *a, const char *b)
{
    const int id = file.dim(a);
    return id != -1 ? id : file.dim(b);
}

int either_var(const NcFile &file, const char *a, const char *b)
{
    const int id = file.var(a);
    return id != -1 ? id : file.var(b);
}

int form_of(const std::string &title)
{
    int form = 0;
    for (const ModelTitle &known : kModelTitles) {
        form = title.rfind(known.start, 0) == 0 ? known.form : form;
    }
    for (const ModelTitle &word : kTitleWords) {
        form += title.find(word.start) != std::string::npos ? word.form : 0;
    }
    return form;
}

/// Code of a variable; -1 for one that isn't known.
int code_of(const std::string &name, const std::string &units)
{
    for (const ModelVariable &known : kModelVariables) {
        const auto same = [&name](const char *word) { return word != nullptr && name == word; };
        if (!std::any_of(std::begin(known.names), std::end(known.names), same)) {
            continue;
        }
        for (const ModelUnits &row : known.known) {
            if (row.units != nullptr && units == row.units) {
                return row.code;
            }
        }
        return known.code;
    }
    return -1;
}

int whole(double value)
{
    return static_cast<int>(std::clamp(value, -2147483647.0, 2147483647.0));
}

/// Years below 100 count from 1900, and a year that can't be becomes 1980.
void settle_run(DateRec *run)
{
    constexpr int kCentury = 1900, kFirstYear = 1900, kLastYear = 2199, kOtherYear = 1980;
    const auto within = [](int value, int low, int high) { return value >= low && value <= high; };
    run->year += within(run->year, 0, 99) ? kCentury : 0;
    run->year = within(run->year, kFirstYear, kLastYear) ? run->year : kOtherYear;
    run->month = within(run->month, 1, 12) ? run->month : 1;
    run->day = within(run->day, 1, 31) ? run->day : 1;
    run->hour = within(run->hour, 0, 23) ? run->hour : 0;
}

} // namespace

NetcdfModel::NetcdfModel(NcFile *file)
    : file_(file), lon_dim_(either_dim(*file, "lon", "x")), lat_dim_(either_dim(*file, "lat", "y")),
      level_dim_(either_dim(*file, "level", "plevl")),
      time_dim_(either_dim(*file, "frtime", "anltime")), record_dim_(file->dim("rtime"))
{
    form_ = form_of(file->attribute(NC_GLOBAL, "title")) + (record_dim_ == -1 ? kNoRecords : 0);
    find_variables();
    const int year = file->var("year");
    if (year != -1) {
        run_.year = whole(file->number(year, 0, kMissingInt));
        run_.month = whole(file->number(file->var("month"), 0, kMissingInt));
        run_.day = whole(file->number(file->var("day"), 0, kMissingInt));
        run_.hour = whole(file->number(file->var("hour"), 0, kMissingInt));
    } else {
        const std::string text = file->text(file->var("reftime"), 0);
        std::sscanf(text.c_str(), "%d %d %d %d", &run_.year, &run_.month, &run_.day, &run_.hour);
    }
    settle_run(&run_);
}

void NetcdfModel::find_variables()
{
    int count = 0;
    nc().inq_nvars(file_->id(), &count);
    const char *single = std::getenv("GRIDVAR");
    for (int id = 0; id < count; ++id) {
        std::array<char, NC_MAX_NAME + 1> name{};
        if (nc().inq_varname(file_->id(), id, name.data()) != NC_NOERR) {
            continue;
        }
        const int code = single != nullptr && STR_casecmp(single, name.data()) == 0
                             ? 0
                             : code_of(name.data(), file_->attribute(id, "units"));
        const std::vector<int> dims = file_->dims_of(id);
        const auto has = [&dims](int dim) {
            return dim != -1 && std::find(dims.begin(), dims.end(), dim) != dims.end();
        };
        if (code == -1 || !has(lon_dim_) || !has(lat_dim_)) {
            continue;
        }
        if (found_.size() == kMostVariables) {
            MSG_out(kMsgWarn, "GRD_read_header: %s: more than %d variables, the rest is left out\n",
                    file_->name().c_str(), static_cast<int>(kMostVariables));
            return;
        }
        Found found = {id, code, has(time_dim_), has(level_dim_), 1};
        found.places = (found.has_time ? file_->length(time_dim_) : 1) *
                       (found.has_level ? file_->length(level_dim_) : 1);
        found_.push_back(found);
    }
}

int NetcdfModel::read_header(GridFileInfo *info)
{
    info->grid_type = 0;
    info->date = run_;
    std::array<char, kDateTextRoom> text{};
    TIME_format(&run_, text.data());
    STR_copy(info->date_text, sizeof info->date_text, text.data());
    return 0;
}

bool NetcdfModel::find_place(int index, Place *place) const
{
    size_t left = static_cast<size_t>(std::max(index, 0));
    for (const Found &variable : found_) {
        if (left < variable.places) {
            const size_t levels = variable.has_level ? file_->length(level_dim_) : 1;
            *place = {&variable, left / levels, left % levels};
            return true;
        }
        left -= variable.places;
    }
    return false;
}

void NetcdfModel::set_level_by_form(int code, GridRec *grid) const
{
    constexpr int kEarly = 10, kTropopause = 7, kMaxWind = 6, kExtended = 20;
    const bool is_pressure = code == 1 || code == 101;
    const bool is_surface = code == 2 || code == 102 || code == 50;
    grid->level = 0;
    grid->ltype = is_pressure ? kGround : is_surface ? 1 : 9;
    if (grid->model == kEarly) {
        grid->ltype = code == 23 ? 1 : kGround;
    }
    const int form = form_ % kNoRecords;
    if (form > 9 && form % 10 == 1) {
        grid->ltype = kTropopause;
    } else if (form > 9 && form % 10 == 2) {
        grid->ltype = kMaxWind;
    } else if (form == kExtended && code == 2) {
        grid->ltype = kPressureLevel;
        grid->level = 500;
    }
}

void NetcdfModel::set_level(const Place &place, GridRec *grid) const
{
    constexpr int kLateForm = 13;
    const Found &variable = *place.variable;
    if (variable.has_time) {
        grid->time = whole(file_->number(either_var(*file_, "frtime", "anlhour"), place.time, 0.0));
    }
    if (variable.has_level) {
        grid->ltype = kPressureLevel;
        grid->level = whole(file_->number(either_var(*file_, "level", "plevl"), place.level, 0.0));
    } else if (variable.has_time) {
        set_level_by_form(variable.code, grid);
    } else {
        grid->ltype = 1;
        if (form_ % kNoRecords == kLateForm) {
            grid->ltype = kPressureLevel;
            grid->level = 500;
            grid->time = 72;
        }
    }
}

bool NetcdfModel::set_domain(GridRec *grid) const
{
    constexpr size_t kPolarSize = 83;
    DomainRec &domain = grid->domain;
    const size_t nx = file_->length(lon_dim_);
    const size_t ny = file_->length(lat_dim_);
    constexpr size_t kMost = 1U << 30U;
    if (nx < 1 || ny < 1 || nx > kMost || ny > kMost) {
        return false;
    }
    domain.nx = static_cast<int>(nx);
    domain.ny = static_cast<int>(ny);
    const int lat = file_->var("lat");
    const int lon = file_->var("lon");
    if (lat != -1) {
        const double lat0 = file_->number(lat, 0, 0.0);
        const double lon0 = file_->number(lon, 0, 0.0);
        const double dy = file_->number(lat, 1, lat0) - lat0;
        const double dx = file_->number(lon, 1, lon0) - lon0;
        domain.proj = kProjLatLon;
        domain.dx = static_cast<float>(dx);
        domain.dy = static_cast<float>(dy);
        domain.clat = static_cast<float>(lat0 + (domain.ny - 1) * dy / 2.0);
        domain.clon = static_cast<float>(lon0 + (domain.nx - 1) * dx / 2.0);
    } else if (nx == kPolarSize && ny == kPolarSize) {
        domain.proj = kProjPolar;
        domain.clat = 50.8936F;
        domain.clon = -103.1524F;
        domain.plon = -105.0F;
        domain.dx = domain.dy = 0.90755F;
    }
    return true;
}

void NetcdfModel::set_grid_id(GridRec *grid) const
{
    DomainRec &domain = grid->domain;
    constexpr int kEleven[] = {69, 78, 77, 10, 25, 44, 31, 40};
    if (grid->model == 39 || grid->model == 64) {
        grid->grid_id = 50;
    } else if (grid->model == 83 && domain.proj == kProjNone && domain.nx == 93 &&
               domain.ny == 65) {
        grid->grid_id = 211;
        domain.proj = kProjLambert;
        domain.clat = 40.62F;
        domain.clon = -100.51F;
        domain.dx = domain.dy = 0.6263F;
        domain.plon = -95.0F;
        domain.parm1 = domain.parm2 = 25.0F;
        domain.parm3 = 1.277F;
    } else if (std::find(std::begin(kEleven), std::end(kEleven), grid->model) !=
               std::end(kEleven)) {
        grid->grid_id = 11;
        if ((grid->model == 69 || grid->model == 78) && grid->time > 72 && domain.nx == 72) {
            domain.nx = 73;
            domain.clon += domain.dx / 2.0F;
        }
    }
}

bool NetcdfModel::read_values(const Place &place, GridRec *grid) const
{
    const std::vector<int> dims = file_->dims_of(place.variable->id);
    const size_t nx = file_->length(lon_dim_);
    const size_t ny = file_->length(lat_dim_);
    if (nx * ny > static_cast<size_t>(file_->size()) || dims.size() < 2 ||
        dims.back() != lon_dim_ || dims[dims.size() - 2] != lat_dim_ || GRD_alloc(grid) == 0) {
        return false;
    }
    std::vector<size_t> start(dims.size(), 0);
    std::vector<size_t> count(dims.size(), 1);
    for (size_t d = 0; d + 2 < dims.size(); ++d) {
        start[d] = dims[d] == time_dim_ ? place.time : dims[d] == level_dim_ ? place.level : 0;
    }
    count.back() = nx;
    const size_t width = static_cast<size_t>(grid->domain.nx);
    for (size_t y = 0; y < ny; ++y) {
        start[dims.size() - 2] = y;
        float *row = grid->values + (ny - 1 - y) * width;
        const int status =
            nc().get_vara_float(file_->id(), place.variable->id, start.data(), count.data(), row);
        if (status != NC_NOERR && status != NC_ERANGE) {
            return false;
        }
        std::replace_if(
            row, row + nx, [](float v) { return !(v <= kHuge); }, kMissing);
        if (width > nx) {
            row[nx] = row[0]; // round the earth to the first place
        }
    }
    return true;
}

/// Label, unit and date; an empty grid, whose first value is huge, loses its description.
void NetcdfModel::set_label(const Place &place, GridRec *grid) const
{
    const int id = place.variable->id;
    const std::vector<int> dims = file_->dims_of(id);
    std::vector<size_t> first(dims.size(), 0);
    for (size_t d = 0; d < dims.size(); ++d) {
        first[d] = dims[d] == time_dim_ ? place.time : dims[d] == level_dim_ ? place.level : 0;
    }
    float value = 0.0F;
    const int status = nc().get_var1_float(file_->id(), id, first.data(), &value);
    if ((status != NC_NOERR && status != NC_ERANGE) || value >= kHuge) {
        grid->source = grid->var = grid->ltype = grid->level = grid->time = 0;
    }
    const char *added = std::getenv("GRIBQP");
    if (place.variable->code == 50 && added != nullptr) {
        grid->time += std::atoi(added);
    }
    const char *units = GRD_unit_text(place.variable->code);
    STR_copy(grid->units, sizeof grid->units, units != nullptr ? units : "");
    label_old_code(grid, run_);
    if (place.variable->code == 0) {
        const std::string text = file_->attribute(id, "units");
        STR_copy(grid->units, sizeof grid->units, text);
        STR_copy(grid->info, sizeof grid->info,
                 file_->attribute(id, "long_name") + " (" + text + ")");
    }
}

int NetcdfModel::read(GridRec *grid, int mode, const int *index)
{
    Place place = {};
    if (!find_place(*index, &place)) {
        return -1;
    }
    grid->var = place.variable->code;
    grid->source = whole(file_->number(file_->var("grib_center"), 0, 0.0));
    grid->model = whole(file_->number(file_->var("grib_model"), 0, 0.0));
    set_level(place, grid);
    if (!set_domain(grid)) {
        MSG_out(kMsgWarn, "GRD_read: %s: no size of the grid\n", file_->name().c_str());
        return -1;
    }
    set_grid_id(grid);
    set_label(place, grid);
    if (mode == 0 && !read_values(place, grid)) {
        GRD_free(grid);
        MSG_out(kMsgWarn, "GRD_read: %s, grid %d: its values can't be read\n",
                file_->name().c_str(), *index);
        return -1;
    }
    return 0;
}

} // namespace tyr
