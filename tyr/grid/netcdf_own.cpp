#include <algorithm>
#include <array>
#include <cstring>

#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/netcdf_library_private.h"
#include "tyr/base/str.h"
#include "tyr/grid/netcdf_grids_private.h"

namespace tyr {

namespace {

constexpr size_t kTextLength = 50;
constexpr int kHasCoordinates = 1;
constexpr int kLastPolarModel = 9;

struct Words {
    const char *id, *name, *long_name, *units;
};
struct IntField {
    Words words;
    int GridRec::*field;
};
constexpr IntField kIntFields[] = {
    {{"source", "SOURCE", "Grid creation source", nullptr},    &GridRec::source },
    {{"version", "VERSION", "Grid encoding version", nullptr}, &GridRec::version},
    {{"model", "MODEL", "Model name", nullptr},                &GridRec::model  },
    {{"type", "TYPE", "Model grid type", nullptr},             &GridRec::grid_id},
    {{"ltype", "LTYPE", "Vertical level type", nullptr},       &GridRec::ltype  },
    {{"level", "LEVEL", "Vertical level value", nullptr},      &GridRec::level  },
    {{"time", "TIME", "Forecast time", "HOUR"},                &GridRec::time   },
    {{"var", "VAR", "Grid variable type", nullptr},            &GridRec::var    },
};
struct SizeField {
    Words words;
    int DomainRec::*field;
    bool is_projection;
};
constexpr SizeField kSizeFields[] = {
    {{"nx", "NX", "Gridpoints in X direction", nullptr}, &DomainRec::nx,   false},
    {{"ny", "NY", "Gridpoints in X direction", nullptr}, &DomainRec::ny,   false},
    {{"proj", "PROJ", "Projection", nullptr},            &DomainRec::proj, true },
};
struct RealField {
    Words words;
    float DomainRec::*field;
};
constexpr RealField kRealFields[] = {
    {{"lat1", "CLAT", "Grid central latitude", "DEG"},           &DomainRec::clat },
    {{"lat2", "LAT2", "Grid secondary latitude", "DEG"},         &DomainRec::plat },
    {{"lon1", "CLON", "Grid central longitude", "DEG"},          &DomainRec::clon },
    {{"lon2", "LON2", "Grid secondary longitude", "DEG"},        &DomainRec::plon },
    {{"dx", "DX", "Grid spacing in X direction", "100 KM"},      &DomainRec::dx   },
    {{"dy", "DY", "Grid spacing in Y direction", "100 KM"},      &DomainRec::dy   },
    {{"parm1", "PARM1", "First projection parameter", nullptr},  &DomainRec::parm1},
    {{"parm2", "PARM2", "Second projection parameter", nullptr}, &DomainRec::parm2},
    {{"parm3", "PARM3", "Third projection parameter", nullptr},  &DomainRec::parm3},
};
constexpr Words kDate = {"datim", "DATETIME", "Grid date/time information", nullptr};
constexpr Words kInfo = {"info", "INFO", "Grid variable information", nullptr};
constexpr Words kUnits = {"units", "UNITS", "Units of the values", nullptr};
constexpr Words kValues = {"values", "VALUES", "Grid values", nullptr};
constexpr Words kCoordinates[] = {
    {"x_coord", "X_COORD", "X coordinate gridpoint locations", "DEG"},
    {"y_coord", "Y_COORD", "Y coordinate gridpoint locations", "DEG"},
};

void put_text(int id, int var, const char *name, const char *text)
{
    if (text != nullptr) {
        nc().put_att_text(id, var, name, std::strlen(text), text);
    }
}

int define_var(int id, const Words &words, nc_type type, int rank, const int *dims)
{
    int var = -1;
    nc().def_var(id, words.id, type, rank, dims, &var);
    put_text(id, var, "name", words.name);
    put_text(id, var, "long_name", words.long_name);
    put_text(id, var, "units", words.units);
    return var;
}

void define_values(int id, const Words &words, const int *dims)
{
    const int var = define_var(id, words, NC_FLOAT, 3, dims);
    nc().put_att_float(id, var, "_FillValue", NC_FLOAT, 1, &kMissing);
}

bool write_text(const NcFile &file, const char *name, size_t index, const char *text)
{
    std::array<char, kTextLength> row{};
    std::memcpy(row.data(), text, std::min(std::strlen(text), row.size()));
    const std::array<size_t, 2> start = {index, 0};
    const std::array<size_t, 2> count = {1, kTextLength};
    return nc().put_vara_text(file.id(), file.var(name), start.data(), count.data(), row.data()) ==
           NC_NOERR;
}

int whole(double value)
{
    return static_cast<int>(std::clamp(value, -2147483647.0, 2147483647.0));
}

float real(double value)
{
    return static_cast<float>(std::clamp(value, -3.0e38, 3.0e38));
}

} // namespace

int NetcdfOwn::count() const
{
    return static_cast<int>(std::min<size_t>(file_->length(file_->dim("grid")), 1U << 30U));
}

int NetcdfOwn::read_header(GridFileInfo *info)
{
    constexpr int kCentury = 1900;
    info->grid_type = file_->attribute_number("grid_type", 0);
    info->date = DateRec{};
    const int year = file_->attribute_number("year", kMissingInt);
    // files tell a whole year; a short one counts from 1900
    info->date.year = year >= 0 && year < kCentury ? year + kCentury : year;
    info->date.month = file_->attribute_number("month", kMissingInt);
    info->date.day = file_->attribute_number("day", kMissingInt);
    info->date.hour = file_->attribute_number("hour", kMissingInt);
    std::array<char, kDateTextRoom> text{};
    TIME_format(&info->date, text.data());
    STR_copy(info->date_text, sizeof info->date_text, text.data());
    return 0;
}

int NetcdfOwn::read(GridRec *grid, int mode, const int *index)
{
    const size_t place = static_cast<size_t>(std::max(*index, 0));
    if (place >= file_->length(file_->dim("grid"))) {
        return -1;
    }
    for (const IntField &f : kIntFields) {
        grid->*f.field = whole(file_->number(file_->var(f.words.id), place, 0));
    }
    for (const RealField &f : kRealFields) {
        grid->domain.*f.field =
            real(file_->number(file_->var(f.words.id), place, static_cast<double>(kMissing)));
    }
    for (const SizeField &f : kSizeFields) {
        grid->domain.*f.field = whole(file_->number(file_->var(f.words.id), place, kMissingInt));
    }
    if (file_->var("proj") == -1) {
        grid->domain.proj = grid->model <= kLastPolarModel ? kProjPolar : kProjLatLon;
    }
    STR_copy(grid->date, sizeof grid->date, file_->text(file_->var("datim"), place));
    STR_copy(grid->info, sizeof grid->info, file_->text(file_->var("info"), place));
    STR_copy(grid->units, sizeof grid->units, file_->text(file_->var("units"), place));
    if (mode != 0) {
        return 0;
    }
    const DomainRec &domain = grid->domain;
    const int64_t values = static_cast<int64_t>(domain.nx) * domain.ny;
    const std::array<size_t, 3> start = {place, 0, 0};
    const std::array<size_t, 3> count = {1, static_cast<size_t>(domain.ny),
                                         static_cast<size_t>(domain.nx)};
    const int var = file_->var("values");
    const char *reason = nullptr;
    if (domain.nx < 1 || domain.ny < 1 || values > file_->size() / 4 ||
        count[2] > file_->length(file_->dim("x")) || count[1] > file_->length(file_->dim("y")) ||
        file_->dims_of(var).size() != count.size()) {
        reason = "nx and ny don't fit what the file holds";
    } else if (GRD_alloc(grid) == 0 ||
               nc().get_vara_float(file_->id(), var, start.data(), count.data(), grid->values) !=
                   NC_NOERR) {
        reason = "its values can't be read";
    }
    if (reason != nullptr) {
        GRD_free(grid);
        MSG_out(kMsgWarn, "GRD_read: %s, grid %d: %s\n", file_->name().c_str(), *index, reason);
        return -1;
    }
    return 0;
}

void NetcdfOwn::set_header(const GridFileInfo &info)
{
    info_ = info;
    has_header_ = true;
}

bool NetcdfOwn::define(size_t nx, size_t ny)
{
    const int id = file_->id();
    std::array<int, 3> dims{};
    int text_length = -1;
    nc().def_dim(id, "grid", NC_UNLIMITED, &dims[0]);
    nc().def_dim(id, "y", ny, &dims[1]);
    nc().def_dim(id, "x", nx, &dims[2]);
    nc().def_dim(id, "string_len", kTextLength, &text_length);
    put_text(id, NC_GLOBAL, "source", "TYR");
    put_text(id, NC_GLOBAL, "version", "1.0");
    const std::pair<const char *, int> numbers[] = {
        {"grid_type", info_.grid_type },
        {"year",      info_.date.year },
        {"month",     info_.date.month},
        {"day",       info_.date.day  },
        {"hour",      info_.date.hour }
    };
    for (const auto &[name, number] : numbers) {
        nc().put_att_int(id, NC_GLOBAL, name, NC_INT, 1, &number);
    }
    define_values(id, kValues, dims.data());
    const bool has_projection = info_.grid_type != kHasCoordinates;
    for (const Words &words : kCoordinates) {
        if (!has_projection) {
            define_values(id, words, dims.data());
        }
    }
    for (const RealField &f : kRealFields) {
        if (has_projection) {
            define_var(id, f.words, NC_FLOAT, 1, dims.data());
        }
    }
    const std::array<int, 2> text_dims = {dims[0], text_length};
    for (const Words &words : {kDate, kInfo, kUnits}) {
        define_var(id, words, NC_CHAR, 2, text_dims.data());
    }
    for (const IntField &f : kIntFields) {
        define_var(id, f.words, NC_INT, 1, dims.data());
    }
    for (const SizeField &f : kSizeFields) {
        if (has_projection || !f.is_projection) {
            define_var(id, f.words, NC_INT, 1, dims.data());
        }
    }
    is_defined_ = true;
    return nc().enddef(id) == NC_NOERR;
}

void NetcdfOwn::finish()
{
    if (has_header_ && !is_defined_) {
        define(1, 1);
    }
}

const char *NetcdfOwn::write(const GridRec &grid, int index)
{
    if (grid.domain.nx < 1 || grid.domain.ny < 1 || index < 0) {
        return "the grid has no points or no place";
    }
    if (!is_defined_ && (!has_header_ || !define(static_cast<size_t>(grid.domain.nx),
                                                 static_cast<size_t>(grid.domain.ny)))) {
        return "the file has no header";
    }
    if (static_cast<size_t>(grid.domain.nx) > file_->length(file_->dim("x")) ||
        static_cast<size_t>(grid.domain.ny) > file_->length(file_->dim("y"))) {
        return "the grid is larger than the file's first one";
    }
    return put(grid, static_cast<size_t>(index));
}

const char *NetcdfOwn::put(const GridRec &grid, size_t index)
{
    const int id = file_->id();
    const std::array<size_t, 3> start = {index, 0, 0};
    const std::array<size_t, 3> count = {1, static_cast<size_t>(grid.domain.ny),
                                         static_cast<size_t>(grid.domain.nx)};
    bool is_written = nc().put_vara_float(id, file_->var("values"), start.data(), count.data(),
                                          grid.values) == NC_NOERR;
    for (const IntField &f : kIntFields) {
        is_written = is_written && nc().put_var1_int(id, file_->var(f.words.id), &index,
                                                     &(grid.*f.field)) == NC_NOERR;
    }
    for (const SizeField &f : kSizeFields) {
        const int var = file_->var(f.words.id);
        is_written =
            is_written &&
            (var == -1 || nc().put_var1_int(id, var, &index, &(grid.domain.*f.field)) == NC_NOERR);
    }
    for (const RealField &f : kRealFields) {
        const int var = file_->var(f.words.id);
        is_written = is_written &&
                     (var == -1 ||
                      nc().put_var1_float(id, var, &index, &(grid.domain.*f.field)) == NC_NOERR);
    }
    is_written = is_written && write_text(*file_, "datim", index, grid.date) &&
                 write_text(*file_, "info", index, grid.info) &&
                 write_text(*file_, "units", index, grid.units);
    return is_written ? nullptr : "writing failed";
}

} // namespace tyr
